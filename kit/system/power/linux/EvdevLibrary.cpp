// SPDX-License-Identifier: MIT
#include "DozelyKit/system/power/linux/EvdevLibrary_p.h"

#include "DozelyKit/core/foundation/linux/MachineLibrary_p.h"

namespace dozely
{

bool EvdevLibrary::find()
{
    const MachineLibrary library("libevdev.so.2");
    return library.find(make, "libevdev_new") && library.find(free, "libevdev_free") &&
           library.find(set_name, "libevdev_set_name") &&
           library.find(set_id_bustype, "libevdev_set_id_bustype") &&
           library.find(enable_event_code, "libevdev_enable_event_code") &&
           library.find(uinput_create_from_device, "libevdev_uinput_create_from_device") &&
           library.find(uinput_write_event, "libevdev_uinput_write_event") &&
           library.find(uinput_destroy, "libevdev_uinput_destroy");
}

const EvdevLibrary *EvdevLibrary::open()
{
    static const EvdevLibrary *const opened = []() -> const EvdevLibrary * {
        static EvdevLibrary library;
        return library.find() ? &library : nullptr;
    }();
    return opened;
}

} // namespace dozely
