// SPDX-License-Identifier: MIT
#include "hosts/application/month/MonthOccurrence.h"

#include <QStringList>

MonthOccurrence MonthOccurrence::fromMap(const QVariantMap &map)
{
    static const QStringList skipped{"removed", "skipped", "missed", "not performed"};
    const auto dateIn = [&](const char *key) {
        return QDateTime::fromString(map.value(key).toString(), Qt::ISODateWithMs).toUTC();
    };
    MonthOccurrence occurrence;
    occurrence.identifier = map.value("identifier").toString();
    occurrence.name = map.value("name").toString();
    occurrence.date = dateIn("date");
    const QDateTime postponedTo = dateIn("postponedTo");
    const QDateTime moment = dateIn("moment");
    occurrence.moment = moment.isValid() ? moment : postponedTo.isValid() ? postponedTo : occurrence.date;
    occurrence.isPostponed = map.value("isPostponed").toBool() || postponedTo.isValid();
    occurrence.wasSkipped = skipped.contains(map.value("state").toString());
    return occurrence;
}
