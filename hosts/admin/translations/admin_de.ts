<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>AdminText</name>
    <message>
        <source>Work on the system below that folder instead of /.</source>
        <translation>Mit dem System unterhalb dieses Ordners arbeiten statt mit /.</translation>
    </message>
    <message>
        <source>Show this help and end.</source>
        <translation>Diese Hilfe zeigen und enden.</translation>
    </message>
    <message>
        <source>done</source>
        <translation>erledigt</translation>
    </message>
    <message>
        <source>it could not be done (not found, not reachable, damaged)</source>
        <translation>es war nicht möglich (nicht gefunden, nicht erreichbar, beschädigt)</translation>
    </message>
    <message>
        <source>it is alive</source>
        <translation>er ist da</translation>
    </message>
    <message>
        <source>it is not</source>
        <translation>er ist nicht da</translation>
    </message>
    <message>
        <source>nothing is wrong</source>
        <translation>nichts ist falsch</translation>
    </message>
    <message>
        <source>something is wrong</source>
        <translation>etwas ist falsch</translation>
    </message>
    <message>
        <source>nothing differed</source>
        <translation>nichts war anders</translation>
    </message>
    <message>
        <source>up to date</source>
        <translation>auf dem neuesten Stand</translation>
    </message>
    <message>
        <source>the command line is wrong</source>
        <translation>die Befehlszeile ist falsch</translation>
    </message>
    <message>
        <source>not permitted</source>
        <translation>nicht erlaubt</translation>
    </message>
    <message>
        <source>schedules were changed, or would be</source>
        <translation>Zeitpläne wurden oder würden geändert</translation>
    </message>
    <message>
        <source>there is a newer version</source>
        <translation>es gibt eine neuere Version</translation>
    </message>
    <message>
        <source>no answer</source>
        <translation>keine Antwort</translation>
    </message>
    <message>
        <source>Run the system below the folder &lt;DIR&gt; instead of /.</source>
        <translation>Mit dem System unterhalb des Ordners &lt;DIR&gt; arbeiten statt mit /.</translation>
    </message>
    <message>
        <source>Show the version and end.</source>
        <translation>Die Version zeigen und enden.</translation>
    </message>
    <message>
        <source>Usage: %1 [options] COMMAND [ARGUMENTS]</source>
        <translation>Aufruf: %1 [Optionen] BEFEHL [ARGUMENTE]</translation>
    </message>
    <message>
        <source>Shows and changes the schedules, asks whether the system&apos;s processes are alive, shows the log.</source>
        <translation>Zeigt und ändert die Zeitpläne, fragt, ob die Prozesse des Systems da sind, zeigt das Protokoll.</translation>
    </message>
    <message>
        <source>Commands:</source>
        <translation>Befehle:</translation>
    </message>
    <message>
        <source>SCHEDULE is an identifier, or a name that only one schedule has. USER is a name or a number.
DATE is what people write: &quot;06:55&quot;, &quot;tomorrow 7:00&quot;, &quot;fri 22:00&quot;, &quot;22.12. 6:30&quot;, &quot;2026-03-14 06:55&quot;, +5m.
&quot;COMMAND --help&quot; shows the options of a command alone.

Exit status: 0 done (ping, status: it is alive; doctor: nothing is wrong; apply: nothing differed);
1 it could not be done (not found, not reachable, damaged; doctor: something is wrong);
2 the command line is wrong; 3 not permitted.
apply: 4 schedules were changed, or would be.
update check: 0 up to date; 4 there is a newer version; 5 no answer.</source>
        <translation>SCHEDULE ist eine Kennung oder ein Name, den nur ein Zeitplan hat. USER ist ein Name oder eine Nummer.
DATE ist, was man so schreibt: „06:55“, „tomorrow 7:00“, „fri 22:00“, „22.12. 6:30“, „2026-03-14 06:55“, +5m.
„BEFEHL --help“ zeigt die Optionen eines Befehls allein.

