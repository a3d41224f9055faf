// SPDX-License-Identifier: MIT
#include "hosts/application/program/Translations.h"

#include <QApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

namespace
{
void load(const QString &name, const QString &folder)
{
    auto *const translator = new QTranslator(qApp);
    if (translator->load(name, folder))
        QCoreApplication::installTranslator(translator);
    else
        delete translator;
}
} // namespace

void Translations::install(const QStringList &languages)
{
    for (const QString &language : languages + QStringList("en")) {
        const QString code = language.section('-', 0, 0);
        auto *const translator = new QTranslator(qApp);
        if (!translator->load("dozely_" + code, ":/translations")) {
            delete translator;
            continue;
        }
        // Qt's own, such as the buttons of a question, where they are installed; ours prevail.
        load("qtbase_" + code, QLibraryInfo::path(QLibraryInfo::TranslationsPath));
        QCoreApplication::installTranslator(translator);
        QGuiApplication::setLayoutDirection(QLocale(code).textDirection());
        return;
    }
}
