<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>ActionPane</name>
    <message>
        <source>Action</source>
        <translation>Aktion</translation>
    </message>
    <message>
        <source>Loading the settings…</source>
        <translation>Einstellungen werden geladen …</translation>
    </message>
    <message>
        <source>This action has no settings of its own here.</source>
        <translation>Diese Aktion hat hier keine eigenen Einstellungen.</translation>
    </message>
    <message>
        <source>There is no longer an action here: its bundle is missing. Choose another one, or have it installed again.</source>
        <translation>Hier ist keine Aktion mehr: Ihr Bündel fehlt. Wählen Sie eine andere, oder lassen Sie sie wieder installieren.</translation>
    </message>
    <message>
        <source>The settings of this action cannot be shown. All else of the schedule can be changed.</source>
        <translation>Die Einstellungen dieser Aktion können nicht gezeigt werden. Alles andere am Zeitplan lässt sich ändern.</translation>
    </message>
</context>
<context>
    <name>ChangeBar</name>
    <message>
        <source>Undo</source>
        <translation>Rückgängig</translation>
    </message>
    <message>
        <source>Redo</source>
        <translation>Wiederholen</translation>
    </message>
    <message>
        <source>&amp;Discard</source>
        <translation>&amp;Verwerfen</translation>
    </message>
    <message>
        <source>A&amp;pply</source>
        <translation>&amp;Anwenden</translation>
    </message>
    <message>
        <source>Discarding</source>
        <translation>Verwerfen</translation>
    </message>
    <message>
        <source>Applying…</source>
        <translation>Wird angewendet …</translation>
    </message>
</context>
<context>
    <name>ClosingQuestion</name>
    <message>
        <source>Some changes have not been applied yet. Apply them before closing?</source>
        <translation>Einige Änderungen sind noch nicht angewendet. Vor dem Schließen anwenden?</translation>
    </message>
    <message>
        <source>A&amp;pply</source>
        <translation>&amp;Anwenden</translation>
    </message>
    <message>
        <source>&amp;Discard</source>
        <translation>&amp;Verwerfen</translation>
    </message>
</context>
<context>
    <name>DateInWords</name>
    <message>
        <source>yesterday %1</source>
        <comment>and a time</comment>
        <translation>gestern %1</translation>
    </message>
    <message>
        <source>today %1</source>
        <comment>and a time</comment>
        <translation>heute %1</translation>
    </message>
    <message>
        <source>tomorrow %1</source>
        <comment>and a time</comment>
        <translation>morgen %1</translation>
    </message>
    <message>
        <source>%1 %2</source>
        <comment>a day of the week and a time</comment>
        <translation>%1 %2</translation>
    </message>
    <message>
        <source>%1, %2</source>
        <comment>a day and a time</comment>
        <translation>%1, %2</translation>
    </message>
</context>
<context>
    <name>EndChoice</name>
    <message>
        <source>Never</source>
        <translation>Nie</translation>
    </message>
    <message>
        <source>After a number of times</source>
        <translation>Nach einer Anzahl</translation>
    </message>
    <message>
        <source>Ends</source>
        <translation>Endet</translation>
    </message>
    <message>
        <source>Last day</source>
        <translation>Letzter Tag</translation>
    </message>
    <message>
        <source>How many times</source>
        <translation>Wie oft</translation>
    </message>
    <message>
        <source>On a day</source>
        <translation>An einem Tag</translation>
    </message>
</context>
<context>
    <name>ExceptionList</name>
    <message>
        <source>Exceptions</source>
        <translation>Ausnahmen</translation>
    </message>
    <message>
        <source>Day to leave out</source>
        <translation>Auszulassender Tag</translation>
    </message>
    <message>
        <source>Leave this day out</source>
        <translation>Diesen Tag auslassen</translation>
    </message>
    <message>
        <source>Take back</source>
        <translation>Zurücknehmen</translation>
    </message>
    <message>
        <source>Takes the chosen exceptions back</source>
        <translation>Nimmt die gewählten Ausnahmen zurück</translation>
    </message>
    <message>
        <source>Nothing takes place on %1 that could be left out.</source>
        <translation>Am %1 findet nichts statt, das ausgelassen werden könnte.</translation>
    </message>
    <message>
        <source>%1, %2</source>
        <comment>a day and a time</comment>
        <translation>%1, %2</translation>
    </message>
    <message>
        <source>not on %1</source>
        <translation>nicht am %1</translation>
    </message>
    <message>
        <source>also on %1</source>
        <translation>auch am %1</translation>
    </message>
