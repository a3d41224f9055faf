// SPDX-License-Identifier: MIT
#include "hosts/daemon/OccurrenceDatabase.h"

#include "support/PrintTo.h"
#include "unit/hosts/HostFixture.h"

#include <QDir>

using namespace dozely;

using enum OccurrenceState;
using testing::ElementsAre;
using testing::HasSubstr;

class OccurrenceDatabaseTest : public HostFixture
{
protected:
    using Key = OccurrenceRecord::Key;

    static OccurrenceRecord::Changes change(const QString &identifier, const QDateTime &date,
                                            const OccurrenceEntry &entry)
    {
        return {{Key(identifier, date), entry}};
    }
    static std::optional<OccurrenceEntry> found(OccurrenceDatabase &database, const QString &identifier,
                                                const QDateTime &date = noon())
    {
        const auto entry = database.find({identifier, date});
        EXPECT_TRUE(entry) << entry.error().text.toStdString();
        return entry ? *entry : std::nullopt;
    }
    static OccurrenceDatabase::Occurrences noDate(const QString &) { return {}; }
    static OccurrenceDatabase::Opened openedAt(const QDateTime &now)
    {
        OccurrenceDatabase database;
        return database.open(now);
    }
    mode_t modeOf(const QString &fixedPath) const
    {
        struct stat status {
        };
        EXPECT_EQ(::stat(qPrintable(root.join(fixedPath)), &status), 0);
        return status.st_mode & 07777;
    }
    /// The database, past the daemon.
    Sqlite raw() const
    {
        return std::move(Sqlite::open(root.join(recordPath), Sqlite::File::MustExist, {})).value();
    }
    QString damaged() const { return root.join(recordPath) + ".damaged"; }
};

TEST_F(OccurrenceDatabaseTest, IsMadeForItsOwnerAlone)
{
    const auto opened = openedAt(noon());
    EXPECT_TRUE(opened.complaints.isEmpty());
    EXPECT_FALSE(opened.nothingKnownBefore.isValid()) << "nothing ever ran";
    EXPECT_EQ(modeOf(recordPath), 0600u);
    EXPECT_EQ(modeOf("/var/lib/dozely"), 0755u);
}

TEST_F(OccurrenceDatabaseTest, KeepsWhatIsWritten)
{
    OccurrenceEntry whole{Done, 501u, noon().addSecs(1), 502u};
    whole.begun = noon().addMSecs(1234);
    whole.lateness = 1234;
    whole.place = ActingPlace::Session;
    whole.exitStatus = 3;
    {
        OccurrenceDatabase database;
        database.open(noon());
        OccurrenceRecord::Changes changes = change("a", noon(), whole);
        for (const auto state : {Asked, Begun, Done, Skipped, NotPerformed, Removed, Interrupted})
            changes.insert({"states", noon().addSecs(int(state))}, OccurrenceEntry{state, {}, {}});
        changes.insert({"gone", noon()}, OccurrenceEntry{Done, {}, {}});
        ASSERT_TRUE(database.write(changes, noDate));
        ASSERT_TRUE(database.write({{Key("gone", noon()), std::nullopt}}, noDate));
    }
    OccurrenceDatabase database;
    const auto opened = database.open(noon().addSecs(3600));
    EXPECT_EQ(found(database, "a"), whole);
    for (const auto state : {Asked, Begun, Done, Skipped, NotPerformed, Removed, Interrupted})
        EXPECT_EQ(found(database, "states", noon().addSecs(int(state)))->state, state);
    EXPECT_FALSE(found(database, "gone"));
    EXPECT_FALSE(found(database, "a", noon().addMSecs(1)));
    EXPECT_TRUE(opened.record.find("a", noon())) << "may still be handed back";
    EXPECT_EQ(opened.record.dates("states").size(), 2) << "what is not over";
    EXPECT_FALSE(openedAt(noon().addSecs(3602)).record.find("a", noon()));
}

