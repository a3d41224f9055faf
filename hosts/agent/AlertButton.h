// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/interface/controls/ZDRButton.h"

/// A button of an alert: Return and Enter press it while it has the focus, and a ring shows that it has,
/// however it came by it. THREADING: the main thread.
class AlertButton : public ZDRButton
{
    Q_OBJECT
public:
    using ZDRButton::ZDRButton;

    /// Takes the size that its title needs, and the look that goes with it. Again for another title; another
    /// font is followed.
    void fitToTitle();

    /// No larger than its title, for what matters less. Before fitToTitle.
    void setIsSmall(bool isSmall) { m_isSmall = isSmall; }

protected:
    void changeEvent(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    bool m_isSmall = false;
    bool m_isFitted = false;
};
