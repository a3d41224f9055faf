<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ja" sourcelanguage="en">
<context>
    <name>CalendarText</name>
    <message>
        <source>C</source>
        <comment>the locale that has the names of days and months</comment>
        <translation>ja</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a date such as &quot;2026-03-14 06:55&quot;, &quot;06:55&quot;, &quot;tomorrow 7:00&quot;, &quot;fri 22:00&quot; or &quot;+5m&quot;</source>
        <translation>「%1」は「2026-03-14 06:55」「06:55」「tomorrow 7:00」「fri 22:00」「+5m」のような日時ではありません</translation>
    </message>
    <message>
        <source>%1 or %2</source>
        <translation>%1 または %2</translation>
    </message>
    <message>
        <source>&quot;%1&quot; can be %2</source>
        <translation>「%1」は %2 と読めます</translation>
    </message>
    <message>
        <source>%1, since clocks are changed meanwhile</source>
        <translation>%1 (その間に時計が変更されます)</translation>
    </message>
    <message>
        <source>Clocks in %1 show &quot;%2&quot; twice: say %3 or %4</source>
        <translation>%1 の時計は「%2」を 2 回示します。%3 または %4 と指定してください</translation>
    </message>
    <message>
        <source>d MMMM yyyy</source>
        <comment>form of a day</comment>
        <translation>yyyy年MMMMd日</translation>
    </message>
    <message>
        <source>%1 %2 at %3</source>
        <comment>day of the week, day, time</comment>
        <translation>%2 %1 %3</translation>
    </message>
    <message>
        <source>%1 s</source>
        <translation>%1 秒</translation>
    </message>
    <message>
        <source>%1 min</source>
        <translation>%1 分</translation>
    </message>
    <message>
        <source>%1 h</source>
        <translation>%1 時間</translation>
    </message>
    <message>
        <source>1 day</source>
        <translation>1 日</translation>
    </message>
    <message numerus="yes">
        <source>%n days</source>
        <translation>
            <numerusform>%n 日</numerusform>
        </translation>
    </message>
    <message>
        <source>&quot;%1&quot; is none of day, weekday, week, month and year, of days such as monday,thursday and of distances such as 15m and 2h</source>
        <translation>「%1」は day、weekday、week、month、year、曜日 (monday,thursday など)、間隔 (15m、2h など) のいずれでもありません</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a time such as 22:00</source>
        <translation>「%1」は 22:00 のような時刻ではありません</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a number of seconds, nor a time such as 10m, 6h or 2d</source>
        <translation>「%1」は秒数でも、10m、6h、2d のような時間でもありません</translation>
    </message>
    <message>
        <source>%1 (minutes)</source>
        <translation>%1 (分)</translation>
    </message>
    <message>
        <source>%1 (hours)</source>
        <translation>%1 (時間)</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no day of a month, which is 1 to 31, or last</source>
        <translation>「%1」は月の日 (1 から 31、または last) ではありません</translation>
    </message>
    <message>
        <source>one rule cannot mean %1 without %2, too; let the times have equal minutes, or add a second schedule</source>
        <translation>1 つの規則では %1 だけを指定できず、%2 も含まれます。分をそろえるか、別のスケジュールを追加してください</translation>
    </message>
    <message>
        <source>%1, %2</source>
        <comment>a list</comment>
        <translation>%1、%2</translation>
    </message>
    <message>
        <source>%1 and %2</source>
        <comment>the end of a list</comment>
        <translation>%1と%2</translation>
    </message>
    <message>
        <source>every year</source>
        <translation>毎年</translation>
    </message>
    <message numerus="yes">
        <source>every %n years</source>
        <translation>
            <numerusform>%n 年ごと</numerusform>
        </translation>
    </message>
    <message>
        <source>every month</source>
        <translation>毎月</translation>
    </message>
    <message numerus="yes">
        <source>every %n months</source>
        <translation>
            <numerusform>%n か月ごと</numerusform>
        </translation>
    </message>
    <message>
        <source>every week</source>
        <translation>毎週</translation>
    </message>
    <message numerus="yes">
        <source>every %n weeks</source>
        <translation>
            <numerusform>%n 週ごと</numerusform>
        </translation>
    </message>
    <message>
        <source>every day</source>
        <translation>毎日</translation>
    </message>
    <message numerus="yes">
        <source>every %n days</source>
        <translation>
            <numerusform>%n 日ごと</numerusform>
        </translation>
    </message>
    <message>
        <source>every hour</source>
        <translation>毎時</translation>
    </message>
    <message numerus="yes">
        <source>every %n hours</source>
        <translation>
            <numerusform>%n 時間ごと</numerusform>
        </translation>
    </message>
    <message>
        <source>every minute</source>
        <translation>毎分</translation>
    </message>
    <message numerus="yes">
        <source>every %n minutes</source>
        <translation>
            <numerusform>%n 分ごと</numerusform>
        </translation>
    </message>
    <message>
        <source>every second</source>
        <translation>毎秒</translation>
    </message>
    <message numerus="yes">
        <source>every %n seconds</source>
        <translation>
            <numerusform>%n 秒ごと</numerusform>
        </translation>
    </message>
    <message>
        <source>every weekday</source>
        <translation>平日</translation>
    </message>
    <message>
        <source>every %1</source>
        <comment>days of the week</comment>
        <translation>毎週%1</translation>
    </message>
    <message>
        <source>%1 on %2</source>
        <comment>every 3 weeks, days of the week</comment>
        <translation>%1 %2</translation>
    </message>
    <message>
        <source>the %1</source>
        <comment>a day of the month; only in English with an ending</comment>
        <translation>%1 日</translation>
    </message>
    <message>
        <source>the last day</source>
        <translation>最終日</translation>
    </message>
    <message>
        <source>the last %1</source>
        <comment>day of the week</comment>
        <translation>最終%1</translation>
    </message>
    <message>
        <source>the first %1</source>
        <comment>day of the week</comment>
        <translation>第 1 %1</translation>
    </message>
    <message>
        <source>the second %1</source>
        <comment>day of the week</comment>
        <translation>第 2 %1</translation>
    </message>
    <message>
        <source>the third %1</source>
        <comment>day of the week</comment>
        <translation>第 3 %1</translation>
    </message>
    <message>
        <source>the fourth %1</source>
        <comment>day of the week</comment>
        <translation>第 4 %1</translation>
    </message>
    <message>
        <source>%1 %2</source>
        <comment>a day of the year: its number, the month</comment>
        <translation>%2%1日</translation>
    </message>
    <message>
        <source>%1 on %2</source>
        <comment>every 3 months, days of the month</comment>
        <translation>%1 %2</translation>
    </message>
    <message>
        <source>%1 on %2</source>
        <comment>every 3 years, a day of the year</comment>
        <translation>%1 %2</translation>
    </message>
    <message>
        <source>%1 at %2</source>
        <comment>days, times</comment>
        <translation>%1 %2</translation>
    </message>
    <message>
        <source>%1, once</source>
        <translation>%1、1 回</translation>
    </message>
    <message numerus="yes">
        <source>%1, %n times</source>
        <translation>
            <numerusform>%1、%n 回</numerusform>
        </translation>
    </message>
    <message>
        <source>%1, until %2</source>
        <comment>a day</comment>
        <translation>%1、%2 まで</translation>
    </message>
    <message>
        <source>%1, until %2 at %3</source>
        <comment>a day and a time</comment>
        <translation>%1、%2 %3 まで</translation>
    </message>
    <message numerus="yes">
        <source>%n other days</source>
        <translation>
            <numerusform>ほか %n 日</numerusform>
        </translation>
    </message>
    <message>
        <source>by the rule %1</source>
        <translation>規則 %1 による</translation>
    </message>
    <message>
        <source>%1, and on %2</source>
        <comment>days</comment>
        <translation>%1、および %2</translation>
    </message>
    <message>
        <source>%1, except on %2</source>
        <comment>days</comment>
        <translation>%1、%2 を除く</translation>
    </message>
