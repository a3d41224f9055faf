<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>CalendarText</name>
    <message>
        <source>C</source>
        <comment>the locale that has the names of days and months</comment>
        <translation>de</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a date such as &quot;2026-03-14 06:55&quot;, &quot;06:55&quot;, &quot;tomorrow 7:00&quot;, &quot;fri 22:00&quot; or &quot;+5m&quot;</source>
        <translation>„%1“ ist kein Datum wie „2026-03-14 06:55“, „06:55“, „tomorrow 7:00“, „fri 22:00“ oder „+5m“</translation>
    </message>
    <message>
        <source>%1 or %2</source>
        <translation>%1 oder %2</translation>
    </message>
    <message>
        <source>&quot;%1&quot; can be %2</source>
        <translation>„%1“ kann %2 heißen</translation>
    </message>
    <message>
        <source>%1, since clocks are changed meanwhile</source>
        <translation>%1, da inzwischen die Uhren umgestellt werden</translation>
    </message>
    <message>
        <source>Clocks in %1 show &quot;%2&quot; twice: say %3 or %4</source>
        <translation>Die Uhren in %1 zeigen „%2“ zweimal: Sagen Sie %3 oder %4</translation>
    </message>
    <message>
        <source>d MMMM yyyy</source>
        <comment>form of a day</comment>
        <translation>d. MMMM yyyy</translation>
    </message>
    <message>
        <source>%1 %2 at %3</source>
        <comment>day of the week, day, time</comment>
        <translation>%1, %2 um %3</translation>
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
        <translation>1 Tag</translation>
    </message>
    <message numerus="yes">
        <source>%n days</source>
        <translation>
            <numerusform>%n Tag</numerusform>
            <numerusform>%n Tage</numerusform>
        </translation>
    </message>
    <message>
        <source>&quot;%1&quot; is none of day, weekday, week, month and year, of days such as monday,thursday and of distances such as 15m and 2h</source>
        <translation>„%1“ ist weder day, weekday, week, month oder year noch Tage wie monday,thursday noch ein Abstand wie 15m und 2h</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a time such as 22:00</source>
        <translation>„%1“ ist keine Uhrzeit wie 22:00</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a number of seconds, nor a time such as 10m, 6h or 2d</source>
        <translation>„%1“ ist weder eine Zahl von Sekunden noch eine Zeit wie 10m, 6h oder 2d</translation>
    </message>
    <message>
        <source>%1 (minutes)</source>
        <translation>%1 (Minuten)</translation>
    </message>
    <message>
        <source>%1 (hours)</source>
        <translation>%1 (Stunden)</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no day of a month, which is 1 to 31, or last</source>
        <translation>„%1“ ist kein Tag eines Monats; das sind 1 bis 31, oder last</translation>
    </message>
    <message>
        <source>one rule cannot mean %1 without %2, too; let the times have equal minutes, or add a second schedule</source>
        <translation>eine Regel kann nicht %1 meinen, ohne auch %2 zu meinen; geben Sie den Uhrzeiten gleiche Minuten, oder legen Sie einen zweiten Zeitplan an</translation>
    </message>
    <message>
        <source>%1, %2</source>
        <comment>a list</comment>
        <translation>%1, %2</translation>
    </message>
    <message>
        <source>%1 and %2</source>
        <comment>the end of a list</comment>
        <translation>%1 und %2</translation>
    </message>
    <message>
        <source>every year</source>
        <translation>jedes Jahr</translation>
    </message>
    <message numerus="yes">
        <source>every %n years</source>
        <translation>
            <numerusform>jedes Jahr</numerusform>
            <numerusform>alle %n Jahre</numerusform>
        </translation>
    </message>
    <message>
        <source>every month</source>
        <translation>jeden Monat</translation>
    </message>
    <message numerus="yes">
        <source>every %n months</source>
        <translation>
            <numerusform>jeden Monat</numerusform>
            <numerusform>alle %n Monate</numerusform>
        </translation>
    </message>
    <message>
        <source>every week</source>
        <translation>jede Woche</translation>
    </message>
    <message numerus="yes">
        <source>every %n weeks</source>
        <translation>
            <numerusform>jede Woche</numerusform>
            <numerusform>alle %n Wochen</numerusform>
        </translation>
    </message>
    <message>
        <source>every day</source>
        <translation>jeden Tag</translation>
    </message>
    <message numerus="yes">
        <source>every %n days</source>
        <translation>
            <numerusform>jeden Tag</numerusform>
            <numerusform>alle %n Tage</numerusform>
        </translation>
    </message>
    <message>
        <source>every hour</source>
        <translation>jede Stunde</translation>
    </message>
    <message numerus="yes">
        <source>every %n hours</source>
        <translation>
            <numerusform>jede Stunde</numerusform>
            <numerusform>alle %n Stunden</numerusform>
        </translation>
    </message>
    <message>
        <source>every minute</source>
        <translation>jede Minute</translation>
    </message>
    <message numerus="yes">
        <source>every %n minutes</source>
        <translation>
            <numerusform>jede Minute</numerusform>
            <numerusform>alle %n Minuten</numerusform>
        </translation>
    </message>
    <message>
        <source>every second</source>
        <translation>jede Sekunde</translation>
    </message>
    <message numerus="yes">
        <source>every %n seconds</source>
        <translation>
            <numerusform>jede Sekunde</numerusform>
            <numerusform>alle %n Sekunden</numerusform>
        </translation>
    </message>
    <message>
        <source>every weekday</source>
        <translation>jeden Werktag</translation>
    </message>
    <message>
        <source>every %1</source>
        <comment>days of the week</comment>
        <translation>jeden %1</translation>
    </message>
    <message>
        <source>%1 on %2</source>
        <comment>every 3 weeks, days of the week</comment>
        <translation>%1 am %2</translation>
    </message>
    <message>
        <source>the %1</source>
        <comment>a day of the month; only in English with an ending</comment>
        <translation>am %1.</translation>
    </message>
    <message>
        <source>the last day</source>
        <translation>am letzten Tag</translation>
    </message>
    <message>
        <source>the last %1</source>
        <comment>day of the week</comment>
        <translation>am letzten %1</translation>
    </message>
    <message>
        <source>the first %1</source>
        <comment>day of the week</comment>
        <translation>am ersten %1</translation>
    </message>
    <message>
        <source>the second %1</source>
        <comment>day of the week</comment>
        <translation>am zweiten %1</translation>
    </message>
    <message>
        <source>the third %1</source>
        <comment>day of the week</comment>
        <translation>am dritten %1</translation>
    </message>
    <message>
        <source>the fourth %1</source>
        <comment>day of the week</comment>
        <translation>am vierten %1</translation>
    </message>
    <message>
        <source>%1 %2</source>
        <comment>a day of the year: its number, the month</comment>
        <translation>%1. %2</translation>
    </message>
    <message>
        <source>%1 on %2</source>
        <comment>every 3 months, days of the month</comment>
        <translation>%1 %2</translation>
    </message>
    <message>
        <source>%1 on %2</source>
        <comment>every 3 years, a day of the year</comment>
        <translation>%1 am %2</translation>
    </message>
    <message>
        <source>%1 at %2</source>
        <comment>days, times</comment>
        <translation>%1 um %2</translation>
    </message>
    <message>
        <source>%1, once</source>
        <translation>%1, einmal</translation>
    </message>
    <message numerus="yes">
        <source>%1, %n times</source>
        <translation>
            <numerusform>%1, %n-mal</numerusform>
            <numerusform>%1, %n-mal</numerusform>
        </translation>
    </message>
    <message>
        <source>%1, until %2</source>
        <comment>a day</comment>
        <translation>%1, bis %2</translation>
    </message>
    <message>
        <source>%1, until %2 at %3</source>
        <comment>a day and a time</comment>
        <translation>%1, bis %2 um %3</translation>
    </message>
    <message numerus="yes">
        <source>%n other days</source>
        <translation>
            <numerusform>%n weiterer Tag</numerusform>
            <numerusform>%n weitere Tage</numerusform>
        </translation>
    </message>
    <message>
        <source>by the rule %1</source>
        <translation>nach der Regel %1</translation>
    </message>
    <message>
        <source>%1, and on %2</source>
        <comment>days</comment>
        <translation>%1, und am %2</translation>
    </message>
    <message>
        <source>%1, except on %2</source>
        <comment>days</comment>
        <translation>%1, nicht am %2</translation>
    </message>
