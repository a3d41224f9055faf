// SPDX-License-Identifier: MIT
// A lid for a machine that has none: a switch made with uinput. Each line of the standard input, "close" or
// "open", moves it; the switch is gone when the input ends.
#include <libevdev/libevdev-uinput.h>
#include <libevdev/libevdev.h>

#include <cstdio>
#include <iostream>
#include <memory>
#include <string>

int main()
{
    const std::unique_ptr<libevdev, decltype(&libevdev_free)> description(libevdev_new(), libevdev_free);
    libevdev_set_name(description.get(), "Virtual lid");
    libevdev_enable_event_code(description.get(), EV_SW, SW_LID, nullptr);
    libevdev_uinput *device = nullptr;
    if (libevdev_uinput_create_from_device(description.get(), LIBEVDEV_UINPUT_OPEN_MANAGED, &device) != 0) {
        std::fputs("lid: there is no /dev/uinput that could be used\n", stderr);
        return 1;
    }
    for (std::string order; std::getline(std::cin, order);) {
        libevdev_uinput_write_event(device, EV_SW, SW_LID, order == "close");
        libevdev_uinput_write_event(device, EV_SYN, SYN_REPORT, 0);
    }
    libevdev_uinput_destroy(device);
    return 0;
}
