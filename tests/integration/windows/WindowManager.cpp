// SPDX-License-Identifier: MIT
#include "WindowManager.h"

#include "support/SignalProcess.h"

#include <QFile>

#include <chrono>
#include <condition_variable>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <mutex>
#include <string_view>
#include <utility>

#include <poll.h>
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
} // namespace

/// A connection to the display, with a window that is never shown.
class WindowManager::Probe
{
public:
    Probe()
    {
        if (xcb_connection_has_error(m_connection))
            return;
        m_root = xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data->root;
        m_window = xcb_generate_id(m_connection);
        const uint32_t changes = XCB_EVENT_MASK_PROPERTY_CHANGE;
        xcb_change_window_attributes(m_connection, m_root, XCB_CW_EVENT_MASK, &changes);
        xcb_create_window(m_connection, XCB_COPY_FROM_PARENT, m_window, m_root, 0, 0, 1, 1, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &changes);
    }
    ~Probe() { xcb_disconnect(m_connection); }
    Probe(const Probe &) = delete;
    Probe &operator=(const Probe &) = delete;

    /// Waits until somebody answers who asks how wide a frame would be. A window manager says that it is
    /// there before it hears requests, and may overhear for good what comes between: a window that is to be
    /// shown, for one.
    bool waitForWindowManager()
    {
        if (m_root == XCB_WINDOW_NONE || !waitFor(m_root, "_NET_CLIENT_LIST", -1))
            return false;
        constexpr int pause = 100; // milliseconds after which it is asked again
        for (int attempt = 0; attempt < 600; ++attempt) {
            ask();
            if (waitFor(m_window, "_NET_FRAME_EXTENTS", pause))
                return true;
        }
        return false;
    }

    /// Asks how wide a frame would be.
    void ask()
    {
        xcb_client_message_event_t question{};
        question.response_type = XCB_CLIENT_MESSAGE;
        question.format = 32;
        question.window = m_window;
        question.type = atom("_NET_REQUEST_FRAME_EXTENTS");
        xcb_send_event(m_connection, false, m_root,
                       XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                       reinterpret_cast<const char *>(&question));
        xcb_flush(m_connection);
        while (Owned<xcb_generic_event_t>(xcb_poll_for_event(m_connection))) {
        }
    }

private:
    xcb_atom_t atom(std::string_view name)
    {
        const auto cookie =
            xcb_intern_atom(m_connection, false, static_cast<uint16_t>(name.size()), name.data());
        const Owned<xcb_intern_atom_reply_t> answer(xcb_intern_atom_reply(m_connection, cookie, nullptr));
        return answer ? answer->atom : xcb_atom_t{XCB_ATOM_NONE};
    }
    /// Until the window has the property, or nothing has happened for so many milliseconds; -1 for ever.
    bool waitFor(xcb_window_t window, std::string_view property, int limit)
    {
        const xcb_atom_t name = atom(property);
        pollfd events{xcb_get_file_descriptor(m_connection), POLLIN, 0};
        do {
            while (Owned<xcb_generic_event_t>(xcb_poll_for_event(m_connection))) {
            }
            const auto cookie =
                xcb_get_property(m_connection, false, window, name, XCB_GET_PROPERTY_TYPE_ANY, 0, 1);
            const Owned<xcb_get_property_reply_t> answer(
                xcb_get_property_reply(m_connection, cookie, nullptr));
            if (!answer || answer->type != XCB_ATOM_NONE)
                return static_cast<bool>(answer);
        } while (Owned<xcb_generic_event_t>(xcb_poll_for_queued_event(m_connection)) ||
                 ::poll(&events, 1, limit) > 0);
        return false;
    }

    xcb_connection_t *m_connection = xcb_connect(nullptr, nullptr);
    xcb_window_t m_root = XCB_WINDOW_NONE;
    xcb_window_t m_window = XCB_WINDOW_NONE;
};

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
    auto probe = std::make_unique<Probe>();
    if (!probe->waitForWindowManager())
        return false;
    startNudging(std::move(probe));
    return true;
}

/// On a busy machine openbox may take something from its connection and then wait for the next thing to come
/// before it looks at it: here always something comes soon.
void WindowManager::startNudging(std::unique_ptr<Probe> probe)
{
    static constexpr std::chrono::milliseconds pause(250);
    m_nudging = std::jthread([probe = std::move(probe)](const std::stop_token &stop) {
        std::mutex mutex;
        std::condition_variable_any ended;
        std::unique_lock lock(mutex);
        while (!ended.wait_for(lock, stop, pause, [] { return false; }) && !stop.stop_requested())
            probe->ask();
    });
}

WindowManager::~WindowManager()
{
    m_nudging = {}; // its end is waited for
    if (m_process <= 0)
        return;
    signalProcess(m_process, SIGKILL);
    ::waitpid(m_process, nullptr, 0);
}
