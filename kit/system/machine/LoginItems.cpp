// SPDX-License-Identifier: MIT
#include "DozelyKit/system/machine/LoginItems_p.h"

#include "DozelyKit/core/files/AtomicFile.h"
#include "DozelyKit/core/files/PropertyList.h"
#include "DozelyKit/system/machine/AutostartEntry_p.h"
#include "DozelyKit/system/machine/HomeFolder_p.h"

#include <QFile>
#include <QFileInfo>
#include <QVariantList>

#include <algorithm>
#include <filesystem>
#include <optional>

namespace dozely
{

namespace
{
constexpr char arrayKey[] = "AutoLaunchedApplicationDictionary";
constexpr char pathKey[] = "Path";
constexpr char hideKey[] = "Hide";

struct Preferences {
    QVariantMap content;
    PropertyList::Format format = PropertyList::Format::Xml;
};

/// Absent when the file cannot be read, or is not what it should be.
std::optional<Preferences> read(const QString &path)
{
    if (path.isEmpty())
        return {};
    Preferences preferences;
    const auto list = PropertyList::fromFile(path, &preferences.format);
    if (!list || list->typeId() != QMetaType::QVariantMap)
        return {};
    preferences.content = list->toMap();
    const QVariant items = preferences.content.value(arrayKey, QVariantList());
    return items.typeId() == QMetaType::QVariantList ? std::optional(preferences) : std::nullopt;
}

bool write(const QString &path, const Preferences &preferences)
{
    const QByteArray data = PropertyList::toData(preferences.content, preferences.format);
    // What would not be read back as it is meant must not replace the user's file.
    const auto readBack = PropertyList::fromData(data);
    if (!readBack || *readBack != QVariant(preferences.content))
        return false;
    // A link stays one: what it leads to is replaced.
    const QString target = QFileInfo(path).canonicalFilePath();
    std::error_code failure;
    const auto mode = std::filesystem::status(QFile::encodeName(target).constData(), failure).permissions() &
                      std::filesystem::perms::all;
    return !failure && replaceFileAtomically(target, data, static_cast<int>(mode)).ok();
}

/// The text under "Path"; null for an entry of another shape.
QString pathOf(const QVariant &entry)
{
    const QVariant path = entry.toMap().value(pathKey);
    return path.typeId() == QMetaType::QString ? path.toString() : QString();
}

QString lastComponent(const QString &path)
{
    return path.section('/', -1, -1, QString::SectionSkipEmpty);
}
} // namespace

QString LoginItems::preferencesPath()
{
    return pathInHomeFolder("/Library/Preferences/loginwindow.plist");
}

void LoginItems::set(const Application &application, bool enabled, bool hidden)
{
    const QString path = preferencesPath();
    auto preferences = read(path);
    if (!preferences)
        return;
    QVariantList items = preferences->content.value(arrayKey).toList();
    const QString name = lastComponent(application.bundlePath);
    items.removeIf([&](const QVariant &entry) {
        const QString entryPath = pathOf(entry);
        return !entryPath.isNull() && lastComponent(entryPath) == name;
    });
    if (enabled)
        items.prepend(QVariantMap{{hideKey, hidden}, {pathKey, application.bundlePath}});
    preferences->content.insert(arrayKey, items);
    if (!write(path, *preferences))
        return;
    const AutostartEntry entry(name);
    if (enabled)
        entry.put(application.program, hidden);
    else
        entry.remove();
}

bool LoginItems::contains(const QString &bundlePath)
{
    const auto preferences = read(preferencesPath());
    if (!preferences)
        return false;
    const QVariantList items = preferences->content.value(arrayKey).toList();
    return std::any_of(items.begin(), items.end(),
                       [&](const QVariant &entry) { return pathOf(entry) == bundlePath; });
}

} // namespace dozely
