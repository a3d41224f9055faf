// SPDX-License-Identifier: MIT
#include "GalleryWindow.h"

#include "ControlsGroup.h"
#include "DrawingGroup.h"
#include "ListsGroup.h"
#include "SettingsGroup.h"
#include "Theme.h"
#include "WindowsGroup.h"

#include <QApplication>
#include <QBoxLayout>
#include <QCheckBox>
#include <QDir>

GalleryWindow::GalleryWindow(const QString &plugIn) : m_windows(new WindowsGroup)
{
    setWindowTitle("Gallery of the Dozely Kit");
    auto *const dark = new QCheckBox("Dark");
    connect(dark, &QCheckBox::toggled, this, [](bool checked) { Theme::set(checked); });
    auto *const rightToLeft = new QCheckBox("Right to left");
    connect(rightToLeft, &QCheckBox::toggled, this, [](bool checked) {
        QApplication::setLayoutDirection(checked ? Qt::RightToLeft : Qt::LeftToRight);
    });

    auto *const switches = new QHBoxLayout;
    switches->addWidget(dark);
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
    for (const bool dark : {false, true}) {
        Theme::set(dark);
        QCoreApplication::processEvents();
        written = written && grab().save(target.filePath(dark ? "gallery-dark.png" : "gallery-light.png"));
    }
    return written && m_windows->pictureOfAlert().save(target.filePath("alert.png"));
}
