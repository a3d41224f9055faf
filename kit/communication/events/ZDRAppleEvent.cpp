// SPDX-License-Identifier: MIT
#include "DozelyKit/communication/events/ZDRAppleEvent.h"

#include "DozelyKit/communication/events/AEMacRoman_p.h"
#include "DozelyKit/communication/events/AEManager.h"
#include "DozelyKit/core/foundation/NSProcessInfo.h"
#include "DozelyKit/core/foundation/RootFolder.h"
#include "DozelyKit/core/foundation/StringFormat.h"

#include <QStringDecoder>

#include <cstring>

using namespace dozely;

namespace
{
/// The rounding of the buffers that parameters of any size are read into.
constexpr qsizetype bufferUnit = 16;

QByteArray bufferFor(qsizetype size)
{
    return QByteArray((size + bufferUnit - 1) / bufferUnit * bufferUnit, '\0');
}

OSType codeOf(const AppleEvent &event, AEKeyword attribute)
{
    OSType code = 0;
    AEGetAttributePtr(event, attribute, typeType, nullptr, &code, sizeof code, nullptr);
    return code;
}

/// `setter` as the line names it.
void putParameter(AEDesc *event, AEKeyword keyword, DescType type, const void *data, qsizetype size,
                  const char *setter)
{
    const OSErr error = AEPutParamPtr(event, keyword, type, data, size);
    if (error != noErr)
        NSLog("AEPutParamPtr (%@:forKeyword:): %d", QString::fromLatin1(setter), qint32{error});
}
} // namespace

ZDRAppleEvent::ZDRAppleEvent() = default;
ZDRAppleEvent::~ZDRAppleEvent() = default;

std::shared_ptr<ZDRAppleEvent> ZDRAppleEvent::appleEvent()
{
    return std::shared_ptr<ZDRAppleEvent>(new ZDRAppleEvent);
}

std::shared_ptr<ZDRAppleEvent>
ZDRAppleEvent::appleEventWithAppleEventDescriptor(const std::shared_ptr<NSAppleEventDescriptor> &descriptor)
{
    auto event = appleEvent();
    event->_appleEventDescriptor = descriptor;
    return event;
}

std::shared_ptr<ZDRAppleEvent> ZDRAppleEvent::appleEventWithCarbonEvent(AEDesc carbonEvent)
{
    auto event = appleEvent();
    event->_carbonEvent = std::move(carbonEvent);
    return event;
}

std::shared_ptr<ZDRAppleEvent>
ZDRAppleEvent::appleEventWithEventClassForProcessWithSignature(AEEventClass eventClass, AEEventID eventID,
                                                               OSType signature)
{
    const ProcessSerialNumber number = psnOfProcessWithSignature(signature);
    AEDesc address;
    AECreateDesc(typeProcessSerialNumber, &number, sizeof number, &address);
    AppleEvent event;
    AECreateAppleEvent(eventClass, eventID, address, kAutoGenerateReturnID, kAnyTransactionID, &event);
    return appleEventWithCarbonEvent(std::move(event));
}

ProcessSerialNumber ZDRAppleEvent::psnOfProcessWithSignature(OSType signature)
{
    // Where several users are logged in, each has such processes, and may send to his own and root's alone.
    const quint32 own = NSProcessInfo::effectiveUserID();
    const auto root = RootFolder::owner();
    ProcessSerialNumber ofRoot;
    ProcessSerialNumber ofAnother;
    ProcessSerialNumber number;
    while (GetNextProcess(&number) == noErr) {
        ProcessInfoRec information;
        if (GetProcessInformation(number, &information) != noErr || information.processSignature != signature)
            continue;
        if (information.userId == own)
            return number;
        ProcessSerialNumber &first =
            information.userId == 0 || information.userId == root ? ofRoot : ofAnother;
        if (first == ProcessSerialNumber())
            first = number;
    }
    return ofRoot == ProcessSerialNumber() ? ofAnother : ofRoot;
}

AEDesc *ZDRAppleEvent::carbonEvent()
{
    return _appleEventDescriptor ? nullptr : &_carbonEvent;
}

AEEventClass ZDRAppleEvent::eventClass() const
{
    return _appleEventDescriptor ? _appleEventDescriptor->eventClass()
                                 : codeOf(_carbonEvent, keyEventClassAttr);
}

AEEventID ZDRAppleEvent::eventID() const
{
    return _appleEventDescriptor ? _appleEventDescriptor->eventID() : codeOf(_carbonEvent, keyEventIDAttr);
}

