// SPDX-License-Identifier: MIT
#pragma once

#include <QDateTime>
#include <QWidget>

class QLabel;
class QPlainTextEdit;

/// Shows the lines of the shared log between two moments. THREADING: the main thread.
class LogPane : public QWidget
{
    Q_OBJECT
public:
    /// `path`: of the log.
    explicit LogPane(const QString &path, QWidget *parent = nullptr);

    /// Shows what was logged from a moment to another, some seconds around them included; without an end: up
    /// to now. Where there is nothing to show a sentence says why. BLOCKING: for the disk.
    void showLines(const QDateTime &begun, const QDateTime &ended);

private:
    const QString m_path;
    QLabel *m_remark;
    QPlainTextEdit *m_lines;
};
