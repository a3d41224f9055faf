// SPDX-License-Identifier: MIT
#include "DozelyKit/update/UpdateAnswer_p.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <cstdint>
#include <cstdlib>

using namespace dozely;

namespace
{
int depthOf(const QVariant &value)
{
    int deepest = 0;
    if (value.typeId() == QMetaType::QVariantMap) {
        for (const QVariant &item : value.toMap())
            deepest = std::max(deepest, depthOf(item));
        return deepest + 1;
    }
    if (value.typeId() == QMetaType::QVariantList) {
        for (const QVariant &item : value.toList())
            deepest = std::max(deepest, depthOf(item));
        return deepest + 1;
    }
    return 0;
}

void require(bool condition)
{
    if (!condition)
        std::abort();
}
} // namespace

/// Whatever bytes come as the update server's answer: reading ends, a refusal says why, and what was read
/// keeps to the limits, to the rules of comparison, and to what a plain parser reads.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    const auto answer = UpdateAnswer::parse(bytes);
    if (!answer) {
        require(!answer.error().text.isEmpty());
        return 0;
    }
    require(size <= UpdateAnswer::largest && depthOf(*answer) <= UpdateAnswer::deepest);
    require(*answer == QJsonDocument::fromJson(bytes).object().toVariantMap());
    const bool isNewer = UpdateAnswer::isNewer(*answer, 41);
    require(!UpdateAnswer::isNewer(*answer, 0xffffffff)); // no 32-bit number is larger
    require(!isNewer || UpdateAnswer::isNewer(*answer, 40));
    require(answer->contains("Latest Version Number") || !UpdateAnswer::isNewer(*answer, 0));
    require(answer->contains("Latest Version String") || UpdateAnswer::versionString(*answer).isNull());
    const QUrl address = UpdateAnswer::downloadAddress(*answer);
    require(!address.isValid() || QUrl(QString::fromLatin1(address.toEncoded())).isValid());
    return 0;
}
