// SPDX-License-Identifier: MIT
#include "DozelyKit/core/foundation/StringFormat.h"

#include <QDateTime>
#include <QMetaMethod>
#include <QUrl>

#include <algorithm>
#include <cmath>
#include <cstdlib>

using namespace dozely;

namespace
{
constexpr int indentWidth = 4;
constexpr int doubleDigits = 16; // significant, as the platform prints them
constexpr int floatDigits = 7;

QString nothing()
{
    return QStringLiteral("(null)");
}

QString numberText(double number, int digits)
{
    if (std::isnan(number))
        return QStringLiteral("nan");
    if (std::isinf(number))
        return number < 0 ? QStringLiteral("-inf") : QStringLiteral("inf");
    return QString::number(number, 'g', digits);
}

QString dateText(const QDateTime &date)
{
    constexpr int secondsPerMinute = 60;
    constexpr int secondsPerHour = 3600;
    const int offset = date.offsetFromUtc();
    return date.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")) +
           QString::asprintf(" %c%02d%02d", offset < 0 ? '-' : '+', std::abs(offset) / secondsPerHour,
                             std::abs(offset) % secondsPerHour / secondsPerMinute);
}

// "<0a0b0c0d 0e>"
QString dataText(const QByteArray &data)
{
    QString text = QStringLiteral("<");
    for (qsizetype position = 0; position < data.size(); position += 4) {
        if (position > 0)
            text += u' ';
        text += QString::fromLatin1(data.mid(position, 4).toHex());
    }
    return text + u'>';
}

// A word of letters and digits stands as it is within a list, any other text in quotes.
QString quotedIfNeeded(const QString &text)
{
    const auto isPlain = [](QChar c) {
        return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || (c >= u'0' && c <= u'9') || c == u'_';
    };
    if (!text.isEmpty() && std::all_of(text.begin(), text.end(), isPlain))
        return text;
    QString quoted = QStringLiteral("\"");
    for (const QChar character : text) {
        const char16_t code = character.unicode();
        if (code == u'"' || code == u'\\')
            quoted += u'\\' + QString(character);
        else if (code == u'\n')
            quoted += QStringLiteral("\\n");
        else if (code == u'\t')
            quoted += QStringLiteral("\\t");
        else if (code < u' ' || code > u'~')
            quoted += QString::asprintf("\\U%04x", static_cast<unsigned>(code));
        else
            quoted += character;
    }
    return quoted + u'"';
}

QString nestedText(const QVariant &value, int depth);

QString listText(const QVariantList &list, int depth)
{
    const QString indent(indentWidth * depth, u' ');
    QStringList items;
    for (const QVariant &item : list)
        items += indent + QString(indentWidth, u' ') + nestedText(item, depth + 1);
    return QStringLiteral("(\n") + items.join(QStringLiteral(",\n")) +
           (items.isEmpty() ? QString() : QStringLiteral("\n")) + indent + u')';
}

QString mapText(const QVariantMap &map, int depth)
{
    const QString indent(indentWidth * depth, u' ');
    QString text = QStringLiteral("{\n");
    for (auto entry = map.cbegin(); entry != map.cend(); ++entry) {
        text += indent + QString(indentWidth, u' ') + quotedIfNeeded(entry.key()) + QStringLiteral(" = ") +
                nestedText(entry.value(), depth + 1) + QStringLiteral(";\n");
    }
    return text + indent + u'}';
}

QString nestedText(const QVariant &value, int depth)
{
    switch (value.typeId()) {
    case QMetaType::QVariantList:
    case QMetaType::QStringList:
        return listText(value.toList(), depth);
    case QMetaType::QVariantMap:
    case QMetaType::QVariantHash:
        return mapText(value.toMap(), depth);
    case QMetaType::QByteArray:
        return dataText(value.toByteArray());
    case QMetaType::QString:
        return quotedIfNeeded(value.toString()); // an element that is there is a text, if only an empty one
    default:
        return quotedIfNeeded(descriptionOf(value));
    }
}

// The object's own `description`, else its class and address.
QString objectText(QObject *object)
{
    if (!object)
        return nothing();
    QString text;
    const QMetaObject *const meta = object->metaObject();
    const QMetaMethod description = meta->method(meta->indexOfMethod("description()"));
    if (description.isValid() && description.returnType() == QMetaType::QString &&
        description.invoke(object, Qt::DirectConnection, Q_RETURN_ARG(QString, text)))
        return text;
    return QString::asprintf("<%s: %p>", meta->className(), static_cast<void *>(object));
}

QString otherText(const QVariant &value)
{
    if (value.metaType().flags() & QMetaType::PointerToQObject)
        return objectText(value.value<QObject *>());
    if (value.isNull())
        return nothing();
    if (value.canConvert<QString>())
        return value.toString();
    return QStringLiteral("<%1>").arg(QLatin1String(value.typeName()));
}
} // namespace

QString dozely::descriptionOf(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::UnknownType:
    case QMetaType::Nullptr:
        return nothing();
    case QMetaType::QString: {
        const QString text = value.toString();
        return text.isNull() ? nothing() : text;
    }
    case QMetaType::QByteArray:
        return value.toByteArray().isNull() ? nothing() : dataText(value.toByteArray());
    case QMetaType::Bool:
        return value.toBool() ? QStringLiteral("1") : QStringLiteral("0");
    case QMetaType::Double:
        return numberText(value.toDouble(), doubleDigits);
    case QMetaType::Float:
        return numberText(value.toDouble(), floatDigits);
    case QMetaType::QDateTime:
        return value.toDateTime().isValid() ? dateText(value.toDateTime()) : nothing();
    case QMetaType::QVariantList:
    case QMetaType::QStringList:
        return listText(value.toList(), 0);
    case QMetaType::QVariantMap:
    case QMetaType::QVariantHash:
        return mapText(value.toMap(), 0);
    default:
        return otherText(value);
    }
}
