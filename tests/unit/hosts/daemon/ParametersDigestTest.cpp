// SPDX-License-Identifier: MIT
#include "hosts/daemon/ParametersDigest.h"

#include "DozelyKit/core/files/PropertyList.h"

#include <QDateTime>

#include <gtest/gtest.h>

using namespace dozely;

namespace
{
const QVariantMap parameters{
    {"Text", "one"},
    {"Number", 1LL},
    {"Data", QByteArray("one")},
    {"Date", QDateTime::fromMSecsSinceEpoch(1, Qt::UTC)},
    {"List", QVariantList{1LL, "two"}},
    {"Map", QVariantMap{{"Inside", true}}},
};

QVariantMap with(const QString &key, const QVariant &value)
{
    QVariantMap changed = parameters;
    changed.insert(key, value);
    return changed;
}
} // namespace

TEST(ParametersDigest, IsTheSameForEqualParameters)
{
    QVariantMap same;
    for (const QString &key : parameters.keys())
        same.insert(key, parameters[key]);
    EXPECT_EQ(ParametersDigest::of(parameters), ParametersDigest::of(same));
    EXPECT_EQ(qHash(ParametersDigest::of(parameters)), qHash(ParametersDigest::of(same)));
}

TEST(ParametersDigest, DiffersWithEveryValueAndItsType)
{
    const auto digest = ParametersDigest::of(parameters);
    for (const QVariantMap &other : {
             QVariantMap(),
             with("Text", "two"),
             with("Text", QByteArray("one")),
             with("Number", 2LL),
             with("Number", 1ULL),
             with("Number", true),
             with("Number", 1.0),
             with("Data", QByteArray("two")),
             with("Date", QDateTime::fromMSecsSinceEpoch(2, Qt::UTC)),
             with("Date", QVariant::fromValue(PropertyList::DamagedDate{"1"})),
             with("List", QVariantList{1LL, "other"}),
             with("List", QVariantList{QVariantList{1LL}, "two"}),
             with("Map", QVariantMap{{"Inside", false}}),
             with("Map", QVariantMap{{"Else", true}}),
             with("More", "something"),
         })
        EXPECT_NE(ParametersDigest::of(other), digest);
}

TEST(ParametersDigest, TellsWhereOneValueEndsAndTheNextBegins)
{
    EXPECT_NE(ParametersDigest::of({{"A", "bc"}}), ParametersDigest::of({{"Ab", "c"}}));
    EXPECT_NE(ParametersDigest::of({{"A", QVariantList{"b", "c"}}}),
              ParametersDigest::of({{"A", QVariantList{"bc"}}}));
    const auto pair = [](const auto &one, const auto &other) {
        return ParametersDigest::of({{"A", QVariantList{one, other}}});
    };
    // What a value looks like that begins another one.
    const int bytes = QMetaType::QByteArray;
    const QByteArray byteHead(reinterpret_cast<const char *>(&bytes), sizeof bytes);
    EXPECT_NE(pair(byteHead, QByteArray()), pair(QByteArray(), byteHead));
    const QString textHead = QString(QChar(ushort(QMetaType::QString))) + QChar(0);
    EXPECT_NE(pair(textHead, QString()), pair(QString(), textHead));
    EXPECT_NE(ParametersDigest::of({{"A", QVariantMap{{"B", 1LL}}}, {"C", 1LL}}),
              ParametersDigest::of({{"A", QVariantMap{{"B", 1LL}, {"C", 1LL}}}}));
}
