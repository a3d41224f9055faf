<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="es" sourcelanguage="en">
<context>
    <name>ActionPane</name>
    <message>
        <source>Action</source>
        <translation>Acción</translation>
    </message>
    <message>
        <source>Loading the settings…</source>
        <translation>Cargando los ajustes…</translation>
    </message>
    <message>
        <source>This action has no settings of its own here.</source>
        <translation>Esta acción no tiene ajustes propios aquí.</translation>
    </message>
    <message>
        <source>There is no longer an action here: its bundle is missing. Choose another one, or have it installed again.</source>
        <translation>Aquí ya no hay ninguna acción: falta su paquete. Elija otra o haga que se instale de nuevo.</translation>
    </message>
    <message>
        <source>The settings of this action cannot be shown. All else of the schedule can be changed.</source>
        <translation>No se pueden mostrar los ajustes de esta acción. Todo lo demás de la programación se puede cambiar.</translation>
    </message>
</context>
<context>
    <name>ChangeBar</name>
    <message>
        <source>Undo</source>
        <translation>Deshacer</translation>
    </message>
    <message>
        <source>Redo</source>
        <translation>Rehacer</translation>
    </message>
    <message>
        <source>&amp;Discard</source>
        <translation>&amp;Descartar</translation>
    </message>
    <message>
        <source>A&amp;pply</source>
        <translation>A&amp;plicar</translation>
    </message>
    <message>
        <source>Discarding</source>
        <translation>Descarte</translation>
    </message>
    <message>
        <source>Applying…</source>
        <translation>Aplicando…</translation>
    </message>
</context>
<context>
    <name>ClosingQuestion</name>
    <message>
        <source>Some changes have not been applied yet. Apply them before closing?</source>
        <translation>Algunos cambios aún no se han aplicado. ¿Aplicarlos antes de cerrar?</translation>
    </message>
    <message>
        <source>A&amp;pply</source>
        <translation>A&amp;plicar</translation>
    </message>
    <message>
        <source>&amp;Discard</source>
        <translation>&amp;Descartar</translation>
    </message>
</context>
<context>
    <name>DateInWords</name>
    <message>
        <source>yesterday %1</source>
        <comment>and a time</comment>
        <translation>ayer %1</translation>
    </message>
    <message>
        <source>today %1</source>
        <comment>and a time</comment>
        <translation>hoy %1</translation>
    </message>
    <message>
        <source>tomorrow %1</source>
        <comment>and a time</comment>
        <translation>mañana %1</translation>
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
        <translation>Nunca</translation>
    </message>
    <message>
        <source>After a number of times</source>
        <translation>Después de varias veces</translation>
    </message>
    <message>
        <source>Ends</source>
        <translation>Termina</translation>
    </message>
    <message>
        <source>Last day</source>
        <translation>Último día</translation>
    </message>
    <message>
        <source>How many times</source>
        <translation>Cuántas veces</translation>
    </message>
    <message>
        <source>On a day</source>
        <translation>En un día</translation>
    </message>
</context>
<context>
    <name>ExceptionList</name>
    <message>
        <source>Exceptions</source>
        <translation>Excepciones</translation>
    </message>
    <message>
        <source>Day to leave out</source>
        <translation>Día que se omite</translation>
    </message>
    <message>
        <source>Leave this day out</source>
        <translation>Omitir este día</translation>
    </message>
    <message>
        <source>Take back</source>
        <translation>Retirar</translation>
    </message>
    <message>
        <source>Takes the chosen exceptions back</source>
        <translation>Retira las excepciones elegidas</translation>
    </message>
    <message>
        <source>Nothing takes place on %1 that could be left out.</source>
        <translation>El %1 no hay nada que se pueda omitir.</translation>
    </message>
    <message>
        <source>%1, %2</source>
        <comment>a day and a time</comment>
        <translation>%1, %2</translation>
    </message>
    <message>
        <source>not on %1</source>
        <translation>no el %1</translation>
    </message>
    <message>
        <source>also on %1</source>
        <translation>también el %1</translation>
    </message>
