// SPDX-License-Identifier: MIT
#include "DozelyKit/interface/drawing/ImageExtensions.h"
#include "DozelyKit/core/bundles/NSBundle.h"
#include "DozelyKit/interface/cells/WDConfiguratorCell.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace zandorSoftwaresExtensions;

namespace
{
class Images : public testing::Test
{
protected:
    void SetUp() override
    {
        QDir().mkpath(resources());
        m_bundle = NSBundle::bundleWithPath(m_folder.filePath("Pictures.plugin"));
        ASSERT_TRUE(m_bundle);
    }

    QString resources() const { return m_folder.filePath("Pictures.plugin/Contents/Resources"); }

    void put(const QString &name, const QColor &colour, int side = 8, const char *format = "PNG") const
    {
        QImage image(side, side, QImage::Format_RGB32);
        image.fill(colour);
        ASSERT_TRUE(image.save(resources() + '/' + name, format));
    }

    void putGarbage(const QString &name) const
    {
        QFile file(resources() + '/' + name);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("this is no image");
    }

    QColor colourOf(const QString &name, double ratio = 1) const
    {
        const QImage image = imageNamedInBundle(name, m_bundle.get(), ratio);
        return image.isNull() ? QColor() : image.pixelColor(1, 1);
    }

    QTemporaryDir m_folder;
    std::shared_ptr<NSBundle> m_bundle;
};

TEST_F(Images, AreFoundByTheirExactName)
{
    put("Dot.png", Qt::red);
    put("Dot", Qt::blue);
    EXPECT_EQ(colourOf("Dot.png"), QColor(Qt::red));
    EXPECT_EQ(colourOf("Dot"), QColor(Qt::blue)); // before any type is tried
}

TEST_F(Images, AreFoundByNameAndTypeWhenTheExactNameGivesNone)
{
    put("Dot.png", Qt::red);
    EXPECT_EQ(colourOf("Dot"), QColor(Qt::red));
    putGarbage("Dot");
    EXPECT_EQ(colourOf("Dot"), QColor(Qt::red));
}

TEST_F(Images, TheFirstTypeThatLoadsWins)
{
    put("Dot.png", Qt::red);
    put("Dot.bmp", Qt::blue, 8, "BMP");
    EXPECT_EQ(colourOf("Dot"),
              QColor(Qt::blue)); // types are tried in the order of the platform's list: bmp, ..., png
    putGarbage("Dot.bmp");
    EXPECT_EQ(colourOf("Dot"), QColor(Qt::red));
}

TEST_F(Images, AreNoneWhenNothingLoadsOrThereIsNoBundle)
{
    putGarbage("Dot.png");
    EXPECT_TRUE(imageNamedInBundle("Dot.png", m_bundle.get()).isNull());
    EXPECT_TRUE(imageNamedInBundle("Missing", m_bundle.get()).isNull());
    EXPECT_TRUE(imageNamedInBundle("", m_bundle.get()).isNull());
    EXPECT_TRUE(imageNamedInBundle("../../../etc/Dot.png", m_bundle.get()).isNull());
    EXPECT_TRUE(imageNamedInBundle("NoneDot.png", nullptr).isNull());
}

TEST_F(Images, AreReadAnewEachTime)
{
    put("Dot.png", Qt::red);
    EXPECT_EQ(colourOf("Dot.png"), QColor(Qt::red));
    put("Dot.png", Qt::blue);
    EXPECT_EQ(colourOf("Dot.png"), QColor(Qt::blue));
    QFile::remove(resources() + "/Dot.png");
    EXPECT_FALSE(colourOf("Dot.png").isValid());
}

TEST_F(Images, TheVariantForTheScaleIsTaken)
{
    put("Dot.png", Qt::red, 8);
    put("Dot@2x.png", Qt::green, 16);
    put("Dot@3x.png", Qt::blue, 24);
    EXPECT_EQ(colourOf("Dot.png", 1), QColor(Qt::red));
    EXPECT_EQ(colourOf("Dot.png", 1.25), QColor(Qt::green));
    EXPECT_EQ(colourOf("Dot.png", 2), QColor(Qt::green));
    EXPECT_EQ(colourOf("Dot.png", 2.5), QColor(Qt::blue));
    EXPECT_EQ(colourOf("Dot.png", 5), QColor(Qt::blue));
    EXPECT_EQ(colourOf("Dot", 2), QColor(Qt::green));
    for (const double ratio : {1.0, 1.5, 2.0, 3.0})
        EXPECT_EQ(imageNamedInBundle("Dot.png", m_bundle.get(), ratio).deviceIndependentSize(), QSizeF(8, 8));
    QFile::remove(resources() + "/Dot@3x.png");
    EXPECT_EQ(colourOf("Dot.png", 3), QColor(Qt::green));
    QFile::remove(resources() + "/Dot@2x.png");
    EXPECT_EQ(colourOf("Dot.png", 3), QColor(Qt::red));
}

TEST_F(Images, OfAnInstanceAreThoseOfTheBundleThatHoldsItsClass)
{
    const WDConfiguratorCell cell;
    EXPECT_EQ(imageNamedInBundleOfInstance("MixedDot.png", &cell), QImage(":/DozelyKit/MixedDot.png"));
    EXPECT_EQ(NSBundle::bundleForClass(cell.metaObject()), NSBundle::kitBundle());

    put("Dot.png", Qt::red);
    NSBundle::registerClass("QObject", m_bundle);
    const QObject object;
    EXPECT_EQ(imageNamedInBundleOfInstance("Dot.png", &object).pixelColor(1, 1), QColor(Qt::red));
    EXPECT_TRUE(imageNamedInBundleOfInstance("MixedDot.png", &object).isNull());
}

TEST(Dots, AreThereInAllScales)
{
    for (const char *name : {"NoneDot", "StartupDot", "WakeUpDot", "MixedDot"}) {
        for (const int ratio : {1, 2, 3}) {
            const QImage image =
                imageNamedInBundle(QString(name) + ".png", NSBundle::kitBundle().get(), ratio);
            EXPECT_EQ(image.size(), QSize(16, 16) * ratio) << name;
            EXPECT_TRUE(image.hasAlphaChannel());
            EXPECT_EQ(qAlpha(image.pixel(0, 0)), 0); // they lie on any ground
        }
    }
}
} // namespace
