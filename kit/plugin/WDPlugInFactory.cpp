// SPDX-License-Identifier: MIT
#include "DozelyKit/plugin/WDPlugInFactory.h"

WDPlugInFactory::~WDPlugInFactory() = default;

bool WDPlugInFactory::initializeClass(const std::shared_ptr<NSBundle> &)
{
    return true;
}

void WDPlugInFactory::terminateClass() {}

std::unique_ptr<WDPlugIn> WDPlugInFactory::makeForRole(const QString &)
{
    return make();
}
