// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/application/actions/ActionSides.h"
#include "hosts/application/book/ScheduleBook.h"

#include <QScrollArea>

class ActionPane;
class NoticeBar;
class PolicyForm;
class PowerForm;
class ScheduleHeader;
class WhenPane;

/// Edits one schedule of a book, each edit a step of the book's.
///
/// THREADING: the main thread. Book and sides outlive it.
class ScheduleEditor : public QScrollArea
{
    Q_OBJECT
public:
    /// `user` is who sits before the window.
    ScheduleEditor(ScheduleBook &book, ActionSides &sides, quint32 user, QWidget *parent = nullptr);

    /// Shows the entry with this key; an unknown one: nothing.
    void setKey(const QString &key);
    QString key() const { return m_key; }

    /// Puts into the book at once what was edited and is not there yet.
    void commit();

    /// Why what is shown cannot be applied, a sentence; empty when it can.
    QString fault() const;

    /// As wide as the page, so that one scrolls up and down alone.
    QSize minimumSizeHint() const override;

    /// Lets the person give it a name.
    void editName();

protected:
    bool event(QEvent *event) override;

private:
    void makeCards();
    void connectCards();
    void refresh();
    void showNotice();
    void changeParameters(const QVariantMap &changes, const QString &what);
    void chooseAction(const QString &path, const QVariantMap &defaults);

    ScheduleBook &m_book;
    ActionSides &m_sides;
    QString m_key;
    QStringList m_lastEdited; // of which schedule, and which of its parameters
    NoticeBar *m_notice;
    ScheduleHeader *m_header;
    ActionPane *m_action;
    WhenPane *m_when;
    PowerForm *m_power;
    PolicyForm *m_policy;
};
