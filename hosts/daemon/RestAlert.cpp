// SPDX-License-Identifier: MIT
#include "hosts/daemon/RestAlert.h"

#include "DozelyKit/core/foundation/NSNotification.h"
#include "DozelyKit/core/log/LogLabel.h"
#include "DozelyKit/plugin/Names.h"
#include "hosts/common/orders/GuardedPosting.h"
#include "hosts/daemon/PinnedConsoleUser.h"
#include "hosts/daemon/ReturnToRest.h"

#include <QFile>
#include <QTimeZone>

using namespace dozely;

RestAlert::RestAlert(Scheduler &scheduler, std::shared_ptr<PinnedConsoleUser> console)
    : m_scheduler(scheduler), m_console(std::move(console))
{
}

Result<std::optional<quint32>> RestAlert::show(AfterAction step, const QDateTime &date)
{
    const auto user = m_console->current();
    if (!user)
        return std::optional<quint32>();
    const QString bundle = ReturnToRest::bundlePathOf(step);
    if (!QFile::exists(bundle + "/Contents/Info.plist"))
        return Error{QString("%1, whose alert user %2 would see, is not there")
                         .arg(logLabel(bundle.section('/', -1)))
                         .arg(user->userId)};
    const QVariantMap parameters{{ParameterKey::alert, 1},
                                 {ParameterKey::delayBeforeAlert, qint64(ReturnToRest::alertLead.count())}};
    const NSNotification order(OrderName::userAgentMustAnticipate, QString(OrderSender::userAgent),
                               {{OrderKey::bundlePath, bundle},
                                {OrderKey::date, date.toTimeZone(QTimeZone::systemTimeZone())},
                                {OrderKey::parameters, parameters}});
    m_scheduler.lateness().beginWait();
    const bool isReceived = GuardedPosting::postToAgentOfUser(order, user->userId);
    m_scheduler.lateness().endWait();
    if (!isReceived)
        return Error{QString("user %1 could not be alerted").arg(user->userId)};
    return std::optional(user->userId);
}
