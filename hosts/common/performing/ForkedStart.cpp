// SPDX-License-Identifier: MIT
#include "hosts/common/performing/ForkedStart.h"

#include "DozelyKit/core/foundation/RootFolder.h"
#include "DozelyKit/system/machine/ChildProgram.h"

#include <unistd.h>

using namespace dozely;

namespace
{
/// What an action finds is what it would have found within the host.
QByteArrayList ownEnvironment()
{
    QByteArrayList environment;
    for (char **entry = environ; *entry; ++entry)
        environment += *entry;
    return environment;
}
} // namespace

void ForkedStart::start(const Performer &performer, Answered answered)
{
    ChildProgram program{m_program, {"--root", RootFolder::path()}, ownEnvironment()};
    program.input = performer.input;
    const auto outcome =
        program.launch() ? Result<void>() : Error{QString("%1 could not be started").arg(m_program)};
    QMetaObject::invokeMethod(
        &m_context, [answered = std::move(answered), outcome] { answered(outcome); }, Qt::QueuedConnection);
}

/// Nobody waits for it: there is nothing to know.
void ForkedStart::tellEnd(const QString &, Told told)
{
    QMetaObject::invokeMethod(
        &m_context, [told = std::move(told)] { told({}); }, Qt::QueuedConnection);
}

void ForkedStart::forget(const QString &) {}
