// SPDX-License-Identifier: MIT
#include "hosts/common/performing/Performances.h"

#include "DozelyKit/core/files/GuardedFile.h"
#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/core/foundation/Descriptor.h"
#include "DozelyKit/core/foundation/DescriptorWatch.h"
#include "DozelyKit/core/foundation/RootFolder.h"
#include "DozelyKit/system/machine/ChildProgram.h"
#include "hosts/common/performing/OrderStream.h"
#include "hosts/common/performing/PlaceLock.h"

#include <QDir>
#include <QFile>

#include <cerrno>
#include <poll.h>
#include <sys/socket.h>

using namespace dozely;

namespace
{
/// Between two looks at those of an earlier process, whose end nobody tells.
constexpr std::chrono::seconds betweenLooks(1);

/// What an action finds is what it would have found within the host.
QByteArrayList ownEnvironment()
{
    QByteArrayList environment;
    for (char **entry = environ; *entry; ++entry)
        environment += *entry;
    return environment;
}

constexpr qint64 largestOutcome = 1 << 20; // bytes
} // namespace

struct Performances::Running {
    Ended ended;
    Descriptor host; ///< The performer has the other end; none for one of an earlier process.
    std::unique_ptr<DescriptorWatch> watch;
};

QString Performances::programNamed(const QString &name)
{
    return RootFolder::join(QString(DOZELY_LIBEXECDIR) + '/' + name);
}

Performances::Performances(QString program, QString folder, Clock &clock)
    : m_program(std::move(program)), m_folder(std::move(folder)), m_clock(clock)
{
}

Performances::~Performances() = default;

QString Performances::placeOf(const QString &name) const
{
    return m_folder + '/' + name;
}

Result<void> Performances::prepare(const QString &name, PerformanceOrder order, Ended ended)
{
    order.place = placeOf(name);
    int ends[2];
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0, ends) != 0)
        return Error{qt_error_string(errno)};
    auto running = std::make_shared<Running>();
    running->ended = std::move(ended);
    running->host.reset(ends[0]);
    const Descriptor theirs(ends[1]);
    if (auto made = PlaceLock::make(order.place); !made)
        return made;
    ChildProgram program{m_program, {"--root", RootFolder::path()}, ownEnvironment()};
    program.input = theirs.get();
    // Sent before there is somebody to read it: it waits.
    auto sent = OrderStream::send(running->host.get(), order);
    if (!sent || !program.launch()) {
        QFile::remove(order.place);
        return sent ? Error{QString("%1 could not be started").arg(m_program)} : sent.error();
    }
    running->watch = std::make_unique<DescriptorWatch>([this, name] { finish(name); });
    running->watch->watch(running->host.get(), POLLIN); // it says nothing but that it ends
    m_running.insert(name, running);
    return {};
}

bool Performances::go(const QString &name)
{
    const auto running = m_running.value(name);
    return running && OrderStream::go(running->host.get());
}

void Performances::callOff(const QString &name)
{
    // The end of the connection is how the performer learns of it; it removes nothing.
    if (m_running.remove(name) > 0)
        QFile::remove(placeOf(name));
}

bool Performances::isThere(const QString &name) const
{
    const bool goesOn = PlaceLock::isHeld(placeOf(name)) || !PlaceLock::takeBack(placeOf(name));
    return goesOn || QFile::exists(PerformanceOutcome::pathBeside(placeOf(name)));
}

bool Performances::adopt(const QString &name, Ended ended)
{
    if (!isThere(name))
        return false;
    auto running = std::make_shared<Running>();
    running->ended = std::move(ended);
    m_running.insert(name, running);
    lookAtAdopted();
    return true;
}

void Performances::lookAtAdopted()
{
    if (m_isLooking)
        return;
    m_isLooking = true;
    m_clock.callAfter(betweenLooks, this, [this] {
        m_isLooking = false;
        bool goesOn = false;
        for (const QString &name : m_running.keys()) {
            if (m_running[name]->host.isValid())
                continue;
            if (PlaceLock::isHeld(placeOf(name)))
                goesOn = true;
            else
                finish(name);
        }
        if (goesOn)
            lookAtAdopted();
    });
}

std::optional<PerformanceOutcome> Performances::takeOutcome(const QString &name) const
{
    const QString path = PerformanceOutcome::pathBeside(placeOf(name));
    const auto content =
        GuardedFile({path, largestOutcome, 0600, GuardedFile::Owners::SystemAndThisUser}).read();
    QFile::remove(path);
    if (!content || !*content)
        return {};
    const auto outcome = PerformanceOutcome::fromData(**content);
    return outcome ? std::optional(*outcome) : std::nullopt;
}

void Performances::finish(const QString &name)
{
    const auto running = m_running.take(name); // stays for as long as its own handler runs
    const auto outcome = takeOutcome(name);
    QFile::remove(placeOf(name));
    running->ended(outcome.value_or(PerformanceOutcome{true, "its performer ended without a word"}));
}

void Performances::sweep(const QStringList &names) const
{
    for (const QString &entry : QDir(m_folder).entryList(QDir::Files | QDir::System | QDir::Hidden)) {
        if (!names.contains(entry.section('.', 0, 0)) && PlaceLock::takeBack(m_folder + '/' + entry))
            QFile::remove(m_folder + '/' + entry);
    }
}
