// SPDX-License-Identifier: MIT
#include "hosts/common/record/Sqlite.h"
#include "unit/hosts/admin/AdminTool.h"

#include <QDateTime>
#include <QJsonArray>

#include <gmock/gmock.h>

#include <sys/stat.h>
#include <unistd.h>

using namespace dozely;

using testing::HasSubstr;
using testing::Not;

namespace
{
qint64 inMilliseconds(const QString &date)
{
    return QDateTime::fromString(date, Qt::ISODate).toMSecsSinceEpoch();
}

/// "Backup" at 03:00 each day from 2060-03-14 on, and a record of the present format, in UTC.
class AdminRecordTest : public testing::Test
{
protected:
    AdminRecordTest()
    {
        ::setenv("TZ", "UTC", 1);
        const auto added = tool.run({"add", "Backup", "--program", "/bin/true", "--every", "day", "--at",
                                     "03:00", "--from", "2060-03-14", "--wake", "--json"});
        EXPECT_EQ(added.status, 0) << added.errors.constData();
        identifier = added.json()["schedule"].toObject()["identifier"].toString();
        tool.root.makeFolder("/var/lib/dozely");
        auto opened = Sqlite::open(recordPath(), Sqlite::File::MayBeMade, std::chrono::milliseconds(0));
        EXPECT_TRUE(opened);
        EXPECT_TRUE(opened->run(
            "PRAGMA journal_mode = WAL; CREATE TABLE occurrences (identifier TEXT, date INTEGER, state TEXT, "
            "asked_by INTEGER, begun INTEGER, lateness INTEGER, place TEXT, handed_to INTEGER, handed_over "
            "INTEGER, exit_status INTEGER, ended INTEGER, failure TEXT NOT NULL DEFAULT '', postponed_to "
            "INTEGER, "
            "first INTEGER, count INTEGER, has_more INTEGER); PRAGMA user_version = 3"));
        EXPECT_EQ(::chmod(qPrintable(recordPath()), 0600), 0);
        database.emplace(*std::move(opened));
    }

    QString recordPath() const { return tool.root.join("/var/lib/dozely/occurrences.db"); }

    /// Columns and their values beside identifier, date and state.
    void record(const QString &date, const QString &state, const QMap<QString, QVariant> &more = {},
                const QString &of = {})
    {
        QStringList columns{"identifier", "date", "state"};
        QStringList values{QString("'%1'").arg(of.isNull() ? identifier : of),
                           QString::number(inMilliseconds(date)), QString("'%1'").arg(state)};
        for (auto value = more.cbegin(); value != more.cend(); ++value) {
            columns += value.key();
            values += value->typeId() == QMetaType::QString ? QString("'%1'").arg(value->toString())
                                                            : QString::number(value->toLongLong());
        }
        const QString text =
            QString("INSERT INTO occurrences (%1) VALUES (%2)").arg(columns.join(','), values.join(','));
        ASSERT_TRUE(database->run(text.toUtf8().constData()));
    }
    std::string done(const QStringList &arguments)
    {
        const auto result = tool.run(arguments);
        EXPECT_EQ(result.status, 0) << result.errors.constData();
        return result.output.toStdString();
    }

    AdminTool tool;
    QString identifier;
    std::optional<Sqlite> database;
};
} // namespace

TEST_F(AdminRecordTest, NextShowsWhatComesAndWhatWakesTheMachine)
{
    tool.run({"add", "Once", "--program", "/bin/true", "--date", "2060-03-15 12:00", "--power-on"});
    const std::string table = done({"next", "-n", "3"});
    EXPECT_THAT(table, HasSubstr("Sunday 14 March 2060 at 03:00  Backup  woken        "));
    EXPECT_THAT(table, HasSubstr("Monday 15 March 2060 at 03:00  Backup  woken        "));
    EXPECT_THAT(table, HasSubstr("Monday 15 March 2060 at 12:00  Once    switched on  "));
    EXPECT_THAT(table, Not(HasSubstr("Tuesday")));
    const QJsonArray one = tool.run({"next", "Once", "--json"}).json()["occurrences"].toArray();
    ASSERT_EQ(one.size(), 1);
    EXPECT_EQ(one[0]["name"], "Once");
    EXPECT_EQ(one[0]["date"], "2060-03-15T12:00:00Z");
    EXPECT_EQ(one[0]["wakes"], false);
    EXPECT_EQ(one[0]["powersOn"], true);
    EXPECT_EQ(one[0]["isPostponed"], false);
}

