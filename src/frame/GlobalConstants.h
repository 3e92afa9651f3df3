// GlobalConstants: widths and limits of the value types.
//
// Several limits are deliberately not the types' own: the minimum Integer,
// Long and Currency are one above the true minimum (so that the negation of
// a minimum is still in range), the Double and Single limits sit a little
// inside the largest finite values, and the smallest positive Double is a
// denormal well above the least one. Callers rely on these exact values.
#pragma once
#include <bit>
#include <cstdint>

#include "frame/Variant.h"

namespace qvt {

class GlobalConstants final : public Object {
public:
    std::u16string_view className() const noexcept override { return u"GlobalConstants"; }

    static constexpr uint8_t LengthBoolean = 2, LengthInteger = 2, LengthByte = 1;
    static constexpr uint8_t LengthCurrency = 8, LengthDate = 8, LengthDouble = 8;
    static constexpr uint8_t LengthDataObject = 4, LengthObject = 4, LengthLong = 4, LengthSingle = 4;
    static constexpr uint8_t LengthDecimal = 12;

    // In numeric order True (-1) is below False (0).
    static constexpr bool MaxBoolean = false, MinBoolean = true;
    static constexpr uint8_t MaxByte = 255, MinByte = 0;
    static constexpr int16_t MaxInteger = 32767, MinInteger = -32767;
    static constexpr int32_t MaxLong = 2147483647, MinLong = -2147483647;
    // Ten-thousandths.
    static constexpr int64_t MaxCurrency = 9223372036854775807LL, MinCurrency = -9223372036854775807LL;
    // Day counts: 31 December 9999 23:59:59 and 1 January 100.
    static constexpr double MaxDate = std::bit_cast<double>(uint64_t(0x41469240FFFF9EE9)), MinDate = -657434;

    static constexpr double MaxDouble = std::bit_cast<double>(uint64_t(0x7FEFFFFFFFFFFFE2));
    static constexpr double MaxPositiveDouble = MaxDouble, MinDouble = -MaxDouble, MinNegativeDouble = -MaxDouble;
    static constexpr double MinPositiveDouble = std::bit_cast<double>(uint64_t(0x0000001000000001));
    static constexpr double MaxNegativeDouble = -MinPositiveDouble;

    static constexpr float MaxSingle = std::bit_cast<float>(uint32_t(0x7F7FFFFD));
    static constexpr float MaxPositiveSingle = MaxSingle, MinSingle = -MaxSingle, MinNegativeSingle = -MaxSingle;
    static constexpr float MinPositiveSingle = std::bit_cast<float>(uint32_t(0x00000001));
    static constexpr float MaxNegativeSingle = -MinPositiveSingle;

    // Plus and minus 79,228,162,514,264,337,593,543,950,335: all 96 bits set.
    static constexpr Decimal MaxDecimalValue{0xFFFFFFFFFFFFFFFFULL, 0xFFFFFFFFU, 0, false};
    Variant MaxDecimal() const noexcept { return Variant(MaxDecimalValue); }
    Variant MinDecimal() const noexcept {
        Decimal d = MaxDecimalValue;
        d.negative = true;
        return Variant(d);
    }
};

GlobalConstants& globalConstants() noexcept;

}  // namespace qvt
