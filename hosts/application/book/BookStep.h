// SPDX-License-Identifier: MIT
#pragma once

#include "hosts/application/book/ScheduleBook.h"

#include <QUndoCommand>

/// A step that the person took in a book, for ScheduleBook alone.
class BookStep : public QUndoCommand
{
protected:
    BookStep(ScheduleBook &book, QString key, const QString &what)
        : QUndoCommand(what), m_book(book), m_key(std::move(key))
    {
    }
    void setWanted(const std::optional<QVariantMap> &wanted) { m_book.setWanted(m_key, wanted); }
    void patch(const QVariantMap &changes) { m_book.patch(m_key, changes); }

    ScheduleBook &m_book;
    const QString m_key;
};

/// Some values of a schedule are others. Only these: what somebody else changes meanwhile stays, also when
/// the step is taken back.
class ChangeStep : public BookStep
{
public:
    /// Values that are invalid stand for keys that are not there.
    ChangeStep(ScheduleBook &book, const QString &key, QVariantMap before, QVariantMap after,
               const QString &what, bool joinsLast)
        : BookStep(book, key, what),
          m_before(std::move(before)),
          m_after(std::move(after)),
          m_joinsLast(joinsLast)
    {
    }
    void redo() override { patch(m_after); }
    void undo() override { patch(m_before); }
    int id() const override { return 1; }
    bool mergeWith(const QUndoCommand *other) override
    {
        const auto *const step = dynamic_cast<const ChangeStep *>(other);
        if (!step || !step->m_joinsLast || step->m_key != m_key || step->m_after.keys() != m_after.keys())
            return false;
        m_after = step->m_after;
        return true;
    }

private:
    const QVariantMap m_before;
    QVariantMap m_after;
    const bool m_joinsLast;
};

/// A schedule is there that was not, is there no longer, or is as it was before.
class ReplaceStep : public BookStep
{
public:
    using Values = std::optional<QVariantMap>;
    ReplaceStep(ScheduleBook &book, const QString &key, Values before, Values after, const QString &what)
        : BookStep(book, key, what), m_before(std::move(before)), m_after(std::move(after))
    {
    }
    void redo() override { setWanted(m_after); }
    void undo() override { setWanted(m_before); }

private:
    const Values m_before;
    const Values m_after;
};
