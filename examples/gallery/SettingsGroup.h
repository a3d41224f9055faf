// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/plugin/WDPlugIn.h"

#include <QGroupBox>

/// The configuration view of a plug-in, loaded as a configuration interface loads it, and the parameters that
/// it makes.
class SettingsGroup : public QGroupBox
{
    Q_OBJECT
public:
    /// `bundlePath` is the plug-in's; without one that works, the group says so.
    explicit SettingsGroup(const QString &bundlePath, QWidget *parent = nullptr);
    ~SettingsGroup() override;

private:
    std::shared_ptr<WDPrefPanePlugIn> m_plugIn;
};
