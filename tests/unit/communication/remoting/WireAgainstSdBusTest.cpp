// SPDX-License-Identifier: MIT
//
// What we write and read is what another implementation of D-Bus reads and writes: sd-bus at the other end of
// a pair of sockets.
#include "DozelyKit/communication/remoting/Handshake_p.h"
#include "DozelyKit/communication/remoting/WireMessage_p.h"
#include "DozelyKit/communication/remoting/WireValues_p.h"
#include "DozelyKit/core/dbus/ObjectPath_p.h"
#include "support/PrintTo.h"

#include <QDateTime>
#include <QTimeZone>

#include <gtest/gtest.h>

#include <array>
#include <poll.h>
#include <random>
#include <sys/socket.h>
#include <systemd/sd-bus.h>
#include <unistd.h>

using namespace dozely;

namespace
{
// ---- values by way of sd-bus, for the types that we write

bool append(sd_bus_message *message, const QVariant &value);

bool appendVariant(sd_bus_message *message, const QVariant &value, const char *type)
{
    return sd_bus_message_open_container(message, 'v', type) >= 0 && append(message, value) &&
           sd_bus_message_close_container(message) >= 0;
}

const char *typeOf(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::Bool:
        return "b";
    case QMetaType::Int:
        return "i";
    case QMetaType::UInt:
        return "u";
    case QMetaType::LongLong:
        return "x";
    case QMetaType::ULongLong:
        return "t";
    case QMetaType::Double:
        return "d";
    case QMetaType::QString:
        return "s";
    case QMetaType::QByteArray:
        return "ay";
    case QMetaType::QVariantList:
        return "av";
    case QMetaType::QVariantMap:
        return "a{sv}";
    default:
        return "(xis)";
    }
}

template<class Number>
bool appendNumber(sd_bus_message *message, char type, Number number)
{
    return sd_bus_message_append_basic(message, type, &number) >= 0;
}

bool appendText(sd_bus_message *message, const QString &text)
{
    return sd_bus_message_append_basic(message, 's', text.toUtf8().constData()) >= 0;
}

bool append(sd_bus_message *message, const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::Bool:
        return appendNumber<int>(message, 'b', value.toBool());
    case QMetaType::Int:
        return appendNumber<qint32>(message, 'i', value.toInt());
    case QMetaType::UInt:
        return appendNumber<quint32>(message, 'u', value.toUInt());
    case QMetaType::LongLong:
        return appendNumber<qint64>(message, 'x', value.toLongLong());
    case QMetaType::ULongLong:
        return appendNumber<quint64>(message, 't', value.toULongLong());
    case QMetaType::Double:
        return appendNumber<double>(message, 'd', value.toDouble());
    case QMetaType::QString:
        return appendText(message, value.toString());
    case QMetaType::QByteArray: {
        const QByteArray bytes = value.toByteArray();
        return sd_bus_message_append_array(message, 'y', bytes.constData(),
                                           static_cast<size_t>(bytes.size())) >= 0;
    }
    case QMetaType::QVariantList: {
        bool isWhole = sd_bus_message_open_container(message, 'a', "v") >= 0;
        for (const QVariant &each : value.toList())
            isWhole = isWhole && appendVariant(message, each, typeOf(each));
        return isWhole && sd_bus_message_close_container(message) >= 0;
    }
    case QMetaType::QVariantMap: {
        bool isWhole = sd_bus_message_open_container(message, 'a', "{sv}") >= 0;
        const QVariantMap map = value.toMap();
        for (auto entry = map.begin(); entry != map.end(); ++entry) {
            isWhole = isWhole && sd_bus_message_open_container(message, 'e', "sv") >= 0 &&
                      appendText(message, entry.key()) &&
                      appendVariant(message, entry.value(), typeOf(entry.value())) &&
                      sd_bus_message_close_container(message) >= 0;
        }
        return isWhole && sd_bus_message_close_container(message) >= 0;
    }
    default: {
        const QDateTime date = value.toDateTime();
        return sd_bus_message_append(message, "(xis)", static_cast<int64_t>(date.toMSecsSinceEpoch()),
                                     date.offsetFromUtc(), date.timeZone().id().constData()) >= 0;
    }
    }
}

template<class Number>
QVariant takeNumber(sd_bus_message *message, char type)
{
    Number number{};
    EXPECT_GT(sd_bus_message_read_basic(message, type, &number), 0);
    return QVariant::fromValue(number);
}

