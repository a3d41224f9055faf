// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QVariantMap>

class NSBundle;
class QCheckBox;
class QFormLayout;
class QSpinBox;
class WDPrefPanePlugIn;

/// The rows that every action has in a host without places of its own for them: the alert with its lead time,
/// waking, and switching on.
///
/// THREADING: the main thread. OWNERSHIP: the form's view.
class UsualOptions : public QObject
{
    Q_OBJECT
public:
    /// Adds the rows at the end of a view's form. Their texts are those of the table "UsualOptions".
    UsualOptions(QFormLayout &form, const NSBundle *texts);

    /// Shows the plug-in's parameters.
    void show(const WDPrefPanePlugIn &plugIn);

    /// Writes what the rows say into the plug-in's parameters. A lead time that the row cannot show, such as
    /// one of no seconds, stays as it is until the user changes what stands in its place.
    void write(WDPrefPanePlugIn &plugIn) const;

    /// In seconds: what stands beside an alert that nobody has set yet.
    static constexpr int usualLeadTime = 60;

private:
    int leadTimeToShow(const QVariantMap &parameters) const;

    QCheckBox *m_alert;
    QSpinBox *m_leadTime; // in seconds
    QCheckBox *m_wakeUp;
    QCheckBox *m_startup;
};
