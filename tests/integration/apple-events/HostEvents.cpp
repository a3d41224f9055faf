// SPDX-License-Identifier: MIT
#include "HostEvents.h"

#include "DozelyKit/communication/events/NSAppleEventManager.h"
#include "DozelyKit/communication/events/ProcessSerialNumber.h"
#include "DozelyKit/core/foundation/NSException.h"
#include "DozelyKit/core/foundation/NSProcessInfo.h"

#include <csignal>
#include <cstdio>
#include <unistd.h>

using namespace dozely;

namespace
{
qint32 numberIn(const HostEvents::Event &event, AEKeyword keyword)
{
    const auto parameter = event->paramDescriptorForKeyword(keyword);
    return parameter ? parameter->int32Value() : 0;
}

void putNumber(const HostEvents::Event &event, AEKeyword keyword, qint32 number)
{
    event->setParamDescriptorForKeyword(NSAppleEventDescriptor::descriptorWithInt32(number), keyword);
}
} // namespace

void HostEvents::say(const QString &line)
{
    std::puts(line.toUtf8().constData());
    std::fflush(stdout);
}

void HostEvents::listen()
{
    auto &manager = NSAppleEventManager::sharedAppleEventManager();
    manager.setEventHandlerForEventClass(this, "doEcho", hostClass, echo);
    manager.setEventHandlerForEventClass(this, "doNote", hostClass, note);
    manager.setEventHandlerForEventClass(this, "doHang", hostClass, hang);
    manager.setEventHandlerForEventClass(this, "doDie", hostClass, die);
    manager.setEventHandlerForEventClass(this, "doSend", hostClass, send);
    manager.setEventHandlerForEventClass(this, "doBounce", hostClass, bounce);
    manager.setEventHandlerForEventClass(this, "doFail", hostClass, fail);
    manager.setEventHandlerForEventClass(this, "doGrow", hostClass, grow);
    manager.setEventHandlerForEventClass(this, "doReflect", hostClass, reflect);
}

bool HostEvents::meet(qint64 process, qsizetype size)
{
    constexpr int mostTries = 1000;
    const AEDesc large(typeData, QByteArray(size, 'm'));
    AppleEvent event = eventTo(process, reflect);
    event.setParameter(keyDirectObject, large);
    bool haveMet = false;
    m_isMeeting = true;
    for (int i = 0; i < mostTries && !haveMet; ++i) {
        AppleEvent answer;
        if (AESend(&event, &answer, kAEWaitReply, kAENormalPriority, kAEDefaultTimeout) != noErr ||
            answer.parameter(keyDirectObject) != large)
            break;
        haveMet = answer.parameter(meeting) == AEDesc::of(typeBoolean, quint8{1});
    }
    m_isMeeting = false;
    return haveMet;
}

AppleEvent HostEvents::eventTo(qint64 process, AEEventID eventID)
{
    const ProcessSerialNumber number{0, static_cast<quint32>(process)};
    AEDesc address;
    AECreateDesc(typeProcessSerialNumber, &number, sizeof number, &address);
    AppleEvent event;
    AECreateAppleEvent(hostClass, eventID, address, kAutoGenerateReturnID, kAnyTransactionID, &event);
    return event;
}

void HostEvents::doEcho(const Event &event, const Event &reply)
{
    const AEDesc &sent = event->aeDesc();
    for (qsizetype i = 0; i < sent.count(); ++i)
        reply->setParamDescriptorForKeyword(NSAppleEventDescriptor::descriptorWithAEDesc(sent.at(i)),
                                            sent.keywordAt(i));
    for (const AEKeyword who : {keySenderPIDAttr, keySenderEUIDAttr})
        reply->setParamDescriptorForKeyword(event->attributeDescriptorForKeyword(who), who);
}

void HostEvents::doNote(const Event &event, const Event &)
{
    say("heard " + QString::number(numberIn(event, keyDirectObject)));
}

void HostEvents::doHang(const Event &event, const Event &reply)
{
    say("heard hang");
    for (char c = 0; ::read(STDIN_FILENO, &c, 1) == 1 && c != '\n';) {
    }
    doEcho(event, reply);
}

void HostEvents::doDie(const Event &, const Event &)
{
    ::kill(::getpid(), SIGKILL);
}

void HostEvents::doSend(const Event &event, const Event &reply)
{
    const auto eventID = event->paramDescriptorForKeyword(what);
    const AppleEvent own = eventTo(numberIn(event, target),
                                   eventID ? codeOfCharacters(eventID->stringValue()).value_or(echo) : echo);
    AppleEvent answer;
    const OSStatus status =
        AESend(&own, &answer, kAEWaitReply, kAENormalPriority,
               event->paramDescriptorForKeyword(ticks) ? numberIn(event, ticks) : kAEDefaultTimeout);
    putNumber(reply, keyDirectObject, status);
}

void HostEvents::doBounce(const Event &event, const Event &reply)
{
    AppleEvent own = eventTo(numberIn(event, target), send);
    own.setParameter(target, AEDesc::of(typeSInt32, NSProcessInfo::processIdentifier()));
    AppleEvent answer;
    const OSStatus status = AESend(&own, &answer, kAEWaitReply, kAENormalPriority, kAEDefaultTimeout);
    const auto inner = NSAppleEventDescriptor::descriptorWithAEDesc(answer);
    putNumber(reply, keyDirectObject, status != noErr ? status : numberIn(inner, keyDirectObject));
}

void HostEvents::doFail(const Event &, const Event &)
{
    throw NSException(NSInvalidArgumentException, "as it was told to");
}

void HostEvents::doGrow(const Event &event, const Event &reply)
{
    reply->setParamDescriptorForKeyword(NSAppleEventDescriptor::descriptorWithDescriptorType(
                                            typeData, QByteArray(numberIn(event, keyDirectObject), 'g')),
                                        keyDirectObject);
}

void HostEvents::doReflect(const Event &event, const Event &reply)
{
    const auto sender = event->attributeDescriptorForKeyword(keySenderPIDAttr);
    const bool isMeeting = m_isMeeting;
    AppleEvent own = eventTo(sender ? sender->int32Value() : 0, echo);
    own.setParameter(keyDirectObject, event->paramDescriptorForKeyword(keyDirectObject)->aeDesc());
    AppleEvent answer;
    if (AESend(&own, &answer, kAEWaitReply, kAENormalPriority, kAEDefaultTimeout) != noErr)
        return;
    const auto put = [&](const AEDesc &value, AEKeyword keyword) {
        reply->setParamDescriptorForKeyword(NSAppleEventDescriptor::descriptorWithAEDesc(value), keyword);
    };
    put(answer.parameter(keyDirectObject).value_or(AEDesc()), keyDirectObject);
    put(AEDesc::of(typeBoolean, quint8{isMeeting}), meeting);
}
