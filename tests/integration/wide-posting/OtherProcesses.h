// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/broadcast/DistributedNotifications.h"
#include "DozelyKit/core/broadcast/NSDistributedNotificationCenter.h"
#include "DozelyKit/core/broadcast/linux/DistributedSignals_p.h"
#include "support/BecomeUser.h"
#include "support/WaitUntil.h"

#include <gtest/gtest.h>

#include <pwd.h>
#include <sys/wait.h>

#include <functional>

/// A user without rights that the machine knows, as a bus asks: one of two for root, else whoever runs the
/// test, since nobody else can become another.
inline uid_t someUser(int which)
{
    if (::geteuid() != 0)
        return ::geteuid();
    const passwd *const entry = ::getpwnam(which == 0 ? "daemon" : "bin");
    return entry ? entry->pw_uid : 0;
}

/// The centre of this process; a child has another than its parent, which listens with the parent's
/// connections.
inline NSDistributedNotificationCenter &center(bool isChild = false)
{
    class ChildsCenter : public NSDistributedNotificationCenter
    {
    };
    static auto *current = &NSDistributedNotificationCenter::defaultCenter();
    if (isChild)
        current = new ChildsCenter; // as long as the process
    return *current;
}

/// Hears notifications and notes "name sender user".
class Hearer : public QObject
{
    Q_OBJECT
public:
    Q_INVOKABLE void heard(const NSNotification &notification)
    {
        const auto user = NSDistributedNotificationCenter::currentSender();
        calls += QString("%1 %2 %3")
                     .arg(notification.name(), notification.object().toString(),
                          user ? QString::number(*user) : QString("?"));
        last = notification;
    }

    QStringList calls;
    NSNotification last;
};

/// A child process of another user, which does something, says so and stays until the object ends.
class OtherProcess
{
public:
    /// `work` gets a function that tells this process a line.
    using Tell = std::function<void(const QString &line)>;

    OtherProcess(uid_t user, const std::function<void(const Tell &)> &work)
    {
        std::array<int, 2> lines{};
        std::array<int, 2> life{};
        if (::pipe(lines.data()) != 0 || ::pipe(life.data()) != 0)
            return;
        std::fflush(nullptr);
        m_process = ::fork();
        if (m_process == 0) {
            ::close(lines[0]);
            ::close(life[1]);
            // The parent's connections stay what they are; this process has its own.
            static const auto ofParent = dozely::Port<dozely::DistributedNotifications>::current();
            dozely::Port<dozely::DistributedNotifications>::current() =
                std::make_shared<dozely::DistributedSignals>();
            center(true);
            const auto tell = [&lines](const QString &line) {
                const QByteArray bytes = line.toUtf8() + '\n';
                if (::write(lines[1], bytes.constData(), static_cast<size_t>(bytes.size())) != bytes.size())
                    ::_exit(1);
            };
            if (Identity::becomeUser(user))
                work(tell);
            char byte = 0;
            while (::read(life[0], &byte, 1) > 0) {
            }
            ::_exit(0);
        }
        ::close(lines[1]);
        ::close(life[0]);
        m_lines = lines[0];
        m_life = life[1];
    }
    ~OtherProcess() { end(); }
    OtherProcess(const OtherProcess &) = delete;
    OtherProcess &operator=(const OtherProcess &) = delete;

    /// The next line that it tells; null when it has ended.
    QString line()
    {
        QByteArray bytes;
        char byte = 0;
        while (::read(m_lines, &byte, 1) == 1) {
            if (byte == '\n')
                return QString::fromUtf8(bytes);
            bytes += byte;
        }
        return {};
    }

    void end()
    {
        if (m_process <= 0)
            return;
        ::close(m_life);
        ::close(m_lines);
        int status = 0;
        ::waitpid(m_process, &status, 0);
        m_process = -1;
    }

private:
    pid_t m_process = -1;
    int m_lines = -1;
    int m_life = -1;
};
