<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fr" sourcelanguage="en">
<context>
    <name>ActionPane</name>
    <message>
        <source>Action</source>
        <translation>Action</translation>
    </message>
    <message>
        <source>Loading the settings…</source>
        <translation>Chargement des réglages…</translation>
    </message>
    <message>
        <source>This action has no settings of its own here.</source>
        <translation>Cette action n’a pas de réglages propres ici.</translation>
    </message>
    <message>
        <source>There is no longer an action here: its bundle is missing. Choose another one, or have it installed again.</source>
        <translation>Il n’y a plus d’action ici : son module manque. Choisissez-en une autre ou faites-la réinstaller.</translation>
    </message>
    <message>
        <source>The settings of this action cannot be shown. All else of the schedule can be changed.</source>
        <translation>Les réglages de cette action ne peuvent pas être affichés. Tout le reste de la planification peut être modifié.</translation>
    </message>
</context>
<context>
    <name>ChangeBar</name>
    <message>
        <source>Undo</source>
        <translation>Annuler</translation>
    </message>
    <message>
        <source>Redo</source>
        <translation>Rétablir</translation>
    </message>
    <message>
        <source>&amp;Discard</source>
        <translation>A&amp;bandonner</translation>
    </message>
    <message>
        <source>A&amp;pply</source>
        <translation>Ap&amp;pliquer</translation>
    </message>
    <message>
        <source>Discarding</source>
        <translation>Abandon</translation>
    </message>
    <message>
        <source>Applying…</source>
        <translation>Application…</translation>
    </message>
</context>
<context>
    <name>ClosingQuestion</name>
    <message>
        <source>Some changes have not been applied yet. Apply them before closing?</source>
        <translation>Certaines modifications n’ont pas encore été appliquées. Les appliquer avant de fermer ?</translation>
    </message>
    <message>
        <source>A&amp;pply</source>
        <translation>Ap&amp;pliquer</translation>
    </message>
    <message>
        <source>&amp;Discard</source>
        <translation>A&amp;bandonner</translation>
    </message>
</context>
<context>
    <name>DateInWords</name>
    <message>
        <source>yesterday %1</source>
        <comment>and a time</comment>
        <translation>hier %1</translation>
    </message>
    <message>
        <source>today %1</source>
        <comment>and a time</comment>
        <translation>aujourd’hui %1</translation>
    </message>
    <message>
        <source>tomorrow %1</source>
        <comment>and a time</comment>
        <translation>demain %1</translation>
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
        <translation>Jamais</translation>
    </message>
    <message>
        <source>After a number of times</source>
        <translation>Après un nombre de fois</translation>
    </message>
    <message>
        <source>Ends</source>
        <translation>Fin</translation>
    </message>
    <message>
        <source>Last day</source>
        <translation>Dernier jour</translation>
    </message>
    <message>
        <source>How many times</source>
        <translation>Nombre de fois</translation>
    </message>
    <message>
        <source>On a day</source>
        <translation>À une date</translation>
    </message>
</context>
<context>
    <name>ExceptionList</name>
    <message>
        <source>Exceptions</source>
        <translation>Exceptions</translation>
    </message>
    <message>
        <source>Day to leave out</source>
        <translation>Jour à omettre</translation>
    </message>
    <message>
        <source>Leave this day out</source>
        <translation>Omettre ce jour</translation>
    </message>
    <message>
        <source>Take back</source>
        <translation>Reprendre</translation>
    </message>
    <message>
        <source>Takes the chosen exceptions back</source>
        <translation>Reprend les exceptions choisies</translation>
    </message>
    <message>
        <source>Nothing takes place on %1 that could be left out.</source>
        <translation>Rien n’a lieu le %1 qui puisse être omis.</translation>
    </message>
    <message>
        <source>%1, %2</source>
        <comment>a day and a time</comment>
        <translation>%1, %2</translation>
    </message>
    <message>
        <source>not on %1</source>
        <translation>pas le %1</translation>
    </message>
    <message>
        <source>also on %1</source>
        <translation>aussi le %1</translation>
    </message>
