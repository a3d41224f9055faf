// SPDX-License-Identifier: MIT
//
// The update checker and its transport against a real server.
#include "DozelyKit/update/UpdateServer.h"
#include "integration/update/ServedFixture.h"

#include <QElapsedTimer>
#include <QJsonDocument>
#include <QJsonObject>

using namespace dozely;

using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;
using testing::UnorderedElementsAre;

class UpdateCheckTest : public ServedFixture
{
protected:
    static ServerAnswer latest(const QByteArray &number)
    {
        return ServerAnswer::ok(R"({"Latest Version Number": )" + number +
                                R"(, "Latest Version String": "3.3",
                                   "Latest Version Download URL": "https://a.example/3.3"})");
    }

    /// Checks against that one answer; "none" when there is no newer version, "no answer" when the check
    /// failed.
    QString latestAfter(const ServerAnswer &answer, const QByteArray &certificate = "good")
    {
        serve({answer}, certificate);
        if (!checker->updateLatestVersionDictionary())
            return "no answer";
        return checker->latestVersion().isNull() ? "none" : checker->latestVersion();
    }

    /// The only line of the log.
    std::string logLine() const
    {
        return log().size() == 1 ? log().constFirst().toStdString() : "not one line";
    }
};

TEST_F(UpdateCheckTest, SendsExactlyTheStatedRequest)
{
    writeStore(QVariantMap{{"Schedule Array", QVariantList{QVariantMap{{"Is Enabled", true}},
                                                           QVariantMap{{"Is Enabled", false}}}}});
    ASSERT_EQ(latestAfter(latest("42")), "3.3");
    const auto requests = sight().requests;
    ASSERT_EQ(requests.size(), 1);
    const qsizetype end = requests.constFirst().indexOf("\r\n\r\n");
    ASSERT_GT(end, 0);
    const QByteArray body = requests.constFirst().mid(end + 4);
    std::vector<std::string> lines;
    for (const QByteArray &line : requests.constFirst().left(end).split('\n'))
        lines.push_back(line.trimmed().toStdString());

    ASSERT_FALSE(lines.empty());
    EXPECT_EQ(lines.front(), "POST /latest.php HTTP/1.1");
    lines.erase(lines.begin());
    EXPECT_THAT(lines, UnorderedElementsAre("Host: " + UpdateServer::host().toStdString(), "Accept: */*",
                                            StartsWith("User-Agent: DozelyKit/"),
                                            "Content-Length: " + std::to_string(body.size()),
                                            "Content-Type: application/x-www-form-urlencoded charset=utf-8"));
    EXPECT_EQ(
        QJsonDocument::fromJson(body).object(),
        (QJsonObject{
            {"versionString", "3.2"}, {"version", 41}, {"schedulesCount", 1}, {"systemVersion", "12.5"}}));
    EXPECT_EQ(body, QJsonDocument(QJsonDocument::fromJson(body)).toJson(QJsonDocument::Indented));
}

TEST_F(UpdateCheckTest, ANewerVersionIsFound)
{
    EXPECT_EQ(latestAfter(latest("42")), "3.3");
    EXPECT_EQ(checker->latestVersionURL(), QUrl("https://a.example/3.3"));
}

TEST_F(UpdateCheckTest, TheSameVersionIsNotNewer)
{
    EXPECT_EQ(latestAfter(latest("41")), "none");
}

TEST_F(UpdateCheckTest, AnOlderVersionIsNotNewer)
{
    EXPECT_EQ(latestAfter(latest("40")), "none");
}

TEST_F(UpdateCheckTest, MinusOneIsNewer)
{
    EXPECT_EQ(latestAfter(latest("-1")), "3.3");
}

TEST_F(UpdateCheckTest, ANumberOf64BitsIsCutTo32)
{
    EXPECT_EQ(latestAfter(latest("1099511627818")), "3.3");  // 2^40 + 42
    EXPECT_EQ(latestAfter(latest("1099511627817")), "none"); // 2^40 + 41
}

