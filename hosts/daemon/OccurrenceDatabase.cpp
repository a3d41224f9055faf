// SPDX-License-Identifier: MIT
#include "hosts/daemon/OccurrenceDatabase.h"

#include "DozelyKit/core/files/TrustedPath.h"
#include "DozelyKit/core/foundation/NSProcessInfo.h"
#include "DozelyKit/core/foundation/RootFolder.h"
#include "hosts/daemon/OccurrenceFile.h"
#include "hosts/daemon/OccurrenceRow.h"
#include "hosts/daemon/OccurrenceTables.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

using namespace dozely;

namespace
{
constexpr std::chrono::seconds patience(2); // with somebody who looks at the record

/// An agent may hand an occurrence back for an hour.
constexpr qint64 handOverMilliseconds = 3600 * 1000;

/// Files that SQLite keeps beside a database.
const QStringList companions{"-wal", "-shm", "-journal"};

std::optional<qint64> milliseconds(const QDateTime &date)
{
    return date.isValid() ? std::optional(date.toMSecsSinceEpoch()) : std::nullopt;
}

QString damagedPath()
{
    return OccurrenceDatabase::path() + ".damaged";
}

/// Whether nobody else can have written what lies there.
Result<void> trusted(const QString &path)
{
    QList<quint32> owners{NSProcessInfo::effectiveUserID()};
    if (const auto owner = RootFolder::owner())
        owners += *owner;
    return isTrustedPath(path, owners);
}

/// Renames a file; on return the disk has it.
Result<void> renameDurably(const QString &from, const QString &to)
{
    if (std::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) != 0)
        return Error{QString("%1 could not be renamed: %2").arg(from, qt_error_string(errno))};
    const int folder =
        ::open(QFile::encodeName(QFileInfo(to).path()).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    const bool isSynchronised = folder >= 0 && ::fsync(folder) == 0;
    const Error error{qt_error_string(errno)};
    if (folder >= 0)
        ::close(folder);
    return isSynchronised ? Result<void>() : error;
}
} // namespace

QString OccurrenceDatabase::path()
{
    return RootFolder::join("/var/lib/dozely/occurrences.db");
}

/// Makes a whole database beside its place, and puts it there: there is never half a one under its name.
Result<void> OccurrenceDatabase::make(const std::optional<QDateTime> &nothingKnownBefore) const
{
    const QString unfinished = path() + ".new";
    QFile::remove(unfinished);
    for (const QString &companion : companions)
        QFile::remove(unfinished + companion);
    QFile file(unfinished);
    if (!QDir().mkpath(QFileInfo(unfinished).path()) ||
        !file.open(QIODevice::WriteOnly | QIODevice::NewOnly, QFile::ReadOwner | QFile::WriteOwner))
        return Error{QString("%1 could not be made: %2").arg(unfinished, file.errorString())};
    file.close();
    {
        const auto database = Sqlite::open(unfinished, Sqlite::File::MustExist, patience);
        if (!database)
            return database.error();
        auto made =
            database->transaction([&] { return OccurrenceTables::make(*database, nothingKnownBefore); });
        if (!made)
            return made;
        if (auto mode = database->run("PRAGMA journal_mode = WAL"); !mode)
            return mode;
    }
    return renameDurably(unfinished, path());
}

/// The database that is there. An error named Sqlite::damaged when it is none that can be believed.
Result<Sqlite> OccurrenceDatabase::openExisting() const
{
    for (const QString &file : QStringList{path()} + QStringList{path() + "-wal", path() + "-journal"}) {
        if (!QFileInfo::exists(file) && !QFileInfo(file).isSymLink())
            continue;
        if (const auto trust = trusted(file); !trust)
            return Error{trust.error().text, Sqlite::damaged};
    }
    auto database = Sqlite::open(path(), Sqlite::File::MustExist, patience);
    if (!database)
        return database;
    // FULL: a commit is on disk when it returns, also after a power cut; one synchronisation for each. 512
    // KiB of pages in memory are plenty for what one transaction touches.
    if (const auto mode = database->run("PRAGMA synchronous = FULL; PRAGMA cache_size = -512"); !mode)
        return mode.error();
    // The long check, which compares indexes and tables: a row that an index has lost would not be found.
    auto check = database->prepare("PRAGMA integrity_check(1)");
    const auto isChecked = check.next();
    if (!isChecked)
        return isChecked.error();
    if (check.text(0) != "ok")
        return Error{check.text(0), Sqlite::damaged};
    (void)check.next();
    if (const auto isUpToDate = OccurrenceTables::bringUpToDate(*database); !isUpToDate)
        return isUpToDate.error();
    // Nothing is run here: tables of another form are refused now and not at the first occurrence.
    auto fits = database->prepare(OccurrenceRow::explainInsertion);
    if (const auto isPrepared = fits.next(); !isPrepared)
        return isPrepared.error();
    return database;
}

