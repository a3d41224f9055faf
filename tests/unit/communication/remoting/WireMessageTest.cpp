// SPDX-License-Identifier: MIT
#include "DozelyKit/communication/remoting/WireMessage_p.h"
#include "WireEncoder.h"
#include "support/PrintTo.h"

#include <gtest/gtest.h>

using namespace dozely;

using Type = WireMessage::Type;

namespace
{
constexpr char callType = 1;
constexpr char replyType = 2;
constexpr char errorType = 3;
constexpr char signalType = 4;

/// The fields of a call, to which a test adds more.
WireEncoder fieldsOfCall(bool isLittleEndian = true)
{
    WireEncoder fields(isLittleEndian);
    fields.field(1, "o").text("/root").field(3, "s").text("pong");
    return fields;
}

std::optional<WireMessage> callWith(WireEncoder fields, const QByteArray &body = {})
{
    return WireMessage::parse(WireEncoder::message(callType, fields.bytes(), body));
}

QByteArray head(quint32 fields, quint32 body, bool isLittleEndian = true)
{
    WireEncoder encoder(isLittleEndian);
    encoder.raw(isLittleEndian ? "l" : "B").raw(QByteArray("\1\0\1", 3));
    return encoder.u32(body).u32(1).u32(fields).bytes();
}
} // namespace

TEST(WireMessage, IsTheSameAfterTheWire)
{
    WireMessage written;
    written.serial = 0xfedcba98;
    written.path = "/object/17";
    written.interface = "com.dozely.Object";
    written.member = "postNotification";
    written.signature = "ssa{sv}";
    written.body = "any bytes, which nobody looks at";
    const QByteArray bytes = written.bytes();
    EXPECT_EQ(WireMessage::sizeOf(bytes.left(WireMessage::headSize)), static_cast<quint64>(bytes.size()));
    EXPECT_TRUE(WireMessage::isCall(bytes));
    const auto read = WireMessage::parse(bytes);
    ASSERT_TRUE(read);
    EXPECT_EQ(read->type, Type::Call);
    EXPECT_TRUE(read->expectsReply);
    EXPECT_EQ(read->serial, written.serial);
    EXPECT_EQ(read->replySerial, 0U);
    EXPECT_EQ(read->path, written.path);
    EXPECT_EQ(read->interface, written.interface);
    EXPECT_EQ(read->member, written.member);
    EXPECT_EQ(read->errorName, "");
    EXPECT_EQ(read->signature, written.signature);
    EXPECT_EQ(read->body, written.body);
    EXPECT_TRUE(read->isLittleEndian);
}

TEST(WireMessage, KnowsRepliesErrorsAndSignals)
{
    WireMessage written;
    written.serial = 2;
    written.replySerial = 0x80000001;
    written.type = Type::Return;
    auto read = WireMessage::parse(written.bytes());
    ASSERT_TRUE(read);
    EXPECT_EQ(read->type, Type::Return);
    EXPECT_EQ(read->replySerial, written.replySerial);
    EXPECT_FALSE(read->expectsReply);
    EXPECT_FALSE(WireMessage::isCall(written.bytes()));
    EXPECT_EQ(read->body, "");

    written.type = Type::Error;
    written.errorName = "com.dozely.Error.Exception";
    read = WireMessage::parse(written.bytes());
    ASSERT_TRUE(read);
    EXPECT_EQ(read->type, Type::Error);
    EXPECT_EQ(read->errorName, written.errorName);

    WireEncoder fields = fieldsOfCall();
    fields.field(2, "s").text("a.b");
    read = WireMessage::parse(WireEncoder::message(signalType, fields.bytes()));
    ASSERT_TRUE(read);
    EXPECT_EQ(read->type, Type::Signal);
}

