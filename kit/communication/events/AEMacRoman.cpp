// SPDX-License-Identifier: MIT
#include "DozelyKit/communication/events/AEMacRoman_p.h"

#include <algorithm>
#include <array>
#include <memory>
#include <unicode/ucnv.h>

namespace dozely
{

namespace
{
using Table = std::array<char16_t, 256>;

/// What the 256 bytes mean.
const Table &characters()
{
    static const Table table = [] {
        UErrorCode error = U_ZERO_ERROR;
        const std::unique_ptr<UConverter, decltype(&ucnv_close)> converter(ucnv_open("macintosh", &error),
                                                                           &ucnv_close);
        std::array<char, 256> bytes;
        for (size_t i = 0; i < bytes.size(); ++i)
            bytes[i] = static_cast<char>(i);
        Table decoded{};
        ucnv_toUChars(converter.get(), decoded.data(), static_cast<int32_t>(decoded.size()), bytes.data(),
                      static_cast<int32_t>(bytes.size()), &error);
        return decoded;
    }();
    return table;
}

struct Encoding {
    char16_t character;
    char byte;
};

/// The table above the other way round, in order of the characters.
const std::array<Encoding, 256> &encodings()
{
    static const std::array<Encoding, 256> table = [] {
        std::array<Encoding, 256> all{};
        for (size_t i = 0; i < all.size(); ++i)
            all[i] = {characters()[i], static_cast<char>(i)};
        std::sort(all.begin(), all.end(),
                  [](const Encoding &a, const Encoding &b) { return a.character < b.character; });
        return all;
    }();
    return table;
}

char encodedCharacter(char16_t character)
{
    const auto &table = encodings();
    const auto found = std::lower_bound(table.begin(), table.end(), character,
                                        [](const Encoding &a, char16_t b) { return a.character < b; });
    return found != table.end() && found->character == character ? found->byte : '?';
}
} // namespace

QString AEMacRoman::decoded(const QByteArray &bytes)
{
    QString text(bytes.size(), Qt::Uninitialized);
    std::transform(bytes.begin(), bytes.end(), text.begin(),
                   [](char byte) { return QChar(characters()[static_cast<unsigned char>(byte)]); });
    return text;
}

QByteArray AEMacRoman::encoded(const QString &text)
{
    const QString composed = text.normalized(QString::NormalizationForm_C);
    QByteArray bytes;
    bytes.reserve(composed.size());
    for (qsizetype i = 0; i < composed.size(); ++i) {
        bytes.append(encodedCharacter(composed[i].unicode()));
        const bool isPair =
            composed[i].isHighSurrogate() && i + 1 < composed.size() && composed[i + 1].isLowSurrogate();
        i += isPair ? 1 : 0; // one character, one question mark
    }
    return bytes;
}

} // namespace dozely
