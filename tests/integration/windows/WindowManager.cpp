// SPDX-License-Identifier: MIT
#include "WindowManager.h"

#include "support/SignalProcess.h"

#include <QFile>

#include <csignal>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string_view>

#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>
#include <xcb/xcb.h>

namespace
{
const char *const configuration = R"(<?xml version="1.0" encoding="UTF-8"?>
<openbox_config xmlns="http://openbox.org/3.4/rc">
  <focus><focusNew>yes</focusNew><followMouse>no</followMouse></focus>
  <desktops><number>2</number><firstdesk>1</firstdesk><popupTime>0</popupTime></desktops>
  <keyboard><keybind key="A-F4"><action name="Close"/></keybind></keyboard>
  <mouse><context name="Client"><mousebind button="Left" action="Press"><action name="Focus"/></mousebind></context></mouse>
</openbox_config>)";

template<class Answer>
using Owned = std::unique_ptr<Answer, decltype([](Answer *answer) { std::free(answer); })>;

/// Waits until somebody says on the root window which windows are managed.
bool waitForClientList()
{
    constexpr std::string_view name = "_NET_CLIENT_LIST";
    xcb_connection_t *const connection = xcb_connect(nullptr, nullptr);
    bool found = false;
    if (!xcb_connection_has_error(connection)) {
        const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
        const uint32_t changes = XCB_EVENT_MASK_PROPERTY_CHANGE;
        xcb_change_window_attributes(connection, root, XCB_CW_EVENT_MASK, &changes);
        const auto atomCookie = xcb_intern_atom(connection, false, name.size(), name.data());
        const Owned<xcb_intern_atom_reply_t> atom(xcb_intern_atom_reply(connection, atomCookie, nullptr));
        while (!found && atom) {
            const auto cookie =
                xcb_get_property(connection, false, root, atom->atom, XCB_GET_PROPERTY_TYPE_ANY, 0, 1);
            const Owned<xcb_get_property_reply_t> answer(xcb_get_property_reply(connection, cookie, nullptr));
            found = answer && answer->type != XCB_ATOM_NONE;
            if (!answer)
                break;
            if (!found && !Owned<xcb_generic_event_t>(xcb_wait_for_event(connection)))
                break;
        }
    }
    xcb_disconnect(connection);
    return found;
}
} // namespace

bool WindowManager::start()
{
    const QByteArray path = m_folder.filePath("rc.xml").toUtf8();
    QFile file(m_folder.filePath("rc.xml"));
    if (!file.open(QIODevice::WriteOnly) || file.write(configuration) < 0)
        return false;
    file.close();
    const pid_t parent = ::getpid();
    m_process = ::fork();
    if (m_process == 0) {
        ::prctl(PR_SET_PDEATHSIG, SIGKILL);
        if (::getppid() != parent)
            ::_exit(1);
        ::execlp("openbox", "openbox", "--config-file", path.constData(), "--sm-disable", nullptr);
        ::_exit(127);
    }
    return waitForClientList();
}

WindowManager::~WindowManager()
{
    if (m_process <= 0)
        return;
    signalProcess(m_process, SIGKILL);
    ::waitpid(m_process, nullptr, 0);
}
