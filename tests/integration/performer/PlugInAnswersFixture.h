// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/daemon/PlugInAnswers.h"

#include "PerformerFixture.h"
#include "support/FakeClock.h"

/// Plug-ins that are asked by a real performer, while the clock of who waits for it stands still.
class PlugInAnswersFixture : public PerformerFixture
{
protected:
    using Answers = PlugInAnswers::Answers;
    using Urgency = PlugInAnswers::Urgency;

    PlugInAnswersFixture()
    {
        QObject::connect(answers.get(), &PlugInAnswers::answered, [this] { ++told; });
    }

    /// A schedule of the bundle of that name.
    Schedule scheduleOf(const QString &bundle, const QVariantMap &parameters = {}) const
    {
        Schedule made = schedule("id");
        made.name = "Backup";
        made.bundlePath = QString("%1/%2.plugin").arg(plugIns, bundle);
        made.parameters = parameters;
        made.parameters.insert("Marks", root.join("/marks"));
        return made;
    }
    Schedule trouble(const QVariantMap &parameters = {}) const { return scheduleOf("Trouble", parameters); }

    /// The same bundle under another name, which says something else in its Info dictionary.
    void makeTrouble(const QString &name, QVariantMap info = {}) const
    {
        info.insert("WDDaemonModule", "TroublePlugIn.so");
        makeBundle(name, info);
    }

    /// What is known after it was asked for.
    dozely::Result<Answers> known(const Schedule &schedule, Urgency urgency = Urgency::Later)
    {
        std::optional<dozely::Result<Answers>> known;
        EXPECT_TRUE(waitUntil([&] { return (known = answers->of(schedule, urgency)).has_value(); }));
        return known.value_or(dozely::Error{"nothing is known"});
    }
    std::string reason(const Schedule &schedule, Urgency urgency = Urgency::Later)
    {
        const auto none = known(schedule, urgency);
        return none ? "there are answers" : none.error().text.toStdString();
    }
    std::string lines() const { return messages().join('\n').toStdString(); }

    FakeClock clock;
    int told = 0;
    std::unique_ptr<PlugInAnswers> answers = std::make_unique<PlugInAnswers>(PERFORMER_PROGRAM, clock);
};
