// SPDX-License-Identifier: MIT
#include "DozelyKit/core/dbus/linux/BusLibrary_p.h"

#include "DozelyKit/core/foundation/linux/MachineLibrary_p.h"

namespace dozely
{

bool BusLibrary::find()
{
    const MachineLibrary library("libsystemd.so.0");
#define DOZELY_FIND(name) library.find(name, "sd_bus_" #name) &&
    return DOZELY_BUS_FUNCTIONS(DOZELY_FIND) true;
#undef DOZELY_FIND
}

const BusLibrary *BusLibrary::open()
{
    static const BusLibrary *const opened = []() -> const BusLibrary * {
        static BusLibrary library;
        return library.find() ? &library : nullptr;
    }();
    return opened;
}

} // namespace dozely
