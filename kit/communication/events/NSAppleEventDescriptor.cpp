// SPDX-License-Identifier: MIT
#include "DozelyKit/communication/events/NSAppleEventDescriptor.h"

#include "DozelyKit/communication/events/AEManager.h"

#include <cstring>

using namespace dozely;

using Descriptor = std::shared_ptr<NSAppleEventDescriptor>;

namespace
{
AEDesc unicodeText(const QString &text)
{
    return AEDesc(typeUnicodeText, QByteArray(reinterpret_cast<const char *>(text.utf16()),
                                              text.size() * static_cast<qsizetype>(sizeof(char16_t))));
}
} // namespace

NSAppleEventDescriptor::NSAppleEventDescriptor(const AEDesc &desc) : m_desc(desc) {}

Descriptor NSAppleEventDescriptor::nullDescriptor()
{
    return descriptorWithAEDesc(AEDesc());
}

Descriptor NSAppleEventDescriptor::descriptorWithAEDesc(const AEDesc &desc)
{
    return Descriptor(new NSAppleEventDescriptor(desc));
}

Descriptor NSAppleEventDescriptor::descriptorWithDescriptorType(DescType type, const QByteArray &data)
{
    return descriptorWithAEDesc(AEDesc(type, data));
}

Descriptor NSAppleEventDescriptor::descriptorWithInt32(qint32 value)
{
    return descriptorWithAEDesc(AEDesc::of(typeSInt32, value));
}

Descriptor NSAppleEventDescriptor::descriptorWithString(const QString &text)
{
    return descriptorWithAEDesc(unicodeText(text));
}

OSType NSAppleEventDescriptor::code(AEKeyword attribute) const
{
    OSType value = 0;
    AEGetAttributePtr(m_desc, attribute, typeType, nullptr, &value, sizeof value, nullptr);
    return value;
}

AEEventClass NSAppleEventDescriptor::eventClass() const
{
    return code(keyEventClassAttr);
}

AEEventID NSAppleEventDescriptor::eventID() const
{
    return code(keyEventIDAttr);
}

Descriptor NSAppleEventDescriptor::paramDescriptorForKeyword(AEKeyword keyword) const
{
    const auto value = m_desc.parameter(keyword);
    return value ? descriptorWithAEDesc(*value) : nullptr;
}

Descriptor NSAppleEventDescriptor::attributeDescriptorForKeyword(AEKeyword keyword) const
{
    const auto value = m_desc.attribute(keyword);
    return value ? descriptorWithAEDesc(*value) : nullptr;
}

void NSAppleEventDescriptor::setParamDescriptorForKeyword(const Descriptor &value, AEKeyword keyword)
{
    if (value)
        m_desc.setParameter(keyword, value->m_desc);
    else
        m_desc.removeParameter(keyword);
}

qint32 NSAppleEventDescriptor::int32Value() const
{
    const auto converted = m_desc.coerced(typeSInt32);
    return converted ? converted->value<qint32>().value_or(0) : 0;
}

QString NSAppleEventDescriptor::stringValue() const
{
    const auto converted = m_desc.coerced(typeUnicodeText);
    if (!converted)
        return {};
    const QByteArray bytes = converted->data();
    QString text(bytes.size() / static_cast<qsizetype>(sizeof(char16_t)), Qt::Uninitialized);
    if (!text.isEmpty())
        std::memcpy(text.data(), bytes.constData(), static_cast<size_t>(text.size()) * sizeof(char16_t));
    return text;
}

QByteArray NSAppleEventDescriptor::data() const
{
    return m_desc.data();
}
