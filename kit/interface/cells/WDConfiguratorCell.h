// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/interface/cells/NSTextFieldCell.h"

/// Draws one schedule of the schedule list on two lines: a dot that tells whether the schedule wakes the
/// computer or powers it on, its name, its time, and below them its action.
///
/// The object value is the entry, a dictionary: "Name", "Time" and "Action" are texts, drawn as they are;
/// "Startup" and "Wake Up" are true for exactly 1. Texts that do not fit run on over each other. Lines are 14
/// points apart, more in proportion where the small system font is larger than usual; the height of the frame
/// itself is not looked at.
class DOZELYINTERFACE_EXPORT WDConfiguratorCell : public NSTextFieldCell
{
    Q_OBJECT
public:
    WDConfiguratorCell();
    ~WDConfiguratorCell() override;

    std::shared_ptr<NSTextFieldCell> copy() const override;

    /// Takes over the fields of a dictionary, a missing text as none. Any other value leaves the fields as
    /// they were and only becomes the object value.
    void setObjectValue(const QVariant &value) override;

    /// 28 points at the usual size of the small system font, in proportion where that is larger.
    double rowHeight() const override;

    /// Name, time and action, and in the user's language whether the computer is woken and powered on; what
    /// is empty is left out.
    QString accessibilityLabel() const override;

    /// Draws the fields in a context whose y points down; nothing without an object value.
    void drawInteriorWithFrameInView(const QRectF &frame, QWidget *view) override;

    /// The fields as they were taken from the last dictionary.
    /// @{
    QString name() const;
    QString time() const;
    QString action() const;
    bool startup() const;
    bool wakeup() const;
    /// @}

private:
    struct Private;
    std::unique_ptr<Private> d;
};
