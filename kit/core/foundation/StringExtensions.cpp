// SPDX-License-Identifier: MIT
#include "DozelyKit/core/foundation/StringExtensions.h"

#include <QFile>
#include <QFileInfo>
#include <QStringList>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <pwd.h>
#include <unistd.h>
#include <vector>

namespace
{
// "/a/b" is "/", "a", "b".
QStringList pathComponents(const QString &path)
{
    QStringList components = path.split(u'/', Qt::SkipEmptyParts);
    if (path.startsWith(u'/'))
        components.prepend(QStringLiteral("/"));
    return components;
}

QString pathWithComponents(const QStringList &components)
{
    if (components.value(0) == u"/")
        return u'/' + components.mid(1).join(u'/');
    return components.join(u'/');
}
} // namespace

QString zandorSoftwaresExtensions::stringByExpandingTildeInPath(const QString &path)
{
    if (!path.startsWith(u'~'))
        return path;
    const QString home = RealHomeDirectory();
    return home.isEmpty() ? path : home + u'/' + path.mid(1);
}

QString zandorSoftwaresExtensions::resolveAlias(const QString &path)
{
    const QFileInfo file(path);
    if (!file.isSymbolicLink())
        return path;
    const QString target = file.canonicalFilePath(); // empty when the chain dangles or loops
    return target.isEmpty() ? path : target;
}

QString zandorSoftwaresExtensions::resolveContainedAliases(const QString &path)
{
    if (path.isEmpty())
        return ""; // a text, where joining nothing gives none
    QStringList components = pathComponents(path);
    for (qsizetype count = 1; components.size() > count - 1; ++count) {
        const QString prefix = pathWithComponents(components.mid(0, count));
        const QString resolved = resolveAlias(prefix);
        if (resolved != prefix)
            components = pathComponents(resolved) + components.mid(count);
    }
    return pathWithComponents(components);
}

bool zandorSoftwaresExtensions::contains(const QString &text, const QString &part)
{
    return !part.isEmpty() && text.contains(part);
}

bool zandorSoftwaresExtensions::containsInsensitive(const QString &text, const QString &part)
{
    return !part.isEmpty() && text.contains(part, Qt::CaseInsensitive);
}

QString zandorSoftwaresExtensions::randomStringWithLength(qint32 length)
{
    constexpr int letters = 25; // "a" to "y": there is no "z"
    constexpr int fairBelow =
        250;          // the largest multiple of 25 in a byte; the rest would favour the first letters
    QString text(""); // which is a text; a default one is none
    if (length <= 0)
        return text;
    text.reserve(length);
    std::array<unsigned char, 64> random{};
    while (text.size() < length) {
        ::arc4random_buf(random.data(), random.size());
        for (const unsigned char byte : random) {
            if (byte < fairBelow && text.size() < length)
                text += QChar(u'a' + byte % letters);
        }
    }
    return text;
}

QString RealHomeDirectory()
{
    constexpr std::size_t usualSize = 1024;
    constexpr std::size_t largestSize = 1 << 20; // a database that wants more is broken
    for (std::size_t size = usualSize; size <= largestSize; size *= 4) {
        std::vector<char> buffer(size);
        passwd entry{};
        passwd *found = nullptr;
        const int error = ::getpwuid_r(::getuid(), &entry, buffer.data(), buffer.size(), &found);
        if (error == 0 && found)
            return QFile::decodeName(found->pw_dir);
        if (error != ERANGE)
            break;
    }
    return QStringLiteral("");
}
