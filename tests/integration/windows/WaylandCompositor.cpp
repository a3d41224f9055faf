// SPDX-License-Identifier: MIT
#include "WaylandCompositor.h"

#include "support/SignalProcess.h"

#include <QFile>

#include <array>
#include <csignal>

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{
const char *const configuration = R"([core]
idle-time=0
[shell]
background-color=0xffffffff
panel-position=none
animation=none
startup-animation=none
close-animation=none
locking=false
)";
} // namespace

bool WaylandCompositor::start(int width, int height)
{
    QFile file(m_folder.filePath("weston.ini"));
    if (!file.open(QIODevice::WriteOnly) || file.write(configuration) < 0)
        return false;
    file.close();
    const QByteArray folder = m_folder.path().toUtf8();
    const QByteArray config = "--config=" + file.fileName().toUtf8();
    const QByteArray log = "--log=" + m_folder.filePath("log").toUtf8();
    const QByteArray wide = "--width=" + QByteArray::number(width);
    const QByteArray high = "--height=" + QByteArray::number(height);
    // A connection that is there before the compositor is: nobody has to ask again until it listens.
    std::array<int, 2> ends{};
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) != 0)
        return false;
    qputenv("XDG_RUNTIME_DIR", folder);
    const pid_t parent = ::getpid();
    m_process = ::fork();
    if (m_process == 0) {
        ::prctl(PR_SET_PDEATHSIG, SIGKILL);
        if (::getppid() != parent)
            ::_exit(1);
        ::fcntl(ends[1], F_SETFD, 0);
        ::setenv("WAYLAND_SERVER_SOCKET", QByteArray::number(ends[1]).constData(), 1);
        ::execlp("weston", "weston", "--backend=x11-backend.so", "--use-pixman", "--socket=wayland-test",
                 config.constData(), log.constData(), wide.constData(), high.constData(), nullptr);
        ::_exit(127);
    }
    ::close(ends[1]);
    qputenv("WAYLAND_SOCKET", QByteArray::number(ends[0])); // the client library's, from here
    return m_process > 0;
}

WaylandCompositor::~WaylandCompositor()
{
    if (m_process <= 0)
        return;
    signalProcess(m_process, SIGTERM);
    ::waitpid(m_process, nullptr, 0);
}
