// SPDX-License-Identifier: MIT
#include "DozelyKit/core/dbus/BusDescription.h"

#include <QXmlStreamReader>

namespace dozely
{

namespace
{
QByteArray attribute(const QXmlStreamReader &reader, const char *name)
{
    return reader.attributes().value(QLatin1StringView(name)).toUtf8();
}

/// The arguments of the method or the signal at which the reader stands: those that go in, and those that
/// come out.
BusDescription::Method readArguments(QXmlStreamReader &reader)
{
    BusDescription::Method method;
    while (reader.readNextStartElement()) {
        if (reader.name() == u"arg")
            (attribute(reader, "direction") == "out" ? method.gives : method.takes) +=
                attribute(reader, "type");
        reader.skipCurrentElement();
    }
    return method;
}

void readMembers(QXmlStreamReader &reader, BusDescription &description)
{
    while (reader.readNextStartElement()) {
        const QByteArray name = attribute(reader, "name");
        if (reader.name() == u"method") {
            description.methods.insert(name, readArguments(reader));
        } else if (reader.name() == u"signal") {
            description.broadcasts.insert(name, readArguments(reader).takes);
        } else if (reader.name() == u"property") {
            description.properties.insert(name, attribute(reader, "type"));
            reader.skipCurrentElement();
        } else {
            reader.skipCurrentElement();
        }
    }
}
} // namespace

Result<BusDescription> BusDescription::fromXml(const QByteArray &xml)
{
    QXmlStreamReader reader(xml);
    BusDescription description;
    if (!reader.readNextStartElement() || reader.name() != u"node")
        return Error{QStringLiteral("the introspection data have no node")};
    while (reader.readNextStartElement()) {
        if (reader.name() == u"interface") {
            if (!description.interface.isEmpty())
                return Error{QStringLiteral("the introspection data have more than one interface")};
            description.interface = attribute(reader, "name");
            readMembers(reader, description);
        } else {
            reader.skipCurrentElement();
        }
    }
    const qsizetype begin = xml.indexOf("<interface");
    const qsizetype end = xml.lastIndexOf("</interface>");
    if (reader.hasError() || description.interface.isEmpty() || begin < 0 || end < begin)
        return Error{QStringLiteral("the introspection data are damaged")};
    description.interfaceXml = xml.mid(begin, end - begin) + "</interface>";
    return description;
}

} // namespace dozely
