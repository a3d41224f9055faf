// SPDX-License-Identifier: MIT
#pragma once

#include <QFile>
#include <QStringList>

/// What a chapter of a page of docs/ tells people to type: the commands in its blocks of code, in their
/// order, a command of several lines as one. The chapter ends before the next heading of any level.
inline QStringList typedCommands(const QString &page, const QString &heading)
{
    QFile file(DOZELY_DOCS "/" + page);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return {};
    QStringList commands;
    bool isInChapter = false;
    bool isInBlock = false;
    bool goesOn = false;
    for (const QString &line : QString::fromUtf8(file.readAll()).split('\n')) {
        if (line.startsWith("```")) {
            isInBlock = !isInBlock;
            goesOn = false;
        } else if (!isInBlock && line.startsWith('#')) {
            isInChapter = line == heading;
        } else if (isInChapter && isInBlock) {
            if (goesOn)
                commands.last() += '\n' + line;
            else
                commands += line;
            goesOn = line.endsWith('\\');
        }
    }
    return commands;
}
