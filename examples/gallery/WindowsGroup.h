// SPDX-License-Identifier: MIT
#pragma once

#include <QGroupBox>

#include <memory>

class AlertWindowPresenter;
class ZDRBezelWindow;

/// Opens a bezel window to drag and resize, and alerts as the agent shows them.
class WindowsGroup : public QGroupBox
{
    Q_OBJECT
public:
    explicit WindowsGroup(QWidget *parent = nullptr);
    ~WindowsGroup() override;

    /// A picture of an alert over a piece of a desktop.
    QImage pictureOfAlert() const;

private:
    void showBezel();
    void showAlert();

    std::shared_ptr<ZDRBezelWindow> m_bezel;
    std::unique_ptr<AlertWindowPresenter> m_alerts;
};
