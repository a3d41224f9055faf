// SPDX-License-Identifier: MIT
#include "DozelyKit/core/files/PropertyList.h"
#include "hosts/daemon/OccurrenceDatabase.h"
#include "support/FuzzedSystem.h"
#include "support/Steer.h"

using namespace dozely;

namespace
{
constexpr char folder[] = "/var/lib/dozely";
constexpr char database[] = "/var/lib/dozely/occurrences.db";
constexpr char journal[] = "/var/lib/dozely/occurrences.db-wal";
constexpr char propertyList[] = "/var/lib/dozely/occurrences.plist";

using Key = OccurrenceRecord::Key;

OccurrenceDatabase::Occurrences nothingNeeded(const QString &)
{
    return {};
}

bool isOpen(OccurrenceState state)
{
    return state == OccurrenceState::Asked || state == OccurrenceState::Begun;
}

/// What the table has that is not over, read from one end to the other without any index.
QSet<Key> openRows(const QString &path)
{
    QSet<Key> keys;
    const auto read = Sqlite::open(path, Sqlite::File::MustExist, std::chrono::seconds(1));
    REQUIRE(read);
    auto rows = read->prepare("SELECT identifier, date, state FROM occurrences NOT INDEXED");
    for (auto more = rows.next(); more && *more; more = rows.next()) {
        const auto state = OccurrenceRecord::stateNamed(rows.text(2));
        if (state && isOpen(*state))
            keys += Key(rows.text(0), QDateTime::fromMSecsSinceEpoch(rows.number(1).value_or(0), Qt::UTC));
    }
    return keys;
}

QSet<Key> openOnes(const OccurrenceRecord::Changes &changes)
{
    QSet<Key> keys;
    for (auto change = changes.cbegin(); change != changes.cend(); ++change) {
        if (*change && isOpen((*change)->state))
            keys += change.key();
    }
    return keys;
}

/// Whether opening said that something is not known any more.
bool isWarned(const OccurrenceDatabase::Opened &opened, const QDateTime &now)
{
    REQUIRE(!opened.nothingKnownBefore.isValid() || opened.nothingKnownBefore <= now);
    return !opened.complaints.isEmpty();
}

/// Whatever was found, from now on the record keeps what it is given, and the next daemon finds it.
void checkUse(OccurrenceDatabase &record, const QDateTime &now)
{
    const Key key("written after all", now);
    REQUIRE(record.write({{key, OccurrenceEntry{OccurrenceState::Begun, {}, {}}}}, nothingNeeded));
    const auto found = record.find(key);
    REQUIRE(found && *found && (*found)->state == OccurrenceState::Begun);
    OccurrenceDatabase next;
    const auto opened = next.open(now.addSecs(1));
    REQUIRE(opened.complaints.isEmpty());
    REQUIRE(opened.record.find(key.first, key.second));
}

OccurrenceRecord::Changes someOccurrences(Steer &steer, const QDateTime &now)
{
    OccurrenceRecord::Changes changes;
    for (int left = steer.below(12); left > 0; --left) {
        OccurrenceEntry entry{static_cast<OccurrenceState>(steer.below(7)), {}, {}};
        if (steer.flag())
            entry.askedBy = static_cast<quint32>(steer.number());
        if (steer.flag()) {
            entry.handedTo = static_cast<quint32>(steer.number());
            entry.handedOver = now.addSecs(steer.byte());
        }
        if (steer.flag())
            entry.begun = now;
        if (steer.flag())
            entry.lateness = steer.number();
        entry.place = static_cast<ActingPlace>(steer.below(3));
        if (steer.flag())
            entry.exitStatus = steer.number();
        const QString identifier = steer.flag() ? steer.text() : QString::number(steer.byte());
        if (!identifier.isEmpty() && identifier.isValidUtf16())
            changes.insert({identifier, now.addSecs(steer.byte())}, entry);
    }
    return changes;
}

/// What one daemon wrote, the next one finds.
void checkRoundTrip(Steer &steer, const FuzzedSystem &system)
{
    const auto changes = someOccurrences(steer, system.now());
    {
        OccurrenceDatabase record;
        REQUIRE(!isWarned(record.open(system.now()), system.now()));
        REQUIRE(record.write(changes, nothingNeeded));
    }
    OccurrenceDatabase record;
    const auto opened = record.open(system.now());
    REQUIRE(!isWarned(opened, system.now()));
    for (auto change = changes.cbegin(); change != changes.cend(); ++change) {
        const auto found = record.find(change.key());
        REQUIRE(found && *found == *change);
        if (isOpen((*change)->state))
            REQUIRE(opened.record.find(change.key().first, change.key().second) == *change);
    }
    checkUse(record, system.now());
}

/// A row as no daemon writes one.
void checkRows(Steer &steer, const FuzzedSystem &system)
{
    {
        OccurrenceDatabase record;
        (void)record.open(system.now());
    }
    {
        const auto raw =
            Sqlite::open(system.path(database), Sqlite::File::MustExist, std::chrono::seconds(1));
        REQUIRE(raw);
        for (int left = steer.below(12); left > 0; --left) {
            auto insertion = raw->prepare(
                "INSERT OR REPLACE INTO occurrences VALUES (?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8, ?9, ?10)");
            insertion.bind(1, steer.text()).bind(2, steer.number());
            insertion.bind(3, QString(steer.oneOf({"asked", "begun", "done", "skipped", "removed", "new"})));
            for (const int column : {4, 5, 6, 8, 9, 10}) {
                if (steer.below(3) == 0)
                    insertion.bind(column, steer.number());
            }
            if (steer.flag())
                insertion.bind(7, QString(steer.oneOf({"daemon", "session"})));
            (void)insertion.run();
        }
        if (steer.below(16) == 0)
            (void)raw->run("DELETE FROM knowledge");
        if (steer.below(16) == 0)
            (void)raw->run("DROP INDEX not_over");
        if (steer.below(16) == 0)
            (void)raw->run("DROP TABLE occurrences");
    }
    OccurrenceDatabase record;
    const auto opened = record.open(system.now());
    const bool warned = isWarned(opened, system.now());
    REQUIRE(!warned || opened.nothingKnownBefore == system.now());
    if (!warned) {
        for (const Key &key : openRows(system.path(database)))
            REQUIRE(opened.record.find(key.first, key.second));
    }
    checkUse(record, system.now());
}

/// The files that a daemon leaves that was killed while it had the record open.
struct LeftFiles {
    QByteArray database;
    QByteArray journal;
};

const LeftFiles &leftFiles(const FuzzedSystem &system)
{
    static const LeftFiles files = [&] {
        OccurrenceDatabase record;
        (void)record.open(system.now());
        OccurrenceRecord::Changes changes;
        for (int i = 0; i < 100; ++i)
            changes.insert({QString("schedule %1").arg(i % 30), system.now().addSecs(i)},
                           OccurrenceEntry{static_cast<OccurrenceState>(i % 7), {}, {}});
        REQUIRE(record.write(changes, nothingNeeded));
        return LeftFiles{system.read(database), system.read(journal)};
    }();
    return files;
}

void damage(Steer &steer, QByteArray &content)
{
    for (int left = 1 + steer.below(4); left > 0; --left) {
        const int kind = steer.below(8);
        const qsizetype at = steer.index(content.size());
        if (kind == 0)
            content.truncate(at);
        else if (kind == 1)
            content.replace(at, 512, QByteArray(512, '\0')); // a sector
        else if (kind == 2)
            content.append(steer.bytes());
        else if (!content.isEmpty())
            content[at] = static_cast<char>(steer.byte());
    }
}

/// Bytes of the files that are not what was written. Either opening says so, or it has all that the table
/// says is not over.
void checkDamage(Steer &steer, const FuzzedSystem &system)
{
    LeftFiles files = leftFiles(system);
    system.emptyFolder(folder);
    const bool withJournal = steer.flag();
    if (!withJournal) { // as after an orderly end
        system.write(database, files.database);
        system.write(journal, files.journal);
        {
            OccurrenceDatabase record;
            (void)record.open(system.now());
        }
        files.database = system.read(database);
    }
    damage(steer, withJournal && steer.flag() ? files.journal : files.database);
    system.emptyFolder(folder);
    system.write(database, files.database);
    if (withJournal)
        system.write(journal, files.journal);
    OccurrenceDatabase record;
    const auto opened = record.open(system.now());
    if (isWarned(opened, system.now())) {
        REQUIRE(opened.nothingKnownBefore == system.now());
        REQUIRE(system.exists("/var/lib/dozely/occurrences.db.damaged"));
    } else {
        for (const Key &key : openRows(system.path(database)))
            REQUIRE(opened.record.find(key.first, key.second));
    }
    checkUse(record, system.now());
}

/// The record of an earlier version. Its occurrences are all taken over, or it is said that they are not.
void checkTakingOver(Steer &steer, const FuzzedSystem &system)
{
    QVariantList list;
    QList<std::pair<Key, OccurrenceState>> expected;
    bool isGood = true;
    for (int left = steer.below(12); left > 0; --left) {
        const auto state = static_cast<OccurrenceState>(steer.below(7));
        const QString identifier = steer.flag() ? steer.text() : QString::number(steer.byte());
        QVariantMap entry{{"Identifier", identifier},
                          {"Date", system.now().addSecs(steer.byte())},
                          {"State", OccurrenceRecord::nameOf(state)}};
        if (steer.flag())
            entry.insert("Asked By", qint64(steer.byte()));
        if (steer.below(8) == 0) {
            const QString key =
                steer.oneOf<const char *>({"Identifier", "Date", "State", "Asked By", "Handed To"});
            entry.insert(key, steer.value(system.now()));
            isGood = false; // or not: nothing is said of it
        }
        expected += {Key(identifier, entry.value("Date").toDateTime()), state};
        list += entry;
    }
    const auto format = steer.flag() ? PropertyList::Format::Binary : PropertyList::Format::Xml;
    const QVariant root = QVariantMap{{"Format", 1}, {"Occurrences", list}};
    const QByteArray whole = PropertyList::toData(root, format); // null for a text that XML cannot carry
    const QByteArray bytes = steer.below(8) == 0 ? steer.rest() : whole;
    const bool isWhole = isGood && !whole.isNull() && bytes == whole;
    system.write(propertyList, bytes);
    OccurrenceDatabase record;
    const auto opened = record.open(system.now());
    REQUIRE(!system.exists(propertyList));
    const bool warned = isWarned(opened, system.now());
    REQUIRE(!isWhole || !warned);
    REQUIRE(system.exists(warned ? "/var/lib/dozely/occurrences.plist.damaged"
                                 : "/var/lib/dozely/occurrences.plist.taken-over"));
    REQUIRE(!warned || opened.nothingKnownBefore == system.now());
    const auto earlier = OccurrenceRecord::fromData(bytes);
    REQUIRE(warned == !earlier.ok());
    if (earlier) {
        for (const Key &key : openOnes(earlier->changes()))
            REQUIRE(opened.record.find(key.first, key.second) == earlier->find(key.first, key.second));
    }
    if (isWhole) {
        for (const auto &[key, state] : expected) {
            REQUIRE(earlier->find(key.first, key.second));
            const auto found = record.find(key);
            REQUIRE(found && *found); // also after this daemon
        }
    }
    checkUse(record, system.now());
}
} // namespace

/// The record of occurrences: what one daemon writes, rows that none writes, files that are damaged, and the
/// property list of earlier versions; the first byte says which. What began and is not over is never lost
/// without a word: it would be performed again.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static FuzzedSystem system;
    system.makeFolder(folder);
    system.emptyFolder(folder);
    (void)leftFiles(system);
    system.emptyFolder(folder);
    Steer steer(data, size);
    switch (steer.below(4)) {
    case 0:
        checkRoundTrip(steer, system);
        break;
    case 1:
        checkRows(steer, system);
        break;
    case 2:
        checkDamage(steer, system);
        break;
    default:
        checkTakingOver(steer, system);
    }
    return 0;
}
