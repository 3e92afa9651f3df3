// Fixed-width segments of one String: the storage of the segment lists, and
// (with width 1) the characters of a text. The sorting, shuffling and
// searching of both run here once.
//
// Segment i (0-based) is the `width` units from i * width; a last segment
// that is cut short takes part in searches but stays where it is when the
// list is sorted or shuffled.
#pragma once
#include <cstdint>

#include "frame/Variant.h"

namespace qvt::segments {

// Whole segments in s.
inline size_t wholeCount(StringView s, size_t width) noexcept { return s.size() / width; }
// Segments in s, a cut-short last one included.
inline size_t count(StringView s, size_t width) noexcept { return (s.size() + width - 1) / width; }
inline StringView at(StringView s, size_t width, size_t i) noexcept { return s.substr(i * width, width); }


// Swaps each whole segment with one drawn at random over the whole range.
void shuffle(String& s, size_t width);

// Shell sort (h = 3h + 1) of the whole segments by StrComp under `compare`
// of the segment from `keyColumn` (0-based) on.
void sort(String& s, size_t width, size_t keyColumn, int32_t compare);

// 1-based number of the first segment equal to `find` (padded with blanks to
// the width) under `compare`, or 0. The sorted form is a binary search.
int32_t search(StringView s, size_t width, StringView find, int32_t compare);
int32_t searchSorted(StringView s, size_t width, StringView find, int32_t compare);

}  // namespace qvt::segments
