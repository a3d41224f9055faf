// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/NSNotification.h"

#include <QByteArray>
#include <QObject>

#include <memory>

/// The platform's notification centre of one process: observers by name and object, held weakly.
///
/// THREADING: the registry may be used from any thread; observers run on the posting thread.
class DOZELYKIT_EXPORT NSNotificationCenter
{
public:
    NSNotificationCenter();
    virtual ~NSNotificationCenter();
    NSNotificationCenter(const NSNotificationCenter &) = delete;
    NSNotificationCenter &operator=(const NSNotificationCenter &) = delete;

    /// The process-wide centre.
    static NSNotificationCenter &defaultCenter();

    /// Calls the invokable `selector` of `observer`, with one NSNotification argument, for each notification
    /// posted from now on that has this name and this object. A null name stands for every name, an invalid
    /// object for every object. The observer is not owned and leaves the registry when it is destroyed.
    void addObserver(QObject *observer, const QByteArray &selector, const QString &name,
                     const QVariant &object = {});

    /// Takes back what addObserver registered with these arguments; a null name or an invalid object matches
    /// any.
    void removeObserver(QObject *observer, const QString &name = {}, const QVariant &object = {});

    /// Calls the observers, in the order of their registration, before it returns.
    virtual void postNotification(const NSNotification &notification);

    /// Posts a notification made of these parts into this centre's own registry.
    void postNotificationName(const QString &name, const QVariant &object = {},
                              const QVariantMap &userInfo = {});

private:
    struct Private;
    std::unique_ptr<Private> d;
};
