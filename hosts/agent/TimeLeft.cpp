// SPDX-License-Identifier: MIT
#include "hosts/agent/TimeLeft.h"

#include <algorithm>
#include <cmath>
#include <memory>

#include <unicode/locid.h>
#include <unicode/reldatefmt.h>

using namespace std::chrono_literals;

using std::chrono::milliseconds;

namespace
{
constexpr milliseconds lastMinute = 59s; // with 60 it is still "in 1 minute"
constexpr milliseconds longestStep = 1min;
constexpr int stepsInAll = 360;
constexpr int mostStepsASecond = 10;

/// The language, as the user's locale for dates has it when that is one of the same language.
icu::Locale localeOf(const QString &language)
{
    for (const char *const variable : {"LC_ALL", "LC_TIME", "LANG"}) {
        const QByteArray name = qgetenv(variable);
        if (name.isEmpty())
            continue;
        const icu::Locale dates = icu::Locale::createCanonical(name.constData());
        if (language == dates.getLanguage())
            return dates;
        break;
    }
    return icu::Locale(language.toUtf8().constData());
}

struct Amount {
    double number;
    UDateRelativeUnit unit;
};

Amount amountOf(milliseconds left)
{
    using std::chrono::ceil;
    using std::chrono::round;
    if (left <= lastMinute)
        return {static_cast<double>(ceil<std::chrono::seconds>(left).count()), UDAT_RELATIVE_SECONDS};
    if (left <= 2h)
        return {static_cast<double>(ceil<std::chrono::minutes>(left).count()), UDAT_RELATIVE_MINUTES};
    if (left <= 48h)
        return {static_cast<double>(round<std::chrono::hours>(left).count()), UDAT_RELATIVE_HOURS};
    return {static_cast<double>(round<std::chrono::days>(left).count()), UDAT_RELATIVE_DAYS};
}
} // namespace

QString TimeLeft::inWords(milliseconds left, const QString &language)
{
    UErrorCode status = U_ZERO_ERROR;
    const icu::RelativeDateTimeFormatter formatter(localeOf(language), status);
    icu::UnicodeString text;
    if (U_SUCCESS(status)) {
        const Amount amount = amountOf(std::max(left, 0ms));
        if (amount.number > 0)
            formatter.format(amount.number, UDAT_DIRECTION_NEXT, amount.unit, text, status);
        else
            formatter.format(UDAT_DIRECTION_PLAIN, UDAT_ABSOLUTE_NOW, text, status);
    }
    return U_SUCCESS(status) ? QString::fromUtf16(text.getBuffer(), text.length()) : QString();
}

milliseconds TimeLeft::untilNextStep(milliseconds left, milliseconds whole)
{
    // Counted from the end, so that whole seconds and minutes, at which the words change, are steps.
    const auto since = [left](milliseconds step) {
        const milliseconds beyond = left % step;
        return beyond > 0ms ? beyond : step;
    };
    if (left > 1min) {
        const milliseconds step = std::clamp<milliseconds>(
            std::chrono::ceil<std::chrono::seconds>(whole / stepsInAll), 1s, longestStep);
        return left > 2h ? std::min(since(step), longestStep) : std::min(since(step), since(1min));
    }
    const double aSecond = std::clamp(stepsInAll * 1000.0 / static_cast<double>(std::max(whole, 1ms).count()),
                                      1.0, double{mostStepsASecond});
    const qint64 steps = std::lround(aSecond);
    const qint64 remaining = (left.count() * steps + 999) / 1000; // until nothing is left
    const milliseconds next = left - milliseconds((remaining - 1) * 1000 / steps);
    // A timer that fires a little early must not make for two steps where one is meant.
    return next.count() * 4 * steps < 1000 ? next + milliseconds(1000 / steps) : next;
}
