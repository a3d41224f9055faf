// SPDX-License-Identifier: MIT
#include "ConnectionFixture.h"

#include "DozelyKit/communication/remoting/MessageStream_p.h"
#include "DozelyKit/core/foundation/NSException.h"
#include "DozelyKit/core/foundation/NSNotificationCenter.h"
#include "support/WaitUntil.h"

#include <QSemaphore>
#include <QTimeZone>

#include <atomic>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

using namespace dozely;

using namespace std::chrono_literals;

TEST_F(ConnectionTest, AProxyForwardsAMessageToTheRootObjectAndBringsItsResultBack)
{
    EXPECT_EQ(client()->rootProxy()->invoke("pong"), QVariant(true));
}

TEST_F(ConnectionTest, AServerWithoutRootObjectHasNoRootProxy)
{
    server->setRootObject(nullptr);
    EXPECT_EQ(client()->rootProxy(), nullptr);
}

TEST_F(ConnectionTest, ARootObjectThatWasDestroyedIsNoRootObject)
{
    root.reset();
    EXPECT_EQ(client()->rootProxy(), nullptr);
}

TEST_F(ConnectionTest, AnObjectReturnedByReferenceBecomesAProxyThatCanBeCalled)
{
    const auto child = NSDistantObject::asProxy(client()->rootProxy()->invoke("child"));
    ASSERT_NE(child, nullptr);
    EXPECT_EQ(child->invoke("answer").toInt(), 42);
}

TEST_F(ConnectionTest, TheSameObjectKeepsItsPathOnAStream)
{
    const auto proxy = client()->rootProxy();
    EXPECT_EQ(NSDistantObject::asProxy(proxy->invoke("child"))->path(),
              NSDistantObject::asProxy(proxy->invoke("child"))->path());
}

TEST_F(ConnectionTest, TheRootObjectReturnedByReferenceIsAtThePathOfTheRootObject)
{
    const auto proxy = client()->rootProxy();
    const auto itself = NSDistantObject::asProxy(proxy->invoke("itself"));
    ASSERT_NE(itself, nullptr);
    EXPECT_EQ(itself->path(), proxy->path());
    EXPECT_EQ(itself->invoke("pong"), QVariant(true));
}

TEST_F(ConnectionTest, ANullObjectComesBackAsNothing)
{
    EXPECT_FALSE(client()->rootProxy()->invoke("noChild").isValid());
}

TEST_F(ConnectionTest, OnlyMarkedInvokablesCanBeReached)
{
    const auto proxy = client()->rootProxy();
    EXPECT_THROW(proxy->invoke("hidden"), NSException);
    EXPECT_THROW(proxy->invoke("deleteLater"), NSException);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(proxy->invoke("pong"), QVariant(true));
    EXPECT_EQ(root->hiddenCalls, 0);
}

TEST_F(ConnectionTest, WhatTheTargetRaisesIsRaisedInTheCaller)
{
    const auto proxy = client()->rootProxy();
    try {
        proxy->invoke("raise");
        FAIL() << "nothing was raised";
    } catch (const NSException &exception) {
        EXPECT_EQ(exception.name(), "TestException");
        EXPECT_EQ(exception.reason(), "as asked: always");
    }
    EXPECT_EQ(proxy->invoke("pong"), QVariant(true)) << "the connection survives";
}

TEST_F(ConnectionTest, WhatTheTargetRaisesArrivesWhateverItsTextIs)
{
    const auto connection =
        NSConnection::initWithReceivePortSendPort(nullptr, TestPort::client(path), {.trustsOwnUser = false});
    connection->setReplyTimeout(2s);
    const auto proxy = connection->rootProxy();
    const QString odd = QString("a") + QChar(0xFFFE) + "b" + QChar(0) + "c" + QChar(0xD800) + "d";
    for (const QString &text : {odd, QString(5 << 20, 'x')}) {
        root->onPong = [&]() -> bool { throw NSException("TestException", text); };
        try {
            proxy->invoke("pong");
            FAIL() << "nothing was raised";
        } catch (const NSException &exception) {
            EXPECT_EQ(exception.name(), "TestException");
            EXPECT_TRUE(exception.reason().startsWith(text.left(1)));
            EXPECT_TRUE(exception.reason().endsWith(text.right(1)) || text.size() > (1 << 20));
        }
    }
    root->onPong = {};
    EXPECT_EQ(proxy->invoke("pong"), QVariant(true)) << "the stream is still good";
}

