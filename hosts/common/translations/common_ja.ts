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
    <name>ReasonWords</name>
    <message>
        <source>You are not allowed to do this.</source>
        <translation>これを行う権限がありません。</translation>
    </message>
    <message>
        <source>Nobody but root may do this here: polkit, which decides about others, cannot be asked (%1).</source>
        <translation>ここでこれを行えるのは root だけです。ほかの利用者について判断する polkit に問い合わせできません (%1)。</translation>
    </message>
    <message>
        <source>Too many questions are open that somebody has to answer first.</source>
        <translation>先に答える必要のある問い合わせが多すぎます。</translation>
    </message>
    <message>
        <source>Too many calls at a time: wait for the answers.</source>
        <translation>一度の呼び出しが多すぎます。応答を待ってください。</translation>
    </message>
    <message>
        <source>A user may have %1 schedules.</source>
        <translation>利用者 1 人が持てるスケジュールは %1 件までです。</translation>
    </message>
    <message>
        <source>The schedules of a user may have %1 bytes in all.</source>
        <translation>利用者 1 人のスケジュールは合計 %1 バイトまでです。</translation>
    </message>
    <message>
        <source>&quot;%1&quot; was changed by somebody else meanwhile.</source>
        <translation>「%1」はその間にほかの人が変更しました。</translation>
    </message>
    <message>
        <source>The name has more than %1 characters.</source>
        <translation>名前が %1 文字を超えています。</translation>
    </message>
    <message>
        <source>There is no time zone &quot;%1&quot;.</source>
        <translation>タイムゾーン「%1」はありません。</translation>
    </message>
    <message>
        <source>It is too large: a schedule has at most %1 bytes.</source>
        <translation>大きすぎます。スケジュールは %1 バイトまでです。</translation>
    </message>
    <message>
        <source>It holds something that no schedule can keep.</source>
        <translation>スケジュールに保存できないものが含まれています。</translation>
    </message>
    <message>
        <source>It cannot repeat so: with these exceptions nothing is left of it.</source>
        <translation>このようには繰り返せません。これらの例外では何も残りません。</translation>
    </message>
    <message>
        <source>It cannot repeat so: %1.</source>
        <translation>このようには繰り返せません: %1。</translation>
    </message>
    <message>
        <source>What is to follow comes only where the machine was woken or switched on for the action.</source>
        <translation>後に続く動作は、アクションのためにコンピューターを起こしたか電源を入れた場合だけ行われます。</translation>
    </message>
    <message>
        <source>Nothing could come of it: %1.</source>
        <translation>これでは何も実行できません: %1。</translation>
    </message>
    <message>
        <source>the parameters name no program</source>
        <translation>パラメーターにプログラムが指定されていません</translation>
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
        <source>%1 cannot act in the %2: %3</source>
        <translation>%1 は%2では動作できません: %3</translation>
    </message>
    <message>
        <source>session</source>
        <translation>セッション</translation>
    </message>
    <message>
        <source>daemon</source>
        <translation>サービス</translation>
    </message>
    <message>
        <source>it acts in the daemon alone</source>
        <translation>サービスの中でだけ動作します</translation>
    </message>
    <message>
        <source>it names no &quot;%1&quot;</source>
        <translation>「%1」が指定されていません</translation>
    </message>
    <message>
        <source>The schedules are damaged, and are not overwritten: %1.</source>
        <translation>スケジュールが壊れているため、上書きしません: %1。</translation>
    </message>
    <message>
        <source>%1 was not changed: %2</source>
        <translation>%1 は変更されませんでした: %2</translation>
    </message>
    <message>
        <source>there is no schedule %1</source>
        <translation>スケジュール %1 はありません</translation>
    </message>
    <message>
        <source>schedule %1 has nothing to come</source>
        <translation>スケジュール %1 には今後の予定がありません</translation>
    </message>
    <message>
        <source>schedule %1 has no occurrence at %2 that is to come</source>
        <translation>スケジュール %1 には %2 の予定がありません</translation>
    </message>
    <message>
        <source>the occurrence at %1 is not the next one of schedule %2</source>
        <translation>%1 の回はスケジュール %2 の次の回ではありません</translation>
    </message>
    <message>
        <source>%1 occurrences of schedule %2 are decided upon already</source>
        <translation>スケジュール %2 の %1 回分はすでに決められています</translation>
    </message>
    <message>
        <source>an occurrence is postponed by 1 to %1 seconds</source>
        <translation>延期できるのは 1 秒から %1 秒までです</translation>
    </message>
    <message>
        <source>it is being tried already</source>
        <translation>すでに試しています</translation>
    </message>
    <message>
        <source>an action goes on, or is due too soon</source>
        <translation>アクションが実行中か、まもなく始まります</translation>
    </message>
    <message>
        <source>the machine is kept awake by %1</source>
        <translation>コンピューターは %1 により起きたままです</translation>
    </message>
    <message>
        <source>this machine cannot be put to sleep</source>
        <translation>このコンピューターはスリープできません</translation>
    </message>
    <message>
        <source>the machine did not fall asleep</source>
        <translation>コンピューターはスリープしませんでした</translation>
    </message>
    <message>
        <source>the machine does not let itself be put to sleep</source>
        <translation>コンピューターをスリープさせることができません</translation>
    </message>
    <message>
        <source>its program ended with status %1</source>
        <translation>プログラムは状態 %1 で終了しました</translation>
    </message>
    <message>
        <source>its program could not be started</source>
        <translation>プログラムを開始できませんでした</translation>
    </message>
    <message>
        <source>its process was ended by signal %1 (%2)</source>
        <translation>プロセスはシグナル %1 で終了しました (%2)</translation>
    </message>
    <message>
        <source>its process ended by itself with status %1</source>
        <translation>プロセスは自ら状態 %1 で終了しました</translation>
    </message>
    <message>
        <source>its performer ended without a word</source>
        <translation>実行していたものが何も告げずに終了しました</translation>
    </message>
    <message>
        <source>its agent does not say why</source>
        <translation>エージェントは理由を示していません</translation>
    </message>
    <message>
        <source>it took more memory than it may</source>
        <translation>許された量を超えてメモリーを使いました</translation>
    </message>
    <message>
        <source>it took longer than %1 s</source>
        <translation>%1 秒を超えました</translation>
    </message>
    <message>
        <source>it was asked to end</source>
        <translation>終了するよう求められました</translation>
    </message>
    <message>
        <source>There is no bundle %1</source>
        <translation>バンドル %1 がありません</translation>
    </message>
    <message>
        <source>%1 is not a bundle</source>
        <translation>%1 はバンドルではありません</translation>
    </message>
    <message>
        <source>The bundle %1 is not trusted: %2</source>
        <translation>バンドル %1 は信頼されていません: %2</translation>
    </message>
    <message>
        <source>it lies in no folder of plug-ins</source>
        <translation>プラグインのフォルダーにありません</translation>
    </message>
    <message>
        <source>The bundle %1 names no &quot;%2&quot;</source>
        <translation>バンドル %1 には「%2」がありません</translation>
    </message>
    <message>
        <source>The plug-in of %1 cannot be made: %2</source>
        <translation>%1 のプラグインを作成できません: %2</translation>
    </message>
    <message>
        <source>its factory made nothing</source>
        <translation>ファクトリーが何も作りませんでした</translation>
    </message>
    <message>
        <source>The plug-in of %1 is none for configuration</source>
        <translation>%1 のプラグインは設定用ではありません</translation>
    </message>
    <message>
        <source>%1 has no view</source>
        <translation>%1 にはビューがありません</translation>
    </message>
    <message>
        <source>Cannot load &quot;%1&quot;: %2</source>
        <translation>「%1」を読み込めません: %2</translation>
    </message>
    <message>
        <source>Cannot read &quot;%1&quot;: %2</source>
        <translation>「%1」を読めません: %2</translation>
    </message>
    <message>
        <source>Cannot write &quot;%1&quot;: %2</source>
        <translation>「%1」に書き込めません: %2</translation>
    </message>
    <message>
        <source>it is not a file</source>
        <translation>ファイルではありません</translation>
    </message>
    <message>
        <source>%1.</source>
        <comment>a clause as a sentence</comment>
        <translation>%1。</translation>
    </message>
    <message>
        <source>The Dozely service is not running.</source>
        <translation>Dozely サービスは動作していません。</translation>
    </message>
    <message>
        <source>The Dozely service did not answer in time.</source>
        <translation>Dozely サービスは時間内に応答しませんでした。</translation>
    </message>
    <message>
        <source>The message bus is not there.</source>
        <translation>メッセージバスがありません。</translation>
    </message>
    <message>
        <source>its &quot;%1&quot; is neither true nor false</source>
        <translation>その「%1」は真でも偽でもありません</translation>
    </message>
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
