// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/interface/windows/ZDRWindow.h"

/// A ZDRWindow whose content lies on a ZDRBezelView, by which the user moves and resizes it.
class DOZELYINTERFACE_EXPORT ZDRBezelWindow : public ZDRWindow
{
    Q_OBJECT
public:
    using ZDRWindow::ZDRWindow;

    /// As that of ZDRWindow.
    static std::shared_ptr<ZDRBezelWindow> initWithContentRect(const QRectF &contentRect, quint64 styleMask,
                                                               quint64 backing, bool defer);

    /// As that of ZDRWindow, but all that the file put into the window comes to lie on the bezel view: a
    /// single widget as the content view; several of them, or a layout, on a plain one, which becomes that. A
    /// ZDRBezelView that is alone in the window stays its bezel view.
    void awakeFromNib() override;

    /// Lays the view on the window's bezel view, as large as that is, above whatever lies there already:
    /// views given before stay, and one that is given again comes to the top. The bezel view is made when the
    /// content view is none; null only makes it. The window takes the view over.
    void setContentView(QWidget *view) override;
};
