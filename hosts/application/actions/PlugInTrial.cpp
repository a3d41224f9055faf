// SPDX-License-Identifier: MIT
#include "hosts/application/actions/PlugInTrial.h"

#include "DozelyKit/plugin/Names.h"
#include "hosts/application/actions/ConfigurationSide.h"

#include <cstdio>

using namespace dozely;

namespace
{
void print(const QString &line)
{
    std::fputs(qPrintable(line + '\n'), stdout);
    std::fflush(stdout);
}

/// Why the side cannot be used; nothing when it can.
QString complaintOf(PlugInLoader &loader, const QString &path)
{
    const auto side = ConfigurationSide::make(loader, path);
    if (!side)
        return side.error().text;
    const auto defaults = (*side)->defaults();
    if (defaults && (*side)->view() && (*side)->show(*defaults) && (*side)->read())
        (void)(*side)->describe(*defaults);
    return (*side)->failure(); // having no view is none
}
} // namespace

QString PlugInTrial::line(const QString &word, const QString &path, const QString &sentence)
{
    QString one = sentence;
    return QStringList{mark, word, path, one.replace('\n', ' ').replace('\t', ' ')}.join('\t');
}

QStringList PlugInTrial::partsOf(const QString &line)
{
    QStringList parts = line.split('\t');
    if (parts.size() != 4 || parts.takeFirst() != mark)
        return {};
    return parts;
}

int PlugInTrial::run(const QStringList &paths)
{
    PlugInLoader loader(InfoKey::prefPaneModule, PlugInLoader::sourcesOfTheSession());
    for (const QString &path : paths) {
        print(line("begin", path));
        const QString complaint = complaintOf(loader, path);
        print(complaint.isEmpty() ? line("ready", path) : line("failed", path, complaint));
    }
    return 0;
}
