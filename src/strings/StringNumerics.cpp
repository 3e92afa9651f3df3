#include "strings/StringNumerics.h"

#include <cmath>

#include "automation/TypeLibrary.h"
#include "frame/Conversions.h"
#include "frame/FixUps.h"
#include "frame/Frame.h"
#include "frame/Locale.h"
#include "frame/Strings.h"
#include "numerics/MathReals.h"
#include "strings/CharacterTypes.h"
#include "strings/StringManipulations.h"
#include "strings/StringSearches.h"

namespace qvt {

namespace {

char16_t chr(int code) noexcept { return ansiToUnicode(static_cast<uint8_t>(code)); }
int asc(char16_t c) noexcept { return unicodeToAnsi(c); }

// The value of a digit up to base 36 by the character table, -1 if none.
int digitValue(char16_t c) {
    const CharacterTypes& t = characterTypes();
    if (t.has(c, CharTypeDigit)) return c - u'0';
    if (t.has(c, CharTypeUpper)) return asc(c) - 55;
    return -1;
}

// The digits of a text in a base, folded left to right; other characters
// are passed over.
int32_t baseXValue(StringView s, int base) {
    int32_t total = 0;
    for (char16_t c : s) {
        const int d = digitValue(toUpperChar(c));
        if (d >= 0 && d < base) total = total * base + d;
    }
    return total;
}

// Steps the last digit up, carrying leftward; `next` gives the digit after
// a character, or nothing when the character is the highest digit.
template <class Next>
String increment(String s, char16_t lowest, char16_t one, Next next) {
    for (size_t i = s.size(); i-- > 0;) {
        char16_t up;
        if (next(s[i], up)) {
            s[i] = up;
            return s;
        }
        s[i] = lowest;
    }
    return String(1, one) + s;
}

}  // namespace

template <class Combine>
Variant StringNumerics::pairwise(Variant& vString1, Variant& vString2, Variant& vWrap, Combine combine) const {
    const FixUps& f = fixUps();
    f.FixUpVariantToBooleanMandSub(vWrap, Variant(false));
    return fixUpFrame(f.FixUpVariantToStringFn(vString1) && f.FixUpVariantToStringFn(vString2), [&] {
        const String& a = vString1.asString();
        const String& b = vString2.asString();
        const bool wrap = vWrap.vt() == vbBoolean && vWrap.asBoolean();
        String r = a.size() >= b.size() ? a : b;
        for (size_t i = 0; i < a.size() && i < b.size(); ++i) r[i] = chr(combine(asc(a[i]), asc(b[i]), wrap));
        return Variant(std::move(r));
    });
}

Variant StringNumerics::AddStringCharacters(Variant vString1, Variant vString2, Variant vWrap) const {
    return pairwise(vString1, vString2, vWrap, [](int x, int y, bool wrap) { return wrap ? (x + y) & 255 : std::min(x + y, 255); });
}

Variant StringNumerics::AverageStrings(Variant vString1, Variant vString2, Variant vWrap) const {
    return pairwise(vString1, vString2, vWrap, [](int x, int y, bool wrap) {
        return wrap && std::abs(x - y) > 128 ? ((x + y + 256) / 2) & 255 : (x + y) / 2;
    });
}

Variant StringNumerics::StringToHexadecimalPairs(Variant vString) const {
    return fixUpFrame(fixUps().FixUpVariantToStringFn(vString), [&] {
        static constexpr char16_t kDigits[] = u"0123456789ABCDEF";
        String r;
        r.reserve(vString.asString().size() * 2);
        for (char16_t c : vString.asString()) {
            r.push_back(kDigits[asc(c) >> 4]);
            r.push_back(kDigits[asc(c) & 15]);
        }
        return Variant(std::move(r));
    });
}

Variant StringNumerics::HexadecimalPairsToString(Variant vString) const {
    return fixUpFrame(fixUps().FixUpVariantToStringFn(vString), [&] {
        const StringView s = vString.asString();
        String r;
        for (size_t i = 0; i < s.size(); i += 2) r.push_back(chr(baseXValue(s.substr(i, 2), 16)));
        return Variant(std::move(r));
    });
}

Variant StringNumerics::HexadecimalHiLoStringsToString(Variant vHiString, Variant vLoString) const {
    const FixUps& f = fixUps();
    if (!f.FixUpVariantToStringFn(vHiString) || !f.FixUpVariantToStringFn(vLoString)) return Variant::null();
    return HexadecimalPairsToString(Variant(mergeAlternately(vHiString.asString(), vLoString.asString())));
}

Variant StringNumerics::IncrementString(Variant vString, Variant vLowest, Variant vHighest) const {
    uint8_t lowest = 0, highest = 255;
    const bool ok = fixUps().FixUpVariantToStringFn(vString) && (vLowest.isMissing() || characterCode(vLowest, lowest)) &&
                    (vHighest.isMissing() || characterCode(vHighest, highest)) && lowest <= highest;
    return fixUpFrame(ok, [&] {
        const char16_t one = chr(lowest < highest ? lowest + 1 : lowest);
        return Variant(increment(vString.asString(), chr(lowest), one, [&](char16_t c, char16_t& up) {
            const int code = asc(c);
            if (code >= highest) return false;
            up = chr(std::max(code + 1, int(lowest)));
            return true;
        }));
    });
}

Variant StringNumerics::IncrementStringWithinCharacterSet(Variant vString, Variant vCharacterSet) const {
    const FixUps& f = fixUps();
    f.FixUpVariantToStringSub(vCharacterSet, Variant(DOSFileNameCharacters));
    const bool ok = f.FixUpVariantToStringFn(vString) && vCharacterSet.isString() && !vCharacterSet.asString().empty();
    return fixUpFrame(ok, [&] {
        const String& set = vCharacterSet.asString();
        return Variant(increment(vString.asString(), set[0], set[set.size() > 1 ? 1 : 0], [&](char16_t c, char16_t& up) {
            const size_t p = set.find(c);
            if (p + 1 == set.size()) return false;
            up = p == String::npos ? set[0] : set[p + 1];
            return true;
        }));
    });
}

Variant StringNumerics::NumberSuffix(Variant vNumber) const {
    return fixUpFrame(fixUps().FixUpVariantToDoubleMandFn(vNumber), [&] {
        const double x = vNumber.asDouble();
        const double hundreds = modStd(x, 100);
        if (hundreds >= 11 && hundreds <= 13) return Variant(u"th");
        const double units = modStd(x, 10);
        return Variant(units == 1 ? u"st" : units == 2 ? u"nd" : units == 3 ? u"rd" : u"th");
    });
}

Variant StringNumerics::NumberAndSuffix(Variant vNumber) const {
    return fixUpFrame(fixUps().FixUpVariantToDoubleMandFn(vNumber), [&] {
        return Variant(CStr(vNumber) + NumberSuffix(vNumber).asString());
    });
}

template <class Op>
Variant StringNumerics::bitwise(Variant& vString, Variant& vNumber, Op op) const {
    const FixUps& f = fixUps();
    return fixUpFrame(f.FixUpVariantToStringFn(vString) && f.FixUpVariantToLongMandFn(vNumber), [&] {
        const int32_t n = vNumber.asLong();
        for (char16_t& c : vString.stringForWrite()) c = chr(op(asc(c), n) & 255);
        return vString;
    });
}

Variant StringNumerics::StringCharactersBitwiseAndNumber(Variant vString, Variant vNumber) const {
    return bitwise(vString, vNumber, [](int32_t c, int32_t n) { return c & n; });
}

Variant StringNumerics::StringCharactersBitwiseOrNumber(Variant vString, Variant vNumber) const {
    return bitwise(vString, vNumber, [](int32_t c, int32_t n) { return c | n; });
}

Variant StringNumerics::StringCharactersBitwiseXorNumber(Variant vString, Variant vNumber) const {
    return bitwise(vString, vNumber, [](int32_t c, int32_t n) { return c ^ n; });
}

Variant StringNumerics::VersionNumberCompare(Variant vVersion1, Variant vVersion2) const {
    const FixUps& f = fixUps();
    return fixUpFrame(f.FixUpVariantToStringFn(vVersion1) && f.FixUpVariantToStringFn(vVersion2), [&] {
        const StringSearches& searches = stringSearches();
        String a = vVersion1.asString(), b = vVersion2.asString();
        while (!a.empty() || !b.empty()) {
            const String x = searches.GetTokenFast(a, u".", vbBinaryCompare);
            const String y = searches.GetTokenFast(b, u".", vbBinaryCompare);
            int16_t nx, ny;
            int c;
            if (toInteger(Variant(x), nx) == 0 && toInteger(Variant(y), ny) == 0) c = (nx > ny) - (nx < ny);
            else c = StrComp(x, y, vbBinaryCompare);
            if (c != 0) return Variant(int16_t(c));
        }
        return Variant(int16_t(0));
    });
}

StringNumerics& stringNumerics() noexcept { return globalInstance<StringNumerics>(); }

}  // namespace qvt

