// SPDX-License-Identifier: MIT
//
// The transport's own rules, against a real server.
#include "DozelyKit/system/network/linux/CurlHttpClient_p.h"

#include "DozelyKit/update/UpdateServer.h"
#include "integration/update/ServedFixture.h"

#include <QScopeGuard>

#include <algorithm>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

using namespace dozely;

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

class CurlHttpClientTest : public ServedFixture
{
protected:
    static HttpRequest request()
    {
        return {
            UpdateServer::address(), "POST", {{"Content-Length", "4"}, {"X-Test", "yes"}}, "body", 1 << 20};
    }

    std::optional<QByteArray> send(const HttpRequest &request)
    {
        const auto answer = CurlHttpClient(options).send(request);
        error = answer ? QString() : answer.error().text;
        return answer ? std::optional(*answer) : std::nullopt;
    }

    static QByteArray otherAddress() { return "https://" + UpdateServer::host().toLatin1() + "/other?x=1"; }

    QString error;
};

TEST_F(CurlHttpClientTest, WaitsAMinuteForProgressAndFiveInAllUnlessTold)
{
    EXPECT_EQ(CurlHttpClient().options().noProgress, std::chrono::seconds(60));
    EXPECT_EQ(CurlHttpClient().options().whole, std::chrono::minutes(5));
    EXPECT_TRUE(CurlHttpClient().options().certificateAuthorities.isEmpty());
    EXPECT_TRUE(CurlHttpClient().options().connectTo.isEmpty());
}

TEST_F(CurlHttpClientTest, SpeaksNothingButHttps)
{
    serve({ServerAnswer::ok("{}")});
    for (const char *address : {"http://127.0.0.1/", "file:///etc/passwd", "ftp://127.0.0.1/"}) {
        HttpRequest other = request();
        other.url = QUrl(address);
        EXPECT_FALSE(send(other)) << address;
        EXPECT_THAT(error.toStdString(), HasSubstr("not supported")) << address;
    }
}

TEST_F(CurlHttpClientTest, RepeatsTheWholeRequestWhereARedirectionAsksForIt)
{
    for (const char *status : {"307 Temporary Redirect", "308 Permanent Redirect"}) {
        serve({ServerAnswer::redirection(otherAddress(), status), ServerAnswer::ok("answer")});
        EXPECT_EQ(send(request()), QByteArray("answer"));
        const auto requests = sight().requests;
        ASSERT_EQ(requests.size(), 2);
        QByteArray expected = requests.at(0);
        EXPECT_EQ(requests.at(1), expected.replace("POST /latest.php ", "POST /other?x=1 "));
    }
}

TEST_F(CurlHttpClientTest, DropsTheBodyWhereARedirectionLeadsToAnAnswer)
{
    for (const char *status : {"301 Moved Permanently", "302 Found", "303 See Other"}) {
        serve({ServerAnswer::redirection(otherAddress(), status), ServerAnswer::ok("answer")});
        EXPECT_EQ(send(request()), QByteArray("answer"));
        const auto requests = sight().requests;
        ASSERT_EQ(requests.size(), 2);
        EXPECT_THAT(requests.at(1).toStdString(), StartsWith("GET /other?x=1 HTTP/1.1\r\n"));
        EXPECT_THAT(requests.at(1).toStdString(), Not(HasSubstr("Content-Length")));
        EXPECT_TRUE(requests.at(1).endsWith("\r\n\r\n"));
    }
}

TEST_F(CurlHttpClientTest, GivesUpAfterTenRedirections)
{
    serve({ServerAnswer::redirection(otherAddress())});
    EXPECT_FALSE(send(request()));
    EXPECT_EQ(sight().requests.size(), 11);
}

TEST_F(CurlHttpClientTest, TakesNoCredentialsFromARedirection)
{
    serve({ServerAnswer::redirection("https://user:secret@" + UpdateServer::host().toLatin1() + "/"),
           ServerAnswer::ok("answer")});
    EXPECT_FALSE(send(request()));
    EXPECT_EQ(sight().requests.size(), 1);
}

TEST_F(CurlHttpClientTest, KeepsNoCookies)
{
    ServerAnswer first = ServerAnswer::redirection(otherAddress());
    first.bytes.replace("Location", "Set-Cookie: id=17; Path=/\r\nLocation");
    serve({first, ServerAnswer::ok("answer")});
    EXPECT_TRUE(send(request()));
    EXPECT_TRUE(send(request()));
    const auto requests = sight().requests;
    ASSERT_EQ(requests.size(), 3);
    for (const QByteArray &each : requests)
        EXPECT_THAT(each.toStdString(), Not(HasSubstr("ookie")));
}

