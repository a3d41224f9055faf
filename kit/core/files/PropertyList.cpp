// SPDX-License-Identifier: MIT
#include "DozelyKit/core/files/PropertyList.h"

#include "DozelyKit/core/files/PropertyListBinary_p.h"
#include "DozelyKit/core/files/PropertyListValue_p.h"
#include "DozelyKit/core/files/PropertyListXml_p.h"
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
    auto value = binary ? PropertyListBinary::read(data) : PropertyListXml::read(content);
    if (!value)
        return refuse(error, value.error().text);
    if (format)
        *format = binary ? Format::Binary : Format::Xml;
    return *value;
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
    if (!PropertyListValue::fits(value, format))
        return {};
    const QByteArray data =
        format == Format::Binary ? PropertyListBinary::write(value) : PropertyListXml::write(value);
    // What is too large to be read back must not replace what can be.
    return data.size() <= maximumSize ? data : QByteArray();
}
