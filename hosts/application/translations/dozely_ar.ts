<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ar" sourcelanguage="en">
<context>
    <name>ActionPane</name>
    <message>
        <source>Action</source>
        <translation>الإجراء</translation>
    </message>
    <message>
        <source>Loading the settings…</source>
        <translation>جارٍ تحميل الإعدادات…</translation>
    </message>
    <message>
        <source>This action has no settings of its own here.</source>
        <translation>ليست لهذا الإجراء إعدادات خاصة به هنا.</translation>
    </message>
    <message>
        <source>There is no longer an action here: its bundle is missing. Choose another one, or have it installed again.</source>
        <translation>لم يعد هنا إجراء: حزمته مفقودة. اختر إجراءً آخر أو اطلب تثبيته من جديد.</translation>
    </message>
    <message>
        <source>The settings of this action cannot be shown. All else of the schedule can be changed.</source>
        <translation>تعذّر عرض إعدادات هذا الإجراء. يمكن تغيير كل ما عداها في الموعد.</translation>
    </message>
</context>
<context>
    <name>ChangeBar</name>
    <message>
        <source>Undo</source>
        <translation>تراجع</translation>
    </message>
    <message>
        <source>Redo</source>
        <translation>إعادة</translation>
    </message>
    <message>
        <source>&amp;Discard</source>
        <translation>&amp;تجاهل</translation>
    </message>
    <message>
        <source>A&amp;pply</source>
        <translation>&amp;تطبيق</translation>
    </message>
    <message>
        <source>Discarding</source>
        <translation>تجاهل</translation>
    </message>
    <message>
        <source>Applying…</source>
        <translation>جارٍ التطبيق…</translation>
    </message>
</context>
<context>
    <name>ClosingQuestion</name>
    <message>
        <source>Some changes have not been applied yet. Apply them before closing?</source>
        <translation>لم تُطبَّق بعض التغييرات بعد. هل تريد تطبيقها قبل الإغلاق؟</translation>
    </message>
    <message>
        <source>A&amp;pply</source>
        <translation>&amp;تطبيق</translation>
    </message>
    <message>
        <source>&amp;Discard</source>
        <translation>&amp;تجاهل</translation>
    </message>
</context>
<context>
    <name>DateInWords</name>
    <message>
        <source>yesterday %1</source>
        <comment>and a time</comment>
        <translation>أمس %1</translation>
    </message>
    <message>
        <source>today %1</source>
        <comment>and a time</comment>
        <translation>اليوم %1</translation>
    </message>
    <message>
        <source>tomorrow %1</source>
        <comment>and a time</comment>
        <translation>غدًا %1</translation>
    </message>
    <message>
        <source>%1 %2</source>
        <comment>a day of the week and a time</comment>
        <translation>%1 %2</translation>
    </message>
    <message>
        <source>%1, %2</source>
        <comment>a day and a time</comment>
        <translation>%1، %2</translation>
    </message>
</context>
<context>
    <name>EndChoice</name>
    <message>
        <source>Never</source>
        <translation>أبدًا</translation>
    </message>
    <message>
        <source>After a number of times</source>
        <translation>بعد عدد من المرات</translation>
    </message>
    <message>
        <source>Ends</source>
        <translation>ينتهي</translation>
    </message>
    <message>
        <source>Last day</source>
        <translation>اليوم الأخير</translation>
    </message>
    <message>
        <source>How many times</source>
        <translation>عدد المرات</translation>
    </message>
    <message>
        <source>On a day</source>
        <translation>في يوم معيّن</translation>
    </message>
</context>
<context>
    <name>ExceptionList</name>
    <message>
        <source>Exceptions</source>
        <translation>الاستثناءات</translation>
    </message>
    <message>
        <source>Day to leave out</source>
        <translation>اليوم المراد استثناؤه</translation>
    </message>
    <message>
        <source>Leave this day out</source>
        <translation>استثناء هذا اليوم</translation>
    </message>
    <message>
        <source>Take back</source>
        <translation>استرجاع</translation>
    </message>
    <message>
        <source>Takes the chosen exceptions back</source>
        <translation>يسترجع الاستثناءات المختارة</translation>
    </message>
    <message>
        <source>Nothing takes place on %1 that could be left out.</source>
        <translation>لا شيء في %1 يمكن استثناؤه.</translation>
    </message>
    <message>
        <source>%1, %2</source>
        <comment>a day and a time</comment>
        <translation>%1، %2</translation>
    </message>
    <message>
        <source>not on %1</source>
        <translation>ليس في %1</translation>
    </message>
    <message>
        <source>also on %1</source>
        <translation>أيضًا في %1</translation>
    </message>
