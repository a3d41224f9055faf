// SPDX-License-Identifier: MIT
#include "hosts/daemon/KnownBundle.h"

#include "DozelyKit/core/bundles/NSBundle.h"
#include "DozelyKit/core/log/LogLabel.h"
#include "DozelyKit/plugin/Names.h"
#include "hosts/daemon/PlugInAnswers.h"

#include <utility>

using namespace dozely;

namespace
{
FileIdentity infoFileOf(const QString &path)
{
    return FileIdentity::of(path + "/Contents/Info.plist");
}

QString moduleNameIn(const QVariantMap &info)
{
    return info.value(InfoKey::daemonModule).toString();
}

FileIdentity moduleFileOf(const QString &path, const QVariantMap &info)
{
    return FileIdentity::of(path + "/Contents/Linux/" + moduleNameIn(info));
}

/// The place of a value in the list, which gets it when it is not there.
template<class Value>
qint32 placeIn(QList<Value> &values, const Value &value)
{
    qsizetype place = values.indexOf(value);
    if (place < 0) {
        place = values.size();
        values += value;
    }
    return static_cast<qint32>(place);
}
} // namespace

KnownBundle KnownBundle::at(const QString &path, const NSBundle &bundle)
{
    KnownBundle known;
    known.isLookedAt = true;
    known.infoFile = infoFileOf(path);
    known.info = bundle.infoDictionary();
    known.moduleFile = moduleFileOf(path, known.info);
    known.hasModule = !moduleNameIn(known.info).isEmpty();
    known.pluginName = bundle.localizedStringForKey(TextKey::pluginName);
    return known;
}

bool KnownBundle::isStill(const QString &path) const
{
    return generation != 0 && infoFile == infoFileOf(path) && moduleFile == moduleFileOf(path, info);
}

void KnownBundle::note(const ParametersDigest &digest, const Result<PlugInAnswer> &answer,
                       std::chrono::milliseconds now)
{
    Entry &entry = entries[digest];
    const qint32 deaths = entry.deaths;
    if (answer)
        entry = {placeIn(answers, *answer), -1, {}, 0, false};
    else
        entry = {-1, placeIn(reasons, answer.error().text), now, deaths, false};
    deathsAsked = 0; // whoever says why there is no answer is alive
}

void KnownBundle::noteDeath(const ParametersDigest &digest, const QString &why, std::chrono::milliseconds now)
{
    latestDeath = why;
    ++deathsAsked;
    Entry &entry = entries[digest];
    entry = {-1, placeIn(reasons, QString("its plug-in went wrong when it was asked: %1").arg(why)), now,
             entry.deaths + 1, false};
}

void KnownBundle::noneIsWaiting()
{
    for (Entry &entry : entries)
        entry.isWaiting = false;
}

void KnownBundle::keepOnly(const std::function<bool(const ParametersDigest &)> &isNeeded)
{
    entries.removeIf([&](const auto &entry) { return !isNeeded(entry.key()); });
    if (answers.size() + reasons.size() <= 2 * entries.size())
        return;
    // What nobody refers to any more would become ever more.
    const auto formerAnswers = std::exchange(answers, {});
    const auto formerReasons = std::exchange(reasons, {});
    for (Entry &entry : entries) {
        if (entry.answer >= 0)
            entry.answer = placeIn(answers, formerAnswers[entry.answer]);
        if (entry.reason >= 0)
            entry.reason = placeIn(reasons, formerReasons[entry.reason]);
    }
}

bool KnownBundle::isLeftAlone() const
{
    return deathsAsked + deathsActing >= PlugInAnswers::mostDeaths;
}

QString KnownBundle::whyLeftAlone(const QString &path) const
{
    return QString("its plug-in %1 is left alone until it changes: it went wrong too often, the last time %2")
        .arg(logLabel(path), latestDeath);
}

QString KnownBundle::ending() const
{
    return isLeftAlone() ? "; from now on it is left alone until it changes" : "";
}
