// SPDX-License-Identifier: MIT
#include "DozelyKit/interface/lists/ZDRTableView.h"
#include "support/ScratchRoot.h"

#include <QDir>
#include <QHeaderView>
#include <QLineEdit>
#include <QMouseEvent>
#include <QSignalSpy>
#include <QStandardItemModel>
#include <QTest>
#include <QUrl>

#include <functional>
#include <memory>

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace
{
/// A table whose drags are written down instead of carried out.
class DraggingTable : public ZDRTableView
{
public:
    struct Drag {
        QStringList types;
        QRectF rect;
        QObject *source;
        bool slideBack;
        QPointF press;
        QEvent::Type event;
    };
    std::vector<Drag> drags;
    bool supported = true;
    std::function<void()> dropped; ///< While a drag is carried out.

    bool ofTheKit() const { return ZDRTableView::respondsToDragPromisedFiles(); }

protected:
    bool respondsToDragPromisedFiles() const override { return supported; }
    bool dragPromisedFilesOfTypesFromRect(const QStringList &types, const QRectF &rect, QObject *source,
                                          bool slideBack, const QMouseEvent *event) override
    {
        drags.push_back({types, rect, source, slideBack, event->position(), event->type()});
        if (const auto action = dropped) // which may be the end of this table
            action();
        return true;
    }
};

class TableTest : public testing::Test
{
protected:
    void SetUp() override
    {
        for (int row = 0; row < 5; ++row)
            m_model.appendRow({new QStandardItem(QString("row %1").arg(row)), new QStandardItem("x")});
        m_table.setModel(&m_model);
        m_table.setSelectionBehavior(QAbstractItemView::SelectRows);
        m_table.verticalHeader()->setDefaultSectionSize(20);
        m_table.verticalHeader()->setMinimumSectionSize(20);
        m_table.resize(300, 220);
        m_table.show();
    }

    QPoint in(int row) const { return m_table.visualRect(m_model.index(row, 0)).center(); }
    QPoint below() const { return in(4) + QPoint(0, 40); }

    void press(const QPoint &at, Qt::MouseButton button = Qt::LeftButton,
               Qt::KeyboardModifiers modifiers = {})
    {
        QTest::mousePress(m_table.viewport(), button, modifiers, at);
    }
    void release(const QPoint &at) { QTest::mouseRelease(m_table.viewport(), Qt::LeftButton, {}, at); }
    void moveTo(const QPoint &at, Qt::MouseButtons buttons = Qt::LeftButton)
    {
        QMouseEvent event(QEvent::MouseMove, at, m_table.viewport()->mapToGlobal(at), Qt::NoButton, buttons,
                          {});
        QCoreApplication::sendEvent(m_table.viewport(), &event);
    }

    std::vector<int> selectedRows() const
    {
        std::vector<int> rows;
        for (const QModelIndex &index : m_table.selectionModel()->selectedRows())
            rows.push_back(index.row());
        return rows;
    }

    ScratchRoot m_root;
    QStandardItemModel m_model;
    DraggingTable m_table;
};

TEST_F(TableTest, HasNoRowToRestoreAtFirst)
{
    EXPECT_EQ(m_table.restoreDragRow(), -1);
}

TEST_F(TableTest, APressAndAReleaseSelectTheRowAndDoNothingElse)
{
    QSignalSpy pressed(&m_table, &QTableView::pressed);
    QSignalSpy clicked(&m_table, &QTableView::clicked);
    press(in(2));
    EXPECT_EQ(m_table.restoreDragRow(), 2);
    EXPECT_THAT(selectedRows(), ElementsAre(2)); // at the press already
    release(in(2));
    EXPECT_THAT(selectedRows(), ElementsAre(2));
    EXPECT_THAT(m_table.drags, IsEmpty());
    EXPECT_EQ(pressed.count() + clicked.count(), 0); // the base class never saw it
    EXPECT_THAT(m_root.logLines(), IsEmpty());
}

TEST_F(TableTest, APressReplacesTheSelectionWhateverKeysAreHeld)
{
    for (const auto modifiers : {Qt::NoModifier, Qt::ControlModifier, Qt::ShiftModifier}) {
        press(in(0));
        release(in(0));
        press(in(3), Qt::LeftButton, modifiers);
        release(in(3));
        EXPECT_THAT(selectedRows(), ElementsAre(3)) << modifiers;
    }
}

TEST_F(TableTest, ADragPromisesTheRowAsAPropertyList)
{
    press(in(1));
    moveTo(in(1) + QPoint(1, 0));
    ASSERT_EQ(m_table.drags.size(), 1U);
    const auto &drag = m_table.drags[0];
    EXPECT_EQ(drag.types, QStringList("plist"));
    EXPECT_EQ(drag.rect, QRectF(in(1) + QPoint(-28, -10), QSizeF(16, 16)));
    EXPECT_EQ(drag.source, &m_table);
    EXPECT_FALSE(drag.slideBack);
    EXPECT_EQ(drag.press, QPointF(in(1))); // the press, not the movement
    EXPECT_EQ(drag.event, QEvent::MouseButtonPress);
    EXPECT_EQ(m_table.restoreDragRow(), 1);
    EXPECT_THAT(selectedRows(), ElementsAre(1));
}

TEST_F(TableTest, OnePressIsOneDrag)
{
    press(in(1));
    moveTo(in(1) + QPoint(5, 0));
    moveTo(in(3));
    release(in(3));
    EXPECT_EQ(m_table.drags.size(), 1U);
    EXPECT_THAT(selectedRows(), ElementsAre(1)); // no rubber band either
}

TEST_F(TableTest, AfterItsDragMovementsAreTheBaseClasssAgain)
{
    QSignalSpy entered(&m_table, &QTableView::entered);
    press(in(1));
    moveTo(in(1) + QPoint(5, 0));
    EXPECT_EQ(entered.count(), 0);
    moveTo(in(3));
    EXPECT_EQ(entered.count(), 1);
}

TEST_F(TableTest, MayBeDestroyedByItsDrag)
{
    auto table = std::make_unique<DraggingTable>();
    table->setModel(&m_model);
    table->resize(300, 220);
    table->show();
    table->dropped = [&table] { table.reset(); };
    QWidget *const viewport = table->viewport();
    const QPointF at = table->visualRect(m_model.index(1, 0)).center();
    const QPointF onScreen = viewport->mapToGlobal(at);
    QMouseEvent pressed(QEvent::MouseButtonPress, at, onScreen, Qt::LeftButton, Qt::LeftButton, {});
    QMouseEvent moved(QEvent::MouseMove, at, onScreen, Qt::NoButton, Qt::LeftButton, {});
    QCoreApplication::sendEvent(viewport, &pressed);
    QCoreApplication::sendEvent(viewport, &moved);
    EXPECT_EQ(table, nullptr);
}

TEST_F(TableTest, DraggingFromBelowTheLastRowLeavesTheSelectionAloneAndDragsNothing)
{
    press(in(1));
    release(in(1));
    press(below());
    EXPECT_EQ(m_table.restoreDragRow(), -1);
    moveTo(below() + QPoint(5, 5));
    moveTo(in(2));
    release(in(2));
    EXPECT_THAT(m_table.drags, IsEmpty());
    EXPECT_THAT(selectedRows(), ElementsAre(1));
}

TEST_F(TableTest, ARowThatIsGoneWhenTheDragBeginsIsNotDragged)
{
    press(in(4));
    m_model.removeRow(4);
    moveTo(in(2));
    EXPECT_THAT(m_table.drags, IsEmpty());
    EXPECT_EQ(m_table.restoreDragRow(), 4);
}

TEST_F(TableTest, AfterAReleaseMovementsDragNothing)
{
    m_table.setMouseTracking(true);
    press(in(1));
    release(in(1));
    moveTo(in(2), Qt::NoButton);
    moveTo(in(3), Qt::NoButton);
    EXPECT_THAT(m_table.drags, IsEmpty());
}

TEST_F(TableTest, AfterAReleaseMovementsAreTheBaseClasssAlsoWithAButton)
{
    QSignalSpy entered(&m_table, &QTableView::entered);
    press(in(1));
    release(in(1));
    moveTo(in(3)); // the button was pressed elsewhere
    EXPECT_EQ(entered.count(), 1);
    EXPECT_THAT(m_table.drags, IsEmpty());
}

TEST_F(TableTest, AReleaseThatNeverCameIsNoDragLater)
{
    m_table.setMouseTracking(true); // so that movements without a button arrive
    press(in(1));
    moveTo(in(2), Qt::NoButton); // released elsewhere
    moveTo(in(3), Qt::LeftButton);
    EXPECT_THAT(m_table.drags, IsEmpty());
}

TEST_F(TableTest, ASecondClickIsAPressLikeTheFirst)
{
    QSignalSpy doubled(&m_table, &QTableView::doubleClicked);
    QTest::mouseDClick(m_table.viewport(), Qt::LeftButton, {}, in(2));
    EXPECT_EQ(doubled.count(), 0);
    EXPECT_THAT(selectedRows(), ElementsAre(2));
}

TEST_F(TableTest, TheOtherButtonsAreTheBaseClasss)
{
    QSignalSpy pressed(&m_table, &QTableView::pressed);
    press(in(1), Qt::RightButton);
    EXPECT_EQ(pressed.count(), 1);
    EXPECT_EQ(m_table.restoreDragRow(), -1);
}

TEST_F(TableTest, WithoutPromisedFilesItLogsSoAndTheBaseClassTakesThePress)
{
    m_table.supported = false;
    QSignalSpy clicked(&m_table, &QTableView::clicked);
    press(in(2));
    release(in(2));
    EXPECT_EQ(clicked.count(), 1);
    EXPECT_EQ(m_table.restoreDragRow(), -1);
    EXPECT_THAT(selectedRows(), ElementsAre(2));
    ASSERT_EQ(m_root.logLines().size(), 1);
    EXPECT_TRUE(m_root.logLines()[0].endsWith(" Promised file drag-and-drop is not supported."))
        << m_root.logContent().data();
    press(in(1));
    moveTo(in(3)); // the base class's own selecting by dragging
    EXPECT_THAT(m_table.drags, IsEmpty());
}

TEST_F(TableTest, WithoutAnXServerThereAreNoPromisedFiles)
{
    EXPECT_FALSE(m_table.ofTheKit());
}

TEST_F(TableTest, ADropIsLoggedAndWritesNothing)
{
    const QString folder = m_root.makeFolder("/Desktop");
    EXPECT_EQ(m_table.namesOfPromisedFilesDroppedAtDestination(QUrl::fromLocalFile(folder)), QStringList());
    EXPECT_TRUE(m_root.logContent().contains((" Dropped to: " + folder + "\n").toUtf8()))
        << m_root.logContent().constData();
    EXPECT_THAT(QDir(folder).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), IsEmpty());
}

