// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractItemDelegate>
#include <QObject>
#include <QPersistentModelIndex>
#include <QVariant>

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

    /// Shows what a parameter says. One that is no list can be neither edited nor removed.
    void show(const QVariant &parameter);

    /// What the rows say now, with a row that is just being edited. The very value that was shown when that
    /// is the same; an empty list when there was none and no row was added.
    QVariant parameter() const;

    /// Whether the user may change anything: not when the parameter is no list.
    bool canBeChanged() const { return m_isList; }

    /// Adds an empty row behind the current one, at the end without one, and lets the user write. The row
    /// goes again when the user changes his mind (Escape).
    void add();

    /// Adds a row with that text behind the current one.
    void add(const QString &text);

    /// Removes the current row.
    void remove();

private:
    QListWidgetItem *insert(const QString &text);
    void append(const QVariant &text);
    void describe(QListWidgetItem *row, const QVariant &value);
    void followEdit(QListWidgetItem *row);
    void followEditor(QWidget *editor, QAbstractItemDelegate::EndEditHint hint);
    void commitEditor() const;

    QListWidget *m_list;
    Texts m_texts;
    QVariant m_shown;
    QPersistentModelIndex m_added; // while it is being written
    bool m_isList = true;
};
