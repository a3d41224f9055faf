// SPDX-License-Identifier: MIT
#include "hosts/common/performing/Performances.h"

#include "DozelyKit/core/files/GuardedFile.h"
#include "DozelyKit/core/files/PropertyList.h"
#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/core/foundation/Descriptor.h"
#include "DozelyKit/core/foundation/DescriptorWatch.h"
#include "DozelyKit/core/foundation/RootFolder.h"
#include "hosts/common/performing/OrderStream.h"
#include "hosts/common/performing/PlaceLock.h"

#include <QDir>
#include <QFile>
#include <QRandomGenerator>

#include <cerrno>
#include <poll.h>
#include <sys/socket.h>
#include <utility>

using namespace dozely;

namespace
{
/// Between two looks at those of an earlier process, whose end nobody tells.
constexpr std::chrono::seconds betweenLooks(1);

constexpr qint64 largestOutcome = 1 << 20; // bytes

/// The order stands in the file of its performance after the mark, which is a line, for the next host.
std::optional<PerformanceOrder> notedOrder(const QString &place)
{
    const auto content =
        GuardedFile({place, PropertyList::ofTheSystem.size, 0600, GuardedFile::Owners::SystemAndThisUser})
            .read();
    if (!content || !*content)
        return {};
    const auto order = PerformanceOrder::fromData((*content)->sliced((*content)->indexOf('\n') + 1));
    return order ? std::optional(*order) : std::nullopt;
}
} // namespace

struct Performances::Running {
    Ended ended;
    Begun begun;     ///< None once it was called.
    Descriptor host; ///< The performer has the other end; none for one of an earlier process.
    std::unique_ptr<DescriptorWatch> watch;
    bool isLetGo = true;  ///< Or, of one of an earlier process, may have been.
    bool isAsked = false; ///< Its start was asked for and not answered yet.
    bool isOver = false;  ///< It has ended and left no outcome: why is to be found out.
};

QString Performances::programNamed(const QString &name)
{
    return RootFolder::join(QString(DOZELY_LIBEXECDIR) + '/' + name);
}

Performances::Performances(std::unique_ptr<PerformerStart> performers, const QString &folder, Clock &clock,
                           const QString &spareFolder)
    : m_folders(spareFolder.isEmpty() ? QStringList{folder} : QStringList{folder, spareFolder}),
      m_clock(clock),
      m_performers(std::move(performers))
{
}

Performances::~Performances() = default;

QString Performances::placeOf(const QString &name) const
{
    for (const QString &folder : m_folders) {
        const QString place = folder + '/' + name;
        if (QFile::exists(place) || QFile::exists(PerformanceOutcome::pathBeside(place)))
            return place;
    }
    return m_folders.first() + '/' + name;
}

Result<void> Performances::makePlace(const QString &name, PerformanceOrder &order) const
{
    Result<void> made;
    for (const QString &folder : m_folders) {
        order.place = folder + '/' + name;
        const QByteArray content = order.placeMark + order.toData();
        made = PlaceLock::make(order.place, content);
        if (!made && !PlaceLock::takeBack(order.place))
            break; // another one goes on there
        if (!made)
            made = PlaceLock::make(order.place, content); // what was there was left by one that is over
        if (made)
            break;
    }
    return made;
}

Result<void> Performances::prepare(const QString &name, PerformanceOrder order, Ended ended, Begun begun)
{
    int ends[2];
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0, ends) != 0)
        return Error{qt_error_string(errno)};
    auto running = std::make_shared<Running>();
    running->ended = std::move(ended);
    running->begun = std::move(begun);
    running->isLetGo = false;
    running->host.reset(ends[0]);
    const Descriptor theirs(ends[1]);
    order.placeMark = QByteArray::number(QRandomGenerator::global()->generate64(), 16) + '\n';
    if (auto made = makePlace(name, order); !made)
        return made;
    // Sent before there is somebody to read it: it waits.
    if (auto sent = OrderStream::send(running->host.get(), order); !sent) {
        QFile::remove(order.place);
        return sent;
    }
    running->watch = std::make_unique<DescriptorWatch>([this, name] { hear(name); });
    running->watch->watch(running->host.get(), POLLIN);
    running->isAsked = true;
    m_running.insert(name, running);
    m_performers->start({name, order.schedule, order.limits, theirs.get()},
                        [this, name, asked = std::weak_ptr(running)](const Result<void> &started) {
                            if (asked.lock() && asked.lock() == m_running.value(name))
                                answered(name, started); // else it has ended, or was called off
                        });
    return {};
}

void Performances::answered(const QString &name, const Result<void> &started)
{
    const auto running = m_running.value(name);
    running->isAsked = false;
    // One whose start nobody confirms may run all the same; then it has its place.
    if (!started && PlaceLock::takeBack(placeOf(name)))
        tell(name, PerformanceOutcome{false, started.error().text});
    else if (running->isOver)
        finish(name);
}

/// The other end is closed: by the performer, or because none was started.
void Performances::hearEnd(const QString &name)
{
    const auto running = m_running.value(name); // stays for as long as its own handler runs
    running->watch->watch(-1, 0);
    if (!running->isAsked || QFile::exists(PerformanceOutcome::pathBeside(placeOf(name))))
        finish(name);
    else
        running->isOver = true;
}

