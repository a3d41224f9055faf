<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ar" sourcelanguage="en">
<context>
    <name>OutcomeNames</name>
    <message>
        <source>asked for</source>
        <translation>مطلوب</translation>
    </message>
    <message>
        <source>at work</source>
        <translation>قيد التنفيذ</translation>
    </message>
    <message>
        <source>done</source>
        <translation>تمّ</translation>
    </message>
    <message>
        <source>failed</source>
        <translation>فشل</translation>
    </message>
    <message>
        <source>skipped, too late</source>
        <translation>متخطًّى لتأخره</translation>
    </message>
    <message>
        <source>missed</source>
        <translation>فائت</translation>
    </message>
    <message>
        <source>put off</source>
        <translation>مؤجَّل</translation>
    </message>
    <message>
        <source>could not be started</source>
        <translation>تعذّر بدؤه</translation>
    </message>
    <message>
        <source>cancelled</source>
        <translation>ملغى</translation>
    </message>
    <message>
        <source>not known</source>
        <translation>غير معروف</translation>
    </message>
    <message>
        <source>interrupted</source>
        <translation>انقطع</translation>
    </message>
    <message>
        <source>exit status %1</source>
        <translation>رمز الإنهاء %1</translation>
    </message>
</context>
<context>
    <name>RuleFaultWords</name>
    <message>
        <source>The rule has blanks or other characters that no rule has.</source>
        <translation>في القاعدة فراغات أو محارف أخرى لا تكون في قاعدة.</translation>
    </message>
    <message>
        <source>The rule has an empty part.</source>
        <translation>في القاعدة جزء فارغ.</translation>
    </message>
    <message>
        <source>The rule has a part that is not known: %1.</source>
        <translation>في القاعدة جزء غير معروف: %1.</translation>
    </message>
    <message>
        <source>The rule has %1 twice.</source>
        <translation>ورد %1 في القاعدة مرتين.</translation>
    </message>
    <message>
        <source>%1 of the rule has no value.</source>
        <translation>ليس لـ %1 قيمة في القاعدة.</translation>
    </message>
    <message>
        <source>In the rule, %1 has no meaning. An example: %2</source>
        <translation>لا معنى لـ %1 في القاعدة. مثال: %2</translation>
    </message>
    <message>
        <source>The rule has %1: no other calendars than the Gregorian are supported.</source>
        <translation>في القاعدة %1: لا يُدعَم سوى التقويم الميلادي.</translation>
    </message>
    <message>
        <source>The rule has no FREQ.</source>
        <translation>ليس في القاعدة FREQ.</translation>
    </message>
    <message>
        <source>The rule has both COUNT and UNTIL.</source>
        <translation>في القاعدة COUNT وUNTIL معًا.</translation>
    </message>
    <message>
        <source>A number in BYDAY needs FREQ=MONTHLY or FREQ=YEARLY.</source>
        <translation>العدد في BYDAY يتطلب FREQ=MONTHLY أو FREQ=YEARLY.</translation>
    </message>
    <message>
        <source>A number in BYDAY cannot be beside BYWEEKNO.</source>
        <translation>لا يجتمع عدد في BYDAY مع BYWEEKNO.</translation>
    </message>
    <message>
        <source>BYMONTHDAY cannot be beside FREQ=WEEKLY.</source>
        <translation>لا يجتمع BYMONTHDAY مع FREQ=WEEKLY.</translation>
    </message>
    <message>
        <source>BYYEARDAY cannot be beside FREQ=DAILY, WEEKLY or MONTHLY.</source>
        <translation>لا يجتمع BYYEARDAY مع FREQ=DAILY أو WEEKLY أو MONTHLY.</translation>
    </message>
    <message>
        <source>BYWEEKNO needs FREQ=YEARLY.</source>
        <translation>يتطلب BYWEEKNO وجود FREQ=YEARLY.</translation>
    </message>
    <message>
        <source>BYSETPOS needs another BY part.</source>
        <translation>يتطلب BYSETPOS جزء BY آخر.</translation>
    </message>
    <message>
        <source>The rule gives no date within 100 years from its start.</source>
        <translation>لا تعطي القاعدة أي تاريخ خلال مئة سنة من بدايتها.</translation>
    </message>
    <message>
        <source>The rule&apos;s COUNT is too large to be counted.</source>
        <translation>قيمة COUNT في القاعدة أكبر من أن تُعدّ.</translation>
    </message>
    <message>
        <source>The rule cannot be used: %1.</source>
        <translation>لا يمكن استخدام القاعدة: %1.</translation>
    </message>
</context>
</TS>
