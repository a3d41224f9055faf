// SPDX-License-Identifier: MIT
#pragma once

#include "DozelyKit/communication/events/AEDesc.h"

#include <QHash>
#include <QSharedData>

/// What is in a container.
struct AEDesc::Items : QSharedData {
    /// An element of a list has the keyword 0.
    struct Item {
        AEKeyword keyword;
        AEDesc value;
        bool operator==(const Item &) const = default;
    };

    /// Items in the order in which they were put. Those with keywords are found in one step each, however
    /// many there are; a list is either all with or all without.
    class List
    {
    public:
        qsizetype count() const { return m_items.size(); }
        const Item &at(qsizetype index) const { return m_items.at(index); }
        auto begin() const { return m_items.cbegin(); }
        auto end() const { return m_items.cend(); }

        /// Null when there is none.
        const AEDesc *find(AEKeyword keyword) const;

        /// An element of a list.
        void append(const AEDesc &value) { m_items.append({0, value}); }
        /// Behind the others; false when the keyword is taken.
        bool add(AEKeyword keyword, const AEDesc &value);
        /// In the place of the one with that keyword, or behind the others.
        void put(AEKeyword keyword, const AEDesc &value);
        /// As many steps as there are items.
        void remove(AEKeyword keyword);

        bool operator==(const List &other) const { return m_items == other.m_items; }

    private:
        qsizetype placeOf(AEKeyword keyword) const;
        void note(qsizetype from);

        QList<Item> m_items;
        /// Where each keyword stands. Empty until there were more than a few items, which are faster looked
        /// through, and again when there are none. Qt mixes a number that each process draws at random into
        /// its hashes: nobody can choose keywords that meet there.
        QHash<AEKeyword, qsizetype> m_places;
    };

    List attributes;
    List parameters;
    int depth = 1; ///< Containers within each other from this one on; never less than there are.
};
