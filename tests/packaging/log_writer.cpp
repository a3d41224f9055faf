// SPDX-License-Identifier: MIT
// log_writer ROOT NAME COUNT: writes so many numbered lines into the log below the folder ROOT, a moment
// between two.
#include <DozelyKit/core/foundation/NSProcessInfo.h>
#include <DozelyKit/core/foundation/RootFolder.h>
#include <DozelyKit/core/log/ZDRLog.h>

#include <QCoreApplication>

#include <chrono>
#include <thread>

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 4)
        return 2;
    dozely::RootFolder::set(arguments[1]);
    NSProcessInfo::setProcessName(arguments[2]);
    for (int number = 0; number < arguments[3].toInt(); ++number) {
        ZDRLog("line %d", number);
        // For a rotation to come between: who writes without a pause is done before the second one.
        std::this_thread::sleep_for(std::chrono::microseconds(500));
    }
    return 0;
}
