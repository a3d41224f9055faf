// SPDX-License-Identifier: MIT
#include "DozelyKit/system/machine/ProcessInfoExtensions.h"

#include "DozelyKit/system/machine/ProcessTable.h"

using namespace dozely;

namespace
{
template<class Number>
QList<Number> ofProcessesWithName(const QString &name, Number ProcessTable::Process::*field)
{
    const QByteArray wanted = name.toUtf8();
    QList<Number> numbers;
    for (const ProcessTable::Process &process : Port<ProcessTable>::current()->processes()) {
        if (process.name == wanted)
            numbers += process.*field;
    }
    return numbers;
}
} // namespace

QList<qint32> zandorSoftwaresExtensions::pidsOfProcessesWithName(const QString &name)
{
    return ofProcessesWithName(name, &ProcessTable::Process::identifier);
}

QList<quint32> zandorSoftwaresExtensions::uidsOfProcessesWithName(const QString &name)
{
    return ofProcessesWithName(name, &ProcessTable::Process::realUserId);
}
