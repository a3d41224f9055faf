// SPDX-License-Identifier: MIT
#include "hosts/application/when/WheelGuard.h"

#include <QEvent>
#include <QWidget>

void WheelGuard::guard(QWidget *field)
{
    field->setFocusPolicy(Qt::StrongFocus); // by a wheel it is not chosen either
    field->installEventFilter(new WheelGuard(field));
}

bool WheelGuard::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::Wheel || static_cast<QWidget *>(watched)->hasFocus())
        return false;
    event->ignore(); // so that it scrolls what the field lies on
    return true;
}