TEST_F(OccurrenceDatabaseTest, KeepsTheLatestOfAScheduleWhatIsNotOverAndTheCurrentDate)
{
    OccurrenceDatabase database;
    database.open(noon());
    database.setLimits({3, 200});
    const auto current = [](const QString &) { return OccurrenceDatabase::Occurrences{noon()}; };
    ASSERT_TRUE(database.write(change("a", noon().addSecs(1), {Begun, {}, {}}), current));
    for (const int i : {0, 2, 3, 4, 5, 6, 7, 8}) {
        ASSERT_TRUE(database.write(change("a", noon().addSecs(i), {Done, {}, {}}), current));
    }
    QList<int> kept;
    for (int i = 0; i < 9; ++i) {
        if (found(database, "a", noon().addSecs(i)))
            kept += i;
    }
    EXPECT_THAT(kept, ElementsAre(0, 1, 6, 7, 8));
}

TEST_F(OccurrenceDatabaseTest, KeepsTheLatestThatOneUserAskedFor)
{
    OccurrenceDatabase database;
    database.open(noon());
    database.setLimits({100, 3});
    for (int i = 0; i < 6; ++i) {
        ASSERT_TRUE(
            database.write(change(QString::number(i), noon().addSecs(i), {Done, {}, {}, 501u}), noDate));
        ASSERT_TRUE(database.write(change("b" + QString::number(i), noon().addSecs(i), {Done, {}, {}, 502u}),
                                   noDate));
    }
    for (int i = 0; i < 6; ++i)
        EXPECT_EQ(found(database, QString::number(i), noon().addSecs(i)).has_value(), i >= 3) << i;
}

TEST_F(OccurrenceDatabaseTest, ForgetsWhatIsGoneAndWhatIsOld)
{
    OccurrenceDatabase database;
    database.open(noon());
    const QDateTime old = noon().addDays(-1);
    for (const QString identifier : {"gone", "stays", "current"}) {
        ASSERT_TRUE(database.write(change(identifier, old, {Done, {}, {}}), noDate));
        ASSERT_TRUE(database.write(change(identifier, noon(), {Done, {}, {}}), noDate));
    }
    ASSERT_TRUE(database.forget([](const QString &identifier) { return identifier == "gone"; }, noon(),
                                [&](const QString &identifier) {
                                    return OccurrenceDatabase::Occurrences{
                                        identifier == "current" ? old : QDateTime()};
                                }));
    EXPECT_FALSE(found(database, "gone"));
    EXPECT_TRUE(found(database, "stays"));
    EXPECT_FALSE(found(database, "stays", old));
    EXPECT_TRUE(found(database, "current", old));
}

TEST_F(OccurrenceDatabaseTest, ThatIsDamagedIsMovedAsideAndTheNewOneSaysWhatItDoesNotKnow)
{
    for (const QByteArray &content : {QByteArray("damaged"), QByteArray(), QByteArray(8192, '\0')}) {
        write(recordPath, content);
        ASSERT_EQ(::chmod(qPrintable(root.join(recordPath)), 0600), 0);
        const auto opened = openedAt(noon());
        ASSERT_EQ(opened.complaints.size(), 1) << content.left(10).toStdString();
        EXPECT_THAT(opened.complaints.first().toStdString(), HasSubstr("is damaged and was moved aside"));
        EXPECT_EQ(opened.nothingKnownBefore, noon());
        EXPECT_EQ(read(QString(recordPath) + ".damaged"), content);
        const auto later = openedAt(noon().addSecs(60));
        EXPECT_TRUE(later.complaints.isEmpty());
        EXPECT_EQ(later.nothingKnownBefore, noon()) << "it says so from its first moment on";
    }
}