</context>
<context>
    <name>HistoryModel</name>
    <message>
        <source>(gone)</source>
        <comment>a schedule</comment>
        <translation>(supprimée)</translation>
    </message>
    <message>
        <source>When</source>
        <translation>Quand</translation>
    </message>
    <message>
        <source>Schedule</source>
        <translation>Planification</translation>
    </message>
    <message>
        <source>Outcome</source>
        <translation>Résultat</translation>
    </message>
    <message>
        <source>Began</source>
        <translation>Début</translation>
    </message>
    <message>
        <source>Why</source>
        <translation>Pourquoi</translation>
    </message>
</context>
<context>
    <name>HistoryView</name>
    <message>
        <source>Search</source>
        <translation>Rechercher</translation>
    </message>
    <message>
        <source>Search the history</source>
        <translation>Rechercher dans l’historique</translation>
    </message>
    <message>
        <source>Only what went wrong</source>
        <translation>Seulement ce qui a échoué</translation>
    </message>
    <message>
        <source>History</source>
        <translation>Historique</translation>
    </message>
    <message>
        <source>Nothing has taken place yet.</source>
        <translation>Rien n’a encore eu lieu.</translation>
    </message>
    <message>
        <source>Nothing in the history is like that.</source>
        <translation>Rien de tel dans l’historique.</translation>
    </message>
</context>
<context>
    <name>LogPane</name>
    <message>
        <source>Log</source>
        <translation>Journal</translation>
    </message>
    <message>
        <source>The log cannot be read: %1.</source>
        <translation>Le journal ne peut pas être lu : %1.</translation>
    </message>
    <message>
        <source>The log has nothing of that time.</source>
        <translation>Le journal n’a rien de ce moment.</translation>
    </message>
    <message>
        <source>These are the first %1 lines.</source>
        <translation>Voici les %1 premières lignes.</translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message numerus="yes">
        <source>%n schedule(s) could not be applied and keep their changes here.</source>
        <translation>
            <numerusform>%n planification n’a pas pu être appliquée et garde ses modifications ici.</numerusform>
            <numerusform>%n planifications n’ont pas pu être appliquées et gardent leurs modifications ici.</numerusform>
        </translation>
    </message>
    <message>
        <source>Try again</source>
        <translation>Réessayer</translation>
    </message>
    <message>
        <source>The Dozely service is not running: nothing happens at its time, and nothing can be applied. An administrator starts it with “systemctl start dozelyd”.</source>
        <translation>Le service Dozely ne fonctionne pas : rien n’a lieu à son heure et rien ne peut être appliqué. Un administrateur le démarre avec « systemctl start dozelyd ».</translation>
    </message>
    <message>
        <source>The schedules cannot be read: %1</source>
        <translation>Les planifications ne peuvent pas être lues : %1</translation>
    </message>
    <message>
        <source>Removal</source>
        <translation>Suppression</translation>
    </message>
    <message>
        <source>This cannot be applied yet: %1</source>
        <translation>Ceci ne peut pas encore être appliqué : %1</translation>
    </message>
    <message>
        <source>Views</source>
        <translation>Vues</translation>
    </message>
    <message>
        <source>Schedules</source>
        <translation>Planifications</translation>
    </message>
    <message>
        <source>Month</source>
        <translation>Mois</translation>
    </message>
    <message>
        <source>History</source>
        <translation>Historique</translation>
    </message>
</context>
<context>
    <name>MonthChoice</name>
    <message>
        <source>Day %1 of the month</source>
        <translation>Jour %1 du mois</translation>
    </message>
    <message>
        <source>Last day</source>
        <translation>Dernier jour</translation>
    </message>
    <message>
        <source>The last day of the month</source>
        <translation>Le dernier jour du mois</translation>
    </message>
    <message>
        <source>Days of the month</source>
        <translation>Jours du mois</translation>
    </message>
    <message>
        <source>A day of the week</source>
        <translation>Un jour de la semaine</translation>
    </message>
    <message>
        <source>The first</source>
        <translation>Le premier</translation>
    </message>
    <message>
        <source>The second</source>
        <translation>Le deuxième</translation>
    </message>
    <message>
        <source>The third</source>
        <translation>Le troisième</translation>
    </message>
    <message>
        <source>The fourth</source>
        <translation>Le quatrième</translation>
    </message>
    <message>
        <source>The last</source>
        <translation>Le dernier</translation>
    </message>
    <message>
        <source>Which one of the month</source>
        <translation>Lequel du mois</translation>
    </message>
    <message>
        <source>Day of the week</source>
        <translation>Jour de la semaine</translation>
    </message>
