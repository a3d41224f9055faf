// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

/// The type of the events that ZDRKeyManager posts: keys outside the ordinary keyboard.
constexpr quint32 NX_SYSDEFINED = 14;

/// The version of the record below.
constexpr quint32 kNXEventDataVersion = 2;

/// The subtype of an event of type NX_SYSDEFINED that tells an aux control button (louder, mute, eject, ...).
/// Its first data word holds the button's code in bits 16 to 23 and its state, 0x0A for "down", in bits 8 to
/// 15.
constexpr qint16 NX_SUBTYPE_AUX_CONTROL_BUTTONS = 8;

/// The data of an event in the input system's own record, of which the compound form is used here.
struct NXEventData {
    struct Compound {
        qint16 reserved;
        qint16 subType;
        quint32 words[11];
    } compound;
};
static_assert(sizeof(NXEventData) == 48, "the record's size is part of its contract");
