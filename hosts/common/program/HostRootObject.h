// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/communication/channel/WDCommunicationCenter.h"

#include <QObject>

/// The root object that every host vends: answers a ping and leads to the process's communication centre.
class HostRootObject : public QObject, public WDCommunicationProtocol
{
    Q_OBJECT
public:
    using QObject::QObject;

    NS_REMOTE Q_INVOKABLE bool pong() override { return true; }
    NS_REMOTE Q_INVOKABLE QObject *communicationCenter() override;
};
