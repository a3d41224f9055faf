// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/NSNotification.h"

#include <QByteArray>
#include <QObject>

#include <memory>
#include <optional>

/// Bits that say how a notification is posted.
enum NSDistributedNotificationOption : quint32 {
    NSDistributedNotificationDeliverImmediately = 1, ///< To suspended centres, too.
    NSDistributedNotificationPostToAllSessions = 2,  ///< To every login session instead of this one.
};

/// Notifications between processes, by name and sender string; docs/wire-protocol.md says how they travel.
///
/// ANYBODY CAN POST. Name, object and user information are what some process wrote, perhaps one of another
/// user. Before an observer acts on a notification for which that matters, it asks currentSender.
///
/// A post reaches observers in this process as well, and all of them from the event loop. Notifications may
/// be lost: when a user posts too many, or without a message bus (a line in the log says so).
///
/// THREADING: the main thread, with an event loop.
class DOZELYKIT_EXPORT NSDistributedNotificationCenter : public QObject
{
    Q_OBJECT
public:
    /// The centre of this process.
    static NSDistributedNotificationCenter &defaultCenter();

    ~NSDistributedNotificationCenter() override;

    /// Calls the invokable `selector` of `observer`, with one NSNotification argument, for each notification
    /// of this name from this sender string. A null name stands for every name, a null object for every
    /// sender. The observer is not owned and is forgotten when it is destroyed.
    void addObserver(QObject *observer, const QByteArray &selector, const QString &name,
                     const QString &object = {});

    /// Takes back what addObserver registered with these arguments; a null name or object matches any.
    void removeObserver(QObject *observer, const QString &name = {}, const QString &object = {});

    /// Posts with the options (NSDistributedNotificationOption). A null object is no sender. Values of the
    /// user information are those of NSNotification. BLOCKING: until the bus has it, two seconds at most.
    Q_INVOKABLE virtual void postNotificationName(const QString &name, const QString &object,
                                                  const QVariantMap &userInfo, quint32 options);

    /// Posts to this session.
    Q_INVOKABLE virtual void postNotificationNameDeliverImmediately(const QString &name,
                                                                    const QString &object,
                                                                    const QVariantMap &userInfo,
                                                                    bool deliverImmediately);

    /// Whether this centre answers the operation of that name; one that does not is not asked to.
    virtual bool respondsToSelector(const QByteArray &selector) const;

    /// While a centre is suspended, notifications that are not to be delivered immediately wait, the latest
    /// one of each name and sender; they are delivered when it no longer is.
    void setSuspended(bool suspended);
    bool suspended() const;

    /// Within an observer: the user id of who posted the notification, by the word of the message bus. Absent
    /// when it could not be found out (a poster that has ended already, for one), and outside of observers.
    /// Never take that for root.
    static std::optional<quint32> currentSender();

protected:
    /// A further centre; the notifications are the same for all.
    NSDistributedNotificationCenter();

private:
    struct Private;
    std::unique_ptr<Private> d;
};
