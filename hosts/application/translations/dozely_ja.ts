<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ja" sourcelanguage="en">
<context>
    <name>ActionPane</name>
    <message>
        <source>Action</source>
        <translation>アクション</translation>
    </message>
    <message>
        <source>Loading the settings…</source>
        <translation>設定を読み込んでいます…</translation>
    </message>
    <message>
        <source>This action has no settings of its own here.</source>
        <translation>このアクションには固有の設定がありません。</translation>
    </message>
    <message>
        <source>There is no longer an action here: its bundle is missing. Choose another one, or have it installed again.</source>
        <translation>アクションのバンドルが見つかりません。別のアクションを選ぶか、もう一度インストールしてください。</translation>
    </message>
    <message>
        <source>The settings of this action cannot be shown. All else of the schedule can be changed.</source>
        <translation>このアクションの設定は表示できません。スケジュールのほかの部分は変更できます。</translation>
    </message>
</context>
<context>
    <name>ChangeBar</name>
    <message>
        <source>Undo</source>
        <translation>元に戻す</translation>
    </message>
    <message>
        <source>Redo</source>
        <translation>やり直す</translation>
    </message>
    <message>
        <source>&amp;Discard</source>
        <translation>破棄(&amp;D)</translation>
    </message>
    <message>
        <source>A&amp;pply</source>
        <translation>適用(&amp;P)</translation>
    </message>
    <message>
        <source>Discarding</source>
        <translation>破棄</translation>
    </message>
    <message>
        <source>Applying…</source>
        <translation>適用しています…</translation>
    </message>
</context>
<context>
    <name>ClosingQuestion</name>
    <message>
        <source>Some changes have not been applied yet. Apply them before closing?</source>
        <translation>まだ適用していない変更があります。閉じる前に適用しますか?</translation>
    </message>
    <message>
        <source>A&amp;pply</source>
        <translation>適用(&amp;P)</translation>
    </message>
    <message>
        <source>&amp;Discard</source>
        <translation>破棄(&amp;D)</translation>
    </message>
</context>
<context>
    <name>DateInWords</name>
    <message>
        <source>yesterday %1</source>
        <comment>and a time</comment>
        <translation>昨日 %1</translation>
    </message>
    <message>
        <source>today %1</source>
        <comment>and a time</comment>
        <translation>今日 %1</translation>
    </message>
    <message>
        <source>tomorrow %1</source>
        <comment>and a time</comment>
        <translation>明日 %1</translation>
    </message>
    <message>
        <source>%1 %2</source>
        <comment>a day of the week and a time</comment>
        <translation>%1 %2</translation>
    </message>
    <message>
        <source>%1, %2</source>
        <comment>a day and a time</comment>
        <translation>%1 %2</translation>
    </message>
</context>
<context>
    <name>EndChoice</name>
    <message>
        <source>Never</source>
        <translation>終了しない</translation>
    </message>
    <message>
        <source>After a number of times</source>
        <translation>指定回数の後</translation>
    </message>
    <message>
        <source>Ends</source>
        <translation>終了</translation>
    </message>
    <message>
        <source>Last day</source>
        <translation>最終日</translation>
    </message>
    <message>
        <source>How many times</source>
        <translation>回数</translation>
    </message>
    <message>
        <source>On a day</source>
        <translation>指定日</translation>
    </message>
</context>
<context>
    <name>ExceptionList</name>
    <message>
        <source>Exceptions</source>
        <translation>例外</translation>
    </message>
    <message>
        <source>Day to leave out</source>
        <translation>除外する日</translation>
    </message>
    <message>
        <source>Leave this day out</source>
        <translation>この日を除外</translation>
    </message>
    <message>
        <source>Take back</source>
        <translation>取り消す</translation>
    </message>
    <message>
        <source>Takes the chosen exceptions back</source>
        <translation>選んだ例外を取り消します</translation>
    </message>
    <message>
        <source>Nothing takes place on %1 that could be left out.</source>
        <translation>%1 には除外できるものがありません。</translation>
    </message>
    <message>
        <source>%1, %2</source>
        <comment>a day and a time</comment>
        <translation>%1 %2</translation>
    </message>
    <message>
        <source>not on %1</source>
        <translation>%1 を除く</translation>
    </message>
    <message>
        <source>also on %1</source>
        <translation>%1 にも</translation>
    </message>
