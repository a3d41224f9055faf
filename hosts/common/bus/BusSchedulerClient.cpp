// SPDX-License-Identifier: MIT
#include "hosts/common/bus/BusSchedulerClient.h"

#include "DozelyKit/core/foundation/Clock.h"
#include "hosts/common/bus/SchedulerNames.h"

#include <QTimer>

#include <utility>

using namespace dozely;

namespace
{
using namespace SchedulerNames;

constexpr char propertiesInterface[] = "org.freedesktop.DBus.Properties";
constexpr std::chrono::seconds machineTime(30);
constexpr std::chrono::minutes personTime(11); // the daemon itself gives up a little earlier

QList<QVariantMap> maps(const QVariant &value)
{
    QList<QVariantMap> maps;
    for (const QVariant &each : value.toList())
        maps += each.toMap();
    return maps;
}

/// What a call's answer is turned into.
template<class T, class Convert>
std::function<void(const Result<QVariant> &)> converted(SchedulerClient::Answer<T> answer, Convert convert)
{
    return [answer = std::move(answer), convert](const Result<QVariant> &value) {
        if (value)
            answer(convert(*value));
        else
            answer(value.error());
    };
}

auto asMaps(SchedulerClient::Answer<QList<QVariantMap>> answer)
{
    return converted<QList<QVariantMap>>(std::move(answer), maps);
}

auto asMap(SchedulerClient::Answer<QVariantMap> answer)
{
    return converted<QVariantMap>(std::move(answer), [](const QVariant &value) { return value.toMap(); });
}

auto asText(SchedulerClient::Answer<QString> answer)
{
    return converted<QString>(std::move(answer), [](const QVariant &value) { return value.toString(); });
}

auto asNothing(SchedulerClient::Answer<void> answer)
{
    return converted<void>(std::move(answer), [](const QVariant &) { return Result<void>(); });
}
} // namespace

BusSchedulerClient::BusSchedulerClient(BusConnection::Bus bus, const std::shared_ptr<Clock> &clock)
    : m_service(bus, name,
                {.opened = [this] { opened(); },
                 .isThere =
                     [this](const QByteArray &) {
                         setAvailable(false); // another one knows nothing of what the one before told
                         readProperties();
                     },
                 .isAway = [this](BusService::Absence, const QString &) { setAvailable(false); }})
{
    m_service.keepOpen(clock);
}

BusSchedulerClient::~BusSchedulerClient() = default;

std::unique_ptr<SchedulerClient> SchedulerClient::onSystemBus()
{
    return std::make_unique<BusSchedulerClient>(BusConnection::Bus::System, Port<Clock>::current());
}

void BusSchedulerClient::opened()
{
    m_hearing.clear();
    for (const char *of : {interface, propertiesInterface}) {
        auto hearing = m_service.subscribe(path, of, "", [this](const auto &signal) { heard(signal); });
        m_hearing.push_back(std::move(hearing));
    }
}

void BusSchedulerClient::setAvailable(bool isAvailable)
{
    if (!isAvailable && !m_properties.isEmpty()) {
        m_properties.clear();
        Q_EMIT propertiesChanged();
    }
    if (std::exchange(m_isAvailable, isAvailable) != isAvailable)
        Q_EMIT availabilityChanged(isAvailable);
}

/// The daemon is there for who uses this once its properties are.
void BusSchedulerClient::readProperties()
{
    m_service.bus()->callLater({name, path, propertiesInterface, "GetAll"}, "s", {QString(interface)},
                               machineTime, [this](const BusConnection::Reply &reply) {
                                   if (!m_service.isThere())
                                       return;
                                   m_properties = BusConnection::firstOf(reply).toMap();
                                   Q_EMIT propertiesChanged();
                                   setAvailable(true);
                               });
}

