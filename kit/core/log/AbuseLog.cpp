// SPDX-License-Identifier: MIT
#include "DozelyKit/core/log/AbuseLog.h"

#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/core/log/ZDRLog.h"

#include <QByteArray>
#include <QCoreApplication>
#include <QThread>

#include <map>
#include <mutex>
#include <utility>

namespace dozely
{

namespace
{
using std::chrono::milliseconds;

constexpr milliseconds silence = std::chrono::minutes(1);
// The attack: one who has thousands of user ids, each with a line and a place in memory.
constexpr std::size_t mostPairs = 256;

// Besides user ids.
constexpr qint64 unknownUser = -1;
constexpr qint64 otherUsers = -2;

using UserAndKind = std::pair<qint64, QByteArray>;

struct Cases {
    quint64 count = 0;    ///< Since the last line.
    milliseconds until{}; ///< The end of the silence after that line, on the steady clock.
    bool isTimed = false; ///< Whether the main thread will look again.
};

struct Table {
    std::mutex mutex;
    std::map<UserAndKind, Cases> pairs;
};

Table &table()
{
    static auto *const known = new Table; // may be needed while the process ends
    return *known;
}

void tell(const UserAndKind &pair, quint64 count)
{
    const QString who = pair.first == unknownUser  ? "Unknown user"
                        : pair.first == otherUsers ? "Other users"
                                                   : "User " + QString::number(pair.first);
    const QString what = QString::fromUtf8(pair.second);
    if (count == 1)
        ZDRLog("%@: %@", who, what);
    else
        ZDRLog("%@: %llu x %@", who, count, what);
}

void silenceIsOver(const UserAndKind &pair);

/// From any thread: has the main thread look at the pair again. False when there is no event loop.
bool lookAgain(const UserAndKind &pair, milliseconds delay)
{
    auto *const application = QCoreApplication::instance();
    if (!application)
        return false;
    const auto arm = [application, pair, delay] {
        Port<Clock>::current()->callAfter(delay, application, [pair] { silenceIsOver(pair); });
    };
    if (application->thread() == QThread::currentThread())
        arm();
    else
        QMetaObject::invokeMethod(application, arm, Qt::QueuedConnection);
    return true;
}

/// Begins another silence, and returns what is to be told before it. Within the table's lock.
quint64 beginSilence(const UserAndKind &pair, Cases &cases, milliseconds now)
{
    cases.until = now + silence;
    cases.isTimed = cases.isTimed || lookAgain(pair, silence);
    return std::exchange(cases.count, 0);
}

void silenceIsOver(const UserAndKind &pair)
{
    const milliseconds now = Port<Clock>::current()->steadyTime();
    std::unique_lock lock(table().mutex);
    const auto found = table().pairs.find(pair);
    if (found == table().pairs.end())
        return;
    Cases &cases = found->second;
    cases.isTimed = false;
    if (now < cases.until) { // a note came first, while the loop did not come round
        cases.isTimed = lookAgain(pair, cases.until - now);
        return;
    }
    if (cases.count == 0) {
        table().pairs.erase(found);
        return;
    }
    const quint64 count = beginSilence(pair, cases, now);
    lock.unlock();
    tell(pair, count);
}
} // namespace

void AbuseLog::note(std::optional<quint32> userId, const char *what)
{
    const milliseconds now = Port<Clock>::current()->steadyTime();
    UserAndKind pair(userId ? qint64{*userId} : unknownUser, what);
    std::unique_lock lock(table().mutex);
    if (table().pairs.size() >= mostPairs && !table().pairs.contains(pair))
        pair = {otherUsers, "further misuse"};
    const auto [place, isNew] = table().pairs.try_emplace(pair);
    Cases &cases = place->second;
    ++cases.count;
    if (!isNew && now < cases.until)
        return;
    const quint64 count = beginSilence(pair, cases, now);
    lock.unlock();
    tell(pair, count);
}

} // namespace dozely