</context>
<context>
    <name>HistoryModel</name>
    <message>
        <source>(gone)</source>
        <comment>a schedule</comment>
        <translation>(لم يعد موجودًا)</translation>
    </message>
    <message>
        <source>When</source>
        <translation>متى</translation>
    </message>
    <message>
        <source>Schedule</source>
        <translation>الموعد</translation>
    </message>
    <message>
        <source>Outcome</source>
        <translation>النتيجة</translation>
    </message>
    <message>
        <source>Began</source>
        <translation>البدء</translation>
    </message>
    <message>
        <source>Why</source>
        <translation>السبب</translation>
    </message>
</context>
<context>
    <name>HistoryView</name>
    <message>
        <source>Search</source>
        <translation>بحث</translation>
    </message>
    <message>
        <source>Search the history</source>
        <translation>البحث في السجل</translation>
    </message>
    <message>
        <source>Only what went wrong</source>
        <translation>ما تعثّر فقط</translation>
    </message>
    <message>
        <source>History</source>
        <translation>السجل</translation>
    </message>
    <message>
        <source>Nothing has taken place yet.</source>
        <translation>لم يحدث شيء بعد.</translation>
    </message>
    <message>
        <source>Nothing in the history is like that.</source>
        <translation>لا شيء كهذا في السجل.</translation>
    </message>
</context>
<context>
    <name>LogPane</name>
    <message>
        <source>Log</source>
        <translation>سجل الأحداث</translation>
    </message>
    <message>
        <source>The log cannot be read: %1.</source>
        <translation>تعذّرت قراءة سجل الأحداث: %1.</translation>
    </message>
    <message>
        <source>The log has nothing of that time.</source>
        <translation>لا شيء في سجل الأحداث عن ذلك الوقت.</translation>
    </message>
    <message>
        <source>These are the first %1 lines.</source>
        <translation>هذه أول %1 من الأسطر.</translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message numerus="yes">
        <source>%n schedule(s) could not be applied and keep their changes here.</source>
        <translation>
            <numerusform>لم يتعذّر تطبيق أي موعد.</numerusform>
            <numerusform>تعذّر تطبيق موعد واحد، وتبقى تغييراته هنا.</numerusform>
            <numerusform>تعذّر تطبيق موعدين، وتبقى تغييراتهما هنا.</numerusform>
            <numerusform>تعذّر تطبيق %n مواعيد، وتبقى تغييراتها هنا.</numerusform>
            <numerusform>تعذّر تطبيق %n موعدًا، وتبقى تغييراتها هنا.</numerusform>
            <numerusform>تعذّر تطبيق %n موعد، وتبقى تغييراتها هنا.</numerusform>
        </translation>
    </message>
    <message>
        <source>Try again</source>
        <translation>إعادة المحاولة</translation>
    </message>
    <message>
        <source>The Dozely service is not running: nothing happens at its time, and nothing can be applied. An administrator starts it with “systemctl start dozelyd”.</source>
        <translation>خدمة Dozely لا تعمل: لن يُنفَّذ شيء في موعده ولا يمكن تطبيق شيء. يشغّلها المدير بالأمر «systemctl start dozelyd».</translation>
    </message>
    <message>
        <source>The schedules cannot be read: %1</source>
        <translation>تعذّرت قراءة المواعيد: %1</translation>
    </message>
    <message>
        <source>Removal</source>
        <translation>إزالة</translation>
    </message>
    <message>
        <source>This cannot be applied yet: %1</source>
        <translation>لا يمكن تطبيق هذا بعد: %1</translation>
    </message>
    <message>
        <source>Views</source>
        <translation>طرق العرض</translation>
    </message>
    <message>
        <source>Schedules</source>
        <translation>المواعيد</translation>
    </message>
    <message>
        <source>Month</source>
        <translation>الشهر</translation>
    </message>
    <message>
        <source>History</source>
        <translation>السجل</translation>
    </message>
