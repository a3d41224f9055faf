// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Export.h"

#include <QString>

namespace dozely
{

/// The login items of the current user, whichever application is concerned.
namespace LoginItems
{
struct Application {
    QString bundlePath;
    QString program; ///< The program in the bundle that starts it.
};

/// As zandorSoftwaresExtensions::setLoginItem says.
DOZELYKIT_AUTOTEST_EXPORT void set(const Application &application, bool enabled, bool hidden);

/// Whether an entry has exactly this path.
DOZELYKIT_AUTOTEST_EXPORT bool contains(const QString &bundlePath);

/// The login-window preferences; null for a user without a home.
DOZELYKIT_AUTOTEST_EXPORT QString preferencesPath();
} // namespace LoginItems

} // namespace dozely
