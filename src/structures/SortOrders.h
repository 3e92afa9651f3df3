// SortOrders: collating sequences as data.
//
// A collating sequence is a 256-character String: at place c + 1 stands the
// character whose Asc is the rank of ANSI code c. SortOrderString finds the
// sequence the host's StrComp follows under a compare mode; the sequences
// and the list of valid compare modes are worked out once per instance and
// kept.
#pragma once
#include <utility>
#include <vector>

#include "frame/Variant.h"

namespace qvt {

class SortOrders final : public Object {
public:
    std::u16string_view className() const noexcept override { return u"SortOrders"; }

    // raintPositions(0 To 255) of Integer: the 1-based place of each code
    // in vString (first occurrence wins), then the codes not named in code
    // order after Len(vString).
    bool CharacterPositionsArray(Variant& raintPositions, Variant vString) const;
    Variant IsStringSorted(Variant vString, Variant vCompare = Variant::missing()) const;
    Variant IsStringSortedBinary(Variant vString) const;
    // The characters of vSortData reordered as vSortKeys sorts under the
    // sequence vSortOrder (default every character in code order).
    Variant SortCharactersIndirect(Variant vSortKeys, Variant vSortData,
                                   Variant vSortOrder = Variant::missing()) const;
    String SortOrderMatchingCharacters(Variant vCompare = Variant::missing(),
                                       Variant vIsMax = Variant::missing()) const;
    String SortOrderMatchingCharacterPairs(Variant vCompare = Variant::missing()) const;
    String SortOrderNumbers(Variant vSeparator = Variant::missing()) const;
    String SortOrderString(Variant vCompare = Variant::missing()) const;

private:
    // The 256 characters sorted under a compare mode, each with its rank
    // (equal characters share one), worked out once per mode.
    struct Collation {
        int32_t compare;
        String sorted;               // every character, in collating order
        std::vector<int32_t> ranks;  // rank of each place of `sorted`
        String sequence;             // the collating sequence
        String lowest, highest;      // matching characters by code
    };
    const Collation& collation(int32_t compare) const;

    mutable std::vector<Collation> collations_;
    mutable String numbers_;  // blank-separated; empty until first asked
};

SortOrders& sortOrders() noexcept;

}  // namespace qvt
