// SPDX-License-Identifier: MIT
#pragma once

#include <QStringView>
#include <QVariant>

namespace dozely
{

/// The elements of an XML property list that hold no others.
namespace PropertyListXmlLeaf
{
/// What XML takes for blank, once line ends are single.
bool isBlank(QChar c);

/// Whether there is such an element.
bool isName(QStringView name);

/// The value of an element of that name; invalid for a content that is no such value. What would be read as
/// another value than the one that stands there is refused: a number with something behind it or beyond its
/// range, a day that does not exist, bytes that are cut off.
QVariant read(QStringView name, const QString &content);
} // namespace PropertyListXmlLeaf

} // namespace dozely
