// SPDX-License-Identifier: MIT
#include "hosts/performer/Report.h"

#include <cerrno>
#include <unistd.h>

namespace
{
constexpr qsizetype longestText = 4096; // bytes; a log line has less
}

void Report::send(int pipe, Kind kind, const QString &text)
{
    // A line, so that the text has none of its own.
    QByteArray line(1, static_cast<char>(kind));
    line += text.toUtf8().left(longestText).replace('\n', ' ') + '\n';
    for (qsizetype done = 0; done < line.size();) {
        const ssize_t written =
            ::write(pipe, line.constData() + done, static_cast<size_t>(line.size() - done));
        if (written < 0 && errno != EINTR)
            return;
        done += std::max<ssize_t>(written, 0);
    }
}

void Report::take(QByteArray &bytes, const std::function<void(Kind, const QString &)> &receive)
{
    for (qsizetype end = bytes.indexOf('\n'); end >= 0; end = bytes.indexOf('\n')) {
        const QByteArray line = bytes.left(end);
        bytes.remove(0, end + 1);
        if (!line.isEmpty())
            receive(static_cast<Kind>(line.front()), QString::fromUtf8(line.mid(1)));
    }
}
