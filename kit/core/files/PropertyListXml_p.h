// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/core/files/PropertyList.h"

namespace dozely
{

/// The XML form. It is so small a part of XML that it has a reader of its own: a general one that is handed a
/// hostile megabyte spends many seconds on comparing the attributes of one tag with each other, or on
/// unfolding the entities of a document type, before it shows what it found.
namespace PropertyListXml
{
/// The value of the list in UTF-8, whatever encoding it declares; the error is a clause. Elements close in
/// order and nest no deeper than PropertyList::maximumDepth containers, and the document declares no
/// entities: the five of XML and numbers of characters are all that there are. Attacks: thousands of levels
/// overrun the stack; entities that are made of entities unfold to gigabytes.
Result<QVariant> read(QByteArrayView data, const PropertyList::Terms &terms);

/// `value` is one that PropertyListValue::fits() let pass.
QByteArray write(const QVariant &value);
} // namespace PropertyListXml

} // namespace dozely
