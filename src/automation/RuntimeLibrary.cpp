// The runtime operations of the value model, registered under Basic's own
// library name so that clients call them unqualified. The non-$ forms take
// and give Variants and pass Null through; the $ forms give a String and
// raise 94 on Null (through the typed String parameter).
#include <cmath>

#include "automation/TypeLibrary.h"
#include "frame/Conversions.h"
#include "frame/Locale.h"
#include "frame/Operators.h"
#include "frame/Strings.h"

namespace qvt {

namespace {

using V = Variant;

const String& str(const Variant& v) { return v.asString(); }
int32_t lng(const Variant& v) { return v.asLong(); }

// The text of a Variant operand, for the Variant forms once Null is out.
String text(const Variant& v) {
    String s;
    check(toText(v, s));
    return s;
}

int32_t compareArg(const Variant& v) { return v.isMissing() ? int32_t(vbBinaryCompare) : CLng(v); }

// String$(n, c): c is a character code (taken modulo 256) or a String's first unit.
char16_t fillUnit(const Variant& c) {
    if (c.isString()) {
        if (c.asString().empty()) raiseError(errInvalidCall);
        return c.asString()[0];
    }
    int32_t code = CLng(c) % 256;
    if (code < 0) code += 256;
    return ansiToUnicode(uint8_t(code));
}

// InStr([start,] s1, s2[, compare]): with two arguments there is no start.
Variant inStr(Call& c) {
    bool withStart = c.passed() >= 3;
    const Variant& start = withStart ? c[0] : Variant();
    const Variant& s1 = withStart ? c[1] : c[0];
    const Variant& s2 = withStart ? c[2] : c[1];
    if (c.passed() < 2) raiseError(errWrongArgumentCount);
    int32_t from = withStart ? CLng(start) : 1;
    int32_t mode = withStart ? compareArg(c[3]) : int32_t(vbBinaryCompare);
    if (s1.isNull() || s2.isNull()) return V::null();
    return V(InStr(from, text(s1), text(s2), mode));
}

Variant bound(Call& c, bool upper) {
    const Variant& a = c[0];
    if (!a.isArray()) raiseError(errTypeMismatch);
    int32_t dim = lng(c[1]);
    return V(upper ? a.asArray().ubound(dim) : a.asArray().lbound(dim));
}

// The Err object: the runtime's record of the last error.
class ErrObjectHandle : public Object {
public:
    std::u16string_view className() const noexcept override { return u"ErrObject"; }
};

const ClassRegistration kErrObject(u"ErrObject", ClassKind::Noncreatable, nullptr,
    u"The number, description and source of the last run-time error.", {
    {"Property Get Number -> Long", [](Call&) { return V(int32_t(Err().Number)); }},
    {"Property Let Number(Value: Long)", [](Call& c) {
        Err().Number = lng(c[0]);
        if (Err().Number == 0) Err().Clear();
        else if (Err().Description.empty()) Err().Description = errorText(Err().Number);
        return V(); }},
    {"Property Get Description -> String", [](Call&) { return V(Err().Description); }},
    {"Property Let Description(Value: String)", [](Call& c) { Err().Description = str(c[0]); return V(); }},
    {"Property Get Source -> String", [](Call&) { return V(Err().Source); }},
    {"Property Let Source(Value: String)", [](Call& c) { Err().Source = str(c[0]); return V(); }},
    {"Clear()", [](Call&) { Err().Clear(); return V(); }},
    {"Raise(Number: Long, [Source: Variant], [Description: Variant])", [](Call& c) -> V {
        String source = c[1].isMissing() ? String() : CStr(c[1]);
        String description = c[2].isMissing() ? String() : CStr(c[2]);
        Err().Raise(lng(c[0]), std::move(source), std::move(description)); }},
});

const ClassRegistration kRuntime(kRuntimeClassName, ClassKind::Runtime, nullptr,
    u"The Basic runtime: string, number, date and file operations, callable by name alone.", {
    // Strings
    {"Len(Expression: Variant) -> Variant", [](Call& c) { return Len(c[0]); }},
    {"Mid(String: Variant, Start: Long, [Length: Variant]) -> Variant", [](Call& c) {
        if (c[0].isNull()) return V::null();
        String s = text(c[0]);
        return c[2].isMissing() ? V(Mid(s, lng(c[1]))) : V(Mid(s, lng(c[1]), CLng(c[2]))); }},
    {"Mid$(String: String, Start: Long, [Length: Variant]) -> String", [](Call& c) {
        return c[2].isMissing() ? V(Mid(str(c[0]), lng(c[1]))) : V(Mid(str(c[0]), lng(c[1]), CLng(c[2]))); }},
    {"Left(String: Variant, Length: Long) -> Variant", [](Call& c) {
        return c[0].isNull() ? V::null() : V(Left(text(c[0]), lng(c[1]))); }},
    {"Left$(String: String, Length: Long) -> String", [](Call& c) { return V(Left(str(c[0]), lng(c[1]))); }},
    {"Right(String: Variant, Length: Long) -> Variant", [](Call& c) {
        return c[0].isNull() ? V::null() : V(Right(text(c[0]), lng(c[1]))); }},
    {"Right$(String: String, Length: Long) -> String", [](Call& c) { return V(Right(str(c[0]), lng(c[1]))); }},
    {"LTrim(String: Variant) -> Variant", [](Call& c) { return c[0].isNull() ? V::null() : V(LTrim(text(c[0]))); }},
    {"LTrim$(String: String) -> String", [](Call& c) { return V(LTrim(str(c[0]))); }},
    {"RTrim(String: Variant) -> Variant", [](Call& c) { return c[0].isNull() ? V::null() : V(RTrim(text(c[0]))); }},
    {"RTrim$(String: String) -> String", [](Call& c) { return V(RTrim(str(c[0]))); }},
    {"Trim(String: Variant) -> Variant", [](Call& c) { return c[0].isNull() ? V::null() : V(Trim(text(c[0]))); }},
    {"Trim$(String: String) -> String", [](Call& c) { return V(Trim(str(c[0]))); }},
    {"UCase(String: Variant) -> Variant", [](Call& c) { return c[0].isNull() ? V::null() : V(UCase(text(c[0]))); }},
    {"UCase$(String: String) -> String", [](Call& c) { return V(UCase(str(c[0]))); }},
    {"LCase(String: Variant) -> Variant", [](Call& c) { return c[0].isNull() ? V::null() : V(LCase(text(c[0]))); }},
    {"LCase$(String: String) -> String", [](Call& c) { return V(LCase(str(c[0]))); }},
    {"Space(Number: Long) -> Variant", [](Call& c) { return V(Space(lng(c[0]))); }},
    {"Space$(Number: Long) -> String", [](Call& c) { return V(Space(lng(c[0]))); }},
    {"String(Number: Long, Character: Variant) -> Variant", [](Call& c) {
        return c[1].isNull() ? V::null() : V(StringOf(lng(c[0]), fillUnit(c[1]))); }},
    {"String$(Number: Long, Character: Variant) -> String", [](Call& c) {
        if (c[1].isNull()) raiseError(errInvalidUseOfNull);
        return V(StringOf(lng(c[0]), fillUnit(c[1]))); }},
    {"InStr([Start: Variant], [String1: Variant], [String2: Variant], [Compare: Variant]) -> Variant", inStr},
    {"InStrRev(StringCheck: String, StringMatch: String, [Start: Long = -1], [Compare: Long = 0]) -> Long",
     [](Call& c) { return V(InStrRev(str(c[0]), str(c[1]), lng(c[2]), lng(c[3]))); }},
    {"Replace(Expression: String, Find: String, Replace: String, [Start: Long = 1], [Count: Long = -1], "
     "[Compare: Long = 0]) -> String",
     [](Call& c) { return V(Replace(str(c[0]), str(c[1]), str(c[2]), lng(c[3]), lng(c[4]), lng(c[5]))); }},
    {"StrReverse(Expression: String) -> String", [](Call& c) { return V(StrReverse(str(c[0]))); }},
    {"StrComp(String1: Variant, String2: Variant, [Compare: Long = 0]) -> Variant", [](Call& c) {
        if (c[0].isNull() || c[1].isNull()) return V::null();
        return V(int16_t(StrComp(text(c[0]), text(c[1]), lng(c[2])))); }},  // an Integer, as Basic's
    {"Asc(String: String) -> Integer", [](Call& c) { return V(int16_t(Asc(str(c[0])))); }},
    {"AscW(String: String) -> Integer", [](Call& c) { return V(int16_t(AscW(str(c[0])))); }},
    {"Chr(CharCode: Long) -> Variant", [](Call& c) { return V(Chr(lng(c[0]))); }},
    {"Chr$(CharCode: Long) -> String", [](Call& c) { return V(Chr(lng(c[0]))); }},
    {"ChrW(CharCode: Long) -> Variant", [](Call& c) { return V(ChrW(lng(c[0]))); }},
    {"ChrW$(CharCode: Long) -> String", [](Call& c) { return V(ChrW(lng(c[0]))); }},
    {"StrConv(String: Variant, Conversion: Long) -> Variant", [](Call& c) {
        return c[0].isNull() ? V::null() : V(StrConv(text(c[0]), lng(c[1]))); }},
    {"Str(Number: Variant) -> Variant", [](Call& c) { return c[0].isNull() ? V::null() : V(Str(c[0])); }},
    {"Str$(Number: Variant) -> String", [](Call& c) { return V(Str(c[0])); }},
    {"Hex(Number: Variant) -> Variant", [](Call& c) { return c[0].isNull() ? V::null() : V(Hex(c[0])); }},
    {"Hex$(Number: Variant) -> String", [](Call& c) { return V(Hex(c[0])); }},
    {"Oct(Number: Variant) -> Variant", [](Call& c) { return c[0].isNull() ? V::null() : V(Oct(c[0])); }},
    {"Oct$(Number: Variant) -> String", [](Call& c) { return V(Oct(c[0])); }},

    // Conversions and tests
    {"CBool(Expression: Variant) -> Boolean", [](Call& c) { return V(CBool(c[0])); }},
    {"CByte(Expression: Variant) -> Byte", [](Call& c) { return V(CByte(c[0])); }},
    {"CInt(Expression: Variant) -> Integer", [](Call& c) { return V(CInt(c[0])); }},
    {"CLng(Expression: Variant) -> Long", [](Call& c) { return V(CLng(c[0])); }},
    {"CSng(Expression: Variant) -> Single", [](Call& c) { return V(CSng(c[0])); }},
    {"CDbl(Expression: Variant) -> Double", [](Call& c) { return V(CDbl(c[0])); }},
    {"CCur(Expression: Variant) -> Currency", [](Call& c) { return CCur(c[0]); }},
    {"CDec(Expression: Variant) -> Variant", [](Call& c) { return CDec(c[0]); }},
    {"CDate(Expression: Variant) -> Date", [](Call& c) { return CDate(c[0]); }},
    {"CStr(Expression: Variant) -> String", [](Call& c) { return V(CStr(c[0])); }},
    {"CVar(Expression: Variant) -> Variant", [](Call& c) { return c[0]; }},
    {"CVErr(Expression: Variant) -> Variant", [](Call& c) { return CVErr(CLng(c[0])); }},
    {"IsNumeric(Expression: Variant) -> Boolean", [](Call& c) { return V(IsNumeric(c[0])); }},
    {"IsDate(Expression: Variant) -> Boolean", [](Call& c) { return V(IsDate(c[0])); }},
    {"IsNull(Expression: Variant) -> Boolean", [](Call& c) { return V(IsNull(c[0])); }},
    {"IsEmpty(Expression: Variant) -> Boolean", [](Call& c) { return V(IsEmpty(c[0])); }},
    {"IsMissing(ArgName: Variant) -> Boolean", [](Call& c) { return V(IsMissing(c[0])); }},
    {"IsArray(VarName: Variant) -> Boolean", [](Call& c) { return V(IsArray(c[0])); }},
    {"IsObject(Expression: Variant) -> Boolean", [](Call& c) { return V(IsObject(c[0])); }},
    {"IsError(Expression: Variant) -> Boolean", [](Call& c) { return V(c[0].isError()); }},
    {"VarType(VarName: Variant) -> Integer", [](Call& c) { return V(int16_t(c[0].vt())); }},
    {"TypeName(VarName: Variant) -> String", [](Call& c) { return V(TypeName(c[0])); }},
    {"IIf(Expression: Variant, TruePart: Variant, FalsePart: Variant) -> Variant", [](Call& c) {
        bool cond = !c[0].isNull() && CBool(c[0]);
        return cond ? c[1] : c[2]; }},

    // Mathematics
    {"Abs(Number: Variant) -> Variant", [](Call& c) { return c[0].isNull() ? V::null() : Abs(c[0]); }},
    {"Sgn(Number: Variant) -> Variant", [](Call& c) { return c[0].isNull() ? V::null() : Sgn(c[0]); }},
    {"Int(Number: Variant) -> Variant", [](Call& c) { return c[0].isNull() ? V::null() : Int(c[0]); }},
    {"Fix(Number: Variant) -> Variant", [](Call& c) { return c[0].isNull() ? V::null() : Fix(c[0]); }},
    {"Sqr(Number: Double) -> Double", [](Call& c) { return V(Sqr(c[0].asDouble())); }},
    {"Exp(Number: Double) -> Double", [](Call& c) { return V(Exp(c[0].asDouble())); }},
    {"Log(Number: Double) -> Double", [](Call& c) { return V(Log(c[0].asDouble())); }},
    {"Sin(Number: Double) -> Double", [](Call& c) { return V(Sin(c[0].asDouble())); }},
    {"Cos(Number: Double) -> Double", [](Call& c) { return V(Cos(c[0].asDouble())); }},
    {"Tan(Number: Double) -> Double", [](Call& c) { return V(Tan(c[0].asDouble())); }},
    {"Atn(Number: Double) -> Double", [](Call& c) { return V(Atn(c[0].asDouble())); }},
    {"Round(Number: Variant, [NumDigitsAfterDecimal: Long = 0]) -> Variant", [](Call& c) {
        return c[0].isNull() ? V::null() : Round(c[0], lng(c[1])); }},

    // Arrays
    {"Array(ref ArgList: array of Variant) -> Variant", [](Call& c) { return c[0]; }},
    {"LBound(ArrayName: Variant, [Dimension: Long = 1]) -> Long", [](Call& c) { return bound(c, false); }},
    {"UBound(ArrayName: Variant, [Dimension: Long = 1]) -> Long", [](Call& c) { return bound(c, true); }},

    // Errors
    {"Error([ErrorNumber: Variant]) -> Variant", [](Call& c) {
        return V(errorText(c[0].isMissing() ? Err().Number : CLng(c[0]))); }},
    {"Error$([ErrorNumber: Variant]) -> String", [](Call& c) {
        return V(errorText(c[0].isMissing() ? Err().Number : CLng(c[0]))); }},
    {"Property Get Err -> Object", [](Call&) {
        static Variant handle(static_cast<Object*>(new ErrObjectHandle()));
        return handle; }},

    // Constants
    {"Property Get vbCrLf -> String", [](Call&) { return V(u"\r\n"); }},
    {"Property Get vbCr -> String", [](Call&) { return V(u"\r"); }},
    {"Property Get vbLf -> String", [](Call&) { return V(u"\n"); }},
    {"Property Get vbTab -> String", [](Call&) { return V(u"\t"); }},
    {"Property Get vbNullChar -> String", [](Call&) { return V(String(1, u'\0')); }},
    {"Property Get vbNullString -> String", [](Call&) { return V(String()); }},
    {"Property Get vbBinaryCompare -> Long", [](Call&) { return V(int32_t(vbBinaryCompare)); }},
    {"Property Get vbTextCompare -> Long", [](Call&) { return V(int32_t(vbTextCompare)); }},
    {"Property Get vbDatabaseCompare -> Long", [](Call&) { return V(int32_t(vbDatabaseCompare)); }},
});

}  // namespace

}  // namespace qvt
