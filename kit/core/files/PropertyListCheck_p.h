// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/foundation/Export.h"

#include <QByteArray>
#include <QString>

/// Looks at a property list before the parser of the host platform does, which guards itself against none of
/// what is checked here. Each function returns a sentence that says what is wrong, or an empty text.
namespace PropertyListCheck
{
/// An XML list: its elements close in order and nest no deeper than PropertyList::maximumDepth containers,
/// and it declares no entities of its own. Attacks: thousands of levels overrun the parser's stack; entities
/// that are made of entities unfold to gigabytes.
QString xml(const QByteArray &data);

/// A binary list: its trailer, offsets and references stay inside it, no container holds itself, and what it
/// unfolds to stays below the limits. Attacks: each of a few containers refers to the next one many times
/// over, so that some hundred bytes unfold to gigabytes; a container that holds itself never ends; a large
/// text is referred to thousands of times and copied each time; an offset or a length points outside.
QString binary(const QByteArray &data);

/// The sentences for the two limits that both kinds have.
QString tooDeep();
QString tooMany();
} // namespace PropertyListCheck