</context>
<context>
    <name>HistoryModel</name>
    <message>
        <source>(gone)</source>
        <comment>a schedule</comment>
        <translation>(削除済み)</translation>
    </message>
    <message>
        <source>When</source>
        <translation>日時</translation>
    </message>
    <message>
        <source>Schedule</source>
        <translation>スケジュール</translation>
    </message>
    <message>
        <source>Outcome</source>
        <translation>結果</translation>
    </message>
    <message>
        <source>Began</source>
        <translation>開始</translation>
    </message>
    <message>
        <source>Why</source>
        <translation>理由</translation>
    </message>
</context>
<context>
    <name>HistoryView</name>
    <message>
        <source>Search</source>
        <translation>検索</translation>
    </message>
    <message>
        <source>Search the history</source>
        <translation>履歴を検索</translation>
    </message>
    <message>
        <source>Only what went wrong</source>
        <translation>問題があったものだけ</translation>
    </message>
    <message>
        <source>History</source>
        <translation>履歴</translation>
    </message>
    <message>
        <source>Nothing has taken place yet.</source>
        <translation>まだ何も実行されていません。</translation>
    </message>
    <message>
        <source>Nothing in the history is like that.</source>
        <translation>該当する履歴はありません。</translation>
    </message>
</context>
<context>
    <name>LogPane</name>
    <message>
        <source>Log</source>
        <translation>ログ</translation>
    </message>
    <message>
        <source>The log cannot be read: %1.</source>
        <translation>ログを読み込めません: %1。</translation>
    </message>
    <message>
        <source>The log has nothing of that time.</source>
        <translation>その時間のログはありません。</translation>
    </message>
    <message>
        <source>These are the first %1 lines.</source>
        <translation>最初の %1 行です。</translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message numerus="yes">
        <source>%n schedule(s) could not be applied and keep their changes here.</source>
        <translation>
            <numerusform>%n 件のスケジュールを適用できませんでした。変更はここに残っています。</numerusform>
        </translation>
    </message>
    <message>
        <source>Try again</source>
        <translation>再試行</translation>
    </message>
    <message>
        <source>The Dozely service is not running: nothing happens at its time, and nothing can be applied. An administrator starts it with “systemctl start dozelyd”.</source>
        <translation>Dozely サービスが動作していません。予定は実行されず、変更も適用できません。管理者が「systemctl start dozelyd」で開始できます。</translation>
    </message>
    <message>
        <source>The schedules cannot be read: %1</source>
        <translation>スケジュールを読み込めません: %1</translation>
    </message>
    <message>
        <source>Removal</source>
        <translation>削除</translation>
    </message>
    <message>
        <source>This cannot be applied yet: %1</source>
        <translation>まだ適用できません: %1</translation>
    </message>
    <message>
        <source>Views</source>
        <translation>表示</translation>
    </message>
    <message>
        <source>Schedules</source>
        <translation>スケジュール</translation>
    </message>
    <message>
        <source>Month</source>
        <translation>月</translation>
    </message>
    <message>
        <source>History</source>
        <translation>履歴</translation>
    </message>
</context>
<context>
    <name>MonthChoice</name>
    <message>
        <source>Day %1 of the month</source>
        <translation>月の %1 日</translation>
    </message>
    <message>
        <source>Last day</source>
        <translation>最終日</translation>
    </message>
    <message>
        <source>The last day of the month</source>
        <translation>月の最終日</translation>
    </message>
    <message>
        <source>Days of the month</source>
        <translation>月の日</translation>
    </message>
    <message>
        <source>A day of the week</source>
        <translation>曜日</translation>
    </message>
    <message>
        <source>The first</source>
        <translation>第 1</translation>
    </message>
    <message>
        <source>The second</source>
        <translation>第 2</translation>
    </message>
    <message>
        <source>The third</source>
        <translation>第 3</translation>
    </message>
    <message>
        <source>The fourth</source>
        <translation>第 4</translation>
    </message>
    <message>
        <source>The last</source>
        <translation>最終</translation>
    </message>
    <message>
        <source>Which one of the month</source>
        <translation>月の何番目</translation>
    </message>
    <message>
        <source>Day of the week</source>
        <translation>曜日</translation>
    </message>
