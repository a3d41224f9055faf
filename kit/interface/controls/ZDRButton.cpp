// SPDX-License-Identifier: MIT
#include "DozelyKit/interface/controls/ZDRButton.h"

#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QShortcut>
#include <QStyleOptionButton>

#include <algorithm>
#include <cmath>

namespace
{
constexpr double borderWidth = 0.75;
constexpr double focusRingWidth = 2;
constexpr int additionalWidth = 20;

QColor white(float alpha)
{
    return QColor::fromRgbF(1, 1, 1, alpha);
}

QColor black(float alpha)
{
    return QColor::fromRgbF(0, 0, 0, alpha);
}

/// The pixels of what is painted on: an edge between two of them is a blur.
class DevicePixels
{
public:
    explicit DevicePixels(const QPainter &painter) : m_toPixels(painter.deviceTransform()) {}

    /// The rectangle whose edges are whole pixels.
    QRectF whole(const QRectF &rect) const
    {
        const QRectF pixels = m_toPixels.mapRect(rect);
        const QPointF first(std::round(pixels.left()), std::round(pixels.top()));
        const QPointF last(std::round(pixels.right()), std::round(pixels.bottom()));
        return m_toPixels.inverted().mapRect(QRectF(first, last));
    }

    /// The width in points that is a whole number of pixels, one at least.
    double wholeWidth(double width) const
    {
        const double scale = m_toPixels.map(QLineF(0, 0, 0, 1)).length();
        return scale > 0 ? std::max(1.0, std::round(width * scale)) / scale : width;
    }

private:
    QTransform m_toPixels;
};

/// A ring of that width inside of the bounds.
void paintRing(QPainter &painter, const QRectF &bounds, double width, double radius, const QBrush &brush)
{
    QPainterPath ring;
    ring.addRoundedRect(bounds, radius, radius);
    ring.addRoundedRect(bounds.adjusted(width, width, -width, -width), radius - width, radius - width);
    painter.fillPath(ring, brush);
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

ZDRButton::ZDRButton(QWidget *parent) : ZDRButton(QString(), parent) {}

ZDRButton::ZDRButton(const QString &title, QWidget *parent) : QPushButton(title, parent)
{
    connect(this, &QAbstractButton::pressed, this, [this] { followKeys(Pressed); });
    connect(this, &QAbstractButton::released, this, [this] { followKeys(Normal); });
}

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
    if (isEnabled())
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
    m_followsPointer = event->button() == Qt::LeftButton;
    if (m_followsPointer)
        setButtonState(Pressed);
    QPushButton::mousePressEvent(event);
}

void ZDRButton::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        setButtonState(Normal);
    QPushButton::mouseReleaseEvent(event);
    m_followsPointer = false;
}

void ZDRButton::changeEvent(QEvent *event)
{
    QPushButton::changeEvent(event);
    if (event->type() == QEvent::EnabledChange && m_wantsLayer)
        setButtonState(isEnabled() && underMouse() ? Hovered : Normal);
}

void ZDRButton::followKeys(State state)
{
    if (!m_followsPointer && m_wantsLayer)
        setButtonState(state);
}

QFont ZDRButton::titleFont() const
{
    return m_titleAttributes.font().resolve(font());
}

void ZDRButton::paintLayer(QPainter &painter) const
{
    const DevicePixels pixels(painter);
    const QRectF bounds = pixels.whole(QRectF(rect()));
    const double radius = m_layer.cornerRadius;
    if (m_layer.backgroundColor.isValid()) {
        QPainterPath path;
        path.addRoundedRect(bounds, radius, radius);
        painter.fillPath(path, m_layer.backgroundColor);
    }
    if (m_layer.borderColor.isValid() && m_layer.borderWidth > 0)
        paintRing(painter, bounds, pixels.wholeWidth(m_layer.borderWidth), radius, m_layer.borderColor);
    if (hasFocus() && window()->testAttribute(Qt::WA_KeyboardFocusChange)) {
        const double border = pixels.wholeWidth(m_layer.borderWidth);
        paintRing(painter, bounds.adjusted(border, border, -border, -border),
                  pixels.wholeWidth(focusRingWidth), radius - border, palette().highlight());
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
