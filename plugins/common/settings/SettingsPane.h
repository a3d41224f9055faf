// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/plugin/WDPlugIn.h"
#include "plugins/common/settings/Remark.h"
#include "plugins/common/settings/UsualOptions.h"

/// What the configuration sides of our bundles have in common: the usual rows at the end of the view, unless
/// the host has places of its own for them (PlugInProperty::hostHasUsualOptions), and at its head a remark
/// where the action cannot be done here. The view is a form (QFormLayout), laid out in an interface file.
///
/// THREADING: the main thread. BLOCKING: never; what has to be asked of others is asked from the event loop.
class SettingsPane : public WDPrefPanePlugIn
{
    Q_OBJECT
public:
    /// Loads the view, adds the usual rows and has it asked what is missing here.
    void loadNib() override;

    /// Without a view, or without parameters to write to, nothing happens.
    /// @{
    void fillSetupInterfaceFromParameters() override;
    void fillParametersFromSetupInterface() override;
    /// @}

    /// No alert; if there is one, a minute ahead.
    QVariantMap defaultParameters() const override;

protected:
    /// Shows the action's own parameters. There is a view.
    virtual void showOptions(const QVariantMap &parameters);

    /// Writes what the view shows of them. What it cannot show, and what the user did not change, stays.
    /// There is a view.
    virtual void writeOptions(QVariantMap &parameters);

    /// Begins to ask whether the action can be done here; the answers lead to tellMissing. There is a view.
    virtual void askWhatIsMissing();

    /// Says at the head of the view why the action cannot be done here; an empty sentence takes that back.
    void tellMissing(const QString &sentence);

    /// The bundle's text in the user's language.
    QString localized(const QString &text) const;

private:
    QPointer<UsualOptions> m_usual; // these belong to the view
    QPointer<Remark> m_remark;
};
