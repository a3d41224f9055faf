// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

/// The texts in other languages that are compiled into a program: its own, and those that all hosts share
/// (`hosts/common/translations`). THREADING: main thread.
namespace CompiledTexts
{
/// The first of the languages ("de", "pt-BR") that the texts of `program` ("dozely", "admin") are there in,
/// as "de"; "en" where there is none.
QString languageFor(const QString &program, const QStringList &languages);

/// Has the program's texts, and the shared ones, translated from now on. Needs the application object.
void install(const QString &program, const QString &language);
} // namespace CompiledTexts
