// SPDX-License-Identifier: MIT
#pragma once

#include <QIcon>
#include <QList>
#include <QString>

/// An action that schedules can have: a bundle of plug-ins. A plain value.
struct ActionBundle {
    QString path; ///< As schedules name it, below the root folder.
    QString name; ///< For people, in their language.
    QIcon icon;
    bool exists = false;          ///< Whether there is such a bundle.
    bool hasSettings = false;     ///< Whether it has a configuration side.
    bool actsInSession = false;   ///< Unless a schedule says otherwise.
    bool isOfSystemAlone = false; ///< It acts in the daemon, whatever a schedule says.
    bool isUsersOwn = false;      ///< It lies in the user's home folder, and acts for that user alone.

    /// Where it really lies.
    QString fullPath() const;

    /// The bundle at `path`, whose code is not loaded; what has none there is called after its file.
    static ActionBundle at(const QString &path);

    /// All in the folder of the system and in the user's own that have a configuration side, in the order of
    /// their names.
    static QList<ActionBundle> all();
};
