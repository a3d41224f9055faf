// SPDX-License-Identifier: MIT
#include "hosts/agent/AlertWindow.h"

#include "DozelyKit/interface/controls/ZDRProgressIndicator.h"
#include "DozelyKit/interface/windows/ZDRBezelView.h"
#include "DozelyKit/plugin/Names.h"
#include "hosts/agent/AgentTexts.h"
#include "hosts/agent/AlertAccessible.h"
#include "hosts/agent/AlertButton.h"
#include "hosts/agent/AlertGround.h"
#include "hosts/agent/AlertLabel.h"
#include "hosts/agent/LaterButton.h"
#include "hosts/agent/TimeLeft.h"

#include <QBoxLayout>
#include <QEvent>
#include <QGuiApplication>
#include <QPainter>
#include <QShortcut>

#include <algorithm>

using namespace dozely;

using std::chrono::milliseconds;

namespace
{
constexpr int windowWidth = 340;
constexpr int margin = 18;
constexpr int pieSize = 56;
constexpr int betweenButtons = 10;
constexpr int longestTitleOfButton = 60;
constexpr double smallFont = 0.85;

QFont scaled(QFont font, double factor)
{
    if (font.pixelSize() > 0)
        font.setPixelSize(std::max(1, qRound(font.pixelSize() * factor)));
    else
        font.setPointSizeF(font.pointSizeF() * factor);
    return font;
}

QString furtherAlerts(int count)
{
    if (count <= 0)
        return {};
    if (count <= 2)
        return agentText(count == 1 ? QString("And one more") : QString("And two more"));
    return agentText("And %@ more").replace("%@", QString::number(count));
}
} // namespace

AlertWindow::AlertWindow()
    : m_content(new AlertPanel),
      m_title(new AlertLabel(m_content)),
      m_schedule(new AlertLabel(m_content)),
      m_message(new AlertLabel(m_content)),
      m_timeLeft(new AlertLabel(m_content)),
      m_otherwise(new AlertLabel(m_content)),
      m_further(new AlertLabel(m_content)),
      m_button(new AlertButton(m_content)),
      m_later(new LaterButton(m_content)),
      m_hide(new AlertButton(agentText("Hide"), m_content)),
      m_pie(new ZDRProgressIndicator(m_content))
{
    AlertAccessible::install();
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_X11NetWmWindowTypeNotification); // above windows that fill the screen, if anything is
    m_hide->setIsSmall(true);
    m_pie->setFixedSize(pieSize, pieSize);
    m_pie->setAccessibleName(agentText("Time left"));
    layOut();
    setContentView(m_content);
    contentView()->installEventFilter(this);
    m_content->installEventFilter(this);
    colorTexts();
    m_further->hide();
    for (auto *const button : {m_button, static_cast<AlertButton *>(m_later), m_hide})
        button->setEnabled(false); // until the gate opens

    connect(m_button, &QAbstractButton::clicked, this, &AlertWindow::activated);
    connect(m_later, &LaterButton::chosen, this, &AlertWindow::putOff);
    connect(m_hide, &QAbstractButton::clicked, this, &AlertWindow::dismissed);
    connect(&m_gate, &InputGate::opened, this, &AlertWindow::takeInput);
    connect(&m_exposure, &WindowExposure::changed, &m_countdown, &AlertCountdown::setSeen);
    connect(&m_countdown, &AlertCountdown::stepped, this, &AlertWindow::showTimeLeft);
}

AlertWindow::~AlertWindow() = default;

void AlertWindow::layOut()
{
    auto *const texts = new QVBoxLayout;
    texts->setSpacing(6);
    for (auto *const label : {m_title, m_schedule, m_message, m_timeLeft, m_otherwise})
        texts->addWidget(label);
    texts->addStretch();
    auto *const row = new QHBoxLayout;
    row->setSpacing(margin);
    row->addWidget(m_pie, 0, Qt::AlignTop);
    row->addLayout(texts, 1);
    auto *const buttons = new QHBoxLayout;
    buttons->setSpacing(betweenButtons);
    buttons->addWidget(m_hide, 0, Qt::AlignVCenter);
    buttons->addStretch();
    buttons->addWidget(m_later, 0, Qt::AlignVCenter);
    buttons->addWidget(m_button, 0, Qt::AlignVCenter);
    setTabOrder(m_hide, m_later);
    setTabOrder(m_later, m_button);
    auto *const all = new QVBoxLayout(m_content);
    all->setContentsMargins(margin, margin, margin, margin);
    all->setSpacing(12);
    all->addLayout(row);
    all->addLayout(buttons);
    all->addWidget(m_further);
}

