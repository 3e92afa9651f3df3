#include "structures/ArrayManipulations.h"

#include <algorithm>
#include <cmath>

#include "automation/TypeLibrary.h"
#include "frame/Comparisons.h"
#include "frame/Error.h"
#include "frame/FixUps.h"
#include "frame/Frame.h"
#include "frame/Random.h"
#include "structures/ArrayShapes.h"

namespace qvt {

using shapes::isArrayOf;
using shapes::isMatrix;
using shapes::isVector;
using shapes::rangeWithin;
using shapes::within;

namespace {

// A new array of the element type and bounds, holding every element of `from`
// whose subscripts lie within both shapes (same dimension count).
Variant reshaped(const SafeArray& from, VarType elementType, const std::vector<ArrayBound>& bounds) {
    Variant out = Variant::array(elementType, bounds);
    if (!from.allocated() || size_t(from.dimensions()) != bounds.size()) return out;
    SafeArray& to = out.arrayForWrite();
    const size_t n = bounds.size();
    std::vector<ArrayBound> common(n);
    for (size_t k = 0; k < n; ++k) {
        common[k] = {std::max(bounds[k].lower, from.bounds()[k].lower), std::min(bounds[k].upper, from.bounds()[k].upper)};
        if (common[k].lower > common[k].upper) return out;
    }
    std::vector<int32_t> at(n);
    for (size_t k = 0; k < n; ++k) at[k] = common[k].lower;
    for (;;) {
        to.at(at) = from.at(at);
        size_t k = 0;
        while (k < n && ++at[k] > common[k].upper) at[k] = common[k].lower, ++k;
        if (k == n) return out;
    }
}

}  // namespace

void shapes::reshape(Variant& r, const std::vector<ArrayBound>& bounds) {
    const std::vector<ArrayBound>& now = r.asArray().bounds();
    bool tailOnly = now.size() == bounds.size() && now.back().lower == bounds.back().lower;
    for (size_t k = 0; tailOnly && k + 1 < bounds.size(); ++k)
        tailOnly = now[k].lower == bounds[k].lower && now[k].upper == bounds[k].upper;
    if (tailOnly) r.arrayForWrite().redimPreserve(bounds);
    else r = reshaped(r.asArray(), r.elementType(), bounds);
}

namespace {

const FixUps& fx() { return fixUps(); }

}  // namespace

bool shapes::rangeWithin(Variant& vMin, Variant& vMax, const ArrayBound& b, int32_t& low, int32_t& high) {
    fx().FixUpVariantToLongMandSub(vMin, Variant(b.lower));
    fx().FixUpVariantToLongMandSub(vMax, Variant(b.upper));
    low = vMin.asLong();
    high = vMax.asLong();
    return low <= high && within(b, low) && within(b, high);
}

namespace {

// A mandatory subscript of dimension b.
bool indexWithin(Variant& vIndex, const ArrayBound& b, int32_t& index) {
    if (!fx().FixUpVariantToLongMandFn(vIndex) || !within(b, vIndex.asLong())) return false;
    index = vIndex.asLong();
    return true;
}

// Runs edit(first, last) on the elements vMin to vMax of a vector (by
// default all of them); False for a bad vector or range.
template <class Edit>
bool editRange(Variant& r, Variant& vMin, Variant& vMax, Edit edit) {
    int32_t low = 0, high = 0;
    if (!isVector(r) || !rangeWithin(vMin, vMax, r.asArray().bounds()[0], low, high)) return false;
    const int32_t lower = r.asArray().lbound();
    auto e = r.arrayForWrite().elements();
    edit(e.begin() + (low - lower), e.begin() + (high - lower) + 1);
    return true;
}

// ReDim Preserve of every dimension: a pair of optional bounds per dimension.
bool redimPreserve(Variant& r, std::initializer_list<Variant*> pairs) {
    const size_t n = pairs.size() / 2;
    const bool allocated = r.isArray() && r.asArray().allocated();
    if (allocated ? size_t(r.asArray().dimensions()) != n : !(r.isArray() || r.isEmpty())) return false;
    std::vector<ArrayBound> bounds(n);
    auto p = pairs.begin();
    for (size_t k = 0; k < n; ++k) {
        Variant& lower = **p++;
        Variant& upper = **p++;
        if (allocated) {
            const ArrayBound& now = r.asArray().bounds()[k];
            fx().FixUpVariantToLongMandSub(lower, Variant(now.lower));
            fx().FixUpVariantToLongMandSub(upper, Variant(now.upper));
        } else if (!fx().FixUpVariantToLongMandFn(lower) || !fx().FixUpVariantToLongMandFn(upper)) {
            return false;
        }
        bounds[k] = {lower.asLong(), upper.asLong()};
        if (bounds[k].lower > bounds[k].upper) return false;
    }
    if (allocated) shapes::reshape(r, bounds);
    else r = Variant::array(r.isArray() ? r.elementType() : vbVariant, bounds);
    return true;
}

// Sets an element at the subscripts, growing the array to reach them.
bool setGrowing(Variant& r, const std::vector<int32_t>& at, const Variant& value) {
    const size_t n = at.size();
    if (r.isArray() && r.asArray().allocated()) {
        const SafeArray& a = r.asArray();
        if (size_t(a.dimensions()) != n) return false;
        std::vector<ArrayBound> bounds = a.bounds();
        bool grow = false;
        for (size_t k = 0; k < n; ++k) {
            if (at[k] < bounds[k].lower) bounds[k].lower = at[k], grow = true;
            if (at[k] > bounds[k].upper) bounds[k].upper = at[k], grow = true;
        }
        if (grow) shapes::reshape(r, bounds);
    } else if (r.isArray() || r.isEmpty()) {
        std::vector<ArrayBound> bounds;
        for (int32_t i : at) bounds.push_back({i, i});
        r = Variant::array(r.isArray() ? r.elementType() : vbVariant, bounds);
    } else {
        return false;
    }
    r.arrayForWrite().set(at, value);
    return true;
}

// Removes the element at offset k: the rest move down, the last place is
// emptied, or cut off when contracting (never the only one).
void removeAt(Variant& r, size_t k, bool contract) {
    const ArrayBound b = r.asArray().bounds()[0];
    if (contract && b.count() == 1) return;
    SafeArray& a = r.arrayForWrite();
    auto e = a.elements();
    std::rotate(e.begin() + std::ptrdiff_t(k), e.begin() + std::ptrdiff_t(k) + 1, e.end());
    e.back() = a.zeroElement();
    if (contract) shapes::reshape(r, {{b.lower, b.upper - 1}});
}

// A copy of an array with each dimension's bounds moved by an offset.
bool offsetCopy(Variant& rTo, const Variant& vFm, std::initializer_list<Variant*> offsets) {
    if (!isArrayOf(vFm, int(offsets.size()))) return false;
    std::vector<ArrayBound> bounds = vFm.asArray().bounds();
    size_t k = 0;
    for (Variant* off : offsets) {
        fx().FixUpVariantToLongMandSub(*off, Variant(int32_t(1)));
        const int64_t lower = int64_t(bounds[k].lower) + off->asLong(), upper = int64_t(bounds[k].upper) + off->asLong();
        if (lower < INT32_MIN || upper > INT32_MAX) return false;
        bounds[k++] = {int32_t(lower), int32_t(upper)};
    }
    Variant out = Variant::array(vFm.elementType(), bounds);
    auto from = vFm.asArray().elements();
    std::copy(from.begin(), from.end(), out.arrayForWrite().elements().begin());
    rTo = std::move(out);
    return true;
}

bool copyOf(Variant& rTo, const Variant& vFm, int dimensions) {
    if (!isArrayOf(vFm, dimensions)) return false;
    rTo = vFm;
    return true;
}

}  // namespace

// --- redimensioning and copies ------------------------------------------------

bool ArrayManipulations::ReDimPreserveVariantVector(Variant& rVector, Variant vLBound1, Variant vUBound1) const {
    return redimPreserve(rVector, {&vLBound1, &vUBound1});
}

bool ArrayManipulations::ReDimPreserveVariantMatrix(Variant& rMatrix, Variant vLBound1, Variant vUBound1,
                                                    Variant vLBound2, Variant vUBound2) const {
    return redimPreserve(rMatrix, {&vLBound1, &vUBound1, &vLBound2, &vUBound2});
}

bool ArrayManipulations::ReDimPreserveVariantCube(Variant& rCube, Variant vLBound1, Variant vUBound1, Variant vLBound2,
                                                  Variant vUBound2, Variant vLBound3, Variant vUBound3) const {
    return redimPreserve(rCube, {&vLBound1, &vUBound1, &vLBound2, &vUBound2, &vLBound3, &vUBound3});
}

bool ArrayManipulations::CopyVariantVector(Variant& rTo, const Variant& vFm) const { return copyOf(rTo, vFm, 1); }
bool ArrayManipulations::CopyVariantMatrix(Variant& rTo, const Variant& vFm) const { return copyOf(rTo, vFm, 2); }
bool ArrayManipulations::CopyVariantCube(Variant& rTo, const Variant& vFm) const { return copyOf(rTo, vFm, 3); }

bool ArrayManipulations::CopyVariantArray(Variant& rTo, const Variant& vFm) const {
    return vFm.isArray() && vFm.asArray().dimensions() >= 1 && vFm.asArray().dimensions() <= 3 &&
           copyOf(rTo, vFm, vFm.asArray().dimensions());
}

bool ArrayManipulations::CopyVariantVectorDirect(Variant& rTo, const Variant& vFm) const { return CopyVariantArrayDirect(rTo, vFm); }
bool ArrayManipulations::CopyVariantMatrixDirect(Variant& rTo, const Variant& vFm) const { return CopyVariantArrayDirect(rTo, vFm); }
bool ArrayManipulations::CopyVariantCubeDirect(Variant& rTo, const Variant& vFm) const { return CopyVariantArrayDirect(rTo, vFm); }

bool ArrayManipulations::CopyVariantArrayDirect(Variant& rTo, const Variant& vFm) const {
    rTo = vFm;
    return true;
}

bool ArrayManipulations::OffsetVariantVector(Variant& rTo, const Variant& vFm, Variant vOffset) const {
    return offsetCopy(rTo, vFm, {&vOffset});
}

bool ArrayManipulations::OffsetVariantMatrix(Variant& rTo, const Variant& vFm, Variant vOffset1, Variant vOffset2) const {
    return offsetCopy(rTo, vFm, {&vOffset1, &vOffset2});
}

bool ArrayManipulations::OverlayVariantVector(Variant& rTo, const Variant& vFm, Variant vOffset) const {
    if (!isVector(rTo) || !isVector(vFm)) return false;
    fx().FixUpVariantToLongMandSub(vOffset, Variant(int32_t(0)));
    const int64_t off = vOffset.asLong();
    const SafeArray& from = vFm.asArray();
    const ArrayBound to = rTo.asArray().bounds()[0];
    SafeArray& a = rTo.arrayForWrite();
    for (int32_t i = from.lbound(); i <= from.ubound(); ++i)
        if (within(to, i + off)) a.set(int32_t(i + off), from.at(i));
    return true;
}

bool ArrayManipulations::OverlayVariantMatrix(Variant& rTo, const Variant& vFm, Variant vOffset1, Variant vOffset2) const {
    if (!isMatrix(rTo) || !isMatrix(vFm)) return false;
    fx().FixUpVariantToLongMandSub(vOffset1, Variant(int32_t(0)));
    fx().FixUpVariantToLongMandSub(vOffset2, Variant(int32_t(0)));
    const int64_t off1 = vOffset1.asLong(), off2 = vOffset2.asLong();
    const SafeArray& from = vFm.asArray();
    const std::vector<ArrayBound> to = rTo.asArray().bounds();
    SafeArray& a = rTo.arrayForWrite();
    for (int32_t r = from.lbound(2); r <= from.ubound(2); ++r)
        for (int32_t c = from.lbound(1); c <= from.ubound(1); ++c)
            if (within(to[0], c + off1) && within(to[1], r + off2)) {
                const int32_t at[2] = {int32_t(c + off1), int32_t(r + off2)};
                a.set(at, shapes::cell(from, c, r));
            }
    return true;
}

bool ArrayManipulations::ReverseVariantVector(Variant& rVector, Variant vMinElem, Variant vMaxElem) const {
    return editRange(rVector, vMinElem, vMaxElem, [](auto first, auto last) { std::reverse(first, last); });
}

// --- setting with growth -----------------------------------------------------------

bool ArrayManipulations::SetVariantVector(Variant& rIn, Variant v1Dim, const Variant& vValue) const {
    if (!fx().FixUpVariantToLongMandFn(v1Dim)) return false;
    return setGrowing(rIn, {v1Dim.asLong()}, vValue);
}

bool ArrayManipulations::SetVariantMatrix(Variant& rIn, Variant v1Dim, Variant v2Dim, const Variant& vValue) const {
    if (!fx().FixUpVariantToLongMandFn(v1Dim) || !fx().FixUpVariantToLongMandFn(v2Dim)) return false;
    return setGrowing(rIn, {v1Dim.asLong(), v2Dim.asLong()}, vValue);
}

bool ArrayManipulations::SetVariantCube(Variant& rIn, Variant v1Dim, Variant v2Dim, Variant v3Dim,
                                        const Variant& vValue) const {
    if (!fx().FixUpVariantToLongMandFn(v1Dim) || !fx().FixUpVariantToLongMandFn(v2Dim) ||
        !fx().FixUpVariantToLongMandFn(v3Dim))
        return false;
    return setGrowing(rIn, {v1Dim.asLong(), v2Dim.asLong(), v3Dim.asLong()}, vValue);
}

// --- shuffles and swaps ---------------------------------------------------------------

bool ArrayManipulations::ShuffleVariantVector(Variant& rVector, Variant vMinElem, Variant vMaxElem) const {
    return editRange(rVector, vMinElem, vMaxElem, [this](auto first, auto last) {
        const int32_t n = int32_t(last - first);
        for (int32_t i = 0; i < n; ++i) {
            const int32_t j = RandomLongWithinRangeFast(0, n - 1);
            if (i != j) first[i].swap(first[j]);
        }
    });
}

bool ArrayManipulations::ShuffleVariantMatrix(Variant& rArray, Variant vMinColumn, Variant vMaxColumn, Variant vMinRow,
                                              Variant vMaxRow) const {
    int32_t c0 = 0, c1 = 0, r0 = 0, r1 = 0;
    if (!isMatrix(rArray) || !rangeWithin(vMinColumn, vMaxColumn, rArray.asArray().bounds()[0], c0, c1) ||
        !rangeWithin(vMinRow, vMaxRow, rArray.asArray().bounds()[1], r0, r1))
        return false;
    SafeArray& a = rArray.arrayForWrite();
    for (int32_t r = r0; r <= r1; ++r)
        for (int32_t c = c0; c <= c1; ++c) {
            const int32_t rc = RandomLongWithinRangeFast(c0, c1), rr = RandomLongWithinRangeFast(r0, r1);
            shapes::cell(a, c, r).swap(shapes::cell(a, rc, rr));
        }
    return true;
}

namespace {

// Lines of a matrix: columns are dimension index 0, rows index 1.
constexpr int kColumns = 0, kRows = 1;

void swapLines(SafeArray& m, int dim, int32_t a, int32_t b) {
    if (a == b) return;
    const ArrayBound along = m.bounds()[size_t(1 - dim)];
    for (int32_t i = along.lower; i <= along.upper; ++i) {
        if (dim == kColumns) shapes::cell(m, a, i).swap(shapes::cell(m, b, i));
        else shapes::cell(m, i, a).swap(shapes::cell(m, i, b));
    }
}

bool shuffleLines(Variant& r, Variant& vMin, Variant& vMax, int dim) {
    int32_t low = 0, high = 0;
    if (!isMatrix(r) || !rangeWithin(vMin, vMax, r.asArray().bounds()[size_t(dim)], low, high)) return false;
    SafeArray& m = r.arrayForWrite();
    for (int32_t i = low; i <= high; ++i) swapLines(m, dim, i, arrayManipulations().RandomLongWithinRangeFast(low, high));
    return true;
}

bool swapLinesChecked(Variant& r, Variant& v1, Variant& v2, int dim) {
    int32_t a = 0, b = 0;
    if (!isMatrix(r) || !indexWithin(v1, r.asArray().bounds()[size_t(dim)], a) ||
        !indexWithin(v2, r.asArray().bounds()[size_t(dim)], b))
        return false;
    swapLines(r.arrayForWrite(), dim, a, b);
    return true;
}

}  // namespace

void swapMatrixRows(SafeArray& matrix, int32_t r1, int32_t r2) {
    if (matrix.dimensions() != 2 || !within(matrix.bounds()[1], r1) || !within(matrix.bounds()[1], r2))
        raiseError(errSubscript);
    swapLines(matrix, kRows, r1, r2);
}

bool ArrayManipulations::ShuffleVariantMatrixRows(Variant& rArray, Variant vMinRow, Variant vMaxRow) const {
    return shuffleLines(rArray, vMinRow, vMaxRow, kRows);
}

bool ArrayManipulations::ShuffleVariantMatrixColumns(Variant& rArray, Variant vMinColumn, Variant vMaxColumn) const {
    return shuffleLines(rArray, vMinColumn, vMaxColumn, kColumns);
}

bool ArrayManipulations::SwapVariantMatrixRows(Variant& rArray, Variant vRow1, Variant vRow2) const {
    return swapLinesChecked(rArray, vRow1, vRow2, kRows);
}

bool ArrayManipulations::SwapVariantMatrixColumns(Variant& rArray, Variant vColumn1, Variant vColumn2) const {
    return swapLinesChecked(rArray, vColumn1, vColumn2, kColumns);
}

bool ArrayManipulations::TransposeVariantMatrix(Variant& rTo, const Variant& vFm) const {
    if (!isMatrix(vFm)) return false;
    const SafeArray& from = vFm.asArray();
    Variant out = Variant::array(vFm.elementType(), {from.bounds()[1], from.bounds()[0]});
    SafeArray& to = out.arrayForWrite();
    for (int32_t r = from.lbound(2); r <= from.ubound(2); ++r)
        for (int32_t c = from.lbound(1); c <= from.ubound(1); ++c) shapes::cell(to, r, c) = shapes::cell(from, c, r);
    rTo = std::move(out);
    return true;
}

// --- deletion, insertion, rotation ---------------------------------------------------------

bool ArrayManipulations::DeleteVariantVectorElement(Variant& rVector, Variant vElementNum, Variant vContractArray) const {
    int32_t i = 0;
    if (!isVector(rVector) || !indexWithin(vElementNum, rVector.asArray().bounds()[0], i)) return false;
    fx().FixUpVariantToBooleanMandSub(vContractArray, Variant(false));
    removeAt(rVector, size_t(i - rVector.asArray().lbound()), vContractArray.asBoolean());
    return true;
}

bool ArrayManipulations::DeleteVariantVectorElementByContent(Variant& rVector, const Variant& vValue, Variant vCompare,
                                                             Variant vContractArray) const {
    if (!isVector(rVector)) return false;
    fx().FixUpVariantCompare(vCompare);
    fx().FixUpVariantToBooleanMandSub(vContractArray, Variant(false));
    const Comparisons& cmp = comparisons();
    const size_t n = rVector.asArray().size();
    bool any = false;
    // From the top down, so each removal leaves the ones still to test in place.
    for (size_t k = n; k-- > 0;)
        if (cmp.EqualLikeDataType(rVector.asArray().elements()[k], vValue, vCompare)) {
            removeAt(rVector, k, vContractArray.asBoolean());
            any = true;
        }
    return any;
}

bool ArrayManipulations::InsertVariantVectorElement(Variant& rVector, Variant vElementNum, const Variant& vValue,
                                                    Variant vExpandArray) const {
    if (!isVector(rVector)) return false;
    fx().FixUpVariantToBooleanMandSub(vExpandArray, Variant(false));
    const bool expand = vExpandArray.asBoolean();
    const ArrayBound b = rVector.asArray().bounds()[0];
    const ArrayBound reach{b.lower, expand ? b.upper + 1 : b.upper};
    int32_t i = 0;
    if (!indexWithin(vElementNum, reach, i)) return false;
    if (expand) shapes::reshape(rVector, {reach});
    SafeArray& a = rVector.arrayForWrite();
    auto e = a.elements();
    std::rotate(e.begin() + (i - b.lower), e.end() - 1, e.end());
    a.set(i, vValue);
    return true;
}

bool ArrayManipulations::RotateVariantVectorDown(Variant& rArray, Variant vLowerElem, Variant vUpperElem) const {
    return editRange(rArray, vLowerElem, vUpperElem, [](auto first, auto last) { std::rotate(first, last - 1, last); });
}

bool ArrayManipulations::RotateVariantVectorUp(Variant& rArray, Variant vLowerElem, Variant vUpperElem) const {
    return editRange(rArray, vLowerElem, vUpperElem, [](auto first, auto last) { std::rotate(first, first + 1, last); });
}

// --- random integers ---------------------------------------------------------------------

Variant ArrayManipulations::RandomLongWithinRange(Variant vLow, Variant vHigh) const {
    return fixUpFrame(fx().FixUpVariantToLongMandFn(vLow) && fx().FixUpVariantToLongMandFn(vHigh), [&] {
        return Variant(RandomLongWithinRangeFast(vLow.asLong(), vHigh.asLong()));
    });
}

int32_t ArrayManipulations::RandomLongWithinRangeFast(int32_t vLow, int32_t vHigh) const {
    const double span = double(vHigh) - double(vLow) + 1.0;
    return int32_t(std::floor(span * double(Rnd()) + double(vLow)));
}

ArrayManipulations& arrayManipulations() noexcept { return globalInstance<ArrayManipulations>(); }

// ---------------------------------------------------------------- type library

namespace {

using V = Variant;
ArrayManipulations& am(Call& c) { return c.self<ArrayManipulations>(); }

#define QVT_AM(sig, call) {sig, [](Call& c) { return V(am(c).call); }}

const ClassRegistration kArrayManipulations(u"ArrayManipulations", ClassKind::Global, globalFactory<ArrayManipulations>,
    u"Redimensions, copies, shuffles, swaps and edits Variant arrays in place.", {
    QVT_AM("ReDimPreserveVariantVector(ref rVector: array of Variant, [vLBound1: Variant], [vUBound1: Variant]) -> Boolean",
           ReDimPreserveVariantVector(c[0], c[1], c[2])),
    QVT_AM("ReDimPreserveVariantMatrix(ref rMatrix: array of Variant, [vLBound1: Variant], [vUBound1: Variant], [vLBound2: Variant], [vUBound2: Variant]) -> Boolean",
           ReDimPreserveVariantMatrix(c[0], c[1], c[2], c[3], c[4])),
    QVT_AM("ReDimPreserveVariantCube(ref rCube: array of Variant, [vLBound1: Variant], [vUBound1: Variant], [vLBound2: Variant], [vUBound2: Variant], [vLBound3: Variant], [vUBound3: Variant]) -> Boolean",
           ReDimPreserveVariantCube(c[0], c[1], c[2], c[3], c[4], c[5], c[6])),
    QVT_AM("CopyVariantVector(ref rTo: array of Variant, ref vFm: Variant()) -> Boolean", CopyVariantVector(c[0], c[1])),
    QVT_AM("CopyVariantMatrix(ref rTo: array of Variant, ref vFm: Variant()) -> Boolean", CopyVariantMatrix(c[0], c[1])),
    QVT_AM("CopyVariantCube(ref rTo: array of Variant, ref vFm: Variant()) -> Boolean", CopyVariantCube(c[0], c[1])),
    QVT_AM("CopyVariantArray(ref rTo: array of Variant, ref vFm: Variant()) -> Boolean", CopyVariantArray(c[0], c[1])),
    QVT_AM("CopyVariantVectorDirect(ref rTo: array of Variant, ref vFm: Variant()) -> Boolean", CopyVariantVectorDirect(c[0], c[1])),
    QVT_AM("CopyVariantMatrixDirect(ref rTo: array of Variant, ref vFm: Variant()) -> Boolean", CopyVariantMatrixDirect(c[0], c[1])),
    QVT_AM("CopyVariantCubeDirect(ref rTo: array of Variant, ref vFm: Variant()) -> Boolean", CopyVariantCubeDirect(c[0], c[1])),
    QVT_AM("CopyVariantArrayDirect(ref rTo: array of Variant, ref vFm: Variant()) -> Boolean", CopyVariantArrayDirect(c[0], c[1])),
    QVT_AM("OffsetVariantVector(ref rTo: array of Variant, ref vFm: array of Variant, [vOffset: Variant]) -> Boolean",
           OffsetVariantVector(c[0], c[1], c[2])),
    QVT_AM("OffsetVariantMatrix(ref rTo: array of Variant, ref vFm: array of Variant, [vOffset1: Variant], [vOffset2: Variant]) -> Boolean",
           OffsetVariantMatrix(c[0], c[1], c[2], c[3])),
    QVT_AM("OverlayVariantVector(ref rTo: array of Variant, ref vFm: array of Variant, [vOffset: Variant]) -> Boolean",
           OverlayVariantVector(c[0], c[1], c[2])),
    QVT_AM("OverlayVariantMatrix(ref rTo: array of Variant, ref vFm: array of Variant, [vOffset1: Variant], [vOffset2: Variant]) -> Boolean",
           OverlayVariantMatrix(c[0], c[1], c[2], c[3])),
    QVT_AM("ReverseVariantVector(ref rVector: array of Variant, [vMinElem: Variant], [vMaxElem: Variant]) -> Boolean",
           ReverseVariantVector(c[0], c[1], c[2])),
    QVT_AM("SetVariantVector(ref rIn: array of Variant, v1Dim: Variant, vValue: Variant) -> Boolean",
           SetVariantVector(c[0], c[1], c[2])),
    QVT_AM("SetVariantMatrix(ref rIn: array of Variant, v1Dim: Variant, v2Dim: Variant, vValue: Variant) -> Boolean",
           SetVariantMatrix(c[0], c[1], c[2], c[3])),
    QVT_AM("SetVariantCube(ref rIn: array of Variant, v1Dim: Variant, v2Dim: Variant, v3Dim: Variant, vValue: Variant) -> Boolean",
           SetVariantCube(c[0], c[1], c[2], c[3], c[4])),
    QVT_AM("ShuffleVariantVector(ref rVector: array of Variant, [vMinElem: Variant], [vMaxElem: Variant]) -> Boolean",
           ShuffleVariantVector(c[0], c[1], c[2])),
    QVT_AM("ShuffleVariantMatrix(ref rArray: array of Variant, [vMinColumn: Variant], [vMaxColumn: Variant], [vMinRow: Variant], [vMaxRow: Variant]) -> Boolean",
           ShuffleVariantMatrix(c[0], c[1], c[2], c[3], c[4])),
    QVT_AM("ShuffleVariantMatrixRows(ref rArray: array of Variant, [vMinRow: Variant], [vMaxRow: Variant]) -> Boolean",
           ShuffleVariantMatrixRows(c[0], c[1], c[2])),
    QVT_AM("ShuffleVariantMatrixColumns(ref rArray: array of Variant, [vMinColumn: Variant], [vMaxColumn: Variant]) -> Boolean",
           ShuffleVariantMatrixColumns(c[0], c[1], c[2])),
    QVT_AM("SwapVariantMatrixRows(ref rArray: array of Variant, vRow1: Variant, vRow2: Variant) -> Boolean",
           SwapVariantMatrixRows(c[0], c[1], c[2])),
    QVT_AM("SwapVariantMatrixColumns(ref rArray: array of Variant, vColumn1: Variant, vColumn2: Variant) -> Boolean",
           SwapVariantMatrixColumns(c[0], c[1], c[2])),
    QVT_AM("TransposeVariantMatrix(ref rTo: array of Variant, ref vFm: Variant()) -> Boolean", TransposeVariantMatrix(c[0], c[1])),
    QVT_AM("DeleteVariantVectorElement(ref rVector: array of Variant, vElementNum: Variant, vContractArray: Variant) -> Boolean",
           DeleteVariantVectorElement(c[0], c[1], c[2])),
    QVT_AM("DeleteVariantVectorElementByContent(ref rVector: array of Variant, vValue: Variant, vCompare: Variant, vContractArray: Variant) -> Boolean",
           DeleteVariantVectorElementByContent(c[0], c[1], c[2], c[3])),
    QVT_AM("InsertVariantVectorElement(ref rVector: array of Variant, vElementNum: Variant, vValue: Variant, vExpandArray: Variant) -> Boolean",
           InsertVariantVectorElement(c[0], c[1], c[2], c[3])),
    QVT_AM("RotateVariantVectorDown(ref rArray: array of Variant, [vLowerElem: Variant], [vUpperElem: Variant]) -> Boolean",
           RotateVariantVectorDown(c[0], c[1], c[2])),
    QVT_AM("RotateVariantVectorUp(ref rArray: array of Variant, [vLowerElem: Variant], [vUpperElem: Variant]) -> Boolean",
           RotateVariantVectorUp(c[0], c[1], c[2])),
    {"RandomLongWithinRange(vLow: Variant, vHigh: Variant) -> Variant",
     [](Call& c) { return am(c).RandomLongWithinRange(c[0], c[1]); }},
    QVT_AM("RandomLongWithinRangeFast(vLow: Long, vHigh: Long) -> Long", RandomLongWithinRangeFast(c[0].asLong(), c[1].asLong())),
});

#undef QVT_AM

}  // namespace

}  // namespace qvt
