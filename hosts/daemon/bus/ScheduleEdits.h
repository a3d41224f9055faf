// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Result.h"
#include "hosts/common/schedules/Schedule.h"
#include "hosts/daemon/bus/BusCaller.h"

#include <QList>
#include <QObject>
#include <QSet>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

namespace dozely
{
class Clock;
} // namespace dozely

class PolkitAuthority;

/// Changes of the store at the wish of somebody on the bus. Each is tried under the store's lock, on what the
/// store has then: what it makes of the schedules says which rights it takes. Where some of them are missing,
/// nothing is written, the authority is asked, and it is tried again, so that nobody is allowed one change
/// and makes another.
///
/// THREADING: the main thread. BLOCKING: for the disk, but for no other program that has the lock.
class ScheduleEdits : public QObject
{
    Q_OBJECT
public:
    /// So many schedules of one user the store takes from the bus, and so much of its bytes.
    /// @{
    static constexpr qsizetype mostOfAUser = 200;
    static constexpr qsizetype mostBytesOfAUser = 1 << 20;
    /// @}

    /// What a change makes of one schedule; absent where there is none before or after.
    struct Altered {
        std::optional<Schedule> before;
        std::optional<Schedule> after;
    };

    struct Wish {
        BusCaller caller;
        /// Alters the schedules, and says what it altered. May be called more than once.
        std::function<dozely::Result<Altered>(QList<Schedule> &schedules)> alter;
        bool mustBeFeasible = false; ///< What nothing could come of is refused.
    };

    using Done = std::function<void(const dozely::Result<Altered> &altered)>;

    /// Both must outlive the object.
    ScheduleEdits(dozely::Clock &clock, PolkitAuthority &authority);

    /// Fulfils a wish, or refuses it with one sentence and a name of the bus. `done` may be called before
    /// this returns; never once somebody has left who would have to be asked.
    void perform(const Wish &wish, const Done &done);

    /// What a caller is told of a store that cannot be read or written.
    static dozely::Error onBus(const dozely::Error &error);

Q_SIGNALS:
    /// The store has another schedule now.
    void edited(const QString &identifier);

    /// A user's wish went on after an answer of the authority's, and took so long.
    void wentOn(quint32 user, std::chrono::milliseconds duration);

private:
    struct Job {
        Wish wish;
        Done done;
        QSet<QByteArray> granted = {};
        std::chrono::milliseconds deadline{0}; // for the store's lock, on the steady clock
    };
    struct Attempt;
    void attempt(const std::shared_ptr<Job> &job);
    void askFor(const QByteArray &action, const std::shared_ptr<Job> &job);

    dozely::Clock &m_clock;
    PolkitAuthority &m_authority;
};
