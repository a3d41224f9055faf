<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ar" sourcelanguage="en">
<context>
    <name>CalendarText</name>
    <message>
        <source>C</source>
        <comment>the locale that has the names of days and months</comment>
        <translation>ar_AE</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a date such as &quot;2026-03-14 06:55&quot;, &quot;06:55&quot;, &quot;tomorrow 7:00&quot;, &quot;fri 22:00&quot; or &quot;+5m&quot;</source>
        <translation>«%1» ليس تاريخًا مثل «2026-03-14 06:55» أو «06:55» أو «tomorrow 7:00» أو «fri 22:00» أو «+5m»</translation>
    </message>
    <message>
        <source>%1 or %2</source>
        <translation>%1 أو %2</translation>
    </message>
    <message>
        <source>&quot;%1&quot; can be %2</source>
        <translation>«%1» قد يعني %2</translation>
    </message>
    <message>
        <source>%1, since clocks are changed meanwhile</source>
        <translation>%1، إذ تُغيَّر الساعات في أثناء ذلك</translation>
    </message>
    <message>
        <source>Clocks in %1 show &quot;%2&quot; twice: say %3 or %4</source>
        <translation>تُظهر الساعات في %1 «%2» مرتين: قل %3 أو %4</translation>
    </message>
    <message>
        <source>d MMMM yyyy</source>
        <comment>form of a day</comment>
        <translation>d MMMM yyyy</translation>
    </message>
    <message>
        <source>%1 %2 at %3</source>
        <comment>day of the week, day, time</comment>
        <translation>%1 %2 عند %3</translation>
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
        <source>%1 h</source>
        <translation>%1 س</translation>
    </message>
    <message>
        <source>1 day</source>
        <translation>يوم</translation>
    </message>
    <message numerus="yes">
        <source>%n days</source>
        <translation>
            <numerusform>%n يوم</numerusform>
            <numerusform>يوم</numerusform>
            <numerusform>يومان</numerusform>
            <numerusform>%n أيام</numerusform>
            <numerusform>%n يومًا</numerusform>
            <numerusform>%n يوم</numerusform>
        </translation>
    </message>
    <message>
        <source>&quot;%1&quot; is none of day, weekday, week, month and year, of days such as monday,thursday and of distances such as 15m and 2h</source>
        <translation>«%1» ليس day ولا weekday ولا week ولا month ولا year، ولا أيامًا مثل monday,thursday، ولا فاصلًا مثل 15m و2h</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a time such as 22:00</source>
        <translation>«%1» ليس وقتًا مثل 22:00</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a number of seconds, nor a time such as 10m, 6h or 2d</source>
        <translation>«%1» ليس عددًا من الثواني ولا مدة مثل 10m أو 6h أو 2d</translation>
    </message>
    <message>
        <source>%1 (minutes)</source>
        <translation>%1 (دقائق)</translation>
    </message>
    <message>
        <source>%1 (hours)</source>
        <translation>%1 (ساعات)</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no day of a month, which is 1 to 31, or last</source>
        <translation>«%1» ليس يومًا من الشهر، وهو من 1 إلى 31، أو last</translation>
    </message>
    <message>
        <source>one rule cannot mean %1 without %2, too; let the times have equal minutes, or add a second schedule</source>
        <translation>لا يمكن لقاعدة واحدة أن تعني %1 دون %2 أيضًا؛ اجعل دقائق الأوقات متساوية أو أضف موعدًا ثانيًا</translation>
    </message>
    <message>
        <source>%1, %2</source>
        <comment>a list</comment>
        <translation>%1، %2</translation>
    </message>
    <message>
        <source>%1 and %2</source>
        <comment>the end of a list</comment>
        <translation>%1 و%2</translation>
    </message>
    <message>
        <source>every year</source>
        <translation>كل سنة</translation>
    </message>
    <message numerus="yes">
        <source>every %n years</source>
        <translation>
            <numerusform>كل سنة</numerusform>
            <numerusform>كل سنة</numerusform>
            <numerusform>كل سنتين</numerusform>
            <numerusform>كل %n سنوات</numerusform>
            <numerusform>كل %n سنة</numerusform>
            <numerusform>كل %n سنة</numerusform>
        </translation>
    </message>
    <message>
        <source>every month</source>
        <translation>كل شهر</translation>
    </message>
    <message numerus="yes">
        <source>every %n months</source>
        <translation>
            <numerusform>كل شهر</numerusform>
            <numerusform>كل شهر</numerusform>
            <numerusform>كل شهرين</numerusform>
            <numerusform>كل %n أشهر</numerusform>
            <numerusform>كل %n شهرًا</numerusform>
            <numerusform>كل %n شهر</numerusform>
        </translation>
    </message>
    <message>
        <source>every week</source>
        <translation>كل أسبوع</translation>
    </message>
    <message numerus="yes">
        <source>every %n weeks</source>
        <translation>
            <numerusform>كل أسبوع</numerusform>
            <numerusform>كل أسبوع</numerusform>
            <numerusform>كل أسبوعين</numerusform>
            <numerusform>كل %n أسابيع</numerusform>
            <numerusform>كل %n أسبوعًا</numerusform>
            <numerusform>كل %n أسبوع</numerusform>
        </translation>
    </message>
    <message>
        <source>every day</source>
        <translation>كل يوم</translation>
    </message>
    <message numerus="yes">
        <source>every %n days</source>
        <translation>
            <numerusform>كل يوم</numerusform>
            <numerusform>كل يوم</numerusform>
            <numerusform>كل يومين</numerusform>
            <numerusform>كل %n أيام</numerusform>
            <numerusform>كل %n يومًا</numerusform>
            <numerusform>كل %n يوم</numerusform>
        </translation>
    </message>
    <message>
        <source>every hour</source>
        <translation>كل ساعة</translation>
    </message>
    <message numerus="yes">
        <source>every %n hours</source>
        <translation>
            <numerusform>كل ساعة</numerusform>
            <numerusform>كل ساعة</numerusform>
            <numerusform>كل ساعتين</numerusform>
            <numerusform>كل %n ساعات</numerusform>
            <numerusform>كل %n ساعة</numerusform>
            <numerusform>كل %n ساعة</numerusform>
        </translation>
    </message>
    <message>
        <source>every minute</source>
        <translation>كل دقيقة</translation>
    </message>
    <message numerus="yes">
        <source>every %n minutes</source>
        <translation>
            <numerusform>كل دقيقة</numerusform>
            <numerusform>كل دقيقة</numerusform>
            <numerusform>كل دقيقتين</numerusform>
            <numerusform>كل %n دقائق</numerusform>
            <numerusform>كل %n دقيقة</numerusform>
            <numerusform>كل %n دقيقة</numerusform>
        </translation>
    </message>
    <message>
        <source>every second</source>
        <translation>كل ثانية</translation>
    </message>
    <message numerus="yes">
        <source>every %n seconds</source>
        <translation>
            <numerusform>كل ثانية</numerusform>
            <numerusform>كل ثانية</numerusform>
            <numerusform>كل ثانيتين</numerusform>
            <numerusform>كل %n ثوانٍ</numerusform>
            <numerusform>كل %n ثانية</numerusform>
            <numerusform>كل %n ثانية</numerusform>
        </translation>
    </message>
    <message>
        <source>every weekday</source>
        <translation>كل يوم عمل</translation>
    </message>
    <message>
        <source>every %1</source>
        <comment>days of the week</comment>
        <translation>كل %1</translation>
    </message>
    <message>
        <source>%1 on %2</source>
        <comment>every 3 weeks, days of the week</comment>
        <translation>%1 يوم %2</translation>
    </message>
    <message>
        <source>the %1</source>
        <comment>a day of the month; only in English with an ending</comment>
        <translation>اليوم %1</translation>
    </message>
    <message>
        <source>the last day</source>
        <translation>اليوم الأخير</translation>
    </message>
    <message>
        <source>the last %1</source>
        <comment>day of the week</comment>
        <translation>آخر %1</translation>
    </message>
    <message>
        <source>the first %1</source>
        <comment>day of the week</comment>
        <translation>أول %1</translation>
    </message>
    <message>
        <source>the second %1</source>
        <comment>day of the week</comment>
        <translation>ثاني %1</translation>
    </message>
    <message>
        <source>the third %1</source>
        <comment>day of the week</comment>
        <translation>ثالث %1</translation>
    </message>
    <message>
        <source>the fourth %1</source>
        <comment>day of the week</comment>
        <translation>رابع %1</translation>
    </message>
    <message>
        <source>%1 %2</source>
        <comment>a day of the year: its number, the month</comment>
        <translation>%1 %2</translation>
    </message>
    <message>
        <source>%1 on %2</source>
        <comment>every 3 months, days of the month</comment>
        <translation>%1 %2</translation>
    </message>
    <message>
        <source>%1 on %2</source>
        <comment>every 3 years, a day of the year</comment>
        <translation>%1 في %2</translation>
    </message>
    <message>
        <source>%1 at %2</source>
        <comment>days, times</comment>
        <translation>%1 عند %2</translation>
    </message>
    <message>
        <source>%1, once</source>
        <translation>%1، مرة واحدة</translation>
    </message>
    <message numerus="yes">
        <source>%1, %n times</source>
        <translation>
            <numerusform>%1، ولا مرة</numerusform>
            <numerusform>%1، مرة واحدة</numerusform>
            <numerusform>%1، مرتين</numerusform>
            <numerusform>%1، %n مرات</numerusform>
            <numerusform>%1، %n مرة</numerusform>
            <numerusform>%1، %n مرة</numerusform>
        </translation>
    </message>
    <message>
        <source>%1, until %2</source>
        <comment>a day</comment>
        <translation>%1، حتى %2</translation>
    </message>
    <message>
        <source>%1, until %2 at %3</source>
        <comment>a day and a time</comment>
        <translation>%1، حتى %2 عند %3</translation>
    </message>
    <message numerus="yes">
        <source>%n other days</source>
        <translation>
            <numerusform>لا أيام أخرى</numerusform>
            <numerusform>يوم آخر</numerusform>
            <numerusform>يومان آخران</numerusform>
            <numerusform>%n أيام أخرى</numerusform>
            <numerusform>%n يومًا آخر</numerusform>
            <numerusform>%n يوم آخر</numerusform>
        </translation>
    </message>
    <message>
        <source>by the rule %1</source>
        <translation>حسب القاعدة %1</translation>
    </message>
    <message>
        <source>%1, and on %2</source>
        <comment>days</comment>
        <translation>%1، وفي %2</translation>
    </message>
    <message>
        <source>%1, except on %2</source>
        <comment>days</comment>
        <translation>%1، إلا في %2</translation>
    </message>
