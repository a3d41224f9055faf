// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Export.h"

#include <QByteArray>
#include <QString>

class QObject;

/// Loads the module `file`, for the life of the process, and returns its root object, which the module owns.
/// The module must carry `interfaceId`; that is read from the file before any of its code runs. Null on
/// failure, what the module's own code raises included, with `error` a sentence. Main thread.
QObject *loadRootObject(const QString &file, const QByteArray &interfaceId, QString *error);