</context>
<context>
    <name>HistoryModel</name>
    <message>
        <source>(gone)</source>
        <comment>a schedule</comment>
        <translation>(ya no está)</translation>
    </message>
    <message>
        <source>When</source>
        <translation>Cuándo</translation>
    </message>
    <message>
        <source>Schedule</source>
        <translation>Programación</translation>
    </message>
    <message>
        <source>Outcome</source>
        <translation>Resultado</translation>
    </message>
    <message>
        <source>Began</source>
        <translation>Inicio</translation>
    </message>
    <message>
        <source>Why</source>
        <translation>Por qué</translation>
    </message>
</context>
<context>
    <name>HistoryView</name>
    <message>
        <source>Search</source>
        <translation>Buscar</translation>
    </message>
    <message>
        <source>Search the history</source>
        <translation>Buscar en el historial</translation>
    </message>
    <message>
        <source>Only what went wrong</source>
        <translation>Solo lo que salió mal</translation>
    </message>
    <message>
        <source>History</source>
        <translation>Historial</translation>
    </message>
    <message>
        <source>Nothing has taken place yet.</source>
        <translation>Aún no ha tenido lugar nada.</translation>
    </message>
    <message>
        <source>Nothing in the history is like that.</source>
        <translation>No hay nada así en el historial.</translation>
    </message>
</context>
<context>
    <name>LogPane</name>
    <message>
        <source>Log</source>
        <translation>Registro</translation>
    </message>
    <message>
        <source>The log cannot be read: %1.</source>
        <translation>No se puede leer el registro: %1.</translation>
    </message>
    <message>
        <source>The log has nothing of that time.</source>
        <translation>El registro no tiene nada de ese momento.</translation>
    </message>
    <message>
        <source>These are the first %1 lines.</source>
        <translation>Estas son las primeras %1 líneas.</translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message numerus="yes">
        <source>%n schedule(s) could not be applied and keep their changes here.</source>
        <translation>
            <numerusform>%n programación no se pudo aplicar y conserva aquí sus cambios.</numerusform>
            <numerusform>%n programaciones no se pudieron aplicar y conservan aquí sus cambios.</numerusform>
        </translation>
    </message>
    <message>
        <source>Try again</source>
        <translation>Reintentar</translation>
    </message>
    <message>
        <source>The Dozely service is not running: nothing happens at its time, and nothing can be applied. An administrator starts it with “systemctl start dozelyd”.</source>
        <translation>El servicio Dozely no está en marcha: nada ocurre a su hora y no se puede aplicar nada. Un administrador lo inicia con «systemctl start dozelyd».</translation>
    </message>
    <message>
        <source>The schedules cannot be read: %1</source>
        <translation>No se pueden leer las programaciones: %1</translation>
    </message>
    <message>
        <source>Removal</source>
        <translation>Eliminación</translation>
    </message>
    <message>
        <source>This cannot be applied yet: %1</source>
        <translation>Esto aún no se puede aplicar: %1</translation>
    </message>
    <message>
        <source>Views</source>
        <translation>Vistas</translation>
    </message>
    <message>
        <source>Schedules</source>
        <translation>Programaciones</translation>
    </message>
    <message>
        <source>Month</source>
        <translation>Mes</translation>
    </message>
    <message>
        <source>History</source>
        <translation>Historial</translation>
    </message>
</context>
<context>
    <name>MonthChoice</name>
    <message>
        <source>Day %1 of the month</source>
        <translation>Día %1 del mes</translation>
    </message>
    <message>
        <source>Last day</source>
        <translation>Último día</translation>
    </message>
    <message>
        <source>The last day of the month</source>
        <translation>El último día del mes</translation>
    </message>
    <message>
        <source>Days of the month</source>
        <translation>Días del mes</translation>
    </message>
    <message>
        <source>A day of the week</source>
        <translation>Un día de la semana</translation>
    </message>
    <message>
        <source>The first</source>
        <translation>El primero</translation>
    </message>
    <message>
        <source>The second</source>
        <translation>El segundo</translation>
    </message>
    <message>
        <source>The third</source>
        <translation>El tercero</translation>
    </message>
    <message>
        <source>The fourth</source>
        <translation>El cuarto</translation>
    </message>
    <message>
        <source>The last</source>
        <translation>El último</translation>
    </message>
    <message>
        <source>Which one of the month</source>
        <translation>Cuál del mes</translation>
    </message>
    <message>
        <source>Day of the week</source>
        <translation>Día de la semana</translation>
    </message>
