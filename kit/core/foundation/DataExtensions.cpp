// SPDX-License-Identifier: MIT
#include "DozelyKit/core/foundation/DataExtensions.h"

#include <QCryptographicHash>

#include <limits>
#include <zlib.h>

namespace
{
constexpr qsizetype compressStep = 16384; // bytes

// zlib counts its input in 32 bits.
constexpr qsizetype longestInput = std::numeric_limits<uInt>::max();

// zlib never writes through next_in; it only lacks the const.
void setInput(z_stream &stream, const QByteArray &data)
{
    stream.next_in = reinterpret_cast<Bytef *>(const_cast<char *>(data.constData()));
    stream.avail_in = static_cast<uInt>(data.size());
}

// Points the stream at the buffer's free space, `step` bytes more of it when there is none.
void setOutput(z_stream &stream, QByteArray &buffer, qsizetype produced, qsizetype step)
{
    if (produced >= buffer.size())
        buffer.resize(buffer.size() + step);
    stream.next_out = reinterpret_cast<Bytef *>(buffer.data() + produced);
    stream.avail_out = static_cast<uInt>(buffer.size() - produced);
}

QByteArray cut(QByteArray buffer, qsizetype size)
{
    buffer.resize(size);
    buffer.squeeze();
    return buffer;
}
} // namespace

QByteArray zandorSoftwaresExtensions::compress(const QByteArray &data)
{
    if (data.isEmpty())
        return data;
    z_stream stream{};
    if (data.size() > longestInput || deflateInit(&stream, Z_DEFAULT_COMPRESSION) != Z_OK)
        return {};
    setInput(stream, data);
    QByteArray buffer(compressStep, Qt::Uninitialized);
    qsizetype produced = 0;
    do {
        setOutput(stream, buffer, produced, compressStep);
        deflate(&stream, Z_FINISH);
        produced = buffer.size() - stream.avail_out;
    } while (stream.avail_out == 0);
    deflateEnd(&stream);
    return cut(std::move(buffer), produced);
}

QByteArray zandorSoftwaresExtensions::uncompress(const QByteArray &data, qsizetype limit)
{
    if (data.isEmpty())
        return data;
    const auto half = static_cast<quint32>(data.size() / 2);
    QByteArray buffer(static_cast<quint32>(data.size() + data.size() / 2), Qt::Uninitialized);
    z_stream stream{};
    if (data.size() > longestInput || inflateInit(&stream) != Z_OK)
        return {};
    setInput(stream, data);
    qsizetype produced = 0;
    int status = Z_OK;
    while (status == Z_OK && (limit < 0 || produced <= limit)) {
        setOutput(stream, buffer, produced, half);
        status = inflate(&stream, Z_SYNC_FLUSH);
        produced = buffer.size() - stream.avail_out;
    }
    const bool ended = inflateEnd(&stream) == Z_OK;
    if (status != Z_STREAM_END || !ended || (limit >= 0 && produced > limit))
        return {};
    // An emptiness that was packed is data all the same: not null.
    return produced > 0 ? cut(std::move(buffer), produced) : QByteArray("");
}

QByteArray zandorSoftwaresExtensions::sha1Hash(const QByteArray &data)
{
    return QCryptographicHash::hash(data, QCryptographicHash::Sha1);
}

QByteArray zandorSoftwaresExtensions::md5Hash(const QByteArray &data)
{
    return QCryptographicHash::hash(data, QCryptographicHash::Md5);
}
