// SPDX-License-Identifier: MIT
#include "DozelyKit/interface/controls/ZDRButton.h"

#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QShortcut>
#include <QStyleOptionButton>

namespace
{
constexpr double borderWidth = 0.75;
constexpr int additionalWidth = 20;

QColor white(float alpha)
{
    return QColor::fromRgbF(1, 1, 1, alpha);
}

QColor black(float alpha)
{
    return QColor::fromRgbF(0, 0, 0, alpha);
}

/// The keys that a single character stands for; none for several.
QKeySequence keysFor(const QString &characters)
{
    if (characters == "\r")
        return Qt::Key_Return;
    if (characters == "\x1b")
        return Qt::Key_Escape;
    return characters.size() == 1 ? QKeySequence(characters.toUpper()) : QKeySequence();
}
} // namespace

ZDRButton::ZDRButton(QWidget *parent) : QPushButton(parent) {}

ZDRButton::ZDRButton(const QString &title, QWidget *parent) : QPushButton(title, parent) {}

ZDRButton::~ZDRButton() = default;

void ZDRButton::awakeFromNib()
{
    if (isDefault() && m_keyEquivalent.isEmpty())
        setKeyEquivalent("\r");
    m_wantsLayer = true;
    m_layer.masksToBounds = true;
    m_layer.cornerRadius = height() / 2.0;
    m_layer.borderWidth = borderWidth;
    // Later: whoever loads the button may still change it.
    QMetaObject::invokeMethod(
        this, [this] { setButtonState(Normal); }, Qt::QueuedConnection);
}

QSize ZDRButton::intrinsicContentSize() const
{
    return QPushButton::sizeHint() + sizeOfTitleIn(titleFont()) - sizeOfTitleIn(font()) +
           QSize(additionalWidth, 0);
}

QSize ZDRButton::sizeOfTitleIn(const QFont &font) const
{
    QStyleOptionButton option;
    initStyleOption(&option);
    option.fontMetrics = QFontMetrics(font);
    const QSize title = option.fontMetrics.size(Qt::TextShowMnemonic, text());
    return style()->sizeFromContents(QStyle::CT_PushButton, &option, title, this);
}

void ZDRButton::setButtonState(quint64 state)
{
    m_layer.borderColor = Qt::white;
    switch (state) {
    case Normal:
        m_layer.backgroundColor = black(isMainButton() ? 0.6F : 0.4F);
        break;
    case Hovered:
        m_layer.backgroundColor = white(0.5F);
        m_layer.borderColor = Qt::black;
        break;
    case Pressed:
        m_layer.backgroundColor = black(1);
        m_layer.borderColor = Qt::transparent;
        break;
    default:
        m_layer.backgroundColor = QColor();
        break;
    }
    setTextColor(white(0.9F));
}

void ZDRButton::setTextColor(const QColor &color)
{
    QTextCharFormat attributes = titleAttributes();
    attributes.setForeground(color);
    setTitleAttributes(attributes);
}

QTextCharFormat ZDRButton::titleAttributes() const
{
    return m_titleAttributes;
}

void ZDRButton::setTitleAttributes(const QTextCharFormat &attributes)
{
    const QFont former = titleFont();
    m_titleAttributes = attributes;
    if (titleFont() != former)
        updateGeometry();
    update();
}

QString ZDRButton::keyEquivalent() const
{
    return m_keyEquivalent;
}

void ZDRButton::setKeyEquivalent(const QString &characters)
{
    m_keyEquivalent = characters;
    // Not the button's own shortcut, which every change of the title sets anew.
    if (!m_shortcut) {
        m_shortcut = new QShortcut(this);
        connect(m_shortcut, &QShortcut::activated, this, &QAbstractButton::animateClick);
    }
    m_shortcut->setKey(keysFor(characters));
}

bool ZDRButton::isMainButton() const
{
    return m_keyEquivalent == "\r";
}

bool ZDRButton::wantsLayer() const
{
    return m_wantsLayer;
}

const ZDRLayer &ZDRButton::layer() const
{
    return m_layer;
}

void ZDRButton::enterEvent(QEnterEvent *event)
{
    setButtonState(Hovered);
    QPushButton::enterEvent(event);
}

void ZDRButton::leaveEvent(QEvent *event)
{
    setButtonState(Normal);
    QPushButton::leaveEvent(event);
}

void ZDRButton::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        setButtonState(Pressed);
    QPushButton::mousePressEvent(event);
}

void ZDRButton::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        setButtonState(Normal);
    QPushButton::mouseReleaseEvent(event);
}

QFont ZDRButton::titleFont() const
{
    return m_titleAttributes.font().resolve(font());
}

void ZDRButton::paintLayer(QPainter &painter) const
{
    const QRectF bounds(rect());
    if (m_layer.backgroundColor.isValid()) {
        QPainterPath path;
        path.addRoundedRect(bounds, m_layer.cornerRadius, m_layer.cornerRadius);
        painter.fillPath(path, m_layer.backgroundColor);
    }
    if (m_layer.borderColor.isValid() && m_layer.borderWidth > 0) {
        const double inset = m_layer.borderWidth / 2;
        painter.setPen(QPen(m_layer.borderColor, m_layer.borderWidth));
        painter.drawRoundedRect(bounds.adjusted(inset, inset, -inset, -inset), m_layer.cornerRadius - inset,
                                m_layer.cornerRadius - inset);
    }
    if (hasFocus() && window()->testAttribute(Qt::WA_KeyboardFocusChange)) {
        constexpr double ring = 2;
        const double inset = m_layer.borderWidth + ring / 2;
        painter.setPen(QPen(palette().highlight(), ring));
        painter.drawRoundedRect(bounds.adjusted(inset, inset, -inset, -inset), m_layer.cornerRadius - inset,
                                m_layer.cornerRadius - inset);
    }
}

void ZDRButton::paintTitle(QPainter &painter) const
{
    painter.setFont(titleFont());
    painter.setPen(m_titleAttributes.hasProperty(QTextFormat::ForegroundBrush)
                       ? m_titleAttributes.foreground().color()
                       : palette().buttonText().color());
    painter.drawText(rect(), Qt::AlignCenter | Qt::TextShowMnemonic, text());
}

void ZDRButton::paintEvent(QPaintEvent *event)
{
    if (!m_wantsLayer) {
        QPushButton::paintEvent(event);
        return;
    }
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (!isEnabled())
        painter.setOpacity(0.4);
    paintLayer(painter);
    if (m_layer.masksToBounds) {
        QPainterPath bounds;
        bounds.addRoundedRect(QRectF(rect()), m_layer.cornerRadius, m_layer.cornerRadius);
        painter.setClipPath(bounds);
    }
    paintTitle(painter);
}