</context>
<context>
    <name>MonthDelegate</name>
    <message>
        <source>%1 in all</source>
        <comment>occurrences of a day</comment>
        <translation>%1 en tout</translation>
    </message>
    <message>
        <source>+%1 more</source>
        <comment>occurrences of a day</comment>
        <translation>+%1 autres</translation>
    </message>
</context>
<context>
    <name>MonthGrid</name>
    <message>
        <source>Month</source>
        <translation>Mois</translation>
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
        <translation>%1, omise</translation>
    </message>
    <message>
        <source>%1, put off</source>
        <comment>an occurrence</comment>
        <translation>%1, reportée</translation>
    </message>
    <message>
        <source>%1 more</source>
        <comment>occurrences</comment>
        <translation>%1 autres</translation>
    </message>
    <message>
        <source>nothing</source>
        <comment>takes place on a day</comment>
        <translation>rien</translation>
    </message>
</context>
<context>
    <name>MonthView</name>
    <message>
        <source>Previous month</source>
        <translation>Mois précédent</translation>
    </message>
    <message>
        <source>Today</source>
        <translation>Aujourd’hui</translation>
    </message>
    <message>
        <source>Next month</source>
        <translation>Mois suivant</translation>
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
        <translation>Nouvelle planification</translation>
    </message>
</context>
<context>
    <name>NextDates</name>
    <message>
        <source>Next dates</source>
        <translation>Prochaines dates</translation>
    </message>
    <message>
        <source>Nothing comes of it any more.</source>
        <translation>Il n’en résulte plus rien.</translation>
    </message>
    <message>
        <source>That is past.</source>
        <translation>C’est passé.</translation>
    </message>
    <message>
        <source>%1: clocks skip %2</source>
        <comment>a date and a time</comment>
        <translation>%1 : les horloges sautent %2</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <comment>a date, and what is to be known of it</comment>
        <translation>%1 : %2</translation>
    </message>
    <message>
        <source>%1 (%2 in %3)</source>
        <comment>a date, and its time in another zone</comment>
        <translation>%1 (%2 à %3)</translation>
    </message>
    <message>
        <source>clocks are set forward before it</source>
        <translation>les horloges sont avancées avant</translation>
    </message>
    <message>
        <source>clocks are set back before it</source>
        <translation>les horloges sont reculées avant</translation>
    </message>
</context>
<context>
    <name>OccurrenceActions</name>
    <message>
        <source>Skip</source>
        <translation>Omettre</translation>
    </message>
    <message>
        <source>Put off</source>
        <translation>Reporter</translation>
    </message>
    <message>
        <source>Run now</source>
        <translation>Exécuter maintenant</translation>
    </message>
    <message>
        <source>10 minutes</source>
        <translation>10 minutes</translation>
    </message>
    <message>
        <source>30 minutes</source>
        <translation>30 minutes</translation>
    </message>
    <message>
        <source>1 hour</source>
        <translation>1 heure</translation>
    </message>
    <message>
        <source>3 hours</source>
        <translation>3 heures</translation>
    </message>
    <message>
        <source>1 day</source>
        <translation>1 jour</translation>
    </message>
</context>
<context>
    <name>OutcomeWords</name>
    <message>
        <source>%1 to %2</source>
        <comment>two dates</comment>
        <translation>%1 à %2</translation>
    </message>
    <message>
        <source>put off until %1</source>
        <translation>reportée à %1</translation>
    </message>
    <message>
        <source>%1, %2 times</source>
        <comment>missed; a number</comment>
        <translation>%1, %2 fois</translation>
    </message>
    <message>
        <source>%1, at least %2 times</source>
        <comment>missed; a number</comment>
        <translation>%1, au moins %2 fois</translation>
    </message>
    <message>
        <source>on time</source>
        <translation>à l’heure</translation>
    </message>
    <message>
        <source>%1 late</source>
        <comment>a duration</comment>
        <translation>%1 de retard</translation>
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
        <translation>%1 j %2 h</translation>
    </message>
