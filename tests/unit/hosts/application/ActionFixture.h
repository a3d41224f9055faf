// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/files/PropertyList.h"
#include "hosts/application/actions/ActionSides.h"
#include "support/ScratchRoot.h"
#include "support/WaitUntil.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>

#include <gmock/gmock.h>

/// A scratch system with bundles that have a configuration side.
class ActionFixture : public testing::Test
{
protected:
    static constexpr char plugIns[] = "/Library/Application Support/Dozely/PlugIns";

    /// A bundle whose side does what `behaviour` says; its fixed path.
    QString makeAction(const QString &name, const QString &behaviour = {}, const QVariantMap &more = {}) const
    {
        QVariantMap info{{"CFBundleIdentifier", "com.dozely.plugin." + name},
                         {"WDPrefPaneModule", "SettingsPlugIn.so"},
                         {"Behaviour", behaviour}};
        info.insert(more);
        QString path = QString("%1/%2.plugin").arg(plugIns, name);
        write(path + "/Contents/Info.plist",
              dozely::PropertyList::toData(info, dozely::PropertyList::Format::Xml));
        const QString code = root.makeFolder(path + "/Contents/Linux");
        EXPECT_TRUE(QFile::copy(SETTINGS_MODULE, code + "/SettingsPlugIn.so"));
        QFile::setPermissions(code + "/SettingsPlugIn.so",
                              QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        return path;
    }
    void write(const QString &fixedPath, const QByteArray &content) const
    {
        root.makeFolder(fixedPath.section('/', 0, -2));
        QFile file(root.join(fixedPath));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }
    /// This program tries what is to be loaded.
    PlugInTrials::Start trials() const
    {
        return {QCoreApplication::applicationFilePath(), {"--try", root.path()}};
    }

    ScratchRoot root;
};