void OccurrenceDatabase::moveAside() const
{
    for (const QString &companion : QStringList{QString()} + companions)
        QFile::remove(damagedPath() + companion);
    // The database last: as long as it is there, its journal still belongs to something.
    for (const QString &companion : companions + QStringList{QString()}) {
        if (QFileInfo::exists(path() + companion) || QFileInfo(path() + companion).isSymLink())
            (void)renameDurably(path() + companion, damagedPath() + companion);
    }
}

OccurrenceDatabase::Opened OccurrenceDatabase::open(const QDateTime &now)
{
    Opened opened;
    m_database.reset();
    bool isThere = QFileInfo::exists(path()) || QFileInfo(path()).isSymLink();
    // A daemon that was killed between moving a damaged one aside and making a new one knows nothing either.
    bool isUnknown = !isThere && QFileInfo::exists(damagedPath());
    if (isThere) {
        auto existing = openExisting();
        Result<void> loaded;
        if (existing) {
            m_database = *std::move(existing);
            loaded = loadInto(opened, now);
        } else {
            loaded = existing.error();
        }
        if (!loaded) {
            m_database.reset();
            opened.record = {};
            opened.nothingKnownBefore = now;
            isUnknown = true;
            if (loaded.error().name != Sqlite::damaged) {
                m_isUnread = true;
                opened.complaints += "The record of occurrences cannot be opened: " + loaded.error().text;
                return opened;
            }
            opened.complaints +=
                "The record of occurrences is damaged and was moved aside: " + loaded.error().text;
            moveAside();
            isThere = false;
        }
    }
    if (!isThere) {
        if (isUnknown)
            opened.nothingKnownBefore = now;
        const auto made = make(isUnknown ? std::optional(now) : std::nullopt);
        if (auto existing = made ? openExisting() : Result<Sqlite>(made.error()))
            m_database = *std::move(existing);
    }
    if (OccurrenceFile::exists())
        takeOverPropertyList(opened, now);
    return opened;
}

Result<void> OccurrenceDatabase::loadInto(Opened &opened, const QDateTime &now)
{
    auto knowledge = m_database->prepare("SELECT nothing_known_before FROM knowledge");
    const auto isKnown = knowledge.next();
    if (!isKnown)
        return isKnown.error();
    if (!*isKnown)
        return Error{"it does not say what it knows", Sqlite::damaged};
    if (const auto before = knowledge.number(0))
        opened.nothingKnownBefore = QDateTime::fromMSecsSinceEpoch(*before, Qt::UTC);
    (void)knowledge.next();
    auto calendars = m_database->prepare("SELECT identifier, settled, is_paused FROM calendars");
    for (;;) {
        const auto more = calendars.next();
        if (!more)
            return more.error();
        if (!*more)
            break;
        const auto settled = QDateTime::fromMSecsSinceEpoch(calendars.number(1).value_or(0), Qt::UTC);
        opened.record.restoreCalendar(calendars.text(0), {settled, calendars.number(2).value_or(0) != 0});
    }
    auto rows = m_database->prepare(
        "SELECT * FROM occurrences WHERE state IN ('asked', 'begun', 'postponed') UNION "
        "SELECT * FROM occurrences WHERE handed_over IS NOT NULL AND handed_over >= ?1 UNION "
        "SELECT occurrences.* FROM calendars CROSS JOIN occurrences "
        "ON occurrences.identifier = calendars.identifier AND date > settled ORDER BY date");
    rows.bind(1, now.toMSecsSinceEpoch() - handOverMilliseconds);
    for (;;) {
        const auto more = rows.next();
        if (!more)
            return more.error();
        if (!*more)
            return {};
        const auto row = OccurrenceRow::read(rows);
        if (!row)
            return row.error();
        opened.record.restore(row->first, row->second);
    }
}

