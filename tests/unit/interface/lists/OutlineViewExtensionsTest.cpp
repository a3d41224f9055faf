// SPDX-License-Identifier: MIT
#include "DozelyKit/interface/lists/OutlineViewExtensions.h"

#include <QStandardItemModel>
#include <QTest>
#include <QTreeView>

#include <gmock/gmock.h>

using namespace zandorSoftwaresExtensions;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{
/// a (a1, a2), b (b1), c
class Outline : public testing::Test
{
protected:
    void SetUp() override
    {
        for (const auto &[name, children] :
             {std::pair<QString, QStringList>("a", {"a1", "a2"}),
              std::pair<QString, QStringList>("b", {"b1"}), std::pair<QString, QStringList>("c", {})}) {
            auto *item = new QStandardItem(name);
            for (const QString &child : children)
                item->appendRow({new QStandardItem(child), new QStandardItem("second column")});
            m_model.appendRow({item, new QStandardItem("second column")});
        }
        m_view.setModel(&m_model);
        m_view.setSelectionMode(QAbstractItemView::ExtendedSelection);
        m_view.resize(200, 200);
        m_view.expand(index("a"));
    }

    QModelIndex index(const QString &name) const
    {
        return m_model
            .match(m_model.index(0, 0), Qt::DisplayRole, name, 1, Qt::MatchExactly | Qt::MatchRecursive)
            .value(0);
    }

    std::vector<QString> selected() const
    {
        std::vector<QString> names;
        for (const QModelIndex &item : allSelectedItems(&m_view))
            names.push_back(item.data().toString());
        return names;
    }

    void select(const QStringList &names, bool extending)
    {
        QModelIndexList items;
        for (const QString &name : names)
            items += index(name);
        selectItemsByExtendingSelection(&m_view, items, extending);
    }

    QStandardItemModel m_model;
    QTreeView m_view;
};

TEST_F(Outline, NothingIsSelectedAtFirst)
{
    EXPECT_FALSE(selectedItem(&m_view).isValid());
    EXPECT_THAT(selected(), IsEmpty());
}

TEST_F(Outline, WithoutExtendingOnlyTheLastItemStaysSelected)
{
    select({"b"}, true);
    select({"a", "c", "a1"}, false);
    EXPECT_THAT(selected(), ElementsAre("a1"));
    EXPECT_EQ(selectedItem(&m_view), index("a1"));
}

TEST_F(Outline, ExtendingAddsAllToWhatWasSelected)
{
    select({"b"}, true);
    select({"c", "a2", "a"}, true);
    EXPECT_THAT(selected(), ElementsAre("a", "a2", "b", "c")); // from top to bottom
    EXPECT_EQ(selectedItem(&m_view), index("a"));              // the last one selected
}

TEST_F(Outline, AnItemSelectedBeforeStaysSelectedWhenItIsSelectedAgain)
{
    select({"a", "c"}, true);
    select({"a"}, true);
    EXPECT_THAT(selected(), ElementsAre("a", "c"));
}

TEST_F(Outline, WithoutExtendingAnEmptyListDeselectsEverything)
{
    select({"a", "c"}, true);
    select({}, false);
    EXPECT_THAT(selected(), IsEmpty());
    EXPECT_FALSE(selectedItem(&m_view).isValid());
}

TEST_F(Outline, ExtendingByAnEmptyListChangesNothing)
{
    select({"a", "c"}, true);
    select({}, true);
    EXPECT_THAT(selected(), ElementsAre("a", "c"));
}

TEST_F(Outline, ItemsWithoutARowAreSkipped)
{
    QStandardItemModel other;
    other.appendRow(new QStandardItem("elsewhere"));
    m_view.setRowHidden(2, {}, true); // c
    selectItemsByExtendingSelection(
        &m_view, {QModelIndex(), index("b1"), other.index(0, 0), index("c"), index("a2")}, true);
    EXPECT_THAT(selected(), ElementsAre("a2")); // b is closed
    select({"a", "b1"}, false);
    EXPECT_THAT(selected(), ElementsAre("a")); // the last one found
    EXPECT_FALSE(m_view.isExpanded(index("b")));
}

TEST_F(Outline, AnItemBelowAClosedParentIsNotAmongTheSelectedRows)
{
    select({"a1", "c"}, true);
    m_view.collapse(index("a"));
    EXPECT_THAT(selected(), ElementsAre("c"));
}

TEST_F(Outline, AnIndexOfAnotherColumnStandsForItsRow)
{
    selectItemsByExtendingSelection(&m_view, {index("b").siblingAtColumn(1)}, false);
    EXPECT_THAT(selected(), ElementsAre("b"));
    EXPECT_TRUE(m_view.selectionModel()->isSelected(index("b").siblingAtColumn(1))); // the whole row
}

TEST_F(Outline, WhatTheUserSelectedIsTold)
{
    m_view.show();
    const auto click = [&](const QString &name, Qt::KeyboardModifiers modifiers) {
        QTest::mouseClick(m_view.viewport(), Qt::LeftButton, modifiers,
                          m_view.visualRect(index(name)).center());
    };
    click("c", {});
    click("a1", Qt::ControlModifier);
    EXPECT_THAT(selected(), ElementsAre("a1", "c"));
    EXPECT_EQ(selectedItem(&m_view), index("a1"));
    click("a1", Qt::ControlModifier); // deselected, but still the current one
    EXPECT_EQ(selectedItem(&m_view), index("c"));
    click("a2", Qt::ControlModifier);
    click("b", Qt::ControlModifier);
    click("b", Qt::ControlModifier);
    EXPECT_THAT(selected(), ElementsAre("a2", "c"));
    EXPECT_EQ(selectedItem(&m_view), index("c")) << "the last of several";
}

TEST_F(Outline, SelectingDoesNotScroll)
{
    for (int i = 0; i < 200; ++i)
        m_model.appendRow(new QStandardItem(QString("n%1").arg(i)));
    m_view.show();
    const int before = m_view.indexAt({5, 5}).row();
    select({"n150"}, false);
    EXPECT_EQ(m_view.indexAt({5, 5}).row(), before);
    EXPECT_TRUE(m_view.hasAutoScroll());
}

TEST_F(Outline, ASubtreeShownAsARootHasRowsOfItsOwn)
{
    m_view.setRootIndex(index("a"));
    select({"a", "a1", "b"}, true);
    EXPECT_THAT(selected(), ElementsAre("a1"));
}

TEST_F(Outline, WithoutAModelThereIsNothing)
{
    QTreeView empty;
    EXPECT_FALSE(selectedItem(&empty).isValid());
    EXPECT_THAT(allSelectedItems(&empty), IsEmpty());
    selectItemsByExtendingSelection(&empty, {index("a")}, false);
}
} // namespace
