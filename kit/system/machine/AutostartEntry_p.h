// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Export.h"

#include <QString>

namespace dozely
{

/// The desktop entry that starts one application with the user's session, "dozely-login-NAME.desktop" in the
/// autostart folder ($XDG_CONFIG_HOME/autostart, else ~/.config/autostart, below the root folder).
///
/// Only a regular file that carries the key "X-Dozely-LoginItem" is this system's own; anything else in that
/// place is left as it is.
class DOZELYKIT_AUTOTEST_EXPORT AutostartEntry
{
public:
    /// `bundleName` is the file name of the application's bundle, such as "Dozely.app".
    explicit AutostartEntry(const QString &bundleName);

    /// Its full path; null for a user without a home.
    QString path() const { return m_path; }

    /// Makes the entry or replaces it, atomically. No desktop knows how to start an application hidden:
    /// `hidden` is noted for the application under "X-Dozely-Hide". Nothing happens for a program whose path
    /// has line ends or other control characters.
    void put(const QString &program, bool hidden) const;

    /// Removes the entry.
    void remove() const;

private:
    bool isFree() const;
    bool isOwn() const;

    QString m_name;
    QString m_path;
};

} // namespace dozely