void OccurrenceDatabase::takeOverPropertyList(Opened &opened, const QDateTime &now)
{
    auto earlier = OccurrenceFile::load();
    const bool isDamaged = !earlier.damage.isEmpty();
    Result<void> taken;
    if (isDamaged) {
        opened.complaints += "The record of occurrences is damaged and was moved aside: " + earlier.damage;
        opened.nothingKnownBefore = now;
    }
    if (!m_database) {
        taken = Error{"it is not open"};
    } else {
        taken = m_database->transaction([&]() -> Result<void> {
            if (isDamaged) {
                auto knowledge = m_database->prepare("UPDATE knowledge SET nothing_known_before = ?1");
                return knowledge.bind(1, now.toMSecsSinceEpoch()).run();
            }
            const OccurrenceRecord::Changes changes = earlier.record.changes();
            auto insertion = m_database->prepare(OccurrenceRow::insertOrIgnore);
            for (auto change = changes.cbegin(); change != changes.cend(); ++change) {
                if (auto done = OccurrenceRow::bind(insertion, change.key(), **change).run(); !done)
                    return done;
            }
            return {};
        });
    }
    if (!isDamaged) {
        const OccurrenceRecord::Changes changes = earlier.record.changes();
        for (auto change = changes.cbegin(); change != changes.cend(); ++change) {
            if (!opened.record.find(change.key().first, change.key().second))
                opened.record.restore(change.key(), **change);
        }
    }
    if (taken) // otherwise it is there for the next start
        taken = OccurrenceFile::setAside(isDamaged);
    if (!taken)
        opened.complaints += "The earlier record of occurrences stays where it is: " + taken.error().text;
}

Result<void> OccurrenceDatabase::ensureOpen()
{
    if (m_database)
        return {};
    if (!QFileInfo::exists(path())) {
        if (auto made = make({}); !made)
            return made;
    }
    auto existing = openExisting();
    if (!existing)
        return existing.error();
    // What has begun by now is not on disk yet: what is there was begun by a daemon that died.
    if (m_isUnread) {
        if (auto done = existing->run(OccurrenceRow::interruptBegun); !done)
            return done;
        m_isUnread = false;
    }
    m_database = *std::move(existing);
    return {};
}

void OccurrenceDatabase::rest() const
{
    if (m_database)
        m_database->releaseMemory();
}

Result<std::optional<OccurrenceEntry>> OccurrenceDatabase::find(const OccurrenceRecord::Key &key)
{
    const auto found = findAll({key});
    if (!found)
        return found.error();
    return found->isEmpty() ? std::optional<OccurrenceEntry>() : std::optional(found->first().second);
}

Result<OccurrenceDatabase::Found> OccurrenceDatabase::findAll(const QList<OccurrenceRecord::Key> &keys)
{
    return findEach("date = ?2", keys);
}

Result<OccurrenceDatabase::Found> OccurrenceDatabase::findLater(const QList<OccurrenceRecord::Key> &dates)
{
    return findEach("date > ?2", dates);
}

Result<OccurrenceDatabase::Found> OccurrenceDatabase::findEach(const char *condition,
                                                               const QList<OccurrenceRecord::Key> &keys)
{
    if (keys.isEmpty())
        return Found();
    if (auto open = ensureOpen(); !open)
        return open.error();
    // One transaction, or each search would take and give back the locks of the file.
    if (auto begun = m_database->run("BEGIN"); !begun)
        return begun.error();
    auto found = search(condition, keys);
    (void)m_database->run("COMMIT");
    return found;
}

Result<OccurrenceDatabase::Found> OccurrenceDatabase::search(const char *condition,
                                                             const QList<OccurrenceRecord::Key> &keys) const
{
    Found found;
    const QByteArray text = QByteArray("SELECT * FROM occurrences WHERE identifier = ?1 AND ") + condition;
    auto rows = m_database->prepare(text.constData());
    for (const auto &[identifier, date] : keys) {
        rows.bind(1, identifier).bind(2, date.toMSecsSinceEpoch());
        for (;;) {
            const auto more = rows.next();
            if (!more)
                return more.error();
            if (!*more)
                break;
            const auto row = OccurrenceRow::read(rows);
            if (!row)
                return row.error();
            found += *row;
        }
    }
    return found;
}

Result<void> OccurrenceDatabase::write(const OccurrenceRecord::Changes &changes, const Needed &needed,
                                       const Outputs &outputs,
                                       const OccurrenceRecord::CalendarChanges &calendars)
{
    if (auto open = ensureOpen(); !open)
        return open;
    auto written = m_database->transaction([&]() -> Result<void> {
        auto insertion = m_database->prepare(OccurrenceRow::insertOrReplace);
        auto removal = m_database->prepare("DELETE FROM occurrences WHERE identifier = ?1 AND date = ?2");
        QSet<QString> over;
        QSet<quint32> askers;
        for (auto change = changes.cbegin(); change != changes.cend(); ++change) {
            const auto &[identifier, date] = change.key();
            const auto &entry = *change;
            auto done = entry ? OccurrenceRow::bind(insertion, change.key(), *entry).run()
                              : removal.bind(1, identifier).bind(2, date.toMSecsSinceEpoch()).run();
            if (!done)
                return done;
            if (!entry || !entry->isOver())
                continue;
            over += identifier;
            if (entry->askedBy)
                askers += *entry->askedBy;
        }
        if (auto done = writeCalendars(calendars); !done)
            return done;
        if (auto done = writeOutputs(outputs); !done)
            return done;
        auto trim = m_database->prepare(OccurrenceRow::trimSchedule);
        for (const QString &identifier : std::as_const(over)) {
            const Occurrences stay = needed(identifier);
            trim.bind(1, identifier).bind(2, m_limits.ofASchedule);
            trim.bind(3, milliseconds(stay.date)).bind(4, milliseconds(stay.after));
            if (auto done = trim.run(); !done)
                return done;
        }
        auto trimAsker = m_database->prepare(OccurrenceRow::trimAsker);
        for (const quint32 user : std::as_const(askers)) {
            if (auto done = trimAsker.bind(1, qint64(user)).bind(2, m_limits.ofAnAsker).run(); !done)
                return done;
        }
        return {};
    });
    // One of its files may have been opened for reading alone, for want of a descriptor: opened anew before
    // the next.
    if (!written)
        m_database.reset();
    return written;
}

