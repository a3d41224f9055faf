// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/interface/Export.h"

#include <QTableView>

#include <memory>

class QMouseEvent;
class QUrl;

/// A table in which a press selects the row below the pointer, and a drag takes that row out as a promised
/// file: the drop target is told a name and tells where it would like to have the file.
///
/// Such drags follow the Direct Save protocol of X11. Elsewhere a press logs that they are not supported and
/// does what it does in any table. No file is ever written: the place of the drop is logged.
///
/// The arrow keys move in it; Tab and Shift+Tab leave it, unless setTabKeyNavigation says other.
class DOZELYINTERFACE_EXPORT ZDRTableView : public QTableView
{
    Q_OBJECT
public:
    explicit ZDRTableView(QWidget *parent = nullptr);
    ~ZDRTableView() override;

    /// The row under the pointer at the last press; -1 when there was none.
    qint32 restoreDragRow() const;

    /// Called when something was dropped into the folder `dropDestination`: logs its path. The names of the
    /// files written there: none.
    virtual QStringList namesOfPromisedFilesDroppedAtDestination(const QUrl &dropDestination);

    /// Copying, outside of the application; nothing within it.
    virtual Qt::DropAction draggingSourceOperationMaskForLocal(bool isLocal) const;

    /// Both true: a click on the table of a window in the background acts at once, and need not raise the
    /// window.
    /// @{
    virtual bool shouldDelayWindowOrderingForEvent(const QMouseEvent *event) const;
    virtual bool acceptsFirstMouse(const QMouseEvent *event) const;
    /// @}

    /// The type of a promised file: its extension when that has 1 to 5 characters, else "'docs'".
    static QString promisedFileType(const QString &extension);

protected:
    /// Whether dragPromisedFilesOfTypesFromRect can work here.
    virtual bool respondsToDragPromisedFiles() const;

    /// Drags a promise of files until the button is released. `rect` is where the dragged image begins, in
    /// coordinates of the viewport; `event` is the press that began it. Blocks, running the event loop. False
    /// when nothing was dragged.
    virtual bool dragPromisedFilesOfTypesFromRect(const QStringList &types, const QRectF &rect,
                                                  QObject *source, bool slideBack, const QMouseEvent *event);

    void mousePressEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;

private:
    bool mouseDown(QMouseEvent *event);
    QString promisedFileName(const QString &type) const;

    struct Private;
    std::unique_ptr<Private> d;
};
