// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/NSNotification.h"

#include <QObject>
#include <QStringList>
#include <QThread>

#include <functional>

/// Writes down what it is called with, and may do something then.
class RecordingObserver : public QObject
{
    Q_OBJECT
public:
    explicit RecordingObserver(QString name = {}, QStringList *order = nullptr)
        : m_name(std::move(name)), m_order(order)
    {
    }

    Q_INVOKABLE void first(const NSNotification &notification) { note("first", notification); }
    Q_INVOKABLE void second(const NSNotification &notification) { note("second", notification); }

    QStringList calls; // "selector name"
    NSNotification last;
    QThread *thread = nullptr;
    std::function<void()> action;

private:
    void note(const QString &selector, const NSNotification &notification)
    {
        calls += selector + ' ' + notification.name();
        last = notification;
        thread = QThread::currentThread();
        if (m_order)
            *m_order += m_name;
        if (action)
            action();
    }
    QString m_name;
    QStringList *m_order;
};