Endestatus: 0 erledigt (ping, status: er ist da; doctor: nichts ist falsch; apply: nichts war anders);
1 es war nicht möglich (nicht gefunden, nicht erreichbar, beschädigt; doctor: etwas ist falsch);
2 die Befehlszeile ist falsch; 3 nicht erlaubt.
apply: 4 Zeitpläne wurden oder würden geändert.
update check: 0 auf dem neuesten Stand; 4 es gibt eine neuere Version; 5 keine Antwort.</translation>
    </message>
    <message>
        <source>Options:</source>
        <translation>Optionen:</translation>
    </message>
    <message>
        <source>Arguments:</source>
        <translation>Argumente:</translation>
    </message>
    <message>
        <source>What to do, see above.</source>
        <translation>Was zu tun ist, siehe oben.</translation>
    </message>
    <message>
        <source>Usage:</source>
        <translation>Aufruf:</translation>
    </message>
    <message>
        <source>Example:</source>
        <translation>Beispiel:</translation>
    </message>
    <message>
        <source>Exit status:</source>
        <translation>Endestatus:</translation>
    </message>
    <message>
        <source>A command is missing; --help shows them.</source>
        <translation>Ein Befehl fehlt; --help zeigt sie.</translation>
    </message>
    <message>
        <source>There is no command &quot;%1&quot;; --help shows those that there are.</source>
        <translation>Es gibt keinen Befehl „%1“; --help zeigt, welche es gibt.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; needs an argument; &quot;%1 --help&quot; shows which.</source>
        <translation>„%1“ braucht ein Argument; „%1 --help“ zeigt, welches.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; takes no argument &quot;%2&quot;.</source>
        <translation>„%1“ nimmt kein Argument „%2“.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; takes no option %2.</source>
        <translation>„%1“ nimmt keine Option %2.</translation>
    </message>
    <message>
        <source>Show on one screen how the system is: daemon, agents, clock, what comes, what failed.</source>
        <translation>Auf einem Bildschirm zeigen, wie es dem System geht: Dienst, Agenten, Uhr, was kommt, was fehlschlug.</translation>
    </message>
    <message>
        <source>Look at all that can be wrong with the installation, and say what helps.</source>
        <translation>Nach allem sehen, was an der Installation falsch sein kann, und sagen, was hilft.</translation>
    </message>
    <message>
        <source>Show all schedules, and what became of those that are over.</source>
        <translation>Alle Zeitpläne zeigen, und was aus denen wurde, die vorbei sind.</translation>
    </message>
    <message>
        <source>Add a schedule: what is to be done (--bundle or --program) and when (--date or --in; --every or --rule, with --at).</source>
        <translation>Einen Zeitplan anlegen: was zu tun ist (--bundle oder --program) und wann (--date oder --in; --every oder --rule, mit --at).</translation>
    </message>
    <message>
        <source>Change what the options name, as for &quot;add&quot;; the rest stays.</source>
        <translation>Ändern, was die Optionen nennen, wie bei „add“; alles andere bleibt.</translation>
    </message>
    <message>
        <source>Remove a schedule.</source>
        <translation>Einen Zeitplan entfernen.</translation>
    </message>
    <message>
        <source>Remove the schedules that are over, but for those that stay.</source>
        <translation>Die Zeitpläne entfernen, die vorbei sind, außer denen, die bleiben.</translation>
    </message>
    <message>
        <source>Let a schedule come due.</source>
        <translation>Einen Zeitplan fällig werden lassen.</translation>
    </message>
    <message>
        <source>Keep a schedule, but never let it come due.</source>
        <translation>Einen Zeitplan behalten, aber nie fällig werden lassen.</translation>
    </message>
    <message>
        <source>Show what comes, and what wakes the machine.</source>
        <translation>Zeigen, was kommt und was den Rechner weckt.</translation>
    </message>
    <message>
        <source>Show what became of it, newest first.</source>
        <translation>Zeigen, was daraus wurde, das Neueste zuerst.</translation>
    </message>
    <message>
        <source>Leave out the next time, or that at --date.</source>
        <translation>Das nächste Mal auslassen, oder das am --date.</translation>
    </message>
    <message>
        <source>Perform it so much later (90, 10m, 1h): the next time, or that at --date.</source>
        <translation>Um so viel später ausführen (90, 10m, 1h): das nächste Mal, oder das am --date.</translation>
    </message>
    <message>
        <source>Have the daemon perform a schedule&apos;s action now.</source>
        <translation>Den Dienst die Aktion eines Zeitplans jetzt ausführen lassen.</translation>
    </message>
    <message>
        <source>Ask whether the daemon, a user&apos;s agent or his configuration application is alive; yours without USER.</source>
        <translation>Fragen, ob der Dienst, der Agent eines Benutzers oder seine Anwendung da ist; Ihrer ohne USER.</translation>
    </message>
    <message>
        <source>Show the last lines of the log.</source>
        <translation>Die letzten Zeilen des Protokolls zeigen.</translation>
    </message>
    <message>
        <source>Show what the schedule&apos;s action wrote last, when it was performed the last time, or at --date.</source>
        <translation>Zeigen, was die Aktion des Zeitplans beim letzten Mal oder am --date geschrieben hat.</translation>
    </message>
    <message>
        <source>Show the clock that can wake the machine, its alarm, and the scheduled events; or arm the alarm, read it back, set it as it was.</source>
        <translation>Die Uhr zeigen, die den Rechner wecken kann, ihre Weckzeit und die geplanten Ereignisse; oder die Weckzeit stellen, zurücklesen und wieder wie zuvor stellen.</translation>
    </message>
    <message>
        <source>Put the machine to sleep now.</source>
        <translation>Den Rechner jetzt schlafen lassen.</translation>
    </message>
    <message>
        <source>Write all schedules, or one, to the standard output: a property list, which &quot;apply&quot; reads, or with --ics a calendar.</source>
        <translation>Alle Zeitpläne oder einen auf die Standardausgabe schreiben: als Eigenschaftsliste, die „apply“ liest, oder mit --ics als Kalender.</translation>
    </message>
    <message>
        <source>Have exactly those schedules that a property list, JSON or YAML file says; &quot;-&quot; is the standard input.</source>
        <translation>Genau die Zeitpläne haben, die eine Datei sagt (Eigenschaftsliste, JSON oder YAML); „-“ ist die Standardeingabe.</translation>
    </message>
    <message>
        <source>Ask the update server whether there is a newer version.</source>
        <translation>Den Update-Server fragen, ob es eine neuere Version gibt.</translation>
    </message>
    <message>
        <source>Print how the last word may go on, for shells.</source>
        <translation>Für Shells ausgeben, wie das letzte Wort weitergehen kann.</translation>
    </message>
    <message>
        <source>Show help and end.</source>
        <translation>Hilfe zeigen und enden.</translation>
    </message>
    <message>
        <source>Work below a folder.</source>
        <translation>Unterhalb eines Ordners arbeiten.</translation>
    </message>
    <message>
        <source>The command failed: %1</source>
        <translation>Der Befehl ist fehlgeschlagen: %1</translation>
    </message>
    <message>
        <source>answer in JSON, one object on a line.</source>
        <translation>in JSON antworten, ein Objekt auf einer Zeile.</translation>
    </message>
    <message>
        <source>the plug-in bundle, a path or the name of an installed one.</source>
        <translation>das Plug-in-Bündel, ein Pfad oder der Name eines installierten.</translation>
    </message>
    <message>
        <source>run this program (an absolute path), with the bundle &quot;Command&quot;.</source>
        <translation>dieses Programm (ein absoluter Pfad) ausführen, mit dem Bündel „Command“.</translation>
    </message>
    <message>
        <source>an argument of the program; repeat it for more.</source>
        <translation>ein Argument des Programms; für weitere wiederholen.</translation>
    </message>
    <message>
        <source>when it takes place once, as &quot;2026-03-14 06:55&quot; or &quot;tomorrow 7:00&quot;.</source>
        <translation>wann es einmal stattfindet, wie „2026-03-14 06:55“ oder „tomorrow 7:00“.</translation>
    </message>
    <message>
        <source>of which time; the latest without it.</source>
        <translation>von welchem Mal; ohne das vom letzten.</translation>
    </message>
    <message>
        <source>of which time; the next without it.</source>
        <translation>welches Mal; ohne das das nächste.</translation>
    </message>
    <message>
        <source>the time zone of what is told, as &quot;Europe/Berlin&quot;; the machine&apos;s without it, and what repeats goes with it wherever that goes. &quot;machine&quot; is that again.</source>
        <translation>die Zeitzone dessen, was gesagt wird, wie „Europe/Berlin“; ohne das die des Rechners, und was sich wiederholt, geht mit ihr, wohin sie auch geht. „machine“ ist wieder diese.</translation>
    </message>
    <message>
        <source>the time zone of --date, as &quot;Europe/Berlin&quot;; the schedule&apos;s without it.</source>
        <translation>die Zeitzone von --date, wie „Europe/Berlin“; ohne das die des Zeitplans.</translation>
    </message>
    <message>
        <source>when, so many seconds from now (90, 5m, 1h).</source>
        <translation>wann, so viele Sekunden von jetzt an (90, 5m, 1h).</translation>
    </message>
    <message>
        <source>how often: day, weekday, week, month, year, days such as monday,thursday, or a distance such as 15m or 2h.</source>
        <translation>wie oft: day, weekday, week, month, year, Tage wie monday,thursday oder ein Abstand wie 15m oder 2h.</translation>
    </message>
    <message>
        <source>at what time of those days, as 22:00; repeat it for more.</source>
        <translation>um welche Uhrzeit an diesen Tagen, wie 22:00; für weitere wiederholen.</translation>
    </message>
    <message>
        <source>on which days of every month, as 1,15,last.</source>
        <translation>an welchen Tagen jedes Monats, wie 1,15,last.</translation>
    </message>
    <message>
        <source>how often, as a rule of RFC 5545: FREQ=WEEKLY;BYDAY=MO.</source>
        <translation>wie oft, als Regel nach RFC 5545: FREQ=WEEKLY;BYDAY=MO.</translation>
    </message>
    <message>
        <source>repeat it from then on, now without it.</source>
        <translation>von da an wiederholen, ohne das von jetzt an.</translation>
    </message>
    <message>
        <source>repeat it up to then, that day included.</source>
        <translation>bis dahin wiederholen, der Tag eingeschlossen.</translation>
    </message>
    <message>
        <source>show what comes up to then, that day included.</source>
        <translation>zeigen, was bis dahin kommt, der Tag eingeschlossen.</translation>
    </message>
    <message>
        <source>repeat it so many times.</source>
        <translation>so oft wiederholen.</translation>
    </message>
    <message>
        <source>not on that day, or at that date; repeat it for more.</source>
        <translation>nicht an diesem Tag oder zu dieser Zeit; für weitere wiederholen.</translation>
    </message>
    <message>
        <source>no exception on that day, or at that date; repeat it for more.</source>
        <translation>keine Ausnahme an diesem Tag oder zu dieser Zeit; für weitere wiederholen.</translation>
    </message>
    <message>
        <source>repeat it without an end.</source>
        <translation>ohne Ende wiederholen.</translation>
    </message>
    <message>
        <source>repeat it no more: the next time is the last one, or --date is.</source>
        <translation>nicht mehr wiederholen: Das nächste Mal ist das letzte, oder --date ist es.</translation>
    </message>
    <message>
        <source>what becomes of it when its time passed while the machine was off or asleep: skip, run-once (of all that were missed the latest), run-once=LIMIT (no older than 90, 10m, 6h, 2d), or plug-in. bundle: what the bundle says, as without it.</source>
        <translation>was daraus wird, wenn seine Zeit verging, während der Rechner aus war oder schlief: skip, run-once (von allem Verpassten das letzte), run-once=LIMIT (nicht älter als 90, 10m, 6h, 2d) oder plug-in. bundle: was das Bündel sagt, wie ohne das.</translation>
    </message>
    <message>
        <source>whether it is performed while the time before still goes on: skip or run.</source>
        <translation>ob es ausgeführt wird, während das Mal davor noch läuft: skip oder run.</translation>
    </message>
    <message>
        <source>what the machine does afterwards when it was woken or switched on for it and nobody uses it: nothing, sleep or power-off.</source>
        <translation>was der Rechner danach tut, wenn er dafür geweckt oder eingeschaltet wurde und niemand ihn benutzt: nothing, sleep oder power-off.</translation>
    </message>
    <message>
        <source>another name.</source>
        <translation>ein anderer Name.</translation>
    </message>
    <message>
        <source>a parameter of the action; repeat it for more. &quot;true&quot;, &quot;false&quot; and numbers are taken as such; KEY:string=VALUE, :integer=, :real= and :boolean= name the type.</source>
        <translation>ein Parameter der Aktion; für weitere wiederholen. „true“, „false“ und Zahlen werden als solche genommen; KEY:string=VALUE, :integer=, :real= und :boolean= nennen den Typ.</translation>
    </message>
    <message>
        <source>a parameter of the event, whose KEY is four characters; repeat it for more. &quot;true&quot;, &quot;false&quot; and numbers are taken as such; KEY:string=VALUE, :integer=, :real= and :boolean= name the type.</source>
        <translation>ein Parameter des Ereignisses, dessen KEY vier Zeichen hat; für weitere wiederholen. „true“, „false“ und Zahlen werden als solche genommen; KEY:string=VALUE, :integer=, :real= und :boolean= nennen den Typ.</translation>
    </message>
    <message>
        <source>parameters from a property list.</source>
        <translation>Parameter aus einer Eigenschaftsliste.</translation>
    </message>
    <message>
        <source>without that parameter; repeat it for more.</source>
        <translation>ohne diesen Parameter; für weitere wiederholen.</translation>
    </message>
    <message>
        <source>alert the user so many seconds before, with a button to cancel.</source>
        <translation>so viele Sekunden vorher melden, mit einem Knopf zum Abbrechen.</translation>
    </message>
    <message>
        <source>without the alert.</source>
        <translation>ohne die Meldung.</translation>
    </message>
    <message>
        <source>act in the daemon.</source>
        <translation>im Dienst handeln.</translation>
    </message>
    <message>
        <source>act in the user&apos;s session.</source>
        <translation>in der Sitzung des Benutzers handeln.</translation>
    </message>
    <message>
        <source>act where the bundle says.</source>
        <translation>handeln, wo das Bündel es sagt.</translation>
    </message>
    <message>
        <source>wake the machine for it, a minute ahead.</source>
        <translation>den Rechner dafür wecken, eine Minute vorher.</translation>
    </message>
    <message>
        <source>do not wake the machine for it.</source>
        <translation>den Rechner nicht dafür wecken.</translation>
    </message>
    <message>
        <source>switch the machine on for it, three minutes ahead.</source>
        <translation>den Rechner dafür einschalten, drei Minuten vorher.</translation>
    </message>
    <message>
        <source>do not switch the machine on for it.</source>
        <translation>den Rechner nicht dafür einschalten.</translation>
    </message>
    <message>
        <source>tell the user at the console when it fails or is not performed.</source>
        <translation>dem Benutzer an der Konsole sagen, wenn es fehlschlägt oder nicht ausgeführt wird.</translation>
    </message>
    <message>
        <source>do not tell the user of failures.</source>
        <translation>dem Benutzer nichts von Fehlschlägen sagen.</translation>
    </message>
    <message>
        <source>the schedule is not to come due before it is enabled.</source>
        <translation>der Zeitplan wird nicht fällig, bevor er eingeschaltet ist.</translation>
    </message>
    <message>
        <source>let it come due.</source>
        <translation>ihn fällig werden lassen.</translation>
    </message>
    <message>
        <source>also what nothing could come of.</source>
        <translation>auch das, woraus nichts werden kann.</translation>
    </message>
    <message>
        <source>the schedule is not removed when it is over, but by &quot;remove&quot;.</source>
        <translation>der Zeitplan wird, wenn er vorbei ist, nur mit „remove“ entfernt.</translation>
    </message>
    <message>
        <source>the schedule is removed some time after it is over.</source>
        <translation>der Zeitplan wird einige Zeit, nachdem er vorbei ist, entfernt.</translation>
    </message>
    <message>
        <source>whose schedule it is; yours without it.</source>
        <translation>wessen Zeitplan es ist; ohne das Ihrer.</translation>
    </message>
    <message>
        <source>how many to show, 10 without it.</source>
        <translation>wie viele zu zeigen sind, ohne das 10.</translation>
    </message>
    <message>
        <source>how many to show, 20 without it.</source>
        <translation>wie viele zu zeigen sind, ohne das 20.</translation>
    </message>
    <message>
        <source>how many lines to show first, 20 without it.</source>
        <translation>wie viele Zeilen zuerst zu zeigen sind, ohne das 20.</translation>
    </message>
    <message>
        <source>go on showing lines as they come.</source>
        <translation>weiter Zeilen zeigen, wie sie kommen.</translation>
    </message>
    <message>
        <source>whose process is to have it; yours without it.</source>
        <translation>wessen Prozess es haben soll; ohne das Ihrer.</translation>
    </message>
    <message>
        <source>how long to wait for the reply, 60 without it.</source>
        <translation>wie lange auf die Antwort zu warten ist, ohne das 60.</translation>
    </message>
    <message>
        <source>do not wait for a reply.</source>
        <translation>nicht auf eine Antwort warten.</translation>
    </message>
    <message>
        <source>as a calendar (iCalendar, RFC 5545).</source>
        <translation>als Kalender (iCalendar, RFC 5545).</translation>
    </message>
    <message>
        <source>change nothing, and say what would be changed.</source>
        <translation>nichts ändern und sagen, was geändert würde.</translation>
    </message>
    <message>
        <source>begin later by a time of up to so much (30m, 1h), which is another one on every machine and always the same on this one.</source>
        <translation>um bis zu so viel später beginnen (30m, 1h): auf jedem Rechner um eine andere Zeit, auf diesem immer um dieselbe.</translation>
    </message>
    <message>
        <source>run the command on that machine, over ssh.</source>
        <translation>den Befehl auf diesem Rechner ausführen, über ssh.</translation>
    </message>
    <message>
        <source>The output cannot be written.</source>
        <translation>Die Ausgabe kann nicht geschrieben werden.</translation>
    </message>
    <message>
        <source>It cannot be spread: %1.</source>
        <translation>Es kann nicht verteilt werden: %1.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is added as %2</source>
        <translation>„%1“ ist angelegt als %2</translation>
    </message>
    <message>
        <source>The standard input cannot be read.</source>
        <translation>Die Standardeingabe kann nicht gelesen werden.</translation>
    </message>
    <message>
        <source>%1 cannot be read: %2.</source>
        <translation>%1 kann nicht gelesen werden: %2.</translation>
    </message>
    <message>
        <source>Nothing can be spread: %1.</source>
        <translation>Nichts kann verteilt werden: %1.</translation>
    </message>
    <message>
        <source>%1 is not understood: %2.</source>
        <translation>%1 wird nicht verstanden: %2.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; cannot be spread: %2.</source>
        <translation>„%1“ kann nicht verteilt werden: %2.</translation>
    </message>
    <message>
        <source>&quot;%1&quot;: %2. --anyway has it all the same.</source>
        <translation>„%1“: %2. Mit --anyway geschieht es trotzdem.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; (%2) would be removed.</source>
        <translation>„%1“ (%2) würde entfernt.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; (%2) is removed.</source>
        <translation>„%1“ (%2) ist entfernt.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; (%2) would be changed.</source>
        <translation>„%1“ (%2) würde geändert.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; (%2) is changed.</source>
        <translation>„%1“ (%2) ist geändert.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; (%2) would be added.</source>
        <translation>„%1“ (%2) würde angelegt.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; (%2) is added.</source>
        <translation>„%1“ (%2) ist angelegt.</translation>
    </message>
    <message>
        <source>Nothing differs.</source>
        <translation>Nichts ist anders.</translation>
    </message>
    <message>
        <source>Say what is to change; --help shows the options.</source>
        <translation>Sagen Sie, was zu ändern ist; --help zeigt die Optionen.</translation>
    </message>
    <message>
        <source>There is no schedule &quot;%1&quot; any more.</source>
        <translation>Es gibt keinen Zeitplan „%1“ mehr.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is changed</source>
        <translation>„%1“ ist geändert</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not your schedule; try it as root.</source>
        <translation>„%1“ ist nicht Ihr Zeitplan; versuchen Sie es als root.</translation>
    </message>
    <message>
        <source>The daemon refuses: %1.</source>
        <translation>Der Dienst lehnt ab: %1.</translation>
    </message>
    <message>
        <source>The daemon does not answer.</source>
        <translation>Der Dienst antwortet nicht.</translation>
    </message>
    <message>
        <source>its next time</source>
        <translation>das nächste Mal</translation>
    </message>
    <message>
        <source>There is no user &quot;%1&quot;.</source>
        <translation>Es gibt keinen Benutzer „%1“.</translation>
    </message>
    <message>
        <source>The daemon is alive.</source>
        <translation>Der Dienst ist da.</translation>
    </message>
    <message>
        <source>The agent of %1 is alive.</source>
        <translation>Der Agent von %1 ist da.</translation>
    </message>
    <message>
        <source>The application of %1 is alive.</source>
        <translation>Die Anwendung von %1 ist da.</translation>
    </message>
    <message>
        <source>The agent of %1 does not answer.</source>
        <translation>Der Agent von %1 antwortet nicht.</translation>
    </message>
    <message>
        <source>The application of %1 does not answer.</source>
        <translation>Die Anwendung von %1 antwortet nicht.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not daemon, agent or application.</source>
        <translation>„%1“ ist weder daemon noch agent noch application.</translation>
    </message>
    <message>
        <source>There is one daemon for all users.</source>
        <translation>Es gibt einen Dienst für alle Benutzer.</translation>
    </message>
    <message>
        <source>The daemon was asked to perform &quot;%1&quot;; the log tells how it went.</source>
        <translation>Der Dienst wurde gebeten, „%1“ auszuführen; das Protokoll sagt, wie es ausging.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is left out: %2.</source>
        <translation>„%1“ wird ausgelassen: %2.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no time to postpone it by, such as 90, 10m or 1h.</source>
        <translation>„%1“ ist keine Zeit, um die es verschoben werden kann, wie 90, 10m oder 1h.</translation>
    </message>
    <message>
        <source>&quot;%2&quot; is postponed by %1: %3.</source>
        <translation>„%2“ wird um %1 verschoben: %3.</translation>
    </message>
    <message>
        <source>What is over cannot be told: %1.</source>
        <translation>Was vorbei ist, lässt sich nicht sagen: %1.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is over and removed.</source>
        <translation>„%1“ ist vorbei und entfernt.</translation>
    </message>
    <message>
        <source>No schedule is over.</source>
        <translation>Kein Zeitplan ist vorbei.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a number of seconds from now.</source>
        <translation>„%1“ ist keine Zahl von Sekunden von jetzt an.</translation>
    </message>
    <message>
        <source>There is no time zone &quot;%1&quot;.</source>
        <translation>Es gibt keine Zeitzone „%1“.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is a day; say at what time, such as &quot;%1 06:55&quot;.</source>
        <translation>„%1“ ist ein Tag; sagen Sie, um welche Uhrzeit, wie „%1 06:55“.</translation>
    </message>
    <message>
        <source>%1 does not exist in %2; it becomes %3.</source>
        <translation>%1 gibt es in %2 nicht; daraus wird %3.</translation>
    </message>
    <message>
        <source>Say when, by --date or by --in.</source>
        <translation>Sagen Sie, wann, mit --date oder mit --in.</translation>
    </message>
    <message>
        <source>%1 in %2 is past.</source>
        <translation>%1 in %2 ist vorbei.</translation>
    </message>
    <message>
        <source>The date is further ahead than the store can hold.</source>
        <translation>Die Zeit liegt weiter in der Zukunft, als gespeichert werden kann.</translation>
    </message>
    <message>
        <source>The clock is synchronised.</source>
        <translation>Die Uhr ist synchronisiert.</translation>
    </message>
    <message>
        <source>Nothing keeps the clock right.</source>
        <translation>Nichts hält die Uhr richtig.</translation>
    </message>
    <message>
        <source>timedatectl set-ntp true, after apt install systemd-timesyncd or chrony</source>
        <translation>timedatectl set-ntp true, nach apt install systemd-timesyncd oder chrony</translation>
    </message>
    <message>
        <source>Nobody can tell how old the data of the time zones are.</source>
        <translation>Niemand kann sagen, wie alt die Zeitzonendaten sind.</translation>
    </message>
    <message>
        <source>The data of the time zones do not say how old they are.</source>
        <translation>Die Zeitzonendaten sagen nicht, wie alt sie sind.</translation>
    </message>
    <message>
        <source>The data of the time zones are those of %1.</source>
        <translation>Die Zeitzonendaten sind die von %1.</translation>
    </message>
    <message>
        <source>The machine&apos;s time zone has no name: /etc/localtime is no link to one.</source>
        <translation>Die Zeitzone des Rechners hat keinen Namen: /etc/localtime ist keine Verknüpfung zu einer.</translation>
    </message>
    <message>
        <source>timedatectl set-timezone Europe/Berlin, or where the machine is</source>
        <translation>timedatectl set-timezone Europe/Berlin, oder wo der Rechner steht</translation>
    </message>
    <message>
        <source>The machine&apos;s time zone is %1.</source>
        <translation>Die Zeitzone des Rechners ist %1.</translation>
    </message>
    <message>
        <source>fine</source>
        <translation>gut</translation>
    </message>
    <message>
        <source>wrong</source>
        <translation>falsch</translation>
    </message>
    <message>
        <source>unknown</source>
        <translation>unklar</translation>
    </message>
    <message>
        <source>Nothing is wrong.</source>
        <translation>Nichts ist falsch.</translation>
    </message>
    <message numerus="yes">
        <source>%n thing(s) are wrong.</source>
        <translation>
            <numerusform>%n Sache ist falsch.</numerusform>
            <numerusform>%n Sachen sind falsch.</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 is not there.</source>
        <translation>%1 ist nicht da.</translation>
    </message>
    <message>
        <source>%1 is no folder.</source>
        <translation>%1 ist kein Ordner.</translation>
    </message>
    <message>
        <source>%1 is no regular file.</source>
        <translation>%1 ist keine gewöhnliche Datei.</translation>
    </message>
    <message>
        <source>%1 belongs to %2.</source>
        <translation>%1 gehört %2.</translation>
    </message>
    <message>
        <source>%1 has the mode %2, which lets others write there.</source>
        <translation>%1 hat die Rechte %2; damit dürfen andere dort schreiben.</translation>
    </message>
    <message>
        <source>%1 has the mode %2, which keeps others out.</source>
        <translation>%1 hat die Rechte %2; damit bleiben andere draußen.</translation>
    </message>
    <message>
        <source>%1 is as it should be.</source>
        <translation>%1 ist, wie es sein soll.</translation>
    </message>
    <message>
        <source>No bundle is performed as root: %1.</source>
        <translation>Kein Bündel wird als root ausgeführt: %1.</translation>
    </message>
    <message>
        <source>There is no bundle in %1.</source>
        <translation>In %1 ist kein Bündel.</translation>
    </message>
    <message>
        <source>The bundles in %1 can be trusted.</source>
        <translation>Den Bündeln in %1 kann vertraut werden.</translation>
    </message>
    <message>
        <source>Nobody can tell how much room there is for the record.</source>
        <translation>Niemand kann sagen, wie viel Platz für die Aufzeichnung ist.</translation>
    </message>
    <message>
        <source>%1, where the record lies, can only be read.</source>
        <translation>%1, wo die Aufzeichnung liegt, kann nur gelesen werden.</translation>
    </message>
    <message>
        <source>%1, where the record lies, is full.</source>
        <translation>%1, wo die Aufzeichnung liegt, ist voll.</translation>
    </message>
    <message>
        <source>Make room in %1.</source>
        <translation>Schaffen Sie Platz in %1.</translation>
    </message>
    <message>
        <source>There is room for the record.</source>
        <translation>Für die Aufzeichnung ist Platz.</translation>
    </message>
    <message>
        <source>Look for an alarm, &quot;RTC wake&quot; or &quot;power on by alarm&quot; in the firmware&apos;s settings; docs/power.md says more</source>
        <translation>Suchen Sie in den Einstellungen der Firmware nach einer Weckzeit, „RTC wake“ oder „power on by alarm“; mehr in docs/power.md</translation>
    </message>
    <message>
        <source>%1 can wake the machine.</source>
        <translation>%1 kann den Rechner wecken.</translation>
    </message>
    <message>
        <source>No clock can wake this machine, and no schedule asks for that.</source>
        <translation>Keine Uhr kann diesen Rechner wecken, und kein Zeitplan verlangt es.</translation>
    </message>
    <message>
        <source>No clock can wake this machine, as &quot;%1&quot; asks for.</source>
        <translation>Keine Uhr kann diesen Rechner wecken, wie „%1“ es verlangt.</translation>
    </message>
    <message>
        <source>%1, or %2</source>
        <translation>%1, oder %2</translation>
    </message>
    <message>
        <source>There is no alarm without a clock that could wake the machine.</source>
        <translation>Ohne eine Uhr, die den Rechner wecken könnte, gibt es keine Weckzeit.</translation>
    </message>
    <message>
        <source>The machine is to be woken, and the alarm of %1 is not armed: the firmware or another program has dropped it, or the daemon does not run.</source>
        <translation>Der Rechner soll geweckt werden, und die Weckzeit von %1 ist nicht gestellt: Die Firmware oder ein anderes Programm hat sie verworfen, oder der Dienst läuft nicht.</translation>
    </message>
    <message>
        <source>The alarm is armed.</source>
        <translation>Die Weckzeit ist gestellt.</translation>
    </message>
    <message>
        <source>No alarm is needed.</source>
        <translation>Es ist keine Weckzeit nötig.</translation>
    </message>
    <message>
        <source>The alarm holds what it is set to.</source>
        <translation>Die Weckzeit bleibt, wie sie gestellt wird.</translation>
    </message>
    <message>
        <source>Only root can see whether the machine was woken when it should have been.</source>
        <translation>Nur root kann sehen, ob der Rechner geweckt wurde, als er sollte.</translation>
    </message>
    <message>
        <source>The last time of &quot;%1&quot;, which wakes the machine, was missed.</source>
        <translation>Das letzte Mal von „%1“, das den Rechner weckt, wurde verpasst.</translation>
    </message>
    <message>
        <source>Nothing that wakes the machine was missed the last time.</source>
        <translation>Nichts, was den Rechner weckt, wurde zuletzt verpasst.</translation>
    </message>
    <message>
        <source>The bus lets nobody be com.dozely: there is no %1.</source>
        <translation>Der Bus lässt niemanden com.dozely sein: %1 gibt es nicht.</translation>
    </message>
    <message>
        <source>apt install --reinstall dozely, or link the file of another prefix into /etc/dbus-1/system.d; then systemctl reload dbus</source>
        <translation>apt install --reinstall dozely, oder verknüpfen Sie die Datei eines anderen Präfixes nach /etc/dbus-1/system.d; danach systemctl reload dbus</translation>
    </message>
    <message>
        <source>The bus knows who may be com.dozely.</source>
        <translation>Der Bus weiß, wer com.dozely sein darf.</translation>
    </message>
    <message>
        <source>Root alone may change schedules: there is no %1.</source>
        <translation>Nur root darf Zeitpläne ändern: %1 gibt es nicht.</translation>
    </message>
    <message>
        <source>polkit knows what users may be asked for.</source>
        <translation>polkit weiß, worum Benutzer gefragt werden können.</translation>
    </message>
    <message>
        <source>Root alone may change schedules: there is no polkit.</source>
        <translation>Nur root darf Zeitpläne ändern: polkit gibt es nicht.</translation>
    </message>
    <message>
        <source>polkit is there.</source>
        <translation>polkit ist da.</translation>
    </message>
    <message>
        <source>No service manager says whether the daemon is started with the machine.</source>
        <translation>Kein Dienstverwalter sagt, ob der Dienst mit dem Rechner startet.</translation>
    </message>
    <message>
        <source>systemd does not know dozelyd.service.</source>
        <translation>systemd kennt dozelyd.service nicht.</translation>
    </message>
    <message>
        <source>dozelyd.service is masked.</source>
        <translation>dozelyd.service ist maskiert.</translation>
    </message>
    <message>
        <source>The daemon is not started with the machine.</source>
        <translation>Der Dienst startet nicht mit dem Rechner.</translation>
    </message>
    <message>
        <source>dozelyd.service has failed.</source>
        <translation>dozelyd.service ist fehlgeschlagen.</translation>
    </message>
    <message>
        <source>The daemon is started with the machine.</source>
        <translation>Der Dienst startet mit dem Rechner.</translation>
    </message>
    <message>
        <source>The daemon listens.</source>
        <translation>Der Dienst hört zu.</translation>
    </message>
    <message>
        <source>A process of user %1 listens in the daemon&apos;s place.</source>
        <translation>Ein Prozess des Benutzers %1 hört anstelle des Dienstes zu.</translation>
    </message>
    <message>
        <source>The daemon does not run, or does not listen.</source>
        <translation>Der Dienst läuft nicht oder hört nicht zu.</translation>
    </message>
    <message>
        <source>systemctl start dozelyd; journalctl -u dozelyd says why it ended</source>
        <translation>systemctl start dozelyd; journalctl -u dozelyd sagt, warum er endete</translation>
    </message>
    <message>
        <source>There is no system bus, so users cannot reach the daemon.</source>
        <translation>Es gibt keinen Systembus, also erreichen Benutzer den Dienst nicht.</translation>
    </message>
    <message>
        <source>The system bus does not say whether the daemon is there.</source>
        <translation>Der Systembus sagt nicht, ob der Dienst da ist.</translation>
    </message>
    <message>
        <source>The daemon is not com.dozely on the system bus.</source>
        <translation>Der Dienst ist nicht com.dozely auf dem Systembus.</translation>
    </message>
    <message>
        <source>systemctl restart dozelyd; the log says why it has not got the name</source>
        <translation>systemctl restart dozelyd; das Protokoll sagt, warum er den Namen nicht hat</translation>
    </message>
    <message>
        <source>The daemon is com.dozely on the system bus.</source>
        <translation>Der Dienst ist com.dozely auf dem Systembus.</translation>
    </message>
    <message>
        <source>Nobody is at the console, so no agent is needed.</source>
        <translation>Niemand ist an der Konsole, also ist kein Agent nötig.</translation>
    </message>
    <message>
        <source>The agent of %1, who is at the console, listens.</source>
        <translation>Der Agent von %1 an der Konsole hört zu.</translation>
    </message>
    <message>
        <source>%1 is at the console, and no agent of his listens: nothing acts in his session.</source>
        <translation>%1 ist an der Konsole, und kein eigener Agent hört zu: In der Sitzung handelt nichts.</translation>
    </message>
    <message>
        <source>systemctl --user --machine=%1@ start dozely-agent, or have him log in again</source>
        <translation>systemctl --user --machine=%1@ start dozely-agent, oder neu anmelden lassen</translation>
    </message>
    <message>
        <source>No agent is started when a user logs in.</source>
        <translation>Kein Agent startet, wenn ein Benutzer sich anmeldet.</translation>
    </message>
    <message>
        <source>An agent is started when a user logs in.</source>
        <translation>Ein Agent startet, wenn ein Benutzer sich anmeldet.</translation>
    </message>
    <message>
        <source>The store is not believed: %1.</source>
        <translation>Dem Speicher wird nicht geglaubt: %1.</translation>
    </message>
    <message>
        <source>%1 cannot be used: %2.</source>
        <translation>%1 kann nicht benutzt werden: %2.</translation>
    </message>
    <message>
        <source>Put back a good one from a backup, or begin anew: mv &apos;%1&apos; &apos;%1.damaged&apos;</source>
        <translation>Legen Sie einen guten aus einer Sicherung zurück, oder fangen Sie neu an: mv &apos;%1&apos; &apos;%1.damaged&apos;</translation>
    </message>
    <message>
        <source>Entries of the store are no schedules: %1.</source>
        <translation>Einträge des Speichers sind keine Zeitpläne: %1.</translation>
    </message>
    <message>
        <source>Mend these entries in %1, or remove them</source>
        <translation>Bringen Sie diese Einträge in %1 in Ordnung, oder entfernen Sie sie</translation>
    </message>
    <message>
        <source>The store can be read.</source>
        <translation>Der Speicher ist lesbar.</translation>
    </message>
    <message>
        <source>There is no store yet.</source>
        <translation>Es gibt noch keinen Speicher.</translation>
    </message>
    <message>
        <source>The record of occurrences can be read.</source>
        <translation>Die Aufzeichnung ist lesbar.</translation>
    </message>
    <message>
        <source>Only root can look into the record of occurrences.</source>
        <translation>Nur root kann in die Aufzeichnung sehen.</translation>
    </message>
    <message>
        <source>systemctl restart dozelyd, which sets a damaged one aside and begins a new one</source>
        <translation>systemctl restart dozelyd legt eine beschädigte beiseite und beginnt eine neue</translation>
    </message>
    <message>
        <source>The schedules cannot be looked at.</source>
        <translation>Die Zeitpläne lassen sich nicht ansehen.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is to put the machine to rest afterwards, and does not wake it</source>
        <translation>„%1“ soll den Rechner danach zur Ruhe bringen und weckt ihn nicht</translation>
    </message>
    <message>
        <source>Nothing can come of %1.</source>
        <translation>Aus Folgendem kann nichts werden: %1.</translation>
    </message>
    <message>
        <source>Something can come of every schedule that is enabled.</source>
        <translation>Aus jedem eingeschalteten Zeitplan kann etwas werden.</translation>
    </message>
    <message>
        <source>The parameter &quot;%1&quot; holds a date, which only root can store.</source>
        <translation>Der Parameter „%1“ enthält ein Datum, das nur root speichern kann.</translation>
    </message>
    <message>
        <source>--timeout needs a whole number of seconds, not &quot;%1&quot;.</source>
        <translation>--timeout braucht eine ganze Zahl von Sekunden, nicht „%1“.</translation>
    </message>
    <message>
        <source>KEYWORD</source>
        <translation>SCHLÜSSEL</translation>
    </message>
    <message>
        <source>TYPE</source>
        <translation>TYP</translation>
    </message>
    <message>
        <source>VALUE</source>
        <translation>WERT</translation>
    </message>
    <message>
        <source>No process of %1 has the signature &quot;%2&quot;.</source>
        <translation>Kein Prozess von %1 hat die Signatur „%2“.</translation>
    </message>
    <message>
        <source>Process %1 has the event.</source>
        <translation>Prozess %1 hat das Ereignis.</translation>
    </message>
    <message>
        <source>Process %1 has handled the event.</source>
        <translation>Prozess %1 hat das Ereignis bearbeitet.</translation>
    </message>
    <message>
        <source>A schedule holds what a property list as text cannot carry.</source>
        <translation>Ein Zeitplan enthält etwas, das eine Eigenschaftsliste als Text nicht tragen kann.</translation>
    </message>
    <message>
        <source>What became of it cannot be told: %1.</source>
        <translation>Was daraus wurde, lässt sich nicht sagen: %1.</translation>
    </message>
    <message>
        <source>%1 to %2</source>
        <translation>%1 bis %2</translation>
    </message>
    <message>
        <source>postponed to %1</source>
        <translation>verschoben auf %1</translation>
    </message>
    <message numerus="yes">
        <source>%1 %n time(s)</source>
        <comment>missed; a number</comment>
        <translation>
            <numerusform>%1, %n-mal</numerusform>
            <numerusform>%1, %n-mal</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1 at least %n time(s)</source>
        <comment>missed; a number</comment>
        <translation>
            <numerusform>%1, mindestens %n-mal</numerusform>
            <numerusform>%1, mindestens %n-mal</numerusform>
        </translation>
    </message>
    <message>
        <source>on time</source>
        <translation>pünktlich</translation>
    </message>
    <message>
        <source>%1 late</source>
        <comment>a duration</comment>
        <translation>%1 zu spät</translation>
    </message>
    <message>
        <source>exit %1</source>
        <translation>Endestatus %1</translation>
    </message>
    <message>
        <source>Nothing became of it yet.</source>
        <translation>Noch wurde nichts daraus.</translation>
    </message>
    <message>
        <source>WHEN</source>
        <translation>WANN</translation>
    </message>
    <message>
        <source>NAME</source>
        <translation>NAME</translation>
    </message>
    <message>
        <source>STATE</source>
        <translation>ERGEBNIS</translation>
    </message>
    <message>
        <source>BEGAN</source>
        <translation>BEGONNEN</translation>
    </message>
    <message>
        <source>WHY</source>
        <translation>WARUM</translation>
    </message>
    <message>
        <source>IDENTIFIER</source>
        <translation>KENNUNG</translation>
    </message>
    <message>
        <source>Root cannot be given up.</source>
        <translation>Die Rechte von root lassen sich nicht ablegen.</translation>
    </message>
    <message>
        <source>Root cannot be taken back.</source>
        <translation>Die Rechte von root lassen sich nicht zurücknehmen.</translation>
    </message>
    <message>
        <source>to come</source>
        <translation>kommt noch</translation>
    </message>
    <message>
        <source>to come, last %1</source>
        <translation>kommt noch, zuletzt %1</translation>
    </message>
    <message>
        <source>daemon</source>
        <translation>Dienst</translation>
    </message>
    <message>
        <source>session</source>
        <translation>Sitzung</translation>
    </message>
    <message>
        <source>yes</source>
        <translation>ja</translation>
    </message>
    <message>
        <source>no</source>
        <translation>nein</translation>
    </message>
    <message>
        <source>machine</source>
        <comment>a time zone</comment>
        <translation>Rechner</translation>
    </message>
    <message>
        <source>There are no schedules.</source>
        <translation>Es gibt keine Zeitpläne.</translation>
    </message>
    <message>
        <source>ENABLED</source>
        <translation>AN</translation>
    </message>
    <message>
        <source>DATE</source>
        <translation>DATUM</translation>
    </message>
    <message>
        <source>TIME ZONE</source>
        <translation>ZEITZONE</translation>
    </message>
    <message>
        <source>REPEATS</source>
        <translation>WIEDERHOLT</translation>
    </message>
    <message>
        <source>ACTION</source>
        <translation>AKTION</translation>
    </message>
    <message>
        <source>RUNS IN</source>
        <translation>LÄUFT IN</translation>
    </message>
    <message>
        <source>OWNER</source>
        <translation>EIGENTÜMER</translation>
    </message>
    <message>
        <source>What became of the schedules cannot be told: %1.</source>
        <translation>Was aus den Zeitplänen wurde, lässt sich nicht sagen: %1.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a number of lines.</source>
        <translation>„%1“ ist keine Anzahl von Zeilen.</translation>
    </message>
    <message>
        <source>The log is no longer followed.</source>
        <translation>Dem Protokoll wird nicht mehr gefolgt.</translation>
    </message>
    <message>
        <source>There is no log at %1.</source>
        <translation>Unter %1 gibt es kein Protokoll.</translation>
    </message>
    <message>
        <source>What was skipped or postponed is not taken into account: %1.</source>
        <translation>Was ausgelassen oder verschoben wurde, ist nicht berücksichtigt: %1.</translation>
    </message>
    <message>
        <source>woken, switched on</source>
        <translation>geweckt, eingeschaltet</translation>
    </message>
    <message>
        <source>switched on</source>
        <translation>eingeschaltet</translation>
    </message>
    <message>
        <source>woken</source>
        <translation>geweckt</translation>
    </message>
    <message>
        <source>%1, postponed from %2</source>
        <translation>%1, verschoben von %2</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is disabled.</source>
        <translation>„%1“ ist ausgeschaltet.</translation>
    </message>
    <message>
        <source>Nothing comes.</source>
        <translation>Nichts kommt.</translation>
    </message>
    <message>
        <source>MACHINE IS</source>
        <translation>RECHNER WIRD</translation>
    </message>
    <message>
        <source>-n needs a whole number, 1 or more, not &quot;%1&quot;.</source>
        <translation>-n braucht eine ganze Zahl ab 1, nicht „%1“.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; does not take place on %2; &quot;next&quot; shows when it does.</source>
        <translation>„%1“ findet am %2 nicht statt; „next“ zeigt, wann.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; takes place at %2, at %3 and so on that day: say at which of these times.</source>
        <translation>„%1“ findet an dem Tag um %2, um %3 und so weiter statt: Sagen Sie, zu welcher dieser Zeiten.</translation>
    </message>
    <message>
        <source>--time-zone is that of a --date.</source>
        <translation>--time-zone gehört zu einem --date.</translation>
    </message>
    <message>
        <source>What an action wrote cannot be told: %1.</source>
        <translation>Was eine Aktion schrieb, lässt sich nicht sagen: %1.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; was not performed then.</source>
        <translation>„%1“ wurde da nicht ausgeführt.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; was not performed yet.</source>
        <translation>„%1“ wurde noch nicht ausgeführt.</translation>
    </message>
    <message>
        <source>%1 is not a dictionary.</source>
        <translation>%1 ist kein Wörterbuch.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not of the type %2.</source>
        <translation>„%1“ ist nicht vom Typ %2.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not of the form KEY=VALUE.</source>
        <translation>„%1“ hat nicht die Form KEY=VALUE.</translation>
    </message>
    <message>
        <source>--alert needs a whole number of seconds, 1 or more, not &quot;%1&quot;.</source>
        <translation>--alert braucht eine ganze Zahl von Sekunden ab 1, nicht „%1“.</translation>
    </message>
    <message>
        <source>An action runs in the daemon or in the session, not in both.</source>
        <translation>Eine Aktion läuft im Dienst oder in der Sitzung, nicht in beiden.</translation>
    </message>
    <message>
        <source>Say one of --in-daemon, --in-session and --in-default.</source>
        <translation>Nennen Sie eines von --in-daemon, --in-session und --in-default.</translation>
    </message>
    <message>
        <source>There is no parameter &quot;%1&quot;.</source>
        <translation>Es gibt keinen Parameter „%1“.</translation>
    </message>
    <message>
        <source>The program &quot;%1&quot; is not an absolute path.</source>
        <translation>Das Programm „%1“ ist kein absoluter Pfad.</translation>
    </message>
    <message>
        <source>--argument needs --program.</source>
        <translation>--argument braucht --program.</translation>
    </message>
    <message>
        <source>A parameter holds what a property list cannot carry.</source>
        <translation>Ein Parameter enthält etwas, das eine Eigenschaftsliste nicht tragen kann.</translation>
    </message>
    <message>
        <source>--missed is skip, run-once, run-once=LIMIT, plug-in or bundle, not &quot;%1&quot;.</source>
        <translation>--missed ist skip, run-once, run-once=LIMIT, plug-in oder bundle, nicht „%1“.</translation>
    </message>
    <message>
        <source>--overlap is of what repeats.</source>
        <translation>--overlap gehört zu dem, was sich wiederholt.</translation>
    </message>
    <message>
        <source>--overlap is skip or run, not &quot;%1&quot;.</source>
        <translation>--overlap ist skip oder run, nicht „%1“.</translation>
    </message>
    <message>
        <source>--after is nothing, sleep or power-off, not &quot;%1&quot;.</source>
        <translation>--after ist nothing, sleep oder power-off, nicht „%1“.</translation>
    </message>
    <message>
        <source>--after %1 comes only where the machine was woken or switched on for the action; that takes --wake or --power-on.</source>
        <translation>--after %1 kommt nur, wo der Rechner für die Aktion geweckt oder eingeschaltet wurde; das braucht --wake oder --power-on.</translation>
    </message>
    <message>
        <source>--after %1 would never come any more, since it follows a waking: say --after nothing, too.</source>
        <translation>--after %1 käme nie mehr, denn es folgt einem Wecken: Nennen Sie auch --after nothing.</translation>
    </message>
    <message>
        <source>not armed</source>
        <translation>nicht gestellt</translation>
    </message>
    <message>
        <source>%1, for an event below</source>
        <translation>%1, für ein Ereignis unten</translation>
    </message>
    <message>
        <source>%1, armed by another program</source>
        <translation>%1, von einem anderen Programm gestellt</translation>
    </message>
    <message>
        <source>Clock:</source>
        <translation>Uhr:</translation>
    </message>
    <message>
        <source>Alarm:</source>
        <translation>Weckzeit:</translation>
    </message>
    <message>
        <source>none that could wake this machine</source>
        <translation>keine, die diesen Rechner wecken könnte</translation>
    </message>
    <message>
        <source>No events are scheduled.</source>
        <translation>Keine Ereignisse sind geplant.</translation>
    </message>
    <message>
        <source>TIME</source>
        <translation>ZEIT</translation>
    </message>
    <message>
        <source>This machine has no clock that could wake it.</source>
        <translation>Dieser Rechner hat keine Uhr, die ihn wecken könnte.</translation>
    </message>
    <message>
        <source>You may not set the machine&apos;s clock; try it as root.</source>
        <translation>Sie dürfen die Uhr des Rechners nicht stellen; versuchen Sie es als root.</translation>
    </message>
    <message>
        <source>The alarm of %1 was armed for %2, read back, and set as it was.</source>
        <translation>Die Weckzeit von %1 wurde auf %2 gestellt, zurückgelesen und wieder wie zuvor gestellt.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not test.</source>
        <translation>„%1“ ist nicht test.</translation>
    </message>
    <message>
        <source>There is no login manager that could put this machine to sleep.</source>
        <translation>Es gibt keine Anmeldeverwaltung, die diesen Rechner schlafen lassen könnte.</translation>
    </message>
    <message>
        <source>The machine does not let itself be put to sleep.</source>
        <translation>Der Rechner lässt sich nicht schlafen legen.</translation>
    </message>
    <message>
        <source>The machine does not let you put it to sleep; try it as root.</source>
        <translation>Der Rechner lässt sich von Ihnen nicht schlafen legen; versuchen Sie es als root.</translation>
    </message>
    <message>
        <source>The machine goes to sleep.</source>
        <translation>Der Rechner geht schlafen.</translation>
    </message>
    <message>
        <source>It cannot repeat so: %1.</source>
        <translation>So kann es sich nicht wiederholen: %1.</translation>
    </message>
    <message>
        <source>Every month from %1 on can be day %2 of those months that have one, --on %2, or the last of each, --on last.</source>
        <translation>Jeden Monat ab %1 kann Tag %2 der Monate sein, die einen haben, --on %2, oder der letzte jedes Monats, --on last.</translation>
    </message>
    <message>
        <source>Every year from %1 on can be that day of leap years, %2, or the last of February, %3.</source>
        <translation>Jedes Jahr ab %1 kann dieser Tag der Schaltjahre sein, %2, oder der letzte Februartag, %3.</translation>
    </message>
    <message>
        <source>The exception of %1 at %2 is gone: nothing takes place then any more.</source>
        <translation>Die Ausnahme am %1 um %2 ist weg: Da findet nichts mehr statt.</translation>
    </message>
    <message>
        <source>There is no exception on %1.</source>
        <translation>Am %1 gibt es keine Ausnahme.</translation>
    </message>
    <message>
        <source>Nothing takes place on %1 that could be left out.</source>
        <translation>Am %1 findet nichts statt, das ausgelassen werden könnte.</translation>
    </message>
    <message>
        <source>There can be at most %1 exceptions.</source>
        <translation>Es kann höchstens %1 Ausnahmen geben.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a machine such as root@example.org.</source>
        <translation>„%1“ ist kein Rechner wie root@example.org.</translation>
    </message>
    <message>
        <source>ssh cannot be run: %1.</source>
        <translation>ssh kann nicht ausgeführt werden: %1.</translation>
    </message>
    <message>
        <source>%1 cannot be reached by ssh.</source>
        <translation>%1 ist mit ssh nicht erreichbar.</translation>
    </message>
    <message>
        <source>--at is the time of day of what takes place on some days, and not of what goes on around the clock.</source>
        <translation>--at ist die Uhrzeit dessen, was an einigen Tagen stattfindet, und nicht dessen, was rund um die Uhr geht.</translation>
    </message>
    <message>
        <source>--%1 is there twice.</source>
        <translation>--%1 steht zweimal da.</translation>
    </message>
    <message>
        <source>Say --every or --rule, not both.</source>
        <translation>Nennen Sie --every oder --rule, nicht beide.</translation>
    </message>
    <message>
        <source>Say how often, by --every or --rule.</source>
        <translation>Sagen Sie, wie oft, mit --every oder --rule.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a rule such as FREQ=WEEKLY;BYDAY=MO.</source>
        <translation>„%1“ ist keine Regel wie FREQ=WEEKLY;BYDAY=MO.</translation>
    </message>
    <message>
        <source>The rule says itself at what times; leave --at or its BYHOUR, BYMINUTE and BYSECOND out.</source>
        <translation>Die Regel sagt selbst, um welche Uhrzeiten; lassen Sie --at oder ihr BYHOUR, BYMINUTE und BYSECOND weg.</translation>
    </message>
    <message>
        <source>The rule says itself when it ends; leave --until and --count or its UNTIL and COUNT out.</source>
        <translation>Die Regel sagt selbst, wann sie endet; lassen Sie --until und --count oder ihr UNTIL und COUNT weg.</translation>
    </message>
    <message>
        <source>--on names days of the month and needs --every month.</source>
        <translation>--on nennt Tage des Monats und braucht --every month.</translation>
    </message>
    <message>
        <source>Months without a day %1 are left out; --on last is the last day of each month.</source>
        <translation>Monate ohne Tag %1 werden ausgelassen; --on last ist der letzte Tag jedes Monats.</translation>
    </message>
    <message>
        <source>Say at what time, by --at.</source>
        <translation>Sagen Sie, um welche Uhrzeit, mit --at.</translation>
    </message>
    <message>
        <source>--count needs a whole number, 1 or more, not &quot;%1&quot;.</source>
        <translation>--count braucht eine ganze Zahl ab 1, nicht „%1“.</translation>
    </message>
    <message>
        <source>It is to end before it begins.</source>
        <translation>Es soll enden, bevor es beginnt.</translation>
    </message>
    <message>
        <source>%1 (%2 in %3)</source>
        <translation>%1 (%2 in %3)</translation>
    </message>
    <message>
        <source>%1, for %2 (%3).</source>
        <translation>%1, für %2 (%3).</translation>
    </message>
    <message>
        <source>%1: %2%3.</source>
        <comment>what was done, a rule in words, its time zone</comment>
        <translation>%1: %2%3.</translation>
    </message>
    <message>
        <source>Next:</source>
        <translation>Nächste Termine:</translation>
    </message>
    <message>
        <source>It is disabled: it does not come due before it is enabled.</source>
        <translation>Er ist ausgeschaltet: Er wird nicht fällig, bevor er eingeschaltet ist.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is neither the name of a bundle nor an absolute path.</source>
        <translation>„%1“ ist weder der Name eines Bündels noch ein absoluter Pfad.</translation>
    </message>
    <message>
        <source>There is no bundle at %1.</source>
        <translation>Unter %1 gibt es kein Bündel.</translation>
    </message>
    <message>
        <source>With --time-zone say --date, too: in another zone the same time is another moment.</source>
        <translation>Nennen Sie mit --time-zone auch --date: In einer anderen Zone ist dieselbe Zeit ein anderer Moment.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is over: say --date, too.</source>
        <translation>„%1“ ist vorbei: Nennen Sie auch --date.</translation>
    </message>
    <message>
        <source>With these exceptions nothing is left of it.</source>
        <translation>Mit diesen Ausnahmen bleibt nichts davon übrig.</translation>
    </message>
    <message>
        <source>A schedule needs a name.</source>
        <translation>Ein Zeitplan braucht einen Namen.</translation>
    </message>
    <message>
        <source>The name holds control characters.</source>
        <translation>Der Name enthält Steuerzeichen.</translation>
    </message>
    <message>
        <source>Say what is to be done, by --bundle or by --program.</source>
        <translation>Sagen Sie, was zu tun ist, mit --bundle oder mit --program.</translation>
    </message>
    <message>
        <source>Nothing could come of it: %1. With --anyway it is done all the same.</source>
        <translation>Daraus könnte nichts werden: %1. Mit --anyway geschieht es trotzdem.</translation>
    </message>
    <message>
        <source>--date and --in are for what takes place once; what repeats begins by --from.</source>
        <translation>--date und --in sind für das, was einmal stattfindet; was sich wiederholt, beginnt mit --from.</translation>
    </message>
    <message>
        <source>It takes place once, or it repeats: --once goes with --date and --in alone.</source>
        <translation>Es findet einmal statt, oder es wiederholt sich: --once geht nur mit --date und --in.</translation>
    </message>
    <message>
        <source>--%1 is of what repeats.</source>
        <translation>--%1 gehört zu dem, was sich wiederholt.</translation>
    </message>
    <message>
        <source>Say when, by --date or --in, or how often, by --every or --rule.</source>
        <translation>Sagen Sie, wann, mit --date oder --in, oder wie oft, mit --every oder --rule.</translation>
    </message>
    <message>
        <source>a time of %1 cannot be spread over midnight</source>
        <translation>die Uhrzeit %1 kann nicht über Mitternacht verteilt werden</translation>
    </message>
    <message>
        <source>%1, so that they cannot be spread</source>
        <translation>%1, also können sie nicht verteilt werden</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no time to spread starts over, such as 30m or 1h.</source>
        <translation>„%1“ ist keine Zeit, über die Starts verteilt werden können, wie 30m oder 1h.</translation>
    </message>
    <message>
        <source>this machine has no id (/etc/machine-id) by which starts could be spread</source>
        <translation>dieser Rechner hat keine Kennung (/etc/machine-id), nach der Starts verteilt werden könnten</translation>
    </message>
    <message>
        <source>Daemon:</source>
        <translation>Dienst:</translation>
    </message>
    <message>
        <source>Console:</source>
        <translation>Konsole:</translation>
    </message>
    <message>
        <source>Agents:</source>
        <translation>Agenten:</translation>
    </message>
    <message>
        <source>Wake clock:</source>
        <translation>Weckuhr:</translation>
    </message>
    <message>
        <source>Schedules:</source>
        <translation>Zeitpläne:</translation>
    </message>
    <message>
        <source>nobody is there</source>
        <translation>niemand ist da</translation>
    </message>
    <message>
        <source>%1, whose agent is alive</source>
        <translation>%1, Agent ist da</translation>
    </message>
    <message>
        <source>%1, whose agent is not there</source>
        <translation>%1, Agent ist nicht da</translation>
    </message>
    <message>
        <source>none</source>
        <comment>agents</comment>
        <translation>keine</translation>
    </message>
    <message>
        <source>%1, armed for %2</source>
        <translation>%1, gestellt auf %2</translation>
    </message>
    <message>
        <source>%1, armed for %2 by another program</source>
        <translation>%1, von einem anderen Programm gestellt auf %2</translation>
    </message>
    <message>
        <source>%1, not armed</source>
        <translation>%1, nicht gestellt</translation>
    </message>
    <message>
        <source>synchronised, %1</source>
        <translation>synchronisiert, %1</translation>
    </message>
    <message>
        <source>not synchronised, %1</source>
        <translation>nicht synchronisiert, %1</translation>
    </message>
    <message>
        <source>%1, %2 of them enabled</source>
        <translation>%1, davon %2 eingeschaltet</translation>
    </message>
    <message numerus="yes">
        <source>%1; %n entries are none</source>
        <comment>entries of the store</comment>
        <translation>
            <numerusform>%1; %n Eintrag ist keiner</numerusform>
            <numerusform>%1; %n Einträge sind keine</numerusform>
        </translation>
    </message>
    <message>
        <source>wakes the machine</source>
        <translation>weckt den Rechner</translation>
    </message>
    <message>
        <source>Next</source>
        <translation>Nächste</translation>
    </message>
    <message>
        <source>What failed cannot be told: %1.</source>
        <translation>Was fehlschlug, lässt sich nicht sagen: %1.</translation>
    </message>
    <message>
        <source>Nothing failed of late.</source>
        <translation>In letzter Zeit ist nichts fehlgeschlagen.</translation>
    </message>
    <message>
        <source>Last failures</source>
        <translation>Letzte Fehlschläge</translation>
    </message>
    <message>
        <source>is alive</source>
        <translation>ist da</translation>
    </message>
    <message>
        <source>is not there</source>
        <translation>ist nicht da</translation>
    </message>
    <message>
        <source>You may not change %1; try it as root.</source>
        <translation>Sie dürfen %1 nicht ändern; versuchen Sie es als root.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is enabled.</source>
        <translation>„%1“ ist eingeschaltet.</translation>
    </message>
    <message>
        <source>You may not read %1.</source>
        <translation>Sie dürfen %1 nicht lesen.</translation>
    </message>
    <message>
        <source>There is no schedule &quot;%1&quot;.</source>
        <translation>Es gibt keinen Zeitplan „%1“.</translation>
    </message>
    <message numerus="yes">
        <source>%n schedule(s) are named &quot;%1&quot;; use an identifier, as &quot;list&quot; shows them.</source>
        <translation>
            <numerusform>%n Zeitplan heißt „%1“; nehmen Sie eine Kennung, wie „list“ sie zeigt.</numerusform>
            <numerusform>%n Zeitpläne heißen „%1“; nehmen Sie eine Kennung, wie „list“ sie zeigt.</numerusform>
        </translation>
    </message>
    <message>
        <source>&quot;%1&quot; is removed.</source>
        <translation>„%1“ ist entfernt.</translation>
    </message>
    <message>
        <source>it is larger than 16 MiB</source>
        <translation>sie ist größer als 16 MiB</translation>
    </message>
    <message>
        <source>it is no JSON: %1, at byte %2</source>
        <translation>sie ist kein JSON: %1, bei Byte %2</translation>
    </message>
    <message>
        <source>not known</source>
        <translation>nicht bekannt</translation>
    </message>
    <message>
        <source>%1, up to date</source>
        <comment>a version</comment>
        <translation>%1, auf dem neuesten Stand</translation>
    </message>
    <message>
        <source>the server gives none</source>
        <translation>der Server nennt keine</translation>
    </message>
    <message>
        <source>not offered, since it is not https: %1</source>
        <translation>nicht angeboten, da sie nicht https ist: %1</translation>
    </message>
    <message>
        <source>Installed version:</source>
        <translation>Installierte Version:</translation>
    </message>
    <message>
        <source>Latest version:</source>
        <translation>Neueste Version:</translation>
    </message>
    <message>
        <source>Address:</source>
        <translation>Adresse:</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not check.</source>
        <translation>„%1“ ist nicht check.</translation>
    </message>
    <message>
        <source>This system was built without the update check.</source>
        <translation>Dieses System wurde ohne die Suche nach Updates gebaut.</translation>
    </message>
    <message>
        <source>%1 gave no answer that can be used; the log says why.</source>
        <translation>%1 gab keine brauchbare Antwort; das Protokoll sagt, warum.</translation>
    </message>
    <message>
        <source>There is a newer version.</source>
        <translation>Es gibt eine neuere Version.</translation>
    </message>
    <message>
        <source>there is no word &quot;%1&quot;</source>
        <translation>es gibt kein Wort „%1“</translation>
    </message>
    <message>
        <source>&quot;actsIn&quot; is neither session nor daemon</source>
        <translation>„actsIn“ ist weder session noch daemon</translation>
    </message>
    <message>
        <source>&quot;repeats&quot; has no word &quot;%1&quot;</source>
        <translation>„repeats“ hat kein Wort „%1“</translation>
    </message>
    <message>
        <source>nothing comes of its rule</source>
        <translation>aus der Regel wird nichts</translation>
    </message>
    <message>
        <source>say at what time, by &quot;at&quot;</source>
        <translation>sagen Sie mit „at“, um welche Uhrzeit</translation>
    </message>
    <message>
        <source>&quot;date&quot; is not a date such as &quot;2026-03-14 06:55&quot;</source>
        <translation>„date“ ist kein Datum wie „2026-03-14 06:55“</translation>
    </message>
    <message>
        <source>it has no list of schedules (&quot;schedules&quot;, or &quot;Schedule Array&quot; of a store)</source>
        <translation>sie hat keine Liste von Zeitplänen („schedules“, oder „Schedule Array“ eines Speichers)</translation>
    </message>
    <message>
        <source>schedule %1, &quot;%2&quot;, is none: %3</source>
        <translation>Zeitplan %1, „%2“, ist keiner: %3</translation>
    </message>
    <message>
        <source>schedule %1, &quot;%2&quot;, is there twice</source>
        <translation>Zeitplan %1, „%2“, steht zweimal da</translation>
    </message>
    <message>
        <source>it is empty</source>
        <translation>sie ist leer</translation>
    </message>
    <message>
        <source>it has more than one document</source>
        <translation>sie hat mehr als ein Dokument</translation>
    </message>
    <message>
        <source>it cannot be read</source>
        <translation>sie kann nicht gelesen werden</translation>
    </message>
    <message>
        <source>%1, in line %2</source>
        <translation>%1, in Zeile %2</translation>
    </message>
    <message>
        <source>it is nested too deeply</source>
        <translation>sie ist zu tief geschachtelt</translation>
    </message>
    <message>
        <source>it has too many values</source>
        <translation>sie hat zu viele Werte</translation>
    </message>
    <message>
        <source>aliases are not understood</source>
        <translation>Aliase werden nicht verstanden</translation>
    </message>
    <message>
        <source>a value is missing</source>
        <translation>ein Wert fehlt</translation>
    </message>
    <message>
        <source>a key is not a text</source>
        <translation>ein Schlüssel ist kein Text</translation>
    </message>
    <message>
        <source>a key stands there twice</source>
        <translation>ein Schlüssel steht zweimal da</translation>
    </message>
    <message>
        <source>tags are not understood</source>
        <translation>Tags werden nicht verstanden</translation>
    </message>
    <message>
        <source>Say --%1 or --%2, not both.</source>
        <translation>Nennen Sie --%1 oder --%2, nicht beide.</translation>
    </message>
    <message>
        <source>Send an Apple event to the process with that signature, and show the reply; each of the three is four characters.</source>
        <translation>Dem Prozess mit dieser Signatur ein Apple Event senden und die Antwort zeigen; alle drei haben vier Zeichen.</translation>
    </message>
    <message>
        <source>%1.</source>
        <comment>a clause that becomes a sentence</comment>
        <translation>%1.</translation>
    </message>
</context>
<context>
    <name>QCommandLineParser</name>
    <message>
        <source>Unknown option &apos;%1&apos;.</source>
        <translation>Unbekannte Option „%1“.</translation>
    </message>
    <message>
        <source>Unknown options: %1.</source>
        <translation>Unbekannte Optionen: %1.</translation>
    </message>
    <message>
        <source>Missing value after &apos;%1&apos;.</source>
        <translation>Hinter „%1“ fehlt ein Wert.</translation>
    </message>
    <message>
        <source>Unexpected value after &apos;%1&apos;.</source>
        <translation>Hinter „%1“ steht ein Wert, der nicht erwartet wird.</translation>
    </message>
</context>
</TS>