TEST_F(OccurrenceDatabaseTest, ThatIsCutShortAnywhereIsDamaged)
{
    {
        OccurrenceDatabase database;
        database.open(noon());
        OccurrenceRecord::Changes changes;
        for (int i = 0; i < 500; ++i)
            changes.insert({"a", noon().addSecs(i)}, OccurrenceEntry{Begun, {}, {}});
        ASSERT_TRUE(database.write(changes, noDate));
    }
    const QByteArray whole = read(recordPath);
    ASSERT_GT(whole.size(), 16384);
    for (qsizetype length = 0; length < whole.size(); length += 4096) {
        write(recordPath, whole.left(length));
        const auto opened = openedAt(noon());
        EXPECT_EQ(opened.nothingKnownBefore, noon()) << length;
        EXPECT_TRUE(opened.record.dates("a").isEmpty()) << length;
        QFile::remove(root.join(recordPath));
        QFile::remove(damaged());
    }
}

TEST_F(OccurrenceDatabaseTest, WhoseTablesAreOthersIsDamaged)
{
    for (const char *statement : {"DROP TABLE occurrences", "DROP TABLE knowledge",
                                  "ALTER TABLE occurrences DROP COLUMN exit_status"}) {
        openedAt(noon());
        ASSERT_TRUE(raw().run(statement)) << statement;
        OccurrenceDatabase database;
        const auto opened = database.open(noon());
        ASSERT_EQ(opened.complaints.size(), 1) << statement;
        EXPECT_THAT(opened.complaints.first().toStdString(), HasSubstr("is damaged and was moved aside"));
        EXPECT_TRUE(database.write(change("a", noon(), {Begun, {}, {}}), noDate)) << statement;
    }
}

TEST_F(OccurrenceDatabaseTest, WhoseIndexHasLostARowIsDamaged)
{
    openedAt(noon());
    const auto setIndex = [&](const char *states) {
        const auto text =
            QString("PRAGMA writable_schema = ON; UPDATE sqlite_schema SET sql = 'CREATE INDEX not_over "
                    "ON occurrences (state) WHERE state IN (%1)' WHERE name = 'not_over'")
                .arg(states);
        ASSERT_TRUE(raw().run(text.toUtf8().constData()));
    };
    setIndex("''asked''");
    ASSERT_TRUE(raw().run("INSERT INTO occurrences (identifier, date, state) VALUES ('a', 5, 'begun')"));
    setIndex("''asked'', ''begun''");
    const auto opened = openedAt(noon());
    EXPECT_EQ(opened.complaints.size(), 1) << "what has begun is not seen, and nobody says so";
    EXPECT_EQ(opened.nothingKnownBefore, noon());
}

TEST_F(OccurrenceDatabaseTest, OfWhichOnlyTheDamagedOneIsLeftKnowsNothing)
{
    // Killed after the old one was moved and before the new one was made.
    write(QString(recordPath) + ".damaged", "damaged");
    EXPECT_EQ(openedAt(noon()).nothingKnownBefore, noon());
}

TEST_F(OccurrenceDatabaseTest, IsMadeAnewWhereOnlyHalfOfOneWasMade)
{
    write(QString(recordPath) + ".new", "half");
    const auto opened = openedAt(noon());
    EXPECT_TRUE(opened.complaints.isEmpty());
    EXPECT_FALSE(opened.nothingKnownBefore.isValid());
    EXPECT_FALSE(QFile::exists(root.join(recordPath) + ".new"));
}

TEST_F(OccurrenceDatabaseTest, ThatOthersMayWriteIsNotBelieved)
{
    openedAt(noon());
    ASSERT_EQ(::chmod(qPrintable(root.join(recordPath)), 0666), 0);
    EXPECT_EQ(openedAt(noon()).nothingKnownBefore, noon());
    EXPECT_TRUE(QFile::exists(damaged()));
}

TEST_F(OccurrenceDatabaseTest, OfALaterFormatIsRefused)
{
    openedAt(noon());
    {
        const auto database = Sqlite::open(root.join(recordPath), Sqlite::File::MustExist, {});
        ASSERT_TRUE(database);
        ASSERT_TRUE(database->run("PRAGMA user_version = 4"));
    }
    const auto opened = openedAt(noon());
    ASSERT_EQ(opened.complaints.size(), 1);
    EXPECT_THAT(opened.complaints.first().toStdString(), HasSubstr("its format is not known"));
}

