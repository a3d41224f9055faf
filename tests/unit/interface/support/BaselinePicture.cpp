// SPDX-License-Identifier: MIT
#include "support/BaselinePicture.h"

#include <QDir>

#include <algorithm>

namespace
{
constexpr int channelTolerance = 16;
constexpr int pixelsInThousand = 2;

bool differs(QRgb one, QRgb other)
{
    const auto channel = [&](int (*part)(QRgb)) {
        return std::abs(part(one) - part(other)) > channelTolerance;
    };
    return channel(qRed) || channel(qGreen) || channel(qBlue) || channel(qAlpha);
}

testing::AssertionResult failure(const QImage &picture, const QImage &differences, const QString &name,
                                 const QString &why)
{
    const QDir folder("baseline-failures");
    folder.mkpath(".");
    const QString file = folder.absoluteFilePath(name);
    picture.save(file + ".png");
    auto result = testing::AssertionFailure()
                  << qPrintable(why) << "; the picture is " << qPrintable(file) << ".png";
    if (!differences.isNull()) {
        differences.save(file + "-differences.png");
        result << ", the differences are " << qPrintable(file) << "-differences.png";
    }
    return result;
}
} // namespace

testing::AssertionResult looksLikeBaseline(const QImage &picture, const QString &name)
{
    const QString file = QString(DOZELY_TEST_BASELINE "/%1.png").arg(name);
    const QImage actual = picture.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    if (qEnvironmentVariable("DOZELY_WRITE_BASELINE") == "1") {
        const bool written = actual.save(file, nullptr, 0);
        return testing::AssertionFailure() << (written ? "written: " : "cannot write ") << qPrintable(file);
    }
    const QImage reference = QImage(file).convertToFormat(QImage::Format_ARGB32_Premultiplied);
    if (reference.isNull())
        return failure(actual, {}, name, "there is no reference " + file);
    if (reference.size() != actual.size())
        return failure(actual, {}, name, "the sizes differ");

    QImage differences = reference;
    int count = 0;
    for (int y = 0; y < actual.height(); ++y) {
        for (int x = 0; x < actual.width(); ++x) {
            const auto row = [y](const QImage &image) {
                return reinterpret_cast<const QRgb *>(image.constScanLine(y));
            };
            const bool different = differs(row(actual)[x], row(reference)[x]);
            count += different ? 1 : 0;
            differences.setPixelColor(
                x, y, different ? QColor(Qt::red) : QColor(reference.pixel(x, y)).lighter(160));
        }
    }
    if (qint64{count} * 1000 > qint64{pixelsInThousand} * actual.width() * actual.height())
        return failure(actual, differences, name, QString("%1 pixels differ").arg(count));
    return testing::AssertionSuccess();
}
