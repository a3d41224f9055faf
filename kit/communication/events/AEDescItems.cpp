// SPDX-License-Identifier: MIT
#include "DozelyKit/communication/events/AEDescItems_p.h"

#include <algorithm>

namespace
{
constexpr qsizetype few = 16;
} // namespace

qsizetype AEDesc::Items::List::placeOf(AEKeyword keyword) const
{
    if (!m_places.isEmpty())
        return m_places.value(keyword, -1);
    const auto found = std::find_if(m_items.begin(), m_items.end(),
                                    [keyword](const Item &item) { return item.keyword == keyword; });
    return found == m_items.end() ? -1 : found - m_items.begin();
}

// Those from there on stand where they stand now.
void AEDesc::Items::List::note(qsizetype from)
{
    for (qsizetype place = from; place < m_items.size(); ++place)
        m_places.insert(m_items.at(place).keyword, place);
}

const AEDesc *AEDesc::Items::List::find(AEKeyword keyword) const
{
    const qsizetype place = placeOf(keyword);
    return place < 0 ? nullptr : &m_items.at(place).value;
}

bool AEDesc::Items::List::add(AEKeyword keyword, const AEDesc &value)
{
    if (placeOf(keyword) >= 0)
        return false;
    m_items.append({keyword, value});
    if (!m_places.isEmpty())
        note(m_items.size() - 1);
    else if (m_items.size() > few)
        note(0);
    return true;
}

void AEDesc::Items::List::put(AEKeyword keyword, const AEDesc &value)
{
    if (const qsizetype place = placeOf(keyword); place >= 0)
        m_items[place].value = value;
    else
        add(keyword, value);
}

void AEDesc::Items::List::remove(AEKeyword keyword)
{
    const qsizetype place = placeOf(keyword);
    if (place < 0)
        return;
    m_items.remove(place);
    if (m_places.remove(keyword))
        note(place);
}
