<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fr" sourcelanguage="en">
<context>
    <name>CalendarText</name>
    <message>
        <source>C</source>
        <comment>the locale that has the names of days and months</comment>
        <translation>fr</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a date such as &quot;2026-03-14 06:55&quot;, &quot;06:55&quot;, &quot;tomorrow 7:00&quot;, &quot;fri 22:00&quot; or &quot;+5m&quot;</source>
        <translation>«&#xa0;%1&#xa0;» n’est pas une date comme «&#xa0;2026-03-14 06:55&#xa0;», «&#xa0;06:55&#xa0;», «&#xa0;tomorrow 7:00&#xa0;», «&#xa0;fri 22:00&#xa0;» ou «&#xa0;+5m&#xa0;»</translation>
    </message>
    <message>
        <source>%1 or %2</source>
        <translation>%1 ou %2</translation>
    </message>
    <message>
        <source>&quot;%1&quot; can be %2</source>
        <translation>«&#xa0;%1&#xa0;» peut vouloir dire %2</translation>
    </message>
    <message>
        <source>%1, since clocks are changed meanwhile</source>
        <translation>%1, car les horloges changent entre-temps</translation>
    </message>
    <message>
        <source>Clocks in %1 show &quot;%2&quot; twice: say %3 or %4</source>
        <translation>Les horloges à %1 indiquent «&#xa0;%2&#xa0;» deux fois&#xa0;: dites %3 ou %4</translation>
    </message>
    <message>
        <source>d MMMM yyyy</source>
        <comment>form of a day</comment>
        <translation>d MMMM yyyy</translation>
    </message>
    <message>
        <source>%1 %2 at %3</source>
        <comment>day of the week, day, time</comment>
        <translation>%1 %2 à %3</translation>
    </message>
    <message>
        <source>%1 s</source>
        <translation>%1 s</translation>
    </message>
    <message>
        <source>%1 min</source>
        <translation>%1 min</translation>
    </message>
    <message>
        <source>%1 h</source>
        <translation>%1 h</translation>
    </message>
    <message>
        <source>1 day</source>
        <translation>1 jour</translation>
    </message>
    <message numerus="yes">
        <source>%n days</source>
        <translation>
            <numerusform>%n jour</numerusform>
            <numerusform>%n jours</numerusform>
        </translation>
    </message>
    <message>
        <source>&quot;%1&quot; is none of day, weekday, week, month and year, of days such as monday,thursday and of distances such as 15m and 2h</source>
        <translation>«&#xa0;%1&#xa0;» n’est ni day, weekday, week, month ou year, ni des jours comme monday,thursday, ni un intervalle comme 15m et 2h</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a time such as 22:00</source>
        <translation>«&#xa0;%1&#xa0;» n’est pas une heure comme 22:00</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a number of seconds, nor a time such as 10m, 6h or 2d</source>
        <translation>«&#xa0;%1&#xa0;» n’est ni un nombre de secondes, ni une durée comme 10m, 6h ou 2d</translation>
    </message>
    <message>
        <source>%1 (minutes)</source>
        <translation>%1 (minutes)</translation>
    </message>
    <message>
        <source>%1 (hours)</source>
        <translation>%1 (heures)</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no day of a month, which is 1 to 31, or last</source>
        <translation>«&#xa0;%1&#xa0;» n’est pas un jour du mois, soit 1 à 31, ou last</translation>
    </message>
    <message>
        <source>one rule cannot mean %1 without %2, too; let the times have equal minutes, or add a second schedule</source>
        <translation>une règle ne peut pas signifier %1 sans %2 aussi&#xa0;; donnez aux heures les mêmes minutes ou ajoutez une deuxième planification</translation>
    </message>
    <message>
        <source>%1, %2</source>
        <comment>a list</comment>
        <translation>%1, %2</translation>
    </message>
    <message>
        <source>%1 and %2</source>
        <comment>the end of a list</comment>
        <translation>%1 et %2</translation>
    </message>
    <message>
        <source>every year</source>
        <translation>chaque année</translation>
    </message>
    <message numerus="yes">
        <source>every %n years</source>
        <translation>
            <numerusform>chaque année</numerusform>
            <numerusform>tous les %n ans</numerusform>
        </translation>
    </message>
    <message>
        <source>every month</source>
        <translation>chaque mois</translation>
    </message>
    <message numerus="yes">
        <source>every %n months</source>
        <translation>
            <numerusform>chaque mois</numerusform>
            <numerusform>tous les %n mois</numerusform>
        </translation>
    </message>
    <message>
        <source>every week</source>
        <translation>chaque semaine</translation>
    </message>
    <message numerus="yes">
        <source>every %n weeks</source>
        <translation>
            <numerusform>chaque semaine</numerusform>
            <numerusform>toutes les %n semaines</numerusform>
        </translation>
    </message>
    <message>
        <source>every day</source>
        <translation>chaque jour</translation>
    </message>
    <message numerus="yes">
        <source>every %n days</source>
        <translation>
            <numerusform>chaque jour</numerusform>
            <numerusform>tous les %n jours</numerusform>
        </translation>
    </message>
    <message>
        <source>every hour</source>
        <translation>chaque heure</translation>
    </message>
    <message numerus="yes">
        <source>every %n hours</source>
        <translation>
            <numerusform>chaque heure</numerusform>
            <numerusform>toutes les %n heures</numerusform>
        </translation>
    </message>
    <message>
        <source>every minute</source>
        <translation>chaque minute</translation>
    </message>
    <message numerus="yes">
        <source>every %n minutes</source>
        <translation>
            <numerusform>chaque minute</numerusform>
            <numerusform>toutes les %n minutes</numerusform>
        </translation>
    </message>
    <message>
        <source>every second</source>
        <translation>chaque seconde</translation>
    </message>
    <message numerus="yes">
        <source>every %n seconds</source>
        <translation>
            <numerusform>chaque seconde</numerusform>
            <numerusform>toutes les %n secondes</numerusform>
        </translation>
    </message>
    <message>
        <source>every weekday</source>
        <translation>chaque jour ouvré</translation>
    </message>
    <message>
        <source>every %1</source>
        <comment>days of the week</comment>
        <translation>chaque %1</translation>
    </message>
    <message>
        <source>%1 on %2</source>
        <comment>every 3 weeks, days of the week</comment>
        <translation>%1 le %2</translation>
    </message>
    <message>
        <source>the %1</source>
        <comment>a day of the month; only in English with an ending</comment>
        <translation>le %1</translation>
    </message>
    <message>
        <source>the last day</source>
        <translation>le dernier jour</translation>
    </message>
    <message>
        <source>the last %1</source>
        <comment>day of the week</comment>
        <translation>le dernier %1</translation>
    </message>
    <message>
        <source>the first %1</source>
        <comment>day of the week</comment>
        <translation>le premier %1</translation>
    </message>
    <message>
        <source>the second %1</source>
        <comment>day of the week</comment>
        <translation>le deuxième %1</translation>
    </message>
    <message>
        <source>the third %1</source>
        <comment>day of the week</comment>
        <translation>le troisième %1</translation>
    </message>
    <message>
        <source>the fourth %1</source>
        <comment>day of the week</comment>
        <translation>le quatrième %1</translation>
    </message>
    <message>
        <source>%1 %2</source>
        <comment>a day of the year: its number, the month</comment>
        <translation>%1 %2</translation>
    </message>
    <message>
        <source>%1 on %2</source>
        <comment>every 3 months, days of the month</comment>
        <translation>%1 %2</translation>
    </message>
    <message>
        <source>%1 on %2</source>
        <comment>every 3 years, a day of the year</comment>
        <translation>%1 le %2</translation>
    </message>
    <message>
        <source>%1 at %2</source>
        <comment>days, times</comment>
        <translation>%1 à %2</translation>
    </message>
    <message>
        <source>%1, once</source>
        <translation>%1, une fois</translation>
    </message>
    <message numerus="yes">
        <source>%1, %n times</source>
        <translation>
            <numerusform>%1, %n fois</numerusform>
            <numerusform>%1, %n fois</numerusform>
        </translation>
    </message>
    <message>
        <source>%1, until %2</source>
        <comment>a day</comment>
        <translation>%1, jusqu’au %2</translation>
    </message>
    <message>
        <source>%1, until %2 at %3</source>
        <comment>a day and a time</comment>
        <translation>%1, jusqu’au %2 à %3</translation>
    </message>
    <message numerus="yes">
        <source>%n other days</source>
        <translation>
            <numerusform>%n autre jour</numerusform>
            <numerusform>%n autres jours</numerusform>
        </translation>
    </message>
    <message>
        <source>by the rule %1</source>
        <translation>selon la règle %1</translation>
    </message>
    <message>
        <source>%1, and on %2</source>
        <comment>days</comment>
        <translation>%1, et le %2</translation>
    </message>
    <message>
        <source>%1, except on %2</source>
        <comment>days</comment>
        <translation>%1, sauf le %2</translation>
    </message>
