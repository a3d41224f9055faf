// SPDX-License-Identifier: MIT
#include "ListsGroup.h"

#include "DozelyKit/core/bundles/NSBundle.h"
#include "DozelyKit/interface/cells/CellDelegate.h"
#include "DozelyKit/interface/cells/CellTextModel.h"
#include "DozelyKit/interface/cells/NSTextFieldCell.h"
#include "DozelyKit/interface/cells/WDConfiguratorCell.h"
#include "DozelyKit/interface/cells/ZDRImageTextCell.h"
#include "DozelyKit/interface/drawing/ImageExtensions.h"
#include "DozelyKit/interface/lists/OutlineViewExtensions.h"
#include "DozelyKit/interface/lists/ZDRTableView.h"

#include <QBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QListView>
#include <QPushButton>
#include <QStandardItemModel>
#include <QTreeView>

namespace
{
QStandardItem *schedule(const QString &name, const QString &time, const QString &action, bool startup,
                        bool wakeUp)
{
    auto *const item = new QStandardItem;
    item->setData(QVariantMap{{"Name", name},
                              {"Time", time},
                              {"Action", action},
                              {"Startup", startup ? 1 : 0},
                              {"Wake Up", wakeUp ? 1 : 0}},
                  Qt::UserRole);
    item->setEditable(false);
    return item;
}
} // namespace

ListsGroup::ListsGroup(QWidget *parent) : QGroupBox("Lists", parent)
{
    auto *const column = new QVBoxLayout(this);
    column->addWidget(makeSchedules(), 3);
    column->addWidget(makeOutline(), 2);
    column->addWidget(makeTable(), 2);
}

QWidget *ListsGroup::makeSchedules()
{
    auto *const list = new QListView;
    auto *const model = new QStandardItemModel(list);
    model->appendRow(schedule("Morning music", "07:00", "Run mpv", true, true));
    model->appendRow(schedule("Evening backup", "19:30", "Run rsync", false, true));
    model->appendRow(schedule("Lights out", "22:45", "Run a script", true, false));
    model->appendRow(schedule("Sleep", "23:30", "Sleep", false, false));
    model->appendRow(schedule("Not today", "23:59", "Switch off", false, false));
    model->item(4)->setEnabled(false);
    auto *const delegate = new dozely::CellDelegate(std::make_shared<WDConfiguratorCell>(), list);
    delegate->setValueRole(Qt::UserRole);
    delegate->setRowHeight(32);
    auto *const told = new dozely::CellTextModel(*delegate, list);
    told->setSourceModel(model);
    list->setModel(told);
    list->setItemDelegate(delegate);
    list->setAlternatingRowColors(true);
    list->setCurrentIndex(told->index(1, 0));
    list->setAccessibleName("Schedules");
    list->setMinimumSize(230, 168);
    return list;
}

QWidget *ListsGroup::makeOutline()
{
    auto *const box = new QWidget;
    auto *const tree = new QTreeView;
    auto *const model = new QStandardItemModel(tree);
    for (const QString group : {"Programs", "Scripts"}) {
        auto *const parent = new QStandardItem(group);
        for (const QString number : {"one", "two"})
            parent->appendRow(new QStandardItem(group + ' ' + number));
        model->appendRow(parent);
    }
    tree->setModel(model);
    tree->setHeaderHidden(true);
    tree->setMinimumHeight(104);
    tree->setAccessibleName("Outline");
    tree->setSelectionMode(QAbstractItemView::ExtendedSelection);
    const auto cell = std::make_shared<ZDRImageTextCell>();
    cell->setImage(zandorSoftwaresExtensions::imageNamedInBundle("WakeUpDot.png", NSBundle::kitBundle().get(),
                                                                 devicePixelRatioF()));
    tree->setItemDelegate(new dozely::CellDelegate(cell, tree));
    tree->expandAll();

    auto *const told = new QLabel;
    const auto tell = [tree, told] {
        QStringList names;
        for (const QModelIndex &item : zandorSoftwaresExtensions::allSelectedItems(tree))
            names += item.data().toString();
        told->setText(names.isEmpty() ? "nothing selected" : names.join(", "));
    };
    connect(tree->selectionModel(), &QItemSelectionModel::selectionChanged, told, tell);
    auto *const both = new QPushButton("Select the first of each");
    connect(both, &QPushButton::clicked, tree, [tree, model] {
        zandorSoftwaresExtensions::selectItemsByExtendingSelection(
            tree, {model->item(0)->child(0)->index(), model->item(1)->child(0)->index()}, true);
    });
    both->click();

    auto *const column = new QVBoxLayout(box);
    column->setContentsMargins({});
    column->addWidget(tree);
    auto *const row = new QHBoxLayout;
    row->addWidget(told, 1);
    row->addWidget(both);
    column->addLayout(row);
    return box;
}

QWidget *ListsGroup::makeTable()
{
    auto *const table = new ZDRTableView;
    auto *const model = new QStandardItemModel(table);
    model->setHorizontalHeaderLabels({"Drag a row onto a file manager", "Kind"});
    for (const QString name : {"Evening backup", "Morning music"})
        model->appendRow({new QStandardItem(name), new QStandardItem("Schedule")});
    table->setModel(model);
    table->setItemDelegateForColumn(1, new dozely::CellDelegate(std::make_shared<NSTextFieldCell>(), table));
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->setAccessibleName("Table");
    table->verticalHeader()->hide();
    table->horizontalHeader()->setSectionResizeMode(0, QHeaderView::Stretch);
    table->setMinimumHeight(92);
    return table;
}
