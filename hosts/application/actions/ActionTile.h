// SPDX-License-Identifier: MIT
#pragma once

#include <QIcon>
#include <QString>

/// The icon of an action that brings none: a coloured tile with a letter.
namespace ActionTile
{
/// The first letter of `name`; the colour follows from `seed`, so that it is the same in every language.
QIcon icon(const QString &name, const QString &seed);
} // namespace ActionTile
