// SPDX-License-Identifier: MIT
#include "hosts/application/program/WindowedApplication.h"

#include "DozelyKit/core/log/ZDRLog.h"
#include "hosts/common/orders/GuardedPosting.h"

#include <QPointer>

bool WindowedApplication::notify(QObject *receiver, QEvent *event)
{
    bool handled = false;
    const QPointer watched(receiver);
    const auto thrown = GuardedPosting::guardPlugIn([&] { handled = QApplication::notify(receiver, event); });
    if (thrown) {
        ZDRLog("Something raised in the event loop and was stopped: %@", *thrown);
        if (watched)
            Q_EMIT raised(watched, *thrown);
    }
    return handled;
}
