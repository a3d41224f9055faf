// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

namespace dozely
{

/// The owner of an interface file: who gets its outlets and hears its actions.
class UiOwner
{
public:
    explicit UiOwner(QObject *owner) : m_owner(owner) {}

    /// Fills the outlets with `view` and what lies in it, and connects its actions.
    void connectTo(QObject *view);

    /// Calls awakeFromNib on `view`, what lies in it and the owner, wherever it is a method without
    /// arguments.
    void awaken(QObject *view);

private:
    void fillOutlet(QObject *object);
    void connectActions(QObject *object);

    QObject *m_owner;
};

} // namespace dozely