</context>
<context>
    <name>FeasibilityText</name>
    <message>
        <source>its &quot;%1&quot; is neither true nor false</source>
        <translation>„%1“ darin ist weder wahr noch falsch</translation>
    </message>
    <message>
        <source>it names no &quot;%1&quot;</source>
        <translation>es nennt kein „%1“</translation>
    </message>
    <message>
        <source>it acts in the daemon alone</source>
        <translation>es handelt nur im Dienst</translation>
    </message>
    <message>
        <source>the parameters name no program</source>
        <translation>die Parameter nennen kein Programm</translation>
    </message>
    <message>
        <source>the program &quot;%1&quot; is not an absolute path</source>
        <translation>das Programm „%1“ ist kein absoluter Pfad</translation>
    </message>
    <message>
        <source>there is no program %1</source>
        <translation>es gibt kein Programm %1</translation>
    </message>
    <message>
        <source>%1 is no program that can be run</source>
        <translation>%1 ist kein Programm, das ausgeführt werden kann</translation>
    </message>
    <message>
        <source>there is no bundle at %1</source>
        <translation>unter %1 gibt es kein Bündel</translation>
    </message>
    <message>
        <source>%1 cannot act in the session: %2</source>
        <translation>%1 kann nicht in der Sitzung handeln: %2</translation>
    </message>
    <message>
        <source>%1 cannot act in the daemon: %2</source>
        <translation>%1 kann nicht im Dienst handeln: %2</translation>
    </message>
</context>
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
    <name>RecordedOutcomes</name>
    <message>
        <source>You may not read %1</source>
        <translation>Sie dürfen %1 nicht lesen</translation>
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
