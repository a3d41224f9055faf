// SPDX-License-Identifier: MIT
// How the controls look, beside their reference pictures.
#include "DozelyKit/interface/controls/ZDRButton.h"
#include "DozelyKit/interface/controls/ZDRProgressIndicator.h"
#include "DozelyKit/interface/windows/ZDRBezelView.h"
#include "support/BaselinePicture.h"
#include "support/InterfaceEnvironment.h"

#include <QApplication>
#include <QPainter>

#include <gmock/gmock.h>

namespace
{
/// Buttons in all their states and pies of several values on a bezel.
class Panel
{
public:
    explicit Panel(Qt::LayoutDirection direction)
    {
        bezel.setLayoutDirection(direction);
        bezel.resize(330, 190);
        addButtons("Annuler", "\x1b", 20);
        addButtons("D\u00e9marrer", "\r", 170);
        int x = 20;
        for (const float value : {0.0F, 0.25F, 0.6F, 1.0F, -0.1F}) {
            auto *const pie = new ZDRProgressIndicator(&bezel);
            pie->setGeometry(x, 136, 44, 44);
            pie->setMaxValue(1);
            pie->setFloatValue(value);
            x += 60;
        }
    }

    QImage picture(double ratio, const QColor &ground)
    {
        QImage image((QSizeF(bezel.size()) * ratio).toSize(), QImage::Format_ARGB32_Premultiplied);
        image.setDevicePixelRatio(ratio);
        image.fill(ground);
        QPainter painter(&image);
        bezel.render(&painter, {}, {}, QWidget::DrawChildren);
        return image;
    }

private:
    void addButtons(const QString &title, const QString &key, int x)
    {
        int y = 14;
        for (const quint64 state :
             {ZDRButton::Normal, ZDRButton::Hovered, ZDRButton::Pressed, ZDRButton::State(9)}) {
            auto *const button = new ZDRButton(title, &bezel);
            button->setKeyEquivalent(key);
            button->setGeometry(x, y, 130, 24);
            button->awakeFromNib();
            QCoreApplication::processEvents();
            button->setButtonState(state);
            y += 30;
        }
    }

    ZDRBezelView bezel;
};
} // namespace

TEST(ControlsPicture, OfControlsOnABezelLooksAsBefore)
{
    Panel panel(Qt::LeftToRight);
    for (const double ratio : {1.0, 1.25, 1.5, 2.0})
        EXPECT_TRUE(
            looksLikeBaseline(panel.picture(ratio, "#e8e8e8"), QString("controls-light-%1x").arg(ratio)));
    QApplication::setPalette(InterfaceEnvironment::darkPalette());
    for (const double ratio : {1.0, 1.25, 1.5, 2.0})
        EXPECT_TRUE(
            looksLikeBaseline(panel.picture(ratio, "#303a50"), QString("controls-dark-%1x").arg(ratio)));
}

TEST(ControlsPicture, LooksTheSameFromRightToLeft)
{
    // Titles are centred and the pie turns counter-clockwise everywhere.
    Panel panel(Qt::RightToLeft);
    EXPECT_TRUE(looksLikeBaseline(panel.picture(1, "#e8e8e8"), "controls-light-1x"));
}
