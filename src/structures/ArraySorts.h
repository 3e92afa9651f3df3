// ArraySorts: in-place sorts of Variant vectors and of the rows of Variant
// matrices.
//
// Every sort is one algorithm: a non-recursive Quick Sort on elements (or
// rows) 1 to UBound, pivot the last element of the range, ranges kept on an
// explicit stack of Longs that doubles when full, the smaller side worked
// first. Values are ordered by CompareLikeDataTypeFast: numbers by value,
// every number before every String, Strings by StrComp under the compare
// mode. A matrix is array(column, row); key columns are subscripts of
// dimension 1, most significant first.
//
// Unless vStable is True the input is shuffled first, so that presorted
// input does not meet the last-element pivot at its worst. The keys-only
// sort breaks ties by row number, so it never needs the shuffle and keeps
// equal rows in their order.
#pragma once
#include "frame/Variant.h"

namespace qvt {

class ArraySorts final : public Object {
public:
    std::u16string_view className() const noexcept override { return u"ArraySorts"; }

    bool SortVariantVector(Variant& rArray, Variant vCompare = Variant::missing(),
                           Variant vStable = Variant::missing()) const;
    bool SortVariantMatrixRows(Variant& rArray, Variant vCompare = Variant::missing(),
                               const Variant& vKeyColumns = Variant::missing(), Variant vStable = Variant::missing()) const;
    bool SortVariantMatrixRowsKeysOnly(Variant& rKeys, const Variant& vArray, Variant vCompare,
                                       const Variant& vKeyColumns) const;
    // The same sort; by contract the key values are Strings and numbers.
    bool SortVariantMatrixRowsKeysOnlyFast(Variant& rKeys, const Variant& vArray, Variant vCompare,
                                           const Variant& vKeyColumns) const;
    bool SortVariantMatrixRowsToKeyOrder(Variant& rArray, Variant& rKeys, Variant vLower = Variant::missing(),
                                         Variant vUpper = Variant::missing()) const;
    bool SortGenerateKeys(Variant& rKeys, Variant vLower = Variant::missing(),
                          Variant vUpper = Variant::missing()) const;
    bool SortGenerateReverseKeys(Variant& rRevs, const Variant& vKeys, Variant vLower = Variant::missing(),
                                 Variant vUpper = Variant::missing()) const;
    bool SortUniqueVariantVector(Variant& rTo, const Variant& vFm, Variant vCompare = Variant::missing()) const;
    bool IsVariantVectorSorted(const Variant& vValues, Variant vCompare = Variant::missing()) const;
    // One partition step on vLower to vUpper, pivot element vUpper: the
    // pivot's final place (Null when a bound is not a number).
    Variant PartitionVariantVector(Variant& rArray, Variant vLower, Variant vUpper,
                                   Variant vCompare = Variant::missing()) const;
};

ArraySorts& arraySorts() noexcept;

}  // namespace qvt
