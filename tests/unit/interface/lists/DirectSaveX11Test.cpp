// SPDX-License-Identifier: MIT
// Promised files against a drop target that shares no code with the kit: another process, another language,
// plain X11.
#include "DozelyKit/interface/lists/ZDRTableView.h"
#include "support/PrintTo.h"
#include "support/ScratchRoot.h"
#include "support/WaitUntil.h"

#include <QDir>
#include <QDragEnterEvent>
#include <QHeaderView>
#include <QLabel>
#include <QProcess>
#include <QStandardItemModel>
#include <QTest>
#include <QTimer>
#include <QUrl>

#include <gmock/gmock.h>

using testing::Contains;
using testing::IsEmpty;

namespace
{
/// Tells when a drag has ended, and how.
class Table : public ZDRTableView
{
public:
    bool running = false;
    std::optional<bool> taken;

protected:
    bool dragPromisedFilesOfTypesFromRect(const QStringList &types, const QRectF &rect, QObject *source,
                                          bool slideBack, const QMouseEvent *event) override
    {
        running = true;
        taken = ZDRTableView::dragPromisedFilesOfTypesFromRect(types, rect, source, slideBack, event);
        running = false;
        return *taken;
    }
};

class DirectSave : public testing::Test
{
protected:
    void SetUp() override
    {
        m_model.appendRow(new QStandardItem("Lights on"));
        m_model.appendRow(new QStandardItem("a/b"));
        m_model.appendRow(new QStandardItem(""));
        m_table.setModel(&m_model);
        m_table.setWindowFlag(Qt::X11BypassWindowManagerHint); // there is none
        m_table.verticalHeader()->setDefaultSectionSize(30);
        m_table.setGeometry(50, 50, 300, 200);
        m_table.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&m_table));
    }

    QPoint onScreen(int row) const
    {
        return m_table.viewport()->mapToGlobal(m_table.visualRect(m_model.index(row, 0)).center());
    }

    /// Lets the other process play; what it wrote.
    QStringList play(const QPoint &from, const QStringList &arguments)
    {
        QProcess other;
        other.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        other.start(DOZELY_TEST_PYTHON, QStringList{DOZELY_TEST_DROP_TARGET, QString::number(from.x()),
                                                    QString::number(from.y())} +
                                            arguments);
        QTimer pulse; // runs within the drag as well, whose loop waitUntil is then below
        QObject::connect(&pulse, &QTimer::timeout, &other, [&] {
            if (m_table.running && !std::exchange(m_told, true))
                other.write("the drag has begun\n");
        });
        m_told = false;
        pulse.start(5);
        EXPECT_TRUE(waitUntil([&] { return other.state() == QProcess::NotRunning; }));
        const QStringList lines =
            QString::fromUtf8(other.readAllStandardOutput()).split('\n', Qt::SkipEmptyParts);
        EXPECT_THAT(lines, Contains("done: yes"));
        EXPECT_TRUE(waitUntil([&] { return m_table.taken.has_value() && !m_table.running; }));
        return lines;
    }

    ScratchRoot m_root;
    QStandardItemModel m_model;
    Table m_table;
    bool m_told = false; // the other process knows that the drag has begun
};

TEST_F(DirectSave, ADropLogsTheFolderThatTheTargetChoseAndWritesNothing)
{
    const QString folder = m_root.makeFolder("/My Desktop");
    const QStringList lines = play(onScreen(0), {"save", QUrl::fromLocalFile(folder).toEncoded()});
    EXPECT_THAT(lines, Contains("types: XdndDirectSave0"));
    EXPECT_THAT(lines, Contains("action: XdndActionCopy"));
    EXPECT_THAT(lines, Contains("name: Lights on.plist"));
    EXPECT_THAT(lines, Contains("answer: E")); // there is no file
    EXPECT_EQ(m_table.taken, true);
    EXPECT_EQ(m_table.restoreDragRow(), 0);
    ASSERT_EQ(m_root.logLines().size(), 1) << m_root.logContent().data();
    EXPECT_TRUE(m_root.logLines()[0].endsWith(" Dropped to: " + folder)) << m_root.logContent().data();
    EXPECT_THAT(QDir(folder).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), IsEmpty());
}

