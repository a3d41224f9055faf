<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="es" sourcelanguage="en">
<context>
    <name>CalendarText</name>
    <message>
        <source>C</source>
        <comment>the locale that has the names of days and months</comment>
        <translation>es</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a date such as &quot;2026-03-14 06:55&quot;, &quot;06:55&quot;, &quot;tomorrow 7:00&quot;, &quot;fri 22:00&quot; or &quot;+5m&quot;</source>
        <translation>«%1» no es una fecha como «2026-03-14 06:55», «06:55», «tomorrow 7:00», «fri 22:00» o «+5m»</translation>
    </message>
    <message>
        <source>%1 or %2</source>
        <translation>%1 o %2</translation>
    </message>
    <message>
        <source>&quot;%1&quot; can be %2</source>
        <translation>«%1» puede ser %2</translation>
    </message>
    <message>
        <source>%1, since clocks are changed meanwhile</source>
        <translation>%1, pues entre tanto se cambian los relojes</translation>
    </message>
    <message>
        <source>Clocks in %1 show &quot;%2&quot; twice: say %3 or %4</source>
        <translation>Los relojes en %1 marcan «%2» dos veces: diga %3 o %4</translation>
    </message>
    <message>
        <source>d MMMM yyyy</source>
        <comment>form of a day</comment>
        <translation>d &apos;de&apos; MMMM &apos;de&apos; yyyy</translation>
    </message>
    <message>
        <source>%1 %2 at %3</source>
        <comment>day of the week, day, time</comment>
        <translation>%1, %2, a las %3</translation>
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
        <translation>1 día</translation>
    </message>
    <message numerus="yes">
        <source>%n days</source>
        <translation>
            <numerusform>%n día</numerusform>
            <numerusform>%n días</numerusform>
        </translation>
    </message>
    <message>
        <source>&quot;%1&quot; is none of day, weekday, week, month and year, of days such as monday,thursday and of distances such as 15m and 2h</source>
        <translation>«%1» no es day, weekday, week, month ni year, ni días como monday,thursday, ni un intervalo como 15m y 2h</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a time such as 22:00</source>
        <translation>«%1» no es una hora como 22:00</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a number of seconds, nor a time such as 10m, 6h or 2d</source>
        <translation>«%1» no es un número de segundos ni un tiempo como 10m, 6h o 2d</translation>
    </message>
    <message>
        <source>%1 (minutes)</source>
        <translation>%1 (minutos)</translation>
    </message>
    <message>
        <source>%1 (hours)</source>
        <translation>%1 (horas)</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no day of a month, which is 1 to 31, or last</source>
        <translation>«%1» no es un día del mes, que es de 1 a 31, o last</translation>
    </message>
    <message>
        <source>one rule cannot mean %1 without %2, too; let the times have equal minutes, or add a second schedule</source>
        <translation>una regla no puede significar %1 sin %2 también; ponga los mismos minutos en las horas o añada otra programación</translation>
    </message>
    <message>
        <source>%1, %2</source>
        <comment>a list</comment>
        <translation>%1, %2</translation>
    </message>
    <message>
        <source>%1 and %2</source>
        <comment>the end of a list</comment>
        <translation>%1 y %2</translation>
    </message>
    <message>
        <source>every year</source>
        <translation>cada año</translation>
    </message>
    <message numerus="yes">
        <source>every %n years</source>
        <translation>
            <numerusform>cada año</numerusform>
            <numerusform>cada %n años</numerusform>
        </translation>
    </message>
    <message>
        <source>every month</source>
        <translation>cada mes</translation>
    </message>
    <message numerus="yes">
        <source>every %n months</source>
        <translation>
            <numerusform>cada mes</numerusform>
            <numerusform>cada %n meses</numerusform>
        </translation>
    </message>
    <message>
        <source>every week</source>
        <translation>cada semana</translation>
    </message>
    <message numerus="yes">
        <source>every %n weeks</source>
        <translation>
            <numerusform>cada semana</numerusform>
            <numerusform>cada %n semanas</numerusform>
        </translation>
    </message>
    <message>
        <source>every day</source>
        <translation>cada día</translation>
    </message>
    <message numerus="yes">
        <source>every %n days</source>
        <translation>
            <numerusform>cada día</numerusform>
            <numerusform>cada %n días</numerusform>
        </translation>
    </message>
    <message>
        <source>every hour</source>
        <translation>cada hora</translation>
    </message>
    <message numerus="yes">
        <source>every %n hours</source>
        <translation>
            <numerusform>cada hora</numerusform>
            <numerusform>cada %n horas</numerusform>
        </translation>
    </message>
    <message>
        <source>every minute</source>
        <translation>cada minuto</translation>
    </message>
    <message numerus="yes">
        <source>every %n minutes</source>
        <translation>
            <numerusform>cada minuto</numerusform>
            <numerusform>cada %n minutos</numerusform>
        </translation>
    </message>
    <message>
        <source>every second</source>
        <translation>cada segundo</translation>
    </message>
    <message numerus="yes">
        <source>every %n seconds</source>
        <translation>
            <numerusform>cada segundo</numerusform>
            <numerusform>cada %n segundos</numerusform>
        </translation>
    </message>
    <message>
        <source>every weekday</source>
        <translation>cada día laborable</translation>
    </message>
    <message>
        <source>every %1</source>
        <comment>days of the week</comment>
        <translation>cada %1</translation>
    </message>
    <message>
        <source>%1 on %2</source>
        <comment>every 3 weeks, days of the week</comment>
        <translation>%1 el %2</translation>
    </message>
    <message>
        <source>the %1</source>
        <comment>a day of the month; only in English with an ending</comment>
        <translation>el día %1</translation>
    </message>
    <message>
        <source>the last day</source>
        <translation>el último día</translation>
    </message>
    <message>
        <source>the last %1</source>
        <comment>day of the week</comment>
        <translation>el último %1</translation>
    </message>
    <message>
        <source>the first %1</source>
        <comment>day of the week</comment>
        <translation>el primer %1</translation>
    </message>
    <message>
        <source>the second %1</source>
        <comment>day of the week</comment>
        <translation>el segundo %1</translation>
    </message>
    <message>
        <source>the third %1</source>
        <comment>day of the week</comment>
        <translation>el tercer %1</translation>
    </message>
    <message>
        <source>the fourth %1</source>
        <comment>day of the week</comment>
        <translation>el cuarto %1</translation>
    </message>
    <message>
        <source>%1 %2</source>
        <comment>a day of the year: its number, the month</comment>
        <translation>%1 de %2</translation>
    </message>
    <message>
        <source>%1 on %2</source>
        <comment>every 3 months, days of the month</comment>
        <translation>%1 %2</translation>
    </message>
    <message>
        <source>%1 on %2</source>
        <comment>every 3 years, a day of the year</comment>
        <translation>%1 el %2</translation>
    </message>
    <message>
        <source>%1 at %2</source>
        <comment>days, times</comment>
        <translation>%1 a las %2</translation>
    </message>
    <message>
        <source>%1, once</source>
        <translation>%1, una vez</translation>
    </message>
    <message numerus="yes">
        <source>%1, %n times</source>
        <translation>
            <numerusform>%1, %n vez</numerusform>
            <numerusform>%1, %n veces</numerusform>
        </translation>
    </message>
    <message>
        <source>%1, until %2</source>
        <comment>a day</comment>
        <translation>%1, hasta el %2</translation>
    </message>
    <message>
        <source>%1, until %2 at %3</source>
        <comment>a day and a time</comment>
        <translation>%1, hasta el %2 a las %3</translation>
    </message>
    <message numerus="yes">
        <source>%n other days</source>
        <translation>
            <numerusform>%n día más</numerusform>
            <numerusform>%n días más</numerusform>
        </translation>
    </message>
    <message>
        <source>by the rule %1</source>
        <translation>según la regla %1</translation>
    </message>
    <message>
        <source>%1, and on %2</source>
        <comment>days</comment>
        <translation>%1, y el %2</translation>
    </message>
    <message>
        <source>%1, except on %2</source>
        <comment>days</comment>
        <translation>%1, salvo el %2</translation>
    </message>
