// SPDX-License-Identifier: MIT
#pragma once

#include <clocale>
#include <locale.h>

namespace dozely
{

/// While it lives, this thread converts numbers and compares texts by the plain locale: a script means the
/// same whatever language its user speaks. Functions of the hosts that a script calls get their own locale
/// back.
class ScriptLocale
{
public:
    ScriptLocale() : ScriptLocale(plain()) {}
    ~ScriptLocale() { ::uselocale(m_former); }
    ScriptLocale(const ScriptLocale &) = delete;
    ScriptLocale &operator=(const ScriptLocale &) = delete;

    /// The locale of the process instead.
    static ScriptLocale ofProcess() { return ScriptLocale(LC_GLOBAL_LOCALE); }

private:
    explicit ScriptLocale(locale_t locale) : m_former(::uselocale(locale)) {}

    /// Null, which changes nothing, when there is no memory for it.
    static locale_t plain()
    {
        static locale_t const locale = ::newlocale(LC_ALL_MASK, "C", nullptr);
        return locale;
    }

    locale_t m_former;
};

} // namespace dozely