TEST_F(UpdateCheckTest, ATextWithDigitsIsANumber)
{
    EXPECT_EQ(latestAfter(latest("\"42\"")), "3.3");
    EXPECT_EQ(latestAfter(latest("\"41\"")), "none");
}

TEST_F(UpdateCheckTest, AnErrorPageIsNoAnswer)
{
    EXPECT_EQ(latestAfter(ServerAnswer::ok("<html>Sorry</html>", "500 Internal Server Error")), "no answer");
    EXPECT_THAT(logLine(), StartsWith("The update server's answer is not JSON: "));
}

TEST_F(UpdateCheckTest, TheStatusOfAnAnswerDoesNotMatter)
{
    ServerAnswer answer = latest("42");
    answer.bytes.replace("200 OK", "503 Service Unavailable");
    EXPECT_EQ(latestAfter(answer), "3.3");
}

TEST_F(UpdateCheckTest, AnEmptyAnswerIsNoAnswer)
{
    EXPECT_EQ(latestAfter(ServerAnswer::ok("")), "no answer");
    EXPECT_THAT(logLine(), StartsWith("The update server's answer is not JSON"));
}

TEST_F(UpdateCheckTest, HalfAnAnswerIsNoAnswerEvenIfItReadsAsOne)
{
    ServerAnswer answer = latest("42");
    const QByteArray length = "Content-Length: ";
    const qsizetype digits = answer.bytes.indexOf(length) + length.size();
    answer.bytes.insert(digits, '9'); // announces more than comes
    EXPECT_EQ(latestAfter(answer), "no answer");
    EXPECT_THAT(logLine(), StartsWith("The update server gave no answer: "));
}

TEST_F(UpdateCheckTest, AnAnswerOfUnknownLengthEndsWithTheConnection)
{
    ServerAnswer answer{
        "HTTP/1.1 200 OK\r\n\r\n{\"Latest Version Number\": 42, \"Latest Version String\": \"3.3\"}"};
    EXPECT_EQ(latestAfter(answer), "3.3");
    answer.then = "cut"; // by somebody between here and there, perhaps: half an object is no object
    EXPECT_EQ(latestAfter(answer), "3.3");
    answer.bytes.chop(1);
    EXPECT_EQ(latestAfter(answer), "no answer");
    EXPECT_THAT(logLine(), StartsWith("The update server's answer is not JSON: "));
}

TEST_F(UpdateCheckTest, AnAnswerThatStopsOnItsWayEndsTheCheck)
{
    options.noProgress = std::chrono::milliseconds(1500);
    ServerAnswer answer = latest("42");
    answer.bytes.chop(1);
    answer.then = "hold";
    QElapsedTimer timer;
    timer.start();
    EXPECT_EQ(latestAfter(answer), "no answer");
    EXPECT_GE(std::chrono::milliseconds(timer.elapsed()), options.noProgress);
    EXPECT_EQ(logLine(), "The update server gave no answer: nothing moved for too long.");
}

TEST_F(UpdateCheckTest, ASlowAnswerIsWaitedForWhileItMoves)
{
    options.noProgress = std::chrono::milliseconds(1500);
    ServerAnswer answer = latest("42");
    answer.pace = 0.02; // 200 bytes and more: four seconds at least
    QElapsedTimer timer;
    timer.start();
    EXPECT_EQ(latestAfter(answer), "3.3");
    EXPECT_GE(std::chrono::milliseconds(timer.elapsed()), 2 * options.noProgress);
}