</context>
<context>
    <name>MonthChoice</name>
    <message>
        <source>Day %1 of the month</source>
        <translation>اليوم %1 من الشهر</translation>
    </message>
    <message>
        <source>Last day</source>
        <translation>اليوم الأخير</translation>
    </message>
    <message>
        <source>The last day of the month</source>
        <translation>آخر يوم في الشهر</translation>
    </message>
    <message>
        <source>Days of the month</source>
        <translation>أيام الشهر</translation>
    </message>
    <message>
        <source>A day of the week</source>
        <translation>يوم من أيام الأسبوع</translation>
    </message>
    <message>
        <source>The first</source>
        <translation>الأول</translation>
    </message>
    <message>
        <source>The second</source>
        <translation>الثاني</translation>
    </message>
    <message>
        <source>The third</source>
        <translation>الثالث</translation>
    </message>
    <message>
        <source>The fourth</source>
        <translation>الرابع</translation>
    </message>
    <message>
        <source>The last</source>
        <translation>الأخير</translation>
    </message>
    <message>
        <source>Which one of the month</source>
        <translation>أيّها في الشهر</translation>
    </message>
    <message>
        <source>Day of the week</source>
        <translation>يوم الأسبوع</translation>
    </message>
</context>
<context>
    <name>MonthDelegate</name>
    <message>
        <source>%1 in all</source>
        <comment>occurrences of a day</comment>
        <translation>%1 إجمالًا</translation>
    </message>
    <message>
        <source>+%1 more</source>
        <comment>occurrences of a day</comment>
        <translation>+%1 أخرى</translation>
    </message>
</context>
<context>
    <name>MonthGrid</name>
    <message>
        <source>Month</source>
        <translation>الشهر</translation>
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
        <translation>%1، متخطًّى</translation>
    </message>
    <message>
        <source>%1, put off</source>
        <comment>an occurrence</comment>
        <translation>%1، مؤجَّل</translation>
    </message>
    <message>
        <source>%1 more</source>
        <comment>occurrences</comment>
        <translation>%1 أخرى</translation>
    </message>
    <message>
        <source>nothing</source>
        <comment>takes place on a day</comment>
        <translation>لا شيء</translation>
    </message>
</context>
<context>
    <name>MonthView</name>
    <message>
        <source>Previous month</source>
        <translation>الشهر السابق</translation>
    </message>
    <message>
        <source>Today</source>
        <translation>اليوم</translation>
    </message>
    <message>
        <source>Next month</source>
        <translation>الشهر التالي</translation>
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
        <translation>موعد جديد</translation>
    </message>
</context>
<context>
    <name>NextDates</name>
    <message>
        <source>Next dates</source>
        <translation>المواعيد التالية</translation>
    </message>
    <message>
        <source>Nothing comes of it any more.</source>
        <translation>لن يحدث منه شيء بعد الآن.</translation>
    </message>
    <message>
        <source>That is past.</source>
        <translation>مضى ذلك.</translation>
    </message>
    <message>
        <source>%1: clocks skip %2</source>
        <comment>a date and a time</comment>
        <translation>%1: تتخطى الساعات %2</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <comment>a date, and what is to be known of it</comment>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>%1 (%2 in %3)</source>
        <comment>a date, and its time in another zone</comment>
        <translation>%1 (%2 في %3)</translation>
    </message>
    <message>
        <source>clocks are set forward before it</source>
        <translation>تُقدَّم الساعات قبله</translation>
    </message>
    <message>
        <source>clocks are set back before it</source>
        <translation>تُؤخَّر الساعات قبله</translation>
    </message>
</context>
<context>
    <name>OccurrenceActions</name>
    <message>
        <source>Skip</source>
        <translation>تخطي</translation>
    </message>
    <message>
        <source>Put off</source>
        <translation>تأجيل</translation>
    </message>
    <message>
        <source>Run now</source>
        <translation>تنفيذ الآن</translation>
    </message>
    <message>
        <source>10 minutes</source>
        <translation>10 دقائق</translation>
    </message>
    <message>
        <source>30 minutes</source>
        <translation>30 دقيقة</translation>
    </message>
    <message>
        <source>1 hour</source>
        <translation>ساعة</translation>
    </message>
    <message>
        <source>3 hours</source>
        <translation>3 ساعات</translation>
    </message>
    <message>
        <source>1 day</source>
        <translation>يوم</translation>
    </message>
</context>
<context>
    <name>OutcomeWords</name>
    <message>
        <source>%1 to %2</source>
        <comment>two dates</comment>
        <translation>%1 إلى %2</translation>
    </message>
    <message>
        <source>put off until %1</source>
        <translation>مؤجَّل حتى %1</translation>
    </message>
    <message>
        <source>%1, %2 times</source>
        <comment>missed; a number</comment>
        <translation>%1، %2 مرات</translation>
    </message>
    <message>
        <source>%1, at least %2 times</source>
        <comment>missed; a number</comment>
        <translation>%1، %2 مرات على الأقل</translation>
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
        <source>%1 s</source>
        <translation>%1 ث</translation>
    </message>
    <message>
        <source>%1 min</source>
        <translation>%1 د</translation>
    </message>
    <message>
        <source>%1 h %2 min</source>
        <translation>%1 س %2 د</translation>
    </message>
    <message>
        <source>%1 d %2 h</source>
        <comment>days and hours</comment>
        <translation>%1 ي %2 س</translation>
    </message>
