// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/interface/windows/ZDRBezelWindow.h"
#include "DozelyKit/system/alerts/NSUserNotification.h"
#include "hosts/agent/AlertCountdown.h"
#include "hosts/agent/AlertDetails.h"
#include "hosts/agent/InputGate.h"
#include "hosts/agent/Postponement.h"
#include "hosts/agent/WindowExposure.h"

#include <QDateTime>

class AlertButton;
class AlertLabel;
class LaterButton;
class ZDRProgressIndicator;

/// The window of one alert: name, message, the time left in words and as a pie, the alert's button, one that
/// takes the window away, and, where that is offered, one that puts the action off. It does not take the keys
/// from whoever has them, unless a Wayland compositor gives them to it; the user may reach it as any other
/// window. "Hide", Escape and the window manager's close take only the window away and leave the action as it
/// is. Nothing can be pressed until it has been seen for half a second (InputGate).
///
/// THREADING: the main thread.
class AlertWindow : public ZDRBezelWindow
{
    Q_OBJECT
public:
    AlertWindow();
    ~AlertWindow() override;

    /// Takes over the alert's texts, and the date in its user info ("Schedule Date"), to which it counts
    /// down. Without a date there is no countdown, without a title of the button no button. The schedule is
    /// named where it has another name than the alert.
    void fill(const NSUserNotification &notification, bool mayBePutOff = false,
              const AlertDetails &details = {});

    /// Says that so many further alerts wait for a place; with 0 nothing.
    void setFurtherAlerts(int count);

    /// The height that the texts need, for the width that all alerts have; wider only where the buttons
    /// would not fit.
    QSize wantedSize() const;

    /// All that it says beside its title, for a screen reader: a line each.
    QString spokenText() const;

    /// Fades out; what is pressed from now on counts no more.
    void withdraw();

Q_SIGNALS:
    /// The button was pressed.
    void activated();
    /// The action is to be put off; the window stays.
    void putOff(Postponement choice);
    /// The user wants the window away. It may still be there.
    void dismissed();
    /// The user has moved it.
    void dragged();

protected:
    bool eventFilter(QObject *receiver, QEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void closeEvent(QCloseEvent *event) override;
    void changeEvent(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void layOut();
    void fitButtons();
    void fit();
    void colorTexts();
    void takeInput();
    void countDownTo(const QDateTime &date);
    void showTimeLeft(std::chrono::milliseconds left);

    QWidget *m_content = nullptr; // these belong to the window
    AlertLabel *m_title = nullptr;
    AlertLabel *m_schedule = nullptr;
    AlertLabel *m_message = nullptr;
    AlertLabel *m_timeLeft = nullptr;
    AlertLabel *m_otherwise = nullptr;
    AlertLabel *m_further = nullptr;
    AlertButton *m_button = nullptr;
    LaterButton *m_later = nullptr;
    AlertButton *m_hide = nullptr;
    ZDRProgressIndicator *m_pie = nullptr;
    WindowExposure m_exposure{*this};
    InputGate m_gate{*this, m_exposure};
    AlertCountdown m_countdown;
    QPoint m_pressedAt; // where the window was
    bool m_isWithdrawn = false;
};
