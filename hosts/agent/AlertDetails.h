// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// What can be said of the action that an alert announces, beyond the alert's own texts. Empty texts are left
/// out.
struct AlertDetails {
    QString schedule;  ///< Its name; several of them, joined, where they share the alert.
    QString otherwise; ///< What happens unless the user cancels: a sentence.
};
