// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/dbus/BusConnection.h"
#include "plugins/common/settings/SettingsPane.h"

#include <QCheckBox>

/// The configuration side of an action that the machine or the desktop does for us, such as sleeping or
/// locking the screen: it has no parameter of its own but "Force", where its view has that.
///
/// What the view says of this machine it learns by its bundle's Info dictionary: "WDAsksLoginManager", a
/// string, the question that the login manager answers by "yes", "no" or "na" ("CanSuspend"; empty when it
/// need but be there), and "WDAsksSessionBus", a list of names, one of which the session's bus is to know.
class SystemPrefPanePlugIn : public SettingsPane
{
    Q_OBJECT
    Q_PROPERTY(QCheckBox *force MEMBER m_force)
public:
    /// The bundle's text "Action".
    QString actionString() const override;

    /// With an alert where nobody can go on working afterwards ("WDAlertsByDefault" in the Info dictionary).
    QVariantMap defaultParameters() const override;

protected:
    void showOptions(const QVariantMap &parameters) override;
    void writeOptions(QVariantMap &parameters) override;
    void askWhatIsMissing() override;

private:
    void askLoginManager(const QByteArray &question);
    void askSessionBus(const QStringList &names);
    void tell(const QString &text);
    bool isForced(const QVariantMap &parameters) const;

    QCheckBox *m_force = nullptr; // the view's, which need not have it
    std::unique_ptr<dozely::BusConnection> m_system;
    std::unique_ptr<dozely::BusConnection> m_session;
};