</context>
<context>
    <name>MonthDelegate</name>
    <message>
        <source>%1 in all</source>
        <comment>occurrences of a day</comment>
        <translation>%1 en total</translation>
    </message>
    <message>
        <source>+%1 more</source>
        <comment>occurrences of a day</comment>
        <translation>+%1 más</translation>
    </message>
</context>
<context>
    <name>MonthGrid</name>
    <message>
        <source>Month</source>
        <translation>Mes</translation>
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
        <translation>%1, omitida</translation>
    </message>
    <message>
        <source>%1, put off</source>
        <comment>an occurrence</comment>
        <translation>%1, aplazada</translation>
    </message>
    <message>
        <source>%1 more</source>
        <comment>occurrences</comment>
        <translation>%1 más</translation>
    </message>
    <message>
        <source>nothing</source>
        <comment>takes place on a day</comment>
        <translation>nada</translation>
    </message>
</context>
<context>
    <name>MonthView</name>
    <message>
        <source>Previous month</source>
        <translation>Mes anterior</translation>
    </message>
    <message>
        <source>Today</source>
        <translation>Hoy</translation>
    </message>
    <message>
        <source>Next month</source>
        <translation>Mes siguiente</translation>
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
        <translation>Nueva programación</translation>
    </message>
</context>
<context>
    <name>NextDates</name>
    <message>
        <source>Next dates</source>
        <translation>Próximas fechas</translation>
    </message>
    <message>
        <source>Nothing comes of it any more.</source>
        <translation>Ya no tendrá lugar.</translation>
    </message>
    <message>
        <source>That is past.</source>
        <translation>Eso ya pasó.</translation>
    </message>
    <message>
        <source>%1: clocks skip %2</source>
        <comment>a date and a time</comment>
        <translation>%1: los relojes saltan las %2</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <comment>a date, and what is to be known of it</comment>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>%1 (%2 in %3)</source>
        <comment>a date, and its time in another zone</comment>
        <translation>%1 (%2 en %3)</translation>
    </message>
    <message>
        <source>clocks are set forward before it</source>
        <translation>antes se adelantan los relojes</translation>
    </message>
    <message>
        <source>clocks are set back before it</source>
        <translation>antes se atrasan los relojes</translation>
    </message>
</context>
<context>
    <name>OccurrenceActions</name>
    <message>
        <source>Skip</source>
        <translation>Omitir</translation>
    </message>
    <message>
        <source>Put off</source>
        <translation>Aplazar</translation>
    </message>
    <message>
        <source>Run now</source>
        <translation>Ejecutar ahora</translation>
    </message>
    <message>
        <source>10 minutes</source>
        <translation>10 minutos</translation>
    </message>
    <message>
        <source>30 minutes</source>
        <translation>30 minutos</translation>
    </message>
    <message>
        <source>1 hour</source>
        <translation>1 hora</translation>
    </message>
    <message>
        <source>3 hours</source>
        <translation>3 horas</translation>
    </message>
    <message>
        <source>1 day</source>
        <translation>1 día</translation>
    </message>
</context>
<context>
    <name>OutcomeWords</name>
    <message>
        <source>%1 to %2</source>
        <comment>two dates</comment>
        <translation>%1 a %2</translation>
    </message>
    <message>
        <source>put off until %1</source>
        <translation>aplazada hasta %1</translation>
    </message>
    <message>
        <source>%1, %2 times</source>
        <comment>missed; a number</comment>
        <translation>%1, %2 veces</translation>
    </message>
    <message>
        <source>%1, at least %2 times</source>
        <comment>missed; a number</comment>
        <translation>%1, al menos %2 veces</translation>
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
        <translation>%1 d %2 h</translation>
    </message>
