// SPDX-License-Identifier: MIT
#include "hosts/performer/Overrides.h"

#include "DozelyKit/plugin/WDPlugIn.h"

namespace
{
#if defined(__GNUC__) && !defined(__clang__)
#pragma GCC diagnostic ignored "-Wpmf-conversions"
#pragma GCC diagnostic ignored "-Wpedantic" // says the same

/// The function that a call of `member` reaches: the language has no word for it, this compiler has.
template<class Member>
bool isOwn(const WDDaemonPlugIn &plugIn, Member member)
{
    using Function = bool (*)(WDDaemonPlugIn *);
    static WDDaemonPlugIn base;
    auto &asked = const_cast<WDDaemonPlugIn &>(plugIn);
    return reinterpret_cast<Function>(asked.*member) != reinterpret_cast<Function>(base.*member);
}
#else
template<class Member>
bool isOwn(const WDDaemonPlugIn &, Member)
{
    return true;
}
#endif
} // namespace

bool Overrides::actInUserAgentNow(const WDDaemonPlugIn &plugIn)
{
    return isOwn(plugIn, &WDDaemonPlugIn::actInUserAgentNow);
}

bool Overrides::anticipateInUserAgentNow(const WDDaemonPlugIn &plugIn)
{
    return isOwn(plugIn, &WDDaemonPlugIn::anticipateInUserAgentNow);
}
