// SPDX-License-Identifier: MIT
#include "hosts/daemon/PlugInAnswers.h"

#include "DozelyKit/core/bundles/NSBundle.h"
#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/core/foundation/RootFolder.h"
#include "DozelyKit/core/log/LogLabel.h"
#include "DozelyKit/core/log/ZDRLog.h"
#include "DozelyKit/plugin/Names.h"
#include "hosts/common/performing/AskingPerformer.h"
#include "hosts/common/plugins/PlugInLoader.h"
#include "hosts/daemon/KnownBundle.h"
#include "hosts/daemon/UsersOwnBundle.h"
#include "hosts/daemon/WaitingQuestions.h"

#include <utility>

using namespace dozely;

using Answers = PlugInAnswers::Answers;
using std::chrono::milliseconds;

namespace
{
/// A question that failed is asked again after so long,
constexpr milliseconds pauseAfterFailure = std::chrono::minutes(1);
/// or when it is due.
constexpr milliseconds pauseWhenDue = std::chrono::seconds(5);

/// What the base of the plug-in classes answers.
PlugInAnswer answerOfTheBase(const Schedule &schedule, const QString &pluginName)
{
    WDDaemonPlugIn base;
    base.setParameters(schedule.parameters);
    base.setCalendarDate(schedule.calendarDate());
    return {base.needsWakeUp(), base.needsStartup(), base.timeOut(), base.timeBeforeSelfAnticipation(),
            pluginName};
}

PerformanceOrder questionAbout(const Schedule &schedule)
{
    PerformanceOrder question;
    question.schedule = schedule.name;
    question.bundlePath = schedule.fullBundlePath();
    question.parameters = schedule.parameters;
    question.date = schedule.calendarDate();
    return question;
}
} // namespace

struct PlugInAnswers::Private {
    using Question = WaitingQuestions::Question;

    Private(PlugInAnswers *owner, QString program, Clock &clock)
        : owner(owner), clock(clock), performer(std::move(program), clock)
    {
    }

    KnownBundle &look(const QString &path);
    std::optional<Result<Answers>> known(const KnownBundle &bundle, const KnownBundle::Entry &entry) const;
    bool mayAsk(const KnownBundle::Entry &entry, Urgency urgency) const;
    void askNext();
    KnownBundle *bundleOf(const Question &asked);
    void note(const Question &asked, const AskingPerformer::Reply &reply);
    void noteDeath(const Question &asked, KnownBundle &bundle, const QString &why);
    void dropWaitingFor(const std::function<bool(const Question &)> &isUnwanted);
    void tellSoon();

    PlugInAnswers *const owner;
    Clock &clock;
    PlugInLoader loader{InfoKey::daemonModule, PlugInLoader::sourcesOfTheSystem()};
    QHash<QString, KnownBundle> bundles; // by their full paths
    WaitingQuestions waiting;
    std::optional<milliseconds> noPerformerSince;
    quint64 latestGeneration = 0;
    bool looksAreForgottenSoon = false;
    bool tellsSoon = false;
    AskingPerformer performer;
};

PlugInAnswers::PlugInAnswers(QString performer, Clock &clock)
    : d(std::make_unique<Private>(this, std::move(performer), clock))
{
}

PlugInAnswers::~PlugInAnswers() = default;

