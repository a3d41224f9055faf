// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Export.h"

#include <QString>
#include <QUrl>

namespace dozely
{

/// The server that knows the latest version, as whoever built the library chose it.
namespace UpdateServer
{
/// Whether it is ever asked: false in a build without the update check.
DOZELYKIT_EXPORT bool isAsked();

/// The server's name, "update.dozely.example" unless the build says otherwise.
DOZELYKIT_EXPORT QString host();

/// The address that answers.
DOZELYKIT_EXPORT QUrl address();
} // namespace UpdateServer

} // namespace dozely
