// SPDX-License-Identifier: MIT
#pragma once

#include <QBoxLayout>
#include <QWidget>

/// The lower edge of a window: two things beside each other, and where there is too little room for that, one
/// above the other.
class WindowFoot : public QWidget
{
    Q_OBJECT
public:
    /// `main` stands where reading begins, or above.
    WindowFoot(QWidget *main, QWidget *other, QWidget *parent = nullptr);

    QSize minimumSizeHint() const override;

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    QWidget *m_main;
    QWidget *m_other;
    QBoxLayout *m_row;
};
