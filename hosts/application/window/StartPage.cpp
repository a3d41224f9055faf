// SPDX-License-Identifier: MIT
#include "hosts/application/window/StartPage.h"

#include "hosts/application/window/AppIcon.h"

#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace
{
constexpr int iconSize = 96;
constexpr int textWidth = 380;
} // namespace

StartPage::StartPage(QWidget *parent) : QWidget(parent)
{
    auto *const column = new QVBoxLayout(this);
    column->setSpacing(14);
    auto *const icon = new QLabel;
    icon->setPixmap(AppIcon::icon().pixmap(QSize(iconSize, iconSize), devicePixelRatioF()));
    auto *const title = new QLabel(tr("Nothing is planned yet"));
    QFont large = title->font();
    if (large.pixelSize() > 0)
        large.setPixelSize(qRound(large.pixelSize() * 1.5));
    else
        large.setPointSizeF(large.pointSizeF() * 1.5);
    large.setWeight(QFont::DemiBold);
    title->setFont(large);
    auto *const text =
        new QLabel(tr("A schedule does something for you at its time: it starts a program, puts the computer "
                      "to sleep or wakes it in the morning."));
    text->setWordWrap(true);
    text->setAlignment(Qt::AlignCenter);
    text->setFixedWidth(textWidth);
    text->setForegroundRole(QPalette::PlaceholderText);
    auto *const add = new QPushButton(tr("Make the &first schedule"));
    connect(add, &QPushButton::clicked, this, &StartPage::addingWanted);
    column->addStretch(2);
    for (QWidget *const widget : {static_cast<QWidget *>(icon), static_cast<QWidget *>(title),
                                  static_cast<QWidget *>(text), static_cast<QWidget *>(add)})
        column->addWidget(widget, 0, Qt::AlignHCenter);
    column->addStretch(3);
}
