#include "frame/ConvertValues.h"

#include "automation/TypeLibrary.h"
#include <cstdlib>

#include "frame/CoerceMake.h"
#include "frame/Conversions.h"
#include "frame/FixUps.h"
#include "frame/Frame.h"
#include "frame/Operators.h"
#include "frame/Strings.h"
#include "strings/Quoting.h"

namespace qvt {

namespace {

bool isBlankString(const Variant& v) noexcept { return v.isString() && v.asString().empty(); }

// A conversion core's result, or T's zero when it fails.
template <class T>
T orZero(ErrNo (*core)(const Variant&, T&) noexcept, const Variant& v) noexcept {
    T x{};
    return core(v, x) ? T{} : x;
}

}  // namespace

Variant ConvertValues::BlankToNull(const Variant& vValue) const {
    return isBlankString(vValue) ? Variant::null() : vValue;
}
Variant ConvertValues::BlankToValue(const Variant& vValue, const Variant& vReplace) const {
    return VariantIsBlank(vValue) ? vReplace : vValue;
}
Variant ConvertValues::EmptyToBlank(const Variant& vValue) const {
    return vValue.isEmpty() ? Variant(String()) : vValue;
}
Variant ConvertValues::EmptyToNull(const Variant& vValue) const {
    return vValue.isEmpty() ? Variant::null() : vValue;
}
Variant ConvertValues::EmptyToValue(const Variant& vValue, const Variant& vReplace) const {
    return vValue.isEmpty() ? vReplace : vValue;
}
Variant ConvertValues::NullToBlank(const Variant& vValue) const {
    return vValue.isNull() ? Variant(String()) : vValue;
}
Variant ConvertValues::NullToValue(const Variant& vValue, const Variant& vReplace) const {
    return vValue.isNull() ? vReplace : vValue;
}

Variant ConvertValues::ReplaceValue(const Variant& vOriginal, const Variant& vFind, const Variant& vReplace) const {
    bool isNull = false;
    const bool equal = compareVariants(vOriginal, vFind, vbBinaryCompare, &isNull) == 0 && !isNull;
    return equal ? vReplace : vOriginal;
}

Variant ConvertValues::ReplaceValueOfType(const Variant& vOriginal, const Variant& vFind,
                                          const Variant& vReplace) const {
    if (vOriginal.vt() != vFind.vt()) return vOriginal;
    return ReplaceValue(vOriginal, vFind, vReplace);
}

Variant ConvertValues::ReplaceVarTypeWithValue(const Variant& vOriginal, const Variant& vVarType,
                                               const Variant& vReplace) const {
    // VarType(...) is a typed Integer: a String on the other side converts.
    bool isNull = false;
    const int c = compareVariants(Variant(int16_t(vOriginal.vt())), vVarType, vbBinaryCompare, &isNull,
                                  CompareSite::NumericLiteral);
    return c == 0 && !isNull ? vReplace : vOriginal;
}

bool ConvertValues::CBoolIgnErr(const Variant& vValue) const noexcept { return orZero(toBoolean, vValue); }
uint8_t ConvertValues::CByteIgnErr(const Variant& vValue) const noexcept { return orZero(toByte, vValue); }
int64_t ConvertValues::CCurIgnErr(const Variant& vValue) const noexcept { return orZero(toCurrency, vValue); }
double ConvertValues::CDateIgnErr(const Variant& vValue) const noexcept { return orZero(toDate, vValue); }
double ConvertValues::CDblIgnErr(const Variant& vValue) const noexcept { return orZero(toDouble, vValue); }
Variant ConvertValues::CDecIgnErr(const Variant& vValue) const noexcept {
    Decimal x;
    return toDecimal(vValue, x) ? Variant() : Variant(x);
}
int16_t ConvertValues::CIntIgnErr(const Variant& vValue) const noexcept { return orZero(toInteger, vValue); }
int32_t ConvertValues::CLngIgnErr(const Variant& vValue) const noexcept { return orZero(toLong, vValue); }
int32_t ConvertValues::CSngIgnErr(const Variant& vValue) const noexcept {
    // CSng, then the assignment to the Long result (which may overflow too).
    float f = 0;
    int32_t x = 0;
    if (toSingle(vValue, f) || doubleToLong(f, x)) return 0;
    return x;
}
double ConvertValues::CVDateIgnErr(const Variant& vValue) const noexcept { return CDateIgnErr(vValue); }

Variant ConvertValues::EqualQuotedValue(const Variant& vValue) const {
    auto signed_ = [&](char16_t sign) { return Variant(u"= " + CStr(vValue) + sign); };
    switch (vValue.vt()) {
        case vbEmpty: return Variant(u"= \"\"");
        case vbNull: return Variant(u"Is Null");
        case vbInteger: case vbByte: return signed_(u'%');
        case vbLong: return signed_(u'&');
        case vbSingle: return signed_(u'!');
        case vbDouble: return signed_(u'#');
        case vbCurrency: return signed_(u'@');
        case vbDate: return Variant(u"= #" + CStr(vValue) + u"#");
        case vbString: return Variant(u"= " + quoteString(vValue.asString(), u"\""));
        case vbBoolean: return Variant(vValue.asBoolean() ? u"= True" : u"= False");
        default: return Variant();
    }
}

int32_t ConvertValues::LengthOfType(const Variant& vAny) const {
    if (vAny.isArray()) return 0;
    switch (vAny.vt()) {
        case vbBoolean: case vbInteger: return 2;
        case vbByte: return 1;
        case vbDouble: case vbCurrency: case vbDate: return 8;
        case vbLong: case vbSingle: case vbObject: case vbDataObject: return 4;
        case vbDecimal: return 12;
        case vbEmpty: case vbNull: case vbError: case vbVariant: return 0;
        case vbString: return Len(vAny.asString());
        default: raiseError(errInvalidUseOfNull);  // CLng(Null)
    }
}

namespace {

// The capability table as written: a header of column letters, then one
// row per type, its letter first. Letters: . Boolean, B Byte, @ Currency,
// D Date, C Decimal, # Double, E Empty, % Integer, & Long, N Null,
// ! Single, $ String.
constexpr std::u16string_view kCapabilityRows[13] = {
    u" NE$.B%&!#@CD", u"NNE$.B%&!#@CD", u"EEE$.B%&!#@CD", u"$$$$$$$$$$$$$", u"...$.%%&!#@C#",
    u"BBB$%B%&!#@C#", u"%%%$%%%&!#@C#", u"&&&$&&&&##@C#", u"!!!$!!!#!####", u"###$#########",
    u"@@@$@@@@##@C#", u"CCC$CCCC##CC#", u"DDD$########D"};

int16_t varTypeOfLetter(char16_t c) {
    switch (c) {
        case u'.': return vbBoolean;
        case u'B': return vbByte;
        case u'@': return vbCurrency;
        case u'D': return vbDate;
        case u'C': return vbDecimal;
        case u'#': return vbDouble;
        case u'E': return vbEmpty;
        case u'%': return vbInteger;
        case u'&': return vbLong;
        case u'N': return vbNull;
        case u'!': return vbSingle;
        case u'$': return vbString;
        default: return -1;
    }
}

// Column of a letter in the header, 0 to 11.
int columnOf(char16_t letter) {
    const size_t at = kCapabilityRows[0].find(letter, 1);
    return at == std::u16string_view::npos ? -1 : int(at) - 1;
}

// The table's index of a VarType; -1 for a blank cell. The letter lookup
// covers codes 0 to 256 only: past that, a subscript error.
int capabilityIndex(enum VarType t) {
    if (t > 256) raiseError(errSubscript);
    for (int j = 0; j < 12; ++j)
        if (varTypeOfLetter(kCapabilityRows[0][size_t(j) + 1]) == t) return j;
    return -1;
}

}  // namespace

const ConvertValues::CapabilityTable& ConvertValues::capabilities() const {
    if (built_) return table_;
    for (int r = 1; r <= 12; ++r) {
        const std::u16string_view row = kCapabilityRows[r];
        const int i = columnOf(row[0]);
        for (int j = 0; j < 12; ++j) table_.cell[size_t(i)][size_t(j)] = varTypeOfLetter(row[size_t(j) + 1]);
    }
    // An asymmetric table would make the order of the arguments matter.
    for (size_t i = 0; i < 12; ++i)
        for (size_t j = 0; j < i; ++j)
            if (table_.cell[i][j] != table_.cell[j][i]) std::abort();
    built_ = true;
    return table_;
}

int16_t ConvertValues::MostCapableDataType(const Variant& vOne, const Variant& vTwo) const {
    const CapabilityTable& t = capabilities();
    const int i = capabilityIndex(vOne.vt()), j = capabilityIndex(vTwo.vt());
    if (i < 0 || j < 0) return 0;
    return t.cell[size_t(i)][size_t(j)];
}

bool ConvertValues::PromoteToMostCapableDataType(Variant& rOne, Variant& rTwo) const {
    if (rOne.vt() == rTwo.vt()) return true;
    const Variant m(MostCapableDataType(rOne, rTwo));
    const FixUps& fx = fixUps();
    if (rOne.vt() != m.asInteger()) rOne = fx.FixUpToType(rOne, m);
    if (rTwo.vt() != m.asInteger()) rTwo = fx.FixUpToType(rTwo, m);
    return true;
}

bool ConvertValues::NonZeroToTrue(const Variant& vValue) const {
    if (IsNumeric(vValue)) return CDbl(vValue) != 0;
    if (IsDate(vValue)) return CDbl(CDate(vValue)) != 0;
    return false;
}

bool ConvertValues::VariantIsBlank(const Variant& vValue) const noexcept {
    return vValue.isEmpty() || vValue.isNull() || isBlankString(vValue);
}

// A Variant copy shares an object, as Set does, and copies anything else.
void ConvertValues::SetVariants(Variant& rDest, const Variant& rSrc) const { rDest = rSrc; }

void ConvertValues::SwapVariants(Variant& rOne, Variant& rTwo) const { rOne.swap(rTwo); }

void ConvertValues::SwapNonObjects(Variant& rOne, Variant& rTwo) const {
    // A value assignment of an object reads its default member, which the
    // library's objects do not have.
    for (const Variant* v : {&rOne, &rTwo})
        if (v->isObject()) raiseError(v->isNothing() ? errObjectVariableNotSet : errNoSuchMember);
    rOne.swap(rTwo);
}

Variant ConvertValues::VariantOfType(Variant vVarType) const {
    return fixUpFrame(fixUps().FixUpVariantToIntegerMandFn(vVarType), [&] {
        int16_t t = vVarType.asInteger();
        if (t > vbArray) {
            t = int16_t(t - vbArray);
            switch (t) {
                case vbDataObject: t = vbObject; [[fallthrough]];
                case vbInteger: case vbLong: case vbSingle: case vbDouble: case vbCurrency: case vbDate:
                case vbString: case vbObject: case vbError: case vbBoolean: case vbVariant: case vbDecimal:
                case vbByte:
                    return Variant::unallocatedArray(static_cast<enum VarType>(t));
                default:
                    return Variant::null();
            }
        }
        switch (t) {
            case vbBoolean: return Variant(false);
            case vbByte: return Variant(uint8_t(0));
            case vbCurrency: return Variant::currency(0);
            case vbDate: return Variant::date(0);
            case vbDecimal: return Variant(Decimal{});
            case vbDouble: return Variant(0.0);
            case vbInteger: return Variant(int16_t(0));
            case vbLong: return Variant(int32_t(0));
            case vbSingle: return Variant(0.0f);
            case vbString: return Variant(String());
            case vbObject: case vbDataObject: return Variant::nothing();
            case vbError: return CVErr(0);
            case vbEmpty: case vbVariant: return Variant();
            default: return Variant::null();
        }
    });
}

Variant ConvertValues::VariantStringToVariant(const Variant& vValue) const {
    if (vValue.isEmpty() || isBlankString(vValue)) return Variant(String());
    const String s = CStr(vValue);
    return coerceMake().CoerceToVarType(Variant(Mid(s, 2)), Variant(Asc(s)));
}

String ConvertValues::VariantToVariantString(const Variant& vValue) const {
    return Chr(vValue.vt()) + coerceMake().MakeVarType(vValue);
}

String ConvertValues::VariantToCString(const Variant& vBasicString) const {
    return CStr(opConcat(vBasicString, Variant(Chr(0))));
}

String ConvertValues::VariantToFixedCString(Variant vBasicString, Variant vCStringSize) const {
    const FixUps& fx = fixUps();
    fx.FixUpVariantToStringSub(vBasicString, Variant(String()));
    fx.FixUpVariantToLongMandSub(vCStringSize, Variant(int16_t(255)));
    const String s = CStr(vBasicString);
    const int64_t size = CLng(vCStringSize);
    if (size <= 0) return String(1, u'\0');
    if (int64_t(s.size()) + 1 >= size) return Left(s, size - 1) + u'\0';
    return s + String(size_t(size) - s.size(), u'\0');
}

String ConvertValues::VariantToString(const Variant& vValue) const {
    return vValue.isNull() ? String() : CStr(vValue);
}

namespace {

// The source text both renderers share: Null for Empty and Null, numbers
// with their type signs, dates in #s, Booleans as words; empty where the
// value is of a type this part does not write.
String commonExpression(const Variant& v, bool& written) {
    written = true;
    switch (v.vt()) {
        case vbEmpty: case vbNull: return u"Null";
        case vbInteger: return CStr(v) + u'%';
        case vbLong: return CStr(v) + u'&';
        case vbSingle: return CStr(v) + u'!';
        case vbDouble: return CStr(v) + u'#';
        case vbCurrency: return CStr(v) + u'@';
        case vbDate: return u'#' + CStr(v) + u'#';
        case vbBoolean: return v.asBoolean() ? u"True" : u"False";
        default: written = false; return String();
    }
}

}  // namespace

String ConvertValues::VariantToVBConstExpression(const Variant& vValue) const {
    bool written;
    String s = commonExpression(vValue, written);
    if (written) return s;
    if (vValue.vt() == vbByte) return CStr(vValue) + u'%';
    if (vValue.isString()) return doubleQuoteString(vValue.asString());
    return CStr(vValue);
}

String ConvertValues::VariantToVBEvalExpression(const Variant& vValue) const {
    bool written;
    String s = commonExpression(vValue, written);
    if (written) return s;
    switch (vValue.vt()) {
        case vbByte: return u"CByte(" + CStr(vValue) + u')';
        case vbDecimal: return u"CDec(" + CStr(vValue) + u')';
        case vbString: return u'"' + doubleQuoteString(vValue.asString()) + u'"';
        default: return String();
    }
}

ConvertValues& convertValues() noexcept { return globalInstance<ConvertValues>(); }

// ---------------------------------------------------------------- type library

namespace {

using V = Variant;
ConvertValues& cv(Call& c) { return c.self<ConvertValues>(); }

const ClassRegistration kConvertValues(u"ConvertValues", ClassKind::Global, globalFactory<ConvertValues>,
    u"Conversions that cannot fail, substitutes for special values, and values as text.", {
    {"Property Get EmptyValue -> Variant", [](Call& c) { return cv(c).EmptyValue(); }},
    {"Property Get NullValue -> Variant", [](Call& c) { return cv(c).NullValue(); }},
    {"BlankToNull(vValue: Variant) -> Variant", [](Call& c) { return cv(c).BlankToNull(c[0]); }},
    {"EmptyToBlank(vValue: Variant) -> Variant", [](Call& c) { return cv(c).EmptyToBlank(c[0]); }},
    {"EmptyToNull(vValue: Variant) -> Variant", [](Call& c) { return cv(c).EmptyToNull(c[0]); }},
    {"NullToBlank(vValue: Variant) -> Variant", [](Call& c) { return cv(c).NullToBlank(c[0]); }},
    {"BlankToValue(vValue: Variant, vReplace: Variant) -> Variant", [](Call& c) { return cv(c).BlankToValue(c[0], c[1]); }},
    {"EmptyToValue(vValue: Variant, vReplace: Variant) -> Variant", [](Call& c) { return cv(c).EmptyToValue(c[0], c[1]); }},
    {"NullToValue(vValue: Variant, vReplace: Variant) -> Variant", [](Call& c) { return cv(c).NullToValue(c[0], c[1]); }},
    {"ReplaceValue(vOriginal: Variant, vFind: Variant, vReplace: Variant) -> Variant", [](Call& c) { return cv(c).ReplaceValue(c[0], c[1], c[2]); }},
    {"ReplaceValueOfType(vOriginal: Variant, vFind: Variant, vReplace: Variant) -> Variant", [](Call& c) { return cv(c).ReplaceValueOfType(c[0], c[1], c[2]); }},
    {"ReplaceVarTypeWithValue(vOriginal: Variant, vVarType: Variant, vReplace: Variant) -> Variant", [](Call& c) { return cv(c).ReplaceVarTypeWithValue(c[0], c[1], c[2]); }},
    {"CBoolIgnErr(vValue: Variant) -> Boolean", [](Call& c) { return V(cv(c).CBoolIgnErr(c[0])); }},
    {"CByteIgnErr(vValue: Variant) -> Byte", [](Call& c) { return V(cv(c).CByteIgnErr(c[0])); }},
    {"CCurIgnErr(vValue: Variant) -> Currency", [](Call& c) { return V::currency(cv(c).CCurIgnErr(c[0])); }},
    {"CDateIgnErr(vValue: Variant) -> Date", [](Call& c) { return V::date(cv(c).CDateIgnErr(c[0])); }},
    {"CDblIgnErr(vValue: Variant) -> Double", [](Call& c) { return V(cv(c).CDblIgnErr(c[0])); }},
    {"CDecIgnErr(vValue: Variant) -> Variant", [](Call& c) { return cv(c).CDecIgnErr(c[0]); }},
    {"CIntIgnErr(vValue: Variant) -> Integer", [](Call& c) { return V(cv(c).CIntIgnErr(c[0])); }},
    {"CLngIgnErr(vValue: Variant) -> Long", [](Call& c) { return V(cv(c).CLngIgnErr(c[0])); }},
    {"CSngIgnErr(vValue: Variant) -> Long", [](Call& c) { return V(cv(c).CSngIgnErr(c[0])); }},
    {"CVarIgnErr(vValue: Variant) -> Variant", [](Call& c) { return cv(c).CVarIgnErr(c[0]); }},
    {"CVDateIgnErr(vValue: Variant) -> Date", [](Call& c) { return V::date(cv(c).CVDateIgnErr(c[0])); }},
    {"EqualQuotedValue(vValue: Variant) -> Variant", [](Call& c) { return cv(c).EqualQuotedValue(c[0]); }},
    {"LengthOfType(vAny: Variant) -> Long", [](Call& c) { return V(cv(c).LengthOfType(c[0])); }},
    {"MostCapableDataType(vOne: Variant, vTwo: Variant) -> Integer", [](Call& c) { return V(cv(c).MostCapableDataType(c[0], c[1])); }},
    {"PromoteToMostCapableDataType(ref rOne: Variant, ref rTwo: Variant) -> Boolean", [](Call& c) { return V(cv(c).PromoteToMostCapableDataType(c[0], c[1])); }},
    {"NonZeroToTrue(vValue: Variant) -> Boolean", [](Call& c) { return V(cv(c).NonZeroToTrue(c[0])); }},
    {"VariantIsBlank(vValue: Variant) -> Boolean", [](Call& c) { return V(cv(c).VariantIsBlank(c[0])); }},
    {"SetVariants(ref rDest: Variant, ref rSrc: Variant)", [](Call& c) { cv(c).SetVariants(c[0], c[1]); return V(); }},
    {"SwapNonObjects(ref rOne: Variant, ref rTwo: Variant)", [](Call& c) { cv(c).SwapNonObjects(c[0], c[1]); return V(); }},
    {"SwapVariants(ref rOne: Variant, ref rTwo: Variant)", [](Call& c) { cv(c).SwapVariants(c[0], c[1]); return V(); }},
    {"VariantOfType(vVarType: Variant) -> Variant", [](Call& c) { return cv(c).VariantOfType(c[0]); }},
    {"VariantStringToVariant(vValue: Variant) -> Variant", [](Call& c) { return cv(c).VariantStringToVariant(c[0]); }},
    {"VariantToVariantString(vValue: Variant) -> String", [](Call& c) { return V(cv(c).VariantToVariantString(c[0])); }},
    {"VariantToCString(vBasicString: Variant) -> String", [](Call& c) { return V(cv(c).VariantToCString(c[0])); }},
    {"VariantToFixedCString([vBasicString: Variant], [vCStringSize: Variant]) -> String", [](Call& c) { return V(cv(c).VariantToFixedCString(c[0], c[1])); }},
    {"VariantToString(vValue: Variant) -> String", [](Call& c) { return V(cv(c).VariantToString(c[0])); }},
    {"VariantToVBConstExpression(vValue: Variant) -> String", [](Call& c) { return V(cv(c).VariantToVBConstExpression(c[0])); }},
    {"VariantToVBEvalExpression(vValue: Variant) -> String", [](Call& c) { return V(cv(c).VariantToVBEvalExpression(c[0])); }},
});

}  // namespace

}  // namespace qvt
