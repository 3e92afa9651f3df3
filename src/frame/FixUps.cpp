#include "frame/FixUps.h"

#include "automation/TypeLibrary.h"
#include "frame/Frame.h"
#include "frame/Operators.h"
#include "frame/Strings.h"

namespace qvt {

namespace fixup {

namespace {

// The numeric path: CBool, CByte, CCur, CDbl then Date, CDec, CDbl, CInt,
// CLng, CSng of a value IsNumeric accepts.
ErrNo numericPath(const Variant& v, enum VarType t, Variant& out) noexcept {
    if (t != vbDate) return convertTo(v, t, out);
    // A number, not the date parser: "36527" is a day count here.
    double d;
    ErrNo e = toDouble(v, d);
    if (!e && !(e = checkDateRange(d))) out = Variant::date(d);
    return e;
}

// The date path, from the day count CDate gave.
ErrNo datePath(double day, enum VarType t, Variant& out) noexcept {
    ErrNo e = 0;
    switch (t) {
        case vbBoolean: out = Variant(day != 0); break;
        case vbByte: {
            // Through Integer, as CByte(CInt(d)) would: the Integer range is
            // tested first, then the Byte range.
            int16_t i;
            if ((e = doubleToInteger(day, i))) break;
            if (i < 0 || i > 255) return errOverflow;
            out = Variant(static_cast<uint8_t>(i));
            break;
        }
        case vbCurrency: { int64_t c; if (!(e = doubleToCurrency(day, c))) out = Variant::currency(c); break; }
        case vbDate: out = Variant::date(day); break;
        case vbDecimal: { Decimal d; if (!(e = toDecimal(Variant::date(day), d))) out = Variant(d); break; }
        case vbDouble: out = Variant(day); break;
        case vbInteger: { int16_t i; if (!(e = doubleToInteger(day, i))) out = Variant(i); break; }
        case vbLong: { int32_t i; if (!(e = doubleToLong(day, i))) out = Variant(i); break; }
        case vbSingle: { float f; if (!(e = doubleToSingle(day, f))) out = Variant(f); break; }
        default: e = errTypeMismatch;
    }
    return e;
}

}  // namespace

// Text that converts is numeric text, so a String is parsed once when it is
// a number; only a failed conversion asks IsNumeric whether it was one.
// (Not for Boolean: CBool also takes the words True and False, which are
// not numeric.)
ErrNo mandConvert(const Variant& v, enum VarType t, Variant& out) noexcept {
    if (v.isString() && t != vbBoolean) {
        const ErrNo e = numericPath(v, t, out);
        if (e == 0 || IsNumeric(v)) return e;
    } else if (IsNumeric(v)) {
        return numericPath(v, t, out);
    }
    if (IsDate(v)) {
        double day;
        if (ErrNo e = toDate(v, day)) return e;
        return datePath(day, t, out);
    }
    return errTypeMismatch;
}

namespace {

// Null, Error values (Missing among them), objects and arrays are neither
// numbers nor dates: every typed fix-up refuses them at once.
bool neverConverts(const Variant& r) noexcept {
    return r.isNull() || r.isError() || r.isObject() || r.isArray() || r.vt() == vbDataObject;
}

}  // namespace

bool mandFn(Variant& r, enum VarType t) noexcept {
    if (neverConverts(r)) return false;
    if (t == vbDouble && (r.isNumberType() || r.isEmpty())) {
        // Every number type converts to a Double; the hottest case gets no detour.
        double d;
        if (toDouble(r, d)) return false;
        r = Variant(d);
        return true;
    }
    Variant out;
    if (mandConvert(r, t, out)) return false;
    r = std::move(out);
    return true;
}

bool maybeFn(Variant& r, enum VarType t) noexcept {
    if (neverConverts(r)) return false;
    Variant out;
    if (r.isString() && t != vbBoolean) {
        // Parsed once, as in mandConvert.
        if (numericPath(r, t, out) == 0) {
            r = std::move(out);
            return true;
        }
        if (IsNumeric(r)) return false;
    } else if (IsNumeric(r)) {
        // A held number keeps its type: the conversion is only a range test.
        if (numericPath(r, t, out)) return false;
        if (r.isEmpty() || r.isString()) r = std::move(out);
        return true;
    }
    if (IsDate(r)) {
        // Whatever the target, a date stays or becomes a Date, untested.
        double day;
        if (toDate(r, day)) return false;
        r = Variant::date(day);
        return true;
    }
    return false;
}

bool textInPlace(Variant& r) {
    String s;
    if (toText(r, s)) return false;
    r = Variant(std::move(s));
    return true;
}

bool stringFn(Variant& r) { return !r.isError() && textInPlace(r); }

}  // namespace fixup

void FixUps::FixUpVariantToStringSub(Variant& rArgument, const Variant& vDefault) const {
    if (rArgument.isString()) return;
    if (rArgument.isMissing() || !fixup::textInPlace(rArgument)) rArgument = vDefault;
}

bool FixUps::FixUpVariantToStringFnRecursive(Variant& rArgument) const {
    switch (int(rArgument.vt())) {
        case vbNull:
        case vbObject:
        case vbDataObject:
            return false;
        case vbString:
            return true;
        case vbArray | vbVariant: {
            const SafeArray& a = rArgument.asArray();
            // Walking dimension 1 by one subscript: any other shape fails as
            // the subscript would (9), and so does an unallocated array.
            if (a.dimensions() != 1) return false;
            const int32_t lo = a.lbound(1), hi = a.ubound(1);
            for (int32_t i = lo; i <= hi; ++i) {
                // Elements that already are Strings need no write access, so
                // a shared array is only copied when something changes.
                if (rArgument.asArray().at(i).isString()) continue;
                if (!FixUpVariantToStringFnRecursive(rArgument.arrayForWrite().at(i))) return false;
            }
            return true;
        }
        default:
            return fixup::textInPlace(rArgument);
    }
}

void FixUps::FixUpVariantCompare(Variant& rCompare) const {
    if (rCompare.vt() == vbLong) return;
    rCompare = Variant(IsNumeric(rCompare) ? CLng(rCompare) : int32_t(0));
}

bool FixUps::FixUpVariantBounds(const Variant& vArray, Variant& rLowerBound, Variant& rUpperBound,
                                Variant vDimension) const {
    FixUpVariantToIntegerMandSub(vDimension, Variant(int16_t(1)));
    FixUpVariantToLongMandSub(rLowerBound, Variant(int16_t(1)));
    // UBound runs whether or not an upper bound was given.
    if (!vArray.isArray()) raiseError(errTypeMismatch);
    const Variant upper(vArray.asArray().ubound(CInt(vDimension)));
    FixUpVariantToLongMandSub(rUpperBound, upper);
    bool isNull = false;
    return compareVariants(rLowerBound, rUpperBound, vbBinaryCompare, &isNull) <= 0 && !isNull;
}

void FixUps::FixUpVariantToRange(Variant& rValue, const Variant& vMin, const Variant& VMAX) const {
    bool isNull = false;
    if (compareVariants(rValue, vMin, vbBinaryCompare, &isNull) < 0 && !isNull) {
        rValue = vMin;
        return;
    }
    if (compareVariants(rValue, VMAX, vbBinaryCompare, &isNull) > 0 && !isNull) rValue = VMAX;
}

Variant FixUps::ArgumentsToVariant(std::span<const Variant> vArgs) const { return Variant::vector(vArgs); }

Variant FixUps::FixUpToType(const Variant& vValue, Variant vVarType) const {
    if (!FixUpVariantToIntegerMandFn(vVarType)) return Variant::null();
    const int16_t t = vVarType.asInteger();
    if (t == vValue.vt()) return vValue;
    Variant v = vValue;
    switch (t) {
        case vbString:
            if (!FixUpVariantToStringFn(v)) v = Variant(String());
            return v;
        case vbBoolean: FixUpVariantToBooleanMandSub(v, Variant(false)); return v;
        case vbByte: return FixUpVariantToByteMandFn(v) ? v : Variant(uint8_t(0));
        case vbCurrency: FixUpVariantToCurrencyMandSub(v, Variant::currency(0)); return v;
        case vbDataObject: return Variant::nothing();
        case vbDate: return FixUpVariantToDateMandFn(v) ? v : Variant::date(0);
        case vbDecimal: FixUpVariantToDecimalMandSub(v, Variant(Decimal{})); return v;
        case vbDouble: FixUpVariantToDoubleMandSub(v, Variant(0.0)); return v;
        case vbEmpty: return Variant();
        case vbError:
            FixUpVariantToLongMandSub(v, Variant(int32_t(0)));
            return CVErr(v.asLong());
        case vbInteger: FixUpVariantToIntegerMandSub(v, Variant(int16_t(0))); return v;
        case vbLong: FixUpVariantToLongMandSub(v, Variant(int32_t(0))); return v;
        case vbNull: return Variant::null();
        case vbObject: return Variant::nothing();
        case vbSingle: FixUpVariantToSingleMandSub(v, Variant(0.0f)); return v;
        case vbVariant: return v;
        default: return Variant::null();
    }
}

bool FixUps::ComplexStringToReals(Variant& rReal, Variant& rImag, const Variant& vValue,
                                  Variant vSupportStringDates) const {
    if (IsNumeric(vValue)) {
        const enum VarType t = vValue.vt();
        rReal = (t == vbEmpty || t == vbDate || t == vbString) ? Variant(CDbl(vValue)) : vValue;
        rImag = Variant(int16_t(0));
        return true;
    }
    if (!vValue.isString()) return false;
    const String& s = vValue.asString();
    const int32_t bar = InStr(1, s, u"|");
    if (bar != 0) {
        const Variant re(Left(s, bar - 1)), im(Mid(s, bar + 1));
        if (!IsNumeric(re) || !IsNumeric(im)) return false;
        const double r = CDbl(re), i = CDbl(im);
        rReal = Variant(r);
        rImag = Variant(i);
        return true;
    }
    if (!IsDate(vValue)) return false;
    FixUpVariantToBooleanMandSub(vSupportStringDates, Variant(false));
    if (!CBool(vSupportStringDates)) return false;
    rReal = Variant(CDbl(CDate(vValue)));
    rImag = Variant(int16_t(0));
    return true;
}

bool FixUps::FractionalToReal(Variant& rReal, Variant vSupportStringDates) const {
    if (IsNumeric(rReal)) {
        rReal = Variant(CDbl(rReal));
        return true;
    }
    if (!rReal.isString()) return false;
    const String& s = rReal.asString();
    const int32_t slash = InStr(1, s, u"/");
    if (slash == 0) return false;
    const Variant left(Left(s, slash - 1)), right(Mid(s, slash + 1));
    if (!IsNumeric(left)) return false;
    if (IsNumeric(right)) {
        const double divisor = CDbl(right);
        if (divisor == 0) return false;
        rReal = Variant(checkedDouble(CDbl(left) / divisor));
        return true;
    }
    if (right.asString().empty()) {
        rReal = Variant(CDbl(left));
        return true;
    }
    if (!IsDate(rReal)) return false;
    FixUpVariantToBooleanMandSub(vSupportStringDates, Variant(false));
    if (!CBool(vSupportStringDates)) return false;
    rReal = Variant(CDbl(CDate(rReal)));
    return true;
}

FixUps& fixUps() noexcept { return globalInstance<FixUps>(); }

// ---------------------------------------------------------------- type library

namespace {

using V = Variant;
FixUps& fx(Call& c) { return c.self<FixUps>(); }

const ClassRegistration kFixUps(u"FixUps", ClassKind::Global, globalFactory<FixUps>,
    u"The argument conversions every member uses: a value made usable, or a failure reported.", {
    {"ArgumentsToVariant(ref vArgs: array of Variant) -> Variant", [](Call& c) {
        return c[0].isArray() ? fx(c).ArgumentsToVariant(c[0].asArray().elements()) : fx(c).ArgumentsToVariant({}); }},
    {"ComplexStringToReals(ref rReal: Variant, ref rImag: Variant, vValue: Variant, [vSupportStringDates: Variant]) -> Boolean",
     [](Call& c) { return V(fx(c).ComplexStringToReals(c[0], c[1], c[2], c[3])); }},
    {"FractionalToReal(ref rReal: Variant, [vSupportStringDates: Variant]) -> Boolean",
     [](Call& c) { return V(fx(c).FractionalToReal(c[0], c[1])); }},
    {"FixUpVariantBounds(ref vArray: array of Variant, [ref rLowerBound: Variant], [ref rUpperBound: Variant], [vDimension: Variant]) -> Boolean",
     [](Call& c) { return V(fx(c).FixUpVariantBounds(c[0], c[1], c[2], c[3])); }},
    {"FixUpVariantCompare(ref rCompare: Variant)", [](Call& c) { fx(c).FixUpVariantCompare(c[0]); return V(); }},
    {"FixUpVariantToRange(ref rValue: Variant, vMin: Variant, VMAX: Variant)",
     [](Call& c) { fx(c).FixUpVariantToRange(c[0], c[1], c[2]); return V(); }},
    {"FixUpToType(vValue: Variant, vVarType: Variant) -> Variant", [](Call& c) { return fx(c).FixUpToType(c[0], c[1]); }},
    {"FixUpVariantToBooleanMandFn(ref rArgument: Variant) -> Boolean", [](Call& c) { return V(fx(c).FixUpVariantToBooleanMandFn(c[0])); }},
    {"FixUpVariantToBooleanMandSub(ref rArgument: Variant, vDefault: Variant)", [](Call& c) { fx(c).FixUpVariantToBooleanMandSub(c[0], c[1]); return V(); }},
    {"FixUpVariantToBooleanMaybeFn(ref rArgument: Variant) -> Boolean", [](Call& c) { return V(fx(c).FixUpVariantToBooleanMaybeFn(c[0])); }},
    {"FixUpVariantToBooleanMaybeSub(ref rArgument: Variant, vDefault: Variant)", [](Call& c) { fx(c).FixUpVariantToBooleanMaybeSub(c[0], c[1]); return V(); }},
    {"FixUpVariantToByteMandFn(ref rArgument: Variant) -> Boolean", [](Call& c) { return V(fx(c).FixUpVariantToByteMandFn(c[0])); }},
    {"FixUpVariantToByteMandSub(ref rArgument: Variant, vDefault: Variant)", [](Call& c) { fx(c).FixUpVariantToByteMandSub(c[0], c[1]); return V(); }},
    {"FixUpVariantToByteMaybeFn(ref rArgument: Variant) -> Boolean", [](Call& c) { return V(fx(c).FixUpVariantToByteMaybeFn(c[0])); }},
    {"FixUpVariantToByteMaybeSub(ref rArgument: Variant, vDefault: Variant)", [](Call& c) { fx(c).FixUpVariantToByteMaybeSub(c[0], c[1]); return V(); }},
    {"FixUpVariantToCurrencyMandFn(ref rArgument: Variant) -> Boolean", [](Call& c) { return V(fx(c).FixUpVariantToCurrencyMandFn(c[0])); }},
    {"FixUpVariantToCurrencyMandSub(ref rArgument: Variant, vDefault: Variant)", [](Call& c) { fx(c).FixUpVariantToCurrencyMandSub(c[0], c[1]); return V(); }},
    {"FixUpVariantToCurrencyMaybeFn(ref rArgument: Variant) -> Boolean", [](Call& c) { return V(fx(c).FixUpVariantToCurrencyMaybeFn(c[0])); }},
    {"FixUpVariantToCurrencyMaybeSub(ref rArgument: Variant, vDefault: Variant)", [](Call& c) { fx(c).FixUpVariantToCurrencyMaybeSub(c[0], c[1]); return V(); }},
    {"FixUpVariantToDateMandFn(ref rArgument: Variant) -> Boolean", [](Call& c) { return V(fx(c).FixUpVariantToDateMandFn(c[0])); }},
    {"FixUpVariantToDateMandSub(ref rArgument: Variant, vDefault: Variant)", [](Call& c) { fx(c).FixUpVariantToDateMandSub(c[0], c[1]); return V(); }},
    {"FixUpVariantToDateMaybeFn(ref rArgument: Variant) -> Boolean", [](Call& c) { return V(fx(c).FixUpVariantToDateMaybeFn(c[0])); }},
    {"FixUpVariantToDateMaybeSub(ref rArgument: Variant, vDefault: Variant)", [](Call& c) { fx(c).FixUpVariantToDateMaybeSub(c[0], c[1]); return V(); }},
    {"FixUpVariantToDecimalMandFn(ref rArgument: Variant) -> Boolean", [](Call& c) { return V(fx(c).FixUpVariantToDecimalMandFn(c[0])); }},
    {"FixUpVariantToDecimalMandSub(ref rArgument: Variant, vDefault: Variant)", [](Call& c) { fx(c).FixUpVariantToDecimalMandSub(c[0], c[1]); return V(); }},
    {"FixUpVariantToDecimalMaybeFn(ref rArgument: Variant) -> Boolean", [](Call& c) { return V(fx(c).FixUpVariantToDecimalMaybeFn(c[0])); }},
    {"FixUpVariantToDecimalMaybeSub(ref rArgument: Variant, vDefault: Variant)", [](Call& c) { fx(c).FixUpVariantToDecimalMaybeSub(c[0], c[1]); return V(); }},
    {"FixUpVariantToDoubleMandFn(ref rArgument: Variant) -> Boolean", [](Call& c) { return V(fx(c).FixUpVariantToDoubleMandFn(c[0])); }},
    {"FixUpVariantToDoubleMandSub(ref rArgument: Variant, vDefault: Variant)", [](Call& c) { fx(c).FixUpVariantToDoubleMandSub(c[0], c[1]); return V(); }},
    {"FixUpVariantToDoubleMaybeFn(ref rArgument: Variant) -> Boolean", [](Call& c) { return V(fx(c).FixUpVariantToDoubleMaybeFn(c[0])); }},
    {"FixUpVariantToDoubleMaybeSub(ref rArgument: Variant, vDefault: Variant)", [](Call& c) { fx(c).FixUpVariantToDoubleMaybeSub(c[0], c[1]); return V(); }},
    {"FixUpVariantToIntegerMandFn(ref rArgument: Variant) -> Boolean", [](Call& c) { return V(fx(c).FixUpVariantToIntegerMandFn(c[0])); }},
    {"FixUpVariantToIntegerMandSub(ref rArgument: Variant, vDefault: Variant)", [](Call& c) { fx(c).FixUpVariantToIntegerMandSub(c[0], c[1]); return V(); }},
    {"FixUpVariantToIntegerMaybeFn(ref rArgument: Variant) -> Boolean", [](Call& c) { return V(fx(c).FixUpVariantToIntegerMaybeFn(c[0])); }},
    {"FixUpVariantToIntegerMaybeSub(ref rArgument: Variant, vDefault: Variant)", [](Call& c) { fx(c).FixUpVariantToIntegerMaybeSub(c[0], c[1]); return V(); }},
    {"FixUpVariantToLongMandFn(ref rArgument: Variant) -> Boolean", [](Call& c) { return V(fx(c).FixUpVariantToLongMandFn(c[0])); }},
    {"FixUpVariantToLongMandSub(ref rArgument: Variant, vDefault: Variant)", [](Call& c) { fx(c).FixUpVariantToLongMandSub(c[0], c[1]); return V(); }},
    {"FixUpVariantToLongMaybeFn(ref rArgument: Variant) -> Boolean", [](Call& c) { return V(fx(c).FixUpVariantToLongMaybeFn(c[0])); }},
    {"FixUpVariantToLongMaybeSub(ref rArgument: Variant, vDefault: Variant)", [](Call& c) { fx(c).FixUpVariantToLongMaybeSub(c[0], c[1]); return V(); }},
    {"FixUpVariantToSingleMandFn(ref rArgument: Variant) -> Boolean", [](Call& c) { return V(fx(c).FixUpVariantToSingleMandFn(c[0])); }},
    {"FixUpVariantToSingleMandSub(ref rArgument: Variant, vDefault: Variant)", [](Call& c) { fx(c).FixUpVariantToSingleMandSub(c[0], c[1]); return V(); }},
    {"FixUpVariantToSingleMaybeFn(ref rArgument: Variant) -> Boolean", [](Call& c) { return V(fx(c).FixUpVariantToSingleMaybeFn(c[0])); }},
    {"FixUpVariantToSingleMaybeSub(ref rArgument: Variant, vDefault: Variant)", [](Call& c) { fx(c).FixUpVariantToSingleMaybeSub(c[0], c[1]); return V(); }},
    {"FixUpVariantToStringFn(ref rArgument: Variant) -> Boolean", [](Call& c) { return V(fx(c).FixUpVariantToStringFn(c[0])); }},
    {"FixUpVariantToStringSub(ref rArgument: Variant, vDefault: Variant)",
     [](Call& c) { fx(c).FixUpVariantToStringSub(c[0], c[1]); return V(); }},
    {"FixUpVariantToStringFnRecursive(ref rArgument: Variant) -> Boolean",
     [](Call& c) { return V(fx(c).FixUpVariantToStringFnRecursive(c[0])); }},
});

}  // namespace

}  // namespace qvt