TEST_F(TableTest, ADestinationsNameCannotForgeALineOfTheLog)
{
    m_table.namesOfPromisedFilesDroppedAtDestination(QUrl("file:///a%0AMar%2004%2009:15:02%20forged"));
    ASSERT_EQ(m_root.logLines().size(), 1);
    EXPECT_TRUE(m_root.logLines()[0].endsWith("Dropped to: /a?Mar 04 09:15:02 forged"))
        << m_root.logContent().data();
}

TEST_F(TableTest, CopiesToOtherApplicationsAndDoesNothingWithinItsOwn)
{
    EXPECT_EQ(static_cast<int>(m_table.draggingSourceOperationMaskForLocal(false)), 1);
    EXPECT_EQ(static_cast<int>(m_table.draggingSourceOperationMaskForLocal(true)), 0);
}

TEST_F(TableTest, TakesTheFirstClickAndLetsTheWindowStayBehind)
{
    EXPECT_TRUE(m_table.acceptsFirstMouse(nullptr));
    EXPECT_TRUE(m_table.shouldDelayWindowOrderingForEvent(nullptr));
}

TEST_F(TableTest, ATypeIsAnExtensionOfOneToFiveCharactersOrACode)
{
    EXPECT_EQ(ZDRTableView::promisedFileType("plist"), "plist");
    EXPECT_EQ(ZDRTableView::promisedFileType("c"), "c");
    EXPECT_EQ(ZDRTableView::promisedFileType("strings"), "'docs'");
    EXPECT_EQ(ZDRTableView::promisedFileType(""), "'docs'");
}

