// SPDX-License-Identifier: MIT
#include "DozelyKit/interface/drawing/LibraryText_p.h"

#include "DozelyKit/core/bundles/NSBundle.h"

namespace dozely
{

QString libraryText(const QString &key)
{
    const auto bundle = NSBundle::kitBundle();
    return bundle ? bundle->localizedStringForKey(key) : key;
}

} // namespace dozely
