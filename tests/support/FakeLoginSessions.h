// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/system/machine/LoginSessions.h"

/// Sessions of whoever the test says, until they cannot be asked for.
class FakeLoginSessions : public dozely::LoginSessions
{
public:
    std::optional<QList<Session>> sessions = QList<Session>();
    std::optional<QList<Session>> current() override { return sessions; }
};
