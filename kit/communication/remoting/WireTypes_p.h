// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArrayView>

namespace dozely
{

class WireCursor;

/// The types of D-Bus as a message names them (D-Bus Specification, "Type System").
namespace WireTypes
{
/// Containers within containers, variants among them: whoever reads them is recursive.
constexpr int maximumDepth = 64;

/// The first complete type of a signature; empty when it does not begin with one.
QByteArrayView firstOf(QByteArrayView signature);

/// The boundary at which a value of the type begins.
qsizetype alignmentOf(char type);

/// Whether it is the path of an object.
bool isPath(QByteArrayView path);

/// Passes over one value of the type, whatever it is. Fails for a damaged one, and for no one complete type.
bool skip(WireCursor &cursor, QByteArrayView type, int depth = 0);
} // namespace WireTypes

} // namespace dozely
