// SPDX-License-Identifier: MIT
#include "hosts/application/when/RecurrenceForm.h"

#include "hosts/application/when/FaultLabel.h"
#include "hosts/application/when/ToggleGrid.h"
#include "support/InterfaceEnvironment.h"
#include "unit/hosts/application/when/TimingFixture.h"

#include <QApplication>
#include <QComboBox>
#include <QDateEdit>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QScrollArea>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTest>
#include <QTimeEdit>
#include <QToolButton>

class RecurrenceFormTest : public TimingFixture
{
protected:
    RecurrenceFormTest()
    {
        form.setLocale(QLocale(QLocale::English, QLocale::UnitedKingdom));
        area.setWidget(&form);
        area.setWidgetResizable(true);
        area.resize(600, 700);
        area.show();
        QApplication::setActiveWindow(&area);
        EXPECT_TRUE(area.isActiveWindow());
    }

    void show(const Recurrence &recurrence)
    {
        given = schedule(recurrence);
        form.setRecurrence(given.date, given.timeZone, given.recurrence);
        changes.clear();
    }
    /// The rule that the form has now, and its start; the fault where it has one.
    QString rule() const
    {
        if (!form.isValid())
            return form.fault();
        const auto recurrence = form.recurrence();
        return recurrence ? recurrence->rule + " " + recurrence->localStart.toString()
                          : form.date().toString(Qt::ISODate);
    }
    /// What of a class can be seen and has that accessible name, or text.
    template<class Widget>
    Widget *find(const QString &name) const
    {
        for (auto *const widget : form.findChildren<Widget *>()) {
            const bool isNamed = widget->accessibleName() == name || widget->property("text") == name;
            if (isNamed && widget->isVisible())
                return widget;
        }
        ADD_FAILURE() << "there is no " << qPrintable(name);
        return nullptr;
    }
    QComboBox *kinds() const { return form.findChild<QComboBox *>(); }
    void choose(Kind kind) const
    {
        kinds()->setFocus();
        QTest::keyClick(kinds(), Qt::Key_Home);
        while (kinds()->currentData().toInt() != static_cast<int>(kind))
            QTest::keyClick(kinds(), Qt::Key_Down);
    }
    void press(const QString &button) const { QTest::mouseClick(find<QToolButton>(button), Qt::LeftButton); }
    template<class Edit>
    void type(const QString &name, const QString &text) const
    {
        auto *const edit = find<Edit>(name);
        edit->setFocus(Qt::TabFocusReason);
        QTest::keyClicks(edit, text);
    }

    TimingWriter::Schedule given;
    QScrollArea area;
    RecurrenceForm &form = *new RecurrenceForm; // the area's
    QSignalSpy changes{&form, &RecurrenceForm::changed};
};

TEST_F(RecurrenceFormTest, ReturnsWhatNobodyEditsToTheLetter)
{
    for (const auto &[rule, kind, start] : rules()) {
        show(recurrence(rule, start, {"2026-03-21T22:00:00"}, {"2026-05-01T12:00:00"}));
        EXPECT_EQ(kinds()->currentData().toInt(), static_cast<int>(kind)) << rule;
        EXPECT_EQ(form.date(), given.date) << rule;
        EXPECT_EQ(form.timeZone(), given.timeZone) << rule;
        EXPECT_EQ(form.recurrence(), given.recurrence) << rule;
        EXPECT_FALSE(form.isEdited()) << rule;
        EXPECT_EQ(form.fault(), "") << rule;
        EXPECT_TRUE(changes.isEmpty()) << rule;
    }
}

