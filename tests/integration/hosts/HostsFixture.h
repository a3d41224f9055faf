// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/common/record/RecordedOutcomes.h"
#include "integration/hosts/HostSystem.h"
#include "support/PrintTo.h"

/// Daemon and agent as real processes, and what the tests of them share.
class HostsTest : public HostSystem
{
protected:
    static inline const QVariantMap inSession{{"Acts In User Agent", 1LL}};
    static inline const QVariantMap inDaemon{{"Acts In User Agent", 0LL}};

    static QVariantMap with(QVariantMap parameters, const QString &key, const QVariant &value)
    {
        parameters.insert(key, value);
        return parameters;
    }
    /// The one line of the log that contains `part`.
    std::string lineWith(const QString &part) const
    {
        const QStringList lines = root.logLines().filter(part);
        EXPECT_EQ(lines.size(), 1) << part.toStdString();
        return lines.value(0).toStdString();
    }
    NSNotification handBack(const QString &name, const QDateTime &date) const
    {
        return NSNotification(name, "com.dozely.Daemon",
                              {{"Schedule Date", date},
                               {"Schedule Bundle Path", schedule("any").fullBundlePath()},
                               {"Schedule Parameters", QVariantMap{{"Text", "made up"}}}});
    }
    /// What the record says of an occurrence; no text when it says nothing.
    static QString outcomeOf(const QString &identifier, const QDateTime &date)
    {
        const auto outcomes = RecordedOutcomes::open();
        const auto outcome = outcomes ? outcomes->find(identifier, date) : outcomes.error();
        return outcome && *outcome ? (*outcome)->state : QString();
    }
    /// The whole of it; of a state without a name when the record says nothing.
    static RecordedOutcome recorded(const QVariantMap &entry)
    {
        const auto outcomes = RecordedOutcomes::open();
        const auto outcome =
            outcomes ? outcomes->find(entry["Identifier"].toString(), entry["Date"].toDateTime().toUTC())
                     : outcomes.error();
        return outcome && *outcome ? **outcome : RecordedOutcome();
    }
    static NSNotification runNow(const QString &identifier)
    {
        return NSNotification("DaemonMustRunNowEvent", "com.dozely.Admin",
                              {{"Schedule Identifier", identifier}});
    }
};
