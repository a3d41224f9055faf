// SPDX-License-Identifier: MIT
#include "hosts/application/actions/ActionBundle.h"

#include "DozelyKit/core/bundles/NSBundle.h"
#include "DozelyKit/core/foundation/RootFolder.h"
#include "DozelyKit/core/foundation/StringExtensions.h"
#include "DozelyKit/plugin/Names.h"
#include "hosts/application/actions/ActionTile.h"

#include <QCollator>
#include <QDir>

#include <algorithm>

using namespace dozely;

namespace
{
/// The one that the bundle brings ("CFBundleIconFile"), else a tile with the first letter of its name.
QIcon iconOf(const NSBundle *bundle, const QString &name, const QString &file)
{
    const QString own =
        bundle ? bundle->objectForInfoDictionaryKey("CFBundleIconFile").toString() : QString();
    const QString path = own.isEmpty() || own.contains('/') ? QString() : bundle->pathForResource(own, "png");
    return path.isEmpty() ? ActionTile::icon(name, file) : QIcon(path);
}

QString usersFolder()
{
    const QString home = RealHomeDirectory();
    return home.isEmpty() ? QString() : home + FixedPath::plugIns;
}
} // namespace

QString ActionBundle::fullPath() const
{
    return RootFolder::join(path);
}

ActionBundle ActionBundle::at(const QString &path)
{
    ActionBundle action;
    action.path = path;
    const QString file = path.section('/', -1).section('.', 0, -2);
    const auto bundle = NSBundle::bundleWithPath(action.fullPath());
    action.name = bundle ? bundle->localizedStringForKey(TextKey::pluginName, file) : file;
    action.icon = iconOf(bundle.get(), action.name, file);
    const QString own = usersFolder();
    action.isUsersOwn = !own.isEmpty() && path.startsWith(own + '/');
    action.exists = bundle != nullptr;
    if (!bundle)
        return action;
    action.hasSettings = !bundle->objectForInfoDictionaryKey(InfoKey::prefPaneModule).toString().isEmpty();
    action.isOfSystemAlone = bundle->objectForInfoDictionaryKey(InfoKey::actsInDaemonOnly).toBool();
    action.actsInSession = bundle->objectForInfoDictionaryKey(InfoKey::actsInUserAgent).toBool() ||
                           bundle->objectForInfoDictionaryKey(InfoKey::daemonModule).toString().isEmpty();
    return action;
}

QList<ActionBundle> ActionBundle::all()
{
    QList<ActionBundle> actions;
    for (const QString &folder : {QString(FixedPath::plugIns), usersFolder()}) {
        if (folder.isEmpty())
            continue;
        const QDir place(RootFolder::join(folder));
        for (const QString &file : place.entryList({"*.plugin"}, QDir::Dirs | QDir::NoDotAndDotDot)) {
            const ActionBundle action = at(folder + '/' + file);
            if (action.hasSettings)
                actions += action;
        }
    }
    const QCollator collator;
    std::stable_sort(actions.begin(), actions.end(), [&](const ActionBundle &a, const ActionBundle &b) {
        return collator.compare(a.name, b.name) < 0;
    });
    return actions;
}