</context>
<context>
    <name>PatternRows</name>
    <message>
        <source>Days of the week</source>
        <translation>Jours de la semaine</translation>
    </message>
    <message>
        <source>Every</source>
        <translation>Tous les</translation>
    </message>
    <message>
        <source>On</source>
        <translation>Le</translation>
    </message>
    <message>
        <source>Rule</source>
        <translation>Règle</translation>
    </message>
    <message>
        <source>minutes</source>
        <translation>minutes</translation>
    </message>
    <message>
        <source>hours</source>
        <translation>heures</translation>
    </message>
    <message>
        <source>Unit</source>
        <translation>Unité</translation>
    </message>
    <message>
        <source>A recurrence rule as iCalendar (RFC 5545) has it</source>
        <translation>Une règle de récurrence telle que la définit iCalendar (RFC 5545)</translation>
    </message>
    <message>
        <source>day</source>
        <translation>jour</translation>
    </message>
    <message>
        <source>days</source>
        <translation>jours</translation>
    </message>
    <message>
        <source>week</source>
        <translation>semaine</translation>
    </message>
    <message>
        <source>weeks</source>
        <translation>semaines</translation>
    </message>
    <message>
        <source>month</source>
        <translation>mois</translation>
    </message>
    <message>
        <source>months</source>
        <translation>mois</translation>
    </message>
    <message>
        <source>year</source>
        <translation>an</translation>
    </message>
    <message>
        <source>years</source>
        <translation>ans</translation>
    </message>
</context>
<context>
    <name>PlugInTrials</name>
    <message>
        <source>It does not come to an end while it is loaded.</source>
        <translation>Elle ne se termine pas pendant son chargement.</translation>
    </message>
    <message>
        <source>It crashes while it is loaded.</source>
        <translation>Elle plante pendant son chargement.</translation>
    </message>
    <message>
        <source>It cannot be tried: %1</source>
        <translation>Elle ne peut pas être essayée : %1</translation>
    </message>
</context>
<context>
    <name>PolicyForm</name>
    <message>
        <source>If &amp;missed:</source>
        <translation>Si &amp;manquée :</translation>
    </message>
    <message>
        <source>Runs &amp;as:</source>
        <translation>E&amp;xécutée par :</translation>
    </message>
    <message>
        <source>Change of what is missed</source>
        <translation>Modification du cas manqué</translation>
    </message>
    <message>
        <source>Change of what comes afterwards</source>
        <translation>Modification de la suite</translation>
    </message>
    <message>
        <source>Change of who runs it</source>
        <translation>Modification de l’exécutant</translation>
    </message>
    <message>
        <source>As the action itself says</source>
        <translation>Comme l’action le prévoit</translation>
    </message>
    <message>
        <source>Leave it out</source>
        <translation>L’omettre</translation>
    </message>
    <message>
        <source>Do it once, as soon as possible</source>
        <translation>La faire une fois, dès que possible</translation>
    </message>
    <message>
        <source>Nothing more</source>
        <translation>Rien de plus</translation>
    </message>
    <message>
        <source>Sleep again, if it was woken for this</source>
        <translation>Se rendormir, s’il a été réveillé pour cela</translation>
    </message>
    <message>
        <source>Switch off, if it was woken or switched on for this</source>
        <translation>S’éteindre, s’il a été réveillé ou allumé pour cela</translation>
    </message>
    <message>
        <source>Me, in my session</source>
        <translation>Moi, dans ma session</translation>
    </message>
    <message>
        <source>Administrator, in the background</source>
        <translation>L’administrateur, en arrière-plan</translation>
    </message>
    <message>
        <source>Whoever is at the computer</source>
        <extracomment>whoever is logged in when the time comes</extracomment>
        <translation>Qui est devant l’ordinateur</translation>
    </message>
    <message>
        <source>Administrator, for me</source>
        <translation>L’administrateur, pour moi</translation>
    </message>
    <message>
        <source>Another user (number %1)</source>
        <translation>Un autre utilisateur (numéro %1)</translation>
    </message>
    <message>
        <source>You will be asked for an administrator&apos;s password.</source>
        <translation>Le mot de passe d’un administrateur vous sera demandé.</translation>
    </message>
    <message>
        <source>Changing this schedule needs an administrator&apos;s password.</source>
        <translation>Modifier cette planification demande le mot de passe d’un administrateur.</translation>
    </message>
    <message>
        <source>Af&amp;terwards:</source>
        <translation>&amp;Ensuite :</translation>
    </message>
    <message>
        <source>This never comes: the computer is neither woken nor switched on for this schedule.</source>
        <translation>Cela n’arrivera jamais : l’ordinateur n’est ni réveillé ni allumé pour cette planification.</translation>
    </message>
