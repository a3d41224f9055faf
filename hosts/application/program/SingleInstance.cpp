// SPDX-License-Identifier: MIT
#include "hosts/application/program/SingleInstance.h"

#include "DozelyKit/core/foundation/NSProcessInfo.h"
#include "DozelyKit/core/foundation/RootFolder.h"
#include "DozelyKit/core/foundation/StringExtensions.h"
#include "DozelyKit/core/log/ZDRLog.h"
#include "hosts/application/program/Signature.h"
#include "hosts/common/events/EventRequest.h"
#include "hosts/common/events/RequiredEvents.h"

#include <QDeadlineTimer>
#include <QThread>

using namespace dozely;

namespace
{
constexpr char path[] = "/Library/Preferences/com.dozely.App"; // its lock alone is used
constexpr std::chrono::milliseconds betweenQuestions(50);
constexpr qint64 answerLimit = 3 * 60; // ticks

EventRequest openRequest(const QString &startToken)
{
    EventRequest request;
    request.signature = applicationSignature;
    request.user = NSProcessInfo::effectiveUserID();
    request.eventClass = kCoreEventClass;
    request.eventID = kAEOpenApplication;
    request.timeOutInTicks = answerLimit;
    if (!startToken.isEmpty())
        request.parameters.setParameter(RequiredEvents::startToken,
                                        NSAppleEventDescriptor::descriptorWithString(startToken)->aeDesc());
    return request;
}
} // namespace

SingleInstance::SingleInstance()
{
    const QString home = RealHomeDirectory();
    if (home.isEmpty())
        return;
    const GuardedFile file({.path = RootFolder::join(home + path),
                            .largest = 0,
                            .owners = GuardedFile::Owners::SystemAndThisUser});
    auto lock = file.lock(std::chrono::milliseconds(0));
    if (lock)
        m_lock = *std::move(lock);
    else if (lock.error().name == GuardedFile::busy)
        m_isSecond = true;
    else
        ZDRLog("Whether Dozely runs already is not known: %@", lock.error().text);
}

bool SingleInstance::raiseFirst(const QString &startToken, std::chrono::milliseconds limit)
{
    const QDeadlineTimer end(limit);
    while (openRequest(startToken).send().status != noErr) {
        if (end.hasExpired())
            return false;
        QThread::msleep(betweenQuestions.count());
    }
    return true;
}
