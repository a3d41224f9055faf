// SPDX-License-Identifier: MIT
#include "DozelyKit/interface/cells/CellDelegate.h"
#include "DozelyKit/interface/cells/WDConfiguratorCell.h"
#include "DozelyKit/interface/cells/ZDRImageTextCell.h"
#include "support/Canvas.h"
#include "support/WaitUntil.h"

#include <QLineEdit>
#include <QListView>
#include <QPointer>
#include <QStandardItemModel>
#include <QTest>

#include <gtest/gtest.h>

using namespace dozely;

namespace
{
/// Remembers what it was told before it drew.
class RecordingCell : public NSTextFieldCell
{
public:
    struct Draw {
        QVariant value;
        bool enabled, highlighted, flipped;
        QRectF frame;
    };

    void drawWithFrameInView(const QRectF &frame, QWidget *view) override
    {
        draws.push_back({objectValue(), isEnabled(), isHighlighted(),
                         NSGraphicsContext::currentContext()->isFlipped(), frame});
        NSTextFieldCell::drawWithFrameInView(frame, view);
    }
    std::vector<Draw> draws;
};

class CellDelegateTest : public testing::Test
{
protected:
    void SetUp() override
    {
        for (const char *text : {"first", "second", "third"})
            m_model.appendRow(new QStandardItem(QString(text)));
        m_list.setModel(&m_model);
        m_list.resize(200, 120);
    }

    void use(std::shared_ptr<NSTextFieldCell> cell)
    {
        m_delegate = new CellDelegate(std::move(cell), &m_list);
        m_list.setItemDelegate(m_delegate);
    }

