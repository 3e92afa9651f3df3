#include "structures/ArrayManipulations.h"

#include <cmath>

#include "automation/TypeLibrary.h"
#include "frame/Error.h"
#include "frame/FixUps.h"
#include "frame/Frame.h"
#include "frame/Random.h"

namespace qvt {

namespace {

bool isVector(const Variant& v) {
    return v.isArray() && v.asArray().allocated() && v.asArray().dimensions() == 1;
}

// The first element of row `row` of a matrix, in memory order (rows lie
// along dimension 2, so a row is contiguous).
size_t rowOffset(const SafeArray& m, int32_t row) {
    const ArrayBound& rows = m.bounds()[1];
    if (row < rows.lower || row > rows.upper) raiseError(errSubscript);
    return size_t(row - rows.lower) * size_t(m.bounds()[0].count());
}

}  // namespace

void swapMatrixRows(SafeArray& matrix, int32_t r1, int32_t r2) {
    if (matrix.dimensions() != 2) raiseError(errSubscript);
    const size_t a = rowOffset(matrix, r1), b = rowOffset(matrix, r2);
    if (a == b) return;
    auto e = matrix.elements();
    const size_t columns = size_t(matrix.bounds()[0].count());
    for (size_t c = 0; c < columns; ++c) e[a + c].swap(e[b + c]);
}

bool ArrayManipulations::CopyVariantVector(Variant& rTo, const Variant& vFm) const {
    if (!isVector(vFm)) return false;
    rTo = vFm;
    return true;
}

bool ArrayManipulations::ShuffleVariantVector(Variant& rVector, Variant vMinElem, Variant vMaxElem) const {
    if (!isVector(rVector)) return false;
    const SafeArray& view = rVector.asArray();
    fixUps().FixUpVariantToLongMandSub(vMinElem, Variant(view.lbound()));
    fixUps().FixUpVariantToLongMandSub(vMaxElem, Variant(view.ubound()));
    const int32_t low = CLng(vMinElem), high = CLng(vMaxElem);
    if (low > high) return false;
    SafeArray& a = rVector.arrayForWrite();
    for (int32_t i = low; i <= high; ++i) {
        const int32_t j = RandomLongWithinRangeFast(low, high);
        if (i != j) a.at(i).swap(a.at(j));
    }
    return true;
}

bool ArrayManipulations::ShuffleVariantMatrixRows(Variant& rArray, Variant vMinRow, Variant vMaxRow) const {
    if (!rArray.isArray() || rArray.asArray().dimensions() != 2) return false;
    const SafeArray& view = rArray.asArray();
    fixUps().FixUpVariantToLongMandSub(vMinRow, Variant(view.lbound(2)));
    fixUps().FixUpVariantToLongMandSub(vMaxRow, Variant(view.ubound(2)));
    const int32_t low = CLng(vMinRow), high = CLng(vMaxRow);
    if (low > high) return false;
    SafeArray& a = rArray.arrayForWrite();
    for (int32_t i = low; i <= high; ++i) swapMatrixRows(a, i, RandomLongWithinRangeFast(low, high));
    return true;
}

void ArrayManipulations::SwapVariantMatrixRows(Variant& rArray, Variant vRow1, Variant vRow2) const {
    if (!rArray.isArray()) raiseError(errTypeMismatch);
    const int32_t r1 = CLng(vRow1), r2 = CLng(vRow2);
    swapMatrixRows(rArray.arrayForWrite(), r1, r2);
}

Variant ArrayManipulations::RandomLongWithinRange(Variant vLow, Variant vHigh) const {
    return fixUpFrame(fixUps().FixUpVariantToLongMandFn(vLow) && fixUps().FixUpVariantToLongMandFn(vHigh), [&] {
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

const ClassRegistration kArrayManipulations(u"ArrayManipulations", ClassKind::Global, globalFactory<ArrayManipulations>, {
    {"CopyVariantVector(ref rTo: array of Variant, ref vFm: Variant()) -> Boolean",
     [](Call& c) { return V(am(c).CopyVariantVector(c[0], c[1])); }},
    {"ShuffleVariantVector(ref rVector: array of Variant, [vMinElem: Variant], [vMaxElem: Variant]) -> Boolean",
     [](Call& c) { return V(am(c).ShuffleVariantVector(c[0], c[1], c[2])); }},
    {"ShuffleVariantMatrixRows(ref rArray: array of Variant, [vMinRow: Variant], [vMaxRow: Variant]) -> Boolean",
     [](Call& c) { return V(am(c).ShuffleVariantMatrixRows(c[0], c[1], c[2])); }},
    {"SwapVariantMatrixRows(ref rArray: array of Variant, vRow1: Variant, vRow2: Variant)",
     [](Call& c) { am(c).SwapVariantMatrixRows(c[0], c[1], c[2]); return V(); }},
    {"RandomLongWithinRange(vLow: Variant, vHigh: Variant) -> Variant",
     [](Call& c) { return am(c).RandomLongWithinRange(c[0], c[1]); }},
    {"RandomLongWithinRangeFast(vLow: Long, vHigh: Long) -> Long",
     [](Call& c) { return V(am(c).RandomLongWithinRangeFast(c[0].asLong(), c[1].asLong())); }},
});

}  // namespace

}  // namespace qvt