</context>
<context>
    <name>PowerForm</name>
    <message>
        <source>&amp;Show an alert before</source>
        <translation>A&amp;fficher une alerte avant</translation>
    </message>
    <message>
        <source>&amp;Wake the computer from sleep</source>
        <translation>&amp;Réveiller l’ordinateur</translation>
    </message>
    <message>
        <source>Switch the &amp;computer on</source>
        <translation>A&amp;llumer l’ordinateur</translation>
    </message>
    <message>
        <source>Minutes between alert and action</source>
        <translation>Minutes entre l’alerte et l’action</translation>
    </message>
    <message>
        <source>Warning:</source>
        <translation>Avertissement :</translation>
    </message>
    <message>
        <source>Power:</source>
        <translation>Alimentation :</translation>
    </message>
    <message numerus="yes">
        <source> minutes</source>
        <comment>behind a number, with a blank before it</comment>
        <translation>
            <numerusform> minute</numerusform>
            <numerusform> minutes</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>ReadyWishes</name>
    <message>
        <source>Switch off in the evening</source>
        <translation>Éteindre le soir</translation>
    </message>
    <message>
        <source>Wake with music</source>
        <translation>Réveil en musique</translation>
    </message>
    <message>
        <source>Backup at night</source>
        <translation>Sauvegarde nocturne</translation>
    </message>
</context>
<context>
    <name>RecurrenceForm</name>
    <message>
        <source>Takes place</source>
        <translation>A lieu</translation>
    </message>
    <message>
        <source>Once</source>
        <translation>Une fois</translation>
    </message>
    <message>
        <source>Every day</source>
        <translation>Chaque jour</translation>
    </message>
    <message>
        <source>On weekdays, Monday to Friday</source>
        <translation>En semaine, du lundi au vendredi</translation>
    </message>
    <message>
        <source>Every week</source>
        <translation>Chaque semaine</translation>
    </message>
    <message>
        <source>Every month</source>
        <translation>Chaque mois</translation>
    </message>
    <message>
        <source>Every year</source>
        <translation>Chaque année</translation>
    </message>
    <message>
        <source>Every so many minutes or hours</source>
        <translation>Toutes les tant de minutes ou d’heures</translation>
    </message>
    <message>
        <source>By a rule, for experts</source>
        <translation>Selon une règle, pour experts</translation>
    </message>
    <message>
        <source>Date</source>
        <translation>Date</translation>
    </message>
    <message>
        <source>Time</source>
        <translation>Heure</translation>
    </message>
    <message>
        <source>From</source>
        <translation>À partir du</translation>
    </message>
    <message>
        <source>Ends</source>
        <translation>Fin</translation>
    </message>
    <message>
        <source>Time zone</source>
        <translation>Fuseau horaire</translation>
    </message>
    <message>
        <source>Exceptions</source>
        <translation>Exceptions</translation>
    </message>
</context>
<context>
    <name>ScheduleAdding</name>
    <message>
        <source>New schedule</source>
        <translation>Nouvelle planification</translation>
    </message>
