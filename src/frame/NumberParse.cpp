#include "frame/NumberParse.h"

#include <charconv>
#include <cstring>
#include <limits>

#include "frame/Locale.h"

namespace qvt {

using namespace numerr;

namespace {

bool isBlank(char16_t c) noexcept { return c == u' ' || (c >= 9 && c <= 13); }
bool isDigit(char16_t c) noexcept { return c >= u'0' && c <= u'9'; }

int hexValue(char16_t c) noexcept {
    if (c >= u'0' && c <= u'9') return c - u'0';
    if (c >= u'a' && c <= u'f') return c - u'a' + 10;
    if (c >= u'A' && c <= u'F') return c - u'A' + 10;
    return -1;
}

// Exponents beyond this saturate; the value is long past any type's range.
constexpr long long kExponentCap = 100000000;

struct Scanner {
    std::u16string_view s;
    size_t i = 0;
    std::u16string_view currency;
    bool sign = false, parens = false, closed = false, hasCurrency = false;

    bool atCurrency() const noexcept {
        return !hasCurrency && !currency.empty() && s.substr(i).starts_with(currency);
    }

    void leading(ParsedNumber& out) noexcept {
        while (i < s.size()) {
            const char16_t c = s[i];
            if (isBlank(c)) {
                ++i;
            } else if (!sign && !parens && (c == u'+' || c == u'-')) {
                sign = true;
                out.negative = c == u'-';
                ++i;
            } else if (!sign && !parens && c == u'(') {
                parens = true;
                out.negative = true;
                ++i;
            } else if (atCurrency()) {
                hasCurrency = true;
                i += currency.size();
            } else {
                break;
            }
        }
    }

