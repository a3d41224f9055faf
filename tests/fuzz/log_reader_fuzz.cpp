// SPDX-License-Identifier: MIT
#include "hosts/admin/LogCommand.h"
#include "hosts/admin/Output.h"
#include "hosts/common/log/LogReader.h"
#include "support/FuzzedSystem.h"
#include "support/Steer.h"

using namespace dozely;

namespace
{
constexpr char logFile[] = "/dozely.log";
constexpr qsizetype longestLine = 64 * 1024; // a longer one comes in pieces

bool hasLongLine(const QByteArray &bytes)
{
    const QByteArrayList lines = bytes.split('\n');
    return std::any_of(lines.begin(), lines.end(),
                       [](const auto &line) { return line.size() > longestLine; });
}

/// The log as others write it, and how far a reader has come, said in the simplest way.
class Writer
{
public:
    explicit Writer(const FuzzedSystem &system) : m_system(system) { m_system.write(logFile, {}); }

    void append(const QByteArray &bytes)
    {
        m_content += bytes;
        m_system.write(logFile, m_content);
    }
    void cut(qsizetype size)
    {
        m_content.truncate(size);
        m_system.write(logFile, m_content);
    }
    void exchange()
    {
        m_former += m_isExchanged ? QByteArray() : unread();
        m_isExchanged = true;
        REQUIRE(QFile::remove(m_system.path(logFile)));
        m_content.clear();
        m_read = 0;
        m_system.write(logFile, {});
    }

    const QByteArray &content() const { return m_content; }

    /// The reader has come to the end and holds what it did not give of the last line.
    void hasRead()
    {
        m_read = m_content.size();
        m_begun = m_content.mid(m_content.lastIndexOf('\n') + 1);
        m_isInPieces = false;
    }

    /// Whether `lines` are what a reader has to give now.
    void check(QList<QByteArray> lines)
    {
        if (m_isExchanged) {
            take(lines, m_former);
            m_former.clear();
            m_begun.clear(); // its end was lost with the file
            m_isInPieces = false;
            m_isExchanged = false;
        }
        const QByteArray stream = unread();
        m_begun = take(lines, stream);
        REQUIRE(lines.isEmpty());
        m_read = m_content.size();
    }

private:
    QByteArray unread()
    {
        if (m_content.size() < m_read) { // cut
            m_isInPieces = false;
            return m_content;
        }
        return m_begun + m_content.mid(m_read);
    }

    /// Takes the lines of a stream off the front; what is left is of a line without its end.
    QByteArray take(QList<QByteArray> &lines, const QByteArray &stream)
    {
        QByteArrayList whole = stream.split('\n');
        const QByteArray begun = whole.takeLast();
        if (!whole.isEmpty() && whole.first().isEmpty() && m_isInPieces)
            whole.removeFirst(); // the end of a line that was given
        m_isInPieces = m_isInPieces && !stream.contains('\n');
        for (const QByteArray &line : std::as_const(whole)) {
            if (line.size() <= longestLine) {
                REQUIRE(!lines.isEmpty() && lines.takeFirst() == line);
                continue;
            }
            QByteArray pieces;
            while (pieces.size() < line.size()) {
                REQUIRE(!lines.isEmpty());
                pieces += lines.takeFirst();
            }
            REQUIRE(pieces == line);
        }
        QByteArray given;
        while (begun.size() - given.size() > longestLine && !lines.isEmpty())
            given += lines.takeFirst();
        m_isInPieces = m_isInPieces || !given.isEmpty();
        REQUIRE(begun.startsWith(given) && begun.size() - given.size() <= longestLine);
        return begun.mid(given.size());
    }

    const FuzzedSystem &m_system;
    QByteArray m_content;
    qsizetype m_read = 0;
    QByteArray m_begun;
    QByteArray m_former; ///< What was not read yet of the file that was there before.
    bool m_isExchanged = false;
    bool m_isInPieces = false; ///< Whether pieces of the line without end were given.
};

/// Up to some hundred kilobytes.
QByteArray somePiece(Steer &steer)
{
    const QByteArray piece = steer.bytes(200);
    return piece.repeated(1 + static_cast<int>(steer.index(steer.flag() ? 2048 : 2)));
}

/// What is shown of a line cannot steer the terminal, and has its text.
void checkShown(const QByteArray &line)
{
    const QString shown = Output::escaped(QString::fromUtf8(line));
    for (const QChar c : shown)
        REQUIRE(c.category() != QChar::Other_Control && c.category() != QChar::Other_Format &&
                c.category() != QChar::Separator_Line && c.category() != QChar::Separator_Paragraph);
    REQUIRE(Output::escaped(shown) == shown);
    const QVariantMap parts = LogCommand::parts(line);
    const QString message = parts.value("message").toString();
    REQUIRE(parts.contains("message") && QString::fromUtf8(line).endsWith(message));
    REQUIRE(parts.size() == 1 || (parts.size() == 2 && parts.contains("stamp")) || parts.size() == 6);
}

/// A line as the system writes it is taken apart into what it was made of, whatever its message says.
void checkParts(Steer &steer)
{
    const qint64 process = static_cast<qint32>(steer.number());
    const qint64 user = static_cast<qint32>(steer.number());
    const QString role = steer.oneOf({"Daemon", "User Agent", "App", "Admin"});
    QString message = QString::fromUtf8(steer.bytes(64));
    message.remove('\n');
    const QString line =
        QString("Mar 04 09:15:02 (%1 - 1 - %2 - %3): ").arg(process).arg(user).arg(role) + message;
    const QVariantMap parts = LogCommand::parts(line.toUtf8());
    REQUIRE(parts.value("stamp") == "Mar 04 09:15:02");
    REQUIRE(parts.value("process") == process && parts.value("parent") == 1 && parts.value("user") == user);
    REQUIRE(parts.value("role") == role && parts.value("message") == message);
}
} // namespace

/// The log as others append to it, cut it and exchange it, step by step, and a reader beside them.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static FuzzedSystem system;
    Steer steer(data, size);
    checkParts(steer);
    Writer writer(system);
    for (int left = steer.below(4); left > 0; --left)
        writer.append(somePiece(steer));
    LogReader reader(system.path(logFile));
    REQUIRE(reader.open());
    const int count = steer.below(32);
    const QList<QByteArray> last = reader.lastLines(count);
    REQUIRE(last.size() <= count);
    for (const QByteArray &line : last.mid(0, 3))
        checkShown(line);
    if (hasLongLine(writer.content()))
        return 0; // how a long line is cut depends on where reading begins
    QByteArrayList lines = writer.content().split('\n');
    lines.removeLast();
    REQUIRE(last == lines.mid(std::max<qsizetype>(0, lines.size() - count)));
    writer.hasRead();
    while (!steer.isUsedUp()) {
        switch (steer.below(8)) {
        case 0:
            writer.exchange();
            break;
        case 1:
            writer.cut(writer.content().size() * steer.byte() / 256);
            break;
        case 2:
        case 3:
        case 4: {
            const QList<QByteArray> fresh = reader.newLines();
            writer.check(fresh);
            for (const QByteArray &line : fresh.mid(0, 3))
                checkShown(line);
            break;
        }
        default:
            writer.append(somePiece(steer));
        }
    }
    writer.check(reader.newLines());
    return 0;
}