</context>
<context>
    <name>ScheduleEditor</name>
    <message>
        <source>Action</source>
        <translation>Action</translation>
    </message>
    <message>
        <source>When</source>
        <translation>Quand</translation>
    </message>
    <message>
        <source>Before</source>
        <translation>Avant</translation>
    </message>
    <message>
        <source>Options</source>
        <translation>Options</translation>
    </message>
    <message>
        <source>Change of the name</source>
        <translation>Modification du nom</translation>
    </message>
    <message>
        <source>Switching on</source>
        <translation>Activation</translation>
    </message>
    <message>
        <source>Switching off</source>
        <translation>Désactivation</translation>
    </message>
    <message>
        <source>Change of the action</source>
        <translation>Modification de l’action</translation>
    </message>
    <message>
        <source>Change of the time</source>
        <translation>Modification de l’heure</translation>
    </message>
    <message>
        <source>Change of what comes before</source>
        <translation>Modification de ce qui précède</translation>
    </message>
    <message>
        <source>Somebody else has changed this schedule, too. What you see is yours.</source>
        <translation>Quelqu’un d’autre a aussi modifié cette planification. Vous voyez la vôtre.</translation>
    </message>
    <message>
        <source>Take over theirs</source>
        <translation>Prendre la leur</translation>
    </message>
    <message>
        <source>Taking over</source>
        <translation>Reprise</translation>
    </message>
    <message>
        <source>Keep mine</source>
        <translation>Garder la mienne</translation>
    </message>
    <message>
        <source>Somebody else has removed this schedule. Applying your changes adds it again.</source>
        <translation>Quelqu’un d’autre a supprimé cette planification. Appliquer vos modifications l’ajoute de nouveau.</translation>
    </message>
    <message>
        <source>This could not be applied: %1</source>
        <translation>Ceci n’a pas pu être appliqué : %1</translation>
    </message>
    <message>
        <source>Choice of an action</source>
        <translation>Choix d’une action</translation>
    </message>
    <message>
        <source>This was not applied: %1</source>
        <translation>Ceci n’a pas été appliqué : %1</translation>
    </message>
    <message>
        <source>Apply all the same</source>
        <translation>Appliquer quand même</translation>
    </message>
</context>
<context>
    <name>ScheduleHeader</name>
    <message>
        <source>Switched &amp;on</source>
        <translation>&amp;Activée</translation>
    </message>
    <message>
        <source>Name of the schedule</source>
        <translation>Nom de la planification</translation>
    </message>
</context>
<context>
    <name>ScheduleListModel</name>
    <message>
        <source>Switching on</source>
        <translation>Activation</translation>
    </message>
    <message>
        <source>Switching off</source>
        <translation>Désactivation</translation>
    </message>
    <message>
        <source>off</source>
        <translation>désactivée</translation>
    </message>
    <message>
        <source>over</source>
        <translation>terminée</translation>
    </message>
    <message>
        <source>not applied yet</source>
        <translation>pas encore appliquée</translation>
    </message>
</context>
<context>
    <name>ScheduleListPane</name>
    <message>
        <source>&amp;Remove</source>
        <translation>&amp;Supprimer</translation>
    </message>
    <message>
        <source>Search</source>
        <translation>Rechercher</translation>
    </message>
    <message>
        <source>Search the schedules</source>
        <translation>Rechercher dans les planifications</translation>
    </message>
    <message>
        <source>Schedules</source>
        <translation>Planifications</translation>
    </message>
    <message>
        <source>&amp;New schedule</source>
        <translation>&amp;Nouvelle planification</translation>
    </message>
</context>
<context>
    <name>SelfTests</name>
    <message>
        <source>An alert is shown now that announces nothing. If you see none, look whether your desktop keeps notifications back (“do not disturb”).</source>
        <translation>Une alerte qui n’annonce rien s’affiche maintenant. Si vous n’en voyez pas, vérifiez si votre bureau retient les notifications (« Ne pas déranger »).</translation>
    </message>
    <message>
        <source>No alert can be shown: the agent in your session does not answer. It starts when you log in. To start it now: systemctl --user start dozely-agent</source>
        <translation>Aucune alerte ne peut s’afficher : l’agent de votre session ne répond pas. Il démarre à l’ouverture de session. Pour le démarrer maintenant : systemctl --user start dozely-agent</translation>
    </message>
    <message>
        <source>The computer goes to sleep for a minute. Leave it alone meanwhile.</source>
        <translation>L’ordinateur se met en veille pour une minute. N’y touchez pas pendant ce temps.</translation>
    </message>
    <message>
        <source>Sleep for a minute</source>
        <translation>Mettre en veille une minute</translation>
    </message>
    <message>
        <source>Waking was not tested: %1</source>
        <translation>Le réveil n’a pas été testé : %1</translation>
    </message>
    <message>
        <source>The clock took an alarm and gave it back. Whether it also wakes this computer shows when the computer sleeps.</source>
        <translation>L’horloge a pris une alarme et l’a rendue. On ne saura si elle réveille aussi l’ordinateur que lorsqu’il est en veille.</translation>
    </message>
    <message>
        <source>This computer has no clock that could wake it. Leave it on, or have missed schedules done later.</source>
        <translation>Cet ordinateur n’a pas d’horloge qui puisse le réveiller. Laissez-le allumé, ou faites rattraper ce qui a été manqué.</translation>
    </message>
    <message>
        <source>The clock of this computer does not keep an alarm. Look into the settings of its firmware (BIOS, UEFI) whether waking by the clock is switched on.</source>
        <translation>L’horloge de cet ordinateur ne garde pas d’alarme. Vérifiez dans les réglages du micrologiciel (BIOS, UEFI) si le réveil par l’horloge est activé.</translation>
    </message>
    <message>
        <source>The computer slept, and its clock woke it. Waking works.</source>
        <translation>L’ordinateur était en veille et son horloge l’a réveillé. Le réveil fonctionne.</translation>
    </message>
    <message>
        <source>The computer was awake before its clock could wake it. Try again, and leave it alone meanwhile.</source>
        <translation>L’ordinateur était réveillé avant que son horloge puisse le faire. Réessayez, sans y toucher pendant ce temps.</translation>
    </message>
    <message>
        <source>The computer slept on when its clock was to wake it. Look into the settings of its firmware (BIOS, UEFI) whether waking by the clock is switched on.</source>
        <translation>L’ordinateur est resté en veille quand son horloge devait le réveiller. Vérifiez dans les réglages du micrologiciel (BIOS, UEFI) si le réveil par l’horloge est activé.</translation>
    </message>
