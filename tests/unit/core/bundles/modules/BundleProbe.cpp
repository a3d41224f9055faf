// SPDX-License-Identifier: MIT
#include "DozelyKit/core/bundles/NSBundle.h"

#include <QObject>

#include <iostream>

/// A class of the program.
class Probe : public QObject
{
    Q_OBJECT
};

/// Prints the main bundle and the bundle of a class of the program, a line each.
int main()
{
    for (const auto &bundle : {NSBundle::mainBundle(), NSBundle::bundleForClass(&Probe::staticMetaObject)})
        std::cout << (bundle ? bundle->bundlePath().toStdString() : "none") << '\n';
}

#include "BundleProbe.moc"
