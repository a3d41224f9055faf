// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/NSNotification.h"

#include <QObject>
#include <QStringList>
#include <QThread>

#include <atomic>
#include <functional>

/// Writes down what it hears, and may do something then.
class Listener : public QObject
{
    Q_OBJECT
public:
    Q_INVOKABLE void heard(const NSNotification &notification)
    {
        names += notification.name();
        last = notification;
        thread = QThread::currentThread();
        if (action)
            action();
    }
    QStringList names;
    NSNotification last;
    QThread *thread = nullptr;
    std::function<void()> action;
};

/// Counts what it hears, on any thread.
class Counter : public QObject
{
    Q_OBJECT
public:
    Q_INVOKABLE void heard(const NSNotification &) { ++count; }
    std::atomic<int> count{0};
};
