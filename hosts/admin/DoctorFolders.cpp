// SPDX-License-Identifier: MIT
#include "DozelyKit/core/files/TrustedPath.h"
#include "DozelyKit/core/foundation/RootFolder.h"
#include "DozelyKit/plugin/Names.h"
#include "hosts/admin/AdminText.h"
#include "hosts/admin/DoctorCheck.h"
#include "hosts/admin/Identity.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStorageInfo>

#include <sys/stat.h>

using namespace dozely;

namespace
{
constexpr int permissionBits = 07777;

/// A file or folder whose owner and mode are part of what keeps the system safe, or lets it work.
class PlaceCheck : public DoctorCheck
{
public:
    struct Place {
        const char *name;
        const char *path;
        int mode;       ///< What packages make it.
        int neededBits; ///< Those of them without which something does not work.
        bool isFolder;
        const char *maker; ///< Who makes it: a command.
    };

    explicit PlaceCheck(const Place &place) : m_place(place) {}
    QString name() const override { return m_place.name; }

    Finding look(const DoctorServices & /*services*/) const override
    {
        const QString path = RootFolder::join(m_place.path);
        struct stat found {
        };
        if (::lstat(QFile::encodeName(path).constData(), &found) != 0)
            return Finding::wrong(AdminText::tr("%1 is not there.").arg(path), m_place.maker);
        if (m_place.isFolder ? !S_ISDIR(found.st_mode) : !S_ISREG(found.st_mode))
            return Finding::wrong((m_place.isFolder ? AdminText::tr("%1 is no folder.")
                                                    : AdminText::tr("%1 is no regular file."))
                                      .arg(path),
                                  QString("rm '%1' && %2").arg(path, m_place.maker));
        const quint32 owner = RootFolder::owner().value_or(0);
        if (found.st_uid != owner)
            return Finding::wrong(
                AdminText::tr("%1 belongs to %2.").arg(path, Identity::nameOf(found.st_uid)),
                QString("chown %1 '%2'").arg(Identity::nameOf(owner), path));
        const int mode = static_cast<int>(found.st_mode) & permissionBits;
        const int tooMuch = mode & (S_IWGRP | S_IWOTH) & ~m_place.mode;
        const int missing = m_place.neededBits & ~mode;
        if (tooMuch != 0 || missing != 0)
            return Finding::wrong((tooMuch != 0
                                       ? AdminText::tr("%1 has the mode %2, which lets others write there.")
                                       : AdminText::tr("%1 has the mode %2, which keeps others out."))
                                      .arg(path, QString::number(mode, 8)),
                                  QString("chmod %1 '%2'").arg(QString::number(m_place.mode, 8), path));
        return Finding::fine(AdminText::tr("%1 is as it should be.").arg(path));
    }

private:
    Place m_place;
};

constexpr char tmpfiles[] = "systemd-tmpfiles --create dozely.conf";
constexpr char restart[] = "systemctl restart dozelyd";

constexpr PlaceCheck::Place places[] = {
    {"library-folder", "/Library", 0755, 0555, true, tmpfiles},
    {"store-folder", "/Library/Preferences", 0755, 0555, true, tmpfiles},
    {"record-folder", "/var/lib/dozely", 0755, 0500, true, tmpfiles},
    {"socket-folder", "/private/var/tmp/com.dozely", 0777, 0777, true, restart},
    {"events-folder", "/private/var/tmp/com.dozely.events", 01777, 01777, true, tmpfiles},
    {"log-file", "/var/log/dozely.log", 0666, 0666, false, tmpfiles},
};

Finding plugIns(const DoctorServices & /*services*/)
{
    const QString path = RootFolder::join(FixedPath::plugIns);
    if (!QFileInfo(path).isDir())
        return Finding::wrong(AdminText::tr("%1 is not there.").arg(path), "apt install --reinstall dozely");
    QList<quint32> owners{0};
    if (const auto owner = RootFolder::owner())
        owners += *owner;
    if (const auto trusted = isTrustedPath(path, owners); !trusted)
        return Finding::wrong(
            AdminText::tr("No bundle is performed as root: %1.").arg(AdminText::reason(trusted.error())),
            QString("chown -R root:root '%1' && chmod -R go-w '%1'").arg(path));
    if (QDir(path).entryList({"*.plugin"}, QDir::Dirs).isEmpty())
        return Finding::wrong(AdminText::tr("There is no bundle in %1.").arg(path),
                              "apt install --reinstall dozely");
    return Finding::fine(AdminText::tr("The bundles in %1 can be trusted.").arg(path));
}

Finding space(const DoctorServices & /*services*/)
{
    constexpr qint64 needed = 16 * 1024 * 1024; // bytes
    const QStorageInfo storage(RootFolder::join("/var/lib/dozely"));
    if (!storage.isValid())
        return Finding::unknown(AdminText::tr("Nobody can tell how much room there is for the record."));
    if (storage.isReadOnly())
        return Finding::wrong(
            AdminText::tr("%1, where the record lies, can only be read.").arg(storage.rootPath()),
            QString("mount -o remount,rw '%1'").arg(storage.rootPath()));
    if (storage.bytesAvailable() < needed)
        return Finding::wrong(AdminText::tr("%1, where the record lies, is full.").arg(storage.rootPath()),
                              AdminText::tr("Make room in %1.").arg(storage.rootPath()));
    return Finding::fine(AdminText::tr("There is room for the record."));
}
} // namespace

void DoctorChecks::addFolders(List &checks)
{
    for (const PlaceCheck::Place &place : places)
        checks.push_back(std::make_unique<PlaceCheck>(place));
    checks.push_back(std::make_unique<SimpleCheck>("plug-ins", plugIns));
    checks.push_back(std::make_unique<SimpleCheck>("space", space));
}