TEST_F(UpdateCheckTest, AnAnswerThatNeverEndsIsGivenUp)
{
    options.whole = std::chrono::milliseconds(700);
    ServerAnswer answer = ServerAnswer::ok(QByteArray(100'000, ' '));
    answer.pace = 0.01;
    EXPECT_EQ(latestAfter(answer), "no answer");
    EXPECT_EQ(logLine(), "The update server gave no answer: it took too long.");
}

TEST_F(UpdateCheckTest, ARedirectionToPlainHttpIsNotFollowed)
{
    EXPECT_EQ(latestAfter(ServerAnswer::redirection("http://127.0.0.1:@PLAIN_PORT@/latest.php")),
              "no answer");
    const auto seen = sight();
    EXPECT_EQ(seen.requests.size(), 1);
    EXPECT_EQ(seen.plainConnections, 0);
    EXPECT_THAT(logLine(), testing::HasSubstr("\"http\""));
}

TEST_F(UpdateCheckTest, AServerOfAnotherNameIsNotAsked)
{
    EXPECT_EQ(latestAfter(latest("42"), "wrong name"), "no answer");
    EXPECT_THAT(sight().requests, IsEmpty());
    EXPECT_THAT(logLine(), StartsWith("The update server gave no answer: "));
}

TEST_F(UpdateCheckTest, AServerWithAnExpiredCertificateIsNotAsked)
{
    EXPECT_EQ(latestAfter(latest("42"), "expired"), "no answer");
    EXPECT_THAT(sight().requests, IsEmpty());
    EXPECT_THAT(logLine(), testing::HasSubstr("expired"));
}

TEST_F(UpdateCheckTest, AServerThatNobodyVouchesForIsNotAsked)
{
    EXPECT_EQ(latestAfter(latest("42"), "stranger"), "no answer");
    EXPECT_THAT(sight().requests, IsEmpty());
}

TEST_F(UpdateCheckTest, TheMachinesAuthoritiesDoNotVouchForATest)
{
    serve({latest("42")});
    options.certificateAuthorities.clear();
    connectWith(options);
    EXPECT_FALSE(checker->updateLatestVersionDictionary());
    EXPECT_THAT(sight().requests, IsEmpty());
}

TEST_F(UpdateCheckTest, TwoMebibytesOfBlanksAreNoAnswer)
{
    EXPECT_EQ(latestAfter(ServerAnswer::ok(QByteArray(2 << 20, ' ') + "{}")), "no answer");
    EXPECT_EQ(logLine(), "The update server gave no answer: the answer is larger than 1048576 bytes.");
}

TEST_F(UpdateCheckTest, BlanksThatNobodyAnnouncedAreCountedAsTheyCome)
{
    EXPECT_EQ(latestAfter({"HTTP/1.1 200 OK\r\n\r\n" + QByteArray(2 << 20, ' ') + "{}"}), "no answer");
    EXPECT_EQ(logLine(), "The update server gave no answer: the answer is larger than 1048576 bytes.");
}

TEST_F(UpdateCheckTest, AnAnswerOfOneMebibyteIsTaken)
{
    const QByteArray start = R"({"Latest Version Number": 42, "Latest Version String": "3.3"})";
    EXPECT_EQ(latestAfter(ServerAnswer::ok(start + QByteArray((1 << 20) - start.size(), ' '))), "3.3");
    EXPECT_EQ(latestAfter(ServerAnswer::ok(start + QByteArray((1 << 20) + 1 - start.size(), ' '))),
              "no answer");
}

TEST_F(UpdateCheckTest, AHundredThousandNestedListsAreNoAnswer)
{
    EXPECT_EQ(latestAfter(ServerAnswer::ok(QByteArray(100'000, '[') + QByteArray(100'000, ']'))),
              "no answer");
    EXPECT_EQ(logLine(), "The update server's answer is nested deeper than 64 levels.");
}

TEST_F(UpdateCheckTest, ASecondCheckThatFailsLeavesTheFirstAnswerInUse)
{
    serve({latest("42"), ServerAnswer::ok("<html>Sorry</html>", "500 Internal Server Error"), latest("43")});
    ASSERT_TRUE(checker->updateLatestVersionDictionary());
    EXPECT_FALSE(checker->updateLatestVersionDictionary());
    EXPECT_EQ(checker->latestVersion(), "3.3");
    EXPECT_EQ(checker->latestVersionURL(), QUrl("https://a.example/3.3"));
    EXPECT_EQ(sight().requests.size(), 2);
    EXPECT_FALSE(checker->updateLatestVersionDictionary()); // now that nobody listens
    EXPECT_EQ(checker->latestVersion(), "3.3");
}