</context>
<context>
    <name>FeasibilityText</name>
    <message>
        <source>its &quot;%1&quot; is neither true nor false</source>
        <translation>son «&#xa0;%1&#xa0;» n’est ni vrai ni faux</translation>
    </message>
    <message>
        <source>it names no &quot;%1&quot;</source>
        <translation>il ne nomme pas de «&#xa0;%1&#xa0;»</translation>
    </message>
    <message>
        <source>it acts in the daemon alone</source>
        <translation>il n’agit que dans le service</translation>
    </message>
    <message>
        <source>the parameters name no program</source>
        <translation>les paramètres ne nomment pas de programme</translation>
    </message>
    <message>
        <source>the program &quot;%1&quot; is not an absolute path</source>
        <translation>le programme «&#xa0;%1&#xa0;» n’est pas un chemin absolu</translation>
    </message>
    <message>
        <source>there is no program %1</source>
        <translation>il n’y a pas de programme %1</translation>
    </message>
    <message>
        <source>%1 is no program that can be run</source>
        <translation>%1 n’est pas un programme qui puisse être exécuté</translation>
    </message>
    <message>
        <source>there is no bundle at %1</source>
        <translation>il n’y a pas de module à %1</translation>
    </message>
    <message>
        <source>%1 cannot act in the session: %2</source>
        <translation>%1 ne peut pas agir dans la session&#xa0;: %2</translation>
    </message>
    <message>
        <source>%1 cannot act in the daemon: %2</source>
        <translation>%1 ne peut pas agir dans le service&#xa0;: %2</translation>
    </message>