</context>
<context>
    <name>MonthDelegate</name>
    <message>
        <source>%1 in all</source>
        <comment>occurrences of a day</comment>
        <translation>計 %1 件</translation>
    </message>
    <message>
        <source>+%1 more</source>
        <comment>occurrences of a day</comment>
        <translation>ほか %1 件</translation>
    </message>
</context>
<context>
    <name>MonthGrid</name>
    <message>
        <source>Month</source>
        <translation>月</translation>
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
        <translation>%1、スキップ</translation>
    </message>
    <message>
        <source>%1, put off</source>
        <comment>an occurrence</comment>
        <translation>%1、延期</translation>
    </message>
    <message>
        <source>%1 more</source>
        <comment>occurrences</comment>
        <translation>ほか %1 件</translation>
    </message>
    <message>
        <source>nothing</source>
        <comment>takes place on a day</comment>
        <translation>なし</translation>
    </message>
</context>
<context>
    <name>MonthView</name>
    <message>
        <source>Previous month</source>
        <translation>前の月</translation>
    </message>
    <message>
        <source>Today</source>
        <translation>今日</translation>
    </message>
    <message>
        <source>Next month</source>
        <translation>次の月</translation>
    </message>
    <message>
        <source>%1 %2</source>
        <comment>a month and a year</comment>
        <translation>%2年%1</translation>
    </message>
</context>
<context>
    <name>NewSchedule</name>
    <message>
        <source>New schedule</source>
        <translation>新しいスケジュール</translation>
    </message>
</context>
<context>
    <name>NextDates</name>
    <message>
        <source>Next dates</source>
        <translation>次の日時</translation>
    </message>
    <message>
        <source>Nothing comes of it any more.</source>
        <translation>今後の予定はありません。</translation>
    </message>
    <message>
        <source>That is past.</source>
        <translation>過ぎています。</translation>
    </message>
    <message>
        <source>%1: clocks skip %2</source>
        <comment>a date and a time</comment>
        <translation>%1: 時計が %2 を飛ばします</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <comment>a date, and what is to be known of it</comment>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>%1 (%2 in %3)</source>
        <comment>a date, and its time in another zone</comment>
        <translation>%1 (%3 では %2)</translation>
    </message>
    <message>
        <source>clocks are set forward before it</source>
        <translation>その前に時計が進められます</translation>
    </message>
    <message>
        <source>clocks are set back before it</source>
        <translation>その前に時計が戻されます</translation>
    </message>
</context>
<context>
    <name>OccurrenceActions</name>
    <message>
        <source>Skip</source>
        <translation>スキップ</translation>
    </message>
    <message>
        <source>Put off</source>
        <translation>延期</translation>
    </message>
    <message>
        <source>Run now</source>
        <translation>今すぐ実行</translation>
    </message>
    <message>
        <source>10 minutes</source>
        <translation>10 分</translation>
    </message>
    <message>
        <source>30 minutes</source>
        <translation>30 分</translation>
    </message>
    <message>
        <source>1 hour</source>
        <translation>1 時間</translation>
    </message>
    <message>
        <source>3 hours</source>
        <translation>3 時間</translation>
    </message>
    <message>
        <source>1 day</source>
        <translation>1 日</translation>
    </message>
</context>
<context>
    <name>OutcomeWords</name>
    <message>
        <source>%1 to %2</source>
        <comment>two dates</comment>
        <translation>%1 から %2</translation>
    </message>
    <message>
        <source>put off until %1</source>
        <translation>%1 まで延期</translation>
    </message>
    <message>
        <source>%1, %2 times</source>
        <comment>missed; a number</comment>
        <translation>%1、%2 回</translation>
    </message>
    <message>
        <source>%1, at least %2 times</source>
        <comment>missed; a number</comment>
        <translation>%1、%2 回以上</translation>
    </message>
    <message>
        <source>on time</source>
        <translation>定刻</translation>
    </message>
    <message>
        <source>%1 late</source>
        <comment>a duration</comment>
        <translation>%1 遅れ</translation>
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
        <source>%1 h %2 min</source>
        <translation>%1 時間 %2 分</translation>
    </message>
    <message>
        <source>%1 d %2 h</source>
        <comment>days and hours</comment>
        <translation>%1 日 %2 時間</translation>
    </message>
