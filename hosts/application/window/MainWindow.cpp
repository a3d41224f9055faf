// SPDX-License-Identifier: MIT
#include "hosts/application/window/MainWindow.h"

#include "DozelyKit/core/foundation/Clock.h"
#include "hosts/application/program/StartToken.h"
#include "hosts/application/window/AppIcon.h"
#include "hosts/application/window/CalendarPage.h"
#include "hosts/application/window/ChangeBar.h"
#include "hosts/application/window/ClosingQuestion.h"
#include "hosts/application/window/HistoryPage.h"
#include "hosts/application/window/NoticeBar.h"
#include "hosts/application/window/ScheduleEditor.h"
#include "hosts/application/window/ScheduleListPane.h"
#include "hosts/application/window/SettingsButton.h"
#include "hosts/application/window/StartPage.h"
#include "hosts/application/window/StatusLine.h"
#include "hosts/application/window/WindowFoot.h"

#include <QCloseEvent>
#include <QFrame>
#include <QShortcut>
#include <QSplitter>
#include <QTabBar>

using namespace dozely;

namespace
{
constexpr QSize usualSize(1040, 720);
constexpr int listWidth = 320;
constexpr std::chrono::milliseconds patience(1000); // for the first answer, before nobody is said to be there

QFrame *newLine(QFrame::Shape shape)
{
    auto *const line = new QFrame;
    line->setFrameShape(shape);
    line->setFrameShadow(QFrame::Plain);
    line->setForegroundRole(QPalette::Mid);
    line->setLineWidth(1);
    return line;
}
} // namespace

MainWindow::MainWindow(SchedulerClient &client, ActionSides &sides, quint32 user)
    : m_client(client),
      m_book(client),
      m_adding(m_book, sides, user),
      m_tests(client),
      m_tabs(new QTabBar),
      m_views(new QStackedWidget),
      m_calendar(new CalendarPage(client)),
      m_notice(new NoticeBar),
      m_status(new StatusLine(client)),
      m_list(new ScheduleListPane(m_book, sides)),
      m_pages(new QStackedWidget),
      m_start(new StartPage(sides)),
      m_nothing(new QWidget),
      m_editor(new ScheduleEditor(m_book, sides, user)),
      m_question(new ClosingQuestion(this))
{
    setWindowTitle("Dozely[*]");
    setWindowIcon(AppIcon::icon());
    layOut();
    makeShortcuts();
    connectBook();
    showPage();
    showNotice();
    m_list->list().setFocus();
}

MainWindow::~MainWindow() = default;

QWidget *MainWindow::newSchedulesPage()
{
    m_pages->addWidget(m_nothing);
    m_pages->addWidget(m_start);
    m_pages->addWidget(m_editor);
    auto *const sides = new QSplitter(Qt::Horizontal);
    sides->setChildrenCollapsible(false);
    sides->setHandleWidth(1);
    sides->addWidget(m_list);
    sides->addWidget(m_pages);
    sides->setStretchFactor(0, 0);
    sides->setStretchFactor(1, 1);
    sides->setSizes({listWidth, usualSize.width() - listWidth});
    return sides;
}

QWidget *MainWindow::newFoot()
{
    auto *const changes = new ChangeBar(m_book);
    connect(changes, &ChangeBar::applyWanted, this, &MainWindow::apply);
    return new WindowFoot(m_status, changes);
}

void MainWindow::layOut()
{
    m_tabs->setObjectName("views");
    m_tabs->setAccessibleName(tr("Views"));
    m_tabs->setDrawBase(false);
    m_tabs->setExpanding(false);
    for (const QString &title : {tr("Schedules"), tr("Month"), tr("History")})
        m_tabs->addTab(title);
    m_views->addWidget(newSchedulesPage());
    m_views->addWidget(m_calendar);
    m_views->addWidget(new HistoryPage(m_client));
    connect(m_tabs, &QTabBar::currentChanged, m_views, &QStackedWidget::setCurrentIndex);

    auto *const head = new QHBoxLayout;
    head->setContentsMargins(14, 10, 14, 0);
    head->addWidget(m_tabs);
    head->addStretch();
    auto *const settings = new SettingsButton;
    head->addWidget(settings);
    connect(settings, &SettingsButton::failed, this,
            [this](const QString &why) { m_notice->tell(NoticeBar::Kind::Warning, why); });
    auto *const notices = new QVBoxLayout;
    notices->setContentsMargins(14, 8, 14, 0);
    notices->addWidget(m_notice);
    auto *const page = new QWidget;
    setCentralWidget(page);
    auto *const all = new QVBoxLayout(page);
    all->setContentsMargins(0, 0, 0, 0);
    all->setSpacing(0);
    all->addLayout(head);
    all->addLayout(notices);
    all->addWidget(m_views, 1);
    all->addWidget(newLine(QFrame::HLine));
    all->addWidget(newFoot());
    resize(usualSize);
}

void MainWindow::makeShortcuts()
{
    const auto add = [this](const QKeySequence &keys, QWidget *where, auto act) {
        connect(new QShortcut(keys, where, nullptr, nullptr, Qt::WidgetWithChildrenShortcut),
                &QShortcut::activated, this, act);
    };
    add(QKeySequence::New, this, &MainWindow::addSchedule);
    add(QKeySequence::Find, this, [this] { m_list->searchField().setFocus(Qt::ShortcutFocusReason); });
    add(QKeySequence::Delete, &m_list->list(), &MainWindow::removeSchedule);
    for (int view = 0; view < m_tabs->count(); ++view) { // letters are the plug-ins' own
        const QKeySequence keys(Qt::CTRL | static_cast<Qt::Key>(Qt::Key_1 + view));
        m_tabs->setTabToolTip(view, keys.toString(QKeySequence::NativeText));
        add(keys, this, [this, view] { m_tabs->setCurrentIndex(view); });
    }
    add(QKeySequence::Quit, this, &MainWindow::close);
    add(QKeySequence::Close, this, &MainWindow::close);
}

