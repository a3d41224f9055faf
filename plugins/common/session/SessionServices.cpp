// SPDX-License-Identifier: MIT
#include "plugins/common/session/SessionServices.h"

#include <QStringList>

using namespace dozely;

namespace
{
constexpr std::chrono::seconds answerTime{10};
}

void SessionServices::ask(Answered answered)
{
    auto opened = BusConnection::open(BusConnection::Bus::Session);
    if (!opened)
        return answered(opened.error());
    m_bus = *std::move(opened);
    const auto known = [this, answered](const BusConnection::Reply &reply) {
        const QStringList names = BusConnection::firstOf(reply).toStringList();
        for (const SessionService &service : m_services) {
            if (!names.contains(service.sign))
                continue;
            m_bus->callLater(service.operation, service.signature, service.arguments, answerTime,
                             [answered](const BusConnection::Reply &done) {
                                 answered(done ? Result<void>() : Result<void>(done.error()));
                             });
            return;
        }
        answered(Error{"no program of the desktop that does it runs here"});
    };
    m_bus->callLater({"org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "ListNames"},
                     "", {}, answerTime, known);
}
