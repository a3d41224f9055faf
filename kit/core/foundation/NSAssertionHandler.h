// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Export.h"

#include <QByteArray>
#include <QString>

#include <memory>

/// The name of the exception that a failed assertion raises.
DOZELYKIT_EXPORT extern const QString NSInternalInconsistencyException;

/// Decides what a failed assertion does. Each thread has one of its own.
class DOZELYKIT_EXPORT NSAssertionHandler
{
public:
    virtual ~NSAssertionHandler();

    /// The calling thread's handler.
    static NSAssertionHandler &currentHandler();

    /// Replaces the calling thread's handler; null goes back to the default one.
    static void setCurrentHandler(std::shared_ptr<NSAssertionHandler> handler);

    /// An assertion failed in the class operation `method` of class `object`. The default writes to the
    /// console log and raises NSInternalInconsistencyException with the description as its reason. A handler
    /// that returns lets the caller go on.
    virtual void handleFailureInMethod(const QByteArray &method, const QString &object, const QString &file,
                                       qint32 lineNumber, const QString &description);
};
