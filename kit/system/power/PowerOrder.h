// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/system/power/SystemPower.h"

#include <QObject>
#include <QStringList>

#include <chrono>
#include <functional>

namespace dozely
{

/// A wish that the machine sleep or go off which respects what others forbid meanwhile, such as the upgrade
/// of packages: while they do it waits, for ten minutes at most. The log names them.
///
/// THREADING: the main thread, whose event loop tries again. BLOCKING: as SystemPower::blockers.
class DOZELYKIT_EXPORT PowerOrder : public QObject
{
    Q_OBJECT
public:
    /// What happens when it is still forbidden after ten minutes.
    enum class AtLast { GivenUp, Done };

    /// `name` begins the lines of the log; `order` is called when the change may happen.
    PowerOrder(SystemPower::Change change, QString name, std::function<void()> order);

    /// Orders the change now, or as soon as nobody forbids it. While it waits, another call only begins the
    /// ten minutes anew.
    void give(AtLast atLast);

    /// Whether it is still to be ordered.
    bool isWaiting() const { return m_isWaiting; }

Q_SIGNALS:
    /// It was ordered or given up; within `give` when it did not have to wait.
    void ended();

private:
    void tryAgain();
    void order();

    SystemPower::Change m_change;
    QString m_name;
    std::function<void()> m_order;
    AtLast m_atLast = AtLast::GivenUp;
    bool m_isWaiting = false;
    std::chrono::milliseconds m_deadline{0}; // steady time
    QStringList m_told;                      // who was named last
};

} // namespace dozely
