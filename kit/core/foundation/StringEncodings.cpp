// SPDX-License-Identifier: MIT
#include "DozelyKit/core/foundation/StringExtensions.h"

#include <algorithm>
#include <limits>
#include <memory>
#include <unicode/ucnv.h>
#include <unicode/ucnv_err.h>

namespace
{
// ICU's name of an encoding, null for one that is not known. Text of 16 or 32 bits a unit without a byte
// order mark is big-endian (RFC 2781).
const char *converterName(quint64 encoding)
{
    using namespace zandorSoftwaresExtensions;
    switch (encoding) {
    case NSUTF8StringEncoding:
        return "UTF-8";
    case NSISOLatin1StringEncoding:
        return "ISO-8859-1";
    case NSISOLatin2StringEncoding:
        return "ISO-8859-2";
    case NSUTF16StringEncoding:
        return "UTF-16";
    case NSWindowsCP1252StringEncoding:
        return "windows-1252";
    case NSMacOSRomanStringEncoding:
        return "macintosh";
    case NSUTF16BigEndianStringEncoding:
        return "UTF-16BE";
    case NSUTF16LittleEndianStringEncoding:
        return "UTF-16LE";
    case NSUTF32StringEncoding:
        return "UTF-32";
    default:
        return nullptr;
    }
}

QString fromAscii(const QByteArray &data)
{
    constexpr unsigned char highest = 127;
    const bool decodes = std::all_of(data.begin(), data.end(),
                                     [](char byte) { return static_cast<unsigned char>(byte) <= highest; });
    return decodes ? QString::fromLatin1(data) : QString();
}

// Null at the first byte that does not decode.
QString fromConverter(const QByteArray &data, const char *name)
{
    UErrorCode error = U_ZERO_ERROR;
    const std::unique_ptr<UConverter, decltype(&ucnv_close)> converter(ucnv_open(name, &error), &ucnv_close);
    ucnv_setToUCallBack(converter.get(), UCNV_TO_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &error);
    // No encoding here makes more than one UTF-16 unit of a byte.
    QString text(data.size(), Qt::Uninitialized);
    const int32_t length = ucnv_toUChars(converter.get(), reinterpret_cast<UChar *>(text.data()),
                                         static_cast<int32_t>(text.size()), data.constData(),
                                         static_cast<int32_t>(data.size()), &error);
    if (U_FAILURE(error))
        return {};
    text.resize(length);
    return text;
}
} // namespace

QString zandorSoftwaresExtensions::stringWithData(const QByteArray &data, quint64 encoding)
{
    const char *const name = converterName(encoding);
    if ((!name && encoding != NSASCIIStringEncoding) || data.size() > std::numeric_limits<int32_t>::max())
        return {};
    if (data.isEmpty())
        return QStringLiteral("");
    return name ? fromConverter(data, name) : fromAscii(data);
}
