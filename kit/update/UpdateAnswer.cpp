// SPDX-License-Identifier: MIT
#include "DozelyKit/update/UpdateAnswer_p.h"

#include "DozelyKit/core/foundation/IntegerValue.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

namespace dozely
{

namespace
{
/// How many brackets are open at once in what may be JSON; those in texts do not count. The parser calls
/// itself for each, so this is looked at first. Attack: 100,000 lists within one another.
int depthOf(const QByteArray &data)
{
    int depth = 0;
    int deepest = 0;
    bool isText = false;
    for (qsizetype i = 0; i < data.size(); ++i) {
        const char c = data.at(i);
        if (isText && c == '\\')
            ++i;
        else if (c == '"')
            isText = !isText;
        else if (!isText && (c == '[' || c == '{'))
            deepest = std::max(deepest, ++depth);
        else if (!isText && (c == ']' || c == '}'))
            --depth;
    }
    return deepest;
}
} // namespace

Result<QVariantMap> UpdateAnswer::parse(const QByteArray &data)
{
    if (data.size() > largest)
        return Error{QString("is larger than %1 bytes").arg(largest)};
    if (depthOf(data) > deepest)
        return Error{QString("is nested deeper than %1 levels").arg(deepest)};
    QJsonParseError problem{};
    const QJsonDocument document = QJsonDocument::fromJson(data, &problem);
    if (problem.error != QJsonParseError::NoError)
        return Error{QString("is not JSON: %1 at %2").arg(problem.errorString()).arg(problem.offset)};
    if (!document.isObject())
        return Error{"is not a JSON object"};
    return document.object().toVariantMap();
}

bool UpdateAnswer::isNewer(const QVariantMap &answer, quint64 installed)
{
    return installed < static_cast<quint32>(integerValue(answer.value("Latest Version Number")));
}

QString UpdateAnswer::versionString(const QVariantMap &answer)
{
    const QVariant text = answer.value("Latest Version String");
    return text.typeId() == QMetaType::QString ? text.toString() : QString();
}

QUrl UpdateAnswer::downloadAddress(const QVariantMap &answer)
{
    const QVariant text = answer.value("Latest Version Download URL");
    return text.typeId() == QMetaType::QString ? QUrl(text.toString(), QUrl::StrictMode) : QUrl();
}

} // namespace dozely
