// SPDX-License-Identifier: MIT
#pragma once

#include <QVariantMap>

#include <array>

/// Stands for the parameters of an action: equal for equal ones alone. Who writes parameters cannot make two
/// that have the same.
struct ParametersDigest {
    static ParametersDigest of(const QVariantMap &parameters);

    std::array<char, 16> bytes{};
    bool operator==(const ParametersDigest &) const = default;
};

size_t qHash(const ParametersDigest &digest, size_t seed = 0);
