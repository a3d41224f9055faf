// SPDX-License-Identifier: MIT
#pragma once

#include <QVariantMap>

class AdminOptions;

/// The options that make up an action's parameters.
namespace ParameterOptions
{
/// `--parameters FILE`, changed by each `--parameter`, by `--program` and `--argument`, by `--alert`, and by
/// `--in-daemon` or `--in-session`, in this order. Raises AdminError when one of them is wrong.
QVariantMap read(const AdminOptions &options);
} // namespace ParameterOptions
