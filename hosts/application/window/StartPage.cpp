// SPDX-License-Identifier: MIT
#include "hosts/application/window/StartPage.h"

#include "DozelyKit/core/foundation/Clock.h"
#include "hosts/application/book/ScheduleKeys.h"
#include "hosts/application/when/DateInWords.h"
#include "hosts/application/window/AppIcon.h"
#include "hosts/application/wishes/ReadyWishes.h"

#include <QCommandLinkButton>
#include <QLabel>
#include <QPushButton>

using namespace dozely;

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
    for (const QVariantMap &wish : ReadyWishes::all()) {
        const ActionBundle &action = sides.action(wish.value(ScheduleKey::bundlePath).toString());
        if (!action.exists)
            continue;
        const QDateTime date = QDateTime::fromString(wish.value(ScheduleKey::date).toString(), Qt::ISODate);
        const QString when = DateInWords::of(date, Port<Clock>::current()->currentDate(),
                                             QTimeZone::systemTimeZone(), QLocale());
        const QString name = wish.value(ScheduleKey::name).toString();
        //: an action, and when it takes place first: "Power Off, for the first time tomorrow 22:00"
        const QString description = tr("%1, for the first time %2").arg(action.name, when);
        auto *const button = new QCommandLinkButton(name, description);
        button->setIcon(action.icon);
        button->setIconSize({actionIconSize, actionIconSize});
        button->setAccessibleName(name);
        button->setAccessibleDescription(description);
        connect(button, &QPushButton::clicked, this, [this, wish] { Q_EMIT wishChosen(wish); });
        column.addWidget(button);
    }
    auto *const own = new QPushButton(tr("Something &else"));
    connect(own, &QPushButton::clicked, this, &StartPage::addingWanted);
    column.addSpacing(8);
    column.addWidget(own, 0, Qt::AlignHCenter);
}
