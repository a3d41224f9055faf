// SPDX-License-Identifier: MIT
#include "DozelyKit/interface/controls/IndicatorAccessible_p.h"

#include "DozelyKit/interface/controls/ZDRProgressIndicator.h"
#include "DozelyKit/interface/drawing/LibraryText_p.h"

#include <algorithm>

namespace dozely
{

namespace
{
QAccessibleInterface *make(const QString &className, QObject *object)
{
    auto *const indicator = qobject_cast<ZDRProgressIndicator *>(object);
    if (!indicator || className != ZDRProgressIndicator::staticMetaObject.className())
        return nullptr;
    return new IndicatorAccessible(indicator);
}
} // namespace

IndicatorAccessible::IndicatorAccessible(ZDRProgressIndicator *indicator)
    : QAccessibleWidget(indicator, QAccessible::ProgressBar)
{
}

void IndicatorAccessible::install()
{
    static const bool isInstalled = [] {
        QAccessible::installFactory(make);
        return true;
    }();
    Q_UNUSED(isInstalled)
}

void *IndicatorAccessible::interface_cast(QAccessible::InterfaceType type)
{
    if (type == QAccessible::ValueInterface)
        return static_cast<QAccessibleValueInterface *>(this);
    return QAccessibleWidget::interface_cast(type);
}

QAccessible::State IndicatorAccessible::state() const
{
    QAccessible::State state = QAccessibleWidget::state();
    state.readOnly = true;
    if (indicator().maxValue() <= 0)
        state.invisible = true;
    return state;
}

QString IndicatorAccessible::text(QAccessible::Text text) const
{
    if (text == QAccessible::Value)
        return QLocale().toString(indicator().percentage()) + QLocale().percent();
    const QString own = QAccessibleWidget::text(text);
    return text == QAccessible::Name && own.isEmpty() ? libraryText("Time left") : own;
}

QVariant IndicatorAccessible::currentValue() const
{
    const double most = maximumValue().toDouble();
    return std::clamp(static_cast<double>(indicator().floatValue()), 0.0, most);
}

QVariant IndicatorAccessible::maximumValue() const
{
    return std::max(0.0, static_cast<double>(indicator().maxValue()));
}

QVariant IndicatorAccessible::minimumStepSize() const
{
    return static_cast<double>(indicator().intervalValue());
}

const ZDRProgressIndicator &IndicatorAccessible::indicator() const
{
    return *static_cast<const ZDRProgressIndicator *>(object());
}

} // namespace dozely
