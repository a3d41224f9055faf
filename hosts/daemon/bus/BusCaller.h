// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

/// Who calls on the bus, as the bus itself says.
struct BusCaller {
    QByteArray name; ///< The unique name of the connection.
    quint32 user;

    /// Root, or the owner of the relocated root folder: nobody is asked whether he may.
    bool isSystem() const;
};
