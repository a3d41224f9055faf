// SPDX-License-Identifier: MIT
#include "plugins/common/system/SystemPrefPanePlugIn.h"

#include "DozelyKit/core/foundation/IntegerValue.h"
#include "DozelyKit/plugin/Names.h"

#include <algorithm>

using namespace dozely;

using Bus = BusConnection::Bus;

namespace
{
constexpr std::chrono::seconds answerTime{10};
constexpr char busName[] = "org.freedesktop.DBus";
constexpr char busPath[] = "/org/freedesktop/DBus";
} // namespace

QString SystemPrefPanePlugIn::actionString() const
{
    const QString text = localized("Action");
    return text == "Action" ? SettingsPane::actionString() : text;
}

QVariantMap SystemPrefPanePlugIn::defaultParameters() const
{
    QVariantMap parameters = SettingsPane::defaultParameters();
    if (bundle() && bundle()->objectForInfoDictionaryKey("WDAlertsByDefault").toBool())
        parameters.insert(ParameterKey::alert, 1);
    return parameters;
}

bool SystemPrefPanePlugIn::isForced(const QVariantMap &parameters) const
{
    return parameters.contains(PowerKey::force) && longIntegerParameter(PowerKey::force) == 1;
}

void SystemPrefPanePlugIn::showOptions(const QVariantMap &parameters)
{
    if (m_force)
        m_force->setChecked(isForced(parameters));
}

void SystemPrefPanePlugIn::writeOptions(QVariantMap &parameters)
{
    if (m_force && m_force->isChecked() != isForced(parameters))
        parameters.insert(PowerKey::force, m_force->isChecked() ? 1 : 0);
}

void SystemPrefPanePlugIn::askWhatIsMissing()
{
    if (!bundle())
        return;
    const QVariant question = bundle()->objectForInfoDictionaryKey("WDAsksLoginManager");
    if (question.isValid())
        askLoginManager(question.toString().toLatin1());
    const QStringList names = bundle()->objectForInfoDictionaryKey("WDAsksSessionBus").toStringList();
    if (!names.isEmpty())
        askSessionBus(names);
}

void SystemPrefPanePlugIn::askLoginManager(const QByteArray &question)
{
    constexpr char service[] = "org.freedesktop.login1";
    auto opened = BusConnection::open(Bus::System);
    if (!opened)
        return tell("No Login Manager");
    m_system = *std::move(opened);
    const BusConnection::Member member =
        question.isEmpty()
            ? BusConnection::Member{service, "/org/freedesktop/login1", "org.freedesktop.DBus.Peer", "Ping"}
            : BusConnection::Member{service, "/org/freedesktop/login1", "org.freedesktop.login1.Manager",
                                    question};
    m_system->callLater(member, "", {}, answerTime, [this](const BusConnection::Reply &reply) {
        const QString answer = BusConnection::firstOf(reply).toString();
        if (!reply)
            tell("No Login Manager");
        else if (answer == "na")
            tell("Not Supported");
        else if (answer == "no")
            tell("Not Allowed");
    });
}

void SystemPrefPanePlugIn::askSessionBus(const QStringList &names)
{
    auto opened = BusConnection::open(Bus::Session);
    if (!opened)
        return tell("No Desktop Service");
    m_session = *std::move(opened);
    // First those that run, then those that the bus would start.
    const auto areThere = [names](const BusConnection::Reply &reply) {
        const QStringList known = BusConnection::firstOf(reply).toStringList();
        return std::any_of(names.cbegin(), names.cend(),
                           [&](const QString &name) { return known.contains(name); });
    };
    m_session->callLater({busName, busPath, busName, "ListNames"}, "", {}, answerTime,
                         [this, areThere](const BusConnection::Reply &running) {
                             if (areThere(running))
                                 return;
                             m_session->callLater({busName, busPath, busName, "ListActivatableNames"}, "", {},
                                                  answerTime,
                                                  [this, areThere](const BusConnection::Reply &known) {
                                                      if (!areThere(known))
                                                          tell("No Desktop Service");
                                                  });
                         });
}

void SystemPrefPanePlugIn::tell(const QString &text)
{
    // The bundle's own words go before those that all such actions have.
    QString sentence = localized(text);
    if (sentence == text && bundle())
        sentence = bundle()->localizedStringForKey(text, {}, "SystemAction");
    tellMissing(sentence);
}
