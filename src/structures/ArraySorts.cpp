#include "structures/ArraySorts.h"

#include <vector>

#include "automation/TypeLibrary.h"
#include "frame/Comparisons.h"
#include "frame/Error.h"
#include "frame/FixUps.h"
#include "frame/Frame.h"
#include "structures/ArrayManipulations.h"
#include "structures/ArrayOthers.h"

namespace qvt {

namespace {

// Elements low to high of a vector's storage, addressed by subscript.
class VectorRange {
public:
    VectorRange(SafeArray& a, int32_t low, int32_t high) : e_(a.elements().data()), lower_(a.lbound()) {
        if (low < lower_ || high > a.ubound()) raiseError(errSubscript);
    }
    Variant& operator[](int32_t i) const noexcept { return e_[i - lower_]; }

private:
    Variant* e_;
    int32_t lower_;
};

// The partition of one range: the pivot is a copy of element hi; i scans up
// from lo - 1 and j down from hi, each bounded by the outer range of the
// whole sort; the pivot ends at i, which is returned.
template <class Range, class Compare>
int32_t partition(const Range& a, int32_t lo, int32_t hi, int32_t low, int32_t high, Compare& cmp) {
    const Variant pivot = a[hi];
    int32_t i = lo - 1, j = hi;
    for (;;) {
        while (i < high) {
            ++i;
            if (cmp(a[i], pivot) >= 0) break;
        }
        while (j > low) {
            --j;
            if (cmp(a[j], pivot) <= 0) break;
        }
        if (i >= j) break;
        a[i].swap(a[j]);
    }
    if (i != hi) a[i].swap(a[hi]);
    return i;
}

// The Quick Sort of elements low to high: no recursion, the larger side on
// a stack of Longs (subscripts 1 to 128, doubled when full), the smaller
// side worked at once.
template <class Range, class Compare>
void quickSort(const Range& a, int32_t low, int32_t high, Compare& cmp) {
    std::vector<int32_t> stack(129);  // subscripts 1 to UBound; 0 unused
    size_t pointer = 0;
    int32_t lo = low, hi = high;
    for (;;) {
        while (lo < hi) {
            const int32_t i = partition(a, lo, hi, low, high, cmp);
            if (pointer + 2 > stack.size() - 1) stack.resize(2 * (stack.size() - 1) + 1);
            if (i - lo <= hi - i) {
                stack[++pointer] = i + 1;
                stack[++pointer] = hi;
                hi = i - 1;
            } else {
                stack[++pointer] = lo;
                stack[++pointer] = i - 1;
                lo = i + 1;
            }
        }
        if (pointer == 0) return;
        hi = stack[pointer--];
        lo = stack[pointer--];
    }
}

// The row order of a matrix by key columns, then by row number. The keys
// being sorted are Long row numbers.
class RowCompare {
public:
    RowCompare(const Variant& vArray, const Variant& vKeyColumns, int32_t compare) : compare_(compare) {
        if (!vArray.isArray()) raiseError(errTypeMismatch);
        const SafeArray& m = vArray.asArray();
        if (m.dimensions() != 2) raiseError(errSubscript);
        e_ = m.elements().data();
        firstRow_ = m.lbound(2);
        columns_ = size_t(m.bounds()[0].count());
        const int32_t firstColumn = m.lbound(1), lastColumn = m.ubound(1);
        auto addColumn = [&](int32_t c) {
            if (c < firstColumn || c > lastColumn) raiseError(errSubscript);
            offsets_.push_back(size_t(c - firstColumn));
        };
        if (vKeyColumns.isArray()) {
            const SafeArray& k = vKeyColumns.asArray();
            for (int32_t i = 1; i <= k.ubound(); ++i) addColumn(CLng(k.at(i)));
        } else if (vKeyColumns.isMissing()) {
            for (int32_t c = 1; c <= lastColumn; ++c) addColumn(c);
        } else {
            raiseError(errTypeMismatch);
        }
    }
    int operator()(const Variant& a, const Variant& p) const {
        const int32_t ra = a.asLong(), rp = p.asLong();
        const Variant* rowA = e_ + size_t(ra - firstRow_) * columns_;
        const Variant* rowP = e_ + size_t(rp - firstRow_) * columns_;
        for (size_t off : offsets_) {
            const int r = comparisons().CompareLikeDataTypeFast(rowA[off], rowP[off], compare_);
            if (r != 0) return r;
        }
        return ra < rp ? -1 : ra > rp ? 1 : 0;
    }

private:
    const Variant* e_ = nullptr;
    int32_t firstRow_ = 0;
    size_t columns_ = 0;
    std::vector<size_t> offsets_;
    int32_t compare_;
};

template <class V>
V& arrayOf(V& v) {
    if (!v.isArray()) raiseError(errTypeMismatch);
    return v;
}

}  // namespace

bool ArraySorts::SortVariantVector(Variant& rArray, Variant vCompare, Variant vStable) const {
    const int32_t low = 1, high = arrayOf(rArray).asArray().ubound();
    if (high <= low) return high == low;
    fixUps().FixUpVariantCompare(vCompare);
    fixUps().FixUpVariantToBooleanMandSub(vStable, Variant(false));
    if (rArray.asArray().lbound() > low) raiseError(errSubscript);
    if (!vStable.asBoolean()) arrayManipulations().ShuffleVariantVector(rArray, Variant(low), Variant(high));
    const int32_t compare = vCompare.asLong();
    auto cmp = [compare](const Variant& a, const Variant& b) {
        return comparisons().CompareLikeDataTypeFast(a, b, compare);
    };
    quickSort(VectorRange(rArray.arrayForWrite(), low, high), low, high, cmp);
    return true;
}

bool ArraySorts::SortVariantMatrixRows(Variant& rArray, Variant vCompare, const Variant& vKeyColumns,
                                       Variant vStable) const {
    fixUps().FixUpVariantCompare(vCompare);
    fixUps().FixUpVariantToBooleanMandSub(vStable, Variant(false));
    const int32_t low = 1, high = arrayOf(rArray).asArray().ubound(2);
    if (high <= low) return high == low;
    if (!vStable.asBoolean()) arrayManipulations().ShuffleVariantMatrixRows(rArray, Variant(low), Variant(high));
    Variant keys;
    SortVariantMatrixRowsKeysOnly(keys, rArray, vCompare, vKeyColumns);
    SortVariantMatrixRowsToKeyOrder(rArray, keys);
    return true;
}

bool ArraySorts::SortVariantMatrixRowsKeysOnly(Variant& rKeys, const Variant& vArray, Variant vCompare,
                                               const Variant& vKeyColumns) const {
    fixUps().FixUpVariantCompare(vCompare);
    const int32_t low = 1, high = arrayOf(vArray).asArray().ubound(2);
    SortGenerateKeys(rKeys, Variant(low), Variant(high));
    if (high <= low) return high == low;
    RowCompare cmp(vArray, vKeyColumns, vCompare.asLong());
    if (vArray.asArray().lbound(2) > low) raiseError(errSubscript);
    quickSort(VectorRange(rKeys.arrayForWrite(), low, high), low, high, cmp);
    return true;
}

bool ArraySorts::SortVariantMatrixRowsKeysOnlyFast(Variant& rKeys, const Variant& vArray, Variant vCompare,
                                                   const Variant& vKeyColumns) const {
    return SortVariantMatrixRowsKeysOnly(rKeys, vArray, std::move(vCompare), vKeyColumns);
}

bool ArraySorts::SortVariantMatrixRowsToKeyOrder(Variant& rArray, Variant& rKeys, Variant vLower,
                                                 Variant vUpper) const {
    if (!fixUps().FixUpVariantBounds(arrayOf(rKeys), vLower, vUpper, Variant::missing())) return false;
    const int32_t lower = CLng(vLower), upper = CLng(vUpper);
    Variant revs;
    SortGenerateReverseKeys(revs, rKeys, vLower, vUpper);
    SafeArray& matrix = arrayOf(rArray).arrayForWrite();
    SafeArray& keys = rKeys.arrayForWrite();
    SafeArray& rev = revs.arrayForWrite();
    for (int32_t i = lower; i <= upper; ++i) {
        const int32_t k = CLng(keys.at(i));
        if (k == i) continue;
        swapMatrixRows(matrix, i, k);
        // Row i's old contents now sit at k: whoever wanted them looks there.
        const int32_t wantsOldRow = rev.at(i).asLong();
        keys.at(wantsOldRow) = Variant(k);
        rev.at(k) = Variant(wantsOldRow);
        keys.at(i) = Variant(i);
        rev.at(i) = Variant(i);
    }
    return true;
}

bool ArraySorts::SortGenerateKeys(Variant& rKeys, Variant vLower, Variant vUpper) const {
    fixUps().FixUpVariantToLongMandSub(vLower, Variant(int32_t(1)));
    fixUps().FixUpVariantToLongMandSub(vUpper, Variant(int32_t(1)));
    const int32_t lower = CLng(vLower), upper = CLng(vUpper);
    if (lower > upper) return false;
    Variant keys = Variant::array(vbVariant, {ArrayBound{lower, upper}});
    auto e = keys.arrayForWrite().elements();
    for (int32_t i = lower; i <= upper; ++i) e[size_t(i - lower)] = Variant(i);
    rKeys = std::move(keys);
    return true;
}

bool ArraySorts::SortGenerateReverseKeys(Variant& rRevs, const Variant& vKeys, Variant vLower,
                                         Variant vUpper) const {
    if (!fixUps().FixUpVariantBounds(arrayOf(vKeys), vLower, vUpper, Variant::missing())) return false;
    const int32_t lower = CLng(vLower), upper = CLng(vUpper);
    Variant revs = Variant::array(vbVariant, {ArrayBound{lower, upper}});
    SafeArray& r = revs.arrayForWrite();
    const SafeArray& keys = vKeys.asArray();
    for (int32_t i = lower; i <= upper; ++i) r.at(CLng(keys.at(i))) = Variant(i);
    rRevs = std::move(revs);
    return true;
}

bool ArraySorts::SortUniqueVariantVector(Variant& rTo, const Variant& vFm, Variant vCompare) const {
    return arrayManipulations().CopyVariantVector(rTo, vFm) && SortVariantVector(rTo, vCompare) &&
           arrayOthers().UniqueVariantVector(rTo, rTo, vCompare);
}

bool ArraySorts::IsVariantVectorSorted(const Variant& vValues, Variant vCompare) const {
    const SafeArray& a = arrayOf(vValues).asArray();
    const int32_t upper = a.ubound();
    if (upper <= 0) return a.lbound() == 0;
    fixUps().FixUpVariantCompare(vCompare);
    const int32_t compare = vCompare.asLong();
    for (int32_t i = 2; i <= upper; ++i)
        if (comparisons().CompareLikeDataTypeFast(a.at(i - 1), a.at(i), compare) == 1) return false;
    return true;
}

Variant ArraySorts::PartitionVariantVector(Variant& rArray, Variant vLower, Variant vUpper, Variant vCompare) const {
    return fixUpFrame(fixUps().FixUpVariantToLongMandFn(vLower) && fixUps().FixUpVariantToLongMandFn(vUpper), [&] {
        fixUps().FixUpVariantCompare(vCompare);
        const int32_t low = vLower.asLong(), high = vUpper.asLong(), compare = vCompare.asLong();
        if (low > high) return Variant(low);
        auto cmp = [compare](const Variant& a, const Variant& b) {
            return comparisons().CompareLikeDataTypeFast(a, b, compare);
        };
        return Variant(partition(VectorRange(arrayOf(rArray).arrayForWrite(), low, high), low, high, low, high, cmp));
    });
}

ArraySorts& arraySorts() noexcept { return globalInstance<ArraySorts>(); }

// ---------------------------------------------------------------- type library

namespace {

using V = Variant;
ArraySorts& as(Call& c) { return c.self<ArraySorts>(); }

const ClassRegistration kArraySorts(u"ArraySorts", ClassKind::Global, globalFactory<ArraySorts>,
    u"Sorts Variant vectors and the rows of Variant matrices in place.", {
    {"SortVariantVector(ref rArray: array of Variant, [vCompare: Variant], [vStable: Variant]) -> Boolean",
     [](Call& c) { return V(as(c).SortVariantVector(c[0], c[1], c[2])); }},
    {"SortVariantMatrixRows(ref rArray: array of Variant, [vCompare: Variant], [ref vKeyColumns: Variant], [vStable: Variant]) -> Boolean",
     [](Call& c) { return V(as(c).SortVariantMatrixRows(c[0], c[1], c[2], c[3])); }},
    {"SortVariantMatrixRowsKeysOnly(ref rKeys: array of Variant, ref vArray: array of Variant, vCompare: Variant, ref vKeyColumns: Variant) -> Boolean",
     [](Call& c) { return V(as(c).SortVariantMatrixRowsKeysOnly(c[0], c[1], c[2], c[3])); }},
    {"SortVariantMatrixRowsKeysOnlyFast(ref rKeys: array of Variant, ref vArray: array of Variant, vCompare: Variant, ref vKeyColumns: Variant) -> Boolean",
     [](Call& c) { return V(as(c).SortVariantMatrixRowsKeysOnlyFast(c[0], c[1], c[2], c[3])); }},
    {"SortVariantMatrixRowsToKeyOrder(ref rArray: array of Variant, ref rKeys: array of Variant, [vLower: Variant], [vUpper: Variant]) -> Boolean",
     [](Call& c) { return V(as(c).SortVariantMatrixRowsToKeyOrder(c[0], c[1], c[2], c[3])); }},
    {"SortGenerateKeys(ref rKeys: array of Variant, [vLower: Variant], [vUpper: Variant]) -> Boolean",
     [](Call& c) { return V(as(c).SortGenerateKeys(c[0], c[1], c[2])); }},
    {"SortGenerateReverseKeys(ref rRevs: array of Variant, ref vKeys: array of Variant, [vLower: Variant], [vUpper: Variant]) -> Boolean",
     [](Call& c) { return V(as(c).SortGenerateReverseKeys(c[0], c[1], c[2], c[3])); }},
    {"SortUniqueVariantVector(ref rTo: array of Variant, ref vFm: array of Variant, [vCompare: Variant]) -> Boolean",
     [](Call& c) { return V(as(c).SortUniqueVariantVector(c[0], c[1], c[2])); }},
    {"IsVariantVectorSorted(ref vValues: array of Variant, [vCompare: Variant]) -> Boolean",
     [](Call& c) { return V(as(c).IsVariantVectorSorted(c[0], c[1])); }},
    {"PartitionVariantVector(ref rArray: array of Variant, vLower: Variant, vUpper: Variant, [vCompare: Variant]) -> Variant",
     [](Call& c) { return as(c).PartitionVariantVector(c[0], c[1], c[2], c[3]); }},
});

}  // namespace

}  // namespace qvt
