// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/communication/events/NSAppleEventDescriptor.h"

#include <QObject>

/// The two events that every program of the system answers: quit ('aevt', 'quit') and open application
/// ('aevt', 'oapp'). docs/apple-events.md says who may send them.
///
/// THREADING: the main thread. Make one after the root folder is set: from then on the process listens.
class RequiredEvents : public QObject
{
    Q_OBJECT
public:
    RequiredEvents();
    ~RequiredEvents() override;

    /// The parameter of open application that has the token, a text.
    static constexpr AEKeyword startToken = dozely::fourCharCode("stok");

    /// Called by NSAppleEventManager.
    Q_INVOKABLE void handleQuit(const std::shared_ptr<NSAppleEventDescriptor> &event,
                                const std::shared_ptr<NSAppleEventDescriptor> &reply);
    Q_INVOKABLE void handleOpenApplication(const std::shared_ptr<NSAppleEventDescriptor> &event,
                                           const std::shared_ptr<NSAppleEventDescriptor> &reply);

Q_SIGNALS:
    /// Somebody who may wants the program to end. Connect it queued, so that the sender has the reply first.
    void quit();
    /// Somebody started the program, which runs already: a program with a window shows it. The token is what
    /// the desktop gave that start; empty without, and for one that is none.
    void opened(const QString &token);
};
