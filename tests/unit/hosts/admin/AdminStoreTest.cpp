// SPDX-License-Identifier: MIT
#include "DozelyKit/core/files/PropertyList.h"
#include "hosts/common/record/Sqlite.h"
#include "hosts/common/schedules/ScheduleStore.h"
#include "unit/hosts/admin/AdminTool.h"

#include <QFile>
#include <QJsonArray>
#include <QUuid>

#include <gmock/gmock.h>

#include <sys/stat.h>
#include <unistd.h>

using namespace dozely;

using testing::HasSubstr;
using testing::Not;

namespace
{
class AdminStoreTest : public testing::Test
{
protected:
    QVariantList entries() const
    {
        const auto list = PropertyList::fromData(tool.store());
        return list ? list->toMap().value("Schedule Array").toList() : QVariantList();
    }
    QVariantMap onlyEntry() const
    {
        EXPECT_EQ(entries().size(), 1);
        return entries().value(0).toMap();
    }

    struct Row {
        QString name;
        QString state;
        std::optional<qint64> exitStatus;
    };
    QString recordPath() const { return tool.root.join("/var/lib/dozely/occurrences.db"); }
    /// Adds a schedule for each row, which the record has, and "open", which it has not.
    void record(const QList<Row> &rows)
    {
        tool.root.makeFolder("/var/lib/dozely");
        const auto database =
            Sqlite::open(recordPath(), Sqlite::File::MayBeMade, std::chrono::milliseconds(0));
        ASSERT_TRUE(database);
        ASSERT_TRUE(database->run("PRAGMA journal_mode = WAL; CREATE TABLE occurrences (identifier TEXT, "
                                  "date INTEGER, state TEXT, begun INTEGER, lateness INTEGER, "
                                  "exit_status INTEGER, place TEXT DEFAULT 'daemon')"));
        ASSERT_EQ(::chmod(qPrintable(recordPath()), 0600), 0);
        auto insertion = database->prepare("INSERT INTO occurrences VALUES (?1, ?2, ?3, ?2, 0, ?4, NULL)");
        for (const Row &row : rows) {
            const QStringList more = row.name == "stays" ? QStringList{"--stays"} : QStringList();
            insertion.bind(1, tool.add(row.name, more)).bind(3, row.state).bind(4, row.exitStatus);
            const QDateTime date = entries().constLast().toMap()["Date"].toDateTime();
            ASSERT_TRUE(insertion.bind(2, date.toMSecsSinceEpoch()).run());
        }
        tool.add("open");
    }

