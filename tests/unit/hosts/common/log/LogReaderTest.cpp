// SPDX-License-Identifier: MIT
#include "hosts/common/log/LogReader.h"

#include "support/ScratchRoot.h"

#include <gmock/gmock.h>

#include <sys/stat.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace
{
class LogReaderTest : public testing::Test
{
protected:
    void append(const QByteArray &text) const
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::Append));
        file.write(text);
    }
    ScratchRoot root;
    QString path = root.join("/log");
    LogReader reader{path};
};
} // namespace

TEST_F(LogReaderTest, ReadsWholeLinesOnly)
{
    append("one\ntw");
    ASSERT_TRUE(reader.open());
    EXPECT_THAT(reader.lastLines(5), ElementsAre("one"));
    EXPECT_THAT(reader.newLines(), IsEmpty());
    append("o\n\nthree\n");
    EXPECT_THAT(reader.newLines(), ElementsAre("two", "", "three"));
}

TEST_F(LogReaderTest, FindsTheLastLinesOfALongFile)
{
    for (int i = 0; i < 3000; ++i)
        append(QByteArray(100, 'x') + QByteArray::number(i) + '\n');
    ASSERT_TRUE(reader.open());
    const auto lines = reader.lastLines(1500);
    ASSERT_EQ(lines.size(), 1500);
    EXPECT_EQ(lines.first(), QByteArray(100, 'x') + "1500");
    EXPECT_EQ(lines.last(), QByteArray(100, 'x') + "2999");
    EXPECT_THAT(reader.newLines(), IsEmpty());
}

TEST_F(LogReaderTest, FindsTheLastLinesThatFillTheLastBlocksToTheByte)
{
    constexpr int lineSize = 64;
    constexpr int linesOfABlock = 64 * 1024 / lineSize;
    QByteArray log;
    for (int i = 0; i < 3 * linesOfABlock; ++i)
        log += QByteArray::number(i).rightJustified(lineSize - 1, 'x') + '\n';
    append(log);
    for (const int count : {linesOfABlock - 1, linesOfABlock, linesOfABlock + 1, 2 * linesOfABlock}) {
        SCOPED_TRACE(count);
        ASSERT_TRUE(reader.open());
        const auto lines = reader.lastLines(count);
        ASSERT_EQ(lines.size(), count);
        EXPECT_TRUE(lines.first().endsWith('x' + QByteArray::number(3 * linesOfABlock - count)));
    }
}

TEST_F(LogReaderTest, LooksThroughTheLastSixteenMegabytesForLines)
{
    constexpr int megabyte = 1 << 20;
    append("too far away\n" + QByteArray(5 * megabyte, 'x') + '\n');
    for (int i = 0; i < 10; ++i)
        append(QByteArray(megabyte - 1, 'x') + '\n');
    append("last\n");
    ASSERT_TRUE(reader.open());
    EXPECT_THAT(reader.lastLines(1), ElementsAre("last"));
    ASSERT_TRUE(reader.open());
    EXPECT_EQ(reader.lastLines(11).size(), 11);
    append(QByteArray(2 * megabyte, 'x') + '\n');
    ASSERT_TRUE(reader.open());
    const auto lines = reader.lastLines(50);
    EXPECT_TRUE(lines.contains("last"));
    EXPECT_FALSE(lines.contains("too far away"));
}

TEST_F(LogReaderTest, StartsAgainWhenTheFileWasCut)
{
    append("one\ntwo\n");
    ASSERT_TRUE(reader.open());
    EXPECT_EQ(reader.lastLines(9).size(), 2);
    ASSERT_TRUE(QFile::resize(path, 0));
    append("new\n");
    EXPECT_THAT(reader.newLines(), ElementsAre("new"));
}

TEST_F(LogReaderTest, ReadsTheOldFileToItsEndBeforeTheNewOne)
{
    append("one\n");
    ASSERT_TRUE(reader.open());
    EXPECT_THAT(reader.lastLines(9), ElementsAre("one"));
    append("two\n");
    ASSERT_TRUE(QFile::rename(path, path + ".old"));
    append("three\n");
    EXPECT_THAT(reader.newLines(), ElementsAre("two", "three"));
}

TEST_F(LogReaderTest, ShowsALineThatNeverEndsInPieces)
{
    append(QByteArray(200 * 1024, 'x'));
    ASSERT_TRUE(reader.open());
    qsizetype size = 0;
    for (const QByteArray &piece : reader.lastLines(100)) {
        EXPECT_LE(piece.size(), 128 * 1024);
        size += piece.size();
    }
    EXPECT_GE(size, 128 * 1024);
}

TEST_F(LogReaderTest, EndsALongLineWithItsLastPiece)
{
    append(QByteArray(128 * 1024, 'x'));
    ASSERT_TRUE(reader.open());
    EXPECT_THAT(reader.newLines(), ElementsAre(QByteArray(128 * 1024, 'x')));
    append("\n\nnext\n");
    EXPECT_THAT(reader.newLines(), ElementsAre("", "next"));
}

TEST_F(LogReaderTest, DoesNotWaitForAPipeOrReadAFolder)
{
    ASSERT_EQ(::mkfifo(qPrintable(path), 0600), 0);
    const auto pipe = reader.open();
    ASSERT_FALSE(pipe);
    EXPECT_EQ(pipe.error().text, "it is not a file");
    LogReader ofFolder(root.path());
    const auto folder = ofFolder.open();
    ASSERT_FALSE(folder);
    EXPECT_EQ(folder.error().text, "it is not a file");
}
