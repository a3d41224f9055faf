// SPDX-License-Identifier: MIT
#include "hosts/admin/AdminText.h"

#include "DozelyKit/core/bundles/NSBundle.h"
#include "hosts/common/words/CompiledTexts.h"
#include "hosts/common/words/OutcomeNames.h"
#include "hosts/common/words/ReasonWords.h"
#include "hosts/common/words/RuleFaultWords.h"

using namespace dozely;

namespace
{
/// Found under the names that Qt looks them up by.
[[maybe_unused]] const char *const parserTexts[] = {
    QT_TRANSLATE_NOOP("QCommandLineParser", "Unknown option '%1'."),
    QT_TRANSLATE_NOOP("QCommandLineParser", "Unknown options: %1."),
    QT_TRANSLATE_NOOP("QCommandLineParser", "Missing value after '%1'."),
    QT_TRANSLATE_NOOP("QCommandLineParser", "Unexpected value after '%1'."),
};

/// The plain locale is nobody's language, whatever else is wished (as gettext has it).
bool isPlainLocale()
{
    for (const char *variable : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        const QByteArray locale = qgetenv(variable);
        if (!locale.isEmpty())
            return locale == "C" || locale == "POSIX" || locale.startsWith("C.");
    }
    return true;
}
} // namespace

bool AdminText::isEnglish = true;

void AdminText::install(const QStringList &arguments)
{
    const bool isForPeople = !arguments.contains("--json") && !isPlainLocale();
    const QString program = "admin";
    const QString language =
        isForPeople ? CompiledTexts::languageFor(program, UserLanguages::current()) : QString("en");
    isEnglish = language == "en";
    CompiledTexts::install(program, language);
}

QString AdminText::state(const QString &state)
{
    return isEnglish ? state : OutcomeNames::of(state);
}

QString AdminText::reason(const Error &error)
{
    if (isEnglish)
        return error.text;
    QString text = error.name.startsWith("RuleFault.") ? RuleFaultWords::of(error) : ReasonWords::of(error);
    while (text.endsWith('.') || text.endsWith(QString::fromUtf8("。")))
        text.chop(1);
    return text;
}

QString AdminText::answer(const Error &error)
{
    return isEnglish ? error.text : ReasonWords::of(error);
}

QString AdminText::sentence(const QString &clause)
{
    return tr("%1.", "a clause that becomes a sentence").arg(clause);
}

QString AdminText::begun(const QString &text)
{
    return text.left(1).toUpper() + text.mid(1);
}
