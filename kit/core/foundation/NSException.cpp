// SPDX-License-Identifier: MIT
#include "DozelyKit/core/foundation/NSException.h"

const QString NSInvalidArgumentException = QStringLiteral("NSInvalidArgumentException");
const QString NSPortTimeoutException = QStringLiteral("NSPortTimeoutException");
const QString NSInvalidSendPortException = QStringLiteral("NSInvalidSendPortException");
const QString NSInvalidReceivePortException = QStringLiteral("NSInvalidReceivePortException");
const QString NSObjectInaccessibleException = QStringLiteral("NSObjectInaccessibleException");

NSException::NSException(QString name, QString reason)
    : m_name(std::move(name)), m_reason(std::move(reason)), m_what((m_name + ": " + m_reason).toUtf8())
{
}
