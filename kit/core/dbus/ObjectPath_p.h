// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QMetaType>

/// The path of an object on a stream, as an argument or a result.
struct ObjectPath {
    QByteArray path;
};
Q_DECLARE_METATYPE(ObjectPath)