</context>
<context>
    <name>PatternRows</name>
    <message>
        <source>Days of the week</source>
        <translation>أيام الأسبوع</translation>
    </message>
    <message>
        <source>Every</source>
        <translation>كل</translation>
    </message>
    <message>
        <source>On</source>
        <translation>في</translation>
    </message>
    <message>
        <source>Rule</source>
        <translation>القاعدة</translation>
    </message>
    <message>
        <source>minutes</source>
        <translation>دقائق</translation>
    </message>
    <message>
        <source>hours</source>
        <translation>ساعات</translation>
    </message>
    <message>
        <source>Unit</source>
        <translation>الوحدة</translation>
    </message>
    <message>
        <source>A recurrence rule as iCalendar (RFC 5545) has it</source>
        <translation>قاعدة تكرار كما في iCalendar ‏(RFC 5545)</translation>
    </message>
    <message>
        <source>day</source>
        <translation>يوم</translation>
    </message>
    <message>
        <source>days</source>
        <translation>أيام</translation>
    </message>
    <message>
        <source>week</source>
        <translation>أسبوع</translation>
    </message>
    <message>
        <source>weeks</source>
        <translation>أسابيع</translation>
    </message>
    <message>
        <source>month</source>
        <translation>شهر</translation>
    </message>
    <message>
        <source>months</source>
        <translation>أشهر</translation>
    </message>
    <message>
        <source>year</source>
        <translation>سنة</translation>
    </message>
    <message>
        <source>years</source>
        <translation>سنوات</translation>
    </message>
</context>
<context>
    <name>PlugInTrials</name>
    <message>
        <source>It does not come to an end while it is loaded.</source>
        <translation>لا ينتهي أثناء تحميله.</translation>
    </message>
    <message>
        <source>It crashes while it is loaded.</source>
        <translation>ينهار أثناء تحميله.</translation>
    </message>
    <message>
        <source>It cannot be tried: %1</source>
        <translation>تعذّرت تجربته: %1</translation>
    </message>
</context>
<context>
    <name>PolicyForm</name>
    <message>
        <source>If &amp;missed:</source>
        <translation>إن &amp;فات موعده:</translation>
    </message>
    <message>
        <source>Runs &amp;as:</source>
        <translation>&amp;ينفّذه:</translation>
    </message>
    <message>
        <source>Change of what is missed</source>
        <translation>تغيير ما يخص الفائت</translation>
    </message>
    <message>
        <source>Change of what comes afterwards</source>
        <translation>تغيير ما يأتي بعده</translation>
    </message>
    <message>
        <source>Change of who runs it</source>
        <translation>تغيير منفّذه</translation>
    </message>
    <message>
        <source>As the action itself says</source>
        <translation>كما يحدّد الإجراء نفسه</translation>
    </message>
    <message>
        <source>Leave it out</source>
        <translation>تخطّيه</translation>
    </message>
    <message>
        <source>Do it once, as soon as possible</source>
        <translation>تنفيذه مرة واحدة في أقرب وقت</translation>
    </message>
    <message>
        <source>Nothing more</source>
        <translation>لا شيء</translation>
    </message>
    <message>
        <source>Sleep again, if it was woken for this</source>
        <translation>السكون من جديد إن أُيقظ لهذا</translation>
    </message>
    <message>
        <source>Switch off, if it was woken or switched on for this</source>
        <translation>إيقاف التشغيل إن أُيقظ أو شُغّل لهذا</translation>
    </message>
    <message>
        <source>Me, in my session</source>
        <translation>أنا، في جلستي</translation>
    </message>
    <message>
        <source>Administrator, in the background</source>
        <translation>المدير، في الخلفية</translation>
    </message>
    <message>
        <source>Whoever is at the computer</source>
        <extracomment>whoever is logged in when the time comes</extracomment>
        <translation>من يكون أمام الحاسوب</translation>
    </message>
    <message>
        <source>Administrator, for me</source>
        <translation>المدير، لأجلي</translation>
    </message>
    <message>
        <source>Another user (number %1)</source>
        <translation>مستخدم آخر (رقم %1)</translation>
    </message>
    <message>
        <source>You will be asked for an administrator&apos;s password.</source>
        <translation>ستُطلب منك كلمة مرور المدير.</translation>
    </message>
    <message>
        <source>Changing this schedule needs an administrator&apos;s password.</source>
        <translation>تغيير هذا الموعد يحتاج إلى كلمة مرور المدير.</translation>
    </message>
    <message>
        <source>Af&amp;terwards:</source>
        <translation>&amp;بعد ذلك:</translation>
    </message>
    <message>
        <source>This never comes: the computer is neither woken nor switched on for this schedule.</source>
        <translation>لن يحدث هذا أبدًا: لا يُوقَظ الحاسوب ولا يُشغَّل من أجل هذا الجدول.</translation>
    </message>
