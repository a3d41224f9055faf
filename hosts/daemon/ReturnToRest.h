// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Result.h"
#include "hosts/daemon/Scheduler.h"

#include <QObject>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

class NSNotification;

/// Has the machine sleep again, or switched off again, when an action is over for which it was woken or
/// switched on and whose schedule wants that ("After Action").
///
/// Only what is sure counts. The machine stays as it is when it was not back for that very occurrence, when
/// somebody has used it since or nobody can tell, and while an action goes on or is due soon. Whoever is at
/// the console is alerted first, by the alert of the plug-in that does the same, and may cancel. Where others
/// forbid it, it is tried again after ten minutes, three times. One line of the log says what came of it.
///
/// THREADING: the main thread. BLOCKING: as LoginSessions and SystemPower, and for the alert.
class ReturnToRest : public QObject
{
    Q_OBJECT
public:
    /// What it has to know of the daemon.
    struct Surroundings {
        /// OwnWakes::wokenFor.
        std::function<std::optional<QDateTime>(const QDateTime &moment)> wokenFor;

        /// Whether an action of the daemon goes on, or one is due up to that date.
        std::function<bool(const QDateTime &until)> isBusy;

        /// Alerts whoever is at the console of a step at that date; the user who was, absent when nobody is
        /// there. An error says why somebody who is there was not.
        std::function<dozely::Result<std::optional<quint32>>(AfterAction step, const QDateTime &date)> alert;
    };

    /// So long after an action it is looked whether the machine may rest, and again while it is busy.
    /// @{
    static constexpr std::chrono::seconds firstLook{5};
    static constexpr std::chrono::seconds busyPause{10};
    /// @}

    /// What is due within that time keeps the machine on.
    static constexpr std::chrono::minutes quietTime{5};

    /// So long before the step the user is alerted.
    static constexpr std::chrono::seconds alertLead{60};

    /// How often, and for how long each time, others may put it off.
    /// @{
    static constexpr int mostTimesHeldUp = 3;
    static constexpr std::chrono::minutes heldUpPause{10};
    /// @}

    /// Waking moves no session's latest use any farther than that.
    static constexpr std::chrono::seconds settling{10};

    /// `clock` must outlive the object.
    ReturnToRest(dozely::Clock &clock, Surroundings surroundings);

    /// An action is over.
    void noteEnd(const Occurrence &occurrence);

    /// The bundle, below the root folder in force, whose alert is that of a step.
    static QString bundlePathOf(AfterAction step);

    /// Whether an order about that bundle and date means a step that is announced, and comes from who may
    /// decide upon it: the user who was alerted, and the system.
    bool isMeant(std::optional<quint32> sender, const QString &bundlePath, const QDateTime &date) const;

    /// Drops the step that is announced.
    void cancel(const QString &by);

    /// Puts off the step that is announced, and announces it anew. The user wants it then, whoever uses the
    /// machine meanwhile.
    void postpone(std::chrono::seconds delay, const QString &by);

private:
    struct Wish {
        QString label; ///< Of the schedule.
        AfterAction step;
        QDateTime back; ///< Since when the machine is there.
        int timesHeldUp = 0;
        QDateTime announced = {}; ///< For that date; invalid while it is not.
        std::optional<quint32> told = {};
        bool isWanted = false; ///< By the user who put it off.
    };
    Q_INVOKABLE void systemWillChange(const NSNotification &notification);
    void lookAfter(std::chrono::milliseconds delay);
    void look();
    bool isHeldUp();
    void announce();
    void act();
    void end(const QString &why);
    std::optional<QString> reasonAgainst() const;

    dozely::Clock &m_clock;
    Surroundings m_surroundings;
    std::optional<Wish> m_wish;
    std::unique_ptr<QObject> m_look; // the next one
};
