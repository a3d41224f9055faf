// SPDX-License-Identifier: MIT
// What it costs to draw the schedule list, beside Qt's own delegate; and how lists of very many rows open and
// scroll.
#include "Bench.h"

#include "DozelyKit/interface/cells/CellDelegate.h"
#include "DozelyKit/interface/cells/WDConfiguratorCell.h"
#include "DozelyKit/interface/lists/ZDRTableView.h"

#include <QAbstractTableModel>
#include <QApplication>
#include <QListView>
#include <QPainter>
#include <QScrollBar>
#include <QStandardItemModel>
#include <QStyledItemDelegate>
#include <QTableView>

#include <ctime>

using namespace dozely;

namespace
{
constexpr int manyRows = 100000;
constexpr int rowHeight = 30;
constexpr double openReach = 150; // ms
constexpr double frameReach = 16; // ms

using Milliseconds = std::chrono::duration<double, std::milli>;

/// Entries made up as they are asked for, as a list of stored schedules would.
class Schedules : public QAbstractTableModel
{
public:
    int rowCount(const QModelIndex &parent) const override { return parent.isValid() ? 0 : manyRows; }
    int columnCount(const QModelIndex &parent) const override { return parent.isValid() ? 0 : 3; }
    QVariant data(const QModelIndex &index, int role) const override
    {
        if (role == Qt::DisplayRole || role == Qt::UserRole)
            ++asked;
        if (role == Qt::DisplayRole)
            return QString("row %1").arg(index.row());
        if (role != Qt::UserRole)
            return {};
        return QVariantMap{
            {"Name", QString("Schedule %1").arg(index.row())},
            {"Time", QString("%1:%2").arg(index.row() / 60 % 24).arg(index.row() % 60, 2, 10, QChar('0'))},
            {"Action", QString("Run a program, the %1th").arg(index.row())},
            {"Startup", index.row() & 1},
            {"Wake Up", index.row() >> 1 & 1}};
    }

    mutable int asked = 0; // texts and entries: a frame that asks for none has not been drawn
};

CellDelegate *scheduleDelegate(QObject *parent)
{
    auto *delegate = new CellDelegate(std::make_shared<WDConfiguratorCell>(), parent);
    delegate->setValueRole(Qt::UserRole);
    delegate->setRowHeight(rowHeight);
    return delegate;
}

QJsonObject absolute(const QString &what, std::vector<double> values, double quantile, double reach)
{
    std::sort(values.begin(), values.end());
    const size_t at =
        std::min(values.size() - 1, static_cast<size_t>(quantile * static_cast<double>(values.size())));
    return {{"what", what},
            {"value", values[at]},
            {"unit", "ms"},
            {"reach", reach},
            {"detail", QString("%1 samples, from %2 to %3 ms")
                           .arg(values.size())
                           .arg(values.front(), 0, 'f', 1)
                           .arg(values.back(), 0, 'f', 1)}};
}

/// From making the view to its first frame; then each frame of a scroll through all of it, in turns a little
/// and far.
template<class View, class Prepare>
void openAndScroll(const QString &name, Prepare prepare, QJsonArray *absolutes)
{
    Schedules model;
    std::vector<double> openings;
    std::vector<double> frames; // processor time: other processes cannot make a frame slow
    std::vector<double> wallFrames;
    for (int round = 0; round < 5; ++round) {
        const auto begin = std::chrono::steady_clock::now();
        View view;
        prepare(view);
        view.setModel(&model);
        view.resize(400, 600);
        view.show();
        QCoreApplication::processEvents(); // lays out what the view put off, and draws
        view.repaint();
        openings.push_back(Milliseconds(std::chrono::steady_clock::now() - begin).count());

        QScrollBar *bar = view.verticalScrollBar();
        const int step = (bar->maximum() - bar->minimum()) / 200;
        int value = bar->minimum();
        for (int frame = 0; frame < 300; ++frame) {
            value += frame % 2 == 0 ? 1 + bar->singleStep() / 10 : step;
            model.asked = 0;
            const auto start = std::chrono::steady_clock::now();
            const std::clock_t processor = std::clock();
            bar->setValue(value);
            QCoreApplication::processEvents();
            view.viewport()->repaint();
            if (model.asked < 15)
                qFatal("a frame was not drawn");
            frames.push_back(static_cast<double>(std::clock() - processor) * 1000 / CLOCKS_PER_SEC);
            wallFrames.push_back(Milliseconds(std::chrono::steady_clock::now() - start).count());
        }
    }
    *absolutes += absolute(name + ": opens, median", openings, 0.5, openReach);
    *absolutes +=
        absolute(name + ": scrolls, slowest frame of 1,500 in processor time", frames, 1, frameReach);
    *absolutes += absolute(name + ": scrolls, 99 of 100 frames by the clock", wallFrames, 0.99, frameReach);
}
} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    QApplication::setStyle("Fusion");

    QImage image(400, rowHeight, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    QPainter painter(&image);
    QListView list; // says what style, font and palette there are
    QStyleOptionViewItem option;
    option.initFrom(&list);
    option.widget = &list;
    option.font = list.font();
    option.fontMetrics = QFontMetrics(list.font());
    option.state |= QStyle::State_Enabled;
    option.decorationSize = QSize(16, 16);

    QStandardItemModel items;
    auto *name = new QStandardItem(QIcon(":/DozelyKit/MixedDot.png"), "Schedule 1");
    items.appendRow({name, new QStandardItem("09:15"), new QStandardItem("Run a program, the 1th")});
    auto *entry = new QStandardItem;
    entry->setData(QVariantMap{{"Name", "Schedule 1"},
                               {"Time", "09:15"},
                               {"Action", "Run a program, the 1th"},
                               {"Startup", 1},
                               {"Wake Up", 1}},
                   Qt::UserRole);
    items.appendRow(entry);

    Bench bench;
    const CellDelegate *ours = scheduleDelegate(&list);
    bench.add("schedule row", [&] {
        option.rect = QRect(0, 0, 400, rowHeight);
        ours->paint(&painter, option, items.index(1, 0));
    });
    const QStyledItemDelegate qts;
    bench.add("Qt's delegate, three strings and an image", [&] {
        for (int column = 0; column < 3; ++column) {
            option.rect = QRect(column * 133, 0, 133, rowHeight);
            qts.paint(&painter, option, items.index(0, column));
        }
    });
    bench.run(20, 200);
    painter.end();

    QJsonArray absolutes;
    openAndScroll<QListView>(
        "schedule list of 100,000 rows",
        [](QListView &view) {
            view.setUniformItemSizes(true);
            view.setItemDelegate(scheduleDelegate(&view));
        },
        &absolutes);
    openAndScroll<ZDRTableView>(
        "table of 100,000 rows", [](ZDRTableView &) {}, &absolutes);
    bench.print("painting one row", {{"schedule row", "Qt's delegate, three strings and an image", 2.0}},
                absolutes);
    return 0;
}
