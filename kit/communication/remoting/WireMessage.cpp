// SPDX-License-Identifier: MIT
#include "DozelyKit/communication/remoting/WireMessage_p.h"

#include "DozelyKit/communication/remoting/WireCursor_p.h"
#include "DozelyKit/communication/remoting/WireTypes_p.h"

#include <algorithm>

namespace dozely
{

namespace
{
constexpr char littleEndian = 'l';
constexpr char bigEndian = 'B';
constexpr char protocolVersion = 1;
constexpr quint8 noReplyExpected = 0x1; // of the flags; the others mean nothing on a stream
constexpr qsizetype boundary = 8;       // of the body, and of each field
constexpr quint32 longestFields = 64 << 10;

enum Field : quint8 {
    Path = 1,
    Interface = 2,
    Member = 3,
    ErrorName = 4,
    ReplySerial = 5,
    Signature = 8,
    Descriptors = 9,
};

quint64 padded(quint64 size)
{
    return (size + boundary - 1) / boundary * boundary;
}

bool isWordCharacter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
}

/// A name of words between dots, or one word.
bool isName(QByteArrayView name, bool hasDots)
{
    constexpr qsizetype longest = 255;
    return !name.isEmpty() && name.size() <= longest && std::all_of(name.begin(), name.end(), [=](char c) {
        return isWordCharacter(c) || (hasDots && (c == '.' || c == '-'));
    });
}

/// Reads the fields of a header.
class FieldReader
{
public:
    FieldReader(WireCursor &cursor, WireMessage &message) : m_cursor(cursor), m_message(message) {}

    bool field()
    {
        quint8 code = 0;
        QByteArrayView type;
        if (!m_cursor.align(boundary) || !m_cursor.number(&code) || !m_cursor.signature(&type))
            return false;
        switch (code) {
        case Path:
            return type == "o" && text(&m_message.path) && WireTypes::isPath(m_message.path);
        case Interface:
            return type == "s" && text(&m_message.interface) && isName(m_message.interface, true);
        case Member:
            return type == "s" && text(&m_message.member) && isName(m_message.member, false);
        case ErrorName:
            return type == "s" && text(&m_message.errorName) && isName(m_message.errorName, true);
        case ReplySerial:
            return type == "u" && m_cursor.number(&m_message.replySerial) && m_message.replySerial != 0;
        case Signature:
            return type == "g" && signature();
        case Descriptors: {
            quint32 count = 0;
            return type == "u" && m_cursor.number(&count) && count == 0; // none was agreed on
        }
        default:
            return WireTypes::skip(m_cursor, type); // whoever is newer than we are may say more
        }
    }

private:
    bool text(QByteArray *result)
    {
        QByteArrayView view;
        if (!m_cursor.text(&view))
            return false;
        *result = view.toByteArray();
        return true;
    }

    bool signature()
    {
        QByteArrayView view;
        if (!m_cursor.signature(&view))
            return false;
        m_message.signature = view.toByteArray();
        return true;
    }

    WireCursor &m_cursor;
    WireMessage &m_message;
};

bool isComplete(const WireMessage &message)
{
    switch (message.type) {
    case WireMessage::Type::Call:
        return !message.path.isEmpty() && !message.member.isEmpty();
    case WireMessage::Type::Return:
        return message.replySerial != 0;
    case WireMessage::Type::Error:
        return message.replySerial != 0 && !message.errorName.isEmpty();
    case WireMessage::Type::Signal:
        return !message.path.isEmpty() && !message.interface.isEmpty() && !message.member.isEmpty();
    }
    return false;
}

/// Appends the header of a message to bytes that may hold others.
class HeaderWriter
{
public:
    explicit HeaderWriter(QByteArray *bytes) : m_bytes(*bytes), m_begin(bytes->size()) {}

