// SPDX-License-Identifier: MIT
#include "hosts/agent/LaterButton.h"

#include "hosts/agent/AgentTexts.h"

#include <QKeyEvent>
#include <QMenu>
#include <QPainter>
#include <QPainterPath>

namespace
{
constexpr double arrowWidth = 7;
constexpr double arrowHeight = 4;
constexpr double arrowInset = 11; // from the edge at which text ends
} // namespace

LaterButton::LaterButton(QWidget *parent) : AlertButton(agentText("Later"), parent), m_menu(new QMenu(this))
{
    addChoice("In 10 minutes", Postponement::TenMinutes);
    addChoice("In an hour", Postponement::Hour);
    addChoice("Skip today", Postponement::SkipToday);
    setMenu(m_menu);
    m_menu->setAccessibleName(agentText("Later").remove('&'));
    // Qt would wait in an event loop of its own until the menu is closed.
    disconnect(this, &QAbstractButton::pressed, nullptr, nullptr);
    connect(this, &QAbstractButton::pressed, this, &LaterButton::openMenu);
    // The menu has the pointer when the button is let go.
    connect(m_menu, &QMenu::aboutToHide, this, [this] {
        setDown(false);
        setButtonState(Normal);
    });
}

void LaterButton::addChoice(const QString &key, Postponement choice)
{
    const QAction *const action = m_menu->addAction(agentText(key));
    connect(action, &QAction::triggered, this, [this, choice] { Q_EMIT chosen(choice); });
}

void LaterButton::setDirection(Qt::LayoutDirection direction)
{
    setLayoutDirection(direction);
    m_menu->setLayoutDirection(direction); // a window of its own, which takes none from here
}

/// Below the button, from the edge at which its text begins.
void LaterButton::openMenu()
{
    const bool isMirrored = layoutDirection() == Qt::RightToLeft;
    const int left = isMirrored ? width() - m_menu->sizeHint().width() : 0;
    m_menu->popup(mapToGlobal(QPoint(left, height())));
}

void LaterButton::closeMenu()
{
    m_menu->close();
}

void LaterButton::keyPressEvent(QKeyEvent *event)
{
    const int key = event->key();
    if (key == Qt::Key_Down || key == Qt::Key_Return || key == Qt::Key_Enter)
        openMenu();
    else
        AlertButton::keyPressEvent(event);
}

void LaterButton::paintEvent(QPaintEvent *event)
{
    AlertButton::paintEvent(event);
    if (!wantsLayer())
        return; // the style has drawn its own
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (!isEnabled())
        painter.setOpacity(0.4);
    const double middle = layoutDirection() == Qt::RightToLeft ? arrowInset : width() - arrowInset;
    const double top = (height() - arrowHeight) / 2.0;
    QPainterPath arrow;
    arrow.moveTo(middle - arrowWidth / 2, top);
    arrow.lineTo(middle + arrowWidth / 2, top);
    arrow.lineTo(middle, top + arrowHeight);
    arrow.closeSubpath();
    painter.fillPath(arrow, titleAttributes().foreground());
}