QVariant take(sd_bus_message *message);

QVariantMap takeEntries(sd_bus_message *message)
{
    QVariantMap map;
    EXPECT_GT(sd_bus_message_enter_container(message, 'a', "{sv}"), 0);
    while (sd_bus_message_enter_container(message, 'e', "sv") > 0) {
        const QString key = take(message).toString();
        map.insert(key, take(message));
        EXPECT_GE(sd_bus_message_exit_container(message), 0);
    }
    EXPECT_GE(sd_bus_message_exit_container(message), 0);
    return map;
}

QVariant take(sd_bus_message *message)
{
    char type = 0;
    const char *peeked = nullptr;
    EXPECT_GT(sd_bus_message_peek_type(message, &type, &peeked), 0);
    const QByteArray contents(peeked);
    switch (type) {
    case 'b':
        return takeNumber<int>(message, 'b').toBool();
    case 'i':
        return takeNumber<qint32>(message, 'i');
    case 'u':
        return takeNumber<quint32>(message, 'u');
    case 'x':
        return takeNumber<qlonglong>(message, 'x');
    case 't':
        return takeNumber<qulonglong>(message, 't');
    case 'd':
        return takeNumber<double>(message, 'd');
    case 's': {
        const char *text = nullptr;
        EXPECT_GT(sd_bus_message_read_basic(message, 's', static_cast<void *>(&text)), 0);
        return QString::fromUtf8(text);
    }
    case 'v': {
        EXPECT_GT(sd_bus_message_enter_container(message, 'v', contents.constData()), 0);
        const QVariant held = take(message);
        EXPECT_GE(sd_bus_message_exit_container(message), 0);
        return held;
    }
    case 'r': {
        int64_t milliseconds = 0;
        int32_t offset = 0;
        const char *zone = nullptr;
        EXPECT_GT(sd_bus_message_read(message, "(xis)", &milliseconds, &offset, &zone), 0);
        return QDateTime::fromMSecsSinceEpoch(milliseconds, QTimeZone(zone));
    }
    case 'a':
        break;
    default:
        ADD_FAILURE() << type;
        return {};
    }
    if (contents == "y") {
        const void *bytes = nullptr;
        size_t size = 0;
        EXPECT_GE(sd_bus_message_read_array(message, 'y', &bytes, &size), 0);
        return QByteArray(static_cast<const char *>(bytes), static_cast<qsizetype>(size));
    }
    if (contents == "{sv}")
        return takeEntries(message);
    QVariantList list;
    EXPECT_GT(sd_bus_message_enter_container(message, 'a', "v"), 0);
    while (sd_bus_message_at_end(message, false) == 0)
        list += take(message);
    EXPECT_GE(sd_bus_message_exit_container(message), 0);
    return list;
}

// ---- generated values

class Generator
{
public:
    QVariantList arguments()
    {
        QVariantList values;
        for (int count = below(6); count > 0; --count)
            values += value(0);
        return values;
    }

private:
    int below(int limit) { return static_cast<int>(m_random() % static_cast<quint64>(limit)); }

    QString text()
    {
        static const QStringList pieces{"", "a", "bc", "def", "ü", "€", "\U0001F600", "\x7f", "\n", "key"};
        QString text;
        for (int count = below(6); count > 0; --count)
            text += pieces[below(static_cast<int>(pieces.size()))];
        return text;
    }

    QVariant value(int depth)
    {
        constexpr int deepest = 5;
        switch (below(depth < deepest ? 12 : 9)) {
        case 0:
            return below(2) == 0;
        case 1:
            return static_cast<int>(m_random());
        case 2:
            return static_cast<uint>(m_random());
        case 3:
            return static_cast<qlonglong>(m_random());
        case 4:
            return static_cast<qulonglong>(m_random());
        case 5:
            return static_cast<double>(static_cast<qint64>(m_random())) / 1024;
        case 6:
            return text();
        case 7:
            return QByteArray(below(20), static_cast<char>(below(256)));
        case 8:
            return QDateTime::fromMSecsSinceEpoch(static_cast<qint64>(m_random() >> 22),
                                                  QTimeZone(below(2) == 0 ? "Europe/Paris" : "Asia/Tokyo"));
        case 9: {
            QVariantList list;
            for (int count = below(5); count > 0; --count)
                list += value(depth + 1);
            return list;
        }
        default: {
            QVariantMap map;
            for (int count = below(5); count > 0; --count)
                map.insert(text(), value(depth + 1));
            return map;
        }
        }
    }