void MainWindow::connectBook()
{
    connect(&m_book, &ScheduleBook::stateChanged, this, [this] {
        m_list->ensureCurrent();
        showPage();
        showNotice();
    });
    connect(&m_book, &ScheduleBook::changesChanged, this, [this] {
        setWindowModified(m_book.hasChanges());
        m_list->ensureCurrent(); // one that came back is alone
        showPage();
    });
    const auto stopWaiting = [this] {
        m_hasWaited = true;
        m_status->show();
        showNotice();
    };
    connect(&m_client, &SchedulerClient::availabilityChanged, this, stopWaiting);
    Port<Clock>::current()->callAfter(patience, this, stopWaiting);
    m_status->setVisible(m_client.isAvailable());
    connect(&m_book, &ScheduleBook::applied, this, [this](int failures) {
        showNotice();
        // Of the one that is shown, the editor says it.
        const BookEntry *const shown = m_book.entry(m_editor->key());
        if (failures > (shown && !shown->failure.isEmpty() ? 1 : 0))
            m_notice->tell(
                NoticeBar::Kind::Warning,
                tr("%n schedule(s) could not be applied and keep their changes here.", nullptr, failures));
        if (std::exchange(m_closesWhenApplied, false) && failures == 0)
            close();
    });
    connect(&m_adding, &ScheduleAdding::added, this, &MainWindow::showAdded);
    connect(m_list, &ScheduleListPane::currentChanged, m_editor, &ScheduleEditor::setKey);
    connect(m_list, &ScheduleListPane::addingWanted, this, &MainWindow::addSchedule);
    connect(m_list, &ScheduleListPane::removalWanted, this, &MainWindow::removeSchedule);
    connect(m_calendar, &CalendarPage::openWanted, this, &MainWindow::openSchedule);
    connect(m_calendar, &CalendarPage::refused, this,
            [this](const QString &why) { m_notice->tell(NoticeBar::Kind::Warning, why); });
    connect(m_status, &StatusLine::alertTestWanted, &m_tests, &SelfTests::testAlert);
    connect(m_status, &StatusLine::wakingTestWanted, &m_tests, &SelfTests::testWaking);
    connect(&m_tests, &SelfTests::told, m_notice, &NoticeBar::tell);
    connect(m_start, &StartPage::addingWanted, this, &MainWindow::addSchedule);
    connect(m_start, &StartPage::wishChosen, &m_adding, &ScheduleAdding::addWish);
    connect(m_question, &ClosingQuestion::applyChosen, this, [this] {
        m_closesWhenApplied = true;
        apply();
    });
    connect(m_question, &ClosingQuestion::discardChosen, this, [this] {
        m_mayClose = true;
        QMetaObject::invokeMethod(this, &QWidget::close, Qt::QueuedConnection);
    });
}

void MainWindow::showPage()
{
    if (m_list->count() > 0)
        m_pages->setCurrentWidget(m_editor);
    else // whether there is none is not known before they were read
        m_pages->setCurrentWidget(m_book.state() == ScheduleBook::State::Read ? m_start : m_nothing);
}

void MainWindow::showNotice()
{
    const NoticeBar::Remedy again{tr("Try again"), [this] { m_book.read(); }};
    if (!m_client.isAvailable() && m_hasWaited)
        m_notice->tell(
            NoticeBar::Kind::Warning,
            tr("The Dozely service is not running: nothing happens at its time, and nothing can be "
               "applied. An administrator starts it with “systemctl start dozelyd”."),
            {again});
    else if (m_client.isAvailable() && m_book.state() == ScheduleBook::State::Failed)
        m_notice->tell(NoticeBar::Kind::Warning, tr("The schedules cannot be read: %1").arg(m_book.failure()),
                       {again});
    else
        m_notice->clear();
}

void MainWindow::addSchedule()
{
    m_adding.add();
}

void MainWindow::showAdded(const QString &key)
{
    m_tabs->setCurrentIndex(0);
    m_list->setCurrentKey(key);
    showPage();
    m_editor->editName();
}

void MainWindow::openSchedule(const QString &identifier)
{
    for (int row = 0; row < m_book.count(); ++row) {
        if (m_book.at(row).identifier != identifier)
            continue;
        m_tabs->setCurrentIndex(0);
        m_list->setCurrentKey(m_book.at(row).key);
        return;
    }
}

void MainWindow::removeSchedule()
{
    m_book.remove(m_list->currentKey(), tr("Removal"));
}

void MainWindow::apply()
{
    m_editor->commit();
    const QString fault = m_editor->fault();
    if (!fault.isEmpty()) {
        m_notice->tell(NoticeBar::Kind::Warning, tr("This cannot be applied yet: %1").arg(fault));
        m_closesWhenApplied = false;
        return;
    }
    showNotice();
    m_book.apply();
}

void MainWindow::raiseToUser(const QString &startToken)
{
    setWindowState(windowState() & ~Qt::WindowMinimized);
    show();
    raise();
    StartToken::activate(*this, startToken);
}

void MainWindow::closeEvent(QCloseEvent *event)
{
    m_editor->commit();
    if (m_mayClose || !m_book.hasChanges()) {
        event->accept();
        return;
    }
    event->ignore();
    m_question->ask();
}
