// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/bundles/NSBundle.h"
#include "DozelyKit/core/files/PropertyList.h"
#include "support/ScratchRoot.h"

#include <QDir>
#include <QFile>

#include <gmock/gmock.h>

/// Builds plug-in bundles below a scratch root.
class PlugInFixture : public testing::Test
{
protected:
    static constexpr char folder[] = "/Library/Application Support/Dozely/PlugIns/";

    QString pathOf(const QString &name) const { return root.join(folder + name + ".plugin"); }

    /// Writes a file below the bundle's Contents.
    void write(const QString &name, const QString &file, const QByteArray &content) const
    {
        const QString path = pathOf(name) + "/Contents/" + file;
        ASSERT_TRUE(QDir().mkpath(QFileInfo(path).path()));
        QFile written(path);
        ASSERT_TRUE(written.open(QIODevice::WriteOnly));
        written.write(content);
    }

    std::shared_ptr<NSBundle> makeBundle(const QString &name, const QVariantMap &info) const
    {
        write(name, "Info.plist", dozely::PropertyList::toData(info, dozely::PropertyList::Format::Xml));
        return NSBundle::bundleWithPath(pathOf(name));
    }

    ScratchRoot root;
};
