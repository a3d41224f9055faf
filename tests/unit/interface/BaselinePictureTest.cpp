// SPDX-License-Identifier: MIT
#include "support/BaselinePicture.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace
{
/// Works on a copy of a reference, in a folder where what a failure writes is thrown away.
class Comparison : public testing::Test
{
protected:
    void SetUp() override
    {
        qunsetenv("DOZELY_WRITE_BASELINE"); // these are no references to be written
        QDir::setCurrent(m_folder.path());
        m_picture = QImage(DOZELY_TEST_BASELINE "/schedule-list-light-ltr-1x.png");
        ASSERT_FALSE(m_picture.isNull());
    }
    void TearDown() override { QDir::setCurrent("/"); }

    testing::AssertionResult compare() const
    {
        return looksLikeBaseline(m_picture, "schedule-list-light-ltr-1x");
    }

    void change(int pixels, int by)
    {
        for (int i = 0; i < pixels; ++i) {
            const QPoint at(20 + i % 10, 175 + i / 10); // plain ground
            const int grey = qGray(m_picture.pixel(at)) - by;
            m_picture.setPixelColor(at, QColor(grey, grey, grey));
        }
    }

    QTemporaryDir m_folder;
    QImage m_picture;
};

TEST_F(Comparison, TheReferenceIsLikeItself)
{
    EXPECT_TRUE(compare());
    EXPECT_FALSE(QDir("baseline-failures").exists());
}

TEST_F(Comparison, AFewPixelsAndSlightShadesAreLetPass)
{
    change(40, 200); // of 41800
    EXPECT_TRUE(compare());
    change(100, 10);
    EXPECT_TRUE(compare());
}

TEST_F(Comparison, MorePixelsAreADifferenceThatIsWrittenDown)
{
    change(100, 40);
    const auto result = compare();
    EXPECT_FALSE(result);
    EXPECT_TRUE(std::string(result.message()).find("100 pixels differ") != std::string::npos)
        << result.message();
    EXPECT_TRUE(QFile::exists("baseline-failures/schedule-list-light-ltr-1x.png"));
    const QImage differences("baseline-failures/schedule-list-light-ltr-1x-differences.png");
    EXPECT_EQ(differences.pixelColor(25, 176), QColor(Qt::red));
    EXPECT_NE(differences.pixelColor(100, 176), QColor(Qt::red));
}

TEST_F(Comparison, AnotherSizeIsADifference)
{
    m_picture = m_picture.copy(0, 0, 219, 190);
    EXPECT_FALSE(compare());
}

TEST_F(Comparison, AMissingReferenceIsAFailure)
{
    EXPECT_FALSE(looksLikeBaseline(m_picture, "no-such-reference"));
}
} // namespace
