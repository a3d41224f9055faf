// SPDX-License-Identifier: MIT
#pragma once

#include "ActionFixture.h"
#include "FakeSchedulerClient.h"
#include "hosts/application/program/WindowedApplication.h"
#include "hosts/application/window/MainWindow.h"
#include "hosts/application/window/ScheduleListModel.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QLocale>
#include <QMessageBox>
#include <QPushButton>
#include <QSpinBox>
#include <QTest>
#include <QToolButton>

#include <algorithm>

/// A window with two schedules of an action with one text.
class WindowFixture : public ActionFixture
{
protected:
    static constexpr quint32 anna = 1000;

    WindowFixture()
    {
        QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedKingdom));
        path = makeAction("Talk");
        other = makeAction("Sing");
        client.schedules["1"] = schedule("Backup", 1);
        client.schedules["2"] = schedule("Music", 2);
        client.told = {{"Version", "1"}, {"WakeClock", QVariantMap{{"isSupported", true}}}};
    }
    QVariantMap schedule(const QString &name, int days) const
    {
        const QDateTime date(QDate::currentDate().addDays(days), QTime(6, 55));
        const QString text = date.toUTC().toString(Qt::ISODate);
        return {{"name", name},    {"isEnabled", true}, {"bundlePath", path},
                {"date", text},    {"next", text},      {"parameters", QVariantMap{{"Text", "hello"}}},
                {"timeZone", ""},  {"owner", anna},     {"actsIn", "session"},
                {"revision", "r0"}};
    }
    /// Shows the window, with everything loaded that it shows.
    void open()
    {
        sides = std::make_unique<ActionSides>(trials());
        window = std::make_unique<MainWindow>(client, *sides, anna);
        window->show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(window.get()));
        EXPECT_TRUE(waitUntil([&] {
            return (!client.isThere || window->book().state() != ScheduleBook::State::Unread) &&
                   sides->state(path) != ActionSides::State::Trying &&
                   sides->state(other) != ActionSides::State::Trying;
        }));
        settle();
    }
    static void settle()
    {
        for (int turn = 0; turn < 20; ++turn)
            QCoreApplication::processEvents();
    }
    template<class Widget>
    Widget *find(const char *name) const
    {
        auto *const found = window->findChild<Widget *>(name);
        EXPECT_NE(found, nullptr) << name;
        return found;
    }
    QListView &list() const { return *find<QListView>("schedules"); }
    QString row(int row) const
    {
        return list().model()->index(row, 0).data(Qt::AccessibleTextRole).toString();
    }
    void press(const char *name)
    {
        QTest::mouseClick(find<QAbstractButton>(name), Qt::LeftButton);
        settle();
    }
    void pressText(const QString &text)
    {
        const auto buttons = window->findChildren<QAbstractButton *>();
        const auto found = std::find_if(buttons.cbegin(), buttons.cend(), [&](const QAbstractButton *button) {
            return button->isVisible() && button->text() == text;
        });
        ASSERT_NE(found, buttons.cend()) << qPrintable(text);
        QTest::mouseClick(*found, Qt::LeftButton);
        settle();
    }
    /// As a person types it, in the place of what was there.
    void type(const char *name, const QString &text)
    {
        auto *const field = find<QLineEdit>(name);
        field->selectAll();
        QTest::keyClicks(field, text);
        settle();
    }
    /// All sentences that can be seen.
    QStringList sentences() const
    {
        QStringList sentences;
        for (const auto *const label : window->findChildren<QLabel *>()) {
            if (label->isVisible() && !label->text().isEmpty())
                sentences += label->text();
        }
        return sentences;
    }
    bool says(const QString &text) const { return sentences().join('\n').contains(text); }

    FakeSchedulerClient client;
    QString path;
    QString other;
    std::unique_ptr<ActionSides> sides;
    std::unique_ptr<MainWindow> window;
};
