// SPDX-License-Identifier: MIT
#include "hosts/agent/AlertWindow.h"

#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/interface/controls/ZDRButton.h"
#include "DozelyKit/interface/controls/ZDRProgressIndicator.h"
#include "DozelyKit/plugin/Names.h"
#include "hosts/agent/LaterButton.h"

#include <QBoxLayout>
#include <QLabel>
#include <QShortcut>

#include <algorithm>

using namespace dozely;

using std::chrono::duration;

namespace
{
constexpr int windowWidth = 340;
constexpr int margin = 18;
constexpr int pieSize = 56;
constexpr int betweenButtons = 10;
constexpr int longestText = 400; // of a plug-in that would fill the screen

QLabel *makeLabel(QWidget *parent)
{
    auto *const label = new QLabel(parent);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    QPalette palette = label->palette();
    palette.setColor(QPalette::WindowText, QColor::fromRgbF(1, 1, 1, 0.9F));
    label->setPalette(palette);
    return label;
}

QString shortened(const QString &text)
{
    return text.size() <= longestText ? text : text.left(longestText - 1) + QChar(0x2026);
}

/// Twelve steps a second for a countdown of seconds, some hundred steps in all for one of hours.
duration<double> stepFor(double seconds)
{
    return duration<double>(std::clamp(seconds / 360, 1.0 / 12, 60.0));
}
} // namespace

AlertWindow::AlertWindow()
    : m_content(new QWidget),
      m_title(makeLabel(m_content)),
      m_message(makeLabel(m_content)),
      m_button(new ZDRButton(m_content)),
      m_later(new LaterButton(m_content)),
      m_pie(new ZDRProgressIndicator(m_content)),
      m_timer(Port<Clock>::current()->makeAbsoluteTimer())
{
    setAttribute(Qt::WA_ShowWithoutActivating);
    QFont bold = m_title->font();
    bold.setBold(true);
    m_title->setFont(bold);
    m_pie->setFixedSize(pieSize, pieSize);

    auto *const buttons = new QHBoxLayout;
    buttons->setSpacing(betweenButtons);
    buttons->addStretch();
    buttons->addWidget(m_later);
    buttons->addWidget(m_button);
    setTabOrder(m_later, m_button);
    auto *const texts = new QVBoxLayout;
    texts->setSpacing(10);
    texts->addWidget(m_title);
    texts->addWidget(m_message);
    texts->addStretch();
    texts->addLayout(buttons);
    auto *const row = new QHBoxLayout(m_content);
    row->setContentsMargins(margin, margin, margin, margin);
    row->setSpacing(margin);
    row->addWidget(m_pie, 0, Qt::AlignVCenter);
    row->addLayout(texts, 1);
    setContentView(m_content);

    connect(m_button, &QAbstractButton::clicked, this, [this] {
        if (!m_isWithdrawn)
            Q_EMIT activated();
    });
    connect(m_later, &LaterButton::chosen, this, [this](Postponement choice) {
        if (!m_isWithdrawn)
            Q_EMIT putOff(choice);
    });
    connect(new QShortcut(Qt::Key_Escape, this), &QShortcut::activated, this, &QWidget::close);
    connect(m_timer.get(), &AbsoluteTimer::due, this, &AlertWindow::showRemainingTime);
    connect(m_timer.get(), &AbsoluteTimer::clockChanged, this, &AlertWindow::showRemainingTime);
}

AlertWindow::~AlertWindow() = default;

void AlertWindow::fill(const NSUserNotification &notification, bool mayBePutOff)
{
    setWindowTitle(notification.title());
    setLayoutDirection(notification.informativeText().isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
    m_later->setDirection(layoutDirection());
    m_title->setText(shortened(notification.title()));
    m_message->setText(shortened(notification.informativeText()));
    m_button->setText(notification.actionButtonTitle());
    m_button->setHidden(notification.actionButtonTitle().isEmpty());
    m_later->setHidden(!mayBePutOff);
    fitToText(*m_button);
    fitToText(*m_later);
    countDownTo(notification.userInfo().value(AlertKey::date).toDateTime());
    resize(wantedSize());
}

void AlertWindow::fitToText(ZDRButton &button)
{
    button.setFixedSize(button.sizeHint());
    button.awakeFromNib(); // it has its size now
}

QSize AlertWindow::wantedSize() const
{
    const QLayout *const layout = m_content->layout();
    const int width = std::max(windowWidth, layout->totalMinimumSize().width());
    return {width, layout->hasHeightForWidth() ? layout->totalHeightForWidth(width)
                                               : layout->totalSizeHint().height()};
}

void AlertWindow::countDownTo(const QDateTime &date)
{
    if (!date.isValid()) {
        m_date = {};
        m_timer->stop();
        m_pie->hide();
        return;
    }
    m_pie->show();
    if (date == m_date)
        return; // shown anew, it goes on
    m_date = date;
    m_timer->start(date);
    const double seconds = static_cast<double>(Port<Clock>::current()->currentDate().msecsTo(date)) / 1000;
    const auto step = stepFor(seconds);
    m_pie->setMaxValue(static_cast<float>(std::max(seconds, 1.0)));
    m_pie->setIntervalValue(static_cast<float>(step.count()));
    m_pie->setAnimationDelay(step);
    showRemainingTime();
}

void AlertWindow::showRemainingTime()
{
    // The machine may have slept, or its clock been set: the pie itself counts evenly.
    const qint64 left = Port<Clock>::current()->currentDate().msecsTo(m_date);
    m_pie->setFloatValue(static_cast<float>(std::max<qint64>(left, 0)) / 1000);
    if (left > 0)
        m_pie->startAnimation();
}

void AlertWindow::withdraw()
{
    m_isWithdrawn = true;
    m_button->setEnabled(false);
    m_later->setEnabled(false);
    m_later->closeMenu();
    performClose();
}

void AlertWindow::showEvent(QShowEvent *event)
{
    ZDRBezelWindow::showEvent(event);
    resize(wantedSize()); // what the texts need is only known for certain now
}

void AlertWindow::closeEvent(QCloseEvent *event)
{
    ZDRBezelWindow::closeEvent(event);
    if (!m_isWithdrawn)
        Q_EMIT dismissed();
}
