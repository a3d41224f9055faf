// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <functional>
#include <optional>

class NSNotification;

/// Posting as hosts do it. A target that dies or falls silent in the middle makes the communication centre
/// raise and leaves that target's lock taken; these catch what is raised, write one line to the log and give
/// the lock back. None of them lets an exception out. BLOCKING: as a request of WDCommunicationCenter.
namespace GuardedPosting
{
/// Posts; false when the target did not receive it.
bool postToDaemon(const NSNotification &notification);
bool postToAgentOfUser(const NSNotification &notification, quint32 userId);

/// Runs `post`, something that makes one request to the target, such as an operation of a plug-in; its
/// answer, or false when it raised.
bool guardDaemon(const std::function<bool()> &post);
bool guardAgentOfUser(quint32 userId, const std::function<bool()> &post);

/// Runs a plug-in's operation, which may make requests to any target: a sentence saying what it raised,
/// absent when it raised nothing. What was raised may have been raised by a request, so all locks are given
/// back then.
std::optional<QString> guardPlugIn(const std::function<void()> &operation);

/// Gives the locks of all targets back. For the main thread while it makes no request.
void giveBackAllLocks();
} // namespace GuardedPosting