</context>
<context>
    <name>PatternRows</name>
    <message>
        <source>Days of the week</source>
        <translation>Días de la semana</translation>
    </message>
    <message>
        <source>Every</source>
        <translation>Cada</translation>
    </message>
    <message>
        <source>On</source>
        <translation>El</translation>
    </message>
    <message>
        <source>Rule</source>
        <translation>Regla</translation>
    </message>
    <message>
        <source>minutes</source>
        <translation>minutos</translation>
    </message>
    <message>
        <source>hours</source>
        <translation>horas</translation>
    </message>
    <message>
        <source>Unit</source>
        <translation>Unidad</translation>
    </message>
    <message>
        <source>A recurrence rule as iCalendar (RFC 5545) has it</source>
        <translation>Una regla de repetición como la define iCalendar (RFC 5545)</translation>
    </message>
    <message>
        <source>day</source>
        <translation>día</translation>
    </message>
    <message>
        <source>days</source>
        <translation>días</translation>
    </message>
    <message>
        <source>week</source>
        <translation>semana</translation>
    </message>
    <message>
        <source>weeks</source>
        <translation>semanas</translation>
    </message>
    <message>
        <source>month</source>
        <translation>mes</translation>
    </message>
    <message>
        <source>months</source>
        <translation>meses</translation>
    </message>
    <message>
        <source>year</source>
        <translation>año</translation>
    </message>
    <message>
        <source>years</source>
        <translation>años</translation>
    </message>
</context>
<context>
    <name>PlugInTrials</name>
    <message>
        <source>It does not come to an end while it is loaded.</source>
        <translation>No termina de cargarse.</translation>
    </message>
    <message>
        <source>It crashes while it is loaded.</source>
        <translation>Se bloquea al cargarse.</translation>
    </message>
    <message>
        <source>It cannot be tried: %1</source>
        <translation>No se puede probar: %1</translation>
    </message>
</context>
<context>
    <name>PolicyForm</name>
    <message>
        <source>If &amp;missed:</source>
        <translation>&amp;Si se pierde:</translation>
    </message>
    <message>
        <source>Runs &amp;as:</source>
        <translation>Se e&amp;jecuta como:</translation>
    </message>
    <message>
        <source>Change of what is missed</source>
        <translation>Cambio de lo perdido</translation>
    </message>
    <message>
        <source>Change of what comes afterwards</source>
        <translation>Cambio de lo que sigue</translation>
    </message>
    <message>
        <source>Change of who runs it</source>
        <translation>Cambio de quién la ejecuta</translation>
    </message>
    <message>
        <source>As the action itself says</source>
        <translation>Según diga la propia acción</translation>
    </message>
    <message>
        <source>Leave it out</source>
        <translation>Omitirla</translation>
    </message>
    <message>
        <source>Do it once, as soon as possible</source>
        <translation>Hacerla una vez, cuanto antes</translation>
    </message>
    <message>
        <source>Nothing more</source>
        <translation>Nada más</translation>
    </message>
    <message>
        <source>Sleep again, if it was woken for this</source>
        <translation>Suspender de nuevo, si se despertó para esto</translation>
    </message>
    <message>
        <source>Switch off, if it was woken or switched on for this</source>
        <translation>Apagar, si se despertó o encendió para esto</translation>
    </message>
    <message>
        <source>Me, in my session</source>
        <translation>Yo, en mi sesión</translation>
    </message>
    <message>
        <source>Administrator, in the background</source>
        <translation>El administrador, en segundo plano</translation>
    </message>
    <message>
        <source>Whoever is at the computer</source>
        <extracomment>whoever is logged in when the time comes</extracomment>
        <translation>Quien esté ante el equipo</translation>
    </message>
    <message>
        <source>Administrator, for me</source>
        <translation>El administrador, para mí</translation>
    </message>
    <message>
        <source>Another user (number %1)</source>
        <translation>Otro usuario (número %1)</translation>
    </message>
    <message>
        <source>You will be asked for an administrator&apos;s password.</source>
        <translation>Se le pedirá la contraseña de un administrador.</translation>
    </message>
    <message>
        <source>Changing this schedule needs an administrator&apos;s password.</source>
        <translation>Cambiar esta programación requiere la contraseña de un administrador.</translation>
    </message>
    <message>
        <source>Af&amp;terwards:</source>
        <translation>Desp&amp;ués:</translation>
    </message>
    <message>
        <source>This never comes: the computer is neither woken nor switched on for this schedule.</source>
        <translation>Esto no ocurrirá nunca: el equipo no se despierta ni se enciende para esta programación.</translation>
    </message>
