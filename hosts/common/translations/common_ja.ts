<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ja" sourcelanguage="en">
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