</context>
<context>
    <name>PatternRows</name>
    <message>
        <source>Days of the week</source>
        <translation>曜日</translation>
    </message>
    <message>
        <source>Every</source>
        <translation>間隔</translation>
    </message>
    <message>
        <source>On</source>
        <translation>日</translation>
    </message>
    <message>
        <source>Rule</source>
        <translation>規則</translation>
    </message>
    <message>
        <source>minutes</source>
        <translation>分</translation>
    </message>
    <message>
        <source>hours</source>
        <translation>時間</translation>
    </message>
    <message>
        <source>Unit</source>
        <translation>単位</translation>
    </message>
    <message>
        <source>A recurrence rule as iCalendar (RFC 5545) has it</source>
        <translation>iCalendar (RFC 5545) 形式の繰り返し規則</translation>
    </message>
    <message>
        <source>day</source>
        <translation>日</translation>
    </message>
    <message>
        <source>days</source>
        <translation>日</translation>
    </message>
    <message>
        <source>week</source>
        <translation>週</translation>
    </message>
    <message>
        <source>weeks</source>
        <translation>週</translation>
    </message>
    <message>
        <source>month</source>
        <translation>か月</translation>
    </message>
    <message>
        <source>months</source>
        <translation>か月</translation>
    </message>
    <message>
        <source>year</source>
        <translation>年</translation>
    </message>
    <message>
        <source>years</source>
        <translation>年</translation>
    </message>
</context>
<context>
    <name>PlugInTrials</name>
    <message>
        <source>It does not come to an end while it is loaded.</source>
        <translation>読み込みが終わりません。</translation>
    </message>
    <message>
        <source>It crashes while it is loaded.</source>
        <translation>読み込み中に異常終了します。</translation>
    </message>
    <message>
        <source>It cannot be tried: %1</source>
        <translation>試せません: %1</translation>
    </message>
</context>
<context>
    <name>PolicyForm</name>
    <message>
        <source>If &amp;missed:</source>
        <translation>逃した場合(&amp;M):</translation>
    </message>
    <message>
        <source>Runs &amp;as:</source>
        <translation>実行者(&amp;A):</translation>
    </message>
    <message>
        <source>Change of what is missed</source>
        <translation>逃した場合の変更</translation>
    </message>
    <message>
        <source>Change of what comes afterwards</source>
        <translation>実行後の変更</translation>
    </message>
    <message>
        <source>Change of who runs it</source>
        <translation>実行者の変更</translation>
    </message>
    <message>
        <source>As the action itself says</source>
        <translation>アクションの指定どおり</translation>
    </message>
    <message>
        <source>Leave it out</source>
        <translation>実行しない</translation>
    </message>
    <message>
        <source>Do it once, as soon as possible</source>
        <translation>できるだけ早く 1 回実行する</translation>
    </message>
    <message>
        <source>Nothing more</source>
        <translation>何もしない</translation>
    </message>
    <message>
        <source>Sleep again, if it was woken for this</source>
        <translation>このために起動した場合は再びスリープ</translation>
    </message>
    <message>
        <source>Switch off, if it was woken or switched on for this</source>
        <translation>このために起動した場合は電源を切る</translation>
    </message>
    <message>
        <source>Me, in my session</source>
        <translation>自分 (自分のセッション)</translation>
    </message>
    <message>
        <source>Administrator, in the background</source>
        <translation>管理者 (バックグラウンド)</translation>
    </message>
    <message>
        <source>Whoever is at the computer</source>
        <extracomment>whoever is logged in when the time comes</extracomment>
        <translation>コンピューターを使っている人</translation>
    </message>
    <message>
        <source>Administrator, for me</source>
        <translation>管理者 (自分のため)</translation>
    </message>
    <message>
        <source>Another user (number %1)</source>
        <translation>別のユーザー (番号 %1)</translation>
    </message>
    <message>
        <source>You will be asked for an administrator&apos;s password.</source>
        <translation>管理者のパスワードが求められます。</translation>
    </message>
    <message>
        <source>Changing this schedule needs an administrator&apos;s password.</source>
        <translation>このスケジュールの変更には管理者のパスワードが必要です。</translation>
    </message>
    <message>
        <source>Af&amp;terwards:</source>
        <translation>実行後(&amp;T):</translation>
    </message>
    <message>
        <source>This never comes: the computer is neither woken nor switched on for this schedule.</source>
        <translation>このスケジュールのために復帰や起動は行われないため、これは実行されません。</translation>
    </message>
