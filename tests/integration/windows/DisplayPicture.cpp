// SPDX-License-Identifier: MIT
#include "DisplayPicture.h"

#include <cstdlib>

#include <xcb/xcb.h>

namespace
{
constexpr int shortestRun = 20; // the pointer's outline has pixels of many greys

bool isNearly(QRgb pixel, const QColor &color)
{
    return qAbs(qRed(pixel) - color.red()) <= 2 && qAbs(qGreen(pixel) - color.green()) <= 2 &&
           qAbs(qBlue(pixel) - color.blue()) <= 2;
}
} // namespace

struct DisplayPicture::Connection {
    xcb_connection_t *const display = xcb_connect(nullptr, nullptr);
    xcb_screen_t *const screen = xcb_setup_roots_iterator(xcb_get_setup(display)).data;
    ~Connection() { xcb_disconnect(display); }
};

DisplayPicture::DisplayPicture() : m_connection(std::make_unique<Connection>()) {}

DisplayPicture::~DisplayPicture() = default;

QImage DisplayPicture::taken() const
{
    const auto &[display, screen] = *m_connection;
    const auto cookie = xcb_get_image(display, XCB_IMAGE_FORMAT_Z_PIXMAP, screen->root, 0, 0,
                                      screen->width_in_pixels, screen->height_in_pixels, UINT32_MAX);
    xcb_get_image_reply_t *const answer = xcb_get_image_reply(display, cookie, nullptr);
    if (!answer)
        return {};
    const QImage image = QImage(xcb_get_image_data(answer), screen->width_in_pixels, screen->height_in_pixels,
                                QImage::Format_RGB32)
                             .copy();
    std::free(answer);
    return image;
}

QColor DisplayPicture::colorAt(const QPoint &point) const
{
    return taken().pixelColor(point);
}

QRect DisplayPicture::areaOf(const QColor &color) const
{
    QRect area;
    const QImage image = taken();
    for (int y = 0; y < image.height(); ++y) {
        const auto *const line = reinterpret_cast<const QRgb *>(image.constScanLine(y));
        int run = 0;
        for (int x = 0; x <= image.width(); ++x) {
            if (x < image.width() && isNearly(line[x], color)) {
                ++run;
                continue;
            }
            if (run >= shortestRun)
                area |= QRect(x - run, y, run, 1);
            run = 0;
        }
    }
    return area;
}
