// SPDX-License-Identifier: MIT
#include "hosts/common/TimeZoneName.h"

#include <QFileInfo>
#include <QRegularExpression>
#include <QTimeZone>

bool isTimeZoneName(const QString &name)
{
    if (QTimeZone::isTimeZoneIdAvailable(name.toUtf8()))
        return true;
    static const QRegularExpression form("\\A[A-Za-z0-9_+-]+(/[A-Za-z0-9_+-]+)*\\z");
    return form.match(name).hasMatch() && QFileInfo("/usr/share/zoneinfo/" + name).isFile() &&
           QTimeZone(name.toUtf8()).isValid();
}
