// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/common/bus/SchedulerClient.h"

#include <QMenu>
#include <QObject>
#include <QSystemTrayIcon>

#include <memory>

/// The icon in the desktop's place for such: says what takes place next, leaves it out or puts it off, and
/// opens the application. It looks for nothing by itself: the daemon tells what changes.
///
/// THREADING: the main thread, with a QApplication.
class StatusIcon : public QObject
{
    Q_OBJECT
public:
    /// Shows it. Without a program to open nothing offers that.
    StatusIcon(std::unique_ptr<SchedulerClient> client, const QString &program);
    ~StatusIcon() override;

    /// The application around the bundle of this agent; empty when there is none.
    static QString usualProgram();

Q_SIGNALS:
    /// The user wants it away.
    void hidingWanted();

    /// What the user wanted of a schedule was refused: a sentence.
    void refused(const QString &schedule, const QString &why);

private:
    void refresh();
    void skip();
    void postpone(std::chrono::seconds delay);
    void open() const;
    SchedulerClient::Answer<QString> answerOf(const QString &schedule);

    std::unique_ptr<SchedulerClient> m_client;
    const QString m_program;
    QMenu m_menu; // before the icon, which shows it
    QAction *m_next;
    QList<QAction *> m_ofNext; // what is done about it
    QSystemTrayIcon m_icon;
};
