<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="es" sourcelanguage="en">
<context>
    <name>AdminText</name>
    <message>
        <source>Work on the system below that folder instead of /.</source>
        <translation>Trabajar con el sistema que está bajo esa carpeta en vez de /.</translation>
    </message>
    <message>
        <source>Show this help and end.</source>
        <translation>Mostrar esta ayuda y terminar.</translation>
    </message>
    <message>
        <source>done</source>
        <translation>hecho</translation>
    </message>
    <message>
        <source>it could not be done (not found, not reachable, damaged)</source>
        <translation>no se pudo hacer (no encontrado, no accesible, dañado)</translation>
    </message>
    <message>
        <source>it is alive</source>
        <translation>está en marcha</translation>
    </message>
    <message>
        <source>it is not</source>
        <translation>no está en marcha</translation>
    </message>
    <message>
        <source>nothing is wrong</source>
        <translation>no hay nada mal</translation>
    </message>
    <message>
        <source>something is wrong</source>
        <translation>hay algo mal</translation>
    </message>
    <message>
        <source>nothing differed</source>
        <translation>no había diferencias</translation>
    </message>
    <message>
        <source>up to date</source>
        <translation>al día</translation>
    </message>
    <message>
        <source>the command line is wrong</source>
        <translation>la línea de órdenes es incorrecta</translation>
    </message>
    <message>
        <source>not permitted</source>
        <translation>no permitido</translation>
    </message>
    <message>
        <source>schedules were changed, or would be</source>
        <translation>se cambiaron programaciones, o se cambiarían</translation>
    </message>
    <message>
        <source>there is a newer version</source>
        <translation>hay una versión más reciente</translation>
    </message>
    <message>
        <source>no answer</source>
        <translation>sin respuesta</translation>
    </message>
    <message>
        <source>Run the system below the folder &lt;DIR&gt; instead of /.</source>
        <translation>Trabajar con el sistema que está bajo la carpeta &lt;DIR&gt; en vez de /.</translation>
    </message>
    <message>
        <source>Show the version and end.</source>
        <translation>Mostrar la versión y terminar.</translation>
    </message>
    <message>
        <source>Usage: %1 [options] COMMAND [ARGUMENTS]</source>
        <translation>Uso: %1 [opciones] ORDEN [ARGUMENTOS]</translation>
    </message>
    <message>
        <source>Shows and changes the schedules, asks whether the system&apos;s processes are alive, shows the log.</source>
        <translation>Muestra y cambia las programaciones, pregunta si los procesos del sistema están en marcha, muestra el registro.</translation>
    </message>
    <message>
        <source>Commands:</source>
        <translation>Órdenes:</translation>
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
        <translation>SCHEDULE es un identificador o un nombre que solo tiene una programación. USER es un nombre o un número.
DATE es lo que se suele escribir: «06:55», «tomorrow 7:00», «fri 22:00», «22.12. 6:30», «2026-03-14 06:55», +5m.
«ORDEN --help» muestra solo las opciones de una orden.

