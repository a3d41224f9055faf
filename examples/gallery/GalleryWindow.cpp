// SPDX-License-Identifier: MIT
#include "GalleryWindow.h"

#include "ControlsGroup.h"
#include "DrawingGroup.h"
#include "ListsGroup.h"
#include "SettingsGroup.h"
#include "WindowsGroup.h"

#include <QApplication>
#include <QBoxLayout>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QLabel>

GalleryWindow::GalleryWindow(const QString &plugIn, Theme::Look look)
    : m_windows(new WindowsGroup), m_look(look)
{
    setWindowTitle("Gallery of the Dozely Kit");
    auto *const looks = new QComboBox;
    looks->addItems({"Of the desktop", "Light", "Dark", "High contrast"});
    looks->setCurrentIndex(m_look);
    connect(looks, &QComboBox::activated, this, [](int look) { Theme::set(static_cast<Theme::Look>(look)); });
    auto *const colours = new QLabel("&Colours:");
    colours->setBuddy(looks);
    auto *const rightToLeft = new QCheckBox("Right to &left");
    rightToLeft->setChecked(QApplication::isRightToLeft());
    connect(rightToLeft, &QCheckBox::toggled, this, [](bool checked) {
        QApplication::setLayoutDirection(checked ? Qt::RightToLeft : Qt::LeftToRight);
    });

    auto *const switches = new QHBoxLayout;
    switches->addWidget(colours);
    switches->addWidget(looks);
    switches->addWidget(rightToLeft);
    switches->addStretch();
    auto *const right = new QVBoxLayout;
    right->addWidget(new ControlsGroup);
    right->addWidget(m_windows);
    right->addWidget(new SettingsGroup(plugIn), 1);
    auto *const left = new QVBoxLayout;
    left->addWidget(new ListsGroup, 1);
    left->addWidget(new DrawingGroup);
    auto *const columns = new QHBoxLayout;
    columns->addLayout(left, 1);
    columns->addLayout(right, 1);
    auto *const all = new QVBoxLayout(this);
    all->addLayout(switches);
    all->addLayout(columns, 1);
}

bool GalleryWindow::writePictures(const QString &folder)
{
    const QDir target(folder);
    bool written = target.mkpath(".");
    show();
    for (const Theme::Look look : {Theme::Light, Theme::Dark, Theme::HighContrast}) {
        Theme::set(look);
        QCoreApplication::processEvents();
        written = written && grab().save(target.filePath("gallery-" + Theme::names().at(look) + ".png"));
    }
    Theme::set(Theme::Light);
    QApplication::setLayoutDirection(Qt::RightToLeft);
    QCoreApplication::processEvents();
    written = written && grab().save(target.filePath("gallery-right-to-left.png"));
    QApplication::setLayoutDirection(Qt::LeftToRight);
    return written && m_windows->pictureOfAlert().save(target.filePath("alert.png"));
}