</context>
<context>
    <name>PowerForm</name>
    <message>
        <source>&amp;Show an alert before</source>
        <translation>事前に通知する(&amp;S)</translation>
    </message>
    <message>
        <source>&amp;Wake the computer from sleep</source>
        <translation>スリープを解除する(&amp;W)</translation>
    </message>
    <message>
        <source>Switch the &amp;computer on</source>
        <translation>電源を入れる(&amp;C)</translation>
    </message>
    <message>
        <source>Minutes between alert and action</source>
        <translation>通知からアクションまでの分数</translation>
    </message>
    <message>
        <source>Warning:</source>
        <translation>通知:</translation>
    </message>
    <message>
        <source>Power:</source>
        <translation>電源:</translation>
    </message>
    <message numerus="yes">
        <source> minutes</source>
        <comment>behind a number, with a blank before it</comment>
        <translation>
            <numerusform> 分</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>ReadyWishes</name>
    <message>
        <source>Switch off in the evening</source>
        <translation>夜に電源を切る</translation>
    </message>
    <message>
        <source>Wake with music</source>
        <translation>音楽で起こす</translation>
    </message>
    <message>
        <source>Backup at night</source>
        <translation>夜間バックアップ</translation>
    </message>
</context>
<context>
    <name>RecurrenceForm</name>
    <message>
        <source>Takes place</source>
        <translation>実行</translation>
    </message>
    <message>
        <source>Once</source>
        <translation>1 回</translation>
    </message>
    <message>
        <source>Every day</source>
        <translation>毎日</translation>
    </message>
    <message>
        <source>On weekdays, Monday to Friday</source>
        <translation>平日 (月曜日から金曜日)</translation>
    </message>
    <message>
        <source>Every week</source>
        <translation>毎週</translation>
    </message>
    <message>
        <source>Every month</source>
        <translation>毎月</translation>
    </message>
    <message>
        <source>Every year</source>
        <translation>毎年</translation>
    </message>
    <message>
        <source>Every so many minutes or hours</source>
        <translation>一定の分または時間ごと</translation>
    </message>
    <message>
        <source>By a rule, for experts</source>
        <translation>規則を指定 (上級者向け)</translation>
    </message>
    <message>
        <source>Date</source>
        <translation>日付</translation>
    </message>
    <message>
        <source>Time</source>
        <translation>時刻</translation>
    </message>
    <message>
        <source>From</source>
        <translation>開始</translation>
    </message>
    <message>
        <source>Ends</source>
        <translation>終了</translation>
    </message>
    <message>
        <source>Time zone</source>
        <translation>タイムゾーン</translation>
    </message>
    <message>
        <source>Exceptions</source>
        <translation>例外</translation>
    </message>
</context>
<context>
    <name>ScheduleAdding</name>
    <message>
        <source>New schedule</source>
        <translation>新しいスケジュール</translation>
    </message>
