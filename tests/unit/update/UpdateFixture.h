// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/files/PropertyList.h"
#include "DozelyKit/core/foundation/NSProcessInfo.h"
#include "DozelyKit/system/network/HttpClient.h"
#include "DozelyKit/system/network/Reachability.h"
#include "DozelyKit/update/WDUpdateChecker.h"
#include "support/PrintTo.h"
#include "support/ScratchRoot.h"
#include "unit/update/UpdateFakes.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <sys/stat.h>

#include <gmock/gmock.h>

/// A scratch system with the application's version 3.2 (41), a server within reach, and its answers in the
/// test's hand. Nobody else may write its folders, whatever the mask of whoever runs the tests.
class UpdateFixture : public testing::Test
{
protected:
    UpdateFixture()
    {
        NSProcessInfo::setProcessName("Dozely Admin");
        dozely::Port<dozely::HttpClient>::current() = http;
        dozely::Port<dozely::Reachability>::current() = network;
        writeApplication({{"CFBundleShortVersionString", "3.2"}, {"CFBundleVersion", "41"}});
        writeList("/System/Library/CoreServices/SystemVersion.plist",
                  QVariantMap{{"ProductVersion", "12.5"}});
    }

    ~UpdateFixture() override { ::umask(formerMask); }

    void writeList(const QString &fixedPath, const QVariant &value) const
    {
        writeFile(fixedPath, dozely::PropertyList::toData(value, dozely::PropertyList::Format::Xml));
    }

    void writeFile(const QString &fixedPath, const QByteArray &content) const
    {
        root.makeFolder(QFileInfo(fixedPath).path());
        QFile file(root.join(fixedPath));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(content), content.size());
    }

    void writeApplication(const QVariantMap &info) const
    {
        writeList("/Applications/Dozely.app/Contents/Info.plist", info);
    }

    void writeStore(const QVariant &store) const
    {
        writeList("/Library/Preferences/com.dozely.plist", store);
    }

    /// The lines of the log without who wrote them.
    QStringList log() const
    {
        QStringList texts;
        for (const QString &line : root.logLines())
            texts += line.mid(line.indexOf("): ") + 3);
        return texts;
    }

    const mode_t formerMask = ::umask(022); // before the folders are made
    ScratchRoot root;
    std::shared_ptr<FakeHttpClient> http = std::make_shared<FakeHttpClient>();
    std::shared_ptr<FakeReachability> network = std::make_shared<FakeReachability>();
    std::shared_ptr<WDUpdateChecker> checker = WDUpdateChecker::sharedInstance();
};
