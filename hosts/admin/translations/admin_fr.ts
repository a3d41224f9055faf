<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fr" sourcelanguage="en">
<context>
    <name>AdminText</name>
    <message>
        <source>Work on the system below that folder instead of /.</source>
        <translation>Travailler sur le système situé sous ce dossier au lieu de /.</translation>
    </message>
    <message>
        <source>Show this help and end.</source>
        <translation>Afficher cette aide et terminer.</translation>
    </message>
    <message>
        <source>done</source>
        <translation>fait</translation>
    </message>
    <message>
        <source>it could not be done (not found, not reachable, damaged)</source>
        <translation>cela n’a pas pu se faire (introuvable, injoignable, endommagé)</translation>
    </message>
    <message>
        <source>it is alive</source>
        <translation>il répond présent</translation>
    </message>
    <message>
        <source>it is not</source>
        <translation>il est absent</translation>
    </message>
    <message>
        <source>nothing is wrong</source>
        <translation>rien ne cloche</translation>
    </message>
    <message>
        <source>something is wrong</source>
        <translation>quelque chose cloche</translation>
    </message>
    <message>
        <source>nothing differed</source>
        <translation>rien ne différait</translation>
    </message>
    <message>
        <source>up to date</source>
        <translation>à jour</translation>
    </message>
    <message>
        <source>the command line is wrong</source>
        <translation>la ligne de commande est fausse</translation>
    </message>
    <message>
        <source>not permitted</source>
        <translation>non permis</translation>
    </message>
    <message>
        <source>schedules were changed, or would be</source>
        <translation>des planifications ont été modifiées, ou le seraient</translation>
    </message>
    <message>
        <source>there is a newer version</source>
        <translation>il existe une version plus récente</translation>
    </message>
    <message>
        <source>no answer</source>
        <translation>pas de réponse</translation>
    </message>
    <message>
        <source>Run the system below the folder &lt;DIR&gt; instead of /.</source>
        <translation>Travailler sur le système situé sous le dossier &lt;DIR&gt; au lieu de /.</translation>
    </message>
    <message>
        <source>Show the version and end.</source>
        <translation>Afficher la version et terminer.</translation>
    </message>
    <message>
        <source>Usage: %1 [options] COMMAND [ARGUMENTS]</source>
        <translation>Utilisation&#xa0;: %1 [options] COMMANDE [ARGUMENTS]</translation>
    </message>
    <message>
        <source>Shows and changes the schedules, asks whether the system&apos;s processes are alive, shows the log.</source>
        <translation>Affiche et modifie les planifications, demande si les processus du système sont présents, affiche le journal.</translation>
    </message>
    <message>
        <source>Commands:</source>
        <translation>Commandes&#xa0;:</translation>
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
        <translation>SCHEDULE est un identifiant, ou un nom que porte une seule planification. USER est un nom ou un numéro.
DATE s’écrit comme d’habitude&#xa0;: «&#xa0;06:55&#xa0;», «&#xa0;tomorrow 7:00&#xa0;», «&#xa0;fri 22:00&#xa0;», «&#xa0;22.12. 6:30&#xa0;», «&#xa0;2026-03-14 06:55&#xa0;», +5m.
«&#xa0;COMMANDE --help&#xa0;» n’affiche que les options d’une commande.

