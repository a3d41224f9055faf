// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

class QCoreApplication;

/// The agent's application object: with windows where there is a display, without any where there is none.
/// The widget library is at work only in the former case.
namespace AgentApplication
{
/// Made first thing in main, named "Dozely Agent". A display that is named by the environment but cannot be
/// opened costs one line in the log. Stops what plug-ins throw, as HostApplication does.
std::unique_ptr<QCoreApplication> make(int &argc, char **argv);

/// Whether this process has a display on which windows can be seen.
bool hasDisplay();
} // namespace AgentApplication
