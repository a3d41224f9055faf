// SPDX-License-Identifier: MIT
#include "hosts/common/TerminationWatcher.h"

#include <QSocketNotifier>

#include <atomic>
#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace
{
std::atomic<int> writeEnd{-1};
static_assert(std::atomic<int>::is_always_lock_free, "the signal handler reads it");

extern "C" void wakeLoop(int)
{
    const int savedErrno = errno;
    const char byte = 0;
    // A full pipe wakes the loop just as well.
    [[maybe_unused]] const ssize_t written = ::write(writeEnd.load(), &byte, 1);
    errno = savedErrno;
}
} // namespace

TerminationWatcher::TerminationWatcher(const QList<int> &signalNumbers, QObject *parent) : QObject(parent)
{
    int ends[2];
    if (::pipe2(ends, O_CLOEXEC | O_NONBLOCK) != 0)
        return; // out of descriptors: the signals keep their default, which ends the process
    m_readEnd = ends[0];
    writeEnd = ends[1];
    m_notifier = new QSocketNotifier(m_readEnd, QSocketNotifier::Read, this);
    connect(m_notifier, &QSocketNotifier::activated, this, &TerminationWatcher::readPipe);
    struct sigaction action = {};
    action.sa_handler = wakeLoop;
    action.sa_flags = SA_RESTART;
    for (const int number : signalNumbers) {
        struct sigaction former = {};
        ::sigaction(number, &action, &former);
        m_formerActions.emplace_back(number, former);
    }
}

TerminationWatcher::~TerminationWatcher()
{
    if (m_readEnd < 0)
        return;
    for (const auto &[number, former] : m_formerActions)
        ::sigaction(number, &former, nullptr);
    delete m_notifier;
    ::close(m_readEnd);
    ::close(writeEnd.exchange(-1));
}

void TerminationWatcher::readPipe()
{
    char bytes[16];
    while (::read(m_readEnd, bytes, sizeof bytes) > 0) {
    }
    Q_EMIT terminate();
}
