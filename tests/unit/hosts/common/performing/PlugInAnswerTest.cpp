// SPDX-License-Identifier: MIT
#include "hosts/common/performing/PlugInAnswer.h"

#include "DozelyKit/core/files/PropertyList.h"

#include <gtest/gtest.h>

using namespace dozely;

TEST(PlugInAnswer, ArrivesAsItWasSent)
{
    const PlugInAnswer answer{true, false, -7, 1LL << 40, "Réveil", true, false};
    const auto read = PlugInAnswer::fromPacket(PlugInAnswer::toPacket(answer));
    ASSERT_TRUE(read) << read.error().text.toStdString();
    EXPECT_EQ(*read, answer);
}

TEST(PlugInAnswer, ArrivesAsTheReasonWhyThereIsNone)
{
    const auto read = PlugInAnswer::fromPacket(PlugInAnswer::toPacket(Error{"it raised"}));
    ASSERT_FALSE(read);
    EXPECT_EQ(read.error().text, "it raised");
}

TEST(PlugInAnswer, IsOnePacketWhateverAPlugInSays)
{
    const QString endless(1 << 20, QChar(0x4e00));
    const QByteArray name = PlugInAnswer::toPacket(PlugInAnswer{true, true, -1, -1, endless});
    const QByteArray reason = PlugInAnswer::toPacket(Error{endless});
    EXPECT_LE(name.size(), PlugInAnswer::mostBytes);
    EXPECT_LE(reason.size(), PlugInAnswer::mostBytes);
    EXPECT_TRUE(PlugInAnswer::fromPacket(name));
    EXPECT_TRUE(PlugInAnswer::fromPacket(reason).error().text.startsWith(QChar(0x4e00)));
}

TEST(PlugInAnswer, SaysThatATextIsNone)
{
    const QString half(1, QChar(0xd800)); // of a pair
    for (const QByteArray &packet : {PlugInAnswer::toPacket(PlugInAnswer{true, true, -7, 60, half}),
                                     PlugInAnswer::toPacket(Error{half})}) {
        const auto read = PlugInAnswer::fromPacket(packet);
        ASSERT_FALSE(read);
        EXPECT_EQ(read.error().text, "what its plug-in says is no text");
    }
}

TEST(PlugInAnswer, IsNoneForWhatNobodyHasWritten)
{
    const QByteArray packet = PlugInAnswer::toPacket(PlugInAnswer{true, true, -7, 60, "Name"});
    for (const QByteArray &other : {QByteArray(), QByteArray("A"), packet.first(packet.size() / 2),
                                    PropertyList::toData(QVariantMap(), PropertyList::Format::Binary)})
        EXPECT_FALSE(PlugInAnswer::fromPacket(other));
    const QVariantMap map = PropertyList::fromData(packet)->toMap();
    for (const QString &key : map.keys()) {
        QVariantMap changed = map;
        changed.insert(key, QVariantList());
        EXPECT_FALSE(PlugInAnswer::fromPacket(PropertyList::toData(changed, PropertyList::Format::Binary)))
            << key.toStdString();
    }
    QVariantMap wide = map;
    wide.insert("Time Out", 1LL << 32);
    EXPECT_FALSE(PlugInAnswer::fromPacket(PropertyList::toData(wide, PropertyList::Format::Binary)));
}
