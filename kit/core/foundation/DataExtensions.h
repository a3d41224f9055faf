// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Export.h"

#include <QByteArray>

/// Byte buffers. A null QByteArray is "no data". All functions are stateless and may be called from any
/// thread.
namespace zandorSoftwaresExtensions
{
/// One zlib stream (RFC 1950) at the default level; empty data is returned as it is.
DOZELYKIT_EXPORT QByteArray compress(const QByteArray &data);

/// The inverse of compress; null when `data` is not one complete zlib stream. Empty data is returned as it
/// is. Deflate expands at most 1032 times, so the result is bounded by the size of `data`; blocks from
/// untrusted places pass a `limit` in bytes, beyond which the result is null.
DOZELYKIT_EXPORT QByteArray uncompress(const QByteArray &data, qsizetype limit = -1);

/// The 20-byte SHA-1 digest (FIPS 180-4), raw. An identifier, not a protection.
DOZELYKIT_EXPORT QByteArray sha1Hash(const QByteArray &data);

/// The 16-byte MD5 digest (RFC 1321), raw. An identifier, not a protection.
DOZELYKIT_EXPORT QByteArray md5Hash(const QByteArray &data);
} // namespace zandorSoftwaresExtensions