</context>
<context>
    <name>FeasibilityText</name>
    <message>
        <source>its &quot;%1&quot; is neither true nor false</source>
        <translation>その「%1」は真でも偽でもありません</translation>
    </message>
    <message>
        <source>it names no &quot;%1&quot;</source>
        <translation>「%1」が指定されていません</translation>
    </message>
    <message>
        <source>it acts in the daemon alone</source>
        <translation>デーモンでしか実行できません</translation>
    </message>
    <message>
        <source>the parameters name no program</source>
        <translation>パラメーターにプログラムがありません</translation>
    </message>
    <message>
        <source>the program &quot;%1&quot; is not an absolute path</source>
        <translation>プログラム「%1」は絶対パスではありません</translation>
    </message>
    <message>
        <source>there is no program %1</source>
        <translation>プログラム %1 がありません</translation>
    </message>
    <message>
        <source>%1 is no program that can be run</source>
        <translation>%1 は実行できるプログラムではありません</translation>
    </message>
    <message>
        <source>there is no bundle at %1</source>
        <translation>%1 にバンドルがありません</translation>
    </message>
    <message>
        <source>%1 cannot act in the session: %2</source>
        <translation>%1 はセッションで実行できません: %2</translation>
    </message>
    <message>
        <source>%1 cannot act in the daemon: %2</source>
        <translation>%1 はデーモンで実行できません: %2</translation>
    </message>