</context>
<context>
    <name>ScheduleEditor</name>
    <message>
        <source>Action</source>
        <translation>アクション</translation>
    </message>
    <message>
        <source>When</source>
        <translation>日時</translation>
    </message>
    <message>
        <source>Before</source>
        <translation>実行前</translation>
    </message>
    <message>
        <source>Options</source>
        <translation>オプション</translation>
    </message>
    <message>
        <source>Change of the name</source>
        <translation>名前の変更</translation>
    </message>
    <message>
        <source>Switching on</source>
        <translation>オンにする</translation>
    </message>
    <message>
        <source>Switching off</source>
        <translation>オフにする</translation>
    </message>
    <message>
        <source>Change of the action</source>
        <translation>アクションの変更</translation>
    </message>
    <message>
        <source>Change of the time</source>
        <translation>日時の変更</translation>
    </message>
    <message>
        <source>Change of what comes before</source>
        <translation>実行前の変更</translation>
    </message>
    <message>
        <source>Somebody else has changed this schedule, too. What you see is yours.</source>
        <translation>ほかの人もこのスケジュールを変更しました。表示中はあなたの変更です。</translation>
    </message>
    <message>
        <source>Take over theirs</source>
        <translation>相手の変更を使う</translation>
    </message>
    <message>
        <source>Taking over</source>
        <translation>取り込み</translation>
    </message>
    <message>
        <source>Keep mine</source>
        <translation>自分の変更を残す</translation>
    </message>
    <message>
        <source>Somebody else has removed this schedule. Applying your changes adds it again.</source>
        <translation>ほかの人がこのスケジュールを削除しました。変更を適用すると再び追加されます。</translation>
    </message>
    <message>
        <source>This could not be applied: %1</source>
        <translation>適用できませんでした: %1</translation>
    </message>
    <message>
        <source>Choice of an action</source>
        <translation>アクションの選択</translation>
    </message>
    <message>
        <source>This was not applied: %1</source>
        <translation>適用されませんでした: %1</translation>
    </message>
    <message>
        <source>Apply all the same</source>
        <translation>それでも適用</translation>
    </message>
</context>
<context>
    <name>ScheduleHeader</name>
    <message>
        <source>Switched &amp;on</source>
        <translation>オン(&amp;O)</translation>
    </message>
    <message>
        <source>Name of the schedule</source>
        <translation>スケジュールの名前</translation>
    </message>
</context>
<context>
    <name>ScheduleListModel</name>
    <message>
        <source>Switching on</source>
        <translation>オンにする</translation>
    </message>
    <message>
        <source>Switching off</source>
        <translation>オフにする</translation>
    </message>
    <message>
        <source>off</source>
        <translation>オフ</translation>
    </message>
    <message>
        <source>over</source>
        <translation>終了</translation>
    </message>
    <message>
        <source>not applied yet</source>
        <translation>未適用</translation>
    </message>
</context>
<context>
    <name>ScheduleListPane</name>
    <message>
        <source>&amp;Remove</source>
        <translation>削除(&amp;R)</translation>
    </message>
    <message>
        <source>Search</source>
        <translation>検索</translation>
    </message>
    <message>
        <source>Search the schedules</source>
        <translation>スケジュールを検索</translation>
    </message>
    <message>
        <source>Schedules</source>
        <translation>スケジュール</translation>
    </message>
    <message>
        <source>&amp;New schedule</source>
        <translation>新しいスケジュール(&amp;N)</translation>
    </message>
