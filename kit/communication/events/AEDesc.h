// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/communication/events/AECodes.h"

#include <QByteArray>
#include <QList>
#include <QSharedDataPointer>

#include <optional>
#include <type_traits>

/// A descriptor: a type of four characters, and data. The bare form of Apple events and of all that is in
/// them.
///
/// The type says what the data is. A list (typeAEList) holds descriptors; a record (typeAERecord) holds
/// descriptors with keywords, its parameters; an Apple event (typeAppleEvent) is a record that has attributes
/// besides. Everything else holds bytes. Numbers are in the machine's byte order: events never leave it.
///
/// OWNERSHIP: a value. A copy is independent of its original and costs nothing until one of them changes.
/// THREADING: as other values.
class DOZELYKIT_EXPORT AEDesc
{
public:
    /// Containers within each other: whoever reads or destroys them does so recursively.
    static constexpr int maximumDepth = 32;
    /// Of the flattened form, in bytes: what fits into one message between processes, with room for its head.
    static constexpr qsizetype maximumFlattenedSize = (4 << 20) - 4096;

    /// The null descriptor: no data.
    AEDesc();
    /// A descriptor over these bytes; for the types that are containers an empty one, for typeNull the null
    /// descriptor.
    explicit AEDesc(DescType type, const QByteArray &data = {});
    ~AEDesc();
    AEDesc(const AEDesc &);
    AEDesc &operator=(const AEDesc &);
    AEDesc(AEDesc &&) noexcept;
    AEDesc &operator=(AEDesc &&) noexcept;

    /// A descriptor over the bytes of a number or a code.
    template<class Value>
    static AEDesc of(DescType type, Value value)
    {
        static_assert(std::is_arithmetic_v<Value>);
        return AEDesc(type, QByteArray(reinterpret_cast<const char *>(&value), sizeof value));
    }

    DescType descriptorType() const { return m_type; }

    /// False for the null descriptor alone.
    bool hasData() const { return m_type != typeNull; }

    /// The bytes; empty for containers.
    QByteArray data() const { return m_data; }

    /// The number or code at the head of the data; absent when that is too short. What stands behind it does
    /// not count: an 8-byte value under a 4-byte type is read as its first four bytes, as the machine would.
    template<class Value>
    std::optional<Value> value() const
    {
        static_assert(std::is_arithmetic_v<Value>);
        Value value{};
        return copyHead(&value, sizeof value) ? std::optional<Value>(value) : std::nullopt;
    }

    static bool isContainerType(DescType type);
    bool isContainer() const { return isContainerType(m_type); }
    /// A record or an Apple event.
    bool isRecord() const { return m_type == typeAERecord || m_type == typeAppleEvent; }

    /// The elements of a list, or the parameters of a record in the order in which they were put.
    qsizetype count() const;
    AEDesc at(qsizetype index) const;
    AEKeyword keywordAt(qsizetype index) const; ///< Of a record's parameter.

    /// errAEWrongDataType for what is no list; errAEIllegalIndex for nesting beyond maximumDepth.
    OSErr append(const AEDesc &element);

    /// Absent when there is none. Setting replaces. errAEWrongDataType for what is no record or, with an
    /// attribute, no Apple event; errAEIllegalIndex for nesting beyond maximumDepth. Getting and setting take
    /// the same time however many there are; removing takes as much longer as there are more.
    std::optional<AEDesc> parameter(AEKeyword keyword) const;
    OSErr setParameter(AEKeyword keyword, const AEDesc &value);
    void removeParameter(AEKeyword keyword);
    std::optional<AEDesc> attribute(AEKeyword keyword) const;
    OSErr setAttribute(AEKeyword keyword, const AEDesc &value);
    void removeAttribute(AEKeyword keyword);

    /// The same as another type, itself for its own type and for typeWildCard; absent when there is no such
    /// coercion or the value does not fit. docs/apple-events.md lists the coercions.
    std::optional<AEDesc> coerced(DescType type) const;

    /// The form in which descriptors travel (docs/apple-events.md). flatten: memFullErr beyond
    /// maximumFlattenedSize. unflatten: errAECorruptData for anything that flatten does not write,
    /// errAENewerVersion for another version of it; `result` is changed on success alone.
    OSErr flatten(QByteArray *bytes) const;
    static OSErr unflatten(const QByteArray &bytes, AEDesc *result);

    bool operator==(const AEDesc &other) const;

private:
    struct Items;
    friend class AEFlattening;
    Items *itemsFor(const AEDesc &value);
    bool copyHead(void *to, qsizetype size) const;

    DescType m_type = typeNull;
    QByteArray m_data;
    QSharedDataPointer<Items> m_items; // of a container that has any
};

/// The event itself, and a reply.
using AppleEvent = AEDesc;
