// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// The agent's own text of that key, in the user's language; the key itself where there is none. Any program
/// that registered the agent's bundle has them, on the main thread.
QString agentText(const QString &key);

/// The language that these texts are in ("de"); English where there are none.
QString agentLanguage();
