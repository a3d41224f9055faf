// SPDX-License-Identifier: MIT
#include "DozelyKit/system/power/ZDRKeyManager.h"
#include "DozelyKit/core/foundation/NSAssertionHandler.h"
#include "DozelyKit/core/foundation/NSException.h"
#include "unit/system/power/PowerFixture.h"

#include <thread>

using namespace dozely;

using testing::ElementsAre;
using testing::IsEmpty;

using Opening = KeyEventDriver::Opening;

namespace
{
/// Writes failures down and lets the caller go on.
class Witness : public NSAssertionHandler
{
public:
    void handleFailureInMethod(const QByteArray &method, const QString &object, const QString &file,
                               qint32 lineNumber, const QString &description) override
    {
        failures +=
            QString("%1 %2 %3:%4 %5").arg(QString(method), object, file).arg(lineNumber).arg(description);
    }
    QStringList failures;
};
} // namespace

class ZDRKeyManagerTest : public PowerFixture
{
protected:
    ~ZDRKeyManagerTest() override { NSAssertionHandler::setCurrentHandler(nullptr); }
    QStringList failuresOf(const std::function<void()> &action)
    {
        const auto witness = std::make_shared<Witness>();
        NSAssertionHandler::setCurrentHandler(witness);
        action();
        return witness->failures;
    }
    static void openDriver() { ZDRKeyManager::eventDriver(); }
};

TEST_F(ZDRKeyManagerTest, OpensTheEventDriverOnce)
{
    const quint32 driver = ZDRKeyManager::eventDriver();
    EXPECT_NE(driver, 0U);
    ZDRKeyManager::postAuxKey(7);
    ZDRKeyManager::postSysDefinedKey(1);
    EXPECT_EQ(ZDRKeyManager::eventDriver(), driver);
    EXPECT_THAT(story, ElementsAre("open", "post", "post"));
}

TEST_F(ZDRKeyManagerTest, PostsTheRecordOfAnAuxKey)
{
    ZDRKeyManager::postAuxKey(255);
    QByteArray record(48, '\0');
    record[2] = 8;
    const quint32 word = 0x00FF0A00;
    std::memcpy(record.data() + 4, &word, sizeof word);
    EXPECT_THAT(keys->records, ElementsAre(record)) << "and no release";
}

TEST_F(ZDRKeyManagerTest, PostsTheRecordOfASystemDefinedKey)
{
    ZDRKeyManager::postSysDefinedKey(1);
    ZDRKeyManager::postSysDefinedKey(255);
    QByteArray first(48, '\0');
    first[2] = 1;
    QByteArray second(48, '\0');
    second[2] = char(255);
    EXPECT_THAT(keys->records, ElementsAre(first, second));
}

TEST_F(ZDRKeyManagerTest, AFailureRaisesByDefault)
{
    keys->opening = Opening::NoAnswer;
    try {
        ZDRKeyManager::postAuxKey(255);
        FAIL() << "no exception";
    } catch (const NSException &exception) {
        EXPECT_EQ(exception.name(), "NSInternalInconsistencyException");
        EXPECT_EQ(exception.reason(), "KERN_SUCCESS");
    }
    EXPECT_THAT(story, ElementsAre("open"));
    EXPECT_THAT(keys->records, IsEmpty());
}

TEST_F(ZDRKeyManagerTest, TellsAMachineThatDoesNotAnswer)
{
    keys->opening = Opening::NoAnswer;
    EXPECT_THAT(failuresOf(openDriver),
                ElementsAre("eventDriver ZDRKeyManager ZDRKeyManager:28 KERN_SUCCESS"));
}

TEST_F(ZDRKeyManagerTest, TellsThatInputSystemsAreNotListed)
{
    keys->opening = Opening::NoList;
    EXPECT_THAT(failuresOf(openDriver),
                ElementsAre("eventDriver ZDRKeyManager ZDRKeyManager:31 KERN_SUCCESS"));
}

TEST_F(ZDRKeyManagerTest, TellsThatThereIsNoInputSystem)
{
    keys->opening = Opening::NoInputSystem;
    EXPECT_THAT(failuresOf(openDriver), ElementsAre("eventDriver ZDRKeyManager ZDRKeyManager:34 service"));
}

TEST_F(ZDRKeyManagerTest, TellsAConnectionThatCannotBeOpenedAndTriesAgain)
{
    keys->opening = Opening::Refused;
    EXPECT_THAT(failuresOf(openDriver),
                ElementsAre("eventDriver ZDRKeyManager ZDRKeyManager:37 KERN_SUCCESS"));
    keys->opening = Opening::Opened;
    EXPECT_NE(ZDRKeyManager::eventDriver(), 0U);
}

TEST_F(ZDRKeyManagerTest, TellsAPostThatFailsAndKeepsTheConnection)
{
    keys->refuses = true;
    EXPECT_THAT(failuresOf([] { ZDRKeyManager::postSysDefinedKey(1); }),
                ElementsAre("postSysDefinedKey ZDRKeyManager ZDRKeyManager:55 KERN_SUCCESS"));
    EXPECT_THAT(failuresOf([] { ZDRKeyManager::postAuxKey(1); }),
                ElementsAre("postAuxKey ZDRKeyManager ZDRKeyManager:70 KERN_SUCCESS"));
    EXPECT_EQ(story.filter("open").size(), 1);
}

TEST_F(ZDRKeyManagerTest, AssertionHandlersBelongToOneThread)
{
    const auto witness = std::make_shared<Witness>();
    NSAssertionHandler::setCurrentHandler(witness);
    EXPECT_EQ(&NSAssertionHandler::currentHandler(), witness.get());
    NSAssertionHandler *other = nullptr;
    std::thread([&] { other = &NSAssertionHandler::currentHandler(); }).join();
    EXPECT_NE(other, witness.get());
}
