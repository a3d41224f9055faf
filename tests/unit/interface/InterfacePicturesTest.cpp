// SPDX-License-Identifier: MIT
// How it looks, whole: each piece against its reference picture, at several scales, in both reading
// directions and both palettes. tests/baseline/README.md tells how references are made.
#include "DozelyKit/core/bundles/NSBundle.h"
#include "DozelyKit/interface/cells/CellDelegate.h"
#include "DozelyKit/interface/cells/WDConfiguratorCell.h"
#include "DozelyKit/interface/cells/ZDRImageTextCell.h"
#include "DozelyKit/interface/drawing/BezierPathExtensions.h"
#include "DozelyKit/interface/drawing/ImageExtensions.h"
#include "support/BaselinePicture.h"
#include "support/Canvas.h"
#include "support/Look.h"

#include <QListView>
#include <QStandardItemModel>
#include <QTreeView>

#include <gtest/gtest.h>

using namespace dozely;

namespace
{
class Pictures : public testing::TestWithParam<Look>
{
protected:
    static void prepare(QWidget &view)
    {
        view.setPalette(GetParam().palette());
        view.setLayoutDirection(GetParam().direction());
        view.show();
    }
};

TEST_P(Pictures, ScheduleList)
{
    const bool rtl = GetParam().rightToLeft;
    QStandardItemModel model;
    const auto add = [&](const QString &name, const QString &time, const QString &action, int startup,
                         int wakeUp) {
        auto *item = new QStandardItem;
        item->setData(QVariantMap{{"Name", name},
                                  {"Time", time},
                                  {"Action", action},
                                  {"Startup", startup},
                                  {"Wake Up", wakeUp}},
                      Qt::UserRole);
        model.appendRow(item);
        return item;
    };
    add(rtl ? "תאורת לילה" : "Night light", "22:30", rtl ? "הפעל תוכנית" : "Run a program", 0, 0);
    add(rtl ? "نسخ احتياطي" : "Backup", "03:00", rtl ? "تشغيل نص" : "Run a script", 1, 0);
    add(rtl ? "בוקר" : "Morning", "06:45", rtl ? "נגן" : "Play", 0, 1);
    add(rtl ? "قائمة" : "Both, selected", "07:00", rtl ? "كلاهما" : "Wakes and starts up", 1, 1);
    add(rtl ? "מושבת" : "Disabled", "08:00", rtl ? "ללא" : "None", 1, 0)->setEnabled(false);
    add("A name that runs on under its time", "23:59", "And an action that runs past its span on both sides",
        0, 1);

    QListView list;
    list.setModel(&model);
    auto *delegate = new CellDelegate(std::make_shared<WDConfiguratorCell>(), &list);
    delegate->setValueRole(Qt::UserRole);
    delegate->setRowHeight(30);
    list.setItemDelegate(delegate);
    list.setAlternatingRowColors(true);
    list.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    list.selectionModel()->select(model.index(3, 0), QItemSelectionModel::Select);
    list.resize(220, 190);
    prepare(list);
    EXPECT_TRUE(looksLikeBaseline(GetParam().pictureOf(list), GetParam().name("schedule-list")));
}

TEST_P(Pictures, OutlineOfImagesAndTexts)
{
    const bool rtl = GetParam().rightToLeft;
    QStandardItemModel model;
    auto *parent = new QStandardItem(rtl ? "פעולות" : "Actions");
    parent->appendRow(new QStandardItem(rtl ? "تشغيل برنامج" : "Run a program"));
    parent->appendRow(new QStandardItem(rtl ? "הפעל סקריפט" : "Run a script that has too long a name"));
    model.appendRow(parent);
    model.appendRow(new QStandardItem(rtl ? "أخرى" : "Others"));
    model.item(1)->setEnabled(false);

    QTreeView tree;
    tree.setHeaderHidden(true);
    tree.setModel(&model);
    const auto cell = std::make_shared<ZDRImageTextCell>();
    cell->setImage(zandorSoftwaresExtensions::imageNamedInBundle("MixedDot.png", NSBundle::kitBundle().get(),
                                                                 GetParam().ratio));
    auto *delegate = new CellDelegate(cell, &tree);
    delegate->setRowHeight(20);
    tree.setItemDelegate(delegate);
    tree.expandAll();
    tree.setCurrentIndex(model.index(1, 0, model.index(0, 0)));
    tree.resize(180, 110);
    prepare(tree);
    EXPECT_TRUE(looksLikeBaseline(GetParam().pictureOf(tree), GetParam().name("image-text-outline")));
}

/// These look the same in either reading direction.
class PlainPictures : public Pictures
{
};

TEST_P(PlainPictures, PathsAndFills)
{
    using namespace zandorSoftwaresExtensions;
    const QPalette palette = GetParam().palette();
    const QColor start = palette.color(QPalette::Highlight), end = palette.color(QPalette::Text);
    Canvas canvas(250, 130, GetParam().ratio, palette.color(QPalette::Base));
    const QImage &image = canvas.unflipped([&] {
        double x = 10;
        for (const quint32 mask : {0x1111U, 0x0100U, 0x1000U, 0x0011U}) {
            linearGradientFillWithStartColor(roundRectInRect(QRectF(x, 70, 50, 50), 15, mask), start, end);
            bilinearGradientFillWithStartColor(roundRectInRect(QRectF(x, 10, 50, 50), 25, mask), start,
                                               Qt::transparent);
            x += 60;
        }
    });
    EXPECT_TRUE(looksLikeBaseline(image, GetParam().name("paths-and-fills")));
}

INSTANTIATE_TEST_SUITE_P(Looks, PlainPictures, Look::fromLeftToRight(), Look::ofTest);
INSTANTIATE_TEST_SUITE_P(Looks, Pictures, Look::all(), Look::ofTest);
INSTANTIATE_TEST_SUITE_P(ScalesBetween, Pictures, Look::atScalesBetween(), Look::ofTest);
} // namespace
