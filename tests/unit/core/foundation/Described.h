// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>

/// An object that says what it is.
class Described : public QObject
{
    Q_OBJECT
public:
    Q_INVOKABLE QString description() const { return QStringLiteral("1 @ /private/x"); }
};

/// An object whose description is no text.
class Plain : public QObject
{
    Q_OBJECT
public:
    Q_INVOKABLE int description() const { return 5; }
};
