// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/interface/Export.h"
#include "DozelyKit/interface/controls/ZDRLayer.h"

#include <QPushButton>
#include <QTextCharFormat>

class QShortcut;

/// A pill-shaped push button for dark translucent panels. Its look follows the pointer (normal, hovered,
/// pressed) and is darker when Return presses it.
///
/// The look begins with awakeFromNib, which the loader of interface files calls; a button made in code is
/// given its size first, then told so. Until then it looks like any QPushButton.
///
/// It is pressed by the pointer, by Space while it has the focus, and by its key equivalent from anywhere in
/// its window; it looks pressed meanwhile. A disabled one does not follow the pointer. A screen reader sees a
/// push button with the title as its name, unless it was given another.
///
/// THREADING: the main thread.
class DOZELYINTERFACE_EXPORT ZDRButton : public QPushButton
{
    Q_OBJECT
    Q_PROPERTY(QString keyEquivalent READ keyEquivalent WRITE setKeyEquivalent)
public:
    enum State : quint64 { Normal = 0, Hovered = 1, Pressed = 2 };

    explicit ZDRButton(QWidget *parent = nullptr);
    explicit ZDRButton(const QString &title, QWidget *parent = nullptr);
    ~ZDRButton() override;

    /// Gives the button its layer, round as its height is now, and from the event loop the normal look. In an
    /// interface file the property "default" stands for the key equivalent Return.
    Q_INVOKABLE void awakeFromNib();

    /// The size that the title needs in its font, and 20 points of width besides.
    QSize intrinsicContentSize() const;
    QSize sizeHint() const override { return intrinsicContentSize(); }
    QSize minimumSizeHint() const override { return intrinsicContentSize(); }

    /// Sets the colours of background, border and title; a number that is no State removes the background.
    void setButtonState(quint64 state);

    /// The title's colour; all else that the title has stays.
    void setTextColor(const QColor &color);

    /// The font and other attributes of the title; what is not set comes from the widget. Titles are centred,
    /// whatever is set.
    QTextCharFormat titleAttributes() const;
    void setTitleAttributes(const QTextCharFormat &attributes);

    /// The character that presses the button from anywhere in its window: "\r" is Return, "\x1b" Escape.
    /// Several characters are kept but press nothing.
    QString keyEquivalent() const;
    void setKeyEquivalent(const QString &characters);

    /// Whether Return presses it: the key equivalent is that one character.
    bool isMainButton() const;

    bool wantsLayer() const;
    const ZDRLayer &layer() const;

protected:
    void enterEvent(QEnterEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void changeEvent(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    /// The look while a key presses the button, or a program does.
    void followKeys(State state);
    void paintLayer(QPainter &painter) const;
    void paintTitle(QPainter &painter) const;
    QFont titleFont() const;
    /// What a button needs for a title in that font, margins included.
    QSize sizeOfTitleIn(const QFont &font) const;

    ZDRLayer m_layer;
    QTextCharFormat m_titleAttributes;
    QString m_keyEquivalent;
    QShortcut *m_shortcut = nullptr; // a child
    bool m_wantsLayer = false;
    bool m_followsPointer = false; // from a press on, until it is released
};
