// SPDX-License-Identifier: MIT
//
// What a server tells of its objects to who asks in the way of D-Bus.
#include "ConnectionFixture.h"

#include "DozelyKit/communication/remoting/MessageStream_p.h"

#include <QXmlStreamReader>

using namespace dozely;

using namespace std::chrono_literals;

namespace
{
class Introspection : public ConnectionTest
{
protected:
    /// What is told of the object at that path.
    QString introspect(const QByteArray &at) const
    {
        const auto stream = MessageStream::open(*TestPort::client(path), 5s);
        const auto reply =
            stream->call({at, "org.freedesktop.DBus.Introspectable", "Introspect", {}}, 20s, 20s);
        EXPECT_EQ(reply.errorName, QByteArray());
        return reply.results.value(0).toString();
    }

    /// The methods that it has, as "interface.name": "in i size, out ay result".
    static QMap<QString, QString> methodsIn(const QString &text)
    {
        QMap<QString, QString> methods;
        QXmlStreamReader xml(text);
        QString interface;
        QString method;
        while (!xml.atEnd()) {
            if (xml.readNext() != QXmlStreamReader::StartElement)
                continue;
            const auto attribute = [&](const char *name) { return xml.attributes().value(name).toString(); };
            if (xml.name() == QLatin1StringView("interface")) {
                interface = attribute("name");
            } else if (xml.name() == QLatin1StringView("method")) {
                method = interface + '.' + attribute("name");
                methods.insert(method, {});
            } else if (xml.name() == QLatin1StringView("arg")) {
                QString &arguments = methods[method];
                arguments += arguments.isEmpty() ? "" : ", ";
                arguments += attribute("direction") + ' ' + attribute("type") + ' ' + attribute("name");
            }
        }
        EXPECT_FALSE(xml.hasError()) << qPrintable(xml.errorString());
        return methods;
    }

    static QStringList childrenIn(const QString &text)
    {
        QStringList children;
        QXmlStreamReader xml(text);
        while (!xml.atEnd()) {
            if (xml.readNext() == QXmlStreamReader::StartElement && xml.name() == QLatin1StringView("node") &&
                xml.attributes().hasAttribute("name"))
                children += xml.attributes().value("name").toString();
        }
        children.sort();
        return children;
    }
};

const QString introspectable = "org.freedesktop.DBus.Introspectable.Introspect";
} // namespace

TEST_F(Introspection, TellsTheTypesOfWhatAMethodTakesAndGives)
{
    const QMap<QString, QString> methods = methodsIn(introspect("/root"));
    EXPECT_EQ(methods.value(introspectable), "out s data");
    const QMap<QString, QString> expected{
        {"pong", "out b result"},
        {"bytes", "in i size, out ay result"},
        {"sizeOfBoth", "in s first, in s second, out x result"},
        {"sameCardinal", "in u number, out u result"},
        {"sameLargeInteger", "in x number, out x result"},
        {"sameLargeCardinal", "in t number, out t result"},
        {"fraction", "out d result"},
        {"text", "out s result"},
        {"date", "out (xis) result"},
        {"list", "out av result"},
        {"dictionary", "out a{sv} result"},
        {"anything", "out v result"},
        {"child", "out o result"},
        {"nothing", ""},
        {"postNotification", "in s name, in s object, in a{sv} userInfo, out b result"},
    };
    for (auto method = expected.cbegin(); method != expected.cend(); ++method) {
        const QString name = "com.dozely.Object." + method.key();
        ASSERT_TRUE(methods.contains(name)) << qPrintable(name);
        EXPECT_EQ(methods[name], *method) << qPrintable(name);
    }
    EXPECT_FALSE(methods.contains("com.dozely.Object.hidden"));
    EXPECT_FALSE(methods.contains("com.dozely.Connection.rootObject"));
}

TEST_F(Introspection, OfTheConnectionLeadsToItsObjects)
{
    const auto proxy = client()->rootProxy();
    EXPECT_EQ(childrenIn(introspect("/")), QStringList("root"));
    const QByteArray child = NSDistantObject::asProxy(proxy->invoke("child"))->path();
    const QString text = introspect("/");
    EXPECT_EQ(methodsIn(text),
              (QMap<QString, QString>{{introspectable, "out s data"},
                                      {"com.dozely.Connection.rootObject", "out o object"}}));
    EXPECT_EQ(childrenIn(text), QStringList({"object", "root"}));
    const QByteArray folder = child.left(child.lastIndexOf('/'));
    EXPECT_EQ(childrenIn(introspect(folder)), QStringList(child.mid(folder.size() + 1)));
    EXPECT_EQ(methodsIn(introspect(child)).value("com.dozely.Object.answer"), "out i result");
    EXPECT_EQ(childrenIn(introspect(child)), QStringList());
}

TEST_F(Introspection, OfNothingHasNoMethodsOfItsOwn)
{
    EXPECT_EQ(methodsIn(introspect("/nowhere")), (QMap<QString, QString>{{introspectable, "out s data"}}));
}