</context>
<context>
    <name>HistoryModel</name>
    <message>
        <source>(gone)</source>
        <comment>a schedule</comment>
        <translation>(nicht mehr da)</translation>
    </message>
    <message>
        <source>When</source>
        <translation>Wann</translation>
    </message>
    <message>
        <source>Schedule</source>
        <translation>Zeitplan</translation>
    </message>
    <message>
        <source>Outcome</source>
        <translation>Ergebnis</translation>
    </message>
    <message>
        <source>Began</source>
        <translation>Begonnen</translation>
    </message>
    <message>
        <source>Why</source>
        <translation>Warum</translation>
    </message>
</context>
<context>
    <name>HistoryView</name>
    <message>
        <source>Search</source>
        <translation>Suchen</translation>
    </message>
    <message>
        <source>Search the history</source>
        <translation>Verlauf durchsuchen</translation>
    </message>
    <message>
        <source>Only what went wrong</source>
        <translation>Nur was schiefging</translation>
    </message>
    <message>
        <source>History</source>
        <translation>Verlauf</translation>
    </message>
    <message>
        <source>Nothing has taken place yet.</source>
        <translation>Noch hat nichts stattgefunden.</translation>
    </message>
    <message>
        <source>Nothing in the history is like that.</source>
        <translation>So etwas gibt es im Verlauf nicht.</translation>
    </message>
</context>
<context>
    <name>LogPane</name>
    <message>
        <source>Log</source>
        <translation>Protokoll</translation>
    </message>
    <message>
        <source>The log cannot be read: %1.</source>
        <translation>Das Protokoll kann nicht gelesen werden: %1.</translation>
    </message>
    <message>
        <source>The log has nothing of that time.</source>
        <translation>Das Protokoll hat nichts aus dieser Zeit.</translation>
    </message>
    <message>
        <source>These are the first %1 lines.</source>
        <translation>Das sind die ersten %1 Zeilen.</translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message numerus="yes">
        <source>%n schedule(s) could not be applied and keep their changes here.</source>
        <translation>
            <numerusform>%n Zeitplan konnte nicht angewendet werden und behält hier seine Änderungen.</numerusform>
            <numerusform>%n Zeitpläne konnten nicht angewendet werden und behalten hier ihre Änderungen.</numerusform>
        </translation>
    </message>
    <message>
        <source>Try again</source>
        <translation>Erneut versuchen</translation>
    </message>
    <message>
        <source>The Dozely service is not running: nothing happens at its time, and nothing can be applied. An administrator starts it with “systemctl start dozelyd”.</source>
        <translation>Der Dienst Dozely läuft nicht: Nichts geschieht zu seiner Zeit, und nichts kann angewendet werden. Ein Administrator startet ihn mit „systemctl start dozelyd“.</translation>
    </message>
    <message>
        <source>The schedules cannot be read: %1</source>
        <translation>Die Zeitpläne können nicht gelesen werden: %1</translation>
    </message>
    <message>
        <source>Removal</source>
        <translation>Entfernen</translation>
    </message>
    <message>
        <source>This cannot be applied yet: %1</source>
        <translation>Das kann noch nicht angewendet werden: %1</translation>
    </message>
    <message>
        <source>Views</source>
        <translation>Ansichten</translation>
    </message>
    <message>
        <source>Schedules</source>
        <translation>Zeitpläne</translation>
    </message>
    <message>
        <source>Month</source>
        <translation>Monat</translation>
    </message>
    <message>
        <source>History</source>
        <translation>Verlauf</translation>
    </message>
</context>
<context>
    <name>MonthChoice</name>
    <message>
        <source>Day %1 of the month</source>
        <translation>Tag %1 des Monats</translation>
    </message>
    <message>
        <source>Last day</source>
        <translation>Letzter Tag</translation>
    </message>
    <message>
        <source>The last day of the month</source>
        <translation>Der letzte Tag des Monats</translation>
    </message>
    <message>
        <source>Days of the month</source>
        <translation>Tage des Monats</translation>
    </message>
    <message>
        <source>A day of the week</source>
        <translation>Ein Wochentag</translation>
    </message>
    <message>
        <source>The first</source>
        <translation>Der erste</translation>
    </message>
    <message>
        <source>The second</source>
        <translation>Der zweite</translation>
    </message>
    <message>
        <source>The third</source>
        <translation>Der dritte</translation>
    </message>
    <message>
        <source>The fourth</source>
        <translation>Der vierte</translation>
    </message>
    <message>
        <source>The last</source>
        <translation>Der letzte</translation>
    </message>
    <message>
        <source>Which one of the month</source>
        <translation>Welcher im Monat</translation>
    </message>
    <message>
        <source>Day of the week</source>
        <translation>Wochentag</translation>
    </message>
