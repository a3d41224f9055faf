// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

/// Types of power messages.
/// @{
constexpr quint32 kIOMessageSystemWillPowerOff = 0xE0000250;
constexpr quint32 kIOMessageSystemWillNotPowerOff = 0xE0000260;
constexpr quint32 kIOMessageCanSystemSleep = 0xE0000270;
constexpr quint32 kIOMessageSystemWillSleep = 0xE0000280;
constexpr quint32 kIOMessageSystemWillNotSleep = 0xE0000290;
constexpr quint32 kIOMessageSystemHasPoweredOn = 0xE0000300;
constexpr quint32 kIOMessageSystemWillPowerOn = 0xE0000320;
/// @}