Código de salida: 0 hecho (ping, status: está en marcha; doctor: no hay nada mal; apply: no había diferencias);
1 no se pudo hacer (no encontrado, no accesible, dañado; doctor: hay algo mal);
2 la línea de órdenes es incorrecta; 3 no permitido.
apply: 4 se cambiaron programaciones, o se cambiarían.
update check: 0 al día; 4 hay una versión más reciente; 5 sin respuesta.</translation>
    </message>
    <message>
        <source>Options:</source>
        <translation>Opciones:</translation>
    </message>
    <message>
        <source>Arguments:</source>
        <translation>Argumentos:</translation>
    </message>
    <message>
        <source>What to do, see above.</source>
        <translation>Qué hay que hacer, véase arriba.</translation>
    </message>
    <message>
        <source>Usage:</source>
        <translation>Uso:</translation>
    </message>
    <message>
        <source>Example:</source>
        <translation>Ejemplo:</translation>
    </message>
    <message>
        <source>Exit status:</source>
        <translation>Código de salida:</translation>
    </message>
    <message>
        <source>A command is missing; --help shows them.</source>
        <translation>Falta una orden; --help las muestra.</translation>
    </message>
    <message>
        <source>There is no command &quot;%1&quot;; --help shows those that there are.</source>
        <translation>No hay ninguna orden «%1»; --help muestra las que hay.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; needs an argument; &quot;%1 --help&quot; shows which.</source>
        <translation>«%1» necesita un argumento; «%1 --help» muestra cuál.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; takes no argument &quot;%2&quot;.</source>
        <translation>«%1» no acepta el argumento «%2».</translation>
    </message>
    <message>
        <source>&quot;%1&quot; takes no option %2.</source>
        <translation>«%1» no acepta la opción %2.</translation>
    </message>
    <message>
        <source>Show on one screen how the system is: daemon, agents, clock, what comes, what failed.</source>
        <translation>Mostrar en una pantalla cómo está el sistema: servicio, agentes, reloj, lo que viene, lo que falló.</translation>
    </message>
    <message>
        <source>Look at all that can be wrong with the installation, and say what helps.</source>
        <translation>Revisar todo lo que puede estar mal en la instalación y decir qué ayuda.</translation>
    </message>
    <message>
        <source>Show all schedules, and what became of those that are over.</source>
        <translation>Mostrar todas las programaciones y qué fue de las que terminaron.</translation>
    </message>
    <message>
        <source>Add a schedule: what is to be done (--bundle or --program) and when (--date or --in; --every or --rule, with --at).</source>
        <translation>Añadir una programación: qué hay que hacer (--bundle o --program) y cuándo (--date o --in; --every o --rule, con --at).</translation>
    </message>
    <message>
        <source>Change what the options name, as for &quot;add&quot;; the rest stays.</source>
        <translation>Cambiar lo que nombran las opciones, como en «add»; lo demás queda.</translation>
    </message>
    <message>
        <source>Remove a schedule.</source>
        <translation>Quitar una programación.</translation>
    </message>
    <message>
        <source>Remove the schedules that are over, but for those that stay.</source>
        <translation>Quitar las programaciones terminadas, salvo las que se quedan.</translation>
    </message>
    <message>
        <source>Let a schedule come due.</source>
        <translation>Dejar que una programación llegue a su hora.</translation>
    </message>
    <message>
        <source>Keep a schedule, but never let it come due.</source>
        <translation>Conservar una programación sin dejar que llegue a su hora.</translation>
    </message>
    <message>
        <source>Show what comes, and what wakes the machine.</source>
        <translation>Mostrar lo que viene y lo que despierta el equipo.</translation>
    </message>
    <message>
        <source>Show what became of it, newest first.</source>
        <translation>Mostrar qué fue de ello, lo más reciente primero.</translation>
    </message>
    <message>
        <source>Leave out the next time, or that at --date.</source>
        <translation>Omitir la próxima vez, o la de --date.</translation>
    </message>
    <message>
        <source>Perform it so much later (90, 10m, 1h): the next time, or that at --date.</source>
        <translation>Realizarla tanto más tarde (90, 10m, 1h): la próxima vez, o la de --date.</translation>
    </message>
    <message>
        <source>Have the daemon perform a schedule&apos;s action now.</source>
        <translation>Hacer que el servicio realice ahora la acción de una programación.</translation>
    </message>
    <message>
        <source>Ask whether the daemon, a user&apos;s agent or his configuration application is alive; yours without USER.</source>
        <translation>Preguntar si el servicio, el agente de un usuario o su aplicación está en marcha; los suyos sin USER.</translation>
    </message>
    <message>
        <source>Show the last lines of the log.</source>
        <translation>Mostrar las últimas líneas del registro.</translation>
    </message>
    <message>
        <source>Show what the schedule&apos;s action wrote last, when it was performed the last time, or at --date.</source>
        <translation>Mostrar lo que escribió la acción de la programación la última vez, o en --date.</translation>
    </message>
    <message>
        <source>Show the clock that can wake the machine, its alarm, and the scheduled events; or arm the alarm, read it back, set it as it was.</source>
        <translation>Mostrar el reloj que puede despertar el equipo, su alarma y los eventos previstos; o poner la alarma, leerla y dejarla como estaba.</translation>
    </message>
    <message>
        <source>Put the machine to sleep now.</source>
        <translation>Suspender el equipo ahora.</translation>
    </message>
    <message>
        <source>Write all schedules, or one, to the standard output: a property list, which &quot;apply&quot; reads, or with --ics a calendar.</source>
        <translation>Escribir todas las programaciones, o una, en la salida estándar: una lista de propiedades, que lee «apply», o con --ics un calendario.</translation>
    </message>
    <message>
        <source>Have exactly those schedules that a property list, JSON or YAML file says; &quot;-&quot; is the standard input.</source>
        <translation>Tener exactamente las programaciones que dice un archivo (lista de propiedades, JSON o YAML); «-» es la entrada estándar.</translation>
    </message>
    <message>
        <source>Ask the update server whether there is a newer version.</source>
        <translation>Preguntar al servidor de actualizaciones si hay una versión más reciente.</translation>
    </message>
    <message>
        <source>Print how the last word may go on, for shells.</source>
        <translation>Indicar a los intérpretes cómo puede seguir la última palabra.</translation>
    </message>
    <message>
        <source>Show help and end.</source>
        <translation>Mostrar la ayuda y terminar.</translation>
    </message>
    <message>
        <source>Work below a folder.</source>
        <translation>Trabajar bajo una carpeta.</translation>
    </message>
    <message>
        <source>The command failed: %1</source>
        <translation>La orden falló: %1</translation>
    </message>
    <message>
        <source>answer in JSON, one object on a line.</source>
        <translation>responder en JSON, un objeto por línea.</translation>
    </message>
    <message>
        <source>the plug-in bundle, a path or the name of an installed one.</source>
        <translation>el paquete de la acción, una ruta o el nombre de uno instalado.</translation>
    </message>
    <message>
        <source>run this program (an absolute path), with the bundle &quot;Command&quot;.</source>
        <translation>ejecutar este programa (una ruta absoluta), con el paquete «Command».</translation>
    </message>
    <message>
        <source>an argument of the program; repeat it for more.</source>
        <translation>un argumento del programa; repítala para más.</translation>
    </message>
    <message>
        <source>when it takes place once, as &quot;2026-03-14 06:55&quot; or &quot;tomorrow 7:00&quot;.</source>
        <translation>cuándo tiene lugar una vez, como «2026-03-14 06:55» o «tomorrow 7:00».</translation>
    </message>
    <message>
        <source>of which time; the latest without it.</source>
        <translation>de qué vez; sin ella, de la última.</translation>
    </message>
    <message>
        <source>of which time; the next without it.</source>
        <translation>qué vez; sin ella, la próxima.</translation>
    </message>
    <message>
        <source>the time zone of what is told, as &quot;Europe/Berlin&quot;; the machine&apos;s without it, and what repeats goes with it wherever that goes. &quot;machine&quot; is that again.</source>
        <translation>la zona horaria de lo que se dice, como «Europe/Berlin»; sin ella la del equipo, y lo que se repite la sigue vaya donde vaya. «machine» es de nuevo esa.</translation>
    </message>
    <message>
        <source>the time zone of --date, as &quot;Europe/Berlin&quot;; the schedule&apos;s without it.</source>
        <translation>la zona horaria de --date, como «Europe/Berlin»; sin ella, la de la programación.</translation>
    </message>
    <message>
        <source>when, so many seconds from now (90, 5m, 1h).</source>
        <translation>cuándo, tantos segundos desde ahora (90, 5m, 1h).</translation>
    </message>
    <message>
        <source>how often: day, weekday, week, month, year, days such as monday,thursday, or a distance such as 15m or 2h.</source>
        <translation>con qué frecuencia: day, weekday, week, month, year, días como monday,thursday, o un intervalo como 15m o 2h.</translation>
    </message>
    <message>
        <source>at what time of those days, as 22:00; repeat it for more.</source>
        <translation>a qué hora de esos días, como 22:00; repítala para más.</translation>
    </message>
    <message>
        <source>on which days of every month, as 1,15,last.</source>
        <translation>en qué días de cada mes, como 1,15,last.</translation>
    </message>
    <message>
        <source>how often, as a rule of RFC 5545: FREQ=WEEKLY;BYDAY=MO.</source>
        <translation>con qué frecuencia, como regla de RFC 5545: FREQ=WEEKLY;BYDAY=MO.</translation>
    </message>
    <message>
        <source>repeat it from then on, now without it.</source>
        <translation>repetir desde entonces, sin ella desde ahora.</translation>
    </message>
    <message>
        <source>repeat it up to then, that day included.</source>
        <translation>repetir hasta entonces, ese día incluido.</translation>
    </message>
    <message>
        <source>show what comes up to then, that day included.</source>
        <translation>mostrar lo que viene hasta entonces, ese día incluido.</translation>
    </message>
    <message>
        <source>repeat it so many times.</source>
        <translation>repetir tantas veces.</translation>
    </message>
    <message>
        <source>not on that day, or at that date; repeat it for more.</source>
        <translation>no ese día, o no en esa fecha; repítala para más.</translation>
    </message>
    <message>
        <source>no exception on that day, or at that date; repeat it for more.</source>
        <translation>ninguna excepción ese día, o en esa fecha; repítala para más.</translation>
    </message>
    <message>
        <source>repeat it without an end.</source>
        <translation>repetir sin fin.</translation>
    </message>
    <message>
        <source>repeat it no more: the next time is the last one, or --date is.</source>
        <translation>no repetir más: la próxima vez es la última, o lo es --date.</translation>
    </message>
    <message>
        <source>what becomes of it when its time passed while the machine was off or asleep: skip, run-once (of all that were missed the latest), run-once=LIMIT (no older than 90, 10m, 6h, 2d), or plug-in. bundle: what the bundle says, as without it.</source>
        <translation>qué pasa si su hora llegó con el equipo apagado o suspendido: skip, run-once (de todas las perdidas, la última), run-once=LIMIT (no más antigua que 90, 10m, 6h, 2d) o plug-in. bundle: lo que diga el paquete, como sin ella.</translation>
    </message>
    <message>
        <source>whether it is performed while the time before still goes on: skip or run.</source>
        <translation>si se realiza mientras la vez anterior aún sigue: skip o run.</translation>
    </message>
    <message>
        <source>what the machine does afterwards when it was woken or switched on for it and nobody uses it: nothing, sleep or power-off.</source>
        <translation>qué hace el equipo después, si se despertó o encendió para ello y nadie lo usa: nothing, sleep o power-off.</translation>
    </message>
    <message>
        <source>another name.</source>
        <translation>otro nombre.</translation>
    </message>
    <message>
        <source>a parameter of the action; repeat it for more. &quot;true&quot;, &quot;false&quot; and numbers are taken as such; KEY:string=VALUE, :integer=, :real= and :boolean= name the type.</source>
        <translation>un parámetro de la acción; repítala para más. «true», «false» y los números se toman como tales; KEY:string=VALUE, :integer=, :real= y :boolean= nombran el tipo.</translation>
    </message>
    <message>
        <source>a parameter of the event, whose KEY is four characters; repeat it for more. &quot;true&quot;, &quot;false&quot; and numbers are taken as such; KEY:string=VALUE, :integer=, :real= and :boolean= name the type.</source>
        <translation>un parámetro del evento, cuyo KEY tiene cuatro caracteres; repítala para más. «true», «false» y los números se toman como tales; KEY:string=VALUE, :integer=, :real= y :boolean= nombran el tipo.</translation>
    </message>
    <message>
        <source>parameters from a property list.</source>
        <translation>parámetros de una lista de propiedades.</translation>
    </message>
    <message>
        <source>without that parameter; repeat it for more.</source>
        <translation>sin ese parámetro; repítala para más.</translation>
    </message>
    <message>
        <source>alert the user so many seconds before, with a button to cancel.</source>
        <translation>avisar al usuario tantos segundos antes, con un botón para cancelar.</translation>
    </message>
    <message>
        <source>without the alert.</source>
        <translation>sin el aviso.</translation>
    </message>
    <message>
        <source>act in the daemon.</source>
        <translation>actuar en el servicio.</translation>
    </message>
    <message>
        <source>act in the user&apos;s session.</source>
        <translation>actuar en la sesión del usuario.</translation>
    </message>
    <message>
        <source>act where the bundle says.</source>
        <translation>actuar donde diga el paquete.</translation>
    </message>
    <message>
        <source>wake the machine for it, a minute ahead.</source>
        <translation>despertar el equipo para ello, un minuto antes.</translation>
    </message>
    <message>
        <source>do not wake the machine for it.</source>
        <translation>no despertar el equipo para ello.</translation>
    </message>
    <message>
        <source>switch the machine on for it, three minutes ahead.</source>
        <translation>encender el equipo para ello, tres minutos antes.</translation>
    </message>
    <message>
        <source>do not switch the machine on for it.</source>
        <translation>no encender el equipo para ello.</translation>
    </message>
    <message>
        <source>tell the user at the console when it fails or is not performed.</source>
        <translation>decir al usuario de la consola si falla o no se realiza.</translation>
    </message>
    <message>
        <source>do not tell the user of failures.</source>
        <translation>no decir al usuario nada de los fallos.</translation>
    </message>
    <message>
        <source>the schedule is not to come due before it is enabled.</source>
        <translation>la programación no llega a su hora antes de activarse.</translation>
    </message>
    <message>
        <source>let it come due.</source>
        <translation>dejar que llegue a su hora.</translation>
    </message>
    <message>
        <source>also what nothing could come of.</source>
        <translation>también aquello de lo que nada puede resultar.</translation>
    </message>
    <message>
        <source>the schedule is not removed when it is over, but by &quot;remove&quot;.</source>
        <translation>la programación terminada solo se quita con «remove».</translation>
    </message>
    <message>
        <source>the schedule is removed some time after it is over.</source>
        <translation>la programación se quita algún tiempo después de terminar.</translation>
    </message>
    <message>
        <source>whose schedule it is; yours without it.</source>
        <translation>de quién es la programación; sin ella, suya.</translation>
    </message>
    <message>
        <source>how many to show, 10 without it.</source>
        <translation>cuántas se muestran, 10 sin ella.</translation>
    </message>
    <message>
        <source>how many to show, 20 without it.</source>
        <translation>cuántas se muestran, 20 sin ella.</translation>
    </message>
    <message>
        <source>how many lines to show first, 20 without it.</source>
        <translation>cuántas líneas se muestran primero, 20 sin ella.</translation>
    </message>
    <message>
        <source>go on showing lines as they come.</source>
        <translation>seguir mostrando líneas según llegan.</translation>
    </message>
    <message>
        <source>whose process is to have it; yours without it.</source>
        <translation>de quién es el proceso que debe recibirlo; sin ella, suyo.</translation>
    </message>
    <message>
        <source>how long to wait for the reply, 60 without it.</source>
        <translation>cuánto se espera la respuesta, 60 sin ella.</translation>
    </message>
    <message>
        <source>do not wait for a reply.</source>
        <translation>no esperar respuesta.</translation>
    </message>
    <message>
        <source>as a calendar (iCalendar, RFC 5545).</source>
        <translation>como calendario (iCalendar, RFC 5545).</translation>
    </message>
    <message>
        <source>change nothing, and say what would be changed.</source>
        <translation>no cambiar nada y decir qué se cambiaría.</translation>
    </message>
    <message>
        <source>begin later by a time of up to so much (30m, 1h), which is another one on every machine and always the same on this one.</source>
        <translation>empezar hasta tanto más tarde (30m, 1h): un tiempo distinto en cada equipo y siempre el mismo en este.</translation>
    </message>
    <message>
        <source>run the command on that machine, over ssh.</source>
        <translation>ejecutar la orden en ese equipo, por ssh.</translation>
    </message>
    <message>
        <source>The output cannot be written.</source>
        <translation>No se puede escribir la salida.</translation>
    </message>
    <message>
        <source>It cannot be spread: %1.</source>
        <translation>No se puede repartir: %1.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is added as %2</source>
        <translation>«%1» se ha añadido como %2</translation>
    </message>
    <message>
        <source>The standard input cannot be read.</source>
        <translation>No se puede leer la entrada estándar.</translation>
    </message>
    <message>
        <source>%1 cannot be read: %2.</source>
        <translation>No se puede leer %1: %2.</translation>
    </message>
    <message>
        <source>Nothing can be spread: %1.</source>
        <translation>No se puede repartir nada: %1.</translation>
    </message>
    <message>
        <source>%1 is not understood: %2.</source>
        <translation>No se entiende %1: %2.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; cannot be spread: %2.</source>
        <translation>No se puede repartir «%1»: %2.</translation>
    </message>
    <message>
        <source>&quot;%1&quot;: %2. --anyway has it all the same.</source>
        <translation>«%1»: %2. Con --anyway se hace de todos modos.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; (%2) would be removed.</source>
        <translation>«%1» (%2) se quitaría.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; (%2) is removed.</source>
        <translation>«%1» (%2) se ha quitado.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; (%2) would be changed.</source>
        <translation>«%1» (%2) se cambiaría.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; (%2) is changed.</source>
        <translation>«%1» (%2) se ha cambiado.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; (%2) would be added.</source>
        <translation>«%1» (%2) se añadiría.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; (%2) is added.</source>
        <translation>«%1» (%2) se ha añadido.</translation>
    </message>
    <message>
        <source>Nothing differs.</source>
        <translation>No hay diferencias.</translation>
    </message>
    <message>
        <source>Say what is to change; --help shows the options.</source>
        <translation>Diga qué hay que cambiar; --help muestra las opciones.</translation>
    </message>
    <message>
        <source>There is no schedule &quot;%1&quot; any more.</source>
        <translation>Ya no hay ninguna programación «%1».</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is changed</source>
        <translation>«%1» se ha cambiado</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not your schedule; try it as root.</source>
        <translation>«%1» no es su programación; inténtelo como root.</translation>
    </message>
    <message>
        <source>The daemon refuses: %1.</source>
        <translation>El servicio se niega: %1.</translation>
    </message>
    <message>
        <source>The daemon does not answer.</source>
        <translation>El servicio no responde.</translation>
    </message>
    <message>
        <source>its next time</source>
        <translation>la próxima vez</translation>
    </message>
    <message>
        <source>There is no user &quot;%1&quot;.</source>
        <translation>No hay ningún usuario «%1».</translation>
    </message>
    <message>
        <source>The daemon is alive.</source>
        <translation>El servicio está en marcha.</translation>
    </message>
    <message>
        <source>The agent of %1 is alive.</source>
        <translation>El agente de %1 está en marcha.</translation>
    </message>
    <message>
        <source>The application of %1 is alive.</source>
        <translation>La aplicación de %1 está en marcha.</translation>
    </message>
    <message>
        <source>The agent of %1 does not answer.</source>
        <translation>El agente de %1 no responde.</translation>
    </message>
    <message>
        <source>The application of %1 does not answer.</source>
        <translation>La aplicación de %1 no responde.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not daemon, agent or application.</source>
        <translation>«%1» no es daemon, agent ni application.</translation>
    </message>
    <message>
        <source>There is one daemon for all users.</source>
        <translation>Hay un solo servicio para todos los usuarios.</translation>
    </message>
    <message>
        <source>The daemon was asked to perform &quot;%1&quot;; the log tells how it went.</source>
        <translation>Se ha pedido al servicio que realice «%1»; el registro dice cómo fue.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is left out: %2.</source>
        <translation>«%1» se omite: %2.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no time to postpone it by, such as 90, 10m or 1h.</source>
        <translation>«%1» no es un tiempo por el que aplazarla, como 90, 10m o 1h.</translation>
    </message>
    <message>
        <source>&quot;%2&quot; is postponed by %1: %3.</source>
        <translation>«%2» se aplaza %1: %3.</translation>
    </message>
    <message>
        <source>What is over cannot be told: %1.</source>
        <translation>No se puede decir qué ha terminado: %1.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is over and removed.</source>
        <translation>«%1» ha terminado y se ha quitado.</translation>
    </message>
    <message>
        <source>No schedule is over.</source>
        <translation>Ninguna programación ha terminado.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a number of seconds from now.</source>
        <translation>«%1» no es un número de segundos desde ahora.</translation>
    </message>
    <message>
        <source>There is no time zone &quot;%1&quot;.</source>
        <translation>No existe la zona horaria «%1».</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is a day; say at what time, such as &quot;%1 06:55&quot;.</source>
        <translation>«%1» es un día; diga a qué hora, como «%1 06:55».</translation>
    </message>
    <message>
        <source>%1 does not exist in %2; it becomes %3.</source>
        <translation>%1 no existe en %2; pasa a ser %3.</translation>
    </message>
    <message>
        <source>Say when, by --date or by --in.</source>
        <translation>Diga cuándo, con --date o con --in.</translation>
    </message>
    <message>
        <source>%1 in %2 is past.</source>
        <translation>%1 en %2 ya pasó.</translation>
    </message>
    <message>
        <source>The date is further ahead than the store can hold.</source>
        <translation>La fecha está más lejos de lo que se puede guardar.</translation>
    </message>
    <message>
        <source>The clock is synchronised.</source>
        <translation>El reloj está sincronizado.</translation>
    </message>
    <message>
        <source>Nothing keeps the clock right.</source>
        <translation>Nada mantiene el reloj en hora.</translation>
    </message>
    <message>
        <source>timedatectl set-ntp true, after apt install systemd-timesyncd or chrony</source>
        <translation>timedatectl set-ntp true, después de apt install systemd-timesyncd o chrony</translation>
    </message>
    <message>
        <source>Nobody can tell how old the data of the time zones are.</source>
        <translation>No se puede saber de cuándo son los datos de las zonas horarias.</translation>
    </message>
    <message>
        <source>The data of the time zones do not say how old they are.</source>
        <translation>Los datos de las zonas horarias no dicen de cuándo son.</translation>
    </message>
    <message>
        <source>The data of the time zones are those of %1.</source>
        <translation>Los datos de las zonas horarias son los de %1.</translation>
    </message>
    <message>
        <source>The machine&apos;s time zone has no name: /etc/localtime is no link to one.</source>
        <translation>La zona horaria del equipo no tiene nombre: /etc/localtime no enlaza con ninguna.</translation>
    </message>
    <message>
        <source>timedatectl set-timezone Europe/Berlin, or where the machine is</source>
        <translation>timedatectl set-timezone Europe/Berlin, o donde esté el equipo</translation>
    </message>
    <message>
        <source>The machine&apos;s time zone is %1.</source>
        <translation>La zona horaria del equipo es %1.</translation>
    </message>
    <message>
        <source>fine</source>
        <translation>bien</translation>
    </message>
    <message>
        <source>wrong</source>
        <translation>mal</translation>
    </message>
    <message>
        <source>unknown</source>
        <translation>no se sabe</translation>
    </message>
    <message>
        <source>Nothing is wrong.</source>
        <translation>No hay nada mal.</translation>
    </message>
    <message numerus="yes">
        <source>%n thing(s) are wrong.</source>
        <translation>
            <numerusform>%n cosa está mal.</numerusform>
            <numerusform>%n cosas están mal.</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 is not there.</source>
        <translation>%1 no existe.</translation>
    </message>
    <message>
        <source>%1 is no folder.</source>
        <translation>%1 no es una carpeta.</translation>
    </message>
    <message>
        <source>%1 is no regular file.</source>
        <translation>%1 no es un archivo normal.</translation>
    </message>
    <message>
        <source>%1 belongs to %2.</source>
        <translation>%1 pertenece a %2.</translation>
    </message>
    <message>
        <source>%1 has the mode %2, which lets others write there.</source>
        <translation>%1 tiene el modo %2, que deja escribir ahí a otros.</translation>
    </message>
    <message>
        <source>%1 has the mode %2, which keeps others out.</source>
        <translation>%1 tiene el modo %2, que deja fuera a otros.</translation>
    </message>
    <message>
        <source>%1 is as it should be.</source>
        <translation>%1 está como debe.</translation>
    </message>
    <message>
        <source>No bundle is performed as root: %1.</source>
        <translation>Ningún paquete se realiza como root: %1.</translation>
    </message>
    <message>
        <source>There is no bundle in %1.</source>
        <translation>No hay ningún paquete en %1.</translation>
    </message>
    <message>
        <source>The bundles in %1 can be trusted.</source>
        <translation>Los paquetes de %1 son de confianza.</translation>
    </message>
    <message>
        <source>Nobody can tell how much room there is for the record.</source>
        <translation>No se puede saber cuánto sitio hay para el historial.</translation>
    </message>
    <message>
        <source>%1, where the record lies, can only be read.</source>
        <translation>%1, donde está el historial, es de solo lectura.</translation>
    </message>
    <message>
        <source>%1, where the record lies, is full.</source>
        <translation>%1, donde está el historial, está lleno.</translation>
    </message>
    <message>
        <source>Make room in %1.</source>
        <translation>Haga sitio en %1.</translation>
    </message>
    <message>
        <source>There is room for the record.</source>
        <translation>Hay sitio para el historial.</translation>
    </message>
    <message>
        <source>Look for an alarm, &quot;RTC wake&quot; or &quot;power on by alarm&quot; in the firmware&apos;s settings; docs/power.md says more</source>
        <translation>Busque una alarma, «RTC wake» o «power on by alarm» en los ajustes del firmware; docs/power.md dice más</translation>
    </message>
    <message>
        <source>%1 can wake the machine.</source>
        <translation>%1 puede despertar el equipo.</translation>
    </message>
    <message>
        <source>No clock can wake this machine, and no schedule asks for that.</source>
        <translation>Ningún reloj puede despertar este equipo, y ninguna programación lo pide.</translation>
    </message>
    <message>
        <source>No clock can wake this machine, as &quot;%1&quot; asks for.</source>
        <translation>Ningún reloj puede despertar este equipo, como pide «%1».</translation>
    </message>
    <message>
        <source>%1, or %2</source>
        <translation>%1, o %2</translation>
    </message>
    <message>
        <source>There is no alarm without a clock that could wake the machine.</source>
        <translation>No hay alarma sin un reloj que pueda despertar el equipo.</translation>
    </message>
    <message>
        <source>The machine is to be woken, and the alarm of %1 is not armed: the firmware or another program has dropped it, or the daemon does not run.</source>
        <translation>Hay que despertar el equipo, y la alarma de %1 no está puesta: el firmware u otro programa la ha borrado, o el servicio no está en marcha.</translation>
    </message>
    <message>
        <source>The alarm is armed.</source>
        <translation>La alarma está puesta.</translation>
    </message>
    <message>
        <source>No alarm is needed.</source>
        <translation>No hace falta ninguna alarma.</translation>
    </message>
    <message>
        <source>The alarm holds what it is set to.</source>
        <translation>La alarma conserva lo que se le pone.</translation>
    </message>
    <message>
        <source>Only root can see whether the machine was woken when it should have been.</source>
        <translation>Solo root puede ver si el equipo se despertó cuando debía.</translation>
    </message>
    <message>
        <source>The last time of &quot;%1&quot;, which wakes the machine, was missed.</source>
        <translation>Se perdió la última vez de «%1», que despierta el equipo.</translation>
    </message>
    <message>
        <source>Nothing that wakes the machine was missed the last time.</source>
        <translation>La última vez no se perdió nada de lo que despierta el equipo.</translation>
    </message>
    <message>
        <source>The bus lets nobody be com.dozely: there is no %1.</source>
        <translation>El bus no deja a nadie ser com.dozely: no existe %1.</translation>
    </message>
    <message>
        <source>apt install --reinstall dozely, or link the file of another prefix into /etc/dbus-1/system.d; then systemctl reload dbus</source>
        <translation>apt install --reinstall dozely, o enlace el archivo de otro prefijo en /etc/dbus-1/system.d; después systemctl reload dbus</translation>
    </message>
    <message>
        <source>The bus knows who may be com.dozely.</source>
        <translation>El bus sabe quién puede ser com.dozely.</translation>
    </message>
    <message>
        <source>Root alone may change schedules: there is no %1.</source>
        <translation>Solo root puede cambiar programaciones: no existe %1.</translation>
    </message>
    <message>
        <source>polkit knows what users may be asked for.</source>
        <translation>polkit sabe qué se puede pedir a los usuarios.</translation>
    </message>
    <message>
        <source>Root alone may change schedules: there is no polkit.</source>
        <translation>Solo root puede cambiar programaciones: no hay polkit.</translation>
    </message>
    <message>
        <source>polkit is there.</source>
        <translation>polkit está instalado.</translation>
    </message>
    <message>
        <source>No service manager says whether the daemon is started with the machine.</source>
        <translation>Ningún gestor de servicios dice si el servicio se inicia con el equipo.</translation>
    </message>
    <message>
        <source>systemd does not know dozelyd.service.</source>
        <translation>systemd no conoce dozelyd.service.</translation>
    </message>
    <message>
        <source>dozelyd.service is masked.</source>
        <translation>dozelyd.service está enmascarado.</translation>
    </message>
    <message>
        <source>The daemon is not started with the machine.</source>
        <translation>El servicio no se inicia con el equipo.</translation>
    </message>
    <message>
        <source>dozelyd.service has failed.</source>
        <translation>dozelyd.service ha fallado.</translation>
    </message>
    <message>
        <source>The daemon is started with the machine.</source>
        <translation>El servicio se inicia con el equipo.</translation>
    </message>
    <message>
        <source>The daemon listens.</source>
        <translation>El servicio escucha.</translation>
    </message>
    <message>
        <source>A process of user %1 listens in the daemon&apos;s place.</source>
        <translation>Un proceso del usuario %1 escucha en lugar del servicio.</translation>
    </message>
    <message>
        <source>The daemon does not run, or does not listen.</source>
        <translation>El servicio no está en marcha o no escucha.</translation>
    </message>
    <message>
        <source>systemctl start dozelyd; journalctl -u dozelyd says why it ended</source>
        <translation>systemctl start dozelyd; journalctl -u dozelyd dice por qué terminó</translation>
    </message>
    <message>
        <source>There is no system bus, so users cannot reach the daemon.</source>
        <translation>No hay bus del sistema, así que los usuarios no pueden llegar al servicio.</translation>
    </message>
    <message>
        <source>The system bus does not say whether the daemon is there.</source>
        <translation>El bus del sistema no dice si el servicio está en marcha.</translation>
    </message>
    <message>
        <source>The daemon is not com.dozely on the system bus.</source>
        <translation>El servicio no es com.dozely en el bus del sistema.</translation>
    </message>
    <message>
        <source>systemctl restart dozelyd; the log says why it has not got the name</source>
        <translation>systemctl restart dozelyd; el registro dice por qué no tiene el nombre</translation>
    </message>
    <message>
        <source>The daemon is com.dozely on the system bus.</source>
        <translation>El servicio es com.dozely en el bus del sistema.</translation>
    </message>
    <message>
        <source>Nobody is at the console, so no agent is needed.</source>
        <translation>No hay nadie en la consola, así que no hace falta ningún agente.</translation>
    </message>
    <message>
        <source>The agent of %1, who is at the console, listens.</source>
        <translation>El agente de %1, que está en la consola, escucha.</translation>
    </message>
    <message>
        <source>%1 is at the console, and no agent of his listens: nothing acts in his session.</source>
        <translation>%1 está en la consola y ningún agente suyo escucha: nada actúa en su sesión.</translation>
    </message>
    <message>
        <source>systemctl --user --machine=%1@ start dozely-agent, or have him log in again</source>
        <translation>systemctl --user --machine=%1@ start dozely-agent, o que vuelva a iniciar sesión</translation>
    </message>
    <message>
        <source>No agent is started when a user logs in.</source>
        <translation>Ningún agente se inicia cuando un usuario inicia sesión.</translation>
    </message>
    <message>
        <source>An agent is started when a user logs in.</source>
        <translation>Un agente se inicia cuando un usuario inicia sesión.</translation>
    </message>
    <message>
        <source>The store is not believed: %1.</source>
        <translation>No se da crédito al almacén: %1.</translation>
    </message>
    <message>
        <source>%1 cannot be used: %2.</source>
        <translation>No se puede usar %1: %2.</translation>
    </message>
    <message>
        <source>Put back a good one from a backup, or begin anew: mv &apos;%1&apos; &apos;%1.damaged&apos;</source>
        <translation>Reponga uno bueno de una copia de seguridad, o empiece de nuevo: mv &apos;%1&apos; &apos;%1.damaged&apos;</translation>
    </message>
    <message>
        <source>Entries of the store are no schedules: %1.</source>
        <translation>Hay entradas del almacén que no son programaciones: %1.</translation>
    </message>
    <message>
        <source>Mend these entries in %1, or remove them</source>
        <translation>Arregle esas entradas en %1, o quítelas</translation>
    </message>
    <message>
        <source>The store can be read.</source>
        <translation>El almacén se puede leer.</translation>
    </message>
    <message>
        <source>There is no store yet.</source>
        <translation>Aún no hay almacén.</translation>
    </message>
    <message>
        <source>The record of occurrences can be read.</source>
        <translation>El historial se puede leer.</translation>
    </message>
    <message>
        <source>Only root can look into the record of occurrences.</source>
        <translation>Solo root puede mirar en el historial.</translation>
    </message>
    <message>
        <source>systemctl restart dozelyd, which sets a damaged one aside and begins a new one</source>
        <translation>systemctl restart dozelyd, que aparta un historial dañado y empieza otro</translation>
    </message>
    <message>
        <source>The schedules cannot be looked at.</source>
        <translation>No se pueden mirar las programaciones.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is to put the machine to rest afterwards, and does not wake it</source>
        <translation>«%1» debe poner después el equipo en reposo, y no lo despierta</translation>
    </message>
    <message>
        <source>Nothing can come of %1.</source>
        <translation>De esto no puede resultar nada: %1.</translation>
    </message>
    <message>
        <source>Something can come of every schedule that is enabled.</source>
        <translation>De cada programación activada puede resultar algo.</translation>
    </message>
    <message>
        <source>The parameter &quot;%1&quot; holds a date, which only root can store.</source>
        <translation>El parámetro «%1» contiene una fecha, que solo root puede guardar.</translation>
    </message>
    <message>
        <source>--timeout needs a whole number of seconds, not &quot;%1&quot;.</source>
        <translation>--timeout necesita un número entero de segundos, no «%1».</translation>
    </message>
    <message>
        <source>KEYWORD</source>
        <translation>CLAVE</translation>
    </message>
    <message>
        <source>TYPE</source>
        <translation>TIPO</translation>
    </message>
    <message>
        <source>VALUE</source>
        <translation>VALOR</translation>
    </message>
    <message>
        <source>No process of %1 has the signature &quot;%2&quot;.</source>
        <translation>Ningún proceso de %1 tiene la firma «%2».</translation>
    </message>
    <message>
        <source>Process %1 has the event.</source>
        <translation>El proceso %1 tiene el evento.</translation>
    </message>
    <message>
        <source>Process %1 has handled the event.</source>
        <translation>El proceso %1 ha tratado el evento.</translation>
    </message>
    <message>
        <source>A schedule holds what a property list as text cannot carry.</source>
        <translation>Una programación contiene algo que una lista de propiedades en texto no puede llevar.</translation>
    </message>
    <message>
        <source>What became of it cannot be told: %1.</source>
        <translation>No se puede decir qué fue de ello: %1.</translation>
    </message>
    <message>
        <source>%1 to %2</source>
        <translation>%1 a %2</translation>
    </message>
    <message>
        <source>postponed to %1</source>
        <translation>aplazada a %1</translation>
    </message>
    <message numerus="yes">
        <source>%1 %n time(s)</source>
        <comment>missed; a number</comment>
        <translation>
            <numerusform>%1, %n vez</numerusform>
            <numerusform>%1, %n veces</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1 at least %n time(s)</source>
        <comment>missed; a number</comment>
        <translation>
            <numerusform>%1, al menos %n vez</numerusform>
            <numerusform>%1, al menos %n veces</numerusform>
        </translation>
    </message>
    <message>
        <source>on time</source>
        <translation>a su hora</translation>
    </message>
    <message>
        <source>%1 late</source>
        <comment>a duration</comment>
        <translation>%1 de retraso</translation>
    </message>
    <message>
        <source>exit %1</source>
        <translation>código de salida %1</translation>
    </message>
    <message>
        <source>Nothing became of it yet.</source>
        <translation>Aún no ha resultado nada.</translation>
    </message>
    <message>
        <source>WHEN</source>
        <translation>CUÁNDO</translation>
    </message>
    <message>
        <source>NAME</source>
        <translation>NOMBRE</translation>
    </message>
    <message>
        <source>STATE</source>
        <translation>RESULTADO</translation>
    </message>
    <message>
        <source>BEGAN</source>
        <translation>INICIO</translation>
    </message>
    <message>
        <source>WHY</source>
        <translation>POR QUÉ</translation>
    </message>
    <message>
        <source>IDENTIFIER</source>
        <translation>IDENTIFICADOR</translation>
    </message>
    <message>
        <source>Root cannot be given up.</source>
        <translation>No se puede renunciar a los derechos de root.</translation>
    </message>
    <message>
        <source>Root cannot be taken back.</source>
        <translation>No se pueden recuperar los derechos de root.</translation>
    </message>
    <message>
        <source>to come</source>
        <translation>por venir</translation>
    </message>
    <message>
        <source>to come, last %1</source>
        <translation>por venir, la última %1</translation>
    </message>
    <message>
        <source>daemon</source>
        <translation>servicio</translation>
    </message>
    <message>
        <source>session</source>
        <translation>sesión</translation>
    </message>
    <message>
        <source>yes</source>
        <translation>sí</translation>
    </message>
    <message>
        <source>no</source>
        <translation>no</translation>
    </message>
    <message>
        <source>machine</source>
        <comment>a time zone</comment>
        <translation>equipo</translation>
    </message>
    <message>
        <source>There are no schedules.</source>
        <translation>No hay programaciones.</translation>
    </message>
    <message>
        <source>ENABLED</source>
        <translation>ACTIVADA</translation>
    </message>
    <message>
        <source>DATE</source>
        <translation>FECHA</translation>
    </message>
    <message>
        <source>TIME ZONE</source>
        <translation>ZONA HORARIA</translation>
    </message>
    <message>
        <source>REPEATS</source>
        <translation>SE REPITE</translation>
    </message>
    <message>
        <source>ACTION</source>
        <translation>ACCIÓN</translation>
    </message>
    <message>
        <source>RUNS IN</source>
        <translation>ACTÚA EN</translation>
    </message>
    <message>
        <source>OWNER</source>
        <translation>DUEÑO</translation>
    </message>
    <message>
        <source>What became of the schedules cannot be told: %1.</source>
        <translation>No se puede decir qué fue de las programaciones: %1.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a number of lines.</source>
        <translation>«%1» no es un número de líneas.</translation>
    </message>
    <message>
        <source>The log is no longer followed.</source>
        <translation>Ya no se sigue el registro.</translation>
    </message>
    <message>
        <source>There is no log at %1.</source>
        <translation>No hay ningún registro en %1.</translation>
    </message>
    <message>
        <source>What was skipped or postponed is not taken into account: %1.</source>
        <translation>No se tiene en cuenta lo omitido o aplazado: %1.</translation>
    </message>
    <message>
        <source>woken, switched on</source>
        <translation>despertado, encendido</translation>
    </message>
    <message>
        <source>switched on</source>
        <translation>encendido</translation>
    </message>
    <message>
        <source>woken</source>
        <translation>despertado</translation>
    </message>
    <message>
        <source>%1, postponed from %2</source>
        <translation>%1, aplazada desde %2</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is disabled.</source>
        <translation>«%1» está desactivada.</translation>
    </message>
    <message>
        <source>Nothing comes.</source>
        <translation>No viene nada.</translation>
    </message>
    <message>
        <source>MACHINE IS</source>
        <translation>EL EQUIPO ES</translation>
    </message>
    <message>
        <source>-n needs a whole number, 1 or more, not &quot;%1&quot;.</source>
        <translation>-n necesita un número entero, 1 o más, no «%1».</translation>
    </message>
    <message>
        <source>&quot;%1&quot; does not take place on %2; &quot;next&quot; shows when it does.</source>
        <translation>«%1» no tiene lugar el %2; «next» muestra cuándo.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; takes place at %2, at %3 and so on that day: say at which of these times.</source>
        <translation>«%1» tiene lugar ese día a las %2, a las %3, etc.: diga a cuál de esas horas.</translation>
    </message>
    <message>
        <source>--time-zone is that of a --date.</source>
        <translation>--time-zone es la de una --date.</translation>
    </message>
    <message>
        <source>What an action wrote cannot be told: %1.</source>
        <translation>No se puede decir qué escribió una acción: %1.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; was not performed then.</source>
        <translation>«%1» no se realizó entonces.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; was not performed yet.</source>
        <translation>«%1» aún no se ha realizado.</translation>
    </message>
    <message>
        <source>%1 is not a dictionary.</source>
        <translation>%1 no es un diccionario.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not of the type %2.</source>
        <translation>«%1» no es del tipo %2.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not of the form KEY=VALUE.</source>
        <translation>«%1» no tiene la forma KEY=VALUE.</translation>
    </message>
    <message>
        <source>--alert needs a whole number of seconds, 1 or more, not &quot;%1&quot;.</source>
        <translation>--alert necesita un número entero de segundos, 1 o más, no «%1».</translation>
    </message>
    <message>
        <source>An action runs in the daemon or in the session, not in both.</source>
        <translation>Una acción se ejecuta en el servicio o en la sesión, no en ambos.</translation>
    </message>
    <message>
        <source>Say one of --in-daemon, --in-session and --in-default.</source>
        <translation>Diga solo una de --in-daemon, --in-session y --in-default.</translation>
    </message>
    <message>
        <source>There is no parameter &quot;%1&quot;.</source>
        <translation>No hay ningún parámetro «%1».</translation>
    </message>
    <message>
        <source>The program &quot;%1&quot; is not an absolute path.</source>
        <translation>El programa «%1» no es una ruta absoluta.</translation>
    </message>
    <message>
        <source>--argument needs --program.</source>
        <translation>--argument necesita --program.</translation>
    </message>
    <message>
        <source>A parameter holds what a property list cannot carry.</source>
        <translation>Un parámetro contiene algo que una lista de propiedades no puede llevar.</translation>
    </message>
    <message>
        <source>--missed is skip, run-once, run-once=LIMIT, plug-in or bundle, not &quot;%1&quot;.</source>
        <translation>--missed es skip, run-once, run-once=LIMIT, plug-in o bundle, no «%1».</translation>
    </message>
    <message>
        <source>--overlap is of what repeats.</source>
        <translation>--overlap es para lo que se repite.</translation>
    </message>
    <message>
        <source>--overlap is skip or run, not &quot;%1&quot;.</source>
        <translation>--overlap es skip o run, no «%1».</translation>
    </message>
    <message>
        <source>--after is nothing, sleep or power-off, not &quot;%1&quot;.</source>
        <translation>--after es nothing, sleep o power-off, no «%1».</translation>
    </message>
    <message>
        <source>--after %1 comes only where the machine was woken or switched on for the action; that takes --wake or --power-on.</source>
        <translation>--after %1 solo llega si el equipo se despertó o encendió para la acción; eso requiere --wake o --power-on.</translation>
    </message>
    <message>
        <source>--after %1 would never come any more, since it follows a waking: say --after nothing, too.</source>
        <translation>--after %1 no llegaría nunca más, pues sigue a un despertar: diga también --after nothing.</translation>
    </message>
    <message>
        <source>not armed</source>
        <translation>no puesta</translation>
    </message>
    <message>
        <source>%1, for an event below</source>
        <translation>%1, para un evento de abajo</translation>
    </message>
    <message>
        <source>%1, armed by another program</source>
        <translation>%1, puesta por otro programa</translation>
    </message>
    <message>
        <source>Clock:</source>
        <translation>Reloj:</translation>
    </message>
    <message>
        <source>Alarm:</source>
        <translation>Alarma:</translation>
    </message>
    <message>
        <source>none that could wake this machine</source>
        <translation>ninguno que pueda despertar este equipo</translation>
    </message>
    <message>
        <source>No events are scheduled.</source>
        <translation>No hay eventos previstos.</translation>
    </message>
    <message>
        <source>TIME</source>
        <translation>HORA</translation>
    </message>
    <message>
        <source>This machine has no clock that could wake it.</source>
        <translation>Este equipo no tiene un reloj que pueda despertarlo.</translation>
    </message>
    <message>
        <source>You may not set the machine&apos;s clock; try it as root.</source>
        <translation>Usted no puede poner el reloj del equipo; inténtelo como root.</translation>
    </message>
    <message>
        <source>The alarm of %1 was armed for %2, read back, and set as it was.</source>
        <translation>La alarma de %1 se puso para %2, se leyó y quedó como estaba.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not test.</source>
        <translation>«%1» no es test.</translation>
    </message>
    <message>
        <source>There is no login manager that could put this machine to sleep.</source>
        <translation>No hay ningún gestor de sesiones que pueda suspender este equipo.</translation>
    </message>
    <message>
        <source>The machine does not let itself be put to sleep.</source>
        <translation>El equipo no se deja suspender.</translation>
    </message>
    <message>
        <source>The machine does not let you put it to sleep; try it as root.</source>
        <translation>El equipo no se deja suspender por usted; inténtelo como root.</translation>
    </message>
    <message>
        <source>The machine goes to sleep.</source>
        <translation>El equipo se suspende.</translation>
    </message>
    <message>
        <source>It cannot repeat so: %1.</source>
        <translation>Así no se puede repetir: %1.</translation>
    </message>
    <message>
        <source>Every month from %1 on can be day %2 of those months that have one, --on %2, or the last of each, --on last.</source>
        <translation>Cada mes desde el %1 puede ser el día %2 de los meses que lo tienen, --on %2, o el último de cada uno, --on last.</translation>
    </message>
    <message>
        <source>Every year from %1 on can be that day of leap years, %2, or the last of February, %3.</source>
        <translation>Cada año desde el %1 puede ser ese día de los años bisiestos, %2, o el último de febrero, %3.</translation>
    </message>
    <message>
        <source>The exception of %1 at %2 is gone: nothing takes place then any more.</source>
        <translation>La excepción del %1 a las %2 desaparece: entonces ya no tiene lugar nada.</translation>
    </message>
    <message>
        <source>There is no exception on %1.</source>
        <translation>No hay ninguna excepción el %1.</translation>
    </message>
    <message>
        <source>Nothing takes place on %1 that could be left out.</source>
        <translation>El %1 no hay nada que se pueda omitir.</translation>
    </message>
    <message>
        <source>There can be at most %1 exceptions.</source>
        <translation>Puede haber como máximo %1 excepciones.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a machine such as root@example.org.</source>
        <translation>«%1» no es un equipo como root@example.org.</translation>
    </message>
    <message>
        <source>ssh cannot be run: %1.</source>
        <translation>No se puede ejecutar ssh: %1.</translation>
    </message>
    <message>
        <source>%1 cannot be reached by ssh.</source>
        <translation>No se puede llegar a %1 por ssh.</translation>
    </message>
    <message>
        <source>--at is the time of day of what takes place on some days, and not of what goes on around the clock.</source>
        <translation>--at es la hora de lo que tiene lugar algunos días, no de lo que sigue día y noche.</translation>
    </message>
    <message>
        <source>--%1 is there twice.</source>
        <translation>--%1 está dos veces.</translation>
    </message>
    <message>
        <source>Say --every or --rule, not both.</source>
        <translation>Diga --every o --rule, no ambas.</translation>
    </message>
    <message>
        <source>Say how often, by --every or --rule.</source>
        <translation>Diga con qué frecuencia, con --every o --rule.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a rule such as FREQ=WEEKLY;BYDAY=MO.</source>
        <translation>«%1» no es una regla como FREQ=WEEKLY;BYDAY=MO.</translation>
    </message>
    <message>
        <source>The rule says itself at what times; leave --at or its BYHOUR, BYMINUTE and BYSECOND out.</source>
        <translation>La regla misma dice a qué horas; omita --at, o sus BYHOUR, BYMINUTE y BYSECOND.</translation>
    </message>
    <message>
        <source>The rule says itself when it ends; leave --until and --count or its UNTIL and COUNT out.</source>
        <translation>La regla misma dice cuándo termina; omita --until y --count, o sus UNTIL y COUNT.</translation>
    </message>
    <message>
        <source>--on names days of the month and needs --every month.</source>
        <translation>--on nombra días del mes y necesita --every month.</translation>
    </message>
    <message>
        <source>Months without a day %1 are left out; --on last is the last day of each month.</source>
        <translation>Los meses sin día %1 se omiten; --on last es el último día de cada mes.</translation>
    </message>
    <message>
        <source>Say at what time, by --at.</source>
        <translation>Diga a qué hora, con --at.</translation>
    </message>
    <message>
        <source>--count needs a whole number, 1 or more, not &quot;%1&quot;.</source>
        <translation>--count necesita un número entero, 1 o más, no «%1».</translation>
    </message>
    <message>
        <source>It is to end before it begins.</source>
        <translation>Terminaría antes de empezar.</translation>
    </message>
    <message>
        <source>%1 (%2 in %3)</source>
        <translation>%1 (%2 en %3)</translation>
    </message>
    <message>
        <source>%1, for %2 (%3).</source>
        <translation>%1, para %2 (%3).</translation>
    </message>
    <message>
        <source>%1: %2%3.</source>
        <comment>what was done, a rule in words, its time zone</comment>
        <translation>%1: %2%3.</translation>
    </message>
    <message>
        <source>Next:</source>
        <translation>Próximas fechas:</translation>
    </message>
    <message>
        <source>It is disabled: it does not come due before it is enabled.</source>
        <translation>Está desactivada: no llega a su hora antes de activarse.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is neither the name of a bundle nor an absolute path.</source>
        <translation>«%1» no es ni el nombre de un paquete ni una ruta absoluta.</translation>
    </message>
    <message>
        <source>There is no bundle at %1.</source>
        <translation>No hay ningún paquete en %1.</translation>
    </message>
    <message>
        <source>With --time-zone say --date, too: in another zone the same time is another moment.</source>
        <translation>Con --time-zone diga también --date: en otra zona la misma hora es otro momento.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is over: say --date, too.</source>
        <translation>«%1» ha terminado: diga también --date.</translation>
    </message>
    <message>
        <source>With these exceptions nothing is left of it.</source>
        <translation>Con estas excepciones no queda nada.</translation>
    </message>
    <message>
        <source>A schedule needs a name.</source>
        <translation>Una programación necesita un nombre.</translation>
    </message>
    <message>
        <source>The name holds control characters.</source>
        <translation>El nombre contiene caracteres de control.</translation>
    </message>
    <message>
        <source>Say what is to be done, by --bundle or by --program.</source>
        <translation>Diga qué hay que hacer, con --bundle o con --program.</translation>
    </message>
    <message>
        <source>Nothing could come of it: %1. With --anyway it is done all the same.</source>
        <translation>Nada podría resultar de ello: %1. Con --anyway se hace de todos modos.</translation>
    </message>
    <message>
        <source>--date and --in are for what takes place once; what repeats begins by --from.</source>
        <translation>--date y --in son para lo que tiene lugar una vez; lo que se repite empieza con --from.</translation>
    </message>
    <message>
        <source>It takes place once, or it repeats: --once goes with --date and --in alone.</source>
        <translation>Tiene lugar una vez, o se repite: --once solo va con --date y --in.</translation>
    </message>
    <message>
        <source>--%1 is of what repeats.</source>
        <translation>--%1 es para lo que se repite.</translation>
    </message>
    <message>
        <source>Say when, by --date or --in, or how often, by --every or --rule.</source>
        <translation>Diga cuándo, con --date o --in, o con qué frecuencia, con --every o --rule.</translation>
    </message>
    <message>
        <source>a time of %1 cannot be spread over midnight</source>
        <translation>la hora %1 no se puede repartir más allá de medianoche</translation>
    </message>
    <message>
        <source>%1, so that they cannot be spread</source>
        <translation>%1, así que no se pueden repartir</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no time to spread starts over, such as 30m or 1h.</source>
        <translation>«%1» no es un tiempo en que repartir los inicios, como 30m o 1h.</translation>
    </message>
    <message>
        <source>this machine has no id (/etc/machine-id) by which starts could be spread</source>
        <translation>este equipo no tiene identificador (/etc/machine-id) con que repartir los inicios</translation>
    </message>
    <message>
        <source>Daemon:</source>
        <translation>Servicio:</translation>
    </message>
    <message>
        <source>Console:</source>
        <translation>Consola:</translation>
    </message>
    <message>
        <source>Agents:</source>
        <translation>Agentes:</translation>
    </message>
    <message>
        <source>Wake clock:</source>
        <translation>Reloj de despertar:</translation>
    </message>
    <message>
        <source>Schedules:</source>
        <translation>Programaciones:</translation>
    </message>
    <message>
        <source>nobody is there</source>
        <translation>no hay nadie</translation>
    </message>
    <message>
        <source>%1, whose agent is alive</source>
        <translation>%1, con su agente en marcha</translation>
    </message>
    <message>
        <source>%1, whose agent is not there</source>
        <translation>%1, con su agente parado</translation>
    </message>
    <message>
        <source>none</source>
        <comment>agents</comment>
        <translation>ninguno</translation>
    </message>
    <message>
        <source>%1, armed for %2</source>
        <translation>%1, puesto para %2</translation>
    </message>
    <message>
        <source>%1, armed for %2 by another program</source>
        <translation>%1, puesto para %2 por otro programa</translation>
    </message>
    <message>
        <source>%1, not armed</source>
        <translation>%1, sin alarma</translation>
    </message>
    <message>
        <source>synchronised, %1</source>
        <translation>sincronizado, %1</translation>
    </message>
    <message>
        <source>not synchronised, %1</source>
        <translation>no sincronizado, %1</translation>
    </message>
    <message>
        <source>%1, %2 of them enabled</source>
        <translation>%1, de ellas %2 activadas</translation>
    </message>
    <message numerus="yes">
        <source>%1; %n entries are none</source>
        <comment>entries of the store</comment>
        <translation>
            <numerusform>%1; %n entrada no lo es</numerusform>
            <numerusform>%1; %n entradas no lo son</numerusform>
        </translation>
    </message>
    <message>
        <source>wakes the machine</source>
        <translation>despierta el equipo</translation>
    </message>
    <message>
        <source>Next</source>
        <translation>Próximas</translation>
    </message>
    <message>
        <source>What failed cannot be told: %1.</source>
        <translation>No se puede decir qué falló: %1.</translation>
    </message>
    <message>
        <source>Nothing failed of late.</source>
        <translation>Últimamente no ha fallado nada.</translation>
    </message>
    <message>
        <source>Last failures</source>
        <translation>Últimos fallos</translation>
    </message>
    <message>
        <source>is alive</source>
        <translation>en marcha</translation>
    </message>
    <message>
        <source>is not there</source>
        <translation>parado</translation>
    </message>
    <message>
        <source>You may not change %1; try it as root.</source>
        <translation>Usted no puede cambiar %1; inténtelo como root.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is enabled.</source>
        <translation>«%1» está activada.</translation>
    </message>
    <message>
        <source>You may not read %1.</source>
        <translation>Usted no puede leer %1.</translation>
    </message>
    <message>
        <source>There is no schedule &quot;%1&quot;.</source>
        <translation>No hay ninguna programación «%1».</translation>
    </message>
    <message numerus="yes">
        <source>%n schedule(s) are named &quot;%1&quot;; use an identifier, as &quot;list&quot; shows them.</source>
        <translation>
            <numerusform>%n programación se llama «%1»; use un identificador, como los muestra «list».</numerusform>
            <numerusform>%n programaciones se llaman «%1»; use un identificador, como los muestra «list».</numerusform>
        </translation>
    </message>
    <message>
        <source>&quot;%1&quot; is removed.</source>
        <translation>«%1» se ha quitado.</translation>
    </message>
    <message>
        <source>it is larger than 16 MiB</source>
        <translation>ocupa más de 16 MiB</translation>
    </message>
    <message>
        <source>it is no JSON: %1, at byte %2</source>
        <translation>no es JSON: %1, en el byte %2</translation>
    </message>
    <message>
        <source>not known</source>
        <translation>desconocida</translation>
    </message>
    <message>
        <source>%1, up to date</source>
        <comment>a version</comment>
        <translation>%1, al día</translation>
    </message>
    <message>
        <source>the server gives none</source>
        <translation>el servidor no da ninguna</translation>
    </message>
    <message>
        <source>not offered, since it is not https: %1</source>
        <translation>no se ofrece, porque no es https: %1</translation>
    </message>
    <message>
        <source>Installed version:</source>
        <translation>Versión instalada:</translation>
    </message>
    <message>
        <source>Latest version:</source>
        <translation>Última versión:</translation>
    </message>
    <message>
        <source>Address:</source>
        <translation>Dirección:</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not check.</source>
        <translation>«%1» no es check.</translation>
    </message>
    <message>
        <source>This system was built without the update check.</source>
        <translation>Este sistema se construyó sin la búsqueda de actualizaciones.</translation>
    </message>
    <message>
        <source>%1 gave no answer that can be used; the log says why.</source>
        <translation>%1 no dio una respuesta útil; el registro dice por qué.</translation>
    </message>
    <message>
        <source>There is a newer version.</source>
        <translation>Hay una versión más reciente.</translation>
    </message>
    <message>
        <source>there is no word &quot;%1&quot;</source>
        <translation>no existe la palabra «%1»</translation>
    </message>
    <message>
        <source>&quot;actsIn&quot; is neither session nor daemon</source>
        <translation>«actsIn» no es session ni daemon</translation>
    </message>
    <message>
        <source>&quot;repeats&quot; has no word &quot;%1&quot;</source>
        <translation>«repeats» no tiene la palabra «%1»</translation>
    </message>
    <message>
        <source>nothing comes of its rule</source>
        <translation>de su regla no resulta nada</translation>
    </message>
    <message>
        <source>say at what time, by &quot;at&quot;</source>
        <translation>diga a qué hora, con «at»</translation>
    </message>
    <message>
        <source>&quot;date&quot; is not a date such as &quot;2026-03-14 06:55&quot;</source>
        <translation>«date» no es una fecha como «2026-03-14 06:55»</translation>
    </message>
    <message>
        <source>it has no list of schedules (&quot;schedules&quot;, or &quot;Schedule Array&quot; of a store)</source>
        <translation>no tiene una lista de programaciones («schedules», o «Schedule Array» de un almacén)</translation>
    </message>
    <message>
        <source>schedule %1, &quot;%2&quot;, is none: %3</source>
        <translation>la programación %1, «%2», no lo es: %3</translation>
    </message>
    <message>
        <source>schedule %1, &quot;%2&quot;, is there twice</source>
        <translation>la programación %1, «%2», está dos veces</translation>
    </message>
    <message>
        <source>it is empty</source>
        <translation>está vacío</translation>
    </message>
    <message>
        <source>it has more than one document</source>
        <translation>tiene más de un documento</translation>
    </message>
    <message>
        <source>it cannot be read</source>
        <translation>no se puede leer</translation>
    </message>
    <message>
        <source>%1, in line %2</source>
        <translation>%1, en la línea %2</translation>
    </message>
    <message>
        <source>it is nested too deeply</source>
        <translation>está anidado demasiado hondo</translation>
    </message>
    <message>
        <source>it has too many values</source>
        <translation>tiene demasiados valores</translation>
    </message>
    <message>
        <source>aliases are not understood</source>
        <translation>no se entienden los alias</translation>
    </message>
    <message>
        <source>a value is missing</source>
        <translation>falta un valor</translation>
    </message>
    <message>
        <source>a key is not a text</source>
        <translation>una clave no es un texto</translation>
    </message>
    <message>
        <source>a key stands there twice</source>
        <translation>una clave está dos veces</translation>
    </message>
    <message>
        <source>tags are not understood</source>
        <translation>no se entienden las etiquetas</translation>
    </message>
    <message>
        <source>Say --%1 or --%2, not both.</source>
        <translation>Diga --%1 o --%2, no ambas.</translation>
    </message>
    <message>
        <source>Send an Apple event to the process with that signature, and show the reply; each of the three is four characters.</source>
        <translation>Enviar un evento de Apple al proceso con esa firma y mostrar la respuesta; los tres tienen cuatro caracteres.</translation>
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
        <translation>Opción desconocida: «%1».</translation>
    </message>
    <message>
        <source>Unknown options: %1.</source>
        <translation>Opciones desconocidas: %1.</translation>
    </message>
    <message>
        <source>Missing value after &apos;%1&apos;.</source>
        <translation>Falta un valor después de «%1».</translation>
    </message>
    <message>
        <source>Unexpected value after &apos;%1&apos;.</source>
        <translation>Valor inesperado después de «%1».</translation>
    </message>
</context>
</TS>
