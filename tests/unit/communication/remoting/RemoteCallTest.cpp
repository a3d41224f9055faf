// SPDX-License-Identifier: MIT
#include "DozelyKit/communication/remoting/RemoteCall_p.h"

#include "DozelyKit/core/dbus/CborBlock_p.h"
#include "DozelyKit/core/dbus/ObjectPath_p.h"
#include "DozelyKit/core/foundation/NSException.h"
#include "DozelyKit/core/foundation/NSNotification.h"
#include "support/PrintTo.h"

#include <gtest/gtest.h>

#include <limits>
#include <stdexcept>

using namespace dozely;

class RemoteBase : public QObject
{
    Q_OBJECT
public:
    NS_REMOTE Q_INVOKABLE QString whose() { return "the base's"; }
    NS_REMOTE Q_INVOKABLE QString ofTheBase() { return "inherited"; }
};

/// Tells which operation was called, and with what.
class RemoteObject : public RemoteBase
{
    Q_OBJECT
public:
    NS_REMOTE Q_INVOKABLE QString whose() { return "its own"; }
    NS_REMOTE Q_INVOKABLE int integer(int number) { return number; }
    NS_REMOTE Q_INVOKABLE uint cardinal(uint number) { return number; }
    NS_REMOTE Q_INVOKABLE qlonglong large(qlonglong number) { return number; }
    NS_REMOTE Q_INVOKABLE qulonglong largest(qulonglong number) { return number; }
    NS_REMOTE Q_INVOKABLE QString either(const QString &text) { return "text " + text; }
    NS_REMOTE Q_INVOKABLE QString either(int number) { return QString("number %1").arg(number); }
    NS_REMOTE Q_INVOKABLE QString text(const QString &text) { return text; }
    NS_REMOTE Q_INVOKABLE QVariant any(const QVariant &value) { return value; }
    NS_REMOTE Q_INVOKABLE QByteArray bytes(const QByteArray &bytes) { return bytes; }
    NS_REMOTE Q_INVOKABLE QVariantList list(const QVariantList &list) { return list; }
    NS_REMOTE Q_INVOKABLE QString heard(const NSNotification &notification, int times)
    {
        return QString("%1 from %2, %3, %4 times")
            .arg(notification.name(), notification.object().toString(),
                 notification.userInfo().value("k").toString())
            .arg(times);
    }
    NS_REMOTE Q_INVOKABLE QObject *itself() { return this; }
    NS_REMOTE Q_INVOKABLE QObject *nobody() { return nullptr; }
    NS_REMOTE Q_INVOKABLE void nothing() { ++calls; }
    NS_REMOTE Q_INVOKABLE void raise() { throw NSException("Asked", "as wanted"); }
    NS_REMOTE Q_INVOKABLE void throwAnother() { throw std::runtime_error("another"); }
    Q_INVOKABLE void ofThisProcessAlone() { ++calls; }

    int calls = 0;
};

namespace
{
class RemoteCallTest : public testing::Test
{
protected:
    MessageStream::Reply call(const QByteArray &member, const QVariantList &arguments = {})
    {
        return RemoteCall::invoke(&object, member, arguments, [this](QObject *exported) {
            EXPECT_EQ(exported, &object);
            return QByteArray("/exported");
        });
    }
    QVariant result(const QByteArray &member, const QVariantList &arguments = {})
    {
        const auto reply = call(member, arguments);
        EXPECT_EQ(reply.errorName, QByteArray()) << qPrintable(reply.errorText);
        return reply.results.value(0);
    }
    std::string fault(const QByteArray &member, const QVariantList &arguments = {})
    {
        const auto reply = call(member, arguments);
        EXPECT_TRUE(reply.results.isEmpty());
        return (QString::fromUtf8(reply.errorName) + ": " + reply.errorText).toStdString();
    }
    static QByteArray block(const QVariant &value) { return CborBlock::encode(value).value(); }

    RemoteObject object;
    static constexpr char otherArguments[] = "org.freedesktop.DBus.Error.InvalidArgs: ";
};
} // namespace

TEST_F(RemoteCallTest, IsOfTheMostDerivedOperationThatIsForOthers)
{
    EXPECT_EQ(result("whose"), "its own");
    EXPECT_EQ(result("ofTheBase"), "inherited");
    for (const char *none : {"ofThisProcessAlone", "deleteLater", "", "Whose"})
        EXPECT_EQ(fault(none),
                  std::string("org.freedesktop.DBus.Error.UnknownMethod: the object does not answer ") +
                      none);
    EXPECT_EQ(object.calls, 0);
    EXPECT_EQ(RemoteCall::methodsOf(&object).size(), 19);
}

TEST_F(RemoteCallTest, TakesAsManyArgumentsAsThereAre)
{
    EXPECT_EQ(call("nothing").results.size(), 0);
    EXPECT_EQ(object.calls, 1);
    EXPECT_EQ(fault("nothing", {1}), std::string(otherArguments) + "nothing takes other arguments");
    EXPECT_EQ(fault("integer"), std::string(otherArguments) + "integer takes other arguments");
    EXPECT_EQ(fault("integer", {1, 2}), std::string(otherArguments) + "integer takes other arguments");
    EXPECT_EQ(object.calls, 1);
}

