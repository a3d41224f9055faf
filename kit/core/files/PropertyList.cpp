// SPDX-License-Identifier: MIT
#include "DozelyKit/core/files/PropertyList.h"

#include "DozelyKit/core/files/PropertyListBinary_p.h"
#include "DozelyKit/core/files/PropertyListValue_p.h"
#include "DozelyKit/core/files/PropertyListXml_p.h"
#include "DozelyKit/core/files/RegularFile_p.h"

namespace dozely
{

namespace
{
Error refusal(const QString &why)
{
    return {"This is no property list that can be read: " + why};
}

constexpr char binaryMagic[] = "bplist00";
constexpr char byteOrderMark[] = "\xef\xbb\xbf";
} // namespace

Result<QVariant> PropertyList::fromData(const QByteArray &data, Format *format, const Terms &terms)
{
    if (data.size() > terms.size)
        return refusal(QString("it is larger than %1 bytes").arg(terms.size));
    const bool binary = data.startsWith(binaryMagic);
    const QByteArrayView whole(data);
    const QByteArrayView content = whole.sliced(whole.startsWith(byteOrderMark) ? 3 : 0).trimmed();
    if (!binary && !content.startsWith('<'))
        return refusal("it is neither XML nor binary");
    auto value = binary ? PropertyListBinary::read(data, terms) : PropertyListXml::read(content, terms);
    if (!value)
        return refusal(value.error().text);
    if (format)
        *format = binary ? Format::Binary : Format::Xml;
    return value;
}

Result<QVariant> PropertyList::fromFile(const QString &path, Format *format, bool followLinks)
{
    const auto content = readRegularFile(path, maximumSize, followLinks);
    if (!content)
        return content.error();
    auto value = fromData(*content, format);
    if (!value)
        return Error{QString("\"%1\": %2").arg(path, value.error().text)};
    return value;
}

QByteArray PropertyList::toData(const QVariant &value, Format format, const Terms &terms)
{
    if (!PropertyListValue::fits(value, format, terms))
        return {};
    const QByteArray data =
        format == Format::Binary ? PropertyListBinary::write(value) : PropertyListXml::write(value);
    // What is too large to be read back must not replace what can be.
    return data.size() <= terms.size ? data : QByteArray();
}

} // namespace dozely
