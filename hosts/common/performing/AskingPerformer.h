// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Descriptor.h"
#include "DozelyKit/system/machine/RunningProgram.h"
#include "hosts/common/performing/PerformanceOrder.h"
#include "hosts/common/performing/PlugInAnswer.h"

#include <QObject>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

namespace dozely
{
class Clock;
class DescriptorWatch;
} // namespace dozely

/// A performer that asks plug-ins, one question after the other. It is started for the first question, and
/// another one when that has ended, or was killed because a plug-in took too long.
///
/// THREADING: the main thread. BLOCKING: only to wait for a performer that it has killed.
class AskingPerformer : public QObject
{
    Q_OBJECT
public:
    /// A plug-in may take so long for all that it is asked about one occurrence, not counted what its process
    /// stood waiting for a processor, which is no fault of it,
    static constexpr std::chrono::seconds timeToAnswer{2};
    /// and all in all so long,
    static constexpr std::chrono::seconds longestToAnswer{20};
    /// and a performer so long to begin, which is no plug-in's fault.
    static constexpr std::chrono::seconds timeToBegin{15};

    struct Reply {
        enum class Kind {
            Answered, ///< By the plug-in, or by the performer that could not make one.
            Died,     ///< While it was asked. The answer says how, as a clause.
            NotAsked, ///< There is no performer, or no way to reach it. The answer says why.
        };
        Kind kind;
        dozely::Result<PlugInAnswer> answer;
    };
    using Replied = std::function<void(const Reply &)>;

    /// For how long a program has waited for a processor.
    using Starved = std::function<std::chrono::milliseconds(const dozely::RunningProgram &)>;

    /// `program` is the performer's full path. `clock` must outlive the object.
    AskingPerformer(QString program, dozely::Clock &clock,
                    Starved starved = &dozely::RunningProgram::timeWithoutProcessor);
    /// Ends the performer without a word.
    ~AskingPerformer() override;

    bool isAsking() const { return m_replied != nullptr; }

    /// Asks what there is to know of the occurrence; its place and its limits mean nothing. While nothing is
    /// asked. `replied` is called once, from the event loop, and may ask the next.
    void ask(const PerformanceOrder &question, Replied replied);

    /// Lets the performer end, after its answer when it is being asked: there is no more to ask, or what it
    /// has loaded is of yesterday. The next question has a new one.
    void finish();

private:
    enum class State { None, Beginning, Ready, Ending };
    void begin();
    void send();
    void notSent(const dozely::Error &why);
    void hear();
    void take(const QByteArray &packet);
    void ended(const QString &how);
    void end(const QString &why);
    std::optional<QByteArray> receive() const;
    void reply(Reply::Kind kind, const dozely::Result<PlugInAnswer> &answer);
    void limit(std::chrono::milliseconds duration);
    void watchLimit();
    void lookAtLimit();
    std::chrono::milliseconds allowed() const;

    const QString m_program;
    dozely::Clock &m_clock;
    const Starved m_starved;
    State m_state = State::None;
    dozely::Descriptor m_host;
    std::unique_ptr<dozely::DescriptorWatch> m_watch;
    std::unique_ptr<dozely::RunningProgram> m_performer;
    PerformanceOrder m_question;
    Replied m_replied; // while something is asked
    bool m_isSecondTry = false;
    bool m_finishesNext = false;
    std::chrono::milliseconds m_starvedBefore{0}; // when it was asked
    std::chrono::milliseconds m_limitBegan{0};    // on the steady clock, as the two below
    std::optional<std::chrono::milliseconds> m_limit;
    std::optional<std::chrono::milliseconds> m_timer; // when the next one looks at the limit
};