Result<void> OccurrenceDatabase::writeCalendars(const OccurrenceRecord::CalendarChanges &calendars) const
{
    auto insertion = m_database->prepare("INSERT OR REPLACE INTO calendars VALUES (?1, ?2, ?3)");
    for (auto calendar = calendars.cbegin(); calendar != calendars.cend(); ++calendar) {
        insertion.bind(1, calendar.key()).bind(2, calendar->settled.toMSecsSinceEpoch());
        if (auto done = insertion.bind(3, qint64(calendar->isPaused ? 1 : 0)).run(); !done)
            return done;
    }
    return {};
}

Result<void> OccurrenceDatabase::writeOutputs(const Outputs &outputs) const
{
    auto insertion = m_database->prepare(OccurrenceRow::insertOutput);
    auto trim = m_database->prepare(OccurrenceRow::trimOutputs);
    for (auto output = outputs.cbegin(); output != outputs.cend(); ++output) {
        const auto &[identifier, date] = output.key();
        insertion.bind(1, identifier).bind(2, date.toMSecsSinceEpoch()).bindBytes(3, *output);
        if (auto done = insertion.run(); !done)
            return done;
        if (auto done = trim.bind(1, identifier).bind(2, outputsOfASchedule).run(); !done)
            return done;
    }
    return {};
}

/// One after the other, by the index, however many occurrences each has.
Result<QStringList> OccurrenceDatabase::schedulesWithOccurrences() const
{
    QStringList identifiers;
    auto next = m_database->prepare("SELECT min(identifier) FROM occurrences WHERE identifier > ?1");
    for (QString last;; identifiers += last) {
        const auto more = next.bind(1, last).next();
        if (!more)
            return more.error();
        if (next.text(0).isEmpty())
            return identifiers;
        last = next.text(0);
        (void)next.next();
    }
}

Result<QStringList> OccurrenceDatabase::schedulesWithCalendars() const
{
    QStringList identifiers;
    auto rows = m_database->prepare("SELECT identifier FROM calendars");
    for (;;) {
        const auto more = rows.next();
        if (!more)
            return more.error();
        if (!*more)
            return identifiers;
        identifiers += rows.text(0);
    }
}

Result<void> OccurrenceDatabase::forget(const std::function<bool(const QString &)> &isGone,
                                        const QDateTime &oldest, const Needed &needed)
{
    if (auto open = ensureOpen(); !open)
        return open;
    if (auto begun = m_database->run("BEGIN"); !begun)
        return begun;
    const auto identifiers = schedulesWithOccurrences();
    const auto calendars = schedulesWithCalendars();
    (void)m_database->run("COMMIT");
    if (!identifiers || !calendars)
        return identifiers ? calendars.error() : identifiers.error();
    auto calendarRemoval = m_database->prepare("DELETE FROM calendars WHERE identifier = ?1");
    auto removal = m_database->prepare("DELETE FROM occurrences WHERE identifier = ?1");
    auto ageing = m_database->prepare(OccurrenceRow::removeOld);
    return m_database->transaction([&]() -> Result<void> {
        for (const QString &identifier : *calendars) {
            if (!isGone(identifier))
                continue;
            if (auto done = calendarRemoval.bind(1, identifier).run(); !done)
                return done;
        }
        for (const QString &identifier : *identifiers) {
            if (isGone(identifier)) {
                if (auto done = removal.bind(1, identifier).run(); !done)
                    return done;
                continue;
            }
            const Occurrences stay = needed(identifier);
            ageing.bind(1, identifier).bind(2, oldest.toMSecsSinceEpoch());
            ageing.bind(3, milliseconds(stay.date)).bind(4, milliseconds(stay.after));
            if (auto done = ageing.run(); !done)
                return done;
        }
        return {};
    });
}
