// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Export.h"
#include "DozelyKit/core/foundation/Port.h"

#include <memory>

class NSBundle;
class QObject;
class QString;

namespace dozely
{

/// Port: loads an interface file (a window or view laid out by a designer). The interface library fills it in
/// when a process loads that library; a process without it has no loader, and nothing is loaded there.
class DOZELYKIT_EXPORT InterfaceFileLoader
{
public:
    virtual ~InterfaceFileLoader() = default;

    /// Loads the file `name` of `bundle` with `owner` as its owner. False when there is no such file or it is
    /// bad.
    virtual bool loadNibNamed(const QString &name, const NSBundle &bundle, QObject *owner) = 0;
};

/// Null until the interface library is loaded, which puts its own there.
template<>
DOZELYKIT_EXPORT std::shared_ptr<InterfaceFileLoader> &Port<InterfaceFileLoader>::current();

} // namespace dozely