TEST_F(OccurrenceDatabaseTest, OfTheFirstFormatIsBroughtUpToDate)
{
    {
        root.makeFolder("/var/lib/dozely");
        QFile(root.join(recordPath)).open(QIODevice::WriteOnly);
        const auto database = Sqlite::open(root.join(recordPath), Sqlite::File::MustExist, {});
        ASSERT_TRUE(database);
        ASSERT_TRUE(database->run(
            "CREATE TABLE occurrences (identifier TEXT NOT NULL, date INTEGER NOT NULL, state TEXT NOT NULL "
            "CHECK (state IN ('asked', 'begun', 'done')), asked_by INTEGER, begun INTEGER, lateness INTEGER, "
            "place TEXT, handed_to INTEGER, handed_over INTEGER, exit_status INTEGER, "
            "PRIMARY KEY (identifier, date)) STRICT, WITHOUT ROWID;"
            "CREATE INDEX not_over ON occurrences (state) WHERE state IN ('asked', 'begun');"
            "CREATE INDEX handed_over ON occurrences (handed_over) WHERE handed_over IS NOT NULL;"
            "CREATE INDEX asked_by ON occurrences (asked_by, date) WHERE asked_by IS NOT NULL;"
            "CREATE TABLE knowledge (nothing_known_before INTEGER) STRICT;"
            "INSERT INTO knowledge VALUES (NULL);"
            "INSERT INTO occurrences VALUES ('a', 5, 'done', 501, 6, 1, 'daemon', NULL, NULL, 3);"
            "PRAGMA user_version = 1"));
    }
    OccurrenceDatabase database;
    const auto opened = database.open(noon());
    EXPECT_TRUE(opened.complaints.isEmpty());
    EXPECT_FALSE(opened.nothingKnownBefore.isValid());
    const auto old = database.find(Key("a", QDateTime::fromMSecsSinceEpoch(5, Qt::UTC)));
    ASSERT_TRUE(old && *old);
    EXPECT_EQ((*old)->exitStatus, 3);
    EXPECT_EQ((*old)->askedBy, 501u);
    OccurrenceEntry failed{Failed, {}, {}};
    failed.failure = "it was asked to end";
    failed.ended = noon();
    ASSERT_TRUE(database.write(change("b", noon(), failed), noDate));
    const auto found = database.find(Key("b", noon()));
    ASSERT_TRUE(found && *found);
    EXPECT_EQ(**found, failed);
}

