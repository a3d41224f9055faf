// SPDX-License-Identifier: MIT
#include "DozelyKit/system/machine/ApplicationExtensions.h"

#include "DozelyKit/core/bundles/NSBundle.h"
#include "DozelyKit/system/machine/LoginItems_p.h"

#include <QCoreApplication>

using namespace dozely;

void zandorSoftwaresExtensions::setLoginItem(bool enabled, bool hidden)
{
    if (const auto bundle = NSBundle::mainBundle())
        LoginItems::set({bundle->bundlePath(), QCoreApplication::applicationFilePath()}, enabled, hidden);
}

bool zandorSoftwaresExtensions::isLoginItem()
{
    const auto bundle = NSBundle::mainBundle();
    return bundle && LoginItems::contains(bundle->bundlePath());
}
