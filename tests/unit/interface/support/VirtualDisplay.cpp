// SPDX-License-Identifier: MIT
#include "support/VirtualDisplay.h"

#include "support/SignalProcess.h"

#include <array>
#include <cstdio>

#include <csignal>
#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

bool VirtualDisplay::start(const char *screen)
{
    std::array<int, 2> ends{};
    if (::pipe(ends.data()) != 0)
        return false;
    const QByteArray writeEnd = QByteArray::number(ends[1]);
    const pid_t parent = ::getpid();
    m_process = ::fork();
    if (m_process == 0) {
        ::prctl(PR_SET_PDEATHSIG, SIGKILL); // a test that crashes leaves no server behind
        if (::getppid() != parent)
            ::_exit(1);
        const int nowhere = ::open("/dev/null", O_RDWR);
        ::dup2(nowhere, STDOUT_FILENO);
        ::close(ends[0]);
        ::execlp("Xvfb", "Xvfb", "-displayfd", writeEnd.constData(), "-screen", "0", screen, "-nolisten",
                 "tcp", "-noreset", nullptr);
        ::_exit(127);
    }
    ::close(ends[1]);
    // The server writes its number when it accepts clients; its end closes the pipe.
    QByteArray number;
    char letter = 0;
    while (::read(ends[0], &letter, 1) == 1 && letter != '\n')
        number += letter;
    ::close(ends[0]);
    if (number.isEmpty()) {
        std::fprintf(stderr, "Xvfb did not start.\n");
        return false;
    }
    m_name = ':' + number;
    qputenv("DISPLAY", m_name);
    return true;
}

VirtualDisplay::~VirtualDisplay()
{
    if (m_process <= 0)
        return;
    signalProcess(m_process, SIGTERM);
    ::waitpid(m_process, nullptr, 0);
}