TEST_F(ConnectionTest, ANumberOfAnotherWidthIsTakenWhenItFits)
{
    const auto proxy = client()->rootProxy();
    for (const QVariant &number : {QVariant(7), QVariant(7U), QVariant(7LL), QVariant(7ULL)}) {
        SCOPED_TRACE(number.typeName());
        EXPECT_EQ(proxy->invoke("sameInteger", {number}), QVariant(7));
        EXPECT_EQ(proxy->invoke("sameCardinal", {number}), QVariant(7U));
        EXPECT_EQ(proxy->invoke("sameLargeInteger", {number}), QVariant(7LL));
        EXPECT_EQ(proxy->invoke("sameLargeCardinal", {number}), QVariant(7ULL));
    }
    EXPECT_EQ(proxy->invoke("sameLargeInteger", {-7}), QVariant(-7LL));
}

TEST_F(ConnectionTest, ANumberThatDoesNotFitIsRefusedAndNotCut)
{
    const struct {
        const char *selector;
        QList<QVariant> numbers;
    } cases[] = {{"sameInteger", {1LL << 40, -(1LL << 40), 1ULL << 40, 1U << 31, ~0ULL}},
                 {"sameCardinal", {1LL << 40, 1ULL << 40, -1, -1LL}},
                 {"sameLargeInteger", {1ULL << 63, ~0ULL}},
                 {"sameLargeCardinal", {-1, -1LL}}};
    const auto proxy = client()->rootProxy();
    for (const auto &test : cases) {
        for (const QVariant &number : test.numbers) {
            EXPECT_EQ(nameRaisedBy([&] { proxy->invoke(test.selector, {number}); }),
                      NSInvalidArgumentException)
                << test.selector << " of " << qPrintable(number.toString());
        }
    }
}

TEST_F(ConnectionTest, AProtocolRefusesSelectorsThatItDoesNotName)
{
    const auto proxy = client()->rootProxy();
    proxy->setProtocolForProxy({"Ponging", {{"pong", "b"}}});
    EXPECT_EQ(proxy->invoke("pong"), QVariant(true));
    EXPECT_THROW(proxy->invoke("child"), NSException);
}

TEST_F(ConnectionTest, AProtocolRefusesAResultOfAnotherType)
{
    const auto proxy = client()->rootProxy();
    proxy->setProtocolForProxy({"Wrong", {{"pong", "o"}}});
    EXPECT_THROW(proxy->invoke("pong"), NSException);
}

TEST_F(ConnectionTest, AProtocolTakesEachTypeOfTheWireAsItIsDeclared)
{
    const struct {
        const char *selector;
        const char *signature;
        QVariant result;
    } cases[] = {{"pong", "b", true},
                 {"integer", "i", root->integer()},
                 {"cardinal", "u", root->cardinal()},
                 {"largeInteger", "x", root->largeInteger()},
                 {"largeCardinal", "t", root->largeCardinal()},
                 {"fraction", "d", root->fraction()},
                 {"text", "s", root->text()},
                 {"textWithNul", "s", root->textWithNul()},
                 {"date", "(xis)", root->date()},
                 {"list", "av", root->list()},
                 {"dictionary", "a{sv}", root->dictionary()},
                 {"anything", "v", root->anything()},
                 {"text", "v", root->text()},
                 {"nothing", "", QVariant()}};
    const auto proxy = client()->rootProxy();
    for (const auto &test : cases) {
        SCOPED_TRACE(std::string(test.selector) + " as " + test.signature);
        proxy->setProtocolForProxy({"Typed", {{test.selector, test.signature}}});
        QVariant result;
        EXPECT_NO_THROW(result = proxy->invoke(test.selector));
        EXPECT_EQ(result, test.result);
        EXPECT_EQ(result.metaType(), test.result.metaType());
    }
}

