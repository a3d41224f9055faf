// SPDX-License-Identifier: MIT
#include "hosts/common/performing/PlaceLock.h"

#include "support/PrintTo.h"

#include <QFile>
#include <QTemporaryDir>

#include <atomic>
#include <thread>

TEST(PlaceLock, IsNeverTakenByAPerformerThatWasCalledOff)
{
    const QTemporaryDir folder;
    const QString place = folder.filePath("one");
    constexpr int times = 5'000;
    std::atomic<int> made = 0;
    std::atomic<bool> isOver = false;
    std::thread host([&] {
        for (int i = 0; i < times; ++i) {
            made += PlaceLock::make(place, "of the next\n").ok() ? 1 : 0;
            QFile::remove(place);
        }
        isOver = true;
    });
    int taken = 0;
    while (!isOver)
        taken += PlaceLock::take(place, "of the former\n").ok() ? 1 : 0;
    host.join();
    EXPECT_EQ(made, times);
    EXPECT_EQ(taken, 0);
}
