// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/application/month/MonthOccurrence.h"

#include <QObject>

#include <chrono>
#include <optional>

class QAction;
class QMenu;

/// What can be done with an occurrence: skip it, put it off, run its schedule now. For buttons and menus;
/// what is past or skipped is neither skipped nor put off. THREADING: the main thread.
class OccurrenceActions : public QObject
{
    Q_OBJECT
public:
    explicit OccurrenceActions(QWidget *parent);

    /// With which one; with none nothing can be done.
    void setOccurrence(const std::optional<MonthOccurrence> &occurrence);

    QAction *skip() const { return m_skip; }
    QAction *putOff() const { return m_putOff; } ///< Has a menu with the delays.
    QAction *runNow() const { return m_runNow; }

    /// All of them, as a menu for an occurrence at a place on the screen. Returns at once.
    void popUp(const MonthOccurrence &occurrence, const QPoint &place);

Q_SIGNALS:
    void skipWanted(const QString &identifier, const QDateTime &date);
    void putOffWanted(const QString &identifier, const QDateTime &date, std::chrono::seconds delay);
    void runWanted(const QString &identifier);

private:
    void addDelay(const QString &text, std::chrono::seconds delay);

    QMenu *m_menu;
    QMenu *m_delays;
    QAction *m_skip;
    QAction *m_putOff;
    QAction *m_runNow;
    MonthOccurrence m_occurrence;
};