</context>
<context>
    <name>PowerForm</name>
    <message>
        <source>&amp;Show an alert before</source>
        <translation>&amp;Mostrar un aviso antes</translation>
    </message>
    <message>
        <source>&amp;Wake the computer from sleep</source>
        <translation>D&amp;espertar el equipo</translation>
    </message>
    <message>
        <source>Switch the &amp;computer on</source>
        <translation>En&amp;cender el equipo</translation>
    </message>
    <message>
        <source>Minutes between alert and action</source>
        <translation>Minutos entre el aviso y la acción</translation>
    </message>
    <message>
        <source>Warning:</source>
        <translation>Aviso:</translation>
    </message>
    <message>
        <source>Power:</source>
        <translation>Energía:</translation>
    </message>
    <message numerus="yes">
        <source> minutes</source>
        <comment>behind a number, with a blank before it</comment>
        <translation>
            <numerusform> minuto</numerusform>
            <numerusform> minutos</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>ReadyWishes</name>
    <message>
        <source>Switch off in the evening</source>
        <translation>Apagar por la noche</translation>
    </message>
    <message>
        <source>Wake with music</source>
        <translation>Despertar con música</translation>
    </message>
    <message>
        <source>Backup at night</source>
        <translation>Copia de seguridad nocturna</translation>
    </message>
</context>
<context>
    <name>RecurrenceForm</name>
    <message>
        <source>Takes place</source>
        <translation>Tiene lugar</translation>
    </message>
    <message>
        <source>Once</source>
        <translation>Una vez</translation>
    </message>
    <message>
        <source>Every day</source>
        <translation>Cada día</translation>
    </message>
    <message>
        <source>On weekdays, Monday to Friday</source>
        <translation>Entre semana, de lunes a viernes</translation>
    </message>
    <message>
        <source>Every week</source>
        <translation>Cada semana</translation>
    </message>
    <message>
        <source>Every month</source>
        <translation>Cada mes</translation>
    </message>
    <message>
        <source>Every year</source>
        <translation>Cada año</translation>
    </message>
    <message>
        <source>Every so many minutes or hours</source>
        <translation>Cada tantos minutos u horas</translation>
    </message>
    <message>
        <source>By a rule, for experts</source>
        <translation>Según una regla, para expertos</translation>
    </message>
    <message>
        <source>Date</source>
        <translation>Fecha</translation>
    </message>
    <message>
        <source>Time</source>
        <translation>Hora</translation>
    </message>
    <message>
        <source>From</source>
        <translation>Desde</translation>
    </message>
    <message>
        <source>Ends</source>
        <translation>Termina</translation>
    </message>
    <message>
        <source>Time zone</source>
        <translation>Zona horaria</translation>
    </message>
    <message>
        <source>Exceptions</source>
        <translation>Excepciones</translation>
    </message>
</context>
<context>
    <name>ScheduleAdding</name>
    <message>
        <source>New schedule</source>
        <translation>Nueva programación</translation>
    </message>
