// SPDX-License-Identifier: MIT
#include "hosts/common/program/RelocatedTool.h"

#include "DozelyKit/core/foundation/RootFolder.h"

#include <QCoreApplication>

using namespace dozely;

void takeRootFromOwnPlace(const QString &fixedPath)
{
    const QString place = QCoreApplication::applicationFilePath();
    if (!place.endsWith(fixedPath))
        return;
    const QString folder = place.chopped(fixedPath.size());
    if (!folder.isEmpty() && RootFolder::refusal(folder).isEmpty())
        RootFolder::set(folder);
}
