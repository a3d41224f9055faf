// SPDX-License-Identifier: MIT
#include "integration/power-kit/FakeLogind.h"

#include <QCoreApplication>

#include <cerrno>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <systemd/sd-bus.h>
#include <unistd.h>
#include <utility>

namespace
{
constexpr char service[] = "org.freedesktop.login1";
constexpr char path[] = "/org/freedesktop/login1";
constexpr char interface[] = "org.freedesktop.login1.Manager";

bool isReleased(int readEnd)
{
    pollfd end{readEnd, POLLIN, 0};
    return ::poll(&end, 1, 0) == 1 && (end.revents & POLLHUP) != 0;
}
} // namespace

FakeLogind::FakeLogind()
{
    EXPECT_GE(sd_bus_open_system(&m_bus), 0);
    EXPECT_GE(sd_bus_add_filter(
                  m_bus, nullptr,
                  [](sd_bus_message *message, void *self, sd_bus_error *) {
                      return static_cast<FakeLogind *>(self)->answer(message);
                  },
                  this),
              0);
    roundTrip();
    m_notifier = std::make_unique<QSocketNotifier>(sd_bus_get_fd(m_bus), QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(), [this] { process(); });
}

FakeLogind::~FakeLogind()
{
    m_notifier.reset();
    for (sd_bus_message *message : m_deferred)
        sd_bus_message_unref(message);
    sd_bus_flush_close_unref(m_bus);
    for (const Lock &lock : m_locks)
        ::close(lock.readEnd);
}

void FakeLogind::appear()
{
    EXPECT_GE(sd_bus_request_name(m_bus, service, 0), 0);
}

void FakeLogind::vanish()
{
    EXPECT_GE(sd_bus_release_name(m_bus, service), 0);
    isPreparingForSleep = false;
    isPreparingForShutdown = false;
}

void FakeLogind::prepareForSleep(bool begins, bool isTold)
{
    isPreparingForSleep = begins;
    if (isTold)
        emitSignal("PrepareForSleep", begins);
}

void FakeLogind::prepareForShutdown(bool begins, bool isTold)
{
    isPreparingForShutdown = begins;
    if (isTold)
        emitSignal("PrepareForShutdown", begins);
}

void FakeLogind::emitSignal(const char *name, bool value)
{
    EXPECT_GE(sd_bus_emit_signal(m_bus, path, interface, name, "b", value ? 1 : 0), 0);
}

void FakeLogind::emitNonsense(const char *name)
{
    EXPECT_GE(sd_bus_emit_signal(m_bus, path, interface, name, "s", "true"), 0);
}

QList<FakeLogind::Lock> FakeLogind::held(const QString &mode) const
{
    QList<Lock> locks;
    for (const Lock &lock : m_locks) {
        if (lock.mode == mode && !isReleased(lock.readEnd))
            locks += lock;
    }
    return locks;
}

int FakeLogind::answer(sd_bus_message *message)
{
    if (sd_bus_message_is_method_call(message, interface, "Inhibit") > 0) {
        ++handled;
        return grant(message);
    }
    int mayAsk = 0;
    for (const char *order : {"Suspend", "PowerOff", "Reboot"}) {
        if (sd_bus_message_is_method_call(message, interface, order) <= 0)
            continue;
        ++handled;
        sd_bus_message_read(message, "b", &mayAsk);
        orders += QString("%1 %2").arg(order, mayAsk ? "true" : "false");
        if (!orderRefusal.isEmpty())
            return sd_bus_reply_method_errorf(message, orderRefusal.constData(), "No.");
        return sd_bus_reply_method_return(message, "");
    }
    if (sd_bus_message_is_method_call(message, "org.freedesktop.DBus.Properties", "Get") > 0) {
        ++handled;
        const char *of = nullptr;
        const char *property = nullptr;
        sd_bus_message_read(message, "ss", &of, &property);
        const bool value =
            QByteArray(property) == "PreparingForSleep" ? isPreparingForSleep : isPreparingForShutdown;
        return sd_bus_reply_method_return(message, "v", "b", value ? 1 : 0);
    }
    return 0;
}

void FakeLogind::answerDeferred()
{
    takesItsTime = false;
    for (sd_bus_message *message : std::exchange(m_deferred, {})) {
        grant(message);
        sd_bus_message_unref(message);
    }
}

int FakeLogind::grant(sd_bus_message *message)
{
    ++asked;
    if (takesItsTime) {
        m_deferred += sd_bus_message_ref(message);
        return 1;
    }
    const char *what = nullptr;
    const char *who = nullptr;
    const char *why = nullptr;
    const char *mode = nullptr;
    sd_bus_message_read(message, "ssss", &what, &who, &why, &mode);
    if (!refusal.isEmpty())
        return sd_bus_reply_method_errorf(message, refusal.constData(), "No.");
    if (isPreparingForSleep || isPreparingForShutdown) {
        return sd_bus_reply_method_errorf(message, "org.freedesktop.login1.OperationInProgress",
                                          "It is on its way.");
    }
    if (onAsk)
        onAsk();
    int ends[2];
    EXPECT_EQ(::pipe2(ends, O_CLOEXEC), 0);
    m_locks += Lock{what, who, why, mode, ends[0]};
    const int result = sd_bus_reply_method_return(message, "h", ends[1]);
    ::close(ends[1]);
    mostHeld = std::max(mostHeld, held("delay").size());
    m_locks.removeIf([](const Lock &lock) {
        const bool released = isReleased(lock.readEnd);
        if (released)
            ::close(lock.readEnd);
        return released;
    });
    return result;
}

void FakeLogind::process()
{
    while (sd_bus_process(m_bus, nullptr) > 0) {
    }
}

void FakeLogind::roundTrip()
{
    EXPECT_GE(sd_bus_call_method(m_bus, "org.freedesktop.DBus", "/org/freedesktop/DBus",
                                 "org.freedesktop.DBus", "GetId", nullptr, nullptr, ""),
              0);
}

void FakeLogind::exchange()
{
    // The bus reads and writes each of its connections once in a turn, so two turns serve everybody.
    roundTrip();
    roundTrip();
    process();
}

void FakeLogind::settle()
{
    // What comes here may take a few turns of the other side's event loop to be sent: connecting is several
    // steps.
    constexpr int quietTurns = 4;
    for (int quiet = 0; quiet < quietTurns; ++quiet) {
        const int before = handled;
        exchange();
        QCoreApplication::processEvents();
        if (handled != before)
            quiet = -1;
    }
}
