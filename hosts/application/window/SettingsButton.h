// SPDX-License-Identifier: MIT
#pragma once

#include <QMenu>
#include <QToolButton>

/// A menu of what a person may choose once for all: whether the desktop shows the agent's status icon.
class SettingsButton : public QToolButton
{
    Q_OBJECT
public:
    explicit SettingsButton(QWidget *parent = nullptr);

Q_SIGNALS:
    /// What was chosen could not be kept: a sentence.
    void failed(const QString &why);

private:
    QAction *m_statusIcon;
};
