// SPDX-License-Identifier: MIT
#include "DozelyKit/communication/remoting/Handshake_p.h"
#include "DozelyKit/communication/remoting/WireMessage_p.h"
#include "DozelyKit/communication/remoting/WireValues_p.h"

#include <algorithm>
#include <cstdint>

using namespace dozely;

namespace
{
constexpr quint64 largestMessage = 256 << 10;

void require(bool holds)
{
    if (!holds)
        __builtin_trap();
}

/// What can be read can be written, and is the same when it is read again.
void checkValues(const QVariantList &values)
{
    WireMessage message;
    message.serial = 1;
    message.path = "/";
    message.member = "M";
    if (!WireValues::write(values, &message))
        return; // larger than what came: variants stand where there were none
    const auto parsed = WireMessage::parse(message.bytes());
    require(parsed.has_value());
    const auto again = WireValues::read(*parsed);
    require(again.ok());
    require(again->size() == values.size());
}

/// Messages, the last of which may be unfinished.
void checkMessages(const QByteArray &bytes)
{
    for (qsizetype at = 0; bytes.size() - at >= WireMessage::headSize;) {
        const auto size = WireMessage::sizeOf(QByteArrayView(bytes).sliced(at));
        if (!size || *size > largestMessage || *size > static_cast<quint64>(bytes.size() - at))
            return;
        const auto message = WireMessage::parse(bytes.mid(at, static_cast<qsizetype>(*size)));
        if (!message)
            return;
        if (const auto values = WireValues::read(*message); values)
            checkValues(*values);
        at += static_cast<qsizetype>(*size);
    }
}
} // namespace

// What a stranger writes onto our socket, in pieces. The first byte says which side of the handshake he is
// on, the second how large the pieces are.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size < 2)
        return 0;
    const bool isClient = (data[0] & 1) == 0;
    const qsizetype pieceSize = data[1] + 1;
    const QByteArray bytes(reinterpret_cast<const char *>(data + 2), static_cast<qsizetype>(size - 2));

    Handshake handshake = isClient ? Handshake::ofServer(1000) : Handshake::ofClient();
    QByteArray held;
    QByteArray answers;
    qsizetype at = 0;
    auto state = Handshake::State::Going;
    while (state == Handshake::State::Going && at < bytes.size()) {
        held += bytes.mid(at, pieceSize);
        at += pieceSize;
        state = handshake.take(&held, &answers);
        require(held.size() <= Handshake::maximumLine + pieceSize);
    }
    require(answers.size() <= Handshake::maximumLines * 64);
    if (state == Handshake::State::Done)
        checkMessages(held + bytes.mid(std::min(at, bytes.size())));
    return 0;
}
