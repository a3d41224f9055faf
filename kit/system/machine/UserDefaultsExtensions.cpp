// SPDX-License-Identifier: MIT
#include "DozelyKit/system/machine/UserDefaultsExtensions.h"

#include "DozelyKit/core/bundles/NSBundle.h"
#include "DozelyKit/core/files/PropertyList.h"
#include "DozelyKit/core/foundation/IntegerValue.h"
#include "DozelyKit/core/foundation/Platform.h"
#include "DozelyKit/core/foundation/RootFolder.h"
#include "DozelyKit/system/machine/ConsoleUser.h"
#include "DozelyKit/system/machine/HomeFolder_p.h"
#include "DozelyKit/system/machine/MachineIdentity.h"

#include <QFileInfo>

#include <atomic>

namespace
{
/// A number of the version, kept once it was found out. Two threads that come first at the same time find out
/// the same number.
class KeptNumber
{
public:
    template<class Function>
    qint32 value(Function findOut)
    {
        if (!m_computed.load(std::memory_order_acquire)) {
            m_value.store(findOut(), std::memory_order_relaxed);
            m_computed.store(true, std::memory_order_release);
        }
        return m_value.load(std::memory_order_relaxed);
    }

private:
    std::atomic<qint32> m_value{0};
    std::atomic<bool> m_computed{false};
};
} // namespace

namespace zandorSoftwaresExtensions
{
QString loggedInUser()
{
    const auto user = Platform::current().consoleUser->current();
    return user ? user->name : QString();
}

quint32 loggedInUserID()
{
    const auto user = Platform::current().consoleUser->current();
    return user ? user->userId : 0;
}

QString systemVersion()
{
    const QString path = RootFolder::join("/System/Library/CoreServices/SystemVersion.plist");
    if (!QFileInfo::exists(path))
        return Platform::current().machineIdentity->systemVersion();
    const QVariant list = PropertyList::fromFile(path).value_or(QVariant());
    const QVariant version = list.toMap().value("ProductVersion");
    return version.typeId() == QMetaType::QString ? version.toString() : QString();
}

qint64 systemType()
{
    static KeptNumber number;
    return number.value([] { return integerValue(systemVersion().section('.', 0, 0)); });
}

qint64 systemSubtype()
{
    static KeptNumber number;
    return number.value([] { return integerValue(systemVersion().section('.', 1, 1)); });
}

QString rendezvousName()
{
    return Platform::current().machineIdentity->computerName();
}

QStringList userPreferedLanguages()
{
    const QString path = pathInHomeFolder("/Library/Preferences/.GlobalPreferences.plist");
    const QVariant list = PropertyList::fromFile(path).value_or(QVariant());
    const QVariant languages = list.toMap().value("AppleLanguages");
    // An entry that is no text is no language code.
    QStringList codes;
    for (const QVariant &language : languages.toList()) {
        if (language.typeId() == QMetaType::QString)
            codes += language.toString();
    }
    return languages.typeId() == QMetaType::QVariantList ? codes : UserLanguages::current();
}
} // namespace zandorSoftwaresExtensions
