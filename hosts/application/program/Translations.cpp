// SPDX-License-Identifier: MIT
#include "hosts/application/program/Translations.h"

#include "hosts/common/words/CompiledTexts.h"

#include <QApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

namespace
{
/// Qt's own texts, such as the buttons of a question, where they are installed.
void installTextsOfQt(const QString &language)
{
    auto *const translator = new QTranslator(qApp);
    if (translator->load("qtbase_" + language, QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QCoreApplication::installTranslator(translator);
    else
        delete translator;
}
} // namespace

void Translations::install(const QStringList &languages)
{
    const QString program = "dozely";
    const QString language = CompiledTexts::languageFor(program, languages);
    installTextsOfQt(language); // before ours, which prevail
    CompiledTexts::install(program, language);
    QGuiApplication::setLayoutDirection(QLocale(language).textDirection());
}
