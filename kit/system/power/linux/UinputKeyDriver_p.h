// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/system/power/KeyEventDriver.h"

#include <memory>

/// A keyboard of our own in the kernel, made when it is first opened and kept.
///
/// Codes are errno values. Without /dev/uinput, or the right to use it, events are dropped; the log says so
/// once.
class DOZELYKIT_AUTOTEST_EXPORT UinputKeyDriver : public KeyEventDriver
{
public:
    UinputKeyDriver();
    ~UinputKeyDriver() override;

    qint32 open(quint32 service, quint32 connectType, quint32 *connection) override;
    qint32 post(quint32 connection, quint32 eventType, IOGPoint location, const NXEventData &data,
                quint32 version, quint32 flags, quint32 options) override;

    /// The kernel's key for the event in `data`; a key that is bound to nothing when there is none.
    static int keyFor(const NXEventData &data);

private:
    struct Device;
    int makeDevice(int file);

    bool m_isOpen = false;
    std::unique_ptr<Device> m_device; // null: events are dropped
};
