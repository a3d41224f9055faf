// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QDebug>
#include <QString>
#include <QVariant>

#include <ostream>

// Lets GoogleTest print Qt's values as a person reads them.
inline void PrintTo(const QString &text, std::ostream *out)
{
    *out << '"' << qPrintable(text) << '"';
}
inline void PrintTo(const QByteArray &bytes, std::ostream *out)
{
    *out << '"' << bytes.constData() << '"';
}
inline void PrintTo(const QVariant &value, std::ostream *out)
{
    QString text;
    QDebug(&text) << value;
    *out << qPrintable(text);
}
