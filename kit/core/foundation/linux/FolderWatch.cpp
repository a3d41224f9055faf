// SPDX-License-Identifier: MIT
#include "DozelyKit/core/foundation/linux/FolderWatch_p.h"

#include <algorithm>
#include <cstring>
#include <poll.h>
#include <sys/inotify.h>
#include <utility>
#include <vector>

namespace dozely
{

namespace
{
// The folder above tells of one that is removed while somebody has it open, too.
constexpr uint32_t ofInterest =
    IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO | IN_DELETE_SELF | IN_MOVE_SELF | IN_ONLYDIR;

// The attack: one who makes events as fast as they are read. What is left comes with the next turn.
constexpr size_t readAtOnce = 64 << 10;
constexpr int readsATurn = 16;
} // namespace

FolderWatch::FolderWatch(const QByteArray &path, Handler handler)
    : m_path(path),
      m_handler(std::move(handler)),
      m_inotify(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC)),
      m_watch([this] { wake(); })
{
    renew();
    if (m_inotify.isValid())
        m_watch.watch(m_inotify.get(), POLLIN);
}

FolderWatch::~FolderWatch() = default;

void FolderWatch::renew()
{
    if (!m_inotify.isValid())
        return;
    // The one above first: a folder that is made in between is told of.
    const QByteArray above = m_path.left(std::max<qsizetype>(m_path.lastIndexOf('/'), 1));
    const auto look = [this](const QByteArray &path, int &watch) {
        const int found = ::inotify_add_watch(m_inotify.get(), path.constData(), ofInterest);
        if (watch >= 0 && found != watch)
            ::inotify_rm_watch(m_inotify.get(), watch); // what it watched is somewhere else now
        watch = found;
    };
    look(above, m_above);
    look(m_path, m_folder);
}

void FolderWatch::wake()
{
    if (std::exchange(m_isResting, false)) {
        m_watch.watch(m_inotify.get(), POLLIN);
        return;
    }
    const Change change = read();
    if (change.names.isEmpty() && !change.mayBeMore && !change.isAnother)
        return;
    m_isResting = true;
    m_watch.watch(m_inotify.get(), 0);
    m_watch.setDeadline(std::chrono::steady_clock::now() + pause);
    const Handler handler = m_handler; // which may end this object
    handler(change);
}

FolderWatch::Change FolderWatch::read()
{
    Change change;
    const int before = m_folder;
    std::vector<char> buffer(readAtOnce);
    for (int i = 0; i < readsATurn; ++i) {
        const ssize_t size = ::read(m_inotify.get(), buffer.data(), buffer.size());
        for (ssize_t at = 0; at < size;) {
            inotify_event event{};
            std::memcpy(&event, buffer.data() + at, sizeof event);
            const char *const name = buffer.data() + at + sizeof event;
            take(event.wd, event.mask, event.len > 0 ? QByteArray(name) : QByteArray(), change);
            at += static_cast<ssize_t>(sizeof event + event.len);
        }
        if (size <= 0)
            break;
    }
    if (change.isAnother || change.mayBeMore)
        renew();
    change.isAnother = change.isAnother || m_folder != before;
    return change;
}

void FolderWatch::take(int watch, uint32_t events, const QByteArray &name, Change &change) const
{
    constexpr uint32_t ofItself = IN_DELETE_SELF | IN_MOVE_SELF | IN_IGNORED | IN_UNMOUNT;
    if ((events & IN_Q_OVERFLOW) != 0)
        change.mayBeMore = true;
    else if (watch == m_above || (watch == m_folder && (events & ofItself) != 0))
        change.isAnother =
            change.isAnother || (events & ofItself) != 0 || name == m_path.mid(m_path.lastIndexOf('/') + 1);
    else if (watch == m_folder && change.names.size() < mostNames)
        change.names.insert(name);
    else if (watch == m_folder)
        change.mayBeMore = true;
}

} // namespace dozely
