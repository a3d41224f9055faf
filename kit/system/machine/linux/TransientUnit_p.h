// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/system/machine/ServiceManager.h"

#include <QVariant>

namespace dozely
{

/// A service in the form in which systemd takes it.
namespace TransientUnit
{
/// The properties of StartTransientUnit (org.freedesktop.systemd1(5)), for `a(sv)`. Its descriptor is
/// duplicated.
QVariantList properties(const TransientService &service);
} // namespace TransientUnit

} // namespace dozely
