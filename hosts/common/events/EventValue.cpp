// SPDX-License-Identifier: MIT
#include "hosts/common/events/EventValue.h"

#include "DozelyKit/communication/events/NSAppleEventDescriptor.h"

#include <QDateTime>

#include <limits>
#include <optional>

using namespace dozely;

namespace
{
AEDesc textDescriptor(const QString &text)
{
    return NSAppleEventDescriptor::descriptorWithString(text)->aeDesc();
}

AEDesc integerDescriptor(qint64 value)
{
    const bool isShort =
        value >= std::numeric_limits<qint32>::min() && value <= std::numeric_limits<qint32>::max();
    return isShort ? AEDesc::of(typeSInt32, static_cast<qint32>(value)) : AEDesc::of(typeSInt64, value);
}

Error refusal(OSErr status)
{
    return {QString("The value is nested too deep (%1)").arg(status)};
}

Result<AEDesc> listDescriptor(const QVariantList &values)
{
    AEDesc list(typeAEList);
    for (const QVariant &value : values) {
        const auto element = EventValue::toDescriptor(value);
        if (!element)
            return element;
        if (const OSErr status = list.append(*element); status != noErr)
            return refusal(status);
    }
    return list;
}

Result<AEDesc> recordDescriptor(const QVariantMap &values)
{
    AEDesc record(typeAERecord);
    for (auto value = values.cbegin(); value != values.cend(); ++value) {
        const auto keyword = EventValue::codeOf(value.key(), "keyword");
        if (!keyword)
            return keyword.error();
        const auto parameter = EventValue::toDescriptor(value.value());
        if (!parameter)
            return parameter;
        if (const OSErr status = record.setParameter(*keyword, *parameter); status != noErr)
            return refusal(status);
    }
    return record;
}

template<class Value>
std::optional<Value> numberIn(const AEDesc &descriptor, DescType type)
{
    const auto converted = descriptor.coerced(type);
    return converted ? converted->value<Value>() : std::nullopt;
}

template<class Value>
QVariant numberOrBytes(const AEDesc &descriptor, DescType type)
{
    const auto number = numberIn<Value>(descriptor, type);
    return number ? QVariant::fromValue(*number) : QVariant(descriptor.data());
}
} // namespace

Result<AEDesc> EventValue::toDescriptor(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::UnknownType:
        return AEDesc();
    case QMetaType::Bool:
        return AEDesc::of(typeBoolean, static_cast<quint8>(value.toBool()));
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
        return integerDescriptor(value.toLongLong());
    case QMetaType::Double:
        return AEDesc::of(typeIEEE64BitFloatingPoint, value.toDouble());
    case QMetaType::QString:
        return textDescriptor(value.toString());
    case QMetaType::QDateTime:
        return textDescriptor(value.toDateTime().toString(Qt::ISODate));
    case QMetaType::QByteArray:
        return AEDesc(typeData, value.toByteArray());
    case QMetaType::QStringList:
    case QMetaType::QVariantList:
        return listDescriptor(value.toList());
    case QMetaType::QVariantMap:
        return recordDescriptor(value.toMap());
    default:
        return Error{QString("A value of the type %1 cannot be sent").arg(value.typeName())};
    }
}

QVariant EventValue::fromDescriptor(const AEDesc &descriptor)
{
    switch (descriptor.descriptorType()) {
    case typeNull:
        return {};
    case typeBoolean:
    case typeTrue:
    case typeFalse: {
        const auto truth = numberIn<qint64>(descriptor, typeSInt64);
        return truth ? QVariant(*truth != 0) : QVariant(descriptor.data());
    }
    case typeSInt16:
    case typeSInt32:
    case typeUInt32:
    case typeSInt64:
        return numberOrBytes<qint64>(descriptor, typeSInt64);
    case typeIEEE64BitFloatingPoint:
        return numberOrBytes<double>(descriptor, typeIEEE64BitFloatingPoint);
    case typeText:
    case typeUTF8Text:
    case typeUnicodeText:
    case typeType:
    case typeEnumerated: {
        const QString text = NSAppleEventDescriptor::descriptorWithAEDesc(descriptor)->stringValue();
        return text.isNull() ? QVariant(descriptor.data()) : QVariant(text);
    }
    case typeAEList: {
        QVariantList list;
        for (qsizetype i = 0; i < descriptor.count(); ++i)
            list += fromDescriptor(descriptor.at(i));
        return list;
    }
    case typeAERecord:
    case typeAppleEvent: {
        QVariantMap record;
        for (qsizetype i = 0; i < descriptor.count(); ++i)
            record.insert(textOfCode(descriptor.keywordAt(i)), fromDescriptor(descriptor.at(i)));
        return record;
    }
    default:
        return descriptor.data();
    }
}

QString EventValue::textOfCode(OSType code)
{
    QString text = NSFileTypeForHFSTypeCode(code).mid(1, 4);
    for (QChar &character : text) {
        if (!character.isPrint())
            character = '?';
    }
    return text;
}

Result<OSType> EventValue::codeOf(const QString &characters, const QString &what)
{
    const auto code = codeOfCharacters(characters);
    if (code && textOfCode(*code) == characters.normalized(QString::NormalizationForm_C))
        return *code;
    return Error{QString("\"%1\" is no %2: that has four characters").arg(characters, what)};
}
