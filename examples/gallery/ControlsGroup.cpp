// SPDX-License-Identifier: MIT
#include "ControlsGroup.h"

#include "DozelyKit/interface/controls/ZDRButton.h"
#include "DozelyKit/interface/controls/ZDRProgressIndicator.h"
#include "DozelyKit/interface/windows/ZDRBezelView.h"

#include <QBoxLayout>
#include <QSlider>
#include <QTimer>

using namespace std::chrono_literals;

namespace
{
/// Shows a state from the beginning; the pointer makes it what it is meant to be.
ZDRButton *button(const QString &title, const QString &key, quint64 state)
{
    auto *const made = new ZDRButton(title);
    made->setKeyEquivalent(key);
    made->resize(made->sizeHint());
    made->setFixedHeight(made->height());
    made->awakeFromNib();
    QTimer::singleShot(0, made, [made, state] { made->setButtonState(state); });
    return made;
}
} // namespace

ControlsGroup::ControlsGroup(QWidget *parent) : QGroupBox("Controls", parent)
{
    auto *const row = new QHBoxLayout(this);
    row->addWidget(makeButtons());
    row->addWidget(makePies());
}

ZDRBezelView *ControlsGroup::makeButtons()
{
    auto *const panel = new ZDRBezelView;
    auto *const column = new QVBoxLayout(panel);
    column->addWidget(button("Normal", {}, ZDRButton::Normal));
    column->addWidget(button("Hovered", {}, ZDRButton::Hovered));
    column->addWidget(button("Pressed", {}, ZDRButton::Pressed));
    column->addWidget(button("Return", "\r", ZDRButton::Normal));
    auto *const disabled = button("Disabled", {}, ZDRButton::Normal);
    disabled->setEnabled(false);
    column->addWidget(disabled);
    return panel;
}

ZDRBezelView *ControlsGroup::makePies()
{
    auto *const panel = new ZDRBezelView;
    auto *const pie = new ZDRProgressIndicator;
    pie->setMinimumSize(76, 76);
    pie->setMaxValue(10);
    pie->setFloatValue(6.5F);
    // Ten points are to last ten seconds; each step that is painted wakes the process several times.
    pie->setIntervalValue(0.5F);
    pie->setAnimationDelay(500ms);
    auto *const slider = new QSlider(Qt::Horizontal);
    slider->setRange(0, 100);
    slider->setValue(65);
    slider->setAccessibleName("Value of the pie");
    connect(slider, &QSlider::valueChanged, pie,
            [pie](int value) { pie->setFloatValue(static_cast<float>(value) / 10); });
    auto *const start = button("Count down", {}, ZDRButton::Normal);
    connect(start, &ZDRButton::clicked, pie, &ZDRProgressIndicator::startAnimation);
    auto *const column = new QVBoxLayout(panel);
    column->addWidget(pie, 1);
    column->addWidget(slider);
    column->addWidget(start);
    return panel;
}
