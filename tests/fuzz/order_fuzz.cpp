// SPDX-License-Identifier: MIT
#include "DozelyKit/core/dbus/CborBlock_p.h"
#include "DozelyKit/core/files/PropertyList.h"
#include "DozelyKit/plugin/OccurrenceOrder_p.h"
#include "DozelyKit/plugin/WDPlugIn.h"
#include "hosts/agent/AgentOrder.h"
#include "hosts/common/orders/OrderReceiver.h"
#include "hosts/common/plugins/PlugInLoader.h"
#include "support/FuzzedSystem.h"
#include "support/Steer.h"

#include <QTimeZone>

#include <unistd.h>

using namespace dozely;

namespace
{
constexpr char bundlePath[] = "/PlugIns/Probe.plugin";

class DaemonSide : public WDDaemonPlugIn
{
public:
    void actInDaemon() override {}
};

struct Setting {
    Setting()
    {
        system.makeFolder(QString(bundlePath) + "/Contents");
        system.write(QString(bundlePath) + "/Contents/Info.plist",
                     PropertyList::toData(QVariantMap(), PropertyList::Format::Xml));
        bundle = NSBundle::bundleWithPath(system.path(bundlePath));
        REQUIRE(bundle);
    }

    FuzzedSystem system;
    std::shared_ptr<NSBundle> bundle;
    PlugInLoader loader{"WDUserAgentModule", {{QString(), {::geteuid()}}}};
};

/// As it comes off the wire; nothing when it cannot travel.
std::optional<NSNotification> sent(const NSNotification &notification)
{
    const auto block = CborBlock::encode(QVariant::fromValue(notification));
    if (!block)
        return {};
    const auto received = CborBlock::decodeNotification(*block);
    REQUIRE(received);
    return *received;
}

/// What the daemon orders is what the agent reads.
void checkDaemonsOrder(Steer &steer, const Setting &setting)
{
    DaemonSide plugIn;
    plugIn.setBundle(setting.bundle);
    const QVariantMap parameters = steer.dictionary(setting.system.now());
    plugIn.setParameters(parameters);
    QDateTime date = steer.date(setting.system.now());
    if (steer.flag())
        date = date.toTimeZone(
            QTimeZone(steer.oneOf<QByteArray>({"Europe/Berlin", "Asia/Kathmandu", "Etc/UTC"})));
    if (!date.isValid() || PropertyList::toData(parameters, PropertyList::Format::Binary).isNull())
        return; // no schedule has them
    plugIn.setCalendarDate(date);
    const auto received = sent(OccurrenceOrder::make(QLatin1StringView("UserAgentMustActEvent"),
                                                     QLatin1StringView("com.dozely.UserAgent"), plugIn,
                                                     OccurrenceOrder::Parameters::EmptyWhenMissing));
    if (!received)
        return;
    const auto order = AgentOrder::in({received->name(), received->userInfo(), RootFolder::owner()});
    REQUIRE(order);
    REQUIRE(order->bundlePath == setting.bundle->bundlePath());
    REQUIRE(order->date == date && order->date.offsetFromUtc() == date.offsetFromUtc());
    REQUIRE(PropertyList::toData(order->parameters, PropertyList::Format::Binary) ==
            PropertyList::toData(parameters, PropertyList::Format::Binary));
}

/// What is obeyed comes from the system, names one moment, and says of bundle and parameters what it holds.
void checkOrder(const OrderPermissions::UserId &peer, const QVariantMap &userInfo, const Setting &setting)
{
    const auto order = AgentOrder::in({"UserAgentMustActEvent", userInfo, peer});
    if (!order) {
        REQUIRE(!order.error().text.isEmpty());
        return;
    }
    REQUIRE(peer && (*peer == 0 || peer == RootFolder::owner()));
    REQUIRE(order->date.isValid() && order->date == userInfo.value("Schedule Date").toDateTime());
    REQUIRE(userInfo.value("Schedule Bundle Path").typeId() == QMetaType::QString);
    REQUIRE(order->bundlePath == userInfo.value("Schedule Bundle Path").toString());
    // Never without the parameters that were meant.
    const QVariant parameters = userInfo.value("Schedule Parameters");
    REQUIRE(!parameters.isValid() || parameters.typeId() == QMetaType::QVariantMap);
    REQUIRE(order->parameters.keys() == parameters.toMap().keys());
    const auto bundle = setting.loader.bundle(order->bundlePath);
    REQUIRE(bundle ? order->bundlePath == setting.system.path(bundlePath) : !bundle.error().text.isEmpty());
}
} // namespace

/// Orders to the agent: those that the daemon makes (first byte 0), user information with keys and types as
/// the input has them (1), and whatever comes off the wire (2).
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static Setting setting;
    Steer steer(data, size);
    const int kind = steer.below(3);
    if (kind == 0) {
        checkDaemonsOrder(steer, setting);
        return 0;
    }
    const auto peer = steer.oneOf<OrderPermissions::UserId>(
        {std::nullopt, 0U, RootFolder::owner(), *RootFolder::owner() + 1, 0xffffffffU});
    if (kind == 2) {
        const auto received = CborBlock::decodeNotification(steer.rest());
        if (received)
            checkOrder(peer, received->userInfo(), setting);
        return 0;
    }
    const QDateTime now = setting.system.now();
    QVariantMap userInfo;
    const int path = steer.below(8);
    if (path < 4)
        userInfo.insert("Schedule Bundle Path", setting.system.path(bundlePath));
    else if (path < 6)
        userInfo.insert("Schedule Bundle Path", setting.system.path("/PlugIns/") + steer.text());
    else if (path == 6)
        userInfo.insert("Schedule Bundle Path", steer.value(now));
    const int date = steer.below(8);
    if (date < 6)
        userInfo.insert("Schedule Date", steer.date(now));
    else if (date == 6)
        userInfo.insert("Schedule Date", steer.value(now));
    const int parameters = steer.below(4);
    if (parameters < 2)
        userInfo.insert("Schedule Parameters", steer.dictionary(now));
    else if (parameters == 2)
        userInfo.insert("Schedule Parameters", steer.value(now));
    checkOrder(peer, userInfo, setting);
    return 0;
}