qint16 ZDRAppleEvent::shortValueForKeyword(AEKeyword keyword) const
{
    if (_appleEventDescriptor) {
        const auto parameter = _appleEventDescriptor->paramDescriptorForKeyword(keyword);
        return static_cast<qint16>(parameter ? parameter->int32Value() : 0);
    }
    qint16 value = 0;
    AEGetParamPtr(_carbonEvent, keyword, typeSInt16, nullptr, &value, sizeof value, nullptr);
    return value;
}

void ZDRAppleEvent::setShortValueForKeyword(qint16 value, AEKeyword keyword)
{
    if (_appleEventDescriptor)
        _appleEventDescriptor->setParamDescriptorForKeyword(
            NSAppleEventDescriptor::descriptorWithAEDesc(AEDesc::of(typeSInt16, value)), keyword);
    else
        putParameter(&_carbonEvent, keyword, typeSInt16, &value, sizeof value, "setShortValue");
}

qint64 ZDRAppleEvent::longValueForKeyword(AEKeyword keyword) const
{
    if (_appleEventDescriptor) {
        const auto parameter = _appleEventDescriptor->paramDescriptorForKeyword(keyword);
        return parameter ? parameter->int32Value() : 0;
    }
    // Of a 32-bit number only the low half is filled; on a big-endian machine it would be the other one.
    qint64 value = 0;
    AEGetParamPtr(_carbonEvent, keyword, typeSInt32, nullptr, &value, sizeof value, nullptr);
    return value;
}

void ZDRAppleEvent::setLongValueForKeyword(qint64 value, AEKeyword keyword)
{
    if (_appleEventDescriptor)
        _appleEventDescriptor->setParamDescriptorForKeyword(
            NSAppleEventDescriptor::descriptorWithInt32(static_cast<qint32>(value)), keyword);
    else
        putParameter(&_carbonEvent, keyword, typeSInt32, &value, sizeof value, "setLongValue");
}

QString ZDRAppleEvent::stringValueForKeyword(AEKeyword keyword) const
{
    if (_appleEventDescriptor) {
        const auto parameter = _appleEventDescriptor->paramDescriptorForKeyword(keyword);
        return parameter ? parameter->stringValue() : QString();
    }
    qsizetype size = 0;
    AESizeOfParam(_carbonEvent, keyword, nullptr, &size);
    QByteArray buffer = bufferFor(size);
    qsizetype actualSize = 0;
    AEGetParamPtr(_carbonEvent, keyword, typeText, nullptr, buffer.data(), size, &actualSize);
    // The text ends at a zero, and never beyond what was read: there need not be a zero behind it.
    const auto length = qstrnlen(buffer.constData(), static_cast<size_t>(std::min(size, actualSize)));
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString text = decoder(QByteArrayView(buffer.constData(), static_cast<qsizetype>(length)));
    return decoder.hasError() ? QString() : text;
}

void ZDRAppleEvent::setStringForKeyword(const QString &text, AEKeyword keyword)
{
    if (_appleEventDescriptor) {
        _appleEventDescriptor->setParamDescriptorForKeyword(
            NSAppleEventDescriptor::descriptorWithString(text), keyword);
        return;
    }
    const QByteArray bytes = AEMacRoman::encoded(text);
    putParameter(&_carbonEvent, keyword, typeText, bytes.constData(), bytes.size(), "setString");
}

QByteArray ZDRAppleEvent::dataValueForKeyword(AEKeyword keyword) const
{
    if (_appleEventDescriptor) {
        const auto parameter = _appleEventDescriptor->paramDescriptorForKeyword(keyword);
        return parameter ? parameter->data() : QByteArray();
    }
    DescType type = typeNull;
    qsizetype size = 0;
    AESizeOfParam(_carbonEvent, keyword, &type, &size);
    QByteArray buffer = bufferFor(size);
    qsizetype actualSize = 0;
    AEGetParamPtr(_carbonEvent, keyword, type, nullptr, buffer.data(), size, &actualSize);
    return buffer.left(actualSize);
}

void ZDRAppleEvent::setDataForKeyword(const QByteArray &data, AEKeyword keyword)
{
    if (_appleEventDescriptor)
        _appleEventDescriptor->setParamDescriptorForKeyword(
            NSAppleEventDescriptor::descriptorWithDescriptorType(typeData, data), keyword);
    else
        putParameter(&_carbonEvent, keyword, typeData, data.constData(), data.size(), "setData");
}
