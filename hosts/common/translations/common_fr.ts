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
    <name>ReasonWords</name>
    <message>
        <source>You are not allowed to do this.</source>
        <translation>Vous n’en avez pas le droit.</translation>
    </message>
    <message>
        <source>Nobody but root may do this here: polkit, which decides about others, cannot be asked (%1).</source>
        <translation>Seul root peut faire cela ici : polkit, qui décide pour les autres, ne peut être interrogé (%1).</translation>
    </message>
    <message>
        <source>Too many questions are open that somebody has to answer first.</source>
        <translation>Trop de questions attendent déjà une réponse.</translation>
    </message>
    <message>
        <source>Too many calls at a time: wait for the answers.</source>
        <translation>Trop d’appels à la fois : attendez les réponses.</translation>
    </message>
    <message>
        <source>A user may have %1 schedules.</source>
        <translation>Un utilisateur peut avoir %1 planifications.</translation>
    </message>
    <message>
        <source>The schedules of a user may have %1 bytes in all.</source>
        <translation>Les planifications d’un utilisateur peuvent faire %1 octets en tout.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; was changed by somebody else meanwhile.</source>
        <translation>« %1 » a été modifié entre-temps par quelqu’un d’autre.</translation>
    </message>
    <message>
        <source>The name has more than %1 characters.</source>
        <translation>Le nom a plus de %1 caractères.</translation>
    </message>
    <message>
        <source>There is no time zone &quot;%1&quot;.</source>
        <translation>Il n’y a pas de fuseau horaire « %1 ».</translation>
    </message>
    <message>
        <source>It is too large: a schedule has at most %1 bytes.</source>
        <translation>C’est trop grand : une planification fait au plus %1 octets.</translation>
    </message>
    <message>
        <source>It holds something that no schedule can keep.</source>
        <translation>Il s’y trouve quelque chose qu’aucune planification ne peut garder.</translation>
    </message>
    <message>
        <source>It cannot repeat so: with these exceptions nothing is left of it.</source>
        <translation>La répétition est impossible ainsi : avec ces exceptions, il n’en reste rien.</translation>
    </message>
    <message>
        <source>It cannot repeat so: %1.</source>
        <translation>La répétition est impossible ainsi : %1.</translation>
    </message>
    <message>
        <source>What is to follow comes only where the machine was woken or switched on for the action.</source>
        <translation>Ce qui doit suivre n’a lieu que si l’ordinateur a été réveillé ou allumé pour l’action.</translation>
    </message>
    <message>
        <source>Nothing could come of it: %1.</source>
        <translation>Cela ne pourrait rien donner : %1.</translation>
    </message>
    <message>
        <source>the parameters name no program</source>
        <translation>les paramètres ne nomment aucun programme</translation>
    </message>
    <message>
        <source>the program &quot;%1&quot; is not an absolute path</source>
        <translation>le programme « %1 » n’est pas un chemin absolu</translation>
    </message>
    <message>
        <source>there is no program %1</source>
        <translation>il n’y a pas de programme %1</translation>
    </message>
    <message>
        <source>%1 is no program that can be run</source>
        <translation>%1 n’est pas un programme exécutable</translation>
    </message>
    <message>
        <source>there is no bundle at %1</source>
        <translation>il n’y a pas de paquet à %1</translation>
    </message>
    <message>
        <source>%1 cannot act in the %2: %3</source>
        <translation>%1 ne peut pas agir dans %2 : %3</translation>
    </message>
    <message>
        <source>session</source>
        <translation>la session</translation>
    </message>
    <message>
        <source>daemon</source>
        <translation>le service</translation>
    </message>
    <message>
        <source>it acts in the daemon alone</source>
        <translation>il n’agit que dans le service</translation>
    </message>
    <message>
        <source>it names no &quot;%1&quot;</source>
        <translation>il ne nomme aucun « %1 »</translation>
    </message>
    <message>
        <source>The schedules are damaged, and are not overwritten: %1.</source>
        <translation>Les planifications sont endommagées et ne sont pas écrasées : %1.</translation>
    </message>
    <message>
        <source>%1 was not changed: %2</source>
        <translation>%1 n’a pas été modifié : %2</translation>
    </message>
    <message>
        <source>there is no schedule %1</source>
        <translation>il n’y a pas de planification %1</translation>
    </message>
    <message>
        <source>schedule %1 has nothing to come</source>
        <translation>la planification %1 n’a plus rien à venir</translation>
    </message>
    <message>
        <source>schedule %1 has no occurrence at %2 that is to come</source>
        <translation>la planification %1 n’a rien à venir à %2</translation>
    </message>
    <message>
        <source>the occurrence at %1 is not the next one of schedule %2</source>
        <translation>l’occurrence de %1 n’est pas la prochaine de la planification %2</translation>
    </message>
    <message>
        <source>%1 occurrences of schedule %2 are decided upon already</source>
        <translation>%1 occurrences de la planification %2 sont déjà décidées</translation>
    </message>
    <message>
        <source>an occurrence is postponed by 1 to %1 seconds</source>
        <translation>une occurrence se reporte de 1 à %1 secondes</translation>
    </message>
    <message>
        <source>it is being tried already</source>
        <translation>l’essai est déjà en cours</translation>
    </message>
    <message>
        <source>an action goes on, or is due too soon</source>
        <translation>une action est en cours ou trop proche</translation>
    </message>
    <message>
        <source>the machine is kept awake by %1</source>
        <translation>l’ordinateur est tenu éveillé par %1</translation>
    </message>
    <message>
        <source>this machine cannot be put to sleep</source>
        <translation>cet ordinateur ne peut pas être mis en veille</translation>
    </message>
    <message>
        <source>the machine did not fall asleep</source>
        <translation>l’ordinateur ne s’est pas mis en veille</translation>
    </message>
    <message>
        <source>the machine does not let itself be put to sleep</source>
        <translation>l’ordinateur refuse de se mettre en veille</translation>
    </message>
    <message>
        <source>its program ended with status %1</source>
        <translation>son programme s’est terminé avec l’état %1</translation>
    </message>
    <message>
        <source>its program could not be started</source>
        <translation>son programme n’a pas pu être lancé</translation>
    </message>
    <message>
        <source>its process was ended by signal %1 (%2)</source>
        <translation>son processus a été arrêté par le signal %1 (%2)</translation>
    </message>
    <message>
        <source>its process ended by itself with status %1</source>
        <translation>son processus s’est terminé de lui-même avec l’état %1</translation>
    </message>
    <message>
        <source>its performer ended without a word</source>
        <translation>son exécutant s’est terminé sans un mot</translation>
    </message>
    <message>
        <source>its agent does not say why</source>
        <translation>son agent ne dit pas pourquoi</translation>
    </message>
    <message>
        <source>it took more memory than it may</source>
        <translation>elle a pris plus de mémoire que permis</translation>
    </message>
    <message>
        <source>it took longer than %1 s</source>
        <translation>elle a duré plus de %1 s</translation>
    </message>
    <message>
        <source>it was asked to end</source>
        <translation>on lui a demandé de finir</translation>
    </message>
    <message>
        <source>There is no bundle %1</source>
        <translation>Il n’y a pas de paquet %1</translation>
    </message>
    <message>
        <source>%1 is not a bundle</source>
        <translation>%1 n’est pas un paquet</translation>
    </message>
    <message>
        <source>The bundle %1 is not trusted: %2</source>
        <translation>Le paquet %1 n’est pas digne de confiance : %2</translation>
    </message>
    <message>
        <source>it lies in no folder of plug-ins</source>
        <translation>il n’est dans aucun dossier de modules</translation>
    </message>
    <message>
        <source>The bundle %1 names no &quot;%2&quot;</source>
        <translation>Le paquet %1 ne nomme aucun « %2 »</translation>
    </message>
    <message>
        <source>The plug-in of %1 cannot be made: %2</source>
        <translation>Le module de %1 ne peut pas être créé : %2</translation>
    </message>
    <message>
        <source>its factory made nothing</source>
        <translation>sa fabrique n’a rien produit</translation>
    </message>
    <message>
        <source>The plug-in of %1 is none for configuration</source>
        <translation>Le module de %1 n’est pas un module de réglage</translation>
    </message>
    <message>
        <source>%1 has no view</source>
        <translation>%1 n’a pas de vue</translation>
    </message>
    <message>
        <source>Cannot load &quot;%1&quot;: %2</source>
        <translation>Impossible de charger « %1 » : %2</translation>
    </message>
    <message>
        <source>Cannot read &quot;%1&quot;: %2</source>
        <translation>Impossible de lire « %1 » : %2</translation>
    </message>
    <message>
        <source>Cannot write &quot;%1&quot;: %2</source>
        <translation>Impossible d’écrire « %1 » : %2</translation>
    </message>
    <message>
        <source>it is not a file</source>
        <translation>ce n’est pas un fichier</translation>
    </message>
    <message>
        <source>%1.</source>
        <comment>a clause as a sentence</comment>
        <translation>%1.</translation>
    </message>
    <message>
        <source>The Dozely service is not running.</source>
        <translation>Le service Dozely ne tourne pas.</translation>
    </message>
    <message>
        <source>The Dozely service did not answer in time.</source>
        <translation>Le service Dozely n’a pas répondu à temps.</translation>
    </message>
    <message>
        <source>The message bus is not there.</source>
        <translation>Le bus de messages est absent.</translation>
    </message>
    <message>
        <source>its &quot;%1&quot; is neither true nor false</source>
        <translation>son «&#xa0;%1&#xa0;» n’est ni vrai ni faux</translation>
    </message>
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
