// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/dbus/BusConnection.h"
#include "DozelyKit/system/network/NetServices.h"

namespace dozely
{

/// What the operations of the Avahi daemon take and give.
namespace AvahiArguments
{
constexpr char serverInterface[] = "org.freedesktop.Avahi.Server";
constexpr int any = -1; ///< Any interface, any protocol.
constexpr quint32 noFlags = 0U;

/// The strings of a TXT record, one `ay` each. The daemon refuses those that are empty or have no key, which
/// mean nothing to anybody.
DOZELYKIT_AUTOTEST_EXPORT QVariantList txtStrings(const QByteArray &record);

/// The record whose strings the daemon told (`aay`).
DOZELYKIT_AUTOTEST_EXPORT QByteArray recordFrom(const QVariantList &strings);

/// The text, such as the path of an object, that an operation gave; one that gave none has failed.
DOZELYKIT_AUTOTEST_EXPORT Result<QString> textIn(const BusConnection::Reply &reply);

NetServices::Problem problemOf(const Error &error);
} // namespace AvahiArguments

} // namespace dozely