TEST_F(RecurrenceFormTest, ReturnsZonesAndDaysThatItsFieldsHardlyShow)
{
    for (const char *name : {"", "UTC", "Etc/UTC", "US/Pacific", "America/Argentina/ComodRivadavia"}) {
        for (const char *start : {"0001-01-01T00:00:00", "0099-12-31T23:59:59", "9999-01-01T12:00:00"}) {
            const Recurrence old = recurrence("FREQ=DAILY", start);
            form.setRecurrence(utc("2026-03-14T21:00:00Z"), name, old);
            EXPECT_EQ(form.timeZone(), name);
            EXPECT_EQ(form.recurrence(), old) << start;
            EXPECT_FALSE(form.isEdited()) << start << " " << name;
        }
        form.setRecurrence(utc("9999-12-31T12:00:00Z"), name, {});
        EXPECT_EQ(form.date(), utc("9999-12-31T12:00:00Z"));
        EXPECT_EQ(form.timeZone(), name);
        EXPECT_FALSE(form.isEdited()) << name;
    }
    for (const char *rule : {"FREQ=DAILY;UNTIL=00010102", "FREQ=DAILY;UNTIL=99991231"}) {
        const Recurrence old = recurrence(rule, "0001-01-01T00:00:00");
        form.setRecurrence(utc("2026-03-14T21:00:00Z"), zone, old);
        EXPECT_EQ(form.recurrence(), old) << rule;
        EXPECT_FALSE(form.isEdited()) << rule;
    }
}

TEST_F(RecurrenceFormTest, ShowsTheCenturyWhateverTheLocaleWritesShort)
{
    for (const char *locale : {"en_US", "de_DE", "fr_FR", "es_ES", "ja_JP", "ar_EG", "fa_IR", "th_TH", "C"}) {
        QLocale::setDefault(QLocale(locale));
        RecurrenceForm there;
        QLocale::setDefault(QLocale::c());
        for (const auto *const edit : there.findChildren<QDateEdit *>())
            EXPECT_TRUE(edit->displayFormat().contains("yyyy")) << locale;
        for (const char *start : {"1926-03-14T06:00:00", "2026-12-31T12:30:00", "2126-03-14T22:00:00"}) {
            const Recurrence old = recurrence("FREQ=DAILY;UNTIL=21270101", start);
            there.setRecurrence(utc("2026-03-14T21:00:00Z"), zone, old);
            EXPECT_EQ(there.recurrence(), old) << locale << " " << start;
            EXPECT_FALSE(there.isEdited()) << locale << " " << start;
        }
    }
}

TEST_F(RecurrenceFormTest, ComesBackToWhatWasGivenWhenAnEditIsTakenBack)
{
    for (const auto &[rule, kind, start] : rules()) {
        show(recurrence(rule, start, {"2026-03-21T22:00:00"}));
        choose(Kind::Once);
        EXPECT_TRUE(form.isEdited()) << rule;
        choose(kind);
        EXPECT_EQ(form.recurrence(), given.recurrence) << rule;
        EXPECT_EQ(form.date(), given.date) << rule;
        EXPECT_FALSE(form.isEdited()) << rule;
    }
}

TEST_F(RecurrenceFormTest, ProposesTheNextDayOfWhatRepeatedForWhatIsToTakePlaceOnce)
{
    show(recurrence("FREQ=WEEKLY;BYDAY=FR", "2026-01-02T12:00:00"));
    choose(Kind::Once);
    EXPECT_EQ(rule(), "2026-03-20T11:00:00Z");
}

TEST_F(RecurrenceFormTest, ProposesToExpertsWhatWasEditedLast)
{
    const auto showOnce = [this] { form.setRecurrence(utc("2026-03-20T12:00:00Z"), zone, {}); };
    showOnce();
    choose(Kind::Expert);
    EXPECT_EQ(find<QLineEdit>("Rule")->text(), "FREQ=DAILY");
    showOnce();
    choose(Kind::Weekdays);
    type<QTimeEdit>("Time", "1315"); // who only passes a kind by has not settled for it
    kinds()->setCurrentIndex(kinds()->findData(static_cast<int>(Kind::Expert))); // as by the mouse
    EXPECT_EQ(find<QLineEdit>("Rule")->text(), "FREQ=WEEKLY;BYDAY=MO,TU,WE,TH,FR");
}

