// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/common/performing/PlugInAnswer.h"
#include "hosts/common/plugins/FileIdentity.h"
#include "hosts/daemon/ParametersDigest.h"

#include <QHash>
#include <QStringList>
#include <QVariantMap>

#include <chrono>
#include <functional>

class NSBundle;

/// What is known of one bundle as long as its files stay what they are: its Info dictionary, and what its
/// plug-in has answered, or why it has not, by the parameters. Equal answers are one.
struct KnownBundle {
    /// About one set of parameters.
    struct Entry {
        qint32 answer = -1;                  ///< Among the answers; -1 for none.
        qint32 reason = -1;                  ///< Among the reasons why there is none.
        std::chrono::milliseconds failed{0}; ///< When that was, on the steady clock.
        qint32 deaths = 0;                   ///< How often it has killed who asked.
        bool isWaiting = false;              ///< It is to be asked, or being asked.
    };

    /// Reads what there is to know without asking.
    static KnownBundle at(const QString &path, const NSBundle &bundle);

    /// Whether the bundle at this path has the files that are known.
    bool isStill(const QString &path) const;

    /// An answer, or why there is none.
    void note(const ParametersDigest &digest, const dozely::Result<PlugInAnswer> &answer,
              std::chrono::milliseconds now);

    /// Who asked was killed by it: `why` is a clause.
    void noteDeath(const ParametersDigest &digest, const QString &why, std::chrono::milliseconds now);

    /// Nothing is to be asked any more.
    void noneIsWaiting();

    /// Forgets all other parameters.
    void keepOnly(const std::function<bool(const ParametersDigest &)> &isNeeded);

    bool isLeftAlone() const;
    QString whyLeftAlone(const QString &path) const;
    /// What a line of the log on its latest death ends with.
    QString ending() const;

    bool isLookedAt = false; ///< In this turn of the event loop.
    QString refusal = {};    ///< Why it cannot be used at all; empty when it can.
    FileIdentity infoFile = {};
    FileIdentity moduleFile = {};
    quint64 generation = 0; ///< Another one for other files; 0 before the first.
    QVariantMap info = {};
    bool hasModule = false; ///< Names one for the daemon.
    QString pluginName = {};
    QHash<ParametersDigest, Entry> entries = {};
    QList<PlugInAnswer> answers = {};
    QStringList reasons = {};
    int deathsAsked = 0; ///< Since it last answered something.
    int deathsActing = 0;
    QString latestDeath = {};
};
