// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// For tools that others start by their fixed path: one that lies at that path below a relocated root belongs
/// to the system there, and takes its root from its own place, so that who starts it need not tell. Needs the
/// QCoreApplication; comes before the command line, where --root may say otherwise.
void takeRootFromOwnPlace(const QString &fixedPath);
