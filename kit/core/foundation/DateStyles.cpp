// SPDX-License-Identifier: MIT
#include "DozelyKit/core/foundation/DateStyles_p.h"

#include <memory>
#include <unicode/datefmt.h>
#include <unicode/locid.h>
#include <unicode/simpletz.h>

namespace dozely
{

namespace
{
/// The locale of the environment for dates, by the rule of every program here.
icu::Locale userLocale()
{
    for (const char *const variable : {"LC_ALL", "LC_TIME", "LANG"}) {
        const QByteArray name = qgetenv(variable);
        if (!name.isEmpty())
            return icu::Locale::createCanonical(name.constData()); // knows "de_DE.UTF-8" and "C"
    }
    return icu::Locale::createCanonical("C");
}

/// What `format` makes of the date; null when there is nothing to format, or to format it with.
QString formatted(std::unique_ptr<icu::DateFormat> format, const QDateTime &date)
{
    if (!format || !date.isValid())
        return {};
    // ICU carries zone data of its own, older than the machine's: it is given the offset of this instant.
    constexpr int millisecondsPerSecond = 1000;
    const int offset = date.toLocalTime().offsetFromUtc() * millisecondsPerSecond;
    format->adoptTimeZone(new icu::SimpleTimeZone(offset, icu::UnicodeString()));
    icu::UnicodeString text;
    format->format(static_cast<UDate>(date.toMSecsSinceEpoch()), text);
    return QString::fromUtf16(text.getBuffer(), text.length());
}
} // namespace

QString DateStyles::mediumDate(const QDateTime &date)
{
    return formatted(std::unique_ptr<icu::DateFormat>(
                         icu::DateFormat::createDateInstance(icu::DateFormat::kMedium, userLocale())),
                     date);
}

QString DateStyles::shortTime(const QDateTime &date)
{
    return formatted(std::unique_ptr<icu::DateFormat>(
                         icu::DateFormat::createTimeInstance(icu::DateFormat::kShort, userLocale())),
                     date);
}

} // namespace dozely
