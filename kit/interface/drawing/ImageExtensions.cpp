// SPDX-License-Identifier: MIT
#include "DozelyKit/interface/drawing/ImageExtensions.h"

#include "DozelyKit/core/bundles/NSBundle.h"

#include <QFileInfo>
#include <QHash>
#include <QImageReader>

#include <cmath>

namespace
{
constexpr int largestRatio = 3;

/// Images compiled into a library cannot change, so nobody can tell that they are read once only.
QImage loaded(const QString &path)
{
    if (!path.startsWith(":/"))
        return QImage(path);
    static QHash<QString, QImage> known;
    const auto found = known.constFind(path);
    return found != known.constEnd() ? *found : *known.insert(path, QImage(path));
}

/// The image at `path`, or the variant beside it that suits the ratio best.
QImage loadedForRatio(const QString &path, double devicePixelRatio)
{
    const qsizetype dot = path.lastIndexOf('.');
    if (path.isEmpty())
        return {};
    for (int ratio = std::min(static_cast<int>(std::ceil(devicePixelRatio)), largestRatio);
         ratio > 1 && dot > 0; --ratio) {
        const QString variant = path.left(dot) + QString("@%1x").arg(ratio) + path.mid(dot);
        QImage image = loaded(variant);
        if (!image.isNull()) {
            image.setDevicePixelRatio(ratio);
            return image;
        }
    }
    return loaded(path);
}
} // namespace

QImage zandorSoftwaresExtensions::imageNamedInBundle(const QString &name, const NSBundle *bundle,
                                                     double devicePixelRatio)
{
    if (!bundle)
        return {};
    QImage image = loadedForRatio(bundle->pathForResource(name, {}), devicePixelRatio);
    if (!image.isNull())
        return image;
    for (const QByteArray &type : QImageReader::supportedImageFormats()) {
        image = loadedForRatio(bundle->pathForResource(name, QString::fromLatin1(type)), devicePixelRatio);
        if (!image.isNull())
            return image;
    }
    return {};
}

QImage zandorSoftwaresExtensions::imageNamedInBundleOfInstance(const QString &name, const QObject *instance,
                                                               double devicePixelRatio)
{
    return imageNamedInBundle(name, NSBundle::bundleForClass(instance->metaObject()).get(), devicePixelRatio);
}
