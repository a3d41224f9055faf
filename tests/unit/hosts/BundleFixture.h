// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/system/power/SystemPower.h"
#include "unit/hosts/HostFixture.h"
#include "unit/hosts/PowerFakes.h"

/// Puts bundles with built modules below the scratch root. Actions that they perform here keep no real
/// machine awake.
class BundleFixture : public HostFixture
{
protected:
    BundleFixture() { dozely::Port<dozely::SystemPower>::current() = power; }

    static constexpr char plugIns[] = "/Library/Application Support/Dozely/PlugIns";

    /// A bundle with this Info dictionary and these files as modules; its fixed path.
    QString makeBundle(const QString &name, const QVariantMap &info,
                       const QStringList &modules = {PROBE_MODULE}) const
    {
        QString bundle = QString("%1/%2.plugin").arg(plugIns, name);
        write(bundle + "/Contents/Info.plist",
              dozely::PropertyList::toData(info, dozely::PropertyList::Format::Xml));
        const QString folder = root.makeFolder(bundle + "/Contents/Linux");
        for (const QString &module : modules) {
            const QString copy = folder + '/' + QFileInfo(module).fileName();
            EXPECT_TRUE(QFile::copy(module, copy)) << copy.toStdString();
            ::chmod(qPrintable(copy), 0755);
        }
        return bundle;
    }
    QString makeProbe() const
    {
        return makeBundle("Probe", {{"CFBundleIdentifier", "com.dozely.probe"},
                                    {"WDDaemonModule", "ProbePlugIn.so"},
                                    {"WDUserAgentModule", "ProbePlugIn.so"}});
    }
    /// The lines of the log without what says who wrote them: this program, or a performer for the daemon.
    QStringList messages() const
    {
        QStringList messages;
        for (const QString &line : root.logLines())
            messages += line.startsWith('(') ? line.section("): ", 1) : line.section(' ', 1);
        return messages;
    }

    std::shared_ptr<PowerByHand> power = PowerByHand::ofThisProcess();
};
