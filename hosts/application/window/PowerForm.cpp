// SPDX-License-Identifier: MIT
#include "hosts/application/window/PowerForm.h"

#include "DozelyKit/core/foundation/IntegerValue.h"
#include "DozelyKit/plugin/Names.h"
#include "hosts/application/when/WheelGuard.h"
#include "hosts/application/window/FormRows.h"

#include <QHBoxLayout>
#include <QSignalBlocker>

#include <algorithm>

using namespace dozely;

namespace
{
constexpr int secondsInMinute = 60;
constexpr int usualMinutes = 1;
constexpr int mostMinutes = 24 * 60;

/// As the plug-in classes take it (WDPlugIn::timeBeforeSelfAnticipation): no alert at -1, or less than 1.
bool warns(const QVariantMap &parameters)
{
    return integerValue(parameters.value(ParameterKey::alert)) != 0 &&
           integerValue(parameters.value(ParameterKey::delayBeforeAlert)) >= 1;
}
} // namespace

PowerForm::PowerForm(QWidget *parent)
    : QWidget(parent),
      m_form(FormRows::make()),
      m_warns(new QCheckBox(tr("&Show an alert before"))),
      m_minutes(new QSpinBox),
      m_wakes(new QCheckBox(tr("&Wake the computer from sleep"))),
      m_switchesOn(new QCheckBox(tr("Switch the &computer on")))
{
    setLayout(m_form);
    m_warns->setObjectName("warns");
    m_minutes->setObjectName("minutes");
    m_wakes->setObjectName("wakes");
    m_switchesOn->setObjectName("switchesOn");
    WheelGuard::guard(m_minutes);
    m_minutes->setRange(1, mostMinutes);
    m_minutes->setAccessibleName(tr("Minutes between alert and action"));
    auto *const alert = new QWidget;
    auto *const row = new QHBoxLayout(alert);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(m_warns);
    row->addWidget(m_minutes);
    row->addStretch();
    FormRows::add(*m_form, tr("Warning:"), alert);
    FormRows::add(*m_form, tr("Power:"), m_wakes);
    m_wakes->setAccessibleName({}); // its own text says more
    FormRows::addBeside(*m_form, m_switchesOn);

    connect(m_warns, &QCheckBox::toggled, this, [this](bool isOn) {
        m_minutes->setEnabled(isOn);
        tellAlert();
    });
    connect(m_minutes, &QSpinBox::valueChanged, this, &PowerForm::tellAlert);
    connect(m_wakes, &QCheckBox::toggled, this, [this](bool isOn) {
        Q_EMIT edited({{ParameterKey::needsWakeUp, isOn ? 1 : 0}});
    });
    connect(m_switchesOn, &QCheckBox::toggled, this, [this](bool isOn) {
        Q_EMIT edited({{ParameterKey::needsStartup, isOn ? 1 : 0}});
    });
}

void PowerForm::show(const QVariantMap &parameters)
{
    const QSignalBlocker blockers[]{QSignalBlocker(m_warns), QSignalBlocker(m_minutes),
                                    QSignalBlocker(m_wakes), QSignalBlocker(m_switchesOn)};
    const int seconds = integerValue(parameters.value(ParameterKey::delayBeforeAlert));
    const int minutes =
        seconds >= 1 ? std::min((seconds - 1) / secondsInMinute + 1, mostMinutes) : usualMinutes;
    m_warns->setChecked(warns(parameters));
    m_minutes->setEnabled(m_warns->isChecked());
    m_minutes->setValue(minutes);
    m_minutes->setSuffix(tr(" minutes", "behind a number, with a blank before it", minutes));
    m_wakes->setChecked(longIntegerValue(parameters.value(ParameterKey::needsWakeUp)) == 1);
    m_switchesOn->setChecked(longIntegerValue(parameters.value(ParameterKey::needsStartup)) == 1);
}

void PowerForm::tellAlert()
{
    QVariantMap changes{{ParameterKey::alert, m_warns->isChecked() ? 1 : 0}};
    if (m_warns->isChecked())
        changes.insert(ParameterKey::delayBeforeAlert, m_minutes->value() * secondsInMinute);
    Q_EMIT edited(changes);
}
