#include "frame/Operators.h"

#include <cmath>

#include "frame/Conversions.h"
#include "frame/DecimalMath.h"
#include "frame/Strings.h"

namespace qvt {

namespace {

// Capability ranks of the arithmetic operands.
enum Rank : int { rByte, rInteger, rLong, rSingle, rDouble, rCurrency, rDecimal };

// Classification of one operand of + - *.
enum class Kind { Null, Empty, String, Date, Number, Bad };

inline Kind kindOf(const Variant& v) noexcept {
    switch (v.vt()) {
        case vbNull: return Kind::Null;
        case vbEmpty: return Kind::Empty;
        case vbString: return Kind::String;
        case vbDate: return Kind::Date;
        case vbInteger: case vbLong: case vbSingle: case vbDouble: case vbCurrency: case vbDecimal:
        case vbByte: case vbBoolean:
            return Kind::Number;
        default: return Kind::Bad;
    }
}

inline Rank rankOf(VarType t) noexcept {
    switch (t) {
        case vbByte: return rByte;
        case vbInteger: case vbBoolean: case vbEmpty: return rInteger;
        case vbLong: return rLong;
        case vbSingle: return rSingle;
        case vbCurrency: return rCurrency;
        case vbDecimal: return rDecimal;
        default: return rDouble;  // Double, Date, numeric String
    }
}

inline int64_t integral(const Variant& v) noexcept {
    switch (v.vt()) {
        case vbByte: return v.asByte();
        case vbInteger: return v.asInteger();
        case vbLong: return v.asLong();
        case vbBoolean: return v.asBoolean() ? -1 : 0;
        default: return 0;  // Empty
    }
}

double asDoubleOrRaise(const Variant& v) {
    double d;
    check(toDouble(v, d));
    return d;
}

// An integer result in the narrowest of rank, promoted on overflow
// (Byte -> Integer -> Long -> Double).
Variant integerResult(int64_t r, Rank rank) {
    if (rank == rByte && r >= 0 && r <= 255) return Variant(uint8_t(r));
    if (rank <= rInteger && r >= -32768 && r <= 32767) return Variant(int16_t(r));
    if (r >= INT32_MIN && r <= INT32_MAX) return Variant(int32_t(r));
    return Variant(double(r));
}

enum class ArithOp { Add, Sub, Mul };

Variant arithmetic(ArithOp op, const Variant& a, const Variant& b) {
    // Fast paths of the inner loops.
    if (a.vt() == vbDouble && b.vt() == vbDouble) {
        double x = a.asDouble(), y = b.asDouble();
        return Variant(checkedDouble(op == ArithOp::Add ? x + y : op == ArithOp::Sub ? x - y : x * y));
    }
    if (a.vt() == b.vt() && (a.vt() == vbInteger || a.vt() == vbLong)) {
        int64_t x = integral(a), y = integral(b);
        int64_t r = op == ArithOp::Add ? x + y : op == ArithOp::Sub ? x - y : x * y;
        return integerResult(r, a.vt() == vbInteger ? rInteger : rLong);
    }
    Kind ka = kindOf(a), kb = kindOf(b);
    if (ka == Kind::Null || kb == Kind::Null) {
        if (ka == Kind::Bad || kb == Kind::Bad) raiseError(errTypeMismatch);
        return Variant::null();
    }
    if (ka == Kind::Bad || kb == Kind::Bad) raiseError(errTypeMismatch);

    if (op == ArithOp::Add && ka != Kind::Number && kb != Kind::Number && ka != Kind::Date && kb != Kind::Date &&
        (ka == Kind::String || kb == Kind::String)) {
        // String + String (or Empty) concatenates.
        String r(a.isString() ? a.asString() : String());
        if (b.isString()) r += b.asString();
        return Variant(std::move(r));
    }

    // Dates: Date +/- number is a Date, Date - Date a Double; a product is a Double.
    if (ka == Kind::Date || kb == Kind::Date) {
        double x = asDoubleOrRaise(a), y = asDoubleOrRaise(b);
        if (op == ArithOp::Mul) return Variant(checkedDouble(x * y));
        double r = checkedDouble(op == ArithOp::Add ? x + y : x - y);
        if (op == ArithOp::Sub && ka == Kind::Date && kb == Kind::Date) return Variant(r);
        if (checkDateRange(r) != 0) return Variant(r);  // overflowing a Date promotes to Double
        return Variant::date(r);
    }

    Rank ra = ka == Kind::String ? rDouble : rankOf(a.vt());
    Rank rb = kb == Kind::String ? rDouble : rankOf(b.vt());
    // Empty takes the other operand's type (Empty with Empty is an Integer).
    if (ka == Kind::Empty) ra = rb;
    if (kb == Kind::Empty) rb = ra;
    Rank rank = ra > rb ? ra : rb;
    if ((ra == rSingle && rb == rLong) || (ra == rLong && rb == rSingle)) rank = rDouble;

    switch (rank) {
        case rByte: case rInteger: case rLong: {
            int64_t x = integral(a), y = integral(b);
            int64_t r = op == ArithOp::Add ? x + y : op == ArithOp::Sub ? x - y : x * y;
            return integerResult(r, rank);
        }
        case rSingle: {
            double r = double(CSng(a));
            double y = double(CSng(b));
            r = op == ArithOp::Add ? r + y : op == ArithOp::Sub ? r - y : r * y;
            float f;
            if (doubleToSingle(r, f) == 0) return Variant(f);
            return Variant(checkedDouble(r));
        }
        case rDouble: {
            double x = asDoubleOrRaise(a), y = asDoubleOrRaise(b);
            return Variant(checkedDouble(op == ArithOp::Add ? x + y : op == ArithOp::Sub ? x - y : x * y));
        }
        case rCurrency: {
            int64_t x, y;
            check(toCurrency(a, x));
            check(toCurrency(b, y));
            int64_t r;
            check(op == ArithOp::Add ? currencyAdd(x, y, r) : op == ArithOp::Sub ? currencySub(x, y, r) : currencyMul(x, y, r));
            return Variant::currency(r);
        }
        case rDecimal: {
            Decimal x, y, r;
            check(toDecimal(a, x));
            check(toDecimal(b, y));
            ErrNo e = op == ArithOp::Add ? decimalAdd(x, y, r) : op == ArithOp::Sub ? decimalSub(x, y, r)
                                                                                     : decimalMul(x, y, r);
            check(e);
            return Variant(r);
        }
    }
    return Variant();
}

// Operands of \, Mod and the logical operators: rounded to Byte, Integer or Long.
struct IntOperand {
    int64_t value;
    Rank rank;  // rByte, rInteger or rLong
};

IntOperand intOperand(const Variant& v) {
    switch (v.vt()) {
        case vbByte: return {v.asByte(), rByte};
        case vbInteger: return {v.asInteger(), rInteger};
        case vbBoolean: return {v.asBoolean() ? -1 : 0, rInteger};
        case vbEmpty: return {0, rInteger};
        case vbLong: return {v.asLong(), rLong};
        default: {
            if (kindOf(v) == Kind::Bad) raiseError(errTypeMismatch);
            return {CLng(v), rLong};
        }
    }
}

enum class LogicOp { And, Or, Xor, Eqv, Imp };

int64_t logic(LogicOp op, int64_t x, int64_t y) noexcept {
    switch (op) {
        case LogicOp::And: return x & y;
        case LogicOp::Or: return x | y;
        case LogicOp::Xor: return x ^ y;
        case LogicOp::Eqv: return ~(x ^ y);
        case LogicOp::Imp: return ~x | y;
    }
    return 0;
}

Variant logical(LogicOp op, const Variant& a, const Variant& b) {
    bool na = a.isNull(), nb = b.isNull();
    if (na || nb) {
        // Null is unknown: the result is known where every value of the
        // unknown side gives the same bits (And 0, Imp), and for Or.
        if (na && nb) return Variant::null();
        const Variant& known = na ? b : a;
        if (known.isArray() || kindOf(known) == Kind::Bad) raiseError(errTypeMismatch);
        IntOperand k = intOperand(known);
        bool isBool = known.vt() == vbBoolean;
        auto typed = [&](int64_t r) {
            if (isBool) return Variant(r != 0);
            return integerResult(r, k.rank);
        };
        switch (op) {
            case LogicOp::And: if (k.value == 0) return typed(0); break;
            // Null Or a non-zero value gives that value, as Basic does, not
            // only where every bit is set.
            case LogicOp::Or: if (k.value != 0) return typed(k.value); break;
            case LogicOp::Imp:
                if (na && (k.value == -1 || (k.rank == rByte && k.value == 255))) return typed(k.value);
                if (nb && k.value == 0) return typed(-1);
                break;
            default: break;
        }
        return Variant::null();
    }
    if (a.vt() == vbBoolean && b.vt() == vbBoolean)
        return Variant(logic(op, a.asBoolean() ? -1 : 0, b.asBoolean() ? -1 : 0) != 0);
    IntOperand x = intOperand(a), y = intOperand(b);
    Rank rank = x.rank > y.rank ? x.rank : y.rank;
    int64_t r = logic(op, x.value, y.value);
    if (rank == rByte) return Variant(uint8_t(r & 0xFF));
    if (rank == rInteger) return Variant(int16_t(r));
    return Variant(int32_t(r));
}

int sign(double d) noexcept { return d < 0 ? -1 : d > 0 ? 1 : 0; }

// Numeric comparison without losing precision where both sides are exact.
int compareNumbers(const Variant& a, const Variant& b) {
    VarType ta = a.vt(), tb = b.vt();
    if (ta == vbDecimal || tb == vbDecimal) {
        Decimal x, y;
        const ErrNo ex = toDecimal(a, x), ey = toDecimal(b, y);
        if (ex == 0 && ey == 0) return decimalCompare(x, y);
        // A floating value beyond the Decimal range still compares: as
        // Doubles, which are exact enough at that distance.
        if ((ex && ex != errOverflow) || (ey && ey != errOverflow)) raiseError(ex ? ex : ey);
    }
    if (ta == vbCurrency || tb == vbCurrency) {
        bool exact = (ta == vbCurrency || rankOf(ta) <= rLong) && (tb == vbCurrency || rankOf(tb) <= rLong);
        if (exact) {
            int64_t x, y;
            check(toCurrency(a, x));
            check(toCurrency(b, y));
            return x < y ? -1 : x > y ? 1 : 0;
        }
    }
    double x = asDoubleOrRaise(a), y = asDoubleOrRaise(b);
    return x < y ? -1 : x > y ? 1 : 0;
}

}  // namespace

double checkedDouble(double r) {
    if (std::isfinite(r)) return r;
    raiseError(errOverflow);
}

Variant opAdd(const Variant& a, const Variant& b) { return arithmetic(ArithOp::Add, a, b); }
Variant opSub(const Variant& a, const Variant& b) { return arithmetic(ArithOp::Sub, a, b); }
Variant opMul(const Variant& a, const Variant& b) { return arithmetic(ArithOp::Mul, a, b); }

Variant opDiv(const Variant& a, const Variant& b) {
    Kind ka = kindOf(a), kb = kindOf(b);
    if (ka == Kind::Bad || kb == Kind::Bad) raiseError(errTypeMismatch);
    if (ka == Kind::Null || kb == Kind::Null) return Variant::null();
    if (a.vt() == vbDecimal || b.vt() == vbDecimal) {
        Decimal x, y, r;
        check(toDecimal(a, x));
        check(toDecimal(b, y));
        if (y.lo == 0 && y.hi == 0) raiseError((x.lo == 0 && x.hi == 0) ? errOverflow : errDivisionByZero);
        check(decimalDiv(x, y, r));
        return Variant(r);
    }
    double x = asDoubleOrRaise(a), y = asDoubleOrRaise(b);
    if (y == 0) raiseError(x == 0 ? errOverflow : errDivisionByZero);
    double r = checkedDouble(x / y);
    auto singleSide = [](const Variant& v) {
        VarType t = v.vt();
        return t == vbSingle || t == vbByte || t == vbInteger || t == vbBoolean || t == vbEmpty;
    };
    if ((a.vt() == vbSingle || b.vt() == vbSingle) && singleSide(a) && singleSide(b)) {
        float f;
        if (doubleToSingle(r, f) == 0) return Variant(f);
    }
    return Variant(r);
}

namespace {
// \ and Mod: both operands rounded to Byte, Integer or Long first.
Variant integerDivision(const Variant& a, const Variant& b, bool remainder) {
    if (a.isNull() || b.isNull()) {
        if (kindOf(a) == Kind::Bad || kindOf(b) == Kind::Bad) raiseError(errTypeMismatch);
        return Variant::null();
    }
    IntOperand x = intOperand(a), y = intOperand(b);
    if (y.value == 0) raiseError(errDivisionByZero);
    Rank rank = x.rank > y.rank ? x.rank : y.rank;
    return integerResult(remainder ? x.value % y.value : x.value / y.value, rank);
}
}  // namespace

Variant opIntDiv(const Variant& a, const Variant& b) { return integerDivision(a, b, false); }
Variant opMod(const Variant& a, const Variant& b) { return integerDivision(a, b, true); }

Variant opPow(const Variant& a, const Variant& b) {
    Kind ka = kindOf(a), kb = kindOf(b);
    if (ka == Kind::Bad || kb == Kind::Bad) raiseError(errTypeMismatch);
    if (ka == Kind::Null || kb == Kind::Null) return Variant::null();
    double x = asDoubleOrRaise(a), y = asDoubleOrRaise(b);
    if (x < 0 && y != std::floor(y)) raiseError(errInvalidCall);
    if (x == 0 && y < 0) raiseError(errInvalidCall);
    return Variant(checkedDouble(std::pow(x, y)));
}

Variant opNeg(const Variant& a) {
    switch (a.vt()) {
        case vbNull: return Variant::null();
        case vbEmpty: return Variant(int16_t(0));
        case vbByte: return Variant(int16_t(-int(a.asByte())));
        case vbBoolean: return Variant(int16_t(a.asBoolean() ? 1 : 0));
        case vbInteger: return a.asInteger() == -32768 ? Variant(int32_t(32768)) : Variant(int16_t(-a.asInteger()));
        case vbLong: return a.asLong() == INT32_MIN ? Variant(2147483648.0) : Variant(int32_t(-a.asLong()));
        case vbSingle: return Variant(-a.asSingle());
        case vbDouble: return Variant(-a.asDouble());
        case vbDate: return Variant::date(-a.asDate());
        case vbCurrency:
            if (a.asCurrency() == INT64_MIN) raiseError(errOverflow);
            return Variant::currency(-a.asCurrency());
        case vbDecimal: return Variant(decimalNegate(a.asDecimal()));
        case vbString: return Variant(-CDbl(a));
        default: raiseError(errTypeMismatch);
    }
}

Variant opConcat(const Variant& a, const Variant& b) {
    if (a.isNull() && b.isNull()) return Variant::null();
    if (a.isString() && b.isString()) {
        String r;
        r.reserve(a.asString().size() + b.asString().size());
        r += a.asString();
        r += b.asString();
        return Variant(std::move(r));
    }
    auto text = [](const Variant& v) -> String {
        if (v.isNull()) return String();
        if (v.isError()) raiseError(errTypeMismatch);
        return CStr(v);
    };
    return Variant(text(a) + text(b));
}

Variant opNot(const Variant& a) {
    switch (a.vt()) {
        case vbNull: return Variant::null();
        case vbBoolean: return Variant(!a.asBoolean());
        case vbByte: return Variant(uint8_t(~a.asByte()));
        case vbInteger: return Variant(int16_t(~a.asInteger()));
        case vbEmpty: return Variant(int16_t(-1));
        default: {
            if (kindOf(a) == Kind::Bad) raiseError(errTypeMismatch);
            return Variant(int32_t(~CLng(a)));
        }
    }
}

Variant opAnd(const Variant& a, const Variant& b) { return logical(LogicOp::And, a, b); }
Variant opOr(const Variant& a, const Variant& b) { return logical(LogicOp::Or, a, b); }
Variant opXor(const Variant& a, const Variant& b) { return logical(LogicOp::Xor, a, b); }
Variant opEqv(const Variant& a, const Variant& b) { return logical(LogicOp::Eqv, a, b); }
Variant opImp(const Variant& a, const Variant& b) { return logical(LogicOp::Imp, a, b); }

int compareVariants(const Variant& a, const Variant& b, CompareMode mode, bool* isNull, CompareSite site) {
    Kind ka = kindOf(a), kb = kindOf(b);
    if (ka == Kind::Bad || kb == Kind::Bad) raiseError(errTypeMismatch);
    if (isNull) *isNull = false;
    if (ka == Kind::Null || kb == Kind::Null) {
        if (isNull) *isNull = true;
        return 0;
    }
    if (ka == Kind::String && kb == Kind::String) return StrComp(a.asString(), b.asString(), mode);
    if (ka == Kind::String || kb == Kind::String) {
        const Variant& other = ka == Kind::String ? b : a;
        int flip = ka == Kind::String ? 1 : -1;  // a number is below any String
        if (other.isEmpty()) {
            // Empty meets a String as "".
            return ka == Kind::String ? (a.asString().empty() ? 0 : 1) : (b.asString().empty() ? 0 : -1);
        }
        if (site == CompareSite::NumericLiteral) {
            double s = asDoubleOrRaise(ka == Kind::String ? a : b);
            return ka == Kind::String ? compareNumbers(Variant(s), b) : compareNumbers(a, Variant(s));
        }
        return flip;  // a number is below any String
    }
    if (a.vt() == vbDouble && b.vt() == vbDouble) {
        double x = a.asDouble(), y = b.asDouble();
        return x < y ? -1 : x > y ? 1 : 0;
    }
    return compareNumbers(a, b);
}

Variant opCompare(CompareOp op, const Variant& a, const Variant& b, CompareMode mode, CompareSite site) {
    bool isNull = false;
    int c = compareVariants(a, b, mode, &isNull, site);
    if (isNull) return Variant::null();
    bool r = false;
    switch (op) {
        case CompareOp::Eq: r = c == 0; break;
        case CompareOp::Ne: r = c != 0; break;
        case CompareOp::Lt: r = c < 0; break;
        case CompareOp::Le: r = c <= 0; break;
        case CompareOp::Gt: r = c > 0; break;
        case CompareOp::Ge: r = c >= 0; break;
    }
    return Variant(r);
}

// ------------------------------------------------------------ mathematics

Variant Abs(const Variant& v) {
    switch (v.vt()) {
        case vbNull: return Variant::null();
        case vbEmpty: return Variant(int16_t(0));
        case vbByte: return v;
        case vbBoolean: return Variant(int16_t(v.asBoolean() ? 1 : 0));
        case vbInteger: return v.asInteger() < 0 ? opNeg(v) : v;
        case vbLong: return v.asLong() < 0 ? opNeg(v) : v;
        case vbSingle: return Variant(std::fabs(v.asSingle()));
        case vbDouble: return Variant(std::fabs(v.asDouble()));
        case vbDate: return Variant::date(std::fabs(v.asDate()));
        case vbCurrency: return v.asCurrency() < 0 ? opNeg(v) : v;
        case vbDecimal: {
            Decimal d = v.asDecimal();
            d.negative = false;
            return Variant(d);
        }
        case vbString: return Variant(std::fabs(CDbl(v)));
        default: raiseError(errTypeMismatch);
    }
}

Variant Sgn(const Variant& v) {
    if (v.isNull()) return Variant::null();
    if (v.vt() == vbDecimal) {
        Decimal d = v.asDecimal();
        return Variant(int16_t((d.lo == 0 && d.hi == 0) ? 0 : d.negative ? -1 : 1));
    }
    if (v.vt() == vbCurrency) return Variant(int16_t(v.asCurrency() < 0 ? -1 : v.asCurrency() > 0 ? 1 : 0));
    return Variant(int16_t(sign(CDbl(v))));
}

namespace {
Variant roundTowards(const Variant& v, bool floorMode) {
    switch (v.vt()) {
        case vbNull: return Variant::null();
        case vbEmpty: return Variant(int16_t(0));
        case vbBoolean: return Variant(int16_t(v.asBoolean() ? -1 : 0));
        case vbByte: case vbInteger: case vbLong: return v;
        case vbSingle: return Variant(floorMode ? std::floor(v.asSingle()) : std::trunc(v.asSingle()));
        case vbDouble: return Variant(floorMode ? std::floor(v.asDouble()) : std::trunc(v.asDouble()));
        case vbDate: return Variant::date(floorMode ? std::floor(v.asDate()) : std::trunc(v.asDate()));
        case vbCurrency: {
            int64_t c = v.asCurrency(), q = c / 10000, r = c % 10000;
            if (floorMode && r < 0) --q;
            return Variant::currency(q * 10000);
        }
        case vbDecimal: return Variant(floorMode ? decimalInt(v.asDecimal()) : decimalFix(v.asDecimal()));
        case vbString: {
            double d = CDbl(v);
            return Variant(floorMode ? std::floor(d) : std::trunc(d));
        }
        default: raiseError(errTypeMismatch);
    }
}
}  // namespace

Variant Int(const Variant& v) { return roundTowards(v, true); }
Variant Fix(const Variant& v) { return roundTowards(v, false); }

double Sqr(double x) {
    if (x < 0) raiseError(errInvalidCall);
    return std::sqrt(x);
}
double Exp(double x) { return checkedDouble(std::exp(x)); }
double Log(double x) {
    if (!(x > 0)) raiseError(errInvalidCall);
    return std::log(x);
}
double Sin(double x) { return checkedDouble(std::sin(x)); }
double Cos(double x) { return checkedDouble(std::cos(x)); }
double Tan(double x) { return checkedDouble(std::tan(x)); }
double Atn(double x) { return std::atan(x); }

Variant Round(const Variant& v, int32_t digits) {
    if (digits < 0) raiseError(errInvalidCall);
    if (v.isNull()) return Variant::null();
    auto roundDouble = [digits](double d) {
        if (digits > 22) return d;
        double scale = std::pow(10.0, digits);
        double s = d * scale;
        if (!std::isfinite(s)) return d;
        return std::nearbyint(s) / scale;
    };
    switch (v.vt()) {
        case vbEmpty: return Variant(int16_t(0));
        case vbBoolean: return Variant(int16_t(v.asBoolean() ? -1 : 0));
        case vbByte: case vbInteger: case vbLong: return v;
        case vbSingle: return Variant(float(roundDouble(v.asSingle())));
        case vbDouble: return Variant(roundDouble(v.asDouble()));
        case vbDate: return Variant::date(roundDouble(v.asDate()));
        case vbCurrency: {
            if (digits >= 4) return v;
            int64_t unit = 1;
            for (int i = digits; i < 4; ++i) unit *= 10;
            int64_t c = v.asCurrency();
            int64_t q = c / unit, r = c % unit, ar = r < 0 ? -r : r;
            if (ar * 2 > unit || (ar * 2 == unit && (q & 1))) q += c < 0 ? -1 : 1;
            return Variant::currency(q * unit);
        }
        case vbDecimal: {
            Decimal r;
            check(decimalRound(v.asDecimal(), digits, r));
            return Variant(r);
        }
        case vbString: return Variant(roundDouble(CDbl(v)));
        default: raiseError(errTypeMismatch);
    }
}

}  // namespace qvt
