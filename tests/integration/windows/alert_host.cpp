// SPDX-License-Identifier: MIT
//
// Usage: alert_host [--bundle AGENT_BUNDLE] [--language LANGUAGE] [--palette light|dark|contrast]
//                   [--font-points NUMBER]
//
// Shows alerts as the agent does, without daemon and plug-ins. Reads JSON objects from standard input, one a
// line:
// {"show": NAME, "title": ..., "text": ..., "button": ..., "seconds": ..., "schedule": ..., "otherwise":
// ...},
// {"close": NAME}, {"focus": NAME}. Prints what comes of it: "shown", "ready" (it takes input), "activated",
// "closed" and "later", each with the name.
#include "hosts/agent/AlertWindowPresenter.h"

#include "DozelyKit/core/bundles/NSBundle.h"
#include "DozelyKit/plugin/Names.h"
#include "support/InterfaceEnvironment.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCommandLineParser>
#include <QHash>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSocketNotifier>
#include <QTextStream>

#include <iostream>
#include <string>

#include <unistd.h>

using namespace dozely;

namespace
{
void print(const char *what, const QString &name)
{
    QTextStream(stdout) << what << ' ' << name << Qt::endl;
}

/// Tells once when the button can be pressed.
class Readiness : public QObject
{
public:
    Readiness(AlertWindow &window, const QString &name) : QObject(&window), m_name(name)
    {
        window.findChild<QAbstractButton *>()->installEventFilter(this);
    }

protected:
    bool eventFilter(QObject *receiver, QEvent *event) override
    {
        if (event->type() == QEvent::EnabledChange && qobject_cast<QWidget *>(receiver)->isEnabled())
            print("ready", m_name);
        return false;
    }

private:
    QString m_name;
};

class Host
{
public:
    Host()
    {
        m_presenter.setEvents(
            {.shown = [this](const auto &alert) { print("shown", m_alerts.key(alert)); },
             .activated = [this](const auto &alert) { print("activated", m_alerts.key(alert)); },
             .closed = [this](const auto &alert) { print("closed", m_alerts.key(alert)); }});
        m_presenter.setLater({[](const auto &) { return true; },
                              [this](const auto &alert, Postponement) {
                                  print("later", m_alerts.key(alert));
                                  return true;
                              }});
        m_presenter.setDetails([this](const auto &alert) { return m_details.value(m_alerts.key(alert)); });
    }

    void obey(const QJsonObject &order)
    {
        if (order.contains("show"))
            show(order.value("show").toString(), order);
        else if (order.contains("close"))
            m_presenter.close(m_alerts.value(order.value("close").toString()));
        else if (AlertWindow *window = m_presenter.window(m_alerts.value(order.value("focus").toString())))
            window->activateWindow();
    }

private:
    void show(const QString &name, const QJsonObject &order)
    {
        auto &alert = m_alerts[name];
        const bool isNew = !alert;
        if (isNew)
            alert = std::make_shared<NSUserNotification>();
        alert->setTitle(order.value("title").toString());
        alert->setInformativeText(order.value("text").toString());
        alert->setActionButtonTitle(order.value("button").toString());
        if (isNew) {
            alert->setUserInfo({{AlertKey::date, QDateTime::currentDateTimeUtc().addMSecs(
                                                     qRound64(order.value("seconds").toDouble() * 1000))}});
        }
        m_details[name] = {order.value("schedule").toString(), order.value("otherwise").toString()};
        m_presenter.show(alert);
        if (AlertWindow *const window = m_presenter.window(alert); window && isNew)
            new Readiness(*window, name);
    }

    AlertWindowPresenter m_presenter;
    QHash<QString, std::shared_ptr<NSUserNotification>> m_alerts;
    QHash<QString, AlertDetails> m_details;
};

QPalette contrastPalette()
{
    QPalette palette(Qt::white, Qt::black);
    palette.setColor(QPalette::Window, Qt::black);
    palette.setColor(QPalette::WindowText, Qt::white);
    palette.setColor(QPalette::Highlight, Qt::yellow);
    return palette;
}
} // namespace

int main(int argc, char **argv)
{
    std::ios::sync_with_stdio(false); // or nobody knows whether a further line has come
    qputenv("FONTCONFIG_FILE", DOZELY_TEST_FONTS "/fonts.conf");
    qputenv("XDG_CACHE_HOME", DOZELY_TEST_CACHE);
    QApplication application(argc, argv);
    QCommandLineParser parser;
    parser.addOptions({{"bundle", "Has the texts.", "FOLDER"},
                       {"language", "Of the texts.", "LANGUAGE"},
                       {"palette", "light, dark or contrast.", "NAME"},
                       {"font-points", "The desktop's font size.", "NUMBER"}});
    parser.process(application);
    InterfaceEnvironment::settle();
    if (const auto bundle = NSBundle::bundleWithPath(parser.value("bundle")))
        NSBundle::registerClass(userAgentControllerClass, bundle);
    UserLanguages::set({parser.value("language")});
    if (parser.value("palette") == "dark")
        QApplication::setPalette(InterfaceEnvironment::darkPalette());
    if (parser.value("palette") == "contrast")
        QApplication::setPalette(contrastPalette());
    if (parser.isSet("font-points")) {
        QFont font = QApplication::font();
        font.setPointSize(parser.value("font-points").toInt());
        QApplication::setFont(font);
    }
    QGuiApplication::setQuitOnLastWindowClosed(false);
    Host host;
    QSocketNotifier input(STDIN_FILENO, QSocketNotifier::Read);
    QObject::connect(&input, &QSocketNotifier::activated, &application, [&host] {
        do { // several may have come at once
            std::string line;
            if (!std::getline(std::cin, line))
                return QApplication::quit();
            host.obey(QJsonDocument::fromJson(QByteArray::fromStdString(line)).object());
        } while (std::cin.rdbuf()->in_avail() > 0);
    });
    return QApplication::exec();
}
