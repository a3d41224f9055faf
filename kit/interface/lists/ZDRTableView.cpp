// SPDX-License-Identifier: MIT
#include "DozelyKit/interface/lists/ZDRTableView.h"

#include "DozelyKit/core/log/LogLabel.h"
#include "DozelyKit/core/log/ZDRLog.h"
#include "DozelyKit/interface/lists/X11DirectSave_p.h"

#include <QApplication>
#include <QFileIconProvider>
#include <QItemSelectionModel>
#include <QMouseEvent>
#include <QUrl>

using namespace dozely;

namespace
{
constexpr char promisedExtension[] = "plist";
constexpr int longestExtension = 5;
constexpr int longestName = 60; // characters: with four bytes each still a file name
constexpr double imageSide = 16;
constexpr QPointF imageOffset{-28, -10}; // from the pointer to the image's origin

} // namespace

struct ZDRTableView::Private {
    qint32 restoreDragRow = -1;
    bool tracking = false;              // a press of this class has not been followed by its release yet
    std::unique_ptr<QMouseEvent> press; // until it becomes a drag or is released
};

ZDRTableView::ZDRTableView(QWidget *parent) : QTableView(parent), d(std::make_unique<Private>())
{
    setTabKeyNavigation(false); // whoever has no pointer could not leave it
}

ZDRTableView::~ZDRTableView() = default;

qint32 ZDRTableView::restoreDragRow() const
{
    return d->restoreDragRow;
}

QStringList ZDRTableView::namesOfPromisedFilesDroppedAtDestination(const QUrl &dropDestination)
{
    // A destination is somebody else's text: a line end in it would begin a line of the log.
    ZDRLog("Dropped to: %@\n", logLabel(dropDestination.path(), wholeText, LineBreaks::QuestionMarks));
    return {};
}

Qt::DropAction ZDRTableView::draggingSourceOperationMaskForLocal(bool isLocal) const
{
    return isLocal ? Qt::IgnoreAction : Qt::CopyAction;
}

bool ZDRTableView::shouldDelayWindowOrderingForEvent(const QMouseEvent *) const
{
    return true;
}

bool ZDRTableView::acceptsFirstMouse(const QMouseEvent *) const
{
    return true;
}

QString ZDRTableView::promisedFileType(const QString &extension)
{
    return extension.isEmpty() || extension.length() > longestExtension ? QString("'docs'") : extension;
}

bool ZDRTableView::respondsToDragPromisedFiles() const
{
    return X11DirectSave::isAvailable();
}

QString ZDRTableView::promisedFileName(const QString &type) const
{
    QString name = model()->index(d->restoreDragRow, 0, rootIndex()).data().toString().simplified();
    name.replace('/', '_').truncate(longestName);
    if (name.isEmpty() || name.startsWith('.'))
        name.prepend("Untitled");
    return name + '.' + type;
}

bool ZDRTableView::dragPromisedFilesOfTypesFromRect(const QStringList &types, const QRectF &rect,
                                                    QObject *source, bool slideBack, const QMouseEvent *event)
{
    Q_UNUSED(slideBack) // what a target refuses vanishes: nothing here ever slides back
    const QPixmap image = QFileIconProvider().icon(QFileIconProvider::File).pixmap(rect.size().toSize());
    const QPoint hotSpot = (event->position() - rect.topLeft()).toPoint();
    const auto dropped = [this](const QUrl &folder) { namesOfPromisedFilesDroppedAtDestination(folder); };
    return X11DirectSave::drag(source, {promisedFileName(types.value(0)), dropped}, image, hotSpot,
                               draggingSourceOperationMaskForLocal(false),
                               draggingSourceOperationMaskForLocal(true));
}

bool ZDRTableView::mouseDown(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton)
        return false;
    if (!respondsToDragPromisedFiles()) {
        ZDRLog("Promised file drag-and-drop is not supported.");
        return false;
    }
    d->restoreDragRow = rowAt(event->position().toPoint().y());
    d->press.reset(event->clone());
    d->tracking = true;
    if (model() && d->restoreDragRow >= 0) {
        const int column = std::max(columnAt(event->position().toPoint().x()), 0);
        selectionModel()->setCurrentIndex(model()->index(d->restoreDragRow, column, rootIndex()),
                                          QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    }
    event->accept();
    return true;
}

void ZDRTableView::mousePressEvent(QMouseEvent *event)
{
    if (!mouseDown(event))
        QTableView::mousePressEvent(event);
}

void ZDRTableView::mouseDoubleClickEvent(QMouseEvent *event)
{
    if (!mouseDown(event))
        QTableView::mouseDoubleClickEvent(event);
}

void ZDRTableView::mouseMoveEvent(QMouseEvent *event)
{
    if (!d->tracking || !event->buttons().testFlag(Qt::LeftButton)) {
        d->tracking = false; // the release went elsewhere
        d->press.reset();
        QTableView::mouseMoveEvent(event);
        return;
    }
    event->accept();
    const std::unique_ptr<QMouseEvent> press = std::move(d->press);
    if (!press || !model() || d->restoreDragRow == -1 || d->restoreDragRow >= model()->rowCount(rootIndex()))
        return;
    const QRectF rect(press->position() + imageOffset, QSizeF(imageSide, imageSide));
    const QPointer<ZDRTableView> self(this);
    dragPromisedFilesOfTypesFromRect({promisedFileType(promisedExtension)}, rect, this, false, press.get());
    if (self)
        d->tracking = false;
}

void ZDRTableView::mouseReleaseEvent(QMouseEvent *event)
{
    if (!d->tracking || event->button() != Qt::LeftButton) {
        QTableView::mouseReleaseEvent(event);
        return;
    }
    d->tracking = false;
    d->press.reset();
    event->accept();
}
