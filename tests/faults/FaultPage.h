// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <cstdint>

/// What becomes of the call whose turn it is. The numbers stand in controlled.py as well.
enum Way : int64_t {
    None,
    Fail,              ///< It is not made, and the machine gives an error that fits.
    DieBefore,         ///< The program is killed instead.
    DieAfter,          ///< It is made, and the program killed before it hears of that.
    CutShort,          ///< Half of it is written; the whole of what is no writing.
    DiskFullFromThere, ///< It fails, and so does each call after it that needs the disk, with ENOSPC.
};

/// In the place of a process that is counted.
/// @{
constexpr int64_t whoeverComes = -1;    ///< The next one that begins.
constexpr int64_t whoeverIsForked = -2; ///< The next one that another one forks.
/// @}

constexpr int timerCount = 4;
constexpr int tracedCalls = 256;
constexpr int traceLength = 160;
constexpr int pageSize = 64 << 10;

/// What a program and whoever watches it share; everything else than text is a number of 64 bits.
struct Page {
    std::atomic<int64_t> now;             ///< The calendar date, nanoseconds since 1970.
    std::atomic<int64_t> start;           ///< The same when the machine was started.
    std::atomic<int64_t> due[timerCount]; ///< What each calendar timer waits for; 0 for nothing.
    std::atomic<int64_t> counted;         ///< The process whose calls are counted; 0 for none.
    std::atomic<int64_t> calls;           ///< So many were made.
    std::atomic<int64_t> target;          ///< The number of the one to which `way` happens, from 1.
    std::atomic<int64_t> way;
    std::atomic<int64_t> fired;           ///< 1 when it has happened.
    char trace[tracedCalls][traceLength]; ///< What each call was.
};
static_assert(sizeof(Page) <= pageSize);
