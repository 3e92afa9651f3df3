// ConvertValues: substitutions of special values, conversions that cannot
// fail, the most capable of two types, and values rendered as text.
#pragma once
#include <array>

#include "frame/Variant.h"

namespace qvt {

class ConvertValues final : public Object {
public:
    std::u16string_view className() const noexcept override { return u"ConvertValues"; }

    Variant EmptyValue() const noexcept { return Variant(); }
    Variant NullValue() const noexcept { return Variant::null(); }

    Variant BlankToNull(const Variant& vValue) const;
    Variant BlankToValue(const Variant& vValue, const Variant& vReplace) const;
    Variant EmptyToBlank(const Variant& vValue) const;
    Variant EmptyToNull(const Variant& vValue) const;
    Variant EmptyToValue(const Variant& vValue, const Variant& vReplace) const;
    Variant NullToBlank(const Variant& vValue) const;
    Variant NullToValue(const Variant& vValue, const Variant& vReplace) const;
    // vReplace where vOriginal = vFind by Variant comparison.
    Variant ReplaceValue(const Variant& vOriginal, const Variant& vFind, const Variant& vReplace) const;
    Variant ReplaceValueOfType(const Variant& vOriginal, const Variant& vFind, const Variant& vReplace) const;
    Variant ReplaceVarTypeWithValue(const Variant& vOriginal, const Variant& vVarType, const Variant& vReplace) const;

    // Conversions that give the start value (False, 0, day 0, Empty) instead
    // of an error. CSngIgnErr's result is a Long, as it always was.
    bool CBoolIgnErr(const Variant& vValue) const noexcept;
    uint8_t CByteIgnErr(const Variant& vValue) const noexcept;
    int64_t CCurIgnErr(const Variant& vValue) const noexcept;  // ten-thousandths
    double CDateIgnErr(const Variant& vValue) const noexcept;  // day count
    double CDblIgnErr(const Variant& vValue) const noexcept;
    Variant CDecIgnErr(const Variant& vValue) const noexcept;
    int16_t CIntIgnErr(const Variant& vValue) const noexcept;
    int32_t CLngIgnErr(const Variant& vValue) const noexcept;
    int32_t CSngIgnErr(const Variant& vValue) const noexcept;
    Variant CVarIgnErr(const Variant& vValue) const noexcept { return vValue; }
    double CVDateIgnErr(const Variant& vValue) const noexcept;

    // "= value" for a SQL WHERE clause, with Basic's type signs; Empty for
    // types it cannot write.
    Variant EqualQuotedValue(const Variant& vValue) const;
    // Width of a value in bytes (of a String, its length); raises 94 on a
    // type it does not know.
    int32_t LengthOfType(const Variant& vAny) const;
    // The VarType at the crossing of the two in the capability table; 0 for
    // a type outside it, error 9 for codes past 256 (arrays).
    int16_t MostCapableDataType(const Variant& vOne, const Variant& vTwo) const;
    bool PromoteToMostCapableDataType(Variant& rOne, Variant& rTwo) const;
    bool NonZeroToTrue(const Variant& vValue) const;
    bool VariantIsBlank(const Variant& vValue) const noexcept;
    void SetVariants(Variant& rDest, const Variant& rSrc) const;
    void SwapNonObjects(Variant& rOne, Variant& rTwo) const;
    void SwapVariants(Variant& rOne, Variant& rTwo) const;
    // A zero value of the type, or an unallocated array for array types.
    Variant VariantOfType(Variant vVarType) const;
    // A Variant String: Chr$ of the VarType, then the memory image.
    Variant VariantStringToVariant(const Variant& vValue) const;
    String VariantToVariantString(const Variant& vValue) const;
    String VariantToCString(const Variant& vBasicString) const;
    // Exactly vCStringSize characters (default 255), zero-filled and ended
    // with Chr$(0); just Chr$(0) for a size of 0 or less.
    String VariantToFixedCString(Variant vBasicString, Variant vCStringSize) const;
    String VariantToString(const Variant& vValue) const;
    // Basic source text of a value.
    String VariantToVBConstExpression(const Variant& vValue) const;
    String VariantToVBEvalExpression(const Variant& vValue) const;

private:
    // VarType by the two types' letters: the crossings of the capability table.
    struct CapabilityTable {
        std::array<std::array<int16_t, 12>, 12> cell{};
    };
    const CapabilityTable& capabilities() const;
    mutable bool built_ = false;
    mutable CapabilityTable table_;
};

ConvertValues& convertValues() noexcept;

}  // namespace qvt
