// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

class WindowsGroup;

/// Every piece in one window, which can be seen light and dark, from left to right and from right to left.
class GalleryWindow : public QWidget
{
    Q_OBJECT
public:
    /// `plugIn` is the path of the bundle whose configuration view is shown.
    explicit GalleryWindow(const QString &plugIn);

    /// Writes pictures of the window, light and dark, and of an alert into the folder. False when one could
    /// not be written.
    bool writePictures(const QString &folder);

private:
    WindowsGroup *m_windows = nullptr;
};
