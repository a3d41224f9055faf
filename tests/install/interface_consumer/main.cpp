// SPDX-License-Identifier: MIT
// A program with windows of somebody who installed the library: draws one row of a schedule list.
#include "DozelyKit/interface/cells/WDConfiguratorCell.h"
#include "DozelyKit/interface/drawing/NSGraphicsContext.h"
#include "DozelyKit/interface/drawing/RectangleExtensions.h"

#include <QApplication>
#include <QPainter>

#include <cstdio>

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    std::printf("top: %g\n", topLeftOfRect(QRectF(10, 20, 100, 50)).y());

    QImage image(100, 28, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    const NSGraphicsContext context(&painter);
    WDConfiguratorCell cell;
    cell.setObjectValue(
        QVariantMap{{"Name", ""}, {"Time", ""}, {"Action", ""}, {"Startup", 1}, {"Wake Up", 0}});
    cell.drawInteriorWithFrameInView(QRectF(0, 0, 100, 28), nullptr);
    std::printf("dot: %s\n",
                qAlpha(image.pixel(8, 14)) == 255 ? "yes" : "no"); // an image of the library's own bundle
    return 0;
}