TEST_F(RemoteCallTest, TakesANumberOfAnyWidthThatHasTheSameValue)
{
    constexpr auto most = std::numeric_limits<int>::max();
    constexpr auto least = std::numeric_limits<int>::min();
    EXPECT_EQ(result("integer", {qlonglong(most)}), most);
    EXPECT_EQ(result("integer", {qlonglong(least)}), least);
    EXPECT_EQ(result("integer", {7U}), 7);
    EXPECT_EQ(result("cardinal", {7}), 7U);
    EXPECT_EQ(result("cardinal", {qlonglong(4'000'000'000)}), 4'000'000'000U);
    EXPECT_EQ(result("large", {-1}), qlonglong(-1));
    EXPECT_EQ(result("largest", {qlonglong(5)}), qulonglong(5));
    const QVariant tooLarge = std::numeric_limits<qulonglong>::max();
    EXPECT_EQ(result("largest", {tooLarge}), tooLarge);
    for (const QVariant &other : {QVariant(qlonglong(most) + 1), QVariant(qlonglong(least) - 1),
                                  QVariant(qlonglong(1) << 40), QVariant(4'000'000'000U), tooLarge})
        EXPECT_EQ(fault("integer", {other}).rfind(otherArguments, 0), 0U) << other.toString().toStdString();
    for (const QVariant &other :
         {QVariant(-1), QVariant(qlonglong(-1)), QVariant(qlonglong(1) << 32), tooLarge})
        EXPECT_EQ(fault("cardinal", {other}).rfind(otherArguments, 0), 0U) << other.toString().toStdString();
    EXPECT_EQ(fault("large", {tooLarge}).rfind(otherArguments, 0), 0U);
    EXPECT_EQ(fault("largest", {-1}).rfind(otherArguments, 0), 0U);
}

TEST_F(RemoteCallTest, TakesNothingForWhatItIsNot)
{
    EXPECT_EQ(result("either", {"7"}), "text 7");
    EXPECT_EQ(result("either", {7}), "number 7");
    EXPECT_EQ(fault("either", {7.0}).rfind(otherArguments, 0), 0U);
    EXPECT_EQ(fault("integer", {"7"}).rfind(otherArguments, 0), 0U);
    EXPECT_EQ(fault("integer", {true}).rfind(otherArguments, 0), 0U);
    EXPECT_EQ(fault("integer", {7.0}).rfind(otherArguments, 0), 0U);
    EXPECT_EQ(fault("text", {7}).rfind(otherArguments, 0), 0U);
    EXPECT_EQ(fault("list", {QVariantMap()}).rfind(otherArguments, 0), 0U);
    for (const QVariant &value :
         {QVariant("text"), QVariant(7), QVariant(QVariantList{1}), QVariant(QByteArray("x"))})
        EXPECT_EQ(result("any", {value}).value<QVariant>(), value);
    EXPECT_EQ(result("bytes", {QByteArray("\0x", 2)}), QByteArray("\0x", 2));
}

TEST_F(RemoteCallTest, TakesABlockForWhatItHolds)
{
    EXPECT_EQ(result("text", {block("a\uffffb")}), "a\uffffb");
    EXPECT_EQ(result("list", {block(QVariantList{1LL, "two"})}), QVariant(QVariantList{1LL, "two"}));
    EXPECT_EQ(result("integer", {block(7LL)}), 7);
    EXPECT_EQ(fault("text", {block(7LL)}).rfind(otherArguments, 0), 0U);
    EXPECT_EQ(fault("text", {QByteArray("no block")}).rfind(otherArguments, 0), 0U);
    EXPECT_EQ(fault("integer", {QByteArray()}).rfind(otherArguments, 0), 0U);
    EXPECT_EQ(result("bytes", {block("text")}), block("text")) << "which are what is wanted";
}

TEST_F(RemoteCallTest, TakesANotificationInItsPartsOrAsABlock)
{
    const QVariantMap info{{"k", "v"}};
    const QString heard = "Name from sender, v, 3 times";
    EXPECT_EQ(result("heard", {"Name", "sender", info, 3}), heard);
    const QVariant whole = QVariant::fromValue(NSNotification("Name", "sender", info));
    EXPECT_EQ(result("heard", {block(whole), 3}), heard);
    for (const QVariantList &wrong : {QVariantList{},
                                      {"Name"},
                                      {"Name", "sender"},
                                      {"Name", "sender", info},
                                      {"Name", "sender", info, 3, 4},
                                      {7, "sender", info, 3},
                                      {"Name", 7, info, 3},
                                      {"Name", "sender", "v", 3},
                                      {QByteArray("no block"), 3},
                                      {block("text"), 3},
                                      {block(whole)}})
        EXPECT_EQ(fault("heard", wrong).rfind(otherArguments, 0), 0U) << wrong.size();
}

TEST_F(RemoteCallTest, GivesAnObjectByItsPath)
{
    EXPECT_EQ(RemoteCall::objectIn(call("itself")), QByteArray("/exported"));
    EXPECT_EQ(result("nobody").value<ObjectPath>().path, "/");
    EXPECT_EQ(RemoteCall::objectIn(call("nobody")), std::nullopt);
    EXPECT_EQ(RemoteCall::objectIn(call("whose")), std::nullopt);
    auto failed = call("itself");
    failed.errorName = "a.fault";
    EXPECT_EQ(RemoteCall::objectIn(failed), std::nullopt);
}

TEST_F(RemoteCallTest, TellsWhatAnOperationRaised)
{
    EXPECT_EQ(fault("raise"), "com.dozely.Error.Exception: Asked: as wanted");
    EXPECT_EQ(fault("throwAnother"), "com.dozely.Error.Exception: another");
}

#include "RemoteCallTest.moc"
