// SPDX-License-Identifier: MIT
//
// Several alerts, and where the user wants them.
#include "AlertFixture.h"

#include "hosts/agent/AlertPlace.h"

#include <QFile>
#include <QGuiApplication>
#include <QScreen>
#include <QTemporaryDir>
#include <QTest>
#include <QWindow>

using namespace std::chrono_literals;

namespace
{
class AlertStackTest : public AlertFixture
{
protected:
    bool isShown(const Alert &alert) const { return presenter->window(alert); }
    static QRect area() { return QGuiApplication::primaryScreen()->availableGeometry(); }
    void drag(const Alert &alert, const QPoint &by)
    {
        QWindow *const handle = window(alert).windowHandle();
        const QPoint from(60, 4); // on the bezel, above everything
        QTest::mousePress(handle, Qt::LeftButton, {}, from);
        QTest::mouseMove(handle, from + by);
        QTest::mouseRelease(handle, Qt::LeftButton, {}, from);
        QCoreApplication::processEvents();
    }
    QStringList lowestTexts(const QList<Alert> &alerts) const
    {
        const AlertWindow *lowest = nullptr;
        for (const Alert &alert : alerts) {
            if (isShown(alert) && (!lowest || window(alert).y() > lowest->y()))
                lowest = &window(alert);
        }
        return textsOf(*lowest);
    }
};
} // namespace

TEST_F(AlertStackTest, ShowsThreeAtMostAndCountsTheOthers)
{
    QList<Alert> alerts;
    for (int number = 1; number <= 3; ++number) {
        alerts += alert(QString::number(number), 60s * number);
        show(alerts.last());
    }
    EXPECT_EQ(lowestTexts(alerts).last(), "in 3 minutes") << "none waits";
    const QStringList counted{"And one more", "And two more", "And 3 more"};
    for (int number = 4; number <= 6; ++number) {
        alerts += alert(QString::number(number), 60s * number);
        show(alerts.last());
        EXPECT_FALSE(isShown(alerts.last()));
        EXPECT_EQ(lowestTexts(alerts).last(), counted[number - 4]);
    }
    EXPECT_EQ(told.size(), 6) << "whoever waits is told to be shown all the same";
    for (int number = 0; number < 3; ++number) {
        ASSERT_TRUE(isShown(alerts[number]));
        EXPECT_TRUE(area().contains(window(alerts[number]).geometry()));
        EXPECT_EQ(window(alerts[number]).size(), window(alerts[number]).wantedSize());
    }
    presenter->close(alerts[0]);
    EXPECT_TRUE(isShown(alerts[3])) << "in the place that has become free";
    EXPECT_EQ(lowestTexts(alerts).last(), "And two more");
    presenter->close(alerts[5]);
    presenter->close(alerts[4]);
    for (const Alert &alert : {alerts[1], alerts[2], alerts[3]})
        EXPECT_FALSE(textsOf(window(alert)).last().startsWith("And "));
}

TEST_F(AlertStackTest, TheNextToActAreTheOnesThatAreSeen)
{
    QList<Alert> alerts;
    for (const auto lead : {600s, 700s, 800s}) {
        alerts += alert("Later", lead);
        show(alerts.last());
    }
    const auto urgent = alert("Soon", 20s);
    show(urgent);
    EXPECT_TRUE(isShown(urgent));
    EXPECT_FALSE(isShown(alerts[2])) << "it has to wait";
    presenter->close(urgent);
    EXPECT_TRUE(isShown(alerts[2]));
}

TEST_F(AlertStackTest, WhatWaitsWakesNobodyAndCanBeTakenBack)
{
    QList<Alert> alerts;
    for (int number = 0; number < 3; ++number) {
        alerts += alert("Shown", 6h);
        show(alerts.last());
    }
    wait();
    const auto timers = clock->pendingDelays().size();
    const auto waiting = alert("Waiting", 7h);
    show(waiting);
    EXPECT_EQ(clock->pendingDelays().size(), timers);
    presenter->close(waiting);
    EXPECT_EQ(textsOf(window(alerts[2])).last(), "in 6 hours");
}

