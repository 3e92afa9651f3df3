// MathMiscellaneous: Roman numerals, number bases, Chebyshev polynomials,
// compass directions, band numbers, television channel frequencies, wind
// chill, and the limits of the value types.
//
// A global class reached through mathMiscellaneous(). A failed fix-up of a
// mandatory argument gives Null (ArabicToRoman gives "" for a value out of
// its range). Only ChebychevT (Null) and BaseXToLong (-1) catch errors of
// the runtime; elsewhere they rise.
//
// Roman numerals: the upper-case letters I V X L C D M stand for 1 to 1000,
// the lower-case v x l c d m for 5,000 to 1,000,000 (a bar over a letter, in
// print). 4000 is "Mv".
#pragma once
#include <cstdint>

#include "frame/Variant.h"

namespace qvt {

class MathMiscellaneous final : public Object {
public:
    std::u16string_view className() const noexcept override { return u"MathMiscellaneous"; }

    // One decimal digit 0..9 at a power of ten 0..6 as Roman letters.
    Variant ArabicDigitToRoman(Variant vDigit, Variant vPowerOfTen) const;
    // 1 to 3999999 (a date: its year); "" outside.
    Variant ArabicToRoman(Variant vValue) const;
    // Right to left: a letter below the one after it subtracts. Null for a
    // letter that is not a numeral.
    Variant RomanToArabic(Variant vRomanNumber) const;

    // Digits 0-9 and A-Z (either case) in base vBase; other characters are
    // passed over. -1 on overflow.
    int32_t BaseXToLong(const String& vString, uint8_t vBase) const;
    // As a Double, with a leading minus; base default 10.
    Variant BaseXToNumber(Variant vString, Variant vBase = Variant::missing()) const;
    Variant NumberToBaseX(Variant vNum, Variant vBase = Variant::missing()) const;

    // The Chebyshev polynomial T_N(X) by its recurrence.
    Variant ChebychevT(Variant vN, Variant vX) const;

    // A bearing as N, NE, NNE ... with 4, 8 or 16 points (vPrecision 1..3).
    Variant DegreesToDirection(Variant vDegrees, Variant vPrecision = Variant::missing()) const;
    // A 16-point direction as degrees; -1 when unknown.
    Variant DirectionToDegrees(Variant vDirection) const;

    Variant FrequencyToBandNumber(Variant vFreqInHz) const;
    // United States channel plan, MHz: the part of the channel vSignalType
    // names ("Min", "Picture", "Color", "Sound", "Max").
    Variant TelevisionFrequency(Variant vChannel, Variant vCable = Variant::missing(),
                                Variant vSignalType = Variant::missing()) const;
    Variant WindChill(Variant vWindSpeedInMPH, Variant vTemperatureInF) const;

    // Limits of a VarType; several minimums are the negated maximum.
    Variant MaxOfVarType(Variant vVarType) const;
    Variant MinOfVarType(Variant vVarType) const;
};

MathMiscellaneous& mathMiscellaneous() noexcept;

}  // namespace qvt
