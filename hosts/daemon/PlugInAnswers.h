// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/common/performing/PlugInAnswer.h"
#include "hosts/common/schedules/Schedule.h"

#include <QObject>

#include <memory>
#include <optional>

namespace dozely
{
class Clock;
}

/// What plug-ins answer about schedules. None of their code runs in this process: one performer at a time is
/// asked, all questions one after the other, and ends when there is none. A bundle that names no module for
/// the daemon has no code to ask: the base of the plug-in classes answers for it, at once.
///
/// Answers are kept by the bundle's identity (which files its Info.plist and its module are, their sizes and
/// dates) and by the schedule's parameters, so a plug-in that is replaced is asked anew. Equal answers are
/// one, and of the parameters nothing but a digest is kept.
///
/// A plug-in that takes longer than two seconds, or whose process ends, is told in the log with the
/// schedule, and asked again a minute later, or when the schedule comes due. After five times without an
/// answer, or an action, that went well it is left alone until its identity changes.
///
/// THREADING: the main thread. BLOCKING: for the disk, a few entries a bundle; never for a plug-in.
class PlugInAnswers : public QObject
{
    Q_OBJECT
public:
    struct Answers : PlugInAnswer {
        QVariantMap bundleInfo; ///< The bundle's Info dictionary, one for all schedules of the bundle.

        /// It is a bundle of the schedule's owner (isUsersOwnBundle), of which nothing is known here: the
        /// base of the plug-in classes answers for it. It acts in the session.
        bool isUsersOwn = false;
    };

    /// Due ones are asked before all others, and after five seconds again when that failed.
    enum class Urgency { Later, Due };

    /// So many times a bundle may go wrong.
    static constexpr int mostDeaths = 5;

    /// `performer` is the full path of the performer's program. `clock` must outlive the object.
    PlugInAnswers(QString performer, dozely::Clock &clock);
    ~PlugInAnswers() override;

    /// What is known of a schedule: the answers, or why there are none. For what is due the base of the
    /// plug-in classes answers while no performer can be started. The reason is a sentence without its
    /// full stop for "Schedule ... was not performed: ". Absent while it is not known: it is then being
    /// asked, or will be once it is looked for again after `answered`.
    ///
    /// Whether the bundle is there and trusted is looked at anew, once a turn of the event loop for all
    /// schedules of a bundle.
    std::optional<dozely::Result<Answers>> of(const Schedule &schedule, Urgency urgency = Urgency::Later);

    /// A number that is another one when the bundle at this path of the store has become another one, can be
    /// used or cannot any more, or is left alone: then what `of` says about its schedules is another, too.
    quint64 stateOf(const QString &bundlePath);

    /// The performer that acted for a schedule died, hung, or was killed: `why` is a clause for the log ("its
    /// process was ended by signal 11 (Segmentation fault)"). One line. Counts against the bundle.
    void noteDeath(const Schedule &schedule, const QString &why);

    /// A performer acted for a schedule and ended as it should. What went wrong with the bundle's actions is
    /// forgotten.
    void noteSuccess(const Schedule &schedule);

    /// Forgets whatever these schedules do not need.
    void keepOnly(const QList<Schedule> &schedules);

Q_SIGNALS:
    /// There is more to be known than before: from the event loop, when a due question has its answer, and
    /// after some time or some number of others.
    void answered();

private:
    struct Private;
    std::unique_ptr<Private> d;
};
