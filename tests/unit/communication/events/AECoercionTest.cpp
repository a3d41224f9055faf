// SPDX-License-Identifier: MIT
#include "DozelyKit/communication/events/AEDesc.h"

#include <gtest/gtest.h>

#include <limits>

using namespace dozely;

namespace
{
template<class Value>
AEDesc of(DescType type, Value value)
{
    return AEDesc::of(type, value);
}

AEDesc unicode(const QString &text)
{
    return AEDesc(typeUnicodeText, QByteArray(reinterpret_cast<const char *>(text.utf16()), text.size() * 2));
}

AEDesc number(qint32 value)
{
    return of(typeSInt32, value);
}
} // namespace

TEST(AECoercion, OfAnyDescriptorToItsOwnTypeOrAnyIsItself)
{
    AEDesc record(typeAERecord);
    record.setParameter(keyDirectObject, number(1));
    for (const AEDesc &desc : {AEDesc(), record, number(7), AEDesc(fourCharCode("mine"), "x")}) {
        EXPECT_EQ(desc.coerced(desc.descriptorType()), desc);
        EXPECT_EQ(desc.coerced(typeWildCard), desc);
    }
}

TEST(AECoercion, BetweenIntegersKeepsTheNumberOrFails)
{
    EXPECT_EQ(of<qint16>(typeSInt16, -3).coerced(typeSInt32), number(-3));
    EXPECT_EQ(number(-3).coerced(typeSInt16), of<qint16>(typeSInt16, -3));
    EXPECT_EQ(number(70'000).coerced(typeSInt16), std::nullopt);
    EXPECT_EQ(number(-1).coerced(typeUInt32), std::nullopt);
    EXPECT_EQ(of<quint32>(typeUInt32, 4'000'000'000u).coerced(typeSInt32), std::nullopt);
    EXPECT_EQ(of<quint32>(typeUInt32, 4'000'000'000u).coerced(typeSInt64),
              of<qint64>(typeSInt64, 4'000'000'000));
    EXPECT_EQ(of<qint64>(typeSInt64, std::numeric_limits<qint32>::min()).coerced(typeSInt32),
              number(std::numeric_limits<qint32>::min()));
}

TEST(AECoercion, ReadsTheHeadOfDataThatIsTooLongAndNothingOfDataThatIsTooShort)
{
    EXPECT_EQ(of<qint64>(typeSInt32, 0x1'0000'0005).coerced(typeSInt16), of<qint16>(typeSInt16, 5));
    EXPECT_EQ(AEDesc(typeSInt32, "abc").coerced(typeSInt16), std::nullopt);
    EXPECT_EQ(AEDesc(typeIEEE64BitFloatingPoint, "abc").coerced(typeSInt16), std::nullopt);
    EXPECT_EQ(AEDesc(typeBoolean).coerced(typeSInt16), std::nullopt);
    EXPECT_EQ(AEDesc(typeType, "ab").coerced(typeText), std::nullopt);
}

TEST(AECoercion, OfFractionsTakesTheNearestInteger)
{
    const auto real = [](double value) { return of(typeIEEE64BitFloatingPoint, value); };
    EXPECT_EQ(real(2.5).coerced(typeSInt32), number(3));
    EXPECT_EQ(real(-0.4).coerced(typeSInt32), number(0));
    for (const double beyond : {1e30, -1e30, std::numeric_limits<double>::infinity(),
                                std::numeric_limits<double>::quiet_NaN(), 9223372036854775808.0})
        EXPECT_EQ(real(beyond).coerced(typeSInt64), std::nullopt) << beyond;
    EXPECT_EQ(number(4).coerced(typeIEEE64BitFloatingPoint), real(4));
    EXPECT_EQ(real(0.25).coerced(typeText), AEDesc(typeText, "0.25"));
}

TEST(AECoercion, OfTruthValuesGoesByOneAndZero)
{
    EXPECT_EQ(AEDesc(typeTrue).coerced(typeSInt32), number(1));
    EXPECT_EQ(AEDesc(typeFalse).coerced(typeBoolean), of<quint8>(typeBoolean, 0));
    EXPECT_EQ(number(1).coerced(typeBoolean), of<quint8>(typeBoolean, 1));
    EXPECT_EQ(number(2).coerced(typeBoolean), std::nullopt);
    EXPECT_EQ(AEDesc(typeText, "1").coerced(typeBoolean), std::nullopt);
    EXPECT_EQ(of<quint8>(typeBoolean, 7).coerced(typeText), AEDesc(typeText, "true"));
}

TEST(AECoercion, BetweenTextsChangesTheEncoding)
{
    const QString text = QString::fromUtf8("Zoë 日");
    EXPECT_EQ(unicode(text).coerced(typeText), AEDesc(typeText, "Zo\x91 ?"));
    EXPECT_EQ(unicode(text).coerced(typeUTF8Text), AEDesc(typeUTF8Text, "Zoë 日"));
    EXPECT_EQ(AEDesc(typeText, "Zo\x91").coerced(typeUnicodeText), unicode(QString::fromUtf8("Zoë")));
    EXPECT_EQ(AEDesc(typeUTF8Text, "Zoë").coerced(typeText), AEDesc(typeText, "Zo\x91"));
    EXPECT_EQ(AEDesc(typeText).coerced(typeUnicodeText), unicode(""));
}

TEST(AECoercion, FailsForTextThatIsDamaged)
{
    EXPECT_EQ(AEDesc(typeUTF8Text, "\xff").coerced(typeText), std::nullopt);
    EXPECT_EQ(AEDesc(typeUnicodeText, "abc").coerced(typeText), std::nullopt) << "half a unit";
}

TEST(AECoercion, OfTextsReadsNumbers)
{
    EXPECT_EQ(AEDesc(typeText, " -12 ").coerced(typeSInt32), number(-12));
    EXPECT_EQ(unicode("1.5").coerced(typeIEEE64BitFloatingPoint), of(typeIEEE64BitFloatingPoint, 1.5));
    EXPECT_EQ(AEDesc(typeText, "12 days").coerced(typeSInt32), std::nullopt);
    EXPECT_EQ(AEDesc(typeText, "").coerced(typeSInt32), std::nullopt);
    EXPECT_EQ(number(-12).coerced(typeText), AEDesc(typeText, "-12"));
    EXPECT_EQ(of<qint64>(typeSInt64, 9'000'000'000).coerced(typeUnicodeText), unicode("9000000000"));
}

TEST(AECoercion, OfCodesGoesByTheirFourCharacters)
{
    const AEDesc code = of(typeType, fourCharCode("psn "));
    EXPECT_EQ(code.coerced(typeText), AEDesc(typeText, "psn "));
    EXPECT_EQ(AEDesc(typeText, "psn ").coerced(typeType), code);
    EXPECT_EQ(code.coerced(typeEnumerated), of(typeEnumerated, fourCharCode("psn ")));
    EXPECT_EQ(AEDesc(typeText, "psn").coerced(typeType), std::nullopt);
    EXPECT_EQ(code.coerced(typeSInt32), std::nullopt);
    EXPECT_EQ(number(1).coerced(typeType), std::nullopt);
}

TEST(AECoercion, ToDataIsTheBytesAndBackFromItIsNone)
{
    EXPECT_EQ(AEDesc(typeText, "ab").coerced(typeData), AEDesc(typeData, "ab"));
    EXPECT_EQ(AEDesc(fourCharCode("mine"), "ab").coerced(typeData), AEDesc(typeData, "ab"));
    EXPECT_EQ(AEDesc(typeData, "ab").coerced(typeText), std::nullopt);
    EXPECT_EQ(AEDesc(typeData, "abcd").coerced(typeSInt32), std::nullopt);
}

TEST(AECoercion, ToAndFromContainersTheNullDescriptorAndUnknownTypesIsNone)
{
    const AEDesc list(typeAEList);
    EXPECT_EQ(list.coerced(typeAERecord), std::nullopt);
    EXPECT_EQ(list.coerced(typeText), std::nullopt);
    EXPECT_EQ(list.coerced(typeData), std::nullopt);
    EXPECT_EQ(number(1).coerced(typeAEList), std::nullopt);
    EXPECT_EQ(AEDesc().coerced(typeText), std::nullopt);
    EXPECT_EQ(AEDesc().coerced(typeData), std::nullopt);
    EXPECT_EQ(number(1).coerced(fourCharCode("mine")), std::nullopt);
    EXPECT_EQ(number(1).coerced(typeNull), std::nullopt);
}
