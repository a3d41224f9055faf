// SPDX-License-Identifier: MIT
#pragma once

#include "support/InterfaceEnvironment.h"

#include <QImage>
#include <QWidget>

#include <gtest/gtest.h>

#include <algorithm>
#include <ostream>
#include <string>

/// How a reference picture is taken: pixels a point, palette and reading direction.
struct Look {
    double ratio;
    bool dark;
    bool rightToLeft;

    /// The name of the piece's reference.
    QString name(const char *piece) const
    {
        return QString("%1-%2-%3-%4x")
            .arg(piece, dark ? "dark" : "light", rightToLeft ? "rtl" : "ltr")
            .arg(ratio);
    }

    QPalette palette() const
    {
        return dark ? InterfaceEnvironment::darkPalette() : InterfaceEnvironment::lightPalette();
    }

    Qt::LayoutDirection direction() const { return rightToLeft ? Qt::RightToLeft : Qt::LeftToRight; }

    /// A picture of the view, which has palette and direction already, on `ground`.
    QImage pictureOf(QWidget &view, const QColor &ground = Qt::transparent,
                     QWidget::RenderFlags flags = QWidget::DrawWindowBackground | QWidget::DrawChildren) const
    {
        QImage image(view.size() * ratio, QImage::Format_ARGB32_Premultiplied);
        image.setDevicePixelRatio(ratio);
        image.fill(ground);
        view.render(&image, {}, {}, flags);
        return image;
    }

    /// For pieces that look the same in either direction.
    static auto fromLeftToRight()
    {
        return testing::Values(Look{1, false, false}, Look{2, false, false}, Look{1, true, false},
                               Look{2, true, false});
    }

    static auto all()
    {
        return testing::Values(Look{1, false, false}, Look{2, false, false}, Look{1, true, false},
                               Look{2, true, false}, Look{1, false, true}, Look{2, false, true},
                               Look{1, true, true}, Look{2, true, true});
    }

    /// Scales at which points lie on no whole pixels, in some of the looks.
    static auto atScalesBetween()
    {
        return testing::Values(Look{1.25, false, false}, Look{1.5, false, false}, Look{1.25, true, true},
                               Look{1.5, true, true});
    }

    /// The last part of a test's name.
    static std::string ofTest(const testing::TestParamInfo<Look> &look)
    {
        std::string name = look.param.name("Look").toStdString();
        std::ranges::replace_if(
            name, [](char letter) { return letter == '-' || letter == '.'; }, '_');
        return name;
    }
};

inline void PrintTo(const Look &look, std::ostream *out)
{
    *out << qPrintable(look.name("look"));
}
