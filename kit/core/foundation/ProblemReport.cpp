// SPDX-License-Identifier: MIT
#include "DozelyKit/core/foundation/ProblemReport.h"

#include "DozelyKit/core/foundation/StringFormat.h"

#include <mutex>
#include <utility>

namespace dozely
{

namespace
{
struct Sink {
    std::mutex mutex;
    std::function<void(const QString &)> function;
};

Sink &sink()
{
    // Never destroyed: a port may have something to tell while the process ends.
    static auto *const only = new Sink;
    return *only;
}
} // namespace

void setProblemReport(std::function<void(const QString &)> function)
{
    const std::lock_guard guard(sink().mutex);
    sink().function = std::move(function);
}

void reportProblem(const QString &sentence)
{
    std::function<void(const QString &)> function;
    {
        const std::lock_guard guard(sink().mutex);
        function = sink().function;
    }
    if (function)
        function(sentence);
    else
        NSLogText(sentence);
}

} // namespace dozely