</context>
<context>
    <name>OutcomeNames</name>
    <message>
        <source>asked for</source>
        <translation>demandée</translation>
    </message>
    <message>
        <source>at work</source>
        <translation>en cours</translation>
    </message>
    <message>
        <source>done</source>
        <translation>faite</translation>
    </message>
    <message>
        <source>failed</source>
        <translation>échouée</translation>
    </message>
    <message>
        <source>skipped, too late</source>
        <translation>omise, trop tard</translation>
    </message>
    <message>
        <source>missed</source>
        <translation>manquée</translation>
    </message>
    <message>
        <source>put off</source>
        <translation>reportée</translation>
    </message>
    <message>
        <source>could not be started</source>
        <translation>n’a pas pu démarrer</translation>
    </message>
    <message>
        <source>cancelled</source>
        <translation>annulée</translation>
    </message>
    <message>
        <source>not known</source>
        <translation>inconnu</translation>
    </message>
    <message>
        <source>interrupted</source>
        <translation>interrompue</translation>
    </message>
    <message>
        <source>exit status %1</source>
        <translation>code de sortie %1</translation>
    </message>
</context>
<context>
    <name>RecordedOutcomes</name>
    <message>
        <source>You may not read %1</source>
        <translation>Vous ne pouvez pas lire %1</translation>
    </message>
</context>
<context>
    <name>RuleFaultWords</name>
    <message>
        <source>The rule has blanks or other characters that no rule has.</source>
        <translation>La règle contient des espaces ou d’autres caractères qu’aucune règle n’a.</translation>
    </message>
    <message>
        <source>The rule has an empty part.</source>
        <translation>La règle a une partie vide.</translation>
    </message>
    <message>
        <source>The rule has a part that is not known: %1.</source>
        <translation>La règle a une partie inconnue : %1.</translation>
    </message>
    <message>
        <source>The rule has %1 twice.</source>
        <translation>La règle a %1 deux fois.</translation>
    </message>
    <message>
        <source>%1 of the rule has no value.</source>
        <translation>%1 n’a pas de valeur dans la règle.</translation>
    </message>
    <message>
        <source>In the rule, %1 has no meaning. An example: %2</source>
        <translation>Dans la règle, %1 n’a pas de sens. Un exemple : %2</translation>
    </message>
    <message>
        <source>The rule has %1: no other calendars than the Gregorian are supported.</source>
        <translation>La règle a %1 : seul le calendrier grégorien est pris en charge.</translation>
    </message>
    <message>
        <source>The rule has no FREQ.</source>
        <translation>La règle n’a pas de FREQ.</translation>
    </message>
    <message>
        <source>The rule has both COUNT and UNTIL.</source>
        <translation>La règle a à la fois COUNT et UNTIL.</translation>
    </message>
    <message>
        <source>A number in BYDAY needs FREQ=MONTHLY or FREQ=YEARLY.</source>
        <translation>Un nombre dans BYDAY exige FREQ=MONTHLY ou FREQ=YEARLY.</translation>
    </message>
    <message>
        <source>A number in BYDAY cannot be beside BYWEEKNO.</source>
        <translation>Un nombre dans BYDAY ne va pas avec BYWEEKNO.</translation>
    </message>
    <message>
        <source>BYMONTHDAY cannot be beside FREQ=WEEKLY.</source>
        <translation>BYMONTHDAY ne va pas avec FREQ=WEEKLY.</translation>
    </message>
    <message>
        <source>BYYEARDAY cannot be beside FREQ=DAILY, WEEKLY or MONTHLY.</source>
        <translation>BYYEARDAY ne va pas avec FREQ=DAILY, WEEKLY ou MONTHLY.</translation>
    </message>
    <message>
        <source>BYWEEKNO needs FREQ=YEARLY.</source>
        <translation>BYWEEKNO exige FREQ=YEARLY.</translation>
    </message>
    <message>
        <source>BYSETPOS needs another BY part.</source>
        <translation>BYSETPOS exige une autre partie BY.</translation>
    </message>
    <message>
        <source>The rule gives no date within 100 years from its start.</source>
        <translation>La règle ne donne aucune date dans les 100 ans après son début.</translation>
    </message>
    <message>
        <source>The rule&apos;s COUNT is too large to be counted.</source>
        <translation>Le COUNT de la règle est trop grand pour être compté.</translation>
    </message>
    <message>
        <source>The rule cannot be used: %1.</source>
        <translation>La règle est inutilisable : %1.</translation>
    </message>
</context>
</TS>
