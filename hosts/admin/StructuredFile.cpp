// SPDX-License-Identifier: MIT
#include "hosts/admin/StructuredFile.h"

#include "DozelyKit/core/files/PropertyList.h"
#include "hosts/admin/AdminText.h"
#include "hosts/admin/YamlReader.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using namespace dozely;

namespace
{
/// JSON's values as property lists have them: a number without a fraction is a whole one.
QVariant plain(const QJsonValue &value)
{
    if (value.isObject()) {
        QVariantMap map;
        const QJsonObject object = value.toObject();
        for (auto each = object.constBegin(); each != object.constEnd(); ++each)
            map.insert(each.key(), plain(*each));
        return map;
    }
    if (value.isArray()) {
        QVariantList list;
        for (const QJsonValue each : value.toArray())
            list += plain(each);
        return list;
    }
    if (value.isDouble() && value.toVariant().typeId() == QMetaType::LongLong)
        return value.toInteger();
    return value.isNull() ? QVariant() : value.toVariant();
}
} // namespace

Result<QVariant> StructuredFile::parse(const QByteArray &data)
{
    if (data.size() > PropertyList::ofTheSystem.size)
        return Error{AdminText::tr("it is larger than 16 MiB")};
    const QByteArray begin = data.left(1000).trimmed();
    if (begin.startsWith("bplist") || begin.startsWith('<')) {
        PropertyList::Terms terms = PropertyList::ofTheSystem;
        terms.keepsDamagedDates = false;
        return PropertyList::fromData(data, nullptr, terms);
    }
    if (begin.startsWith('{')) {
        QJsonParseError fault{};
        const QJsonDocument document =
            QJsonDocument::fromJson(data, &fault); // which has a limit of its own on depth
        if (fault.error == QJsonParseError::NoError)
            return plain(QJsonValue(document.object()));
        const auto yaml = YamlReader::parse(data); // whose flow style looks like JSON
        if (yaml)
            return yaml;
        return Error{
            AdminText::tr("it is no JSON: %1, at byte %2").arg(fault.errorString()).arg(fault.offset)};
    }
    return YamlReader::parse(data);
}
