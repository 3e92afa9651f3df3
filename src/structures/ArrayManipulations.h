// ArrayManipulations: redimensioning, copying, shuffling, swapping and
// editing Variant arrays in place.
//
// Members return True on success and False on a bad argument (an array of
// the wrong shape, a bound that is not a number or lies outside the array);
// an array that fails leaves the caller's variable as it was. Optional
// element ranges default to the array's own bounds. Vectors are edited
// whatever their lower bound; matrices are array(column, row).
#pragma once
#include "frame/Variant.h"

namespace qvt {

class ArrayManipulations final : public Object {
public:
    std::u16string_view className() const noexcept override { return u"ArrayManipulations"; }

    // New bounds for every dimension (each defaults to the present one);
    // elements whose subscripts lie in both shapes are kept, new ones start
    // as the element type's zero value. An array not yet dimensioned takes
    // the bounds given (all of them needed).
    bool ReDimPreserveVariantVector(Variant& rVector, Variant vLBound1 = Variant::missing(),
                                    Variant vUBound1 = Variant::missing()) const;
    bool ReDimPreserveVariantMatrix(Variant& rMatrix, Variant vLBound1 = Variant::missing(),
                                    Variant vUBound1 = Variant::missing(), Variant vLBound2 = Variant::missing(),
                                    Variant vUBound2 = Variant::missing()) const;
    bool ReDimPreserveVariantCube(Variant& rCube, Variant vLBound1 = Variant::missing(),
                                  Variant vUBound1 = Variant::missing(), Variant vLBound2 = Variant::missing(),
                                  Variant vUBound2 = Variant::missing(), Variant vLBound3 = Variant::missing(),
                                  Variant vUBound3 = Variant::missing()) const;

    // A copy of vFm with its bounds; False (rTo untouched) unless vFm is an
    // allocated array of the named dimensions. CopyVariantArray takes one to
    // three. The Direct twins copy without the test.
    bool CopyVariantVector(Variant& rTo, const Variant& vFm) const;
    bool CopyVariantMatrix(Variant& rTo, const Variant& vFm) const;
    bool CopyVariantCube(Variant& rTo, const Variant& vFm) const;
    bool CopyVariantArray(Variant& rTo, const Variant& vFm) const;
    bool CopyVariantVectorDirect(Variant& rTo, const Variant& vFm) const;
    bool CopyVariantMatrixDirect(Variant& rTo, const Variant& vFm) const;
    bool CopyVariantCubeDirect(Variant& rTo, const Variant& vFm) const;
    bool CopyVariantArrayDirect(Variant& rTo, const Variant& vFm) const;

    // A copy whose bounds are vFm's moved by the offset (default 1: the
    // usual step from a 0-based array to a 1-based one).
    bool OffsetVariantVector(Variant& rTo, const Variant& vFm, Variant vOffset = Variant::missing()) const;
    bool OffsetVariantMatrix(Variant& rTo, const Variant& vFm, Variant vOffset1 = Variant::missing(),
                             Variant vOffset2 = Variant::missing()) const;
    // Element i of vFm goes to i + offset (default 0) of rTo, wherever that
    // lies within rTo; rTo keeps its bounds.
    bool OverlayVariantVector(Variant& rTo, const Variant& vFm, Variant vOffset = Variant::missing()) const;
    bool OverlayVariantMatrix(Variant& rTo, const Variant& vFm, Variant vOffset1 = Variant::missing(),
                              Variant vOffset2 = Variant::missing()) const;

    bool ReverseVariantVector(Variant& rVector, Variant vMinElem = Variant::missing(),
                              Variant vMaxElem = Variant::missing()) const;

    // Sets one element, first growing the array (ReDim Preserve) so that it
    // reaches the subscripts; an argument not yet dimensioned starts as that
    // element alone.
    bool SetVariantVector(Variant& rIn, Variant v1Dim, const Variant& vValue) const;
    bool SetVariantMatrix(Variant& rIn, Variant v1Dim, Variant v2Dim, const Variant& vValue) const;
    bool SetVariantCube(Variant& rIn, Variant v1Dim, Variant v2Dim, Variant v3Dim, const Variant& vValue) const;

    // Each element of the range swapped with one drawn over the whole range
    // (not the textbook shuffle, on purpose: the sorts rely on this one).
    bool ShuffleVariantVector(Variant& rVector, Variant vMinElem = Variant::missing(),
                              Variant vMaxElem = Variant::missing()) const;
    // Every cell of the ranges swapped with a random cell of them.
    bool ShuffleVariantMatrix(Variant& rArray, Variant vMinColumn = Variant::missing(),
                              Variant vMaxColumn = Variant::missing(), Variant vMinRow = Variant::missing(),
                              Variant vMaxRow = Variant::missing()) const;
    // Whole rows (dimension 2) or whole columns (dimension 1).
    bool ShuffleVariantMatrixRows(Variant& rArray, Variant vMinRow = Variant::missing(),
                                  Variant vMaxRow = Variant::missing()) const;
    bool ShuffleVariantMatrixColumns(Variant& rArray, Variant vMinColumn = Variant::missing(),
                                     Variant vMaxColumn = Variant::missing()) const;
    bool SwapVariantMatrixRows(Variant& rArray, Variant vRow1, Variant vRow2) const;
    bool SwapVariantMatrixColumns(Variant& rArray, Variant vColumn1, Variant vColumn2) const;
    // rTo(r, c) = vFm(c, r), the bounds exchanged with them.
    bool TransposeVariantMatrix(Variant& rTo, const Variant& vFm) const;

    // Elements above the index move down one; the freed last place is
    // emptied, or with vContractArray cut off (never the only element).
    bool DeleteVariantVectorElement(Variant& rVector, Variant vElementNum, Variant vContractArray) const;
    // The same for every element equal to vValue (EqualLikeDataType under
    // vCompare); False when there is none.
    bool DeleteVariantVectorElementByContent(Variant& rVector, const Variant& vValue, Variant vCompare,
                                             Variant vContractArray) const;
    // Elements from the index move up one; the last falls off unless
    // vExpandArray grows the array (which also allows UBound + 1).
    bool InsertVariantVectorElement(Variant& rVector, Variant vElementNum, const Variant& vValue,
                                    Variant vExpandArray) const;
    // Down: each element one place up, the last to the first. Up: back.
    bool RotateVariantVectorDown(Variant& rArray, Variant vLowerElem = Variant::missing(),
                                 Variant vUpperElem = Variant::missing()) const;
    bool RotateVariantVectorUp(Variant& rArray, Variant vLowerElem = Variant::missing(),
                               Variant vUpperElem = Variant::missing()) const;

    // Uniform integers over the closed range vLow to vHigh by Rnd.
    Variant RandomLongWithinRange(Variant vLow, Variant vHigh) const;
    int32_t RandomLongWithinRangeFast(int32_t vLow, int32_t vHigh) const;
};

ArrayManipulations& arrayManipulations() noexcept;

// Swaps rows r1 and r2 (subscripts of dimension 2) of an allocated matrix;
// error 9 outside its bounds.
void swapMatrixRows(SafeArray& matrix, int32_t r1, int32_t r2);

}  // namespace qvt
