// SPDX-License-Identifier: MIT
#include "hosts/application/window/NoticeBar.h"

#include <QAccessible>

NoticeBar::NoticeBar(QWidget *parent) : Panel(parent), m_sentence(new QLabel), m_buttons(new QHBoxLayout)
{
    auto *const layout = new QHBoxLayout(this);
    layout->setContentsMargins(14, 10, 14, 10);
    layout->setSpacing(12);
    m_sentence->setWordWrap(true);
    m_sentence->setTextFormat(Qt::PlainText);
    m_sentence->setTextInteractionFlags(Qt::TextSelectableByMouse);
    layout->addWidget(m_sentence, 1);
    layout->addLayout(m_buttons);
    hide();
}

void NoticeBar::tell(Kind kind, const QString &sentence, const QList<Remedy> &remedies)
{
    if (m_sentence->text() == sentence && !isHidden())
        return;
    clear();
    setTint(kind == Kind::Warning ? QColor("#e0a020") : QColor("#3b82d6"));
    m_sentence->setText(sentence);
    for (const Remedy &remedy : remedies) {
        auto *const button = new QPushButton(remedy.text);
        connect(button, &QPushButton::clicked, this, remedy.act);
        m_buttons->addWidget(button);
    }
    show();
    QAccessibleEvent event(m_sentence, QAccessible::Alert);
    QAccessible::updateAccessibility(&event);
}

void NoticeBar::clear()
{
    m_sentence->clear();
    while (QLayoutItem *const item = m_buttons->takeAt(0)) {
        item->widget()->hide();
        item->widget()->deleteLater(); // it may be the one that was pressed
        delete item;
    }
    hide();
}
