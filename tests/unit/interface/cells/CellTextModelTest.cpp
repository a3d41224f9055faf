// SPDX-License-Identifier: MIT
#include "DozelyKit/interface/cells/CellTextModel.h"

#include "DozelyKit/core/bundles/NSBundle.h"
#include "DozelyKit/interface/cells/CellDelegate.h"
#include "DozelyKit/interface/cells/WDConfiguratorCell.h"

#include <QAccessible>
#include <QListView>
#include <QStandardItemModel>

#include <gtest/gtest.h>

using namespace dozely;

namespace
{
class CellTextModelTest : public testing::Test
{
protected:
    CellTextModelTest()
    {
        UserLanguages::set({"en"});
        m_delegate.setValueRole(Qt::UserRole);
        m_list.setItemDelegate(&m_delegate);
    }
    QStandardItem *add(const QVariant &value)
    {
        auto *const item = new QStandardItem;
        item->setData(value, Qt::UserRole);
        m_model.appendRow(item);
        return item;
    }
    /// What a screen reader reads of the row.
    QString read(int row)
    {
        return QAccessible::queryAccessibleInterface(&m_list)->child(row)->text(QAccessible::Name);
    }
    void tell()
    {
        auto *const told = new CellTextModel(m_delegate, &m_list);
        told->setSourceModel(&m_model);
        m_list.setModel(told);
    }

    const QVariantMap m_music{
        {"Name", "Music"}, {"Time", "07:00"}, {"Action", "Run mpv"}, {"Startup", 1}, {"Wake Up", 1}};
    QStandardItemModel m_model;
    CellDelegate m_delegate{std::make_shared<WDConfiguratorCell>()};
    QListView m_list;
};

TEST_F(CellTextModelTest, ARowReadsNameTimeActionWakeAndStartup)
{
    add(m_music);
    add(QVariantMap{
        {"Name", "Backup"}, {"Time", "19:30"}, {"Action", "Run rsync"}, {"Startup", 0}, {"Wake Up", 1}});
    add(QVariantMap{{"Name", "Sleep"}, {"Time", "23:30"}, {"Startup", 2}});
    m_list.setModel(&m_model);
    EXPECT_EQ(read(0), "") << "without it nothing is said";
    tell();
    EXPECT_EQ(read(0), "Music, 07:00, Run mpv, wakes the computer, starts the computer");
    EXPECT_EQ(read(1), "Backup, 19:30, Run rsync, wakes the computer");
    EXPECT_EQ(read(2), "Sleep, 23:30");
}

TEST_F(CellTextModelTest, TheWordsAreInTheUsersLanguage)
{
    add(m_music);
    tell();
    QStringList texts{read(0)};
    for (const QString language : {"de", "fr", "es", "ja", "ar"}) {
        UserLanguages::set({language});
        texts += read(0);
    }
    EXPECT_EQ(texts.removeDuplicates(), 0);
    EXPECT_EQ(texts.at(1), "Music, 07:00, Run mpv, weckt den Computer auf, schaltet den Computer ein");
}

TEST_F(CellTextModelTest, WhatSaysSomethingItselfGoesOnSayingIt)
{
    add(m_music)->setData("Every morning", Qt::AccessibleTextRole);
    add(m_music)->setText("A text");
    add({});
    tell();
    EXPECT_EQ(read(0), "Every morning");
    EXPECT_EQ(read(1), "A text");
    EXPECT_EQ(read(2), "");
    EXPECT_EQ(m_list.model()->index(0, 0).data(Qt::UserRole).toMap(), m_music) << "all else is as below";
}

TEST_F(CellTextModelTest, FollowsTheModelBelow)
{
    QStandardItem *const item = add(m_music);
    tell();
    item->setData(QVariantMap{{"Name", "Silence"}}, Qt::UserRole);
    EXPECT_EQ(read(0), "Silence");
    EXPECT_EQ(std::static_pointer_cast<WDConfiguratorCell>(m_delegate.cell())->name(), "")
        << "the cell that draws is left alone";
}
} // namespace
