// ArrayOthers: questions about whole arrays — atomic elements, uniqueness and
// grouping, lookup tables, element lengths — and printing a matrix as text.
//
// A lookup table is a Variant matrix table(1 To 2, 1 To n): table(1, j) is
// the j-th key and table(2, j) its value.
#pragma once
#include "frame/Variant.h"

namespace qvt {

class ArrayOthers final : public Object {
public:
    std::u16string_view className() const noexcept override { return u"ArrayOthers"; }

    // Depth first, the first element that is not itself an array (the
    // non-object form also passes over objects); Null when there is none.
    // A value that is not an array is its own first element.
    Variant FirstAtomicArrayElement(const Variant& vArray) const;
    Variant FirstAtomicNonObjectArrayElement(const Variant& vArray) const;

    // A matrix (or a vector, as one column) as a text table: rows along
    // dimension 2, cells in their text form (Null blank) joined by
    // vColumnSeparator (default a blank), lines by vRowSeparator (default
    // CR LF). Each column is as wide as its widest line; a cell holding CR LF
    // spreads over as many lines. vJustifyCodes holds one justification code
    // per column (a String, one character each, or an array of code
    // strings); columns without one are left-aligned. Trailing blanks of a
    // line are dropped. Null unless vFm is an allocated vector or matrix.
    Variant FormatVariantMatrix(const Variant& vFm, Variant vColumnSeparator = Variant::missing(),
                                Variant vRowSeparator = Variant::missing(),
                                Variant vJustifyCodes = Variant::missing()) const;

    // Elements 1 to UBound of vFm sorted, each distinct value once in
    // rTo(1, j) with its count in rTo(2, j).
    bool GroupVariantVector(Variant& rTo, const Variant& vFm, Variant vCompare = Variant::missing()) const;
    // Elements 1 to UBound of vFm without the ones equal to the element
    // before them (a repeat further on stays), at 1 to n of rTo; elements
    // below 1 are copied as they are. rTo and vFm may be one variable.
    bool UniqueVariantVector(Variant& rTo, const Variant& vFm, Variant vCompare = Variant::missing()) const;

    // Linear search of table(vLookupColumn, j), j from 1, for a value equal
    // by Variant comparison: table(vReturnColumn, j), or Null. No fix-ups:
    // a bad table raises the runtime's error.
    Variant LookupValue(const Variant& vLookupTable, const Variant& vLookupValue, const Variant& vLookupColumn,
                        const Variant& vReturnColumn) const;
    // A new last key and value (a table is made when rTable is Empty).
    bool LookupAdd(Variant& rTable, Variant vString, Variant vNumber) const;
    // Binary search of keys sorted ascending (binary StrComp of their text).
    Variant LookupSorted(const Variant& vLookupTable, Variant vLookupValue) const;
    // Each character of vValue replaced by the text of its value; a
    // character the table lacks stays as it is.
    Variant LookupMultiple(const Variant& vLookupTable, Variant vValue) const;
    Variant LookupSortedMultiple(const Variant& vLookupTable, Variant vValue) const;
    // A table from "key sep value sep key sep value ..."; an odd last key
    // gets an Empty value.
    bool LookupStringToVariantMatrix(Variant& rLookupTable, Variant vLookupString, Variant vSeparator) const;

    // The longest or shortest text form among elements vMinElem to vMaxElem
    // (default LBound to UBound); 0 for a bad argument.
    int32_t MaxLengthVariantVectorElement(const Variant& vVector, Variant vMinElem = Variant::missing(),
                                          Variant vMaxElem = Variant::missing()) const;
    int32_t MinLengthVariantVectorElement(const Variant& vVector, Variant vMinElem = Variant::missing(),
                                          Variant vMaxElem = Variant::missing()) const;
};

ArrayOthers& arrayOthers() noexcept;

}  // namespace qvt