</context>
<context>
    <name>OutcomeNames</name>
    <message>
        <source>asked for</source>
        <translation>solicitada</translation>
    </message>
    <message>
        <source>at work</source>
        <translation>en curso</translation>
    </message>
    <message>
        <source>done</source>
        <translation>hecha</translation>
    </message>
    <message>
        <source>failed</source>
        <translation>fallida</translation>
    </message>
    <message>
        <source>skipped, too late</source>
        <translation>omitida, demasiado tarde</translation>
    </message>
    <message>
        <source>missed</source>
        <translation>perdida</translation>
    </message>
    <message>
        <source>put off</source>
        <translation>aplazada</translation>
    </message>
    <message>
        <source>could not be started</source>
        <translation>no se pudo iniciar</translation>
    </message>
    <message>
        <source>cancelled</source>
        <translation>cancelada</translation>
    </message>
    <message>
        <source>not known</source>
        <translation>desconocido</translation>
    </message>
    <message>
        <source>interrupted</source>
        <translation>interrumpida</translation>
    </message>
    <message>
        <source>exit status %1</source>
        <translation>código de salida %1</translation>
    </message>
</context>
<context>
    <name>ReasonWords</name>
    <message>
        <source>You are not allowed to do this.</source>
        <translation>No se le permite hacer esto.</translation>
    </message>
    <message>
        <source>Nobody but root may do this here: polkit, which decides about others, cannot be asked (%1).</source>
        <translation>Aquí solo root puede hacer esto: no se puede consultar a polkit, que decide sobre los demás (%1).</translation>
    </message>
    <message>
        <source>Too many questions are open that somebody has to answer first.</source>
        <translation>Hay demasiadas preguntas abiertas que alguien debe responder antes.</translation>
    </message>
    <message>
        <source>Too many calls at a time: wait for the answers.</source>
        <translation>Demasiadas llamadas a la vez: espere las respuestas.</translation>
    </message>
    <message>
        <source>A user may have %1 schedules.</source>
        <translation>Un usuario puede tener %1 programaciones.</translation>
    </message>
    <message>
        <source>The schedules of a user may have %1 bytes in all.</source>
        <translation>Las programaciones de un usuario pueden ocupar %1 bytes en total.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; was changed by somebody else meanwhile.</source>
        <translation>Entretanto, otra persona ha cambiado «%1».</translation>
    </message>
    <message>
        <source>The name has more than %1 characters.</source>
        <translation>El nombre tiene más de %1 caracteres.</translation>
    </message>
    <message>
        <source>There is no time zone &quot;%1&quot;.</source>
        <translation>No existe la zona horaria «%1».</translation>
    </message>
    <message>
        <source>It is too large: a schedule has at most %1 bytes.</source>
        <translation>Es demasiado grande: una programación tiene como máximo %1 bytes.</translation>
    </message>
    <message>
        <source>It holds something that no schedule can keep.</source>
        <translation>Contiene algo que ninguna programación puede guardar.</translation>
    </message>
    <message>
        <source>It cannot repeat so: with these exceptions nothing is left of it.</source>
        <translation>Así no se puede repetir: con estas excepciones no queda nada.</translation>
    </message>
    <message>
        <source>It cannot repeat so: %1.</source>
        <translation>Así no se puede repetir: %1.</translation>
    </message>
    <message>
        <source>What is to follow comes only where the machine was woken or switched on for the action.</source>
        <translation>Lo que debe seguir solo ocurre si el equipo se despertó o se encendió para la acción.</translation>
    </message>
    <message>
        <source>Nothing could come of it: %1.</source>
        <translation>No podría salir nada de ello: %1.</translation>
    </message>
    <message>
        <source>the parameters name no program</source>
        <translation>los parámetros no nombran ningún programa</translation>
    </message>
    <message>
        <source>the program &quot;%1&quot; is not an absolute path</source>
        <translation>el programa «%1» no es una ruta absoluta</translation>
    </message>
    <message>
        <source>there is no program %1</source>
        <translation>no existe el programa %1</translation>
    </message>
    <message>
        <source>%1 is no program that can be run</source>
        <translation>%1 no es un programa que se pueda ejecutar</translation>
    </message>
    <message>
        <source>there is no bundle at %1</source>
        <translation>no hay ningún paquete en %1</translation>
    </message>
    <message>
        <source>%1 cannot act in the %2: %3</source>
        <translation>%1 no puede actuar en %2: %3</translation>
    </message>
    <message>
        <source>session</source>
        <translation>la sesión</translation>
    </message>
    <message>
        <source>daemon</source>
        <translation>el servicio</translation>
    </message>
    <message>
        <source>it acts in the daemon alone</source>
        <translation>solo actúa en el servicio</translation>
    </message>
    <message>
        <source>it names no &quot;%1&quot;</source>
        <translation>no nombra ningún «%1»</translation>
    </message>
    <message>
        <source>The schedules are damaged, and are not overwritten: %1.</source>
        <translation>Las programaciones están dañadas y no se sobrescriben: %1.</translation>
    </message>
    <message>
        <source>%1 was not changed: %2</source>
        <translation>%1 no se ha cambiado: %2</translation>
    </message>
    <message>
        <source>there is no schedule %1</source>
        <translation>no existe la programación %1</translation>
    </message>
    <message>
        <source>schedule %1 has nothing to come</source>
        <translation>la programación %1 no tiene nada pendiente</translation>
    </message>
    <message>
        <source>schedule %1 has no occurrence at %2 that is to come</source>
        <translation>la programación %1 no tiene nada pendiente en %2</translation>
    </message>
    <message>
        <source>the occurrence at %1 is not the next one of schedule %2</source>
        <translation>la repetición de %1 no es la próxima de la programación %2</translation>
    </message>
    <message>
        <source>%1 occurrences of schedule %2 are decided upon already</source>
        <translation>ya se ha decidido sobre %1 repeticiones de la programación %2</translation>
    </message>
    <message>
        <source>an occurrence is postponed by 1 to %1 seconds</source>
        <translation>una repetición se aplaza entre 1 y %1 segundos</translation>
    </message>
    <message>
        <source>it is being tried already</source>
        <translation>ya se está probando</translation>
    </message>
    <message>
        <source>an action goes on, or is due too soon</source>
        <translation>hay una acción en curso o demasiado próxima</translation>
    </message>
    <message>
        <source>the machine is kept awake by %1</source>
        <translation>%1 mantiene despierto el equipo</translation>
    </message>
    <message>
        <source>this machine cannot be put to sleep</source>
        <translation>este equipo no se puede suspender</translation>
    </message>
    <message>
        <source>the machine did not fall asleep</source>
        <translation>el equipo no se suspendió</translation>
    </message>
    <message>
        <source>the machine does not let itself be put to sleep</source>
        <translation>el equipo no se deja suspender</translation>
    </message>
    <message>
        <source>its program ended with status %1</source>
        <translation>su programa terminó con el estado %1</translation>
    </message>
    <message>
        <source>its program could not be started</source>
        <translation>no se pudo iniciar su programa</translation>
    </message>
    <message>
        <source>its process was ended by signal %1 (%2)</source>
        <translation>su proceso terminó por la señal %1 (%2)</translation>
    </message>
    <message>
        <source>its process ended by itself with status %1</source>
        <translation>su proceso terminó por sí mismo con el estado %1</translation>
    </message>
    <message>
        <source>its performer ended without a word</source>
        <translation>su ejecutor terminó sin decir nada</translation>
    </message>
    <message>
        <source>its agent does not say why</source>
        <translation>su agente no dice por qué</translation>
    </message>
    <message>
        <source>it took more memory than it may</source>
        <translation>usó más memoria de la permitida</translation>
    </message>
    <message>
        <source>it took longer than %1 s</source>
        <translation>tardó más de %1 s</translation>
    </message>
    <message>
        <source>it was asked to end</source>
        <translation>se le pidió que terminara</translation>
    </message>
    <message>
        <source>There is no bundle %1</source>
        <translation>No existe el paquete %1</translation>
    </message>
    <message>
        <source>%1 is not a bundle</source>
        <translation>%1 no es un paquete</translation>
    </message>
    <message>
        <source>The bundle %1 is not trusted: %2</source>
        <translation>No se confía en el paquete %1: %2</translation>
    </message>
    <message>
        <source>it lies in no folder of plug-ins</source>
        <translation>no está en ninguna carpeta de complementos</translation>
    </message>
    <message>
        <source>The bundle %1 names no &quot;%2&quot;</source>
        <translation>El paquete %1 no nombra ningún «%2»</translation>
    </message>
    <message>
        <source>The plug-in of %1 cannot be made: %2</source>
        <translation>No se puede crear el complemento de %1: %2</translation>
    </message>
    <message>
        <source>its factory made nothing</source>
        <translation>su fábrica no creó nada</translation>
    </message>
    <message>
        <source>The plug-in of %1 is none for configuration</source>
        <translation>El complemento de %1 no es de configuración</translation>
    </message>
    <message>
        <source>%1 has no view</source>
        <translation>%1 no tiene vista</translation>
    </message>
    <message>
        <source>Cannot load &quot;%1&quot;: %2</source>
        <translation>No se puede cargar «%1»: %2</translation>
    </message>
    <message>
        <source>Cannot read &quot;%1&quot;: %2</source>
        <translation>No se puede leer «%1»: %2</translation>
    </message>
    <message>
        <source>Cannot write &quot;%1&quot;: %2</source>
        <translation>No se puede escribir «%1»: %2</translation>
    </message>
    <message>
        <source>it is not a file</source>
        <translation>no es un archivo</translation>
    </message>
    <message>
        <source>%1.</source>
        <comment>a clause as a sentence</comment>
        <translation>%1.</translation>
    </message>
    <message>
        <source>The Dozely service is not running.</source>
        <translation>El servicio Dozely no está en marcha.</translation>
    </message>
    <message>
        <source>The Dozely service did not answer in time.</source>
        <translation>El servicio Dozely no respondió a tiempo.</translation>
    </message>
    <message>
        <source>The message bus is not there.</source>
        <translation>El bus de mensajes no está disponible.</translation>
    </message>
    <message>
        <source>its &quot;%1&quot; is neither true nor false</source>
        <translation>su «%1» no es ni verdadero ni falso</translation>
    </message>
    <message>
        <source>You may not read %1</source>
        <translation>Usted no puede leer %1</translation>
    </message>
