// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/plugin/WDPlugIn.h"
#include "hosts/common/plugins/ActionInhibitor.h"

#include <functional>
#include <memory>
#include <vector>

/// Keeps plug-in objects whose action goes on after the operation that began it returned: those whose
/// invokable `bool isActing()` answers true, until a signal `actionDidFinish()` finds it false. Meanwhile the
/// machine is kept from falling asleep, unless the bundle does not want that (see ActionInhibitor).
///
/// THREADING: the main thread.
class RunningActions : public QObject
{
    Q_OBJECT
public:
    using QObject::QObject;

    /// Takes part in the object's life; `finished` is called from the event loop once the action is over,
    /// which may be at once.
    void keep(const std::shared_ptr<WDPlugIn> &plugIn, std::function<void()> finished = {});

    /// The objects whose action goes on.
    std::vector<std::shared_ptr<WDPlugIn>> current() const;

    /// Drops all objects without calling what was to be called.
    void clear();

private:
    struct Running {
        std::shared_ptr<WDPlugIn> plugIn;
        std::function<void()> finished;
        std::shared_ptr<const void> awake; // null for an action that may be slept over
    };
    Q_SLOT void dropFinished();

    ActionInhibitor m_inhibitor;
    std::vector<Running> m_running;
};