</context>
<context>
    <name>ScheduleEditor</name>
    <message>
        <source>Action</source>
        <translation>Acción</translation>
    </message>
    <message>
        <source>When</source>
        <translation>Cuándo</translation>
    </message>
    <message>
        <source>Before</source>
        <translation>Antes</translation>
    </message>
    <message>
        <source>Options</source>
        <translation>Opciones</translation>
    </message>
    <message>
        <source>Change of the name</source>
        <translation>Cambio del nombre</translation>
    </message>
    <message>
        <source>Switching on</source>
        <translation>Activación</translation>
    </message>
    <message>
        <source>Switching off</source>
        <translation>Desactivación</translation>
    </message>
    <message>
        <source>Change of the action</source>
        <translation>Cambio de la acción</translation>
    </message>
    <message>
        <source>Change of the time</source>
        <translation>Cambio de la hora</translation>
    </message>
    <message>
        <source>Change of what comes before</source>
        <translation>Cambio de lo previo</translation>
    </message>
    <message>
        <source>Somebody else has changed this schedule, too. What you see is yours.</source>
        <translation>Otra persona también ha cambiado esta programación. Lo que ve es lo suyo.</translation>
    </message>
    <message>
        <source>Take over theirs</source>
        <translation>Tomar la suya</translation>
    </message>
    <message>
        <source>Taking over</source>
        <translation>Adopción</translation>
    </message>
    <message>
        <source>Keep mine</source>
        <translation>Conservar la mía</translation>
    </message>
    <message>
        <source>Somebody else has removed this schedule. Applying your changes adds it again.</source>
        <translation>Otra persona ha eliminado esta programación. Al aplicar sus cambios se añade de nuevo.</translation>
    </message>
    <message>
        <source>This could not be applied: %1</source>
        <translation>Esto no se pudo aplicar: %1</translation>
    </message>
    <message>
        <source>Choice of an action</source>
        <translation>Elección de una acción</translation>
    </message>
    <message>
        <source>This was not applied: %1</source>
        <translation>Esto no se aplicó: %1</translation>
    </message>
    <message>
        <source>Apply all the same</source>
        <translation>Aplicar de todos modos</translation>
    </message>
</context>
<context>
    <name>ScheduleHeader</name>
    <message>
        <source>Switched &amp;on</source>
        <translation>Acti&amp;vada</translation>
    </message>
    <message>
        <source>Name of the schedule</source>
        <translation>Nombre de la programación</translation>
    </message>
</context>
<context>
    <name>ScheduleListModel</name>
    <message>
        <source>Switching on</source>
        <translation>Activación</translation>
    </message>
    <message>
        <source>Switching off</source>
        <translation>Desactivación</translation>
    </message>
    <message>
        <source>off</source>
        <translation>desactivada</translation>
    </message>
    <message>
        <source>over</source>
        <translation>terminada</translation>
    </message>
    <message>
        <source>not applied yet</source>
        <translation>aún no aplicada</translation>
    </message>
</context>
<context>
    <name>ScheduleListPane</name>
    <message>
        <source>&amp;Remove</source>
        <translation>E&amp;liminar</translation>
    </message>
    <message>
        <source>Search</source>
        <translation>Buscar</translation>
    </message>
    <message>
        <source>Search the schedules</source>
        <translation>Buscar en las programaciones</translation>
    </message>
    <message>
        <source>Schedules</source>
        <translation>Programaciones</translation>
    </message>
    <message>
        <source>&amp;New schedule</source>
        <translation>&amp;Nueva programación</translation>
    </message>
</context>
<context>
    <name>SelfTests</name>
    <message>
        <source>An alert is shown now that announces nothing. If you see none, look whether your desktop keeps notifications back (“do not disturb”).</source>
        <translation>Ahora se muestra un aviso que no anuncia nada. Si no ve ninguno, compruebe si su escritorio retiene las notificaciones («No molestar»).</translation>
    </message>
    <message>
        <source>No alert can be shown: the agent in your session does not answer. It starts when you log in. To start it now: systemctl --user start dozely-agent</source>
        <translation>No se puede mostrar ningún aviso: el agente de su sesión no responde. Se inicia al entrar en la sesión. Para iniciarlo ahora: systemctl --user start dozely-agent</translation>
    </message>
    <message>
        <source>The computer goes to sleep for a minute. Leave it alone meanwhile.</source>
        <translation>El equipo se suspende durante un minuto. No lo toque mientras tanto.</translation>
    </message>
    <message>
        <source>Sleep for a minute</source>
        <translation>Suspender un minuto</translation>
    </message>
    <message>
        <source>Waking was not tested: %1</source>
        <translation>No se probó el despertar: %1</translation>
    </message>
    <message>
        <source>The clock took an alarm and gave it back. Whether it also wakes this computer shows when the computer sleeps.</source>
        <translation>El reloj aceptó una alarma y la devolvió. Si además despierta el equipo se verá cuando esté suspendido.</translation>
    </message>
    <message>
        <source>This computer has no clock that could wake it. Leave it on, or have missed schedules done later.</source>
        <translation>Este equipo no tiene un reloj que pueda despertarlo. Déjelo encendido o haga que lo perdido se realice más tarde.</translation>
    </message>
    <message>
        <source>The clock of this computer does not keep an alarm. Look into the settings of its firmware (BIOS, UEFI) whether waking by the clock is switched on.</source>
        <translation>El reloj de este equipo no conserva ninguna alarma. Compruebe en los ajustes del firmware (BIOS, UEFI) si está activado el despertar por reloj.</translation>
    </message>
    <message>
        <source>The computer slept, and its clock woke it. Waking works.</source>
        <translation>El equipo estuvo suspendido y su reloj lo despertó. El despertar funciona.</translation>
    </message>
    <message>
        <source>The computer was awake before its clock could wake it. Try again, and leave it alone meanwhile.</source>
        <translation>El equipo estaba despierto antes de que su reloj pudiera despertarlo. Inténtelo de nuevo sin tocarlo mientras tanto.</translation>
    </message>
    <message>
        <source>The computer slept on when its clock was to wake it. Look into the settings of its firmware (BIOS, UEFI) whether waking by the clock is switched on.</source>
        <translation>El equipo siguió suspendido cuando su reloj debía despertarlo. Compruebe en los ajustes del firmware (BIOS, UEFI) si está activado el despertar por reloj.</translation>
    </message>
