// SPDX-License-Identifier: MIT
//
// Usage: window_watch TITLE
//
// Prints, for each window of that title on the display that DISPLAY names, when it is shown and has faded in:
// the milliseconds since 1970, a line each. "watching" comes first. Without end.
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <set>
#include <string>

#include <xcb/xcb.h>

namespace
{
template<class Answer>
using Owned = std::unique_ptr<Answer, decltype([](Answer *answer) { std::free(answer); })>;

class Display
{
public:
    explicit Display(std::string title)
        : m_title(std::move(title)),
          m_connection(xcb_connect(nullptr, nullptr)),
          m_opacity(atom("_NET_WM_WINDOW_OPACITY"))
    {
        const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data->root;
        select(root, XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY);
        print("watching");
    }

    void watch()
    {
        while (const Owned<xcb_generic_event_t> event{xcb_wait_for_event(m_connection)}) {
            const auto *const any = event.get();
            switch (any->response_type & 0x7F) {
            case XCB_CREATE_NOTIFY:
                select(reinterpret_cast<const xcb_create_notify_event_t *>(any)->window,
                       XCB_EVENT_MASK_PROPERTY_CHANGE);
                break;
            case XCB_MAP_NOTIFY:
                m_mapped.insert(reinterpret_cast<const xcb_map_notify_event_t *>(any)->window);
                look(reinterpret_cast<const xcb_map_notify_event_t *>(any)->window);
                break;
            case XCB_UNMAP_NOTIFY:
                m_mapped.erase(reinterpret_cast<const xcb_unmap_notify_event_t *>(any)->window);
                break;
            case XCB_PROPERTY_NOTIFY:
                if (reinterpret_cast<const xcb_property_notify_event_t *>(any)->atom == m_opacity)
                    look(reinterpret_cast<const xcb_property_notify_event_t *>(any)->window);
                break;
            default:
                break;
            }
        }
    }

private:
    static void print(const std::string &line)
    {
        std::puts(line.c_str());
        std::fflush(stdout);
    }

    xcb_atom_t atom(const std::string &name)
    {
        const auto cookie =
            xcb_intern_atom(m_connection, false, static_cast<uint16_t>(name.size()), name.c_str());
        const Owned<xcb_intern_atom_reply_t> answer(xcb_intern_atom_reply(m_connection, cookie, nullptr));
        return answer ? answer->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
    }

    void select(xcb_window_t window, uint32_t events)
    {
        xcb_change_window_attributes(m_connection, window, XCB_CW_EVENT_MASK, &events);
        xcb_flush(m_connection);
    }

    Owned<xcb_get_property_reply_t> property(xcb_window_t window, xcb_atom_t name)
    {
        const auto cookie =
            xcb_get_property(m_connection, false, window, name, XCB_GET_PROPERTY_TYPE_ANY, 0, 64);
        return Owned<xcb_get_property_reply_t>(xcb_get_property_reply(m_connection, cookie, nullptr));
    }

    void look(xcb_window_t window)
    {
        constexpr uint32_t opaque = 0xFFFFFFFF;
        const auto name = property(window, XCB_ATOM_WM_NAME);
        const auto opacity = property(window, m_opacity);
        if (m_mapped.count(window) == 0 || !name || !opacity ||
            std::string(static_cast<const char *>(xcb_get_property_value(name.get())),
                        static_cast<size_t>(xcb_get_property_value_length(name.get()))) != m_title ||
            xcb_get_property_value_length(opacity.get()) != 4 ||
            *static_cast<const uint32_t *>(xcb_get_property_value(opacity.get())) != opaque)
            return;
        m_mapped.erase(window); // once
        const auto now = std::chrono::system_clock::now().time_since_epoch();
        print(std::to_string(std::chrono::duration_cast<std::chrono::milliseconds>(now).count()));
    }

    std::string m_title;
    xcb_connection_t *m_connection;
    xcb_atom_t m_opacity;
    std::set<xcb_window_t> m_mapped;
};
} // namespace

int main(int argc, char **argv)
{
    if (argc != 2) {
        std::fputs("Usage: window_watch TITLE\n", stderr);
        return 2;
    }
    Display(argv[1]).watch();
    return 0;
}
