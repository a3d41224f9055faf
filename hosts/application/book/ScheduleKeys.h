// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// The keys of a schedule, as the daemon tells it and takes it on the bus (docs/bus.md), that the window
/// reads or writes.
namespace ScheduleKey
{
inline constexpr QLatin1StringView identifier("identifier");
inline constexpr QLatin1StringView name("name");
inline constexpr QLatin1StringView isEnabled("isEnabled");
inline constexpr QLatin1StringView bundlePath("bundlePath");
inline constexpr QLatin1StringView parameters("parameters");
inline constexpr QLatin1StringView date("date");
inline constexpr QLatin1StringView timeZone("timeZone");
inline constexpr QLatin1StringView actsIn("actsIn");
inline constexpr QLatin1StringView owner("owner");
inline constexpr QLatin1StringView staysWhenOver("staysWhenOver");
inline constexpr QLatin1StringView repeats("repeats");
inline constexpr QLatin1StringView missed("missed");
inline constexpr QLatin1StringView missedLimit("missedLimit");
inline constexpr QLatin1StringView overlap("overlap");
inline constexpr QLatin1StringView after("after");

/// What is told besides, to have done what nothing could come of.
inline constexpr QLatin1StringView anyway("anyway");

/// What answers have besides.
/// @{
inline constexpr QLatin1StringView next("next");
inline constexpr QLatin1StringView revision("revision");
inline constexpr QLatin1StringView mayChange("mayChange");
/// @}
} // namespace ScheduleKey

/// The names of errors that the window tells apart.
namespace ScheduleError
{
inline constexpr char noSuchSchedule[] = "com.dozely.Error.NoSuchSchedule";
inline constexpr char changed[] = "com.dozely.Error.Changed";
inline constexpr char notFeasible[] = "com.dozely.Error.NotFeasible";
} // namespace ScheduleError
