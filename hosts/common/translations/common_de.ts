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
    <name>ReasonWords</name>
    <message>
        <source>You are not allowed to do this.</source>
        <translation>Das dürfen Sie nicht.</translation>
    </message>
    <message>
        <source>Nobody but root may do this here: polkit, which decides about others, cannot be asked (%1).</source>
        <translation>Das darf hier nur root: polkit, das über andere entscheidet, lässt sich nicht fragen (%1).</translation>
    </message>
    <message>
        <source>Too many questions are open that somebody has to answer first.</source>
        <translation>Es sind zu viele Fragen offen, die erst jemand beantworten muss.</translation>
    </message>
    <message>
        <source>Too many calls at a time: wait for the answers.</source>
        <translation>Zu viele Aufrufe auf einmal: Warten Sie auf die Antworten.</translation>
    </message>
    <message>
        <source>A user may have %1 schedules.</source>
        <translation>Ein Benutzer darf %1 Zeitpläne haben.</translation>
    </message>
    <message>
        <source>The schedules of a user may have %1 bytes in all.</source>
        <translation>Die Zeitpläne eines Benutzers dürfen zusammen %1 Byte groß sein.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; was changed by somebody else meanwhile.</source>
        <translation>„%1“ hat inzwischen jemand anders geändert.</translation>
    </message>
    <message>
        <source>The name has more than %1 characters.</source>
        <translation>Der Name hat mehr als %1 Zeichen.</translation>
    </message>
    <message>
        <source>There is no time zone &quot;%1&quot;.</source>
        <translation>Es gibt keine Zeitzone „%1“.</translation>
    </message>
    <message>
        <source>It is too large: a schedule has at most %1 bytes.</source>
        <translation>Er ist zu groß: Ein Zeitplan hat höchstens %1 Byte.</translation>
    </message>
    <message>
        <source>It holds something that no schedule can keep.</source>
        <translation>Er enthält etwas, das kein Zeitplan behalten kann.</translation>
    </message>
    <message>
        <source>It cannot repeat so: with these exceptions nothing is left of it.</source>
        <translation>So kann er sich nicht wiederholen: Mit diesen Ausnahmen bleibt nichts von ihm übrig.</translation>
    </message>
    <message>
        <source>It cannot repeat so: %1.</source>
        <translation>So kann er sich nicht wiederholen: %1.</translation>
    </message>
    <message>
        <source>What is to follow comes only where the machine was woken or switched on for the action.</source>
        <translation>Was folgen soll, kommt nur, wenn der Computer für die Aktion geweckt oder eingeschaltet wurde.</translation>
    </message>
    <message>
        <source>Nothing could come of it: %1.</source>
        <translation>Daraus könnte nichts werden: %1.</translation>
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
        <translation>%1 ist kein Programm, das sich ausführen lässt</translation>
    </message>
    <message>
        <source>there is no bundle at %1</source>
        <translation>unter %1 gibt es kein Bündel</translation>
    </message>
    <message>
        <source>%1 cannot act in the %2: %3</source>
        <translation>%1 kann in %2 nicht handeln: %3</translation>
    </message>
    <message>
        <source>session</source>
        <translation>der Sitzung</translation>
    </message>
    <message>
        <source>daemon</source>
        <translation>dem Dienst</translation>
    </message>
    <message>
        <source>it acts in the daemon alone</source>
        <translation>es handelt nur im Dienst</translation>
    </message>
    <message>
        <source>it names no &quot;%1&quot;</source>
        <translation>es nennt kein „%1“</translation>
    </message>
    <message>
        <source>The schedules are damaged, and are not overwritten: %1.</source>
        <translation>Die Zeitpläne sind beschädigt und werden nicht überschrieben: %1.</translation>
    </message>
    <message>
        <source>%1 was not changed: %2</source>
        <translation>%1 wurde nicht geändert: %2</translation>
    </message>
    <message>
        <source>there is no schedule %1</source>
        <translation>es gibt keinen Zeitplan %1</translation>
    </message>
    <message>
        <source>schedule %1 has nothing to come</source>
        <translation>beim Zeitplan %1 steht nichts mehr an</translation>
    </message>
    <message>
        <source>schedule %1 has no occurrence at %2 that is to come</source>
        <translation>beim Zeitplan %1 steht zu %2 nichts an</translation>
    </message>
    <message>
        <source>the occurrence at %1 is not the next one of schedule %2</source>
        <translation>der Termin %1 ist nicht der nächste des Zeitplans %2</translation>
    </message>
    <message>
        <source>%1 occurrences of schedule %2 are decided upon already</source>
        <translation>über %1 Termine des Zeitplans %2 ist schon entschieden</translation>
    </message>
    <message>
        <source>an occurrence is postponed by 1 to %1 seconds</source>
        <translation>ein Termin wird um 1 bis %1 Sekunden verschoben</translation>
    </message>
    <message>
        <source>it is being tried already</source>
        <translation>es wird gerade schon versucht</translation>
    </message>
    <message>
        <source>an action goes on, or is due too soon</source>
        <translation>eine Aktion läuft oder steht zu bald an</translation>
    </message>
    <message>
        <source>the machine is kept awake by %1</source>
        <translation>der Computer wird wach gehalten von %1</translation>
    </message>
    <message>
        <source>this machine cannot be put to sleep</source>
        <translation>dieser Computer lässt sich nicht in den Ruhezustand versetzen</translation>
    </message>
    <message>
        <source>the machine did not fall asleep</source>
        <translation>der Computer ist nicht eingeschlafen</translation>
    </message>
    <message>
        <source>the machine does not let itself be put to sleep</source>
        <translation>der Computer lässt sich nicht schlafen legen</translation>
    </message>
    <message>
        <source>its program ended with status %1</source>
        <translation>sein Programm endete mit Status %1</translation>
    </message>
    <message>
        <source>its program could not be started</source>
        <translation>sein Programm ließ sich nicht starten</translation>
    </message>
    <message>
        <source>its process was ended by signal %1 (%2)</source>
        <translation>sein Prozess wurde durch Signal %1 beendet (%2)</translation>
    </message>
    <message>
        <source>its process ended by itself with status %1</source>
        <translation>sein Prozess endete von selbst mit Status %1</translation>
    </message>
    <message>
        <source>its performer ended without a word</source>
        <translation>was ihn ausführte, endete ohne ein Wort</translation>
    </message>
    <message>
        <source>its agent does not say why</source>
        <translation>der Agent sagt nicht, warum</translation>
    </message>
    <message>
        <source>it took more memory than it may</source>
        <translation>sie brauchte mehr Speicher, als sie darf</translation>
    </message>
    <message>
        <source>it took longer than %1 s</source>
        <translation>sie dauerte länger als %1 s</translation>
    </message>
    <message>
        <source>it was asked to end</source>
        <translation>sie sollte enden</translation>
    </message>
    <message>
        <source>There is no bundle %1</source>
        <translation>Es gibt kein Bündel %1</translation>
    </message>
    <message>
        <source>%1 is not a bundle</source>
        <translation>%1 ist kein Bündel</translation>
    </message>
    <message>
        <source>The bundle %1 is not trusted: %2</source>
        <translation>Dem Bündel %1 wird nicht vertraut: %2</translation>
    </message>
    <message>
        <source>it lies in no folder of plug-ins</source>
        <translation>es liegt in keinem Ordner für Plug-ins</translation>
    </message>
    <message>
        <source>The bundle %1 names no &quot;%2&quot;</source>
        <translation>Das Bündel %1 nennt kein „%2“</translation>
    </message>
    <message>
        <source>The plug-in of %1 cannot be made: %2</source>
        <translation>Das Plug-in von %1 lässt sich nicht erzeugen: %2</translation>
    </message>
    <message>
        <source>its factory made nothing</source>
        <translation>seine Fabrik hat nichts erzeugt</translation>
    </message>
    <message>
        <source>The plug-in of %1 is none for configuration</source>
        <translation>Das Plug-in von %1 ist keines zum Einstellen</translation>
    </message>
    <message>
        <source>%1 has no view</source>
        <translation>%1 hat keine Ansicht</translation>
    </message>
    <message>
        <source>Cannot load &quot;%1&quot;: %2</source>
        <translation>„%1“ lässt sich nicht laden: %2</translation>
    </message>
    <message>
        <source>Cannot read &quot;%1&quot;: %2</source>
        <translation>„%1“ lässt sich nicht lesen: %2</translation>
    </message>
    <message>
        <source>Cannot write &quot;%1&quot;: %2</source>
        <translation>„%1“ lässt sich nicht schreiben: %2</translation>
    </message>
    <message>
        <source>it is not a file</source>
        <translation>es ist keine Datei</translation>
    </message>
    <message>
        <source>%1.</source>
        <comment>a clause as a sentence</comment>
        <translation>%1.</translation>
    </message>
    <message>
        <source>The Dozely service is not running.</source>
        <translation>Der Dozely-Dienst läuft nicht.</translation>
    </message>
    <message>
        <source>The Dozely service did not answer in time.</source>
        <translation>Der Dozely-Dienst hat nicht rechtzeitig geantwortet.</translation>
    </message>
    <message>
        <source>The message bus is not there.</source>
        <translation>Der Nachrichtenbus ist nicht da.</translation>
    </message>
    <message>
        <source>its &quot;%1&quot; is neither true nor false</source>
        <translation>„%1“ darin ist weder wahr noch falsch</translation>
    </message>
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
