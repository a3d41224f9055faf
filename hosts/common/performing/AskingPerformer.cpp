// SPDX-License-Identifier: MIT
#include "hosts/common/performing/AskingPerformer.h"

#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/core/foundation/DescriptorWatch.h"
#include "DozelyKit/core/foundation/RootFolder.h"
#include "DozelyKit/system/machine/ChildProgram.h"
#include "hosts/common/performing/OrderStream.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <poll.h>
#include <sys/socket.h>
#include <utility>

using namespace dozely;

namespace
{
QString howItEnded(const Result<ChildProgram::Ending> &ending)
{
    if (!ending)
        return ending.error().text;
    if (ending->signal != 0)
        return QString("its process was ended by signal %1 (%2)")
            .arg(ending->signal)
            .arg(QString::fromLocal8Bit(::strsignal(ending->signal)));
    return QString("its process ended by itself with status %1").arg(ending->status);
}
} // namespace

AskingPerformer::AskingPerformer(QString program, Clock &clock, Starved starved)
    : m_program(std::move(program)), m_clock(clock), m_starved(std::move(starved))
{
}

AskingPerformer::~AskingPerformer() = default;

void AskingPerformer::ask(const PerformanceOrder &question, Replied replied)
{
    m_question = question;
    m_replied = std::move(replied);
    m_isSecondTry = false;
    if (m_state == State::None)
        begin();
    else if (m_state == State::Ready)
        send();
}

void AskingPerformer::finish()
{
    m_finishesNext = isAsking() && m_state == State::Ready;
    if (isAsking() || m_state != State::Ready)
        return;
    m_state = State::Ending;
    m_watch.reset();
    m_host.reset();
    limit(timeToAnswer);
}

void AskingPerformer::begin()
{
    m_state = State::Beginning;
    limit(timeToBegin);
    int ends[2];
    if (::socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends) == 0) {
        m_host.reset(ends[0]);
        const Descriptor theirs(ends[1]);
        ChildProgram program{m_program, {"--ask", "--root", RootFolder::path()}, {}};
        program.input = theirs.get();
        m_watch = std::make_unique<DescriptorWatch>([this] { hear(); });
        m_watch->watch(m_host.get(), POLLIN);
        m_performer =
            program.start([this](const Result<ChildProgram::Ending> &ending) { ended(howItEnded(ending)); });
        return;
    }
    const QString why = qt_error_string(errno);
    QMetaObject::invokeMethod(
        this, [this, why] { ended(why); }, Qt::QueuedConnection);
}

void AskingPerformer::send()
{
    m_starvedBefore = m_starved(*m_performer);
    limit(timeToAnswer);
    if (const auto sent = OrderStream::send(m_host.get(), m_question); !sent)
        notSent(sent.error());
}

/// The performer has ended since its last answer, or the machine lacks memory: no plug-in can help that.
/// Another performer gets the question, once.
void AskingPerformer::notSent(const Error &why)
{
    m_state = State::None;
    m_limit.reset();
    m_watch.reset();
    m_host.reset();
    m_performer.reset();
    const bool isUnsendable = why.name == OrderStream::unsendable;
    if (!isUnsendable && !std::exchange(m_isSecondTry, true))
        return begin();
    const auto kind = isUnsendable ? Reply::Kind::Answered : Reply::Kind::NotAsked;
    QMetaObject::invokeMethod(
        this, [this, kind, why] { reply(kind, why); }, Qt::QueuedConnection);
}

void AskingPerformer::hear()
{
    const auto packet = receive();
    if (packet && packet->isEmpty())
        m_watch->watch(-1, 0); // it is about to end, or pretends to
    else if (packet)
        take(*packet);
}

