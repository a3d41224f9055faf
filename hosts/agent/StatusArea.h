// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/dbus/BusService.h"
#include "hosts/agent/FailureNotices.h"
#include "hosts/agent/StatusIcon.h"
#include "hosts/common/program/StatusIconPreference.h"

#include <QObject>

#include <memory>

/// Has the status icon while the desktop has a place for it (org.kde.StatusNotifierWatcher on the session bus
/// says so) and its user wants it; otherwise there is none of it, and nothing of what it needs.
///
/// THREADING: the main thread, with a QApplication.
class StatusArea : public QObject
{
    Q_OBJECT
public:
    StatusArea();

private:
    void ask();
    void update();

    StatusIconPreference m_preference;
    FailureNotices m_failures;
    std::unique_ptr<StatusIcon> m_icon; // null while there is none
    bool m_hasPlace = false;            // not before: Qt asks but once in a process, and then never again
    dozely::BusService m_watcher;
    std::unique_ptr<dozely::BusConnection::Subscription> m_hearing;
};
