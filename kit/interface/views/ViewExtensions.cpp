// SPDX-License-Identifier: MIT
#include "DozelyKit/interface/views/ViewExtensions.h"

#include <QGroupBox>

#include <typeinfo>

namespace
{
QWidget *firstSubview(const QWidget *container)
{
    for (QObject *child : container->children()) {
        auto *view = qobject_cast<QWidget *>(child);
        if (view && !view->isWindow())
            return view;
    }
    return nullptr;
}
} // namespace

void zandorSoftwaresExtensions::clear(QWidget *view)
{
    // Not the meta-object's name: a derived class without meta-object of its own has that of its base.
    if (!view || (typeid(*view) != typeid(QWidget) && typeid(*view) != typeid(QGroupBox)))
        return;
    while (QWidget *subview = firstSubview(view))
        subview->setParent(nullptr); // which hides it until it stands in another view
}
