// CoerceMake: the memory image of a value as a short String, one character
// per byte (Chr$ of the byte in the ANSI page), little-endian, in the manner
// of Basic's MKI$/CVI record-field functions.
#pragma once
#include "frame/Variant.h"

namespace qvt {

class CoerceMake final : public Object {
public:
    std::u16string_view className() const noexcept override { return u"CoerceMake"; }

    // Image to value: Null when vString is not text; error 5 when it is
    // shorter than the type's width. Characters past the width are ignored.
    Variant CoerceToBoolean(Variant vString) const;
    Variant CoerceToByte(Variant vString) const;
    Variant CoerceToCurrency(Variant vString) const;
    Variant CoerceToDate(Variant vString) const;
    Variant CoerceToDouble(Variant vString) const;
    Variant CoerceToInteger(Variant vString) const;
    Variant CoerceToLong(Variant vString) const;
    Variant CoerceToSingle(Variant vString) const;
    // Fast forms: no tests; missing bytes of a short String read as 0
    // (CoerceToByteFast of "" raises 5, as Asc does).
    bool CoerceToBooleanFast(StringView vString) const noexcept;
    uint8_t CoerceToByteFast(StringView vString) const;
    int64_t CoerceToCurrencyFast(StringView vString) const noexcept;
    double CoerceToDateFast(StringView vString) const noexcept;
    double CoerceToDoubleFast(StringView vString) const noexcept;
    int16_t CoerceToIntegerFast(StringView vString) const noexcept;
    int32_t CoerceToLongFast(StringView vString) const noexcept;
    float CoerceToSingleFast(StringView vString) const noexcept;
    Variant CoerceToVarType(const Variant& vString, Variant vVarType) const;

    // Value to image: Null for Null, "" for what is neither number nor date;
    // a value out of the type's range raises 6.
    Variant MakeBoolean(const Variant& vValue) const;
    Variant MakeByte(const Variant& vValue) const;
    Variant MakeCurrency(const Variant& vValue) const;
    Variant MakeDate(const Variant& vValue) const;
    Variant MakeDouble(const Variant& vValue) const;
    Variant MakeInteger(const Variant& vValue) const;
    Variant MakeLong(const Variant& vValue) const;
    Variant MakeSingle(const Variant& vValue) const;
    String MakeBooleanFast(bool vValue) const;
    String MakeByteFast(uint8_t vValue) const;
    String MakeCurrencyFast(int64_t vcurValue) const;
    String MakeDateFast(double vValue) const;
    String MakeDoubleFast(double vValue) const;
    String MakeIntegerFast(int16_t vValue) const;
    Variant MakeLongFast(int32_t vValue) const;
    String MakeSingleFast(float vValue) const;
    // The image of a value by its own type; text as it stands; "" for Empty
    // and Null; CStr of anything else.
    String MakeVarType(const Variant& vValue) const;
};

CoerceMake& coerceMake() noexcept;

}  // namespace qvt