TEST_F(DirectSave, ANameNeverLeavesItsFolder)
{
    EXPECT_THAT(play(onScreen(1), {"save", "file:///tmp"}), Contains("name: a_b.plist"));
}

TEST_F(DirectSave, ALongNameIsCutToWhatAFileMayBeCalled)
{
    m_model.item(0)->setText(QString(500, 'n'));
    EXPECT_THAT(play(onScreen(0), {"save", "file:///tmp"}), Contains("name: " + QString(60, 'n') + ".plist"));
}

TEST_F(DirectSave, ARowWithoutATextHasANameAllTheSame)
{
    EXPECT_THAT(play(onScreen(2), {"save", "file:///tmp"}), Contains("name: Untitled.plist"));
}

TEST_F(DirectSave, ANameIsNotThatOfAHiddenFile)
{
    m_model.item(0)->setText(".profile");
    EXPECT_THAT(play(onScreen(0), {"save", "file:///tmp"}), Contains("name: Untitled.profile.plist"));
}

TEST_F(DirectSave, AnAddressThatIsNoPlaceForAFileIsNotLogged)
{
    for (const char *address : {"http://example.org/x", "x", ""}) {
        m_table.taken.reset();
        EXPECT_THAT(play(onScreen(0), {"save", address}), Contains("answer: E")) << address;
    }
    EXPECT_THAT(m_root.logLines(), IsEmpty());
}

TEST_F(DirectSave, AnAddressWithoutEndIsNotLogged)
{
    EXPECT_THAT(play(onScreen(0), {"save", "file:///" + QString(20000, 'a')}), Contains("answer: E"));
    EXPECT_THAT(m_root.logLines(), IsEmpty());
}

TEST_F(DirectSave, ATargetThatRefusesGetsNoDrop)
{
    const QStringList lines = play(onScreen(0), {"refuse"});
    EXPECT_THAT(lines, Contains("left: yes"));
    EXPECT_EQ(m_table.taken, false);
    EXPECT_THAT(m_root.logLines(), IsEmpty());
}

class Taker : public QLabel
{
public:
    int events = 0;

protected:
    void dragEnterEvent(QDragEnterEvent *event) override { take(event); }
    void dragMoveEvent(QDragMoveEvent *event) override { take(event); }
    void dropEvent(QDropEvent *event) override { take(event); }

private:
    void take(QDropEvent *event)
    {
        ++events;
        event->acceptProposedAction();
    }
};

TEST_F(DirectSave, TheApplicationsOwnViewsGetNoDrop)
{
    Taker taker;
    taker.setAcceptDrops(true);
    taker.setWindowFlag(Qt::X11BypassWindowManagerHint);
    taker.setGeometry(600, 100, 200, 200);
    taker.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&taker));
    play(onScreen(0), {"drag", "700", "200"});
    EXPECT_EQ(m_table.taken, false);
    EXPECT_EQ(taker.events, 0);
    EXPECT_THAT(m_root.logLines(), IsEmpty());
}

TEST_F(DirectSave, AfterADragTheNextPressSelectsAndDragsAnew)
{
    play(onScreen(0), {"save", "file:///tmp"});
    m_table.taken.reset();
    EXPECT_THAT(play(onScreen(1), {"save", "file:///tmp"}), Contains("name: a_b.plist"));
    EXPECT_EQ(m_table.restoreDragRow(), 1);
    EXPECT_EQ(m_table.selectionModel()->selectedRows().value(0).row(), 1);
    EXPECT_EQ(m_root.logLines().size(), 2);
}
} // namespace
