// SPDX-License-Identifier: MIT
//
// The limits of docs/wire-protocol.md, as another user meets them.
#include "DozelyKit/communication/remoting/MessageStream_p.h"
#include "DozelyKit/communication/remoting/NSConnection.h"
#include "DozelyKit/communication/remoting/NSDistantObject.h"
#include "DozelyKit/core/foundation/Descriptor.h"
#include "DozelyKit/core/foundation/NSException.h"
#include "RawPeer.h"
#include "support/TestPort.h"
#include "support/WaitUntil.h"

#include <QDir>
#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstring>
#include <deque>
#include <fcntl.h>
#include <optional>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <thread>
#include <unistd.h>
#include <vector>

using namespace dozely;

using namespace std::chrono_literals;

namespace
{
class Served : public QObject
{
    Q_OBJECT
public:
    NS_REMOTE Q_INVOKABLE bool pong()
    {
        ++pongs;
        return true;
    }
    /// Takes so long that a turn has room for a few.
    NS_REMOTE Q_INVOKABLE bool compute()
    {
        const auto end = std::chrono::steady_clock::now() + 200us;
        while (std::chrono::steady_clock::now() < end) {
        }
        return pong();
    }
    NS_REMOTE Q_INVOKABLE int count() { return pongs; }
    NS_REMOTE Q_INVOKABLE int sizeOf(const QByteArray &bytes) { return static_cast<int>(bytes.size()); }
    NS_REMOTE Q_INVOKABLE QByteArray data() { return QByteArray(200'000, 'x'); }
    int pongs = 0;
};

class LimitsOfPeers : public testing::Test
{
protected:
    LimitsOfPeers()
        : server(NSConnection::initWithReceivePortSendPort(TestPort::server(path), nullptr, guarded))
    {
        server->setRootObject(&root);
    }

    template<class Actions>
    void meanwhile(Actions actions)
    {
        std::atomic<bool> over = false;
        std::thread peers([&] {
            actions();
            over = true;
        });
        EXPECT_TRUE(waitUntil([&] { return over.load(); }, 60s));
        peers.join();
    }

    /// A call of sizeOf of so many bytes in all.
    static QByteArray callOfSize(qsizetype size)
    {
        const auto header = RawPeer::call(4, "sizeOf").size();
        const auto bytes = static_cast<quint32>(size - header - 4);
        QByteArray length(4, '\0');
        std::memcpy(length.data(), &bytes, 4);
        return RawPeer::call(bytes + 4, "sizeOf") + length + QByteArray(bytes, 'x');
    }

    /// Makes this thread alone act as another user, if it can; whoever is not root trusts himself.
    bool becomeStranger(uid_t userId) const
    {
        return ::chmod(folder.path().toUtf8().constData(), 0711) == 0 && ::geteuid() == 0 &&
               ::syscall(SYS_setresuid, -1, userId, -1) == 0;
    }

    /// In a thread of its own, which acts as that user, if it can.
    template<class Actions>
    void as(uid_t userId, Actions actions) const
    {
        std::thread([&] {
            becomeStranger(userId);
            actions();
        }).join();
    }

    /// Adds a stream for as long as one is served, so many at most; how many were.
    int addServed(std::deque<RawPeer> &peers, int most) const
    {
        for (int i = 0; i < most; ++i) {
            peers.emplace_back(path).authenticate();
            if (!peers.back().isAnswered()) {
                peers.pop_back();
                return i;
            }
        }
        return most;
    }

    static int descriptors()
    {
        return static_cast<int>(QDir("/proc/self/fd").entryList(QDir::Files | QDir::System).size());
    }

    std::shared_ptr<NSConnection> client(const StreamOptions &options = {}) const
    {
        return NSConnection::initWithReceivePortSendPort(nullptr, TestPort::client(path), options);
    }

    static constexpr int floodStreams = 63;
    int usuallyServedBetween(uid_t flooding, uid_t asking);

    QTemporaryDir folder{"/tmp/dz-XXXXXX"};
    QString path = folder.filePath("server");
    /// As against another user, of whom a test need not have one.
    const StreamOptions guarded{.trustsOwnUser = false};
    Served root;
    std::shared_ptr<NSConnection> server;
};

constexpr qsizetype largest = 256 << 10;
constexpr int streamsOfUser = 64;
const QByteArray refusal = "ERROR \"no room for another stream\"\r\n";

/// So many descriptors for this process, for as long as it lives.
class DescriptorLimit
{
public:
    explicit DescriptorLimit(rlim_t descriptors)
    {
        ::getrlimit(RLIMIT_NOFILE, &m_before);
        const rlimit limit{descriptors, std::max(m_before.rlim_max, descriptors)};
        EXPECT_EQ(::setrlimit(RLIMIT_NOFILE, &limit), 0) << std::strerror(errno);
    }
    ~DescriptorLimit() { ::setrlimit(RLIMIT_NOFILE, &m_before); }
    DescriptorLimit(const DescriptorLimit &) = delete;
    DescriptorLimit &operator=(const DescriptorLimit &) = delete;

private:
    rlimit m_before{};
};

/// How many files this process can open.
int freeDescriptors()
{
    std::vector<int> opened;
    for (int file = 0; (file = ::open("/dev/null", O_RDONLY | O_CLOEXEC)) >= 0;)
        opened.push_back(file);
    std::for_each(opened.begin(), opened.end(), ::close);
    return static_cast<int>(opened.size());
}
} // namespace

TEST_F(LimitsOfPeers, AMessageOfTheLargestSizeIsServedAndALargerOneRefusedAtItsHead)
{
    meanwhile([&] {
        RawPeer peer(path);
        peer.introduce();
        const QByteArray call = callOfSize(largest);
        ASSERT_EQ(call.size(), largest);
        EXPECT_TRUE(peer.send(call));
        EXPECT_TRUE(peer.waitForReplies(1));
        EXPECT_TRUE(peer.send(callOfSize(largest + 1).left(16)));
        peer.waitForClose(); // ends only when the server closes
    });
}

TEST_F(LimitsOfPeers, WhoIsTrustedMaySendMore)
{
    server = NSConnection::initWithReceivePortSendPort(TestPort::server(path), nullptr);
    server->setRootObject(&root);
    meanwhile([&] {
        RawPeer peer(path);
        peer.introduce();
        EXPECT_TRUE(peer.send(callOfSize(4 << 20)));
        EXPECT_TRUE(peer.waitForReplies(1));
        EXPECT_TRUE(peer.send(callOfSize((4 << 20) + (64 << 10) + 1).left(16)));
        peer.waitForClose();
    });
}

TEST_F(LimitsOfPeers, LargeMessagesThatDoNotEndHinderNoOthersAndHaveTheirTime)
{
    meanwhile([&] {
        const QByteArray call = callOfSize(largest);
        std::deque<RawPeer> unfinished;
        for (int i = 0; i < 3; ++i) { // more of a user are not held
            unfinished.emplace_back(path).introduce();
            EXPECT_TRUE(unfinished.back().send(call.left(largest / 2)));
        }
        RawPeer small(path);
        small.introduce();
        small.send(RawPeer::call(0));
        EXPECT_TRUE(small.waitForReplies(1));
        RawPeer fourth(path);
        fourth.introduce();
        EXPECT_TRUE(fourth.send(call.left(100'000)));
        small.send(RawPeer::call(0));
        EXPECT_TRUE(small.waitForReplies(2)) << "the same user";
        for (RawPeer &peer : unfinished)
            peer.waitForClose();
        EXPECT_TRUE(fourth.send(call.mid(100'000)));
        EXPECT_TRUE(fourth.waitForReplies(1)) << "there is room again";
        EXPECT_FALSE(small.isClosed());
    });
}

TEST_F(LimitsOfPeers, ALargeMessageThatCameInTimeCostsItsSenderNothingLater)
{
    meanwhile([&] {
        RawPeer peer(path);
        peer.introduce();
        // No request that the idle limit would begin anew with.
        peer.send(RawPeer::call(largest / 2, "Ping", "org.freedesktop.DBus.Peer") +
                  QByteArray(largest / 2, 'x'));
        EXPECT_TRUE(peer.waitForReplies(1));
        RawPeer silent(path);
        silent.waitForClose(); // for so long
        peer.send(RawPeer::call(0));
        EXPECT_TRUE(peer.waitForReplies(2));
    });
}

TEST_F(LimitsOfPeers, RepliesThatNobodyReadsAreHeldWithinALimit)
{
    meanwhile([&] {
        RawPeer reading(path);
        reading.introduce();
        RawPeer peer(path);
        peer.introduce();
        peer.send(RawPeer::call(0, "data").repeated(4));
        reading.send(RawPeer::call(0, "data"));
        EXPECT_TRUE(reading.waitForReplies(1));
        EXPECT_TRUE(peer.waitForReplies(4)) << "slow, but in the end";
        peer.send(RawPeer::call(0, "data").repeated(20)); // of which the kernel holds some
        for (int i = 2; !peer.isHungUp(); ++i) {
            reading.send(RawPeer::call(0));
            ASSERT_TRUE(reading.waitForReplies(i));
        }
    });
}

/// How many flood calls are served between a call of somebody else and its answer: the median, for where the
/// machine is busy, they go on between that answer and the next call as well.
int LimitsOfPeers::usuallyServedBetween(uid_t flooding, uid_t asking)
{
    std::atomic<bool> isOver = false;
    std::atomic<bool> isFlooding = false;
    std::thread flooder([&] {
        becomeStranger(flooding);
        std::deque<RawPeer> flood;
        for (int i = 0; i < floodStreams; ++i)
            flood.emplace_back(path).introduce();
        std::vector<int> sent(flood.size(), 0);
        while (!isOver) {
            for (size_t i = 0; i < flood.size(); ++i) {
                if (sent[i] - flood[i].replies() < 20 &&
                    flood[i].send(RawPeer::call(0, "compute").repeated(20)))
                    sent[i] += 20;
            }
            isFlooding = std::all_of(flood.begin(), flood.end(), [](RawPeer &p) { return p.replies() > 0; });
        }
    });
    EXPECT_TRUE(waitUntil([&] { return isFlooding.load(); }));
    std::vector<int> served;
    meanwhile([&] {
        becomeStranger(asking);
        RawPeer other(path);
        other.introduce();
        int before = -1;
        for (int i = 1; i <= 30; ++i) {
            other.send(RawPeer::call(0, "count"));
            EXPECT_TRUE(other.waitForReplies(i));
            int count = 0;
            std::memcpy(&count, other.lastReply().constData() + other.lastReply().size() - 4, 4);
            if (before >= 0)
                served.push_back(count - before);
            before = count;
        }
    });
    isOver = true;
    flooder.join();
    const auto median = served.begin() + static_cast<qsizetype>(served.size() / 2);
    std::nth_element(served.begin(), median, served.end());
    EXPECT_GT(*median, 0);
    return *median;
}

TEST_F(LimitsOfPeers, AFloodOnAllStreamsOfAUserIsServedInTurns)
{
    // What one turn takes before it is looked at, and one of each of the others; twenty of each would be
    // 1260.
    EXPECT_LE(usuallyServedBetween(4711, 4711), 2 * floodStreams);
}

TEST_F(LimitsOfPeers, AFloodOfAUserDoesNotKeepAnotherWaiting)
{
    // What one turn takes, twice at most; nobody but root can be two users.
    EXPECT_LE(usuallyServedBetween(4711, 4712), ::geteuid() == 0 ? floodStreams / 2 : 2 * floodStreams);
}

TEST_F(LimitsOfPeers, AStreamBeyondTheSixtyFourthIsRefusedWithAReason)
{
    meanwhile([&] {
        std::deque<RawPeer> known;
        for (int i = 0; i < 64; ++i) {
            known.emplace_back(path).authenticate();
            EXPECT_TRUE(known.back().isAnswered());
        }
        const MessageStream::Request pong{"/root", "com.dozely.Object", "pong", {}};
        for (const bool waitsForRefusal : {false, true}) {
            const auto port = TestPort::client(path);
            const auto stream = MessageStream::open(*port, 5s);
            if (waitsForRefusal) { // which has come before the first word is said
                RawPeer later(path);
                later.waitForClose();
            }
            EXPECT_THROW(stream->callWithin(pong, 5s), MessageStream::Refused);
            const auto posting = MessageStream::open(*port, 5s);
            EXPECT_THROW(posting->post(pong, 5s), MessageStream::Refused);
        }
        EXPECT_THROW(client()->rootProxy(), NSException);
        known.pop_back();
        RawPeer awaited(path); // the place of the one that has gone
        while (!awaited.isConnected()) {
        }
        EXPECT_TRUE(known.front().isAnswered());
    });
}

TEST_F(LimitsOfPeers, ANewcomerTakesOnePlaceOfWhoeverHasMostWhenAllAreTaken)
{
    // Root alone can be as many users as it takes. Anybody else fills his own room.
    const bool isRoot = ::geteuid() == 0;
    constexpr uid_t first = 4711;
    const uid_t newcomer = first + (isRoot ? 16 : 0);
    const DescriptorLimit bothEnds(isRoot ? 4096 : 512);
    meanwhile([&] {
        std::deque<RawPeer> peers;
        as(first, [&] { EXPECT_EQ(addServed(peers, streamsOfUser - 1), streamsOfUser - 1); });
        for (uid_t user = first + 1; user < newcomer; ++user)
            as(user, [&] { EXPECT_EQ(addServed(peers, streamsOfUser), streamsOfUser); });
        const auto gone = [&] {
            return std::count_if(peers.begin(), peers.end(), [](const RawPeer &p) { return p.isHungUp(); });
        };
        std::optional<RawPeer> silent;
        as(first, [&] { silent.emplace(path); });
        as(newcomer, [&] { EXPECT_EQ(addServed(peers, 1), 1); });
        EXPECT_TRUE(silent->isClosed());
        EXPECT_EQ(silent->waitForClose(), refusal) << "it may be about to be let in, and is to try again";
        EXPECT_EQ(gone(), 0);
        as(newcomer + 1, [&] { EXPECT_EQ(addServed(peers, 1), isRoot ? 1 : 0); });
        EXPECT_EQ(gone(), isRoot ? 1 : 0);
        // Who has 63 gets none of the others' 64: they would take it back.
        as(first, [&] { EXPECT_EQ(RawPeer(path).waitForClose(), refusal); });
        as(newcomer, [&] { EXPECT_EQ(addServed(peers, 1), isRoot ? 1 : 0) << "but who has one does"; });
        EXPECT_EQ(gone(), isRoot ? 2 : 0);
    });
}

TEST_F(LimitsOfPeers, StrangersLeaveSixtyFourDescriptorsForTheProcessItself)
{
    constexpr int leftForFiles = 64;
    const int before = descriptors();
    meanwhile([&] { // the sanitizers look at types that they meet for the first time with descriptors
        std::deque<RawPeer> peers;
        EXPECT_EQ(addServed(peers, 1), 1);
    });
    ASSERT_TRUE(waitUntil([&] { return descriptors() <= before; }));
    const int lowest = ::dup(0);
    ::close(lowest);
    const DescriptorLimit tight(static_cast<rlim_t>(lowest + leftForFiles + 40));
    meanwhile([&] {
        std::deque<RawPeer> strangers;
        if (::geteuid() == 0) {
            as(4711, [&] {
                EXPECT_THAT(addServed(strangers, 25), testing::AllOf(testing::Ge(15), testing::Le(20)));
                // In the places of the one before: of both its ends, and of the log, which is closed
                // by the time that another is answered.
                EXPECT_TRUE(strangers.front().isAnswered());
                std::deque<Descriptor> places;
                for (int i = 0; i < 6; ++i)
                    places.emplace_back(::dup(0));
                EXPECT_EQ(RawPeer(path).waitForClose(), refusal);
            });
            EXPECT_TRUE(strangers.front().isAnswered()) << "and the log is written";
            EXPECT_THAT(freeDescriptors(),
                        testing::AllOf(testing::Ge(leftForFiles), testing::Le(leftForFiles + 2)));
        }
        // Root and the process's own user are let in until none is left.
        const int free = freeDescriptors();
        std::deque<RawPeer> own;
        EXPECT_EQ(addServed(own, free / 2), free / 2) << "two ends each";
        EXPECT_EQ(freeDescriptors(), free % 2);
        for (RawPeer &peer : strangers)
            EXPECT_TRUE(peer.isAnswered());
    });
}

TEST_F(LimitsOfPeers, AMessageTooLargeForTheOtherSideIsRefusedBeforeItIsSent)
{
    server = NSConnection::initWithReceivePortSendPort(TestPort::server(path), nullptr);
    server->setRootObject(&root);
    meanwhile([&] {
        const bool isStranger = becomeStranger(4711);
        const qsizetype most = isStranger ? largest : 4 << 20;
        const auto connection = client();
        const auto proxy = connection->rootProxy();
        try {
            proxy->invoke("sizeOf", {QByteArray(most, 'x')});
            ADD_FAILURE() << "nothing was raised";
        } catch (const NSException &exception) {
            EXPECT_EQ(exception.name(), NSInvalidArgumentException);
        }
        const qsizetype size = most - 256; // room for the header
        EXPECT_EQ(proxy->invoke("sizeOf", {QByteArray(size, 'x')}).toInt(), size);
    });
}

TEST_F(LimitsOfPeers, AStreamIsOneDescriptor)
{
    for (int i = 0; i < 10; ++i) // the streams of tests before this one close
        QCoreApplication::processEvents();
    const int before = descriptors();
    std::deque<std::shared_ptr<NSConnection>> clients;
    for (int i = 0; i < 20; ++i) {
        clients.push_back(client());
        EXPECT_EQ(clients.back()->rootProxy()->invoke("pong"), QVariant(true));
    }
    EXPECT_EQ(descriptors() - before, 2 * 20) << "at each end";
    clients.clear();
    EXPECT_TRUE(waitUntil([&] { return descriptors() == before; }));
}

#include "LimitsOfPeersTest.moc"