</context>
<context>
    <name>OutcomeNames</name>
    <message>
        <source>asked for</source>
        <translation>要求済み</translation>
    </message>
    <message>
        <source>at work</source>
        <translation>実行中</translation>
    </message>
    <message>
        <source>done</source>
        <translation>完了</translation>
    </message>
    <message>
        <source>failed</source>
        <translation>失敗</translation>
    </message>
    <message>
        <source>skipped, too late</source>
        <translation>スキップ (遅すぎ)</translation>
    </message>
    <message>
        <source>missed</source>
        <translation>逃した</translation>
    </message>
    <message>
        <source>put off</source>
        <translation>延期</translation>
    </message>
    <message>
        <source>could not be started</source>
        <translation>開始できませんでした</translation>
    </message>
    <message>
        <source>cancelled</source>
        <translation>キャンセル</translation>
    </message>
    <message>
        <source>not known</source>
        <translation>不明</translation>
    </message>
    <message>
        <source>interrupted</source>
        <translation>中断</translation>
    </message>
    <message>
        <source>exit status %1</source>
        <translation>終了ステータス %1</translation>
    </message>
</context>
<context>
    <name>RecordedOutcomes</name>
    <message>
        <source>You may not read %1</source>
        <translation>%1 を読む権限がありません</translation>
    </message>
</context>
<context>
    <name>RuleFaultWords</name>
    <message>
        <source>The rule has blanks or other characters that no rule has.</source>
        <translation>規則に空白など、使えない文字があります。</translation>
    </message>
    <message>
        <source>The rule has an empty part.</source>
        <translation>規則に空の部分があります。</translation>
    </message>
    <message>
        <source>The rule has a part that is not known: %1.</source>
        <translation>規則に不明な部分があります: %1</translation>
    </message>
    <message>
        <source>The rule has %1 twice.</source>
        <translation>規則に %1 が2回あります。</translation>
    </message>
    <message>
        <source>%1 of the rule has no value.</source>
        <translation>規則の %1 に値がありません。</translation>
    </message>
    <message>
        <source>In the rule, %1 has no meaning. An example: %2</source>
        <translation>規則の %1 は意味をなしません。例: %2</translation>
    </message>
    <message>
        <source>The rule has %1: no other calendars than the Gregorian are supported.</source>
        <translation>規則に %1 がありますが、グレゴリオ暦以外には対応していません。</translation>
    </message>
    <message>
        <source>The rule has no FREQ.</source>
        <translation>規則に FREQ がありません。</translation>
    </message>
    <message>
        <source>The rule has both COUNT and UNTIL.</source>
        <translation>規則に COUNT と UNTIL の両方があります。</translation>
    </message>
    <message>
        <source>A number in BYDAY needs FREQ=MONTHLY or FREQ=YEARLY.</source>
        <translation>BYDAY に数を付けるには FREQ=MONTHLY か FREQ=YEARLY が必要です。</translation>
    </message>
    <message>
        <source>A number in BYDAY cannot be beside BYWEEKNO.</source>
        <translation>数の付いた BYDAY は BYWEEKNO と併用できません。</translation>
    </message>
    <message>
        <source>BYMONTHDAY cannot be beside FREQ=WEEKLY.</source>
        <translation>BYMONTHDAY は FREQ=WEEKLY と併用できません。</translation>
    </message>
    <message>
        <source>BYYEARDAY cannot be beside FREQ=DAILY, WEEKLY or MONTHLY.</source>
        <translation>BYYEARDAY は FREQ=DAILY、WEEKLY、MONTHLY と併用できません。</translation>
    </message>
    <message>
        <source>BYWEEKNO needs FREQ=YEARLY.</source>
        <translation>BYWEEKNO には FREQ=YEARLY が必要です。</translation>
    </message>
    <message>
        <source>BYSETPOS needs another BY part.</source>
        <translation>BYSETPOS には他の BY の部分が必要です。</translation>
    </message>
    <message>
        <source>The rule gives no date within 100 years from its start.</source>
        <translation>規則の開始から100年以内に該当する日がありません。</translation>
    </message>
    <message>
        <source>The rule&apos;s COUNT is too large to be counted.</source>
        <translation>規則の COUNT が大きすぎて数えられません。</translation>
    </message>
    <message>
        <source>The rule cannot be used: %1.</source>
        <translation>規則を使えません: %1</translation>
    </message>
</context>
</TS>