TEST_F(TableTest, WithoutAModelAPressIsHarmless)
{
    DraggingTable empty;
    empty.resize(100, 100);
    empty.show();
    QTest::mousePress(empty.viewport(), Qt::LeftButton, {}, {10, 10});
    QMouseEvent move(QEvent::MouseMove, QPointF(20, 20), empty.viewport()->mapToGlobal(QPointF(20, 20)),
                     Qt::NoButton, Qt::LeftButton, {});
    QCoreApplication::sendEvent(empty.viewport(), &move);
    EXPECT_EQ(empty.restoreDragRow(), -1);
    EXPECT_THAT(empty.drags, IsEmpty());
}
TEST_F(TableTest, TabAndShiftTabLeaveIt)
{
    QWidget window;
    auto *const before = new QLineEdit(&window);
    auto *const table = new ZDRTableView(&window);
    auto *const behind = new QLineEdit(&window);
    table->setModel(&m_model);
    table->move(0, 30);
    behind->move(0, 300);
    window.show();
    table->setFocus();
    table->setCurrentIndex(m_model.index(1, 0));
    QTest::keyClick(table, Qt::Key_Tab);
    EXPECT_EQ(window.focusWidget(), behind);
    table->setFocus();
    QTest::keyClick(table, Qt::Key_Backtab);
    EXPECT_EQ(window.focusWidget(), before);
    EXPECT_EQ(table->currentIndex(), m_model.index(1, 0));
}
} // namespace
