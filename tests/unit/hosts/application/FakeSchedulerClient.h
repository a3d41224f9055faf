// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/common/bus/SchedulerClient.h"

#include <QMap>
#include <QTimer>

/// A daemon in memory. It answers from the event loop, as the real one does, and does what it is told unless
/// `refusal` says otherwise.
class FakeSchedulerClient : public SchedulerClient
{
public:
    using Error = dozely::Error;

    QMap<QString, QVariantMap> schedules; ///< By identifier; without it, as they are told.
    QList<QVariantMap> occurrences;       ///< What Next tells.
    QList<QVariantMap> outcomes;          ///< What History tells.
    QVariantMap told;                     ///< The properties.
    QVariantMap wakeTrial;                ///< What TestWaking tells.
    bool isThere = true;
    std::optional<Error> refusal; ///< Of all that would change something.
    QStringList calls;            ///< "add backup", "change 1 name,revision"
    QVariantMap lastChanges;

    /// As if somebody else had done it.
    void changeElsewhere(const QString &identifier, const QVariantMap &changes)
    {
        QVariantMap &schedule = schedules[identifier];
        for (auto it = changes.cbegin(); it != changes.cend(); ++it)
            schedule.insert(it.key(), it.value());
        if (schedule.value("owner") == QVariant(QString()))
            schedule.remove("owner");
        schedule.remove("anyway");
        schedule.insert("revision", QString("r%1").arg(++m_revisions));
        Q_EMIT schedulesChanged({identifier});
    }
    void removeElsewhere(const QString &identifier)
    {
        schedules.remove(identifier);
        Q_EMIT schedulesChanged({identifier});
    }
    void setThere(bool there)
    {
        isThere = there;
        Q_EMIT availabilityChanged(there);
    }

    bool isAvailable() const override { return isThere; }
    QVariantMap properties() const override { return isThere ? told : QVariantMap(); }

    void list(Answer<QList<QVariantMap>> answer) override
    {
        calls += "list";
        later([this, answer] {
            QList<QVariantMap> all;
            for (auto it = schedules.cbegin(); it != schedules.cend(); ++it)
                all += withIdentifier(it.key());
            answer(isThere ? dozely::Result<QList<QVariantMap>>(all) : nobody());
        });
    }
    void get(const QString &identifier, Answer<QVariantMap> answer) override
    {
        later([this, identifier, answer] {
            answer(schedules.contains(identifier) ? dozely::Result<QVariantMap>(withIdentifier(identifier))
                                                  : noSuchSchedule());
        });
    }
    void add(const QVariantMap &schedule, Answer<QString> answer) override
    {
        calls += "add " + schedule.value("name").toString();
        later([this, schedule, answer] {
            if (refusal)
                return answer(*refusal);
            const QString identifier = QString("added-%1").arg(++m_added);
            changeElsewhere(identifier, schedule);
            answer(identifier);
        });
    }
    void change(const QString &identifier, const QVariantMap &changes, Answer<void> answer) override
    {
        calls += "change " + identifier + ' ' + changes.keys().join(',');
        lastChanges = changes;
        later([this, identifier, changes, answer] {
            if (refusal)
                return answer(*refusal);
            if (!schedules.contains(identifier))
                return answer(noSuchSchedule());
            if (changes.contains("revision") &&
                changes.value("revision") != schedules[identifier].value("revision"))
                return answer(Error{"It is another one by now.", "com.dozely.Error.Changed"});
            changeElsewhere(identifier, changes);
            answer({});
        });
    }
    void remove(const QString &identifier, Answer<void> answer) override
    {
        calls += "remove " + identifier;
        later([this, identifier, answer] {
            if (refusal)
                return answer(*refusal);
            if (!schedules.contains(identifier))
                return answer(noSuchSchedule());
            removeElsewhere(identifier);
            answer({});
        });
    }
    void setEnabled(const QString &identifier, bool isEnabled, Answer<void> answer) override
    {
        change(identifier, {{"isEnabled", isEnabled}}, std::move(answer));
    }
    void runNow(const QString &identifier, Answer<void> answer) override
    {
        calls += "runNow " + identifier;
        later([answer] { answer({}); });
    }
    void skip(const QString &identifier, const QString &date, Answer<QString> answer) override
    {
        calls += "skip " + identifier + ' ' + date;
        later([answer, date] { answer(date); });
    }
    void postpone(const QString &identifier, const QString &date, std::chrono::seconds delay,
                  Answer<QString> answer) override
    {
        calls += QString("postpone %1 %2 %3").arg(identifier, date).arg(delay.count());
        later([answer, date] { answer(date); });
    }
    void next(const QString &, const QString &from, const QString &, quint32,
              Answer<QList<QVariantMap>> answer) override
    {
        calls += "next from " + from;
        later([this, answer] { answer(occurrences); });
    }
    void history(const QString &, quint32, Answer<QList<QVariantMap>> answer) override
    {
        calls += "history";
        later([this, answer] { answer(outcomes); });
    }
    void testWaking(std::chrono::seconds sleep, Answer<QVariantMap> answer) override
    {
        calls += QString("testWaking %1").arg(sleep.count());
        later([this, answer] { answer(refusal ? dozely::Result<QVariantMap>(*refusal) : wakeTrial); });
    }

private:
    void later(std::function<void()> answer) { QTimer::singleShot(0, this, std::move(answer)); }
    QVariantMap withIdentifier(const QString &identifier) const
    {
        QVariantMap schedule = schedules.value(identifier);
        schedule.insert("identifier", identifier);
        return schedule;
    }
    static Error nobody() { return {"Nobody is there.", "org.freedesktop.DBus.Error.ServiceUnknown"}; }
    static Error noSuchSchedule() { return {"There is none.", "com.dozely.Error.NoSuchSchedule"}; }

    int m_revisions = 0;
    int m_added = 0;
};
