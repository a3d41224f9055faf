// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QPointer>

class QMessageBox;

/// Asks what shall become of changes that are not applied when their window is closed. THREADING: the main
/// thread.
class ClosingQuestion : public QObject
{
    Q_OBJECT
public:
    /// The window owns it, and is what it stands before.
    explicit ClosingQuestion(QWidget *window);
    ~ClosingQuestion() override;

    /// Returns at once. Where it is asked already, it comes to the front.
    void ask();

Q_SIGNALS:
    /// What was chosen; nothing for "cancel".
    /// @{
    void applyChosen();
    void discardChosen();
    /// @}

private:
    QWidget *m_window;
    QPointer<QMessageBox> m_shown;
};
