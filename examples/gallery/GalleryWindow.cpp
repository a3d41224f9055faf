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
    : m_windows(new WindowsGroup), m_looks(new QComboBox)
{
    setWindowTitle("Gallery of the Dozely Kit");
    m_looks->addItems({"Of the desktop", "Light", "Dark", "High contrast"});
    m_looks->setCurrentIndex(look);
    connect(m_looks, &QComboBox::currentIndexChanged, this,
            [](int look) { Theme::set(static_cast<Theme::Look>(look)); });
    auto *const colours = new QLabel("&Colours:");
    colours->setBuddy(m_looks);
    m_rightToLeft = new QCheckBox("Right to &left");
    m_rightToLeft->setChecked(QApplication::isRightToLeft());
    connect(m_rightToLeft, &QCheckBox::toggled, this, [](bool checked) {
        QApplication::setLayoutDirection(checked ? Qt::RightToLeft : Qt::LeftToRight);
    });

    auto *const switches = new QHBoxLayout;
    switches->addWidget(colours);
    switches->addWidget(m_looks);
    switches->addWidget(m_rightToLeft);
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
        m_looks->setCurrentIndex(look);
        QCoreApplication::processEvents();
        written = written && grab().save(target.filePath("gallery-" + Theme::names().at(look) + ".png"));
    }
    m_looks->setCurrentIndex(Theme::Light);
    m_rightToLeft->setChecked(true);
    QCoreApplication::processEvents();
    written = written && grab().save(target.filePath("gallery-right-to-left.png"));
    m_rightToLeft->setChecked(false);
    return written && m_windows->pictureOfAlert().save(target.filePath("alert.png"));
}