TEST_F(CurlHttpClientTest, ReadsAHeadOfAtMostAQuarterOfAMebibyte)
{
    const QByteArray line = "X-Filler: " + QByteArray(1000, 'x') + "\r\n";
    ServerAnswer answer = ServerAnswer::ok("answer");
    answer.bytes.replace("\r\n\r\n", "\r\n" + line.repeated(200) + "\r\n");
    serve({answer});
    EXPECT_EQ(send(request()), QByteArray("answer"));
    answer.bytes.replace("\r\n\r\n", "\r\n" + line.repeated(100) + "\r\n");
    serve({answer});
    EXPECT_FALSE(send(request()));
    EXPECT_EQ(error, "the answer's head is larger than 262144 bytes");
}

TEST_F(CurlHttpClientTest, AnAnswerAsLargeAsAllowedIsTakenAndNotOneByteMore)
{
    HttpRequest small = request();
    small.largestAnswer = 10;
    serve({ServerAnswer::ok("0123456789")});
    EXPECT_EQ(send(small), QByteArray("0123456789"));
    serve({ServerAnswer::ok("0123456789a")});
    EXPECT_FALSE(send(small));
    EXPECT_EQ(error, "the answer is larger than 10 bytes");
}

TEST_F(CurlHttpClientTest, AnEmptyBodyIsAnAnswer)
{
    serve({{"HTTP/1.1 204 No Content\r\n\r\n"}});
    const auto answer = send(request());
    ASSERT_TRUE(answer);
    EXPECT_EQ(*answer, "");
}

TEST_F(CurlHttpClientTest, ACompressedAnswerStaysAsItIs)
{
    ServerAnswer answer = ServerAnswer::ok("\x1f\x8b not really");
    answer.bytes.replace("\r\n\r\n", "\r\nContent-Encoding: gzip\r\n\r\n");
    serve({answer});
    EXPECT_EQ(send(request()), QByteArray("\x1f\x8b not really"));
}

TEST_F(CurlHttpClientTest, AServerThatClosesWithoutAWordGaveNoAnswer)
{
    for (const char *end : {"close", "cut"}) {
        serve({{"", end}});
        EXPECT_FALSE(send(request())) << end;
        EXPECT_FALSE(error.isEmpty());
    }
}

TEST_F(CurlHttpClientTest, WhatIsNoHttpIsNoAnswer)
{
    for (const auto &bytes :
         {QByteArray("SSH-2.0-x\r\n"), QByteArray("HTTP/9.9 200 OK\r\n\r\nx"), QByteArray(64, '\0')}) {
        serve({{bytes}});
        EXPECT_FALSE(send(request())) << bytes.constData();
    }
}

TEST_F(CurlHttpClientTest, AServerThatIsNotThereGaveNoAnswer)
{
    serve({ServerAnswer::ok("answer")});
    sight();
    EXPECT_FALSE(send(request()));
    EXPECT_FALSE(error.isEmpty());
}

TEST_F(CurlHttpClientTest, AServerThatNeverGreetsIsGivenUp)
{
    options.noProgress = std::chrono::milliseconds(300);
    serve({{"", "hold"}});
    EXPECT_FALSE(send(request()));
    EXPECT_FALSE(error.isEmpty());
}

TEST_F(CurlHttpClientTest, AMachineThatTakesTheConnectionAndStaysMuteIsGivenUp)
{
    const int listener = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const auto close = qScopeGuard([listener] { ::close(listener); });
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    ASSERT_EQ(::bind(listener, reinterpret_cast<sockaddr *>(&address), size), 0);
    ASSERT_EQ(::listen(listener, 1), 0); // the kernel connects; nobody accepts
    ASSERT_EQ(::getsockname(listener, reinterpret_cast<sockaddr *>(&address), &size), 0);
    options.noProgress = std::chrono::milliseconds(300);
    options.connectTo = "127.0.0.1:" + QByteArray::number(ntohs(address.sin_port));
    EXPECT_FALSE(send(request()));
    EXPECT_FALSE(error.isEmpty());
}

TEST_F(CurlHttpClientTest, SaysWhatWentWrongInPrintableCharacters)
{
    serve({ServerAnswer::redirection("gopher\x1b[31m://a.example/\t\x07")});
    EXPECT_FALSE(send(request()));
    EXPECT_FALSE(error.isEmpty());
    EXPECT_TRUE(std::all_of(error.cbegin(), error.cend(), [](QChar c) { return c.isPrint(); }));
    EXPECT_LE(error.size(), 200);
}

TEST_F(CurlHttpClientTest, UsesTheProxyThatTheEnvironmentNames)
{
    serve({ServerAnswer::ok("answer")});
    qputenv("https_proxy", "http://" + server->plainAddress()); // which only counts who comes
    EXPECT_FALSE(send(request()));
    qputenv("no_proxy", "*");
    EXPECT_EQ(send(request()), QByteArray("answer"));
    const auto seen = sight();
    EXPECT_EQ(seen.plainConnections, 1);
    EXPECT_EQ(seen.requests.size(), 1);
}

TEST_F(CurlHttpClientTest, AMethodThatItDoesNotKnowIsRefused)
{
    serve({ServerAnswer::ok("answer")});
    HttpRequest other = request();
    other.method = "DELETE";
    EXPECT_FALSE(send(other));
    EXPECT_TRUE(sight().requests.isEmpty());
}
