// SPDX-License-Identifier: MIT
#include "hosts/common/plugins/ActionState.h"

#include "DozelyKit/core/log/ZDRLog.h"
#include "hosts/common/faults/ThrownBy.h"

bool ActionState::isActing(WDPlugIn &plugIn)
{
    if (plugIn.metaObject()->indexOfMethod("isActing()") < 0)
        return false;
    bool acting = false;
    const auto thrown = thrownBy([&] {
        QMetaObject::invokeMethod(&plugIn, "isActing", Qt::DirectConnection, Q_RETURN_ARG(bool, acting));
    });
    if (thrown)
        ZDRLog("A plug-in was asked whether it acts and raised: %@", *thrown);
    return !thrown && acting;
}

std::optional<qint64> ActionState::exitStatus(WDPlugIn &plugIn)
{
    if (plugIn.metaObject()->indexOfMethod("exitStatus()") < 0)
        return {};
    int status = -1;
    const auto thrown = thrownBy([&] {
        QMetaObject::invokeMethod(&plugIn, "exitStatus", Qt::DirectConnection, Q_RETURN_ARG(int, status));
    });
    return thrown ? std::nullopt : std::optional<qint64>(status);
}

QString ActionState::failure(WDPlugIn &plugIn)
{
    if (plugIn.metaObject()->indexOfMethod("failure()") < 0)
        return {};
    QString failure;
    const auto thrown = thrownBy([&] {
        QMetaObject::invokeMethod(&plugIn, "failure", Qt::DirectConnection, Q_RETURN_ARG(QString, failure));
    });
    return thrown ? QString() : failure;
}