std::optional<Result<Answers>> PlugInAnswers::of(const Schedule &schedule, Urgency urgency)
{
    if (isUsersOwnBundle(schedule))
        return Answers{answerOfTheBase(schedule, {}), {}, true};
    KnownBundle &bundle = d->look(schedule.fullBundlePath());
    if (!bundle.refusal.isEmpty())
        return Error{bundle.refusal};
    if (!bundle.hasModule)
        return Answers{answerOfTheBase(schedule, bundle.pluginName), bundle.info};
    if (bundle.isLeftAlone())
        return Error{bundle.whyLeftAlone(schedule.fullBundlePath())};
    const ParametersDigest digest = ParametersDigest::of(schedule.parameters);
    KnownBundle::Entry entry = bundle.entries.value(digest);
    if (entry.isWaiting) {
        if (urgency == Urgency::Due)
            d->waiting.makeDue(schedule.fullBundlePath(), digest);
        return {};
    }
    const bool isDue = urgency == Urgency::Due;
    if (!d->mayAsk(entry, urgency)) {
        if (auto known = d->known(bundle, entry))
            return known;
        // Nobody can ask it now, on a machine that has no process left for one. What is due is tried all the
        // same.
        if (!isDue)
            return {};
        return Answers{answerOfTheBase(schedule, bundle.pluginName), bundle.info};
    }
    if (d->waiting.isFull() && !isDue)
        return {};
    d->waiting.add({questionAbout(schedule), digest, bundle.generation, isDue});
    entry.isWaiting = true;
    bundle.entries.insert(digest, entry);
    d->askNext();
    return {};
}

quint64 PlugInAnswers::stateOf(const QString &bundlePath)
{
    const KnownBundle &bundle = d->look(RootFolder::join(bundlePath));
    return bundle.refusal.isEmpty() ? 2 * bundle.generation + (bundle.isLeftAlone() ? 1 : 0) : 0;
}

void PlugInAnswers::noteDeath(const Schedule &schedule, const QString &why)
{
    const QString path = schedule.fullBundlePath();
    KnownBundle &bundle = d->look(path);
    bundle.latestDeath = why;
    ++bundle.deathsActing;
    ZDRLog("Schedule \"%@\": its plug-in %@ went wrong when it acted: %@%@", logLabel(schedule.name),
           logLabel(path), why, bundle.ending());
}

void PlugInAnswers::noteSuccess(const Schedule &schedule)
{
    d->look(schedule.fullBundlePath()).deathsActing = 0;
}

void PlugInAnswers::keepOnly(const QList<Schedule> &schedules)
{
    QHash<QString, QSet<ParametersDigest>> needed;
    for (const Schedule &schedule : schedules) {
        auto &digests = needed[schedule.fullBundlePath()];
        if (const auto bundle = d->bundles.constFind(schedule.fullBundlePath());
            bundle != d->bundles.cend() && !bundle->entries.isEmpty())
            digests.insert(ParametersDigest::of(schedule.parameters));
    }
    const auto isNeeded = [&](const QString &path, const ParametersDigest &digest) {
        const auto digests = needed.constFind(path);
        return digests != needed.cend() && digests->contains(digest);
    };
    d->dropWaitingFor([&](const Private::Question &question) {
        return !isNeeded(question.about.bundlePath, question.digest);
    });
    d->bundles.removeIf([&](const auto &entry) { return !needed.contains(entry.key()); });
    for (auto bundle = d->bundles.begin(); bundle != d->bundles.end(); ++bundle)
        bundle->keepOnly([&](const ParametersDigest &digest) { return isNeeded(bundle.key(), digest); });
}

/// What is known of the bundle there; whether it still is that one is looked at once a turn of the loop.
KnownBundle &PlugInAnswers::Private::look(const QString &path)
{
    KnownBundle &bundle = bundles[path];
    if (bundle.isLookedAt)
        return bundle;
    bundle.isLookedAt = true;
    if (!std::exchange(looksAreForgottenSoon, true)) {
        QMetaObject::invokeMethod(
            owner,
            [this] {
                looksAreForgottenSoon = false;
                for (KnownBundle &known : bundles)
                    known.isLookedAt = false;
            },
            Qt::QueuedConnection);
    }
    const auto found = loader.bundle(path);
    if (!found) {
        bundle.refusal = found.error().text;
        return bundle;
    }
    bundle.refusal.clear();
    if (bundle.isStill(path))
        return bundle;
    // What has loaded the former module has that one for good.
    performer.finish();
    bundle = KnownBundle::at(path, **found);
    bundle.generation = ++latestGeneration;
    return bundle;
}

