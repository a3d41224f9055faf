// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/interface/Export.h"

class QWidget;

namespace zandorSoftwaresExtensions
{
/// Takes all views out of a container: of an object whose class is exactly QWidget, or out of the box that is
/// exactly QGroupBox. With any other class, derived ones included, nothing happens.
///
/// OWNERSHIP: the views are left without a parent, and not seen until they stand in another view; they are
/// the caller's from then on. Windows that belong to the container stay.
DOZELYINTERFACE_EXPORT void clear(QWidget *view);
} // namespace zandorSoftwaresExtensions
