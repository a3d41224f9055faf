// SPDX-License-Identifier: MIT
#include "hosts/application/window/PowerForm.h"

#include "support/PrintTo.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QSpinBox>

#include <gmock/gmock.h>

namespace
{
class PowerFormTest : public testing::Test
{
protected:
    PowerFormTest()
    {
        QObject::connect(&form, &PowerForm::edited, [this](const QVariantMap &changes) { edits += changes; });
    }
    QCheckBox &box(const char *name) const { return *form.findChild<QCheckBox *>(name); }
    QSpinBox &minutes() const { return *form.findChild<QSpinBox *>("minutes"); }
    /// What is shown of an alert so many seconds ahead.
    int minutesFor(const QVariant &seconds)
    {
        form.show({{"Alert", 1}, {"Delay before alert", seconds}});
        return minutes().value();
    }

    PowerForm form;
    QList<QVariantMap> edits;
};
} // namespace

TEST_F(PowerFormTest, ShowsWholeMinutesAndNoAlertLaterThanItIs)
{
    for (const auto &[seconds, shown] : {std::pair(1, 1), std::pair(60, 1), std::pair(61, 2),
                                         std::pair(120, 2), std::pair(86'400, 1440), std::pair(90'000, 1440)})
        EXPECT_EQ(minutesFor(seconds), shown) << seconds;
    EXPECT_TRUE(edits.isEmpty()) << "showing tells nobody";
}

TEST_F(PowerFormTest, ShowsAnAlertOnlyWhereThereWillBeOne)
{
    for (const auto &[alert, seconds, warns] :
         {std::tuple(1, 60, true), std::tuple(2, 1, true), std::tuple(0, 60, false), std::tuple(1, 0, false),
          std::tuple(1, -1, false)}) {
        form.show({{"Alert", alert}, {"Delay before alert", seconds}});
        EXPECT_EQ(box("warns").isChecked(), warns) << alert << " " << seconds;
        EXPECT_EQ(minutes().isEnabled(), warns) << alert << " " << seconds;
    }
    EXPECT_EQ(minutesFor(0), 1) << "what is proposed";
}

TEST_F(PowerFormTest, ShowsWhatWakesOrSwitchesOnTheComputer)
{
    for (const auto &[value, isOn] : {std::pair(0, false), std::pair(1, true), std::pair(2, false)}) {
        form.show({{"Needs Wake Up", value}});
        EXPECT_EQ(box("wakes").isChecked(), isOn) << value;
        EXPECT_FALSE(box("switchesOn").isChecked()) << value;
        form.show({{"Needs Startup", value}});
        EXPECT_EQ(box("switchesOn").isChecked(), isOn) << value;
        EXPECT_FALSE(box("wakes").isChecked()) << value;
    }
}

TEST_F(PowerFormTest, TellsWhatIsEdited)
{
    form.show({});
    box("warns").click();
    minutes().setValue(5);
    box("warns").click();
    box("wakes").click();
    box("switchesOn").click();
    box("wakes").click();
    const QList<QVariantMap> expected{{{"Alert", 1}, {"Delay before alert", 60}},
                                      {{"Alert", 1}, {"Delay before alert", 300}},
                                      {{"Alert", 0}},
                                      {{"Needs Wake Up", 1}},
                                      {{"Needs Startup", 1}},
                                      {{"Needs Wake Up", 0}}};
    EXPECT_EQ(edits, expected);
}
