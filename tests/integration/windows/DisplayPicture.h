// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QImage>
#include <QRect>

#include <memory>

/// What the whole display shows that DISPLAY names, seen by an X11 connection of its own.
class DisplayPicture
{
public:
    DisplayPicture();
    ~DisplayPicture();
    DisplayPicture(const DisplayPicture &) = delete;
    DisplayPicture &operator=(const DisplayPicture &) = delete;

    /// The colour at a point, in pixels.
    QColor colorAt(const QPoint &point) const;

    /// The smallest rectangle around all pixels of that colour, give or take 2, of which twenty or more lie
    /// in a row; empty without any.
    QRect areaOf(const QColor &color) const;

private:
    struct Connection;
    QImage taken() const;

    std::unique_ptr<Connection> m_connection;
};
