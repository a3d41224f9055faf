<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ar" sourcelanguage="en">
<context>
    <name>AdminText</name>
    <message>
        <source>Work on the system below that folder instead of /.</source>
        <translation>العمل على النظام الواقع تحت هذا المجلد بدلًا من /.</translation>
    </message>
    <message>
        <source>Show this help and end.</source>
        <translation>عرض هذه المساعدة ثم الإنهاء.</translation>
    </message>
    <message>
        <source>done</source>
        <translation>تمّ</translation>
    </message>
    <message>
        <source>it could not be done (not found, not reachable, damaged)</source>
        <translation>تعذّر ذلك (غير موجود، أو لا يمكن الوصول إليه، أو تالف)</translation>
    </message>
    <message>
        <source>it is alive</source>
        <translation>إنه يعمل</translation>
    </message>
    <message>
        <source>it is not</source>
        <translation>إنه لا يعمل</translation>
    </message>
    <message>
        <source>nothing is wrong</source>
        <translation>لا خطأ</translation>
    </message>
    <message>
        <source>something is wrong</source>
        <translation>هناك خطأ</translation>
    </message>
    <message>
        <source>nothing differed</source>
        <translation>لم يختلف شيء</translation>
    </message>
    <message>
        <source>up to date</source>
        <translation>محدَّث</translation>
    </message>
    <message>
        <source>the command line is wrong</source>
        <translation>سطر الأوامر خاطئ</translation>
    </message>
    <message>
        <source>not permitted</source>
        <translation>غير مسموح</translation>
    </message>
    <message>
        <source>schedules were changed, or would be</source>
        <translation>غُيِّرت مواعيد، أو كانت ستُغيَّر</translation>
    </message>
    <message>
        <source>there is a newer version</source>
        <translation>هناك إصدار أحدث</translation>
    </message>
    <message>
        <source>no answer</source>
        <translation>لا جواب</translation>
    </message>
    <message>
        <source>Run the system below the folder &lt;DIR&gt; instead of /.</source>
        <translation>العمل على النظام الواقع تحت المجلد &lt;DIR&gt; بدلًا من /.</translation>
    </message>
    <message>
        <source>Show the version and end.</source>
        <translation>عرض الإصدار ثم الإنهاء.</translation>
    </message>
    <message>
        <source>Usage: %1 [options] COMMAND [ARGUMENTS]</source>
        <translation>الاستعمال: %1 [خيارات] أمر [معاملات]</translation>
    </message>
    <message>
        <source>Shows and changes the schedules, asks whether the system&apos;s processes are alive, shows the log.</source>
        <translation>يعرض المواعيد ويغيّرها، ويسأل هل تعمل عمليات النظام، ويعرض سجل الأحداث.</translation>
    </message>
    <message>
        <source>Commands:</source>
        <translation>الأوامر:</translation>
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
        <translation>SCHEDULE معرّف، أو اسم لا يحمله إلا موعد واحد. USER اسم أو رقم.
DATE ما يكتبه الناس: «06:55»، «tomorrow 7:00»، «fri 22:00»، «22.12. 6:30»، «2026-03-14 06:55»، +5m.
«أمر --help» يعرض خيارات ذلك الأمر وحده.

