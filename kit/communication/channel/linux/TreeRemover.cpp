// SPDX-License-Identifier: MIT
#include "DozelyKit/communication/channel/linux/TreeRemover_p.h"

#include <QRandomGenerator>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace dozely
{

namespace
{
constexpr mode_t closedMode = 0700;

bool removeEmptyFolder(int parent, const char *name)
{
    return ::unlinkat(parent, name, AT_REMOVEDIR) == 0 || errno == ENOENT;
}

/// Shuts others out, so that nobody refills the folder faster than it is emptied. Fails, harmlessly, on the
/// folder of somebody else when this process is not root.
void takeOver(int folder)
{
    if (::fchown(folder, ::geteuid(), static_cast<gid_t>(-1)) == 0)
        ::fchmod(folder, closedMode);
}
} // namespace

TreeRemover::TreeRemover(Descriptor parent, const QByteArray &name)
    : m_parent(std::move(parent)),
      m_name(name),
      m_prefix("removed-" + QByteArray::number(QRandomGenerator::system()->generate64(), 16) + '-')
{
}

bool TreeRemover::removeSingle(int parent, const char *name)
{
    return ::unlinkat(parent, name, 0) == 0 || errno == ENOENT || removeEmptyFolder(parent, name);
}

TreeRemover::State TreeRemover::work(Moment until)
{
    if (m_state == State::Working && !m_top.isValid())
        m_state = begin();
    while (m_state == State::Working) {
        if (const dirent *const entry = ::readdir(m_folder.get()))
            removeFromFolder(entry->d_name);
        else if (!openNext())
            m_state = removeEmptyFolder(m_parent.get(), m_name.constData()) ? State::Gone : State::Stays;
        if (std::chrono::steady_clock::now() >= until)
            break;
    }
    return m_state;
}

TreeRemover::State TreeRemover::begin()
{
    if (removeSingle(m_parent.get(), m_name.constData()))
        return State::Gone;
    if (!open(m_parent.get(), m_name))
        return errno == ENOENT ? State::Gone : State::Stays;
    m_top = Descriptor(::openat(::dirfd(m_folder.get()), ".", O_PATH | O_DIRECTORY | O_CLOEXEC));
    return m_top.isValid() ? State::Working : State::Stays;
}

/// Begins to empty the folder.
bool TreeRemover::open(int parent, const QByteArray &name)
{
    Descriptor folder(::openat(parent, name.constData(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    if (!folder.isValid())
        return false;
    takeOver(folder.get());
    m_folder.reset(::fdopendir(folder.get()));
    if (m_folder)
        folder.release(); // closedir closes it
    return m_folder != nullptr;
}

void TreeRemover::removeFromFolder(const char *entry)
{
    const int folder = ::dirfd(m_folder.get());
    const bool isTop = m_folderName.isEmpty();
    if (std::strcmp(entry, ".") == 0 || std::strcmp(entry, "..") == 0 ||
        (isTop && std::strncmp(entry, m_prefix.constData(), static_cast<size_t>(m_prefix.size())) == 0))
        return;
    if (!removeSingle(folder, entry) &&
        ::renameat(folder, entry, m_top.get(), nameOfMoved(m_moved).constData()) == 0)
        ++m_moved;
}

/// Goes to the next folder that was moved up; false when that was the last one.
bool TreeRemover::openNext()
{
    if (!m_folderName.isEmpty())
        removeEmptyFolder(m_top.get(), m_folderName.constData());
    while (m_next < m_moved) {
        m_folderName = nameOfMoved(m_next++);
        if (open(m_top.get(), m_folderName))
            return true;
    }
    m_folder.reset();
    return false;
}

} // namespace dozely
