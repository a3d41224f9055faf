// SPDX-License-Identifier: MIT
#pragma once

#include <QGroupBox>

#include <memory>

class AlertWindowPresenter;
class ZDRBezelWindow;
class ZDRWindow;

/// Opens a bezel window to drag and to resize about each of the points that can stay in place, a plain window
/// whose content can be cleared, and alerts as the agent shows them.
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
    void showPlain();
    void showAlert();

    std::shared_ptr<ZDRBezelWindow> m_bezel;
    std::shared_ptr<ZDRWindow> m_plain;
    std::unique_ptr<AlertWindowPresenter> m_alerts;
};
