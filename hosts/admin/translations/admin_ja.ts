<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ja" sourcelanguage="en">
<context>
    <name>AdminText</name>
    <message>
        <source>Work on the system below that folder instead of /.</source>
        <translation>/ ではなく、このフォルダー以下のシステムを扱います。</translation>
    </message>
    <message>
        <source>Show this help and end.</source>
        <translation>このヘルプを表示して終了します。</translation>
    </message>
    <message>
        <source>done</source>
        <translation>完了</translation>
    </message>
    <message>
        <source>it could not be done (not found, not reachable, damaged)</source>
        <translation>実行できませんでした (見つからない、届かない、壊れている)</translation>
    </message>
    <message>
        <source>it is alive</source>
        <translation>動作しています</translation>
    </message>
    <message>
        <source>it is not</source>
        <translation>動作していません</translation>
    </message>
    <message>
        <source>nothing is wrong</source>
        <translation>問題はありません</translation>
    </message>
    <message>
        <source>something is wrong</source>
        <translation>問題があります</translation>
    </message>
    <message>
        <source>nothing differed</source>
        <translation>違いはありませんでした</translation>
    </message>
    <message>
        <source>up to date</source>
        <translation>最新です</translation>
    </message>
    <message>
        <source>the command line is wrong</source>
        <translation>コマンドラインが間違っています</translation>
    </message>
    <message>
        <source>not permitted</source>
        <translation>許可されていません</translation>
    </message>
    <message>
        <source>schedules were changed, or would be</source>
        <translation>スケジュールが変更されました (または変更されます)</translation>
    </message>
    <message>
        <source>there is a newer version</source>
        <translation>新しいバージョンがあります</translation>
    </message>
    <message>
        <source>no answer</source>
        <translation>応答がありません</translation>
    </message>
    <message>
        <source>Run the system below the folder &lt;DIR&gt; instead of /.</source>
        <translation>/ ではなく、フォルダー &lt;DIR&gt; 以下のシステムを扱います。</translation>
    </message>
    <message>
        <source>Show the version and end.</source>
        <translation>バージョンを表示して終了します。</translation>
    </message>
    <message>
        <source>Usage: %1 [options] COMMAND [ARGUMENTS]</source>
        <translation>使い方: %1 [オプション] コマンド [引数]</translation>
    </message>
    <message>
        <source>Shows and changes the schedules, asks whether the system&apos;s processes are alive, shows the log.</source>
        <translation>スケジュールを表示・変更し、システムのプロセスが動作しているかを調べ、ログを表示します。</translation>
    </message>
    <message>
        <source>Commands:</source>
        <translation>コマンド:</translation>
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
        <translation>SCHEDULE は識別子、または 1 つのスケジュールだけが持つ名前です。USER は名前または番号です。
DATE はふだん書くとおりです: 「06:55」「tomorrow 7:00」「fri 22:00」「22.12. 6:30」「2026-03-14 06:55」+5m。
「コマンド --help」はそのコマンドのオプションだけを表示します。

