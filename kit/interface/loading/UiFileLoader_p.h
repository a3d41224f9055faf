// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/bundles/InterfaceFileLoader.h"
#include "DozelyKit/interface/Export.h"

#include <QString>

class QWidget;

namespace dozely
{

/// Interface files as Qt's Designer writes them, NAME.ui among a bundle's resources.
///
/// - Classes of this library are known by their names, as promoted widgets.
/// - Outlets: each object of the file is given to the owner's writable property of the same name, if their
/// types fit.
/// - Actions: an owner's method named on_OBJECT_SIGNAL is connected to that signal of that object.
/// - Texts are looked up in the bundle's table NAME.strings, the file's own text being the key.
/// - When all this is done, and every view has its size, awakeFromNib is called on each object that has it,
/// the owner
///   included.
///
/// What the file holds lives as long as its owner, unless somebody deletes it earlier. A failure is one line
/// in the log; files of more than 1 MiB or 100 levels are refused, and no code is loaded for a file's sake.
class DOZELYINTERFACE_AUTOTEST_EXPORT UiFileLoader : public InterfaceFileLoader
{
public:
    bool loadNibNamed(const QString &name, const NSBundle &bundle, QObject *owner) override;
};

} // namespace dozely
