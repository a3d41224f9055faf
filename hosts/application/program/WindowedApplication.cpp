// SPDX-License-Identifier: MIT
#include "hosts/application/program/WindowedApplication.h"

#include "DozelyKit/core/log/ZDRLog.h"
#include "hosts/common/orders/GuardedPosting.h"

#include <QPalette>
#include <QPointer>

namespace
{
constexpr double faint = 0.6; // the opacity of what is said beside

/// Some desktops name no colour for what is said beside, and Qt's own is made for light ones: it could not be
/// read on a dark one.
void nameFaintColour()
{
    QPalette palette = QGuiApplication::palette();
    QColor colour = palette.color(QPalette::Text);
    colour.setAlphaF(faint);
    if (palette.color(QPalette::PlaceholderText) == colour)
        return;
    palette.setColor(QPalette::PlaceholderText, colour);
    QApplication::setPalette(palette);
}
} // namespace

WindowedApplication::WindowedApplication(int &argc, char **argv) : QApplication(argc, argv)
{
    nameFaintColour();
}

bool WindowedApplication::event(QEvent *event)
{
    if (event->type() == QEvent::ApplicationPaletteChange)
        nameFaintColour();
    return QApplication::event(event);
}

bool WindowedApplication::notify(QObject *receiver, QEvent *event)
{
    bool handled = false;
    const QPointer watched(receiver);
    const auto thrown = GuardedPosting::guardPlugIn([&] { handled = QApplication::notify(receiver, event); });
    if (thrown) {
        ZDRLog("Something raised in the event loop and was stopped: %@", *thrown);
        if (watched)
            Q_EMIT raised(watched, *thrown);
    }
    return handled;
}
