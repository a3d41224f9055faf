// SPDX-License-Identifier: MIT
//
// What docs/wire-protocol.md promises to other programs, byte by byte.
#include "DozelyKit/communication/remoting/MessageStream_p.h"
#include "DozelyKit/core/dbus/ObjectPath_p.h"
#include "DozelyKit/core/foundation/NSNotification.h"
#include "support/TestPort.h"

#include <QDateTime>
#include <QTemporaryDir>
#include <QTimeZone>
#include <QtEndian>

#include <gtest/gtest.h>

#include <sys/socket.h>
#include <thread>
#include <unistd.h>

using namespace dozely;

using namespace std::chrono_literals;

namespace
{
constexpr qsizetype headSize = 16;

/// A message as it came: the part before the body, and the body.
struct Message {
    QByteArray header;
    QByteArray body;
};

/// Answers the handshake of a stream and takes one message of it.
Message takeOneMessage(int stream)
{
    QByteArray bytes;
    const auto receive = [&] {
        char buffer[4096];
        const ssize_t size = ::recv(stream, buffer, sizeof buffer, 0);
        bytes.append(buffer, std::max<ssize_t>(size, 0));
        return size > 0;
    };
    while (!bytes.contains("BEGIN\r\n") && receive()) {
        if (bytes.endsWith("DATA\r\n")) // the client may wait for the answer before it begins
            break;
    }
    const QByteArray answer = "DATA\r\nOK 0123456789abcdef0123456789abcdef\r\n";
    ::send(stream, answer.constData(), static_cast<size_t>(answer.size()), MSG_NOSIGNAL);
    while (!bytes.contains("BEGIN\r\n") && receive()) {
    }
    bytes.remove(0, bytes.indexOf("BEGIN\r\n") + 7);
    while (bytes.size() < headSize && receive()) {
    }
    const auto number = [&](qsizetype at) { return qFromLittleEndian<quint32>(bytes.constData() + at); };
    const qsizetype header = headSize + (number(12) + 7) / 8 * 8;
    const qsizetype whole = header + number(4);
    while (bytes.size() < whole && receive()) {
    }
    return {bytes.left(header), bytes.sliced(header)};
}

/// The message in which these arguments travel.
Message sent(const QVariantList &arguments)
{
    const QTemporaryDir folder("/tmp/dz-XXXXXX");
    const auto port = TestPort::server(folder.filePath("raw"));
    Message message;
    const auto stream = MessageStream::open(*TestPort::client(folder.filePath("raw")), 5s);
    const int accepted = ::accept(port->listeningDescriptor(), nullptr, nullptr); // waits for nothing
    std::thread taker([&] { message = takeOneMessage(accepted); });
    EXPECT_NO_THROW(stream->post({"/root", "com.dozely.Object", "take", arguments}, 5s));
    taker.join();
    ::close(accepted);
    return message;
}
} // namespace

TEST(WireBytes, OfEachValueAreThoseThatOtherProgramsKnow)
{
    const QDateTime paris({2026, 3, 14}, {6, 55}, QTimeZone("Europe/Paris"));
    QVariant deep = 1;
    for (int i = 0; i < 21; ++i)
        deep = QVariantList{deep};
    const struct {
        QVariant value;
        const char *signature;
        const char *body;
    } cases[] = {
        {true, "b", "01000000"},
        {QVariant::fromValue<short>(-3), "i", "fdffffff"},
        {QVariant::fromValue<ushort>(65535), "i", "ffff0000"},
        {-7, "i", "f9ffffff"},
        {4'000'000'000U, "u", "00286bee"},
        {-9'000'000'000LL, "x", "00e68ee7fdffffff"},
        {QVariant::fromValue<long>(5), "x", "0500000000000000"},
        {18'000'000'000'000'000'000ULL, "t", "000008c5a1d8ccf9"},
        {0.25, "d", "000000000000d03f"},
        {0.5F, "d", "000000000000e03f"},
        {"Grüße", "s", "070000004772c3bcc39f6500"},
        {QByteArray("\0\xff", 2), "ay", "0200000000ff"},
        {paris, "(xis)", "208be9ea9c010000100e00000c0000004575726f70652f506172697300"},
        {QStringList{"eins", "zwei"}, "av", "19000000017300000400000065696e7300017300040000007a77656900"},
        {QVariantList{1, "zwei", paris, QVariantList{}}, "av",
         "44000000016900000100000001730000040000007a7765690005287869732900208be9ea9c010000100e0000"
         "0c0000004575726f70652f5061726973000261760000000000000000"},
        {QVariantMap{{"a", true}, {"b", QVariantMap{{"c", QByteArray("d")}}}}, "a{sv}",
         "39000000000000000100000061000162000000000100000001000000620005617b73767d0000000011000000"
         "000000000100000063000261790000000100000064"},
        {QVariant::fromValue(ObjectPath{"/object/1"}), "o", "090000002f6f626a6563742f3100"},
        {QString::fromUtf16(u"a\0b", 3), "ay", "0400000063610062"},
        {QVariantList{QString(QChar(0xFFFE)), paris, -1, 0.25, QVariant()}, "ay",
         "2f0000008563efbfbeda446f7a00831b0000019ceae98b20190e106c4575726f70652f506172697320fb3fd0"
         "000000000000f6"},
        {QVariant(), "ay", "01000000f6"},
        {deep, "ay", "1600000081818181818181818181818181818181818181818101"},
        {QVariant::fromValue(NSNotification("Name", "sender", {{"key", 1}})), "ssa{sv}",
         "040000004e616d65000000000600000073656e64657200001000000000000000030000006b65790001690000"
         "01000000"},
        {QVariant::fromValue(NSNotification("Name", {}, {{"key", 1}})), "ay",
         "0d00000083644e616d65f6a1636b657901"},
    };
    for (const auto &test : cases) {
        SCOPED_TRACE(std::string(test.value.typeName() ? test.value.typeName() : "nothing"));
        const Message message = sent({test.value});
        const qsizetype length = qstrlen(test.signature);
        EXPECT_TRUE(message.header.contains(static_cast<char>(length) + QByteArray(test.signature) + '\0'));
        EXPECT_EQ(message.body.toHex(), test.body);
    }
}
