// SPDX-License-Identifier: MIT
#pragma once

#include <QVariantMap>

class AdminOptions;

/// The options that make up an action's parameters.
namespace ParameterOptions
{
/// `former`, or `--parameters FILE` in its place, changed by each `--parameter`, by `--program` and
/// `--argument`, by `--alert`, and by `--in-daemon` or `--in-session`, in this order. Another program comes
/// without the arguments of the former. Raises AdminError when one of them is wrong.
QVariantMap read(const AdminOptions &options, const QVariantMap &former = {});
} // namespace ParameterOptions