TEST_F(ConnectionTest, AProtocolTakesNoTypeForAnother)
{
    const char *const selectors[] = {"integer",  "cardinal", "largeInteger", "largeCardinal",
                                     "fraction", "text",     "textWithNul",  "date",
                                     "list",     "pong",     "child",        "dictionary"};
    const auto proxy = client()->rootProxy();
    for (const char *const selector : selectors) {
        int taken = 0;
        for (const char *const signature :
             {"", "b", "o", "s", "i", "u", "x", "t", "d", "(xis)", "av", "a{sv}", "aX"}) {
            proxy->setProtocolForProxy({"Typed", {{selector, signature}}});
            taken += nameRaisedBy([&] { proxy->invoke(selector); }) == "nothing" ? 1 : 0;
        }
        EXPECT_EQ(taken, 1) << selector;
    }
}

TEST_F(ConnectionTest, ANotificationArrivesWithNameObjectAndEveryKindOfValue)
{
    const QDateTime date({2026, 3, 14}, {6, 55}, QTimeZone("Europe/Paris"));
    const QVariantMap info{{"text", "Grüße"},
                           {"truth", true},
                           {"number", 7},
                           {"large", 9'000'000'000LL},
                           {"fraction", 0.25},
                           {"data", QByteArray("\0\1\2", 3)},
                           {"date", date},
                           {"list", QVariantList{1, "zwei", QVariantMap{{"drei", 3}}}},
                           {"empty list", QVariantList{}},
                           {"nested", QVariantMap{{"a", 1}, {"empty", QVariantMap{}}}}};
    EXPECT_EQ(post(NSNotification("Name", "com.dozely.Daemon", info)), QVariant(true));
    EXPECT_EQ(root->last.name(), "Name");
    EXPECT_EQ(root->last.object(), "com.dozely.Daemon");
    EXPECT_EQ(root->last.userInfo(), info);
    EXPECT_EQ(root->last.userInfo().value("date").toDateTime().timeZone().id(), "Europe/Paris");
}

TEST_F(ConnectionTest, TextThatDBusCannotCarryArrivesUnchanged)
{
    const QVariantMap info{{"nul", QString(QStringLiteral("a\0b"))},
                           {"nul in the middle", QString::fromUtf16(u"a\0b", 3)},
                           {"noncharacter", QString(QChar(0xFFFE))},
                           {"beyond the plane", QString::fromUtf8("\xF0\x9F\xBF\xBE")},
                           {"date", QDateTime({2026, 3, 14}, {6, 55}, Qt::UTC)},
                           {"negative", -5},
                           {"data", QByteArray("\0", 1)}};
    EXPECT_EQ(post(NSNotification("Name", "sender", info)), QVariant(true));
    EXPECT_EQ(root->last.userInfo(), info);
}

TEST_F(ConnectionTest, ANotificationWithoutObjectArrivesWithoutOne)
{
    EXPECT_EQ(post(NSNotification("Name")), QVariant(true));
    EXPECT_EQ(root->last.name(), "Name");
    EXPECT_FALSE(root->last.object().isValid());
}

TEST_F(ConnectionTest, ValuesNestedDeeperThanDBusAllowsArriveUnchanged)
{
    const QVariantMap info{{"deep", nested(50)}};
    EXPECT_EQ(post(NSNotification("Name", "sender", info)), QVariant(true));
    EXPECT_EQ(root->last.userInfo(), info);
}

TEST_F(ConnectionTest, ValuesNestedBeyondTheLimitAreRefusedBeforeTheyAreSent)
{
    EXPECT_THROW(post(NSNotification("Name", "sender", {{"deep", nested(65)}})), NSException);
    EXPECT_EQ(root->notifications, 0);
}

TEST_F(ConnectionTest, AMessageOfMoreThanFourMebibytesIsRefusedBeforeItIsSent)
{
    EXPECT_EQ(post(NSNotification("Name", "sender", {{"data", QByteArray(3 << 20, 'x')}})), QVariant(true));
    EXPECT_THROW(post(NSNotification("Name", "sender", {{"data", QByteArray((4 << 20) + 1, 'x')}})),
                 NSException);
    EXPECT_EQ(root->notifications, 1);
}

TEST_F(ConnectionTest, TheLimitOfAMessageIsThatOfAllItsArguments)
{
    const auto proxy = client()->rootProxy();
    const QString half(3 << 20, 'x');
    EXPECT_EQ(nameRaisedBy([&] { proxy->invoke("sizeOfBoth", {half, half}); }), NSInvalidArgumentException);
    EXPECT_EQ(root->calls, 0);
    EXPECT_EQ(proxy->invoke("sizeOfBoth", {half, "y"}), (3 << 20) + 1) << "the stream is still good";
}

TEST_F(ConnectionTest, TheLimitOfAMessageCountsBlocksToo)
{
    const auto proxy = client()->rootProxy();
    const QString half = QString(3 << 20, 'x') + QChar(0);
    EXPECT_EQ(nameRaisedBy([&] { proxy->invoke("sizeOfBoth", {half, half}); }), NSInvalidArgumentException);
    EXPECT_EQ(root->calls, 0);
    EXPECT_EQ(proxy->invoke("sizeOfBoth", {half, QString(QChar(0))}), (3 << 20) + 2);
}

TEST_F(ConnectionTest, AReplyBeyondTheLimitIsAnErrorAndTheStreamStaysGood)
{
    const auto proxy = client()->rootProxy();
    EXPECT_EQ(proxy->invoke("bytes", {3 << 20}).toByteArray().size(), 3 << 20);
    EXPECT_EQ(nameRaisedBy([&] { proxy->invoke("bytes", {(4 << 20) + 1}); }), NSInvalidArgumentException);
    EXPECT_EQ(proxy->invoke("pong"), QVariant(true));
}

TEST_F(ConnectionTest, TheLimitOfAReplyIsThatOfAllItsResults)
{
    struct Answering : MessageStream::Handler {
        MessageStream::Reply serve(const MessageStream::Request &request) override
        {
            return {{}, {}, request.member == "both" ? QVariantList{half, half} : QVariantList{half, "y"}};
        }
        void streamClosed() override {}
        QByteArray half = QByteArray(3 << 20, 'x');
    } answering;
    const auto port = TestPort::server(folder.filePath("answering"));
    std::shared_ptr<MessageStream> accepted;
    const StreamListener listener(*port, [&](const auto &stream) {
        accepted = stream;
        stream->setHandler(&answering);
    });
    const auto stream = MessageStream::open(*TestPort::client(folder.filePath("answering")), 5s);
    const MessageStream::Reply refused = stream->callWithin({"/", "com.dozely.Test", "both", {}}, 5s);
    EXPECT_EQ(refused.errorName, "org.freedesktop.DBus.Error.Failed");
    const MessageStream::Reply reply = stream->callWithin({"/", "com.dozely.Test", "one", {}}, 5s);
    EXPECT_EQ(reply.results, (QVariantList{answering.half, "y"})) << "the stream is still good";
}

TEST_F(ConnectionTest, AValueThatCannotTravelIsRefused)
{
    EXPECT_THROW(
        post(NSNotification("Name", "sender", {{"object", QVariant::fromValue<QObject *>(root.get())}})),
        NSException);
}

TEST_F(ConnectionTest, ASelectorThatIsNoNameIsRefusedBeforeItIsSent)
{
    const auto proxy = client()->rootProxy();
    for (const QByteArray &selector :
         {QByteArray(), QByteArray("no name"), QByteArray("ask:"), QByteArray("a.b"), QByteArray(256, 'a')})
        EXPECT_EQ(nameRaisedBy([&] { proxy->invoke(selector); }), NSInvalidArgumentException);
    EXPECT_EQ(proxy->invoke("pong"), QVariant(true)) << "the connection goes on";
}

TEST_F(ConnectionTest, AnAnswerThatWasAskedForAheadIsUsedOnce)
{
    const auto connection = client();
    const auto proxy = connection->rootProxyToAsk("pong");
    ASSERT_NE(proxy, nullptr);
    EXPECT_EQ(proxy->invoke("pong"), QVariant(true));
    EXPECT_EQ(root->calls, 1);
    EXPECT_EQ(proxy->invoke("pong"), QVariant(true));
    EXPECT_EQ(root->calls, 2);
}

TEST_F(ConnectionTest, AnAnswerThatWasAskedForAheadIsThatOfTheNextRequestOrOfNone)
{
    const auto connection = client();
    const auto proxy = connection->rootProxyToAsk("pong");
    EXPECT_EQ(proxy->invoke("integer").toInt(), -7);
    root->onPong = [] { return false; };
    EXPECT_EQ(proxy->invoke("pong"), QVariant(false)) << "asked anew";
}

TEST_F(ConnectionTest, AskingAheadOfARootObjectThatIsNoneLeavesNothingBehind)
{
    const auto connection = client();
    server->setRootObject(nullptr);
    EXPECT_EQ(connection->rootProxyToAsk("pong"), nullptr);
    server->setRootObject(root.get());
    const auto proxy = connection->rootProxy();
    ASSERT_NE(proxy, nullptr);
    EXPECT_EQ(proxy->invoke("pong"), QVariant(true));
    EXPECT_EQ(root->calls, 1);
}

TEST_F(ConnectionTest, AskingAheadFindsTheRootObjectOfTheTime)
{
    const auto connection = client();
    EXPECT_EQ(connection->rootProxyToAsk("pong")->invoke("pong"), QVariant(true));
    Root other;
    other.onPong = [] { return false; };
    server->setRootObject(&other);
    EXPECT_EQ(connection->rootProxyToAsk("pong")->invoke("pong"), QVariant(false));
    EXPECT_EQ(root->calls, 1);
    EXPECT_EQ(other.calls, 1);
}

TEST_F(ConnectionTest, WhatIsRaisedByARequestAheadIsRaisedWhenItIsAskedFor)
{
    const auto proxy = client()->rootProxyToAsk("raise");
    ASSERT_NE(proxy, nullptr);
    EXPECT_EQ(nameRaisedBy([&] { proxy->invoke("raise"); }), "TestException");
    const auto unknown = client()->rootProxyToAsk("whatNobodyKnows");
    ASSERT_NE(unknown, nullptr);
    EXPECT_EQ(nameRaisedBy([&] { unknown->invoke("whatNobodyKnows"); }), NSInvalidArgumentException);
    EXPECT_EQ(unknown->invoke("pong"), QVariant(true));
}

TEST_F(ConnectionTest, AskingAheadForWhatIsNoNameRaises)
{
    const auto connection = client();
    EXPECT_EQ(nameRaisedBy([&] { connection->rootProxyToAsk("no name"); }), NSInvalidArgumentException);
    EXPECT_EQ(connection->rootProxy()->invoke("pong"), QVariant(true)) << "the connection goes on";
}

TEST_F(ConnectionTest, TheCallerIsKnownWhileItsRequestIsServedAndOnlyThen)
{
    EXPECT_FALSE(NSConnection::currentPeer());
    client()->rootProxy()->invoke("pong");
    ASSERT_TRUE(root->peer);
    EXPECT_EQ(root->peer->userId, ::geteuid());
    EXPECT_EQ(root->peer->processId, ::getpid());
    EXPECT_FALSE(NSConnection::currentPeer());
}

TEST_F(ConnectionTest, AServerThatIsNotTrustedIsNoRootObject)
{
    const auto connection = client();
    connection->setTrustedPeers({::geteuid() + 1});
    EXPECT_EQ(connection->rootProxy(), nullptr);
    EXPECT_EQ(root->calls, 0);
    connection->setTrustedPeers({::geteuid() + 1, ::geteuid()});
    EXPECT_NE(connection->rootProxy(), nullptr);
}

TEST_F(ConnectionTest, ARequestToItselfIsServedWhileTheOnlyThreadWaits)
{
    root->onPong = [this] { return client()->rootProxy()->invoke("depth").toInt() == 1; };
    EXPECT_EQ(client()->rootProxy()->invoke("pong"), QVariant(true));
}

TEST_F(ConnectionTest, RequestsMayNestThroughTheSameStream)
{
    const auto proxy = client()->rootProxy();
    int depth = 0;
    root->onPong = [&] { return ++depth == 40 || proxy->invoke("pong").toBool(); };
    EXPECT_EQ(proxy->invoke("pong"), QVariant(true));
    EXPECT_EQ(depth, 40);
}

TEST_F(ConnectionTest, NoTimerAndNoPostedEventRunsWhileAThreadWaits)
{
    bool ran = false;
    QTimer::singleShot(0, [&] { ran = true; });
    QMetaObject::invokeMethod(
        qApp, [&] { ran = true; }, Qt::QueuedConnection);
    for (int i = 0; i < 20; ++i)
        client()->rootProxy()->invoke("pong");
    EXPECT_FALSE(ran);
    EXPECT_TRUE(waitUntil([&] { return ran; }));
}

TEST_F(ConnectionTest, AnotherThreadMayAskWhileTheMainThreadRunsItsLoop)
{
    bool pong = false;
    std::thread asker([&] { pong = client()->rootProxy()->invoke("pong").toBool(); });
    EXPECT_TRUE(waitUntil([&] { return root->calls > 0; }));
    asker.join();
    EXPECT_TRUE(pong);
}

TEST_F(ConnectionTest, NobodyListeningRaises)
{
    const auto port = TestPort::client(folder.filePath("nobody"));
    const auto connection = NSConnection::connectionWithReceivePortSendPort(nullptr, port);
    EXPECT_THROW(connection->rootProxy(), NSException);
}

TEST_F(ConnectionTest, APeerThatNeverIdentifiesItselfMeetsTheRequestTimeout)
{
    const auto mute = TestPort::server(folder.filePath("mute"));
    const auto connection =
        NSConnection::connectionWithReceivePortSendPort(nullptr, TestPort::client(folder.filePath("mute")));
    connection->setRequestTimeout(50ms);
    connection->setReplyTimeout(1h);
    EXPECT_EQ(nameRaisedBy([&] { connection->rootProxy(); }), NSPortTimeoutException);
}

TEST_F(ConnectionTest, AReplyThatTakesTooLongRaises)
{
    QSemaphore raisedAlready;
    root->onPong = [&] { return raisedAlready.tryAcquire(1, 20'000); };
    QString raised;
    std::thread asker([&] {
        const auto connection = client();
        const auto proxy = connection->rootProxy();
        connection->setReplyTimeout(50ms);
        raised = nameRaisedBy([&] { proxy->invoke("pong"); });
        raisedAlready.release();
    });
    EXPECT_TRUE(waitUntil([&] { return root->calls > 0; }));
    asker.join();
    EXPECT_EQ(raised, NSPortTimeoutException);
}

TEST_F(ConnectionTest, APeerThatDiesInTheMiddleRaises)
{
    const int child = ::fork();
    if (child == 0) {
        const auto port = TestPort::server(folder.filePath("dying"));
        const auto dying = NSConnection::initWithReceivePortSendPort(port, nullptr);
        Root suicidal;
        suicidal.onPong = []() -> bool { ::_exit(3); };
        dying->setRootObject(&suicidal);
        waitUntil([] { return false; });
        ::_exit(1);
    }
    ASSERT_TRUE(waitUntil([&] { return QFile::exists(folder.filePath("dying")); }));
    const auto connection =
        NSConnection::connectionWithReceivePortSendPort(nullptr, TestPort::client(folder.filePath("dying")));
    const auto proxy = connection->rootProxy();
    ASSERT_NE(proxy, nullptr);
    EXPECT_EQ(nameRaisedBy([&] { proxy->invoke("pong"); }), NSInvalidSendPortException);
    int status = 0;
    ::waitpid(child, &status, 0);
    EXPECT_EQ(WEXITSTATUS(status), 3);
    EXPECT_TRUE(waitUntil([&] { return !connection->isValid(); })) << "the death is told from the loop";
    EXPECT_THROW(proxy->invoke("pong"), NSException);
}

TEST_F(ConnectionTest, AServerConnectionLivesOnWhenAClientGoes)
{
    Listener listener;
    listener.observe(NSConnectionDidDieNotification, server.get());
    client()->rootProxy()->invoke("pong");
    EXPECT_EQ(client()->rootProxy()->invoke("pong"), QVariant(true));
    QCoreApplication::processEvents();
    EXPECT_TRUE(server->isValid());
    EXPECT_EQ(listener.heard, 0);
}

TEST_F(ConnectionTest, TheDeathOfTheListeningPortIsTheDeathOfTheServerConnection)
{
    Listener listener;
    listener.observe(NSConnectionDidDieNotification, server.get());
    server->receivePort()->invalidate();
    EXPECT_FALSE(server->isValid());
    EXPECT_EQ(listener.heard, 1);
    server->invalidate();
    EXPECT_EQ(listener.heard, 1) << "a connection dies once";
}

TEST_F(ConnectionTest, ASupersededServerServesTheStreamsThatItHasAndClosesWithTheLast)
{
    auto proxy = client()->rootProxy();
    auto lastProxy = client()->rootProxy();
    server.reset();
    EXPECT_EQ(proxy->invoke("pong"), QVariant(true));
    EXPECT_THROW(client()->rootProxy(), NSException) << "nobody listens any more";

    Listener deaths;
    deaths.observe(NSConnectionDidDieNotification, nullptr);
    proxy.reset(); // and its connection, which nobody else holds
    EXPECT_TRUE(waitUntil([&] { return deaths.heard == 1; }));
    EXPECT_EQ(lastProxy->invoke("pong"), QVariant(true)) << "the other stream lives on";
    EXPECT_EQ(deaths.heard, 1);
    lastProxy.reset();
    EXPECT_TRUE(waitUntil([&] { return deaths.heard == 2; }));
}

TEST_F(ConnectionTest, InvalidatingAServerClosesItsStreams)
{
    const auto connection = client();
    const auto proxy = connection->rootProxy();
    server->invalidate();
    EXPECT_THROW(proxy->invoke("pong"), NSException);
}

TEST_F(ConnectionTest, InvalidatingAServerLeavesTheStreamsOfOthersOpen)
{
    const QString elsewhere = folder.filePath("another server");
    const auto other = NSConnection::initWithReceivePortSendPort(TestPort::server(elsewhere), nullptr);
    other->setRootObject(root.get());
    const auto proxy =
        NSConnection::connectionWithReceivePortSendPort(nullptr, TestPort::client(elsewhere))->rootProxy();
    ASSERT_EQ(proxy->invoke("pong"), QVariant(true));
    server->invalidate();
    EXPECT_EQ(proxy->invoke("pong"), QVariant(true));
}

TEST_F(ConnectionTest, OneThatWasInvalidatedOpensNoStreamAnyMore)
{
    const auto connection = client();
    connection->invalidate();
    EXPECT_EQ(nameRaisedBy([&] { connection->rootProxy(); }), NSInvalidSendPortException);
    EXPECT_EQ(nameRaisedBy([&] { server->rootProxy(); }), NSInvalidSendPortException) << "it has no other end";
}

TEST_F(ConnectionTest, ADelegateMayRefuseAStream)
{
    root->welcome = false;
    server->setDelegate(root.get());
    EXPECT_THROW(client()->rootProxy(), NSException);
    root->welcome = true;
    EXPECT_NE(client()->rootProxy(), nullptr);
    EXPECT_EQ(root->askedForWelcome, 2);
}

TEST_F(ConnectionTest, AnIncomingStreamIsAnnounced)
{
    Listener listener;
    listener.observe(NSConnectionDidInitializeNotification, nullptr);
    client()->rootProxy();
    EXPECT_EQ(listener.heard, 2) << "the client's own and the server's for it";
}

TEST_F(ConnectionTest, PortsThatAreNotValidMakeNoConnection)
{
    const auto port = TestPort::client(path);
    port->invalidate();
    EXPECT_EQ(NSConnection::initWithReceivePortSendPort(nullptr, port), nullptr);
    EXPECT_THROW(NSConnection::connectionWithReceivePortSendPort(nullptr, port), NSException);
    const auto reply = TestPort::server(folder.filePath("reply"));
    reply->invalidate();
    EXPECT_THROW(NSConnection::connectionWithReceivePortSendPort(reply, TestPort::client(path)), NSException);
}
