// SPDX-License-Identifier: MIT
#include "DozelyKit/core/dbus/BusDescription.h"

#include "support/PrintTo.h"

#include <gtest/gtest.h>

using namespace dozely;

namespace
{
std::string refusal(const QByteArray &xml)
{
    const auto description = BusDescription::fromXml(xml);
    return description ? "" : description.error().text.toStdString();
}
} // namespace

TEST(BusDescription, HoldsTheMembersOfTheOnlyInterface)
{
    const QByteArray interface = R"(<interface name="com.dozely.Test">
    <annotation name="a" value="b"/>
    <method name="Add">
      <arg type="s" direction="in"/><annotation name="c" value="d"/><arg type="u"/><arg type="x" direction="out"/>
    </method>
    <signal name="Happened"><arg type="s" name="what"/><arg type="b"/></signal>
    <property name="Count" type="u" access="read"><annotation name="e" value="f"/></property>
  </interface>)";
    const auto description =
        BusDescription::fromXml("<?xml version=\"1.0\"?>\n<node>\n  <doc/>\n  " + interface + "\n</node>\n");
    ASSERT_TRUE(description) << description.error().text.toStdString();
    EXPECT_EQ(description->interface, "com.dozely.Test");
    EXPECT_EQ(description->interfaceXml, interface);
    EXPECT_EQ(description->methods.keys(), QByteArrayList{"Add"});
    EXPECT_EQ(description->methods["Add"].takes, "su");
    EXPECT_EQ(description->methods["Add"].gives, "x");
    EXPECT_EQ(description->broadcasts, (QHash<QByteArray, QByteArray>{{"Happened", "sb"}}));
    EXPECT_EQ(description->properties, (QHash<QByteArray, QByteArray>{{"Count", "u"}}));
}

TEST(BusDescription, IsRefusedWithASentence)
{
    for (const char *nothing : {"", "hello", "<interface name=\"a.b\"></interface>"})
        EXPECT_EQ(refusal(nothing), "the introspection data have no node") << nothing;
    EXPECT_EQ(
        refusal("<node><interface name=\"a.b\"></interface><interface name=\"c.d\"></interface></node>"),
        "the introspection data have more than one interface");
    for (const char *damaged :
         {"<node/>", "<node><method name=\"A\"/></node>", "<node><interface></interface></node>",
          "<node><interface name=\"a.b\"/></node>", "<node><interface name=\"a.b\"></interface>",
          "<node><interface name=\"a.b\"></interface></other>"})
        EXPECT_EQ(refusal(damaged), "the introspection data are damaged") << damaged;
}
