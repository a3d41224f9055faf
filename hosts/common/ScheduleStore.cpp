// SPDX-License-Identifier: MIT
#include "hosts/common/ScheduleStore.h"

#include "DozelyKit/core/files/AtomicFile.h"
#include "DozelyKit/core/files/PropertyList.h"
#include "DozelyKit/core/files/TrustedPath.h"
#include "DozelyKit/core/foundation/RootFolder.h"
#include "hosts/common/LogLabel.h"
#include "hosts/common/TrustedFolder.h"

#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QLockFile>

namespace
{
const QString arrayKey = "Schedule Array";
constexpr int storeMode = 0644;

void set(QString *error, const QString &sentence)
{
    if (error)
        *error = sentence;
}

/// The root dictionary of a store; absent when the bytes are none.
std::optional<QVariantMap> rootDictionary(const QByteArray &data, QString *error,
                                          PropertyList::Format *format = nullptr)
{
    const auto list = PropertyList::fromData(data, error, format);
    if (!list)
        return {};
    if (list->typeId() != QMetaType::QVariantMap) {
        set(error, "its root is not a dictionary");
        return {};
    }
    const QVariantMap root = list->toMap();
    if (root.contains(arrayKey) && root.value(arrayKey).typeId() != QMetaType::QVariantList) {
        set(error, QString("\"%1\" is not an array").arg(arrayKey));
        return {};
    }
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
QHash<qsizetype, Schedule> goodEntries(const QVariantList &entries,
                                       const std::function<void(qsizetype, const QString &)> &fault)
{
    QHash<qsizetype, Schedule> good;
    QSet<QString> identifiers;
    for (qsizetype i = 0; i < entries.size(); ++i) {
        QString why;
        auto schedule = Schedule::fromEntry(entries.at(i), &why);
        if (schedule && identifiers.contains(schedule->identifier)) {
            schedule.reset();
            why = "its identifier is taken by an earlier entry";
        }
        if (!schedule) {
            fault(i, why);
            continue;
        }
        identifiers.insert(schedule->identifier);
        good.insert(i, *std::move(schedule));
    }
    return good;
}

/// The bytes of the store; null when it does not exist. Absent when it cannot be read or trusted.
std::optional<QByteArray> storeBytes(QString *error)
{
    const QString path = ScheduleStore::path();
    const QFileInfo info(path);
    if (!info.exists() && !info.isSymLink())
        return QByteArray();
    const auto owner = RootFolder::owner();
    if (!owner) {
        set(error, "the owner of the root folder is not known");
        return {};
    }
    if (const auto trusted = isTrustedPath(path, {*owner}); !trusted) {
        set(error, trusted.error().text);
        return {};
    }
    QFile file(path);
    if (!info.isFile() || !file.open(QIODevice::ReadOnly)) {
        set(error, info.isFile() ? file.errorString() : QString("it is not a file"));
        return {};
    }
    // One byte more than is allowed, so that the parser refuses what is too long.
    const QByteArray data = file.read(PropertyList::maximumSize + 1);
    return data.isNull() ? QByteArray("") : data;
}
} // namespace

QString ScheduleStore::path()
{
    return RootFolder::join("/Library/Preferences/com.dozely.plist");
}

std::optional<ScheduleStore::Content> ScheduleStore::parse(const QByteArray &data, QString *error)
{
    const auto root = rootDictionary(data, error);
    if (!root)
        return {};
    const QVariantList entries = root->value(arrayKey).toList();
    Content content;
    const auto good = goodEntries(entries, [&](qsizetype index, const QString &why) {
        const QVariant &entry = entries.at(index);
        content.faults += QString("%1 is bad: %2").arg(entryLabel(index, entry), why);
        if (entry.typeId() == QMetaType::QVariantMap) {
            const QVariant identifier = entry.toMap().value("Identifier");
            if (identifier.typeId() == QMetaType::QString)
                content.faultyIdentifiers.insert(identifier.toString());
        }
    });
    for (qsizetype i = 0; i < entries.size(); ++i) {
        if (good.contains(i))
            content.schedules += good.value(i);
    }
    return content;
}

std::optional<ScheduleStore::Content> ScheduleStore::read(QString *error, bool *exists)
{
    const auto data = storeBytes(error);
    if (exists)
        *exists = !data || !data->isNull();
    if (!data)
        return {};
    return data->isNull() ? Content() : parse(*data, error);
}

QByteArray ScheduleStore::rewritten(const QByteArray &data, const QList<Schedule> &schedules, QString *error)
{
    QVariantMap root;
    auto format = PropertyList::Format::Xml;
    if (!data.isNull()) {
        const auto read = rootDictionary(data, error, &format);
        if (!read)
            return {};
        root = *read;
    }
    QHash<QString, Schedule> wanted;
    for (const Schedule &schedule : schedules)
        wanted.insert(schedule.identifier, schedule);
    const QVariantList before = root.value(arrayKey).toList();
    const auto good = goodEntries(before, [](qsizetype, const QString &) {});
    QVariantList after;
    QSet<QString> placed;
    for (qsizetype i = 0; i < before.size(); ++i) {
        if (!good.contains(i)) {
            after += before.at(i);
            continue;
        }
        const QString identifier = good.value(i).identifier;
        if (!wanted.contains(identifier))
            continue;
        placed.insert(identifier);
        const Schedule &schedule = wanted[identifier];
        after += schedule == good.value(i) ? before.at(i) : QVariant(schedule.toEntry());
    }
    for (const Schedule &schedule : schedules) {
        if (placed.contains(schedule.identifier))
            continue;
        placed.insert(schedule.identifier);
        after += schedule.toEntry();
    }
    root.insert(arrayKey, after);
    QByteArray result = PropertyList::toData(root, format);
    if (result.isNull()) {
        set(error, "the schedules are too many or hold a value that a property list cannot carry");
    } else if (result.size() > PropertyList::maximumSize) {
        set(error, "the schedules are too many");
        return {};
    }
    return result;
}

bool ScheduleStore::edit(const std::function<bool(QList<Schedule> &)> &change, QString *error,
                         std::chrono::milliseconds lockLimit)
{
    set(error, {});
    if (!makeTrustedFolder(QFileInfo(path()).path())) {
        set(error, QString("The folder of %1 cannot be made").arg(path()));
        return false;
    }
    QLockFile lock(path() + ".lock");
    lock.setStaleLockTime(0); // a lock is stale only when its holder is gone
    if (!lock.tryLock(static_cast<int>(lockLimit.count()))) {
        set(error, lock.error() == QLockFile::LockFailedError
                       ? QString("%1 is being changed by another program").arg(path())
                       : QString("The lock file of %1 cannot be made").arg(path()));
        return false;
    }
    QString why;
    const auto fail = [&] {
        set(error, QString("%1 was not changed: %2").arg(path(), why));
        return false;
    };
    const auto data = storeBytes(&why);
    if (!data)
        return fail();
    Content content;
    if (!data->isNull()) {
        const auto parsed = parse(*data, &why);
        if (!parsed)
            return fail();
        content = *parsed;
    }
    QList<Schedule> schedules = content.schedules;
    if (!change(schedules))
        return false;
    if (schedules == content.schedules)
        return true;
    const QByteArray replacement = rewritten(*data, schedules, &why);
    if (replacement.isNull())
        return fail();
    if (const auto replaced = replaceFileAtomically(path(), replacement, storeMode); !replaced) {
        why = replaced.error().text;
        return fail();
    }
    return true;
}
