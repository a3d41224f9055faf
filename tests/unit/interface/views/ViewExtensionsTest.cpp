// SPDX-License-Identifier: MIT
#include "DozelyKit/interface/views/ViewExtensions.h"

#include <QDialog>
#include <QGroupBox>
#include <QLabel>
#include <QPointer>
#include <QTimer>
#include <QVBoxLayout>

#include <gtest/gtest.h>

#include <memory>

using zandorSoftwaresExtensions::clear;

namespace
{
TEST(ViewClear, TakesAllSubviewsOutOfAPlainView)
{
    QWidget view;
    const auto one = std::make_unique<QLabel>("one", &view);
    const auto two = std::make_unique<QLabel>("two", &view);
    const auto inner = std::make_unique<QWidget>(two.get());
    view.show();
    clear(&view);
    EXPECT_TRUE(view.findChildren<QWidget *>().isEmpty());
    for (const auto &label : {one.get(), two.get()}) {
        EXPECT_EQ(label->parent(), nullptr);
        EXPECT_TRUE(label->isHidden()); // it must not come up as a window
    }
    EXPECT_EQ(inner->parent(), two.get()); // what it contains stays with it
}

TEST(ViewClear, LeavesAViewToBeSeenAgainWhereItIsPutNext)
{
    QWidget view;
    auto *const label = new QLabel("one", &view);
    view.show();
    clear(&view);
    QWidget next;
    label->setParent(&next);
    next.show();
    EXPECT_TRUE(label->isVisible());
}

TEST(ViewClear, TakesTheContentOutOfABox)
{
    QGroupBox box("title");
    auto *layout = new QVBoxLayout(&box);
    const auto label = std::make_unique<QLabel>("one");
    layout->addWidget(label.get());
    clear(&box);
    EXPECT_EQ(label->parent(), nullptr);
    EXPECT_EQ(layout->count(), 0);
    EXPECT_EQ(box.title(), "title");
}

class DerivedView : public QWidget
{
    Q_OBJECT
};

class DerivedViewWithoutMetaObject : public QWidget
{
};

class DerivedBox : public QGroupBox
{
    Q_OBJECT
};

template<class View>
void expectUntouched()
{
    View view;
    auto *label = new QLabel("one", &view);
    clear(&view);
    EXPECT_EQ(label->parent(), &view) << view.metaObject()->className();
}

TEST(ViewClear, LeavesEveryOtherClassAlone)
{
    expectUntouched<DerivedView>();
    expectUntouched<DerivedViewWithoutMetaObject>();
    expectUntouched<DerivedBox>();
    expectUntouched<QFrame>();
    expectUntouched<QDialog>();
}

TEST(ViewClear, KeepsWindowsAndWhatIsNoView)
{
    QWidget view;
    QDialog dialog(&view);
    QTimer timer(&view);
    clear(&view);
    EXPECT_EQ(dialog.parent(), &view);
    EXPECT_EQ(timer.parent(), &view);
}

TEST(ViewClear, AnEmptyViewAndNoViewAreHarmless)
{
    QWidget view;
    clear(&view);
    clear(nullptr);
    EXPECT_TRUE(view.children().isEmpty());
}
} // namespace

#include "ViewExtensionsTest.moc"
