// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/communication/remoting/NSSocketPort.h"

#include <QString>

/// A socket port with a name: its socket file lies in "/private/var/tmp/com.dozely" below the root folder.
///
/// The first use of the class in a process whose effective user is root wipes and recreates that folder (mode
/// 0777), unless it works for another process that has done so. No operation ever removes the socket file of
/// a port that goes away; the next server of the name replaces it.
///
/// THREADING: the main thread, as the connections that use it.
class DOZELYKIT_EXPORT ZDRUnixSocketPort : public NSSocketPort
{
public:
    ~ZDRUnixSocketPort() override;

    /// A listening port; null for an empty name, or on failure (some of which leave a line in the log).
    static std::shared_ptr<ZDRUnixSocketPort> initAsServerWithName(const QString &name);

    /// A port that reaches the named server; null for an empty name or when no socket file exists. Nothing is
    /// connected yet.
    static std::shared_ptr<ZDRUnixSocketPort> initAsClientWithName(const QString &name);

    /// The process's shared server port, made at the first call under the process name, the effective user id
    /// and three random letters. Null when it could not be made; the next call tries again.
    static std::shared_ptr<ZDRUnixSocketPort> port();

    /// For a process that another one starts to do a part of its work, as the daemon does for each action: to
    /// the folder it is the other one, which has used the class before. Its first use clears nothing, and the
    /// socket file of its shared server port goes when it ends. Before the first use.
    static void workForAnother();

    /// Removes the socket folder and everything in it, without following links, and creates it again.
    static void clearExistingSockets();

    /// The socket folder as an absolute path. Asking for it clears nothing.
    static QString socketFolder();

    /// "type @ path": "1 @ /private/..." for a client port, "0 @ (null)" for a server port.
    QString description() const;

    /// The full path of the socket file that a client port reaches; null for a server port.
    QString portName() const;

    void invalidate() override;

private:
    ZDRUnixSocketPort();
    static void initialize();

    QString _portName;
    qint64 _type = 0;
};
