// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Export.h"

#include <QString>

#include <exception>

/// Names of the exceptions that this library raises.
DOZELYKIT_EXPORT extern const QString NSInvalidArgumentException;
DOZELYKIT_EXPORT extern const QString NSPortTimeoutException;
DOZELYKIT_EXPORT extern const QString NSInvalidSendPortException;
DOZELYKIT_EXPORT extern const QString NSInvalidReceivePortException;
DOZELYKIT_EXPORT extern const QString NSObjectInaccessibleException;

/// The exception of this library: a name to tell the case and a reason to show a person.
class DOZELYKIT_EXPORT NSException : public std::exception
{
public:
    NSException(QString name, QString reason);

    QString name() const { return m_name; }
    QString reason() const { return m_reason; }

    /// "name: reason" in UTF-8; lives as long as the exception.
    const char *what() const noexcept override { return m_what.constData(); }

private:
    QString m_name;
    QString m_reason;
    QByteArray m_what;
};
