// SPDX-License-Identifier: MIT
#include "DozelyKit/system/machine/linux/LinuxProcessTable_p.h"

#include <algorithm>
#include <cerrno>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <optional>
#include <unistd.h>

namespace dozely
{

namespace
{
struct CloseFolder {
    void operator()(DIR *folder) const { ::closedir(folder); }
};
using Folder = std::unique_ptr<DIR, CloseFolder>;

constexpr std::size_t longestFile = 4096; // bytes; what is looked for stands well before

/// The head of a small file; absent when it is gone, as it is once the process has ended.
std::optional<QByteArray> headOf(int folder, const QByteArray &name)
{
    const int file = ::openat(folder, name.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    if (file < 0)
        return {};
    QByteArray content(longestFile, Qt::Uninitialized);
    ssize_t size = 0;
    do {
        size = ::read(file, content.data(), longestFile);
    } while (size < 0 && errno == EINTR);
    ::close(file);
    if (size < 0)
        return {};
    content.truncate(size);
    return content;
}

std::optional<quint32> realUserId(const QByteArray &status)
{
    constexpr char key[] = "\nUid:\t"; // real, effective, saved, file system
    const qsizetype start = status.indexOf(key);
    if (start < 0)
        return {};
    const qsizetype first = start + static_cast<qsizetype>(sizeof key) - 1;
    qsizetype end = first;
    while (end < status.size() && status.at(end) >= '0' && status.at(end) <= '9')
        ++end;
    bool isNumber = false;
    const quint32 id = status.mid(first, end - first).toUInt(&isNumber);
    return isNumber ? std::optional<quint32>(id) : std::nullopt;
}
} // namespace

QList<ProcessTable::Process> LinuxProcessTable::processes()
{
    const Folder folder(::opendir(m_folder.constData()));
    QList<Process> found;
    if (!folder)
        return found;
    while (const dirent *entry = ::readdir(folder.get())) {
        const QByteArray number(entry->d_name);
        bool isProcess = false;
        const qint32 identifier = number.toInt(&isProcess);
        if (!isProcess || number != QByteArray::number(identifier))
            continue;
        auto name = headOf(::dirfd(folder.get()), number + "/comm");
        const auto status = headOf(::dirfd(folder.get()), number + "/status");
        const auto userId = realUserId(status.value_or(QByteArray()));
        if (!name || !userId)
            continue;
        if (name->endsWith('\n'))
            name->chop(1);
        found.append({identifier, *userId, *name});
    }
    // The kernel lists them so; another file system in its place may not.
    std::sort(found.begin(), found.end(),
              [](const Process &a, const Process &b) { return a.identifier < b.identifier; });
    return found;
}

template<>
std::shared_ptr<ProcessTable> &Port<ProcessTable>::current()
{
    static auto *const port = new std::shared_ptr<ProcessTable>(std::make_shared<LinuxProcessTable>());
    return *port;
}

} // namespace dozely
