// SPDX-License-Identifier: MIT
#include "hosts/common/program/StatusIconPreference.h"

#include "DozelyKit/core/files/AtomicFile.h"
#include "DozelyKit/core/files/PropertyList.h"
#include "DozelyKit/core/foundation/RootFolder.h"
#include "DozelyKit/core/foundation/StringExtensions.h"

#include <QDir>
#include <QFileInfo>

using namespace dozely;

namespace
{
constexpr int ofThisUserAlone = 0600;
constexpr QLatin1StringView key("Status Icon");

/// Empty for a user without a home.
QString folder()
{
    const QString state = qEnvironmentVariable("XDG_STATE_HOME");
    const QString home = RealHomeDirectory();
    // The convention has it that a relative path is to be ignored.
    if (!state.startsWith('/') && home.isEmpty())
        return {};
    return RootFolder::join(state.startsWith('/') ? state : home + "/.local/state") + "/dozely";
}

QString path()
{
    return folder() + "/agent.plist";
}

bool makeFolder()
{
    if (folder().isEmpty())
        return false;
    QDir().mkpath(QFileInfo(folder()).path());
    QDir().mkdir(folder(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    return QFileInfo(folder()).isDir();
}
} // namespace

StatusIconPreference::StatusIconPreference()
{
    if (!makeFolder())
        return;
    m_watcher.addPath(folder());
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this, &StatusIconPreference::changed);
}

bool StatusIconPreference::isWanted()
{
    const auto list =
        folder().isEmpty() ? Result<QVariant>(Error{"no home"}) : PropertyList::fromFile(path());
    const QVariant wanted = list ? list->toMap().value(key) : QVariant();
    return wanted.typeId() != QMetaType::Bool || wanted.toBool();
}

Result<void> StatusIconPreference::setWanted(bool isWanted)
{
    if (!makeFolder())
        return Error{"there is no folder for it"};
    return replaceFileAtomically(
        path(), PropertyList::toData(QVariantMap{{key, isWanted}}, PropertyList::Format::Xml),
        ofThisUserAlone);
}