</context>
<context>
    <name>SettingsButton</name>
    <message>
        <source>Settings</source>
        <translation>Réglages</translation>
    </message>
    <message>
        <source>Show an icon in the panel</source>
        <translation>Afficher une icône dans le tableau de bord</translation>
    </message>
    <message>
        <source>This could not be kept: %1</source>
        <translation>Ceci n’a pas pu être conservé : %1</translation>
    </message>
</context>
<context>
    <name>StartPage</name>
    <message>
        <source>Nothing is planned yet</source>
        <translation>Rien n’est encore prévu</translation>
    </message>
    <message>
        <source>A schedule has the computer do something at its time. Begin with one of these, and change what you like before it is applied.</source>
        <translation>Une planification fait agir l’ordinateur à l’heure voulue. Commencez par l’une de celles-ci et modifiez-la à votre gré avant de l’appliquer.</translation>
    </message>
    <message>
        <source>Something &amp;else</source>
        <translation>A&amp;utre chose</translation>
    </message>
    <message>
        <source>%1, for the first time %2</source>
        <extracomment>an action, and when it takes place first: &quot;Power Off, for the first time tomorrow 22:00&quot;</extracomment>
        <translation>%1, la première fois %2</translation>
    </message>
</context>
<context>
    <name>StatusLine</name>
    <message>
        <source>Service running</source>
        <translation>Service en marche</translation>
    </message>
    <message>
        <source>Version %1</source>
        <translation>Version %1</translation>
    </message>
    <message>
        <source>Service not running</source>
        <translation>Service arrêté</translation>
    </message>
    <message>
        <source>An administrator starts it with: systemctl start dozelyd</source>
        <translation>Un administrateur le démarre avec : systemctl start dozelyd</translation>
    </message>
    <message>
        <source>Nobody logged in</source>
        <translation>Personne n’est connecté</translation>
    </message>
    <message>
        <source>No session is at this computer&apos;s screen now. Actions that need one wait for it.</source>
        <translation>Aucune session n’est à l’écran de cet ordinateur. Les actions qui en ont besoin attendent.</translation>
    </message>
    <message>
        <source>Agent running</source>
        <translation>Agent en marche</translation>
    </message>
    <message>
        <source>It shows alerts and acts in the session of %1.</source>
        <translation>Il affiche les alertes et agit dans la session de %1.</translation>
    </message>
    <message>
        <source>Agent not running</source>
        <translation>Agent arrêté</translation>
    </message>
    <message>
        <source>It starts when you log in. To start it now: systemctl --user start dozely-agent</source>
        <translation>Il démarre à l’ouverture de session. Pour le démarrer maintenant : systemctl --user start dozely-agent</translation>
    </message>
    <message>
        <source>Cannot wake this computer</source>
        <translation>Réveil impossible</translation>
    </message>
    <message>
        <source>It has no clock that could wake it or switch it on. Have it stay awake instead.</source>
        <translation>Il n’a pas d’horloge qui puisse le réveiller ou l’allumer. Laissez-le plutôt en marche.</translation>
    </message>
    <message>
        <source>Wake clock ready</source>
        <translation>Horloge de réveil prête</translation>
    </message>
    <message>
        <source>Wakes %1</source>
        <translation>Réveil %1</translation>
    </message>
    <message>
        <source>The clock %1 wakes this computer.</source>
        <translation>L’horloge %1 réveille cet ordinateur.</translation>
    </message>
    <message>
        <source>Test the alert</source>
        <translation>Tester l’alerte</translation>
    </message>
    <message>
        <source>Shows an alert that announces nothing, to see whether alerts reach you.</source>
        <translation>Affiche une alerte qui n’annonce rien, pour voir si les alertes vous parviennent.</translation>
    </message>
    <message>
        <source>Test waking</source>
        <translation>Tester le réveil</translation>
    </message>
    <message>
        <source>Tries whether the clock of this computer can wake it.</source>
        <translation>Essaie si l’horloge de cet ordinateur peut le réveiller.</translation>
    </message>
