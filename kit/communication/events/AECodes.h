// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Export.h"

#include <QString>

#include <optional>

/// Four characters, one byte each in Mac OS Roman, read as a big-endian number.
using OSType = quint32;
using DescType = OSType;     ///< What the data of a descriptor is.
using AEKeyword = OSType;    ///< Names a parameter or an attribute.
using AEEventClass = OSType; ///< With the event ID, says what an event asks for.
using AEEventID = OSType;

/// Result codes with their classic values; noErr is success.
using OSErr = qint16;
using OSStatus = qint32;

namespace dozely
{

/// The code of four ASCII characters: `fourCharCode("psn ")`.
constexpr OSType fourCharCode(const char (&text)[5])
{
    OSType code = 0;
    for (int i = 0; i < 4; ++i)
        code = code << 8 | static_cast<unsigned char>(text[i]);
    return code;
}

} // namespace dozely

constexpr DescType typeNull = dozely::fourCharCode("null");
constexpr DescType typeWildCard = dozely::fourCharCode("****"); ///< Asked for: as it is, whatever it is.
constexpr DescType typeBoolean = dozely::fourCharCode("bool");  ///< One byte.
constexpr DescType typeTrue = dozely::fourCharCode("true");     ///< No data; so typeFalse.
constexpr DescType typeFalse = dozely::fourCharCode("fals");
constexpr DescType typeSInt16 = dozely::fourCharCode("shor");
constexpr DescType typeSInt32 = dozely::fourCharCode("long");
constexpr DescType typeUInt32 = dozely::fourCharCode("magn");
constexpr DescType typeSInt64 = dozely::fourCharCode("comp");
constexpr DescType typeIEEE64BitFloatingPoint = dozely::fourCharCode("doub");
constexpr DescType typeType = dozely::fourCharCode("type"); ///< A code of four characters.
constexpr DescType typeEnumerated = dozely::fourCharCode("enum");
constexpr DescType typeText = dozely::fourCharCode("TEXT");        ///< Mac OS Roman.
constexpr DescType typeUnicodeText = dozely::fourCharCode("utxt"); ///< UTF-16 in the machine's byte order.
constexpr DescType typeUTF8Text = dozely::fourCharCode("utf8");
constexpr DescType typeData = dozely::fourCharCode("data");
constexpr DescType typeProcessSerialNumber = dozely::fourCharCode("psn ");
constexpr DescType typeAEList = dozely::fourCharCode("list");
constexpr DescType typeAERecord = dozely::fourCharCode("reco");
constexpr DescType typeAppleEvent = dozely::fourCharCode("aevt");

constexpr AEKeyword keyEventClassAttr = dozely::fourCharCode("evcl");
constexpr AEKeyword keyEventIDAttr = dozely::fourCharCode("evid");
constexpr AEKeyword keyAddressAttr = dozely::fourCharCode("addr");
constexpr AEKeyword keyReturnIDAttr = dozely::fourCharCode("rtid");
constexpr AEKeyword keyTransactionIDAttr = dozely::fourCharCode("tran");
/// Written by the receiving side, by the kernel's word: who has sent an event (process id and user id, both
/// typeSInt64).
constexpr AEKeyword keySenderPIDAttr = dozely::fourCharCode("spid");
constexpr AEKeyword keySenderEUIDAttr = dozely::fourCharCode("seid");
constexpr AEKeyword keyDirectObject = dozely::fourCharCode("----");
constexpr AEKeyword keyErrorNumber = dozely::fourCharCode("errn");
constexpr AEKeyword keyErrorString = dozely::fourCharCode("errs");

constexpr AEEventClass kCoreEventClass = dozely::fourCharCode("aevt");
constexpr AEEventID kAEOpenApplication = dozely::fourCharCode("oapp");
constexpr AEEventID kAEQuitApplication = dozely::fourCharCode("quit");
constexpr AEEventID kAEAnswer = dozely::fourCharCode("ansr"); ///< Of every reply.

constexpr OSErr noErr = 0;
constexpr OSErr paramErr = -50;    ///< An argument that makes no sense.
constexpr OSErr memFullErr = -108; ///< Larger than an event may be.
constexpr OSErr procNotFound = -600;
constexpr OSErr connectionInvalid = -609; ///< The other process has gone or shuts this one out.
/// The receiver has no room now, neither for a stream nor in its queue; the event has not arrived.
constexpr OSErr sessTableErr = -907;
constexpr OSErr errAECoercionFail = -1700;
constexpr OSErr errAEDescNotFound = -1701;
constexpr OSErr errAECorruptData = -1702;
constexpr OSErr errAEWrongDataType = -1703;
constexpr OSErr errAENewerVersion = -1706;
constexpr OSErr errAENotAppleEvent = -1707;
constexpr OSErr errAEEventNotHandled = -1708; ///< The receiver has no handler for the event.
constexpr OSErr errAEUnknownSendMode = -1710;
constexpr OSErr errAETimeout = -1712;
constexpr OSErr errAEUnknownAddressType = -1716;
constexpr OSErr errAEIllegalIndex = -1719;
constexpr OSErr errAEEventFailed = -10000;    ///< The handler raised.
constexpr OSErr errAEPrivilegeError = -10004; ///< This user may not send to that process.

/// The code as text: its four characters between single quotes, "'psn '".
DOZELYKIT_EXPORT QString NSFileTypeForHFSTypeCode(OSType code);

namespace dozely
{

/// The code of four characters without quotes; absent for a text that is not four characters of Mac OS Roman.
DOZELYKIT_EXPORT std::optional<OSType> codeOfCharacters(const QString &characters);

} // namespace dozely