TEST_F(RecurrenceFormTest, OffersTheDaysThatAMonthMayHave)
{
    show(recurrence("FREQ=YEARLY;BYMONTH=2;BYMONTHDAY=3", "2026-02-03T12:00:00"));
    auto *const day = find<QSpinBox>("Day of the month");
    EXPECT_EQ(day->maximum(), 29);
    find<QComboBox>("Month")->setCurrentIndex(3);
    EXPECT_EQ(day->maximum(), 30);
    show(recurrence("FREQ=YEARLY;BYMONTH=12;BYMONTHDAY=31", "2026-12-31T12:00:00"));
    EXPECT_EQ(day->maximum(), 31);
    EXPECT_EQ(day->value(), 31);
}

TEST_F(RecurrenceFormTest, KeepsAnEndAfterOneTime)
{
    show(recurrence("FREQ=DAILY;COUNT=1", "2026-03-20T12:00:00"));
    type<QTimeEdit>("Time", "1315");
    EXPECT_EQ(rule(), "FREQ=DAILY;COUNT=1 2026-03-20T13:15:00");
}

TEST_F(RecurrenceFormTest, ShowsAnyRuleToExpertsAsItIs)
{
    for (const auto &[rule, kind, start] : rules()) {
        show(recurrence(rule, start));
        choose(Kind::Expert);
        EXPECT_EQ(find<QLineEdit>("Rule")->text(), rule);
        EXPECT_EQ(next(*form.recurrence()), next(*given.recurrence)) << rule;
    }
}

TEST_F(RecurrenceFormTest, AnOldRuleMayBePastWithoutAFault)
{
    const QDateTime past = utc("2026-03-10T21:00:00Z");
    form.setRecurrence(past, zone, {});
    EXPECT_EQ(form.fault(), "");
    EXPECT_EQ(form.date(), past);
    type<QTimeEdit>("Time", "2100");
    EXPECT_EQ(form.fault(), "That moment is past.");
    EXPECT_EQ(form.date(), past); // as it was given
}

TEST_F(RecurrenceFormTest, AnEndThatItsFieldsCannotShowIsForExperts)
{
    const auto kindUntil = [this](const char *day) {
        Recurrence old = recurrence(QString("FREQ=DAILY;UNTIL=%1T235959").arg(day), "1700-01-01T08:00:00");
        form.setRecurrence(utc("1700-01-01T07:00:00Z"), zone, old);
        return static_cast<Kind>(kinds()->currentData().toInt());
    };
    EXPECT_EQ(kindUntil("18000101"), Kind::Daily);
    EXPECT_EQ(kindUntil("17991231"), Kind::Expert);
}

TEST_F(RecurrenceFormTest, DaysOfTheWeekArePressed)
{
    show(recurrence("FREQ=DAILY"));
    choose(Kind::Weekly);
    EXPECT_EQ(rule(), "FREQ=WEEKLY;BYDAY=SA 2026-03-14T22:00:00");
    press("Monday");
    press("Saturday");
    EXPECT_EQ(rule(), "FREQ=WEEKLY;BYDAY=MO 2026-03-16T22:00:00");
    press("Monday");
    EXPECT_EQ(rule(), "Choose a day of the week.");
    EXPECT_EQ(find<FaultLabel>("Choose a day of the week.")->isVisible(), true);
    press("Thursday");
    EXPECT_EQ(rule(), "FREQ=WEEKLY;BYDAY=TH 2026-03-19T22:00:00");
    EXPECT_EQ(changes.count(), 5 + 3); // the choice went by the two kinds before it
}

TEST_F(RecurrenceFormTest, DaysOfTheWeekStandInTheOrderOfTheLocale)
{
    const auto namesIn = [](const QLocale &locale) {
        QLocale::setDefault(locale);
        const RecurrenceForm form;
        QLocale::setDefault(QLocale::c());
        QStringList names;
        for (const auto *const button : form.findChild<ToggleGrid *>()->findChildren<QToolButton *>())
            names += button->text();
        return names.join(' ');
    };
    EXPECT_EQ(namesIn(QLocale("en_GB")), "Mon Tue Wed Thu Fri Sat Sun");
    EXPECT_EQ(namesIn(QLocale("en_US")), "Sun Mon Tue Wed Thu Fri Sat");
    EXPECT_TRUE(namesIn(QLocale("de_DE")).startsWith("Mo"));
}