    void write(const WireMessage &message)
    {
        m_bytes += littleEndian;
        m_bytes += static_cast<char>(message.type);
        m_bytes += static_cast<char>(message.expectsReply ? 0 : noReplyExpected);
        m_bytes += protocolVersion;
        number(static_cast<quint32>(message.body.size()));
        number(message.serial);
        number(0); // the length of the fields, once it is known
        text(Path, 'o', message.path);
        text(Interface, 's', message.interface);
        text(Member, 's', message.member);
        text(ErrorName, 's', message.errorName);
        if (message.replySerial != 0) {
            begin(ReplySerial, 'u');
            number(message.replySerial);
        }
        if (!message.signature.isEmpty()) {
            begin(Signature, 'g');
            m_bytes += static_cast<char>(message.signature.size());
            m_bytes += message.signature;
            m_bytes += '\0';
        }
        const auto fields = static_cast<quint32>(size() - WireMessage::headSize);
        qToLittleEndian(fields, m_bytes.data() + m_begin + 12);
        align();
    }

private:
    qsizetype size() const { return m_bytes.size() - m_begin; }

    void align()
    {
        m_bytes.append(static_cast<qsizetype>(padded(static_cast<quint64>(size()))) - size(), '\0');
    }

    void number(quint32 value)
    {
        char bytes[sizeof value];
        qToLittleEndian(value, bytes);
        m_bytes.append(bytes, sizeof bytes);
    }

    void begin(Field field, char type)
    {
        align();
        m_bytes += static_cast<char>(field);
        m_bytes += '\1';
        m_bytes += type;
        m_bytes += '\0';
    }

    void text(Field field, char type, const QByteArray &value)
    {
        if (value.isEmpty())
            return;
        begin(field, type);
        number(static_cast<quint32>(value.size()));
        m_bytes += value;
        m_bytes += '\0';
    }

    QByteArray &m_bytes;
    const qsizetype m_begin;
};
} // namespace

std::optional<quint64> WireMessage::sizeOf(QByteArrayView head)
{
    if (head.size() < headSize || (head[0] != littleEndian && head[0] != bigEndian) || head[1] < 1 ||
        head[1] > 4 || head[3] != protocolVersion)
        return {};
    WireCursor cursor(head.sliced(4), head[0] == littleEndian);
    quint32 body = 0;
    quint32 serial = 0;
    quint32 fields = 0;
    if (!cursor.number(&body) || !cursor.number(&serial) || !cursor.number(&fields) || serial == 0 ||
        fields > longestFields)
        return {};
    return headSize + padded(fields) + body;
}

std::optional<WireMessage> WireMessage::parse(const QByteArray &message)
{
    const auto size = sizeOf(message);
    if (!size || *size != static_cast<quint64>(message.size()))
        return {};
    WireMessage result;
    result.isLittleEndian = message[0] == littleEndian;
    result.type = static_cast<Type>(message[1]);
    result.expectsReply = result.type == Type::Call && (message[2] & noReplyExpected) == 0;
    WireCursor cursor(message, result.isLittleEndian);
    QByteArrayView front;
    quint32 body = 0;
    quint32 fields = 0;
    if (!cursor.bytes(4, &front) || !cursor.number(&body) || !cursor.number(&result.serial) ||
        !cursor.number(&fields))
        return {};
    FieldReader reader(cursor, result);
    const auto end = headSize + static_cast<qsizetype>(fields);
    while (cursor.position() < end) {
        if (!reader.field())
            return {};
    }
    if (cursor.position() != end || !cursor.align(boundary) || !isComplete(result))
        return {};
    result.body = message.last(body);
    return result;
}

bool WireMessage::isSound() const
{
    return isComplete(*this) && (path.isEmpty() || WireTypes::isPath(path)) &&
           (interface.isEmpty() || isName(interface, true)) && (member.isEmpty() || isName(member, false)) &&
           (errorName.isEmpty() || isName(errorName, true));
}

void WireMessage::appendTo(QByteArray *bytes) const
{
    constexpr qsizetype roomForHeader = 256;
    bytes->reserve(bytes->size() + roomForHeader + body.size());
    HeaderWriter(bytes).write(*this);
    *bytes += body;
}

} // namespace dozely
