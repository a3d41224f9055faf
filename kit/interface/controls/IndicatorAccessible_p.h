// SPDX-License-Identifier: MIT
#pragma once

#include <QAccessibleWidget>

class ZDRProgressIndicator;

namespace dozely
{

/// A progress indicator as a screen reader sees it: a progress bar from 0 to the greatest value.
///
/// THREADING: the main thread. OWNERSHIP: Qt's.
class IndicatorAccessible : public QAccessibleWidget, public QAccessibleValueInterface
{
public:
    explicit IndicatorAccessible(ZDRProgressIndicator *indicator);

    /// From now on Qt asks for one whenever it meets an indicator.
    static void install();

    void *interface_cast(QAccessible::InterfaceType type) override;
    QAccessible::State state() const override;

    /// The name that the indicator was given, else "Time left" in the user's language; the value in per cent.
    QString text(QAccessible::Text text) const override;

    QVariant currentValue() const override; ///< Held to the scale.
    void setCurrentValue(const QVariant &) override {}
    QVariant maximumValue() const override;
    QVariant minimumValue() const override { return 0.0; }
    QVariant minimumStepSize() const override;

private:
    const ZDRProgressIndicator &indicator() const;
};

} // namespace dozely