bool Performances::go(const QString &name)
{
    const auto running = m_running.value(name);
    if (!running)
        return false;
    running->isLetGo = OrderStream::go(running->host.get());
    if (!running->isLetGo)
        ::shutdown(running->host.get(), SHUT_WR); // so that one that is there does not wait for ever
    return running->isLetGo;
}

void Performances::callOff(const QString &name)
{
    // The end of the connection is how the performer learns of it, or a file that is not its own.
    if (m_running.remove(name) == 0)
        return;
    m_performers->forget(name);
    QFile::remove(placeOf(name));
    removeOutcome(name); // of one that ended before
}

bool Performances::takeBack(const QString &name)
{
    if (!m_running.contains(name) || !PlaceLock::takeBackUntouched(placeOf(name)))
        return false;
    m_running.remove(name);
    m_performers->forget(name);
    return true;
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
    lookAtAdopted(std::chrono::milliseconds(0));
    return true;
}

void Performances::lookAtAdopted(std::chrono::milliseconds delay)
{
    if (m_isLooking)
        return;
    m_isLooking = true;
    m_clock.callAfter(delay, this, [this] {
        m_isLooking = false;
        bool goesOn = false;
        for (const QString &name : m_running.keys()) {
            if (m_running[name]->host.isValid() || m_running[name]->isOver)
                continue;
            if (PlaceLock::isHeld(placeOf(name)))
                goesOn = true;
            else
                finish(name);
        }
        if (goesOn)
            lookAtAdopted(betweenLooks);
    });
}

std::optional<PerformanceOutcome> Performances::outcomeOf(const QString &name) const
{
    const QString path = PerformanceOutcome::pathBeside(placeOf(name));
    const auto content =
        GuardedFile({path, largestOutcome, 0600, GuardedFile::Owners::SystemAndThisUser}).read();
    if (!content || !*content)
        return {};
    const auto outcome = PerformanceOutcome::fromData(**content);
    return outcome ? std::optional(*outcome) : std::nullopt;
}

void Performances::hear(const QString &name)
{
    const auto running = m_running.value(name); // stays for as long as its own handler runs
    switch (OrderStream::hear(running->host.get())) {
    case OrderStream::News::None:
        break;
    case OrderStream::News::Begun:
        if (const Begun begun = std::exchange(running->begun, {}))
            begun();
        break;
    case OrderStream::News::EndedUnheard:
        running->isLetGo = false;
        hearEnd(name);
        break;
    case OrderStream::News::Ended:
        hearEnd(name);
        break;
    }
}

void Performances::finish(const QString &name)
{
    if (const auto outcome = outcomeOf(name))
        tell(name, *outcome);
    else
        finishWithoutOutcome(name);
}

void Performances::finishWithoutOutcome(const QString &name)
{
    const auto running = m_running.value(name);
    running->isOver = true; // told once, when it is known
    m_performers->tellEnd(name, [this, name, over = std::weak_ptr(running)](const QString &end) {
        const auto ended = over.lock();
        if (!ended || ended != m_running.value(name))
            return; // called off meanwhile
        const QString what = "its performer ended without a word";
        tell(name, PerformanceOutcome{ended->isLetGo, end.isEmpty() ? what : what + ": " + end});
    });
}

void Performances::tell(const QString &name, const PerformanceOutcome &outcome)
{
    const auto running = m_running.take(name);
    m_performers->forget(name);
    QFile::remove(placeOf(name));
    running->ended(outcome);
    if (!m_kept.contains(name) && !m_running.contains(name)) // it may have been started anew
        removeOutcome(name);
}

QHash<QString, PerformanceOrder> Performances::ofEarlierHosts() const
{
    QHash<QString, PerformanceOrder> orders;
    for (const QString &folder : m_folders) {
        for (const QString &name : QDir(folder).entryList(QDir::Files | QDir::Hidden)) {
            if (name.contains('.') || m_running.contains(name))
                continue;
            if (const auto order = notedOrder(folder + '/' + name))
                orders.insert(name, *order);
        }
    }
    return orders;
}

void Performances::askAllToEnd() const
{
    for (const QString &name : m_running.keys()) {
        // Whoever has not got the lock yet does not get it any more, or has got it meanwhile.
        if (!PlaceLock::askToEnd(placeOf(name)) && !PlaceLock::takeBack(placeOf(name)))
            PlaceLock::askToEnd(placeOf(name));
    }
}

void Performances::forget(const QString &name)
{
    if (m_kept.remove(name))
        removeOutcome(name);
}

void Performances::removeOutcome(const QString &name) const
{
    QFile::remove(PerformanceOutcome::pathBeside(placeOf(name)));
    QFile::remove(PerformanceOutcome::unfinishedPathBeside(placeOf(name)));
}

void Performances::sweep(const QStringList &names)
{
    for (const QString &folder : m_folders)
        sweepFolder(folder, names);
}

void Performances::sweepFolder(const QString &folder, const QStringList &names)
{
    for (const QString &entry : QDir(folder).entryList(QDir::Files | QDir::System | QDir::Hidden)) {
        const QString name = entry.section('.', 0, 0);
        const bool isUnfinished = entry == PlaceLock::unfinishedPathBeside(name);
        if (isUnfinished)
            QFile::remove(folder + '/' + entry); // no other host makes any
        if (isUnfinished || names.contains(name))
            continue;
        if (PlaceLock::takeBack(folder + '/' + entry))
            QFile::remove(folder + '/' + entry);
        else if (entry == name) // it still ends, or goes on and was not recorded
            adopt(name, [](const PerformanceOutcome &) {});
    }
}
