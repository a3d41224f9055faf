// SPDX-License-Identifier: MIT
#pragma once

class WDDaemonPlugIn;

/// What a plug-in's class does in a way of its own. A compiler that cannot tell says that it does: whoever
/// asks is then told what costs a process more, and loses nothing.
namespace Overrides
{
bool actInUserAgentNow(const WDDaemonPlugIn &plugIn);
bool anticipateInUserAgentNow(const WDDaemonPlugIn &plugIn);
} // namespace Overrides
