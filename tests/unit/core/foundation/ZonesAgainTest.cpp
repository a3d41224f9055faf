// SPDX-License-Identifier: MIT
//
// The system's zone data changes while a program runs. Qt finds the open() and readlink() of this program
// before those of the C library, so nothing of the machine is touched.
#include "DozelyKit/core/foundation/ZoneClock.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <cstdarg>
#include <cstring>
#include <dlfcn.h>
#include <fcntl.h>
#include <string>
#include <unistd.h>

using namespace dozely;

namespace
{
const std::string zones = "/usr/share/zoneinfo/";
const std::string localTime = "/etc/localtime";

std::string everyZone;     ///< The zone that each file of a zone holds; empty: its own.
std::string localTimeLink; ///< Where /etc/localtime leads; empty: it is a copy of the zone `localTimeCopy`.
std::string localTimeCopy;

template<class Function>
Function *real(const char *name)
{
    return reinterpret_cast<Function *>(::dlsym(RTLD_NEXT, name));
}

std::string pathInstead(const std::string &path)
{
    if (path == zones + "../../.." + localTime && !localTimeCopy.empty())
        return zones + localTimeCopy;
    const bool isZone = path.compare(0, zones.size(), zones) == 0 && path.find(".tab") == std::string::npos;
    return isZone && !everyZone.empty() ? zones + everyZone : path;
}

/// In January, in hours.
int offsetOf(const QTimeZone &zone)
{
    return zone.offsetFromUtc(QDateTime({2026, 1, 1}, QTime(12, 0), Qt::UTC)) / 3600;
}
} // namespace

extern "C" __attribute__((visibility("default"))) int open64(const char *path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = va_arg(arguments, mode_t);
    va_end(arguments);
    return real<int(const char *, int, ...)>("open64")(pathInstead(path).c_str(), flags, mode);
}

extern "C" __attribute__((visibility("default"))) ssize_t readlink(const char *path, char *target,
                                                                   size_t size)
{
    if (path != localTime)
        return real<ssize_t(const char *, char *, size_t)>("readlink")(path, target, size);
    if (localTimeLink.empty()) {
        errno = EINVAL;
        return -1;
    }
    const size_t length = std::min(size, localTimeLink.size());
    std::memcpy(target, localTimeLink.data(), length);
    return static_cast<ssize_t>(length);
}

TEST(ZonesAgain, AreReadFromTheFilesAsTheyAreNow)
{
    everyZone = "Asia/Tokyo"; // what Qt reads first of each
    const QByteArrayList names = QTimeZone::availableTimeZoneIds();
    ASSERT_GT(names.size(), 300);
    std::string shown = everyZone;
    // Wherever a zone stands among those that Qt has asked for: each one that was read before is read again.
    for (qsizetype i = 0; i < names.size(); i += 23) {
        const QByteArray &name = names.at(i);
        if (name.startsWith("UTC")) // which Qt has without a file
            continue;
        readZonesAgain();
        const QTimeZone before(name);
        ASSERT_EQ(offsetOf(before), shown == "Asia/Tokyo" ? 9 : 1) << name.constData();
        shown = shown == "Asia/Tokyo" ? "Europe/Paris" : "Asia/Tokyo";
        everyZone = shown;
        ASSERT_EQ(offsetOf(QTimeZone(name)), offsetOf(before))
            << "Qt has become cleverer: " << name.constData();
        readZonesAgain();
        EXPECT_EQ(offsetOf(QTimeZone(name)), shown == "Asia/Tokyo" ? 9 : 1) << name.constData();
        EXPECT_NE(offsetOf(before), offsetOf(QTimeZone(name)))
            << name.constData(); // that one stays as it was
    }
}

TEST(MachineTimeZone, IsWhereTheLinkLeadsNow)
{
    qunsetenv("TZ");
    for (const char *name :
         {"Asia/Tokyo", "Europe/Paris", "America/Argentina/Buenos_Aires", "Etc/UTC", "Asia/Tokyo"}) {
        localTimeLink = zones + name;
        EXPECT_EQ(machineTimeZone().id(), name);
        localTimeLink = std::string("../usr/share/zoneinfo/") + name;
        EXPECT_EQ(machineTimeZone().id(), name);
    }
    qputenv("TZ", ":/etc/localtime");
    EXPECT_EQ(machineTimeZone().id(), "Asia/Tokyo");
}

TEST(MachineTimeZone, OfACopyIsWhatItHoldsOnceZonesAreReadAgain)
{
    qunsetenv("TZ");
    for (const char *name : {"Asia/Tokyo", "Europe/Paris", "America/New_York"}) {
        localTimeCopy = name;
        readZonesAgain();
        EXPECT_EQ(offsetOf(machineTimeZone()), offsetOf(QTimeZone(name))) << name;
    }
    localTimeLink = "/nowhere/else"; // a link that names no zone
    EXPECT_EQ(offsetOf(machineTimeZone()), -5);
}

TEST(MachineTimeZone, IsThatOfTheEnvironmentWhereItNamesOne)
{
    localTimeLink = zones + "Asia/Tokyo";
    qputenv("TZ", "Asia/Kathmandu");
    EXPECT_EQ(machineTimeZone().id(), "Asia/Kathmandu");
    qputenv("TZ", ":Europe/Paris");
    EXPECT_EQ(machineTimeZone().id(), "Europe/Paris");
    qputenv("TZ", "");
    EXPECT_EQ(machineTimeZone().id(), "Asia/Tokyo");
}