    QStandardItemModel m_model;
    QListView m_list;
    CellDelegate *m_delegate = nullptr;
};

TEST_F(CellDelegateTest, TheCellLearnsValueAndStateOfARowBeforeItDraws)
{
    const auto cell = std::make_shared<RecordingCell>();
    use(cell);
    m_model.item(1)->setEnabled(false);
    m_list.setCurrentIndex(m_model.index(2, 0));
    cell->draws.clear();
    m_list.grab();
    ASSERT_EQ(cell->draws.size(), 3U);
    EXPECT_EQ(cell->draws[0].value, QVariant("first"));
    EXPECT_TRUE(cell->draws[0].enabled);
    EXPECT_FALSE(cell->draws[1].enabled);
    EXPECT_FALSE(cell->draws[1].highlighted);
    EXPECT_TRUE(cell->draws[2].highlighted);
    EXPECT_TRUE(cell->draws[0].flipped);
    EXPECT_EQ(cell->draws[2].frame, QRectF(m_list.visualRect(m_model.index(2, 0))));
    EXPECT_EQ(NSGraphicsContext::currentContext(), nullptr);
}

TEST_F(CellDelegateTest, TheValueComesFromTheRoleThatWasSet)
{
    const auto cell = std::make_shared<WDConfiguratorCell>();
    use(cell);
    m_delegate->setValueRole(Qt::UserRole);
    m_model.setData(m_model.index(2, 0), QVariantMap{{"Name", "Lights"}, {"Wake Up", 1}}, Qt::UserRole);
    m_list.grab();
    EXPECT_EQ(cell->name(), "Lights"); // of the row drawn last
    EXPECT_TRUE(cell->wakeup());
}

TEST_F(CellDelegateTest, RowsAreAsHighAsTheCellUnlessSet)
{
    use(std::make_shared<NSTextFieldCell>());
    NSTextFieldCell cell;
    cell.setObjectValue("second");
    const QSize size = m_list.sizeHintForIndex(m_model.index(1, 0));
    EXPECT_EQ(size, QSize(int(std::ceil(cell.cellSize().width())), int(std::ceil(cell.cellSize().height()))));
    m_delegate->setRowHeight(30);
    EXPECT_EQ(m_list.sizeHintForIndex(m_model.index(1, 0)).height(), 30);
}

TEST_F(CellDelegateTest, RowsAreNeverLowerThanTheirImages)
{
    const auto cell = std::make_shared<ZDRImageTextCell>();
    cell->setImage(QImage(10, 40, QImage::Format_ARGB32_Premultiplied));
    use(cell);
    EXPECT_EQ(m_list.sizeHintForIndex(m_model.index(1, 0)).height(), 40);
    m_delegate->setRowHeight(30);
    EXPECT_EQ(m_list.sizeHintForIndex(m_model.index(1, 0)).height(), 40);
    m_delegate->setRowHeight(50);
    EXPECT_EQ(m_list.sizeHintForIndex(m_model.index(1, 0)).height(), 50);
}

TEST_F(CellDelegateTest, RowsOfSchedulesAreHighEnoughForBothLines)
{
    use(std::make_shared<WDConfiguratorCell>());
    m_delegate->setRowHeight(20);
    EXPECT_EQ(m_list.sizeHintForIndex(m_model.index(1, 0)).height(), 28);
    const QFont usual = QGuiApplication::font();
    QFont large = usual;
    large.setPixelSize(26);
    QGuiApplication::setFont(large);
    EXPECT_EQ(m_list.sizeHintForIndex(m_model.index(1, 0)).height(), 56);
    QGuiApplication::setFont(usual);
}

TEST_F(CellDelegateTest, FromRightToLeftTheUserEditsToTheLeftOfTheImage)
{
    const auto cell = std::make_shared<ZDRImageTextCell>();
    cell->setImage(QImage(10, 10, QImage::Format_ARGB32_Premultiplied));
    use(cell);
    m_list.setLayoutDirection(Qt::RightToLeft);
    m_list.show();
    const QModelIndex index = m_model.index(1, 0);
    m_list.setCurrentIndex(index);
    m_list.edit(index);
    const auto *const editor = m_list.findChild<QLineEdit *>();
    ASSERT_TRUE(editor);
    EXPECT_EQ(editor->geometry(), m_list.visualRect(index).adjusted(0, 0, -13, 0));
}

TEST_F(CellDelegateTest, TheStyleDrawsTheSelectionBelowTheCell)
{
    use(std::make_shared<WDConfiguratorCell>()); // draws nothing here: the rows hold texts, no entries
    m_delegate->setValueRole(Qt::UserRole);
    m_delegate->setRowHeight(30);
    m_list.setSelectionMode(QAbstractItemView::MultiSelection);
    m_list.selectionModel()->select(m_model.index(1, 0), QItemSelectionModel::Select);
    const QImage image = m_list.grab().toImage();
    const QPoint in = m_list.viewport()->mapTo(&m_list, m_list.visualRect(m_model.index(1, 0)).center());
    EXPECT_NE(image.pixelColor(in), m_list.palette().color(QPalette::Base));
    EXPECT_GT(image.pixelColor(in).blue(), image.pixelColor(in).red());
}

TEST_F(CellDelegateTest, TheUserEditsWhereTheTextIs)
{
    const auto cell = std::make_shared<ZDRImageTextCell>();
    QImage image(10, 10, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::red);
    cell->setImage(image);
    use(cell);
    m_list.show();
    const QModelIndex index = m_model.index(1, 0);
    m_list.setCurrentIndex(index);
    m_list.edit(index);
    auto *editor = m_list.findChild<QLineEdit *>();
    ASSERT_TRUE(editor);
    EXPECT_EQ(editor->text(), "second");
    EXPECT_EQ(editor->selectedText(), "second");
    EXPECT_EQ(editor->geometry(), m_list.visualRect(index).adjusted(13, 0, 0, 0));
    QTest::keyClicks(editor, "fourth");
    m_list.resize(160, 120); // the editor is put anew, and what was typed stays
    EXPECT_EQ(editor->text(), "fourth");
    QTest::keyClick(editor, Qt::Key_Return);
    EXPECT_TRUE(waitUntil([&] { return index.data().toString() == "fourth"; }));
}

TEST_F(CellDelegateTest, LeavingTheEditorWithEscapeChangesNothing)
{
    use(std::make_shared<NSTextFieldCell>());
    m_list.show();
    m_list.setCurrentIndex(m_model.index(0, 0));
    m_list.edit(m_model.index(0, 0));
    auto *editor = m_list.findChild<QLineEdit *>();
    ASSERT_TRUE(editor);
    QTest::keyClicks(editor, "other");
    const QPointer<QLineEdit> gone(editor);
    QTest::keyClick(editor, Qt::Key_Escape);
    EXPECT_TRUE(waitUntil([&] { return gone.isNull() || gone->isHidden(); }));
    EXPECT_EQ(m_model.index(0, 0).data().toString(), "first");
}
} // namespace