std::optional<Result<Answers>> PlugInAnswers::Private::known(const KnownBundle &bundle,
                                                             const KnownBundle::Entry &entry) const
{
    if (entry.answer >= 0)
        return Answers{bundle.answers[entry.answer], bundle.info};
    if (entry.reason >= 0)
        return Error{bundle.reasons[entry.reason]};
    return {};
}

bool PlugInAnswers::Private::mayAsk(const KnownBundle::Entry &entry, Urgency urgency) const
{
    if (entry.answer >= 0 || entry.deaths >= mostDeaths)
        return false;
    const milliseconds pause = urgency == Urgency::Due ? pauseWhenDue : pauseAfterFailure;
    const auto isLongAgo = [&](milliseconds moment) { return clock.steadyTime() - moment >= pause; };
    if (noPerformerSince && !isLongAgo(*noPerformerSince))
        return false;
    return entry.reason < 0 || isLongAgo(entry.failed);
}

void PlugInAnswers::Private::askNext()
{
    while (!performer.isAsking()) {
        const auto next = waiting.take();
        if (!next) {
            performer.finish();
            return tellSoon();
        }
        if (bundleOf(*next))
            performer.ask(next->about,
                          [this, asked = *next](const AskingPerformer::Reply &reply) { note(asked, reply); });
    }
}

/// Null when the bundle has become another one, or nobody needs it any more.
KnownBundle *PlugInAnswers::Private::bundleOf(const Question &asked)
{
    const auto found = bundles.find(asked.about.bundlePath);
    return found != bundles.end() && found->generation == asked.generation ? &*found : nullptr;
}

void PlugInAnswers::Private::note(const Question &asked, const AskingPerformer::Reply &reply)
{
    using Kind = AskingPerformer::Reply::Kind;
    if (reply.kind == Kind::NotAsked) {
        if (!noPerformerSince)
            ZDRLog("No plug-in can be asked: %@", reply.answer.error().text);
        noPerformerSince = clock.steadyTime();
        for (KnownBundle &bundle : bundles)
            bundle.noneIsWaiting();
        waiting = {};
        clock.callAfter(pauseAfterFailure, owner, [this] { tellSoon(); }); // then it is tried again
        return tellSoon();
    }
    noPerformerSince.reset();
    KnownBundle *const bundle = bundleOf(asked);
    if (bundle && reply.kind == Kind::Died)
        noteDeath(asked, *bundle, reply.answer.error().text);
    else if (bundle && bundle->entries.contains(asked.digest))
        bundle->note(asked.digest, reply.answer, clock.steadyTime());
    if (asked.isDue)
        tellSoon();
    askNext();
}

void PlugInAnswers::Private::noteDeath(const Question &asked, KnownBundle &bundle, const QString &why)
{
    const QString path = asked.about.bundlePath;
    bundle.noteDeath(asked.digest, why, clock.steadyTime());
    ZDRLog("Schedule \"%@\": its plug-in %@ went wrong when it was asked: %@%@",
           logLabel(asked.about.schedule), logLabel(path), why, bundle.ending());
    if (!bundle.isLeftAlone())
        return;
    dropWaitingFor([&](const Question &question) { return question.about.bundlePath == path; });
    tellSoon();
}

void PlugInAnswers::Private::dropWaitingFor(const std::function<bool(const Question &)> &isUnwanted)
{
    waiting.drop([&](const Question &question) {
        const bool isDropped = isUnwanted(question);
        if (KnownBundle *const bundle = isDropped ? bundleOf(question) : nullptr)
            bundle->entries.remove(question.digest);
        return isDropped;
    });
}

void PlugInAnswers::Private::tellSoon()
{
    if (std::exchange(tellsSoon, true))
        return;
    QMetaObject::invokeMethod(
        owner,
        [this] {
            tellsSoon = false;
            Q_EMIT owner->answered();
        },
        Qt::QueuedConnection);
}
