// SPDX-License-Identifier: MIT
// Shows the window with schedules that nobody has, or writes a picture of it:
//     application_preview [--dark] [--many N] [--empty] [--away] [--language LL] [--font PIXELS]
//                         [--size WxH] [--view N] [--picture FILE]
#include "FakeSchedulerClient.h"
#include "hosts/application/actions/PlugInTrial.h"
#include "hosts/application/program/Translations.h"
#include "hosts/application/program/WindowedApplication.h"
#include "hosts/application/window/MainWindow.h"

#include "DozelyKit/core/bundles/NSBundle.h"
#include "DozelyKit/core/foundation/RootFolder.h"
#include "support/InterfaceEnvironment.h"
#include "support/ScratchRoot.h"

#include <QCommandLineParser>
#include <QElapsedTimer>
#include <QProcess>
#include <QScreen>
#include <QStyleFactory>
#include <QTabBar>
#include <QTimer>

#include <unistd.h>

namespace
{
QVariantMap schedule(const QString &name, const QString &action, const QVariantMap &parameters, int hours,
                     const QString &rule = {})
{
    const qint64 minutes = QDateTime::currentSecsSinceEpoch() / 60 + hours * 60;
    const QDateTime date = QDateTime::fromSecsSinceEpoch(minutes * 60, Qt::UTC);
    QVariantMap made{
        {"name", name},
        {"isEnabled", true},
        {"bundlePath", QString("/Library/Application Support/Dozely/PlugIns/%1.plugin").arg(action)},
        {"parameters", parameters},
        {"date", date.toString(Qt::ISODate)},
        {"timeZone", ""},
        {"actsIn", "session"},
        {"owner", quint32(::geteuid())},
        {"next", date.toString(Qt::ISODate)},
        {"revision", "r0"},
        {"mayChange", true}};
    if (!rule.isEmpty())
        made.insert("repeats",
                    QVariantMap{{"rule", rule},
                                {"localStart", date.toLocalTime().toString("yyyy-MM-dd'T'HH:mm:00")}});
    return made;
}

void fill(FakeSchedulerClient &client, int many)
{
    client.schedules["1"] = schedule("Wake with music", "Command",
                                     {{"Program", "/usr/bin/rhythmbox-client"},
                                      {"Arguments", QStringList{"--play", "--volume=40"}},
                                      {"Needs Wake Up", 1}},
                                     15, "FREQ=WEEKLY;BYDAY=MO,TU,WE,TH,FR");
    client.schedules["2"] = schedule("Backup at night", "Command",
                                     {{"Program", "/usr/bin/rsync"},
                                      {"Arguments", QStringList{"-a", "/home", "/srv/backup"}},
                                      {"Needs Wake Up", 1},
                                      {"Needs Startup", 1}},
                                     30, "FREQ=DAILY");
    client.schedules["2"].remove("owner");
    client.schedules["2"]["actsIn"] = "daemon";
    client.schedules["2"]["mayChange"] = false;
    client.schedules["3"] = schedule("Switch off in the evening", "PowerOff",
                                     {{"Alert", 1}, {"Delay before alert", 300}}, 5, "FREQ=DAILY");
    client.schedules["4"] =
        schedule("Stand up and walk a few steps, then look out of the window for a while", "Command",
                 {{"Program", "/usr/bin/notify-send"}}, 1, "FREQ=HOURLY;INTERVAL=2");
    client.schedules["5"] = schedule("Tax papers", "Command", {{"Program", "/usr/bin/xdg-open"}}, 24 * 40);
    client.schedules["6"] = schedule("Old reminder", "Script", {}, -48);
    client.schedules["6"]["isEnabled"] = false;
    for (int i = 0; i < many; ++i)
        client.schedules[QString("m%1").arg(i)] =
            schedule(QString("Schedule %1").arg(i), "Command", {{"Program", "/bin/true"}}, i + 2);
    client.told = {{"Version", "0.1.0"},
                   {"AgentOfConsoleUser", QVariantMap{{"user", 1000U}, {"name", "anna"}, {"isAlive", true}}},
                   {"WakeClock", QVariantMap{{"isSupported", true},
                                             {"device", "rtc0"},
                                             {"alarm", client.schedules["1"].value("next")}}}};
}
} // namespace

int main(int argc, char **argv)
{
    QElapsedTimer sinceStart;
    sinceStart.start();
    WindowedApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.value(1) == "--try") {
        dozely::RootFolder::set(arguments.value(2));
        return PlugInTrial::run(arguments.mid(3));
    }
    QCommandLineParser options;
    for (const char *const name : {"dark", "empty", "away"})
        options.addOption(QCommandLineOption(name));
    for (const char *const name : {"many", "language", "font", "size", "picture", "view"})
        options.addOption({QString(name), "", name});
    options.process(application);

    QApplication::setStyle(QStyleFactory::create("Fusion"));
    QApplication::setPalette(options.isSet("dark") ? InterfaceEnvironment::darkPalette()
                                                   : InterfaceEnvironment::lightPalette());
    QFont font("DejaVu Sans");
    font.setPixelSize(options.isSet("font") ? options.value("font").toInt() : 13);
    QApplication::setFont(font);
    const QString language = options.isSet("language") ? options.value("language") : "en";
    dozely::UserLanguages::set({language});
    QLocale::setDefault(QLocale(language == "en" ? "en_GB" : language));
    Translations::install({language});

    ScratchRoot root;
    root.makeFolder("/Library/Application Support/Dozely");
    QProcess::execute("cp", {"-r", PLUG_INS, root.join("/Library/Application Support/Dozely/")});
    FakeSchedulerClient client;
    client.isThere = !options.isSet("away");
    if (!options.isSet("empty"))
        fill(client, options.value("many").toInt());
    ActionSides sides({QCoreApplication::applicationFilePath(), {"--try", root.path()}});
    sinceStart.restart(); // what comes before is no part of the window
    MainWindow window(client, sides, ::geteuid());
    if (options.isSet("size")) {
        const QStringList parts = options.value("size").split('x');
        window.resize(parts.value(0).toInt(), parts.value(1).toInt());
    }
    window.findChild<QTabBar *>("views")->setCurrentIndex(options.value("view").toInt());
    window.show();
    QTimer::singleShot(0, [&] { qInfo("usable after %lld ms", sinceStart.elapsed()); });
    if (options.isSet("picture"))
        QTimer::singleShot(2500, [&] {
            window.grab().save(options.value("picture"));
            window.book().revertAll({});
            QCoreApplication::exit(0);
        });
    return QCoreApplication::exec();
}
