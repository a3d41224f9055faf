// SPDX-License-Identifier: MIT
#include "DozelyKit/core/files/PropertyList.h"

#include "DozelyKit/core/files/PropertyListCheck_p.h"
#include "DozelyKit/core/files/PropertyListNode_p.h"
#include "DozelyKit/core/files/RegularFile_p.h"

namespace
{
std::nullopt_t refuse(QString *error, const QString &sentence)
{
    if (error)
        *error = "This is no property list that can be read. " + sentence;
    return std::nullopt;
}

constexpr char binaryMagic[] = "bplist00";
constexpr char byteOrderMark[] = "\xef\xbb\xbf";
} // namespace

std::optional<QVariant> PropertyList::fromData(const QByteArray &data, QString *error, Format *format)
{
    if (data.size() > maximumSize)
        return refuse(error, QString("It is larger than %1 bytes.").arg(maximumSize));
    const bool binary = data.startsWith(binaryMagic);
    const QByteArray content = data.startsWith(byteOrderMark) ? data.mid(3).trimmed() : data.trimmed();
    if (!binary && !content.startsWith('<'))
        return refuse(error, "It is neither XML nor binary.");
    const QString refusal = binary ? PropertyListCheck::binary(data) : PropertyListCheck::xml(content);
    if (!refusal.isEmpty())
        return refuse(error, refusal);

    plist_t parsed = nullptr;
    if (binary)
        plist_from_bin(data.constData(), static_cast<quint32>(data.size()), &parsed);
    else
        plist_from_xml(content.constData(), static_cast<quint32>(content.size()), &parsed);
    const PropertyListNode::Node root(parsed);
    if (!root)
        return refuse(error, "It is damaged.");
    auto value = PropertyListNode::valueOf(root.get());
    if (!value)
        return refuse(error, "It holds a value of an unknown kind, or a date out of range.");
    if (format)
        *format = binary ? Format::Binary : Format::Xml;
    return value;
}

std::optional<QVariant> PropertyList::fromFile(const QString &path, QString *error, Format *format,
                                               bool followLinks)
{
    const auto content = readRegularFile(path, maximumSize, followLinks);
    if (!content) {
        if (error)
            *error = content.error().text + '.';
        return std::nullopt;
    }
    auto value = fromData(*content, error, format);
    if (!value && error)
        *error = QString("\"%1\": %2").arg(path, *error);
    return value;
}

QByteArray PropertyList::toData(const QVariant &value, Format format)
{
    const PropertyListNode::Node root = PropertyListNode::nodeOf(value, format);
    if (!root)
        return {};
    char *bytes = nullptr;
    uint32_t size = 0;
    if (format == Format::Binary)
        plist_to_bin(root.get(), &bytes, &size);
    else
        plist_to_xml(root.get(), &bytes, &size);
    const PropertyListNode::Memory<char> owned(bytes);
    // What is too large to be read back must not replace what can be.
    return bytes && size <= maximumSize ? QByteArray(bytes, static_cast<qsizetype>(size)) : QByteArray();
}
