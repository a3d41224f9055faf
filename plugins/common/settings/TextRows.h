// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractItemDelegate>
#include <QObject>
#include <QPersistentModelIndex>
#include <QPointer>
#include <QVariant>

class QLineEdit;
class QListWidget;
class QListWidgetItem;

/// Texts, such as a program's arguments, in a list in which a user edits them, one a row. One that a row
/// cannot show as it is stands there escaped; it can be removed, not edited, and stays what it was.
///
/// THREADING: the main thread. OWNERSHIP: the list's.
class TextRows : public QObject
{
    Q_OBJECT
public:
    /// What is said in the user's language.
    struct Texts {
        QString empty;    ///< Stands in the row of a text without characters.
        QString notShown; ///< Why a row cannot be edited: it cannot show its text.
        QString noList;   ///< Why no row can be: the parameter is no list.
    };

    TextRows(QListWidget *list, const Texts &texts);

    /// Has the current row, or the only one, edited in this field, too: the one that a row opens in itself is
    /// there for eyes alone, no screen reader finds it. What is written while there is no row is a new one.
    void setField(QLineEdit *field);

    /// Shows what a parameter says. One that is no list can be neither edited nor removed.
    void show(const QVariant &parameter);

    /// What the rows say now, with a row that is just being edited. The very value that was shown when that
    /// is the same; an empty list when there was none and no row was added.
    QVariant parameter() const;

    /// Whether the user may change anything: not when the parameter is no list.
    bool canBeChanged() const { return m_isList; }

    /// Adds an empty row behind the current one, at the end without one, and lets the user write. The row
    /// goes again when the user changes his mind (Escape). He writes in the field where there is one.
    void add();

    /// Adds a row with that text behind the current one.
    void add(const QString &text);

    /// Removes the current row.
    void remove();

protected:
    bool eventFilter(QObject *receiver, QEvent *event) override;

private:
    void fill(const QVariant &parameter);
    QListWidgetItem *insert(const QString &text);
    void append(const QVariant &text);
    void describe(QListWidgetItem *row, const QVariant &value);
    void followEdit(QListWidgetItem *row);
    void followEditor(QWidget *editor, QAbstractItemDelegate::EndEditHint hint);
    void followField(const QString &text);
    void showInField();
    void dropAdded();
    QListWidgetItem *rowOfField() const;
    void commitEditor() const;

    QListWidget *m_list;
    Texts m_texts;
    QVariant m_shown;
    QPointer<QLineEdit> m_field;
    QPersistentModelIndex m_added; // while it is being written
    bool m_isList = true;
};
