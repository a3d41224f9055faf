// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/files/PropertyList.h"

namespace dozely
{

/// The binary form: the eight bytes "bplist00", the objects, a table of where each begins, and a trailer of
/// 32 bytes that says where the table is. Containers hold the numbers of their members.
namespace PropertyListBinary
{
/// The value of the list; the error is a clause. Trailer, offsets and references stay inside the list, no
/// container holds itself, and what it unfolds to stays below the limits. Attacks: each of a few containers
/// refers to the next one many times over, so that some hundred bytes unfold to gigabytes; a container that
/// holds itself never ends; a large text is referred to thousands of times and copied each time; an offset or
/// a length points outside.
Result<QVariant> read(const QByteArray &data, const PropertyList::Terms &terms);

/// `value` is one that PropertyListValue::fits() let pass.
QByteArray write(const QVariant &value);
} // namespace PropertyListBinary

} // namespace dozely