void AlertWindow::fill(const NSUserNotification &notification, bool mayBePutOff, const AlertDetails &details)
{
    setWindowTitle(notification.title());
    setLayoutDirection(notification.informativeText().isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
    m_later->setDirection(layoutDirection());
    m_title->showText(notification.title());
    m_schedule->showText(details.schedule == notification.title() ? QString() : details.schedule);
    m_message->showText(notification.informativeText());
    m_otherwise->showText(details.otherwise);
    const QString button = notification.actionButtonTitle();
    m_button->setText(button.size() <= longestTitleOfButton
                          ? button
                          : button.left(longestTitleOfButton - 1) + QChar(0x2026));
    m_button->setHidden(button.isEmpty());
    m_later->setHidden(!mayBePutOff);
    countDownTo(notification.userInfo().value(AlertKey::date).toDateTime());
    fitButtons();
}

void AlertWindow::setFurtherAlerts(int count)
{
    const QString text = furtherAlerts(count);
    if (text == m_further->text())
        return;
    m_further->showText(text);
    fit();
}

void AlertWindow::fitButtons()
{
    QFont bold; // in all else that of the window
    bold.setBold(true);
    m_title->setFont(bold);
    m_hide->setFont(scaled(font(), smallFont));
    m_further->setFont(scaled(font(), smallFont));
    for (auto *const button : {m_button, static_cast<AlertButton *>(m_later), m_hide})
        button->fitToTitle();
    fit();
}

void AlertWindow::fit()
{
    QLayout *const layout = m_content->layout();
    layout->invalidate();
    layout->activate(); // so that the layouts within it measure anew, too
    resize(wantedSize());
}

void AlertWindow::colorTexts()
{
    const QColor color = AlertGround::textColor(AlertGround::isHighContrast(palette()));
    for (auto *const label : {m_title, m_schedule, m_message, m_timeLeft, m_otherwise, m_further}) {
        QPalette colors = label->palette();
        colors.setColor(QPalette::WindowText, color);
        label->setPalette(colors);
    }
}

QSize AlertWindow::wantedSize() const
{
    const QLayout *const layout = m_content->layout();
    const int width = std::max(windowWidth, layout->totalMinimumSize().width());
    return {width, layout->hasHeightForWidth() ? layout->totalHeightForWidth(width)
                                               : layout->totalSizeHint().height()};
}

QString AlertWindow::spokenText() const
{
    QStringList lines;
    for (const auto *const label : {m_schedule, m_message, m_timeLeft, m_otherwise, m_further}) {
        if (!label->isHidden())
            lines += label->text();
    }
    return lines.join('\n');
}

void AlertWindow::takeInput()
{
    if (m_isWithdrawn)
        return;
    for (auto *const button : {m_button, static_cast<AlertButton *>(m_later), m_hide})
        button->setEnabled(true);
    connect(new QShortcut(Qt::Key_Escape, this), &QShortcut::activated, this, &AlertWindow::dismissed);
    // A compositor may have given it the keys unasked: what is being typed there must not press anything.
    if (!QGuiApplication::platformName().startsWith("wayland"))
        m_button->setFocus();
}

void AlertWindow::countDownTo(const QDateTime &date)
{
    m_pie->setVisible(date.isValid());
    if (!date.isValid())
        m_timeLeft->showText({});
    m_countdown.begin(date);
}

void AlertWindow::showTimeLeft(milliseconds left)
{
    m_pie->setMaxValue(static_cast<float>(m_countdown.whole().count()) / 1000);
    m_pie->setFloatValue(static_cast<float>(left.count()) / 1000);
    const QString words = TimeLeft::inWords(left, agentLanguage());
    if (words != m_timeLeft->text())
        m_timeLeft->showText(words);
}

void AlertWindow::withdraw()
{
    m_isWithdrawn = true;
    for (auto *const button : {m_button, static_cast<AlertButton *>(m_later), m_hide})
        button->setEnabled(false);
    m_later->closeMenu();
    m_countdown.stop();
    disconnect(&m_exposure, nullptr, this, nullptr);
    performClose();
}

bool AlertWindow::eventFilter(QObject *receiver, QEvent *event)
{
    const auto *const bezel = qobject_cast<ZDRBezelView *>(receiver);
    if (bezel && event->type() == QEvent::MouseButtonPress)
        m_pressedAt = pos();
    if (bezel && event->type() == QEvent::MouseButtonRelease && pos() != m_pressedAt)
        Q_EMIT dragged();
    if (receiver == m_content && event->type() == QEvent::LayoutRequest)
        fit(); // another font, or a line more
    return ZDRBezelWindow::eventFilter(receiver, event);
}

void AlertWindow::showEvent(QShowEvent *event)
{
    ZDRBezelWindow::showEvent(event);
    fit(); // what the texts need is only known for certain now
    AlertAccessible::announce(*this);
}

void AlertWindow::closeEvent(QCloseEvent *event)
{
    ZDRBezelWindow::closeEvent(event);
    if (!m_isWithdrawn)
        Q_EMIT dismissed();
}

void AlertWindow::changeEvent(QEvent *event)
{
    ZDRBezelWindow::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        colorTexts();
    else if (event->type() == QEvent::FontChange) // before those of some of its views
        QMetaObject::invokeMethod(this, &AlertWindow::fitButtons, Qt::QueuedConnection);
}

void AlertWindow::paintEvent(QPaintEvent *event)
{
    ZDRBezelWindow::paintEvent(event);
    QPainter painter(this);
    AlertGround::paint(painter, rect(), AlertGround::isHighContrast(palette()));
}
