// SPDX-License-Identifier: MIT
#include "hosts/application/window/SettingsButton.h"

#include "hosts/common/program/StatusIconPreference.h"
#include "hosts/common/words/ReasonWords.h"

SettingsButton::SettingsButton(QWidget *parent) : QToolButton(parent)
{
    setObjectName("settings");
    setText(tr("Settings"));
    setAutoRaise(true);
    setPopupMode(QToolButton::InstantPopup);
    auto *const menu = new QMenu(this);
    m_statusIcon = menu->addAction(tr("Show an icon in the panel"));
    m_statusIcon->setObjectName("statusIcon");
    m_statusIcon->setCheckable(true);
    setMenu(menu);
    // Its own menu may have turned it off.
    connect(menu, &QMenu::aboutToShow, this,
            [this] { m_statusIcon->setChecked(StatusIconPreference::isWanted()); });
    connect(m_statusIcon, &QAction::triggered, this, [this](bool isWanted) {
        if (const auto kept = StatusIconPreference::setWanted(isWanted); !kept)
            Q_EMIT failed(tr("This could not be kept: %1").arg(ReasonWords::of(kept.error().text)));
    });
}
