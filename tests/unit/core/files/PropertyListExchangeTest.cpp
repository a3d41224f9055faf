// SPDX-License-Identifier: MIT
#include "DozelyKit/core/files/PropertyList.h"

#include "Python.h"

#include <QtEndian>

#include <gtest/gtest.h>

using namespace dozely;

namespace
{
using PropertyList::Format;

/// Makes the same values at each run. Texts have all sorts of characters, and integers, lengths and counts
/// stand at the places where a form changes its width.
constexpr char generator[] = R"(
import random, struct
chance = random.Random(20260314)
PIECES = ['a', ' ', '\t', '\n', '<', '>', '&', '"', "'", ']]>', '&amp;', '<!--', '\xe4', '\x85', '\u2028', '\u0301',
          '\u4e2d', '\u05d0', '\ufeff', '\ufffd', '\U0001F319', '\U0001FFFE', '\U0010FFFD']
RANGES = [(0x20, 0x7f), (0xa0, 0xd800), (0xe000, 0xfffe), (0x10000, 0x110000)]
LENGTHS = [0, 1, 2, 14, 15, 16, 60, 255, 256, 300]

def text():
    length = chance.choice(LENGTHS)
    return ''.join(chance.choice(PIECES) if chance.random() < 0.5 else chr(chance.randrange(*chance.choice(RANGES)))
                   for _ in range(length))

def integer():
    bits = chance.choice([1, 7, 8, 9, 15, 16, 31, 32, 33, 62, 63, 64])
    number = chance.choice([2**bits - 1, 2**bits, chance.randrange(2**bits)])
    return max(-2**63, -number) if chance.random() < 0.4 else min(2**64 - 1, number)

def real():
    wide = struct.unpack('>d', struct.pack('>Q', chance.randrange(1, 0x7ff << 52)))[0]
    narrow = struct.unpack('>f', struct.pack('>I', chance.randrange(1, 0xff << 23)))[0]
    return chance.choice([1, -1]) * chance.choice([0.5, 1e15, 5e-324, chance.random(), wide, narrow])

def date():
    year = chance.choice([1, 1800, 1932, 1969, 2000, 2001, 2069, 2500, 9999, chance.randrange(1, 10000)])
    return datetime.datetime(year, chance.randrange(1, 13), chance.randrange(1, 29), chance.randrange(24),
                             chance.randrange(60), chance.randrange(60))

def value(depth=0):
    kind = chance.randrange(8 if depth < 4 else 6)
    count = chance.choice([0, 1, 2, 14, 15, 16]) if depth < 2 else chance.randrange(3)
    if kind < 6:
        return [lambda: chance.random() < 0.5, integer, real, text, date,
                lambda: chance.randbytes(chance.choice(LENGTHS))][kind]()
    return [value(depth + 1) for _ in range(count)] if kind == 6 else {text(): value(depth + 1) for _ in range(count)}

values = [value() for _ in range(300)]

def same(one, other):
    if type(one) is not type(other):
        return False
    if isinstance(one, dict):
        return one.keys() == other.keys() and all(same(one[key], other[key]) for key in one)
    if isinstance(one, list):
        return len(one) == len(other) and all(map(same, one, other))
    return one == other
)";

/// Lists that follow each other, each behind its length.
QByteArrayList separated(const QByteArray &stream)
{
    QByteArrayList lists;
    for (qsizetype at = 0; at + 4 <= stream.size();) {
        const qsizetype size = qFromBigEndian<qint32>(stream.constData() + at);
        lists += stream.mid(at + 4, size);
        at += 4 + size;
    }
    return lists;
}

QByteArray joined(const QByteArrayList &lists)
{
    QByteArray stream;
    for (const QByteArray &list : lists) {
        QByteArray size(4, '\0');
        qToBigEndian(static_cast<qint32>(list.size()), size.data());
        stream += size + list;
    }
    return stream;
}

class PropertyListExchange : public testing::TestWithParam<std::tuple<Format, Format>>
{
};
} // namespace

TEST_P(PropertyListExchange, LosesNothing)
{
    const auto [theirs, ours] = GetParam();
    const QByteArray written =
        python(generator + QString("for value in values:\n"
                                   "    data = plistlib.dumps(value, fmt=plistlib.FMT_%1)\n"
                                   "    sys.stdout.buffer.write(struct.pack('>i', len(data)) + data)\n")
                               .arg(theirs == Format::Xml ? "XML" : "BINARY"));
    QByteArrayList answers;
    for (const QByteArray &list : separated(written)) {
        const auto value = PropertyList::fromData(list);
        ASSERT_TRUE(value) << qPrintable(value.error().text) << list.toPercentEncoding().constData();
        answers += PropertyList::toData(*value, ours);
    }
    EXPECT_EQ(answers.size(), 300);
    const QByteArray differences =
        python(generator + QString("data = sys.stdin.buffer.read()\n"
                                   "for value in values:\n"
                                   "    end = 4 + struct.unpack('>i', data[:4])[0]\n"
                                   "    read = plistlib.loads(data[4:end])\n"
                                   "    data = data[end:]\n"
                                   "    if not same(read, value):\n"
                                   "        print(ascii(value)[:300], ascii(read)[:300])\n"
                                   "print('end')\n"),
               joined(answers));
    EXPECT_EQ(differences.toStdString(), "end\n");
}

INSTANTIATE_TEST_SUITE_P(Forms, PropertyListExchange,
                         testing::Combine(testing::Values(Format::Xml, Format::Binary),
                                          testing::Values(Format::Xml, Format::Binary)));