TEST(WireMessage, MayWantNoReply)
{
    const QByteArray fields = fieldsOfCall().bytes();
    for (const char flags : {'\0', '\2', '\4', '\6'})
        EXPECT_TRUE(
            WireMessage::parse(WireEncoder::message(callType, fields, {}, true, flags))->expectsReply);
    for (const char flags : {'\1', '\3', '\7', '\xff'})
        EXPECT_FALSE(
            WireMessage::parse(WireEncoder::message(callType, fields, {}, true, flags))->expectsReply);
    WireMessage written;
    written.serial = 1;
    written.path = "/";
    written.member = "m";
    written.expectsReply = false;
    EXPECT_FALSE(WireMessage::parse(written.bytes())->expectsReply);
}

TEST(WireMessage, IsReadInBothByteOrders)
{
    for (const bool isLittleEndian : {true, false}) {
        WireEncoder fields = fieldsOfCall(isLittleEndian);
        fields.field(2, "s").text("com.dozely.Object").field(5, "u").u32(0x01020304).field(8, "g");
        fields.signature("ay");
        const QByteArray bytes = WireEncoder::message(callType, fields.bytes(), "body", isLittleEndian);
        EXPECT_EQ(WireMessage::sizeOf(bytes), static_cast<quint64>(bytes.size()));
        const auto read = WireMessage::parse(bytes);
        ASSERT_TRUE(read);
        EXPECT_EQ(read->isLittleEndian, isLittleEndian);
        EXPECT_EQ(read->serial, 7U);
        EXPECT_EQ(read->path, "/root");
        EXPECT_EQ(read->interface, "com.dozely.Object");
        EXPECT_EQ(read->member, "pong");
        EXPECT_EQ(read->replySerial, 0x01020304U);
        EXPECT_EQ(read->signature, "ay");
        EXPECT_EQ(read->body, "body");
    }
}

TEST(WireMessage, TellsItsSizeAtItsHead)
{
    for (const bool isLittleEndian : {true, false}) {
        EXPECT_EQ(WireMessage::sizeOf(head(0, 0, isLittleEndian)), 16U);
        EXPECT_EQ(WireMessage::sizeOf(head(13, 7, isLittleEndian)), 16U + 16 + 7);
        EXPECT_EQ(WireMessage::sizeOf(head(16, 0x12345678, isLittleEndian)), 16U + 16 + 0x12345678);
        EXPECT_EQ(WireMessage::sizeOf(head(65536, 1, isLittleEndian)), 16U + 65536 + 1);
        EXPECT_FALSE(WireMessage::sizeOf(head(65537, 1, isLittleEndian)));
    }
}

TEST(WireMessage, IsNotDeceivedBySizesThatOverflow)
{
    for (const bool isLittleEndian : {true, false}) {
        EXPECT_EQ(WireMessage::sizeOf(head(8, 0xffffffff, isLittleEndian)), 24U + quint64{0xffffffff});
        EXPECT_FALSE(WireMessage::sizeOf(head(0xffffffff, 0, isLittleEndian)));
        EXPECT_FALSE(WireMessage::sizeOf(head(0xfffffff8, 0xffffffff, isLittleEndian)));
        EXPECT_FALSE(WireMessage::parse(head(8, 0xffffffff, isLittleEndian) + QByteArray(8, '\0')));
    }
}

TEST(WireMessage, IsNoneWhenItsHeadIsDamaged)
{
    const QByteArray good = head(8, 0);
    ASSERT_TRUE(WireMessage::sizeOf(good));
    EXPECT_FALSE(WireMessage::sizeOf(good.chopped(1)));
    EXPECT_FALSE(WireMessage::sizeOf(""));
    EXPECT_FALSE(WireMessage::sizeOf("GET / HTTP/1.0\r\n\r\n"));
    const struct {
        qsizetype at;
        QByteArray bytes;
    } faults[] = {{0, "b"},    {0, "L"},  {0, QByteArray(1, '\0')}, {1, QByteArray(1, '\0')}, {1, "\5"},
                  {1, "\xff"}, {3, "\2"}, {3, QByteArray(1, '\0')}, {8, QByteArray(4, '\0')}};
    for (const auto &fault : faults)
        EXPECT_FALSE(WireMessage::sizeOf(QByteArray(good).replace(fault.at, fault.bytes.size(), fault.bytes)))
            << fault.at;
}

