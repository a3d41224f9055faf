// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

#include <optional>

/// Who may have which order obeyed. All questions are about user ids as the kernel told them; a peer or an
/// owner that could not be found out is absent, and an absent one may nothing.
namespace OrderPermissions
{
using UserId = std::optional<quint32>;

/// Root, or the owner of the relocated root folder: from them alone an agent takes orders.
bool isSystem(UserId peer, UserId rootOwner);

/// "UserAgentMustTestAlertEvent": the system, or the user whose agent it is.
bool mayTestAlert(UserId peer, UserId rootOwner, UserId agentsUser);

/// "DaemonMustRunNowEvent": the system, or the schedule's owner.
bool mayRunNow(UserId peer, UserId rootOwner, UserId scheduleOwner);

/// "DaemonMustActEvent", and "DaemonMustRemoveEvent" once the action has begun: the user whose agent the
/// occurrence was handed to.
bool mayHandBack(UserId peer, UserId handedTo);

/// "DaemonMustRemoveEvent" before the action: the system, the schedule's owner, or the user who was alerted.
bool mayRemove(UserId peer, UserId rootOwner, UserId scheduleOwner, UserId alerted);
} // namespace OrderPermissions
