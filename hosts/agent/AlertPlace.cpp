// SPDX-License-Identifier: MIT
#include "hosts/agent/AlertPlace.h"

#include "DozelyKit/core/files/AtomicFile.h"
#include "DozelyKit/core/files/PropertyList.h"
#include "DozelyKit/core/foundation/RootFolder.h"
#include "DozelyKit/core/foundation/StringExtensions.h"

#include <QDir>
#include <QFileInfo>
#include <QVariantMap>

using namespace dozely;

namespace
{
constexpr int largestDistance = 100'000; // pixels; no screen is so large
constexpr int mode = 0600;

constexpr QLatin1StringView atRight("At Right");
constexpr QLatin1StringView atBottom("At Bottom");
constexpr QLatin1StringView fromSide("From Side");
constexpr QLatin1StringView fromEdge("From Edge");

std::optional<int> distance(const QVariant &value)
{
    const qint64 number = value.toLongLong();
    if (value.typeId() != QMetaType::LongLong || number < 0 || number > largestDistance)
        return {};
    return static_cast<int>(number);
}
} // namespace

QString StoredAlertPlace::usualPath()
{
    const QString state = qEnvironmentVariable("XDG_STATE_HOME");
    const QString home = RealHomeDirectory();
    // The convention has it that a relative path is to be ignored.
    if (!state.startsWith('/') && home.isEmpty())
        return {};
    return RootFolder::join(state.startsWith('/') ? state : home + "/.local/state") +
           "/dozely/alert-place.plist";
}

std::optional<AlertPlace> StoredAlertPlace::read(const QString &path)
{
    const auto list = PropertyList::fromFile(path);
    if (!list || list->typeId() != QMetaType::QVariantMap)
        return {};
    const QVariantMap map = list->toMap();
    const auto side = distance(map.value(fromSide));
    const auto edge = distance(map.value(fromEdge));
    if (!side || !edge)
        return {};
    return AlertPlace{map.value(atRight).toBool(), map.value(atBottom).toBool(), *side, *edge};
}

Result<void> StoredAlertPlace::write(const QString &path, const AlertPlace &place)
{
    const QString folder = QFileInfo(path).path();
    constexpr QFile::Permissions ofThisUserAlone = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner;
    QDir().mkpath(QFileInfo(folder).path());
    QDir().mkdir(folder, ofThisUserAlone);
    const QVariantMap map{{atRight, place.isAtRight},
                          {atBottom, place.isAtBottom},
                          {fromSide, qint64{place.fromSide}},
                          {fromEdge, qint64{place.fromEdge}}};
    return replaceFileAtomically(path, PropertyList::toData(map, PropertyList::Format::Xml), mode);
}