    std::mt19937_64 m_random{20260314}; // the same values in each run
};

/// sd-bus as a client at the one end; the other is ours.
class WireAgainstSdBus : public testing::Test
{
protected:
    void SetUp() override
    {
        std::array<int, 2> ends{};
        ASSERT_EQ(::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()), 0);
        m_ours = ends[0];
        ASSERT_GE(sd_bus_new(&m_bus), 0);
        ASSERT_GE(sd_bus_set_fd(m_bus, ends[1], ends[1]), 0); // its own from now on
        ASSERT_GE(sd_bus_start(m_bus), 0);
        // It is let in by our handshake.
        Handshake handshake = Handshake::ofServer(::geteuid());
        auto state = Handshake::State::Going;
        for (int i = 0; i < 10 && state == Handshake::State::Going; ++i) {
            sd_bus_process(m_bus, nullptr);
            receive();
            QByteArray answer;
            state = handshake.take(&m_received, &answer);
            send(answer);
        }
        ASSERT_EQ(state, Handshake::State::Done);
        while (sd_bus_process(m_bus, nullptr) > 0) {
        }
        ASSERT_EQ(sd_bus_is_ready(m_bus), 1);
    }

    ~WireAgainstSdBus() override
    {
        sd_bus_close_unref(m_bus);
        ::close(m_ours);
    }

    void receive()
    {
        pollfd polled{m_ours, POLLIN, 0};
        ASSERT_EQ(::poll(&polled, 1, 20'000), 1);
        char buffer[65536];
        const ssize_t size = ::recv(m_ours, buffer, sizeof buffer, 0);
        ASSERT_GT(size, 0);
        m_received.append(buffer, size);
    }

    void send(const QByteArray &bytes) const
    {
        ASSERT_EQ(::send(m_ours, bytes.constData(), static_cast<size_t>(bytes.size()), MSG_NOSIGNAL),
                  bytes.size());
    }

    /// What came of a message that sd-bus has been given; one at a time.
    std::optional<WireMessage> sent(sd_bus_message *message)
    {
        uint64_t serial = 0; // without which it would want no reply
        EXPECT_GE(sd_bus_message_get_expect_reply(message) ? sd_bus_send(m_bus, message, &serial)
                                                           : sd_bus_send(m_bus, message, nullptr),
                  0);
        EXPECT_GE(sd_bus_flush(m_bus), 0);
        while (m_received.size() < WireMessage::headSize)
            receive();
        const auto size = static_cast<qsizetype>(WireMessage::sizeOf(m_received).value_or(0));
        while (m_received.size() < size)
            receive();
        return WireMessage::parse(std::exchange(m_received, {}));
    }

    /// What sd-bus makes of our message; null when it does not like it.
    sd_bus_message *taken(const WireMessage &message)
    {
        send(message.bytes());
        sd_bus_message *result = nullptr;
        for (int i = 0; i < 100 && !result; ++i) {
            if (sd_bus_process(m_bus, &result) < 0)
                break;
        }
        return result;
    }

    sd_bus *m_bus = nullptr;
    int m_ours = -1;
    QByteArray m_received;
};
} // namespace

TEST_F(WireAgainstSdBus, WhatItWritesIsReadAsItIs)
{
    Generator generator;
    for (int i = 0; i < 3000; ++i) {
        SCOPED_TRACE(i);
        const QVariantList values = generator.arguments();
        sd_bus_message *message = nullptr;
        ASSERT_GE(sd_bus_message_new_method_call(m_bus, &message, nullptr, "/object/17",
                                                 i % 2 == 0 ? "com.dozely.Object" : nullptr, "member_1"),
                  0);
        ASSERT_GE(sd_bus_message_set_expect_reply(message, i % 3 == 0), 0);
        for (const QVariant &value : values)
            ASSERT_TRUE(append(message, value));
        const auto read = sent(message);
        ASSERT_TRUE(read);
        EXPECT_EQ(read->type, WireMessage::Type::Call);
        EXPECT_EQ(read->path, "/object/17");
        EXPECT_EQ(read->interface, i % 2 == 0 ? "com.dozely.Object" : "");
        EXPECT_EQ(read->member, "member_1");
        EXPECT_EQ(read->expectsReply, i % 3 == 0);
        EXPECT_EQ(read->signature, sd_bus_message_get_signature(message, true));
        const auto readValues = WireValues::read(*read);
        ASSERT_TRUE(readValues) << qPrintable(readValues.error().text);
        EXPECT_EQ(*readValues, values);
        sd_bus_message_unref(message);
    }
}