</context>
<context>
    <name>SettingsButton</name>
    <message>
        <source>Settings</source>
        <translation>Ajustes</translation>
    </message>
    <message>
        <source>Show an icon in the panel</source>
        <translation>Mostrar un icono en el panel</translation>
    </message>
    <message>
        <source>This could not be kept: %1</source>
        <translation>Esto no se pudo guardar: %1</translation>
    </message>
</context>
<context>
    <name>StartPage</name>
    <message>
        <source>Nothing is planned yet</source>
        <translation>Aún no hay nada previsto</translation>
    </message>
    <message>
        <source>A schedule has the computer do something at its time. Begin with one of these, and change what you like before it is applied.</source>
        <translation>Una programación hace que el equipo actúe a su hora. Empiece con una de estas y cambie lo que quiera antes de aplicarla.</translation>
    </message>
    <message>
        <source>Something &amp;else</source>
        <translation>&amp;Otra cosa</translation>
    </message>
    <message>
        <source>%1, for the first time %2</source>
        <extracomment>an action, and when it takes place first: &quot;Power Off, for the first time tomorrow 22:00&quot;</extracomment>
        <translation>%1, por primera vez %2</translation>
    </message>
</context>
<context>
    <name>StatusLine</name>
    <message>
        <source>Service running</source>
        <translation>Servicio en marcha</translation>
    </message>
    <message>
        <source>Version %1</source>
        <translation>Versión %1</translation>
    </message>
    <message>
        <source>Service not running</source>
        <translation>Servicio parado</translation>
    </message>
    <message>
        <source>An administrator starts it with: systemctl start dozelyd</source>
        <translation>Un administrador lo inicia con: systemctl start dozelyd</translation>
    </message>
    <message>
        <source>Nobody logged in</source>
        <translation>Nadie ha iniciado sesión</translation>
    </message>
    <message>
        <source>No session is at this computer&apos;s screen now. Actions that need one wait for it.</source>
        <translation>Ahora no hay ninguna sesión en la pantalla de este equipo. Las acciones que la necesitan esperan.</translation>
    </message>
    <message>
        <source>Agent running</source>
        <translation>Agente en marcha</translation>
    </message>
    <message>
        <source>It shows alerts and acts in the session of %1.</source>
        <translation>Muestra los avisos y actúa en la sesión de %1.</translation>
    </message>
    <message>
        <source>Agent not running</source>
        <translation>Agente parado</translation>
    </message>
    <message>
        <source>It starts when you log in. To start it now: systemctl --user start dozely-agent</source>
        <translation>Se inicia al entrar en la sesión. Para iniciarlo ahora: systemctl --user start dozely-agent</translation>
    </message>
    <message>
        <source>Cannot wake this computer</source>
        <translation>No se puede despertar</translation>
    </message>
    <message>
        <source>It has no clock that could wake it or switch it on. Have it stay awake instead.</source>
        <translation>No tiene un reloj que pueda despertarlo o encenderlo. Déjelo despierto.</translation>
    </message>
    <message>
        <source>Wake clock ready</source>
        <translation>Reloj de despertar listo</translation>
    </message>
    <message>
        <source>Wakes %1</source>
        <translation>Despierta %1</translation>
    </message>
    <message>
        <source>The clock %1 wakes this computer.</source>
        <translation>El reloj %1 despierta este equipo.</translation>
    </message>
    <message>
        <source>Test the alert</source>
        <translation>Probar el aviso</translation>
    </message>
    <message>
        <source>Shows an alert that announces nothing, to see whether alerts reach you.</source>
        <translation>Muestra un aviso que no anuncia nada, para ver si los avisos le llegan.</translation>
    </message>
    <message>
        <source>Test waking</source>
        <translation>Probar el despertar</translation>
    </message>
    <message>
        <source>Tries whether the clock of this computer can wake it.</source>
        <translation>Comprueba si el reloj de este equipo puede despertarlo.</translation>
    </message>
