// Conversions between text and arrays.
#pragma once
#include <vector>

#include "frame/Variant.h"

namespace qvt {

// The splitting loop of StringToVariantVector, shared by every member that
// splits a text: the parts of `line` between the occurrences of `separator`,
// found left to right by InStr under `compare`. The text after the last
// separator is the last part, so an empty line gives one empty part and a
// trailing separator an empty last part. An empty separator gives the whole
// line as the one part. StringToVariantVector stores these at 0 to n - 1.
std::vector<String> splitParts(StringView line, StringView separator, int32_t compare);

// The split for members that walk elements 1 to UBound: a Variant vector
// with the parts at subscripts 1 to n and subscript 0 left Empty.
Variant splitToOneBased(StringView line, StringView separator, int32_t compare);

}  // namespace qvt