    /// A record of the present format, with one occurrence of "Backup" that is over at its date, and one of
    /// an hour before.
    struct Ended {
        QString state;
        std::optional<qint64> exitStatus = {};
        QString failure = {};
        QByteArray output = {};
        QString place = "daemon";
    };
    void recordEnds(const Ended &latest, const Ended &before)
    {
        tool.root.makeFolder("/var/lib/dozely");
        const auto database =
            Sqlite::open(recordPath(), Sqlite::File::MayBeMade, std::chrono::milliseconds(0));
        ASSERT_TRUE(database);
        ASSERT_TRUE(database->run(
            "PRAGMA journal_mode = WAL; CREATE TABLE occurrences (identifier TEXT, date INTEGER, state TEXT, "
            "asked_by INTEGER, begun INTEGER, lateness INTEGER, place TEXT, handed_to INTEGER, "
            "handed_over INTEGER, exit_status INTEGER, ended INTEGER, failure TEXT NOT NULL DEFAULT ''); "
            "CREATE TABLE outputs (identifier TEXT, date INTEGER, output BLOB); PRAGMA user_version = 2"));
        ASSERT_EQ(::chmod(qPrintable(recordPath()), 0600), 0);
        ASSERT_EQ(tool.run({"add", "Backup", "--program", "/bin/true", "--date", "2060-03-14 06:55",
                            "--time-zone", "Europe/Paris"})
                      .status,
                  0);
        const QString identifier = onlyEntry()["Identifier"].toString();
        const qint64 date = QDateTime({2060, 3, 14}, {5, 55}, Qt::UTC).toMSecsSinceEpoch();
        auto insertion = database->prepare(
            "INSERT INTO occurrences VALUES (?1, ?2, ?3, NULL, ?2, 0, ?6, NULL, NULL, ?4, ?2, ?5)");
        auto writing = database->prepare("INSERT INTO outputs VALUES (?1, ?2, ?3)");
        for (const auto &[when, end] : {std::pair(date, latest), std::pair(date - 3600'000, before)}) {
            insertion.bind(1, identifier).bind(2, when).bind(3, end.state).bind(4, end.exitStatus);
            ASSERT_TRUE(insertion.bind(5, end.failure).bind(6, end.place).run());
            if (!end.output.isEmpty()) {
                ASSERT_TRUE(writing.bind(1, identifier).bind(2, when).bindBytes(3, end.output).run());
            }
        }
    }
    void recordEnds(const Ended &latest) { recordEnds(latest, {"done"}); }

    AdminTool tool;
};
} // namespace

TEST_F(AdminStoreTest, AnEmptySystemHasNoSchedules)
{
    const auto forPeople = tool.run({"list"});
    EXPECT_EQ(forPeople.status, 0);
    EXPECT_EQ(forPeople.output, "There are no schedules.\n");
    const auto forPrograms = tool.run({"list", "--json"});
    EXPECT_EQ(forPrograms.json()["schedules"], QJsonArray());
    EXPECT_EQ(forPrograms.json()["faults"], QJsonArray());
    EXPECT_FALSE(QFile::exists(tool.storePath()));
}

TEST_F(AdminStoreTest, AddWritesEveryKeyOfAnEntry)
{
    const auto result =
        tool.run({"add", "Water the plants", "--program", "/usr/bin/touch", "--argument", "a b", "--argument",
                  "-l", "--date", "2060-03-14 06:55", "--time-zone", "Europe/Paris", "--parameter", "Alert=1",
                  "--in-session", "--owner", "4711"});
    ASSERT_EQ(result.status, 0) << result.errors.constData();
    QVariantMap entry = onlyEntry();
    const QString identifier = entry.take("Identifier").toString();
    EXPECT_FALSE(QUuid::fromString(identifier).isNull());
    EXPECT_FALSE(identifier.contains('{'));
    EXPECT_THAT(result.output.toStdString(), HasSubstr(identifier.toStdString()));
    const QVariantMap parameters{{"Program", "/usr/bin/touch"},
                                 {"Arguments", QVariantList{"a b", "-l"}},
                                 {"Acts In User Agent", 1LL},
                                 {"Alert", 1LL}};
    const QVariantMap expected{{"Name", "Water the plants"},
                               {"Is Enabled", true},
                               {"Bundle Path", "/Library/Application Support/Dozely/PlugIns/Command.plugin"},
                               {"Parameters", parameters},
                               {"Date", QDateTime({2060, 3, 14}, {5, 55}, Qt::UTC)},
                               {"Time Zone", "Europe/Paris"},
                               {"Owner", 4711LL}};
    EXPECT_EQ(entry, expected);
}

TEST_F(AdminStoreTest, ListShowsWhatBecameOfASchedule)
{
    record({{"done", "done", 0}, {"failed", "done", 3}, {"skipped", "skipped", {}}, {"begun", "begun", {}}});
    const std::string forPeople = tool.run({"list"}).output.toStdString();
    for (const char *state : {"done ", "done (exit 3)", "skipped", "begun", "to come"})
        EXPECT_THAT(forPeople, HasSubstr(state));
    const QJsonObject json = tool.run({"list", "--json"}).json();
    EXPECT_EQ(json["outcomesAreKnown"], true);
    const QJsonArray schedules = json["schedules"].toArray();
    ASSERT_EQ(schedules.size(), 5);
    EXPECT_EQ(schedules[1]["occurrence"]["exitStatus"], 3);
    EXPECT_EQ(schedules[2]["occurrence"]["state"], "skipped");
    EXPECT_EQ(schedules[2]["occurrence"]["isOver"], true);
    EXPECT_EQ(schedules[3]["occurrence"]["isOver"], false);
    EXPECT_TRUE(schedules[4]["occurrence"].isNull());
    EXPECT_EQ(tool.run({"output", "done"}).output, "") << "a record of the first format has no outputs";
    EXPECT_EQ(tool.run({"output", "done"}).status, 0);
}

TEST_F(AdminStoreTest, ListSaysWhyAnActionFailed)
{
    recordEnds({"failed", {}, "its process was ended by signal 11 (Segmentation fault)"});
    EXPECT_THAT(tool.run({"list"}).output.toStdString(),
                HasSubstr("failed (its process was ended by signal 11 (Segmentation fault))  "));
    const QJsonObject occurrence =
        tool.run({"list", "--json"}).json()["schedules"][0]["occurrence"].toObject();
    EXPECT_EQ(occurrence["state"], "failed");
    EXPECT_EQ(occurrence["isOver"], true);
    EXPECT_EQ(occurrence["failure"], "its process was ended by signal 11 (Segmentation fault)");
    EXPECT_EQ(occurrence["ended"], "2060-03-14T05:55:00Z");
    EXPECT_TRUE(occurrence["exitStatus"].isNull());
}

TEST_F(AdminStoreTest, ListShowsTheStatusOfAProgramThatFailed)
{
    recordEnds({"failed", 3});
    EXPECT_THAT(tool.run({"list"}).output.toStdString(), HasSubstr("failed (exit 3)  "));
}

TEST_F(AdminStoreTest, OutputIsTheLatestAsItWasWritten)
{
    const QByteArray bytes("one\x1b[31m\n\0\xff no end of line", 25);
    recordEnds({"failed", 3, {}, bytes}, {"done", 0, {}, "earlier\n"});
    const auto latest = tool.run({"output", "Backup"});
    EXPECT_EQ(latest.status, 0) << latest.errors.constData();
    EXPECT_EQ(latest.output, bytes);
    EXPECT_EQ(tool.run({"output", "Backup", "--date", "2060-03-14 05:55"}).output, "earlier\n")
        << "in the schedule's time zone";
    EXPECT_EQ(tool.run({"output", "Backup", "--date", "2060-03-14 04:55", "--time-zone", "UTC"}).output,
              "earlier\n");
    const QJsonObject json = tool.run({"output", "Backup", "--json"}).json();
    EXPECT_EQ(json["output"], QString(bytes.toBase64()));
    EXPECT_EQ(json["state"], "failed");
    EXPECT_EQ(json["exitStatus"], 3);
    EXPECT_TRUE(json["failure"].isNull());
    EXPECT_EQ(json["date"], "2060-03-14T05:55:00Z");
    EXPECT_EQ(json["identifier"].toString(), onlyEntry()["Identifier"].toString());
}

TEST_F(AdminStoreTest, OutputOfOneThatRunsIsThatOfTheOneBefore)
{
    recordEnds({"begun"}, {"done", 0, {}, "earlier\n"});
    EXPECT_EQ(tool.run({"output", "Backup"}).output, "earlier\n");
}

TEST_F(AdminStoreTest, OutputIsNothingForAnActionThatWroteNothing)
{
    recordEnds({"done", 0});
    const auto nothing = tool.run({"output", "Backup"});
    EXPECT_EQ(nothing.status, 0) << nothing.errors.constData();
    EXPECT_EQ(nothing.output, "");
}

TEST_F(AdminStoreTest, OutputOfTheSessionIsShownLikeThatOfTheDaemon)
{
    recordEnds({"done", 0, {}, "from the session\n", "session"});
    EXPECT_EQ(tool.run({"output", "Backup"}).output, "from the session\n");
}

TEST_F(AdminStoreTest, OutputSaysWhyThereIsNone)
{
    recordEnds({"done"});
    tool.add("open");
    const QList<std::tuple<QStringList, int, const char *>> cases{
        {{"output", "open"}, 1, "\"open\" was not performed yet"},
        {{"output", "Backup", "--date", "2060-03-13 06:55"}, 1, "\"Backup\" was not performed then"},
        {{"output", "gone"}, 1, "There is no schedule \"gone\""},
        {{"output", "Backup", "--date", "some day"}, 2, "is not a date"},
        {{"output", "Backup", "--time-zone", "UTC"}, 2, "--time-zone is that of a --date"},
        {{"output"}, 2, "\"output\" needs an argument"},
    };
    for (const auto &[arguments, status, complaint] : cases) {
        const auto result = tool.run(arguments);
        EXPECT_EQ(result.status, status) << qPrintable(arguments.join(' '));
        EXPECT_THAT(result.errors.toStdString(), HasSubstr(complaint));
        EXPECT_EQ(result.output, "");
    }
}

TEST_F(AdminStoreTest, OutputIsForWhoMayReadTheRecord)
{
    recordEnds({"done", 0, {}, "secret\n"});
    if (::geteuid() != 0) {
        ASSERT_EQ(::chmod(qPrintable(recordPath()), 0), 0);
    }
    const auto result = tool.run({"output", "Backup"}, true);
    EXPECT_EQ(result.status, 3);
    EXPECT_THAT(result.errors.toStdString(), HasSubstr("You may not read"));
    EXPECT_EQ(result.output, "");
}

TEST_F(AdminStoreTest, ListHasNoOutcomesForWhoMayNotReadTheRecord)
{
    if (::geteuid() != 0) {
        record({{"done", "done", 0}});
        ASSERT_EQ(::chmod(qPrintable(recordPath()), 0), 0);
    } else {
        record({{"done", "done", 0}});
    }
    const auto result = tool.run({"list", "--json"}, true);
    EXPECT_EQ(result.status, 0) << result.errors.constData();
    EXPECT_EQ(result.json()["outcomesAreKnown"], false);
    EXPECT_EQ(tool.run({"clean"}, true).status, 3);
    EXPECT_EQ(entries().size(), 2);
}

TEST_F(AdminStoreTest, CleanLeavesWhatSomebodyHasAskedForOrWhatRunsAgain)
{
    record({{"done", "done", 0}, {"asked", "done", 0}, {"runs", "done", 0}});
    const auto database = Sqlite::open(recordPath(), Sqlite::File::MustExist, std::chrono::milliseconds(0));
    ASSERT_TRUE(database);
    for (const auto &[place, state] : {std::pair(1, "asked"), std::pair(2, "begun")}) {
        auto insertion = database->prepare("INSERT INTO occurrences VALUES (?1, 1, ?2, NULL, 0, NULL, NULL)");
        insertion.bind(1, entries().at(place).toMap()["Identifier"].toString()).bind(2, QString(state));
        ASSERT_TRUE(insertion.run());
    }
    EXPECT_EQ(tool.run({"clean"}).output, "\"done\" is over and removed.\n");
    EXPECT_EQ(entries().size(), 3);
    EXPECT_EQ(tool.run({"clean", "--json"}).json()["schedules"].toArray(), QJsonArray());
}

TEST_F(AdminStoreTest, CleanTellsProgramsWhatItRemoved)
{
    record({{"done", "done", 0}});
    const auto removed = tool.run({"clean", "--json"}).json()["schedules"].toArray();
    ASSERT_EQ(removed.size(), 1);
    EXPECT_EQ(removed[0].toObject()["name"], "done");
}

TEST_F(AdminStoreTest, CleanRemovesWhatIsOverUnlessItIsToStay)
{
    record({{"done", "done", 0}, {"stays", "done", 0}, {"begun", "begun", {}}, {"removed", "removed", {}}});
    const auto result = tool.run({"clean"});
    EXPECT_EQ(result.status, 0) << result.errors.constData();
    EXPECT_EQ(result.output, "\"done\" is over and removed.\n\"removed\" is over and removed.\n");
    QStringList left;
    for (const QVariant &entry : entries())
        left += entry.toMap()["Name"].toString();
    EXPECT_EQ(left, QStringList({"stays", "begun", "open"}));
    EXPECT_EQ(tool.run({"clean"}).output, "No schedule is over.\n");
    EXPECT_THAT(tool.root.logContent().toStdString(), HasSubstr("which is over, was removed by user"));
}

TEST_F(AdminStoreTest, AddTellsProgramsWhatItAdded)
{
    const auto result =
        tool.run({"add", "A", "--program", "/bin/true", "--in", "60", "--disabled", "--in-daemon", "--json"});
    const QJsonObject schedule = result.json()["schedule"].toObject();
    EXPECT_EQ(schedule["identifier"].toString(), onlyEntry()["Identifier"].toString());
    EXPECT_EQ(schedule["name"], "A");
    EXPECT_EQ(schedule["isEnabled"], false);
    EXPECT_EQ(schedule["actsIn"], "daemon");
    EXPECT_EQ(schedule["owner"].toInteger(), static_cast<qint64>(::getuid()));
    EXPECT_EQ(onlyEntry()["Is Enabled"], false);
}

TEST_F(AdminStoreTest, TellsWhereAnActionRunsByTheRuleOfTheDaemon)
{
    // Adds a schedule for a bundle with this key beside "WDDaemonModule" and tells where its action runs.
    int bundles = 0;
    const auto actsIn = [&](const QString &key, const QVariant &value) {
        const QString name = QString("Bundle%1").arg(++bundles);
        QVariantMap info{
            {"CFBundleIdentifier", name}, {"WDDaemonModule", "x.so"}, {"WDUserAgentModule", "x.so"}};
        info.insert(key, value);
        QFile file(
            tool.root.makeFolder("/Library/Application Support/Dozely/PlugIns/" + name + ".plugin/Contents") +
            "/Info.plist");
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(PropertyList::toData(info, PropertyList::Format::Xml));
        file.close();
        const auto result = tool.run({"add", name, "--bundle", name, "--in", "60", "--json"});
        EXPECT_EQ(result.status, 0) << result.errors.constData();
        return result.json()["schedule"].toObject()["actsIn"].toString();
    };
    EXPECT_EQ(actsIn("WDActsInUserAgent", true), "session");
    EXPECT_EQ(actsIn("WDActsInUserAgent", 1LL), "session");
    EXPECT_EQ(actsIn("WDActsInUserAgent", 2LL), "daemon");
    EXPECT_EQ(actsIn("WDActsInUserAgent", "true"), "daemon");
    EXPECT_EQ(actsIn("WDDaemonModule", "x.so"), "daemon");
    EXPECT_EQ(actsIn("WDDaemonModule", ""), "session");
}

TEST_F(AdminStoreTest, TheOwnerIsThePersonBehindSudo)
{
    if (::geteuid() == 0) {
        ::setenv("SUDO_UID", "4711", 1);
        tool.add("A");
        EXPECT_EQ(onlyEntry()["Owner"].toLongLong(), 4711);
    } else {
        ::setenv("SUDO_UID", "4711", 1); // means nothing to a process that is not root
        tool.add("A");
        EXPECT_EQ(onlyEntry()["Owner"].toLongLong(), static_cast<qint64>(::getuid()));
    }
}

TEST_F(AdminStoreTest, AddTakesParametersFromAPropertyList)
{
    QFile file(tool.root.join("/parameters.plist"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    const QVariantMap parameters{{"Deep", QVariantMap{{"List", QVariantList{1LL, "x"}}}}, {"Alert", 1LL}};
    file.write(PropertyList::toData(parameters, PropertyList::Format::Binary));
    file.close();
    tool.add("A", {"--parameters", file.fileName(), "--parameter", "Alert=0"});
    const QVariantMap stored = onlyEntry()["Parameters"].toMap();
    EXPECT_EQ(stored["Deep"], parameters["Deep"]);
    EXPECT_EQ(stored["Alert"], 0LL);
    EXPECT_EQ(stored["Program"], "/bin/true");
}

TEST_F(AdminStoreTest, AddRefusesABundleThatIsNotThere)
{
    const auto result = tool.run({"add", "A", "--bundle", "Comand", "--in", "60"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.errors.toStdString(), HasSubstr("There is no bundle at"));
    EXPECT_TRUE(tool.store().isEmpty());
}

TEST_F(AdminStoreTest, AddRefusesAnUnknownOwnerAndABadParameterFile)
{
    const auto complaint = [this](const QStringList &more) {
        const auto result = tool.run(QStringList{"add", "A", "--program", "/bin/true", "--in", "9"} + more);
        EXPECT_EQ(result.status, 1);
        return result.errors.toStdString();
    };
    EXPECT_THAT(complaint({"--owner", "no such user"}), HasSubstr("There is no user \"no such user\""));
    EXPECT_THAT(complaint({"--parameters", "/gone.plist"}), HasSubstr("/gone.plist cannot be used"));
    EXPECT_TRUE(tool.store().isEmpty());
}

TEST_F(AdminStoreTest, AddRefusesWhatNothingCanComeOfUnlessToldAnyway)
{
    const auto makeBundle = [this](const QString &name, const QVariantMap &info) {
        QFile file(
            tool.root.makeFolder("/Library/Application Support/Dozely/PlugIns/" + name + ".plugin/Contents") +
            "/Info.plist");
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(PropertyList::toData(info, PropertyList::Format::Xml));
    };
    makeBundle("Bare", {{"CFBundleIdentifier", "bare"}});
    makeBundle("Off",
               {{"WDDaemonModule", "x.so"}, {"WDUserAgentModule", "x.so"}, {"WDActsInDaemonOnly", true}});
    const QList<std::pair<QStringList, const char *>> cases{
        {{"--bundle", "Command"}, "the parameters name no program"},
        {{"--bundle", "Command", "--parameter", "Program=bin/true"}, "\"bin/true\" is not an absolute path"},
        {{"--program", "/no/such/program"}, "there is no program /no/such/program"},
        {{"--program", "/usr"}, "there is no program /usr"},
        {{"--program", "/etc/passwd"}, "/etc/passwd is no program that can be run"},
        {{"--bundle", "Bare"}, "Bare cannot act in the session: it names no \"WDUserAgentModule\""},
        {{"--bundle", "Bare", "--in-daemon"},
         "Bare cannot act in the daemon: it names no \"WDDaemonModule\""},
        {{"--bundle", "Off", "--in-session"}, "Off cannot act in the session: it acts in the daemon alone"},
    };
    for (const auto &[what, complaint] : cases) {
        const QStringList command = QStringList{"add", "A", "--in", "60"} + what;
        const QByteArray before = tool.store();
        const auto refused = tool.run(command);
        EXPECT_EQ(refused.status, 1) << complaint;
        EXPECT_THAT(refused.errors.toStdString(), HasSubstr(complaint));
        EXPECT_THAT(refused.errors.toStdString(), HasSubstr("--anyway"));
        EXPECT_EQ(tool.store(), before);
        EXPECT_EQ(tool.run(command + QStringList{"--anyway"}).status, 0) << complaint;
        EXPECT_NE(tool.store(), before);
    }
}

TEST_F(AdminStoreTest, AddRefusesWhatWouldMakeTheStoreTooLongToRead)
{
    tool.add("A");
    const QByteArray before = tool.store();
    QStringList arguments{"add", "B", "--program", "/bin/true", "--in", "60"};
    for (int i = 0; i < 10; ++i)
        arguments += {"--parameter", QString("Key%1=%2").arg(i).arg(QString(120'000, 'x'))};
    const auto result = tool.run(arguments);
    EXPECT_NE(result.status, 0);
    EXPECT_THAT(result.errors.toStdString(), testing::Not(testing::IsEmpty()));
    EXPECT_EQ(tool.store(), before);
}

TEST_F(AdminStoreTest, ListShowsATableToPeople)
{
    const QString identifier = tool.add("Water", {"--in-daemon"});
    const auto result = tool.run({"list"});
    EXPECT_EQ(result.status, 0);
    const QList<QByteArray> lines = result.output.split('\n');
    ASSERT_EQ(lines.size(), 3);
    EXPECT_THAT(lines[0].toStdString(),
                testing::MatchesRegex("NAME +ENABLED +DATE +TIME ZONE +REPEATS +ACTION.*IDENTIFIER"));
    EXPECT_THAT(lines[1].toStdString(),
                testing::MatchesRegex("Water +yes +.* Command +daemon +.*" + identifier.toStdString()));
}

TEST_F(AdminStoreTest, ListShowsControlCharactersEscaped)
{
    tool.add("Harmless");
    QByteArray content = tool.store();
    content.replace("Harmless", QString::fromUtf8("\u009b2J\u202egnp\u2028").toUtf8());
    tool.writeStore(content);
    for (const QStringList &arguments : {QStringList{"list"}, QStringList{"list", "--json"}}) {
        const auto result = tool.run(arguments);
        EXPECT_EQ(result.status, 0);
        EXPECT_THAT(result.output.toStdString(), HasSubstr("\\u009b2J\\u202egnp\\u2028"));
    }
}

TEST_F(AdminStoreTest, EnableAndDisableChangeOneScheduleByNameOrIdentifier)
{
    const QString identifier = tool.add("A");
    tool.add("B");
    EXPECT_EQ(tool.run({"disable", "A"}).output, "\"A\" is disabled.\n");
    EXPECT_EQ(entries().value(0).toMap()["Is Enabled"], false);
    EXPECT_EQ(entries().value(1).toMap()["Is Enabled"], true);
    const auto result = tool.run({"enable", identifier, "--json"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.json()["schedule"].toObject()["isEnabled"], true);
    EXPECT_EQ(entries().value(0).toMap()["Is Enabled"], true);
}

TEST_F(AdminStoreTest, RemoveTakesOneScheduleAway)
{
    tool.add("A");
    tool.add("B");
    const auto result = tool.run({"remove", "A", "--json"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.json()["schedule"].toObject()["name"], "A");
    EXPECT_EQ(onlyEntry()["Name"], "B");
}

TEST_F(AdminStoreTest, ANameThatTwoSchedulesHaveSelectsNone)
{
    const QString identifier = tool.add("A");
    tool.add("A");
    const QByteArray before = tool.store();
    for (const char *command : {"remove", "disable", "enable", "run"}) {
        const auto result = tool.run({command, "A"});
        EXPECT_EQ(result.status, 1);
        EXPECT_THAT(result.errors.toStdString(), HasSubstr("2 schedules are named \"A\""));
    }
    EXPECT_EQ(tool.store(), before);
    EXPECT_EQ(tool.run({"remove", identifier}).status, 0);
    EXPECT_EQ(entries().size(), 1);
}

TEST_F(AdminStoreTest, AScheduleThatIsNotThereIsToldAndNothingChanges)
{
    tool.add("A");
    const QByteArray before = tool.store();
    for (const char *command : {"remove", "disable", "enable", "run"}) {
        const auto result = tool.run({command, "Z"});
        EXPECT_EQ(result.status, 1);
        EXPECT_THAT(result.errors.toStdString(), HasSubstr("There is no schedule \"Z\""));
        EXPECT_TRUE(result.output.isEmpty());
    }
    EXPECT_EQ(tool.store(), before);
}

TEST_F(AdminStoreTest, ADamagedStoreIsToldAndStaysAsItIsToTheByte)
{
    tool.add("A");
    const QByteArray whole = tool.store();
    const QVariantMap noArray{{"Schedule Array", "text"}};
    for (const QByteArray &damaged : {whole.left(whole.size() / 2), QByteArray("not a list"), QByteArray(),
                                      PropertyList::toData(noArray, PropertyList::Format::Binary),
                                      PropertyList::toData(QVariantList{1LL}, PropertyList::Format::Xml)}) {
        tool.writeStore(damaged);
        for (const QStringList &arguments :
             {QStringList{"list"}, QStringList{"add", "B", "--program", "/bin/true", "--in", "60"},
              QStringList{"remove", "A"}, QStringList{"enable", "A"}, QStringList{"disable", "A"},
              QStringList{"run", "A"}}) {
            const auto result = tool.run(arguments);
            EXPECT_EQ(result.status, 1) << qPrintable(arguments.join(' ')) << damaged.left(60).constData();
            EXPECT_THAT(result.errors.toStdString(), HasSubstr("com.dozely.plist"));
            EXPECT_THAT(result.errors.toStdString(), Not(HasSubstr(".."))) << "one full stop ends it";
            EXPECT_EQ(tool.store(), damaged);
        }
    }
}

TEST_F(AdminStoreTest, BadEntriesAreToldAndUnknownKeysSurviveAChange)
{
    tool.add("Good");
    QVariantMap store = PropertyList::fromData(tool.store())->toMap();
    QVariantMap good = store["Schedule Array"].toList().value(0).toMap();
    good.insert("Colour", "red");
    const QVariantMap bad{{"Name", "Broken"}, {"Date", "tomorrow"}};
    store["Schedule Array"] = QVariantList{bad, good, "no entry at all"};
    store["Version"] = 7LL;
    tool.writeStore(PropertyList::toData(store, PropertyList::Format::Xml));

    const auto list = tool.run({"list"});
    EXPECT_EQ(list.status, 0);
    EXPECT_THAT(list.output.toStdString(), HasSubstr("Good"));
    EXPECT_THAT(list.errors.toStdString(), HasSubstr("Broken"));
    EXPECT_EQ(tool.run({"list", "--json"}).json()["faults"].toArray().size(), 2);

    EXPECT_EQ(tool.run({"disable", "Good"}).status, 0);
    good["Is Enabled"] = false;
    store["Schedule Array"] = QVariantList{bad, good, "no entry at all"};
    EXPECT_EQ(*PropertyList::fromData(tool.store()), QVariant(store));
}

TEST_F(AdminStoreTest, WhoMayNotChangeTheStoreIsToldSo)
{
    tool.add("A");
    const QByteArray before = tool.store();
    ::chmod(qPrintable(tool.root.makeFolder("/Library/Preferences")), 0555);
    for (const QStringList &arguments :
         {QStringList{"add", "B", "--program", "/bin/true", "--in", "60"}, QStringList{"remove", "A"},
          QStringList{"enable", "A"}, QStringList{"disable", "A"}}) {
        const auto result = tool.run(arguments, true);
        EXPECT_EQ(result.status, 3) << qPrintable(arguments.join(' '));
        EXPECT_THAT(result.errors.toStdString(), HasSubstr("You may not change"));
        EXPECT_EQ(tool.store(), before);
    }
    EXPECT_EQ(tool.run({"list"}, true).status, 0);
    ::chmod(qPrintable(tool.root.makeFolder("/Library/Preferences")), 0755);
}

TEST_F(AdminStoreTest, WhoMayNotReadTheStoreIsToldSo)
{
    tool.add("A");
    ::chmod(qPrintable(tool.storePath()), 0);
    const auto result = tool.run({"list"}, true);
    EXPECT_EQ(result.status, 3);
    EXPECT_THAT(result.errors.toStdString(), HasSubstr("You may not read"));
}

TEST_F(AdminStoreTest, ChangesLeaveALineInTheSharedLog)
{
    tool.add("Water");
    tool.run({"disable", "Water"});
    tool.run({"remove", "Water"});
    const QStringList lines = tool.root.logLines();
    ASSERT_EQ(lines.size(), 3);
    const char *const words[] = {"added", "disabled", "removed"};
    for (int i = 0; i < 3; ++i)
        EXPECT_THAT(lines[i].toStdString(),
                    testing::MatchesRegex(std::string("\\(.* - Admin\\): Schedule \"Water\" .* was ") +
                                          words[i] + ".*"));
}