</context>
<context>
    <name>MonthDelegate</name>
    <message>
        <source>%1 in all</source>
        <comment>occurrences of a day</comment>
        <translation>%1 insgesamt</translation>
    </message>
    <message>
        <source>+%1 more</source>
        <comment>occurrences of a day</comment>
        <translation>+%1 weitere</translation>
    </message>
</context>
<context>
    <name>MonthGrid</name>
    <message>
        <source>Month</source>
        <translation>Monat</translation>
    </message>
</context>
<context>
    <name>MonthModel</name>
    <message>
        <source>%1 %2</source>
        <comment>a time, and the name of a schedule</comment>
        <translation>%1 %2</translation>
    </message>
    <message>
        <source>%1, skipped</source>
        <comment>an occurrence</comment>
        <translation>%1, ausgelassen</translation>
    </message>
    <message>
        <source>%1, put off</source>
        <comment>an occurrence</comment>
        <translation>%1, verschoben</translation>
    </message>
    <message>
        <source>%1 more</source>
        <comment>occurrences</comment>
        <translation>%1 weitere</translation>
    </message>
    <message>
        <source>nothing</source>
        <comment>takes place on a day</comment>
        <translation>nichts</translation>
    </message>
</context>
<context>
    <name>MonthView</name>
    <message>
        <source>Previous month</source>
        <translation>Voriger Monat</translation>
    </message>
    <message>
        <source>Today</source>
        <translation>Heute</translation>
    </message>
    <message>
        <source>Next month</source>
        <translation>Nächster Monat</translation>
    </message>
    <message>
        <source>%1 %2</source>
        <comment>a month and a year</comment>
        <translation>%1 %2</translation>
    </message>
</context>
<context>
    <name>NewSchedule</name>
    <message>
        <source>New schedule</source>
        <translation>Neuer Zeitplan</translation>
    </message>
</context>
<context>
    <name>NextDates</name>
    <message>
        <source>Next dates</source>
        <translation>Nächste Termine</translation>
    </message>
    <message>
        <source>Nothing comes of it any more.</source>
        <translation>Daraus wird nichts mehr.</translation>
    </message>
    <message>
        <source>That is past.</source>
        <translation>Das ist vorbei.</translation>
    </message>
    <message>
        <source>%1: clocks skip %2</source>
        <comment>a date and a time</comment>
        <translation>%1: Die Uhren überspringen %2</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <comment>a date, and what is to be known of it</comment>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>%1 (%2 in %3)</source>
        <comment>a date, and its time in another zone</comment>
        <translation>%1 (%2 in %3)</translation>
    </message>
    <message>
        <source>clocks are set forward before it</source>
        <translation>vorher werden die Uhren vorgestellt</translation>
    </message>
    <message>
        <source>clocks are set back before it</source>
        <translation>vorher werden die Uhren zurückgestellt</translation>
    </message>
</context>
<context>
    <name>OccurrenceActions</name>
    <message>
        <source>Skip</source>
        <translation>Auslassen</translation>
    </message>
    <message>
        <source>Put off</source>
        <translation>Verschieben</translation>
    </message>
    <message>
        <source>Run now</source>
        <translation>Jetzt ausführen</translation>
    </message>
    <message>
        <source>10 minutes</source>
        <translation>10 Minuten</translation>
    </message>
    <message>
        <source>30 minutes</source>
        <translation>30 Minuten</translation>
    </message>
    <message>
        <source>1 hour</source>
        <translation>1 Stunde</translation>
    </message>
    <message>
        <source>3 hours</source>
        <translation>3 Stunden</translation>
    </message>
    <message>
        <source>1 day</source>
        <translation>1 Tag</translation>
    </message>
</context>
<context>
    <name>OutcomeWords</name>
    <message>
        <source>%1 to %2</source>
        <comment>two dates</comment>
        <translation>%1 bis %2</translation>
    </message>
    <message>
        <source>put off until %1</source>
        <translation>verschoben auf %1</translation>
    </message>
    <message>
        <source>%1, %2 times</source>
        <comment>missed; a number</comment>
        <translation>%1, %2-mal</translation>
    </message>
    <message>
        <source>%1, at least %2 times</source>
        <comment>missed; a number</comment>
        <translation>%1, mindestens %2-mal</translation>
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
        <source>%1 s</source>
        <translation>%1 s</translation>
    </message>
    <message>
        <source>%1 min</source>
        <translation>%1 min</translation>
    </message>
    <message>
        <source>%1 h %2 min</source>
        <translation>%1 h %2 min</translation>
    </message>
    <message>
        <source>%1 d %2 h</source>
        <comment>days and hours</comment>
        <translation>%1 T. %2 h</translation>
    </message>
