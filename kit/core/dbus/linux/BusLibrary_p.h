// SPDX-License-Identifier: MIT
#pragma once

#include <systemd/sd-bus.h>

namespace dozely
{

/// sd-bus, opened by the first who speaks to a bus: with it come five other libraries, and a process that
/// performs an action, one of many that are started, seldom does. Its functions have their own names here,
/// without "sd_bus_".
struct BusLibrary {
    /// The library; null where the machine has none that can be used. THREADING: any thread.
    static const BusLibrary *open();

    // One line each: the declaration, and what it is looked up by.
#define DOZELY_BUS_FUNCTIONS(FUNCTION)                                                                       \
    FUNCTION(add_match_async)                                                                                \
    FUNCTION(call_async)                                                                                     \
    FUNCTION(close)                                                                                          \
    FUNCTION(close_unref)                                                                                    \
    FUNCTION(get_events)                                                                                     \
    FUNCTION(get_fd)                                                                                         \
    FUNCTION(get_timeout)                                                                                    \
    FUNCTION(get_unique_name)                                                                                \
    FUNCTION(is_ready)                                                                                       \
    FUNCTION(message_append_array)                                                                           \
    FUNCTION(message_append_basic)                                                                           \
    FUNCTION(message_at_end)                                                                                 \
    FUNCTION(message_close_container)                                                                        \
    FUNCTION(message_enter_container)                                                                        \
    FUNCTION(message_exit_container)                                                                         \
    FUNCTION(message_get_error)                                                                              \
    FUNCTION(message_get_expect_reply)                                                                       \
    FUNCTION(message_get_interface)                                                                          \
    FUNCTION(message_get_member)                                                                             \
    FUNCTION(message_get_path)                                                                               \
    FUNCTION(message_get_sender)                                                                             \
    FUNCTION(message_get_signature)                                                                          \
    FUNCTION(message_is_method_error)                                                                        \
    FUNCTION(message_is_method_call)                                                                         \
    FUNCTION(message_new_method_error)                                                                       \
    FUNCTION(message_new_method_call)                                                                        \
    FUNCTION(message_new_method_return)                                                                      \
    FUNCTION(message_new_signal)                                                                             \
    FUNCTION(message_open_container)                                                                         \
    FUNCTION(message_peek_type)                                                                              \
    FUNCTION(message_read)                                                                                   \
    FUNCTION(message_read_array)                                                                             \
    FUNCTION(message_read_basic)                                                                             \
    FUNCTION(message_ref)                                                                                    \
    FUNCTION(message_rewind)                                                                                 \
    FUNCTION(message_unref)                                                                                  \
    FUNCTION(open_system)                                                                                    \
    FUNCTION(open_user)                                                                                      \
    FUNCTION(process)                                                                                        \
    FUNCTION(send)                                                                                           \
    FUNCTION(slot_set_destroy_callback)                                                                      \
    FUNCTION(slot_set_floating)                                                                              \
    FUNCTION(slot_unref)
// NOLINTNEXTLINE(bugprone-macro-parentheses): it is a name
#define DOZELY_DECLARE(name) decltype(&sd_bus_##name) name = nullptr;
    DOZELY_BUS_FUNCTIONS(DOZELY_DECLARE)
#undef DOZELY_DECLARE

private:
    bool find();
};

/// The same for who has a connection or a message, and so the library.
inline const BusLibrary &sdBus()
{
    static const BusLibrary &library = *BusLibrary::open();
    return library;
}

} // namespace dozely
