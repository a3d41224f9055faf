// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Export.h"
#include "DozelyKit/core/foundation/Port.h"
#include "DozelyKit/system/power/KeyEvents.h"

namespace dozely
{

/// Port: puts key events into the machine's input, as if its keyboard had sent them.
///
/// A machine that lets nobody do so is opened all the same, and drops the events: one log line says so.
///
/// THREADING: one thread at a time.
class DOZELYKIT_EXPORT KeyEventDriver
{
public:
    /// What became of opening the machine's input.
    enum class Opening {
        Opened,
        NoAnswer,      ///< The machine does not tell what it consists of.
        NoList,        ///< It does not tell what input systems it has.
        NoInputSystem, ///< It has none.
        Refused,       ///< It has one that cannot be opened.
    };

    virtual ~KeyEventDriver() = default;

    /// Opens the machine's input, for the rest of the process. Opened again, it stays as it is.
    virtual Opening open() = 0;

    /// Posts one event of type NX_SYSDEFINED. The key that an aux event tells is pressed and released. False
    /// when the machine does not take it, and before the input is open.
    virtual bool post(const NXEventData &event) = 0;
};

template<>
DOZELYKIT_EXPORT std::shared_ptr<KeyEventDriver> &Port<KeyEventDriver>::current();

} // namespace dozely
