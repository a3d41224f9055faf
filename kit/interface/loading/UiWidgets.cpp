// SPDX-License-Identifier: MIT
#include "DozelyKit/interface/loading/UiWidgets_p.h"

#include "DozelyKit/interface/controls/ZDRButton.h"
#include "DozelyKit/interface/controls/ZDRProgressIndicator.h"
#include "DozelyKit/interface/lists/ZDRTableView.h"
#include "DozelyKit/interface/windows/ZDRBezelView.h"
#include "DozelyKit/interface/windows/ZDRBezelWindow.h"

#include <QCoreApplication>

namespace dozely
{

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

std::unique_ptr<UiWidgets> UiWidgets::make()
{
    // While it is made it loads Designer's plug-ins from all of these: code from wherever an environment
    // variable says, and milliseconds of a window's start.
    const QStringList paths = QCoreApplication::libraryPaths();
    QCoreApplication::setLibraryPaths({});
    std::unique_ptr<UiWidgets> widgets(new UiWidgets);
    QCoreApplication::setLibraryPaths(paths);
    return widgets;
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

} // namespace dozely
