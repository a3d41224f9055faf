// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/application/book/BookEntry.h"
#include "hosts/common/bus/SchedulerClient.h"

#include <QHash>
#include <QObject>
#include <QUndoStack>

/// All schedules that a window shows: as the daemon has them, what the person has changed of them, and the
/// way from the one to the other.
///
/// Every change is a step that can be taken back, also after it was applied: then taking it back is one more
/// change to apply. Entries keep their rows for the life of the book; one that is not wanted has none to
/// show.
///
/// THREADING: the main thread. BLOCKING: never; answers come from the event loop.
class ScheduleBook : public QObject
{
    Q_OBJECT
public:
    enum class State {
        Unread, ///< Nothing was read yet, or nobody is there to read from.
        Read,
        Failed, ///< Reading failed: failure() says why. What was read before stays.
    };

    /// Whether a change is one of many of the same, such as the letters of a name: one step takes them back.
    enum class Step { Own, JoinsLast };

    /// `client` outlives the book. Reads as soon as the daemon is there, and what changes from then on.
    explicit ScheduleBook(SchedulerClient &client);
    ~ScheduleBook() override;

    State state() const { return m_state; }
    QString failure() const { return m_failure; } ///< A sentence.

    /// Reads everything anew.
    void read();

    int count() const { return static_cast<int>(m_entries.size()); }
    const BookEntry &at(int row) const { return m_entries.at(row); }
    int rowOf(const QString &key) const { return m_rows.value(key, -1); }

    /// Null for an unknown key.
    const BookEntry *entry(const QString &key) const;

    /// Changes what is named; an invalid value takes a key away. `what` names the step ("Change of the
    /// name").
    void change(const QString &key, const QVariantMap &changes, const QString &what, Step step = Step::Own);

    /// Adds a schedule with these values; its key.
    QString add(const QVariantMap &values, const QString &what);

    void remove(const QString &key, const QString &what);

    /// As the daemon has it, whatever was changed here.
    void revert(const QString &key, const QString &what);
    void revertAll(const QString &what);

    /// That what somebody else has changed is known now, and what is wanted here shall be applied.
    void keepOwn(const QString &key);

    QUndoStack &steps() { return m_steps; }
    bool hasChanges() const;

    /// Tells the daemon all that is changed, one schedule after the other, since the person may be asked for
    /// a password for each. What fails stays changed, with its failure.
    void apply();

    /// The same for one schedule, also when nothing could come of it.
    void applyAnyway(const QString &key);
    bool isApplying() const { return m_isApplying; }

Q_SIGNALS:
    /// Before and after so many rows are added, always the last ones.
    /// @{
    void aboutToAppend(int count);
    void appended();
    /// @}
    void rowChanged(int row);
    void stateChanged();
    /// Whether there is something to apply may be answered otherwise now, or whether it is being applied.
    void changesChanged();
    /// All was tried; so many could not be applied.
    void applied(int failures);

private:
    friend class BookStep;
    using Values = std::optional<QVariantMap>;

    QString append(const BookEntry &entry);
    void appendAll(const QList<BookEntry> &entries);
    void setWanted(const QString &key, const Values &wanted);
    void patch(const QString &key, const QVariantMap &changes);
    void tellOf(int row);

    void takeOverAll(const QList<QVariantMap> &told);
    void takeOver(const QVariantMap &told);
    void refresh(const QStringList &identifiers);
    void refreshOne(const QString &identifier);
    int rowOfIdentifier(const QString &identifier) const;

    void beginApplying();
    void applyNext();
    void noteApplied(const QString &key, const Values &sent, const QString &identifier);
    void noteFailure(const QString &key, const dozely::Error &error);

    SchedulerClient &m_client;
    QList<BookEntry> m_entries;
    QHash<QString, int> m_rows; // by key
    QUndoStack m_steps;
    State m_state = State::Unread;
    QString m_failure;
    int m_made = 0; // keys so far

    bool m_isApplying = false;
    QStringList m_toApply;   // keys
    QString m_toApplyAnyway; // one of them
    int m_failures = 0;
    QStringList m_changedMeanwhile; // identifiers that were told of while something was applied
    bool m_allChangedMeanwhile = false;
};
