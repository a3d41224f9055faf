// SPDX-License-Identifier: MIT
#include "DozelyKit/communication/events/AEManager.h"

#include <algorithm>
#include <atomic>
#include <cstring>

namespace
{
/// From 1 on, and again from 1 after the largest.
qint16 nextReturnID()
{
    static std::atomic<quint32> last{0};
    constexpr quint32 largest = 32767;
    return static_cast<qint16>(last++ % largest + 1);
}

OSErr copyOut(const std::optional<AEDesc> &desc, DescType desiredType, DescType *actualType, void *buffer,
              qsizetype maximumSize, qsizetype *actualSize)
{
    if (!desc)
        return errAEDescNotFound;
    if (desc->isContainer())
        return errAEWrongDataType;
    const auto converted = desc->coerced(desiredType);
    if (!converted)
        return errAECoercionFail;
    const QByteArray data = converted->data();
    const qsizetype size = std::clamp<qsizetype>(maximumSize, 0, data.size());
    if (buffer && size > 0)
        std::memcpy(buffer, data.constData(), static_cast<size_t>(size));
    if (actualType)
        *actualType = converted->descriptorType();
    if (actualSize)
        *actualSize = data.size();
    return noErr;
}

bool isRange(const void *data, qsizetype size)
{
    return size >= 0 && (data || size == 0);
}
} // namespace

OSErr AECreateDesc(DescType type, const void *data, qsizetype size, AEDesc *result)
{
    if (AEDesc::isContainerType(type) || !isRange(data, size))
        return paramErr;
    *result = AEDesc(type, QByteArray(static_cast<const char *>(data), size));
    return noErr;
}

OSErr AEDisposeDesc(AEDesc *desc)
{
    *desc = AEDesc();
    return noErr;
}

OSErr AECreateAppleEvent(AEEventClass eventClass, AEEventID eventID, const AEDesc &target, qint16 returnID,
                         qint32 transactionID, AppleEvent *result)
{
    AEDesc event(typeAppleEvent);
    event.setAttribute(keyEventClassAttr, AEDesc::of(typeType, eventClass));
    event.setAttribute(keyEventIDAttr, AEDesc::of(typeType, eventID));
    if (const OSErr error = event.setAttribute(keyAddressAttr, target); error != noErr)
        return error;
    const qint16 number = returnID == kAutoGenerateReturnID ? nextReturnID() : returnID;
    event.setAttribute(keyReturnIDAttr, AEDesc::of(typeSInt16, number));
    event.setAttribute(keyTransactionIDAttr, AEDesc::of(typeSInt32, transactionID));
    *result = std::move(event);
    return noErr;
}

OSErr AEGetParamPtr(const AEDesc &record, AEKeyword keyword, DescType desiredType, DescType *actualType,
                    void *buffer, qsizetype maximumSize, qsizetype *actualSize)
{
    if (!record.isRecord())
        return errAEWrongDataType;
    return copyOut(record.parameter(keyword), desiredType, actualType, buffer, maximumSize, actualSize);
}

OSErr AEGetAttributePtr(const AppleEvent &event, AEKeyword keyword, DescType desiredType,
                        DescType *actualType, void *buffer, qsizetype maximumSize, qsizetype *actualSize)
{
    if (event.descriptorType() != typeAppleEvent)
        return errAEWrongDataType;
    return copyOut(event.attribute(keyword), desiredType, actualType, buffer, maximumSize, actualSize);
}

OSErr AESizeOfParam(const AEDesc &record, AEKeyword keyword, DescType *type, qsizetype *size)
{
    if (!record.isRecord())
        return errAEWrongDataType;
    const auto value = record.parameter(keyword);
    if (!value)
        return errAEDescNotFound;
    QByteArray flat;
    if (value->isContainer()) {
        if (const OSErr error = value->flatten(&flat); error != noErr)
            return error;
    }
    if (type)
        *type = value->descriptorType();
    if (size)
        *size = value->isContainer() ? flat.size() : value->data().size();
    return noErr;
}

OSErr AEPutParamPtr(AEDesc *record, AEKeyword keyword, DescType type, const void *data, qsizetype size)
{
    AEDesc value;
    if (const OSErr error = AECreateDesc(type, data, size, &value); error != noErr)
        return error;
    return record->setParameter(keyword, value);
}