TEST_F(RecurrenceFormTest, ArrowsGoThroughTheDaysAndTabLeavesThem)
{
    show(recurrence("FREQ=WEEKLY;BYDAY=MO"));
    find<QToolButton>("Monday")->setFocus();
    QTest::keyClick(form.focusWidget(), Qt::Key_Right);
    QTest::keyClick(form.focusWidget(), Qt::Key_Space);
    EXPECT_EQ(rule(), "FREQ=WEEKLY;BYDAY=MO,TU 2026-03-16T22:00:00");
    QTest::keyClick(form.focusWidget(), Qt::Key_End);
    EXPECT_EQ(form.focusWidget()->accessibleName(), "Sunday");
    QTest::keyClick(form.focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(form.focusWidget()->accessibleName(), "Time");
    QTest::keyClick(form.focusWidget(), Qt::Key_Backtab);
    EXPECT_EQ(form.focusWidget()->accessibleName(), "Sunday");
}

TEST_F(RecurrenceFormTest, ArrowsGoThroughTheMonthByWeeksAndInReadingDirection)
{
    show(recurrence("FREQ=MONTHLY;BYMONTHDAY=1"));
    find<QToolButton>("Day 1 of the month")->setFocus();
    const auto go = [this](Qt::Key key) {
        QTest::keyClick(form.focusWidget(), key);
        return form.focusWidget()->accessibleName();
    };
    EXPECT_EQ(go(Qt::Key_Down), "Day 8 of the month");
    EXPECT_EQ(go(Qt::Key_Right), "Day 9 of the month");
    EXPECT_EQ(go(Qt::Key_Up), "Day 2 of the month");
    EXPECT_EQ(go(Qt::Key_Home), "Day 1 of the month");
    area.setLayoutDirection(Qt::RightToLeft);
    EXPECT_EQ(go(Qt::Key_Left), "Day 2 of the month");
    EXPECT_EQ(go(Qt::Key_Right), "Day 1 of the month");
}

TEST_F(RecurrenceFormTest, DaysOfTheMonthAreNumbersTheLastOrADayOfTheWeek)
{
    show(recurrence("FREQ=DAILY"));
    choose(Kind::Monthly);
    EXPECT_EQ(rule(), "FREQ=MONTHLY;BYMONTHDAY=14 2026-03-14T22:00:00");
    press("Day 14 of the month");
    press("Day 31 of the month");
    EXPECT_TRUE(
        find<FaultLabel>("Months without a day 31 are left out; \"Last day\" is the last of each month."));
    press("Day 31 of the month");
    press("The last day of the month");
    EXPECT_EQ(rule(), "FREQ=MONTHLY;BYMONTHDAY=-1 2026-03-31T22:00:00");
    QTest::mouseClick(find<QAbstractButton>("A day of the week"), Qt::LeftButton, {}, QPoint(8, 8));
    EXPECT_EQ(rule(), "FREQ=MONTHLY;BYDAY=2SA 2026-03-14T22:00:00");
    QTest::keyClick(find<QComboBox>("Which one of the month"), Qt::Key_End);
    EXPECT_EQ(rule(), "FREQ=MONTHLY;BYDAY=-1SA 2026-03-28T22:00:00");
}

TEST_F(RecurrenceFormTest, ADayOfTheYearAndEverySecondOne)
{
    show(recurrence("FREQ=YEARLY"));
    find<QComboBox>("Month")->setCurrentIndex(1);
    type<QSpinBox>("Day of the month", "29");
    EXPECT_EQ(rule(), "FREQ=YEARLY;BYMONTH=2;BYMONTHDAY=29 2028-02-29T22:00:00");
    EXPECT_TRUE(find<FaultLabel>("Years without a 29 February are left out."));
    type<QSpinBox>("Every", "2");
    EXPECT_EQ(rule(), "FREQ=YEARLY;INTERVAL=2;BYMONTH=2;BYMONTHDAY=29 2028-02-29T22:00:00");
}

TEST_F(RecurrenceFormTest, ADistanceGoesOnFromItsBegin)
{
    show(recurrence("FREQ=DAILY"));
    choose(Kind::Distance);
    EXPECT_EQ(rule(), "FREQ=MINUTELY;INTERVAL=15 2026-03-14T22:00:00");
    QTest::keyClick(find<QComboBox>("Unit"), Qt::Key_Down);
    type<QSpinBox>("Every", "2");
    type<QTimeEdit>("Time", "0630");
    EXPECT_EQ(rule(), "FREQ=HOURLY;INTERVAL=2 2026-03-14T08:30:00"); // the first from now on
}

TEST_F(RecurrenceFormTest, ARuleOfExpertsIsJudgedAtEachLetter)
{
    show(recurrence("FREQ=DAILY"));
    choose(Kind::Expert);
    auto *const edit = find<QLineEdit>("Rule");
    QTest::keyClicks(edit, ";BYDAY=1M");
    EXPECT_EQ(rule(), "In the rule, BYDAY=1M has no meaning. An example: BYDAY=MO,2TU,-1FR");
    EXPECT_TRUE(find<FaultLabel>(form.fault()));
    QTest::keyClick(edit, Qt::Key_Backspace);
    QTest::keyClick(edit, Qt::Key_Backspace);
    QTest::keyClicks(edit, "WE");
    EXPECT_EQ(rule(), "FREQ=DAILY;BYDAY=WE 2026-03-18T22:00:00");
    edit->setText(" rrule:FREQ=DAILY ");
    EXPECT_EQ(rule(), "FREQ=DAILY 2026-03-14T22:00:00");
}

TEST_F(RecurrenceFormTest, ARuleForExpertsBeginsWithWhatWasPickedLast)
{
    show(recurrence("FREQ=DAILY"));
    choose(Kind::Weekly);
    press("Monday");
    choose(Kind::Expert); // the keyboard goes there by other kinds
    EXPECT_EQ(find<QLineEdit>("Rule")->text(), "FREQ=WEEKLY;BYDAY=MO,SA");
    form.setRecurrence(utc("2026-03-15T21:00:00Z"), zone, {});
    choose(Kind::Expert);
    EXPECT_EQ(find<QLineEdit>("Rule")->text(), "FREQ=DAILY");
}

TEST_F(RecurrenceFormTest, OnlyTheFirstTimeIsThatOfADistance)
{
    show(recurrence("FREQ=DAILY;BYHOUR=9,22;BYMINUTE=0;BYSECOND=0", "2026-03-15T09:00:00"));
    choose(Kind::Distance);
    EXPECT_EQ(rule(), "FREQ=MINUTELY;INTERVAL=15 2026-03-15T09:00:00");
    choose(Kind::Daily);
    EXPECT_EQ(form.recurrence(), given.recurrence);
}

TEST_F(RecurrenceFormTest, HasSeveralTimesOfDayWhereARuleCanMeanThem)
{
    show(recurrence("FREQ=DAILY"));
    press("Another time");
    EXPECT_EQ(rule(), "FREQ=DAILY;BYHOUR=22,23;BYMINUTE=0;BYSECOND=0 2026-03-14T22:00:00");
    QTest::keyClicks(form.focusWidget(), "0630");
    EXPECT_EQ(rule(), "One schedule cannot mean 06:30, 22:00 without 06:00, 22:30, too. Let the times have "
                      "equal minutes, or add a second schedule.");
    press("Remove this time"); // the first
    EXPECT_EQ(rule(), "FREQ=DAILY 2026-03-15T06:30:00");
    EXPECT_EQ(form.focusWidget(), find<QTimeEdit>("Time")) << "the button that had the keys is gone";
}

TEST_F(RecurrenceFormTest, HoursStandBeforeMinutesFromRightToLeftToo)
{
    area.setLayoutDirection(Qt::RightToLeft);
    show(recurrence("FREQ=DAILY"));
    EXPECT_EQ(find<QTimeEdit>("Time")->text(), "22:00");
}

TEST_F(RecurrenceFormTest, ChosenDaysCanBeToldFromOthersOnDarkGround)
{
    show(recurrence("FREQ=WEEKLY;BYDAY=MO"));
    area.setPalette(InterfaceEnvironment::darkPalette());
    const auto colour = [this](const char *day) {
        const QImage picture = find<QToolButton>(day)->grab().toImage();
        return picture.pixelColor(4, picture.height() / 2);
    };
    EXPECT_GT(std::abs(colour("Monday").saturation() - colour("Tuesday").saturation()), 60);
}

TEST_F(RecurrenceFormTest, HasOneEndInThePlaceOfAnother)
{
    const QString start = "2026-03-20T12:00:00";
    for (const QString former : {"FREQ=DAILY", "FREQ=DAILY;COUNT=5", "FREQ=DAILY;UNTIL=20260401T235959"}) {
        show(recurrence(former, qPrintable(start)));
        auto *const end = find<QComboBox>("Ends");
        end->setCurrentIndex(static_cast<int>(Timing::End::AfterTimes));
        changes.clear();
        find<QSpinBox>("How many times")->setValue(7);
        EXPECT_FALSE(changes.isEmpty());
        EXPECT_EQ(rule(), "FREQ=DAILY;COUNT=7 " + start) << former.toStdString();
        end->setCurrentIndex(static_cast<int>(Timing::End::OnDay));
        EXPECT_TRUE(rule().startsWith("FREQ=DAILY;UNTIL=2026")) << former.toStdString();
        end->setCurrentIndex(static_cast<int>(Timing::End::Never));
        EXPECT_EQ(rule(), "FREQ=DAILY " + start) << former.toStdString();
    }
}

TEST_F(RecurrenceFormTest, EndsNeverOnADayOrAfterSomeTimes)
{
    show(recurrence("FREQ=DAILY"));
    auto *const end = find<QComboBox>("Ends");
    end->setFocus();
    QTest::keyClick(end, Qt::Key_End);
    type<QSpinBox>("How many times", "3");
    EXPECT_EQ(rule(), "FREQ=DAILY;COUNT=3 2026-03-14T22:00:00");
    QTest::keyClick(end, Qt::Key_Up);
    find<QDateEdit>("Last day")->setDate({2026, 12, 31});
    EXPECT_EQ(rule(), "FREQ=DAILY;UNTIL=20261231T235959 2026-03-14T22:00:00");
    find<QDateEdit>("Last day")->setDate({2026, 3, 1});
    EXPECT_EQ(rule(), "It ends before it begins.");
    QTest::keyClick(end, Qt::Key_Home);
    EXPECT_EQ(form.recurrence(), given.recurrence);
}

TEST_F(RecurrenceFormTest, TheZoneIsTheMachinesOrANamedOne)
{
    show(recurrence("FREQ=DAILY"));
    auto *const zones = find<QComboBox>("Time zone");
    EXPECT_EQ(zones->currentText(), zone);
    zones->setEditText("Asia/Tokyo");
    EXPECT_EQ(form.timeZone(), "Asia/Tokyo");
    EXPECT_EQ(form.date(), utc("2026-03-14T13:00:00Z"));
    zones->setEditText("Asia/Tok");
    EXPECT_EQ(form.fault(), "There is no time zone \"Asia/Tok\".");
    show({schedule(recurrence("FREQ=DAILY")).recurrence.value()});
    EXPECT_EQ(zones->lineEdit()->cursorPosition(), 0) << "where a long name begins";
    zones->setCurrentIndex(0);
    EXPECT_EQ(form.timeZone(), "");
    EXPECT_EQ(form.fault(), "");
}

TEST_F(RecurrenceFormTest, ADayIsLeftOutAndTakenBack)
{
    show(recurrence("FREQ=WEEKLY;BYDAY=MO;BYHOUR=6,22", "2026-03-16T06:00:00"));
    find<QDateEdit>("Day to leave out")->setDate({2026, 3, 24});
    press("Leave this day out");
    EXPECT_TRUE(find<FaultLabel>("Nothing takes place on 24 March 2026 that could be left out."));
    find<QDateEdit>("Day to leave out")->setDate({2026, 3, 23});
    press("Leave this day out");
    const QList<WallTime> both{{{2026, 3, 23}, {6, 0}}, {{2026, 3, 23}, {22, 0}}};
    EXPECT_EQ(form.recurrence()->excludedDates, both);
    EXPECT_EQ(form.recurrence()->rule, given.recurrence->rule);
    auto *const list = find<QListWidget>("Exceptions");
    EXPECT_EQ(list->item(1)->text(), "not on 23 March 2026, 22:00");
    list->setCurrentRow(0);
    press("Take back");
    EXPECT_EQ(form.recurrence()->excludedDates, both.mid(1));
    list->setCurrentRow(0);
    press("Take back");
    EXPECT_EQ(form.recurrence(), given.recurrence);
}

TEST_F(RecurrenceFormTest, SaysWhenClocksSkipATimeOrShowItTwice)
{
    form.setRecurrence(utc("2026-03-28T01:30:00Z"), zone, {});
    find<QDateEdit>("Date")->setDate({2026, 3, 29});
    EXPECT_TRUE(find<FaultLabel>("Clocks skip 02:30 on that day; it takes place at 03:30."));
    find<QDateEdit>("Date")->setDate({2026, 10, 25});
    EXPECT_TRUE(find<FaultLabel>("Clocks show 02:30 twice on that day; it takes place at the first."));
}

TEST_F(RecurrenceFormTest, AnInvalidDateStandsForTheNextFullHour)
{
    clock->jumpTo(utc("2026-03-14T06:20:00Z"));
    form.setRecurrence({}, "", {});
    EXPECT_EQ(form.date(), utc("2026-03-14T07:00:00Z"));
    EXPECT_FALSE(form.isEdited());
}

TEST_F(RecurrenceFormTest, AWheelThatPassesChangesNothing)
{
    for (const Kind kind : {Kind::Weekly, Kind::Monthly, Kind::Yearly, Kind::Distance}) {
        show(recurrence("FREQ=DAILY;COUNT=3"));
        choose(kind);
        area.setFocus();
        const auto before = form.recurrence();
        for (auto *const field : form.findChildren<QWidget *>()) {
            QWheelEvent wheel(QPointF(2, 2), field->mapToGlobal(QPointF(2, 2)), {}, {0, 120}, Qt::NoButton,
                              Qt::NoModifier, Qt::NoScrollPhase, false);
            QApplication::sendEvent(field, &wheel);
        }
        EXPECT_EQ(form.recurrence(), before);
    }
}

TEST_F(RecurrenceFormTest, EveryFieldHasANameAndTheOrderThatIsSeen)
{
    for (const Kind kind : {Kind::Once, Kind::Daily, Kind::Weekdays, Kind::Weekly, Kind::Monthly,
                            Kind::Yearly, Kind::Distance, Kind::Expert}) {
        show(recurrence("FREQ=DAILY", "2026-03-14T22:00:00", {"2026-03-21T22:00:00"}));
        choose(kind);
        int last = -1;
        for (QWidget *widget = kinds()->nextInFocusChain(); widget != kinds();
             widget = widget->nextInFocusChain()) {
            const bool isStop = widget->isVisible() && (widget->focusPolicy() & Qt::TabFocus) != 0;
            if (!isStop || widget == &area || widget->focusProxy())
                continue;
            const QVariant text = widget->property("text");
            EXPECT_FALSE(widget->accessibleName().isEmpty() && text.toString().isEmpty())
                << widget->metaObject()->className();
            const int place = widget->mapTo(&form, QPoint(0, widget->height() / 2)).y();
            EXPECT_GE(place + widget->height(), last) << qPrintable(widget->accessibleName());
            last = place;
        }
    }
}
