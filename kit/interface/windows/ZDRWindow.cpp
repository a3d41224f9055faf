// SPDX-License-Identifier: MIT
#include "DozelyKit/interface/windows/ZDRWindow.h"

#include "DozelyKit/interface/views/TimedAnimation_p.h"
#include "DozelyKit/interface/windows/ScreenCoordinates_p.h"
#include "DozelyKit/interface/windows/WindowResize_p.h"
#include "DozelyKit/interface/windows/WindowSystem_p.h"

#include <QGraphicsOpacityEffect>
#include <QGuiApplication>
#include <QLayout>
#include <QPainter>
#include <QPointer>
#include <QShowEvent>
#include <QWindow>

using namespace dozely;

using std::chrono::milliseconds;

struct ZDRWindow::Private {
    QPointer<QWidget> contentView;
    TimedAnimation fading;
    TimedAnimation resizing;
    QPointer<QGraphicsOpacityEffect> veil; // where the window system has no opacity for a whole window
    double alpha = 1;
    int level = floatingLevel;
    bool blends = true; // as it was when the window was shown last
    bool joinsAllDesktops = true;
    bool hidesOnDeactivate = false;
    bool hasShadow = true;
    bool isHiddenByDeactivation = false;
};

ZDRWindow::ZDRWindow(QWidget *parent)
    : QWidget(parent, Qt::Window | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint),
      d(std::make_unique<Private>())
{
    setAttribute(Qt::WA_TranslucentBackground);
    connect(qGuiApp, &QGuiApplication::applicationStateChanged, this, &ZDRWindow::followApplicationState);
}

ZDRWindow::~ZDRWindow() = default;

std::shared_ptr<ZDRWindow> ZDRWindow::initWithContentRect(const QRectF &contentRect, quint64, quint64, bool)
{
    auto window = std::make_shared<ZDRWindow>();
    window->setFrame(contentRect, false);
    return window;
}

void ZDRWindow::awakeFromNib()
{
    setHidesOnDeactivate(false);
    setHasShadow(false);
    auto *const laidOut = findChild<QWidget *>(QString(), Qt::FindDirectChildrenOnly);
    if (!contentView() && !layout() && laidOut)
        setContentView(laidOut);
}

void ZDRWindow::makeKeyAndOrderFront(QObject *)
{
    applyAlpha(0);
    show();
    raise();
    if (!testAttribute(Qt::WA_ShowWithoutActivating))
        activateWindow();
    fade(1, [] {});
}

void ZDRWindow::performClose(QObject *sender)
{
    fade(0, [this, sender = QPointer<QObject>(sender)] { closeAfterFading(sender); });
}

void ZDRWindow::closeAfterFading(QObject *)
{
    close();
}

void ZDRWindow::fade(double target, const std::function<void()> &completion)
{
    const auto held = weak_from_this().lock(); // perhaps by the former fade alone
    const double from = d->alpha;
    d->fading.start(
        fadeTime, [this, from, target](double progress) { applyAlpha(from + (target - from) * progress); },
        [this, target, completion, held] {
            applyAlpha(target);
            completion();
        });
}

std::chrono::duration<double> ZDRWindow::animationResizeTime(const QRectF &newFrame) const
{
    return WindowResize::standardTime(frame(), newFrame) / 2;
}

void ZDRWindow::resizeToUsingStyle(const QSizeF &size, qint32 style)
{
    setFrame(WindowResize::resized(frame(), size, style), true, true);
}

QRectF ZDRWindow::frame() const
{
    return ScreenCoordinates::toKit(QRectF(geometry()));
}

void ZDRWindow::setFrame(const QRectF &frame, bool display)
{
    const auto held = weak_from_this().lock();
    d->resizing.stop();
    setGeometry(ScreenCoordinates::toQt(frame));
    if (display)
        repaint();
}

void ZDRWindow::setFrame(const QRectF &frame, bool display, bool animate)
{
    if (!animate) {
        setFrame(frame, display);
        return;
    }
    const auto held = weak_from_this().lock();
    const QRectF from = this->frame();
    const auto time = std::chrono::ceil<milliseconds>(animationResizeTime(frame));
    d->resizing.start(
        time,
        [this, from, frame](double progress) {
            setGeometry(ScreenCoordinates::toQt(WindowResize::between(from, frame, progress)));
        },
        [this, frame, display, held] { setFrame(frame, display); });
}

