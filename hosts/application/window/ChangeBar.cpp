// SPDX-License-Identifier: MIT
#include "hosts/application/window/ChangeBar.h"

#include <QAction>
#include <QEvent>
#include <QHBoxLayout>

namespace
{
QToolButton *newStepButton(const char *name, const char *icon, const QString &text,
                           QKeySequence::StandardKey key)
{
    auto *const button = new QToolButton;
    button->setObjectName(name);
    auto *const action = new QAction(QIcon::fromTheme(icon), text, button);
    action->setShortcuts(key);
    button->setDefaultAction(action);
    button->setAutoRaise(true);
    button->setToolButtonStyle(action->icon().isNull() ? Qt::ToolButtonTextOnly
                                                       : Qt::ToolButtonTextBesideIcon);
    return button;
}

void describe(QToolButton &button, const QString &words, const QString &step)
{
    button.defaultAction()->setToolTip(step.isEmpty() ? words : QString("%1: %2").arg(words, step));
    button.setAccessibleDescription(step);
}
} // namespace

ChangeBar::ChangeBar(ScheduleBook &book, QWidget *parent)
    : QWidget(parent),
      m_book(book),
      m_undo(newStepButton("undo", "edit-undo", tr("Undo"), QKeySequence::Undo)),
      m_redo(newStepButton("redo", "edit-redo", tr("Redo"), QKeySequence::Redo)),
      m_discard(new QPushButton(tr("&Discard"))),
      m_apply(new QPushButton(tr("A&pply")))
{
    auto *const row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    m_discard->setObjectName("discard");
    m_apply->setObjectName("apply");
    m_apply->setDefault(true);
    row->addWidget(m_undo);
    row->addWidget(m_redo);
    row->addSpacing(8);
    row->addWidget(m_discard);
    row->addWidget(m_apply);

    connect(m_undo->defaultAction(), &QAction::triggered, &book.steps(), &QUndoStack::undo);
    connect(m_redo->defaultAction(), &QAction::triggered, &book.steps(), &QUndoStack::redo);
    connect(m_discard, &QPushButton::clicked, this, [this] { m_book.revertAll(tr("Discarding")); });
    connect(m_apply, &QPushButton::clicked, this, &ChangeBar::applyWanted);
    connect(&book.steps(), &QUndoStack::indexChanged, this, &ChangeBar::refresh);
    connect(&book, &ScheduleBook::changesChanged, this, &ChangeBar::refresh);
    refresh();
}

void ChangeBar::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        refresh();
}

void ChangeBar::refresh()
{
    const bool canChange = m_book.hasChanges() && !m_book.isApplying();
    m_apply->setEnabled(canChange);
    m_discard->setEnabled(canChange);
    // The one thing that is left to do stands out.
    QPalette colours;
    if (canChange) {
        colours.setColor(QPalette::Button, palette().color(QPalette::Active, QPalette::Highlight));
        colours.setColor(QPalette::ButtonText, palette().color(QPalette::Active, QPalette::HighlightedText));
    }
    m_apply->setPalette(colours);
    m_apply->setText(m_book.isApplying() ? tr("Applying…") : tr("A&pply"));
    m_apply->setShortcut(QKeySequence::Save); // a new text takes it away
    m_undo->defaultAction()->setEnabled(m_book.steps().canUndo());
    m_redo->defaultAction()->setEnabled(m_book.steps().canRedo());
    describe(*m_undo, tr("Undo"), m_book.steps().undoText());
    describe(*m_redo, tr("Redo"), m_book.steps().redoText());
}