TEST_F(OccurrenceDatabaseTest, OfTheSecondFormatIsBroughtUpToDateWithWhatActionsWrote)
{
    {
        root.makeFolder("/var/lib/dozely");
        QFile(root.join(recordPath)).open(QIODevice::WriteOnly);
        const auto database = Sqlite::open(root.join(recordPath), Sqlite::File::MustExist, {});
        ASSERT_TRUE(database);
        ASSERT_TRUE(database->run(
            "CREATE TABLE occurrences (identifier TEXT NOT NULL, date INTEGER NOT NULL, state TEXT NOT NULL "
            "CHECK (state IN ('asked', 'begun', 'done', 'failed')), asked_by INTEGER, begun INTEGER, "
            "lateness INTEGER, place TEXT, handed_to INTEGER, handed_over INTEGER, exit_status INTEGER, "
            "ended INTEGER, failure TEXT NOT NULL DEFAULT '', "
            "PRIMARY KEY (identifier, date)) STRICT, WITHOUT ROWID;"
            "CREATE INDEX not_over ON occurrences (state) WHERE state IN ('asked', 'begun');"
            "CREATE INDEX handed_over ON occurrences (handed_over) WHERE handed_over IS NOT NULL;"
            "CREATE INDEX asked_by ON occurrences (asked_by, date) WHERE asked_by IS NOT NULL;"
            "CREATE TABLE outputs (identifier TEXT NOT NULL, date INTEGER NOT NULL, output BLOB NOT NULL, "
            "PRIMARY KEY (identifier, date)) STRICT;"
            "CREATE TRIGGER forget_output AFTER DELETE ON occurrences BEGIN DELETE FROM outputs "
            "WHERE identifier = OLD.identifier AND date = OLD.date; END;"
            "CREATE TABLE knowledge (nothing_known_before INTEGER) STRICT;"
            "INSERT INTO knowledge VALUES (7);"
            "INSERT INTO occurrences VALUES ('a', 5, 'failed', 501, 6, 1, 'daemon', NULL, NULL, 3, 8, 'why');"
            "INSERT INTO outputs VALUES ('a', 5, x'6162');"
            "PRAGMA user_version = 2"));
    }
    OccurrenceDatabase database;
    const auto opened = database.open(noon());
    EXPECT_TRUE(opened.complaints.isEmpty());
    EXPECT_EQ(opened.nothingKnownBefore, QDateTime::fromMSecsSinceEpoch(7, Qt::UTC));
    const QDateTime date = QDateTime::fromMSecsSinceEpoch(5, Qt::UTC);
    ASSERT_TRUE(found(database, "a", date));
    EXPECT_EQ(found(database, "a", date)->failure, "why");
    const auto outputs = [&] {
        const auto file = raw();
        auto count = file.prepare("SELECT count(*) FROM outputs");
        EXPECT_TRUE(*count.next());
        return *count.number(0);
    };
    EXPECT_EQ(outputs(), 1);
    ASSERT_TRUE(database.write({{Key("a", date), std::nullopt}}, noDate));
    EXPECT_EQ(outputs(), 0) << "it goes with its occurrence, as before";
    ASSERT_TRUE(database.write({}, noDate, {}, {{"a", {noon(), true}}}));
    EXPECT_EQ(openedAt(noon()).record.calendar("a"), (CalendarEntry{noon(), true}));
}

TEST_F(OccurrenceDatabaseTest, KeepsHowFarSchedulesHaveComeAndWhatIsDecidedUponInAdvance)
{
    OccurrenceEntry postponed{Postponed, {}, {}};
    postponed.postponedTo = noon().addSecs(600);
    OccurrenceEntry missed{Missed, {}, {}};
    missed.run = {noon().addSecs(-900), 16, false};
    {
        OccurrenceDatabase database;
        database.open(noon());
        OccurrenceRecord::Changes changes = change("a", noon(), postponed);
        changes.insert(Key("a", noon().addSecs(-1)), missed);
        changes.insert(Key("a", noon().addSecs(60)), OccurrenceEntry{Removed, {}, {}});
        changes.insert(Key("a", noon().addSecs(90)), OccurrenceEntry{Done, {}, {}});
        changes.insert(Key("a", noon().addSecs(-60)), OccurrenceEntry{Removed, {}, {}});
        changes.insert(Key("once", noon().addSecs(60)), OccurrenceEntry{Removed, {}, {}});
        ASSERT_TRUE(database.write(changes, noDate, {}, {{"a", {noon(), false}}, {"b", {noon(), true}}}));
        EXPECT_EQ(found(database, "a", noon().addSecs(-1)), missed);
    }
    OccurrenceDatabase database;
    const OccurrenceRecord record = database.open(noon()).record;
    EXPECT_EQ(record.calendar("a"), (CalendarEntry{noon(), false}));
    EXPECT_EQ(record.calendar("b"), (CalendarEntry{noon(), true}));
    EXPECT_EQ(record.find("a", noon()), postponed);
    EXPECT_EQ(record.postponed(), QList{Key("a", noon())});
    EXPECT_TRUE(record.find("a", noon().addSecs(60))) << "removed later than what is settled";
    EXPECT_TRUE(record.find("a", noon().addSecs(90))) << "performed in another zone, where it was earlier";
    EXPECT_FALSE(record.find("a", noon().addSecs(-60)));
    EXPECT_FALSE(record.find("once", noon().addSecs(60)));
    ASSERT_TRUE(database.forget([](const QString &identifier) { return identifier == "b"; }, noon(), noDate));
    EXPECT_FALSE(openedAt(noon()).record.calendar("b"));
    EXPECT_TRUE(openedAt(noon()).record.calendar("a"));
}

