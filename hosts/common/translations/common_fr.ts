<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fr" sourcelanguage="en">
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
