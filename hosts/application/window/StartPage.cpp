// SPDX-License-Identifier: MIT
#include "hosts/application/window/StartPage.h"

#include "hosts/application/window/AppIcon.h"

#include <QCommandLinkButton>
#include <QLabel>
#include <QPushButton>

namespace
{
constexpr int iconSize = 80;
constexpr int actionIconSize = 32;
constexpr int columnWidth = 460;
constexpr double titleScale = 1.5;
} // namespace

StartPage::StartPage(ActionSides &sides, QWidget *parent) : QWidget(parent)
{
    auto *const row = new QHBoxLayout(this);
    auto *const middle = new QWidget;
    middle->setMaximumWidth(columnWidth);
    row->addStretch(1);
    row->addWidget(middle, 1000);
    row->addStretch(1);
    auto *const column = new QVBoxLayout(middle);
    column->setSpacing(10);
    column->addStretch(2);
    addTexts(*column);
    column->addSpacing(8);
    addButtons(*column, sides);
    column->addStretch(3);
}

void StartPage::addTexts(QVBoxLayout &column)
{
    auto *const icon = new QLabel;
    icon->setAlignment(Qt::AlignCenter);
    icon->setPixmap(AppIcon::icon().pixmap(QSize(iconSize, iconSize), devicePixelRatioF()));
    auto *const title = new QLabel(tr("Nothing is planned yet"));
    QFont large = title->font();
    if (large.pixelSize() > 0)
        large.setPixelSize(qRound(large.pixelSize() * titleScale));
    else
        large.setPointSizeF(large.pointSizeF() * titleScale);
    large.setWeight(QFont::DemiBold);
    title->setFont(large);
    auto *const text =
        new QLabel(tr("A schedule has the computer do something at its time. Begin with one of "
                      "these, and change what you like before it is applied."));
    text->setForegroundRole(QPalette::PlaceholderText);
    column.addWidget(icon);
    for (QLabel *const label : {title, text}) {
        label->setWordWrap(true);
        label->setAlignment(Qt::AlignCenter);
        column.addWidget(label);
    }
}

void StartPage::addButtons(QVBoxLayout &column, ActionSides &sides)
{
    for (const NewSchedule::Wish &wish : NewSchedule::wishes(sides)) {
        auto *const button = new QCommandLinkButton(wish.name, wish.description);
        button->setIcon(sides.action(wish.action).icon);
        button->setIconSize({actionIconSize, actionIconSize});
        button->setAccessibleName(wish.name);
        button->setAccessibleDescription(wish.description);
        connect(button, &QPushButton::clicked, this, [this, wish] { Q_EMIT wishChosen(wish); });
        column.addWidget(button);
    }
    auto *const own = new QPushButton(tr("Something &else"));
    connect(own, &QPushButton::clicked, this, &StartPage::addingWanted);
    column.addSpacing(8);
    column.addWidget(own, 0, Qt::AlignHCenter);
}