</context>
<context>
    <name>PatternRows</name>
    <message>
        <source>Days of the week</source>
        <translation>Wochentage</translation>
    </message>
    <message>
        <source>Every</source>
        <translation>Alle</translation>
    </message>
    <message>
        <source>On</source>
        <translation>Am</translation>
    </message>
    <message>
        <source>Rule</source>
        <translation>Regel</translation>
    </message>
    <message>
        <source>minutes</source>
        <translation>Minuten</translation>
    </message>
    <message>
        <source>hours</source>
        <translation>Stunden</translation>
    </message>
    <message>
        <source>Unit</source>
        <translation>Einheit</translation>
    </message>
    <message>
        <source>A recurrence rule as iCalendar (RFC 5545) has it</source>
        <translation>Eine Wiederholungsregel, wie iCalendar (RFC 5545) sie kennt</translation>
    </message>
    <message>
        <source>day</source>
        <translation>Tag</translation>
    </message>
    <message>
        <source>days</source>
        <translation>Tage</translation>
    </message>
    <message>
        <source>week</source>
        <translation>Woche</translation>
    </message>
    <message>
        <source>weeks</source>
        <translation>Wochen</translation>
    </message>
    <message>
        <source>month</source>
        <translation>Monat</translation>
    </message>
    <message>
        <source>months</source>
        <translation>Monate</translation>
    </message>
    <message>
        <source>year</source>
        <translation>Jahr</translation>
    </message>
    <message>
        <source>years</source>
        <translation>Jahre</translation>
    </message>
</context>
<context>
    <name>PlugInTrials</name>
    <message>
        <source>It does not come to an end while it is loaded.</source>
        <translation>Sie kommt beim Laden nicht zum Ende.</translation>
    </message>
    <message>
        <source>It crashes while it is loaded.</source>
        <translation>Sie stürzt beim Laden ab.</translation>
    </message>
    <message>
        <source>It cannot be tried: %1</source>
        <translation>Sie kann nicht erprobt werden: %1</translation>
    </message>
</context>
<context>
    <name>PolicyForm</name>
    <message>
        <source>If &amp;missed:</source>
        <translation>Falls ver&amp;passt:</translation>
    </message>
    <message>
        <source>Runs &amp;as:</source>
        <translation>Läuft al&amp;s:</translation>
    </message>
    <message>
        <source>Change of what is missed</source>
        <translation>Änderung für Verpasstes</translation>
    </message>
    <message>
        <source>Change of what comes afterwards</source>
        <translation>Änderung für danach</translation>
    </message>
    <message>
        <source>Change of who runs it</source>
        <translation>Änderung des Ausführenden</translation>
    </message>
    <message>
        <source>As the action itself says</source>
        <translation>Wie die Aktion es selbst vorsieht</translation>
    </message>
    <message>
        <source>Leave it out</source>
        <translation>Auslassen</translation>
    </message>
    <message>
        <source>Do it once, as soon as possible</source>
        <translation>Einmal nachholen, so bald wie möglich</translation>
    </message>
    <message>
        <source>Nothing more</source>
        <translation>Nichts weiter</translation>
    </message>
    <message>
        <source>Sleep again, if it was woken for this</source>
        <translation>Wieder schlafen, falls dafür geweckt</translation>
    </message>
    <message>
        <source>Switch off, if it was woken or switched on for this</source>
        <translation>Ausschalten, falls dafür geweckt oder eingeschaltet</translation>
    </message>
    <message>
        <source>Me, in my session</source>
        <translation>Ich, in meiner Sitzung</translation>
    </message>
    <message>
        <source>Administrator, in the background</source>
        <translation>Administrator, im Hintergrund</translation>
    </message>
    <message>
        <source>Whoever is at the computer</source>
        <extracomment>whoever is logged in when the time comes</extracomment>
        <translation>Wer gerade am Computer ist</translation>
    </message>
    <message>
        <source>Administrator, for me</source>
        <translation>Administrator, für mich</translation>
    </message>
    <message>
        <source>Another user (number %1)</source>
        <translation>Ein anderer Benutzer (Nummer %1)</translation>
    </message>
    <message>
        <source>You will be asked for an administrator&apos;s password.</source>
        <translation>Sie werden nach dem Passwort eines Administrators gefragt.</translation>
    </message>
    <message>
        <source>Changing this schedule needs an administrator&apos;s password.</source>
        <translation>Diesen Zeitplan zu ändern erfordert das Passwort eines Administrators.</translation>
    </message>
    <message>
        <source>Af&amp;terwards:</source>
        <translation>&amp;Danach:</translation>
    </message>
    <message>
        <source>This never comes: the computer is neither woken nor switched on for this schedule.</source>
        <translation>Dazu kommt es nie: Der Rechner wird für diesen Zeitplan weder geweckt noch eingeschaltet.</translation>
    </message>
