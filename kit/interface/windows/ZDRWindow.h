// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/interface/Export.h"

#include <QRectF>
#include <QWidget>

#include <chrono>
#include <memory>

/// A borderless, transparent window that floats above others on every virtual desktop, fades in when it is
/// shown and out when it is closed, and can be resized about a chosen point.
///
/// Frames are rectangles on the screen in device-independent pixels, their y growing upwards from the lower
/// edge of the main screen. Without a compositor nothing can be transparent: the window is opaque then, in
/// all else the same. On Wayland a program cannot place its windows and the window appears where the
/// compositor wants it, on one desktop; see docs/interface.md.
///
/// THREADING: the main thread. OWNERSHIP: a top-level window belongs to who made it. One that a
/// std::shared_ptr holds stays alive until a fade is complete.
class DOZELYINTERFACE_EXPORT ZDRWindow : public QWidget, public std::enable_shared_from_this<ZDRWindow>
{
    Q_OBJECT
    Q_PROPERTY(double alphaValue READ alphaValue WRITE setAlphaValue)
    Q_PROPERTY(bool hidesOnDeactivate READ hidesOnDeactivate WRITE setHidesOnDeactivate)
    Q_PROPERTY(bool hasShadow READ hasShadow WRITE setHasShadow)
public:
    /// The level at which a window floats above ordinary ones.
    static constexpr int floatingLevel = 3;
    static constexpr int normalLevel = 0;

    /// How long fading in and out takes.
    static constexpr std::chrono::milliseconds fadeTime{200};

    /// What stays in place in resizeToUsingStyle; any other number changes nothing.
    enum ResizeStyle : qint32 { AboutCenter = 0, AboutTopRight = 1, AboutBottomLeft = 2 };

    explicit ZDRWindow(QWidget *parent = nullptr);
    ~ZDRWindow() override;

    /// A window with that frame. It is borderless whatever the style mask says; backing and deferring mean
    /// nothing here.
    static std::shared_ptr<ZDRWindow> initWithContentRect(const QRectF &contentRect, quint64 styleMask,
                                                          quint64 backing, bool defer);

    /// For a window from an interface file, called by the loader: it stays while its application is inactive
    /// and has no shadow. A child widget that the file put into it becomes its content view, unless it has a
    /// layout.
    Q_INVOKABLE virtual void awakeFromNib();

    /// Shows the window in front of others, fading in from nothing, and makes it the one that gets the keys,
    /// unless Qt::WA_ShowWithoutActivating is set. `sender` is who asked, if anybody.
    Q_INVOKABLE void makeKeyAndOrderFront(QObject *sender = nullptr);

    /// Fades out, then closes the window (closeAfterFading). Showing it before that is done keeps it open.
    Q_INVOKABLE void performClose(QObject *sender = nullptr);

    /// Half of what the platform takes for a change of the frame: that is 0.2 s for each 150 points of the
    /// largest change of an edge or a size.
    std::chrono::duration<double> animationResizeTime(const QRectF &newFrame) const;

    /// Changes the size with an animation, keeping a point in place (ResizeStyle).
    void resizeToUsingStyle(const QSizeF &size, qint32 style);

    /// Where the window is now, while an animation goes on too.
    QRectF frame() const;

    /// Sets the frame, rounded to whole points, and paints the window at once when `display`. An animation of
    /// the frame that goes on is dropped.
    void setFrame(const QRectF &frame, bool display);

    /// Changes the frame in animationResizeTime and returns at once; `animate` false sets it.
    void setFrame(const QRectF &frame, bool display, bool animate);

    /// The view that fills the window; null without.
    QWidget *contentView() const;

    /// Replaces the view that fills the window, which takes the new one over. The former one is hidden and
    /// given free, never deleted.
    virtual void setContentView(QWidget *view);

    /// From 0, invisible, to 1. Stops a fade.
    double alphaValue() const;
    void setAlphaValue(double alpha);

    /// 0: borderless.
    quint64 styleMask() const;

    /// False, unless nothing on this screen can be translucent.
    bool isOpaque() const;

    /// Transparent, unless nothing on this screen can be: then the colour that stands for it.
    QColor backgroundColor() const;

    int level() const;
    /// Above normalLevel the window floats above others.
    void setLevel(int level);

    /// True: the window appears on every virtual desktop.
    bool joinsAllDesktops() const;
    void setJoinsAllDesktops(bool joins);

    /// Whether the window disappears while its application is not the active one; false unless set. Whoever
    /// hides, closes or shows it meanwhile decides: it does not come back by itself then.
    bool hidesOnDeactivate() const;
    void setHidesOnDeactivate(bool hides);

    /// Whether a compositor should draw a shadow around it; true unless set.
    bool hasShadow() const;
    void setHasShadow(bool hasShadow);

    /// That of QWidget; what is said here holds also when the application becomes the active one again.
    void setVisible(bool visible) override;

protected:
    /// What closing means once the window has faded: QWidget::close. `sender` is null when it was deleted
    /// meanwhile.
    virtual void closeAfterFading(QObject *sender);

    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    void fade(double target, const std::function<void()> &completion);
    void applyAlpha(double alpha);
    void followApplicationState(Qt::ApplicationState state);

    struct Private;
    std::unique_ptr<Private> d;
};
