// SPDX-License-Identifier: MIT
#include "hosts/application/book/BookEntry.h"

#include "hosts/application/book/ScheduleKeys.h"

namespace
{
/// What of an answer can be set.
QVariantMap settingsIn(const QVariantMap &told)
{
    QVariantMap settings = told;
    for (const auto key :
         {ScheduleKey::identifier, ScheduleKey::next, ScheduleKey::revision, ScheduleKey::mayChange})
        settings.remove(key);
    QVariantMap repeats = settings.value(ScheduleKey::repeats).toMap();
    repeats.remove("inWords");
    if (repeats.isEmpty())
        settings.remove(ScheduleKey::repeats);
    else
        settings.insert(ScheduleKey::repeats, repeats);
    return settings;
}

/// The keys under which two dictionaries have not the same.
QStringList differing(const QVariantMap &one, const QVariantMap &other)
{
    QStringList keys;
    for (auto it = one.cbegin(); it != one.cend(); ++it) {
        if (it.value() != other.value(it.key()))
            keys += it.key();
    }
    for (auto it = other.cbegin(); it != other.cend(); ++it) {
        if (!one.contains(it.key()))
            keys += it.key();
    }
    return keys;
}
} // namespace

QVariantMap BookEntry::changes() const
{
    QVariantMap changes;
    for (const QString &name : differing(*applied, *wanted)) {
        // What is wanted no more is told as empty, since a key that is not named stays.
        if (wanted->contains(name))
            changes.insert(name, wanted->value(name));
        else if (name == ScheduleKey::repeats)
            changes.insert(name, QVariantMap());
        else if (name == ScheduleKey::owner)
            changes.insert(name, QString());
        else if (applied->value(name).typeId() == QMetaType::QString)
            changes.insert(name, QString());
    }
    return changes;
}

void BookEntry::takeOver(const QVariantMap &told)
{
    identifier = told.value(ScheduleKey::identifier, identifier).toString();
    next = QDateTime::fromString(told.value(ScheduleKey::next).toString(), Qt::ISODate);
    revision = told.value(ScheduleKey::revision).toString();
    mayChange = told.value(ScheduleKey::mayChange, true).toBool();
    const QVariantMap theirs = settingsIn(told);
    if (applied == theirs)
        return;
    if (!isChanged()) {
        wanted = theirs;
        isChangedElsewhere = false;
    } else if (!wanted || !applied) {
        isChangedElsewhere = true;
    } else {
        QVariantMap both = theirs;
        bool clashes = false;
        for (const QString &name : differing(*applied, *wanted)) {
            clashes |=
                theirs.value(name) != applied->value(name) && theirs.value(name) != wanted->value(name);
            if (wanted->contains(name))
                both.insert(name, wanted->value(name));
            else
                both.remove(name);
        }
        wanted = both;
        isChangedElsewhere = (isChangedElsewhere || clashes) && both != theirs;
    }
    applied = theirs;
}

void BookEntry::takeOverRemoval()
{
    if (!isChanged())
        wanted.reset();
    isChangedElsewhere = wanted.has_value();
    applied.reset();
    identifier.clear();
    revision.clear();
    failure.clear();
    isInfeasible = false;
    next = {};
}