</context>
<context>
    <name>PowerForm</name>
    <message>
        <source>&amp;Show an alert before</source>
        <translation>Vorher eine &amp;Meldung zeigen</translation>
    </message>
    <message>
        <source>&amp;Wake the computer from sleep</source>
        <translation>Den &amp;Computer aufwecken</translation>
    </message>
    <message>
        <source>Switch the &amp;computer on</source>
        <translation>Den Computer einscha&amp;lten</translation>
    </message>
    <message>
        <source>Minutes between alert and action</source>
        <translation>Minuten zwischen Meldung und Aktion</translation>
    </message>
    <message>
        <source>Warning:</source>
        <translation>Warnung:</translation>
    </message>
    <message>
        <source>Power:</source>
        <translation>Energie:</translation>
    </message>
    <message numerus="yes">
        <source> minutes</source>
        <comment>behind a number, with a blank before it</comment>
        <translation>
            <numerusform> Minute</numerusform>
            <numerusform> Minuten</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>ReadyWishes</name>
    <message>
        <source>Switch off in the evening</source>
        <translation>Abends ausschalten</translation>
    </message>
    <message>
        <source>Wake with music</source>
        <translation>Mit Musik wecken</translation>
    </message>
    <message>
        <source>Backup at night</source>
        <translation>Nächtliche Sicherung</translation>
    </message>
</context>
<context>
    <name>RecurrenceForm</name>
    <message>
        <source>Takes place</source>
        <translation>Findet statt</translation>
    </message>
    <message>
        <source>Once</source>
        <translation>Einmal</translation>
    </message>
    <message>
        <source>Every day</source>
        <translation>Jeden Tag</translation>
    </message>
    <message>
        <source>On weekdays, Monday to Friday</source>
        <translation>Werktags, Montag bis Freitag</translation>
    </message>
    <message>
        <source>Every week</source>
        <translation>Jede Woche</translation>
    </message>
    <message>
        <source>Every month</source>
        <translation>Jeden Monat</translation>
    </message>
    <message>
        <source>Every year</source>
        <translation>Jedes Jahr</translation>
    </message>
    <message>
        <source>Every so many minutes or hours</source>
        <translation>Alle soundso viele Minuten oder Stunden</translation>
    </message>
    <message>
        <source>By a rule, for experts</source>
        <translation>Nach einer Regel, für Fachleute</translation>
    </message>
    <message>
        <source>Date</source>
        <translation>Datum</translation>
    </message>
    <message>
        <source>Time</source>
        <translation>Uhrzeit</translation>
    </message>
    <message>
        <source>From</source>
        <translation>Ab</translation>
    </message>
    <message>
        <source>Ends</source>
        <translation>Endet</translation>
    </message>
    <message>
        <source>Time zone</source>
        <translation>Zeitzone</translation>
    </message>
    <message>
        <source>Exceptions</source>
        <translation>Ausnahmen</translation>
    </message>
</context>
<context>
    <name>ScheduleAdding</name>
    <message>
        <source>New schedule</source>
        <translation>Neuer Zeitplan</translation>
    </message>
