<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>OutcomeNames</name>
    <message>
        <source>asked for</source>
        <translation>angefordert</translation>
    </message>
    <message>
        <source>at work</source>
        <translation>läuft gerade</translation>
    </message>
    <message>
        <source>done</source>
        <translation>erledigt</translation>
    </message>
    <message>
        <source>failed</source>
        <translation>fehlgeschlagen</translation>
    </message>
    <message>
        <source>skipped, too late</source>
        <translation>ausgelassen, zu spät</translation>
    </message>
    <message>
        <source>missed</source>
        <translation>verpasst</translation>
    </message>
    <message>
        <source>put off</source>
        <translation>verschoben</translation>
    </message>
    <message>
        <source>could not be started</source>
        <translation>konnte nicht gestartet werden</translation>
    </message>
    <message>
        <source>cancelled</source>
        <translation>abgebrochen</translation>
    </message>
    <message>
        <source>not known</source>
        <translation>nicht bekannt</translation>
    </message>
    <message>
        <source>interrupted</source>
        <translation>unterbrochen</translation>
    </message>
    <message>
        <source>exit status %1</source>
        <translation>Endestatus %1</translation>
    </message>
</context>
<context>
    <name>RuleFaultWords</name>
    <message>
        <source>The rule has blanks or other characters that no rule has.</source>
        <translation>Die Regel enthält Leerzeichen oder andere Zeichen, die keine Regel hat.</translation>
    </message>
    <message>
        <source>The rule has an empty part.</source>
        <translation>Die Regel hat einen leeren Teil.</translation>
    </message>
    <message>
        <source>The rule has a part that is not known: %1.</source>
        <translation>Die Regel hat einen unbekannten Teil: %1.</translation>
    </message>
    <message>
        <source>The rule has %1 twice.</source>
        <translation>Die Regel hat %1 zweimal.</translation>
    </message>
    <message>
        <source>%1 of the rule has no value.</source>
        <translation>%1 hat in der Regel keinen Wert.</translation>
    </message>
    <message>
        <source>In the rule, %1 has no meaning. An example: %2</source>
        <translation>In der Regel bedeutet %1 nichts. Ein Beispiel: %2</translation>
    </message>
    <message>
        <source>The rule has %1: no other calendars than the Gregorian are supported.</source>
        <translation>Die Regel hat %1: Andere Kalender als der gregorianische werden nicht unterstützt.</translation>
    </message>
    <message>
        <source>The rule has no FREQ.</source>
        <translation>Die Regel hat kein FREQ.</translation>
    </message>
    <message>
        <source>The rule has both COUNT and UNTIL.</source>
        <translation>Die Regel hat COUNT und UNTIL zugleich.</translation>
    </message>
    <message>
        <source>A number in BYDAY needs FREQ=MONTHLY or FREQ=YEARLY.</source>
        <translation>Eine Zahl in BYDAY braucht FREQ=MONTHLY oder FREQ=YEARLY.</translation>
    </message>
    <message>
        <source>A number in BYDAY cannot be beside BYWEEKNO.</source>
        <translation>Eine Zahl in BYDAY geht nicht zusammen mit BYWEEKNO.</translation>
    </message>
    <message>
        <source>BYMONTHDAY cannot be beside FREQ=WEEKLY.</source>
        <translation>BYMONTHDAY geht nicht zusammen mit FREQ=WEEKLY.</translation>
    </message>
    <message>
        <source>BYYEARDAY cannot be beside FREQ=DAILY, WEEKLY or MONTHLY.</source>
        <translation>BYYEARDAY geht nicht zusammen mit FREQ=DAILY, WEEKLY oder MONTHLY.</translation>
    </message>
    <message>
        <source>BYWEEKNO needs FREQ=YEARLY.</source>
        <translation>BYWEEKNO braucht FREQ=YEARLY.</translation>
    </message>
    <message>
        <source>BYSETPOS needs another BY part.</source>
        <translation>BYSETPOS braucht einen weiteren BY-Teil.</translation>
    </message>
    <message>
        <source>The rule gives no date within 100 years from its start.</source>
        <translation>Die Regel ergibt in 100 Jahren ab ihrem Beginn keinen Termin.</translation>
    </message>
    <message>
        <source>The rule&apos;s COUNT is too large to be counted.</source>
        <translation>COUNT der Regel ist zu groß, um gezählt zu werden.</translation>
    </message>
    <message>
        <source>The rule cannot be used: %1.</source>
        <translation>Die Regel ist nicht brauchbar: %1.</translation>
    </message>
</context>
</TS>
