// SPDX-License-Identifier: MIT
#include "DozelyKit/system/machine/AutostartEntry_p.h"

#include "DozelyKit/core/files/AtomicFile.h"
#include "DozelyKit/core/files/RegularFile_p.h"
#include "DozelyKit/core/foundation/RootFolder.h"
#include "DozelyKit/system/machine/HomeFolder_p.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>

namespace dozely
{

namespace
{
constexpr char mark[] = "X-Dozely-LoginItem=true";
constexpr qint64 largestEntry = 64 << 10; // bytes; such a file has some hundred
constexpr int entryMode = 0644;

QString autostartFolder()
{
    const QString configuration = qEnvironmentVariable("XDG_CONFIG_HOME");
    // The convention has it that a relative path is to be ignored.
    const QString folder =
        configuration.startsWith('/') ? RootFolder::join(configuration) : pathInHomeFolder("/.config");
    return folder.isEmpty() ? QString() : folder + "/autostart";
}

/// A text as the value of a key.
QString escaped(QString text)
{
    return text.replace('\\', "\\\\");
}

/// A program's path as a quoted argument of a command line: protected as between double quotes of a shell,
/// with the percent sign, which begins a field code, doubled.
QString quoted(const QString &program)
{
    QString text;
    for (const QChar c : program) {
        if (QStringView(u"\"`$\\").contains(c))
            text += '\\';
        text += c == '%' ? QString("%%") : QString(c);
    }
    return '"' + text + '"';
}

bool hasControlCharacters(const QString &text)
{
    return std::any_of(text.begin(), text.end(),
                       [](QChar c) { return c.category() == QChar::Other_Control; });
}
} // namespace

AutostartEntry::AutostartEntry(const QString &bundleName) : m_name(QFileInfo(bundleName).completeBaseName())
{
    const QString folder = autostartFolder();
    if (!folder.isEmpty())
        m_path = QString("%1/dozely-login-%2.desktop").arg(folder, m_name);
}

void AutostartEntry::put(const QString &program, bool hidden) const
{
    if (m_path.isEmpty() || hasControlCharacters(m_name + program) || !(isFree() || isOwn()) ||
        !QDir().mkpath(QFileInfo(m_path).path()))
        return;
    const QStringList lines{"[Desktop Entry]",
                            "Type=Application",
                            "Name=" + escaped(m_name),
                            "Exec=" + escaped(quoted(program)),
                            mark,
                            QString("X-Dozely-Hide=%1").arg(hidden ? "true" : "false")};
    (void)replaceFileAtomically(m_path, (lines.join('\n') + '\n').toUtf8(), entryMode);
}

void AutostartEntry::remove() const
{
    if (!m_path.isEmpty() && isOwn())
        QFile::remove(m_path);
}

bool AutostartEntry::isFree() const
{
    const QFileInfo file(m_path);
    return !file.exists() && !file.isSymbolicLink();
}

bool AutostartEntry::isOwn() const
{
    const auto content = readRegularFile(m_path, largestEntry, false);
    return content && content->split('\n').contains(mark);
}

} // namespace dozely
