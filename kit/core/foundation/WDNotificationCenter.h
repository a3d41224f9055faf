// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/NSNotificationCenter.h"

/// The system's own notification centre: what arrives from other processes is delivered here, by the pair
/// (sender object, name) only.
///
/// OWNERSHIP: observers are held for good; there is no way to take one back.
/// THREADING: one thread, the main thread; there is no lock. Observers run on the posting thread.
class DOZELYKIT_EXPORT WDNotificationCenter : public NSNotificationCenter
{
public:
    /// A new centre, which becomes the default one, replacing any earlier.
    static std::shared_ptr<WDNotificationCenter> init();

    /// The default centre, made when there is none.
    static std::shared_ptr<WDNotificationCenter> defaultCenter();

    ~WDNotificationCenter() override;

    /// Calls the invokable `selector` of `observer`, with one NSNotification argument, for notifications of
    /// exactly this name from exactly this sender. A second registration of the same observer for the same
    /// pair replaces the selector. Without a name or an object nothing is registered.
    void addObserver(const std::shared_ptr<QObject> &observer, const QByteArray &selector,
                     const QString &name, const QVariant &object);

    /// Calls the observers registered when the posting begins. A notification without object or name reaches
    /// none.
    void postNotification(const NSNotification &notification) override;

private:
    WDNotificationCenter();
    struct Private;
    std::unique_ptr<Private> d;
};
