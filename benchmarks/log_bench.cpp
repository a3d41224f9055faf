// SPDX-License-Identifier: MIT
//
// One line of the shared log against the bare open, write and close that it cannot do without.
#include "Bench.h"

#include "DozelyKit/core/foundation/NSProcessInfo.h"
#include "DozelyKit/core/foundation/RootFolder.h"
#include "DozelyKit/core/log/ZDRLog.h"

#include <QDir>
#include <QTemporaryDir>

#include <fcntl.h>
#include <unistd.h>

using namespace dozely;

int main()
{
    QTemporaryDir folder("/tmp/dz-XXXXXX");
    RootFolder::set(folder.path());
    QDir().mkpath(folder.filePath("var/log"));
    NSProcessInfo::setProcessName("dozelyd");
    const QByteArray bare = folder.filePath("var/log/bare.log").toUtf8();
    constexpr char line[] =
        "Mar 04 09:15:02 (412 - 1 - 0 - Daemon): a line of usual length, with a number 17\n";

    Bench bench;
    bench.add("bare", [&] {
        const int file = ::open(bare.constData(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0666);
        if (::write(file, line, sizeof line - 1) < 0)
            std::abort();
        ::close(file);
    });
    bench.add("ZDRLog", [] { ZDRLog("a line of usual length, with a number %d", 17); });
    bench.run(20, 2000);
    bench.print("one line of the log", {{"ZDRLog", "bare", 1.6}});
    return 0;
}
