#include "frame/Conversions.h"

#include <cfloat>
#include <cmath>

#include "frame/DateMath.h"
#include "frame/DecimalMath.h"
#include "frame/Locale.h"
#include "frame/NumberFormat.h"
#include "frame/NumberParse.h"

namespace qvt {

namespace {

// Case-insensitive match of text (blanks around allowed) with a word.
bool isWord(StringView text, StringView word) noexcept {
    size_t b = 0, e = text.size();
    while (b < e && text[b] == u' ') ++b;
    while (e > b && text[e - 1] == u' ') --e;
    if (e - b != word.size()) return false;
    for (size_t i = 0; i < word.size(); ++i)
        if (toLowerChar(text[b + i]) != toLowerChar(word[i])) return false;
    return true;
}

// The value of any non-String number type as a Double; 13 for the rest.
inline ErrNo scalarDouble(const Variant& v, double& out) noexcept {
    switch (v.vt()) {
        case vbEmpty: out = 0; return 0;
        case vbNull: return errInvalidUseOfNull;
        case vbInteger: out = v.asInteger(); return 0;
        case vbLong: out = v.asLong(); return 0;
        case vbSingle: out = v.asSingle(); return 0;
        case vbDouble: out = v.asDouble(); return 0;
        case vbCurrency: out = double(v.asCurrency()) / 10000.0; return 0;
        case vbDate: out = v.asDate(); return 0;
        case vbBoolean: out = v.asBoolean() ? -1.0 : 0.0; return 0;
        case vbByte: out = v.asByte(); return 0;
        case vbDecimal: out = decimalToDouble(v.asDecimal()); return 0;
        default: return errTypeMismatch;
    }
}

}  // namespace

// ---------------------------------------------------------- typed rounding

ErrNo doubleToLong(double d, int32_t& out) noexcept {
    double r = std::nearbyint(d);  // the default rounding mode is to nearest, ties to even
    if (!(r >= -2147483648.0 && r <= 2147483647.0)) return errOverflow;
    out = int32_t(r);
    return 0;
}

ErrNo doubleToInteger(double d, int16_t& out) noexcept {
    double r = std::nearbyint(d);
    if (!(r >= -32768.0 && r <= 32767.0)) return errOverflow;
    out = int16_t(r);
    return 0;
}

ErrNo doubleToByte(double d, uint8_t& out) noexcept {
    double r = std::nearbyint(d);
    if (!(r >= 0.0 && r <= 255.0)) return errOverflow;
    out = uint8_t(r);
    return 0;
}

ErrNo doubleToCurrency(double d, int64_t& out) noexcept { return currencyFromDouble(d, out); }

ErrNo doubleToSingle(double d, float& out) noexcept {
    if (std::isnan(d)) return errOverflow;
    float f = float(d);
    if (std::isinf(f)) return errOverflow;
    out = f;
    return 0;
}

ErrNo checkDateRange(double d) noexcept {
    return (d >= kMinDate && d < kMaxDate + 1.0 / 86400.0 / 2.0) ? 0 : errOverflow;
}

// ---------------------------------------------------------- cores

ErrNo toDouble(const Variant& v, double& out) noexcept {
    if (v.vt() == vbDouble) {
        out = v.asDouble();
        return 0;
    }
    if (v.vt() == vbString) return parseDouble(v.asString(), out);
    return scalarDouble(v, out);
}

ErrNo toSingle(const Variant& v, float& out) noexcept {
    if (v.vt() == vbSingle) {
        out = v.asSingle();
        return 0;
    }
    if (v.vt() == vbString) return parseSingle(v.asString(), out);
    double d;
    if (ErrNo e = toDouble(v, d)) return e;
    return doubleToSingle(d, out);
}

ErrNo toLong(const Variant& v, int32_t& out) noexcept {
    switch (v.vt()) {
        case vbLong: out = v.asLong(); return 0;
        case vbInteger: out = v.asInteger(); return 0;
        case vbByte: out = v.asByte(); return 0;
        case vbBoolean: out = v.asBoolean() ? -1 : 0; return 0;
        case vbEmpty: out = 0; return 0;
        case vbCurrency: {
            const int64_t r = currencyRoundToInt64(v.asCurrency());
            if (r < INT32_MIN || r > INT32_MAX) return errOverflow;
            out = int32_t(r);
            return 0;
        }
        case vbDecimal: {
            int64_t r;
            if (decimalToInt64(v.asDecimal(), r) != 0 || r < INT32_MIN || r > INT32_MAX) return errOverflow;
            out = int32_t(r);
            return 0;
        }
        case vbString: return parseLong(v.asString(), out);
        default: {
            double d;
            if (ErrNo e = toDouble(v, d)) return e;
            return doubleToLong(d, out);
        }
    }
}

ErrNo toInteger(const Variant& v, int16_t& out) noexcept {
    if (v.vt() == vbInteger) {
        out = v.asInteger();
        return 0;
    }
    if (v.vt() == vbString) return parseInteger(v.asString(), out);
    int32_t l;
    if (v.vt() == vbDouble || v.vt() == vbSingle || v.vt() == vbDate) {
        double d;
        if (ErrNo e = toDouble(v, d)) return e;
        return doubleToInteger(d, out);
    }
    if (ErrNo e = toLong(v, l)) return e;
    if (l < -32768 || l > 32767) return errOverflow;
    out = int16_t(l);
    return 0;
}

ErrNo toByte(const Variant& v, uint8_t& out) noexcept {
    if (v.vt() == vbByte) {
        out = v.asByte();
        return 0;
    }
    if (v.vt() == vbString) return parseByte(v.asString(), out);
    if (v.vt() == vbDouble || v.vt() == vbSingle || v.vt() == vbDate) {
        double d;
        if (ErrNo e = toDouble(v, d)) return e;
        return doubleToByte(d, out);
    }
    int32_t l;
    if (ErrNo e = toLong(v, l)) return e;
    if (l < 0 || l > 255) return errOverflow;
    out = uint8_t(l);
    return 0;
}

ErrNo toBoolean(const Variant& v, bool& out) noexcept {
    switch (v.vt()) {
        case vbBoolean: out = v.asBoolean(); return 0;
        case vbString: {
            const String& s = v.asString();
            const LocaleConfig& loc = locale();
            if (isWord(s, loc.trueWord)) { out = true; return 0; }
            if (isWord(s, loc.falseWord)) { out = false; return 0; }
            double d;
            if (ErrNo e = parseDouble(s, d)) return e == errOverflow ? errOverflow : errTypeMismatch;
            out = d != 0;
            return 0;
        }
        case vbDecimal: {
            Decimal d = v.asDecimal();
            out = d.lo != 0 || d.hi != 0;
            return 0;
        }
        case vbCurrency: out = v.asCurrency() != 0; return 0;
        default: {
            double d;
            if (ErrNo e = scalarDouble(v, d)) return e;
            out = d != 0;
            return 0;
        }
    }
}

ErrNo toCurrency(const Variant& v, int64_t& out) noexcept {
    switch (v.vt()) {
        case vbCurrency: out = v.asCurrency(); return 0;
        case vbString: return parseCurrency(v.asString(), out);
        case vbDecimal: return currencyFromDecimal(v.asDecimal(), out);
        case vbInteger: out = int64_t(v.asInteger()) * 10000; return 0;
        case vbLong: out = int64_t(v.asLong()) * 10000; return 0;
        case vbByte: out = int64_t(v.asByte()) * 10000; return 0;
        case vbBoolean: out = v.asBoolean() ? -10000 : 0; return 0;
        default: {
            double d;
            if (ErrNo e = scalarDouble(v, d)) return e;
            return doubleToCurrency(d, out);
        }
    }
}

ErrNo toDecimal(const Variant& v, Decimal& out) noexcept {
    switch (v.vt()) {
        case vbDecimal: out = v.asDecimal(); return 0;
        case vbString: return parseDecimal(v.asString(), out);
        case vbCurrency: out = decimalFromCurrency(v.asCurrency()); return 0;
        case vbInteger: out = decimalFromInt64(v.asInteger()); return 0;
        case vbLong: out = decimalFromInt64(v.asLong()); return 0;
        case vbByte: out = decimalFromInt64(v.asByte()); return 0;
        case vbBoolean: out = decimalFromInt64(v.asBoolean() ? -1 : 0); return 0;
        case vbSingle: return parseDecimal(formatSingle(v.asSingle()), out);  // seven digits, as a Single shows
        default: {
            double d;
            if (ErrNo e = scalarDouble(v, d)) return e;
            return decimalFromDouble(d, out);
        }
    }
}

ErrNo toDate(const Variant& v, double& out) noexcept {
    double d;
    if (v.vt() == vbDate) {
        out = v.asDate();
        return 0;
    }
    if (v.vt() == vbString) {
        // Text is read by the date parser alone: "12" is no date, though 12 is.
        if (parseDate(v.asString(), d) != 0) return errTypeMismatch;
    } else if (ErrNo e = scalarDouble(v, d)) {
        return e;
    }
    if (ErrNo e = checkDateRange(d)) return e;
    out = d;
    return 0;
}

ErrNo toText(const Variant& v, String& out) {
    switch (v.vt()) {
        case vbString: out = v.asString(); return 0;
        case vbEmpty: out.clear(); return 0;
        case vbNull: return errInvalidUseOfNull;
        case vbInteger: out = formatInteger(v.asInteger()); return 0;
        case vbLong: out = formatInteger(v.asLong()); return 0;
        case vbByte: out = formatInteger(v.asByte()); return 0;
        case vbSingle: out = formatSingle(v.asSingle()); return 0;
        case vbDouble: out = formatDouble(v.asDouble()); return 0;
        case vbCurrency: out = formatCurrency(v.asCurrency()); return 0;
        case vbDecimal: out = formatDecimal(v.asDecimal()); return 0;
        case vbDate: out = formatDateShort(v.asDate()); return 0;
        case vbBoolean: out = v.asBoolean() ? locale().trueWord : locale().falseWord; return 0;
        case vbError: out = u"Error " + formatInteger(v.asErrorCode()); return 0;
        default: return errTypeMismatch;
    }
}

ErrNo convertTo(const Variant& v, VarType target, Variant& out) {
    ErrNo e = 0;
    switch (target) {
        case vbInteger: { int16_t x = 0; if (!(e = toInteger(v, x))) out = Variant(x); break; }
        case vbLong: { int32_t x = 0; if (!(e = toLong(v, x))) out = Variant(x); break; }
        case vbSingle: { float x = 0; if (!(e = toSingle(v, x))) out = Variant(x); break; }
        case vbDouble: { double x = 0; if (!(e = toDouble(v, x))) out = Variant(x); break; }
        case vbCurrency: { int64_t x = 0; if (!(e = toCurrency(v, x))) out = Variant::currency(x); break; }
        case vbDate: { double x = 0; if (!(e = toDate(v, x))) out = Variant::date(x); break; }
        case vbString: { String s; if (!(e = toText(v, s))) out = Variant(std::move(s)); break; }
        case vbBoolean: { bool x = false; if (!(e = toBoolean(v, x))) out = Variant(x); break; }
        case vbDecimal: { Decimal x; if (!(e = toDecimal(v, x))) out = Variant(x); break; }
        case vbByte: { uint8_t x = 0; if (!(e = toByte(v, x))) out = Variant(x); break; }
        case vbVariant: out = v; break;
        case vbError:
            if (v.isError()) out = v;
            else e = errTypeMismatch;
            break;
        default: e = errTypeMismatch; break;
    }
    return e;
}

// ---------------------------------------------------------- raising forms

bool CBool(const Variant& v) { bool x = false; check(toBoolean(v, x)); return x; }
uint8_t CByte(const Variant& v) { uint8_t x = 0; check(toByte(v, x)); return x; }
int16_t CInt(const Variant& v) { int16_t x = 0; check(toInteger(v, x)); return x; }
int32_t CLng(const Variant& v) { int32_t x = 0; check(toLong(v, x)); return x; }
float CSng(const Variant& v) { float x = 0; check(toSingle(v, x)); return x; }
double CDbl(const Variant& v) { double x = 0; check(toDouble(v, x)); return x; }
Variant CCur(const Variant& v) { int64_t x = 0; check(toCurrency(v, x)); return Variant::currency(x); }
Variant CDec(const Variant& v) { Decimal x; check(toDecimal(v, x)); return Variant(x); }
Variant CDate(const Variant& v) { double x = 0; check(toDate(v, x)); return Variant::date(x); }
String CStr(const Variant& v) { String s; check(toText(v, s)); return s; }
Variant CVErr(int32_t code) noexcept { return Variant::error(code); }

bool IsNumeric(const Variant& v) noexcept {
    switch (v.vt()) {
        case vbEmpty: case vbInteger: case vbLong: case vbSingle: case vbDouble: case vbCurrency:
        case vbBoolean: case vbDecimal: case vbByte:
            return true;
        case vbString: return isNumericText(v.asString());
        default: return false;
    }
}

bool IsDate(const Variant& v) noexcept {
    if (v.vt() == vbDate) return true;
    if (v.vt() == vbString) return isDateText(v.asString());
    return false;
}

String typeNameOf(uint16_t varType) {
    static const char16_t* const kNames[] = {u"Empty", u"Null", u"Integer", u"Long", u"Single", u"Double",
                                             u"Currency", u"Date", u"String", u"Object", u"Error",
                                             u"Boolean", u"Variant", u"DataObject", u"Decimal"};
    uint16_t base = varType & ~vbArray;
    String name;
    if (base < 15) name = kNames[base];
    else if (base == vbByte) name = u"Byte";
    else name = u"Unknown";
    if (varType & vbArray) name += u" Array";
    return name;
}

String TypeName(const Variant& v) {
    if (v.isObject()) return v.asObject() ? String(v.asObject()->className()) : String(u"Nothing");
    if (v.isArray()) {
        String n = typeNameOf(v.elementType());
        return n + u"()";
    }
    return typeNameOf(v.vt());
}

}  // namespace qvt