</context>
<context>
    <name>ScheduleEditor</name>
    <message>
        <source>Action</source>
        <translation>Aktion</translation>
    </message>
    <message>
        <source>When</source>
        <translation>Wann</translation>
    </message>
    <message>
        <source>Before</source>
        <translation>Vorher</translation>
    </message>
    <message>
        <source>Options</source>
        <translation>Optionen</translation>
    </message>
    <message>
        <source>Change of the name</source>
        <translation>Änderung des Namens</translation>
    </message>
    <message>
        <source>Switching on</source>
        <translation>Einschalten</translation>
    </message>
    <message>
        <source>Switching off</source>
        <translation>Ausschalten</translation>
    </message>
    <message>
        <source>Change of the action</source>
        <translation>Änderung der Aktion</translation>
    </message>
    <message>
        <source>Change of the time</source>
        <translation>Änderung der Zeit</translation>
    </message>
    <message>
        <source>Change of what comes before</source>
        <translation>Änderung für vorher</translation>
    </message>
    <message>
        <source>Somebody else has changed this schedule, too. What you see is yours.</source>
        <translation>Jemand anderes hat diesen Zeitplan auch geändert. Sie sehen Ihre Fassung.</translation>
    </message>
    <message>
        <source>Take over theirs</source>
        <translation>Deren Fassung übernehmen</translation>
    </message>
    <message>
        <source>Taking over</source>
        <translation>Übernahme</translation>
    </message>
    <message>
        <source>Keep mine</source>
        <translation>Meine behalten</translation>
    </message>
    <message>
        <source>Somebody else has removed this schedule. Applying your changes adds it again.</source>
        <translation>Jemand anderes hat diesen Zeitplan entfernt. Wenn Sie Ihre Änderungen anwenden, entsteht er wieder.</translation>
    </message>
    <message>
        <source>This could not be applied: %1</source>
        <translation>Das konnte nicht angewendet werden: %1</translation>
    </message>
    <message>
        <source>Choice of an action</source>
        <translation>Wahl einer Aktion</translation>
    </message>
    <message>
        <source>This was not applied: %1</source>
        <translation>Das wurde nicht angewendet: %1</translation>
    </message>
    <message>
        <source>Apply all the same</source>
        <translation>Trotzdem anwenden</translation>
    </message>
</context>
<context>
    <name>ScheduleHeader</name>
    <message>
        <source>Switched &amp;on</source>
        <translation>&amp;Eingeschaltet</translation>
    </message>
    <message>
        <source>Name of the schedule</source>
        <translation>Name des Zeitplans</translation>
    </message>
</context>
<context>
    <name>ScheduleListModel</name>
    <message>
        <source>Switching on</source>
        <translation>Einschalten</translation>
    </message>
    <message>
        <source>Switching off</source>
        <translation>Ausschalten</translation>
    </message>
    <message>
        <source>off</source>
        <translation>aus</translation>
    </message>
    <message>
        <source>over</source>
        <translation>vorbei</translation>
    </message>
    <message>
        <source>not applied yet</source>
        <translation>noch nicht angewendet</translation>
    </message>
</context>
<context>
    <name>ScheduleListPane</name>
    <message>
        <source>&amp;Remove</source>
        <translation>Ent&amp;fernen</translation>
    </message>
    <message>
        <source>Search</source>
        <translation>Suchen</translation>
    </message>
    <message>
        <source>Search the schedules</source>
        <translation>Zeitpläne durchsuchen</translation>
    </message>
    <message>
        <source>Schedules</source>
        <translation>Zeitpläne</translation>
    </message>
    <message>
        <source>&amp;New schedule</source>
        <translation>&amp;Neuer Zeitplan</translation>
    </message>
</context>
<context>
    <name>SelfTests</name>
    <message>
        <source>An alert is shown now that announces nothing. If you see none, look whether your desktop keeps notifications back (“do not disturb”).</source>
        <translation>Jetzt wird eine Meldung gezeigt, die nichts ankündigt. Wenn Sie keine sehen, hält vielleicht Ihr Desktop Benachrichtigungen zurück („Nicht stören“).</translation>
    </message>
    <message>
        <source>No alert can be shown: the agent in your session does not answer. It starts when you log in. To start it now: systemctl --user start dozely-agent</source>
        <translation>Es kann keine Meldung gezeigt werden: Der Agent in Ihrer Sitzung antwortet nicht. Er startet, wenn Sie sich anmelden. Um ihn jetzt zu starten: systemctl --user start dozely-agent</translation>
    </message>
    <message>
        <source>The computer goes to sleep for a minute. Leave it alone meanwhile.</source>
        <translation>Der Rechner schläft jetzt eine Minute. Lassen Sie ihn solange in Ruhe.</translation>
    </message>
    <message>
        <source>Sleep for a minute</source>
        <translation>Eine Minute schlafen</translation>
    </message>
    <message>
        <source>Waking was not tested: %1</source>
        <translation>Das Wecken wurde nicht getestet: %1</translation>
    </message>
    <message>
        <source>The clock took an alarm and gave it back. Whether it also wakes this computer shows when the computer sleeps.</source>
        <translation>Die Uhr hat eine Weckzeit angenommen und zurückgegeben. Ob sie den Rechner auch weckt, zeigt sich, wenn er schläft.</translation>
    </message>
    <message>
        <source>This computer has no clock that could wake it. Leave it on, or have missed schedules done later.</source>
        <translation>Dieser Rechner hat keine Uhr, die ihn wecken könnte. Lassen Sie ihn an, oder lassen Sie Versäumtes nachholen.</translation>
    </message>
    <message>
        <source>The clock of this computer does not keep an alarm. Look into the settings of its firmware (BIOS, UEFI) whether waking by the clock is switched on.</source>
        <translation>Die Uhr dieses Rechners behält keine Weckzeit. Sehen Sie in den Einstellungen der Firmware (BIOS, UEFI) nach, ob das Wecken durch die Uhr eingeschaltet ist.</translation>
    </message>
    <message>
        <source>The computer slept, and its clock woke it. Waking works.</source>
        <translation>Der Rechner hat geschlafen, und seine Uhr hat ihn geweckt. Das Wecken funktioniert.</translation>
    </message>
    <message>
        <source>The computer was awake before its clock could wake it. Try again, and leave it alone meanwhile.</source>
        <translation>Der Rechner war wach, bevor seine Uhr ihn wecken konnte. Versuchen Sie es noch einmal, und lassen Sie ihn solange in Ruhe.</translation>
    </message>
    <message>
        <source>The computer slept on when its clock was to wake it. Look into the settings of its firmware (BIOS, UEFI) whether waking by the clock is switched on.</source>
        <translation>Der Rechner schlief weiter, als seine Uhr ihn wecken sollte. Sehen Sie in den Einstellungen der Firmware (BIOS, UEFI) nach, ob das Wecken durch die Uhr eingeschaltet ist.</translation>
    </message>
