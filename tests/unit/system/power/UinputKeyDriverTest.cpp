// SPDX-License-Identifier: MIT
#include "DozelyKit/core/foundation/ProblemReport.h"
#include "DozelyKit/system/power/linux/UinputKeyDriver_p.h"
#include "support/PrintTo.h"
#include "support/ScratchRoot.h"

#include <QFile>

#include <linux/input-event-codes.h>

#include <gmock/gmock.h>

using namespace dozely;

using testing::SizeIs;

namespace
{
NXEventData auxEvent(quint8 code)
{
    NXEventData data{};
    data.compound.subType = NX_SUBTYPE_AUX_CONTROL_BUTTONS;
    data.compound.words[0] = quint32(code) << 16 | 0x0A00;
    return data;
}

NXEventData plainEvent(qint16 subType)
{
    NXEventData data{};
    data.compound.subType = subType;
    return data;
}
} // namespace

class UinputKeyDriverTest : public testing::Test
{
protected:
    UinputKeyDriverTest()
    {
        setProblemReport([this](const QString &sentence) { problems += sentence; });
    }
    ~UinputKeyDriverTest() override { setProblemReport({}); }

    ScratchRoot root;
    QStringList problems;
    UinputKeyDriver driver;
};

TEST_F(UinputKeyDriverTest, MapsAuxCodesToTheKeysThatTheyMean)
{
    const std::pair<quint8, int> keys[] = {{0, KEY_VOLUMEUP},
                                           {1, KEY_VOLUMEDOWN},
                                           {2, KEY_BRIGHTNESSUP},
                                           {3, KEY_BRIGHTNESSDOWN},
                                           {4, KEY_CAPSLOCK},
                                           {5, KEY_HELP},
                                           {6, KEY_POWER},
                                           {7, KEY_MUTE},
                                           {8, KEY_UP},
                                           {9, KEY_DOWN},
                                           {10, KEY_NUMLOCK},
                                           {11, KEY_UNKNOWN},
                                           {12, KEY_UNKNOWN},
                                           {14, KEY_EJECTCD},
                                           {15, KEY_SWITCHVIDEOMODE},
                                           {16, KEY_PLAYPAUSE},
                                           {17, KEY_NEXTSONG},
                                           {18, KEY_PREVIOUSSONG},
                                           {19, KEY_FASTFORWARD},
                                           {20, KEY_REWIND},
                                           {21, KEY_KBDILLUMUP},
                                           {22, KEY_KBDILLUMDOWN},
                                           {23, KEY_KBDILLUMTOGGLE},
                                           {24, KEY_UNKNOWN},
                                           {128, KEY_UNKNOWN},
                                           {255, KEY_UNKNOWN}};
    for (const auto &[code, key] : keys)
        EXPECT_EQ(UinputKeyDriver::keyFor(auxEvent(code)), key) << int(code);
}

TEST_F(UinputKeyDriverTest, MapsSystemDefinedSubtypesThatAreKeys)
{
    EXPECT_EQ(UinputKeyDriver::keyFor(plainEvent(1)), KEY_POWER);
    EXPECT_EQ(UinputKeyDriver::keyFor(plainEvent(10)), KEY_EJECTCD);
    EXPECT_EQ(UinputKeyDriver::keyFor(plainEvent(11)), KEY_SLEEP);
    EXPECT_EQ(UinputKeyDriver::keyFor(plainEvent(0)), KEY_UNKNOWN);
    EXPECT_EQ(UinputKeyDriver::keyFor(plainEvent(255)), KEY_UNKNOWN);
}

TEST_F(UinputKeyDriverTest, DropsEventsWhereThereIsNoDeviceAndSaysSoOnce)
{
    EXPECT_EQ(driver.open(), KeyEventDriver::Opening::Opened);
    EXPECT_EQ(driver.open(), KeyEventDriver::Opening::Opened);
    EXPECT_TRUE(driver.post(auxEvent(255)));
    EXPECT_THAT(problems, SizeIs(1));
}

TEST_F(UinputKeyDriverTest, ADeviceThatIsNoneIsAFailure)
{
    root.makeFolder("/dev");
    QFile file(root.join("/dev/uinput"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    EXPECT_EQ(driver.open(), KeyEventDriver::Opening::Refused);
    EXPECT_FALSE(driver.post(auxEvent(255)));
}

TEST_F(UinputKeyDriverTest, TakesNothingBeforeItIsOpened)
{
    EXPECT_FALSE(driver.post(auxEvent(1)));
    ASSERT_EQ(driver.open(), KeyEventDriver::Opening::Opened);
    EXPECT_TRUE(driver.post(auxEvent(1)));
}
