// SPDX-License-Identifier: MIT
#include "hosts/admin/DisplayWidth.h"
#include "unit/hosts/admin/AdminTool.h"

#include <QJsonArray>

#include <gmock/gmock.h>

using testing::HasSubstr;
using testing::StartsWith;

namespace
{
struct Language {
    const char *locale;
    const char *usage;   ///< How the help of a command begins.
    const char *example; ///< What stands above its example.
    const char *error;   ///< Of a command that does not exist.
    const char *status;  ///< Of a daemon that is not there.
    const char *doctor;  ///< That there is no log file.
    const char *rule;    ///< Of what repeats on weekdays.
    const char *date;    ///< What is said of a date that is none, up to its examples.
};

void PrintTo(const Language &language, std::ostream *stream)
{
    *stream << language.locale;
}

const Language languages[] = {
    {"C", "Usage:", "Example:", "There is no command \"dance\"; --help shows those that there are.",
     "Daemon:      is not there", "log-file: %1 is not there.", "every weekday at 22:00",
     "\"soonish\" is not a date such as "},
    {"en_US.UTF-8", "Usage:", "Example:", "There is no command \"dance\"; --help shows those that there are.",
     "Daemon:      is not there", "log-file: %1 is not there.", "every weekday at 22:00",
     "\"soonish\" is not a date such as "},
    {"pl_PL.UTF-8", "Usage:", "Example:", "There is no command \"dance\"; --help shows those that there are.",
     "Daemon:      is not there", "log-file: %1 is not there.", "every weekday at 22:00",
     "\"soonish\" is not a date such as "},
    {"de_AT.UTF-8", "Aufruf:", "Beispiel:", "Es gibt keinen Befehl „dance“; --help zeigt, welche es gibt.",
     "Dienst:     ist nicht da", "log-file: %1 ist nicht da.", "jeden Werktag um 22:00",
     "„soonish“ ist kein Datum wie "},
    {"fr_FR.UTF-8", "Utilisation\u00a0:", "Exemple\u00a0:",
     "Il n’y a pas de commande «\u00a0dance\u00a0»\u00a0; --help affiche celles qui existent.",
     "Service\u00a0:            absent", "log-file: %1 n’existe pas.", "chaque jour ouvré à 22:00",
     "«\u00a0soonish\u00a0» n’est pas une date comme "},
    {"es_ES.UTF-8", "Uso:", "Ejemplo:", "No hay ninguna orden «dance»; --help muestra las que hay.",
     "Servicio:            parado", "log-file: %1 no existe.", "cada día laborable a las 22:00",
     "«soonish» no es una fecha como "},
    {"ja_JP.UTF-8", "使い方:", "例:", "「dance」というコマンドはありません。--help で一覧を表示します。",
     "デーモン:      停止中", "log-file: %1 がありません。", "平日 22:00",
     "「soonish」は「2026-03-14 06:55」"},
    {"ar_EG.UTF-8", "الاستعمال:", "مثال:", "لا يوجد أمر «dance»؛ الخيار --help يعرض الموجود منها.",
     "الخدمة:        لا تعمل", "log-file: %1 غير موجود.", "كل يوم عمل عند 22:00",
     "«soonish» ليس تاريخًا مثل "},
};

class Languages : public testing::TestWithParam<Language>
{
protected:
    Languages() { tool.locale = GetParam().locale; }

    QString english(const QStringList &arguments)
    {
        tool.locale = "C.UTF-8";
        const QString output = QString::fromUtf8(tool.run(arguments).output);
        tool.locale = GetParam().locale;
        return output;
    }

    void addDaily(const QString &name)
    {
        const auto added =
            tool.run({"add", name, "--program", "/bin/true", "--every", "weekday", "--at", "22:00"});
        EXPECT_EQ(added.status, 0) << added.errors.constData();
    }

    AdminTool tool;
};
} // namespace

TEST_P(Languages, HelpOfACommandIsInTheLanguageOfTheLocale)
{
    const auto help = tool.run({"skip", "--help"});
    EXPECT_EQ(help.status, 0);
    EXPECT_THAT(help.output.toStdString(),
                StartsWith(GetParam().usage + std::string(" dozely-admin skip SCHEDULE\n")));
    EXPECT_THAT(help.output.toStdString(),
                HasSubstr(GetParam().example + std::string("\n  dozely-admin skip ")));
    EXPECT_THAT(help.output.toStdString(), HasSubstr("--time-zone ZONE"));
}

TEST_P(Languages, HelpFitsItsColumns)
{
    constexpr qsizetype widest = 110;
    for (const QStringList &arguments : {QStringList{"--help"}, QStringList{"add", "--help"}}) {
        const QString help = QString::fromUtf8(tool.run(arguments).output);
        EXPECT_GT(help.count('\n'), 30);
        for (const QString &line : help.split('\n').mid(1)) // the first has the program's path
            EXPECT_LE(DisplayWidth::of(line), widest) << line.toStdString();
    }
}

TEST_P(Languages, AnErrorIsInTheLanguageOfTheLocaleAndEndsTheSame)
{
    const auto result = tool.run({"dance"});
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.errors.toStdString(), std::string("Dozely Admin: ") + GetParam().error + "\n");
}

