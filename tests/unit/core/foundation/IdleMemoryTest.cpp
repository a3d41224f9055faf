// SPDX-License-Identifier: MIT
#include "DozelyKit/core/foundation/IdleMemory.h"

#include <QByteArray>
#include <QFile>
#include <QTemporaryFile>

#include <gmock/gmock.h>

#include <sys/mman.h>

using namespace dozely;

namespace
{
constexpr size_t size = 64 * 4096;

/// A file that is mapped privately, with all its pages looked at.
class MappedFile
{
public:
    explicit MappedFile(int protection)
    {
        if (!m_file.open() || m_file.write(QByteArray(size, 'x')) != qint64(size) || !m_file.flush())
            return;
        void *const begin = ::mmap(nullptr, size, protection, MAP_PRIVATE, m_file.handle(), 0);
        m_begin = begin == MAP_FAILED ? nullptr : static_cast<char *>(begin);
        read();
    }
    MappedFile(const MappedFile &) = delete;
    MappedFile &operator=(const MappedFile &) = delete;
    ~MappedFile()
    {
        if (m_begin)
            ::munmap(m_begin, size);
    }

    char *begin() const { return m_begin; }
    QByteArray read() const { return QByteArray(QByteArray::fromRawData(m_begin, size).toHex()); }

    /// What this process has in memory of it, in KiB.
    int resident() const
    {
        QFile maps("/proc/self/smaps");
        if (!maps.open(QIODevice::ReadOnly))
            return -1;
        const QByteArray text = maps.readAll();
        const auto mapping = text.indexOf('\n' + QByteArray::number(quintptr(m_begin), 16) + '-');
        const auto line = mapping < 0 ? mapping : text.indexOf("\nRss:", mapping);
        return line < 0 ? -1 : text.mid(line + 5, 30).trimmed().split(' ').first().toInt();
    }

private:
    QTemporaryFile m_file;
    char *m_begin = nullptr;
};
} // namespace

TEST(IdleMemory, GivesBackPagesOfFilesThatAreOnlyRead)
{
    const MappedFile file(PROT_READ);
    ASSERT_NE(file.begin(), nullptr);
    const QByteArray before = file.read();
    ASSERT_EQ(file.resident(), int(size / 1024));

    IdleMemory::giveBack();

    EXPECT_EQ(file.resident(), 0);
    EXPECT_EQ(file.read(), before);
    EXPECT_EQ(file.resident(), int(size / 1024));
}

TEST(IdleMemory, KeepsWhatWasChangedInAFilesPagesBeforeTheyWereProtected)
{
    const MappedFile file(PROT_READ | PROT_WRITE);
    ASSERT_NE(file.begin(), nullptr);
    file.begin()[size / 2] = 'y';
    ASSERT_EQ(::mprotect(file.begin(), size, PROT_READ), 0);

    IdleMemory::giveBack();

    EXPECT_EQ(file.begin()[size / 2], 'y');
}

TEST(IdleMemory, KeepsWhatMayBeChanged)
{
    const MappedFile file(PROT_READ | PROT_WRITE);
    ASSERT_NE(file.begin(), nullptr);
    file.begin()[0] = 'y';

    IdleMemory::giveBack();

    EXPECT_EQ(file.begin()[0], 'y');
}
