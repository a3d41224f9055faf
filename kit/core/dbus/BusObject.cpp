// SPDX-License-Identifier: MIT
#include "DozelyKit/core/dbus/BusObject.h"

#include "DozelyKit/core/dbus/BusService.h"

#include <chrono>
#include <utility>

namespace dozely
{

namespace
{
constexpr char busName[] = "org.freedesktop.DBus";
constexpr char busPath[] = "/org/freedesktop/DBus";
constexpr char introspectable[] = "org.freedesktop.DBus.Introspectable";
constexpr char properties[] = "org.freedesktop.DBus.Properties";
constexpr std::chrono::seconds nameTimeout{25};
constexpr quint32 isOwner = 1; // what RequestName answers
constexpr quint32 isWaiting = 2;

// What every object has; the bus library answers org.freedesktop.DBus.Peer by itself.
constexpr char head[] = R"(<!DOCTYPE node PUBLIC "-//freedesktop//DTD D-BUS Object Introspection 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/introspect.dtd">
<node>
  <interface name="org.freedesktop.DBus.Peer">
    <method name="Ping"/>
    <method name="GetMachineId"><arg type="s" name="machine_uuid" direction="out"/></method>
  </interface>
  <interface name="org.freedesktop.DBus.Introspectable">
    <method name="Introspect"><arg type="s" name="data" direction="out"/></method>
  </interface>
)";
constexpr char propertiesXml[] = R"(  <interface name="org.freedesktop.DBus.Properties">
    <method name="Get">
      <arg type="s" name="interface" direction="in"/>
      <arg type="s" name="property" direction="in"/>
      <arg type="v" name="value" direction="out"/>
    </method>
    <method name="GetAll">
      <arg type="s" name="interface" direction="in"/>
      <arg type="a{sv}" name="properties" direction="out"/>
    </method>
    <method name="Set">
      <arg type="s" name="interface" direction="in"/>
      <arg type="s" name="property" direction="in"/>
      <arg type="v" name="value" direction="in"/>
    </method>
    <signal name="PropertiesChanged">
      <arg type="s" name="interface"/>
      <arg type="a{sv}" name="changed_properties"/>
      <arg type="as" name="invalidated_properties"/>
    </signal>
  </interface>
)";

Error busFault(const char *name, const QString &text)
{
    return {text, QByteArray("org.freedesktop.DBus.Error.") + name};
}

QString text(const QByteArray &name)
{
    return QString::fromUtf8(name);
}
} // namespace

struct BusObject::Private {
    const Place place;
    const Handlers handlers;
    QVariantMap values;
    BusService service; // of our own name

    Private(BusConnection::Bus bus, const Place &where, Handlers served)
        : place(where),
          handlers(std::move(served)),
          service(bus, where.name,
                  {.opened = [this] { opened(); },
                   .isAway =
                       [this](BusService::Absence why, const QString &) {
                           if (why == BusService::Absence::BusLost && handlers.closed)
                               handlers.closed();
                       }})
    {
    }

    void opened()
    {
        service.bus()->serve([this](const BusCall &call) { receive(call); });
        if (handlers.opened)
            handlers.opened(*service.bus());
        // In the queue behind one who has it.
        service.bus()->callLater({busName, busPath, busName, "RequestName"}, "su",
                                 {text(place.name), quint32(0)}, nameTimeout,
                                 [this](const BusConnection::Reply &reply) { nameAnswered(reply); });
    }

    void nameAnswered(const BusConnection::Reply &reply) const
    {
        const quint32 answer = BusConnection::firstOf(reply).toUInt();
        if (answer == isOwner || !handlers.refused)
            return;
        handlers.refused(answer == isWaiting ? QStringLiteral("another program has it")
                         : reply             ? QStringLiteral("the bus does not give it")
                                             : reply.error().text);
    }

    void receive(const BusCall &call)
    {
        if (call.interface() == introspectable)
            return introspect(call);
        if (call.path() != place.path)
            return call.refuse(
                busFault("UnknownObject", QString("There is no object %1.").arg(text(call.path()))));
        if (call.interface() == properties)
            return property(call);
        const BusDescription &description = place.description;
        const auto method = description.methods.constFind(call.method());
        if ((call.interface() != description.interface && !call.interface().isEmpty()) ||
            method == description.methods.cend())
            return unknownMethod(call);
        if (const auto arguments = argumentsOf(call, method->takes))
            handlers.call(call, *arguments);
    }

