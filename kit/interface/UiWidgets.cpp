// SPDX-License-Identifier: MIT
#include "interface/UiWidgets_p.h"

#include "interface/ZDRBezelView.h"
#include "interface/ZDRBezelWindow.h"
#include "interface/ZDRButton.h"
#include "interface/ZDRProgressIndicator.h"
#include "interface/ZDRTableView.h"

namespace
{
using Maker = QWidget *(*)(QWidget *parent);

template<class Widget>
QWidget *make(QWidget *parent)
{
    return new Widget(parent);
}

const QHash<QString, Maker> &makers()
{
    static const QHash<QString, Maker> table{
        {"ZDRBezelView", make<ZDRBezelView>}, {"ZDRBezelWindow", make<ZDRBezelWindow>},
        {"ZDRButton", make<ZDRButton>},       {"ZDRProgressIndicator", make<ZDRProgressIndicator>},
        {"ZDRTableView", make<ZDRTableView>}, {"ZDRWindow", make<ZDRWindow>},
    };
    return table;
}
} // namespace

UiWidgets::UiWidgets()
{
    clearPluginPaths(); // code from wherever an environment variable says
}

QWidget *UiWidgets::createWidget(const QString &className, QWidget *parent, const QString &name)
{
    const Maker maker = makers().value(className);
    if (!maker)
        return QUiLoader::createWidget(className, parent, name);
    QWidget *const widget = maker(parent);
    widget->setObjectName(name);
    return widget;
}
