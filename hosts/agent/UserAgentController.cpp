// SPDX-License-Identifier: MIT
#include "hosts/agent/UserAgentController.h"

#include "core/StringExtensions.h"
#include "core/ZDRLog.h"
#include "hosts/common/EventReceiver.h"
#include "hosts/common/GuardedPosting.h"
#include "hosts/common/LogLabel.h"
#include "platform/NSProcessInfo.h"
#include "platform/RootFolder.h"

namespace
{
const QString sentToAgent = "com.dozely.UserAgent";

QList<PlugInLoader::Source> trustedSources()
{
    QList<PlugInLoader::Source> sources;
    const auto owner = RootFolder::owner();
    if (!owner)
        return sources;
    sources += {QString(), {*owner}};
    const QString home = RealHomeDirectory();
    if (!home.isEmpty())
        sources += {RootFolder::join(home + "/Library/Application Support/Dozely/PlugIns"),
                    {*owner, NSProcessInfo::effectiveUserID()}};
    return sources;
}
} // namespace

UserAgentController::UserAgentController() : m_loader("WDUserAgentModule", trustedSources())
{
    EventReceiver::receive("UserAgentMustActEvent", sentToAgent, this,
                           [this](const ReceivedEvent &event) { userAgentMustAct(event); });
}

UserAgentController::~UserAgentController()
{
    for (const auto &plugIn : m_running.current()) {
        const auto acting = std::dynamic_pointer_cast<WDUserAgentPlugIn>(plugIn);
        if (const auto thrown = GuardedPosting::guardPlugIn([&] { acting->stopAction(); }))
            ZDRLog("A plug-in was told to stop and raised: %@", *thrown);
    }
}

void UserAgentController::userAgentMustAct(const ReceivedEvent &event)
{
    if (!EventPermissions::isSystem(event.peer, RootFolder::owner())) {
        ZDRLog("UserAgentMustActEvent refused: it comes from %@, not from the daemon",
               event.peer ? QString("user %1").arg(*event.peer) : QString("an unknown user"));
        return;
    }
    const QString path = event.userInfo.value("Schedule Bundle Path").toString();
    const QVariant date = event.userInfo.value("Schedule Date");
    if (date.typeId() != QMetaType::QDateTime) {
        ZDRLog("UserAgentMustActEvent refused: it names no date");
        return;
    }
    QString error;
    const auto plugIn = makePlugIn(path, &error);
    if (!plugIn) {
        ZDRLog("The action was not performed: %@", error);
        return;
    }
    ZDRLog("%@ acts in the session", logLabel(path.section('/', -1)));
    const auto thrown = GuardedPosting::guardPlugIn([&] {
        plugIn->setParameters(event.userInfo.value("Schedule Parameters").toMap());
        plugIn->setCalendarDate(date.toDateTime());
        plugIn->loadNib();
        plugIn->actInUserAgent();
    });
    if (thrown)
        ZDRLog("%@ raised: %@", logLabel(path.section('/', -1)), *thrown);
    else
        m_running.keep(plugIn);
}

std::shared_ptr<WDUserAgentPlugIn> UserAgentController::makePlugIn(const QString &bundlePath, QString *error)
{
    const auto bundle = m_loader.bundle(bundlePath, error);
    const auto plugIn = bundle ? m_loader.make(bundle, error) : nullptr;
    auto agentPlugIn = std::dynamic_pointer_cast<WDUserAgentPlugIn>(plugIn);
    if (plugIn && !agentPlugIn)
        *error =
            QString("The module of %1 makes no plug-in for the agent").arg(logLabel(bundle->bundlePath()));
    return agentPlugIn;
}
