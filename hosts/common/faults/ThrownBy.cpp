// SPDX-License-Identifier: MIT
#include "hosts/common/faults/ThrownBy.h"

#include "DozelyKit/core/foundation/NSException.h"
#include "DozelyKit/core/log/LogLabel.h"

using namespace dozely;

std::optional<QString> thrownBy(const std::function<void()> &action)
{
    try {
        action();
        return {};
    } catch (const NSException &exception) {
        return logLabel(exception.name() + ": " + exception.reason());
    } catch (const std::exception &exception) {
        return logLabel(QString::fromUtf8(exception.what()));
    } catch (...) {
        return QString("an exception of an unknown type");
    }
}