TEST(WireMessage, IsTakenWholeOrNotAtAll)
{
    WireEncoder fields = fieldsOfCall();
    fields.field(8, "g").signature("s");
    const QByteArray whole = WireEncoder::message(callType, fields.bytes(), "body");
    ASSERT_TRUE(WireMessage::parse(whole));
    for (qsizetype size = 0; size < whole.size(); ++size)
        EXPECT_FALSE(WireMessage::parse(whole.left(size))) << size;
    EXPECT_FALSE(WireMessage::parse(whole + '\0'));
}

TEST(WireMessage, SurvivesAnyDamage)
{
    WireEncoder fields = fieldsOfCall();
    fields.field(77, "a{sv}").u32(0).align(8).field(8, "g").signature("s");
    const QByteArray whole = WireEncoder::message(callType, fields.bytes(), "body");
    ASSERT_TRUE(WireMessage::parse(whole));
    int taken = 0;
    for (qsizetype at = 0; at < whole.size(); ++at) {
        for (int byte = 0; byte < 256; ++byte) {
            const auto read = WireMessage::parse(QByteArray(whole).replace(at, 1, QByteArray(1, char(byte))));
            taken += read ? 1 : 0;
            EXPECT_TRUE(!read || read->path.startsWith('/'));
        }
    }
    EXPECT_GT(taken, 0);
    EXPECT_LT(taken, whole.size() * 256);
}

TEST(WireMessage, SkipsFieldsThatItDoesNotKnowWhateverTheirType)
{
    const auto isTaken = [](const QByteArray &type, const QByteArray &value) {
        // At each place of an alignment, and with fields behind it.
        bool isTaken = true;
        for (int before = 0; before < 8; ++before) {
            WireEncoder encoder;
            encoder.field(200, "s").text(QByteArray(before, 'x'));
            encoder.field(42, type);
            encoder.raw(value).field(1, "o").text("/root").field(3, "s").text("pong");
            const auto read = callWith(encoder);
            isTaken = isTaken && read && read->path == "/root" && read->member == "pong";
        }
        return isTaken;
    };
    const QByteArray zero(1, '\0');
    // With a type of one letter the value begins at the fourth byte of the field, with one of two at the
    // fifth.
    EXPECT_TRUE(isTaken("y", "x"));
    EXPECT_TRUE(isTaken("b", WireEncoder().u32(1).bytes()));
    EXPECT_TRUE(isTaken("n", "xx"));
    EXPECT_TRUE(isTaken("q", "xx"));
    EXPECT_TRUE(isTaken("i", "xxxx"));
    EXPECT_TRUE(isTaken("h", "xxxx"));
    EXPECT_TRUE(isTaken("x", zero.repeated(4) + "xxxxxxxx"));
    EXPECT_TRUE(isTaken("t", zero.repeated(4) + "xxxxxxxx"));
    EXPECT_TRUE(isTaken("d", zero.repeated(4) + "xxxxxxxx"));
    EXPECT_TRUE(isTaken("s", WireEncoder().text("text").bytes()));
    EXPECT_TRUE(isTaken("o", WireEncoder().text("/path").bytes()));
    EXPECT_TRUE(isTaken("g", WireEncoder().signature("a{sv}").bytes()));
    EXPECT_TRUE(isTaken("v", WireEncoder().signature("y").raw("x").bytes()));
    EXPECT_TRUE(isTaken("v", WireEncoder().signature("v").signature("y").raw("x").bytes()));
    EXPECT_TRUE(isTaken("ay", zero.repeated(3) + WireEncoder().u32(3).raw("abc").bytes()));
    EXPECT_TRUE(isTaken("as", zero.repeated(3) + WireEncoder().u32(6).text("a").bytes()));
    EXPECT_TRUE(isTaken("(yy)", zero + "xx"));
    EXPECT_TRUE(isTaken("(y(ys))", zero.repeated(6) + "x" + zero.repeated(7) + "x" + zero.repeated(3) +
                                       WireEncoder().text("a").bytes()));

    EXPECT_FALSE(isTaken("", ""));
    EXPECT_FALSE(isTaken("yy", "xx"));
    EXPECT_FALSE(isTaken("()", ""));
    EXPECT_FALSE(isTaken("a", zero.repeated(12)));
    EXPECT_FALSE(isTaken("{sv}", zero.repeated(8)));
    EXPECT_FALSE(isTaken("z", zero.repeated(8)));
    EXPECT_FALSE(isTaken("v", WireEncoder().signature("yy").raw("xx").bytes()));
    EXPECT_FALSE(isTaken("v", WireEncoder().signature("").bytes()));
    EXPECT_FALSE(isTaken("s", WireEncoder().u32(0x7fffffff).bytes()));
    EXPECT_FALSE(isTaken("s", WireEncoder().text(QByteArray("a\0b", 3)).bytes()));
    EXPECT_FALSE(isTaken("ay", zero.repeated(3) + WireEncoder().u32(0xffffffff).bytes()));
    EXPECT_FALSE(isTaken("x", "1234xxxxxxxx")) << "the padding is zero";
}

