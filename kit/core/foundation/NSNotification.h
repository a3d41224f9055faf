// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Export.h"

#include <QMetaType>
#include <QString>
#include <QVariant>

/// A named message with an optional sender object and a dictionary; a plain value, copied freely.
///
/// An invalid QVariant is "no object". Everything in userInfo is a property-list value: bool, integer,
/// double, QString, QByteArray, QDateTime (with its zone), QVariantList, QVariantMap.
class DOZELYKIT_EXPORT NSNotification
{
public:
    NSNotification() = default;
    explicit NSNotification(QString name, QVariant object = {}, QVariantMap userInfo = {})
        : m_name(std::move(name)), m_object(std::move(object)), m_userInfo(std::move(userInfo))
    {
    }

    QString name() const { return m_name; }
    QVariant object() const { return m_object; }
    QVariantMap userInfo() const { return m_userInfo; }

private:
    QString m_name;
    QVariant m_object;
    QVariantMap m_userInfo;
};

Q_DECLARE_METATYPE(NSNotification)
