// SPDX-License-Identifier: MIT
#include "DozelyKit/update/WDUpdateChecker.h"

#include "DozelyKit/update/UpdateServer.h"
#include "unit/update/UpdateFixture.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <limits>

using namespace dozely;

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class WDUpdateCheckerTest : public UpdateFixture
{
protected:
    /// What the server answers, given the number that it calls the latest.
    static QByteArray answer(const QByteArray &number)
    {
        return R"({"Latest Version Number": )" + number +
               R"(, "Latest Version String": "3.3", "Latest Version Download URL": "https://a.example/3.3"})";
    }

    /// The latest version after the server called that number the latest; "none" when there is no newer one.
    QString latestAfter(const QByteArray &number)
    {
        http->answer = answer(number);
        EXPECT_TRUE(checker->updateLatestVersionDictionary());
        return checker->latestVersion().isNull() ? "none" : checker->latestVersion();
    }

    QJsonObject sentBody() const
    {
        return http->requests.isEmpty() ? QJsonObject()
                                        : QJsonDocument::fromJson(http->requests.constLast().body).object();
    }
};

TEST_F(WDUpdateCheckerTest, IsOneObjectHoweverItIsMade)
{
    WDUpdateChecker::initialize();
    EXPECT_EQ(WDUpdateChecker::sharedInstance(), checker);
    EXPECT_EQ(WDUpdateChecker::init(), checker);
}

TEST_F(WDUpdateCheckerTest, ReadsTheVersionOfTheApplicationBelowTheRootFolder)
{
    EXPECT_EQ(checker->versionString(), "3.2");
    EXPECT_EQ(checker->version(), 41U);
    EXPECT_EQ(checker->fullVersionString(), "3.2 (41)");
}

TEST_F(WDUpdateCheckerTest, TakesAVersionNumberFromWhateverGivesAnInteger)
{
    const QList<std::pair<QVariant, quint64>> cases{
        {"1.2", 1},
        {"build 7", 0},
        {"", 0},
        {41, 41},
        {41.9, 41},
        {true, 1},
        {QVariantList{1}, 0},
        {QByteArray("41"), 0},
        {"20260314065500", 20'260'314'065'500},
        {"99999999999999999999", std::numeric_limits<qint64>::max()},
        {"-1", std::numeric_limits<quint64>::max()},
    };
    for (const auto &[value, number] : cases) {
        writeApplication({{"CFBundleVersion", value}});
        EXPECT_EQ(checker->version(), number) << testing::PrintToString(value);
    }
}

TEST_F(WDUpdateCheckerTest, ShowsAVersionNumberThatIsTooLargeForItsSignAsANegativeOne)
{
    writeApplication({{"CFBundleShortVersionString", "3.2"}, {"CFBundleVersion", "-1"}});
    EXPECT_EQ(checker->fullVersionString(), "3.2 (-1)");
}

TEST_F(WDUpdateCheckerTest, KnowsNoVersionWithoutTheApplication)
{
    QFile::remove(root.join("/Applications/Dozely.app/Contents/Info.plist"));
    EXPECT_TRUE(checker->versionString().isNull());
    EXPECT_EQ(checker->version(), 0U);
    EXPECT_EQ(checker->fullVersionString(), "(null) (0)");
    QDir(root.join("/Applications")).removeRecursively();
    EXPECT_TRUE(checker->versionString().isNull());
    EXPECT_EQ(checker->version(), 0U);
}

TEST_F(WDUpdateCheckerTest, AsksTheServerOnceAndOnlyAfterItFoundAWayThere)
{
    http->answer = answer("42");
    EXPECT_TRUE(checker->updateLatestVersionDictionary());
    EXPECT_THAT(network->hosts, ElementsAre(UpdateServer::host()));
    EXPECT_EQ(http->requests.size(), 1);
    EXPECT_THAT(log(), IsEmpty());
}

TEST_F(WDUpdateCheckerTest, SendsNothingUnlessTheHostIsReachableAsThingsAre)
{
    constexpr quint32 reachable = 0x02;
    http->answer = answer("42");
    const QList<std::optional<quint32>> closed{
        std::nullopt, 0U, 0x04U, 0x10U, 0x14U, reachable | 0x04U, reachable | 0x10U, reachable | 0x14U,
    };
    for (const auto &flags : closed) {
        network->flags = flags;
        EXPECT_FALSE(checker->updateLatestVersionDictionary()) << flags.value_or(0xffff);
    }
    EXPECT_THAT(http->requests, IsEmpty());
    EXPECT_EQ(log().size(), closed.size());
    EXPECT_EQ(log().constFirst(),
              QString("The update server \"%1\" cannot be reached.").arg(UpdateServer::host()));
    for (const quint32 others : {0x01U, 0x08U, 0x20000U}) {
        network->flags = reachable | others; // bits that do not matter
        EXPECT_TRUE(checker->updateLatestVersionDictionary()) << others;
    }
}