    // Blanks, the sign, the closing parenthesis and, where allowed, the
    // currency symbol and stray thousands separators. True when the whole
    // text was used.
    bool trailing(ParsedNumber& out, char16_t separator, bool allowCurrency) noexcept {
        while (i < s.size()) {
            const char16_t c = s[i];
            if (isBlank(c) || (separator != 0 && c == separator)) {
                ++i;
            } else if (!sign && !parens && (c == u'+' || c == u'-')) {
                sign = true;
                out.negative = c == u'-';
                ++i;
            } else if (parens && !closed && c == u')') {
                closed = true;
                ++i;
            } else if (allowCurrency && atCurrency()) {
                hasCurrency = true;
                i += currency.size();
            } else {
                return false;
            }
        }
        return !parens || closed;
    }
};

int scanRadix(Scanner& sc, ParsedNumber& out) noexcept {
    const bool hex = sc.s[sc.i + 1] == u'H' || sc.s[sc.i + 1] == u'h';
    const unsigned shift = hex ? 4 : 3;
    sc.i += 2;
    uint64_t v = 0;
    bool any = false, wide = false;
    for (; sc.i < sc.s.size(); ++sc.i) {
        const int d = hexValue(sc.s[sc.i]);
        if (d < 0 || d >= (1 << shift)) break;
        any = true;
        v = (v << shift) | static_cast<unsigned>(d);
        wide |= v > 0xFFFFFFFFu;
    }
    // The runtime takes neither separators nor a currency symbol here.
    if (!any || !sc.trailing(out, 0, false)) return kTypeMismatch;
    if (wide) return kOverflow;
    out.radix = true;
    if (v <= 0xFFFF) {
        out.radixBits = 16;
        out.radixValue = static_cast<int16_t>(static_cast<uint16_t>(v));
    } else {
        out.radixBits = 32;
        out.radixValue = static_cast<int32_t>(static_cast<uint32_t>(v));
    }
    if (out.negative) out.radixValue = -out.radixValue;
    out.negative = out.radixValue < 0;
    return kOk;
}

}  // namespace

int scanNumber(std::u16string_view s, ParsedNumber& out) noexcept {
    const LocaleConfig& loc = locale();
    const char16_t point = loc.decimalPoint;
    // A separator equal to the decimal point would be ambiguous: the point wins.
    const char16_t separator = loc.thousandsSeparator == point ? char16_t(0) : loc.thousandsSeparator;

    out.negative = out.radix = out.sticky = false;
    out.radixBits = 0;
    out.nDigits = 0;
    out.exponent = 0;
    out.radixValue = 0;

    Scanner sc{s, 0, loc.currencySymbol};
    sc.leading(out);

    if (!sc.hasCurrency && sc.i + 1 < s.size() && s[sc.i] == u'&') {
        const char16_t k = s[sc.i + 1];
        if (k == u'H' || k == u'h' || k == u'O' || k == u'o') return scanRadix(sc, out);
    }

    // Mantissa. Leading zeros are skipped, digits past kMaxDigits only
    // shift the exponent (or set sticky once past the point).
    long long exponent = 0;
    bool anyDigit = false, seenPoint = false;
    for (; sc.i < s.size(); ++sc.i) {
        const char16_t c = s[sc.i];
        if (isDigit(c)) {
            anyDigit = true;
            if (out.nDigits == 0 && c == u'0') {
                if (seenPoint) --exponent;
            } else if (out.nDigits < ParsedNumber::kMaxDigits) {
                out.digits[out.nDigits++] = static_cast<char>(c);
                if (seenPoint) --exponent;
            } else {
                out.sticky |= c != u'0';
                if (!seenPoint) ++exponent;
            }
        } else if (c == point && !seenPoint) {
            seenPoint = true;
        } else if (separator != 0 && c == separator && anyDigit) {
            // Grouping is not checked, as the runtime does not.
        } else {
            break;
        }
    }
    if (!anyDigit) return kTypeMismatch;

    bool hasExponent = false;
    if (sc.i < s.size()) {
        const char16_t c = s[sc.i];
        if (c == u'E' || c == u'e' || c == u'D' || c == u'd') {
            hasExponent = true;
            size_t j = sc.i + 1;
            bool negativeExponent = false;
            if (j < s.size() && (s[j] == u'+' || s[j] == u'-')) negativeExponent = s[j++] == u'-';
            if (j >= s.size() || !isDigit(s[j])) return kTypeMismatch;
            long long e = 0;
            for (; j < s.size() && isDigit(s[j]); ++j)
                if (e < kExponentCap) e = e * 10 + (s[j] - u'0');
            exponent += negativeExponent ? -e : e;
            sc.i = j;
        }
    }

    while (out.nDigits > 0 && out.digits[out.nDigits - 1] == '0') {
        --out.nDigits;
        ++exponent;
    }
    if (exponent > kExponentCap) exponent = kExponentCap;
    if (exponent < -kExponentCap) exponent = -kExponentCap;
    out.exponent = static_cast<int>(exponent);

    if (!sc.trailing(out, hasExponent ? char16_t(0) : separator, true)) return kTypeMismatch;
    if (out.nDigits == 0) out.negative = false;  // zero is never negative
    return kOk;
}

namespace {

// Magnitude class of a decimal number: value lies in [10^(m-1), 10^m).
long long magnitude(const ParsedNumber& p) noexcept {
    return static_cast<long long>(p.nDigits) + p.exponent;
}

template <typename Real>
int toReal(const ParsedNumber& p, Real& out) noexcept {
    if (p.radix) {
        out = static_cast<Real>(p.radixValue);
        return kOk;
    }
    if (p.nDigits == 0) {
        out = 0;
        return kOk;
    }
    constexpr int kMaxMagnitude = std::numeric_limits<Real>::max_exponent10 + 1;
    constexpr int kMinMagnitude = std::numeric_limits<Real>::min_exponent10 - 20;
    const long long m = magnitude(p);
    if (m > kMaxMagnitude) return kOverflow;
    if (m < kMinMagnitude) {
        out = 0;
        return kOk;
    }
    char buf[ParsedNumber::kMaxDigits + 16];
    int n = p.nDigits;
    std::memcpy(buf, p.digits, static_cast<size_t>(n));
    int exponent = p.exponent;
    if (p.sticky) {  // stands for the dropped tail when rounding
        buf[n++] = '1';
        --exponent;
    }
    buf[n++] = 'e';
    auto w = std::to_chars(buf + n, buf + sizeof buf, exponent);
    Real v = 0;
    auto r = std::from_chars(buf, w.ptr, v);
    if (r.ec == std::errc::result_out_of_range) {
        if (m > 0) return kOverflow;
        v = 0;  // underflow
    }
    if (v > std::numeric_limits<Real>::max()) return kOverflow;
    out = p.negative ? -v : v;
    return kOk;
}

}  // namespace

int toDouble(const ParsedNumber& p, double& out) noexcept { return toReal(p, out); }
int toSingle(const ParsedNumber& p, float& out) noexcept { return toReal(p, out); }

int toCurrency(const ParsedNumber& p, int64_t& tenThousandths) noexcept {
    if (p.radix) return currencyFromInt64(p.radixValue, tenThousandths);
    unsigned __int128 m;
    if (!roundDigitsToInteger(p.digits, p.nDigits, p.exponent + 4, p.sticky, m)) return kOverflow;
    const unsigned __int128 limit = (static_cast<unsigned __int128>(1) << 63) - (p.negative ? 0 : 1);
    if (m > limit) return kOverflow;
    const uint64_t mag = static_cast<uint64_t>(m);
    tenThousandths = p.negative ? static_cast<int64_t>(0 - mag) : static_cast<int64_t>(mag);
    return kOk;
}

int toDecimal(const ParsedNumber& p, Decimal& out) noexcept {
    if (p.radix) {
        out = decimalFromInt64(p.radixValue);
        return kOk;
    }
    return decimalFromDigits(p.digits, p.nDigits, p.exponent, p.sticky, p.negative, out);
}

int toInteger(const ParsedNumber& p, int64_t lo, int64_t hi, int64_t& out) noexcept {
    int64_t v;
    if (p.radix) {
        v = p.radixValue;
    } else {
        unsigned __int128 m;
        if (!roundDigitsToInteger(p.digits, p.nDigits, p.exponent, p.sticky, m)) return kOverflow;
        if (m > (static_cast<unsigned __int128>(1) << 63)) return kOverflow;
        const uint64_t mag = static_cast<uint64_t>(m);
        if (p.negative) {
            v = static_cast<int64_t>(0 - mag);
        } else {
            if (mag > static_cast<uint64_t>(INT64_MAX)) return kOverflow;
            v = static_cast<int64_t>(mag);
        }
    }
    if (v < lo || v > hi) return kOverflow;
    out = v;
    return kOk;
}

bool isNumericText(std::u16string_view s) noexcept {
    ParsedNumber p;
    if (scanNumber(s, p) != kOk) return false;
    if (p.radix || p.nDigits == 0) return true;
    // Only numbers near the top of the range need the full conversion.
    const long long m = magnitude(p);
    if (m <= 308) return true;
    if (m > 309) return false;
    double d;
    return toDouble(p, d) == kOk;
}

namespace {

template <typename T, typename Convert>
int parseWith(std::u16string_view s, T& out, Convert convert) noexcept {
    ParsedNumber p;
    if (int e = scanNumber(s, p)) return e;
    return convert(p, out);
}

template <typename Int>
int parseInt(std::u16string_view s, Int& out) noexcept {
    return parseWith(s, out, [](const ParsedNumber& p, Int& o) noexcept {
        int64_t v;
        if (int e = toInteger(p, std::numeric_limits<Int>::min(), std::numeric_limits<Int>::max(), v)) return e;
        o = static_cast<Int>(v);
        return kOk;
    });
}

}  // namespace

int parseDouble(std::u16string_view s, double& out) noexcept { return parseWith(s, out, toDouble); }
int parseSingle(std::u16string_view s, float& out) noexcept { return parseWith(s, out, toSingle); }
int parseCurrency(std::u16string_view s, int64_t& out) noexcept { return parseWith(s, out, toCurrency); }
int parseDecimal(std::u16string_view s, Decimal& out) noexcept { return parseWith(s, out, toDecimal); }
int parseLong(std::u16string_view s, int32_t& out) noexcept { return parseInt(s, out); }
int parseInteger(std::u16string_view s, int16_t& out) noexcept { return parseInt(s, out); }
int parseByte(std::u16string_view s, uint8_t& out) noexcept { return parseInt(s, out); }

}  // namespace qvt