終了ステータス: 0 完了 (ping、status: 動作している、doctor: 問題なし、apply: 違いなし)。
1 実行できなかった (見つからない、届かない、壊れている。doctor: 問題あり)。
2 コマンドラインの間違い。3 許可されていない。
apply: 4 スケジュールが変更された、または変更される。
update check: 0 最新。4 新しいバージョンがある。5 応答なし。</translation>
    </message>
    <message>
        <source>Options:</source>
        <translation>オプション:</translation>
    </message>
    <message>
        <source>Arguments:</source>
        <translation>引数:</translation>
    </message>
    <message>
        <source>What to do, see above.</source>
        <translation>することです。上をご覧ください。</translation>
    </message>
    <message>
        <source>Usage:</source>
        <translation>使い方:</translation>
    </message>
    <message>
        <source>Example:</source>
        <translation>例:</translation>
    </message>
    <message>
        <source>Exit status:</source>
        <translation>終了ステータス:</translation>
    </message>
    <message>
        <source>A command is missing; --help shows them.</source>
        <translation>コマンドがありません。--help で一覧を表示します。</translation>
    </message>
    <message>
        <source>There is no command &quot;%1&quot;; --help shows those that there are.</source>
        <translation>「%1」というコマンドはありません。--help で一覧を表示します。</translation>
    </message>
    <message>
        <source>&quot;%1&quot; needs an argument; &quot;%1 --help&quot; shows which.</source>
        <translation>「%1」には引数が必要です。「%1 --help」で確認できます。</translation>
    </message>
    <message>
        <source>&quot;%1&quot; takes no argument &quot;%2&quot;.</source>
        <translation>「%1」は引数「%2」を受け付けません。</translation>
    </message>
    <message>
        <source>&quot;%1&quot; takes no option %2.</source>
        <translation>「%1」はオプション %2 を受け付けません。</translation>
    </message>
    <message>
        <source>Show on one screen how the system is: daemon, agents, clock, what comes, what failed.</source>
        <translation>システムの状態を 1 画面で表示します: デーモン、エージェント、時計、次の予定、失敗したもの。</translation>
    </message>
    <message>
        <source>Look at all that can be wrong with the installation, and say what helps.</source>
        <translation>インストールで問題になりうることをすべて調べ、対処を示します。</translation>
    </message>
    <message>
        <source>Show all schedules, and what became of those that are over.</source>
        <translation>すべてのスケジュールと、終わったものの結果を表示します。</translation>
    </message>
    <message>
        <source>Add a schedule: what is to be done (--bundle or --program) and when (--date or --in; --every or --rule, with --at).</source>
        <translation>スケジュールを追加します: 何をするか (--bundle または --program) と、いつするか (--date または --in、--every または --rule と --at)。</translation>
    </message>
    <message>
        <source>Change what the options name, as for &quot;add&quot;; the rest stays.</source>
        <translation>オプションで指定したものを変更します (「add」と同じ)。ほかは変わりません。</translation>
    </message>
    <message>
        <source>Remove a schedule.</source>
        <translation>スケジュールを削除します。</translation>
    </message>
    <message>
        <source>Remove the schedules that are over, but for those that stay.</source>
        <translation>終わったスケジュールを、残すものを除いて削除します。</translation>
    </message>
    <message>
        <source>Let a schedule come due.</source>
        <translation>スケジュールを有効にします。</translation>
    </message>
    <message>
        <source>Keep a schedule, but never let it come due.</source>
        <translation>スケジュールを残したまま、無効にします。</translation>
    </message>
    <message>
        <source>Show what comes, and what wakes the machine.</source>
        <translation>次の予定と、コンピューターを復帰させるものを表示します。</translation>
    </message>
    <message>
        <source>Show what became of it, newest first.</source>
        <translation>結果を新しい順に表示します。</translation>
    </message>
    <message>
        <source>Leave out the next time, or that at --date.</source>
        <translation>次回、または --date の回をスキップします。</translation>
    </message>
    <message>
        <source>Perform it so much later (90, 10m, 1h): the next time, or that at --date.</source>
        <translation>次回、または --date の回をその時間 (90、10m、1h) だけ延期します。</translation>
    </message>
    <message>
        <source>Have the daemon perform a schedule&apos;s action now.</source>
        <translation>スケジュールのアクションを今すぐデーモンに実行させます。</translation>
    </message>
    <message>
        <source>Ask whether the daemon, a user&apos;s agent or his configuration application is alive; yours without USER.</source>
        <translation>デーモン、ユーザーのエージェント、または設定アプリケーションが動作しているかを調べます。USER を省くと自分のものです。</translation>
    </message>
    <message>
        <source>Show the last lines of the log.</source>
        <translation>ログの最後の行を表示します。</translation>
    </message>
    <message>
        <source>Show what the schedule&apos;s action wrote last, when it was performed the last time, or at --date.</source>
        <translation>スケジュールのアクションが前回、または --date に書き出したものを表示します。</translation>
    </message>
    <message>
        <source>Show the clock that can wake the machine, its alarm, and the scheduled events; or arm the alarm, read it back, set it as it was.</source>
        <translation>コンピューターを復帰できる時計、そのアラーム、予定されたイベントを表示します。または、アラームを設定し、読み戻し、元に戻します。</translation>
    </message>
    <message>
        <source>Put the machine to sleep now.</source>
        <translation>コンピューターを今すぐスリープさせます。</translation>
    </message>
    <message>
        <source>Write all schedules, or one, to the standard output: a property list, which &quot;apply&quot; reads, or with --ics a calendar.</source>
        <translation>すべてのスケジュール、または 1 つを標準出力に書き出します: 「apply」が読むプロパティリスト、または --ics でカレンダー。</translation>
    </message>
    <message>
        <source>Have exactly those schedules that a property list, JSON or YAML file says; &quot;-&quot; is the standard input.</source>
        <translation>プロパティリスト、JSON、または YAML のファイルにあるとおりのスケジュールにします。「-」は標準入力です。</translation>
    </message>
    <message>
        <source>Ask the update server whether there is a newer version.</source>
        <translation>新しいバージョンがあるか、更新サーバーに問い合わせます。</translation>
    </message>
    <message>
        <source>Print how the last word may go on, for shells.</source>
        <translation>最後の単語の続きをシェルのために出力します。</translation>
    </message>
    <message>
        <source>Show help and end.</source>
        <translation>ヘルプを表示して終了します。</translation>
    </message>
    <message>
        <source>Work below a folder.</source>
        <translation>フォルダー以下を扱います。</translation>
    </message>
    <message>
        <source>The command failed: %1</source>
        <translation>コマンドは失敗しました: %1</translation>
    </message>
    <message>
        <source>answer in JSON, one object on a line.</source>
        <translation>JSON で応答します。1 行に 1 オブジェクトです。</translation>
    </message>
    <message>
        <source>the plug-in bundle, a path or the name of an installed one.</source>
        <translation>プラグインのバンドル。パス、またはインストール済みのものの名前です。</translation>
    </message>
    <message>
        <source>run this program (an absolute path), with the bundle &quot;Command&quot;.</source>
        <translation>このプログラム (絶対パス) をバンドル「Command」で実行します。</translation>
    </message>
    <message>
        <source>an argument of the program; repeat it for more.</source>
        <translation>プログラムの引数。繰り返して指定できます。</translation>
    </message>
    <message>
        <source>when it takes place once, as &quot;2026-03-14 06:55&quot; or &quot;tomorrow 7:00&quot;.</source>
        <translation>1 回だけ行う日時。例: 「2026-03-14 06:55」「tomorrow 7:00」。</translation>
    </message>
    <message>
        <source>of which time; the latest without it.</source>
        <translation>どの回か。省くと最後の回です。</translation>
    </message>
    <message>
        <source>of which time; the next without it.</source>
        <translation>どの回か。省くと次回です。</translation>
    </message>
    <message>
        <source>the time zone of what is told, as &quot;Europe/Berlin&quot;; the machine&apos;s without it, and what repeats goes with it wherever that goes. &quot;machine&quot; is that again.</source>
        <translation>指定した時刻のタイムゾーン。例: 「Europe/Berlin」。省くとコンピューターのもので、繰り返すものはその変更に従います。「machine」でそれに戻ります。</translation>
    </message>
    <message>
        <source>the time zone of --date, as &quot;Europe/Berlin&quot;; the schedule&apos;s without it.</source>
        <translation>--date のタイムゾーン。例: 「Europe/Berlin」。省くとスケジュールのものです。</translation>
    </message>
    <message>
        <source>when, so many seconds from now (90, 5m, 1h).</source>
        <translation>今から何秒後か (90、5m、1h)。</translation>
    </message>
    <message>
        <source>how often: day, weekday, week, month, year, days such as monday,thursday, or a distance such as 15m or 2h.</source>
        <translation>頻度: day、weekday、week、month、year、曜日 (monday,thursday など)、または間隔 (15m、2h など)。</translation>
    </message>
    <message>
        <source>at what time of those days, as 22:00; repeat it for more.</source>
        <translation>その日の時刻。例: 22:00。繰り返して指定できます。</translation>
    </message>
    <message>
        <source>on which days of every month, as 1,15,last.</source>
        <translation>毎月のどの日か。例: 1,15,last。</translation>
    </message>
    <message>
        <source>how often, as a rule of RFC 5545: FREQ=WEEKLY;BYDAY=MO.</source>
        <translation>RFC 5545 の規則による頻度: FREQ=WEEKLY;BYDAY=MO。</translation>
    </message>
    <message>
        <source>repeat it from then on, now without it.</source>
        <translation>その時から繰り返します。省くと今からです。</translation>
    </message>
    <message>
        <source>repeat it up to then, that day included.</source>
        <translation>その日まで (当日を含む) 繰り返します。</translation>
    </message>
    <message>
        <source>show what comes up to then, that day included.</source>
        <translation>その日まで (当日を含む) の予定を表示します。</translation>
    </message>
    <message>
        <source>repeat it so many times.</source>
        <translation>その回数だけ繰り返します。</translation>
    </message>
    <message>
        <source>not on that day, or at that date; repeat it for more.</source>
        <translation>その日、またはその日時を除きます。繰り返して指定できます。</translation>
    </message>
    <message>
        <source>no exception on that day, or at that date; repeat it for more.</source>
        <translation>その日、またはその日時の例外をなくします。繰り返して指定できます。</translation>
    </message>
    <message>
        <source>repeat it without an end.</source>
        <translation>終わりなく繰り返します。</translation>
    </message>
    <message>
        <source>repeat it no more: the next time is the last one, or --date is.</source>
        <translation>繰り返しをやめます。次回、または --date が最後になります。</translation>
    </message>
    <message>
        <source>what becomes of it when its time passed while the machine was off or asleep: skip, run-once (of all that were missed the latest), run-once=LIMIT (no older than 90, 10m, 6h, 2d), or plug-in. bundle: what the bundle says, as without it.</source>
        <translation>電源が切れているかスリープ中に時刻が過ぎた場合の扱い: skip、run-once (逃したうちの最後の 1 回)、run-once=LIMIT (90、10m、6h、2d より古くないもの)、plug-in。bundle: バンドルの指定どおり (省いた場合と同じ)。</translation>
    </message>
    <message>
        <source>whether it is performed while the time before still goes on: skip or run.</source>
        <translation>前の回がまだ続いているときに実行するか: skip または run。</translation>
    </message>
    <message>
        <source>what the machine does afterwards when it was woken or switched on for it and nobody uses it: nothing, sleep or power-off.</source>
        <translation>このために復帰または起動し、だれも使っていないとき、コンピューターがその後どうするか: nothing、sleep、power-off。</translation>
    </message>
    <message>
        <source>another name.</source>
        <translation>別の名前。</translation>
    </message>
    <message>
        <source>a parameter of the action; repeat it for more. &quot;true&quot;, &quot;false&quot; and numbers are taken as such; KEY:string=VALUE, :integer=, :real= and :boolean= name the type.</source>
        <translation>アクションのパラメーター。繰り返して指定できます。「true」「false」と数はそのまま解釈します。KEY:string=VALUE、:integer=、:real=、:boolean= で型を指定します。</translation>
    </message>
    <message>
        <source>a parameter of the event, whose KEY is four characters; repeat it for more. &quot;true&quot;, &quot;false&quot; and numbers are taken as such; KEY:string=VALUE, :integer=, :real= and :boolean= name the type.</source>
        <translation>イベントのパラメーター。KEY は 4 文字です。繰り返して指定できます。「true」「false」と数はそのまま解釈します。KEY:string=VALUE、:integer=、:real=、:boolean= で型を指定します。</translation>
    </message>
    <message>
        <source>parameters from a property list.</source>
        <translation>プロパティリストのパラメーター。</translation>
    </message>
    <message>
        <source>without that parameter; repeat it for more.</source>
        <translation>このパラメーターをなくします。繰り返して指定できます。</translation>
    </message>
    <message>
        <source>alert the user so many seconds before, with a button to cancel.</source>
        <translation>その秒数だけ前に、キャンセルボタンのある通知を表示します。</translation>
    </message>
    <message>
        <source>without the alert.</source>
        <translation>通知なし。</translation>
    </message>
    <message>
        <source>act in the daemon.</source>
        <translation>デーモンで実行します。</translation>
    </message>
    <message>
        <source>act in the user&apos;s session.</source>
        <translation>ユーザーのセッションで実行します。</translation>
    </message>
    <message>
        <source>act where the bundle says.</source>
        <translation>バンドルの指定する場所で実行します。</translation>
    </message>
    <message>
        <source>wake the machine for it, a minute ahead.</source>
        <translation>1 分前にコンピューターを復帰させます。</translation>
    </message>
    <message>
        <source>do not wake the machine for it.</source>
        <translation>コンピューターを復帰させません。</translation>
    </message>
    <message>
        <source>switch the machine on for it, three minutes ahead.</source>
        <translation>3 分前にコンピューターの電源を入れます。</translation>
    </message>
    <message>
        <source>do not switch the machine on for it.</source>
        <translation>コンピューターの電源を入れません。</translation>
    </message>
    <message>
        <source>tell the user at the console when it fails or is not performed.</source>
        <translation>失敗したとき、または実行されないとき、コンソールのユーザーに知らせます。</translation>
    </message>
    <message>
        <source>do not tell the user of failures.</source>
        <translation>失敗をユーザーに知らせません。</translation>
    </message>
    <message>
        <source>the schedule is not to come due before it is enabled.</source>
        <translation>スケジュールは有効にするまで実行されません。</translation>
    </message>
    <message>
        <source>let it come due.</source>
        <translation>有効にします。</translation>
    </message>
    <message>
        <source>also what nothing could come of.</source>
        <translation>実行できる見込みのないものも受け付けます。</translation>
    </message>
    <message>
        <source>the schedule is not removed when it is over, but by &quot;remove&quot;.</source>
        <translation>終わったスケジュールも「remove」でしか削除されません。</translation>
    </message>
    <message>
        <source>the schedule is removed some time after it is over.</source>
        <translation>スケジュールは終わってしばらくすると削除されます。</translation>
    </message>
    <message>
        <source>whose schedule it is; yours without it.</source>
        <translation>スケジュールの所有者。省くと自分です。</translation>
    </message>
    <message>
        <source>how many to show, 10 without it.</source>
        <translation>表示する件数。省くと 10 です。</translation>
    </message>
    <message>
        <source>how many to show, 20 without it.</source>
        <translation>表示する件数。省くと 20 です。</translation>
    </message>
    <message>
        <source>how many lines to show first, 20 without it.</source>
        <translation>最初に表示する行数。省くと 20 です。</translation>
    </message>
    <message>
        <source>go on showing lines as they come.</source>
        <translation>新しい行を表示し続けます。</translation>
    </message>
    <message>
        <source>whose process is to have it; yours without it.</source>
        <translation>だれのプロセスに送るか。省くと自分です。</translation>
    </message>
    <message>
        <source>how long to wait for the reply, 60 without it.</source>
        <translation>応答を待つ時間。省くと 60 です。</translation>
    </message>
    <message>
        <source>do not wait for a reply.</source>
        <translation>応答を待ちません。</translation>
    </message>
    <message>
        <source>as a calendar (iCalendar, RFC 5545).</source>
        <translation>カレンダー (iCalendar、RFC 5545) として。</translation>
    </message>
    <message>
        <source>change nothing, and say what would be changed.</source>
        <translation>何も変更せず、変更されるものを示します。</translation>
    </message>
    <message>
        <source>begin later by a time of up to so much (30m, 1h), which is another one on every machine and always the same on this one.</source>
        <translation>開始を最大でその時間 (30m、1h) だけ遅らせます。コンピューターごとに異なり、同じコンピューターではいつも同じです。</translation>
    </message>
    <message>
        <source>run the command on that machine, over ssh.</source>
        <translation>そのコンピューターで ssh を使って実行します。</translation>
    </message>
    <message>
        <source>The output cannot be written.</source>
        <translation>出力を書き込めません。</translation>
    </message>
    <message>
        <source>It cannot be spread: %1.</source>
        <translation>分散できません: %1。</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is added as %2</source>
        <translation>「%1」を %2 として追加しました</translation>
    </message>
    <message>
        <source>The standard input cannot be read.</source>
        <translation>標準入力を読み込めません。</translation>
    </message>
    <message>
        <source>%1 cannot be read: %2.</source>
        <translation>%1 を読み込めません: %2。</translation>
    </message>
    <message>
        <source>Nothing can be spread: %1.</source>
        <translation>分散できません: %1。</translation>
    </message>
    <message>
        <source>%1 is not understood: %2.</source>
        <translation>%1 を解釈できません: %2。</translation>
    </message>
    <message>
        <source>&quot;%1&quot; cannot be spread: %2.</source>
        <translation>「%1」を分散できません: %2。</translation>
    </message>
    <message>
        <source>&quot;%1&quot;: %2. --anyway has it all the same.</source>
        <translation>「%1」: %2。--anyway を付けるとそのまま受け付けます。</translation>
    </message>
    <message>
        <source>&quot;%1&quot; (%2) would be removed.</source>
        <translation>「%1」(%2) は削除されます。</translation>
    </message>
    <message>
        <source>&quot;%1&quot; (%2) is removed.</source>
        <translation>「%1」(%2) を削除しました。</translation>
    </message>
    <message>
        <source>&quot;%1&quot; (%2) would be changed.</source>
        <translation>「%1」(%2) は変更されます。</translation>
    </message>
    <message>
        <source>&quot;%1&quot; (%2) is changed.</source>
        <translation>「%1」(%2) を変更しました。</translation>
    </message>
    <message>
        <source>&quot;%1&quot; (%2) would be added.</source>
        <translation>「%1」(%2) は追加されます。</translation>
    </message>
    <message>
        <source>&quot;%1&quot; (%2) is added.</source>
        <translation>「%1」(%2) を追加しました。</translation>
    </message>
    <message>
        <source>Nothing differs.</source>
        <translation>違いはありません。</translation>
    </message>
    <message>
        <source>Say what is to change; --help shows the options.</source>
        <translation>何を変更するかを指定してください。--help でオプションを表示します。</translation>
    </message>
    <message>
        <source>There is no schedule &quot;%1&quot; any more.</source>
        <translation>スケジュール「%1」はもうありません。</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is changed</source>
        <translation>「%1」を変更しました</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not your schedule; try it as root.</source>
        <translation>「%1」はあなたのスケジュールではありません。root で試してください。</translation>
    </message>
    <message>
        <source>The daemon refuses: %1.</source>
        <translation>デーモンが拒否しました: %1。</translation>
    </message>
    <message>
        <source>The daemon does not answer.</source>
        <translation>デーモンが応答しません。</translation>
    </message>
    <message>
        <source>its next time</source>
        <translation>次回</translation>
    </message>
    <message>
        <source>There is no user &quot;%1&quot;.</source>
        <translation>ユーザー「%1」はいません。</translation>
    </message>
    <message>
        <source>The daemon is alive.</source>
        <translation>デーモンは動作しています。</translation>
    </message>
    <message>
        <source>The agent of %1 is alive.</source>
        <translation>%1 のエージェントは動作しています。</translation>
    </message>
    <message>
        <source>The application of %1 is alive.</source>
        <translation>%1 のアプリケーションは動作しています。</translation>
    </message>
    <message>
        <source>The agent of %1 does not answer.</source>
        <translation>%1 のエージェントが応答しません。</translation>
    </message>
    <message>
        <source>The application of %1 does not answer.</source>
        <translation>%1 のアプリケーションが応答しません。</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not daemon, agent or application.</source>
        <translation>「%1」は daemon、agent、application のいずれでもありません。</translation>
    </message>
    <message>
        <source>There is one daemon for all users.</source>
        <translation>デーモンは全ユーザーに 1 つです。</translation>
    </message>
    <message>
        <source>The daemon was asked to perform &quot;%1&quot;; the log tells how it went.</source>
        <translation>デーモンに「%1」の実行を依頼しました。結果はログでわかります。</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is left out: %2.</source>
        <translation>「%1」をスキップします: %2。</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no time to postpone it by, such as 90, 10m or 1h.</source>
        <translation>「%1」は延期する時間ではありません。例: 90、10m、1h。</translation>
    </message>
    <message>
        <source>&quot;%2&quot; is postponed by %1: %3.</source>
        <translation>「%2」を %1 延期します: %3。</translation>
    </message>
    <message>
        <source>What is over cannot be told: %1.</source>
        <translation>終わったものがわかりません: %1。</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is over and removed.</source>
        <translation>「%1」は終わったので削除しました。</translation>
    </message>
    <message>
        <source>No schedule is over.</source>
        <translation>終わったスケジュールはありません。</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a number of seconds from now.</source>
        <translation>「%1」は今からの秒数ではありません。</translation>
    </message>
    <message>
        <source>There is no time zone &quot;%1&quot;.</source>
        <translation>タイムゾーン「%1」はありません。</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is a day; say at what time, such as &quot;%1 06:55&quot;.</source>
        <translation>「%1」は日付です。時刻も指定してください。例: 「%1 06:55」。</translation>
    </message>
    <message>
        <source>%1 does not exist in %2; it becomes %3.</source>
        <translation>%1 は %2 に存在しません。%3 になります。</translation>
    </message>
    <message>
        <source>Say when, by --date or by --in.</source>
        <translation>日時を --date または --in で指定してください。</translation>
    </message>
    <message>
        <source>%1 in %2 is past.</source>
        <translation>%1 (%2) は過ぎています。</translation>
    </message>
    <message>
        <source>The date is further ahead than the store can hold.</source>
        <translation>日時が先すぎて保存できません。</translation>
    </message>
    <message>
        <source>The clock is synchronised.</source>
        <translation>時計は同期しています。</translation>
    </message>
    <message>
        <source>Nothing keeps the clock right.</source>
        <translation>時計を合わせるものがありません。</translation>
    </message>
    <message>
        <source>timedatectl set-ntp true, after apt install systemd-timesyncd or chrony</source>
        <translation>timedatectl set-ntp true (先に apt install systemd-timesyncd または chrony)</translation>
    </message>
    <message>
        <source>Nobody can tell how old the data of the time zones are.</source>
        <translation>タイムゾーンのデータの古さがわかりません。</translation>
    </message>
    <message>
        <source>The data of the time zones do not say how old they are.</source>
        <translation>タイムゾーンのデータに版がありません。</translation>
    </message>
    <message>
        <source>The data of the time zones are those of %1.</source>
        <translation>タイムゾーンのデータは %1 のものです。</translation>
    </message>
    <message>
        <source>The machine&apos;s time zone has no name: /etc/localtime is no link to one.</source>
        <translation>コンピューターのタイムゾーンに名前がありません: /etc/localtime がリンクではありません。</translation>
    </message>
    <message>
        <source>timedatectl set-timezone Europe/Berlin, or where the machine is</source>
        <translation>timedatectl set-timezone Europe/Berlin (コンピューターのある場所)</translation>
    </message>
    <message>
        <source>The machine&apos;s time zone is %1.</source>
        <translation>コンピューターのタイムゾーンは %1 です。</translation>
    </message>
    <message>
        <source>fine</source>
        <translation>正常</translation>
    </message>
    <message>
        <source>wrong</source>
        <translation>異常</translation>
    </message>
    <message>
        <source>unknown</source>
        <translation>不明</translation>
    </message>
    <message>
        <source>Nothing is wrong.</source>
        <translation>問題はありません。</translation>
    </message>
    <message numerus="yes">
        <source>%n thing(s) are wrong.</source>
        <translation>
            <numerusform>%n 件の問題があります。</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 is not there.</source>
        <translation>%1 がありません。</translation>
    </message>
    <message>
        <source>%1 is no folder.</source>
        <translation>%1 はフォルダーではありません。</translation>
    </message>
    <message>
        <source>%1 is no regular file.</source>
        <translation>%1 は通常のファイルではありません。</translation>
    </message>
    <message>
        <source>%1 belongs to %2.</source>
        <translation>%1 は %2 のものです。</translation>
    </message>
    <message>
        <source>%1 has the mode %2, which lets others write there.</source>
        <translation>%1 のモードは %2 で、ほかの人も書き込めます。</translation>
    </message>
    <message>
        <source>%1 has the mode %2, which keeps others out.</source>
        <translation>%1 のモードは %2 で、ほかの人が入れません。</translation>
    </message>
    <message>
        <source>%1 is as it should be.</source>
        <translation>%1 は正常です。</translation>
    </message>
    <message>
        <source>No bundle is performed as root: %1.</source>
        <translation>root で実行されるバンドルがありません: %1。</translation>
    </message>
    <message>
        <source>There is no bundle in %1.</source>
        <translation>%1 にバンドルがありません。</translation>
    </message>
    <message>
        <source>The bundles in %1 can be trusted.</source>
        <translation>%1 のバンドルは信頼できます。</translation>
    </message>
    <message>
        <source>Nobody can tell how much room there is for the record.</source>
        <translation>記録のための空き容量がわかりません。</translation>
    </message>
    <message>
        <source>%1, where the record lies, can only be read.</source>
        <translation>記録のある %1 は読み取り専用です。</translation>
    </message>
    <message>
        <source>%1, where the record lies, is full.</source>
        <translation>記録のある %1 に空きがありません。</translation>
    </message>
    <message>
        <source>Make room in %1.</source>
        <translation>%1 に空きを作ってください。</translation>
    </message>
    <message>
        <source>There is room for the record.</source>
        <translation>記録のための空きがあります。</translation>
    </message>
    <message>
        <source>Look for an alarm, &quot;RTC wake&quot; or &quot;power on by alarm&quot; in the firmware&apos;s settings; docs/power.md says more</source>
        <translation>ファームウェアの設定でアラーム、「RTC wake」または「power on by alarm」を探してください。詳しくは docs/power.md をご覧ください</translation>
    </message>
    <message>
        <source>%1 can wake the machine.</source>
        <translation>%1 はコンピューターを復帰できます。</translation>
    </message>
    <message>
        <source>No clock can wake this machine, and no schedule asks for that.</source>
        <translation>このコンピューターを復帰できる時計はありませんが、必要とするスケジュールもありません。</translation>
    </message>
    <message>
        <source>No clock can wake this machine, as &quot;%1&quot; asks for.</source>
        <translation>「%1」が必要とする、このコンピューターを復帰できる時計がありません。</translation>
    </message>
    <message>
        <source>%1, or %2</source>
        <translation>%1 または %2</translation>
    </message>
    <message>
        <source>There is no alarm without a clock that could wake the machine.</source>
        <translation>復帰できる時計がないので、アラームはありません。</translation>
    </message>
    <message>
        <source>The machine is to be woken, and the alarm of %1 is not armed: the firmware or another program has dropped it, or the daemon does not run.</source>
        <translation>コンピューターを復帰させる予定がありますが、%1 のアラームが設定されていません。ファームウェアかほかのプログラムが消したか、デーモンが動作していません。</translation>
    </message>
    <message>
        <source>The alarm is armed.</source>
        <translation>アラームは設定されています。</translation>
    </message>
    <message>
        <source>No alarm is needed.</source>
        <translation>アラームは不要です。</translation>
    </message>
    <message>
        <source>The alarm holds what it is set to.</source>
        <translation>アラームは設定を保持します。</translation>
    </message>
    <message>
        <source>Only root can see whether the machine was woken when it should have been.</source>
        <translation>復帰すべきときに復帰したかどうかは root にしかわかりません。</translation>
    </message>
    <message>
        <source>The last time of &quot;%1&quot;, which wakes the machine, was missed.</source>
        <translation>コンピューターを復帰させる「%1」の前回を逃しました。</translation>
    </message>
    <message>
        <source>Nothing that wakes the machine was missed the last time.</source>
        <translation>コンピューターを復帰させるもので、前回逃したものはありません。</translation>
    </message>
    <message>
        <source>The bus lets nobody be com.dozely: there is no %1.</source>
        <translation>バスではだれも com.dozely になれません: %1 がありません。</translation>
    </message>
    <message>
        <source>apt install --reinstall dozely, or link the file of another prefix into /etc/dbus-1/system.d; then systemctl reload dbus</source>
        <translation>apt install --reinstall dozely、または別の場所のファイルを /etc/dbus-1/system.d にリンクしてから systemctl reload dbus</translation>
    </message>
    <message>
        <source>The bus knows who may be com.dozely.</source>
        <translation>バスは com.dozely になれる者を知っています。</translation>
    </message>
    <message>
        <source>Root alone may change schedules: there is no %1.</source>
        <translation>root だけがスケジュールを変更できます: %1 がありません。</translation>
    </message>
    <message>
        <source>polkit knows what users may be asked for.</source>
        <translation>polkit はユーザーに求めるものを知っています。</translation>
    </message>
    <message>
        <source>Root alone may change schedules: there is no polkit.</source>
        <translation>root だけがスケジュールを変更できます: polkit がありません。</translation>
    </message>
    <message>
        <source>polkit is there.</source>
        <translation>polkit があります。</translation>
    </message>
    <message>
        <source>No service manager says whether the daemon is started with the machine.</source>
        <translation>デーモンがコンピューターとともに起動するかを教えるサービスマネージャーがありません。</translation>
    </message>
    <message>
        <source>systemd does not know dozelyd.service.</source>
        <translation>systemd は dozelyd.service を知りません。</translation>
    </message>
    <message>
        <source>dozelyd.service is masked.</source>
        <translation>dozelyd.service はマスクされています。</translation>
    </message>
    <message>
        <source>The daemon is not started with the machine.</source>
        <translation>デーモンはコンピューターとともに起動しません。</translation>
    </message>
    <message>
        <source>dozelyd.service has failed.</source>
        <translation>dozelyd.service は失敗しました。</translation>
    </message>
    <message>
        <source>The daemon is started with the machine.</source>
        <translation>デーモンはコンピューターとともに起動します。</translation>
    </message>
    <message>
        <source>The daemon listens.</source>
        <translation>デーモンは待ち受けています。</translation>
    </message>
    <message>
        <source>A process of user %1 listens in the daemon&apos;s place.</source>
        <translation>ユーザー %1 のプロセスがデーモンの代わりに待ち受けています。</translation>
    </message>
    <message>
        <source>The daemon does not run, or does not listen.</source>
        <translation>デーモンが動作していないか、待ち受けていません。</translation>
    </message>
    <message>
        <source>systemctl start dozelyd; journalctl -u dozelyd says why it ended</source>
        <translation>systemctl start dozelyd (終了した理由は journalctl -u dozelyd でわかります)</translation>
    </message>
    <message>
        <source>There is no system bus, so users cannot reach the daemon.</source>
        <translation>システムバスがないので、ユーザーはデーモンに届きません。</translation>
    </message>
    <message>
        <source>The system bus does not say whether the daemon is there.</source>
        <translation>デーモンがあるかどうかをシステムバスが答えません。</translation>
    </message>
    <message>
        <source>The daemon is not com.dozely on the system bus.</source>
        <translation>デーモンはシステムバスの com.dozely ではありません。</translation>
    </message>
    <message>
        <source>systemctl restart dozelyd; the log says why it has not got the name</source>
        <translation>systemctl restart dozelyd (名前を得られない理由はログでわかります)</translation>
    </message>
    <message>
        <source>The daemon is com.dozely on the system bus.</source>
        <translation>デーモンはシステムバスの com.dozely です。</translation>
    </message>
    <message>
        <source>Nobody is at the console, so no agent is needed.</source>
        <translation>コンソールにだれもいないので、エージェントは不要です。</translation>
    </message>
    <message>
        <source>The agent of %1, who is at the console, listens.</source>
        <translation>コンソールにいる %1 のエージェントは待ち受けています。</translation>
    </message>
    <message>
        <source>%1 is at the console, and no agent of his listens: nothing acts in his session.</source>
        <translation>%1 がコンソールにいますが、エージェントが待ち受けていません。セッションでは何も実行されません。</translation>
    </message>
    <message>
        <source>systemctl --user --machine=%1@ start dozely-agent, or have him log in again</source>
        <translation>systemctl --user --machine=%1@ start dozely-agent、またはログインし直してもらう</translation>
    </message>
    <message>
        <source>No agent is started when a user logs in.</source>
        <translation>ログイン時に起動するエージェントがありません。</translation>
    </message>
    <message>
        <source>An agent is started when a user logs in.</source>
        <translation>ログイン時にエージェントが起動します。</translation>
    </message>
    <message>
        <source>The store is not believed: %1.</source>
        <translation>保存ファイルは信頼されません: %1。</translation>
    </message>
    <message>
        <source>%1 cannot be used: %2.</source>
        <translation>%1 を使えません: %2。</translation>
    </message>
    <message>
        <source>Put back a good one from a backup, or begin anew: mv &apos;%1&apos; &apos;%1.damaged&apos;</source>
        <translation>バックアップから正しいものを戻すか、新しく始めてください: mv &apos;%1&apos; &apos;%1.damaged&apos;</translation>
    </message>
    <message>
        <source>Entries of the store are no schedules: %1.</source>
        <translation>保存ファイルにスケジュールでない項目があります: %1。</translation>
    </message>
    <message>
        <source>Mend these entries in %1, or remove them</source>
        <translation>%1 のこれらの項目を直すか、削除してください</translation>
    </message>
    <message>
        <source>The store can be read.</source>
        <translation>保存ファイルは読み込めます。</translation>
    </message>
    <message>
        <source>There is no store yet.</source>
        <translation>保存ファイルはまだありません。</translation>
    </message>
    <message>
        <source>The record of occurrences can be read.</source>
        <translation>実行の記録は読み込めます。</translation>
    </message>
    <message>
        <source>Only root can look into the record of occurrences.</source>
        <translation>実行の記録を見られるのは root だけです。</translation>
    </message>
    <message>
        <source>systemctl restart dozelyd, which sets a damaged one aside and begins a new one</source>
        <translation>systemctl restart dozelyd (壊れた記録を脇に置き、新しく始めます)</translation>
    </message>
    <message>
        <source>The schedules cannot be looked at.</source>
        <translation>スケジュールを調べられません。</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is to put the machine to rest afterwards, and does not wake it</source>
        <translation>「%1」は実行後にコンピューターを休ませる設定ですが、復帰はさせません</translation>
    </message>
    <message>
        <source>Nothing can come of %1.</source>
        <translation>次のものは実行できません: %1。</translation>
    </message>
    <message>
        <source>Something can come of every schedule that is enabled.</source>
        <translation>有効なスケジュールはすべて実行できます。</translation>
    </message>
    <message>
        <source>The parameter &quot;%1&quot; holds a date, which only root can store.</source>
        <translation>パラメーター「%1」は日付を含み、root にしか保存できません。</translation>
    </message>
    <message>
        <source>--timeout needs a whole number of seconds, not &quot;%1&quot;.</source>
        <translation>--timeout には整数の秒数が必要です。「%1」は使えません。</translation>
    </message>
    <message>
        <source>KEYWORD</source>
        <translation>キーワード</translation>
    </message>
    <message>
        <source>TYPE</source>
        <translation>型</translation>
    </message>
    <message>
        <source>VALUE</source>
        <translation>値</translation>
    </message>
    <message>
        <source>No process of %1 has the signature &quot;%2&quot;.</source>
        <translation>%1 のプロセスに署名「%2」のものはありません。</translation>
    </message>
    <message>
        <source>Process %1 has the event.</source>
        <translation>プロセス %1 がイベントを受け取りました。</translation>
    </message>
    <message>
        <source>Process %1 has handled the event.</source>
        <translation>プロセス %1 がイベントを処理しました。</translation>
    </message>
    <message>
        <source>A schedule holds what a property list as text cannot carry.</source>
        <translation>テキストのプロパティリストでは表せないものがスケジュールにあります。</translation>
    </message>
    <message>
        <source>What became of it cannot be told: %1.</source>
        <translation>結果がわかりません: %1。</translation>
    </message>
    <message>
        <source>%1 to %2</source>
        <translation>%1 から %2</translation>
    </message>
    <message>
        <source>postponed to %1</source>
        <translation>%1 に延期</translation>
    </message>
    <message numerus="yes">
        <source>%1 %n time(s)</source>
        <comment>missed; a number</comment>
        <translation>
            <numerusform>%1、%n 回</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1 at least %n time(s)</source>
        <comment>missed; a number</comment>
        <translation>
            <numerusform>%1、%n 回以上</numerusform>
        </translation>
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
        <source>exit %1</source>
        <translation>終了ステータス %1</translation>
    </message>
    <message>
        <source>Nothing became of it yet.</source>
        <translation>まだ何も実行されていません。</translation>
    </message>
    <message>
        <source>WHEN</source>
        <translation>日時</translation>
    </message>
    <message>
        <source>NAME</source>
        <translation>名前</translation>
    </message>
    <message>
        <source>STATE</source>
        <translation>結果</translation>
    </message>
    <message>
        <source>BEGAN</source>
        <translation>開始</translation>
    </message>
    <message>
        <source>WHY</source>
        <translation>理由</translation>
    </message>
    <message>
        <source>IDENTIFIER</source>
        <translation>識別子</translation>
    </message>
    <message>
        <source>Root cannot be given up.</source>
        <translation>root の権限を手放せません。</translation>
    </message>
    <message>
        <source>Root cannot be taken back.</source>
        <translation>root の権限を取り戻せません。</translation>
    </message>
    <message>
        <source>to come</source>
        <translation>予定</translation>
    </message>
    <message>
        <source>to come, last %1</source>
        <translation>予定、前回は%1</translation>
    </message>
    <message>
        <source>daemon</source>
        <translation>デーモン</translation>
    </message>
    <message>
        <source>session</source>
        <translation>セッション</translation>
    </message>
    <message>
        <source>yes</source>
        <translation>はい</translation>
    </message>
    <message>
        <source>no</source>
        <translation>いいえ</translation>
    </message>
    <message>
        <source>machine</source>
        <comment>a time zone</comment>
        <translation>コンピューター</translation>
    </message>
    <message>
        <source>There are no schedules.</source>
        <translation>スケジュールはありません。</translation>
    </message>
    <message>
        <source>ENABLED</source>
        <translation>有効</translation>
    </message>
    <message>
        <source>DATE</source>
        <translation>日時</translation>
    </message>
    <message>
        <source>TIME ZONE</source>
        <translation>タイムゾーン</translation>
    </message>
    <message>
        <source>REPEATS</source>
        <translation>繰り返し</translation>
    </message>
    <message>
        <source>ACTION</source>
        <translation>アクション</translation>
    </message>
    <message>
        <source>RUNS IN</source>
        <translation>実行場所</translation>
    </message>
    <message>
        <source>OWNER</source>
        <translation>所有者</translation>
    </message>
    <message>
        <source>What became of the schedules cannot be told: %1.</source>
        <translation>スケジュールの結果がわかりません: %1。</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a number of lines.</source>
        <translation>「%1」は行数ではありません。</translation>
    </message>
    <message>
        <source>The log is no longer followed.</source>
        <translation>ログの監視が終わりました。</translation>
    </message>
    <message>
        <source>There is no log at %1.</source>
        <translation>%1 にログがありません。</translation>
    </message>
    <message>
        <source>What was skipped or postponed is not taken into account: %1.</source>
        <translation>スキップや延期は考慮されていません: %1。</translation>
    </message>
    <message>
        <source>woken, switched on</source>
        <translation>復帰、起動</translation>
    </message>
    <message>
        <source>switched on</source>
        <translation>起動</translation>
    </message>
    <message>
        <source>woken</source>
        <translation>復帰</translation>
    </message>
    <message>
        <source>%1, postponed from %2</source>
        <translation>%1、%2 から延期</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is disabled.</source>
        <translation>「%1」は無効です。</translation>
    </message>
    <message>
        <source>Nothing comes.</source>
        <translation>予定はありません。</translation>
    </message>
    <message>
        <source>MACHINE IS</source>
        <translation>電源</translation>
    </message>
    <message>
        <source>-n needs a whole number, 1 or more, not &quot;%1&quot;.</source>
        <translation>-n には 1 以上の整数が必要です。「%1」は使えません。</translation>
    </message>
    <message>
        <source>&quot;%1&quot; does not take place on %2; &quot;next&quot; shows when it does.</source>
        <translation>「%1」は %2 には行われません。「next」で予定を表示します。</translation>
    </message>
    <message>
        <source>&quot;%1&quot; takes place at %2, at %3 and so on that day: say at which of these times.</source>
        <translation>「%1」はその日の %2、%3 などに行われます。どの時刻かを指定してください。</translation>
    </message>
    <message>
        <source>--time-zone is that of a --date.</source>
        <translation>--time-zone は --date のものです。</translation>
    </message>
    <message>
        <source>What an action wrote cannot be told: %1.</source>
        <translation>アクションが書き出したものがわかりません: %1。</translation>
    </message>
    <message>
        <source>&quot;%1&quot; was not performed then.</source>
        <translation>「%1」はその時には実行されていません。</translation>
    </message>
    <message>
        <source>&quot;%1&quot; was not performed yet.</source>
        <translation>「%1」はまだ実行されていません。</translation>
    </message>
    <message>
        <source>%1 is not a dictionary.</source>
        <translation>%1 は辞書ではありません。</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not of the type %2.</source>
        <translation>「%1」は型 %2 ではありません。</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not of the form KEY=VALUE.</source>
        <translation>「%1」は KEY=VALUE の形ではありません。</translation>
    </message>
    <message>
        <source>--alert needs a whole number of seconds, 1 or more, not &quot;%1&quot;.</source>
        <translation>--alert には 1 以上の整数の秒数が必要です。「%1」は使えません。</translation>
    </message>
    <message>
        <source>An action runs in the daemon or in the session, not in both.</source>
        <translation>アクションはデーモンかセッションのどちらか一方で実行されます。</translation>
    </message>
    <message>
        <source>Say one of --in-daemon, --in-session and --in-default.</source>
        <translation>--in-daemon、--in-session、--in-default のうち 1 つを指定してください。</translation>
    </message>
    <message>
        <source>There is no parameter &quot;%1&quot;.</source>
        <translation>パラメーター「%1」はありません。</translation>
    </message>
    <message>
        <source>The program &quot;%1&quot; is not an absolute path.</source>
        <translation>プログラム「%1」は絶対パスではありません。</translation>
    </message>
    <message>
        <source>--argument needs --program.</source>
        <translation>--argument には --program が必要です。</translation>
    </message>
    <message>
        <source>A parameter holds what a property list cannot carry.</source>
        <translation>プロパティリストでは表せないものがパラメーターにあります。</translation>
    </message>
    <message>
        <source>--missed is skip, run-once, run-once=LIMIT, plug-in or bundle, not &quot;%1&quot;.</source>
        <translation>--missed は skip、run-once、run-once=LIMIT、plug-in、bundle のいずれかです。「%1」は使えません。</translation>
    </message>
    <message>
        <source>--overlap is of what repeats.</source>
        <translation>--overlap は繰り返すもののためのものです。</translation>
    </message>
    <message>
        <source>--overlap is skip or run, not &quot;%1&quot;.</source>
        <translation>--overlap は skip または run です。「%1」は使えません。</translation>
    </message>
    <message>
        <source>--after is nothing, sleep or power-off, not &quot;%1&quot;.</source>
        <translation>--after は nothing、sleep、power-off のいずれかです。「%1」は使えません。</translation>
    </message>
    <message>
        <source>--after %1 comes only where the machine was woken or switched on for the action; that takes --wake or --power-on.</source>
        <translation>--after %1 は、アクションのために復帰または起動したときだけ働きます。--wake または --power-on が必要です。</translation>
    </message>
    <message>
        <source>--after %1 would never come any more, since it follows a waking: say --after nothing, too.</source>
        <translation>--after %1 は復帰の後に働くものなので、もう働きません。--after nothing も指定してください。</translation>
    </message>
    <message>
        <source>not armed</source>
        <translation>設定なし</translation>
    </message>
    <message>
        <source>%1, for an event below</source>
        <translation>%1、下のイベントのため</translation>
    </message>
    <message>
        <source>%1, armed by another program</source>
        <translation>%1、ほかのプログラムが設定</translation>
    </message>
    <message>
        <source>Clock:</source>
        <translation>時計:</translation>
    </message>
    <message>
        <source>Alarm:</source>
        <translation>アラーム:</translation>
    </message>
    <message>
        <source>none that could wake this machine</source>
        <translation>このコンピューターを復帰できるものなし</translation>
    </message>
    <message>
        <source>No events are scheduled.</source>
        <translation>予定されたイベントはありません。</translation>
    </message>
    <message>
        <source>TIME</source>
        <translation>時刻</translation>
    </message>
    <message>
        <source>This machine has no clock that could wake it.</source>
        <translation>このコンピューターには復帰に使える時計がありません。</translation>
    </message>
    <message>
        <source>You may not set the machine&apos;s clock; try it as root.</source>
        <translation>コンピューターの時計を設定する権限がありません。root で試してください。</translation>
    </message>
    <message>
        <source>The alarm of %1 was armed for %2, read back, and set as it was.</source>
        <translation>%1 のアラームを %2 に設定し、読み戻し、元に戻しました。</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not test.</source>
        <translation>「%1」は test ではありません。</translation>
    </message>
    <message>
        <source>There is no login manager that could put this machine to sleep.</source>
        <translation>このコンピューターをスリープさせられるログインマネージャーがありません。</translation>
    </message>
    <message>
        <source>The machine does not let itself be put to sleep.</source>
        <translation>コンピューターをスリープさせられません。</translation>
    </message>
    <message>
        <source>The machine does not let you put it to sleep; try it as root.</source>
        <translation>コンピューターをスリープさせる権限がありません。root で試してください。</translation>
    </message>
    <message>
        <source>The machine goes to sleep.</source>
        <translation>コンピューターはスリープします。</translation>
    </message>
    <message>
        <source>It cannot repeat so: %1.</source>
        <translation>そのようには繰り返せません: %1。</translation>
    </message>
    <message>
        <source>Every month from %1 on can be day %2 of those months that have one, --on %2, or the last of each, --on last.</source>
        <translation>%1 からの毎月は、%2 日のある月だけのその日 (--on %2)、または各月の最後の日 (--on last) のどちらかです。</translation>
    </message>
    <message>
        <source>Every year from %1 on can be that day of leap years, %2, or the last of February, %3.</source>
        <translation>%1 からの毎年は、うるう年だけのその日 (%2)、または 2 月の最後の日 (%3) のどちらかです。</translation>
    </message>
    <message>
        <source>The exception of %1 at %2 is gone: nothing takes place then any more.</source>
        <translation>%1 %2 の例外はなくなりました。その時にはもう何も行われません。</translation>
    </message>
    <message>
        <source>There is no exception on %1.</source>
        <translation>%1 に例外はありません。</translation>
    </message>
    <message>
        <source>Nothing takes place on %1 that could be left out.</source>
        <translation>%1 には除外できるものがありません。</translation>
    </message>
    <message>
        <source>There can be at most %1 exceptions.</source>
        <translation>例外は %1 件までです。</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a machine such as root@example.org.</source>
        <translation>「%1」は root@example.org のようなコンピューターではありません。</translation>
    </message>
    <message>
        <source>ssh cannot be run: %1.</source>
        <translation>ssh を実行できません: %1。</translation>
    </message>
    <message>
        <source>%1 cannot be reached by ssh.</source>
        <translation>ssh で %1 に届きません。</translation>
    </message>
    <message>
        <source>--at is the time of day of what takes place on some days, and not of what goes on around the clock.</source>
        <translation>--at は特定の日に行うものの時刻で、昼夜を問わず続くものには使えません。</translation>
    </message>
    <message>
        <source>--%1 is there twice.</source>
        <translation>--%1 が 2 回あります。</translation>
    </message>
    <message>
        <source>Say --every or --rule, not both.</source>
        <translation>--every と --rule はどちらか一方を指定してください。</translation>
    </message>
    <message>
        <source>Say how often, by --every or --rule.</source>
        <translation>頻度を --every または --rule で指定してください。</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a rule such as FREQ=WEEKLY;BYDAY=MO.</source>
        <translation>「%1」は FREQ=WEEKLY;BYDAY=MO のような規則ではありません。</translation>
    </message>
    <message>
        <source>The rule says itself at what times; leave --at or its BYHOUR, BYMINUTE and BYSECOND out.</source>
        <translation>時刻は規則自身が示しています。--at か、規則の BYHOUR、BYMINUTE、BYSECOND を省いてください。</translation>
    </message>
    <message>
        <source>The rule says itself when it ends; leave --until and --count or its UNTIL and COUNT out.</source>
        <translation>終わりは規則自身が示しています。--until と --count か、規則の UNTIL と COUNT を省いてください。</translation>
    </message>
    <message>
        <source>--on names days of the month and needs --every month.</source>
        <translation>--on は月の日を指定するもので、--every month が必要です。</translation>
    </message>
    <message>
        <source>Months without a day %1 are left out; --on last is the last day of each month.</source>
        <translation>%1 日のない月は除外されます。--on last は各月の最後の日です。</translation>
    </message>
    <message>
        <source>Say at what time, by --at.</source>
        <translation>時刻を --at で指定してください。</translation>
    </message>
    <message>
        <source>--count needs a whole number, 1 or more, not &quot;%1&quot;.</source>
        <translation>--count には 1 以上の整数が必要です。「%1」は使えません。</translation>
    </message>
    <message>
        <source>It is to end before it begins.</source>
        <translation>開始前に終了しています。</translation>
    </message>
    <message>
        <source>%1 (%2 in %3)</source>
        <translation>%1 (%3 では %2)</translation>
    </message>
    <message>
        <source>%1, for %2 (%3).</source>
        <translation>%1、%2 (%3)。</translation>
    </message>
    <message>
        <source>%1: %2%3.</source>
        <comment>what was done, a rule in words, its time zone</comment>
        <translation>%1: %2%3。</translation>
    </message>
    <message>
        <source>Next:</source>
        <translation>次の日時:</translation>
    </message>
    <message>
        <source>It is disabled: it does not come due before it is enabled.</source>
        <translation>無効です。有効にするまで実行されません。</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is neither the name of a bundle nor an absolute path.</source>
        <translation>「%1」はバンドルの名前でも絶対パスでもありません。</translation>
    </message>
    <message>
        <source>There is no bundle at %1.</source>
        <translation>%1 にバンドルがありません。</translation>
    </message>
    <message>
        <source>With --time-zone say --date, too: in another zone the same time is another moment.</source>
        <translation>--time-zone には --date も指定してください。別のタイムゾーンでは同じ時刻も別の時点です。</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is over: say --date, too.</source>
        <translation>「%1」は終わっています。--date も指定してください。</translation>
    </message>
    <message>
        <source>With these exceptions nothing is left of it.</source>
        <translation>これらの例外で実行日がなくなります。</translation>
    </message>
    <message>
        <source>A schedule needs a name.</source>
        <translation>スケジュールには名前が必要です。</translation>
    </message>
    <message>
        <source>The name holds control characters.</source>
        <translation>名前に制御文字があります。</translation>
    </message>
    <message>
        <source>Say what is to be done, by --bundle or by --program.</source>
        <translation>何をするかを --bundle または --program で指定してください。</translation>
    </message>
    <message>
        <source>Nothing could come of it: %1. With --anyway it is done all the same.</source>
        <translation>実行できる見込みがありません: %1。--anyway を付けるとそのまま受け付けます。</translation>
    </message>
    <message>
        <source>--date and --in are for what takes place once; what repeats begins by --from.</source>
        <translation>--date と --in は 1 回だけのもののためです。繰り返すものは --from で始まります。</translation>
    </message>
    <message>
        <source>It takes place once, or it repeats: --once goes with --date and --in alone.</source>
        <translation>1 回だけか、繰り返すかのどちらかです。--once は --date と --in とだけ使えます。</translation>
    </message>
    <message>
        <source>--%1 is of what repeats.</source>
        <translation>--%1 は繰り返すもののためのものです。</translation>
    </message>
    <message>
        <source>Say when, by --date or --in, or how often, by --every or --rule.</source>
        <translation>日時を --date か --in で、または頻度を --every か --rule で指定してください。</translation>
    </message>
    <message>
        <source>a time of %1 cannot be spread over midnight</source>
        <translation>時刻 %1 は午前 0 時を越えて分散できません</translation>
    </message>
    <message>
        <source>%1, so that they cannot be spread</source>
        <translation>%1。そのため分散できません</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no time to spread starts over, such as 30m or 1h.</source>
        <translation>「%1」は開始を分散する時間ではありません。例: 30m、1h。</translation>
    </message>
    <message>
        <source>this machine has no id (/etc/machine-id) by which starts could be spread</source>
        <translation>このコンピューターには、開始を分散するための識別子 (/etc/machine-id) がありません</translation>
    </message>
    <message>
        <source>Daemon:</source>
        <translation>デーモン:</translation>
    </message>
    <message>
        <source>Console:</source>
        <translation>コンソール:</translation>
    </message>
    <message>
        <source>Agents:</source>
        <translation>エージェント:</translation>
    </message>
    <message>
        <source>Wake clock:</source>
        <translation>復帰用の時計:</translation>
    </message>
    <message>
        <source>Schedules:</source>
        <translation>スケジュール:</translation>
    </message>
    <message>
        <source>nobody is there</source>
        <translation>だれもいません</translation>
    </message>
    <message>
        <source>%1, whose agent is alive</source>
        <translation>%1、エージェントは動作中</translation>
    </message>
    <message>
        <source>%1, whose agent is not there</source>
        <translation>%1、エージェントは停止中</translation>
    </message>
    <message>
        <source>none</source>
        <comment>agents</comment>
        <translation>なし</translation>
    </message>
    <message>
        <source>%1, armed for %2</source>
        <translation>%1、%2 に設定</translation>
    </message>
    <message>
        <source>%1, armed for %2 by another program</source>
        <translation>%1、ほかのプログラムが %2 に設定</translation>
    </message>
    <message>
        <source>%1, not armed</source>
        <translation>%1、設定なし</translation>
    </message>
    <message>
        <source>synchronised, %1</source>
        <translation>同期済み、%1</translation>
    </message>
    <message>
        <source>not synchronised, %1</source>
        <translation>未同期、%1</translation>
    </message>
    <message>
        <source>%1, %2 of them enabled</source>
        <translation>%1 件、うち有効 %2 件</translation>
    </message>
    <message numerus="yes">
        <source>%1; %n entries are none</source>
        <comment>entries of the store</comment>
        <translation>
            <numerusform>%1、スケジュールでない項目 %n 件</numerusform>
        </translation>
    </message>
    <message>
        <source>wakes the machine</source>
        <translation>コンピューターを復帰</translation>
    </message>
    <message>
        <source>Next</source>
        <translation>次の予定</translation>
    </message>
    <message>
        <source>What failed cannot be told: %1.</source>
        <translation>失敗したものがわかりません: %1。</translation>
    </message>
    <message>
        <source>Nothing failed of late.</source>
        <translation>最近の失敗はありません。</translation>
    </message>
    <message>
        <source>Last failures</source>
        <translation>最近の失敗</translation>
    </message>
    <message>
        <source>is alive</source>
        <translation>動作中</translation>
    </message>
    <message>
        <source>is not there</source>
        <translation>停止中</translation>
    </message>
    <message>
        <source>You may not change %1; try it as root.</source>
        <translation>%1 を変更する権限がありません。root で試してください。</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is enabled.</source>
        <translation>「%1」を有効にしました。</translation>
    </message>
    <message>
        <source>You may not read %1.</source>
        <translation>%1 を読む権限がありません。</translation>
    </message>
    <message>
        <source>There is no schedule &quot;%1&quot;.</source>
        <translation>スケジュール「%1」はありません。</translation>
    </message>
    <message numerus="yes">
        <source>%n schedule(s) are named &quot;%1&quot;; use an identifier, as &quot;list&quot; shows them.</source>
        <translation>
            <numerusform>「%1」という名前のスケジュールが %n 件あります。「list」で表示される識別子を使ってください。</numerusform>
        </translation>
    </message>
    <message>
        <source>&quot;%1&quot; is removed.</source>
        <translation>「%1」を削除しました。</translation>
    </message>
    <message>
        <source>it is larger than 16 MiB</source>
        <translation>16 MiB を超えています</translation>
    </message>
    <message>
        <source>it is no JSON: %1, at byte %2</source>
        <translation>JSON ではありません: %1、%2 バイト目</translation>
    </message>
    <message>
        <source>not known</source>
        <translation>不明</translation>
    </message>
    <message>
        <source>%1, up to date</source>
        <comment>a version</comment>
        <translation>%1、最新です</translation>
    </message>
    <message>
        <source>the server gives none</source>
        <translation>サーバーの指定なし</translation>
    </message>
    <message>
        <source>not offered, since it is not https: %1</source>
        <translation>https ではないので示しません: %1</translation>
    </message>
    <message>
        <source>Installed version:</source>
        <translation>インストール済みのバージョン:</translation>
    </message>
    <message>
        <source>Latest version:</source>
        <translation>最新のバージョン:</translation>
    </message>
    <message>
        <source>Address:</source>
        <translation>アドレス:</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not check.</source>
        <translation>「%1」は check ではありません。</translation>
    </message>
    <message>
        <source>This system was built without the update check.</source>
        <translation>このシステムは更新の確認なしで作られています。</translation>
    </message>
    <message>
        <source>%1 gave no answer that can be used; the log says why.</source>
        <translation>%1 から使える応答がありません。理由はログでわかります。</translation>
    </message>
    <message>
        <source>There is a newer version.</source>
        <translation>新しいバージョンがあります。</translation>
    </message>
    <message>
        <source>there is no word &quot;%1&quot;</source>
        <translation>「%1」という語はありません</translation>
    </message>
    <message>
        <source>&quot;actsIn&quot; is neither session nor daemon</source>
        <translation>「actsIn」が session でも daemon でもありません</translation>
    </message>
    <message>
        <source>&quot;repeats&quot; has no word &quot;%1&quot;</source>
        <translation>「repeats」に「%1」という語はありません</translation>
    </message>
    <message>
        <source>nothing comes of its rule</source>
        <translation>規則から日時が得られません</translation>
    </message>
    <message>
        <source>say at what time, by &quot;at&quot;</source>
        <translation>時刻を「at」で指定してください</translation>
    </message>
    <message>
        <source>&quot;date&quot; is not a date such as &quot;2026-03-14 06:55&quot;</source>
        <translation>「date」が「2026-03-14 06:55」のような日時ではありません</translation>
    </message>
    <message>
        <source>it has no list of schedules (&quot;schedules&quot;, or &quot;Schedule Array&quot; of a store)</source>
        <translation>スケジュールのリストがありません (「schedules」、または保存ファイルの「Schedule Array」)</translation>
    </message>
    <message>
        <source>schedule %1, &quot;%2&quot;, is none: %3</source>
        <translation>スケジュール %1「%2」は正しくありません: %3</translation>
    </message>
    <message>
        <source>schedule %1, &quot;%2&quot;, is there twice</source>
        <translation>スケジュール %1「%2」が 2 回あります</translation>
    </message>
    <message>
        <source>it is empty</source>
        <translation>空です</translation>
    </message>
    <message>
        <source>it has more than one document</source>
        <translation>文書が 2 つ以上あります</translation>
    </message>
    <message>
        <source>it cannot be read</source>
        <translation>読み込めません</translation>
    </message>
    <message>
        <source>%1, in line %2</source>
        <translation>%1、%2 行目</translation>
    </message>
    <message>
        <source>it is nested too deeply</source>
        <translation>入れ子が深すぎます</translation>
    </message>
    <message>
        <source>it has too many values</source>
        <translation>値が多すぎます</translation>
    </message>
    <message>
        <source>aliases are not understood</source>
        <translation>エイリアスは解釈できません</translation>
    </message>
    <message>
        <source>a value is missing</source>
        <translation>値がありません</translation>
    </message>
    <message>
        <source>a key is not a text</source>
        <translation>キーがテキストではありません</translation>
    </message>
    <message>
        <source>a key stands there twice</source>
        <translation>キーが 2 回あります</translation>
    </message>
    <message>
        <source>tags are not understood</source>
        <translation>タグは解釈できません</translation>
    </message>
    <message>
        <source>Say --%1 or --%2, not both.</source>
        <translation>--%1 と --%2 はどちらか一方を指定してください。</translation>
    </message>
    <message>
        <source>Send an Apple event to the process with that signature, and show the reply; each of the three is four characters.</source>
        <translation>その署名を持つプロセスに Apple イベントを送り、応答を表示します。3 つとも 4 文字です。</translation>
    </message>
    <message>
        <source>%1.</source>
        <comment>a clause that becomes a sentence</comment>
        <translation>%1。</translation>
    </message>
</context>
<context>
    <name>QCommandLineParser</name>
    <message>
        <source>Unknown option &apos;%1&apos;.</source>
        <translation>不明なオプション「%1」です。</translation>
    </message>
    <message>
        <source>Unknown options: %1.</source>
        <translation>不明なオプションです: %1。</translation>
    </message>
    <message>
        <source>Missing value after &apos;%1&apos;.</source>
        <translation>「%1」の後に値がありません。</translation>
    </message>
    <message>
        <source>Unexpected value after &apos;%1&apos;.</source>
        <translation>「%1」の後に余分な値があります。</translation>
    </message>
</context>
</TS>
