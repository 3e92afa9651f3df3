// CharacterArrays: a text as a set or a histogram of characters.
//
// The members that count by code (UsedCharacters, CharactersNotInString,
// CharacterCountsToVariantVector, SortCharactersBinary, MinAsc, MaxAsc) go
// by the ANSI code of each character; the multiset members (intersection,
// difference, unique) compare the characters themselves. Where a member
// takes vCompare, 0 is binary and 1 (or 2) case-insensitive.
#pragma once
#include "frame/Variant.h"

namespace qvt {

class CharacterArrays final : public Object {
public:
    std::u16string_view className() const noexcept override { return u"CharacterArrays"; }

    // rCounts becomes a Variant vector 0 to 255 of the Long count per code.
    bool CharacterCountsToVariantVector(Variant& rCounts, Variant vString) const;
    // The codes 0 to 255 that do not occur, in code order.
    Variant CharactersNotInString(Variant vString) const;
    // vString1 less one occurrence per occurrence in vString2, in order.
    Variant DifferenceCharacters(Variant vString1, Variant vString2) const;
    // The characters of vString1 matched one to one in vString2, in order.
    Variant IntersectCharacters(Variant vString1, Variant vString2) const;
    // A vector of codes (0 to 255) to its characters; Null if one is not a code.
    Variant IntegerVectorToStringAsc(Variant vVector) const;
    // rVector becomes an Integer vector 1 to Len of the codes.
    bool StringAscToIntegerVector(Variant& rVector, Variant vString) const;
    // A permutation written as characters from MinAsc up, inverted; Null if
    // the text is not a permutation.
    Variant InversePermutation(Variant vString) const;
    // The characters with vSeparator (default ",") between them.
    Variant JoinStringCharacters(Variant vString, Variant vSeparator) const;
    Variant KeepCharacters(Variant vString, Variant vCharacters, Variant vCompare) const;
    Variant StripCharacters(Variant vString, Variant vCharacters, Variant vCompare) const;
    // Bounds are characters or codes, both inclusive.
    Variant KeepRangeOfCharacters(Variant vString, Variant vLower, Variant vUpper) const;
    Variant StripRangeOfCharacters(Variant vString, Variant vLower, Variant vUpper) const;
    Variant MaxAsc(Variant vString) const;
    Variant MinAsc(Variant vString) const;
    Variant ShuffleString(Variant vString) const;
    Variant SortCharacters(Variant vString, Variant vCompare) const;
    Variant SortCharactersBinary(Variant vString) const;
    // All characters, the most frequent first, equal counts in code order.
    Variant SortCharactersByFrequency(Variant vString) const;
    Variant SortUsedCharacters(Variant vString, Variant vCompare) const;
    // First occurrences in first-seen order; used codes in code order.
    Variant UniqueCharacters(Variant vString) const;
    Variant UsedCharacters(Variant vString) const;

private:
    Variant keepOrStrip(Variant& vString, Variant& vCharacters, Variant& vCompare, bool keep) const;
    Variant keepOrStripRange(Variant& vString, const Variant& vLower, const Variant& vUpper, bool keep) const;
    Variant multiset(Variant& vString1, Variant& vString2, bool intersect) const;
    Variant extremeAsc(Variant& vString, bool max) const;
};

CharacterArrays& characterArrays() noexcept;

}  // namespace qvt
