// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Result.h"

#include <QByteArray>
#include <QVariant>

/// YAML, as far as it is JSON in another dress.
namespace YamlReader
{
/// The one document in the bytes, by the core schema of YAML 1.2: "yes" is a text. The error says in which
/// line it is wrong.
dozely::Result<QVariant> parse(const QByteArray &data);
} // namespace YamlReader