</context>
<context>
    <name>PowerForm</name>
    <message>
        <source>&amp;Show an alert before</source>
        <translation>إظهار &amp;تنبيه قبله</translation>
    </message>
    <message>
        <source>&amp;Wake the computer from sleep</source>
        <translation>&amp;إيقاظ الحاسوب من السكون</translation>
    </message>
    <message>
        <source>Switch the &amp;computer on</source>
        <translation>تشغيل &amp;الحاسوب</translation>
    </message>
    <message>
        <source>Minutes between alert and action</source>
        <translation>الدقائق بين التنبيه والإجراء</translation>
    </message>
    <message>
        <source>Warning:</source>
        <translation>التنبيه:</translation>
    </message>
    <message>
        <source>Power:</source>
        <translation>الطاقة:</translation>
    </message>
    <message numerus="yes">
        <source> minutes</source>
        <comment>behind a number, with a blank before it</comment>
        <translation>
            <numerusform> دقيقة</numerusform>
            <numerusform> دقيقة</numerusform>
            <numerusform> دقيقتان</numerusform>
            <numerusform> دقائق</numerusform>
            <numerusform> دقيقة</numerusform>
            <numerusform> دقيقة</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>ReadyWishes</name>
    <message>
        <source>Switch off in the evening</source>
        <translation>إيقاف التشغيل مساءً</translation>
    </message>
    <message>
        <source>Wake with music</source>
        <translation>الاستيقاظ على الموسيقى</translation>
    </message>
    <message>
        <source>Backup at night</source>
        <translation>نسخ احتياطي ليلي</translation>
    </message>
</context>
<context>
    <name>RecurrenceForm</name>
    <message>
        <source>Takes place</source>
        <translation>يحدث</translation>
    </message>
    <message>
        <source>Once</source>
        <translation>مرة واحدة</translation>
    </message>
    <message>
        <source>Every day</source>
        <translation>كل يوم</translation>
    </message>
    <message>
        <source>On weekdays, Monday to Friday</source>
        <translation>من الاثنين إلى الجمعة</translation>
    </message>
    <message>
        <source>Every week</source>
        <translation>كل أسبوع</translation>
    </message>
    <message>
        <source>Every month</source>
        <translation>كل شهر</translation>
    </message>
    <message>
        <source>Every year</source>
        <translation>كل سنة</translation>
    </message>
    <message>
        <source>Every so many minutes or hours</source>
        <translation>كل عدد من الدقائق أو الساعات</translation>
    </message>
    <message>
        <source>By a rule, for experts</source>
        <translation>حسب قاعدة، للخبراء</translation>
    </message>
    <message>
        <source>Date</source>
        <translation>التاريخ</translation>
    </message>
    <message>
        <source>Time</source>
        <translation>الوقت</translation>
    </message>
    <message>
        <source>From</source>
        <translation>من</translation>
    </message>
    <message>
        <source>Ends</source>
        <translation>ينتهي</translation>
    </message>
    <message>
        <source>Time zone</source>
        <translation>المنطقة الزمنية</translation>
    </message>
    <message>
        <source>Exceptions</source>
        <translation>الاستثناءات</translation>
    </message>
</context>
<context>
    <name>ScheduleAdding</name>
    <message>
        <source>New schedule</source>
        <translation>موعد جديد</translation>
    </message>