    static void unknownMethod(const BusCall &call)
    {
        call.refuse(busFault("UnknownMethod", QString("There is no method %1.").arg(text(call.method()))));
    }

    /// Absent for what does not fit, which is answered.
    static std::optional<QVariantList> argumentsOf(const BusCall &call, const QByteArray &takes)
    {
        if (call.signature() != takes) {
            call.refuse(
                busFault("InvalidArgs", QString("%1 takes arguments of the types \"%2\", not \"%3\".")
                                            .arg(text(call.method()), text(takes), text(call.signature()))));
            return {};
        }
        const auto arguments = call.arguments(largestCall);
        if (arguments)
            return *arguments;
        call.refuse(
            busFault("LimitsExceeded", QString("The call cannot be taken: %1.").arg(arguments.error().text)));
        return {};
    }

    void introspect(const BusCall &call) const
    {
        if (call.method() != "Introspect" || !call.signature().isEmpty())
            return unknownMethod(call);
        QByteArray xml = head;
        const QByteArray above = call.path().endsWith('/') ? call.path() : call.path() + '/';
        if (call.path() == place.path)
            xml += propertiesXml + QByteArray("  ") + place.description.interfaceXml + '\n';
        else if (place.path.startsWith(above))
            xml += "  <node name=\"" + place.path.mid(above.size()).split('/').constFirst() + "\"/>\n";
        call.answer("s", {text(xml + "</node>\n")});
    }

    void property(const BusCall &call)
    {
        const bool isGet = call.method() == "Get";
        const bool isSet = call.method() == "Set";
        if (!isGet && !isSet && call.method() != "GetAll")
            return unknownMethod(call);
        const auto arguments = argumentsOf(call, isGet ? "ss" : isSet ? "ssv" : "s");
        if (!arguments)
            return;
        const QString interface = arguments->at(0).toString();
        if (!interface.isEmpty() && interface != text(place.description.interface))
            return call.refuse(
                busFault("UnknownInterface", QString("There is no interface %1.").arg(interface)));
        const QString name = arguments->value(1).toString();
        if ((isGet || isSet) && !place.description.properties.contains(name.toUtf8()))
            return call.refuse(busFault("UnknownProperty", QString("There is no property %1.").arg(name)));
        if (isSet)
            return call.refuse(busFault("PropertyReadOnly", QString("%1 is only read.").arg(name)));
        if (handlers.willRead)
            handlers.willRead();
        if (isGet)
            call.answer("v", {typed(name)});
        else
            call.answer("a{sv}", {allTyped(values.keys())});
    }

    /// As the description says, whatever the value looks like.
    QVariant typed(const QString &name) const
    {
        return QVariant::fromValue(
            BusVariant{place.description.properties.value(name.toUtf8()), values.value(name)});
    }

    QVariantMap allTyped(const QStringList &names) const
    {
        QVariantMap all;
        for (const QString &name : names)
            all.insert(name, typed(name));
        return all;
    }
};

BusObject::BusObject(BusConnection::Bus bus, const Place &place, Handlers handlers)
    : d(std::make_unique<Private>(bus, place, std::move(handlers)))
{
}

BusObject::~BusObject() = default;

void BusObject::keepThere(const std::shared_ptr<Clock> &clock)
{
    d->service.keepOpen(clock);
}

BusConnection *BusObject::bus() const
{
    return d->service.bus();
}

void BusObject::answer(const BusCall &call, const QVariantList &values) const
{
    call.answer(d->place.description.methods.value(call.method()).gives, values);
}

void BusObject::setProperties(const QVariantMap &values)
{
    QStringList changed;
    for (auto value = values.cbegin(); value != values.cend(); ++value) {
        if (d->values.contains(value.key()) && d->values.value(value.key()) == *value)
            continue;
        d->values.insert(value.key(), *value);
        changed += value.key();
    }
    if (changed.isEmpty() || !bus())
        return;
    // A bus that takes no signal is about to be lost, which is told elsewhere.
    (void)bus()->emitSignal(d->place.path, properties, "PropertiesChanged", "sa{sv}as",
                            {text(d->place.description.interface), d->allTyped(changed), QStringList()});
}

void BusObject::emitSignal(const QByteArray &name, const QVariantList &values) const
{
    if (bus()) // see above
        (void)bus()->emitSignal(d->place.path, d->place.description.interface, name,
                                d->place.description.broadcasts.value(name), values);
}

} // namespace dozely
