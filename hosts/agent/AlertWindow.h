// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/interface/windows/ZDRBezelWindow.h"
#include "DozelyKit/system/alerts/NSUserNotification.h"
#include "hosts/agent/Postponement.h"

#include <QDateTime>

namespace dozely
{
class AbsoluteTimer;
} // namespace dozely

class LaterButton;
class QLabel;
class ZDRButton;
class ZDRProgressIndicator;

/// The window of one alert: name, message, a pie that counts down to the action, the alert's button, and,
/// where that is offered, one that puts the action off. It does not take the keys from whoever has them,
/// unless a Wayland compositor gives them to it; the user may reach it as any other window. Escape or the
/// window manager's close takes only the window away and leaves the action as it is.
///
/// THREADING: the main thread.
class AlertWindow : public ZDRBezelWindow
{
    Q_OBJECT
public:
    AlertWindow();
    ~AlertWindow() override;

    /// Takes over the alert's texts, and the date in its user info ("Schedule Date"), to which the pie counts
    /// down. Without a date there is no pie, without a title of the button no button.
    void fill(const NSUserNotification &notification, bool mayBePutOff = false);

    /// The height that the texts need, for the width that all alerts have; wider only where the buttons
    /// would not fit.
    QSize wantedSize() const;

    /// Fades out; what is pressed from now on counts no more.
    void withdraw();

Q_SIGNALS:
    /// The button was pressed.
    void activated();
    /// The action is to be put off; the window stays.
    void putOff(Postponement choice);
    /// The user took the window away.
    void dismissed();

protected:
    void showEvent(QShowEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private:
    void fitToText(ZDRButton &button);
    void countDownTo(const QDateTime &date);
    void showRemainingTime();

    QWidget *m_content = nullptr; // these belong to the window
    QLabel *m_title = nullptr;
    QLabel *m_message = nullptr;
    ZDRButton *m_button = nullptr;
    LaterButton *m_later = nullptr;
    ZDRProgressIndicator *m_pie = nullptr;
    std::unique_ptr<dozely::AbsoluteTimer> m_timer;
    QDateTime m_date; // of the action; invalid for none
    bool m_isWithdrawn = false;
};