</context>
<context>
    <name>ScheduleEditor</name>
    <message>
        <source>Action</source>
        <translation>الإجراء</translation>
    </message>
    <message>
        <source>When</source>
        <translation>متى</translation>
    </message>
    <message>
        <source>Before</source>
        <translation>قبله</translation>
    </message>
    <message>
        <source>Options</source>
        <translation>خيارات</translation>
    </message>
    <message>
        <source>Change of the name</source>
        <translation>تغيير الاسم</translation>
    </message>
    <message>
        <source>Switching on</source>
        <translation>التفعيل</translation>
    </message>
    <message>
        <source>Switching off</source>
        <translation>الإيقاف</translation>
    </message>
    <message>
        <source>Change of the action</source>
        <translation>تغيير الإجراء</translation>
    </message>
    <message>
        <source>Change of the time</source>
        <translation>تغيير الوقت</translation>
    </message>
    <message>
        <source>Change of what comes before</source>
        <translation>تغيير ما يسبقه</translation>
    </message>
    <message>
        <source>Somebody else has changed this schedule, too. What you see is yours.</source>
        <translation>غيّر شخص آخر هذا الموعد أيضًا. ما تراه هو تغييرك أنت.</translation>
    </message>
    <message>
        <source>Take over theirs</source>
        <translation>أخذ تغييره</translation>
    </message>
    <message>
        <source>Taking over</source>
        <translation>الأخذ</translation>
    </message>
    <message>
        <source>Keep mine</source>
        <translation>إبقاء تغييري</translation>
    </message>
    <message>
        <source>Somebody else has removed this schedule. Applying your changes adds it again.</source>
        <translation>أزال شخص آخر هذا الموعد. تطبيق تغييراتك يضيفه من جديد.</translation>
    </message>
    <message>
        <source>This could not be applied: %1</source>
        <translation>تعذّر تطبيق هذا: %1</translation>
    </message>
    <message>
        <source>Choice of an action</source>
        <translation>اختيار إجراء</translation>
    </message>
    <message>
        <source>This was not applied: %1</source>
        <translation>لم يُطبَّق هذا: %1</translation>
    </message>
    <message>
        <source>Apply all the same</source>
        <translation>التطبيق رغم ذلك</translation>
    </message>
</context>
<context>
    <name>ScheduleHeader</name>
    <message>
        <source>Switched &amp;on</source>
        <translation>&amp;مفعَّل</translation>
    </message>
    <message>
        <source>Name of the schedule</source>
        <translation>اسم الموعد</translation>
    </message>
</context>
<context>
    <name>ScheduleListModel</name>
    <message>
        <source>Switching on</source>
        <translation>التفعيل</translation>
    </message>
    <message>
        <source>Switching off</source>
        <translation>الإيقاف</translation>
    </message>
    <message>
        <source>off</source>
        <translation>متوقف</translation>
    </message>
    <message>
        <source>over</source>
        <translation>انتهى</translation>
    </message>
    <message>
        <source>not applied yet</source>
        <translation>لم يُطبَّق بعد</translation>
    </message>
</context>
<context>
    <name>ScheduleListPane</name>
    <message>
        <source>&amp;Remove</source>
        <translation>&amp;إزالة</translation>
    </message>
    <message>
        <source>Search</source>
        <translation>بحث</translation>
    </message>
    <message>
        <source>Search the schedules</source>
        <translation>البحث في المواعيد</translation>
    </message>
    <message>
        <source>Schedules</source>
        <translation>المواعيد</translation>
    </message>
    <message>
        <source>&amp;New schedule</source>
        <translation>موعد &amp;جديد</translation>
    </message>
</context>
<context>
    <name>SelfTests</name>
    <message>
        <source>An alert is shown now that announces nothing. If you see none, look whether your desktop keeps notifications back (“do not disturb”).</source>
        <translation>يُعرض الآن تنبيه لا يعلن عن شيء. إن لم تره فانظر هل يحجب سطح المكتب الإشعارات («عدم الإزعاج»).</translation>
    </message>
    <message>
        <source>No alert can be shown: the agent in your session does not answer. It starts when you log in. To start it now: systemctl --user start dozely-agent</source>
        <translation>لا يمكن عرض تنبيه: لا يستجيب الوكيل في جلستك. يبدأ عند تسجيل الدخول. لبدئه الآن: systemctl --user start dozely-agent</translation>
    </message>
    <message>
        <source>The computer goes to sleep for a minute. Leave it alone meanwhile.</source>
        <translation>سينام الحاسوب دقيقة. لا تلمسه في أثناء ذلك.</translation>
    </message>
    <message>
        <source>Sleep for a minute</source>
        <translation>النوم دقيقة</translation>
    </message>
    <message>
        <source>Waking was not tested: %1</source>
        <translation>لم يُختبر الإيقاظ: %1</translation>
    </message>
    <message>
        <source>The clock took an alarm and gave it back. Whether it also wakes this computer shows when the computer sleeps.</source>
        <translation>قبلت الساعة منبّهًا وأعادته. أما هل توقظ الحاسوب فيتبيّن حين ينام.</translation>
    </message>
    <message>
        <source>This computer has no clock that could wake it. Leave it on, or have missed schedules done later.</source>
        <translation>ليس لهذا الحاسوب ساعة تستطيع إيقاظه. اتركه يعمل، أو اجعل ما فات يُنفَّذ لاحقًا.</translation>
    </message>
    <message>
        <source>The clock of this computer does not keep an alarm. Look into the settings of its firmware (BIOS, UEFI) whether waking by the clock is switched on.</source>
        <translation>لا تحتفظ ساعة هذا الحاسوب بالمنبّه. انظر في إعدادات البرنامج الثابت (BIOS، UEFI) هل الإيقاظ بالساعة مفعَّل.</translation>
    </message>
    <message>
        <source>The computer slept, and its clock woke it. Waking works.</source>
        <translation>نام الحاسوب وأيقظته ساعته. الإيقاظ يعمل.</translation>
    </message>
    <message>
        <source>The computer was awake before its clock could wake it. Try again, and leave it alone meanwhile.</source>
        <translation>كان الحاسوب مستيقظًا قبل أن توقظه ساعته. حاول مجددًا ولا تلمسه في أثناء ذلك.</translation>
    </message>
    <message>
        <source>The computer slept on when its clock was to wake it. Look into the settings of its firmware (BIOS, UEFI) whether waking by the clock is switched on.</source>
        <translation>ظل الحاسوب نائمًا حين كان على ساعته أن توقظه. انظر في إعدادات البرنامج الثابت (BIOS، UEFI) هل الإيقاظ بالساعة مفعَّل.</translation>
    </message>
