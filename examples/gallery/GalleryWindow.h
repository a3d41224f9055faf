// SPDX-License-Identifier: MIT
#pragma once

#include "Theme.h"

#include <QWidget>

class QCheckBox;
class QComboBox;
class WindowsGroup;

/// Every piece in one window, which can be seen in the desktop's colours and others, from left to right and
/// from right to left.
class GalleryWindow : public QWidget
{
    Q_OBJECT
public:
    /// `plugIn` is the path of the bundle whose configuration view is shown; `look` is the one that is set.
    explicit GalleryWindow(const QString &plugIn, Theme::Look look = Theme::Desktop);

    /// Writes pictures of the window, light, dark, in high contrast and from right to left, and of an alert
    /// into the folder. False when one could not be written.
    bool writePictures(const QString &folder);

private:
    WindowsGroup *m_windows = nullptr;
    QComboBox *m_looks = nullptr;
    QCheckBox *m_rightToLeft = nullptr;
};
