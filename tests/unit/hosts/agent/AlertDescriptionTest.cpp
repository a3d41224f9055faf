// SPDX-License-Identifier: MIT
#include "AlertFixture.h"

#include "support/BaselineText.h"
#include "support/WidgetDescription.h"

#include <algorithm>

using namespace std::chrono_literals;

namespace
{
/// Everything of an alert, as text.
class AlertDescription : public AlertFixture
{
protected:
    testing::AssertionResult windowIs(const Alert &alert, const QString &name)
    {
        QCoreApplication::processEvents();
        return readsLikeBaseline(describe(window(alert)), "alert-" + name);
    }
};
} // namespace

TEST_F(AlertDescription, OfOneThatIsShownAndThenTakesInput)
{
    details = {"Every evening", "The computer goes off unless you cancel."};
    const Alert shown = alert("Power Off", 300s);
    show(shown);
    EXPECT_TRUE(windowIs(shown, "shown"));
    wait();
    EXPECT_TRUE(windowIs(shown, "waiting"));
    clock->advance(200s);
    EXPECT_TRUE(windowIs(shown, "later"));
}

TEST_F(AlertDescription, OfOneThatHasLessToSay)
{
    presenter->setLater(
        {[](const auto &) { return false; }, [](const auto &, Postponement) { return false; }});
    const Alert shown = alert("Power Off");
    shown->setInformativeText(
        "Will run on 14 Mar 2026, 19:30, on a machine whose name is long, and by which many "
        "other machines are kept running that nobody has thought of.");
    show(shown);
    EXPECT_TRUE(windowIs(shown, "plain"));
}

TEST_F(AlertDescription, OfTheLastForWhichThereIsRoom)
{
    QList<Alert> all;
    for (int number = 0; number < 9; ++number) {
        all += alert(QString("Number %1").arg(number));
        show(all.constLast());
    }
    const auto last = std::find_if(all.crbegin(), all.crend(), [this](const Alert &shown) {
        return presenter->window(shown) && window(shown).isVisible();
    });
    ASSERT_NE(last, all.crend());
    EXPECT_TRUE(windowIs(*last, "last"));
}