/// Empty at the end of the stream; absent while there is nothing.
std::optional<QByteArray> AskingPerformer::receive() const
{
    QByteArray packet(PlugInAnswer::mostBytes + 1, Qt::Uninitialized);
    const ssize_t size =
        ::recv(m_host.get(), packet.data(), static_cast<size_t>(packet.size()), MSG_DONTWAIT);
    if (size < 0 && (errno == EAGAIN || errno == EINTR))
        return {};
    return packet.first(std::max<ssize_t>(size, 0));
}

void AskingPerformer::take(const QByteArray &packet)
{
    if (m_state == State::Beginning) {
        m_state = State::Ready;
        send(); // the question that it was begun for
    } else if (m_state == State::Ready && isAsking()) {
        m_limit.reset();
        const auto replied = std::exchange(m_replied, nullptr);
        if (m_finishesNext)
            finish();
        replied({Reply::Kind::Answered, PlugInAnswer::fromPacket(packet)});
    }
}

void AskingPerformer::ended(const QString &how)
{
    // What it has said last may not have been heard yet.
    const bool mayHaveAnswered = m_state == State::Ready && isAsking() && m_host.isValid();
    const auto packet = mayHaveAnswered ? receive() : std::nullopt;
    if (!packet || packet->isEmpty())
        return end(how);
    const auto replied = std::exchange(m_replied, nullptr);
    end(how);
    replied({Reply::Kind::Answered, PlugInAnswer::fromPacket(*packet)});
}

/// Ends the performer, in whatever it is; `why` is for who waits for its answer.
void AskingPerformer::end(const QString &why)
{
    const State former = std::exchange(m_state, State::None);
    m_finishesNext = false;
    m_limit.reset();
    m_watch.reset();
    m_host.reset();
    m_performer.reset();
    if (!isAsking())
        return;
    if (former == State::Ending)
        begin();
    else if (former == State::Beginning)
        reply(Reply::Kind::NotAsked, Error{QString("%1 could not be started: %2").arg(m_program, why)});
    else
        reply(Reply::Kind::Died, Error{why});
}

void AskingPerformer::reply(Reply::Kind kind, const Result<PlugInAnswer> &answer)
{
    const auto replied = std::exchange(m_replied, nullptr);
    replied({kind, answer});
}

void AskingPerformer::limit(std::chrono::milliseconds duration)
{
    m_limitBegan = m_clock.steadyTime();
    m_limit = m_limitBegan + duration;
    watchLimit();
}

/// Most limits are never reached: a timer that fires soon enough is left alone.
void AskingPerformer::watchLimit()
{
    if (!m_limit || (m_timer && *m_timer <= *m_limit))
        return;
    m_timer = m_limit;
    m_clock.callAfter(*m_limit - m_clock.steadyTime(), this, [this, moment = *m_limit] {
        if (m_timer == moment)
            m_timer.reset();
        lookAtLimit();
    });
}

void AskingPerformer::lookAtLimit()
{
    if (!m_limit || m_clock.steadyTime() < *m_limit)
        return watchLimit();
    if (m_limit = m_limitBegan + allowed(); m_clock.steadyTime() < *m_limit)
        return watchLimit();
    // This process may have had to wait as well, and not have heard the answer yet.
    if (m_state == State::Ready) {
        if (const auto packet = receive(); packet && !packet->isEmpty())
            return take(*packet);
    }
    const auto kind = m_state == State::Beginning    ? timeToBegin
                      : allowed() == longestToAnswer ? longestToAnswer
                                                     : timeToAnswer;
    end(QString("it took longer than %1 s").arg(kind.count()));
}

/// How long what goes on may take from its beginning.
std::chrono::milliseconds AskingPerformer::allowed() const
{
    if (m_state == State::Beginning)
        return timeToBegin;
    const bool isAsked = m_state == State::Ready && m_performer;
    const auto starved = isAsked ? m_starved(*m_performer) - m_starvedBefore : std::chrono::milliseconds(0);
    return std::clamp<std::chrono::milliseconds>(timeToAnswer + starved, timeToAnswer, longestToAnswer);
}
