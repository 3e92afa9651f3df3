// ArrayManipulations: copying, shuffling and swapping parts of Variant
// arrays in place.
#pragma once
#include "frame/Variant.h"

namespace qvt {

class ArrayManipulations final : public Object {
public:
    std::u16string_view className() const noexcept override { return u"ArrayManipulations"; }

    // A copy of vFm with its bounds; False (rTo untouched) unless vFm is an
    // allocated vector.
    bool CopyVariantVector(Variant& rTo, const Variant& vFm) const;
    // Swaps each element of vMinElem to vMaxElem (default LBound, UBound)
    // with one drawn from the whole range.
    bool ShuffleVariantVector(Variant& rVector, Variant vMinElem = Variant::missing(),
                              Variant vMaxElem = Variant::missing()) const;
    // The same on the rows (dimension 2) of a matrix.
    bool ShuffleVariantMatrixRows(Variant& rArray, Variant vMinRow = Variant::missing(),
                                  Variant vMaxRow = Variant::missing()) const;
    void SwapVariantMatrixRows(Variant& rArray, Variant vRow1, Variant vRow2) const;
    // Uniform integers over the closed range vLow to vHigh by Rnd.
    Variant RandomLongWithinRange(Variant vLow, Variant vHigh) const;
    int32_t RandomLongWithinRangeFast(int32_t vLow, int32_t vHigh) const;
};

ArrayManipulations& arrayManipulations() noexcept;

// Swaps rows r1 and r2 (subscripts of dimension 2) of an allocated matrix;
// error 9 outside its bounds.
void swapMatrixRows(SafeArray& matrix, int32_t r1, int32_t r2);

}  // namespace qvt
