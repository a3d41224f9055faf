// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

class QWidget;

/// Keeps the wheel of a mouse from changing a field that has not been chosen: who scrolls through a form by
/// it means the form. THREADING: the main thread.
class WheelGuard : public QObject
{
    Q_OBJECT
public:
    /// Guards a combo box, a spin box or a field for dates, for as long as it is there.
    static void guard(QWidget *field);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    using QObject::QObject;
};