TEST_F(AlertStackTest, BeginsAtTheTopRightAndForTextFromRightToLeftAtTheTopLeft)
{
    const auto english = alert("Backup");
    show(english);
    EXPECT_EQ(window(english).geometry().topRight(), area().topRight() + QPoint(-16, 16));
    const auto arabic = alert("أمر");
    arabic->setInformativeText("سيُنفَّذ في 14 مارس 2026، 7:30 م.");
    show(arabic);
    EXPECT_EQ(window(arabic).geometry().topLeft(), area().topLeft() + QPoint(16, 16));
    for (const Alert &shown : {english, arabic})
        EXPECT_FALSE(window(shown).geometry().contains(area().center()));
}

TEST_F(AlertStackTest, ComesBackToWhereItWasDraggedAlsoInAnotherProcess)
{
    const QTemporaryDir folder;
    const QString file = folder.filePath("state/dozely/alert-place.plist");
    presenter->setPlaceFile(file);
    const auto first = alert("First");
    show(first);
    wait();
    drag(first, {10, 480});
    const QPoint dragged = window(first).pos();
    ASSERT_NE(dragged, area().topRight());
    const auto second = alert("Second");
    show(second);
    EXPECT_EQ(window(second).x(), window(first).x()) << "one beyond the other";
    presenter->close(first);
    presenter->close(second);
    ASSERT_TRUE(QFile::exists(file));

    presenter = std::make_shared<AlertWindowPresenter>();
    presenter->setEvents({});
    presenter->setPlaceFile(file);
    const auto later = alert("Later");
    presenter->show(later);
    EXPECT_EQ(window(later).geometry().right(), dragged.x() + 339);
    EXPECT_EQ(window(later).y(), dragged.y());
}

TEST_F(AlertStackTest, IgnoresAPlaceThatMakesNoSense)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath("alert-place.plist");
    EXPECT_EQ(StoredAlertPlace::read(path), std::nullopt);
    for (const QByteArray content :
         {"", "nonsense", "<plist><array/></plist>",
          "<plist><dict><key>From Side</key><integer>-5</integer><key>From Edge</key><integer>1</integer>"
          "</dict></plist>",
          "<plist><dict><key>From Side</key><integer>5</integer><key>From Edge</key><string>1</string>"
          "</dict></plist>"}) {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
        file.close();
        EXPECT_EQ(StoredAlertPlace::read(path), std::nullopt) << content.toStdString();
    }
    const AlertPlace place{.isAtRight = false, .isAtBottom = true, .fromSide = 3, .fromEdge = 40};
    ASSERT_TRUE(StoredAlertPlace::write(path, place));
    EXPECT_EQ(StoredAlertPlace::read(path), place);
    EXPECT_EQ(QFile::permissions(path) & (QFile::ReadGroup | QFile::ReadOther), QFile::Permissions());
}

TEST_F(AlertStackTest, MissesNothingWhenThePlaceCannotBeKept)
{
    presenter->setPlaceFile("/proc/no/such/place.plist");
    const auto shown = alert("Backup");
    show(shown);
    wait();
    drag(shown, {0, 500});
    const QPoint place = window(shown).pos();
    presenter->close(shown);
    clock->advance(1s);
    show(shown);
    EXPECT_EQ(window(shown).pos(), place) << "for as long as this process lives";
}

TEST_F(AlertStackTest, TellsWheneverAWindowComesOrGoes)
{
    int changes = 0;
    presenter->setChanged([&] { ++changes; });
    const auto first = alert("First");
    presenter->show(first);
    EXPECT_EQ(changes, 1);
    presenter->show(first); // it is there already
    EXPECT_EQ(changes, 1);
    presenter->show(alert("Second"));
    EXPECT_EQ(changes, 2);
    presenter->close(first);
    EXPECT_EQ(changes, 3);
}

TEST_F(AlertStackTest, DrawsASampleThatNeverBecomesAWindowOfTheDesktop)
{
    struct Watcher : QObject {
        bool eventFilter(QObject *receiver, QEvent *event) override
        {
            exposures += receiver->isWindowType() && event->type() == QEvent::Expose ? 1 : 0;
            return false;
        }
        int exposures = 0;
    } watcher;
    qApp->installEventFilter(&watcher);
    AlertWindowPresenter::drawSample();
    QCoreApplication::processEvents();
    EXPECT_EQ(watcher.exposures, 0);
    show(alert("Seen"));
    EXPECT_GT(watcher.exposures, 0);
}
