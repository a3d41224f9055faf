// SPDX-License-Identifier: MIT
#include "plugins/common/settings/Remark.h"

#include <QAccessible>
#include <QHBoxLayout>
#include <QStyle>

Remark::Remark(QWidget *parent) : QWidget(parent), m_sentence(new QLabel)
{
    auto *const sign = new QLabel;
    const int size = style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, this);
    sign->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxWarning, nullptr, this).pixmap(size));
    m_sentence->setObjectName("remark");
    m_sentence->setWordWrap(true);
    m_sentence->setAlignment(Qt::AlignLeading | Qt::AlignTop);
    m_sentence->setTextFormat(Qt::PlainText);
    m_sentence->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto *const row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(sign, 0, Qt::AlignTop);
    row->addWidget(m_sentence, 1);
    hide();
}

void Remark::say(const QString &sentence)
{
    if (sentence == m_sentence->text())
        return;
    m_sentence->setText(sentence);
    setVisible(!sentence.isEmpty());
    QAccessibleEvent told(m_sentence, QAccessible::Alert);
    if (!sentence.isEmpty())
        QAccessible::updateAccessibility(&told);
}
