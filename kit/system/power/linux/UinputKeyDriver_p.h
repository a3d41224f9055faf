// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/system/power/KeyEventDriver.h"

#include <memory>

namespace dozely
{

/// A keyboard of our own in the kernel, made when it is first opened and kept.
///
/// Without /dev/uinput, or the right to use it, events are dropped; the log says so
/// once.
class DOZELYKIT_AUTOTEST_EXPORT UinputKeyDriver : public KeyEventDriver
{
public:
    UinputKeyDriver();
    ~UinputKeyDriver() override;

    Opening open() override;
    bool post(const NXEventData &event) override;

    /// The kernel's key for the event; a key that is bound to nothing when there is none.
    static int keyFor(const NXEventData &event);

private:
    struct Device;
    int makeDevice(int file);

    bool m_isOpen = false;
    std::unique_ptr<Device> m_device; // null: events are dropped
};

} // namespace dozely
