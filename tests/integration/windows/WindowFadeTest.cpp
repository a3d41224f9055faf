// SPDX-License-Identifier: MIT
#include "DesktopSession.h"

#include "DozelyKit/interface/windows/ZDRBezelView.h"
#include "DozelyKit/interface/windows/ZDRBezelWindow.h"

namespace
{
const QPoint middle(400, 300);

class WindowFade : public DesktopSession
{
protected:
    WindowFade()
    {
        showBackdrop();
        window.setGeometry(300, 200, 200, 200);
        auto *const black = new QWidget;
        black->setPalette(QPalette(Qt::black));
        black->setAutoFillBackground(true);
        window.setContentView(black);
    }

    /// The values of grey that the screen shows in the window's place until it shows `last`, each once in a
    /// row.
    QList<int> greysUntil(int last)
    {
        QList<int> greys;
        const bool came = waitUntil(
            [&] {
                const int grey = colorAt(middle).red();
                if (greys.isEmpty() || greys.last() != grey)
                    greys += grey;
                return grey == last;
            },
            std::chrono::seconds(5));
        EXPECT_TRUE(came);
        return greys;
    }

    ZDRWindow window;
};

/// How many of them lie strictly between black and white.
qsizetype between(const QList<int> &greys)
{
    return std::ranges::count_if(greys, [](int grey) { return grey > 0 && grey < 255; });
}
} // namespace

TEST_F(WindowFade, PaintsAtLeastTenDifferentAlphasEachWay)
{
    startCompositor();
    qsizetype mostIn = 0;
    qsizetype mostOut = 0;
    // The best of some: other processes may have the processor for a part of a fade.
    for (int attempt = 0; attempt < 8 && (mostIn < 10 || mostOut < 10); ++attempt) {
        window.makeKeyAndOrderFront();
        const QList<int> in = greysUntil(0);
        EXPECT_TRUE(std::ranges::is_sorted(in, std::greater())) << "darker and darker";
        ASSERT_TRUE(waitUntil([this] { return window.alphaValue() == 1; }));
        window.performClose();
        const QList<int> out = greysUntil(255);
        EXPECT_TRUE(std::ranges::is_sorted(out)) << "lighter and lighter";
        ASSERT_TRUE(waitUntil([this] { return !window.isVisible(); }));
        mostIn = std::max(mostIn, between(in));
        mostOut = std::max(mostOut, between(out));
    }
    EXPECT_GE(mostIn, 10);
    EXPECT_GE(mostOut, 10);
}

TEST_F(WindowFade, TakesAFifthOfASecond)
{
    startCompositor();
    const auto begin = std::chrono::steady_clock::now();
    window.makeKeyAndOrderFront();
    ASSERT_TRUE(waitUntil([this] { return window.alphaValue() == 1; }));
    EXPECT_GE(std::chrono::steady_clock::now() - begin, std::chrono::milliseconds(199));
}

TEST_F(WindowFade, ShowsWhatIsBehindATranslucentBezel)
{
    startCompositor();
    ZDRBezelWindow bezel;
    bezel.setGeometry(300, 200, 200, 200);
    bezel.setContentView(nullptr);
    bezel.makeKeyAndOrderFront();
    EXPECT_TRUE(waitUntil([] { return colorAt(middle).red() == 76 || colorAt(middle).red() == 77; }))
        << colorAt(middle).red();
    EXPECT_EQ(colorAt({300, 200}), QColor(Qt::white)) << "outside the round corner";
    EXPECT_FALSE(bezel.isOpaque());
}

TEST_F(WindowFade, IsOpaqueButThereWithoutACompositor)
{
    ZDRBezelWindow bezel;
    bezel.setGeometry(300, 200, 200, 200);
    bezel.setContentView(nullptr);
    bezel.makeKeyAndOrderFront();
    ASSERT_TRUE(waitUntil([&bezel] { return bezel.alphaValue() == 1; }));
    EXPECT_TRUE(bezel.isOpaque());
    EXPECT_EQ(bezel.backgroundColor().alpha(), 255);
    const QColor ground = bezel.backgroundColor();
    EXPECT_TRUE(waitUntil([&ground] { return colorAt({300, 200}) == ground; })) << "nothing shines through";
    EXPECT_LT(colorAt(middle).lightness(), 80) << "dark enough for white text";
    bezel.performClose();
    EXPECT_TRUE(waitUntil([] { return colorAt(middle) == QColor(Qt::white); }));
    EXPECT_FALSE(bezel.isVisible());
}

TEST_F(WindowFade, NoticesACompositorThatCameWhenItIsShownAgain)
{
    window.makeKeyAndOrderFront();
    EXPECT_TRUE(window.isOpaque());
    window.close();
    startCompositor();
    window.makeKeyAndOrderFront();
    EXPECT_FALSE(window.isOpaque());
}
