// SPDX-License-Identifier: MIT
#include "hosts/admin/Feasibility.h"

#include "DozelyKit/core/bundles/NSBundle.h"
#include "DozelyKit/plugin/Names.h"
#include "hosts/common/plugins/ActionPlace.h"

#include <QFileInfo>

using namespace dozely;

namespace
{
const QString commandIdentifier = "com.dozely.plugin.Command";

/// Of the bundle "Command": no other one's parameters are known here.
std::optional<QString> reasonAgainstProgram(const QVariantMap &parameters)
{
    const QVariant program = parameters.value(CommandKey::program);
    if (program.typeId() != QMetaType::QString || program.toString().isEmpty())
        return QString("the parameters name no program");
    const QString path = program.toString();
    if (!path.startsWith('/'))
        return QString("the program \"%1\" is not an absolute path").arg(path);
    const QFileInfo file(path);
    if (!file.isFile())
        return QString("there is no program %1").arg(path);
    if (!file.isExecutable())
        return QString("%1 is no program that can be run").arg(path);
    return {};
}
} // namespace

std::optional<QString> Feasibility::reasonAgainst(const Schedule &schedule)
{
    const auto bundle = NSBundle::bundleWithPath(schedule.fullBundlePath());
    if (!bundle)
        return QString("there is no bundle at %1").arg(schedule.fullBundlePath());
    const QVariantMap info = bundle->infoDictionary();
    const bool inSession = ActionPlace::actsInUserAgent(schedule.parameters, info);
    if (const auto why = ActionPlace::reasonAgainst(inSession, info)) {
        return QString("%1 cannot act in the %2: %3")
            .arg(QFileInfo(schedule.bundlePath).completeBaseName(), QString(inSession ? "session" : "daemon"),
                 *why);
    }
    if (bundle->bundleIdentifier() == commandIdentifier)
        return reasonAgainstProgram(schedule.parameters);
    return {};
}
