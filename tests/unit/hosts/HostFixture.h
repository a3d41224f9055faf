// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/files/PropertyList.h"
#include "DozelyKit/core/files/TrustedPath.h"
#include "hosts/common/schedules/Schedule.h"
#include "support/ScratchRoot.h"

#include <QFile>
#include <QFileInfo>

#include <gmock/gmock.h>

#include <sys/stat.h>

/// A scratch system whose folders nobody else may write, whatever the mask of whoever runs the tests.
class HostFixture : public testing::Test
{
public:
    ~HostFixture() override { ::umask(m_formerMask); }

protected:
    HostFixture() : m_formerMask(::umask(022)) {}

    static constexpr char storePath[] = "/Library/Preferences/com.dozely.plist";
    static constexpr char recordPath[] = "/var/lib/dozely/occurrences.db";

    /// An entry of the store with everything that one needs.
    static QVariantMap entry(const QString &identifier, const QDateTime &date = noon())
    {
        return {{"Identifier", identifier},
                {"Name", "Name of " + identifier},
                {"Is Enabled", true},
                {"Bundle Path", "/Library/Application Support/Dozely/PlugIns/Probe.plugin"},
                {"Parameters", QVariantMap{{"Key", "value"}}},
                {"Date", date},
                {"Time Zone", "Europe/Paris"},
                {"Owner", qint64(501)}};
    }
    static QDateTime noon() { return QDateTime({2026, 3, 14}, {12, 0}, Qt::UTC); }

    static QVariantMap changed(QVariantMap entry, const QString &key, const QVariant &value)
    {
        entry.insert(key, value);
        return entry;
    }
    static Schedule schedule(const QString &identifier, const QDateTime &date = noon())
    {
        return *Schedule::fromEntry(entry(identifier, date));
    }
    static QByteArray storeOf(const QVariantList &entries)
    {
        return dozely::PropertyList::toData(QVariantMap{{"Schedule Array", entries}},
                                            dozely::PropertyList::Format::Xml);
    }

    void write(const QString &fixedPath, const QByteArray &content) const
    {
        root.makeFolder(QFileInfo(fixedPath).path());
        QFile file(root.join(fixedPath));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(content), content.size());
    }
    QByteArray read(const QString &fixedPath) const
    {
        QFile file(root.join(fixedPath));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    void writeStore(const QVariantList &entries) const { write(storePath, storeOf(entries)); }

private:
    mode_t m_formerMask; // before the folders are made

protected:
    ScratchRoot root;
};
