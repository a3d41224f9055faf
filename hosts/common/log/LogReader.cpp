// SPDX-License-Identifier: MIT
#include "hosts/common/log/LogReader.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace dozely;

namespace
{
constexpr qint64 blockSize = 64 * 1024;          // bytes
constexpr qint64 longestTail = 16 * 1024 * 1024; // bytes looked through for the last lines
constexpr qsizetype longestLine = 64 * 1024;     // bytes; a longer one is shown in pieces
} // namespace

LogReader::LogReader(QString path) : m_path(std::move(path)) {}

Result<void> LogReader::open()
{
    // Anybody may have put something else there; opening a pipe would wait for a writer.
    const int descriptor = ::open(QFile::encodeName(m_path).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    struct stat status {
    };
    if (descriptor < 0 || ::fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode)) {
        if (descriptor < 0)
            return Error{QString::fromLocal8Bit(std::strerror(errno))};
        ::close(descriptor);
        return Error{"it is not a file"};
    }
    m_file = std::make_unique<QFile>();
    forgetBegun();
    if (!m_file->open(descriptor, QIODevice::ReadOnly | QIODevice::Unbuffered, QFile::AutoCloseHandle)) {
        const Error error{m_file->errorString()};
        m_file.reset();
        return error;
    }
    return {};
}

QList<QByteArray> LogReader::lastLines(int count)
{
    if (!m_file)
        return {};
    const qint64 end = m_file->size();
    qint64 begin = end;
    QByteArray tail;
    // One end of line more than lines, so that the first of them is whole.
    while (begin > 0 && tail.count('\n') <= count && end - begin < longestTail) {
        const qint64 size = std::min(blockSize, begin);
        begin -= size;
        m_file->seek(begin);
        tail.prepend(m_file->read(size));
    }
    m_file->seek(begin);
    if (begin > 0)
        m_file->seek(begin + tail.indexOf('\n') + 1);
    QList<QByteArray> lines;
    readRest(lines);
    return lines.mid(std::max<qsizetype>(0, lines.size() - count));
}

QList<QByteArray> LogReader::newLines()
{
    QList<QByteArray> lines;
    if (m_file) {
        if (m_file->size() < m_file->pos()) {
            forgetBegun();
            m_file->seek(0);
        }
        readRest(lines);
    }
    if ((!m_file || wasExchanged()) && open())
        readRest(lines);
    return lines;
}

bool LogReader::wasExchanged() const
{
    struct stat ours {
    };
    struct stat there {
    };
    return ::fstat(m_file->handle(), &ours) == 0 &&
           ::stat(QFile::encodeName(m_path).constData(), &there) == 0 &&
           (ours.st_dev != there.st_dev || ours.st_ino != there.st_ino);
}

void LogReader::forgetBegun()
{
    m_begun.clear();
    m_isInPieces = false;
}

void LogReader::readRest(QList<QByteArray> &lines)
{
    for (QByteArray block = m_file->read(blockSize); !block.isEmpty(); block = m_file->read(blockSize)) {
        m_begun += block;
        qsizetype begin = 0;
        for (qsizetype end = m_begun.indexOf('\n'); end >= 0; end = m_begun.indexOf('\n', begin)) {
            if (end > begin || !m_isInPieces) // nothing is left of a line whose last piece was given
                lines += m_begun.mid(begin, end - begin);
            m_isInPieces = false;
            begin = end + 1;
        }
        m_begun.remove(0, begin);
        if (m_begun.size() > longestLine) {
            lines += m_begun;
            m_begun.clear();
            m_isInPieces = true;
        }
    }
}
