// SPDX-License-Identifier: MIT
#include "DozelyKit/interface/windows/WindowResize_p.h"

#include "DozelyKit/interface/windows/ZDRWindow.h"

#include <algorithm>
#include <cmath>

namespace dozely
{

QRectF WindowResize::resized(const QRectF &frame, const QSizeF &size, qint32 style)
{
    const auto width = static_cast<float>(size.width());
    const auto height = static_cast<float>(size.height());
    const auto wider = static_cast<float>(width - frame.width());
    const auto higher = static_cast<float>(height - frame.height());
    switch (style) {
    case ZDRWindow::AboutCenter:
        return {frame.x() + wider * -0.5F, frame.y() + higher * -0.5F, width, height};
    case ZDRWindow::AboutTopRight:
        return {frame.x() - wider, frame.y() - higher, width, height};
    case ZDRWindow::AboutBottomLeft:
        return {frame.x(), frame.y(), width, height};
    default:
        return frame;
    }
}

std::chrono::duration<double> WindowResize::standardTime(const QRectF &from, const QRectF &to)
{
    constexpr double secondsAPoint = 0.2 / 150;
    const double change =
        std::max({std::abs(to.x() - from.x()), std::abs(to.y() - from.y()),
                  std::abs(to.width() - from.width()), std::abs(to.height() - from.height())});
    return std::chrono::duration<double>(change * secondsAPoint);
}

QRectF WindowResize::between(const QRectF &from, const QRectF &to, double progress)
{
    const auto on = [progress](double begin, double end) { return begin + (end - begin) * progress; };
    return {on(from.x(), to.x()), on(from.y(), to.y()), on(from.width(), to.width()),
            on(from.height(), to.height())};
}

} // namespace dozely
