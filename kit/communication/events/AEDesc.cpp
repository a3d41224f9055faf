// SPDX-License-Identifier: MIT
#include "DozelyKit/communication/events/AEDesc.h"

#include "DozelyKit/communication/events/AEDescItems_p.h"

#include <algorithm>
#include <cstring>

namespace
{
std::optional<AEDesc> copyOf(const AEDesc *found)
{
    return found ? std::optional<AEDesc>(*found) : std::nullopt;
}
} // namespace

AEDesc::AEDesc() = default;
AEDesc::~AEDesc() = default;
AEDesc::AEDesc(const AEDesc &) = default;
AEDesc &AEDesc::operator=(const AEDesc &) = default;

AEDesc::AEDesc(AEDesc &&other) noexcept
    : m_type(std::exchange(other.m_type, typeNull)),
      m_data(std::exchange(other.m_data, {})),
      m_items(std::exchange(other.m_items, {}))
{
}

AEDesc &AEDesc::operator=(AEDesc &&other) noexcept
{
    m_type = std::exchange(other.m_type, typeNull);
    m_data = std::exchange(other.m_data, {});
    m_items = std::exchange(other.m_items, {});
    return *this;
}

AEDesc::AEDesc(DescType type, const QByteArray &data) : m_type(type)
{
    if (!isContainerType(type) && type != typeNull)
        m_data = data;
}

bool AEDesc::isContainerType(DescType type)
{
    return type == typeAEList || type == typeAERecord || type == typeAppleEvent;
}

bool AEDesc::copyHead(void *to, qsizetype size) const
{
    if (m_data.size() < size)
        return false;
    std::memcpy(to, m_data.constData(), static_cast<size_t>(size));
    return true;
}

qsizetype AEDesc::count() const
{
    return m_items ? m_items->parameters.count() : 0;
}

AEDesc AEDesc::at(qsizetype index) const
{
    return index >= 0 && index < count() ? m_items->parameters.at(index).value : AEDesc();
}

AEKeyword AEDesc::keywordAt(qsizetype index) const
{
    return index >= 0 && index < count() ? m_items->parameters.at(index).keyword : 0;
}

// Room for one more item; null when it would nest too deep. A copy of `value` is the caller's: it may be a
// part of this very descriptor.
AEDesc::Items *AEDesc::itemsFor(const AEDesc &value)
{
    const int depth = 1 + (value.m_items ? value.m_items->depth : value.isContainer() ? 1 : 0);
    if (depth > maximumDepth)
        return nullptr;
    if (!m_items)
        m_items = new Items;
    m_items->depth = std::max(m_items->depth, depth);
    return m_items.data();
}

OSErr AEDesc::append(const AEDesc &element)
{
    if (m_type != typeAEList)
        return errAEWrongDataType;
    const AEDesc copy = element;
    Items *const items = itemsFor(copy);
    if (!items)
        return errAEIllegalIndex;
    items->parameters.append(copy);
    return noErr;
}

std::optional<AEDesc> AEDesc::parameter(AEKeyword keyword) const
{
    return isRecord() && m_items ? copyOf(m_items->parameters.find(keyword)) : std::nullopt;
}

OSErr AEDesc::setParameter(AEKeyword keyword, const AEDesc &value)
{
    if (!isRecord())
        return errAEWrongDataType;
    const AEDesc copy = value;
    Items *const items = itemsFor(copy);
    if (!items)
        return errAEIllegalIndex;
    items->parameters.put(keyword, copy);
    return noErr;
}

void AEDesc::removeParameter(AEKeyword keyword)
{
    if (m_items && isRecord())
        m_items->parameters.remove(keyword);
}

std::optional<AEDesc> AEDesc::attribute(AEKeyword keyword) const
{
    return m_items ? copyOf(m_items->attributes.find(keyword)) : std::nullopt;
}

OSErr AEDesc::setAttribute(AEKeyword keyword, const AEDesc &value)
{
    if (m_type != typeAppleEvent)
        return errAEWrongDataType;
    const AEDesc copy = value;
    Items *const items = itemsFor(copy);
    if (!items)
        return errAEIllegalIndex;
    items->attributes.put(keyword, copy);
    return noErr;
}

void AEDesc::removeAttribute(AEKeyword keyword)
{
    if (m_items)
        m_items->attributes.remove(keyword);
}

bool AEDesc::operator==(const AEDesc &other) const
{
    if (m_type != other.m_type || m_data != other.m_data)
        return false;
    static const Items none;
    const Items &ours = m_items ? *m_items : none;
    const Items &theirs = other.m_items ? *other.m_items : none;
    return ours.attributes == theirs.attributes && ours.parameters == theirs.parameters;
}
