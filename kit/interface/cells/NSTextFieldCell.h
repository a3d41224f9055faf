// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/interface/Export.h"

#include <QColor>
#include <QFont>
#include <QObject>
#include <QRectF>
#include <QVariant>

#include <memory>

class QEvent;
class QLineEdit;
class QWidget;

/// A cell: draws one value into one rectangle of a list, as often as there are rows. CellDelegate lets Qt's
/// item views draw and edit with one.
///
/// A cell draws into the current NSGraphicsContext and draws nothing without one. Frames are in the
/// coordinates of that context; sizes are points. `view` says whose palette counts; null stands for the
/// application's.
///
/// THREADING: the main thread. OWNERSHIP: held by std::shared_ptr; copies are made with copy().
class DOZELYINTERFACE_EXPORT NSTextFieldCell : public QObject
{
    Q_OBJECT
public:
    NSTextFieldCell();
    ~NSTextFieldCell() override;

    /// A new cell of the same class with the same state.
    virtual std::shared_ptr<NSTextFieldCell> copy() const;

    /// What is drawn; an invalid QVariant is no value.
    virtual void setObjectValue(const QVariant &value);
    QVariant objectValue() const;

    /// The value as a text; empty for what has none.
    QString stringValue() const;

    bool isEnabled() const; ///< True unless set.
    void setEnabled(bool enabled);

    /// Whether the row is selected: the text then has the palette's colour for that.
    bool isHighlighted() const;
    void setHighlighted(bool highlighted);

    /// The user's font in the small system size, as they are now, unless set.
    QFont font() const;
    void setFont(const QFont &font);

    /// The palette's text colour unless set.
    void setTextColor(const QColor &color);
    QColor textColor() const;

    /// Whether the frame is filled before the text is drawn; false unless set. The colour is the palette's
    /// base colour unless set.
    /// @{
    bool drawsBackground() const;
    void setDrawsBackground(bool draws);
    void setBackgroundColor(const QColor &color);
    QColor backgroundColor() const;
    /// @}

    /// The room that the text needs.
    virtual QSizeF cellSize() const;

    /// How high a row must be to show all that the cell draws.
    virtual double rowHeight() const;

    /// What a screen reader says of the value: the text.
    virtual QString accessibilityLabel() const;

    /// Draws background and interior.
    virtual void drawWithFrameInView(const QRectF &frame, QWidget *view);

    /// Draws the text: on one line in the middle of the height, cut short with an ellipsis when it is too
    /// wide, at the side where the view's reading direction begins.
    virtual void drawInteriorWithFrameInView(const QRectF &frame, QWidget *view);

    /// Where in the frame the text is edited: the whole frame.
    virtual QRectF editingFrameForCellFrame(const QRectF &frame, const QWidget *view = nullptr) const;

    /// Puts the editor, which becomes a child of `view`, into the frame with the text and lets the user
    /// begin. `delegate` becomes the editor's event filter, when there is one; `event`, which began it, may
    /// be null.
    virtual void editWithFrameInView(const QRectF &frame, QWidget *view, QLineEdit *editor, QObject *delegate,
                                     QEvent *event);

    /// The same, with `length` characters from `start` on selected.
    virtual void selectWithFrameInView(const QRectF &frame, QWidget *view, QLineEdit *editor,
                                       QObject *delegate, int start, int length);

protected:
    /// Makes `cell` a copy of this one as far as this class is concerned.
    void copyStateTo(NSTextFieldCell &cell) const;

    /// The colour of the background in a view: the one set, else the palette's.
    QColor backgroundColorInView(const QWidget *view) const;

private:
    struct Private;
    std::unique_ptr<Private> d;
};
