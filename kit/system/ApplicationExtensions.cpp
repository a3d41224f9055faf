// SPDX-License-Identifier: MIT
#include "system/ApplicationExtensions.h"

#include "platform/NSBundle.h"
#include "system/LoginItems_p.h"

#include <QCoreApplication>

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