Code de sortie&#xa0;: 0 fait (ping, status&#xa0;: il est présent&#xa0;; doctor&#xa0;: rien ne cloche&#xa0;; apply&#xa0;: rien ne différait)&#xa0;;
1 cela n’a pas pu se faire (introuvable, injoignable, endommagé&#xa0;; doctor&#xa0;: quelque chose cloche)&#xa0;;
2 la ligne de commande est fausse&#xa0;; 3 non permis.
apply&#xa0;: 4 des planifications ont été modifiées, ou le seraient.
update check&#xa0;: 0 à jour&#xa0;; 4 il existe une version plus récente&#xa0;; 5 pas de réponse.</translation>
    </message>
    <message>
        <source>Options:</source>
        <translation>Options&#xa0;:</translation>
    </message>
    <message>
        <source>Arguments:</source>
        <translation>Arguments&#xa0;:</translation>
    </message>
    <message>
        <source>What to do, see above.</source>
        <translation>Ce qu’il faut faire, voir plus haut.</translation>
    </message>
    <message>
        <source>Usage:</source>
        <translation>Utilisation&#xa0;:</translation>
    </message>
    <message>
        <source>Example:</source>
        <translation>Exemple&#xa0;:</translation>
    </message>
    <message>
        <source>Exit status:</source>
        <translation>Code de sortie&#xa0;:</translation>
    </message>
    <message>
        <source>A command is missing; --help shows them.</source>
        <translation>Il manque une commande&#xa0;; --help les affiche.</translation>
    </message>
    <message>
        <source>There is no command &quot;%1&quot;; --help shows those that there are.</source>
        <translation>Il n’y a pas de commande «&#xa0;%1&#xa0;»&#xa0;; --help affiche celles qui existent.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; needs an argument; &quot;%1 --help&quot; shows which.</source>
        <translation>«&#xa0;%1&#xa0;» a besoin d’un argument&#xa0;; «&#xa0;%1 --help&#xa0;» dit lequel.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; takes no argument &quot;%2&quot;.</source>
        <translation>«&#xa0;%1&#xa0;» n’accepte pas l’argument «&#xa0;%2&#xa0;».</translation>
    </message>
    <message>
        <source>&quot;%1&quot; takes no option %2.</source>
        <translation>«&#xa0;%1&#xa0;» n’accepte pas l’option %2.</translation>
    </message>
    <message>
        <source>Show on one screen how the system is: daemon, agents, clock, what comes, what failed.</source>
        <translation>Montrer sur un écran l’état du système&#xa0;: service, agents, horloge, ce qui vient, ce qui a échoué.</translation>
    </message>
    <message>
        <source>Look at all that can be wrong with the installation, and say what helps.</source>
        <translation>Examiner tout ce qui peut clocher dans l’installation, et dire ce qui aide.</translation>
    </message>
    <message>
        <source>Show all schedules, and what became of those that are over.</source>
        <translation>Afficher toutes les planifications, et ce que sont devenues celles qui sont terminées.</translation>
    </message>
    <message>
        <source>Add a schedule: what is to be done (--bundle or --program) and when (--date or --in; --every or --rule, with --at).</source>
        <translation>Ajouter une planification&#xa0;: que faire (--bundle ou --program) et quand (--date ou --in&#xa0;; --every ou --rule, avec --at).</translation>
    </message>
    <message>
        <source>Change what the options name, as for &quot;add&quot;; the rest stays.</source>
        <translation>Modifier ce que nomment les options, comme pour «&#xa0;add&#xa0;»&#xa0;; le reste demeure.</translation>
    </message>
    <message>
        <source>Remove a schedule.</source>
        <translation>Supprimer une planification.</translation>
    </message>
    <message>
        <source>Remove the schedules that are over, but for those that stay.</source>
        <translation>Supprimer les planifications terminées, sauf celles qui restent.</translation>
    </message>
    <message>
        <source>Let a schedule come due.</source>
        <translation>Laisser une planification arriver à échéance.</translation>
    </message>
    <message>
        <source>Keep a schedule, but never let it come due.</source>
        <translation>Garder une planification sans jamais la laisser arriver à échéance.</translation>
    </message>
    <message>
        <source>Show what comes, and what wakes the machine.</source>
        <translation>Afficher ce qui vient, et ce qui réveille la machine.</translation>
    </message>
    <message>
        <source>Show what became of it, newest first.</source>
        <translation>Afficher ce qu’il en a été, le plus récent d’abord.</translation>
    </message>
    <message>
        <source>Leave out the next time, or that at --date.</source>
        <translation>Omettre la prochaine fois, ou celle de --date.</translation>
    </message>
    <message>
        <source>Perform it so much later (90, 10m, 1h): the next time, or that at --date.</source>
        <translation>L’exécuter d’autant plus tard (90, 10m, 1h)&#xa0;: la prochaine fois, ou celle de --date.</translation>
    </message>
    <message>
        <source>Have the daemon perform a schedule&apos;s action now.</source>
        <translation>Faire exécuter maintenant l’action d’une planification par le service.</translation>
    </message>
    <message>
        <source>Ask whether the daemon, a user&apos;s agent or his configuration application is alive; yours without USER.</source>
        <translation>Demander si le service, l’agent d’un utilisateur ou son application est présent&#xa0;; les vôtres sans USER.</translation>
    </message>
    <message>
        <source>Show the last lines of the log.</source>
        <translation>Afficher les dernières lignes du journal.</translation>
    </message>
    <message>
        <source>Show what the schedule&apos;s action wrote last, when it was performed the last time, or at --date.</source>
        <translation>Afficher ce que l’action de la planification a écrit la dernière fois, ou à --date.</translation>
    </message>
    <message>
        <source>Show the clock that can wake the machine, its alarm, and the scheduled events; or arm the alarm, read it back, set it as it was.</source>
        <translation>Afficher l’horloge qui peut réveiller la machine, son alarme et les événements prévus&#xa0;; ou armer l’alarme, la relire et la remettre comme avant.</translation>
    </message>
    <message>
        <source>Put the machine to sleep now.</source>
        <translation>Mettre la machine en veille maintenant.</translation>
    </message>
    <message>
        <source>Write all schedules, or one, to the standard output: a property list, which &quot;apply&quot; reads, or with --ics a calendar.</source>
        <translation>Écrire toutes les planifications, ou une seule, sur la sortie standard&#xa0;: une liste de propriétés, que lit «&#xa0;apply&#xa0;», ou avec --ics un calendrier.</translation>
    </message>
    <message>
        <source>Have exactly those schedules that a property list, JSON or YAML file says; &quot;-&quot; is the standard input.</source>
        <translation>Avoir exactement les planifications que dit un fichier (liste de propriétés, JSON ou YAML)&#xa0;; «&#xa0;-&#xa0;» est l’entrée standard.</translation>
    </message>
    <message>
        <source>Ask the update server whether there is a newer version.</source>
        <translation>Demander au serveur de mise à jour s’il existe une version plus récente.</translation>
    </message>
    <message>
        <source>Print how the last word may go on, for shells.</source>
        <translation>Indiquer aux shells comment le dernier mot peut continuer.</translation>
    </message>
    <message>
        <source>Show help and end.</source>
        <translation>Afficher l’aide et terminer.</translation>
    </message>
    <message>
        <source>Work below a folder.</source>
        <translation>Travailler sous un dossier.</translation>
    </message>
    <message>
        <source>The command failed: %1</source>
        <translation>La commande a échoué&#xa0;: %1</translation>
    </message>
    <message>
        <source>answer in JSON, one object on a line.</source>
        <translation>répondre en JSON, un objet par ligne.</translation>
    </message>
    <message>
        <source>the plug-in bundle, a path or the name of an installed one.</source>
        <translation>le module d’action, un chemin ou le nom d’un module installé.</translation>
    </message>
    <message>
        <source>run this program (an absolute path), with the bundle &quot;Command&quot;.</source>
        <translation>exécuter ce programme (un chemin absolu), avec le module «&#xa0;Command&#xa0;».</translation>
    </message>
    <message>
        <source>an argument of the program; repeat it for more.</source>
        <translation>un argument du programme&#xa0;; répétez-la pour d’autres.</translation>
    </message>
    <message>
        <source>when it takes place once, as &quot;2026-03-14 06:55&quot; or &quot;tomorrow 7:00&quot;.</source>
        <translation>quand elle a lieu une fois, comme «&#xa0;2026-03-14 06:55&#xa0;» ou «&#xa0;tomorrow 7:00&#xa0;».</translation>
    </message>
    <message>
        <source>of which time; the latest without it.</source>
        <translation>de quelle fois&#xa0;; la dernière sans cela.</translation>
    </message>
    <message>
        <source>of which time; the next without it.</source>
        <translation>de quelle fois&#xa0;; la prochaine sans cela.</translation>
    </message>
    <message>
        <source>the time zone of what is told, as &quot;Europe/Berlin&quot;; the machine&apos;s without it, and what repeats goes with it wherever that goes. &quot;machine&quot; is that again.</source>
        <translation>le fuseau horaire de ce qui est dit, comme «&#xa0;Europe/Berlin&#xa0;»&#xa0;; sans cela celui de la machine, que suit partout ce qui se répète. «&#xa0;machine&#xa0;» est de nouveau celui-ci.</translation>
    </message>
    <message>
        <source>the time zone of --date, as &quot;Europe/Berlin&quot;; the schedule&apos;s without it.</source>
        <translation>le fuseau horaire de --date, comme «&#xa0;Europe/Berlin&#xa0;»&#xa0;; sans cela celui de la planification.</translation>
    </message>
    <message>
        <source>when, so many seconds from now (90, 5m, 1h).</source>
        <translation>quand, tant de secondes à partir de maintenant (90, 5m, 1h).</translation>
    </message>
    <message>
        <source>how often: day, weekday, week, month, year, days such as monday,thursday, or a distance such as 15m or 2h.</source>
        <translation>la fréquence&#xa0;: day, weekday, week, month, year, des jours comme monday,thursday, ou un intervalle comme 15m ou 2h.</translation>
    </message>
    <message>
        <source>at what time of those days, as 22:00; repeat it for more.</source>
        <translation>à quelle heure ces jours-là, comme 22:00&#xa0;; répétez-la pour d’autres.</translation>
    </message>
    <message>
        <source>on which days of every month, as 1,15,last.</source>
        <translation>quels jours de chaque mois, comme 1,15,last.</translation>
    </message>
    <message>
        <source>how often, as a rule of RFC 5545: FREQ=WEEKLY;BYDAY=MO.</source>
        <translation>la fréquence, comme règle de la RFC 5545&#xa0;: FREQ=WEEKLY;BYDAY=MO.</translation>
    </message>
    <message>
        <source>repeat it from then on, now without it.</source>
        <translation>répéter à partir de là, de maintenant sans cela.</translation>
    </message>
    <message>
        <source>repeat it up to then, that day included.</source>
        <translation>répéter jusque-là, ce jour compris.</translation>
    </message>
    <message>
        <source>show what comes up to then, that day included.</source>
        <translation>afficher ce qui vient jusque-là, ce jour compris.</translation>
    </message>
    <message>
        <source>repeat it so many times.</source>
        <translation>répéter tant de fois.</translation>
    </message>
    <message>
        <source>not on that day, or at that date; repeat it for more.</source>
        <translation>pas ce jour-là, ou pas à cette date&#xa0;; répétez-la pour d’autres.</translation>
    </message>
    <message>
        <source>no exception on that day, or at that date; repeat it for more.</source>
        <translation>pas d’exception ce jour-là, ou à cette date&#xa0;; répétez-la pour d’autres.</translation>
    </message>
    <message>
        <source>repeat it without an end.</source>
        <translation>répéter sans fin.</translation>
    </message>
    <message>
        <source>repeat it no more: the next time is the last one, or --date is.</source>
        <translation>ne plus répéter&#xa0;: la prochaine fois est la dernière, ou --date l’est.</translation>
    </message>
    <message>
        <source>what becomes of it when its time passed while the machine was off or asleep: skip, run-once (of all that were missed the latest), run-once=LIMIT (no older than 90, 10m, 6h, 2d), or plug-in. bundle: what the bundle says, as without it.</source>
        <translation>ce qu’il en est quand l’heure est passée alors que la machine était éteinte ou en veille&#xa0;: skip, run-once (la dernière de toutes celles manquées), run-once=LIMIT (pas plus ancienne que 90, 10m, 6h, 2d) ou plug-in. bundle&#xa0;: ce que dit le module, comme sans cela.</translation>
    </message>
    <message>
        <source>whether it is performed while the time before still goes on: skip or run.</source>
        <translation>si elle est exécutée alors que la fois d’avant dure encore&#xa0;: skip ou run.</translation>
    </message>
    <message>
        <source>what the machine does afterwards when it was woken or switched on for it and nobody uses it: nothing, sleep or power-off.</source>
        <translation>ce que fait la machine ensuite, si elle a été réveillée ou allumée pour cela et que personne ne l’utilise&#xa0;: nothing, sleep ou power-off.</translation>
    </message>
    <message>
        <source>another name.</source>
        <translation>un autre nom.</translation>
    </message>
    <message>
        <source>a parameter of the action; repeat it for more. &quot;true&quot;, &quot;false&quot; and numbers are taken as such; KEY:string=VALUE, :integer=, :real= and :boolean= name the type.</source>
        <translation>un paramètre de l’action&#xa0;; répétez-la pour d’autres. «&#xa0;true&#xa0;», «&#xa0;false&#xa0;» et les nombres sont pris comme tels&#xa0;; KEY:string=VALUE,&#xa0;:integer=,&#xa0;:real= et&#xa0;:boolean= nomment le type.</translation>
    </message>
    <message>
        <source>a parameter of the event, whose KEY is four characters; repeat it for more. &quot;true&quot;, &quot;false&quot; and numbers are taken as such; KEY:string=VALUE, :integer=, :real= and :boolean= name the type.</source>
        <translation>un paramètre de l’événement, dont KEY a quatre caractères&#xa0;; répétez-la pour d’autres. «&#xa0;true&#xa0;», «&#xa0;false&#xa0;» et les nombres sont pris comme tels&#xa0;; KEY:string=VALUE,&#xa0;:integer=,&#xa0;:real= et&#xa0;:boolean= nomment le type.</translation>
    </message>
    <message>
        <source>parameters from a property list.</source>
        <translation>des paramètres d’une liste de propriétés.</translation>
    </message>
    <message>
        <source>without that parameter; repeat it for more.</source>
        <translation>sans ce paramètre&#xa0;; répétez-la pour d’autres.</translation>
    </message>
    <message>
        <source>alert the user so many seconds before, with a button to cancel.</source>
        <translation>alerter l’utilisateur tant de secondes avant, avec un bouton pour annuler.</translation>
    </message>
    <message>
        <source>without the alert.</source>
        <translation>sans l’alerte.</translation>
    </message>
    <message>
        <source>act in the daemon.</source>
        <translation>agir dans le service.</translation>
    </message>
    <message>
        <source>act in the user&apos;s session.</source>
        <translation>agir dans la session de l’utilisateur.</translation>
    </message>
    <message>
        <source>act where the bundle says.</source>
        <translation>agir là où le dit le module.</translation>
    </message>
    <message>
        <source>wake the machine for it, a minute ahead.</source>
        <translation>réveiller la machine pour cela, une minute avant.</translation>
    </message>
    <message>
        <source>do not wake the machine for it.</source>
        <translation>ne pas réveiller la machine pour cela.</translation>
    </message>
    <message>
        <source>switch the machine on for it, three minutes ahead.</source>
        <translation>allumer la machine pour cela, trois minutes avant.</translation>
    </message>
    <message>
        <source>do not switch the machine on for it.</source>
        <translation>ne pas allumer la machine pour cela.</translation>
    </message>
    <message>
        <source>tell the user at the console when it fails or is not performed.</source>
        <translation>prévenir l’utilisateur à la console si elle échoue ou n’est pas exécutée.</translation>
    </message>
    <message>
        <source>do not tell the user of failures.</source>
        <translation>ne pas prévenir l’utilisateur des échecs.</translation>
    </message>
    <message>
        <source>the schedule is not to come due before it is enabled.</source>
        <translation>la planification n’arrive pas à échéance avant d’être activée.</translation>
    </message>
    <message>
        <source>let it come due.</source>
        <translation>la laisser arriver à échéance.</translation>
    </message>
    <message>
        <source>also what nothing could come of.</source>
        <translation>même ce dont rien ne peut résulter.</translation>
    </message>
    <message>
        <source>the schedule is not removed when it is over, but by &quot;remove&quot;.</source>
        <translation>la planification terminée n’est supprimée que par «&#xa0;remove&#xa0;».</translation>
    </message>
    <message>
        <source>the schedule is removed some time after it is over.</source>
        <translation>la planification est supprimée quelque temps après sa fin.</translation>
    </message>
    <message>
        <source>whose schedule it is; yours without it.</source>
        <translation>à qui est la planification&#xa0;; à vous sans cela.</translation>
    </message>
    <message>
        <source>how many to show, 10 without it.</source>
        <translation>combien en afficher, 10 sans cela.</translation>
    </message>
    <message>
        <source>how many to show, 20 without it.</source>
        <translation>combien en afficher, 20 sans cela.</translation>
    </message>
    <message>
        <source>how many lines to show first, 20 without it.</source>
        <translation>combien de lignes afficher d’abord, 20 sans cela.</translation>
    </message>
    <message>
        <source>go on showing lines as they come.</source>
        <translation>continuer d’afficher les lignes à mesure qu’elles viennent.</translation>
    </message>
    <message>
        <source>whose process is to have it; yours without it.</source>
        <translation>de qui est le processus qui doit le recevoir&#xa0;; de vous sans cela.</translation>
    </message>
    <message>
        <source>how long to wait for the reply, 60 without it.</source>
        <translation>combien de temps attendre la réponse, 60 sans cela.</translation>
    </message>
    <message>
        <source>do not wait for a reply.</source>
        <translation>ne pas attendre de réponse.</translation>
    </message>
    <message>
        <source>as a calendar (iCalendar, RFC 5545).</source>
        <translation>comme calendrier (iCalendar, RFC 5545).</translation>
    </message>
    <message>
        <source>change nothing, and say what would be changed.</source>
        <translation>ne rien modifier, et dire ce qui le serait.</translation>
    </message>
    <message>
        <source>begin later by a time of up to so much (30m, 1h), which is another one on every machine and always the same on this one.</source>
        <translation>commencer plus tard, d’au plus autant (30m, 1h)&#xa0;: une durée autre sur chaque machine, toujours la même sur celle-ci.</translation>
    </message>
    <message>
        <source>run the command on that machine, over ssh.</source>
        <translation>exécuter la commande sur cette machine, par ssh.</translation>
    </message>
    <message>
        <source>The output cannot be written.</source>
        <translation>La sortie ne peut pas être écrite.</translation>
    </message>
    <message>
        <source>It cannot be spread: %1.</source>
        <translation>Elle ne peut pas être étalée&#xa0;: %1.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is added as %2</source>
        <translation>«&#xa0;%1&#xa0;» est ajoutée sous %2</translation>
    </message>
    <message>
        <source>The standard input cannot be read.</source>
        <translation>L’entrée standard ne peut pas être lue.</translation>
    </message>
    <message>
        <source>%1 cannot be read: %2.</source>
        <translation>%1 ne peut pas être lu&#xa0;: %2.</translation>
    </message>
    <message>
        <source>Nothing can be spread: %1.</source>
        <translation>Rien ne peut être étalé&#xa0;: %1.</translation>
    </message>
    <message>
        <source>%1 is not understood: %2.</source>
        <translation>%1 n’est pas compris&#xa0;: %2.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; cannot be spread: %2.</source>
        <translation>«&#xa0;%1&#xa0;» ne peut pas être étalée&#xa0;: %2.</translation>
    </message>
    <message>
        <source>&quot;%1&quot;: %2. --anyway has it all the same.</source>
        <translation>«&#xa0;%1&#xa0;»&#xa0;: %2. --anyway l’admet malgré tout.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; (%2) would be removed.</source>
        <translation>«&#xa0;%1&#xa0;» (%2) serait supprimée.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; (%2) is removed.</source>
        <translation>«&#xa0;%1&#xa0;» (%2) est supprimée.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; (%2) would be changed.</source>
        <translation>«&#xa0;%1&#xa0;» (%2) serait modifiée.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; (%2) is changed.</source>
        <translation>«&#xa0;%1&#xa0;» (%2) est modifiée.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; (%2) would be added.</source>
        <translation>«&#xa0;%1&#xa0;» (%2) serait ajoutée.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; (%2) is added.</source>
        <translation>«&#xa0;%1&#xa0;» (%2) est ajoutée.</translation>
    </message>
    <message>
        <source>Nothing differs.</source>
        <translation>Rien ne diffère.</translation>
    </message>
    <message>
        <source>Say what is to change; --help shows the options.</source>
        <translation>Dites ce qui doit changer&#xa0;; --help affiche les options.</translation>
    </message>
    <message>
        <source>There is no schedule &quot;%1&quot; any more.</source>
        <translation>Il n’y a plus de planification «&#xa0;%1&#xa0;».</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is changed</source>
        <translation>«&#xa0;%1&#xa0;» est modifiée</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not your schedule; try it as root.</source>
        <translation>«&#xa0;%1&#xa0;» n’est pas votre planification&#xa0;; essayez en tant que root.</translation>
    </message>
    <message>
        <source>The daemon refuses: %1.</source>
        <translation>Le service refuse&#xa0;: %1.</translation>
    </message>
    <message>
        <source>The daemon does not answer.</source>
        <translation>Le service ne répond pas.</translation>
    </message>
    <message>
        <source>its next time</source>
        <translation>la prochaine fois</translation>
    </message>
    <message>
        <source>There is no user &quot;%1&quot;.</source>
        <translation>Il n’y a pas d’utilisateur «&#xa0;%1&#xa0;».</translation>
    </message>
    <message>
        <source>The daemon is alive.</source>
        <translation>Le service est présent.</translation>
    </message>
    <message>
        <source>The agent of %1 is alive.</source>
        <translation>L’agent de %1 est présent.</translation>
    </message>
    <message>
        <source>The application of %1 is alive.</source>
        <translation>L’application de %1 est présente.</translation>
    </message>
    <message>
        <source>The agent of %1 does not answer.</source>
        <translation>L’agent de %1 ne répond pas.</translation>
    </message>
    <message>
        <source>The application of %1 does not answer.</source>
        <translation>L’application de %1 ne répond pas.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not daemon, agent or application.</source>
        <translation>«&#xa0;%1&#xa0;» n’est ni daemon, ni agent, ni application.</translation>
    </message>
    <message>
        <source>There is one daemon for all users.</source>
        <translation>Il y a un seul service pour tous les utilisateurs.</translation>
    </message>
    <message>
        <source>The daemon was asked to perform &quot;%1&quot;; the log tells how it went.</source>
        <translation>Le service a été prié d’exécuter «&#xa0;%1&#xa0;»&#xa0;; le journal dit comment cela s’est passé.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is left out: %2.</source>
        <translation>«&#xa0;%1&#xa0;» est omise&#xa0;: %2.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no time to postpone it by, such as 90, 10m or 1h.</source>
        <translation>«&#xa0;%1&#xa0;» n’est pas une durée dont la reporter, comme 90, 10m ou 1h.</translation>
    </message>
    <message>
        <source>&quot;%2&quot; is postponed by %1: %3.</source>
        <translation>«&#xa0;%2&#xa0;» est reportée de %1&#xa0;: %3.</translation>
    </message>
    <message>
        <source>What is over cannot be told: %1.</source>
        <translation>On ne peut pas dire ce qui est terminé&#xa0;: %1.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is over and removed.</source>
        <translation>«&#xa0;%1&#xa0;» est terminée et supprimée.</translation>
    </message>
    <message>
        <source>No schedule is over.</source>
        <translation>Aucune planification n’est terminée.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a number of seconds from now.</source>
        <translation>«&#xa0;%1&#xa0;» n’est pas un nombre de secondes à partir de maintenant.</translation>
    </message>
    <message>
        <source>There is no time zone &quot;%1&quot;.</source>
        <translation>Il n’y a pas de fuseau horaire «&#xa0;%1&#xa0;».</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is a day; say at what time, such as &quot;%1 06:55&quot;.</source>
        <translation>«&#xa0;%1&#xa0;» est un jour&#xa0;; dites à quelle heure, comme «&#xa0;%1 06:55&#xa0;».</translation>
    </message>
    <message>
        <source>%1 does not exist in %2; it becomes %3.</source>
        <translation>%1 n’existe pas à %2&#xa0;; cela devient %3.</translation>
    </message>
    <message>
        <source>Say when, by --date or by --in.</source>
        <translation>Dites quand, par --date ou par --in.</translation>
    </message>
    <message>
        <source>%1 in %2 is past.</source>
        <translation>%1 à %2 est passé.</translation>
    </message>
    <message>
        <source>The date is further ahead than the store can hold.</source>
        <translation>La date est trop lointaine pour être enregistrée.</translation>
    </message>
    <message>
        <source>The clock is synchronised.</source>
        <translation>L’horloge est synchronisée.</translation>
    </message>
    <message>
        <source>Nothing keeps the clock right.</source>
        <translation>Rien ne garde l’horloge à l’heure.</translation>
    </message>
    <message>
        <source>timedatectl set-ntp true, after apt install systemd-timesyncd or chrony</source>
        <translation>timedatectl set-ntp true, après apt install systemd-timesyncd ou chrony</translation>
    </message>
    <message>
        <source>Nobody can tell how old the data of the time zones are.</source>
        <translation>On ne peut pas dire de quand datent les données des fuseaux horaires.</translation>
    </message>
    <message>
        <source>The data of the time zones do not say how old they are.</source>
        <translation>Les données des fuseaux horaires ne disent pas de quand elles datent.</translation>
    </message>
    <message>
        <source>The data of the time zones are those of %1.</source>
        <translation>Les données des fuseaux horaires sont celles de %1.</translation>
    </message>
    <message>
        <source>The machine&apos;s time zone has no name: /etc/localtime is no link to one.</source>
        <translation>Le fuseau horaire de la machine n’a pas de nom&#xa0;: /etc/localtime n’est pas un lien vers un fuseau.</translation>
    </message>
    <message>
        <source>timedatectl set-timezone Europe/Berlin, or where the machine is</source>
        <translation>timedatectl set-timezone Europe/Berlin, ou là où est la machine</translation>
    </message>
    <message>
        <source>The machine&apos;s time zone is %1.</source>
        <translation>Le fuseau horaire de la machine est %1.</translation>
    </message>
    <message>
        <source>fine</source>
        <translation>bien</translation>
    </message>
    <message>
        <source>wrong</source>
        <translation>faux</translation>
    </message>
    <message>
        <source>unknown</source>
        <translation>inconnu</translation>
    </message>
    <message>
        <source>Nothing is wrong.</source>
        <translation>Rien ne cloche.</translation>
    </message>
    <message numerus="yes">
        <source>%n thing(s) are wrong.</source>
        <translation>
            <numerusform>%n chose cloche.</numerusform>
            <numerusform>%n choses clochent.</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 is not there.</source>
        <translation>%1 n’existe pas.</translation>
    </message>
    <message>
        <source>%1 is no folder.</source>
        <translation>%1 n’est pas un dossier.</translation>
    </message>
    <message>
        <source>%1 is no regular file.</source>
        <translation>%1 n’est pas un fichier ordinaire.</translation>
    </message>
    <message>
        <source>%1 belongs to %2.</source>
        <translation>%1 appartient à %2.</translation>
    </message>
    <message>
        <source>%1 has the mode %2, which lets others write there.</source>
        <translation>%1 a le mode %2, qui permet à d’autres d’y écrire.</translation>
    </message>
    <message>
        <source>%1 has the mode %2, which keeps others out.</source>
        <translation>%1 a le mode %2, qui empêche les autres d’entrer.</translation>
    </message>
    <message>
        <source>%1 is as it should be.</source>
        <translation>%1 est comme il faut.</translation>
    </message>
    <message>
        <source>No bundle is performed as root: %1.</source>
        <translation>Aucun module n’est exécuté en tant que root&#xa0;: %1.</translation>
    </message>
    <message>
        <source>There is no bundle in %1.</source>
        <translation>Il n’y a pas de module dans %1.</translation>
    </message>
    <message>
        <source>The bundles in %1 can be trusted.</source>
        <translation>Les modules dans %1 sont dignes de confiance.</translation>
    </message>
    <message>
        <source>Nobody can tell how much room there is for the record.</source>
        <translation>On ne peut pas dire combien de place il y a pour l’enregistrement.</translation>
    </message>
    <message>
        <source>%1, where the record lies, can only be read.</source>
        <translation>%1, où se trouve l’enregistrement, est en lecture seule.</translation>
    </message>
    <message>
        <source>%1, where the record lies, is full.</source>
        <translation>%1, où se trouve l’enregistrement, est plein.</translation>
    </message>
    <message>
        <source>Make room in %1.</source>
        <translation>Faites de la place dans %1.</translation>
    </message>
    <message>
        <source>There is room for the record.</source>
        <translation>Il y a de la place pour l’enregistrement.</translation>
    </message>
    <message>
        <source>Look for an alarm, &quot;RTC wake&quot; or &quot;power on by alarm&quot; in the firmware&apos;s settings; docs/power.md says more</source>
        <translation>Cherchez une alarme, «&#xa0;RTC wake&#xa0;» ou «&#xa0;power on by alarm&#xa0;» dans les réglages du micrologiciel&#xa0;; docs/power.md en dit plus</translation>
    </message>
    <message>
        <source>%1 can wake the machine.</source>
        <translation>%1 peut réveiller la machine.</translation>
    </message>
    <message>
        <source>No clock can wake this machine, and no schedule asks for that.</source>
        <translation>Aucune horloge ne peut réveiller cette machine, et aucune planification ne le demande.</translation>
    </message>
    <message>
        <source>No clock can wake this machine, as &quot;%1&quot; asks for.</source>
        <translation>Aucune horloge ne peut réveiller cette machine, comme «&#xa0;%1&#xa0;» le demande.</translation>
    </message>
    <message>
        <source>%1, or %2</source>
        <translation>%1, ou %2</translation>
    </message>
    <message>
        <source>There is no alarm without a clock that could wake the machine.</source>
        <translation>Il n’y a pas d’alarme sans une horloge qui puisse réveiller la machine.</translation>
    </message>
    <message>
        <source>The machine is to be woken, and the alarm of %1 is not armed: the firmware or another program has dropped it, or the daemon does not run.</source>
        <translation>La machine doit être réveillée, et l’alarme de %1 n’est pas armée&#xa0;: le micrologiciel ou un autre programme l’a abandonnée, ou le service ne fonctionne pas.</translation>
    </message>
    <message>
        <source>The alarm is armed.</source>
        <translation>L’alarme est armée.</translation>
    </message>
    <message>
        <source>No alarm is needed.</source>
        <translation>Aucune alarme n’est nécessaire.</translation>
    </message>
    <message>
        <source>The alarm holds what it is set to.</source>
        <translation>L’alarme garde ce qu’on lui règle.</translation>
    </message>
    <message>
        <source>Only root can see whether the machine was woken when it should have been.</source>
        <translation>Seul root peut voir si la machine a été réveillée quand elle le devait.</translation>
    </message>
    <message>
        <source>The last time of &quot;%1&quot;, which wakes the machine, was missed.</source>
        <translation>La dernière fois de «&#xa0;%1&#xa0;», qui réveille la machine, a été manquée.</translation>
    </message>
    <message>
        <source>Nothing that wakes the machine was missed the last time.</source>
        <translation>Rien de ce qui réveille la machine n’a été manqué la dernière fois.</translation>
    </message>
    <message>
        <source>The bus lets nobody be com.dozely: there is no %1.</source>
        <translation>Le bus ne laisse personne être com.dozely&#xa0;: il n’y a pas de %1.</translation>
    </message>
    <message>
        <source>apt install --reinstall dozely, or link the file of another prefix into /etc/dbus-1/system.d; then systemctl reload dbus</source>
        <translation>apt install --reinstall dozely, ou liez le fichier d’un autre préfixe dans /etc/dbus-1/system.d; puis systemctl reload dbus</translation>
    </message>
    <message>
        <source>The bus knows who may be com.dozely.</source>
        <translation>Le bus sait qui peut être com.dozely.</translation>
    </message>
    <message>
        <source>Root alone may change schedules: there is no %1.</source>
        <translation>Seul root peut modifier les planifications&#xa0;: il n’y a pas de %1.</translation>
    </message>
    <message>
        <source>polkit knows what users may be asked for.</source>
        <translation>polkit sait ce qui peut être demandé aux utilisateurs.</translation>
    </message>
    <message>
        <source>Root alone may change schedules: there is no polkit.</source>
        <translation>Seul root peut modifier les planifications&#xa0;: il n’y a pas de polkit.</translation>
    </message>
    <message>
        <source>polkit is there.</source>
        <translation>polkit est présent.</translation>
    </message>
    <message>
        <source>No service manager says whether the daemon is started with the machine.</source>
        <translation>Aucun gestionnaire de services ne dit si le service démarre avec la machine.</translation>
    </message>
    <message>
        <source>systemd does not know dozelyd.service.</source>
        <translation>systemd ne connaît pas dozelyd.service.</translation>
    </message>
    <message>
        <source>dozelyd.service is masked.</source>
        <translation>dozelyd.service est masqué.</translation>
    </message>
    <message>
        <source>The daemon is not started with the machine.</source>
        <translation>Le service ne démarre pas avec la machine.</translation>
    </message>
    <message>
        <source>dozelyd.service has failed.</source>
        <translation>dozelyd.service a échoué.</translation>
    </message>
    <message>
        <source>The daemon is started with the machine.</source>
        <translation>Le service démarre avec la machine.</translation>
    </message>
    <message>
        <source>The daemon listens.</source>
        <translation>Le service écoute.</translation>
    </message>
    <message>
        <source>A process of user %1 listens in the daemon&apos;s place.</source>
        <translation>Un processus de l’utilisateur %1 écoute à la place du service.</translation>
    </message>
    <message>
        <source>The daemon does not run, or does not listen.</source>
        <translation>Le service ne fonctionne pas, ou n’écoute pas.</translation>
    </message>
    <message>
        <source>systemctl start dozelyd; journalctl -u dozelyd says why it ended</source>
        <translation>systemctl start dozelyd; journalctl -u dozelyd dit pourquoi il s’est arrêté</translation>
    </message>
    <message>
        <source>There is no system bus, so users cannot reach the daemon.</source>
        <translation>Il n’y a pas de bus système, donc les utilisateurs ne peuvent pas joindre le service.</translation>
    </message>
    <message>
        <source>The system bus does not say whether the daemon is there.</source>
        <translation>Le bus système ne dit pas si le service est présent.</translation>
    </message>
    <message>
        <source>The daemon is not com.dozely on the system bus.</source>
        <translation>Le service n’est pas com.dozely sur le bus système.</translation>
    </message>
    <message>
        <source>systemctl restart dozelyd; the log says why it has not got the name</source>
        <translation>systemctl restart dozelyd; le journal dit pourquoi il n’a pas le nom</translation>
    </message>
    <message>
        <source>The daemon is com.dozely on the system bus.</source>
        <translation>Le service est com.dozely sur le bus système.</translation>
    </message>
    <message>
        <source>Nobody is at the console, so no agent is needed.</source>
        <translation>Personne n’est à la console, donc aucun agent n’est nécessaire.</translation>
    </message>
    <message>
        <source>The agent of %1, who is at the console, listens.</source>
        <translation>L’agent de %1, à la console, écoute.</translation>
    </message>
    <message>
        <source>%1 is at the console, and no agent of his listens: nothing acts in his session.</source>
        <translation>%1 est à la console, et aucun agent n’y écoute pour sa session&#xa0;: rien n’y agit.</translation>
    </message>
    <message>
        <source>systemctl --user --machine=%1@ start dozely-agent, or have him log in again</source>
        <translation>systemctl --user --machine=%1@ start dozely-agent, ou une nouvelle ouverture de session</translation>
    </message>
    <message>
        <source>No agent is started when a user logs in.</source>
        <translation>Aucun agent ne démarre quand un utilisateur ouvre une session.</translation>
    </message>
    <message>
        <source>An agent is started when a user logs in.</source>
        <translation>Un agent démarre quand un utilisateur ouvre une session.</translation>
    </message>
    <message>
        <source>The store is not believed: %1.</source>
        <translation>Le magasin n’est pas cru&#xa0;: %1.</translation>
    </message>
    <message>
        <source>%1 cannot be used: %2.</source>
        <translation>%1 ne peut pas être utilisé&#xa0;: %2.</translation>
    </message>
    <message>
        <source>Put back a good one from a backup, or begin anew: mv &apos;%1&apos; &apos;%1.damaged&apos;</source>
        <translation>Remettez-en un bon d’une sauvegarde, ou repartez de zéro&#xa0;: mv &apos;%1&apos; &apos;%1.damaged&apos;</translation>
    </message>
    <message>
        <source>Entries of the store are no schedules: %1.</source>
        <translation>Des entrées du magasin ne sont pas des planifications&#xa0;: %1.</translation>
    </message>
    <message>
        <source>Mend these entries in %1, or remove them</source>
        <translation>Réparez ces entrées dans %1, ou supprimez-les</translation>
    </message>
    <message>
        <source>The store can be read.</source>
        <translation>Le magasin peut être lu.</translation>
    </message>
    <message>
        <source>There is no store yet.</source>
        <translation>Il n’y a pas encore de magasin.</translation>
    </message>
    <message>
        <source>The record of occurrences can be read.</source>
        <translation>L’enregistrement des exécutions peut être lu.</translation>
    </message>
    <message>
        <source>Only root can look into the record of occurrences.</source>
        <translation>Seul root peut consulter l’enregistrement des exécutions.</translation>
    </message>
    <message>
        <source>systemctl restart dozelyd, which sets a damaged one aside and begins a new one</source>
        <translation>systemctl restart dozelyd, qui met de côté un fichier endommagé et en commence un nouveau</translation>
    </message>
    <message>
        <source>The schedules cannot be looked at.</source>
        <translation>Les planifications ne peuvent pas être examinées.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is to put the machine to rest afterwards, and does not wake it</source>
        <translation>«&#xa0;%1&#xa0;» doit mettre la machine au repos ensuite, et ne la réveille pas</translation>
    </message>
    <message>
        <source>Nothing can come of %1.</source>
        <translation>Rien ne peut résulter de ceci&#xa0;: %1.</translation>
    </message>
    <message>
        <source>Something can come of every schedule that is enabled.</source>
        <translation>Quelque chose peut résulter de chaque planification activée.</translation>
    </message>
    <message>
        <source>The parameter &quot;%1&quot; holds a date, which only root can store.</source>
        <translation>Le paramètre «&#xa0;%1&#xa0;» contient une date, que seul root peut enregistrer.</translation>
    </message>
    <message>
        <source>--timeout needs a whole number of seconds, not &quot;%1&quot;.</source>
        <translation>--timeout demande un nombre entier de secondes, pas «&#xa0;%1&#xa0;».</translation>
    </message>
    <message>
        <source>KEYWORD</source>
        <translation>MOT-CLÉ</translation>
    </message>
    <message>
        <source>TYPE</source>
        <translation>TYPE</translation>
    </message>
    <message>
        <source>VALUE</source>
        <translation>VALEUR</translation>
    </message>
    <message>
        <source>No process of %1 has the signature &quot;%2&quot;.</source>
        <translation>Aucun processus de %1 n’a la signature «&#xa0;%2&#xa0;».</translation>
    </message>
    <message>
        <source>Process %1 has the event.</source>
        <translation>Le processus %1 a l’événement.</translation>
    </message>
    <message>
        <source>Process %1 has handled the event.</source>
        <translation>Le processus %1 a traité l’événement.</translation>
    </message>
    <message>
        <source>A schedule holds what a property list as text cannot carry.</source>
        <translation>Une planification contient ce qu’une liste de propriétés en texte ne peut pas porter.</translation>
    </message>
    <message>
        <source>What became of it cannot be told: %1.</source>
        <translation>On ne peut pas dire ce qu’il en a été&#xa0;: %1.</translation>
    </message>
    <message>
        <source>%1 to %2</source>
        <translation>%1 à %2</translation>
    </message>
    <message>
        <source>postponed to %1</source>
        <translation>reportée à %1</translation>
    </message>
    <message numerus="yes">
        <source>%1 %n time(s)</source>
        <comment>missed; a number</comment>
        <translation>
            <numerusform>%1, %n fois</numerusform>
            <numerusform>%1, %n fois</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1 at least %n time(s)</source>
        <comment>missed; a number</comment>
        <translation>
            <numerusform>%1, au moins %n fois</numerusform>
            <numerusform>%1, au moins %n fois</numerusform>
        </translation>
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
        <source>exit %1</source>
        <translation>code de sortie %1</translation>
    </message>
    <message>
        <source>Nothing became of it yet.</source>
        <translation>Il n’en a encore rien été.</translation>
    </message>
    <message>
        <source>WHEN</source>
        <translation>QUAND</translation>
    </message>
    <message>
        <source>NAME</source>
        <translation>NOM</translation>
    </message>
    <message>
        <source>STATE</source>
        <translation>RÉSULTAT</translation>
    </message>
    <message>
        <source>BEGAN</source>
        <translation>DÉBUT</translation>
    </message>
    <message>
        <source>WHY</source>
        <translation>POURQUOI</translation>
    </message>
    <message>
        <source>IDENTIFIER</source>
        <translation>IDENTIFIANT</translation>
    </message>
    <message>
        <source>Root cannot be given up.</source>
        <translation>Impossible d’abandonner les droits de root.</translation>
    </message>
    <message>
        <source>Root cannot be taken back.</source>
        <translation>Impossible de reprendre les droits de root.</translation>
    </message>
    <message>
        <source>to come</source>
        <translation>à venir</translation>
    </message>
    <message>
        <source>to come, last %1</source>
        <translation>à venir, dernière %1</translation>
    </message>
    <message>
        <source>daemon</source>
        <translation>service</translation>
    </message>
    <message>
        <source>session</source>
        <translation>session</translation>
    </message>
    <message>
        <source>yes</source>
        <translation>oui</translation>
    </message>
    <message>
        <source>no</source>
        <translation>non</translation>
    </message>
    <message>
        <source>machine</source>
        <comment>a time zone</comment>
        <translation>machine</translation>
    </message>
    <message>
        <source>There are no schedules.</source>
        <translation>Il n’y a pas de planifications.</translation>
    </message>
    <message>
        <source>ENABLED</source>
        <translation>ACTIVÉE</translation>
    </message>
    <message>
        <source>DATE</source>
        <translation>DATE</translation>
    </message>
    <message>
        <source>TIME ZONE</source>
        <translation>FUSEAU HORAIRE</translation>
    </message>
    <message>
        <source>REPEATS</source>
        <translation>RÉPÉTITION</translation>
    </message>
    <message>
        <source>ACTION</source>
        <translation>ACTION</translation>
    </message>
    <message>
        <source>RUNS IN</source>
        <translation>AGIT DANS</translation>
    </message>
    <message>
        <source>OWNER</source>
        <translation>PROPRIÉTAIRE</translation>
    </message>
    <message>
        <source>What became of the schedules cannot be told: %1.</source>
        <translation>On ne peut pas dire ce que sont devenues les planifications&#xa0;: %1.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a number of lines.</source>
        <translation>«&#xa0;%1&#xa0;» n’est pas un nombre de lignes.</translation>
    </message>
    <message>
        <source>The log is no longer followed.</source>
        <translation>Le journal n’est plus suivi.</translation>
    </message>
    <message>
        <source>There is no log at %1.</source>
        <translation>Il n’y a pas de journal dans %1.</translation>
    </message>
    <message>
        <source>What was skipped or postponed is not taken into account: %1.</source>
        <translation>Ce qui a été omis ou reporté n’est pas pris en compte&#xa0;: %1.</translation>
    </message>
    <message>
        <source>woken, switched on</source>
        <translation>réveillée, allumée</translation>
    </message>
    <message>
        <source>switched on</source>
        <translation>allumée</translation>
    </message>
    <message>
        <source>woken</source>
        <translation>réveillée</translation>
    </message>
    <message>
        <source>%1, postponed from %2</source>
        <translation>%1, reportée de %2</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is disabled.</source>
        <translation>«&#xa0;%1&#xa0;» est désactivée.</translation>
    </message>
    <message>
        <source>Nothing comes.</source>
        <translation>Rien ne vient.</translation>
    </message>
    <message>
        <source>MACHINE IS</source>
        <translation>MACHINE</translation>
    </message>
    <message>
        <source>-n needs a whole number, 1 or more, not &quot;%1&quot;.</source>
        <translation>-n demande un nombre entier, 1 ou plus, pas «&#xa0;%1&#xa0;».</translation>
    </message>
    <message>
        <source>&quot;%1&quot; does not take place on %2; &quot;next&quot; shows when it does.</source>
        <translation>«&#xa0;%1&#xa0;» n’a pas lieu le %2&#xa0;; «&#xa0;next&#xa0;» affiche quand elle a lieu.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; takes place at %2, at %3 and so on that day: say at which of these times.</source>
        <translation>«&#xa0;%1&#xa0;» a lieu à %2, à %3 et ainsi de suite ce jour-là&#xa0;: dites à laquelle de ces heures.</translation>
    </message>
    <message>
        <source>--time-zone is that of a --date.</source>
        <translation>--time-zone est celui d’une --date.</translation>
    </message>
    <message>
        <source>What an action wrote cannot be told: %1.</source>
        <translation>On ne peut pas dire ce qu’une action a écrit&#xa0;: %1.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; was not performed then.</source>
        <translation>«&#xa0;%1&#xa0;» n’a pas été exécutée alors.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; was not performed yet.</source>
        <translation>«&#xa0;%1&#xa0;» n’a pas encore été exécutée.</translation>
    </message>
    <message>
        <source>%1 is not a dictionary.</source>
        <translation>%1 n’est pas un dictionnaire.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not of the type %2.</source>
        <translation>«&#xa0;%1&#xa0;» n’est pas du type %2.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not of the form KEY=VALUE.</source>
        <translation>«&#xa0;%1&#xa0;» n’a pas la forme KEY=VALUE.</translation>
    </message>
    <message>
        <source>--alert needs a whole number of seconds, 1 or more, not &quot;%1&quot;.</source>
        <translation>--alert demande un nombre entier de secondes, 1 ou plus, pas «&#xa0;%1&#xa0;».</translation>
    </message>
    <message>
        <source>An action runs in the daemon or in the session, not in both.</source>
        <translation>Une action s’exécute dans le service ou dans la session, pas dans les deux.</translation>
    </message>
    <message>
        <source>Say one of --in-daemon, --in-session and --in-default.</source>
        <translation>Dites --in-daemon, --in-session ou --in-default, une seule.</translation>
    </message>
    <message>
        <source>There is no parameter &quot;%1&quot;.</source>
        <translation>Il n’y a pas de paramètre «&#xa0;%1&#xa0;».</translation>
    </message>
    <message>
        <source>The program &quot;%1&quot; is not an absolute path.</source>
        <translation>Le programme «&#xa0;%1&#xa0;» n’est pas un chemin absolu.</translation>
    </message>
    <message>
        <source>--argument needs --program.</source>
        <translation>--argument demande --program.</translation>
    </message>
    <message>
        <source>A parameter holds what a property list cannot carry.</source>
        <translation>Un paramètre contient ce qu’une liste de propriétés ne peut pas porter.</translation>
    </message>
    <message>
        <source>--missed is skip, run-once, run-once=LIMIT, plug-in or bundle, not &quot;%1&quot;.</source>
        <translation>--missed est skip, run-once, run-once=LIMIT, plug-in ou bundle, pas «&#xa0;%1&#xa0;».</translation>
    </message>
    <message>
        <source>--overlap is of what repeats.</source>
        <translation>--overlap concerne ce qui se répète.</translation>
    </message>
    <message>
        <source>--overlap is skip or run, not &quot;%1&quot;.</source>
        <translation>--overlap est skip ou run, pas «&#xa0;%1&#xa0;».</translation>
    </message>
    <message>
        <source>--after is nothing, sleep or power-off, not &quot;%1&quot;.</source>
        <translation>--after est nothing, sleep ou power-off, pas «&#xa0;%1&#xa0;».</translation>
    </message>
    <message>
        <source>--after %1 comes only where the machine was woken or switched on for the action; that takes --wake or --power-on.</source>
        <translation>--after %1 ne vient que si la machine a été réveillée ou allumée pour l’action&#xa0;; cela demande --wake ou --power-on.</translation>
    </message>
    <message>
        <source>--after %1 would never come any more, since it follows a waking: say --after nothing, too.</source>
        <translation>--after %1 ne viendrait plus jamais, car il suit un réveil&#xa0;: dites aussi --after nothing.</translation>
    </message>
    <message>
        <source>not armed</source>
        <translation>pas armée</translation>
    </message>
    <message>
        <source>%1, for an event below</source>
        <translation>%1, pour un événement ci-dessous</translation>
    </message>
    <message>
        <source>%1, armed by another program</source>
        <translation>%1, armée par un autre programme</translation>
    </message>
    <message>
        <source>Clock:</source>
        <translation>Horloge&#xa0;:</translation>
    </message>
    <message>
        <source>Alarm:</source>
        <translation>Alarme&#xa0;:</translation>
    </message>
    <message>
        <source>none that could wake this machine</source>
        <translation>aucune qui puisse réveiller cette machine</translation>
    </message>
    <message>
        <source>No events are scheduled.</source>
        <translation>Aucun événement n’est prévu.</translation>
    </message>
    <message>
        <source>TIME</source>
        <translation>HEURE</translation>
    </message>
    <message>
        <source>This machine has no clock that could wake it.</source>
        <translation>Cette machine n’a pas d’horloge qui puisse la réveiller.</translation>
    </message>
    <message>
        <source>You may not set the machine&apos;s clock; try it as root.</source>
        <translation>Vous ne pouvez pas régler l’horloge de la machine&#xa0;; essayez en tant que root.</translation>
    </message>
    <message>
        <source>The alarm of %1 was armed for %2, read back, and set as it was.</source>
        <translation>L’alarme de %1 a été armée pour %2, relue et remise comme avant.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not test.</source>
        <translation>«&#xa0;%1&#xa0;» n’est pas test.</translation>
    </message>
    <message>
        <source>There is no login manager that could put this machine to sleep.</source>
        <translation>Il n’y a pas de gestionnaire de sessions qui puisse mettre cette machine en veille.</translation>
    </message>
    <message>
        <source>The machine does not let itself be put to sleep.</source>
        <translation>La machine ne se laisse pas mettre en veille.</translation>
    </message>
    <message>
        <source>The machine does not let you put it to sleep; try it as root.</source>
        <translation>La machine ne se laisse pas mettre en veille par vous&#xa0;; essayez en tant que root.</translation>
    </message>
    <message>
        <source>The machine goes to sleep.</source>
        <translation>La machine se met en veille.</translation>
    </message>
    <message>
        <source>It cannot repeat so: %1.</source>
        <translation>Elle ne peut pas se répéter ainsi&#xa0;: %1.</translation>
    </message>
    <message>
        <source>Every month from %1 on can be day %2 of those months that have one, --on %2, or the last of each, --on last.</source>
        <translation>Chaque mois à partir du %1 peut être le jour %2 des mois qui en ont un, --on %2, ou le dernier de chacun, --on last.</translation>
    </message>
    <message>
        <source>Every year from %1 on can be that day of leap years, %2, or the last of February, %3.</source>
        <translation>Chaque année à partir du %1 peut être ce jour des années bissextiles, %2, ou le dernier de février, %3.</translation>
    </message>
    <message>
        <source>The exception of %1 at %2 is gone: nothing takes place then any more.</source>
        <translation>L’exception du %1 à %2 disparaît&#xa0;: rien n’a plus lieu alors.</translation>
    </message>
    <message>
        <source>There is no exception on %1.</source>
        <translation>Il n’y a pas d’exception le %1.</translation>
    </message>
    <message>
        <source>Nothing takes place on %1 that could be left out.</source>
        <translation>Rien n’a lieu le %1 qui puisse être omis.</translation>
    </message>
    <message>
        <source>There can be at most %1 exceptions.</source>
        <translation>Il peut y avoir au plus %1 exceptions.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a machine such as root@example.org.</source>
        <translation>«&#xa0;%1&#xa0;» n’est pas une machine comme root@example.org.</translation>
    </message>
    <message>
        <source>ssh cannot be run: %1.</source>
        <translation>ssh ne peut pas être exécuté&#xa0;: %1.</translation>
    </message>
    <message>
        <source>%1 cannot be reached by ssh.</source>
        <translation>%1 est injoignable par ssh.</translation>
    </message>
    <message>
        <source>--at is the time of day of what takes place on some days, and not of what goes on around the clock.</source>
        <translation>--at est l’heure de ce qui a lieu certains jours, et non de ce qui se poursuit jour et nuit.</translation>
    </message>
    <message>
        <source>--%1 is there twice.</source>
        <translation>--%1 est là deux fois.</translation>
    </message>
    <message>
        <source>Say --every or --rule, not both.</source>
        <translation>Dites --every ou --rule, pas les deux.</translation>
    </message>
    <message>
        <source>Say how often, by --every or --rule.</source>
        <translation>Dites la fréquence, par --every ou --rule.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a rule such as FREQ=WEEKLY;BYDAY=MO.</source>
        <translation>«&#xa0;%1&#xa0;» n’est pas une règle comme FREQ=WEEKLY;BYDAY=MO.</translation>
    </message>
    <message>
        <source>The rule says itself at what times; leave --at or its BYHOUR, BYMINUTE and BYSECOND out.</source>
        <translation>La règle dit elle-même à quelles heures&#xa0;; omettez --at, ou ses BYHOUR, BYMINUTE et BYSECOND.</translation>
    </message>
    <message>
        <source>The rule says itself when it ends; leave --until and --count or its UNTIL and COUNT out.</source>
        <translation>La règle dit elle-même quand elle finit&#xa0;; omettez --until et --count, ou ses UNTIL et COUNT.</translation>
    </message>
    <message>
        <source>--on names days of the month and needs --every month.</source>
        <translation>--on nomme des jours du mois et demande --every month.</translation>
    </message>
    <message>
        <source>Months without a day %1 are left out; --on last is the last day of each month.</source>
        <translation>Les mois sans jour %1 sont omis&#xa0;; --on last est le dernier jour de chaque mois.</translation>
    </message>
    <message>
        <source>Say at what time, by --at.</source>
        <translation>Dites à quelle heure, par --at.</translation>
    </message>
    <message>
        <source>--count needs a whole number, 1 or more, not &quot;%1&quot;.</source>
        <translation>--count demande un nombre entier, 1 ou plus, pas «&#xa0;%1&#xa0;».</translation>
    </message>
    <message>
        <source>It is to end before it begins.</source>
        <translation>Elle finirait avant de commencer.</translation>
    </message>
    <message>
        <source>%1 (%2 in %3)</source>
        <translation>%1 (%2 à %3)</translation>
    </message>
    <message>
        <source>%1, for %2 (%3).</source>
        <translation>%1, pour %2 (%3).</translation>
    </message>
    <message>
        <source>%1: %2%3.</source>
        <comment>what was done, a rule in words, its time zone</comment>
        <translation>%1&#xa0;: %2%3.</translation>
    </message>
    <message>
        <source>Next:</source>
        <translation>Prochaines dates&#xa0;:</translation>
    </message>
    <message>
        <source>It is disabled: it does not come due before it is enabled.</source>
        <translation>Elle est désactivée&#xa0;: elle n’arrive pas à échéance avant d’être activée.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is neither the name of a bundle nor an absolute path.</source>
        <translation>«&#xa0;%1&#xa0;» n’est ni le nom d’un module ni un chemin absolu.</translation>
    </message>
    <message>
        <source>There is no bundle at %1.</source>
        <translation>Il n’y a pas de module à %1.</translation>
    </message>
    <message>
        <source>With --time-zone say --date, too: in another zone the same time is another moment.</source>
        <translation>Avec --time-zone, dites aussi --date&#xa0;: dans un autre fuseau, la même heure est un autre moment.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is over: say --date, too.</source>
        <translation>«&#xa0;%1&#xa0;» est terminée&#xa0;: dites aussi --date.</translation>
    </message>
    <message>
        <source>With these exceptions nothing is left of it.</source>
        <translation>Avec ces exceptions, il n’en reste rien.</translation>
    </message>
    <message>
        <source>A schedule needs a name.</source>
        <translation>Une planification a besoin d’un nom.</translation>
    </message>
    <message>
        <source>The name holds control characters.</source>
        <translation>Le nom contient des caractères de contrôle.</translation>
    </message>
    <message>
        <source>Say what is to be done, by --bundle or by --program.</source>
        <translation>Dites ce qu’il faut faire, par --bundle ou par --program.</translation>
    </message>
    <message>
        <source>Nothing could come of it: %1. With --anyway it is done all the same.</source>
        <translation>Rien ne pourrait en résulter&#xa0;: %1. Avec --anyway, c’est fait malgré tout.</translation>
    </message>
    <message>
        <source>--date and --in are for what takes place once; what repeats begins by --from.</source>
        <translation>--date et --in sont pour ce qui a lieu une fois&#xa0;; ce qui se répète commence par --from.</translation>
    </message>
    <message>
        <source>It takes place once, or it repeats: --once goes with --date and --in alone.</source>
        <translation>Elle a lieu une fois, ou elle se répète&#xa0;: --once ne va qu’avec --date et --in.</translation>
    </message>
    <message>
        <source>--%1 is of what repeats.</source>
        <translation>--%1 concerne ce qui se répète.</translation>
    </message>
    <message>
        <source>Say when, by --date or --in, or how often, by --every or --rule.</source>
        <translation>Dites quand, par --date ou --in, ou la fréquence, par --every ou --rule.</translation>
    </message>
    <message>
        <source>a time of %1 cannot be spread over midnight</source>
        <translation>l’heure %1 ne peut pas être étalée au-delà de minuit</translation>
    </message>
    <message>
        <source>%1, so that they cannot be spread</source>
        <translation>%1, si bien qu’elles ne peuvent pas être étalées</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no time to spread starts over, such as 30m or 1h.</source>
        <translation>«&#xa0;%1&#xa0;» n’est pas une durée sur laquelle étaler les départs, comme 30m ou 1h.</translation>
    </message>
    <message>
        <source>this machine has no id (/etc/machine-id) by which starts could be spread</source>
        <translation>cette machine n’a pas d’identifiant (/etc/machine-id) d’après lequel étaler les départs</translation>
    </message>
    <message>
        <source>Daemon:</source>
        <translation>Service&#xa0;:</translation>
    </message>
    <message>
        <source>Console:</source>
        <translation>Console&#xa0;:</translation>
    </message>
    <message>
        <source>Agents:</source>
        <translation>Agents&#xa0;:</translation>
    </message>
    <message>
        <source>Wake clock:</source>
        <translation>Horloge de réveil&#xa0;:</translation>
    </message>
    <message>
        <source>Schedules:</source>
        <translation>Planifications&#xa0;:</translation>
    </message>
    <message>
        <source>nobody is there</source>
        <translation>personne n’est là</translation>
    </message>
    <message>
        <source>%1, whose agent is alive</source>
        <translation>%1, dont l’agent est présent</translation>
    </message>
    <message>
        <source>%1, whose agent is not there</source>
        <translation>%1, dont l’agent est absent</translation>
    </message>
    <message>
        <source>none</source>
        <comment>agents</comment>
        <translation>aucun</translation>
    </message>
    <message>
        <source>%1, armed for %2</source>
        <translation>%1, armée pour %2</translation>
    </message>
    <message>
        <source>%1, armed for %2 by another program</source>
        <translation>%1, armée pour %2 par un autre programme</translation>
    </message>
    <message>
        <source>%1, not armed</source>
        <translation>%1, pas armée</translation>
    </message>
    <message>
        <source>synchronised, %1</source>
        <translation>synchronisée, %1</translation>
    </message>
    <message>
        <source>not synchronised, %1</source>
        <translation>pas synchronisée, %1</translation>
    </message>
    <message>
        <source>%1, %2 of them enabled</source>
        <translation>%1, dont %2 activées</translation>
    </message>
    <message numerus="yes">
        <source>%1; %n entries are none</source>
        <comment>entries of the store</comment>
        <translation>
            <numerusform>%1&#xa0;; %n entrée n’en est pas une</numerusform>
            <numerusform>%1&#xa0;; %n entrées n’en sont pas</numerusform>
        </translation>
    </message>
    <message>
        <source>wakes the machine</source>
        <translation>réveille la machine</translation>
    </message>
    <message>
        <source>Next</source>
        <translation>À venir</translation>
    </message>
    <message>
        <source>What failed cannot be told: %1.</source>
        <translation>On ne peut pas dire ce qui a échoué&#xa0;: %1.</translation>
    </message>
    <message>
        <source>Nothing failed of late.</source>
        <translation>Rien n’a échoué ces derniers temps.</translation>
    </message>
    <message>
        <source>Last failures</source>
        <translation>Derniers échecs</translation>
    </message>
    <message>
        <source>is alive</source>
        <translation>présent</translation>
    </message>
    <message>
        <source>is not there</source>
        <translation>absent</translation>
    </message>
    <message>
        <source>You may not change %1; try it as root.</source>
        <translation>Vous ne pouvez pas modifier %1&#xa0;; essayez en tant que root.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is enabled.</source>
        <translation>«&#xa0;%1&#xa0;» est activée.</translation>
    </message>
    <message>
        <source>You may not read %1.</source>
        <translation>Vous ne pouvez pas lire %1.</translation>
    </message>
    <message>
        <source>There is no schedule &quot;%1&quot;.</source>
        <translation>Il n’y a pas de planification «&#xa0;%1&#xa0;».</translation>
    </message>
    <message numerus="yes">
        <source>%n schedule(s) are named &quot;%1&quot;; use an identifier, as &quot;list&quot; shows them.</source>
        <translation>
            <numerusform>%n planification se nomme «&#xa0;%1&#xa0;»&#xa0;; utilisez un identifiant, comme «&#xa0;list&#xa0;» les affiche.</numerusform>
            <numerusform>%n planifications se nomment «&#xa0;%1&#xa0;»&#xa0;; utilisez un identifiant, comme «&#xa0;list&#xa0;» les affiche.</numerusform>
        </translation>
    </message>
    <message>
        <source>&quot;%1&quot; is removed.</source>
        <translation>«&#xa0;%1&#xa0;» est supprimée.</translation>
    </message>
    <message>
        <source>it is larger than 16 MiB</source>
        <translation>il est plus grand que 16 Mio</translation>
    </message>
    <message>
        <source>it is no JSON: %1, at byte %2</source>
        <translation>ce n’est pas du JSON&#xa0;: %1, à l’octet %2</translation>
    </message>
    <message>
        <source>not known</source>
        <translation>inconnue</translation>
    </message>
    <message>
        <source>%1, up to date</source>
        <comment>a version</comment>
        <translation>%1, à jour</translation>
    </message>
    <message>
        <source>the server gives none</source>
        <translation>le serveur n’en donne pas</translation>
    </message>
    <message>
        <source>not offered, since it is not https: %1</source>
        <translation>pas proposée, car elle n’est pas https&#xa0;: %1</translation>
    </message>
    <message>
        <source>Installed version:</source>
        <translation>Version installée&#xa0;:</translation>
    </message>
    <message>
        <source>Latest version:</source>
        <translation>Dernière version&#xa0;:</translation>
    </message>
    <message>
        <source>Address:</source>
        <translation>Adresse&#xa0;:</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not check.</source>
        <translation>«&#xa0;%1&#xa0;» n’est pas check.</translation>
    </message>
    <message>
        <source>This system was built without the update check.</source>
        <translation>Ce système a été construit sans la recherche de mises à jour.</translation>
    </message>
    <message>
        <source>%1 gave no answer that can be used; the log says why.</source>
        <translation>%1 n’a pas donné de réponse utilisable&#xa0;; le journal dit pourquoi.</translation>
    </message>
    <message>
        <source>There is a newer version.</source>
        <translation>Il existe une version plus récente.</translation>
    </message>
    <message>
        <source>there is no word &quot;%1&quot;</source>
        <translation>il n’y a pas de mot «&#xa0;%1&#xa0;»</translation>
    </message>
    <message>
        <source>&quot;actsIn&quot; is neither session nor daemon</source>
        <translation>«&#xa0;actsIn&#xa0;» n’est ni session ni daemon</translation>
    </message>
    <message>
        <source>&quot;repeats&quot; has no word &quot;%1&quot;</source>
        <translation>«&#xa0;repeats&#xa0;» n’a pas de mot «&#xa0;%1&#xa0;»</translation>
    </message>
    <message>
        <source>nothing comes of its rule</source>
        <translation>rien ne résulte de sa règle</translation>
    </message>
    <message>
        <source>say at what time, by &quot;at&quot;</source>
        <translation>dites à quelle heure, par «&#xa0;at&#xa0;»</translation>
    </message>
    <message>
        <source>&quot;date&quot; is not a date such as &quot;2026-03-14 06:55&quot;</source>
        <translation>«&#xa0;date&#xa0;» n’est pas une date comme «&#xa0;2026-03-14 06:55&#xa0;»</translation>
    </message>
    <message>
        <source>it has no list of schedules (&quot;schedules&quot;, or &quot;Schedule Array&quot; of a store)</source>
        <translation>il n’a pas de liste de planifications («&#xa0;schedules&#xa0;», ou «&#xa0;Schedule Array&#xa0;» d’un magasin)</translation>
    </message>
    <message>
        <source>schedule %1, &quot;%2&quot;, is none: %3</source>
        <translation>la planification %1, «&#xa0;%2&#xa0;», n’en est pas une&#xa0;: %3</translation>
    </message>
    <message>
        <source>schedule %1, &quot;%2&quot;, is there twice</source>
        <translation>la planification %1, «&#xa0;%2&#xa0;», est là deux fois</translation>
    </message>
    <message>
        <source>it is empty</source>
        <translation>il est vide</translation>
    </message>
    <message>
        <source>it has more than one document</source>
        <translation>il a plus d’un document</translation>
    </message>
    <message>
        <source>it cannot be read</source>
        <translation>il ne peut pas être lu</translation>
    </message>
    <message>
        <source>%1, in line %2</source>
        <translation>%1, à la ligne %2</translation>
    </message>
    <message>
        <source>it is nested too deeply</source>
        <translation>il est imbriqué trop profondément</translation>
    </message>
    <message>
        <source>it has too many values</source>
        <translation>il a trop de valeurs</translation>
    </message>
    <message>
        <source>aliases are not understood</source>
        <translation>les alias ne sont pas compris</translation>
    </message>
    <message>
        <source>a value is missing</source>
        <translation>une valeur manque</translation>
    </message>
    <message>
        <source>a key is not a text</source>
        <translation>une clé n’est pas un texte</translation>
    </message>
    <message>
        <source>a key stands there twice</source>
        <translation>une clé est là deux fois</translation>
    </message>
    <message>
        <source>tags are not understood</source>
        <translation>les étiquettes ne sont pas comprises</translation>
    </message>
    <message>
        <source>Say --%1 or --%2, not both.</source>
        <translation>Dites --%1 ou --%2, pas les deux.</translation>
    </message>
    <message>
        <source>Send an Apple event to the process with that signature, and show the reply; each of the three is four characters.</source>
        <translation>Envoyer un événement Apple au processus de cette signature et afficher la réponse&#xa0;; les trois ont quatre caractères.</translation>
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
        <translation>Option inconnue&#xa0;: «&#xa0;%1&#xa0;».</translation>
    </message>
    <message>
        <source>Unknown options: %1.</source>
        <translation>Options inconnues&#xa0;: %1.</translation>
    </message>
    <message>
        <source>Missing value after &apos;%1&apos;.</source>
        <translation>Il manque une valeur après «&#xa0;%1&#xa0;».</translation>
    </message>
    <message>
        <source>Unexpected value after &apos;%1&apos;.</source>
        <translation>Valeur inattendue après «&#xa0;%1&#xa0;».</translation>
    </message>
</context>
</TS>
