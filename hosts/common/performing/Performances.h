// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/common/performing/PerformanceOrder.h"
#include "hosts/common/performing/PerformanceOutcome.h"
#include "hosts/common/performing/PerformerStart.h"

#include <QHash>
#include <QObject>
#include <QSet>

#include <functional>
#include <memory>

namespace dozely
{
class Clock;
}

/// The actions of a host, each in a performer, a process of its own, which outlives the host (PerformerStart
/// says where). A host that was started again finds those that go on, and the outcomes of those that ended
/// meanwhile.
///
/// A performance has a name, of letters and digits alone, which must be another one for each that the host
/// does not know to be over.
///
/// THREADING: the main thread. BLOCKING: prepare, where the way to start a performer does.
class Performances : public QObject
{
    Q_OBJECT
public:
    /// Neither may destroy the object.
    /// @{
    using Begun = std::function<void()>;
    using Ended = std::function<void(const PerformanceOutcome &)>;
    /// @}

    /// The full path of a performer's program, which lies where the system's helper programs are.
    static QString programNamed(const QString &name);

    /// `folder` is the one for the performers' files, a full path; `spareFolder`, where there is one, is
    /// taken while nothing can be made in the other, on a disk that is full for one. Nobody else may be able
    /// to write there. `clock` must outlive the object.
    Performances(std::unique_ptr<PerformerStart> performers, const QString &folder, dozely::Clock &clock,
                 const QString &spareFolder = {});
    ~Performances() override;

    /// Starts a performer, which makes itself ready and waits. `order.place` need not be set. From then on
    /// `ended` is called once, from the event loop: at its end, also when it ends before it was let go, and
    /// when it turns out that it cannot be started. `begun`, where there is one, is called before that once
    /// the action has begun. An error when the machine lacks what that takes at once, and while another one
    /// of this name goes on; then neither is called.
    dozely::Result<void> prepare(const QString &name, PerformanceOrder order, Ended ended, Begun begun = {});

    /// Lets one that is ready act; false when it has ended, or cannot be told and ends therefore.
    bool go(const QString &name);

    /// The unit of the service manager in which one of this process runs, or ran a moment ago; empty where it
    /// has none.
    QString unitOf(const QString &name) const { return m_performers->unitOf(name); }

    /// Ends one that was not let go; `ended` is not called.
    void callOff(const QString &name);

    /// Takes one back that was let go and to which no performer has come yet: it never begins, and `ended` is
    /// not called. False when one has come: it performs, or has.
    bool takeBack(const QString &name);

    /// Whether one of an earlier process goes on, or has left word of its end.
    bool isThere(const QString &name) const;

    /// Takes up one of an earlier process. False when it neither goes on nor has left an outcome: whoever
    /// performed it was cut short, or never began, and no longer can. `ended` as for prepare.
    bool adopt(const QString &name, Ended ended);

    /// What those of earlier processes were told to do, by their names: for a host that has not kept these.
    /// Some may be over, or never have begun.
    QHash<QString, PerformanceOrder> ofEarlierHosts() const;

    /// Asks all that go on to end, and those that were only made ready not to begin. Does not wait for it.
    void askAllToEnd() const;

    /// For `ended`: what became of it stays on disk until forget, so that a host that dies before it has it
    /// on disk itself finds it again.
    void keep(const QString &name) { m_kept += name; }

    /// Removes what is kept.
    void forget(const QString &name);

    /// Removes what nobody will ask for any more, at once or when it ends: all but those of these names.
    void sweep(const QStringList &names);

private:
    struct Running;
    QString placeOf(const QString &name) const;
    void answered(const QString &name, const dozely::Result<void> &started);
    void hear(const QString &name);
    void hearEnd(const QString &name);
    void finish(const QString &name);
    void finishWithoutOutcome(const QString &name);
    void tell(const QString &name, const PerformanceOutcome &outcome);
    dozely::Result<void> makePlace(const QString &name, PerformanceOrder &order) const;
    void sweepFolder(const QString &folder, const QStringList &names);
    void lookAtAdopted(std::chrono::milliseconds delay);
    std::optional<PerformanceOutcome> outcomeOf(const QString &name) const;
    void removeOutcome(const QString &name) const;

    const QStringList m_folders;
    dozely::Clock &m_clock;
    QHash<QString, std::shared_ptr<Running>> m_running;
    QSet<QString> m_kept;
    bool m_isLooking = false;
    const std::unique_ptr<PerformerStart> m_performers; // the first to go: what it tells comes here
};