TEST_F(AdminRecordTest, NextEndsAtADate)
{
    const auto until = [this](const QString &date) {
        return tool.run({"next", "--until", date, "--json"}).json()["occurrences"].toArray().size();
    };
    EXPECT_EQ(until("2060-03-16"), 3) << "that day included";
    EXPECT_EQ(until("2060-03-16 02:59"), 2);
    EXPECT_EQ(until("2060-03-13"), 0);
    EXPECT_EQ(done({"next", "--until", "2060-03-13"}), "Nothing comes.\n");
    EXPECT_EQ(tool.run({"next", "--until", "03/04/2060"}).status, 2);
    EXPECT_EQ(tool.run({"next", "-n", "0"}).status, 2);
    EXPECT_EQ(done({"disable", "Backup"}), "\"Backup\" is disabled.\n");
    EXPECT_EQ(done({"next", "Backup"}), "\"Backup\" is disabled.\n");
    EXPECT_EQ(done({"next"}), "Nothing comes.\n");
}

TEST_F(AdminRecordTest, NextKnowsWhatWasLeftOutAndWhatWasPostponed)
{
    record("2060-03-14T03:00:00Z", "removed");
    record("2060-03-15T03:00:00Z", "postponed", {{"postponed_to", inMilliseconds("2060-03-15T04:00:00Z")}});
    const std::string table = done({"next", "-n", "2"});
    EXPECT_THAT(table,
                HasSubstr("Monday 15 March 2060 at 04:00, postponed from Monday 15 March 2060 at 03:00"));
    EXPECT_THAT(table, HasSubstr("Tuesday 16 March 2060 at 03:00"));
    EXPECT_THAT(table, Not(HasSubstr("Sunday")));
    EXPECT_EQ(tool.run({"list", "--json"}).json()["schedules"][0]["next"], "2060-03-15T04:00:00Z");
    if (::geteuid() == 0) {
        const auto other = tool.run({"next", "-n", "1"}, true);
        EXPECT_EQ(other.status, 0);
        EXPECT_THAT(other.output.toStdString(), HasSubstr("Sunday 14 March"));
        EXPECT_THAT(other.errors.toStdString(),
                    HasSubstr("What was skipped or postponed is not taken into account: You may not read"));
        EXPECT_EQ(tool.run({"next", "--json"}, true).json()["recordIsKnown"], false);
    }
}

TEST_F(AdminRecordTest, HistoryShowsWhatBecameOfOccurrencesNewestFirst)
{
    record("2026-03-10T03:00:00Z", "done",
           {{"begun", inMilliseconds("2026-03-10T03:00:00Z")}, {"lateness", 12}});
    record("2026-03-11T03:00:00Z", "failed",
           {{"begun", inMilliseconds("2026-03-11T05:05:00Z")}, {"lateness", 7500000}, {"exit_status", 3}});
    record("2026-03-14T03:00:00Z", "missed",
           {{"first", inMilliseconds("2026-03-12T03:00:00Z")}, {"count", 3}});
    record("2060-03-15T03:00:00Z", "postponed", {{"postponed_to", inMilliseconds("2060-03-15T04:00:00Z")}});
    record("2026-03-10T04:00:00Z", "not performed", {{"failure", "nobody is at the console"}}, "gone");
    const QByteArray table = tool.run({"history"}).output;
    const QList<QByteArray> lines = table.split('\n');
    ASSERT_EQ(lines.size(), 7) << table.constData();
    EXPECT_THAT(lines[1].toStdString(), HasSubstr("postponed to Monday 15 March 2060 at 04:00"));
    EXPECT_THAT(
        lines[2].toStdString(),
        HasSubstr(
            "Thursday 12 March 2026 at 03:00 to Saturday 14 March 2026 at 03:00  Backup  missed 3 times"));
    EXPECT_THAT(lines[3].toStdString(), HasSubstr("2 h 5 min late  exit 3"));
    EXPECT_THAT(lines[4].toStdString(), HasSubstr("nobody is at the console"));
    EXPECT_THAT(lines[5].toStdString(), HasSubstr("on time"));

    const QJsonArray rows =
        tool.run({"history", "Backup", "-n", "2", "--json"}).json()["occurrences"].toArray();
    ASSERT_EQ(rows.size(), 2);
    EXPECT_EQ(rows[0]["state"], "postponed");
    EXPECT_EQ(rows[0]["postponedTo"], "2060-03-15T04:00:00Z");
    EXPECT_EQ(rows[1]["first"], "2026-03-12T03:00:00Z");
    EXPECT_EQ(rows[1]["date"], "2026-03-14T03:00:00Z");
    EXPECT_EQ(rows[1]["count"], 3);
    EXPECT_EQ(rows[1]["isCountExact"], true);
    EXPECT_EQ(rows[1]["name"], "Backup");
}

