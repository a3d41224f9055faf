// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

#include <functional>
#include <unistd.h>
#include <utility>

/// A descriptor that is closed with its owner; -1 for none.
class EventDescriptor
{
public:
    explicit EventDescriptor(int descriptor = -1) : m_descriptor(descriptor) {}
    EventDescriptor(EventDescriptor &&other) noexcept : m_descriptor(other.release()) {}
    EventDescriptor &operator=(EventDescriptor &&other) noexcept
    {
        std::swap(m_descriptor, other.m_descriptor);
        return *this;
    }
    ~EventDescriptor()
    {
        if (m_descriptor >= 0)
            ::close(m_descriptor);
    }
    bool isValid() const { return m_descriptor >= 0; }
    int get() const { return m_descriptor; }
    int release() { return std::exchange(m_descriptor, -1); }

private:
    int m_descriptor;
};

/// The folder of the processes that use Apple events, "/private/var/tmp/com.dozely.events" below the root
/// folder, reached without following a link at its own place. Not valid when it is missing or belongs to
/// neither root, the root folder's owner nor this user.
EventDescriptor openEventFolder();

/// The same, after making it where that is possible: mode 1777, missing parents 0755.
EventDescriptor makeEventFolder();

/// Calls `visit` with each name in the folder, at most 100,000: a folder that everybody may write may hold
/// any number.
void forEachEntryOf(int folder, const std::function<void(const QByteArray &)> &visit);