TEST_F(OccurrenceDatabaseTest, ForgetsNothingThatIsStillToBeToldApart)
{
    OccurrenceDatabase database;
    database.open(noon());
    database.setLimits({2, 200});
    const auto settled = [](const QString &) { return OccurrenceDatabase::Occurrences{{}, noon()}; };
    for (int i = 1; i <= 10; ++i)
        ASSERT_TRUE(database.write(change("a", noon().addSecs(i), {Removed, {}, {}}), settled));
    for (int i = 0; i < 5; ++i)
        ASSERT_TRUE(database.write(change("a", noon().addSecs(-i), {Done, {}, {}}), settled));
    ASSERT_TRUE(database.forget([](const QString &) { return false; }, noon().addDays(1), settled));
    for (int i = 1; i <= 10; ++i)
        EXPECT_TRUE(found(database, "a", noon().addSecs(i))) << i;
    EXPECT_FALSE(found(database, "a", noon())) << "older than what is kept";
}

TEST_F(OccurrenceDatabaseTest, KeepsWhatTheLatestActionsOfAScheduleWrote)
{
    const auto dates = [&] {
        QList<qint64> dates;
        const auto database = raw();
        auto rows = database.prepare("SELECT date, output FROM outputs ORDER BY date");
        while (*rows.next()) {
            EXPECT_EQ(rows.bytes(1), QByteArray("a\0b", 3));
            dates += *rows.number(0) / 1000 - noon().toSecsSinceEpoch();
        }
        return dates;
    };
    OccurrenceDatabase database;
    database.open(noon());
    for (int i = 0; i < 12; ++i) {
        const Key key("a", noon().addSecs(i));
        ASSERT_TRUE(
            database.write(change("a", key.second, {Done, {}, {}}), noDate, {{key, QByteArray("a\0b", 3)}}));
    }
    EXPECT_EQ(dates(), QList<qint64>({2, 3, 4, 5, 6, 7, 8, 9, 10, 11}));
    ASSERT_TRUE(database.write(change("a", noon().addSecs(11), {Failed, {}, {}}), noDate));
    ASSERT_TRUE(database.write({{Key("a", noon().addSecs(10)), std::nullopt}}, noDate));
    EXPECT_EQ(dates(), QList<qint64>({2, 3, 4, 5, 6, 7, 8, 9, 11})) << "it goes with its occurrence";
    ASSERT_TRUE(database.write({}, noDate, {{Key("gone", noon()), QByteArray("a\0b", 3)}}));
    EXPECT_EQ(dates().size(), 9);
}

TEST_F(OccurrenceDatabaseTest, TakesOverTheEarlierRecordOnce)
{
    const QString earlier = "/var/lib/dozely/occurrences.plist";
    const auto dataOf = [](const char *state) {
        return PropertyList::toData(
            QVariantMap{{"Format", 1LL},
                        {"Occurrences",
                         QVariantList{QVariantMap{{"Identifier", "a"}, {"Date", noon()}, {"State", state}}}}},
            PropertyList::Format::Binary);
    };
    write(earlier, dataOf("begun"));
    OccurrenceDatabase database;
    const auto opened = database.open(noon());
    EXPECT_TRUE(opened.complaints.isEmpty());
    EXPECT_EQ(opened.record.find("a", noon())->state, Begun);
    EXPECT_EQ(found(database, "a")->state, Begun);
    EXPECT_FALSE(QFile::exists(root.join(earlier)));
    EXPECT_TRUE(QFile::exists(root.join(earlier + ".taken-over")));
    // Killed before the file was renamed: what the database says is later.
    ASSERT_TRUE(database.write(change("a", noon(), {Done, {}, {}}), noDate));
    write(earlier, dataOf("begun"));
    OccurrenceDatabase again;
    again.open(noon());
    EXPECT_EQ(found(again, "a")->state, Done);
}

