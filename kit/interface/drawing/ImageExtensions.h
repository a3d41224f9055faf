// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/interface/Export.h"

#include <QImage>

class NSBundle;
class QObject;
class QString;

namespace zandorSoftwaresExtensions
{
/// The image in the bundle's resource of exactly that name; without one, in the first resource of that name
/// with the type of an image file that can be read. A null image when there is none, or no bundle.
///
/// Beside NAME.png may lie NAME@2x.png and NAME@3x.png, drawn for as many pixels a point: the one is taken
/// whose ratio is the next whole number from `devicePixelRatio` on, or the next lower one that there is. The
/// image carries its ratio, so that its size in points is the same.
DOZELYINTERFACE_EXPORT QImage imageNamedInBundle(const QString &name, const NSBundle *bundle,
                                                 double devicePixelRatio = 1);

/// The same, in the bundle that holds the class of `instance`.
DOZELYINTERFACE_EXPORT QImage imageNamedInBundleOfInstance(const QString &name, const QObject *instance,
                                                           double devicePixelRatio = 1);
} // namespace zandorSoftwaresExtensions