</context>
<context>
    <name>SettingsButton</name>
    <message>
        <source>Settings</source>
        <translation>الإعدادات</translation>
    </message>
    <message>
        <source>Show an icon in the panel</source>
        <translation>إظهار أيقونة في الشريط</translation>
    </message>
    <message>
        <source>This could not be kept: %1</source>
        <translation>تعذّر حفظ هذا: %1</translation>
    </message>
</context>
<context>
    <name>StartPage</name>
    <message>
        <source>Nothing is planned yet</source>
        <translation>لا شيء مخطط له بعد</translation>
    </message>
    <message>
        <source>A schedule has the computer do something at its time. Begin with one of these, and change what you like before it is applied.</source>
        <translation>الموعد يجعل الحاسوب يفعل شيئًا في وقته. ابدأ بأحد هذه وغيّر ما تشاء قبل تطبيقه.</translation>
    </message>
    <message>
        <source>Something &amp;else</source>
        <translation>شيء &amp;آخر</translation>
    </message>
    <message>
        <source>%1, for the first time %2</source>
        <extracomment>an action, and when it takes place first: &quot;Power Off, for the first time tomorrow 22:00&quot;</extracomment>
        <translation>%1، لأول مرة %2</translation>
    </message>
</context>
<context>
    <name>StatusLine</name>
    <message>
        <source>Service running</source>
        <translation>الخدمة تعمل</translation>
    </message>
    <message>
        <source>Version %1</source>
        <translation>الإصدار %1</translation>
    </message>
    <message>
        <source>Service not running</source>
        <translation>الخدمة لا تعمل</translation>
    </message>
    <message>
        <source>An administrator starts it with: systemctl start dozelyd</source>
        <translation>يشغّلها المدير بالأمر: systemctl start dozelyd</translation>
    </message>
    <message>
        <source>Nobody logged in</source>
        <translation>لا أحد مسجّل الدخول</translation>
    </message>
    <message>
        <source>No session is at this computer&apos;s screen now. Actions that need one wait for it.</source>
        <translation>لا جلسة على شاشة هذا الحاسوب الآن. الإجراءات التي تحتاج إليها تنتظرها.</translation>
    </message>
    <message>
        <source>Agent running</source>
        <translation>الوكيل يعمل</translation>
    </message>
    <message>
        <source>It shows alerts and acts in the session of %1.</source>
        <translation>يعرض التنبيهات ويعمل في جلسة %1.</translation>
    </message>
    <message>
        <source>Agent not running</source>
        <translation>الوكيل لا يعمل</translation>
    </message>
    <message>
        <source>It starts when you log in. To start it now: systemctl --user start dozely-agent</source>
        <translation>يبدأ عند تسجيل الدخول. لتشغيله الآن: systemctl --user start dozely-agent</translation>
    </message>
    <message>
        <source>Cannot wake this computer</source>
        <translation>تعذّر إيقاظ هذا الحاسوب</translation>
    </message>
    <message>
        <source>It has no clock that could wake it or switch it on. Have it stay awake instead.</source>
        <translation>ليست فيه ساعة توقظه أو تشغّله. اتركه مستيقظًا بدلًا من ذلك.</translation>
    </message>
    <message>
        <source>Wake clock ready</source>
        <translation>ساعة الإيقاظ جاهزة</translation>
    </message>
    <message>
        <source>Wakes %1</source>
        <translation>يستيقظ %1</translation>
    </message>
    <message>
        <source>The clock %1 wakes this computer.</source>
        <translation>الساعة %1 توقظ هذا الحاسوب.</translation>
    </message>
    <message>
        <source>Test the alert</source>
        <translation>اختبار التنبيه</translation>
    </message>
    <message>
        <source>Shows an alert that announces nothing, to see whether alerts reach you.</source>
        <translation>يعرض تنبيهًا لا يعلن عن شيء، لترى هل تصلك التنبيهات.</translation>
    </message>
    <message>
        <source>Test waking</source>
        <translation>اختبار الإيقاظ</translation>
    </message>
    <message>
        <source>Tries whether the clock of this computer can wake it.</source>
        <translation>يجرّب هل تستطيع ساعة هذا الحاسوب إيقاظه.</translation>
    </message>
