// SPDX-License-Identifier: MIT
#include "DozelyKit/core/foundation/DataExtensions.h"

#include <QList>
#include <QRandomGenerator>

#include <gtest/gtest.h>

#include <zlib.h>

using namespace zandorSoftwaresExtensions;

namespace
{
QByteArray noise(qsizetype size)
{
    QRandomGenerator generator(20260314); // the same bytes in every run
    QByteArray data(size, Qt::Uninitialized);
    for (char &byte : data)
        byte = static_cast<char>(generator.generate());
    return data;
}

QByteArray unpackedByZlib(const QByteArray &packed, qsizetype size)
{
    QByteArray data(size, Qt::Uninitialized);
    auto length = static_cast<uLongf>(size);
    const int status =
        ::uncompress(reinterpret_cast<Bytef *>(data.data()), &length,
                     reinterpret_cast<const Bytef *>(packed.constData()), static_cast<uLong>(packed.size()));
    return status == Z_OK ? data.left(static_cast<qsizetype>(length)) : QByteArray("not one zlib stream");
}

// Sizes around every step of the output buffers.
const QList<qsizetype> sizes = {1, 2, 3, 10, 16383, 16384, 16385, 40000, 3 << 20};
} // namespace

TEST(Compress, ReturnsEmptyDataItself)
{
    const QByteArray empty("");
    EXPECT_EQ(compress(empty).constData(), empty.constData());
    EXPECT_FALSE(compress(empty).isNull());
    EXPECT_TRUE(compress(QByteArray()).isNull());
}

TEST(Compress, BeginsWithTheStandardZlibHeaderOfTheDefaultLevel)
{
    EXPECT_EQ(compress("Dozely").left(2).toHex(), QByteArray("789c"));
}

TEST(Compress, MakesAStreamThatAnyZlibUnpacks)
{
    for (const qsizetype size : sizes) {
        EXPECT_EQ(unpackedByZlib(compress(noise(size)), size), noise(size)) << size;
        EXPECT_EQ(unpackedByZlib(compress(QByteArray(size, 'a')), size), QByteArray(size, 'a')) << size;
    }
}

TEST(Compress, AddsNoFramingOfItsOwn)
{
    const QByteArray data(100000, 'a');
    auto length = ::compressBound(static_cast<uLong>(data.size()));
    QByteArray expected(static_cast<qsizetype>(length), Qt::Uninitialized);
    ASSERT_EQ(::compress2(reinterpret_cast<Bytef *>(expected.data()), &length,
                          reinterpret_cast<const Bytef *>(data.constData()), static_cast<uLong>(data.size()),
                          Z_DEFAULT_COMPRESSION),
              Z_OK);
    EXPECT_EQ(compress(data), expected.left(static_cast<qsizetype>(length)));
}

TEST(Uncompress, ReturnsEmptyDataItself)
{
    const QByteArray empty("");
    EXPECT_EQ(uncompress(empty).constData(), empty.constData());
    EXPECT_FALSE(uncompress(empty).isNull());
}

TEST(Uncompress, YieldsTheBufferThatWasCompressed)
{
    for (const qsizetype size : sizes) {
        EXPECT_EQ(uncompress(compress(noise(size))), noise(size)) << size;
        EXPECT_EQ(uncompress(compress(QByteArray(size, 'a'))), QByteArray(size, 'a')) << size;
    }
}

TEST(Uncompress, GivesEmptyDataForAPackedEmptiness)
{
    const QByteArray packed = QByteArray::fromHex("789c030000000001");
    EXPECT_FALSE(uncompress(packed).isNull());
    EXPECT_TRUE(uncompress(packed).isEmpty());
}

TEST(Uncompress, GivesNullWhenLastBytesAreMissing)
{
    const QByteArray packed = compress(noise(1000));
    for (qsizetype missing = 1; missing < packed.size(); ++missing)
        EXPECT_TRUE(uncompress(packed.chopped(missing)).isNull()) << missing;
}

TEST(Uncompress, GivesNullForASingleByte)
{
    for (int byte = 0; byte < 256; ++byte)
        EXPECT_TRUE(uncompress(QByteArray(1, static_cast<char>(byte))).isNull()) << byte;
}

TEST(Uncompress, GivesNullForDataThatIsNoZlibStream)
{
    EXPECT_TRUE(uncompress("just some text").isNull());
    EXPECT_TRUE(uncompress(noise(5000)).isNull());
}

TEST(Uncompress, GivesNullWhenTheChecksumIsWrong)
{
    QByteArray packed = compress("Dozely");
    packed.back() = static_cast<char>(packed.back() ^ 1);
    EXPECT_TRUE(uncompress(packed).isNull());
}

TEST(Uncompress, GivesNullForAStreamThatWantsADictionary)
{
    EXPECT_TRUE(uncompress(QByteArray::fromHex("78bb00000001") + QByteArray(20, 0)).isNull());
}

TEST(Uncompress, UnpacksUpToTheLimitAndGivesNullBeyondIt)
{
    const QByteArray data(1 << 20, 'a');
    const QByteArray packed = compress(data);
    EXPECT_EQ(uncompress(packed, data.size()), data);
    EXPECT_TRUE(uncompress(packed, data.size() - 1).isNull());
    EXPECT_TRUE(uncompress(packed, 0).isNull());
}

TEST(Sha1Hash, IsTheRawDigest)
{
    EXPECT_EQ(sha1Hash("abc").toHex(), QByteArray("a9993e364706816aba3e25717850c26c9cd0d89d"));
    EXPECT_EQ(sha1Hash("").toHex(), QByteArray("da39a3ee5e6b4b0d3255bfef95601890afd80709"));
    EXPECT_EQ(sha1Hash("abc").size(), 20);
}

TEST(Md5Hash, IsTheRawDigest)
{
    EXPECT_EQ(md5Hash("abc").toHex(), QByteArray("900150983cd24fb0d6963f7d28e17f72"));
    EXPECT_EQ(md5Hash("").toHex(), QByteArray("d41d8cd98f00b204e9800998ecf8427e"));
    EXPECT_EQ(md5Hash("abc").size(), 16);
}