</context>
<context>
    <name>SettingsButton</name>
    <message>
        <source>Settings</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <source>Show an icon in the panel</source>
        <translation>Symbol in der Leiste zeigen</translation>
    </message>
    <message>
        <source>This could not be kept: %1</source>
        <translation>Das konnte nicht behalten werden: %1</translation>
    </message>
</context>
<context>
    <name>StartPage</name>
    <message>
        <source>Nothing is planned yet</source>
        <translation>Noch ist nichts geplant</translation>
    </message>
    <message>
        <source>A schedule has the computer do something at its time. Begin with one of these, and change what you like before it is applied.</source>
        <translation>Ein Zeitplan lässt den Computer etwas zu seiner Zeit tun. Beginnen Sie mit einem von diesen, und ändern Sie daran, was Sie möchten, bevor er angewendet wird.</translation>
    </message>
    <message>
        <source>Something &amp;else</source>
        <translation>Etwas &amp;anderes</translation>
    </message>
    <message>
        <source>%1, for the first time %2</source>
        <extracomment>an action, and when it takes place first: &quot;Power Off, for the first time tomorrow 22:00&quot;</extracomment>
        <translation>%1, zum ersten Mal %2</translation>
    </message>
</context>
<context>
    <name>StatusLine</name>
    <message>
        <source>Service running</source>
        <translation>Dienst läuft</translation>
    </message>
    <message>
        <source>Version %1</source>
        <translation>Version %1</translation>
    </message>
    <message>
        <source>Service not running</source>
        <translation>Dienst läuft nicht</translation>
    </message>
    <message>
        <source>An administrator starts it with: systemctl start dozelyd</source>
        <translation>Ein Administrator startet ihn mit: systemctl start dozelyd</translation>
    </message>
    <message>
        <source>Nobody logged in</source>
        <translation>Niemand angemeldet</translation>
    </message>
    <message>
        <source>No session is at this computer&apos;s screen now. Actions that need one wait for it.</source>
        <translation>Am Bildschirm dieses Computers ist jetzt keine Sitzung. Aktionen, die eine brauchen, warten darauf.</translation>
    </message>
    <message>
        <source>Agent running</source>
        <translation>Agent läuft</translation>
    </message>
    <message>
        <source>It shows alerts and acts in the session of %1.</source>
        <translation>Er zeigt Meldungen und handelt in der Sitzung von %1.</translation>
    </message>
    <message>
        <source>Agent not running</source>
        <translation>Agent läuft nicht</translation>
    </message>
    <message>
        <source>It starts when you log in. To start it now: systemctl --user start dozely-agent</source>
        <translation>Er startet bei der Anmeldung. Jetzt starten: systemctl --user start dozely-agent</translation>
    </message>
    <message>
        <source>Cannot wake this computer</source>
        <translation>Wecken nicht möglich</translation>
    </message>
    <message>
        <source>It has no clock that could wake it or switch it on. Have it stay awake instead.</source>
        <translation>Er hat keine Uhr, die ihn wecken oder einschalten könnte. Lassen Sie ihn stattdessen wach.</translation>
    </message>
    <message>
        <source>Wake clock ready</source>
        <translation>Weckuhr bereit</translation>
    </message>
    <message>
        <source>Wakes %1</source>
        <translation>Wacht auf: %1</translation>
    </message>
    <message>
        <source>The clock %1 wakes this computer.</source>
        <translation>Die Uhr %1 weckt diesen Computer.</translation>
    </message>
    <message>
        <source>Test the alert</source>
        <translation>Meldung testen</translation>
    </message>
    <message>
        <source>Shows an alert that announces nothing, to see whether alerts reach you.</source>
        <translation>Zeigt eine Meldung, die nichts ankündigt: So sehen Sie, ob Meldungen Sie erreichen.</translation>
    </message>
    <message>
        <source>Test waking</source>
        <translation>Wecken testen</translation>
    </message>
    <message>
        <source>Tries whether the clock of this computer can wake it.</source>
        <translation>Probiert, ob die Uhr dieses Rechners ihn wecken kann.</translation>
    </message>
