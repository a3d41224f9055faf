// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Export.h"
#include "DozelyKit/core/foundation/Port.h"

#include <QDateTime>
#include <QList>
#include <QString>

#include <optional>

namespace dozely
{

/// Port: who is logged in, at the machine itself or from elsewhere.
class DOZELYKIT_EXPORT LoginSessions
{
public:
    /// One person's session.
    struct Session {
        QString user;
        QDateTime began;                      ///< When that user logged in, UTC.
        std::optional<QDateTime> unusedSince; ///< UTC; absent while it is in use, or nobody can tell.
    };

    virtual ~LoginSessions() = default;

    /// All of them. What asks for a name and a password, and what no person logged in to, is none. Absent
    /// when it cannot be found out. Blocks for at most two seconds.
    virtual std::optional<QList<Session>> current() = 0;
};

template<>
DOZELYKIT_EXPORT std::shared_ptr<LoginSessions> &Port<LoginSessions>::current();

} // namespace dozely