TEST_F(WDUpdateCheckerTest, SendsTheRequestThatTheServerExpects)
{
    writeStore(QVariantMap{{"Schedule Array", QVariantList{QVariantMap{{"Is Enabled", true}}}}});
    http->answer = answer("42");
    ASSERT_TRUE(checker->updateLatestVersionDictionary());
    const HttpRequest request = http->requests.constFirst();
    EXPECT_EQ(request.url, QUrl("https://" + UpdateServer::host() + "/latest.php"));
    EXPECT_EQ(request.method, "POST");
    ASSERT_EQ(request.headers.size(), 2);
    EXPECT_EQ(request.headers.at(0).first, "Content-Length");
    EXPECT_EQ(request.headers.at(0).second, QByteArray::number(request.body.size()));
    EXPECT_EQ(request.headers.at(1).first, "Content-Type");
    EXPECT_EQ(request.headers.at(1).second, "application/x-www-form-urlencoded charset=utf-8");
    EXPECT_EQ(request.largestAnswer, 1'048'576);
    EXPECT_EQ(
        sentBody(),
        (QJsonObject{
            {"versionString", "3.2"}, {"version", 41}, {"schedulesCount", 1}, {"systemVersion", "12.5"}}));
    EXPECT_THAT(request.body.toStdString(), HasSubstr("{\n    \"")); // a line for each key
    EXPECT_EQ(request.body.count('\n'), 6);
}

TEST_F(WDUpdateCheckerTest, SendsTextsOfAnyAlphabetAndNumbersOf64Bits)
{
    writeApplication({{"CFBundleShortVersionString", QString(u8"3.2 \"bêta\" Ω")},
                      {"CFBundleVersion", "9007199254740993"}}); // no double holds it
    http->answer = answer("42");
    ASSERT_TRUE(checker->updateLatestVersionDictionary());
    EXPECT_EQ(sentBody()["versionString"].toString(), QString(u8"3.2 \"bêta\" Ω"));
    EXPECT_THAT(http->requests.constFirst().body.toStdString(), HasSubstr("\"version\": 9007199254740993"));
}

TEST_F(WDUpdateCheckerTest, LeavesOutWhatIsNotKnownAndSaysSoOnce)
{
    writeApplication({{"CFBundleVersion", "41"}});
    QFile::remove(root.join("/System/Library/CoreServices/SystemVersion.plist"));
    http->answer = answer("42");
    EXPECT_TRUE(checker->updateLatestVersionDictionary());
    EXPECT_EQ(sentBody(), (QJsonObject{{"version", 41}, {"schedulesCount", 0}}));
    EXPECT_THAT(log(),
                ElementsAre("The update check leaves out what is not known: versionString, systemVersion."));
    EXPECT_EQ(checker->latestVersion(), "3.3");
}

TEST_F(WDUpdateCheckerTest, LeavesOutAVersionThatIsNoText)
{
    writeApplication({{"CFBundleShortVersionString", 3.2}, {"CFBundleVersion", "41"}});
    http->answer = answer("42");
    EXPECT_TRUE(checker->updateLatestVersionDictionary());
    EXPECT_FALSE(sentBody().contains("versionString"));
    EXPECT_THAT(log(), ElementsAre("The update check leaves out what is not known: versionString."));
}

TEST_F(WDUpdateCheckerTest, KnowsNothingBeforeAnAnswer)
{
    EXPECT_TRUE(checker->latestVersion().isNull());
    EXPECT_FALSE(checker->latestVersionURL().isValid());
}

TEST_F(WDUpdateCheckerTest, ComparesNumbersAt32BitsWithoutTheirSign)
{
    EXPECT_EQ(latestAfter("42"), "3.3");
    EXPECT_EQ(latestAfter("41"), "none");
    EXPECT_EQ(latestAfter("40"), "none");
    EXPECT_EQ(latestAfter("-1"), "3.3");
    EXPECT_EQ(latestAfter("4294967338"), "3.3");  // 2^32 + 42
    EXPECT_EQ(latestAfter("4294967337"), "none"); // 2^32 + 41
    EXPECT_EQ(latestAfter("42.9"), "3.3");
    EXPECT_EQ(latestAfter("41.9"), "none");
    EXPECT_EQ(latestAfter("\"42\""), "3.3");
    EXPECT_EQ(latestAfter("\"41 and a half\""), "none");
    EXPECT_EQ(latestAfter("\"99999999999\""), "3.3"); // saturates at 2147483647
    EXPECT_EQ(latestAfter("null"), "none");
    EXPECT_EQ(latestAfter("[42]"), "none");
}

