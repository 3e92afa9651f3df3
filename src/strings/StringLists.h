// StringLists: lists of fixed-width segments inside one String, each item
// padded with blanks to the width. Segments are numbered from 1.
#pragma once
#include "frame/Variant.h"

namespace qvt {

class StringLists final : public Object {
public:
    std::u16string_view className() const noexcept override { return u"StringLists"; }

    // The number of the segment equal to vFind (padded with blanks to
    // vLength) under vCompare, or 0. The sorted form is a binary search and
    // needs a list sorted under the same vCompare.
    Variant SearchStringSegments(Variant vString, Variant vFind, Variant vLength, Variant vCompare) const;
    Variant SearchSortedStringSegments(Variant vString, Variant vFind, Variant vLength, Variant vCompare) const;
    // Whole segments shuffled or sorted (a cut-short last one stays last).
    // The sort key runs from vKeyColumn (default 1) to the end of a segment.
    Variant ShuffleStringSegments(Variant vString, Variant vLength) const;
    Variant SortStringSegments(Variant vString, Variant vLength, Variant vCompare, Variant vKeyColumn) const;
    // rVector becomes a Variant vector 0 to count - 1 of the segments with
    // their padding removed.
    bool StringSegmentsToVariantVector(Variant& rVector, Variant vString, Variant vLength) const;
    // Segment vX of width vY (default 1); Null outside the list.
    Variant StringSegmentXOfLengthY(Variant vString, Variant vX, Variant vY) const;
    // The parts of a delimited text (vSeparator default ","), each padded to
    // the longest; rLength receives that width.
    Variant StringToStringSegments(Variant vString, Variant vSeparator, Variant vCompare, Variant& rLength) const;
};

StringLists& stringLists() noexcept;

}  // namespace qvt
