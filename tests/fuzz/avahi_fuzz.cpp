// SPDX-License-Identifier: MIT
#include "DozelyKit/system/network/TxtRecord_p.h"
#include "DozelyKit/system/network/linux/AvahiArguments_p.h"
#include "DozelyKit/system/network/linux/AvahiFindings_p.h"
#include "support/Require.h"
#include "support/Steer.h"

using namespace dozely;

using Address = NetServices::Address;
using Change = AvahiFindings::Change;

namespace
{
/// Mostly the wanted value, sometimes another one, as a daemon that is none would send it.
QVariant orOdd(Steer &steer, const QVariant &wanted)
{
    static const QDateTime now({2026, 3, 14}, {6, 0}, Qt::UTC);
    return steer.below(16) == 0 ? steer.value(now) : wanted;
}

QVariantList someStrings(Steer &steer)
{
    QVariantList strings;
    const int copies = steer.below(16) == 0 ? 64 : 1;
    for (int left = steer.below(6); left > 0; --left) {
        const QByteArray string = steer.bytes(255);
        for (int i = 0; i < copies; ++i)
            strings += orOdd(steer, string);
    }
    return strings;
}

QVariantList resolverFound(Steer &steer)
{
    const int interface = steer.below(3);
    const QString host = steer.oneOf<const char *>({"host.local", "other.local", "", "\xc3\xa4.local"});
    QVariantList arguments{orOdd(steer, interface),
                           0,
                           "name",
                           "_http._tcp",
                           "local",
                           orOdd(steer, host),
                           0,
                           "",
                           orOdd(steer, static_cast<uint>(steer.number() & 0xffff)),
                           orOdd(steer, someStrings(steer)),
                           0U};
    if (steer.below(16) == 0)
        arguments.removeLast();
    return arguments;
}

QVariantList browserItem(Steer &steer)
{
    QByteArray data =
        steer.oneOf<QByteArray>({QByteArray(3, '\x7f'), QByteArray(15, '\0'),
                                 QByteArray("\xfe\x80", 2) + QByteArray(13, '\0'), QByteArray()});
    data += static_cast<char>(steer.byte());
    QVariantList arguments{
        orOdd(steer, steer.below(3) - 1), steer.below(2), "host.local", 1U, 1U, orOdd(steer, data), 0U};
    if (steer.below(16) == 0)
        arguments.removeLast();
    return arguments;
}

void checkFindings(const NetServices::Findings &findings)
{
    REQUIRE(findings.addresses.size() <= AvahiFindings::mostAddresses);
    QList<Address> seen;
    for (const Address &address : findings.addresses) {
        REQUIRE(!seen.contains(address));
        seen += address;
        REQUIRE(address.bytes.size() == (address.family == Address::Family::IPv4 ? 4 : 16));
        REQUIRE(address.port == findings.port);
        const bool isOfLink = address.family == Address::Family::IPv6 &&
                              static_cast<uchar>(address.bytes.at(0)) == 0xfe &&
                              (static_cast<uchar>(address.bytes.at(1)) & 0xc0) == 0x80;
        REQUIRE(address.scope == 0 || isOfLink);
    }
    REQUIRE(findings.txtRecord.size() <= TxtRecord::largestRead);
    REQUIRE(findings.txtRecord.isEmpty() || TxtRecord::isWellFormed(findings.txtRecord));
    // It can be published again, as far as it means anything.
    const QVariantList strings = AvahiArguments::txtStrings(findings.txtRecord);
    for (const QVariant &string : strings)
        REQUIRE(!string.toByteArray().isEmpty() && !string.toByteArray().startsWith('='));
    QVariantList turned;
    for (const QVariant &string : strings)
        turned.prepend(string); // as the daemon tells them
    REQUIRE(TxtRecord::decode(AvahiArguments::recordFrom(turned)) == TxtRecord::decode(findings.txtRecord));
}

void checkSignals(Steer &steer)
{
    AvahiFindings findings;
    while (!steer.isUsedUp()) {
        const auto before = findings.findings();
        if (steer.below(4) == 0) {
            const QVariantList arguments = resolverFound(steer);
            const Change change = findings.resolved(arguments);
            const auto after = findings.findings();
            REQUIRE(change != Change::Addresses && (change == Change::Nothing) == (arguments.size() != 11));
            if (change == Change::Host)
                REQUIRE(after.addresses.isEmpty() && after.hostName == arguments.at(5).toString());
            if (change == Change::Record)
                REQUIRE(after.addresses.size() == before.addresses.size() &&
                        after.hostName == before.hostName);
            if (change == Change::Nothing)
                REQUIRE(after.addresses == before.addresses && after.txtRecord == before.txtRecord);
        } else {
            const QByteArray signal =
                steer.oneOf<QByteArray>({"ItemNew", "ItemNew", "ItemRemove", "AllForNow"});
            const QVariantList arguments = browserItem(steer);
            const Change change = findings.browsed(signal, arguments);
            const auto after = findings.findings();
            REQUIRE(change == Change::Addresses || after.addresses == before.addresses);
            REQUIRE(after.hostName == before.hostName && after.port == before.port);
            // The same again changes nothing; what is taken away can be told again.
            REQUIRE(findings.browsed(signal, arguments) == Change::Nothing);
            if (change == Change::Addresses && signal == "ItemRemove")
                REQUIRE(after.addresses.size() <= before.addresses.size());
            if (change == Change::Addresses && signal == "ItemNew")
                REQUIRE(after.addresses.size() >= before.addresses.size());
        }
        checkFindings(findings.findings());
    }
}

/// What goes to the daemon for a record that anybody wrote, and comes back turned round.
void checkRecord(const QByteArray &record)
{
    const QVariantList strings = AvahiArguments::txtStrings(record);
    for (const QVariant &string : strings) {
        const QByteArray bytes = string.toByteArray();
        REQUIRE(!bytes.isEmpty() && bytes.size() <= TxtRecord::longestEntry && !bytes.startsWith('='));
    }
}
} // namespace

/// What Avahi tells, which is what neighbours on the network announced: records that are published (odd first
/// byte), else the signals of a resolver and of its browsers, one after the other.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    Steer steer(data, size);
    if (steer.flag())
        checkRecord(steer.rest());
    else
        checkSignals(steer);
    return 0;
}
