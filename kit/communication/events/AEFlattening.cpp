// SPDX-License-Identifier: MIT
#include "DozelyKit/communication/events/AEDescItems_p.h"

#include <QtEndian>

// docs/apple-events.md has the form: a head of four bytes, then one descriptor.
namespace
{
constexpr char head[] = {'A', 'E', 'F', 1}; // the last one is the version
constexpr qsizetype headSize = sizeof head;
constexpr qsizetype wordSize = sizeof(quint32);
} // namespace

/// Writes and reads the flattened form. Reading takes bytes from strangers: the size was checked before,
/// depth and counts are checked here, and nothing is allocated by a number that the bytes do not bear out.
class AEFlattening
{
    using Item = AEDesc::Items::Item;
    using List = AEDesc::Items::List;

public:
    static qsizetype sizeOf(const AEDesc &desc) { return 2 * wordSize + bodySize(desc); }

    static void write(const AEDesc &desc, QByteArray &bytes)
    {
        writeWord(desc.m_type, bytes);
        if (!desc.isContainer()) {
            writeWord(static_cast<quint32>(desc.m_data.size()), bytes);
            bytes.append(desc.m_data);
            return;
        }
        // The size is filled in afterwards: counting it here would go over what is within at every level.
        const qsizetype place = bytes.size();
        writeWord(0, bytes);
        if (desc.m_type == typeAppleEvent)
            writeItems(desc.m_items ? desc.m_items->attributes : List(), true, bytes);
        writeItems(desc.m_items ? desc.m_items->parameters : List(), desc.isRecord(), bytes);
        qToBigEndian(static_cast<quint32>(bytes.size() - place - wordSize), bytes.data() + place);
    }

    explicit AEFlattening(QByteArrayView bytes) : m_rest(bytes) {}

    bool readWhole(AEDesc *result) { return read(result, 0) && m_rest.isEmpty(); }

private:
    static qsizetype bodySize(const AEDesc &desc)
    {
        if (!desc.isContainer())
            return desc.m_data.size();
        qsizetype size = wordSize * (desc.m_type == typeAppleEvent ? 2 : 1);
        if (!desc.m_items)
            return size;
        for (const Item &item : desc.m_items->attributes)
            size += wordSize + sizeOf(item.value);
        for (const Item &item : desc.m_items->parameters)
            size += (desc.isRecord() ? wordSize : 0) + sizeOf(item.value);
        return size;
    }

    static void writeWord(quint32 word, QByteArray &bytes)
    {
        char big[wordSize];
        qToBigEndian(word, big);
        bytes.append(big, wordSize);
    }

    static void writeItems(const List &items, bool withKeywords, QByteArray &bytes)
    {
        writeWord(static_cast<quint32>(items.count()), bytes);
        for (const Item &item : items) {
            if (withKeywords)
                writeWord(item.keyword, bytes);
            write(item.value, bytes);
        }
    }

    bool readWord(quint32 *word)
    {
        if (m_rest.size() < wordSize)
            return false;
        *word = qFromBigEndian<quint32>(m_rest.data());
        m_rest = m_rest.sliced(wordSize);
        return true;
    }

    bool read(AEDesc *result, int depth)
    {
        quint32 type = 0;
        quint32 size = 0;
        if (!readWord(&type) || !readWord(&size) || size > m_rest.size() || (type == typeNull && size > 0))
            return false;
        if (!AEDesc::isContainerType(type)) {
            *result = AEDesc(type, m_rest.first(size).toByteArray());
            m_rest = m_rest.sliced(size);
            return true;
        }
        *result = AEDesc(type);
        const qsizetype end = m_rest.size() - size;
        return depth < AEDesc::maximumDepth && readContainer(*result, depth + 1) && m_rest.size() == end;
    }

    bool readContainer(AEDesc &container, int depth)
    {
        List attributes;
        List parameters;
        if ((container.m_type == typeAppleEvent && !readItems(&attributes, true, depth)) ||
            !readItems(&parameters, container.isRecord(), depth))
            return false;
        if (attributes.count() == 0 && parameters.count() == 0)
            return true;
        container.m_items = new AEDesc::Items;
        for (const List *list : {&attributes, &parameters}) {
            for (const Item &item : *list) {
                if (!container.itemsFor(item.value))
                    return false;
            }
        }
        container.m_items->attributes = attributes;
        container.m_items->parameters = parameters;
        return true;
    }

    bool readItems(List *items, bool withKeywords, int depth)
    {
        quint32 count = 0;
        if (!readWord(&count))
            return false;
        for (quint32 i = 0; i < count; ++i) {
            AEKeyword keyword = 0;
            AEDesc value;
            if ((withKeywords && !readWord(&keyword)) || !read(&value, depth))
                return false;
            if (!withKeywords)
                items->append(value);
            else if (!items->add(keyword, value))
                return false; // two readers could take different ones
        }
        return true;
    }

    QByteArrayView m_rest;
};

OSErr AEDesc::flatten(QByteArray *bytes) const
{
    const qsizetype size = headSize + AEFlattening::sizeOf(*this);
    if (size > maximumFlattenedSize)
        return memFullErr;
    QByteArray flat(head, headSize);
    flat.reserve(size);
    AEFlattening::write(*this, flat);
    *bytes = flat;
    return noErr;
}

OSErr AEDesc::unflatten(const QByteArray &bytes, AEDesc *result)
{
    if (bytes.size() > maximumFlattenedSize || bytes.size() < headSize ||
        !bytes.startsWith(QByteArrayView(head, headSize - 1)))
        return errAECorruptData;
    if (bytes.at(headSize - 1) != head[headSize - 1])
        return errAENewerVersion;
    AEDesc read;
    if (!AEFlattening(QByteArrayView(bytes).sliced(headSize)).readWhole(&read))
        return errAECorruptData;
    *result = std::move(read);
    return noErr;
}
