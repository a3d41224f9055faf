// SPDX-License-Identifier: MIT
#include "DozelyKit/interface/windows/ZDRBezelWindow.h"

#include "DozelyKit/interface/views/ViewExtensions.h"
#include "DozelyKit/interface/windows/ZDRBezelView.h"

#include <QLayout>

namespace
{
/// The views that lie directly in the window, the lowest first.
QList<QWidget *> viewsIn(const QWidget *window)
{
    QList<QWidget *> views = window->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly);
    views.removeIf([](const QWidget *view) { return view->isWindow(); });
    return views;
}

/// Puts the window's layout and views, where they are, on one view as large as the window.
QWidget *gathered(QWidget *window)
{
    if (window->layout() && !window->testAttribute(Qt::WA_Resized))
        window->adjustSize(); // as the layout would have done when the window is shown
    auto *const all = new QWidget(window);
    all->resize(window->size());
    if (window->layout())
        all->setLayout(window->layout());
    for (QWidget *const view : viewsIn(window)) {
        if (view == all)
            continue;
        const bool isToShow = !view->isHidden() || !view->testAttribute(Qt::WA_WState_ExplicitShowHide);
        view->setParent(all);
        if (isToShow)
            view->show();
    }
    return all;
}
} // namespace

std::shared_ptr<ZDRBezelWindow> ZDRBezelWindow::initWithContentRect(const QRectF &contentRect, quint64,
                                                                    quint64, bool)
{
    auto window = std::make_shared<ZDRBezelWindow>();
    window->setFrame(contentRect, false);
    return window;
}

void ZDRBezelWindow::awakeFromNib()
{
    const QList<QWidget *> views = viewsIn(this);
    if (!contentView()) {
        if (views.size() == 1 && !layout() && qobject_cast<ZDRBezelView *>(views.first()))
            ZDRWindow::setContentView(views.first());
        else if (views.size() > 1 || layout())
            setContentView(gathered(this));
        else
            setContentView(views.value(0));
    }
    ZDRWindow::awakeFromNib();
}

void ZDRBezelWindow::setContentView(QWidget *view)
{
    auto *bezel = qobject_cast<ZDRBezelView *>(contentView());
    if (!bezel) {
        bezel = new ZDRBezelView;
        bezel->resize(view ? view->size() : QSize());
        ZDRWindow::setContentView(bezel);
    }
    zandorSoftwaresExtensions::clear(bezel); // which leaves views of a class of their own alone
    if (view)
        bezel->fill(view);
}
