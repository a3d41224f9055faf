// SPDX-License-Identifier: MIT
#include "hosts/common/plugins/Feasibility.h"

#include "DozelyKit/core/bundles/NSBundle.h"
#include "DozelyKit/plugin/Names.h"
#include "hosts/common/plugins/ActionPlace.h"

#include <QDir>
#include <QFileInfo>

using namespace dozely;

namespace
{
const QString commandIdentifier = "com.dozely.plugin.Command";

/// Whether every user may look into the folders of a path, none of which belongs to a user.
bool isForAllToSee(const QString &path)
{
    constexpr uint root = 0;
    for (qsizetype slash = path.indexOf('/'); slash >= 0; slash = path.indexOf('/', slash + 1)) {
        const QFileInfo folder(slash == 0 ? QString("/") : path.left(slash));
        if (!folder.isDir() || folder.ownerId() != root || !folder.permission(QFile::ExeOther))
            return false;
    }
    return true;
}

/// Of the bundle "Command": no other one's parameters are known here.
std::optional<QString> reasonAgainstProgram(const QVariantMap &parameters, Feasibility::Sight sight)
{
    const QVariant program = parameters.value(CommandKey::program);
    if (program.typeId() != QMetaType::QString || program.toString().isEmpty())
        return QString("the parameters name no program");
    const QString path = program.toString();
    if (!path.startsWith('/'))
        return QString("the program \"%1\" is not an absolute path").arg(path);
    if (sight == Feasibility::Sight::WhatAllMaySee && !isForAllToSee(QDir::cleanPath(path)))
        return {};
    const QFileInfo file(path);
    if (!file.isFile())
        return QString("there is no program %1").arg(path);
    if (!file.isExecutable())
        return QString("%1 is no program that can be run").arg(path);
    return {};
}
} // namespace

std::optional<QString> Feasibility::reasonAgainst(const Schedule &schedule, Sight sight)
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
        return reasonAgainstProgram(schedule.parameters, sight);
    return {};
}

QString Feasibility::placeOf(const Schedule &schedule)
{
    QVariantMap bundleInfo;
    if (!ActionPlace::isSaidBy(schedule.parameters)) {
        const auto bundle = NSBundle::bundleWithPath(schedule.fullBundlePath());
        if (!bundle)
            return {};
        bundleInfo = bundle->infoDictionary();
    }
    return ActionPlace::actsInUserAgent(schedule.parameters, bundleInfo) ? "session" : "daemon";
}

bool Feasibility::wakesMachine(const Schedule &schedule)
{
    return schedule.parameters.value(ParameterKey::needsWakeUp).toInt() == 1 ||
           schedule.parameters.value(ParameterKey::needsStartup).toInt() == 1;
}

bool Feasibility::hasIdleAfterAction(const Schedule &schedule)
{
    return schedule.afterAction.value_or(AfterAction::Nothing) != AfterAction::Nothing &&
           !wakesMachine(schedule);
}
