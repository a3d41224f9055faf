// SPDX-License-Identifier: MIT
#include "hosts/application/window/ScheduleListModel.h"

#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/plugin/Names.h"
#include "hosts/application/book/ScheduleKeys.h"
#include "hosts/application/book/ScheduleTimes.h"
#include "hosts/application/when/DateInWords.h"

#include <QGuiApplication>

using namespace dozely;

namespace
{
/// When it takes place by what is wanted, as far as that is known here; invalid where it is not.
QDateTime nextOf(const BookEntry &entry)
{
    if (!entry.value(ScheduleKey::isEnabled).toBool())
        return {};
    const auto isAsApplied = [&](QLatin1StringView key) {
        return entry.applied && entry.applied->value(key) == entry.value(key);
    };
    if (isAsApplied(ScheduleKey::date) && isAsApplied(ScheduleKey::repeats) &&
        isAsApplied(ScheduleKey::timeZone) && isAsApplied(ScheduleKey::isEnabled))
        return entry.next;
    const ScheduleTimes times = entry.wanted ? ScheduleTimes::of(*entry.wanted) : ScheduleTimes();
    const bool isAhead = times.date > Port<Clock>::current()->currentDate();
    return isAhead && !times.recurrence ? times.date : QDateTime();
}
} // namespace

ScheduleListModel::ScheduleListModel(ScheduleBook &book, ActionSides &sides, QObject *parent)
    : QAbstractListModel(parent), m_book(book), m_sides(sides)
{
    connect(&book, &ScheduleBook::aboutToAppend, this,
            [this](int count) { beginInsertRows({}, m_book.count(), m_book.count() + count - 1); });
    connect(&book, &ScheduleBook::appended, this, [this] { endInsertRows(); });
    connect(&book, &ScheduleBook::rowChanged, this, [this](int row) {
        m_next.remove(row);
        Q_EMIT dataChanged(index(row), index(row));
    });
    connect(&sides, &ActionSides::stateChanged, this, [this] {
        tellAll({CellRole, Qt::AccessibleTextRole});
    });
    m_midnight.setSingleShot(true);
    connect(&m_midnight, &QTimer::timeout, this, &ScheduleListModel::waitForTomorrow);
    // A machine that slept, or whose clock was set, is looked at again.
    connect(qGuiApp, &QGuiApplication::applicationStateChanged, this, [this](Qt::ApplicationState state) {
        if (state == Qt::ApplicationActive)
            waitForTomorrow();
    });
    waitForTomorrow();
}

void ScheduleListModel::waitForTomorrow()
{
    const QDateTime now = QDateTime::currentDateTime();
    m_midnight.start(std::chrono::milliseconds(now.msecsTo(now.date().addDays(1).startOfDay()) + 1000));
    tellAll({CellRole, Qt::AccessibleTextRole});
}

void ScheduleListModel::tellAll(const QList<int> &roles)
{
    if (m_book.count() > 0)
        Q_EMIT dataChanged(index(0), index(m_book.count() - 1), roles);
}

int ScheduleListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_book.count();
}

Qt::ItemFlags ScheduleListModel::flags(const QModelIndex &index) const
{
    const Qt::ItemFlags usual = QAbstractListModel::flags(index);
    return index.isValid() ? usual | Qt::ItemIsUserCheckable | Qt::ItemNeverHasChildren : usual;
}

QVariant ScheduleListModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    const BookEntry &entry = m_book.at(index.row());
    switch (role) {
    case Qt::DisplayRole: // what is searched and sorted by
        return entry.value(ScheduleKey::name);
    case Qt::CheckStateRole:
        return entry.value(ScheduleKey::isEnabled).toBool() ? Qt::Checked : Qt::Unchecked;
    case Qt::AccessibleTextRole:
        return spokenOf(entry);
    case CellRole:
        return cellOf(entry);
    case KeyRole:
        return entry.key;
    case NextRole:
        return nextAt(index.row());
    case WantedRole:
        return entry.wanted.has_value();
    default:
        return {};
    }
}

QDateTime ScheduleListModel::nextAt(int row) const
{
    auto known = m_next.find(row);
    if (known == m_next.end())
        known = m_next.insert(row, nextOf(m_book.at(row)));
    return *known;
}

bool ScheduleListModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    if (!index.isValid() || role != Qt::CheckStateRole)
        return false;
    const bool isEnabled = value.toInt() == Qt::Checked;
    m_book.change(m_book.at(index.row()).key, {{ScheduleKey::isEnabled, isEnabled}},
                  isEnabled ? tr("Switching on") : tr("Switching off"));
    return true;
}

QString ScheduleListModel::timeOf(const BookEntry &entry) const
{
    if (!entry.value(ScheduleKey::isEnabled).toBool())
        return tr("off");
    const QDateTime next = nextOf(entry);
    if (next.isValid())
        return DateInWords::of(next, Port<Clock>::current()->currentDate(), QTimeZone::systemTimeZone(),
                               QLocale());
    return entry.isChanged() ? QString() : tr("over");
}

QVariantMap ScheduleListModel::cellOf(const BookEntry &entry) const
{
    const QVariantMap parameters = entry.value(ScheduleKey::parameters).toMap();
    const QString name = entry.value(ScheduleKey::name).toString();
    return {{"Name", entry.isChanged() ? QString("%1 •").arg(name) : name},
            {"Time", timeOf(entry)},
            {"Action", m_sides.description(entry.value(ScheduleKey::bundlePath).toString(), parameters)},
            {"Startup", parameters.value(ParameterKey::needsStartup)},
            {"Wake Up", parameters.value(ParameterKey::needsWakeUp)}};
}

QString ScheduleListModel::spokenOf(const BookEntry &entry) const
{
    const QVariantMap cell = cellOf(entry);
    QStringList parts{entry.value(ScheduleKey::name).toString(), cell.value("Time").toString(),
                      cell.value("Action").toString()};
    if (entry.isChanged())
        parts += tr("not applied yet");
    parts.removeAll(QString());
    return parts.join(", ");
}
