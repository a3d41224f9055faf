// SPDX-License-Identifier: MIT
#include "hosts/application/window/ClosingQuestion.h"

#include <QMessageBox>
#include <QPushButton>

ClosingQuestion::ClosingQuestion(QWidget *window) : QObject(window), m_window(window) {}

ClosingQuestion::~ClosingQuestion() = default;

void ClosingQuestion::ask()
{
    if (m_shown) {
        m_shown->raise();
        return;
    }
    m_shown = new QMessageBox(QMessageBox::Question, "Dozely",
                              tr("Some changes have not been applied yet. Apply them before closing?"),
                              QMessageBox::NoButton, m_window);
    m_shown->setAttribute(Qt::WA_DeleteOnClose);
    auto *const apply = m_shown->addButton(tr("A&pply"), QMessageBox::AcceptRole);
    auto *const discard = m_shown->addButton(tr("&Discard"), QMessageBox::DestructiveRole);
    m_shown->addButton(QMessageBox::Cancel);
    m_shown->setDefaultButton(apply);
    connect(m_shown, &QMessageBox::buttonClicked, this, [this, apply, discard](QAbstractButton *pressed) {
        if (pressed == apply)
            Q_EMIT applyChosen();
        else if (pressed == discard)
            Q_EMIT discardChosen();
    });
    m_shown->open();
}