QWidget *ZDRWindow::contentView() const
{
    return d->contentView;
}

void ZDRWindow::setContentView(QWidget *view)
{
    if (view == d->contentView)
        return;
    if (d->contentView) {
        d->contentView->hide();
        d->contentView->setParent(nullptr);
    }
    d->contentView = view;
    if (!view)
        return;
    view->setParent(this);
    view->setGeometry(rect());
    view->show();
}

double ZDRWindow::alphaValue() const
{
    return d->alpha;
}

void ZDRWindow::setAlphaValue(double alpha)
{
    const auto held = weak_from_this().lock();
    d->fading.stop();
    applyAlpha(alpha);
}

void ZDRWindow::applyAlpha(double alpha)
{
    d->alpha = qBound(0.0, alpha, 1.0);
    if (WindowSystem::hasWindowOpacity()) {
        setWindowOpacity(d->alpha);
        WindowSystem::flush(); // nothing else may have to be said for long
        return;
    }
    if (!d->veil && d->alpha == 1)
        return;
    if (!d->veil) {
        d->veil = new QGraphicsOpacityEffect;
        setGraphicsEffect(d->veil); // which takes it over
    }
    d->veil->setOpacity(d->alpha);
    d->veil->setEnabled(d->alpha < 1); // it costs time whenever anything in the window is painted
}

quint64 ZDRWindow::styleMask() const
{
    return 0;
}

bool ZDRWindow::isOpaque() const
{
    return !d->blends;
}

QColor ZDRWindow::backgroundColor() const
{
    // What a bezel is on white: what was made for the bezel can be read on it.
    return d->blends ? QColor(Qt::transparent) : QColor(77, 77, 77);
}

int ZDRWindow::level() const
{
    return d->level;
}

void ZDRWindow::setLevel(int level)
{
    d->level = level;
    const bool floats = level > normalLevel;
    if (floats == windowFlags().testFlag(Qt::WindowStaysOnTopHint))
        return;
    const bool wasVisible = isVisible();
    const bool isToReturn = d->isHiddenByDeactivation;
    setWindowFlag(Qt::WindowStaysOnTopHint, floats); // hides it
    setVisible(wasVisible);
    d->isHiddenByDeactivation = isToReturn;
}

bool ZDRWindow::joinsAllDesktops() const
{
    return d->joinsAllDesktops;
}

void ZDRWindow::setJoinsAllDesktops(bool joins)
{
    d->joinsAllDesktops = joins;
}

bool ZDRWindow::hidesOnDeactivate() const
{
    return d->hidesOnDeactivate;
}

void ZDRWindow::setHidesOnDeactivate(bool hides)
{
    d->hidesOnDeactivate = hides;
}

bool ZDRWindow::hasShadow() const
{
    return d->hasShadow;
}

void ZDRWindow::setHasShadow(bool hasShadow)
{
    d->hasShadow = hasShadow;
    if (windowHandle())
        WindowSystem::setHasShadow(windowHandle(), hasShadow);
}

void ZDRWindow::followApplicationState(Qt::ApplicationState state)
{
    if (state == Qt::ApplicationActive) {
        if (d->isHiddenByDeactivation)
            show();
    } else if (d->hidesOnDeactivate && isVisible()) {
        hide();
        d->isHiddenByDeactivation = true;
    }
}

void ZDRWindow::setVisible(bool visible)
{
    d->isHiddenByDeactivation = false;
    QWidget::setVisible(visible);
}

bool ZDRWindow::event(QEvent *event)
{
    const QPointer<ZDRWindow> held(this); // whoever hears of its closing may delete it
    const bool isKnown = QWidget::event(event);
    // A window that is hidden already is closed without being hidden.
    if (held && event->type() == QEvent::Close && event->isAccepted())
        d->isHiddenByDeactivation = false;
    return isKnown;
}

void ZDRWindow::paintEvent(QPaintEvent *)
{
    if (!d->blends)
        QPainter(this).fillRect(rect(), backgroundColor());
}

void ZDRWindow::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    if (d->contentView)
        d->contentView->setGeometry(rect());
}

void ZDRWindow::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    if (event->spontaneous())
        return;
    d->blends = WindowSystem::blendsWindows();
    WindowSystem::setJoinsAllDesktops(windowHandle(), d->joinsAllDesktops);
    WindowSystem::setHasShadow(windowHandle(), d->hasShadow);
}
