// SPDX-License-Identifier: MIT
#pragma once

#include <QLabel>

/// Plain text in as many lines as it needs. A word that is longer than a line is broken, which QLabel does
/// not do. THREADING: the main thread.
class AlertLabel : public QLabel
{
    Q_OBJECT
public:
    explicit AlertLabel(QWidget *parent = nullptr);

    /// Shows the text, at most so long that it does not fill the screen; nothing without one.
    void showText(const QString &text);

    int heightForWidth(int width) const override;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
};
