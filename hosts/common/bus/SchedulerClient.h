// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Result.h"

#include <QByteArray>
#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariantMap>

#include <chrono>
#include <functional>
#include <memory>

/// The schedules as a program of a user reaches them: com.dozely.Scheduler1 on the system bus (docs/bus.md),
/// whose keys the dictionaries here have. Dates are texts in ISO 8601 there, as on the bus.
///
/// Every operation is answered exactly once, later, from the event loop, unless the client is destroyed
/// before. What fails has a sentence for a person, and as its name that of the error on the bus
/// ("com.dozely.Error.NotAllowed", "org.freedesktop.DBus.Error.ServiceUnknown"). Operations may be asked for
/// while nobody is there: they fail then.
///
/// An operation for which the machine asks the person for a password is answered when that is over, however
/// long it takes; all others within half a minute.
///
/// THREADING: one thread, which needs an event loop. BLOCKING: never.
class SchedulerClient : public QObject
{
    Q_OBJECT
public:
    template<class T>
    using Answer = std::function<void(const dozely::Result<T> &)>;

    /// The client of the machine's system bus, which it opens again whenever it is lost.
    static std::unique_ptr<SchedulerClient> onSystemBus();

    ~SchedulerClient() override;

    /// Whether the daemon is there, as far as is known: false at first.
    virtual bool isAvailable() const = 0;

    /// The properties as they were told last: "Version" (text), "AgentOfConsoleUser", "WakeClock",
    /// "NextOccurrence" (dictionaries, empty for nothing). Empty while nobody is there.
    virtual QVariantMap properties() const = 0;

    /// All schedules, or one.
    /// @{
    virtual void list(Answer<QList<QVariantMap>> answer) = 0;
    virtual void get(const QString &identifier, Answer<QVariantMap> answer) = 0;
    /// @}

    /// Adds a schedule; its identifier.
    virtual void add(const QVariantMap &schedule, Answer<QString> answer) = 0;

    /// Changes what is named; with "revision" only the schedule that has it.
    virtual void change(const QString &identifier, const QVariantMap &changes, Answer<void> answer) = 0;

    virtual void remove(const QString &identifier, Answer<void> answer) = 0;
    virtual void setEnabled(const QString &identifier, bool isEnabled, Answer<void> answer) = 0;
    virtual void runNow(const QString &identifier, Answer<void> answer) = 0;

    /// Leaves out one occurrence, the next one where `date` is empty; the date of the one that is left out.
    virtual void skip(const QString &identifier, const QString &date, Answer<QString> answer) = 0;

    /// Has it take place later; when.
    virtual void postpone(const QString &identifier, const QString &date, std::chrono::seconds delay,
                          Answer<QString> answer) = 0;

    /// What comes: of one schedule, or of all where `identifier` is empty; from `from` (empty: now) until
    /// `until` (empty: open), `most` of them (1,000 at most), earliest first.
    virtual void next(const QString &identifier, const QString &from, const QString &until, quint32 most,
                      Answer<QList<QVariantMap>> answer) = 0;

    /// What became of occurrences, newest first, `most` of them; of all schedules where `identifier` is
    /// empty.
    virtual void history(const QString &identifier, quint32 most, Answer<QList<QVariantMap>> answer) = 0;

    /// Tries whether the machine's clock wakes it: with no time by reading its alarm back, else by having the
    /// machine sleep so long; then it is answered once the machine is back.
    virtual void testWaking(std::chrono::seconds sleep, Answer<QVariantMap> answer) = 0;

Q_SIGNALS:
    /// These have been added, changed or removed; all of them may have been where the list is empty.
    void schedulesChanged(const QStringList &identifiers);

    /// An occurrence is announced (with what Next tells of it), begins, or is over (with what History tells).
    /// @{
    void occurrenceAnnounced(const QString &identifier, const QString &date, const QVariantMap &occurrence);
    void occurrenceBegan(const QString &identifier, const QString &date, const QVariantMap &occurrence);
    void occurrenceEnded(const QString &identifier, const QString &date, const QVariantMap &outcome);
    /// @}

    /// properties() are others now.
    void propertiesChanged();

    /// The daemon has come or gone. When it has come, what was known of schedules may be old.
    void availabilityChanged(bool isAvailable);

protected:
    SchedulerClient() = default;
};
