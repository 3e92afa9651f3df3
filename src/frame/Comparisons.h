// Comparisons: ordering and testing values of mixed types.
//
// Three notions of order: Coerce (a number meets a String as text), Exact
// (ordered first by VarType) and Like (numbers before Strings). The first and
// last rank Empty below Null below everything else; each has an Equal twin
// that is True exactly where the comparison gives 0.
#pragma once
#include "frame/Variant.h"

namespace qvt {

class Comparisons final : public Object {
public:
    std::u16string_view className() const noexcept override { return u"Comparisons"; }

    // Whether the conversion succeeds.
    bool CanBeBoolean(const Variant& vValue) const noexcept;
    bool CanBeByte(const Variant& vValue) const noexcept;
    bool CanBeCurrency(const Variant& vValue) const noexcept;
    bool CanBeDate(const Variant& vValue) const noexcept;
    bool CanBeDecimal(const Variant& vValue) const noexcept;
    bool CanBeDouble(const Variant& vValue) const noexcept;
    bool CanBeInteger(const Variant& vValue) const noexcept;
    bool CanBeLong(const Variant& vValue) const noexcept;
    bool CanBeSingle(const Variant& vValue) const noexcept;

    int16_t CompareCoerceDataType(const Variant& vOne, const Variant& vTwo, const Variant& vCompare) const;
    int16_t CompareExactDataType(const Variant& vOne, const Variant& vTwo, const Variant& vCompare) const;
    int16_t CompareLikeDataType(const Variant& vOne, const Variant& vTwo, const Variant& vCompare) const;
    // No ranks for Empty and Null (Null compares as equal to any number).
    int16_t CompareLikeDataTypeFast(const Variant& vOne, const Variant& vTwo, int32_t vCompare) const;
    bool EqualCoerceDataType(const Variant& vOne, const Variant& vTwo, const Variant& vCompare) const;
    bool EqualExactDataType(const Variant& vOne, const Variant& vTwo, const Variant& vCompare) const;
    bool EqualLikeDataType(const Variant& vOne, const Variant& vTwo, const Variant& vCompare) const;
    // Raises 94 when a Null meets a non-String.
    bool EqualLikeDataTypeFast(const Variant& vOne, const Variant& vTwo, int32_t vCompare) const;

    // Inclusive, by CompareLikeDataType; Null if any argument is Null.
    Variant IsBetween(const Variant& vCheck, const Variant& vLow, const Variant& vHigh,
                      const Variant& vCompare) const;

    // Word-or-number truth. IsFalse is Not IsOn, so unlike IsOff it holds
    // for Null, Empty and unknown words.
    bool IsTrue(const Variant& vValue) const { return IsOn(vValue); }
    bool IsFalse(const Variant& vValue) const { return !IsOn(vValue); }
    bool IsOn(const Variant& vValue) const;
    bool IsOff(const Variant& vValue) const;

    bool IsNumber(const Variant& vValue) const noexcept;
    bool IsFloatingPointDataType(const Variant& vValue) const noexcept;
    bool IsWholeDataType(const Variant& vValue) const noexcept;

    // Like; a text compare upper-cases both sides (ranges included).
    Variant LikePattern(Variant vSearch, Variant vPattern, Variant vCompare) const;
    Variant LikeAnyPattern(Variant vSearch, Variant vPatterns, Variant vCompare, Variant vPatternSep) const;

    // The left argument wins ties; a String on the left compares as text
    // with the other's text form, which may then be the result.
    Variant Max2(const Variant& vOne, const Variant& vTwo, const Variant& vCompare) const;
    Variant Min2(const Variant& vOne, const Variant& vTwo, const Variant& vCompare) const;
    void Max2EqualFast(Variant& rOne, const Variant& vTwo) const;
    void Min2EqualFast(Variant& rOne, const Variant& vTwo) const;

    // Order under a collating sequence: the character at place c + 1 of
    // vSortOrder ranks the character of ANSI code c (0 beyond its end).
    Variant StrCompCustom(Variant vStringOne, Variant vStringTwo, Variant vSortOrder) const;

    Variant VarTypeFromString(Variant vVarType) const;
    Variant VarTypeToString(Variant vVarType) const;
    Variant VarTypeToLength(Variant vVarType) const;
    String VT(const Variant& vValue) const;
};

Comparisons& comparisons() noexcept;

}  // namespace qvt
