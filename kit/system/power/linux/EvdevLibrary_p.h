// SPDX-License-Identifier: MIT
#pragma once

#include <libevdev/libevdev-uinput.h>
#include <libevdev/libevdev.h>

namespace dozely
{

/// libevdev, opened by the first key that is to be pressed. Its functions have their own names here, without
/// "libevdev_".
struct EvdevLibrary {
    /// The library; null where the machine has none. THREADING: any thread.
    static const EvdevLibrary *open();

    decltype(&libevdev_new) make = nullptr; // "new" is a word of the language
    decltype(&libevdev_free) free = nullptr;
    decltype(&libevdev_set_name) set_name = nullptr;
    decltype(&libevdev_set_id_bustype) set_id_bustype = nullptr;
    decltype(&libevdev_enable_event_code) enable_event_code = nullptr;
    decltype(&libevdev_uinput_create_from_device) uinput_create_from_device = nullptr;
    decltype(&libevdev_uinput_write_event) uinput_write_event = nullptr;
    decltype(&libevdev_uinput_destroy) uinput_destroy = nullptr;

private:
    bool find();
};

} // namespace dozely
