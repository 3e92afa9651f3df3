// Shape tests and element access shared by the array classes.
#pragma once
#include <cstddef>
#include <vector>

#include "frame/Error.h"
#include "frame/Variant.h"

namespace qvt::shapes {

// An allocated array of exactly `dimensions` dimensions (any element type).
inline bool isArrayOf(const Variant& v, int dimensions) noexcept {
    return v.isArray() && v.asArray().dimensions() == dimensions;
}
inline bool isVector(const Variant& v) noexcept { return isArrayOf(v, 1); }
inline bool isMatrix(const Variant& v) noexcept { return isArrayOf(v, 2); }

inline bool within(const ArrayBound& b, int64_t i) noexcept { return i >= b.lower && i <= b.upper; }

// The memory offset of (c, r) in a matrix; the caller has checked the bounds.
inline size_t offset(const SafeArray& m, int32_t c, int32_t r) noexcept {
    const ArrayBound& b1 = m.bounds()[0];
    const ArrayBound& b2 = m.bounds()[1];
    return size_t(c - b1.lower) + size_t(r - b2.lower) * size_t(b1.count());
}
inline const Variant& cell(const SafeArray& m, int32_t c, int32_t r) { return m.elements()[offset(m, c, r)]; }
inline Variant& cell(SafeArray& m, int32_t c, int32_t r) { return m.elements()[offset(m, c, r)]; }

// The allocated array r given new bounds (same dimension count), keeping
// what lies in both: in place when only the last upper bound moves.
void reshape(Variant& r, const std::vector<ArrayBound>& bounds);

// An optional element range of one dimension, fixed up as Longs: the bound
// itself by default; both ends must lie within it, low at most high.
bool rangeWithin(Variant& vMin, Variant& vMax, const ArrayBound& b, int32_t& low, int32_t& high);

// A Variant matrix with subscripts 1 to columns, 1 to rows.
inline Variant newMatrix(int32_t columns, int32_t rows) {
    return Variant::array(vbVariant, {ArrayBound{1, columns}, ArrayBound{1, rows}});
}

}  // namespace qvt::shapes
