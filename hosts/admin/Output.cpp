// SPDX-License-Identifier: MIT
#include "hosts/admin/Output.h"

#include "hosts/admin/AdminError.h"
#include "hosts/admin/AdminText.h"
#include "hosts/admin/DisplayWidth.h"

#include <QDateTime>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <cstdio>
#include <unistd.h>

namespace
{
bool steersATerminal(QChar c)
{
    switch (c.category()) {
    case QChar::Other_Control:
    case QChar::Other_Format:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
        return true;
    default:
        return false;
    }
}

QJsonValue jsonValue(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::QVariantMap: {
        QJsonObject object;
        const QVariantMap map = value.toMap();
        for (auto item = map.cbegin(); item != map.cend(); ++item)
            object.insert(item.key(), jsonValue(item.value()));
        return object;
    }
    case QMetaType::QVariantList:
    case QMetaType::QStringList: {
        QJsonArray array;
        for (const QVariant &item : value.toList())
            array.append(jsonValue(item));
        return array;
    }
    case QMetaType::QByteArray:
        return QString::fromLatin1(value.toByteArray().toBase64());
    case QMetaType::QDateTime:
        return value.toDateTime().toString(Qt::ISODate);
    default:
        return QJsonValue::fromVariant(value);
    }
}
} // namespace

QString Output::escaped(const QString &text)
{
    QString result;
    for (const QChar c : text)
        result += steersATerminal(c) ? QString("\\u%1").arg(c.unicode(), 4, 16, QChar('0')) : QString(c);
    return result;
}

void Output::line(const QString &text)
{
    raw(text.toUtf8() + '\n');
}

void Output::raw(const QByteArray &bytes)
{
    const bool written = std::fwrite(bytes.constData(), 1, static_cast<size_t>(bytes.size()), stdout) ==
                         static_cast<size_t>(bytes.size());
    if (!written || std::fflush(stdout) != 0)
        throw AdminError(ExitStatus::Failed, AdminText::tr("The output cannot be written."));
}

void Output::table(const QStringList &titles, const QList<QStringList> &rows)
{
    QList<QStringList> all{titles};
    for (const QStringList &row : rows) {
        QStringList shown;
        for (const QString &cell : row)
            shown += escaped(cell);
        all += shown;
    }
    QList<qsizetype> widths(titles.size(), 0);
    for (const QStringList &row : all) {
        for (qsizetype i = 0; i < row.size(); ++i)
            widths[i] = std::max(widths[i], DisplayWidth::of(row.at(i)));
    }
    for (const QStringList &row : all) {
        QString text;
        for (qsizetype i = 0; i < row.size(); ++i)
            text += i + 1 < row.size() ? DisplayWidth::padded(row.at(i), widths.at(i) + 2) : row.at(i);
        while (text.endsWith(' '))
            text.chop(1);
        line(text);
    }
}

QString Output::coloured(const QString &text, Mood mood)
{
    static const bool hasColours = ::isatty(STDOUT_FILENO) == 1 && qEnvironmentVariableIsEmpty("NO_COLOR") &&
                                   qEnvironmentVariable("TERM", "dumb") != "dumb";
    if (!hasColours)
        return text;
    const char *const code = mood == Mood::Good ? "32" : mood == Mood::Bad ? "31" : "33";
    return QString("\x1b[%1m%2\x1b[0m").arg(code, text);
}

void Output::json(const QVariantMap &object)
{
    // The writer escapes ASCII control characters itself; the others it leaves as they are.
    line(escaped(
        QString::fromUtf8(QJsonDocument(jsonValue(object).toObject()).toJson(QJsonDocument::Compact))));
}

void Output::remark(const QString &sentence)
{
    std::fputs((escaped("Dozely Admin: " + sentence) + '\n').toUtf8().constData(), stderr);
}
