<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="es" sourcelanguage="en">
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
