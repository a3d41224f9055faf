// SPDX-License-Identifier: MIT
#include "interface/ZDRBezelWindow.h"

#include "interface/ViewExtensions.h"
#include "interface/ZDRBezelView.h"

std::shared_ptr<ZDRBezelWindow> ZDRBezelWindow::initWithContentRect(const QRectF &contentRect, quint64,
                                                                    quint64, bool)
{
    auto window = std::make_shared<ZDRBezelWindow>();
    window->setFrame(contentRect, false);
    return window;
}

void ZDRBezelWindow::setContentView(QWidget *view)
{
    auto *bezel = qobject_cast<ZDRBezelView *>(contentView());
    if (!bezel) {
        bezel = new ZDRBezelView(this);
        bezel->resize(view ? view->size() : QSize());
        ZDRWindow::setContentView(bezel);
    }
    zandorSoftwaresExtensions::clear(bezel); // which leaves views of a class of their own alone
    if (view)
        bezel->fill(view);
}