</context>
<context>
    <name>TimesOfDay</name>
    <message>
        <source>Another time</source>
        <translation>Otra hora</translation>
    </message>
    <message>
        <source>Adds another time of day</source>
        <translation>Añade otra hora</translation>
    </message>
    <message>
        <source>Time</source>
        <translation>Hora</translation>
    </message>
    <message>
        <source>Remove this time</source>
        <translation>Quitar esta hora</translation>
    </message>
</context>
<context>
    <name>TimingRemark</name>
    <message>
        <source>Years without a 29 February are left out.</source>
        <translation>Los años sin 29 de febrero se omiten.</translation>
    </message>
    <message>
        <source>Months without a day %1 are left out; &quot;Last day&quot; is the last of each month.</source>
        <translation>Los meses sin día %1 se omiten; «Último día» es el último de cada mes.</translation>
    </message>
    <message>
        <source>Clocks skip %1 on that day; it takes place at %2.</source>
        <translation>Ese día los relojes saltan las %1; tiene lugar a las %2.</translation>
    </message>
    <message>
        <source>Clocks show %1 twice on that day; it takes place at the first.</source>
        <translation>Ese día los relojes marcan las %1 dos veces; tiene lugar la primera.</translation>
    </message>
</context>
<context>
    <name>TimingWriter</name>
    <message>
        <source>With these exceptions nothing is left of it.</source>
        <translation>Con estas excepciones no queda nada.</translation>
    </message>
    <message>
        <source>That moment is past.</source>
        <translation>Ese momento ya pasó.</translation>
    </message>
    <message>
        <source>There is no time zone &quot;%1&quot;.</source>
        <translation>No existe la zona horaria «%1».</translation>
    </message>
    <message>
        <source>Choose a day of the week.</source>
        <translation>Elija un día de la semana.</translation>
    </message>
    <message>
        <source>Choose a day of the month.</source>
        <translation>Elija un día del mes.</translation>
    </message>
    <message>
        <source>One schedule cannot mean %1 without %2, too. Let the times have equal minutes, or add a second schedule.</source>
        <translation>Una programación no puede significar %1 sin %2 también. Ponga los mismos minutos en las horas o añada otra programación.</translation>
    </message>
    <message>
        <source>It ends before it begins.</source>
        <translation>Termina antes de empezar.</translation>
    </message>
    <message>
        <source>There can be at most %1 exceptions.</source>
        <translation>Puede haber como máximo %1 excepciones.</translation>
    </message>
</context>
<context>
    <name>WhenPane</name>
    <message>
        <source>Next dates</source>
        <translation>Próximas fechas</translation>
    </message>
</context>
<context>
    <name>YearChoice</name>
    <message>
        <source>Month</source>
        <translation>Mes</translation>
    </message>
    <message>
        <source>Day of the month</source>
        <translation>Día del mes</translation>
    </message>
</context>
<context>
    <name>ZoneChoice</name>
    <message>
        <source>This machine&apos;s (%1)</source>
        <translation>La de este equipo (%1)</translation>
    </message>
</context>
</TS>
