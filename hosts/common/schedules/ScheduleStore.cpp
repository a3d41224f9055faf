// SPDX-License-Identifier: MIT
#include "hosts/common/schedules/ScheduleStore.h"

#include "DozelyKit/core/files/GuardedFile.h"
#include "DozelyKit/core/files/PropertyList.h"
#include "DozelyKit/core/foundation/RootFolder.h"
#include "DozelyKit/core/log/LogLabel.h"

#include <QHash>

#include <vector>

using namespace dozely;

namespace
{
const QString arrayKey = "Schedule Array";
constexpr int storeMode = 0644;

struct Root {
    QVariantMap dictionary;
    PropertyList::Format format = PropertyList::Format::Xml;
};

/// The root dictionary of a store.
Result<Root> rootOf(const QByteArray &data)
{
    Root root;
    const auto list = PropertyList::fromData(data, &root.format, PropertyList::ofTheSystem);
    if (!list)
        return list.error();
    if (list->typeId() != QMetaType::QVariantMap)
        return Error{"its root is not a dictionary"};
    root.dictionary = list->toMap();
    const QVariant entries = root.dictionary.value(arrayKey, QVariantList());
    if (entries.typeId() != QMetaType::QVariantList)
        return Error{QString("\"%1\" is not an array").arg(arrayKey)};
    return root;
}

QString entryLabel(qsizetype index, const QVariant &entry)
{
    const QVariantMap map = entry.typeId() == QMetaType::QVariantMap ? entry.toMap() : QVariantMap();
    QStringList names;
    for (const QString key : {"Name", "Identifier"}) {
        if (map.value(key).typeId() == QMetaType::QString)
            names += QString("\"%1\"").arg(logLabel(map.value(key).toString()));
    }
    const QString number = QString("Schedule entry %1").arg(index + 1);
    return names.isEmpty() ? number : number + " (" + names.join(", ") + ")";
}

/// The good schedules of a root dictionary by their place in the array; the others are told to `fault`.
std::vector<std::optional<Schedule>> goodEntries(const QVariantList &entries,
                                                 const std::function<void(qsizetype, const QString &)> &fault)
{
    std::vector<std::optional<Schedule>> good(static_cast<size_t>(entries.size()));
    QSet<QString> identifiers;
    for (qsizetype i = 0; i < entries.size(); ++i) {
        auto schedule = Schedule::fromEntry(entries.at(i));
        if (schedule && identifiers.contains(schedule->identifier))
            schedule = Error{"its identifier is taken by an earlier entry"};
        if (!schedule) {
            fault(i, schedule.error().text);
            continue;
        }
        identifiers.insert(schedule->identifier);
        good[static_cast<size_t>(i)] = *std::move(schedule);
    }
    return good;
}

GuardedFile storeFile()
{
    return GuardedFile({ScheduleStore::path(), PropertyList::ofTheSystem.size, storeMode});
}
} // namespace

QString ScheduleStore::path()
{
    return RootFolder::join("/Library/Preferences/com.dozely.plist");
}

Result<ScheduleStore::Content> ScheduleStore::parse(const QByteArray &data)
{
    const auto root = rootOf(data);
    if (!root)
        return root.error();
    const QVariantList entries = root->dictionary.value(arrayKey).toList();
    Content content;
    content.exists = true;
    auto good = goodEntries(entries, [&](qsizetype index, const QString &why) {
        const QVariant &entry = entries.at(index);
        content.faults += QString("%1 is bad: %2").arg(entryLabel(index, entry), why);
        if (entry.typeId() == QMetaType::QVariantMap) {
            const QVariant identifier = entry.toMap().value("Identifier");
            if (identifier.typeId() == QMetaType::QString && !identifier.toString().isEmpty()) {
                content.faultyIdentifiers.insert(identifier.toString());
                return;
            }
        }
        content.hasUnknown = true;
    });
    content.schedules.reserve(entries.size());
    for (std::optional<Schedule> &schedule : good) {
        if (schedule)
            content.schedules += *std::move(schedule);
    }
    return content;
}

Result<ScheduleStore::Content> ScheduleStore::read()
{
    const auto data = storeFile().read();
    if (!data)
        return Error{data.error().text,
                     data.error().name == GuardedFile::untrusted ? GuardedFile::untrusted : damaged};
    if (!*data)
        return Content();
    auto content = parse(**data);
    return content ? std::move(content) : Error{content.error().text, damaged};
}

Result<QByteArray> ScheduleStore::rewritten(const std::optional<QByteArray> &data,
                                            const QList<Schedule> &schedules)
{
    Root root;
    if (data) {
        auto read = rootOf(*data);
        if (!read)
            return read.error();
        root = *std::move(read);
    }
    QHash<QString, Schedule> wanted;
    for (const Schedule &schedule : schedules)
        wanted.insert(schedule.identifier, schedule);
    const QVariantList before = root.dictionary.value(arrayKey).toList();
    const auto good = goodEntries(before, [](qsizetype, const QString &) {});
    QVariantList after;
    QSet<QString> placed;
    for (qsizetype i = 0; i < before.size(); ++i) {
        const std::optional<Schedule> &former = good[static_cast<size_t>(i)];
        if (!former) {
            after += before.at(i);
            continue;
        }
        const QString &identifier = former->identifier;
        if (!wanted.contains(identifier))
            continue;
        placed.insert(identifier);
        const Schedule &schedule = wanted[identifier];
        after += schedule == *former ? before.at(i) : QVariant(schedule.toEntry());
    }
    for (const Schedule &schedule : schedules) {
        if (placed.contains(schedule.identifier))
            continue;
        placed.insert(schedule.identifier);
        after += schedule.toEntry();
    }
    root.dictionary.insert(arrayKey, after);
    QByteArray result = PropertyList::toData(root.dictionary, root.format, PropertyList::ofTheSystem);
    if (result.isNull())
        return Error{"the schedules are too many or hold a value that a property list cannot carry"};
    return result;
}

Result<bool> ScheduleStore::edit(const std::function<bool(QList<Schedule> &)> &change,
                                 std::chrono::milliseconds lockLimit)
{
    const GuardedFile file = storeFile();
    const auto lock = file.lock(lockLimit);
    if (!lock)
        return lock.error();
    const auto notChanged = [&](const Error &why) {
        return Error{QString("%1 was not changed: %2").arg(path(), why.text), why.name};
    };
    const auto data = file.read();
    if (!data)
        return notChanged({data.error().text, damaged});
    const Result<Content> content = *data ? parse(**data) : Content();
    if (!content)
        return notChanged({content.error().text, damaged});
    QList<Schedule> schedules = content->schedules;
    if (!change(schedules))
        return false;
    if (schedules == content->schedules)
        return true;
    const auto replacement = rewritten(*data, schedules);
    if (!replacement)
        return notChanged(replacement.error());
    if (const auto replaced = file.replace(*replacement); !replaced)
        return notChanged(replaced.error());
    return true;
}