TEST(WireMessage, SkipsSixtyFourVariantsAndNoMore)
{
    const auto isTaken = [](int levels) {
        WireEncoder fields = fieldsOfCall();
        fields.field(42, "v");
        for (int i = 1; i < levels; ++i)
            fields.signature("v");
        return callWith(fields.signature("y").raw("x")).has_value();
    };
    EXPECT_TRUE(isTaken(64));
    EXPECT_FALSE(isTaken(65));
    EXPECT_FALSE(isTaken(15'000));
}

TEST(WireMessage, TakesNoDescriptors)
{
    WireEncoder none = fieldsOfCall();
    EXPECT_TRUE(callWith(none.field(9, "u").u32(0)));
    WireEncoder one = fieldsOfCall();
    EXPECT_FALSE(callWith(one.field(9, "u").u32(1)));
    WireEncoder many = fieldsOfCall();
    EXPECT_FALSE(callWith(many.field(9, "u").u32(0xffffffff)));
    WireEncoder odd = fieldsOfCall();
    EXPECT_FALSE(callWith(odd.field(9, "y").raw(QByteArray(1, '\0'))));
}

TEST(WireMessage, TakesFieldsOfTheirTypeAlone)
{
    for (const quint8 code : {1, 2, 3, 4}) {
        for (const char *const type : {"s", "o", "g", "v"}) {
            WireEncoder fields = fieldsOfCall();
            const QByteArray value = code == 1 ? "/root" : code == 3 ? "pong" : "a.b";
            fields.field(code, type);
            const bool isRight = QByteArrayView(type) == (code == 1 ? "o" : "s");
            EXPECT_EQ(callWith(fields.text(value)).has_value(), isRight) << int(code) << type;
        }
    }
    WireEncoder serial = fieldsOfCall();
    EXPECT_FALSE(callWith(serial.field(5, "i").u32(1)));
    WireEncoder zero = fieldsOfCall();
    EXPECT_FALSE(callWith(zero.field(5, "u").u32(0)));
    WireEncoder signature = fieldsOfCall();
    EXPECT_FALSE(callWith(signature.field(8, "s").text("s")));
}

TEST(WireMessage, HasTheFieldsThatItsTypeNeeds)
{
    const auto isTaken = [](char type, WireEncoder fields) {
        return WireMessage::parse(WireEncoder::message(type, fields.bytes())).has_value();
    };
    EXPECT_TRUE(isTaken(callType, fieldsOfCall()));
    EXPECT_FALSE(isTaken(callType, WireEncoder()));
    EXPECT_FALSE(isTaken(callType, WireEncoder().field(1, "o").text("/")));
    EXPECT_FALSE(isTaken(callType, WireEncoder().field(3, "s").text("m")));
    EXPECT_TRUE(isTaken(replyType, WireEncoder().field(5, "u").u32(1)));
    EXPECT_FALSE(isTaken(replyType, fieldsOfCall()));
    EXPECT_TRUE(isTaken(errorType, WireEncoder().field(5, "u").u32(1).field(4, "s").text("a.b")));
    EXPECT_FALSE(isTaken(errorType, WireEncoder().field(5, "u").u32(1)));
    EXPECT_FALSE(isTaken(errorType, WireEncoder().field(4, "s").text("a.b")));
    EXPECT_FALSE(isTaken(signalType, fieldsOfCall()));
}

TEST(WireMessage, TakesPathsAndNamesThatAreOnes)
{
    const auto isPath = [](const QByteArray &path) {
        return callWith(WireEncoder().field(1, "o").text(path).field(3, "s").text("m")).has_value();
    };
    for (const char *const path : {"/", "/a", "/a/b_1", "/object/17"})
        EXPECT_TRUE(isPath(path)) << path;
    for (const char *const path : {"", "a", "//", "/a/", "/a//b", "/a-b", "/a b", "/\xc3\xbc", "/a.b"})
        EXPECT_FALSE(isPath(path)) << path;
    const auto isMember = [](const QByteArray &member) {
        return callWith(WireEncoder().field(1, "o").text("/").field(3, "s").text(member)).has_value();
    };
    for (const QByteArray &member : {QByteArray("m"), QByteArray("a_B1"), QByteArray(255, 'm')})
        EXPECT_TRUE(isMember(member)) << member.constData();
    for (const QByteArray &member : {QByteArray(), QByteArray("a.b"), QByteArray("a b"), QByteArray("a:"),
                                     QByteArray("\xc3\xbc"), QByteArray(256, 'm')})
        EXPECT_FALSE(isMember(member)) << member.constData();
    const auto isInterface = [](const QByteArray &interface) {
        return callWith(fieldsOfCall().field(2, "s").text(interface)).has_value();
    };
    EXPECT_TRUE(isInterface("org.freedesktop.DBus"));
    for (const QByteArray &interface :
         {QByteArray(), QByteArray("a b"), QByteArray("a/b"), QByteArray(256, 'i')})
        EXPECT_FALSE(isInterface(interface)) << interface.constData();
}

TEST(WireMessage, EndsItsFieldsWhereItSays)
{
    const QByteArray fields = fieldsOfCall().bytes();
    QByteArray longer = WireEncoder::message(callType, fields, QByteArray(16, '\0'));
    longer[12] = static_cast<char>(fields.size() - 1);
    EXPECT_FALSE(WireMessage::parse(longer));
    // The last field reaches into the body.
    WireEncoder reaching = fieldsOfCall();
    reaching.field(42, "s").u32(8);
    EXPECT_FALSE(WireMessage::parse(WireEncoder::message(callType, reaching.bytes(), "12345678\0")));
}

TEST(WireMessage, HasZeroesBetweenItsFields)
{
    const QByteArray bytes = WireEncoder::message(callType, fieldsOfCall().bytes());
    const qsizetype padding = bytes.indexOf("/root") + 6;
    ASSERT_EQ(bytes[padding], '\0');
    ASSERT_TRUE(WireMessage::parse(bytes));
    EXPECT_FALSE(WireMessage::parse(QByteArray(bytes).replace(padding, 1, "x")));
    EXPECT_FALSE(WireMessage::parse(QByteArray(bytes).replace(bytes.size() - 1, 1, "x")));
}
