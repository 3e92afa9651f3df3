#include "numerics/MathMiscellaneous.h"

#include <climits>
#include <cmath>
#include <cstdint>

#include "automation/TypeLibrary.h"
#include "frame/DateMath.h"
#include "frame/Frame.h"
#include "frame/GlobalConstants.h"
#include "frame/Locale.h"
#include "frame/Strings.h"
#include "numerics/MathReals.h"
#include "numerics/NumericArguments.h"
#include "numerics/VariantArithmetic.h"
#include "strings/CharacterTypes.h"
#include "strings/StringLists.h"

namespace qvt {

using namespace arithmetic;
using numeric::mand;
using numeric::maybe;

namespace {

// Roman numerals: per decimal digit a group of five characters, of which
// four are read: "1" the one-letter of the power, "5" its five-letter, "A"
// the one-letter of the next power.
constexpr StringView kDigitPatterns = u"     1    11   111  15   5    51   511  5111 1A  ";
constexpr StringView kOneLetters = u"IXCMxcm?";
constexpr StringView kFiveLetters = u"VLDvld??";

int32_t romanValue(char16_t c) {
    if (c > 255) raiseError(errSubscript);
    switch (c) {
        case u'I': return 1;
        case u'V': return 5;
        case u'X': return 10;
        case u'L': return 50;
        case u'C': return 100;
        case u'D': return 500;
        case u'M': return 1000;
        case u'v': return 5000;
        case u'x': return 10000;
        case u'l': return 50000;
        case u'c': return 100000;
        case u'd': return 500000;
        case u'm': return 1000000;
        default: return 0;
    }
}

// Compass points by precision 1..3, as segments of that width.
constexpr StringView kCompassPoints[] = {u"NESW", u"N NEE SES SWW NW",
                                         u"N  NNENE ENEE  ESESE SSES  SSWSW WSWW  WNWNW NNW"};

// A digit 0-9 counts its value, an upper-case letter its code minus 55 (A
// is 10); anything else -1.
int32_t digitValue(char16_t c) {
    const CharacterTypes& types = characterTypes();
    if (types.has(c, CharTypeDigit)) return c - u'0';
    if (types.has(c, CharTypeUpper)) return unicodeToAnsi(c) - 55;
    return -1;
}

// Digits of an upper-cased text in a base, in a Double; other characters
// are passed over.
double foldDigits(StringView text, int32_t base, double total) {
    for (char16_t c : text) {
        const int32_t d = digitValue(c);
        if (d >= 0 && d < base) total = checkedDouble(total * base + d);
    }
    return total;
}

Variant limitOfVarType(Variant vVarType, bool maximum) {
    return fixUpFrame(fixUps().FixUpVariantToIntegerMandFn(vVarType), [&] {
        using G = GlobalConstants;
        switch (vVarType.asInteger()) {
            case vbBoolean: return Variant(maximum ? G::MaxBoolean : G::MinBoolean);
            case vbByte: return I(maximum ? G::MaxByte : G::MinByte);
            case vbInteger: return I(maximum ? G::MaxInteger : G::MinInteger);
            case vbLong: return Variant(maximum ? G::MaxLong : G::MinLong);
            case vbSingle: return Variant(maximum ? G::MaxSingle : G::MinSingle);
            case vbDouble: return Variant(maximum ? G::MaxDouble : G::MinDouble);
            case vbCurrency: return Variant::currency(maximum ? G::MaxCurrency : G::MinCurrency);
            case vbDate: return Variant::date(maximum ? G::MaxDate : G::MinDate);
            case vbDecimal: return maximum ? globalConstants().MaxDecimal() : globalConstants().MinDecimal();
            default: return Variant::null();
        }
    });
}

}  // namespace

// ---------------------------------------------------------------- Roman numerals

Variant MathMiscellaneous::ArabicDigitToRoman(Variant vDigit, Variant vPowerOfTen) const {
    const FixUps& f = fixUps();
    return fixUpFrame(f.FixUpVariantToIntegerMandFn(vDigit) && f.FixUpVariantToIntegerMandFn(vPowerOfTen), [&] {
        const int16_t digit = vDigit.asInteger(), power = vPowerOfTen.asInteger();
        if (digit < 0 || digit > 9 || power < 0 || power > 6) return Variant::null();
        String roman;
        for (char16_t c : kDigitPatterns.substr(size_t(5 * digit), 4)) {
            if (c == u'1') roman += kOneLetters[size_t(power)];
            else if (c == u'5') roman += kFiveLetters[size_t(power)];
            else if (c == u'A') roman += kOneLetters[size_t(power) + 1];
        }
        return Variant(std::move(roman));
    });
}

Variant MathMiscellaneous::ArabicToRoman(Variant vValue) const {
    if (IsDate(vValue)) {
        DateParts parts{};
        check(splitDate(CDate(vValue).asDate(), parts));
        vValue = I(int16_t(parts.year));
    } else if (!maybe(vValue)) {
        return Variant::null();
    }
    if (vValue < I(1) || vValue > Variant(int32_t(3999999))) return Variant(String());
    // The count is rounded, not truncated: it may be one too many, which
    // only adds an empty digit.
    const int16_t count = CInt(mathReals().LogNReal(vValue, I(10)) + I(1));
    String roman;
    for (int16_t i = 1; i <= count; ++i) {
        Variant digit = opMod(vValue, I(10));
        vValue = (vValue - digit) / I(10);
        Variant letters = ArabicDigitToRoman(digit, I(int16_t(i - 1)));
        // From 3162278 up the count reaches power 7, which has no letters.
        if (letters.isNull()) raiseError(errInvalidUseOfNull);
        roman.insert(0, letters.asString());
    }
    return Variant(std::move(roman));
}

Variant MathMiscellaneous::RomanToArabic(Variant vRomanNumber) const {
    return fixUpFrame(fixUps().FixUpVariantToStringFn(vRomanNumber), [&] {
        const String& text = vRomanNumber.asString();
        int64_t total = 0;
        int32_t last = 0;
        for (auto it = text.rbegin(); it != text.rend(); ++it) {
            const int32_t value = romanValue(*it);
            if (value == 0) return Variant::null();
            if (value < last) {
                total -= value;
            } else {
                total += value;
                last = value;
            }
            if (total > INT32_MAX || total < INT32_MIN) raiseError(errOverflow);
        }
        return Variant(int32_t(total));
    });
}

// ---------------------------------------------------------------- number bases

int32_t MathMiscellaneous::BaseXToLong(const String& vString, uint8_t vBase) const {
    const int32_t base = vBase < 2 ? 2 : vBase;
    try {
        const double total = foldDigits(UCase(vString), base, 0);
        return total > INT32_MAX ? -1 : int32_t(total);
    } catch (const RuntimeError&) {
        return -1;
    }
}

Variant MathMiscellaneous::BaseXToNumber(Variant vString, Variant vBase) const {
    return fixUpFrame(fixUps().FixUpVariantToStringFn(vString), [&] {
        String text = UCase(vString.asString());
        fixUps().FixUpVariantToIntegerMandSub(vBase, I(10));
        const int32_t base = std::max<int32_t>(CInt(vBase), 2);
        const bool negative = !text.empty() && text[0] == u'-';
        const double total = foldDigits(StringView(text).substr(negative ? 1 : 0), base, 0);
        return D(negative ? -total : total);
    });
}

Variant MathMiscellaneous::NumberToBaseX(Variant vNum, Variant vBase) const {
    return fixUpFrame(maybe(vNum), [&] {
        fixUps().FixUpVariantToIntegerMandSub(vBase, I(10));
        const Variant base = vBase;
        const bool negative = vNum < I(0);
        Variant n = negative ? -vNum : vNum;
        String digits;
        do {
            const int16_t d = CInt(mathReals().ModStd(n, base));
            digits.insert(0, Chr(d < 10 ? 48 + d : 55 + d));
            Variant next = opIntDiv(n, base);
            // Base 1 divides a whole number into itself forever; the text
            // would grow until string space ran out.
            if (next > I(0) && next == n) raiseError(14);
            n = std::move(next);
        } while (n > I(0));
        if (negative) digits.insert(0, u"-");
        return Variant(std::move(digits));
    });
}

// ---------------------------------------------------------------- polynomials

Variant MathMiscellaneous::ChebychevT(Variant vN, Variant vX) const {
    return fixUpFrame(fixUps().FixUpVariantToLongMandFn(vN) && maybe(vX), [&] {
        return guardedFrame([&] {
            if (vN == I(0)) return I(1);
            if (vN == I(1)) return vX;
            const int16_t n = CInt(vN);
            Variant t0 = I(1), t1 = vX;
            double t2 = 1.0;
            for (int16_t i = 2; i <= n; ++i) {
                t2 = CDbl(I(2) * vX * t1 - t0);
                t0 = t1;
                t1 = D(t2);
            }
            return D(t2);
        });
    });
}

// ---------------------------------------------------------------- compass

Variant MathMiscellaneous::DegreesToDirection(Variant vDegrees, Variant vPrecision) const {
    return fixUpFrame(maybe(vDegrees), [&] {
        fixUps().FixUpVariantToIntegerMandSub(vPrecision, I(1));
        fixUps().FixUpVariantToRange(vPrecision, I(1), I(3));
        const int16_t precision = CInt(vPrecision);
        const double degrees = CDbl(mathReals().ModAlt(vDegrees, I(360)));
        const int32_t segments = 1 << (precision + 1);
        const int32_t k = CInt(D(degrees * segments / 360.0)) % segments;
        const Variant point = stringLists().StringSegmentXOfLengthY(
            Variant(kCompassPoints[precision - 1]), Variant(int32_t(k + 1)), Variant(int32_t(precision)));
        return Variant(RTrim(CStr(point)));
    });
}

Variant MathMiscellaneous::DirectionToDegrees(Variant vDirection) const {
    return fixUpFrame(fixUps().FixUpVariantToStringFn(vDirection), [&] {
        const Variant found = stringLists().SearchStringSegments(Variant(kCompassPoints[2]), vDirection,
                                                                 Variant(int32_t(3)), Variant(int32_t(vbTextCompare)));
        const int32_t number = CLng(found);
        if (number == 0) return I(-1);
        return D((number - 1) * 22.5);
    });
}

// ---------------------------------------------------------------- physics

Variant MathMiscellaneous::FrequencyToBandNumber(Variant vFreqInHz) const {
    return fixUpFrame(maybe(vFreqInHz), [&] {
        // The guard's polarity is as it always was: a positive frequency
        // gives Empty, and the formula runs only where its logarithm fails.
        if (vFreqInHz > I(0)) return Variant();
        const MathReals& reals = mathReals();
        return I(CInt(Int(I(1) + reals.LogNReal(vFreqInHz, I(10)) - reals.LogNReal(I(3), I(10)))));
    });
}

Variant MathMiscellaneous::TelevisionFrequency(Variant vChannel, Variant vCable, Variant vSignalType) const {
    // T-07 is channel 107.
    String text;
    if (!vChannel.isNull() && toText(vChannel, text) == 0 && Like(UCase(text), u"T-*"))
        vChannel = Variant(u"1" + Mid(text, 3));
    const FixUps& f = fixUps();
    return fixUpFrame(f.FixUpVariantToIntegerMandFn(vChannel), [&] {
        f.FixUpVariantToBooleanMandSub(vCable, Variant(false));
        f.FixUpVariantToStringSub(vSignalType, Variant(u"Min"));
        const bool cable = CBool(vCable);
        const Variant c = vChannel;
        const int16_t channel = c.asInteger();
        Variant bottom;
        if (channel <= 4) bottom = I(54) + I(6) * (c - I(2));
        else if (channel <= 6) bottom = I(76) + I(6) * (c - I(5));
        else if (channel <= 13) bottom = I(174) + I(6) * (c - I(7));
        else if (cable && channel <= 22) bottom = I(120) + I(6) * (c - I(14));
        else if (cable && channel <= 53) bottom = I(216) + I(6) * (c - I(23));
        else if (cable && channel >= 107 && channel <= 113) bottom = D(5.75) + I(6) * (c - I(107));
        else if (!cable && channel <= 83) bottom = I(470) + I(6) * (c - I(14));
        else return Variant::null();

        const String part = Left(UCase(CStr(vSignalType)), 2);
        if (part == u"MI") return bottom;
        if (part == u"PI") return bottom + D(1.25);
        if (part == u"CO") return bottom + I(17) / I(6);
        if (part == u"SO") return bottom + D(5.75);
        if (part == u"MA") return bottom + I(6);
        return Variant::null();
    });
}

Variant MathMiscellaneous::WindChill(Variant vWindSpeedInMPH, Variant vTemperatureInF) const {
    return fixUpFrame(mand(vWindSpeedInMPH, vTemperatureInF), [&] {
        const double v = vWindSpeedInMPH.asDouble(), t = vTemperatureInF.asDouble();
        if (v < 4) return vTemperatureInF;
        return D(91.4 + (t - 91.4) * (10.45 + 6.686112 * Sqr(v) - 0.447041 * v) / 22.034);
    });
}

// ---------------------------------------------------------------- limits

Variant MathMiscellaneous::MaxOfVarType(Variant vVarType) const { return limitOfVarType(vVarType, true); }
Variant MathMiscellaneous::MinOfVarType(Variant vVarType) const { return limitOfVarType(vVarType, false); }

MathMiscellaneous& mathMiscellaneous() noexcept { return globalInstance<MathMiscellaneous>(); }

namespace {

using Self = MathMiscellaneous;
Variant self1(Call& c, Variant (Self::*f)(Variant) const) { return (c.self<Self>().*f)(c[0]); }
Variant self2(Call& c, Variant (Self::*f)(Variant, Variant) const) { return (c.self<Self>().*f)(c[0], c[1]); }

const ClassRegistration kMathMiscellaneous(u"MathMiscellaneous", ClassKind::Global, globalFactory<MathMiscellaneous>,
    u"Roman numerals, number bases, Chebyshev polynomials, compass directions and other conversions.", {
    {"ArabicDigitToRoman(vDigit, vPowerOfTen) -> Variant", [](Call& c) { return self2(c, &Self::ArabicDigitToRoman); }},
    {"ArabicToRoman(vValue) -> Variant", [](Call& c) { return self1(c, &Self::ArabicToRoman); }},
    {"RomanToArabic(vRomanNumber) -> Variant", [](Call& c) { return self1(c, &Self::RomanToArabic); }},
    {"BaseXToLong(vString: String, vBase: Byte) -> Long", [](Call& c) { return Variant(c.self<Self>().BaseXToLong(c[0].asString(), c[1].asByte())); }},
    {"BaseXToNumber(vString, [vBase]) -> Variant", [](Call& c) { return self2(c, &Self::BaseXToNumber); }},
    {"NumberToBaseX(vNum, [vBase]) -> Variant", [](Call& c) { return self2(c, &Self::NumberToBaseX); }},
    {"ChebychevT(vN, vX) -> Variant", [](Call& c) { return self2(c, &Self::ChebychevT); }},
    {"DegreesToDirection(vDegrees, [vPrecision]) -> Variant", [](Call& c) { return self2(c, &Self::DegreesToDirection); }},
    {"DirectionToDegrees(vDirection) -> Variant", [](Call& c) { return self1(c, &Self::DirectionToDegrees); }},
    {"FrequencyToBandNumber(vFreqInHz) -> Variant", [](Call& c) { return self1(c, &Self::FrequencyToBandNumber); }},
    {"MaxOfVarType(vVarType) -> Variant", [](Call& c) { return self1(c, &Self::MaxOfVarType); }},
    {"MinOfVarType(vVarType) -> Variant", [](Call& c) { return self1(c, &Self::MinOfVarType); }},
    {"TelevisionFrequency(vChannel, [vCable], [vSignalType]) -> Variant", [](Call& c) { return c.self<Self>().TelevisionFrequency(c[0], c[1], c[2]); }},
    {"WindChill(vWindSpeedInMPH, vTemperatureInF) -> Variant", [](Call& c) { return self2(c, &Self::WindChill); }},
});

}  // namespace

}  // namespace qvt
