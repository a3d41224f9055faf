// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/communication/events/AEDesc.h"

#include <QSharedData>

/// What is in a container. Elements of a list have the keyword 0.
struct AEDesc::Items : QSharedData {
    struct Item {
        AEKeyword keyword;
        AEDesc value;
        bool operator==(const Item &) const = default;
    };
    using List = QList<Item>;

    List attributes;
    List parameters;
    int depth = 1; ///< Containers within each other from this one on; never less than there are.
};
