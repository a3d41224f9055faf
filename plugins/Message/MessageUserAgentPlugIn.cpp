// SPDX-License-Identifier: MIT
#include "plugins/Message/MessageUserAgentPlugIn.h"

#include "DozelyKit/plugin/Names.h"
#include "DozelyKit/system/alerts/UserNotificationPresenter.h"

using namespace dozely;

using Notification = UserNotificationPresenter::Notification;

void MessageUserAgentPlugIn::begin()
{
    const auto text = [this](const QString &key) {
        const QVariant value = parameters() ? parameters()->value(key) : QVariant();
        return value.typeId() == QMetaType::QString ? value.toString() : QString();
    };
    if (text(MessageKey::text).isEmpty())
        return fail("nothing was shown, the parameter \"Text\" is missing");
    m_message = std::make_shared<NSUserNotification>();
    QString title = text(MessageKey::title);
    if (title.isEmpty())
        title = property(PlugInProperty::scheduleName).toString();
    m_message->setTitle(title.isEmpty() ? pluginName() : title);
    m_message->setInformativeText(text(MessageKey::text));
    m_message->setSoundName(text(MessageKey::sound));
    const auto desktop = Port<UserNotificationPresenter>::current();
    desktop->setEvents({.shown = [this](const Notification &) { end(); },
                        .activated = [](const Notification &) {},
                        .closed =
                            [this](const Notification &) {
                                if (isActing())
                                    showInWindow();
                            }});
    desktop->show(m_message);
}

void MessageUserAgentPlugIn::showInWindow()
{
    const auto window = alertWindow();
    if (!window)
        return fail("the text was not shown, nothing here shows notifications");
    window->show(m_message);
    end(); // the window itself keeps the action going
}