</context>
<context>
    <name>TimesOfDay</name>
    <message>
        <source>Another time</source>
        <translation>Weitere Uhrzeit</translation>
    </message>
    <message>
        <source>Adds another time of day</source>
        <translation>Fügt eine weitere Uhrzeit hinzu</translation>
    </message>
    <message>
        <source>Time</source>
        <translation>Uhrzeit</translation>
    </message>
    <message>
        <source>Remove this time</source>
        <translation>Diese Uhrzeit entfernen</translation>
    </message>
</context>
<context>
    <name>TimingRemark</name>
    <message>
        <source>Years without a 29 February are left out.</source>
        <translation>Jahre ohne 29. Februar werden ausgelassen.</translation>
    </message>
    <message>
        <source>Months without a day %1 are left out; &quot;Last day&quot; is the last of each month.</source>
        <translation>Monate ohne Tag %1 werden ausgelassen; „Letzter Tag“ ist der letzte jedes Monats.</translation>
    </message>
    <message>
        <source>Clocks skip %1 on that day; it takes place at %2.</source>
        <translation>An dem Tag überspringen die Uhren %1; es findet um %2 statt.</translation>
    </message>
    <message>
        <source>Clocks show %1 twice on that day; it takes place at the first.</source>
        <translation>An dem Tag zeigen die Uhren %1 zweimal; es findet beim ersten Mal statt.</translation>
    </message>
</context>
<context>
    <name>TimingWriter</name>
    <message>
        <source>With these exceptions nothing is left of it.</source>
        <translation>Mit diesen Ausnahmen bleibt nichts davon übrig.</translation>
    </message>
    <message>
        <source>That moment is past.</source>
        <translation>Dieser Zeitpunkt ist vorbei.</translation>
    </message>
    <message>
        <source>There is no time zone &quot;%1&quot;.</source>
        <translation>Es gibt keine Zeitzone „%1“.</translation>
    </message>
    <message>
        <source>Choose a day of the week.</source>
        <translation>Wählen Sie einen Wochentag.</translation>
    </message>
    <message>
        <source>Choose a day of the month.</source>
        <translation>Wählen Sie einen Tag des Monats.</translation>
    </message>
    <message>
        <source>One schedule cannot mean %1 without %2, too. Let the times have equal minutes, or add a second schedule.</source>
        <translation>Ein Zeitplan kann nicht %1 meinen, ohne auch %2 zu meinen. Geben Sie den Uhrzeiten gleiche Minuten, oder fügen Sie einen zweiten hinzu.</translation>
    </message>
    <message>
        <source>It ends before it begins.</source>
        <translation>Es endet, bevor es beginnt.</translation>
    </message>
    <message>
        <source>There can be at most %1 exceptions.</source>
        <translation>Es kann höchstens %1 Ausnahmen geben.</translation>
    </message>
</context>
<context>
    <name>WhenPane</name>
    <message>
        <source>Next dates</source>
        <translation>Nächste Termine</translation>
    </message>
</context>
<context>
    <name>YearChoice</name>
    <message>
        <source>Month</source>
        <translation>Monat</translation>
    </message>
    <message>
        <source>Day of the month</source>
        <translation>Tag des Monats</translation>
    </message>
</context>
<context>
    <name>ZoneChoice</name>
    <message>
        <source>This machine&apos;s (%1)</source>
        <translation>Die dieses Computers (%1)</translation>
    </message>
</context>
</TS>
