// SPDX-License-Identifier: MIT
#include "DozelyKit/core/bundles/ModuleFile_p.h"

#include "DozelyKit/core/foundation/Descriptor.h"

#include <QByteArray>
#include <QFile>
#include <QFileInfo>
#include <QList>

#include <cstdint>
#include <cstdio>
#include <fcntl.h>
#include <sys/mman.h>

namespace dozely
{

namespace
{
/// A piece of a file in this process's memory.
struct Piece {
    std::uintptr_t begin;
    std::uintptr_t end;
    int protection;

    size_t size() const { return end - begin; }
    void *address() const { return reinterpret_cast<void *>(begin); }
};

/// From "BEGIN-END PERMISSIONS OFFSET DEVICE INODE PATH" of proc_pid_maps(5), if it is of a file below the
/// folder and nobody else can write it.
bool read(const QByteArray &line, const QByteArray &folder, Piece &piece)
{
    char permissions[5] = {};
    int path = 0;
    if (std::sscanf(line.constData(), "%lx-%lx %4s %*s %*s %*s %n", &piece.begin, &piece.end, permissions,
                    &path) != 3 ||
        path == 0 || permissions[0] != 'r' || permissions[3] != 'p' || !line.mid(path).startsWith(folder))
        return false;
    piece.protection =
        PROT_READ | (permissions[1] == 'w' ? PROT_WRITE : 0) | (permissions[2] == 'x' ? PROT_EXEC : 0);
    return true;
}

QList<Piece> piecesBelow(const QByteArray &folder)
{
    QList<Piece> pieces;
    QFile maps("/proc/self/maps");
    if (!maps.open(QIODevice::ReadOnly))
        return pieces;
    Piece piece{};
    for (const QByteArray &line : maps.readAll().split('\n')) {
        if (read(line, folder, piece))
            pieces += piece;
    }
    return pieces;
}

/// Puts a copy in its place, in one step. Pages that were written are no exception: a file that becomes
/// shorter takes them away as well.
void replace(const Piece &piece, int memory)
{
    void *const copy =
        ::mmap(nullptr, piece.size(), PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (copy == MAP_FAILED)
        return;
    // Read like a file: what was cut off meanwhile is an error, not a signal.
    const bool isCopied = ::pread(memory, copy, piece.size(), static_cast<off_t>(piece.begin)) ==
                              static_cast<ssize_t>(piece.size()) &&
                          ::mprotect(copy, piece.size(), piece.protection) == 0 &&
                          ::mremap(copy, piece.size(), piece.size(), MREMAP_MAYMOVE | MREMAP_FIXED,
                                   piece.address()) != MAP_FAILED;
    if (!isCopied)
        ::munmap(copy, piece.size());
}
} // namespace

void ModuleFile::detach(const QString &folder)
{
    const Descriptor memory(::open("/proc/self/mem", O_RDONLY | O_CLOEXEC));
    const QString path = QFileInfo(folder).canonicalFilePath();
    if (!memory.isValid() || path.isEmpty())
        return;
    for (const Piece &piece : piecesBelow(QFile::encodeName(path) + '/'))
        replace(piece, memory.get());
}

} // namespace dozely