</context>
<context>
    <name>SelfTests</name>
    <message>
        <source>An alert is shown now that announces nothing. If you see none, look whether your desktop keeps notifications back (“do not disturb”).</source>
        <translation>何も予告しない通知が表示されています。見えない場合は、デスクトップが通知を抑えていないか(「おやすみモード」など)確認してください。</translation>
    </message>
    <message>
        <source>No alert can be shown: the agent in your session does not answer. It starts when you log in. To start it now: systemctl --user start dozely-agent</source>
        <translation>通知を表示できません。セッションのエージェントが応答しません。エージェントはログイン時に起動します。今すぐ起動するには: systemctl --user start dozely-agent</translation>
    </message>
    <message>
        <source>The computer goes to sleep for a minute. Leave it alone meanwhile.</source>
        <translation>コンピューターは1分間スリープします。その間は触らないでください。</translation>
    </message>
    <message>
        <source>Sleep for a minute</source>
        <translation>1分間スリープ</translation>
    </message>
    <message>
        <source>Waking was not tested: %1</source>
        <translation>復帰はテストされませんでした: %1</translation>
    </message>
    <message>
        <source>The clock took an alarm and gave it back. Whether it also wakes this computer shows when the computer sleeps.</source>
        <translation>時計はアラームを受け付け、読み戻せました。実際に復帰するかどうかは、スリープさせるとわかります。</translation>
    </message>
    <message>
        <source>This computer has no clock that could wake it. Leave it on, or have missed schedules done later.</source>
        <translation>このコンピューターには復帰に使える時計がありません。電源を入れたままにするか、逃した予定を後で実行するようにしてください。</translation>
    </message>
    <message>
        <source>The clock of this computer does not keep an alarm. Look into the settings of its firmware (BIOS, UEFI) whether waking by the clock is switched on.</source>
        <translation>このコンピューターの時計はアラームを保持しません。ファームウェア(BIOS、UEFI)の設定で、時計による復帰が有効か確認してください。</translation>
    </message>
    <message>
        <source>The computer slept, and its clock woke it. Waking works.</source>
        <translation>コンピューターはスリープし、時計によって復帰しました。復帰は正しく動作します。</translation>
    </message>
    <message>
        <source>The computer was awake before its clock could wake it. Try again, and leave it alone meanwhile.</source>
        <translation>時計が働く前にコンピューターが復帰しました。もう一度試し、その間は触らないでください。</translation>
    </message>
    <message>
        <source>The computer slept on when its clock was to wake it. Look into the settings of its firmware (BIOS, UEFI) whether waking by the clock is switched on.</source>
        <translation>時計が働くはずの時刻にもコンピューターはスリープしたままでした。ファームウェア(BIOS、UEFI)の設定で、時計による復帰が有効か確認してください。</translation>
    </message>
</context>
<context>
    <name>SettingsButton</name>
    <message>
        <source>Settings</source>
        <translation>設定</translation>
    </message>
    <message>
        <source>Show an icon in the panel</source>
        <translation>パネルにアイコンを表示</translation>
    </message>
    <message>
        <source>This could not be kept: %1</source>
        <translation>保存できませんでした: %1</translation>
    </message>
</context>
<context>
    <name>StartPage</name>
    <message>
        <source>Nothing is planned yet</source>
        <translation>まだ予定がありません</translation>
    </message>
    <message>
        <source>A schedule has the computer do something at its time. Begin with one of these, and change what you like before it is applied.</source>
        <translation>スケジュールは、決まった時刻にコンピューターに作業をさせます。次のいずれかから始め、適用する前に自由に変更してください。</translation>
    </message>
    <message>
        <source>Something &amp;else</source>
        <translation>その他(&amp;E)</translation>
    </message>
    <message>
        <source>%1, for the first time %2</source>
        <extracomment>an action, and when it takes place first: &quot;Power Off, for the first time tomorrow 22:00&quot;</extracomment>
        <translation>%1、初回は%2</translation>
    </message>
</context>
<context>
    <name>StatusLine</name>
    <message>
        <source>Service running</source>
        <translation>サービス動作中</translation>
    </message>
    <message>
        <source>Version %1</source>
        <translation>バージョン %1</translation>
    </message>
    <message>
        <source>Service not running</source>
        <translation>サービス停止中</translation>
    </message>
    <message>
        <source>An administrator starts it with: systemctl start dozelyd</source>
        <translation>管理者が次のコマンドで開始できます: systemctl start dozelyd</translation>
    </message>
    <message>
        <source>Nobody logged in</source>
        <translation>ログイン中のユーザーなし</translation>
    </message>
    <message>
        <source>No session is at this computer&apos;s screen now. Actions that need one wait for it.</source>
        <translation>このコンピューターの画面にセッションがありません。セッションが必要なアクションは待機します。</translation>
    </message>
    <message>
        <source>Agent running</source>
        <translation>エージェント動作中</translation>
    </message>
    <message>
        <source>It shows alerts and acts in the session of %1.</source>
        <translation>%1 のセッションで通知の表示とアクションを行います。</translation>
    </message>
    <message>
        <source>Agent not running</source>
        <translation>エージェント停止中</translation>
    </message>
    <message>
        <source>It starts when you log in. To start it now: systemctl --user start dozely-agent</source>
        <translation>ログイン時に開始されます。今すぐ開始するには: systemctl --user start dozely-agent</translation>
    </message>
    <message>
        <source>Cannot wake this computer</source>
        <translation>起動できません</translation>
    </message>
    <message>
        <source>It has no clock that could wake it or switch it on. Have it stay awake instead.</source>
        <translation>起動や電源投入のできる時計がありません。代わりに起動したままにしてください。</translation>
    </message>
    <message>
        <source>Wake clock ready</source>
        <translation>起動用時計の準備完了</translation>
    </message>
    <message>
        <source>Wakes %1</source>
        <translation>起動: %1</translation>
    </message>
    <message>
        <source>The clock %1 wakes this computer.</source>
        <translation>時計 %1 がこのコンピューターを起動します。</translation>
    </message>
    <message>
        <source>Test the alert</source>
        <translation>通知をテスト</translation>
    </message>
    <message>
        <source>Shows an alert that announces nothing, to see whether alerts reach you.</source>
        <translation>何も予告しない通知を表示し、通知が届くかどうかを確かめます。</translation>
    </message>
    <message>
        <source>Test waking</source>
        <translation>復帰をテスト</translation>
    </message>
    <message>
        <source>Tries whether the clock of this computer can wake it.</source>
        <translation>このコンピューターの時計で復帰できるかどうかを試します。</translation>
    </message>
