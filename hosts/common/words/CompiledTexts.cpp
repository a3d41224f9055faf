// SPDX-License-Identifier: MIT
#include "hosts/common/words/CompiledTexts.h"

#include <QCoreApplication>
#include <QFile>
#include <QTranslator>

namespace
{
QString fileOf(const QString &texts, const QString &language)
{
    return QString(":/translations/%1_%2.qm").arg(texts, language);
}
} // namespace

QString CompiledTexts::languageFor(const QString &program, const QStringList &languages)
{
    for (const QString &language : languages) {
        const QString code = language.section('-', 0, 0);
        if (QFile::exists(fileOf(program, code)))
            return code;
    }
    return "en";
}

void CompiledTexts::install(const QString &program, const QString &language)
{
    for (const QString &texts : {QString("common"), program}) {
        auto *const translator = new QTranslator(QCoreApplication::instance());
        if (translator->load(fileOf(texts, language)))
            QCoreApplication::installTranslator(translator);
        else
            delete translator;
    }
}