</context>
<context>
    <name>TimesOfDay</name>
    <message>
        <source>Another time</source>
        <translation>Une autre heure</translation>
    </message>
    <message>
        <source>Adds another time of day</source>
        <translation>Ajoute une autre heure</translation>
    </message>
    <message>
        <source>Time</source>
        <translation>Heure</translation>
    </message>
    <message>
        <source>Remove this time</source>
        <translation>Supprimer cette heure</translation>
    </message>
</context>
<context>
    <name>TimingRemark</name>
    <message>
        <source>Years without a 29 February are left out.</source>
        <translation>Les années sans 29 février sont omises.</translation>
    </message>
    <message>
        <source>Months without a day %1 are left out; &quot;Last day&quot; is the last of each month.</source>
        <translation>Les mois sans jour %1 sont omis ; « Dernier jour » est le dernier de chaque mois.</translation>
    </message>
    <message>
        <source>Clocks skip %1 on that day; it takes place at %2.</source>
        <translation>Ce jour-là, les horloges sautent %1 ; elle a lieu à %2.</translation>
    </message>
    <message>
        <source>Clocks show %1 twice on that day; it takes place at the first.</source>
        <translation>Ce jour-là, les horloges indiquent %1 deux fois ; elle a lieu à la première.</translation>
    </message>
</context>
<context>
    <name>TimingWriter</name>
    <message>
        <source>With these exceptions nothing is left of it.</source>
        <translation>Avec ces exceptions, il n’en reste rien.</translation>
    </message>
    <message>
        <source>That moment is past.</source>
        <translation>Ce moment est passé.</translation>
    </message>
    <message>
        <source>There is no time zone &quot;%1&quot;.</source>
        <translation>Il n’y a pas de fuseau horaire « %1 ».</translation>
    </message>
    <message>
        <source>Choose a day of the week.</source>
        <translation>Choisissez un jour de la semaine.</translation>
    </message>
    <message>
        <source>Choose a day of the month.</source>
        <translation>Choisissez un jour du mois.</translation>
    </message>
    <message>
        <source>One schedule cannot mean %1 without %2, too. Let the times have equal minutes, or add a second schedule.</source>
        <translation>Une planification ne peut pas signifier %1 sans %2 aussi. Donnez aux heures les mêmes minutes ou ajoutez une deuxième planification.</translation>
    </message>
    <message>
        <source>It ends before it begins.</source>
        <translation>Elle finit avant de commencer.</translation>
    </message>
    <message>
        <source>There can be at most %1 exceptions.</source>
        <translation>Il peut y avoir au plus %1 exceptions.</translation>
    </message>
</context>
<context>
    <name>WhenPane</name>
    <message>
        <source>Next dates</source>
        <translation>Prochaines dates</translation>
    </message>
</context>
<context>
    <name>YearChoice</name>
    <message>
        <source>Month</source>
        <translation>Mois</translation>
    </message>
    <message>
        <source>Day of the month</source>
        <translation>Jour du mois</translation>
    </message>
</context>
<context>
    <name>ZoneChoice</name>
    <message>
        <source>This machine&apos;s (%1)</source>
        <translation>Celui de cette machine (%1)</translation>
    </message>
</context>
</TS>