</context>
<context>
    <name>TimesOfDay</name>
    <message>
        <source>Another time</source>
        <translation>時刻を追加</translation>
    </message>
    <message>
        <source>Adds another time of day</source>
        <translation>時刻を追加します</translation>
    </message>
    <message>
        <source>Time</source>
        <translation>時刻</translation>
    </message>
    <message>
        <source>Remove this time</source>
        <translation>この時刻を削除</translation>
    </message>
</context>
<context>
    <name>TimingRemark</name>
    <message>
        <source>Years without a 29 February are left out.</source>
        <translation>2 月 29 日のない年は除外されます。</translation>
    </message>
    <message>
        <source>Months without a day %1 are left out; &quot;Last day&quot; is the last of each month.</source>
        <translation>%1 日のない月は除外されます。「最終日」は各月の最後の日です。</translation>
    </message>
    <message>
        <source>Clocks skip %1 on that day; it takes place at %2.</source>
        <translation>その日は時計が %1 を飛ばすため、%2 に実行されます。</translation>
    </message>
    <message>
        <source>Clocks show %1 twice on that day; it takes place at the first.</source>
        <translation>その日は時計が %1 を 2 回示すため、最初に実行されます。</translation>
    </message>
</context>
<context>
    <name>TimingWriter</name>
    <message>
        <source>With these exceptions nothing is left of it.</source>
        <translation>これらの例外で実行日がなくなります。</translation>
    </message>
    <message>
        <source>That moment is past.</source>
        <translation>その日時は過ぎています。</translation>
    </message>
    <message>
        <source>There is no time zone &quot;%1&quot;.</source>
        <translation>タイムゾーン「%1」はありません。</translation>
    </message>
    <message>
        <source>Choose a day of the week.</source>
        <translation>曜日を選んでください。</translation>
    </message>
    <message>
        <source>Choose a day of the month.</source>
        <translation>日を選んでください。</translation>
    </message>
    <message>
        <source>One schedule cannot mean %1 without %2, too. Let the times have equal minutes, or add a second schedule.</source>
        <translation>1 つのスケジュールでは %1 だけを指定できず、%2 も含まれます。分をそろえるか、別のスケジュールを追加してください。</translation>
    </message>
    <message>
        <source>It ends before it begins.</source>
        <translation>開始前に終了しています。</translation>
    </message>
    <message>
        <source>There can be at most %1 exceptions.</source>
        <translation>例外は %1 件までです。</translation>
    </message>
</context>
<context>
    <name>WhenPane</name>
    <message>
        <source>Next dates</source>
        <translation>次の日時</translation>
    </message>
</context>
<context>
    <name>YearChoice</name>
    <message>
        <source>Month</source>
        <translation>月</translation>
    </message>
    <message>
        <source>Day of the month</source>
        <translation>日</translation>
    </message>
</context>
<context>
    <name>ZoneChoice</name>
    <message>
        <source>This machine&apos;s (%1)</source>
        <translation>このコンピューターのもの (%1)</translation>
    </message>
</context>
</TS>
