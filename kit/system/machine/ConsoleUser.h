// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Export.h"
#include "DozelyKit/core/foundation/Port.h"

#include <QString>

#include <optional>

namespace dozely
{

/// Port: who sits at the console.
class DOZELYKIT_EXPORT ConsoleUser
{
public:
    struct User {
        QString name;
        quint32 userId;
    };

    virtual ~ConsoleUser() = default;

    /// The user of the console's active session; absent when nobody is logged in, when a greeter shows, or
    /// when it cannot be found out. Blocks for at most two seconds.
    virtual std::optional<User> current() = 0;
};

template<>
DOZELYKIT_EXPORT std::shared_ptr<ConsoleUser> &Port<ConsoleUser>::current();

} // namespace dozely
