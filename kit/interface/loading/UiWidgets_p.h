// SPDX-License-Identifier: MIT
#pragma once

#include <QUiLoader>

#include <memory>

namespace dozely
{

/// Makes the widgets of interface files: Qt's, and those of this library. None from plug-ins of Qt's
/// Designer.
class UiWidgets : public QUiLoader
{
public:
    /// For the main thread.
    static std::unique_ptr<UiWidgets> make();

    QWidget *createWidget(const QString &className, QWidget *parent, const QString &name) override;

private:
    UiWidgets() = default;
};

} // namespace dozely
