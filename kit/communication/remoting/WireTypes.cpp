// SPDX-License-Identifier: MIT
#include "DozelyKit/communication/remoting/WireTypes_p.h"

#include "DozelyKit/communication/remoting/WireCursor_p.h"

#include <algorithm>

namespace dozely
{

namespace
{
/// A type that holds no other.
bool isBasic(char type)
{
    switch (type) {
    case 'y':
    case 'b':
    case 'n':
    case 'q':
    case 'i':
    case 'u':
    case 'x':
    case 't':
    case 'd':
    case 's':
    case 'o':
    case 'g':
    case 'h':
        return true;
    default:
        return false;
    }
}

/// The length of the complete type at the head; 0 when there is none.
qsizetype lengthOf(QByteArrayView signature, int depth)
{
    if (signature.isEmpty() || depth > WireTypes::maximumDepth)
        return 0;
    const char first = signature[0];
    if (isBasic(first) || first == 'v')
        return 1;
    if (first == 'a') {
        if (signature.size() > 1 && signature[1] == '{') {
            const bool hasBasicKey = signature.size() > 2 && isBasic(signature[2]);
            const qsizetype value = hasBasicKey ? lengthOf(signature.sliced(3), depth + 1) : 0;
            const qsizetype end = 3 + value;
            return value > 0 && end < signature.size() && signature[end] == '}' ? end + 1 : 0;
        }
        const qsizetype element = lengthOf(signature.sliced(1), depth + 1);
        return element > 0 ? element + 1 : 0;
    }
    if (first != '(')
        return 0;
    qsizetype at = 1;
    while (at < signature.size() && signature[at] != ')') {
        const qsizetype member = lengthOf(signature.sliced(at), depth + 1);
        if (member == 0)
            return 0;
        at += member;
    }
    return at > 1 && at < signature.size() ? at + 1 : 0;
}

bool skipArray(WireCursor &cursor, QByteArrayView element)
{
    quint32 length = 0;
    QByteArrayView contents;
    return cursor.number(&length) && cursor.align(WireTypes::alignmentOf(element[0])) &&
           cursor.bytes(length, &contents);
}
} // namespace

QByteArrayView WireTypes::firstOf(QByteArrayView signature)
{
    return signature.first(lengthOf(signature, 0));
}

qsizetype WireTypes::alignmentOf(char type)
{
    switch (type) {
    case 'n':
    case 'q':
        return 2;
    case 'b':
    case 'i':
    case 'u':
    case 'h':
    case 's':
    case 'o':
    case 'a':
        return 4;
    case 'x':
    case 't':
    case 'd':
    case '(':
    case '{':
        return 8;
    default:
        return 1;
    }
}

bool WireTypes::isPath(QByteArrayView path)
{
    if (path.isEmpty() || path[0] != '/')
        return false;
    if (path.size() == 1)
        return true;
    bool isAfterSlash = false;
    for (const char c : path) {
        const bool isSlash = c == '/';
        const bool isWord =
            (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
        if ((isSlash && isAfterSlash) || (!isSlash && !isWord))
            return false;
        isAfterSlash = isSlash;
    }
    return !isAfterSlash;
}

bool WireTypes::skip(WireCursor &cursor, QByteArrayView type, int depth)
{
    if (type.isEmpty() || firstOf(type).size() != type.size() || depth > maximumDepth)
        return false;
    QByteArrayView contents;
    switch (type[0]) {
    case 's':
    case 'o':
        return cursor.text(&contents);
    case 'g':
        return cursor.signature(&contents);
    case 'v':
        return cursor.signature(&contents) && skip(cursor, contents, depth + 1);
    case 'a':
        return skipArray(cursor, type.sliced(1));
    case '(': {
        if (!cursor.align(alignmentOf('(')))
            return false;
        for (QByteArrayView members = type.sliced(1).chopped(1); !members.isEmpty();) {
            const QByteArrayView member = firstOf(members);
            if (!skip(cursor, member, depth + 1))
                return false;
            members = members.sliced(member.size());
        }
        return true;
    }
    default:
        return cursor.align(alignmentOf(type[0])) &&
               cursor.bytes(static_cast<quint64>(alignmentOf(type[0])), &contents);
    }
}

} // namespace dozely
