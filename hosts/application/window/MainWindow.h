// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/application/actions/ActionSides.h"
#include "hosts/application/book/ScheduleBook.h"
#include "hosts/application/window/SelfTests.h"

#include <QMainWindow>
#include <QPointer>
#include <QStackedWidget>

class CalendarPage;
class NoticeBar;
class QMessageBox;
class QTabBar;
class ScheduleEditor;
class ScheduleListPane;
class StartPage;
class StatusLine;

/// The application's window: the schedules, the editor of the chosen one, and what was changed.
///
/// Closing it while something is not applied asks first. THREADING: the main thread.
class MainWindow : public QMainWindow
{
    Q_OBJECT
public:
    /// Client and sides outlive it; `user` is who sits before it.
    MainWindow(SchedulerClient &client, ActionSides &sides, quint32 user);
    ~MainWindow() override;

    /// Shows it before all others. The token is that of the start that wants it (StartToken).
    void raiseToUser(const QString &startToken = {});

    ScheduleBook &book() { return m_book; }
    SelfTests &tests() { return m_tests; }

    /// Adds a schedule for the person to fill in, and makes it the chosen one.
    void addSchedule();

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    void layOut();
    QWidget *newSchedulesPage();
    QWidget *newFoot();
    void openSchedule(const QString &identifier);
    void makeShortcuts();
    void connectBook();
    void showPage();
    void showNotice();
    void addWish(const QVariantMap &wish);
    void finishAdding();
    void removeSchedule();
    void apply();
    void askBeforeClosing();

    SchedulerClient &m_client;
    ActionSides &m_sides;
    const quint32 m_user;
    ScheduleBook m_book;
    SelfTests m_tests;
    QTabBar *m_tabs;
    QStackedWidget *m_views; // one a tab
    CalendarPage *m_calendar;
    NoticeBar *m_notice;
    StatusLine *m_status;
    ScheduleListPane *m_list;
    QStackedWidget *m_pages; // beside the list
    StartPage *m_start;
    QWidget *m_nothing;
    ScheduleEditor *m_editor;
    QPointer<QMessageBox> m_question;
    QString m_adding;         // the action of a schedule to add, which is being tried
    QVariantMap m_wish;       // where it is one
    bool m_hasWaited = false; // long enough for the daemon to be known to be there or not
    bool m_closesWhenApplied = false;
    bool m_mayClose = false;
};
