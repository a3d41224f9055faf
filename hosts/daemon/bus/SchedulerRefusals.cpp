// SPDX-License-Identifier: MIT
#include "hosts/daemon/bus/SchedulerRefusals.h"

#include "DozelyKit/core/log/LogLabel.h"
#include "hosts/common/bus/SchedulerNames.h"

using namespace dozely;

Error SchedulerRefusals::noSuchSchedule(const QString &identifier)
{
    return {QString("There is no schedule %1.").arg(logLabel(identifier)), SchedulerNames::noSuchSchedule};
}

Error SchedulerRefusals::invalid(const QString &sentence)
{
    return {sentence, SchedulerNames::invalidSchedule};
}

Error SchedulerRefusals::notPossible(const Error &error)
{
    QString sentence = error.text + '.';
    sentence[0] = sentence.at(0).toUpper();
    return {sentence, SchedulerNames::notPossible};
}