رمز الإنهاء: 0 تمّ (ping، status: إنه يعمل؛ doctor: لا خطأ؛ apply: لم يختلف شيء)؛
1 تعذّر ذلك (غير موجود، أو لا يمكن الوصول إليه، أو تالف؛ doctor: هناك خطأ)؛
2 سطر الأوامر خاطئ؛ 3 غير مسموح.
apply: 4 غُيِّرت مواعيد، أو كانت ستُغيَّر.
update check: 0 محدَّث؛ 4 هناك إصدار أحدث؛ 5 لا جواب.</translation>
    </message>
    <message>
        <source>Options:</source>
        <translation>الخيارات:</translation>
    </message>
    <message>
        <source>Arguments:</source>
        <translation>المعاملات:</translation>
    </message>
    <message>
        <source>What to do, see above.</source>
        <translation>ما ينبغي فعله، انظر أعلاه.</translation>
    </message>
    <message>
        <source>Usage:</source>
        <translation>الاستعمال:</translation>
    </message>
    <message>
        <source>Example:</source>
        <translation>مثال:</translation>
    </message>
    <message>
        <source>Exit status:</source>
        <translation>رمز الإنهاء:</translation>
    </message>
    <message>
        <source>A command is missing; --help shows them.</source>
        <translation>ينقص أمر؛ الخيار --help يعرض الأوامر.</translation>
    </message>
    <message>
        <source>There is no command &quot;%1&quot;; --help shows those that there are.</source>
        <translation>لا يوجد أمر «%1»؛ الخيار --help يعرض الموجود منها.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; needs an argument; &quot;%1 --help&quot; shows which.</source>
        <translation>«%1» يحتاج إلى معامل؛ «%1 --help» يبيّنه.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; takes no argument &quot;%2&quot;.</source>
        <translation>«%1» لا يقبل المعامل «%2».</translation>
    </message>
    <message>
        <source>&quot;%1&quot; takes no option %2.</source>
        <translation>«%1» لا يقبل الخيار %2.</translation>
    </message>
    <message>
        <source>Show on one screen how the system is: daemon, agents, clock, what comes, what failed.</source>
        <translation>عرض حال النظام في شاشة واحدة: الخدمة والوكلاء والساعة وما سيأتي وما فشل.</translation>
    </message>
    <message>
        <source>Look at all that can be wrong with the installation, and say what helps.</source>
        <translation>النظر في كل ما قد يكون خاطئًا في التثبيت، وبيان ما ينفع.</translation>
    </message>
    <message>
        <source>Show all schedules, and what became of those that are over.</source>
        <translation>عرض كل المواعيد، وما صار إليه ما انتهى منها.</translation>
    </message>
    <message>
        <source>Add a schedule: what is to be done (--bundle or --program) and when (--date or --in; --every or --rule, with --at).</source>
        <translation>إضافة موعد: ما يُفعل (--bundle أو --program) ومتى (--date أو --in؛ --every أو --rule، مع --at).</translation>
    </message>
    <message>
        <source>Change what the options name, as for &quot;add&quot;; the rest stays.</source>
        <translation>تغيير ما تذكره الخيارات كما في «add»؛ ويبقى ما عداه.</translation>
    </message>
    <message>
        <source>Remove a schedule.</source>
        <translation>إزالة موعد.</translation>
    </message>
    <message>
        <source>Remove the schedules that are over, but for those that stay.</source>
        <translation>إزالة المواعيد التي انتهت، إلا ما يبقى منها.</translation>
    </message>
    <message>
        <source>Let a schedule come due.</source>
        <translation>تفعيل موعد ليحين وقته.</translation>
    </message>
    <message>
        <source>Keep a schedule, but never let it come due.</source>
        <translation>إبقاء موعد دون أن يحين وقته أبدًا.</translation>
    </message>
    <message>
        <source>Show what comes, and what wakes the machine.</source>
        <translation>عرض ما سيأتي، وما يوقظ الحاسوب.</translation>
    </message>
    <message>
        <source>Show what became of it, newest first.</source>
        <translation>عرض ما صار إليه الأمر، الأحدث أولًا.</translation>
    </message>
    <message>
        <source>Leave out the next time, or that at --date.</source>
        <translation>تخطي المرة التالية، أو التي في --date.</translation>
    </message>
    <message>
        <source>Perform it so much later (90, 10m, 1h): the next time, or that at --date.</source>
        <translation>تأجيله بهذا القدر (90 أو 10m أو 1h): المرة التالية، أو التي في --date.</translation>
    </message>
    <message>
        <source>Have the daemon perform a schedule&apos;s action now.</source>
        <translation>جعل الخدمة تنفّذ إجراء موعد الآن.</translation>
    </message>
    <message>
        <source>Ask whether the daemon, a user&apos;s agent or his configuration application is alive; yours without USER.</source>
        <translation>السؤال هل تعمل الخدمة، أو وكيل مستخدم، أو تطبيقه؛ وكيلك أو تطبيقك دون USER.</translation>
    </message>
    <message>
        <source>Show the last lines of the log.</source>
        <translation>عرض آخر أسطر سجل الأحداث.</translation>
    </message>
    <message>
        <source>Show what the schedule&apos;s action wrote last, when it was performed the last time, or at --date.</source>
        <translation>عرض ما كتبه إجراء الموعد آخر مرة، أو في --date.</translation>
    </message>
    <message>
        <source>Show the clock that can wake the machine, its alarm, and the scheduled events; or arm the alarm, read it back, set it as it was.</source>
        <translation>عرض الساعة التي توقظ الحاسوب، ومنبّهها، والأحداث المقررة؛ أو ضبط المنبّه وقراءته وإعادته كما كان.</translation>
    </message>
    <message>
        <source>Put the machine to sleep now.</source>
        <translation>جعل الحاسوب ينام الآن.</translation>
    </message>
    <message>
        <source>Write all schedules, or one, to the standard output: a property list, which &quot;apply&quot; reads, or with --ics a calendar.</source>
        <translation>كتابة كل المواعيد، أو واحد منها، على الخرج القياسي: قائمة خصائص يقرؤها «apply»، أو تقويمًا مع --ics.</translation>
    </message>
    <message>
        <source>Have exactly those schedules that a property list, JSON or YAML file says; &quot;-&quot; is the standard input.</source>
        <translation>جعل المواعيد كما يقولها ملف (قائمة خصائص أو JSON أو YAML) تمامًا؛ «-» هو الدخل القياسي.</translation>
    </message>
    <message>
        <source>Ask the update server whether there is a newer version.</source>
        <translation>سؤال خادم التحديث هل هناك إصدار أحدث.</translation>
    </message>
    <message>
        <source>Print how the last word may go on, for shells.</source>
        <translation>طباعة ما قد تُكمَل به الكلمة الأخيرة، للأصداف.</translation>
    </message>
    <message>
        <source>Show help and end.</source>
        <translation>عرض المساعدة ثم الإنهاء.</translation>
    </message>
    <message>
        <source>Work below a folder.</source>
        <translation>العمل تحت مجلد.</translation>
    </message>
    <message>
        <source>The command failed: %1</source>
        <translation>فشل الأمر: %1</translation>
    </message>
    <message>
        <source>answer in JSON, one object on a line.</source>
        <translation>الجواب بصيغة JSON، كائن في كل سطر.</translation>
    </message>
    <message>
        <source>the plug-in bundle, a path or the name of an installed one.</source>
        <translation>حزمة الإجراء: مسار، أو اسم حزمة مثبَّتة.</translation>
    </message>
    <message>
        <source>run this program (an absolute path), with the bundle &quot;Command&quot;.</source>
        <translation>تشغيل هذا البرنامج (مسار مطلق) بالحزمة «Command».</translation>
    </message>
    <message>
        <source>an argument of the program; repeat it for more.</source>
        <translation>معامل للبرنامج؛ كرّره للمزيد.</translation>
    </message>
    <message>
        <source>when it takes place once, as &quot;2026-03-14 06:55&quot; or &quot;tomorrow 7:00&quot;.</source>
        <translation>متى يحدث مرة واحدة، مثل «2026-03-14 06:55» أو «tomorrow 7:00».</translation>
    </message>
    <message>
        <source>of which time; the latest without it.</source>
        <translation>أي مرة؛ الأخيرة من دونه.</translation>
    </message>
    <message>
        <source>of which time; the next without it.</source>
        <translation>أي مرة؛ التالية من دونه.</translation>
    </message>
    <message>
        <source>the time zone of what is told, as &quot;Europe/Berlin&quot;; the machine&apos;s without it, and what repeats goes with it wherever that goes. &quot;machine&quot; is that again.</source>
        <translation>المنطقة الزمنية لما يُذكر، مثل «Europe/Berlin»؛ منطقة الحاسوب من دونها، وما يتكرر يتبعها أينما صارت. «machine» تعني هذه من جديد.</translation>
    </message>
    <message>
        <source>the time zone of --date, as &quot;Europe/Berlin&quot;; the schedule&apos;s without it.</source>
        <translation>المنطقة الزمنية للخيار --date، مثل «Europe/Berlin»؛ منطقة الموعد من دونها.</translation>
    </message>
    <message>
        <source>when, so many seconds from now (90, 5m, 1h).</source>
        <translation>متى: بعد كذا ثانية من الآن (90 أو 5m أو 1h).</translation>
    </message>
    <message>
        <source>how often: day, weekday, week, month, year, days such as monday,thursday, or a distance such as 15m or 2h.</source>
        <translation>كم مرة: day، weekday، week، month، year، أو أيام مثل monday,thursday، أو فاصل مثل 15m أو 2h.</translation>
    </message>
    <message>
        <source>at what time of those days, as 22:00; repeat it for more.</source>
        <translation>في أي وقت من تلك الأيام، مثل 22:00؛ كرّره للمزيد.</translation>
    </message>
    <message>
        <source>on which days of every month, as 1,15,last.</source>
        <translation>في أي أيام كل شهر، مثل 1,15,last.</translation>
    </message>
    <message>
        <source>how often, as a rule of RFC 5545: FREQ=WEEKLY;BYDAY=MO.</source>
        <translation>كم مرة، بقاعدة من RFC 5545: FREQ=WEEKLY;BYDAY=MO.</translation>
    </message>
    <message>
        <source>repeat it from then on, now without it.</source>
        <translation>التكرار من ذلك الحين، ومن الآن من دونه.</translation>
    </message>
    <message>
        <source>repeat it up to then, that day included.</source>
        <translation>التكرار حتى ذلك الحين، واليوم مشمول.</translation>
    </message>
    <message>
        <source>show what comes up to then, that day included.</source>
        <translation>عرض ما سيأتي حتى ذلك الحين، واليوم مشمول.</translation>
    </message>
    <message>
        <source>repeat it so many times.</source>
        <translation>التكرار بهذا العدد من المرات.</translation>
    </message>
    <message>
        <source>not on that day, or at that date; repeat it for more.</source>
        <translation>ليس في ذلك اليوم، أو ذلك الوقت؛ كرّره للمزيد.</translation>
    </message>
    <message>
        <source>no exception on that day, or at that date; repeat it for more.</source>
        <translation>لا استثناء في ذلك اليوم، أو ذلك الوقت؛ كرّره للمزيد.</translation>
    </message>
    <message>
        <source>repeat it without an end.</source>
        <translation>التكرار بلا نهاية.</translation>
    </message>
    <message>
        <source>repeat it no more: the next time is the last one, or --date is.</source>
        <translation>لا تكرار بعد الآن: المرة التالية هي الأخيرة، أو --date.</translation>
    </message>
    <message>
        <source>what becomes of it when its time passed while the machine was off or asleep: skip, run-once (of all that were missed the latest), run-once=LIMIT (no older than 90, 10m, 6h, 2d), or plug-in. bundle: what the bundle says, as without it.</source>
        <translation>ماذا يكون إن فات وقته والحاسوب مطفأ أو نائم: skip، أو run-once (آخر ما فات)، أو run-once=LIMIT (ليس أقدم من 90 أو 10m أو 6h أو 2d)، أو plug-in. bundle: كما تحدد الحزمة، كما من دونه.</translation>
    </message>
    <message>
        <source>whether it is performed while the time before still goes on: skip or run.</source>
        <translation>هل يُنفَّذ والمرة السابقة لا تزال جارية: skip أو run.</translation>
    </message>
    <message>
        <source>what the machine does afterwards when it was woken or switched on for it and nobody uses it: nothing, sleep or power-off.</source>
        <translation>ماذا يفعل الحاسوب بعد ذلك إن أُوقظ أو شُغّل له ولم يستعمله أحد: nothing أو sleep أو power-off.</translation>
    </message>
    <message>
        <source>another name.</source>
        <translation>اسم آخر.</translation>
    </message>
    <message>
        <source>a parameter of the action; repeat it for more. &quot;true&quot;, &quot;false&quot; and numbers are taken as such; KEY:string=VALUE, :integer=, :real= and :boolean= name the type.</source>
        <translation>معطى للإجراء؛ كرّره للمزيد. تُفهم «true» و«false» والأعداد كما هي؛ KEY:string=VALUE و:integer= و:real= و:boolean= تسمّي النوع.</translation>
    </message>
    <message>
        <source>a parameter of the event, whose KEY is four characters; repeat it for more. &quot;true&quot;, &quot;false&quot; and numbers are taken as such; KEY:string=VALUE, :integer=, :real= and :boolean= name the type.</source>
        <translation>معطى للحدث، وKEY فيه أربعة أحرف؛ كرّره للمزيد. تُفهم «true» و«false» والأعداد كما هي؛ KEY:string=VALUE و:integer= و:real= و:boolean= تسمّي النوع.</translation>
    </message>
    <message>
        <source>parameters from a property list.</source>
        <translation>معطيات من قائمة خصائص.</translation>
    </message>
    <message>
        <source>without that parameter; repeat it for more.</source>
        <translation>من دون هذا المعطى؛ كرّره للمزيد.</translation>
    </message>
    <message>
        <source>alert the user so many seconds before, with a button to cancel.</source>
        <translation>تنبيه المستخدم قبل ذلك بكذا ثانية، مع زر للإلغاء.</translation>
    </message>
    <message>
        <source>without the alert.</source>
        <translation>من دون التنبيه.</translation>
    </message>
    <message>
        <source>act in the daemon.</source>
        <translation>العمل في الخدمة.</translation>
    </message>
    <message>
        <source>act in the user&apos;s session.</source>
        <translation>العمل في جلسة المستخدم.</translation>
    </message>
    <message>
        <source>act where the bundle says.</source>
        <translation>العمل حيث تحدد الحزمة.</translation>
    </message>
    <message>
        <source>wake the machine for it, a minute ahead.</source>
        <translation>إيقاظ الحاسوب له قبل دقيقة.</translation>
    </message>
    <message>
        <source>do not wake the machine for it.</source>
        <translation>عدم إيقاظ الحاسوب له.</translation>
    </message>
    <message>
        <source>switch the machine on for it, three minutes ahead.</source>
        <translation>تشغيل الحاسوب له قبل ثلاث دقائق.</translation>
    </message>
    <message>
        <source>do not switch the machine on for it.</source>
        <translation>عدم تشغيل الحاسوب له.</translation>
    </message>
    <message>
        <source>tell the user at the console when it fails or is not performed.</source>
        <translation>إخبار المستخدم على الشاشة إن فشل أو لم يُنفَّذ.</translation>
    </message>
    <message>
        <source>do not tell the user of failures.</source>
        <translation>عدم إخبار المستخدم بالفشل.</translation>
    </message>
    <message>
        <source>the schedule is not to come due before it is enabled.</source>
        <translation>لا يحين وقت الموعد قبل تفعيله.</translation>
    </message>
    <message>
        <source>let it come due.</source>
        <translation>جعله يحين.</translation>
    </message>
    <message>
        <source>also what nothing could come of.</source>
        <translation>حتى ما لا يمكن أن يحدث منه شيء.</translation>
    </message>
    <message>
        <source>the schedule is not removed when it is over, but by &quot;remove&quot;.</source>
        <translation>لا يُزال الموعد بعد انتهائه إلا بالأمر «remove».</translation>
    </message>
    <message>
        <source>the schedule is removed some time after it is over.</source>
        <translation>يُزال الموعد بعد انتهائه بوقت.</translation>
    </message>
    <message>
        <source>whose schedule it is; yours without it.</source>
        <translation>لمن الموعد؛ لك من دونه.</translation>
    </message>
    <message>
        <source>how many to show, 10 without it.</source>
        <translation>كم يُعرض، 10 من دونه.</translation>
    </message>
    <message>
        <source>how many to show, 20 without it.</source>
        <translation>كم يُعرض، 20 من دونه.</translation>
    </message>
    <message>
        <source>how many lines to show first, 20 without it.</source>
        <translation>كم سطرًا يُعرض أولًا، 20 من دونه.</translation>
    </message>
    <message>
        <source>go on showing lines as they come.</source>
        <translation>مواصلة عرض الأسطر كلما جاءت.</translation>
    </message>
    <message>
        <source>whose process is to have it; yours without it.</source>
        <translation>لمن العملية التي تتلقاه؛ لك من دونه.</translation>
    </message>
    <message>
        <source>how long to wait for the reply, 60 without it.</source>
        <translation>كم يُنتظر الجواب، 60 من دونه.</translation>
    </message>
    <message>
        <source>do not wait for a reply.</source>
        <translation>عدم انتظار الجواب.</translation>
    </message>
    <message>
        <source>as a calendar (iCalendar, RFC 5545).</source>
        <translation>تقويمًا (iCalendar، RFC 5545).</translation>
    </message>
    <message>
        <source>change nothing, and say what would be changed.</source>
        <translation>عدم تغيير شيء، وبيان ما كان سيُغيَّر.</translation>
    </message>
    <message>
        <source>begin later by a time of up to so much (30m, 1h), which is another one on every machine and always the same on this one.</source>
        <translation>البدء متأخرًا بمدة لا تتجاوز هذا القدر (30m أو 1h)، تختلف من حاسوب إلى آخر وتثبت على الواحد.</translation>
    </message>
    <message>
        <source>run the command on that machine, over ssh.</source>
        <translation>تنفيذ الأمر على ذلك الحاسوب عبر ssh.</translation>
    </message>
    <message>
        <source>The output cannot be written.</source>
        <translation>تعذّرت كتابة الخرج.</translation>
    </message>
    <message>
        <source>It cannot be spread: %1.</source>
        <translation>تعذّر توزيعه: %1.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is added as %2</source>
        <translation>أُضيف «%1» بالمعرّف %2</translation>
    </message>
    <message>
        <source>The standard input cannot be read.</source>
        <translation>تعذّرت قراءة الدخل القياسي.</translation>
    </message>
    <message>
        <source>%1 cannot be read: %2.</source>
        <translation>تعذّرت قراءة %1: %2.</translation>
    </message>
    <message>
        <source>Nothing can be spread: %1.</source>
        <translation>تعذّر التوزيع: %1.</translation>
    </message>
    <message>
        <source>%1 is not understood: %2.</source>
        <translation>%1 غير مفهوم: %2.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; cannot be spread: %2.</source>
        <translation>تعذّر توزيع «%1»: %2.</translation>
    </message>
    <message>
        <source>&quot;%1&quot;: %2. --anyway has it all the same.</source>
        <translation>«%1»: %2. مع --anyway يُقبل رغم ذلك.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; (%2) would be removed.</source>
        <translation>كان «%1» (%2) سيُزال.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; (%2) is removed.</source>
        <translation>أُزيل «%1» (%2).</translation>
    </message>
    <message>
        <source>&quot;%1&quot; (%2) would be changed.</source>
        <translation>كان «%1» (%2) سيُغيَّر.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; (%2) is changed.</source>
        <translation>غُيِّر «%1» (%2).</translation>
    </message>
    <message>
        <source>&quot;%1&quot; (%2) would be added.</source>
        <translation>كان «%1» (%2) سيُضاف.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; (%2) is added.</source>
        <translation>أُضيف «%1» (%2).</translation>
    </message>
    <message>
        <source>Nothing differs.</source>
        <translation>لا شيء يختلف.</translation>
    </message>
    <message>
        <source>Say what is to change; --help shows the options.</source>
        <translation>قل ما ينبغي تغييره؛ الخيار --help يعرض الخيارات.</translation>
    </message>
    <message>
        <source>There is no schedule &quot;%1&quot; any more.</source>
        <translation>لم يعد هناك موعد «%1».</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is changed</source>
        <translation>غُيِّر «%1»</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not your schedule; try it as root.</source>
        <translation>«%1» ليس موعدك؛ جرّب بصفتك root.</translation>
    </message>
    <message>
        <source>The daemon refuses: %1.</source>
        <translation>ترفض الخدمة: %1.</translation>
    </message>
    <message>
        <source>The daemon does not answer.</source>
        <translation>الخدمة لا تستجيب.</translation>
    </message>
    <message>
        <source>its next time</source>
        <translation>مرته التالية</translation>
    </message>
    <message>
        <source>There is no user &quot;%1&quot;.</source>
        <translation>لا يوجد مستخدم «%1».</translation>
    </message>
    <message>
        <source>The daemon is alive.</source>
        <translation>الخدمة تعمل.</translation>
    </message>
    <message>
        <source>The agent of %1 is alive.</source>
        <translation>وكيل %1 يعمل.</translation>
    </message>
    <message>
        <source>The application of %1 is alive.</source>
        <translation>تطبيق %1 يعمل.</translation>
    </message>
    <message>
        <source>The agent of %1 does not answer.</source>
        <translation>وكيل %1 لا يستجيب.</translation>
    </message>
    <message>
        <source>The application of %1 does not answer.</source>
        <translation>تطبيق %1 لا يستجيب.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not daemon, agent or application.</source>
        <translation>«%1» ليس daemon ولا agent ولا application.</translation>
    </message>
    <message>
        <source>There is one daemon for all users.</source>
        <translation>هناك خدمة واحدة لكل المستخدمين.</translation>
    </message>
    <message>
        <source>The daemon was asked to perform &quot;%1&quot;; the log tells how it went.</source>
        <translation>طُلب من الخدمة تنفيذ «%1»؛ سجل الأحداث يبيّن ما جرى.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is left out: %2.</source>
        <translation>تخطي «%1»: %2.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no time to postpone it by, such as 90, 10m or 1h.</source>
        <translation>«%1» ليست مدة للتأجيل، مثل 90 أو 10m أو 1h.</translation>
    </message>
    <message>
        <source>&quot;%2&quot; is postponed by %1: %3.</source>
        <translation>تأجيل «%2» مدة %1: %3.</translation>
    </message>
    <message>
        <source>What is over cannot be told: %1.</source>
        <translation>لا يُعرف ما الذي انتهى: %1.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is over and removed.</source>
        <translation>انتهى «%1» وأُزيل.</translation>
    </message>
    <message>
        <source>No schedule is over.</source>
        <translation>لم ينته أي موعد.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a number of seconds from now.</source>
        <translation>«%1» ليس عددًا من الثواني من الآن.</translation>
    </message>
    <message>
        <source>There is no time zone &quot;%1&quot;.</source>
        <translation>لا توجد منطقة زمنية «%1».</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is a day; say at what time, such as &quot;%1 06:55&quot;.</source>
        <translation>«%1» يوم؛ قل في أي وقت، مثل «%1 06:55».</translation>
    </message>
    <message>
        <source>%1 does not exist in %2; it becomes %3.</source>
        <translation>%1 غير موجود في %2؛ فيصير %3.</translation>
    </message>
    <message>
        <source>Say when, by --date or by --in.</source>
        <translation>قل متى، بالخيار --date أو --in.</translation>
    </message>
    <message>
        <source>%1 in %2 is past.</source>
        <translation>مضى %1 في %2.</translation>
    </message>
    <message>
        <source>The date is further ahead than the store can hold.</source>
        <translation>التاريخ أبعد مما يمكن حفظه.</translation>
    </message>
    <message>
        <source>The clock is synchronised.</source>
        <translation>الساعة متزامنة.</translation>
    </message>
    <message>
        <source>Nothing keeps the clock right.</source>
        <translation>لا شيء يضبط الساعة.</translation>
    </message>
    <message>
        <source>timedatectl set-ntp true, after apt install systemd-timesyncd or chrony</source>
        <translation>timedatectl set-ntp true، بعد apt install systemd-timesyncd أو chrony</translation>
    </message>
    <message>
        <source>Nobody can tell how old the data of the time zones are.</source>
        <translation>لا يُعرف قِدم بيانات المناطق الزمنية.</translation>
    </message>
    <message>
        <source>The data of the time zones do not say how old they are.</source>
        <translation>بيانات المناطق الزمنية لا تذكر قِدمها.</translation>
    </message>
    <message>
        <source>The data of the time zones are those of %1.</source>
        <translation>بيانات المناطق الزمنية من %1.</translation>
    </message>
    <message>
        <source>The machine&apos;s time zone has no name: /etc/localtime is no link to one.</source>
        <translation>ليس لمنطقة الحاسوب الزمنية اسم: /etc/localtime ليس رابطًا إلى واحدة.</translation>
    </message>
    <message>
        <source>timedatectl set-timezone Europe/Berlin, or where the machine is</source>
        <translation>timedatectl set-timezone Europe/Berlin، أو حيث يكون الحاسوب</translation>
    </message>
    <message>
        <source>The machine&apos;s time zone is %1.</source>
        <translation>منطقة الحاسوب الزمنية هي %1.</translation>
    </message>
    <message>
        <source>fine</source>
        <translation>سليم</translation>
    </message>
    <message>
        <source>wrong</source>
        <translation>خطأ</translation>
    </message>
    <message>
        <source>unknown</source>
        <translation>مجهول</translation>
    </message>
    <message>
        <source>Nothing is wrong.</source>
        <translation>لا خطأ.</translation>
    </message>
    <message numerus="yes">
        <source>%n thing(s) are wrong.</source>
        <translation>
            <numerusform>لا خطأ.</numerusform>
            <numerusform>هناك خطأ واحد.</numerusform>
            <numerusform>هناك خطآن.</numerusform>
            <numerusform>هناك %n أخطاء.</numerusform>
            <numerusform>هناك %n خطأً.</numerusform>
            <numerusform>هناك %n خطأ.</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 is not there.</source>
        <translation>%1 غير موجود.</translation>
    </message>
    <message>
        <source>%1 is no folder.</source>
        <translation>%1 ليس مجلدًا.</translation>
    </message>
    <message>
        <source>%1 is no regular file.</source>
        <translation>%1 ليس ملفًا عاديًا.</translation>
    </message>
    <message>
        <source>%1 belongs to %2.</source>
        <translation>%1 ملك %2.</translation>
    </message>
    <message>
        <source>%1 has the mode %2, which lets others write there.</source>
        <translation>أذونات %1 هي %2، فيكتب فيه غير مالكه.</translation>
    </message>
    <message>
        <source>%1 has the mode %2, which keeps others out.</source>
        <translation>أذونات %1 هي %2، فتمنع غير مالكه.</translation>
    </message>
    <message>
        <source>%1 is as it should be.</source>
        <translation>%1 كما ينبغي.</translation>
    </message>
    <message>
        <source>No bundle is performed as root: %1.</source>
        <translation>لا تُنفَّذ أي حزمة بصفة root: %1.</translation>
    </message>
    <message>
        <source>There is no bundle in %1.</source>
        <translation>لا حزمة في %1.</translation>
    </message>
    <message>
        <source>The bundles in %1 can be trusted.</source>
        <translation>حزم %1 موثوقة.</translation>
    </message>
    <message>
        <source>Nobody can tell how much room there is for the record.</source>
        <translation>لا يُعرف كم بقي من مكان للسجل.</translation>
    </message>
    <message>
        <source>%1, where the record lies, can only be read.</source>
        <translation>%1، وفيه السجل، للقراءة فقط.</translation>
    </message>
    <message>
        <source>%1, where the record lies, is full.</source>
        <translation>%1، وفيه السجل، ممتلئ.</translation>
    </message>
    <message>
        <source>Make room in %1.</source>
        <translation>أفسح مكانًا في %1.</translation>
    </message>
    <message>
        <source>There is room for the record.</source>
        <translation>هناك مكان للسجل.</translation>
    </message>
    <message>
        <source>Look for an alarm, &quot;RTC wake&quot; or &quot;power on by alarm&quot; in the firmware&apos;s settings; docs/power.md says more</source>
        <translation>ابحث في إعدادات البرنامج الثابت عن منبّه أو «RTC wake» أو «power on by alarm»؛ المزيد في docs/power.md</translation>
    </message>
    <message>
        <source>%1 can wake the machine.</source>
        <translation>%1 تستطيع إيقاظ الحاسوب.</translation>
    </message>
    <message>
        <source>No clock can wake this machine, and no schedule asks for that.</source>
        <translation>لا ساعة توقظ هذا الحاسوب، ولا موعد يطلب ذلك.</translation>
    </message>
    <message>
        <source>No clock can wake this machine, as &quot;%1&quot; asks for.</source>
        <translation>لا ساعة توقظ هذا الحاسوب كما يطلب «%1».</translation>
    </message>
    <message>
        <source>%1, or %2</source>
        <translation>%1، أو %2</translation>
    </message>
    <message>
        <source>There is no alarm without a clock that could wake the machine.</source>
        <translation>لا منبّه من دون ساعة توقظ الحاسوب.</translation>
    </message>
    <message>
        <source>The machine is to be woken, and the alarm of %1 is not armed: the firmware or another program has dropped it, or the daemon does not run.</source>
        <translation>ينبغي إيقاظ الحاسوب ومنبّه %1 غير مضبوط: أسقطه البرنامج الثابت أو برنامج آخر، أو الخدمة لا تعمل.</translation>
    </message>
    <message>
        <source>The alarm is armed.</source>
        <translation>المنبّه مضبوط.</translation>
    </message>
    <message>
        <source>No alarm is needed.</source>
        <translation>لا حاجة إلى منبّه.</translation>
    </message>
    <message>
        <source>The alarm holds what it is set to.</source>
        <translation>المنبّه يحفظ ما يُضبط عليه.</translation>
    </message>
    <message>
        <source>Only root can see whether the machine was woken when it should have been.</source>
        <translation>لا يرى إلا root هل أُوقظ الحاسوب حين كان ينبغي.</translation>
    </message>
    <message>
        <source>The last time of &quot;%1&quot;, which wakes the machine, was missed.</source>
        <translation>فاتت المرة الأخيرة من «%1» الذي يوقظ الحاسوب.</translation>
    </message>
    <message>
        <source>Nothing that wakes the machine was missed the last time.</source>
        <translation>لم يفت آخر مرة شيء مما يوقظ الحاسوب.</translation>
    </message>
    <message>
        <source>The bus lets nobody be com.dozely: there is no %1.</source>
        <translation>الناقل لا يسمح لأحد بأن يكون com.dozely: لا يوجد %1.</translation>
    </message>
    <message>
        <source>apt install --reinstall dozely, or link the file of another prefix into /etc/dbus-1/system.d; then systemctl reload dbus</source>
        <translation>apt install --reinstall dozely، أو اربط ملف البادئة الأخرى داخل /etc/dbus-1/system.d؛ ثم systemctl reload dbus</translation>
    </message>
    <message>
        <source>The bus knows who may be com.dozely.</source>
        <translation>الناقل يعرف من يجوز أن يكون com.dozely.</translation>
    </message>
    <message>
        <source>Root alone may change schedules: there is no %1.</source>
        <translation>لا يغيّر المواعيد إلا root: لا يوجد %1.</translation>
    </message>
    <message>
        <source>polkit knows what users may be asked for.</source>
        <translation>polkit يعرف ما يُطلب من المستخدمين.</translation>
    </message>
    <message>
        <source>Root alone may change schedules: there is no polkit.</source>
        <translation>لا يغيّر المواعيد إلا root: لا يوجد polkit.</translation>
    </message>
    <message>
        <source>polkit is there.</source>
        <translation>polkit موجود.</translation>
    </message>
    <message>
        <source>No service manager says whether the daemon is started with the machine.</source>
        <translation>لا مدير خدمات يبيّن هل تبدأ الخدمة مع الحاسوب.</translation>
    </message>
    <message>
        <source>systemd does not know dozelyd.service.</source>
        <translation>systemd لا يعرف dozelyd.service.</translation>
    </message>
    <message>
        <source>dozelyd.service is masked.</source>
        <translation>dozelyd.service محجوبة.</translation>
    </message>
    <message>
        <source>The daemon is not started with the machine.</source>
        <translation>الخدمة لا تبدأ مع الحاسوب.</translation>
    </message>
    <message>
        <source>dozelyd.service has failed.</source>
        <translation>فشلت dozelyd.service.</translation>
    </message>
    <message>
        <source>The daemon is started with the machine.</source>
        <translation>الخدمة تبدأ مع الحاسوب.</translation>
    </message>
    <message>
        <source>The daemon listens.</source>
        <translation>الخدمة تستمع.</translation>
    </message>
    <message>
        <source>A process of user %1 listens in the daemon&apos;s place.</source>
        <translation>عملية للمستخدم %1 تستمع مكان الخدمة.</translation>
    </message>
    <message>
        <source>The daemon does not run, or does not listen.</source>
        <translation>الخدمة لا تعمل، أو لا تستمع.</translation>
    </message>
    <message>
        <source>systemctl start dozelyd; journalctl -u dozelyd says why it ended</source>
        <translation>systemctl start dozelyd (يبيّن journalctl -u dozelyd لماذا توقفت)</translation>
    </message>
    <message>
        <source>There is no system bus, so users cannot reach the daemon.</source>
        <translation>لا ناقل للنظام، فلا يصل المستخدمون إلى الخدمة.</translation>
    </message>
    <message>
        <source>The system bus does not say whether the daemon is there.</source>
        <translation>ناقل النظام لا يبيّن هل الخدمة موجودة.</translation>
    </message>
    <message>
        <source>The daemon is not com.dozely on the system bus.</source>
        <translation>الخدمة ليست com.dozely على ناقل النظام.</translation>
    </message>
    <message>
        <source>systemctl restart dozelyd; the log says why it has not got the name</source>
        <translation>systemctl restart dozelyd (يبيّن سجل الأحداث لماذا ليس لها الاسم)</translation>
    </message>
    <message>
        <source>The daemon is com.dozely on the system bus.</source>
        <translation>الخدمة هي com.dozely على ناقل النظام.</translation>
    </message>
    <message>
        <source>Nobody is at the console, so no agent is needed.</source>
        <translation>لا أحد أمام الشاشة، فلا حاجة إلى وكيل.</translation>
    </message>
    <message>
        <source>The agent of %1, who is at the console, listens.</source>
        <translation>وكيل %1، وهو أمام الشاشة، يستمع.</translation>
    </message>
    <message>
        <source>%1 is at the console, and no agent of his listens: nothing acts in his session.</source>
        <translation>%1 أمام الشاشة ولا وكيل له يستمع: لا شيء يعمل في جلسته.</translation>
    </message>
    <message>
        <source>systemctl --user --machine=%1@ start dozely-agent, or have him log in again</source>
        <translation>systemctl --user --machine=%1@ start dozely-agent، أو ليسجّل الدخول من جديد</translation>
    </message>
    <message>
        <source>No agent is started when a user logs in.</source>
        <translation>لا وكيل يبدأ عند تسجيل الدخول.</translation>
    </message>
    <message>
        <source>An agent is started when a user logs in.</source>
        <translation>يبدأ وكيل عند تسجيل الدخول.</translation>
    </message>
    <message>
        <source>The store is not believed: %1.</source>
        <translation>لا يوثق بالمخزن: %1.</translation>
    </message>
    <message>
        <source>%1 cannot be used: %2.</source>
        <translation>تعذّر استعمال %1: %2.</translation>
    </message>
    <message>
        <source>Put back a good one from a backup, or begin anew: mv &apos;%1&apos; &apos;%1.damaged&apos;</source>
        <translation>أعد نسخة سليمة من نسخة احتياطية، أو ابدأ من جديد: mv &apos;%1&apos; &apos;%1.damaged&apos;</translation>
    </message>
    <message>
        <source>Entries of the store are no schedules: %1.</source>
        <translation>في المخزن ما ليس مواعيد: %1.</translation>
    </message>
    <message>
        <source>Mend these entries in %1, or remove them</source>
        <translation>أصلح ذلك في %1 أو أزله</translation>
    </message>
    <message>
        <source>The store can be read.</source>
        <translation>المخزن مقروء.</translation>
    </message>
    <message>
        <source>There is no store yet.</source>
        <translation>لا مخزن بعد.</translation>
    </message>
    <message>
        <source>The record of occurrences can be read.</source>
        <translation>سجل التنفيذ مقروء.</translation>
    </message>
    <message>
        <source>Only root can look into the record of occurrences.</source>
        <translation>لا يطّلع على سجل التنفيذ إلا root.</translation>
    </message>
    <message>
        <source>systemctl restart dozelyd, which sets a damaged one aside and begins a new one</source>
        <translation>systemctl restart dozelyd، فيُنحّي السجل التالف ويبدأ جديدًا</translation>
    </message>
    <message>
        <source>The schedules cannot be looked at.</source>
        <translation>تعذّر النظر في المواعيد.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is to put the machine to rest afterwards, and does not wake it</source>
        <translation>«%1» ينبغي أن يريح الحاسوب بعده، وهو لا يوقظه</translation>
    </message>
    <message>
        <source>Nothing can come of %1.</source>
        <translation>لا يمكن أن يحدث شيء من: %1.</translation>
    </message>
    <message>
        <source>Something can come of every schedule that is enabled.</source>
        <translation>يمكن أن يحدث شيء من كل موعد مفعَّل.</translation>
    </message>
    <message>
        <source>The parameter &quot;%1&quot; holds a date, which only root can store.</source>
        <translation>المعطى «%1» فيه تاريخ لا يحفظه إلا root.</translation>
    </message>
    <message>
        <source>--timeout needs a whole number of seconds, not &quot;%1&quot;.</source>
        <translation>الخيار --timeout يحتاج إلى عدد صحيح من الثواني، لا «%1».</translation>
    </message>
    <message>
        <source>KEYWORD</source>
        <translation>المفتاح</translation>
    </message>
    <message>
        <source>TYPE</source>
        <translation>النوع</translation>
    </message>
    <message>
        <source>VALUE</source>
        <translation>القيمة</translation>
    </message>
    <message>
        <source>No process of %1 has the signature &quot;%2&quot;.</source>
        <translation>لا عملية للمستخدم %1 بالتوقيع «%2».</translation>
    </message>
    <message>
        <source>Process %1 has the event.</source>
        <translation>العملية %1 عندها الحدث.</translation>
    </message>
    <message>
        <source>Process %1 has handled the event.</source>
        <translation>العملية %1 عالجت الحدث.</translation>
    </message>
    <message>
        <source>A schedule holds what a property list as text cannot carry.</source>
        <translation>في موعد ما لا تحمله قائمة خصائص نصية.</translation>
    </message>
    <message>
        <source>What became of it cannot be told: %1.</source>
        <translation>لا يُعرف ما صار إليه الأمر: %1.</translation>
    </message>
    <message>
        <source>%1 to %2</source>
        <translation>%1 إلى %2</translation>
    </message>
    <message>
        <source>postponed to %1</source>
        <translation>مؤجَّل إلى %1</translation>
    </message>
    <message numerus="yes">
        <source>%1 %n time(s)</source>
        <comment>missed; a number</comment>
        <translation>
            <numerusform>%1، ولا مرة</numerusform>
            <numerusform>%1، مرة واحدة</numerusform>
            <numerusform>%1، مرتين</numerusform>
            <numerusform>%1، %n مرات</numerusform>
            <numerusform>%1، %n مرة</numerusform>
            <numerusform>%1، %n مرة</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1 at least %n time(s)</source>
        <comment>missed; a number</comment>
        <translation>
            <numerusform>%1، ولا مرة على الأقل</numerusform>
            <numerusform>%1، مرة على الأقل</numerusform>
            <numerusform>%1، مرتين على الأقل</numerusform>
            <numerusform>%1، %n مرات على الأقل</numerusform>
            <numerusform>%1، %n مرة على الأقل</numerusform>
            <numerusform>%1، %n مرة على الأقل</numerusform>
        </translation>
    </message>
    <message>
        <source>on time</source>
        <translation>في موعده</translation>
    </message>
    <message>
        <source>%1 late</source>
        <comment>a duration</comment>
        <translation>متأخر %1</translation>
    </message>
    <message>
        <source>exit %1</source>
        <translation>رمز الإنهاء %1</translation>
    </message>
    <message>
        <source>Nothing became of it yet.</source>
        <translation>لم يحدث شيء بعد.</translation>
    </message>
    <message>
        <source>WHEN</source>
        <translation>متى</translation>
    </message>
    <message>
        <source>NAME</source>
        <translation>الاسم</translation>
    </message>
    <message>
        <source>STATE</source>
        <translation>النتيجة</translation>
    </message>
    <message>
        <source>BEGAN</source>
        <translation>البدء</translation>
    </message>
    <message>
        <source>WHY</source>
        <translation>السبب</translation>
    </message>
    <message>
        <source>IDENTIFIER</source>
        <translation>المعرّف</translation>
    </message>
    <message>
        <source>Root cannot be given up.</source>
        <translation>تعذّر التخلي عن صلاحيات root.</translation>
    </message>
    <message>
        <source>Root cannot be taken back.</source>
        <translation>تعذّرت استعادة صلاحيات root.</translation>
    </message>
    <message>
        <source>to come</source>
        <translation>قادم</translation>
    </message>
    <message>
        <source>to come, last %1</source>
        <translation>قادم، وآخره %1</translation>
    </message>
    <message>
        <source>daemon</source>
        <translation>الخدمة</translation>
    </message>
    <message>
        <source>session</source>
        <translation>الجلسة</translation>
    </message>
    <message>
        <source>yes</source>
        <translation>نعم</translation>
    </message>
    <message>
        <source>no</source>
        <translation>لا</translation>
    </message>
    <message>
        <source>machine</source>
        <comment>a time zone</comment>
        <translation>الحاسوب</translation>
    </message>
    <message>
        <source>There are no schedules.</source>
        <translation>لا مواعيد.</translation>
    </message>
    <message>
        <source>ENABLED</source>
        <translation>مفعَّل</translation>
    </message>
    <message>
        <source>DATE</source>
        <translation>التاريخ</translation>
    </message>
    <message>
        <source>TIME ZONE</source>
        <translation>المنطقة الزمنية</translation>
    </message>
    <message>
        <source>REPEATS</source>
        <translation>التكرار</translation>
    </message>
    <message>
        <source>ACTION</source>
        <translation>الإجراء</translation>
    </message>
    <message>
        <source>RUNS IN</source>
        <translation>يعمل في</translation>
    </message>
    <message>
        <source>OWNER</source>
        <translation>المالك</translation>
    </message>
    <message>
        <source>What became of the schedules cannot be told: %1.</source>
        <translation>لا يُعرف ما صارت إليه المواعيد: %1.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a number of lines.</source>
        <translation>«%1» ليس عدد أسطر.</translation>
    </message>
    <message>
        <source>The log is no longer followed.</source>
        <translation>لم يعد سجل الأحداث متابَعًا.</translation>
    </message>
    <message>
        <source>There is no log at %1.</source>
        <translation>لا سجل أحداث في %1.</translation>
    </message>
    <message>
        <source>What was skipped or postponed is not taken into account: %1.</source>
        <translation>لم يُحسب ما تُخطّي أو أُجّل: %1.</translation>
    </message>
    <message>
        <source>woken, switched on</source>
        <translation>يوقَظ، يشغَّل</translation>
    </message>
    <message>
        <source>switched on</source>
        <translation>يشغَّل</translation>
    </message>
    <message>
        <source>woken</source>
        <translation>يوقَظ</translation>
    </message>
    <message>
        <source>%1, postponed from %2</source>
        <translation>%1، مؤجَّل من %2</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is disabled.</source>
        <translation>«%1» معطَّل.</translation>
    </message>
    <message>
        <source>Nothing comes.</source>
        <translation>لا شيء قادم.</translation>
    </message>
    <message>
        <source>MACHINE IS</source>
        <translation>الحاسوب</translation>
    </message>
    <message>
        <source>-n needs a whole number, 1 or more, not &quot;%1&quot;.</source>
        <translation>الخيار -n يحتاج إلى عدد صحيح، 1 أو أكثر، لا «%1».</translation>
    </message>
    <message>
        <source>&quot;%1&quot; does not take place on %2; &quot;next&quot; shows when it does.</source>
        <translation>لا يحدث «%1» في %2؛ «next» يبيّن متى يحدث.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; takes place at %2, at %3 and so on that day: say at which of these times.</source>
        <translation>يحدث «%1» في ذلك اليوم عند %2 و%3 وهكذا: قل في أيها.</translation>
    </message>
    <message>
        <source>--time-zone is that of a --date.</source>
        <translation>الخيار --time-zone لما في --date.</translation>
    </message>
    <message>
        <source>What an action wrote cannot be told: %1.</source>
        <translation>لا يُعرف ما كتبه الإجراء: %1.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; was not performed then.</source>
        <translation>لم يُنفَّذ «%1» حينها.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; was not performed yet.</source>
        <translation>لم يُنفَّذ «%1» بعد.</translation>
    </message>
    <message>
        <source>%1 is not a dictionary.</source>
        <translation>%1 ليس قاموسًا.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not of the type %2.</source>
        <translation>«%1» ليس من النوع %2.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not of the form KEY=VALUE.</source>
        <translation>«%1» ليس على الصورة KEY=VALUE.</translation>
    </message>
    <message>
        <source>--alert needs a whole number of seconds, 1 or more, not &quot;%1&quot;.</source>
        <translation>الخيار --alert يحتاج إلى عدد صحيح من الثواني، 1 أو أكثر، لا «%1».</translation>
    </message>
    <message>
        <source>An action runs in the daemon or in the session, not in both.</source>
        <translation>يعمل الإجراء في الخدمة أو في الجلسة، لا في كلتيهما.</translation>
    </message>
    <message>
        <source>Say one of --in-daemon, --in-session and --in-default.</source>
        <translation>اختر واحدًا من --in-daemon و--in-session و--in-default.</translation>
    </message>
    <message>
        <source>There is no parameter &quot;%1&quot;.</source>
        <translation>لا يوجد معطى «%1».</translation>
    </message>
    <message>
        <source>The program &quot;%1&quot; is not an absolute path.</source>
        <translation>البرنامج «%1» ليس مسارًا مطلقًا.</translation>
    </message>
    <message>
        <source>--argument needs --program.</source>
        <translation>الخيار --argument يحتاج إلى --program.</translation>
    </message>
    <message>
        <source>A parameter holds what a property list cannot carry.</source>
        <translation>في معطى ما لا تحمله قائمة خصائص.</translation>
    </message>
    <message>
        <source>--missed is skip, run-once, run-once=LIMIT, plug-in or bundle, not &quot;%1&quot;.</source>
        <translation>الخيار --missed هو skip أو run-once أو run-once=LIMIT أو plug-in أو bundle، لا «%1».</translation>
    </message>
    <message>
        <source>--overlap is of what repeats.</source>
        <translation>الخيار --overlap لما يتكرر.</translation>
    </message>
    <message>
        <source>--overlap is skip or run, not &quot;%1&quot;.</source>
        <translation>الخيار --overlap هو skip أو run، لا «%1».</translation>
    </message>
    <message>
        <source>--after is nothing, sleep or power-off, not &quot;%1&quot;.</source>
        <translation>الخيار --after هو nothing أو sleep أو power-off، لا «%1».</translation>
    </message>
    <message>
        <source>--after %1 comes only where the machine was woken or switched on for the action; that takes --wake or --power-on.</source>
        <translation>لا يأتي --after %1 إلا حيث أُوقظ الحاسوب أو شُغّل للإجراء؛ وذلك يحتاج إلى --wake أو --power-on.</translation>
    </message>
    <message>
        <source>--after %1 would never come any more, since it follows a waking: say --after nothing, too.</source>
        <translation>لن يأتي --after %1 بعد الآن لأنه يتبع إيقاظًا: قل --after nothing أيضًا.</translation>
    </message>
    <message>
        <source>not armed</source>
        <translation>غير مضبوط</translation>
    </message>
    <message>
        <source>%1, for an event below</source>
        <translation>%1، لحدث أدناه</translation>
    </message>
    <message>
        <source>%1, armed by another program</source>
        <translation>%1، ضبطه برنامج آخر</translation>
    </message>
    <message>
        <source>Clock:</source>
        <translation>الساعة:</translation>
    </message>
    <message>
        <source>Alarm:</source>
        <translation>المنبّه:</translation>
    </message>
    <message>
        <source>none that could wake this machine</source>
        <translation>لا ساعة توقظ هذا الحاسوب</translation>
    </message>
    <message>
        <source>No events are scheduled.</source>
        <translation>لا أحداث مقررة.</translation>
    </message>
    <message>
        <source>TIME</source>
        <translation>الوقت</translation>
    </message>
    <message>
        <source>This machine has no clock that could wake it.</source>
        <translation>ليس لهذا الحاسوب ساعة تستطيع إيقاظه.</translation>
    </message>
    <message>
        <source>You may not set the machine&apos;s clock; try it as root.</source>
        <translation>لا يجوز لك ضبط ساعة الحاسوب؛ جرّب بصفتك root.</translation>
    </message>
    <message>
        <source>The alarm of %1 was armed for %2, read back, and set as it was.</source>
        <translation>ضُبط منبّه %1 على %2 وقُرئ وأُعيد كما كان.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not test.</source>
        <translation>«%1» ليس test.</translation>
    </message>
    <message>
        <source>There is no login manager that could put this machine to sleep.</source>
        <translation>لا مدير جلسات يجعل هذا الحاسوب ينام.</translation>
    </message>
    <message>
        <source>The machine does not let itself be put to sleep.</source>
        <translation>الحاسوب لا يقبل أن ينام.</translation>
    </message>
    <message>
        <source>The machine does not let you put it to sleep; try it as root.</source>
        <translation>الحاسوب لا يقبل أن تجعله ينام؛ جرّب بصفتك root.</translation>
    </message>
    <message>
        <source>The machine goes to sleep.</source>
        <translation>الحاسوب ينام.</translation>
    </message>
    <message>
        <source>It cannot repeat so: %1.</source>
        <translation>لا يتكرر هكذا: %1.</translation>
    </message>
    <message>
        <source>Every month from %1 on can be day %2 of those months that have one, --on %2, or the last of each, --on last.</source>
        <translation>كل شهر من %1 قد يكون اليوم %2 من الأشهر التي فيها هذا اليوم، --on %2، أو آخر كل شهر، --on last.</translation>
    </message>
    <message>
        <source>Every year from %1 on can be that day of leap years, %2, or the last of February, %3.</source>
        <translation>كل سنة من %1 قد تكون ذلك اليوم في السنوات الكبيسة، %2، أو آخر فبراير، %3.</translation>
    </message>
    <message>
        <source>The exception of %1 at %2 is gone: nothing takes place then any more.</source>
        <translation>زال استثناء %1 عند %2: لن يحدث شيء حينها.</translation>
    </message>
    <message>
        <source>There is no exception on %1.</source>
        <translation>لا استثناء في %1.</translation>
    </message>
    <message>
        <source>Nothing takes place on %1 that could be left out.</source>
        <translation>لا شيء في %1 يمكن استثناؤه.</translation>
    </message>
    <message>
        <source>There can be at most %1 exceptions.</source>
        <translation>يمكن أن يكون هناك %1 استثناء على الأكثر.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a machine such as root@example.org.</source>
        <translation>«%1» ليس حاسوبًا مثل root@example.org.</translation>
    </message>
    <message>
        <source>ssh cannot be run: %1.</source>
        <translation>تعذّر تشغيل ssh: %1.</translation>
    </message>
    <message>
        <source>%1 cannot be reached by ssh.</source>
        <translation>لا يمكن الوصول إلى %1 عبر ssh.</translation>
    </message>
    <message>
        <source>--at is the time of day of what takes place on some days, and not of what goes on around the clock.</source>
        <translation>الخيار --at وقت ما يحدث في أيام، لا ما يجري على مدار الساعة.</translation>
    </message>
    <message>
        <source>--%1 is there twice.</source>
        <translation>الخيار --%1 مكرر.</translation>
    </message>
    <message>
        <source>Say --every or --rule, not both.</source>
        <translation>قل --every أو --rule، لا كليهما.</translation>
    </message>
    <message>
        <source>Say how often, by --every or --rule.</source>
        <translation>قل كم مرة، بالخيار --every أو --rule.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a rule such as FREQ=WEEKLY;BYDAY=MO.</source>
        <translation>«%1» ليست قاعدة مثل FREQ=WEEKLY;BYDAY=MO.</translation>
    </message>
    <message>
        <source>The rule says itself at what times; leave --at or its BYHOUR, BYMINUTE and BYSECOND out.</source>
        <translation>القاعدة نفسها تحدد الأوقات؛ احذف --at أو ما فيها من BYHOUR وBYMINUTE وBYSECOND.</translation>
    </message>
    <message>
        <source>The rule says itself when it ends; leave --until and --count or its UNTIL and COUNT out.</source>
        <translation>القاعدة نفسها تحدد نهايتها؛ احذف --until و--count أو ما فيها من UNTIL وCOUNT.</translation>
    </message>
    <message>
        <source>--on names days of the month and needs --every month.</source>
        <translation>الخيار --on يسمّي أيام الشهر ويحتاج إلى --every month.</translation>
    </message>
    <message>
        <source>Months without a day %1 are left out; --on last is the last day of each month.</source>
        <translation>تُستثنى الأشهر التي ليس فيها اليوم %1؛ و--on last هو آخر كل شهر.</translation>
    </message>
    <message>
        <source>Say at what time, by --at.</source>
        <translation>قل في أي وقت، بالخيار --at.</translation>
    </message>
    <message>
        <source>--count needs a whole number, 1 or more, not &quot;%1&quot;.</source>
        <translation>الخيار --count يحتاج إلى عدد صحيح، 1 أو أكثر، لا «%1».</translation>
    </message>
    <message>
        <source>It is to end before it begins.</source>
        <translation>ينتهي قبل أن يبدأ.</translation>
    </message>
    <message>
        <source>%1 (%2 in %3)</source>
        <translation>%1 (%2 في %3)</translation>
    </message>
    <message>
        <source>%1, for %2 (%3).</source>
        <translation>%1، في %2 (%3).</translation>
    </message>
    <message>
        <source>%1: %2%3.</source>
        <comment>what was done, a rule in words, its time zone</comment>
        <translation>%1: %2%3.</translation>
    </message>
    <message>
        <source>Next:</source>
        <translation>المواعيد التالية:</translation>
    </message>
    <message>
        <source>It is disabled: it does not come due before it is enabled.</source>
        <translation>إنه معطَّل: لا يحين قبل تفعيله.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is neither the name of a bundle nor an absolute path.</source>
        <translation>«%1» ليس اسم حزمة ولا مسارًا مطلقًا.</translation>
    </message>
    <message>
        <source>There is no bundle at %1.</source>
        <translation>لا حزمة في %1.</translation>
    </message>
    <message>
        <source>With --time-zone say --date, too: in another zone the same time is another moment.</source>
        <translation>مع --time-zone قل --date أيضًا: الوقت نفسه في منطقة أخرى لحظة أخرى.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is over: say --date, too.</source>
        <translation>انتهى «%1»: قل --date أيضًا.</translation>
    </message>
    <message>
        <source>With these exceptions nothing is left of it.</source>
        <translation>مع هذه الاستثناءات لا يبقى منه شيء.</translation>
    </message>
    <message>
        <source>A schedule needs a name.</source>
        <translation>الموعد يحتاج إلى اسم.</translation>
    </message>
    <message>
        <source>The name holds control characters.</source>
        <translation>في الاسم أحرف تحكم.</translation>
    </message>
    <message>
        <source>Say what is to be done, by --bundle or by --program.</source>
        <translation>قل ما ينبغي فعله، بالخيار --bundle أو --program.</translation>
    </message>
    <message>
        <source>Nothing could come of it: %1. With --anyway it is done all the same.</source>
        <translation>لا يمكن أن يحدث منه شيء: %1. مع --anyway يُقبل رغم ذلك.</translation>
    </message>
    <message>
        <source>--date and --in are for what takes place once; what repeats begins by --from.</source>
        <translation>الخياران --date و--in لما يحدث مرة واحدة؛ وما يتكرر يبدأ بالخيار --from.</translation>
    </message>
    <message>
        <source>It takes place once, or it repeats: --once goes with --date and --in alone.</source>
        <translation>يحدث مرة واحدة أو يتكرر: --once لا يأتي إلا مع --date و--in.</translation>
    </message>
    <message>
        <source>--%1 is of what repeats.</source>
        <translation>الخيار --%1 لما يتكرر.</translation>
    </message>
    <message>
        <source>Say when, by --date or --in, or how often, by --every or --rule.</source>
        <translation>قل متى، بالخيار --date أو --in، أو كم مرة، بالخيار --every أو --rule.</translation>
    </message>
    <message>
        <source>a time of %1 cannot be spread over midnight</source>
        <translation>لا يمكن توزيع الوقت %1 إلى ما بعد منتصف الليل</translation>
    </message>
    <message>
        <source>%1, so that they cannot be spread</source>
        <translation>%1، فلا يمكن توزيعها</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no time to spread starts over, such as 30m or 1h.</source>
        <translation>«%1» ليست مدة لتوزيع البدء، مثل 30m أو 1h.</translation>
    </message>
    <message>
        <source>this machine has no id (/etc/machine-id) by which starts could be spread</source>
        <translation>ليس لهذا الحاسوب معرّف (/etc/machine-id) يوزَّع البدء به</translation>
    </message>
    <message>
        <source>Daemon:</source>
        <translation>الخدمة:</translation>
    </message>
    <message>
        <source>Console:</source>
        <translation>الشاشة:</translation>
    </message>
    <message>
        <source>Agents:</source>
        <translation>الوكلاء:</translation>
    </message>
    <message>
        <source>Wake clock:</source>
        <translation>ساعة الإيقاظ:</translation>
    </message>
    <message>
        <source>Schedules:</source>
        <translation>المواعيد:</translation>
    </message>
    <message>
        <source>nobody is there</source>
        <translation>لا أحد</translation>
    </message>
    <message>
        <source>%1, whose agent is alive</source>
        <translation>%1، ووكيله يعمل</translation>
    </message>
    <message>
        <source>%1, whose agent is not there</source>
        <translation>%1، ووكيله لا يعمل</translation>
    </message>
    <message>
        <source>none</source>
        <comment>agents</comment>
        <translation>لا وكلاء</translation>
    </message>
    <message>
        <source>%1, armed for %2</source>
        <translation>%1، مضبوطة على %2</translation>
    </message>
    <message>
        <source>%1, armed for %2 by another program</source>
        <translation>%1، ضبطها برنامج آخر على %2</translation>
    </message>
    <message>
        <source>%1, not armed</source>
        <translation>%1، غير مضبوطة</translation>
    </message>
    <message>
        <source>synchronised, %1</source>
        <translation>متزامنة، %1</translation>
    </message>
    <message>
        <source>not synchronised, %1</source>
        <translation>غير متزامنة، %1</translation>
    </message>
    <message>
        <source>%1, %2 of them enabled</source>
        <translation>%1، المفعَّل منها %2</translation>
    </message>
    <message numerus="yes">
        <source>%1; %n entries are none</source>
        <comment>entries of the store</comment>
        <translation>
            <numerusform>%1؛ لا بنود فاسدة</numerusform>
            <numerusform>%1؛ وبند ليس موعدًا</numerusform>
            <numerusform>%1؛ وبندان ليسا موعدين</numerusform>
            <numerusform>%1؛ و%n بنود ليست مواعيد</numerusform>
            <numerusform>%1؛ و%n بندًا ليست مواعيد</numerusform>
            <numerusform>%1؛ و%n بند ليست مواعيد</numerusform>
        </translation>
    </message>
    <message>
        <source>wakes the machine</source>
        <translation>يوقظ الحاسوب</translation>
    </message>
    <message>
        <source>Next</source>
        <translation>القادم</translation>
    </message>
    <message>
        <source>What failed cannot be told: %1.</source>
        <translation>لا يُعرف ما الذي فشل: %1.</translation>
    </message>
    <message>
        <source>Nothing failed of late.</source>
        <translation>لم يفشل شيء مؤخرًا.</translation>
    </message>
    <message>
        <source>Last failures</source>
        <translation>آخر ما فشل</translation>
    </message>
    <message>
        <source>is alive</source>
        <translation>تعمل</translation>
    </message>
    <message>
        <source>is not there</source>
        <translation>لا تعمل</translation>
    </message>
    <message>
        <source>You may not change %1; try it as root.</source>
        <translation>لا يجوز لك تغيير %1؛ جرّب بصفتك root.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is enabled.</source>
        <translation>«%1» مفعَّل.</translation>
    </message>
    <message>
        <source>You may not read %1.</source>
        <translation>لا يجوز لك قراءة %1.</translation>
    </message>
    <message>
        <source>There is no schedule &quot;%1&quot;.</source>
        <translation>لا يوجد موعد «%1».</translation>
    </message>
    <message numerus="yes">
        <source>%n schedule(s) are named &quot;%1&quot;; use an identifier, as &quot;list&quot; shows them.</source>
        <translation>
            <numerusform>لا مواعيد باسم «%1»؛ استعمل معرّفًا كما يعرضه «list».</numerusform>
            <numerusform>هناك موعد واحد باسم «%1»؛ استعمل معرّفًا كما يعرضه «list».</numerusform>
            <numerusform>هناك موعدان باسم «%1»؛ استعمل معرّفًا كما يعرضه «list».</numerusform>
            <numerusform>هناك %n مواعيد باسم «%1»؛ استعمل معرّفًا كما يعرضه «list».</numerusform>
            <numerusform>هناك %n موعدًا باسم «%1»؛ استعمل معرّفًا كما يعرضه «list».</numerusform>
            <numerusform>هناك %n موعد باسم «%1»؛ استعمل معرّفًا كما يعرضه «list».</numerusform>
        </translation>
    </message>
    <message>
        <source>&quot;%1&quot; is removed.</source>
        <translation>أُزيل «%1».</translation>
    </message>
    <message>
        <source>it is larger than 16 MiB</source>
        <translation>أكبر من 16 MiB</translation>
    </message>
    <message>
        <source>it is no JSON: %1, at byte %2</source>
        <translation>ليس JSON: %1، عند البايت %2</translation>
    </message>
    <message>
        <source>not known</source>
        <translation>غير معروف</translation>
    </message>
    <message>
        <source>%1, up to date</source>
        <comment>a version</comment>
        <translation>%1، محدَّث</translation>
    </message>
    <message>
        <source>the server gives none</source>
        <translation>لا يذكره الخادم</translation>
    </message>
    <message>
        <source>not offered, since it is not https: %1</source>
        <translation>غير معروض لأنه ليس https: %1</translation>
    </message>
    <message>
        <source>Installed version:</source>
        <translation>الإصدار المثبَّت:</translation>
    </message>
    <message>
        <source>Latest version:</source>
        <translation>أحدث إصدار:</translation>
    </message>
    <message>
        <source>Address:</source>
        <translation>العنوان:</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not check.</source>
        <translation>«%1» ليس check.</translation>
    </message>
    <message>
        <source>This system was built without the update check.</source>
        <translation>بُني هذا النظام من دون البحث عن تحديثات.</translation>
    </message>
    <message>
        <source>%1 gave no answer that can be used; the log says why.</source>
        <translation>لم يأت من %1 جواب صالح؛ سجل الأحداث يبيّن السبب.</translation>
    </message>
    <message>
        <source>There is a newer version.</source>
        <translation>هناك إصدار أحدث.</translation>
    </message>
    <message>
        <source>there is no word &quot;%1&quot;</source>
        <translation>لا توجد كلمة «%1»</translation>
    </message>
    <message>
        <source>&quot;actsIn&quot; is neither session nor daemon</source>
        <translation>«actsIn» ليس session ولا daemon</translation>
    </message>
    <message>
        <source>&quot;repeats&quot; has no word &quot;%1&quot;</source>
        <translation>ليس في «repeats» كلمة «%1»</translation>
    </message>
    <message>
        <source>nothing comes of its rule</source>
        <translation>لا يحدث شيء من قاعدته</translation>
    </message>
    <message>
        <source>say at what time, by &quot;at&quot;</source>
        <translation>قل في أي وقت، بالكلمة «at»</translation>
    </message>
    <message>
        <source>&quot;date&quot; is not a date such as &quot;2026-03-14 06:55&quot;</source>
        <translation>«date» ليس تاريخًا مثل «2026-03-14 06:55»</translation>
    </message>
    <message>
        <source>it has no list of schedules (&quot;schedules&quot;, or &quot;Schedule Array&quot; of a store)</source>
        <translation>ليست فيه قائمة مواعيد («schedules»، أو «Schedule Array» لمخزن)</translation>
    </message>
    <message>
        <source>schedule %1, &quot;%2&quot;, is none: %3</source>
        <translation>الموعد %1، «%2»، غير صالح: %3</translation>
    </message>
    <message>
        <source>schedule %1, &quot;%2&quot;, is there twice</source>
        <translation>الموعد %1، «%2»، مكرر</translation>
    </message>
    <message>
        <source>it is empty</source>
        <translation>فارغ</translation>
    </message>
    <message>
        <source>it has more than one document</source>
        <translation>فيه أكثر من مستند</translation>
    </message>
    <message>
        <source>it cannot be read</source>
        <translation>تعذّرت قراءته</translation>
    </message>
    <message>
        <source>%1, in line %2</source>
        <translation>%1، في السطر %2</translation>
    </message>
    <message>
        <source>it is nested too deeply</source>
        <translation>تداخله أعمق مما يُقبل</translation>
    </message>
    <message>
        <source>it has too many values</source>
        <translation>قيمه أكثر مما يُقبل</translation>
    </message>
    <message>
        <source>aliases are not understood</source>
        <translation>الأسماء البديلة غير مفهومة</translation>
    </message>
    <message>
        <source>a value is missing</source>
        <translation>تنقص قيمة</translation>
    </message>
    <message>
        <source>a key is not a text</source>
        <translation>مفتاح ليس نصًا</translation>
    </message>
    <message>
        <source>a key stands there twice</source>
        <translation>مفتاح مكرر</translation>
    </message>
    <message>
        <source>tags are not understood</source>
        <translation>الوسوم غير مفهومة</translation>
    </message>
    <message>
        <source>Say --%1 or --%2, not both.</source>
        <translation>قل --%1 أو --%2، لا كليهما.</translation>
    </message>
    <message>
        <source>Send an Apple event to the process with that signature, and show the reply; each of the three is four characters.</source>
        <translation>إرسال حدث Apple إلى العملية ذات هذا التوقيع وعرض الجواب؛ كل من الثلاثة أربعة أحرف.</translation>
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
        <translation>خيار مجهول «%1».</translation>
    </message>
    <message>
        <source>Unknown options: %1.</source>
        <translation>خيارات مجهولة: %1.</translation>
    </message>
    <message>
        <source>Missing value after &apos;%1&apos;.</source>
        <translation>تنقص قيمة بعد «%1».</translation>
    </message>
    <message>
        <source>Unexpected value after &apos;%1&apos;.</source>
        <translation>قيمة زائدة بعد «%1».</translation>
    </message>
</context>
</TS>