TEST_F(OccurrenceDatabaseTest, KnowsNothingWhenTheEarlierRecordIsDamaged)
{
    write("/var/lib/dozely/occurrences.plist", "damaged");
    const auto opened = openedAt(noon());
    EXPECT_EQ(opened.complaints.size(), 1);
    EXPECT_EQ(opened.nothingKnownBefore, noon());
    EXPECT_EQ(openedAt(noon().addSecs(9)).nothingKnownBefore, noon());
}

TEST_F(OccurrenceDatabaseTest, SaysWhyItCouldNotBeWrittenAndTriesAgain)
{
    write("/var/lib", "a file where a folder belongs");
    OccurrenceDatabase database;
    database.open(noon());
    const auto written = database.write(change("a", noon(), {Done, {}, {}}), noDate);
    ASSERT_FALSE(written);
    EXPECT_FALSE(written.error().text.isEmpty());
    ASSERT_TRUE(QFile::remove(root.join("/var/lib")));
    ASSERT_TRUE(database.write(change("a", noon(), {Done, {}, {}}), noDate));
    EXPECT_EQ(found(database, "a")->state, Done);
}

TEST_F(OccurrenceDatabaseTest, KeepsTheLatestOfEachUserWhoAskedForThem)
{
    OccurrenceDatabase database;
    database.setLimits({.ofAnAsker = 2});
    ASSERT_TRUE(database.open(noon()).complaints.isEmpty());
    OccurrenceRecord::Changes changes;
    for (const quint32 user : {501U, 502U, 503U}) {
        for (int hour = 0; hour < 4; ++hour) {
            OccurrenceEntry entry{Done, {}, {}};
            entry.askedBy = user;
            entry.ended = noon().addSecs(3600 * hour);
            changes.insert(Key(QString::number(user) + QString::number(hour), entry.ended), entry);
        }
    }
    ASSERT_TRUE(database.write(changes, noDate));
    for (const quint32 user : {501U, 502U, 503U}) {
        for (int hour = 0; hour < 4; ++hour)
            EXPECT_EQ(
                found(database, QString::number(user) + QString::number(hour), noon().addSecs(3600 * hour))
                    .has_value(),
                hour >= 2)
                << user << ' ' << hour;
    }
}

TEST_F(OccurrenceDatabaseTest, CallsInterruptedWhatWasBegunBeforeItCouldNotBeOpened)
{
    {
        OccurrenceDatabase earlier;
        ASSERT_TRUE(earlier.open(noon()).complaints.isEmpty());
        ASSERT_TRUE(earlier.write(change("a", noon(), {Begun, {}, {}}), noDate));
        ASSERT_TRUE(earlier.write(change("b", noon(), {Done, {}, {}}), noDate));
    }
    const QString path = root.join(recordPath);
    ASSERT_TRUE(QFile::rename(path, path + ".away"));
    ASSERT_TRUE(QDir().mkdir(path)); // what is there is no file
    OccurrenceDatabase database;
    EXPECT_EQ(database.open(noon()).complaints.size(), 1);
    ASSERT_TRUE(QDir().rmdir(path));
    ASSERT_TRUE(QFile::rename(path + ".away", path));
    ASSERT_TRUE(database.write(change("c", noon(), {Begun, {}, {}}), noDate));
    EXPECT_EQ(found(database, "a")->state, Interrupted);
    EXPECT_EQ(found(database, "b")->state, Done);
    EXPECT_EQ(found(database, "c")->state, Begun);
}
