// SPDX-License-Identifier: MIT
#include "hosts/application/when/ZoneChoice.h"

#include "DozelyKit/core/foundation/ZoneClock.h"
#include "hosts/application/when/WheelGuard.h"

#include <QCompleter>
#include <QLineEdit>
#include <QTimeZone>

#include <algorithm>

using namespace dozely;

ZoneChoice::ZoneChoice(QWidget *parent) : QComboBox(parent)
{
    constexpr int usualLength = 24; // letters; not that of the longest name of all
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(usualLength);
    WheelGuard::guard(this);
    setEditable(true);
    setInsertPolicy(QComboBox::NoInsert);
    addItem(tr("This machine's (%1)").arg(QString::fromUtf8(machineTimeZone().id())));
    QStringList names;
    for (const QByteArray &name : QTimeZone::availableTimeZoneIds()) {
        if (!name.startsWith("UTC+") && !name.startsWith("UTC-")) // which are no names of zones
            names += QString::fromUtf8(name);
    }
    std::sort(names.begin(), names.end());
    addItems(names);
    completer()->setFilterMode(Qt::MatchContains);
    completer()->setCompletionMode(QCompleter::PopupCompletion);
    connect(this, &QComboBox::currentTextChanged, this, &ZoneChoice::changed);
}

QString ZoneChoice::zone() const
{
    return currentText() == itemText(0) ? QString() : currentText().trimmed();
}

void ZoneChoice::setZone(const QString &name)
{
    const QSignalBlocker quiet(this);
    setCurrentText(name.isEmpty() ? itemText(0) : name);
    const int known = name.isEmpty() ? 0 : findText(name);
    setCurrentIndex(known);
    if (known < 0) // an older name
        setEditText(name);
    lineEdit()->setCursorPosition(0); // the begin of a long one is what tells it from others
}
