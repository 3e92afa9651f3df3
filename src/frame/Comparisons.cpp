#include "frame/Comparisons.h"

#include "automation/TypeLibrary.h"
#include <array>

#include "frame/Conversions.h"
#include "frame/FixUps.h"
#include "frame/Frame.h"
#include "frame/Operators.h"
#include "frame/Strings.h"
#include "strings/CharacterTypes.h"
#include "structures/ArrayConversions.h"

namespace qvt {

namespace {

int32_t compareMode(const Variant& vCompare) {
    Variant c = vCompare;
    fixUps().FixUpVariantCompare(c);
    return c.asLong();
}

// `If a < b Then -1 ElseIf a > b Then 1 Else 0`: a Null on either side
// makes both tests false.
int16_t variantOrder(const Variant& a, const Variant& b) {
    bool isNull = false;
    const int c = compareVariants(a, b, vbBinaryCompare, &isNull);
    return isNull ? 0 : int16_t(c);
}

int16_t strComp(const Variant& a, const Variant& b, const Variant& vCompare) {
    return int16_t(StrComp(a.asString(), b.asString(), compareMode(vCompare)));
}

// Empty ranks below Null, Null below everything else; 2 when neither is
// Empty or Null.
int16_t specialRank(const Variant& vOne, const Variant& vTwo) {
    const enum VarType t1 = vOne.vt(), t2 = vTwo.vt();
    if (t1 == vbEmpty) return t2 == vbEmpty ? 0 : -1;
    if (t1 == vbNull) return t2 == vbNull ? 0 : (t2 == vbEmpty ? 1 : -1);
    if (t2 == vbEmpty || t2 == vbNull) return 1;
    return 2;
}

// Names of the VarTypes 0 to 17 ("" where no type has the code).
constexpr std::array<std::u16string_view, 18> kTypeNames = {
    u"Empty",  u"Null",   u"Integer", u"Long",    u"Single",   u"Double",     u"Currency", u"Date",    u"String",
    u"Object", u"Error",  u"Boolean", u"Variant", u"DataObject", u"Decimal", u"",         u"",        u"Byte"};

const String& everyCharacter() {
    static const String all = characterTypes().EveryCharacter();
    return all;
}

}  // namespace

bool Comparisons::CanBeBoolean(const Variant& vValue) const noexcept { bool x; return toBoolean(vValue, x) == 0; }
bool Comparisons::CanBeByte(const Variant& vValue) const noexcept { uint8_t x; return toByte(vValue, x) == 0; }
bool Comparisons::CanBeCurrency(const Variant& vValue) const noexcept { int64_t x; return toCurrency(vValue, x) == 0; }
bool Comparisons::CanBeDate(const Variant& vValue) const noexcept { double x; return toDate(vValue, x) == 0; }
bool Comparisons::CanBeDecimal(const Variant& vValue) const noexcept { Decimal x; return toDecimal(vValue, x) == 0; }
bool Comparisons::CanBeDouble(const Variant& vValue) const noexcept { double x; return toDouble(vValue, x) == 0; }
bool Comparisons::CanBeInteger(const Variant& vValue) const noexcept { int16_t x; return toInteger(vValue, x) == 0; }
bool Comparisons::CanBeLong(const Variant& vValue) const noexcept { int32_t x; return toLong(vValue, x) == 0; }
bool Comparisons::CanBeSingle(const Variant& vValue) const noexcept { float x; return toSingle(vValue, x) == 0; }

int16_t Comparisons::CompareCoerceDataType(const Variant& vOne, const Variant& vTwo, const Variant& vCompare) const {
    if (int16_t r = specialRank(vOne, vTwo); r != 2) return r;
    if (!vOne.isString() && !vTwo.isString()) return variantOrder(vOne, vTwo);
    const Variant one = vOne.isString() ? vOne : Variant(CStr(vOne));
    const Variant two = vTwo.isString() ? vTwo : Variant(CStr(vTwo));
    return strComp(one, two, vCompare);
}

int16_t Comparisons::CompareExactDataType(const Variant& vOne, const Variant& vTwo, const Variant& vCompare) const {
    const enum VarType t1 = vOne.vt(), t2 = vTwo.vt();
    if (t1 != t2) return t1 < t2 ? -1 : 1;
    if (t1 == vbString) return strComp(vOne, vTwo, vCompare);
    return variantOrder(vOne, vTwo);
}

int16_t Comparisons::CompareLikeDataType(const Variant& vOne, const Variant& vTwo, const Variant& vCompare) const {
    if (int16_t r = specialRank(vOne, vTwo); r != 2) return r;
    if (vOne.isString() != vTwo.isString()) return vOne.isString() ? 1 : -1;
    if (vOne.isString()) return strComp(vOne, vTwo, vCompare);
    return variantOrder(vOne, vTwo);
}

int16_t Comparisons::CompareLikeDataTypeFast(const Variant& vOne, const Variant& vTwo, int32_t vCompare) const {
    if (vOne.isString() != vTwo.isString()) return vOne.isString() ? 1 : -1;
    if (vOne.isString()) return int16_t(StrComp(vOne.asString(), vTwo.asString(), vCompare));
    return variantOrder(vOne, vTwo);
}

bool Comparisons::EqualCoerceDataType(const Variant& vOne, const Variant& vTwo, const Variant& vCompare) const {
    return CompareCoerceDataType(vOne, vTwo, vCompare) == 0;
}

bool Comparisons::EqualExactDataType(const Variant& vOne, const Variant& vTwo, const Variant& vCompare) const {
    return vOne.vt() == vTwo.vt() && CompareExactDataType(vOne, vTwo, vCompare) == 0;
}

bool Comparisons::EqualLikeDataType(const Variant& vOne, const Variant& vTwo, const Variant& vCompare) const {
    return CompareLikeDataType(vOne, vTwo, vCompare) == 0;
}

bool Comparisons::EqualLikeDataTypeFast(const Variant& vOne, const Variant& vTwo, int32_t vCompare) const {
    if (vOne.isString() != vTwo.isString()) return false;
    if (vOne.isString()) return StrComp(vOne.asString(), vTwo.asString(), vCompare) == 0;
    // CBool of the comparison's value: Null raises 94.
    return CBool(opCompare(CompareOp::Eq, vOne, vTwo));
}

Variant Comparisons::IsBetween(const Variant& vCheck, const Variant& vLow, const Variant& vHigh,
                               const Variant& vCompare) const {
    if (vCheck.isNull() || vLow.isNull() || vHigh.isNull()) return Variant::null();
    return Variant(CompareLikeDataType(vCheck, vLow, vCompare) != -1 &&
                   CompareLikeDataType(vCheck, vHigh, vCompare) != 1);
}

namespace {

bool isOneOf(const Variant& v, std::initializer_list<std::u16string_view> words) {
    const String s = LCase(v.asString());
    for (auto w : words)
        if (s == w) return true;
    return false;
}

// vValue compared with the literal 0.
int compareWithZero(const Variant& v) {
    bool isNull = false;
    return compareVariants(v, Variant(int16_t(0)), vbBinaryCompare, &isNull, CompareSite::NumericLiteral);
}

}  // namespace

bool Comparisons::IsOn(const Variant& vValue) const {
    if (vValue.isEmpty() || vValue.isNull()) return false;
    if (vValue.isString()) return isOneOf(vValue, {u"yes", u"true", u"on", u"1", u"+"});
    return compareWithZero(vValue) != 0;
}

bool Comparisons::IsOff(const Variant& vValue) const {
    if (vValue.isEmpty() || vValue.isNull()) return false;
    if (vValue.isString()) return isOneOf(vValue, {u"no", u"false", u"off", u"0", u"-"});
    return compareWithZero(vValue) == 0;
}

bool Comparisons::IsNumber(const Variant& vValue) const noexcept {
    switch (vValue.vt()) {
        case vbInteger: case vbLong: case vbSingle: case vbDouble: case vbCurrency:
        case vbDate: case vbBoolean: case vbDecimal: case vbByte:
            return true;
        default:
            return false;
    }
}

bool Comparisons::IsFloatingPointDataType(const Variant& vValue) const noexcept {
    switch (vValue.vt()) {
        case vbSingle: case vbDouble: case vbCurrency: case vbDate: case vbDecimal:
            return true;
        default:
            return false;
    }
}

bool Comparisons::IsWholeDataType(const Variant& vValue) const noexcept {
    switch (vValue.vt()) {
        case vbInteger: case vbLong: case vbBoolean: case vbByte:
            return true;
        default:
            return false;
    }
}

Variant Comparisons::LikePattern(Variant vSearch, Variant vPattern, Variant vCompare) const {
    const FixUps& fx = fixUps();
    return fixUpFrame(fx.FixUpVariantToStringFn(vSearch) && fx.FixUpVariantToStringFn(vPattern), [&] {
        fx.FixUpVariantCompare(vCompare);
        if (vCompare.asLong() == vbBinaryCompare)
            return Variant(Like(vSearch.asString(), vPattern.asString(), vbBinaryCompare));
        return Variant(Like(UCase(vSearch.asString()), UCase(vPattern.asString()), vbBinaryCompare));
    });
}

Variant Comparisons::LikeAnyPattern(Variant vSearch, Variant vPatterns, Variant vCompare, Variant vPatternSep) const {
    const FixUps& fx = fixUps();
    return fixUpFrame(fx.FixUpVariantToStringFn(vSearch) && fx.FixUpVariantToStringFn(vPatterns) &&
                          fx.FixUpVariantToStringFn(vPatternSep),
                      [&] {
                          fx.FixUpVariantCompare(vCompare);
                          const Variant patterns = splitToOneBased(vPatterns.asString(), vPatternSep.asString(),
                                                                   vCompare.asLong());
                          const SafeArray& a = patterns.asArray();
                          for (int32_t i = 1; i <= a.ubound(1); ++i) {
                              const Variant hit = LikePattern(vSearch, a.at(i), vCompare);
                              if (hit.vt() == vbBoolean && hit.asBoolean()) return Variant(true);
                          }
                          return Variant(false);
                      });
}

namespace {

// Max2 (sign 1) and Min2 (sign -1).
Variant pickOf2(const Variant& vOne, const Variant& vTwo, const Variant& vCompare, int sign) {
    if (vOne.isNull() || vTwo.isNull()) return Variant::null();
    if (!vOne.isString()) {
        bool isNull = false;
        return compareVariants(vOne, vTwo, vbBinaryCompare, &isNull) * sign >= 0 ? vOne : vTwo;
    }
    const Variant two = vTwo.isString() ? vTwo : Variant(CStr(vTwo));
    return StrComp(vOne.asString(), two.asString(), compareMode(vCompare)) * sign >= 0 ? vOne : two;
}

}  // namespace

Variant Comparisons::Max2(const Variant& vOne, const Variant& vTwo, const Variant& vCompare) const {
    return pickOf2(vOne, vTwo, vCompare, 1);
}

Variant Comparisons::Min2(const Variant& vOne, const Variant& vTwo, const Variant& vCompare) const {
    return pickOf2(vOne, vTwo, vCompare, -1);
}

void Comparisons::Max2EqualFast(Variant& rOne, const Variant& vTwo) const {
    bool isNull = false;
    if (compareVariants(vTwo, rOne, vbBinaryCompare, &isNull) > 0 && !isNull) rOne = vTwo;
}

void Comparisons::Min2EqualFast(Variant& rOne, const Variant& vTwo) const {
    bool isNull = false;
    if (compareVariants(vTwo, rOne, vbBinaryCompare, &isNull) < 0 && !isNull) rOne = vTwo;
}

Variant Comparisons::StrCompCustom(Variant vStringOne, Variant vStringTwo, Variant vSortOrder) const {
    const FixUps& fx = fixUps();
    return fixUpFrame(fx.FixUpVariantToStringFn(vStringOne) && fx.FixUpVariantToStringFn(vStringTwo), [&] {
        const String& order = fx.FixUpVariantToStringFn(vSortOrder) ? vSortOrder.asString() : everyCharacter();
        const String& one = vStringOne.asString();
        const String& two = vStringTwo.asString();
        const size_t n = std::min(one.size(), two.size());
        const size_t m = order.size();
        auto rank = [&](char16_t c) {
            const size_t code = size_t(Asc(StringView(&c, 1)));
            return code < m ? Asc(StringView(&order[code], 1)) : 0;
        };
        for (size_t i = 0; i < n; ++i) {
            const int32_t a = rank(one[i]), b = rank(two[i]);
            if (a != b) return Variant(int16_t(a < b ? -1 : 1));
        }
        if (one.size() > n) return Variant(int16_t(1));
        if (two.size() > n) return Variant(int16_t(-1));
        return Variant(int16_t(0));
    });
}

Variant Comparisons::VarTypeToString(Variant vVarType) const {
    return fixUpFrame(fixUps().FixUpVariantToIntegerMandFn(vVarType), [&] {
        int32_t t = vVarType.asInteger();
        const bool array = (t & vbArray) != 0;
        t &= ~int32_t(vbArray);
        if (t < 0 || t >= int32_t(kTypeNames.size()) || kTypeNames[size_t(t)].empty()) return Variant::null();
        String name(kTypeNames[size_t(t)]);
        if (array) name += u" Array";
        return Variant(std::move(name));
    });
}

String Comparisons::VT(const Variant& vValue) const {
    const Variant name = VarTypeToString(Variant(int16_t(vValue.vt())));
    return name.isString() ? name.asString() : CStr(name);
}

Variant Comparisons::VarTypeFromString(Variant vVarType) const {
    return fixUpFrame(fixUps().FixUpVariantToStringFn(vVarType), [&] {
        String name = UCase(vVarType.asString());
        int16_t array = 0;
        constexpr StringView kArray = u"ARRAY";
        if (name.size() >= kArray.size() && StringView(name).substr(name.size() - kArray.size()) == kArray) {
            name = RTrim(StringView(name).substr(0, name.size() - kArray.size()));
            array = vbArray;
        }
        for (size_t t = 0; t < kTypeNames.size(); ++t)
            if (!kTypeNames[t].empty() && UCase(kTypeNames[t]) == name) return Variant(int16_t(t + array));
        return Variant::null();
    });
}

Variant Comparisons::VarTypeToLength(Variant vVarType) const {
    return fixUpFrame(fixUps().FixUpVariantToIntegerMandFn(vVarType), [&] {
        const int16_t t = vVarType.asInteger();
        if (t > vbArray) return Variant(int16_t(0));
        switch (t) {
            case vbByte: return Variant(int16_t(1));
            case vbBoolean: case vbInteger: return Variant(int16_t(2));
            case vbLong: case vbSingle: case vbObject: case vbDataObject: return Variant(int16_t(4));
            case vbDouble: case vbCurrency: case vbDate: return Variant(int16_t(8));
            case vbDecimal: return Variant(int16_t(12));
            case vbEmpty: case vbNull: case vbString: case vbError: case vbVariant: return Variant(int16_t(0));
            default: return Variant::null();
        }
    });
}

Comparisons& comparisons() noexcept { return globalInstance<Comparisons>(); }

// ---------------------------------------------------------------- type library

namespace {

using V = Variant;
Comparisons& cp(Call& c) { return c.self<Comparisons>(); }

const ClassRegistration kComparisons(u"Comparisons", ClassKind::Global, globalFactory<Comparisons>,
    u"Orders and tests values of mixed types.", {
    {"CanBeBoolean(vValue: Variant) -> Boolean", [](Call& c) { return V(cp(c).CanBeBoolean(c[0])); }},
    {"CanBeByte(vValue: Variant) -> Boolean", [](Call& c) { return V(cp(c).CanBeByte(c[0])); }},
    {"CanBeCurrency(vValue: Variant) -> Boolean", [](Call& c) { return V(cp(c).CanBeCurrency(c[0])); }},
    {"CanBeDate(vValue: Variant) -> Boolean", [](Call& c) { return V(cp(c).CanBeDate(c[0])); }},
    {"CanBeDecimal(vValue: Variant) -> Boolean", [](Call& c) { return V(cp(c).CanBeDecimal(c[0])); }},
    {"CanBeDouble(vValue: Variant) -> Boolean", [](Call& c) { return V(cp(c).CanBeDouble(c[0])); }},
    {"CanBeInteger(vValue: Variant) -> Boolean", [](Call& c) { return V(cp(c).CanBeInteger(c[0])); }},
    {"CanBeLong(vValue: Variant) -> Boolean", [](Call& c) { return V(cp(c).CanBeLong(c[0])); }},
    {"CanBeSingle(vValue: Variant) -> Boolean", [](Call& c) { return V(cp(c).CanBeSingle(c[0])); }},
    {"CompareCoerceDataType(vOne: Variant, vTwo: Variant, [vCompare: Variant]) -> Integer", [](Call& c) { return V(cp(c).CompareCoerceDataType(c[0], c[1], c[2])); }},
    {"CompareExactDataType(vOne: Variant, vTwo: Variant, [vCompare: Variant]) -> Integer", [](Call& c) { return V(cp(c).CompareExactDataType(c[0], c[1], c[2])); }},
    {"CompareLikeDataType(vOne: Variant, vTwo: Variant, [vCompare: Variant]) -> Integer", [](Call& c) { return V(cp(c).CompareLikeDataType(c[0], c[1], c[2])); }},
    // vCompare is a VbCompareMethod, a Long.
    {"CompareLikeDataTypeFast(ref vOne: Variant, ref vTwo: Variant, ref vCompare: Long) -> Integer", [](Call& c) { return V(cp(c).CompareLikeDataTypeFast(c[0], c[1], c[2].asLong())); }},
    {"EqualCoerceDataType(vOne: Variant, vTwo: Variant, [vCompare: Variant]) -> Boolean", [](Call& c) { return V(cp(c).EqualCoerceDataType(c[0], c[1], c[2])); }},
    {"EqualExactDataType(vOne: Variant, vTwo: Variant, [vCompare: Variant]) -> Boolean", [](Call& c) { return V(cp(c).EqualExactDataType(c[0], c[1], c[2])); }},
    {"EqualLikeDataType(vOne: Variant, vTwo: Variant, [vCompare: Variant]) -> Boolean", [](Call& c) { return V(cp(c).EqualLikeDataType(c[0], c[1], c[2])); }},
    {"EqualLikeDataTypeFast(ref vOne: Variant, ref vTwo: Variant, ref vCompare: Long) -> Boolean", [](Call& c) { return V(cp(c).EqualLikeDataTypeFast(c[0], c[1], c[2].asLong())); }},
    {"IsBetween(vCheck: Variant, vLow: Variant, vHigh: Variant, [vCompare: Variant]) -> Variant", [](Call& c) { return cp(c).IsBetween(c[0], c[1], c[2], c[3]); }},
    {"IsTrue(vValue: Variant) -> Boolean", [](Call& c) { return V(cp(c).IsTrue(c[0])); }},
    {"IsFalse(vValue: Variant) -> Boolean", [](Call& c) { return V(cp(c).IsFalse(c[0])); }},
    {"IsOn(vValue: Variant) -> Boolean", [](Call& c) { return V(cp(c).IsOn(c[0])); }},
    {"IsOff(vValue: Variant) -> Boolean", [](Call& c) { return V(cp(c).IsOff(c[0])); }},
    {"IsNumber(vValue: Variant) -> Boolean", [](Call& c) { return V(cp(c).IsNumber(c[0])); }},
    {"IsFloatingPointDataType(vValue: Variant) -> Boolean", [](Call& c) { return V(cp(c).IsFloatingPointDataType(c[0])); }},
    {"IsWholeDataType(vValue: Variant) -> Boolean", [](Call& c) { return V(cp(c).IsWholeDataType(c[0])); }},
    {"LikePattern(vSearch: Variant, vPattern: Variant, [vCompare: Variant]) -> Variant", [](Call& c) { return cp(c).LikePattern(c[0], c[1], c[2]); }},
    {"LikeAnyPattern(vSearch: Variant, vPatterns: Variant, vCompare: Variant, vPatternSep: Variant) -> Variant", [](Call& c) { return cp(c).LikeAnyPattern(c[0], c[1], c[2], c[3]); }},
    {"Max2(vOne: Variant, vTwo: Variant, [vCompare: Variant]) -> Variant", [](Call& c) { return cp(c).Max2(c[0], c[1], c[2]); }},
    {"Min2(vOne: Variant, vTwo: Variant, [vCompare: Variant]) -> Variant", [](Call& c) { return cp(c).Min2(c[0], c[1], c[2]); }},
    {"Max2EqualFast(ref rOne: Variant, vTwo: Variant)", [](Call& c) { cp(c).Max2EqualFast(c[0], c[1]); return V(); }},
    {"Min2EqualFast(ref rOne: Variant, vTwo: Variant)", [](Call& c) { cp(c).Min2EqualFast(c[0], c[1]); return V(); }},
    {"StrCompCustom(vStringOne: Variant, vStringTwo: Variant, [vSortOrder: Variant]) -> Variant", [](Call& c) { return cp(c).StrCompCustom(c[0], c[1], c[2]); }},
    {"VarTypeFromString(vVarType: Variant) -> Variant", [](Call& c) { return cp(c).VarTypeFromString(c[0]); }},
    {"VarTypeToString(vVarType: Variant) -> Variant", [](Call& c) { return cp(c).VarTypeToString(c[0]); }},
    {"VarTypeToLength(vVarType: Variant) -> Variant", [](Call& c) { return cp(c).VarTypeToLength(c[0]); }},
    {"VT(vValue: Variant) -> String", [](Call& c) { return V(cp(c).VT(c[0])); }},
});

}  // namespace

}  // namespace qvt
