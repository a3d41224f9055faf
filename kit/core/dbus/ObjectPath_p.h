// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QMetaType>

namespace dozely
{

/// The path of an object on a stream, as an argument or a result.
struct ObjectPath {
    QByteArray path;
};

} // namespace dozely

Q_DECLARE_METATYPE(dozely::ObjectPath)