TEST_P(Languages, StatusAndDoctorAreInTheLanguageOfTheLocaleAndEndTheSame)
{
    const auto status = tool.run({"status"});
    EXPECT_EQ(status.status, 1);
    EXPECT_THAT(status.output.toStdString(), StartsWith(std::string(GetParam().status) + "\n"));
    const auto doctor = tool.run({"doctor"});
    EXPECT_EQ(doctor.status, 1);
    const QString finding = QString::fromUtf8(GetParam().doctor).arg(tool.root.join("/var/log/dozely.log"));
    EXPECT_THAT(doctor.output.toStdString(), HasSubstr(finding.toStdString()));
    EXPECT_THAT(doctor.output.toStdString(), HasSubstr("-> systemd-tmpfiles --create dozely.conf\n"));
}

TEST_P(Languages, WhatProgramsReadIsTheSame)
{
    addDaily("A");
    tool.add("B", {"--wake"});
    for (const QStringList &arguments :
         {QStringList{"list", "--json"}, QStringList{"status", "--json"}, QStringList{"doctor", "--json"},
          QStringList{"next", "--json"}, QStringList{"power", "--json"}, QStringList{"export"},
          QStringList{"remove", "C", "--json"}}) {
        const QString wanted = english(arguments);
        const auto result = tool.run(arguments);
        EXPECT_EQ(result.output.toStdString(), wanted.toStdString()) << arguments.join(' ').toStdString();
    }
    EXPECT_EQ(tool.run({"remove", "C", "--json"}).errors, "Dozely Admin: There is no schedule \"C\".\n");
}

TEST_P(Languages, ColumnsStandBelowTheirTitles)
{
    tool.add("A");
    addDaily(QString::fromUtf8("毎日のバックアップ"));
    const QString output = QString::fromUtf8(tool.run({"list"}).output);
    const QStringList lines = output.trimmed().split('\n');
    ASSERT_EQ(lines.size(), 3) << output.toStdString();
    const auto column = [](const QString &line) { // of the last one, in which no blank is
        return DisplayWidth::of(line.left(line.lastIndexOf(' ') + 1));
    };
    EXPECT_EQ(column(lines.at(1)), column(lines.at(0))) << output.toStdString();
    EXPECT_EQ(column(lines.at(2)), column(lines.at(0))) << output.toStdString();
}

TEST_P(Languages, WhatTheHostsShareIsInTheLanguageOfTheLocale)
{
    addDaily("A");
    EXPECT_THAT(tool.run({"list"}).output.toStdString(), HasSubstr(GetParam().rule));
    const auto added = tool.run({"change", "A", "--name", "B", "--every", "weekday", "--at", "22:00"});
    EXPECT_THAT(added.output.toStdString(), HasSubstr(GetParam().rule));
    const auto refused = tool.run({"skip", "B", "--date", "soonish"});
    EXPECT_EQ(refused.status, 2);
    EXPECT_THAT(refused.errors.toStdString(), StartsWith(std::string("Dozely Admin: ") + GetParam().date));
}

INSTANTIATE_TEST_SUITE_P(All, Languages, testing::ValuesIn(languages));

TEST(LanguageChoice, LanguageGoesBeforeLocaleAndThePlainLocaleBeforeBoth)
{
    AdminTool tool;
    tool.locale = "de_DE.UTF-8";
    tool.languages = "pl:fr:de";
    EXPECT_THAT(tool.run({"list", "--help"}).output.toStdString(), StartsWith("Utilisation"));
    for (const char *plain : {"C", "POSIX", "C.UTF-8"}) {
        tool.locale = plain;
        EXPECT_THAT(tool.run({"list", "--help"}).output.toStdString(), StartsWith("Usage:")) << plain;
    }
}

TEST(LanguageChoice, NumbersHaveTheirForms)
{
    AdminTool tool;
    for (int i = 0; i < 3; ++i)
        tool.add("Twice");
    EXPECT_THAT(tool.run({"remove", "Twice"}).errors.toStdString(),
                HasSubstr("3 schedules are named \"Twice\"; "));
    tool.locale = "de_DE.UTF-8";
    EXPECT_THAT(tool.run({"remove", "Twice"}).errors.toStdString(),
                HasSubstr("3 Zeitpläne heißen „Twice“; "));
    tool.locale = "ar_EG.UTF-8";
    EXPECT_THAT(tool.run({"remove", "Twice"}).errors.toStdString(), HasSubstr("هناك 3 مواعيد باسم «Twice»"));
}

TEST(LanguageChoice, ReasonsOfTheLibraryAreSaidInTheSameLanguage)
{
    AdminTool tool;
    tool.locale = "de_DE.UTF-8";
    const auto refused = tool.run({"add", "A", "--program", "/gone/x", "--in", "5"});
    EXPECT_EQ(refused.status, 1);
    EXPECT_EQ(refused.errors, "Dozely Admin: Daraus könnte nichts werden: es gibt kein Programm /gone/x. "
                              "Mit --anyway geschieht es trotzdem.\n");
}
