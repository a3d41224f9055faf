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

/// The code of four ASCII characters: `fourCharCode("psn ")`.
constexpr OSType fourCharCode(const char (&text)[5])
{
    OSType code = 0;
    for (int i = 0; i < 4; ++i)
        code = code << 8 | static_cast<unsigned char>(text[i]);
    return code;
}

constexpr DescType typeNull = fourCharCode("null");
constexpr DescType typeWildCard = fourCharCode("****"); ///< Asked for: as it is, whatever it is.
constexpr DescType typeBoolean = fourCharCode("bool");  ///< One byte.
constexpr DescType typeTrue = fourCharCode("true");     ///< No data; so typeFalse.
constexpr DescType typeFalse = fourCharCode("fals");
constexpr DescType typeSInt16 = fourCharCode("shor");
constexpr DescType typeSInt32 = fourCharCode("long");
constexpr DescType typeUInt32 = fourCharCode("magn");
constexpr DescType typeSInt64 = fourCharCode("comp");
constexpr DescType typeIEEE64BitFloatingPoint = fourCharCode("doub");
constexpr DescType typeType = fourCharCode("type"); ///< A code of four characters.
constexpr DescType typeEnumerated = fourCharCode("enum");
constexpr DescType typeText = fourCharCode("TEXT");        ///< Mac OS Roman.
constexpr DescType typeUnicodeText = fourCharCode("utxt"); ///< UTF-16 in the machine's byte order.
constexpr DescType typeUTF8Text = fourCharCode("utf8");
constexpr DescType typeData = fourCharCode("data");
constexpr DescType typeProcessSerialNumber = fourCharCode("psn ");
constexpr DescType typeAEList = fourCharCode("list");
constexpr DescType typeAERecord = fourCharCode("reco");
constexpr DescType typeAppleEvent = fourCharCode("aevt");

constexpr AEKeyword keyEventClassAttr = fourCharCode("evcl");
constexpr AEKeyword keyEventIDAttr = fourCharCode("evid");
constexpr AEKeyword keyAddressAttr = fourCharCode("addr");
constexpr AEKeyword keyReturnIDAttr = fourCharCode("rtid");
constexpr AEKeyword keyTransactionIDAttr = fourCharCode("tran");
/// Written by the receiving side, by the kernel's word: who has sent an event (process id and user id, both
/// typeSInt64).
constexpr AEKeyword keySenderPIDAttr = fourCharCode("spid");
constexpr AEKeyword keySenderEUIDAttr = fourCharCode("seid");
constexpr AEKeyword keyDirectObject = fourCharCode("----");
constexpr AEKeyword keyErrorNumber = fourCharCode("errn");
constexpr AEKeyword keyErrorString = fourCharCode("errs");

constexpr AEEventClass kCoreEventClass = fourCharCode("aevt");
constexpr AEEventID kAEOpenApplication = fourCharCode("oapp");
constexpr AEEventID kAEQuitApplication = fourCharCode("quit");
constexpr AEEventID kAEAnswer = fourCharCode("ansr"); ///< Of every reply.

constexpr OSErr noErr = 0;
constexpr OSErr paramErr = -50;    ///< An argument that makes no sense.
constexpr OSErr memFullErr = -108; ///< Larger than an event may be.
constexpr OSErr procNotFound = -600;
constexpr OSErr connectionInvalid = -609; ///< The other process has gone or shuts this one out.
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

/// The code of four characters without quotes; absent for a text that is not four characters of Mac OS Roman.
DOZELYKIT_EXPORT std::optional<OSType> codeOfCharacters(const QString &characters);
