// SPDX-License-Identifier: MIT
#include "hosts/application/when/TimesOfDay.h"

#include "hosts/application/when/DateInWords.h"
#include "hosts/application/when/Timing.h"
#include "hosts/application/when/WheelGuard.h"

#include <QGridLayout>
#include <QTimeEdit>
#include <QToolButton>

#include <algorithm>

namespace
{
constexpr int perLine = 3;
} // namespace

TimesOfDay::TimesOfDay(QWidget *parent)
    : QWidget(parent), m_layout(new QGridLayout(this)), m_add(new QToolButton(this))
{
    m_layout->setContentsMargins(0, 0, 0, 0);
    m_layout->setColumnStretch(2 * perLine + 1, 1);
    m_add->setText(tr("Another time"));
    m_add->setAccessibleDescription(tr("Adds another time of day"));
    m_add->setFocusPolicy(Qt::StrongFocus);
    connect(m_add, &QToolButton::clicked, this, &TimesOfDay::addAnother);
    setTimes({QTime(0, 0)});
}

void TimesOfDay::setSeveral(bool areSeveral)
{
    m_areSeveral = areSeveral;
    arrange();
}

QList<QTime> TimesOfDay::times() const
{
    QList<QTime> times;
    for (const Row &row : m_rows) {
        if (const QTime time = row.edit->time(); !times.contains(time))
            times += time;
        if (!m_areSeveral)
            break;
    }
    std::sort(times.begin(), times.end());
    return times;
}

void TimesOfDay::setTimes(const QList<QTime> &times)
{
    while (m_rows.size() > times.size())
        remove(m_rows.constLast().edit);
    for (qsizetype i = 0; i < times.size(); ++i) {
        if (i == m_rows.size())
            add(times.at(i));
        const QSignalBlocker quiet(m_rows.at(i).edit);
        m_rows.at(i).edit->setDisplayFormat(DateInWords::format(times.at(i), locale()));
        m_rows.at(i).edit->setTime(times.at(i));
    }
    arrange();
}

void TimesOfDay::add(QTime time)
{
    auto *const edit = new QTimeEdit(time, this);
    WheelGuard::guard(edit);
    edit->setLayoutDirection(Qt::LeftToRight); // else Qt puts the minutes before the hours
    edit->setDisplayFormat(DateInWords::format(time, locale()));
    edit->setAccessibleName(tr("Time"));
    connect(edit, &QTimeEdit::timeChanged, this, &TimesOfDay::changed);
    auto *const removing = new QToolButton(this);
    removing->setText(QString(QChar(0x2212))); // a minus
    removing->setToolTip(tr("Remove this time"));
    removing->setAccessibleName(tr("Remove this time"));
    removing->setFocusPolicy(Qt::StrongFocus);
    connect(removing, &QToolButton::clicked, this, [this, edit] {
        remove(edit);
        arrange();
        m_rows.constFirst().edit->setFocus(Qt::TabFocusReason);
        Q_EMIT changed();
    });
    m_rows += {edit, removing};
    if (m_rows.size() == 1)
        setFocusProxy(edit);
}

void TimesOfDay::addAnother()
{
    // With the minutes of those there, so that one rule can mean them all.
    constexpr int hour = 3600;
    QTime time = m_rows.constLast().edit->time().addSecs(hour);
    while (times().contains(time))
        time = time.addSecs(hour);
    add(time);
    arrange();
    m_rows.constLast().edit->setFocus(Qt::TabFocusReason);
    Q_EMIT changed();
}

void TimesOfDay::remove(const QTimeEdit *edit)
{
    const auto row = std::find_if(m_rows.begin(), m_rows.end(), [&](const Row &r) { return r.edit == edit; });
    row->edit->hide();
    row->edit->deleteLater();
    row->remove->hide();
    row->remove->deleteLater(); // it may be the one that was clicked
    m_rows.erase(row);
    if (!m_rows.isEmpty())
        setFocusProxy(m_rows.constFirst().edit);
}

void TimesOfDay::arrange()
{
    QWidget *previous = nullptr;
    const auto follow = [&](QWidget *widget) {
        if (previous)
            setTabOrder(previous, widget);
        previous = widget;
    };
    for (qsizetype i = 0; i < m_rows.size(); ++i) {
        const auto line = static_cast<int>(i) / perLine;
        const auto column = static_cast<int>(i) % perLine * 2;
        const Row &row = m_rows.at(i);
        m_layout->addWidget(row.edit, line, column);
        m_layout->addWidget(row.remove, line, column + 1);
        row.edit->setVisible(i == 0 || m_areSeveral);
        row.remove->setVisible(m_areSeveral && m_rows.size() > 1);
        follow(row.edit);
        follow(row.remove);
    }
    const auto count = static_cast<int>(m_rows.size());
    const int column = count % perLine * 2;
    // As far as the column that takes what is left over, so that the fields above stay as they are.
    m_layout->addWidget(m_add, count / perLine, column, 1, 2 * perLine + 2 - column, Qt::AlignLeading);
    m_add->setVisible(m_areSeveral && count < Timing::mostTimes);
    follow(m_add);
}