TEST_F(WDUpdateCheckerTest, ComparesWithAllOfTheInstalledNumber)
{
    writeApplication({{"CFBundleVersion", "4294967294"}});
    EXPECT_EQ(latestAfter("-1"), "3.3"); // 4294967295
    writeApplication({{"CFBundleVersion", "4294967295"}});
    EXPECT_EQ(latestAfter("-1"), "none");
    writeApplication({{"CFBundleVersion", "4294967337"}}); // 41 at 32 bits
    EXPECT_EQ(latestAfter("42"), "none");
}

TEST_F(WDUpdateCheckerTest, TakesAMissingNumberForZero)
{
    http->answer = QByteArray(R"({"Latest Version String": "3.3"})");
    EXPECT_TRUE(checker->updateLatestVersionDictionary());
    EXPECT_TRUE(checker->latestVersion().isNull());
}

TEST_F(WDUpdateCheckerTest, HasNoNewerVersionWithoutItsName)
{
    for (const char *text : {R"({"Latest Version Number": 42})",
                             R"({"Latest Version Number": 42, "Latest Version String": 3.3})"}) {
        http->answer = QByteArray(text);
        EXPECT_TRUE(checker->updateLatestVersionDictionary());
        EXPECT_TRUE(checker->latestVersion().isNull()) << text;
    }
}

TEST_F(WDUpdateCheckerTest, GivesTheAddressWhetherTheVersionIsNewerOrNot)
{
    EXPECT_EQ(latestAfter("41"), "none");
    EXPECT_EQ(checker->latestVersionURL(), QUrl("https://a.example/3.3"));
    EXPECT_EQ(latestAfter("42"), "3.3");
    EXPECT_EQ(checker->latestVersionURL(), QUrl("https://a.example/3.3"));
}

TEST_F(WDUpdateCheckerTest, GivesNoAddressWhereTheServerGivesNoValidOne)
{
    for (const QByteArray value :
         {"42", "null", "\"\"", "\"https://a b.example/\"", "\"https://[::1\"", "\"://\""}) {
        http->answer = R"({"Latest Version Download URL": )" + value + "}";
        EXPECT_TRUE(checker->updateLatestVersionDictionary());
        EXPECT_FALSE(checker->latestVersionURL().isValid()) << value.constData();
    }
    http->answer = QByteArray(R"({"Latest Version Download URL": "ftp://a.example/"})");
    EXPECT_TRUE(checker->updateLatestVersionDictionary());
    EXPECT_EQ(checker->latestVersionURL(), QUrl("ftp://a.example/")); // of any scheme
}

TEST_F(WDUpdateCheckerTest, KeepsTheFirstAnswerWhenALaterCheckFails)
{
    ASSERT_EQ(latestAfter("42"), "3.3");
    const auto expectFirst = [this] {
        EXPECT_EQ(checker->latestVersion(), "3.3");
        EXPECT_EQ(checker->latestVersionURL(), QUrl("https://a.example/3.3"));
    };
    http->answer = Error{"nobody is there"};
    EXPECT_FALSE(checker->updateLatestVersionDictionary());
    expectFirst();
    http->answer = QByteArray("<html>500</html>");
    EXPECT_FALSE(checker->updateLatestVersionDictionary());
    expectFirst();
    network->flags = 0;
    EXPECT_FALSE(checker->updateLatestVersionDictionary());
    expectFirst();
    ASSERT_EQ(log().size(), 3);
    EXPECT_EQ(log().at(0), "The update server gave no answer: nobody is there.");
    EXPECT_TRUE(log().at(1).startsWith("The update server's answer is not JSON: "));
    EXPECT_EQ(log().at(2), QString("The update server \"%1\" cannot be reached.").arg(UpdateServer::host()));
}

TEST_F(WDUpdateCheckerTest, ReplacesTheWholeAnswerByTheNextOne)
{
    ASSERT_EQ(latestAfter("42"), "3.3");
    http->answer = QByteArray("{}");
    EXPECT_TRUE(checker->updateLatestVersionDictionary());
    EXPECT_TRUE(checker->latestVersion().isNull());
    EXPECT_FALSE(checker->latestVersionURL().isValid());
}