// --- type library ------------------------------------------------------------


namespace qvt {

namespace {

#define QVT_MEMBER(signature, name, ...) \
    {signature, [](Call& c) { return c.self<StringNumerics>().name(__VA_ARGS__); }}

const ClassRegistration kStringNumerics(u"StringNumerics", ClassKind::Global, globalFactory<StringNumerics>,
    u"Arithmetic on the character codes of strings and counting in any base.", {
    QVT_MEMBER("AddStringCharacters(vString1: Variant, vString2: Variant, [vWrap: Variant]) -> Variant",
               AddStringCharacters, c[0], c[1], c[2]),
    QVT_MEMBER("AverageStrings(vString1: Variant, vString2: Variant, [vWrap: Variant]) -> Variant",
               AverageStrings, c[0], c[1], c[2]),
    QVT_MEMBER("HexadecimalPairsToString(vString: Variant) -> Variant", HexadecimalPairsToString, c[0]),
    QVT_MEMBER("HexadecimalHiLoStringsToString(vHiString: Variant, vLoString: Variant) -> Variant",
               HexadecimalHiLoStringsToString, c[0], c[1]),
    QVT_MEMBER("IncrementString(vString: Variant, [vLowest: Variant], [vHighest: Variant]) -> Variant",
               IncrementString, c[0], c[1], c[2]),
    QVT_MEMBER("IncrementStringWithinCharacterSet(vString: Variant, [vCharacterSet: Variant]) -> Variant",
               IncrementStringWithinCharacterSet, c[0], c[1]),
    QVT_MEMBER("NumberAndSuffix(vNumber: Variant) -> Variant", NumberAndSuffix, c[0]),
    QVT_MEMBER("NumberSuffix(vNumber: Variant) -> Variant", NumberSuffix, c[0]),
    QVT_MEMBER("StringCharactersBitwiseAndNumber(vString: Variant, vNumber: Variant) -> Variant",
               StringCharactersBitwiseAndNumber, c[0], c[1]),
    QVT_MEMBER("StringCharactersBitwiseOrNumber(vString: Variant, vNumber: Variant) -> Variant",
               StringCharactersBitwiseOrNumber, c[0], c[1]),
    QVT_MEMBER("StringCharactersBitwiseXorNumber(vString: Variant, vNumber: Variant) -> Variant",
               StringCharactersBitwiseXorNumber, c[0], c[1]),
    QVT_MEMBER("StringToHexadecimalPairs(vString: Variant) -> Variant", StringToHexadecimalPairs, c[0]),
    QVT_MEMBER("VersionNumberCompare(vVersion1: Variant, vVersion2: Variant) -> Variant",
               VersionNumberCompare, c[0], c[1]),
});

#undef QVT_MEMBER

}  // namespace

}  // namespace qvt
