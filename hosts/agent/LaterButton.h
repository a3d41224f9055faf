// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/agent/AlertButton.h"
#include "hosts/agent/Postponement.h"

class QMenu;

/// The button of an alert that puts its action off: a menu with what may be chosen. It opens by whatever
/// presses a button, by its mnemonic, and by Return and the down key while it has the focus; in the menu
/// there are arrow keys and mnemonics, and Escape leaves it. The texts are those of the agent's bundle.
///
/// THREADING: the main thread.
class LaterButton : public AlertButton
{
    Q_OBJECT
public:
    explicit LaterButton(QWidget *parent = nullptr);

    /// Opens the menu from right to left as well.
    void setDirection(Qt::LayoutDirection direction);

    /// Returns at once.
    void openMenu();

    /// Nothing is chosen any more.
    void closeMenu();

Q_SIGNALS:
    void chosen(Postponement choice);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void addChoice(const QString &key, Postponement choice);

    QMenu *m_menu; // a child
};
