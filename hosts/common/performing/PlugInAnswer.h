// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Result.h"

#include <QByteArray>
#include <QString>

/// What the plug-in of a bundle answers about an occurrence before it acts. A plain value, which the process
/// that asked the plug-in sends to its host as one packet.
struct PlugInAnswer {
    /// A packet is no longer than this.
    static constexpr qsizetype mostBytes = 16 << 10;

    bool needsWakeUp = false;
    bool needsStartup = false;
    qint32 timeOut = 0;                    ///< Seconds, negative.
    qint64 timeBeforeSelfAnticipation = 0; ///< Seconds; -1 when no alert is wanted.
    QString pluginName = {};

    /// Whether its class has a way of its own to hand an occurrence to an agent, or to have it announced
    /// (WDDaemonPlugIn::actInUserAgentNow, anticipateInUserAgentNow): a performer must do it then.
    /// @{
    bool handsOverItself = false;
    bool announcesItself = false;
    /// @}

    /// An answer, or why there is none, as a packet; a long text is cut.
    static QByteArray toPacket(const dozely::Result<PlugInAnswer> &answer);

    /// What toPacket was given. An error in its place for what toPacket has not written.
    static dozely::Result<PlugInAnswer> fromPacket(const QByteArray &packet);

    bool operator==(const PlugInAnswer &) const = default;
};
