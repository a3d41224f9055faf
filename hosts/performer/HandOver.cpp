// SPDX-License-Identifier: MIT
#include "hosts/performer/HandOver.h"

#include "DozelyKit/communication/channel/WDCommunicationCenter.h"
#include "DozelyKit/plugin/WDPlugIn.h"
#include "DozelyKit/system/machine/ConsoleUser.h"

using namespace dozely;

using Delivery = PerformanceOutcome::Delivery;

namespace
{
class GivenConsoleUser : public ConsoleUser
{
public:
    explicit GivenConsoleUser(User user) : m_user(std::move(user)) {}
    std::optional<User> current() override { return m_user; }

private:
    const User m_user;
};
} // namespace

void HandOver::holdConsole(const PerformanceOrder &order)
{
    if (order.consoleUser)
        Port<ConsoleUser>::current() =
            std::make_shared<GivenConsoleUser>(ConsoleUser::User{order.consoleUserName, *order.consoleUser});
}

Delivery HandOver::run(WDDaemonPlugIn &plugIn, PerformanceOrder::Deed deed)
{
    const bool isReceived = deed == PerformanceOrder::Deed::HandOver ? plugIn.actInUserAgentNow()
                                                                     : plugIn.anticipateInUserAgentNow();
    return isReceived ? Delivery::Received : ofFailedPost();
}

Delivery HandOver::ofFailedPost()
{
    const bool isNotSent =
        WDCommunicationCenter::lastPostOutcome() == WDCommunicationCenter::PostOutcome::NotSent;
    return isNotSent ? Delivery::NotSent : Delivery::Unknown;
}
