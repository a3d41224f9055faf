// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/NSNotification.h"
#include "hosts/common/orders/OrderPermissions.h"

#include <QObject>
#include <QPointer>

#include <functional>

/// An order that arrived from another process.
struct ReceivedOrder {
    QString name;
    QVariantMap userInfo;
    OrderPermissions::UserId peer; ///< Who sent it, as the kernel told; absent when that is not known.
};

/// Takes orders out of the process's WDNotificationCenter and hands them on, as a rule from the event loop,
/// so that whoever posted one has the answer at once and does not wait for what it sets off.
///
/// OWNERSHIP: the notification centre keeps receivers for good; they outlive the objects that they serve.
/// THREADING: the main thread.
class OrderReceiver : public QObject
{
    Q_OBJECT
public:
    using Handler = std::function<void(const ReceivedOrder &)>;

    /// From now on calls `handler` for each notification `name` from `sender`, until `context` is destroyed.
    static void receive(const QString &name, const QString &sender, QObject *context, Handler handler);

    /// The same, but calls `handler` while the sender waits: it is answered once that returns, and what that
    /// raises is raised where the order was posted. For what the sender has to know.
    static void receiveBeforeAnswer(const QString &name, const QString &sender, QObject *context,
                                    Handler handler);

    /// Called by the notification centre while the request is served.
    Q_INVOKABLE void receiveNotification(const NSNotification &notification);

private:
    enum class Moment { BeforeAnswer, FromEventLoop };
    OrderReceiver(QObject *context, Handler handler, Moment moment);
    static void receive(const QString &name, const QString &sender, QObject *context, Handler handler,
                        Moment moment);

    QPointer<QObject> m_context;
    Handler m_handler;
    Moment m_moment;
};