</context>
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
    <name>ReasonWords</name>
    <message>
        <source>You are not allowed to do this.</source>
        <translation>لا يُسمح لك بهذا.</translation>
    </message>
    <message>
        <source>Nobody but root may do this here: polkit, which decides about others, cannot be asked (%1).</source>
        <translation>لا يحق هذا هنا إلا لـ root: تعذّر سؤال polkit الذي يقرر بشأن غيره (%1).</translation>
    </message>
    <message>
        <source>Too many questions are open that somebody has to answer first.</source>
        <translation>هناك أسئلة مفتوحة كثيرة جدًا لا بد أن يجيب عنها أحد أولًا.</translation>
    </message>
    <message>
        <source>Too many calls at a time: wait for the answers.</source>
        <translation>نداءات كثيرة جدًا في وقت واحد: انتظر الإجابات.</translation>
    </message>
    <message>
        <source>A user may have %1 schedules.</source>
        <translation>يحق للمستخدم %1 من الجداول.</translation>
    </message>
    <message>
        <source>The schedules of a user may have %1 bytes in all.</source>
        <translation>يحق لجداول المستخدم %1 بايت مجتمعة.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; was changed by somebody else meanwhile.</source>
        <translation>غيّر شخص آخر «%1» في هذه الأثناء.</translation>
    </message>
    <message>
        <source>The name has more than %1 characters.</source>
        <translation>الاسم أطول من %1 حرفًا.</translation>
    </message>
    <message>
        <source>There is no time zone &quot;%1&quot;.</source>
        <translation>لا توجد منطقة زمنية «%1».</translation>
    </message>
    <message>
        <source>It is too large: a schedule has at most %1 bytes.</source>
        <translation>إنه كبير جدًا: أقصى حجم للجدول %1 بايت.</translation>
    </message>
    <message>
        <source>It holds something that no schedule can keep.</source>
        <translation>فيه ما لا يمكن لأي جدول أن يحفظه.</translation>
    </message>
    <message>
        <source>It cannot repeat so: with these exceptions nothing is left of it.</source>
        <translation>لا يمكن التكرار هكذا: لا يبقى منه شيء مع هذه الاستثناءات.</translation>
    </message>
    <message>
        <source>It cannot repeat so: %1.</source>
        <translation>لا يمكن التكرار هكذا: %1.</translation>
    </message>
    <message>
        <source>What is to follow comes only where the machine was woken or switched on for the action.</source>
        <translation>ما يلي الإجراء لا يحدث إلا إذا أُوقظ الحاسوب أو شُغّل من أجله.</translation>
    </message>
    <message>
        <source>Nothing could come of it: %1.</source>
        <translation>لن ينتج عن هذا شيء: %1.</translation>
    </message>
    <message>
        <source>the parameters name no program</source>
        <translation>لا تذكر المعاملات أي برنامج</translation>
    </message>
    <message>
        <source>the program &quot;%1&quot; is not an absolute path</source>
        <translation>البرنامج «%1» ليس مسارًا مطلقًا</translation>
    </message>
    <message>
        <source>there is no program %1</source>
        <translation>لا يوجد برنامج %1</translation>
    </message>
    <message>
        <source>%1 is no program that can be run</source>
        <translation>ليس %1 برنامجًا يمكن تشغيله</translation>
    </message>
    <message>
        <source>there is no bundle at %1</source>
        <translation>لا توجد حزمة في %1</translation>
    </message>
    <message>
        <source>%1 cannot act in the %2: %3</source>
        <translation>لا يمكن أن يعمل %1 في %2: %3</translation>
    </message>
    <message>
        <source>session</source>
        <translation>الجلسة</translation>
    </message>
    <message>
        <source>daemon</source>
        <translation>الخدمة</translation>
    </message>
    <message>
        <source>it acts in the daemon alone</source>
        <translation>يعمل في الخدمة وحدها</translation>
    </message>
    <message>
        <source>it names no &quot;%1&quot;</source>
        <translation>لا يذكر «%1»</translation>
    </message>
    <message>
        <source>The schedules are damaged, and are not overwritten: %1.</source>
        <translation>الجداول تالفة ولا يُكتب فوقها: %1.</translation>
    </message>
    <message>
        <source>%1 was not changed: %2</source>
        <translation>لم يُغيَّر %1: %2</translation>
    </message>
    <message>
        <source>there is no schedule %1</source>
        <translation>لا يوجد جدول %1</translation>
    </message>
    <message>
        <source>schedule %1 has nothing to come</source>
        <translation>ليس في الجدول %1 ما هو آتٍ</translation>
    </message>
    <message>
        <source>schedule %1 has no occurrence at %2 that is to come</source>
        <translation>ليس في الجدول %1 ما هو آتٍ في %2</translation>
    </message>
    <message>
        <source>the occurrence at %1 is not the next one of schedule %2</source>
        <translation>الموعد %1 ليس التالي في الجدول %2</translation>
    </message>
    <message>
        <source>%1 occurrences of schedule %2 are decided upon already</source>
        <translation>تقرر من قبل أمر %1 من مواعيد الجدول %2</translation>
    </message>
    <message>
        <source>an occurrence is postponed by 1 to %1 seconds</source>
        <translation>يؤجَّل الموعد من ثانية واحدة إلى %1 ثانية</translation>
    </message>
    <message>
        <source>it is being tried already</source>
        <translation>التجربة جارية من قبل</translation>
    </message>
    <message>
        <source>an action goes on, or is due too soon</source>
        <translation>هناك إجراء جارٍ أو قريب الموعد جدًا</translation>
    </message>
    <message>
        <source>the machine is kept awake by %1</source>
        <translation>يُبقي %1 الحاسوب مستيقظًا</translation>
    </message>
    <message>
        <source>this machine cannot be put to sleep</source>
        <translation>لا يمكن إدخال هذا الحاسوب في السكون</translation>
    </message>
    <message>
        <source>the machine did not fall asleep</source>
        <translation>لم يدخل الحاسوب في السكون</translation>
    </message>
    <message>
        <source>the machine does not let itself be put to sleep</source>
        <translation>يأبى الحاسوب الدخول في السكون</translation>
    </message>
    <message>
        <source>its program ended with status %1</source>
        <translation>انتهى برنامجه بالحالة %1</translation>
    </message>
    <message>
        <source>its program could not be started</source>
        <translation>تعذّر بدء برنامجه</translation>
    </message>
    <message>
        <source>its process was ended by signal %1 (%2)</source>
        <translation>أُنهيت عمليته بالإشارة %1 (%2)</translation>
    </message>
    <message>
        <source>its process ended by itself with status %1</source>
        <translation>انتهت عمليته من تلقاء نفسها بالحالة %1</translation>
    </message>
    <message>
        <source>its performer ended without a word</source>
        <translation>انتهى منفّذه بلا كلمة</translation>
    </message>
    <message>
        <source>its agent does not say why</source>
        <translation>لا يقول الوكيل لماذا</translation>
    </message>
    <message>
        <source>it took more memory than it may</source>
        <translation>أخذ ذاكرة أكثر مما يُسمح له</translation>
    </message>
    <message>
        <source>it took longer than %1 s</source>
        <translation>استغرق أكثر من %1 ث</translation>
    </message>
    <message>
        <source>it was asked to end</source>
        <translation>طُلب منه أن ينتهي</translation>
    </message>
    <message>
        <source>There is no bundle %1</source>
        <translation>لا توجد حزمة %1</translation>
    </message>
    <message>
        <source>%1 is not a bundle</source>
        <translation>ليس %1 حزمة</translation>
    </message>
    <message>
        <source>The bundle %1 is not trusted: %2</source>
        <translation>الحزمة %1 غير موثوقة: %2</translation>
    </message>
    <message>
        <source>it lies in no folder of plug-ins</source>
        <translation>لا تقع في أي مجلد للملحقات</translation>
    </message>
    <message>
        <source>The bundle %1 names no &quot;%2&quot;</source>
        <translation>الحزمة %1 لا تذكر «%2»</translation>
    </message>
    <message>
        <source>The plug-in of %1 cannot be made: %2</source>
        <translation>تعذّر إنشاء ملحق %1: %2</translation>
    </message>
    <message>
        <source>its factory made nothing</source>
        <translation>لم ينتج مصنعه شيئًا</translation>
    </message>
    <message>
        <source>The plug-in of %1 is none for configuration</source>
        <translation>ملحق %1 ليس للإعداد</translation>
    </message>
    <message>
        <source>%1 has no view</source>
        <translation>ليس لـ %1 عرض</translation>
    </message>
    <message>
        <source>Cannot load &quot;%1&quot;: %2</source>
        <translation>تعذّر تحميل «%1»: %2</translation>
    </message>
    <message>
        <source>Cannot read &quot;%1&quot;: %2</source>
        <translation>تعذّرت قراءة «%1»: %2</translation>
    </message>
    <message>
        <source>Cannot write &quot;%1&quot;: %2</source>
        <translation>تعذّرت كتابة «%1»: %2</translation>
    </message>
    <message>
        <source>it is not a file</source>
        <translation>ليس ملفًا</translation>
    </message>
    <message>
        <source>%1.</source>
        <comment>a clause as a sentence</comment>
        <translation>%1.</translation>
    </message>
    <message>
        <source>The Dozely service is not running.</source>
        <translation>خدمة Dozely لا تعمل.</translation>
    </message>
    <message>
        <source>The Dozely service did not answer in time.</source>
        <translation>لم تجب خدمة Dozely في الوقت المناسب.</translation>
    </message>
    <message>
        <source>The message bus is not there.</source>
        <translation>ناقل الرسائل غير موجود.</translation>
    </message>
    <message>
        <source>its &quot;%1&quot; is neither true nor false</source>
        <translation>«%1» فيه ليس صحيحًا ولا خطأً</translation>
    </message>
    <message>
        <source>You may not read %1</source>
        <translation>لا يجوز لك قراءة %1</translation>
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
