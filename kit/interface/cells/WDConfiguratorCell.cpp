// SPDX-License-Identifier: MIT
#include "DozelyKit/interface/cells/WDConfiguratorCell.h"

#include "DozelyKit/core/foundation/IntegerValue.h"
#include "DozelyKit/interface/drawing/ImageExtensions.h"
#include "DozelyKit/interface/drawing/LaidOutText_p.h"
#include "DozelyKit/interface/drawing/LibraryText_p.h"
#include "DozelyKit/interface/drawing/NSFont.h"
#include "DozelyKit/interface/drawing/NSGraphicsContext.h"
#include "DozelyKit/interface/views/ViewPalette_p.h"

using namespace dozely;

namespace
{
// Points from the upper left corner of the frame.
constexpr double dotLeft = 3;
constexpr double dotBottom = 22;
constexpr double nameLeft = 25;
constexpr double rightMargin = 5;
constexpr double actionTop = 14;
constexpr double actionLeft = 30; // of the span in which the action is centred
constexpr double lines = 2;

/// How much farther down the second line is than at the usual size of the font.
double moreLeading()
{
    return actionTop * (NSFont::smallSystemFontSize() / NSFont::usualSmallSystemFontSize - 1);
}

bool isDictionary(const QVariant &value)
{
    return value.typeId() == QMetaType::QVariantMap || value.typeId() == QMetaType::QVariantHash;
}
} // namespace

struct WDConfiguratorCell::Private {
    QString name;
    QString time;
    QString action;
    bool startup = false;
    bool wakeup = false;

    QString dot() const
    {
        if (startup)
            return wakeup ? "MixedDot.png" : "StartupDot.png";
        return wakeup ? "WakeUpDot.png" : "NoneDot.png";
    }
};

WDConfiguratorCell::WDConfiguratorCell() : d(std::make_unique<Private>()) {}

WDConfiguratorCell::~WDConfiguratorCell() = default;

std::shared_ptr<NSTextFieldCell> WDConfiguratorCell::copy() const
{
    auto cell = std::make_shared<WDConfiguratorCell>();
    copyStateTo(*cell);
    *cell->d = *d;
    return cell;
}

void WDConfiguratorCell::setObjectValue(const QVariant &value)
{
    if (isDictionary(value)) {
        const QVariantMap entry = value.toMap();
        d->name = entry.value("Name").toString();
        d->time = entry.value("Time").toString();
        d->action = entry.value("Action").toString();
        d->startup = longIntegerValue(entry.value("Startup")) == 1;
        d->wakeup = longIntegerValue(entry.value("Wake Up")) == 1;
    }
    NSTextFieldCell::setObjectValue(value);
}

double WDConfiguratorCell::rowHeight() const
{
    return lines * (actionTop + moreLeading());
}

QString WDConfiguratorCell::accessibilityLabel() const
{
    QStringList parts{d->name, d->time, d->action};
    if (d->wakeup)
        parts += libraryText("wakes the computer");
    if (d->startup)
        parts += libraryText("starts the computer");
    parts.removeAll(QString());
    return parts.join(", ");
}

void WDConfiguratorCell::drawInteriorWithFrameInView(const QRectF &frame, QWidget *view)
{
    const NSGraphicsContext *context = NSGraphicsContext::currentContext();
    if (!context || !objectValue().isValid())
        return;
    // Of the four images, only the one that is drawn can be seen to be loaded.
    context->compositeToPoint(
        zandorSoftwaresExtensions::imageNamedInBundleOfInstance(d->dot(), this, context->devicePixelRatio()),
        {frame.x() + dotLeft, frame.y() + dotBottom + moreLeading()});

    const QColor colour = isEnabled() ? ViewPalette::textColor(view) : ViewPalette::grayColor(view);
    const QFont font = NSFont::userFontOfSize(NSFont::smallSystemFontSize());
    const double right = frame.width() - rightMargin;

    LaidOutText(d->name, font).drawAtPoint(*context, {frame.x() + nameLeft, frame.y()}, colour);
    const LaidOutText time(d->time, font);
    time.drawAtPoint(*context, {frame.x() + right - time.size().width(), frame.y()}, colour);
    const LaidOutText action(d->action, font);
    const double middle = (right - actionLeft) * 0.5 + actionLeft;
    action.drawAtPoint(
        *context, {frame.x() + middle - action.size().width() * 0.5, frame.y() + actionTop + moreLeading()},
        colour);
}

QString WDConfiguratorCell::name() const
{
    return d->name;
}

QString WDConfiguratorCell::time() const
{
    return d->time;
}

QString WDConfiguratorCell::action() const
{
    return d->action;
}

bool WDConfiguratorCell::startup() const
{
    return d->startup;
}

bool WDConfiguratorCell::wakeup() const
{
    return d->wakeup;
}
