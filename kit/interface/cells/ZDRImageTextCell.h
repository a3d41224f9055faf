// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/interface/cells/NSTextFieldCell.h"

#include <QImage>

/// A text with a small image to its left, 3 points from the frame's edge, in the middle of its height; to its
/// right in a view that reads from right to left.
class DOZELYINTERFACE_EXPORT ZDRImageTextCell : public NSTextFieldCell
{
    Q_OBJECT
public:
    ZDRImageTextCell();
    ~ZDRImageTextCell() override;

    /// The copy has the very same image, not a copy of its pixels.
    std::shared_ptr<NSTextFieldCell> copy() const override;

    /// A null image is none. Its size in points counts, so set its device pixel ratio. Nothing is redrawn.
    void setImage(const QImage &image);
    QImage image() const;

    /// Where the image is in a view that reads from left to right, in a context whose y points up or down
    /// alike up to rounding; a zero rectangle without one.
    QRectF imageFrameForCellFrame(const QRectF &frame) const;

    /// The frame without the image's column of image width + 3 points, which without an image is 3 points
    /// wide.
    QRectF editingFrameForCellFrame(const QRectF &frame, const QWidget *view = nullptr) const override;

    /// The text's size, made wider by the image's column.
    QSizeF cellSize() const override;

    /// The higher one of text and image.
    double rowHeight() const override;

    void drawWithFrameInView(const QRectF &frame, QWidget *view) override;
    void editWithFrameInView(const QRectF &frame, QWidget *view, QLineEdit *editor, QObject *delegate,
                             QEvent *event) override;
    void selectWithFrameInView(const QRectF &frame, QWidget *view, QLineEdit *editor, QObject *delegate,
                               int start, int length) override;

private:
    QImage m_image;
};
