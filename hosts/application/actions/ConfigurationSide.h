// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Result.h"
#include "DozelyKit/plugin/WDPlugIn.h"
#include "hosts/common/plugins/PlugInLoader.h"

#include <QObject>
#include <QTimer>

#include <memory>

/// The configuration side of one bundle: its plug-in object and the view that it lends. Nothing that the
/// plug-in throws gets out: it is an error, and the side is not asked again.
///
/// THREADING: the main thread. BLOCKING: as long as the plug-in's own code takes.
class ConfigurationSide : public QObject
{
    Q_OBJECT
public:
    /// Loads the bundle at `path`, its view not yet. `loader` is for configuration sides and outlives it.
    static dozely::Result<std::unique_ptr<ConfigurationSide>> make(PlugInLoader &loader, const QString &path);
    ~ConfigurationSide() override;

    /// The view, loaded at the first call; it belongs to the plug-in.
    dozely::Result<QWidget *> view();

    /// Shows the parameters in the view.
    dozely::Result<void> show(const QVariantMap &parameters);

    /// The parameters as the view has them now.
    dozely::Result<QVariantMap> read();

    /// What a new schedule of this action begins with, waking and switching on among it.
    dozely::Result<QVariantMap> defaults();

    /// The action in a few words ("Run backup").
    dozely::Result<QString> describe(const QVariantMap &parameters);

    /// Something came out of the view's code elsewhere, in an event: the side is not asked again.
    void giveUp(const QString &why);
    QString failure() const { return m_failure; } ///< Empty as long as all is well.

Q_SIGNALS:
    /// Something in the view is perhaps another value now. Told from the event loop, once for many.
    void edited();

private:
    ConfigurationSide(PlugInLoader &loader, std::shared_ptr<NSBundle> bundle);
    dozely::Result<std::shared_ptr<WDPrefPanePlugIn>> newPlugIn();
    dozely::Result<void> guarded(const std::function<void()> &operation);
    void follow(QWidget *view);
    void followOne(QWidget *widget);
    Q_INVOKABLE void noteEdit();

    PlugInLoader &m_loader;
    const std::shared_ptr<NSBundle> m_bundle;
    std::shared_ptr<WDPrefPanePlugIn> m_plugIn;    // whose view is shown
    std::shared_ptr<WDPrefPanePlugIn> m_describer; // which is asked of schedules that are not
    QString m_failure;
    bool m_isLoaded = false;
    bool m_isFilling = false;
    QTimer m_edited;
};
