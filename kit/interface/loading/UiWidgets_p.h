// SPDX-License-Identifier: MIT
#pragma once

#include <QUiLoader>

namespace dozely
{

/// Makes the widgets of interface files: Qt's, and those of this library. None from plug-ins of Qt's
/// Designer.
class UiWidgets : public QUiLoader
{
public:
    UiWidgets();
    QWidget *createWidget(const QString &className, QWidget *parent, const QString &name) override;
};

} // namespace dozely