TEST_F(AdminRecordTest, HistorySaysThatARunIsLongerThanWasCounted)
{
    record("2026-03-14T03:00:00Z", "missed",
           {{"first", inMilliseconds("2026-03-12T03:00:00Z")}, {"count", 100000}, {"has_more", 1}});
    EXPECT_THAT(done({"history"}), HasSubstr("missed at least 100000 times"));
}

TEST_F(AdminRecordTest, HistoryIsForWhoMayReadTheRecord)
{
    EXPECT_EQ(done({"history"}), "Nothing became of it yet.\n");
    if (::geteuid() != 0) {
        ASSERT_EQ(::chmod(qPrintable(recordPath()), 0), 0);
    }
    const auto result = tool.run({"history"}, true);
    EXPECT_EQ(result.status, 3);
    EXPECT_THAT(result.errors.toStdString(), HasSubstr("What became of it cannot be told: You may not read"));
}

TEST_F(AdminRecordTest, StatusShowsTheLastFailures)
{
    record("2026-03-10T03:00:00Z", "done");
    record("2026-03-11T03:00:00Z", "failed", {{"exit_status", 3}});
    record("2026-03-12T03:00:00Z", "failed", {{"failure", "it raised"}});
    record("2026-03-13T03:00:00Z", "missed");
    record("2026-03-14T03:00:00Z", "removed");
    record("2026-03-14T04:00:00Z", "not performed", {{"failure", "nobody is at the console"}}, "gone");
    const QByteArray output = tool.run({"status"}).output;
    const QList<QByteArray> lines = output.mid(output.indexOf("Last failures")).split('\n');
    ASSERT_EQ(lines.size(), 6) << output.constData();
    EXPECT_EQ(lines[1].simplified(), "2026-03-14 04:00:00 gone not performed (nobody is at the console)");
    EXPECT_EQ(lines[2].simplified(), "2026-03-13 03:00:00 Backup missed");
    EXPECT_EQ(lines[3].simplified(), "2026-03-12 03:00:00 Backup failed (it raised)");
    EXPECT_EQ(lines[4].simplified(), "2026-03-11 03:00:00 Backup failed (exit 3)");

    const QJsonArray failures = tool.run({"status", "--json"}).json()["failures"].toArray();
    ASSERT_EQ(failures.size(), 4);
    EXPECT_EQ(failures[0].toObject(), (QJsonObject{{"identifier", "gone"},
                                                   {"name", QJsonValue()},
                                                   {"date", "2026-03-14T04:00:00Z"},
                                                   {"state", "not performed"},
                                                   {"exitStatus", QJsonValue()},
                                                   {"failure", "nobody is at the console"}}));
    EXPECT_EQ(failures[3].toObject(), (QJsonObject{{"identifier", identifier},
                                                   {"name", "Backup"},
                                                   {"date", "2026-03-11T03:00:00Z"},
                                                   {"state", "failed"},
                                                   {"exitStatus", 3},
                                                   {"failure", QJsonValue()}}));
}

TEST_F(AdminRecordTest, StatusSaysThatTheRecordCannotBeRead)
{
    database.reset();
    QFile file(recordPath());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write("no record of anything");
    file.close();
    EXPECT_THAT(tool.run({"status"}).output.toStdString(), HasSubstr("What failed cannot be told: "));
    EXPECT_TRUE(tool.run({"status", "--json"}).json()["failures"].isNull());
}

TEST_F(AdminRecordTest, ListShowsTheLatestOfWhatRepeats)
{
    record("2026-03-10T03:00:00Z", "done");
    record("2026-03-11T03:00:00Z", "failed", {{"exit_status", 3}});
    record("2060-03-14T03:00:00Z", "removed");
    EXPECT_THAT(done({"list"}), HasSubstr("to come, last failed (exit 3)"));
    EXPECT_THAT(done({"list"}), HasSubstr("2060-03-15 03:00:00"));
    EXPECT_EQ(tool.run({"list", "--json"}).json()["schedules"][0]["occurrence"]["exitStatus"], 3);
}

TEST_F(AdminRecordTest, CleanLeavesWhatHasMoreToCome)
{
    record("2060-03-14T03:00:00Z", "done");
    EXPECT_EQ(done({"clean"}), "No schedule is over.\n");
    EXPECT_THAT(done({"list"}), HasSubstr("Backup"));
}