</context>
<context>
    <name>TimesOfDay</name>
    <message>
        <source>Another time</source>
        <translation>وقت آخر</translation>
    </message>
    <message>
        <source>Adds another time of day</source>
        <translation>يضيف وقتًا آخر</translation>
    </message>
    <message>
        <source>Time</source>
        <translation>الوقت</translation>
    </message>
    <message>
        <source>Remove this time</source>
        <translation>إزالة هذا الوقت</translation>
    </message>
</context>
<context>
    <name>TimingRemark</name>
    <message>
        <source>Years without a 29 February are left out.</source>
        <translation>تُستثنى السنوات التي ليس فيها 29 فبراير.</translation>
    </message>
    <message>
        <source>Months without a day %1 are left out; &quot;Last day&quot; is the last of each month.</source>
        <translation>تُستثنى الأشهر التي ليس فيها اليوم %1؛ «اليوم الأخير» هو آخر كل شهر.</translation>
    </message>
    <message>
        <source>Clocks skip %1 on that day; it takes place at %2.</source>
        <translation>تتخطى الساعات %1 في ذلك اليوم؛ فيحدث عند %2.</translation>
    </message>
    <message>
        <source>Clocks show %1 twice on that day; it takes place at the first.</source>
        <translation>تُظهر الساعات %1 مرتين في ذلك اليوم؛ فيحدث عند الأولى.</translation>
    </message>
</context>
<context>
    <name>TimingWriter</name>
    <message>
        <source>With these exceptions nothing is left of it.</source>
        <translation>مع هذه الاستثناءات لا يبقى منه شيء.</translation>
    </message>
    <message>
        <source>That moment is past.</source>
        <translation>مضى ذلك الوقت.</translation>
    </message>
    <message>
        <source>There is no time zone &quot;%1&quot;.</source>
        <translation>لا توجد منطقة زمنية «%1».</translation>
    </message>
    <message>
        <source>Choose a day of the week.</source>
        <translation>اختر يومًا من الأسبوع.</translation>
    </message>
    <message>
        <source>Choose a day of the month.</source>
        <translation>اختر يومًا من الشهر.</translation>
    </message>
    <message>
        <source>One schedule cannot mean %1 without %2, too. Let the times have equal minutes, or add a second schedule.</source>
        <translation>لا يمكن لموعد واحد أن يعني %1 دون %2 أيضًا. اجعل دقائق الأوقات متساوية أو أضف موعدًا ثانيًا.</translation>
    </message>
    <message>
        <source>It ends before it begins.</source>
        <translation>ينتهي قبل أن يبدأ.</translation>
    </message>
    <message>
        <source>There can be at most %1 exceptions.</source>
        <translation>يمكن أن يكون هناك %1 استثناء على الأكثر.</translation>
    </message>
</context>
<context>
    <name>WhenPane</name>
    <message>
        <source>Next dates</source>
        <translation>المواعيد التالية</translation>
    </message>
</context>
<context>
    <name>YearChoice</name>
    <message>
        <source>Month</source>
        <translation>الشهر</translation>
    </message>
    <message>
        <source>Day of the month</source>
        <translation>يوم الشهر</translation>
    </message>
</context>
<context>
    <name>ZoneChoice</name>
    <message>
        <source>This machine&apos;s (%1)</source>
        <translation>منطقة هذا الحاسوب (%1)</translation>
    </message>
</context>
</TS>