TEST_F(WireAgainstSdBus, ItReadsWhatWeWriteAsItIs)
{
    Generator generator;
    for (quint32 i = 1; i <= 3000; ++i) {
        SCOPED_TRACE(i);
        const QVariantList values = generator.arguments();
        WireMessage written;
        written.serial = i;
        written.path = "/object/17";
        written.interface = i % 2 == 0 ? "com.dozely.Object" : "";
        written.member = "member_1";
        written.expectsReply = i % 3 == 0;
        ASSERT_TRUE(WireValues::write(values, &written));
        sd_bus_message *const read = taken(written);
        ASSERT_NE(read, nullptr);
        EXPECT_STREQ(sd_bus_message_get_path(read), "/object/17");
        EXPECT_EQ(QByteArray(sd_bus_message_get_interface(read)), written.interface);
        EXPECT_STREQ(sd_bus_message_get_member(read), "member_1");
        EXPECT_EQ(sd_bus_message_get_expect_reply(read), i % 3 == 0);
        EXPECT_EQ(sd_bus_message_get_signature(read, true), written.signature);
        QVariantList readValues;
        while (sd_bus_message_at_end(read, true) == 0)
            readValues += take(read);
        EXPECT_EQ(readValues, values);
        sd_bus_message_unref(read);
    }
}

TEST_F(WireAgainstSdBus, ItsRepliesAndErrorsAreReadAsTheyAre)
{
    WireMessage written;
    written.serial = 77;
    written.path = "/root";
    written.member = "pong";
    sd_bus_message *const call = taken(written);
    ASSERT_NE(call, nullptr);

    sd_bus_message *reply = nullptr;
    ASSERT_GE(sd_bus_message_new_method_return(call, &reply), 0);
    ASSERT_GE(sd_bus_message_append(reply, "o", "/object/1"), 0);
    auto read = sent(reply);
    ASSERT_TRUE(read);
    EXPECT_EQ(read->type, WireMessage::Type::Return);
    EXPECT_EQ(read->replySerial, 77U);
    EXPECT_EQ(WireValues::read(*read)->value(0).value<ObjectPath>().path, "/object/1");
    sd_bus_message_unref(reply);

    ASSERT_GE(sd_bus_message_new_method_errorf(call, &reply, "com.dozely.Error.Exception", "why: %d", 1), 0);
    read = sent(reply);
    ASSERT_TRUE(read);
    EXPECT_EQ(read->type, WireMessage::Type::Error);
    EXPECT_EQ(read->errorName, "com.dozely.Error.Exception");
    EXPECT_EQ(*WireValues::read(*read), QVariantList{"why: 1"});
    sd_bus_message_unref(reply);
    sd_bus_message_unref(call);
}

TEST_F(WireAgainstSdBus, NumbersOfEveryWidthAndPlainTextsAreReadAsTheNearestOfOurs)
{
    sd_bus_message *message = nullptr;
    ASSERT_GE(sd_bus_message_new_method_call(m_bus, &message, nullptr, "/", nullptr, "m"), 0);
    ASSERT_GE(sd_bus_message_append(message, "ynqasa{ss}vvv", 255, -3, 65535, 3, "a", "", "ccc", 2, "a", "b",
                                    "cc", "dd", "y", 7, "as", 1, "x", "v", "n", -9),
              0);
    const auto read = sent(message);
    ASSERT_TRUE(read);
    const auto values = WireValues::read(*read);
    ASSERT_TRUE(values) << qPrintable(values.error().text);
    EXPECT_EQ(*values, (QVariantList{255U, -3, 65535U, QVariantList{"a", "", "ccc"},
                                     QVariantMap{{"a", "b"}, {"cc", "dd"}}, 7U, QVariantList{"x"}, -9}));
    sd_bus_message_unref(message);
}
