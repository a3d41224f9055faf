// SPDX-License-Identifier: MIT
#include "plugins/common/settings/UsualOptions.h"

#include "DozelyKit/core/foundation/IntegerValue.h"
#include "DozelyKit/plugin/Names.h"
#include "DozelyKit/plugin/WDPlugIn.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QSpinBox>

#include <algorithm>
#include <limits>

using namespace dozely;

UsualOptions::UsualOptions(QFormLayout &form, const NSBundle *texts)
    : QObject(form.parentWidget()),
      m_alert(new QCheckBox),
      m_leadTime(new QSpinBox),
      m_wakeUp(new QCheckBox),
      m_startup(new QCheckBox)
{
    const auto localized = [texts](const QString &text) {
        return texts ? texts->localizedStringForKey(text, {}, "UsualOptions") : text;
    };
    m_alert->setObjectName("alert");
    m_alert->setText(localized("&Alert me before:"));
    m_leadTime->setObjectName("leadTime");
    m_leadTime->setAccessibleName(localized("Seconds between alert and action"));
    m_leadTime->setSuffix(localized(" s"));
    m_leadTime->setRange(1, std::numeric_limits<int>::max());
    m_leadTime->setValue(usualLeadTime);
    m_wakeUp->setObjectName("wakeUp");
    m_wakeUp->setText(localized("&Wake the computer from sleep"));
    m_startup->setObjectName("startup");
    m_startup->setText(localized("&Start the computer"));
    auto *const alertRow = new QHBoxLayout;
    alertRow->addWidget(m_alert);
    alertRow->addWidget(m_leadTime);
    alertRow->addStretch();
    const int row = form.rowCount();
    form.setLayout(row, QFormLayout::FieldRole, alertRow);
    form.setWidget(row + 1, QFormLayout::FieldRole, m_wakeUp);
    form.setWidget(row + 2, QFormLayout::FieldRole, m_startup);
    form.invalidate(); // setWidget and setLayout do not
    connect(m_alert, &QCheckBox::toggled, m_leadTime, &QSpinBox::setEnabled);
}

int UsualOptions::leadTimeToShow(const QVariantMap &parameters) const
{
    const QVariant lead = parameters.value(ParameterKey::delayBeforeAlert);
    // -1 is no time but says that there is no alert.
    const int seconds = lead.isValid() && integerValue(lead) != -1 ? integerValue(lead) : usualLeadTime;
    return std::max(seconds, m_leadTime->minimum());
}

void UsualOptions::show(const WDPrefPanePlugIn &plugIn)
{
    const auto own = plugIn.parameters();
    m_alert->setChecked(plugIn.timeBeforeSelfAnticipation() != -1);
    m_leadTime->setEnabled(m_alert->isChecked());
    m_leadTime->setValue(leadTimeToShow(own ? *own : QVariantMap()));
    m_wakeUp->setChecked(plugIn.needsWakeUp());
    m_startup->setChecked(plugIn.needsStartup());
}

void UsualOptions::write(WDPrefPanePlugIn &plugIn) const
{
    const auto own = plugIn.parameters();
    const bool wasToAlert = plugIn.timeBeforeSelfAnticipation() != -1;
    const bool isToAlert = m_alert->isChecked();
    // Somebody who asks for an alert gets the lead time that stands beside it.
    if (!own->contains(ParameterKey::delayBeforeAlert) || m_leadTime->value() != leadTimeToShow(*own) ||
        (isToAlert && !wasToAlert))
        own->insert(ParameterKey::delayBeforeAlert, m_leadTime->value());
    if (!own->contains(ParameterKey::alert) || isToAlert != wasToAlert)
        own->insert(ParameterKey::alert, isToAlert ? 1 : 0);
    plugIn.setNeedsWakeUp(m_wakeUp->isChecked());
    plugIn.setNeedsStartup(m_startup->isChecked());
}