</context>
<context>
    <name>RuleFaultWords</name>
    <message>
        <source>The rule has blanks or other characters that no rule has.</source>
        <translation>La regla contiene espacios u otros caracteres que ninguna regla tiene.</translation>
    </message>
    <message>
        <source>The rule has an empty part.</source>
        <translation>La regla tiene una parte vacía.</translation>
    </message>
    <message>
        <source>The rule has a part that is not known: %1.</source>
        <translation>La regla tiene una parte desconocida: %1.</translation>
    </message>
    <message>
        <source>The rule has %1 twice.</source>
        <translation>La regla tiene %1 dos veces.</translation>
    </message>
    <message>
        <source>%1 of the rule has no value.</source>
        <translation>%1 no tiene valor en la regla.</translation>
    </message>
    <message>
        <source>In the rule, %1 has no meaning. An example: %2</source>
        <translation>En la regla, %1 no tiene sentido. Un ejemplo: %2</translation>
    </message>
    <message>
        <source>The rule has %1: no other calendars than the Gregorian are supported.</source>
        <translation>La regla tiene %1: solo se admite el calendario gregoriano.</translation>
    </message>
    <message>
        <source>The rule has no FREQ.</source>
        <translation>La regla no tiene FREQ.</translation>
    </message>
    <message>
        <source>The rule has both COUNT and UNTIL.</source>
        <translation>La regla tiene a la vez COUNT y UNTIL.</translation>
    </message>
    <message>
        <source>A number in BYDAY needs FREQ=MONTHLY or FREQ=YEARLY.</source>
        <translation>Un número en BYDAY exige FREQ=MONTHLY o FREQ=YEARLY.</translation>
    </message>
    <message>
        <source>A number in BYDAY cannot be beside BYWEEKNO.</source>
        <translation>Un número en BYDAY no puede ir junto a BYWEEKNO.</translation>
    </message>
    <message>
        <source>BYMONTHDAY cannot be beside FREQ=WEEKLY.</source>
        <translation>BYMONTHDAY no puede ir junto a FREQ=WEEKLY.</translation>
    </message>
    <message>
        <source>BYYEARDAY cannot be beside FREQ=DAILY, WEEKLY or MONTHLY.</source>
        <translation>BYYEARDAY no puede ir junto a FREQ=DAILY, WEEKLY o MONTHLY.</translation>
    </message>
    <message>
        <source>BYWEEKNO needs FREQ=YEARLY.</source>
        <translation>BYWEEKNO exige FREQ=YEARLY.</translation>
    </message>
    <message>
        <source>BYSETPOS needs another BY part.</source>
        <translation>BYSETPOS exige otra parte BY.</translation>
    </message>
    <message>
        <source>The rule gives no date within 100 years from its start.</source>
        <translation>La regla no da ninguna fecha en los 100 años desde su inicio.</translation>
    </message>
    <message>
        <source>The rule&apos;s COUNT is too large to be counted.</source>
        <translation>El COUNT de la regla es demasiado grande para contarlo.</translation>
    </message>
    <message>
        <source>The rule cannot be used: %1.</source>
        <translation>La regla no se puede usar: %1.</translation>
    </message>
</context>
</TS>