void BusSchedulerClient::heard(const BusConnection::Signal &signal)
{
    const QVariantList &arguments = signal.arguments;
    const QString identifier = arguments.value(0).toString();
    const QString date = arguments.value(1).toString();
    const QVariantMap dictionary = arguments.value(2).toMap();
    if (signal.name == "SchedulesChanged") {
        Q_EMIT schedulesChanged(arguments.value(0).toStringList());
    } else if (signal.name == "OccurrenceAnnounced") {
        Q_EMIT occurrenceAnnounced(identifier, date, dictionary);
    } else if (signal.name == "OccurrenceBegan") {
        Q_EMIT occurrenceBegan(identifier, date, dictionary);
    } else if (signal.name == "OccurrenceEnded") {
        Q_EMIT occurrenceEnded(identifier, date, dictionary);
    } else if (signal.name == "PropertiesChanged" && identifier == interface) {
        m_properties.insert(arguments.value(1).toMap());
        Q_EMIT propertiesChanged();
    }
}

void BusSchedulerClient::call(const char *method, const QByteArray &signature, const QVariantList &arguments,
                              Patience patience, const std::function<void(const Result<QVariant> &)> &answer)
{
    if (!m_service.bus()) {
        const Error error{"The message bus is not there.", "org.freedesktop.DBus.Error.NoServer"};
        QTimer::singleShot(0, this, [answer, error] { answer(error); });
        return;
    }
    const std::chrono::milliseconds limit = patience == Patience::Person ? personTime : machineTime;
    m_service.bus()->callLater({name, path, interface, method}, signature, arguments, limit,
                               [answer](const BusConnection::Reply &reply) {
                                   if (reply)
                                       answer(reply->value(0));
                                   else
                                       answer(reply.error());
                               });
}

void BusSchedulerClient::list(Answer<QList<QVariantMap>> answer)
{
    call("List", "", {}, Patience::Machine, asMaps(std::move(answer)));
}

void BusSchedulerClient::get(const QString &identifier, Answer<QVariantMap> answer)
{
    call("Get", "s", {identifier}, Patience::Machine, asMap(std::move(answer)));
}

void BusSchedulerClient::add(const QVariantMap &schedule, Answer<QString> answer)
{
    call("Add", "a{sv}", {schedule}, Patience::Person, asText(std::move(answer)));
}

void BusSchedulerClient::change(const QString &identifier, const QVariantMap &changes, Answer<void> answer)
{
    call("Change", "sa{sv}", {identifier, changes}, Patience::Person, asNothing(std::move(answer)));
}

void BusSchedulerClient::remove(const QString &identifier, Answer<void> answer)
{
    call("Remove", "s", {identifier}, Patience::Person, asNothing(std::move(answer)));
}

void BusSchedulerClient::setEnabled(const QString &identifier, bool isEnabled, Answer<void> answer)
{
    call("SetEnabled", "sb", {identifier, isEnabled}, Patience::Person, asNothing(std::move(answer)));
}

void BusSchedulerClient::runNow(const QString &identifier, Answer<void> answer)
{
    call("RunNow", "s", {identifier}, Patience::Person, asNothing(std::move(answer)));
}

void BusSchedulerClient::skip(const QString &identifier, const QString &date, Answer<QString> answer)
{
    call("Skip", "ss", {identifier, date}, Patience::Person, asText(std::move(answer)));
}

void BusSchedulerClient::postpone(const QString &identifier, const QString &date, std::chrono::seconds delay,
                                  Answer<QString> answer)
{
    call("Postpone", "ssu", {identifier, date, static_cast<quint32>(delay.count())}, Patience::Person,
         asText(std::move(answer)));
}

void BusSchedulerClient::next(const QString &identifier, const QString &from, const QString &until,
                              quint32 most, Answer<QList<QVariantMap>> answer)
{
    call("Next", "sssu", {identifier, from, until, most}, Patience::Machine, asMaps(std::move(answer)));
}

void BusSchedulerClient::history(const QString &identifier, quint32 most, Answer<QList<QVariantMap>> answer)
{
    call("History", "su", {identifier, most}, Patience::Person, asMaps(std::move(answer)));
}

void BusSchedulerClient::testWaking(std::chrono::seconds sleep, Answer<QVariantMap> answer)
{
    call("TestWaking", "u", {static_cast<quint32>(sleep.count())}, Patience::Person,
         asMap(std::move(answer)));
}
