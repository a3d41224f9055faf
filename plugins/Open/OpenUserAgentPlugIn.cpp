// SPDX-License-Identifier: MIT
#include "plugins/Open/OpenUserAgentPlugIn.h"

#include "DozelyKit/core/foundation/Clock.h"
#include "DozelyKit/plugin/Names.h"
#include "plugins/Open/Opening.h"

using namespace dozely;

OpenUserAgentPlugIn::~OpenUserAgentPlugIn()
{
    letGo();
}

void OpenUserAgentPlugIn::begin()
{
    const QVariant items = parameters() ? parameters()->value(OpenKey::items) : QVariant();
    const QStringList list = items.toStringList();
    if (list.isEmpty())
        return fail("nothing was opened, the parameter \"Items\" is missing or is no list of texts");
    m_failures.clear();
    for (const QString &item : list)
        open(item);
    if (m_programs.empty())
        return finish();
    Port<Clock>::current()->callAfter(patience, this, [this] {
        letGo();
        finish();
    });
}

void OpenUserAgentPlugIn::open(const QString &item)
{
    const auto program = Opening::programFor(item);
    if (!program) {
        m_failures += program.error().text;
        return;
    }
    const int number = ++m_lastNumber;
    m_programs[number] = Opening::outliving(*program).start(
        [this, number, item](const Result<ChildProgram::Ending> &ending) { noteEnd(number, item, ending); });
}

void OpenUserAgentPlugIn::noteEnd(int number, const QString &item, const Result<ChildProgram::Ending> &ending)
{
    if (!ending)
        m_failures += QString("%1 was not opened: %2").arg(item, ending.error().text);
    else if (ending->signal != 0)
        m_failures +=
            QString("%1 was not opened: its program was ended by signal %2").arg(item).arg(ending->signal);
    else if (ending->status != 0)
        m_failures +=
            QString("%1 was not opened: its program ended with status %2").arg(item).arg(ending->status);
    m_programs.erase(number);
    if (m_programs.empty())
        finish();
}

void OpenUserAgentPlugIn::letGo()
{
    for (const auto &[number, program] : m_programs)
        program->letGo();
    m_programs.clear();
}

void OpenUserAgentPlugIn::finish()
{
    if (!isActing())
        return;
    if (m_failures.isEmpty())
        end();
    else
        fail(m_failures.join("; "));
}
