// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/application/window/ScheduleAdding.h"
#include "hosts/application/window/SelfTests.h"

#include <QMainWindow>
#include <QStackedWidget>

class CalendarPage;
class ClosingQuestion;
class NoticeBar;
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
    void showAdded(const QString &key);
    void removeSchedule();
    void apply();

    SchedulerClient &m_client;
    ScheduleBook m_book;
    ScheduleAdding m_adding;
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
    ClosingQuestion *m_question;
    bool m_hasWaited = false; // long enough for the daemon to be known to be there or not
    bool m_closesWhenApplied = false;
    bool m_mayClose = false;
};
