// SPDX-License-Identifier: MIT
#include "DozelyKit/update/WDUpdateChecker.h"

#include "DozelyKit/core/bundles/NSBundle.h"
#include "DozelyKit/core/foundation/IntegerValue.h"
#include "DozelyKit/core/foundation/RootFolder.h"
#include "DozelyKit/core/log/ZDRLog.h"
#include "DozelyKit/system/machine/UserDefaultsExtensions.h"
#include "DozelyKit/system/network/HttpClient.h"
#include "DozelyKit/system/network/Reachability.h"
#include "DozelyKit/update/UpdateAnswer_p.h"
#include "DozelyKit/update/UpdateRequest_p.h"
#include "DozelyKit/update/UpdateServer.h"

using namespace dozely;

namespace
{
std::shared_ptr<WDUpdateChecker> &shared()
{
    static std::shared_ptr<WDUpdateChecker> checker;
    return checker;
}

QVariant applicationInfo(const QString &key)
{
    const auto application = NSBundle::bundleWithPath(RootFolder::join("/Applications/Dozely.app"));
    return application ? application->objectForInfoDictionaryKey(key) : QVariant();
}

bool isServerReachable()
{
    constexpr quint32 mask =
        Reachability::Reachable | Reachability::ConnectionRequired | Reachability::InterventionRequired;
    const auto flags = Port<Reachability>::current()->flagsOfHost(UpdateServer::host());
    return flags && (*flags & mask) == Reachability::Reachable;
}
} // namespace

struct WDUpdateChecker::Private {
    std::optional<QVariantMap> _latestVersionDictionary; // the last answer; absent before there was one
    bool needsToQuitte = false;
};

WDUpdateChecker::WDUpdateChecker() : d(std::make_unique<Private>()) {}

WDUpdateChecker::~WDUpdateChecker() = default;

void WDUpdateChecker::initialize()
{
    init();
}

std::shared_ptr<WDUpdateChecker> WDUpdateChecker::sharedInstance()
{
    return init();
}

std::shared_ptr<WDUpdateChecker> WDUpdateChecker::init()
{
    if (!shared())
        shared().reset(new WDUpdateChecker);
    return shared();
}

QString WDUpdateChecker::versionString() const
{
    const QVariant text = applicationInfo("CFBundleShortVersionString");
    return text.typeId() == QMetaType::QString ? text.toString() : QString();
}

quint64 WDUpdateChecker::version() const
{
    return static_cast<quint64>(longIntegerValue(applicationInfo("CFBundleVersion")));
}

QString WDUpdateChecker::fullVersionString() const
{
    const QString text = versionString();
    return stringWithFormat("%@ (%ld)", {text.isNull() ? QVariant() : text, static_cast<qint64>(version())});
}

bool WDUpdateChecker::updateLatestVersionDictionary()
{
    if (!UpdateServer::isAsked()) {
        ZDRLog("There is no update check in this build.");
        return false;
    }
    if (!isServerReachable()) {
        ZDRLog("The update server \"%@\" cannot be reached.", UpdateServer::host());
        return false;
    }
    const UpdateRequest::Facts facts{versionString(), static_cast<qint64>(version()),
                                     UpdateRequest::countOfEnabledSchedules(),
                                     zandorSoftwaresExtensions::systemVersion()};
    if (!facts.missing().isEmpty())
        ZDRLog("The update check leaves out what is not known: %@.", facts.missing().join(", "));

    const auto bytes = Port<HttpClient>::current()->send(UpdateRequest::make(facts));
    if (!bytes) {
        ZDRLog("The update server gave no answer: %@.", bytes.error().text);
        return false;
    }
    const auto answer = UpdateAnswer::parse(*bytes);
    if (!answer) {
        ZDRLog("The update server's answer %@.", answer.error().text);
        return false;
    }
    d->_latestVersionDictionary = *answer;
    return true;
}

QString WDUpdateChecker::latestVersion() const
{
    if (!d->_latestVersionDictionary || !UpdateAnswer::isNewer(*d->_latestVersionDictionary, version()))
        return {};
    return UpdateAnswer::versionString(*d->_latestVersionDictionary);
}

QUrl WDUpdateChecker::latestVersionURL() const
{
    return d->_latestVersionDictionary ? UpdateAnswer::downloadAddress(*d->_latestVersionDictionary) : QUrl();
}
