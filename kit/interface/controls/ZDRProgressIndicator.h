// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/interface/Export.h"

#include <QRectF>
#include <QWidget>

#include <chrono>
#include <memory>

/// A round countdown indicator: a white sector, growing counter-clockwise from twelve o'clock with the value,
/// over a grey disc, and a dark hand at the sector's end. At 0 the disc is all grey and the hand points
/// straight up. A screen reader sees a progress bar, called "Time left" unless it was given a name.
///
/// THREADING: the main thread.
class DOZELYINTERFACE_EXPORT ZDRProgressIndicator : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(float maxValue READ maxValue WRITE setMaxValue)
    Q_PROPERTY(float floatValue READ floatValue WRITE setFloatValue)
    Q_PROPERTY(float intervalValue READ intervalValue WRITE setIntervalValue)
public:
    /// Hidden, since its greatest value is -1.
    explicit ZDRProgressIndicator(QWidget *parent = nullptr);

    /// At that place of its parent, in the parent's own coordinates.
    static std::unique_ptr<ZDRProgressIndicator> initWithFrame(const QRectF &frame);

    ~ZDRProgressIndicator() override;

    /// The full-scale value; while it is 0 or less nothing is drawn. Does not redraw.
    float maxValue() const;
    void setMaxValue(float value);

    /// What a step of the countdown takes off; 1 unless set.
    float intervalValue() const;
    void setIntervalValue(float value);

    /// The time between two steps; one second unless set. Counts from the next step on.
    std::chrono::duration<double> animationDelay() const;
    void setAnimationDelay(std::chrono::duration<double> delay);

    /// The value; setting it redraws. It is not held to the scale.
    float floatValue() const;
    void setFloatValue(float value);

    /// The value against the greatest one, from 0 to 100; 0 while nothing is drawn.
    int percentage() const;

    /// Begins to count down from the value, the first step after one delay. Stops by itself with the step
    /// that reaches 0 or goes below it; never, if a step takes nothing off.
    void startAnimation();

    /// Takes one step and, while the value stays above 0, arranges for the next.
    void animate();

    /// Whether a step is to come.
    bool isAnimating() const;

    QSize sizeHint() const override;

    /// Draws the pie as large as `rect` allows into the current NSGraphicsContext, whose y grows upwards.
    void drawRect(const QRectF &rect);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void waitForStep();

    std::unique_ptr<QObject> m_timerToRefresh; // context of the pending step: that dies with it
    float m_maxValue = -1;
    float m_value = -1;
    float m_intervalValue = 1;
    std::chrono::duration<double> m_animationDelay{1.0};
};
