// SPDX-License-Identifier: MIT
#include "hosts/daemon/DaemonActions.h"
#include "DozelyKit/core/foundation/Descriptor.h"
#include "hosts/common/performing/OrderStream.h"
#include "hosts/daemon/ScheduleKeeper.h"
#include "support/FakeClock.h"
#include "unit/hosts/daemon/PerformingFixture.h"

#include <fcntl.h>

using namespace dozely;

namespace
{
/// The first performer takes its order, and ends before it has heard that it may act.
class FirstEndsUnheard : public ForkedStart
{
public:
    using ForkedStart::ForkedStart;

    void start(const Performer &performer, Answered answered) override
    {
        if (++m_count > 1)
            return ForkedStart::start(performer, std::move(answered));
        m_input.reset(::fcntl(performer.input, F_DUPFD_CLOEXEC, 3));
        EXPECT_TRUE(OrderStream::read(m_input.get()));
        QMetaObject::invokeMethod(
            &m_context, [answered = std::move(answered)] { answered({}); }, Qt::QueuedConnection);
    }
    void endFirst() { m_input.reset(); }
    int count() const { return m_count; }

private:
    int m_count = 0;
    Descriptor m_input;
    QObject m_context;
};
} // namespace

class DaemonActionsTest : public PerformingFixture
{
protected:
    DaemonActionsTest()
    {
        makeProbe();
        occurrence.schedule.parameters = {{"Acts In User Agent", 0LL}, {"Text", "hello"}};
    }

    /// Has its performer made ready, lets it act, and ends it before it hears that.
    void performUnheard()
    {
        actions.prepare(occurrence, {});
        keeper.noteBegun({{occurrence, ActingPlace::Daemon}});
        actions.perform(occurrence, {});
        machine->endFirst();
    }
    std::optional<OccurrenceState> state() const
    {
        const auto entry = keeper.scheduler().record().find("a", noon());
        return entry ? std::optional(entry->state) : std::nullopt;
    }

    FakeClock clock{noon()};
    ScheduleKeeper keeper{clock};
    FirstEndsUnheard *machine = new FirstEndsUnheard(Performances::programNamed("dozely-performer"));
    Performances performances{std::unique_ptr<PerformerStart>(machine), DaemonActions::folder(), clock};
    PlugInAnswers answers{Performances::programNamed("dozely-performer"), clock};
    DaemonActions actions{keeper, performances, answers};
    Occurrence occurrence{schedule("a"), noon()};
};

TEST_F(DaemonActionsTest, PerformsWhatWasMadeReadyByOneThatEndedBeforeItHeardThatItMayAct)
{
    performUnheard();
    EXPECT_TRUE(waitUntil([&] { return state() == OccurrenceState::Done; }));
    EXPECT_EQ(machine->count(), 2);
    EXPECT_EQ(messages().filter("Probe acts").size(), 1);
}

TEST_F(DaemonActionsTest, CallsInterruptedWhatAnEarlierDaemonBeganAndNobodyHasAnyMore)
{
    keeper.scheduler().setSchedules({occurrence.schedule});
    keeper.noteBegun({{occurrence, ActingPlace::Daemon}});
    EXPECT_EQ(state(), OccurrenceState::Begun);
    actions.takeUp();
    EXPECT_TRUE(waitUntil([&] { return state() == OccurrenceState::Interrupted; }));
    EXPECT_FALSE(actions.isGoingOn("a"));
    EXPECT_EQ(messages().filter("was interrupted and is not repeated").size(), 1);
}

TEST_F(DaemonActionsTest, CountsDeathsUntilOneEndsWell)
{
    performUnheard();
    ASSERT_TRUE(waitUntil([&] { return state() == OccurrenceState::Done; }));
    int minutes = 0;
    const auto perform = [&](const char *then) {
        occurrence.schedule.parameters["Then"] = then;
        occurrence.date = noon().addSecs(60 * ++minutes);
        keeper.noteBegun({{occurrence, ActingPlace::Daemon}});
        actions.perform(occurrence, {});
        EXPECT_TRUE(waitUntil([&] { return !actions.isGoingOn("a"); }));
    };
    const auto isLeftAlone = [&] { return answers.stateOf(occurrence.schedule.bundlePath) % 2 == 1; };
    for (int i = 1; i < PlugInAnswers::mostDeaths; ++i)
        perform("crash");
    EXPECT_FALSE(isLeftAlone());
    perform("end");
    for (int i = 1; i < PlugInAnswers::mostDeaths; ++i)
        perform("crash");
    EXPECT_FALSE(isLeftAlone());
    perform("crash");
    EXPECT_TRUE(isLeftAlone());
}
