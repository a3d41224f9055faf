// SPDX-License-Identifier: MIT
#include "hosts/application/when/FaultLabel.h"

#include <QAccessible>
#include <QEvent>

FaultLabel::FaultLabel(QWidget *parent) : QLabel(parent)
{
    setWordWrap(true);
    setTextFormat(Qt::PlainText);
    QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Minimum);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    hide();
}

void FaultLabel::showFault(const QString &sentence)
{
    show(sentence, true);
}

void FaultLabel::showRemark(const QString &sentence)
{
    show(sentence, false);
}

void FaultLabel::show(const QString &sentence, bool isFault)
{
    const bool isNew = text() != sentence || m_isFault != isFault;
    m_isFault = isFault;
    if (isNew) {
        setText(sentence);
        setColour();
    }
    setVisible(!sentence.isEmpty());
    if (isNew && isFault && !sentence.isEmpty() && QAccessible::isActive()) {
        QAccessibleEvent alert(this, QAccessible::Alert);
        QAccessible::updateAccessibility(&alert);
    }
}

void FaultLabel::changeEvent(QEvent *event)
{
    QLabel::changeEvent(event);
    const bool isOfParent = event->type() == QEvent::PaletteChange || event->type() == QEvent::ParentChange;
    if (isOfParent)
        setColour();
}

void FaultLabel::setColour()
{
    constexpr int half = 128;
    const QColor forLight(176, 20, 20);
    const QColor forDark(255, 138, 128);
    const QPalette around = parentWidget() ? parentWidget()->palette() : QPalette();
    const bool isDark = around.color(QPalette::Window).lightness() < half;
    const QColor colour = !m_isFault ? around.color(QPalette::WindowText) : isDark ? forDark : forLight;
    if (palette().color(QPalette::WindowText) == colour)
        return;
    QPalette changed = palette();
    changed.setColor(QPalette::WindowText, colour);
    setPalette(changed);
}
