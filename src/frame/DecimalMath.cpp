#include "frame/DecimalMath.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace qvt {

using namespace numerr;

namespace {

using u128 = unsigned __int128;

constexpr u128 kTwo96 = u128(1) << 96;

struct Pow10Table {
    u128 v[39];
    constexpr Pow10Table() : v{} {
        u128 r = 1;
        for (int i = 0; i < 39; ++i) {
            v[i] = r;
            if (i < 38) r *= 10;
        }
    }
};
constexpr Pow10Table kPow10;

constexpr uint64_t kTen19 = 10000000000000000000ull;

// Wide enough for a product of two mantissas and for any scale alignment.
struct U256 {
    uint64_t w[4] = {0, 0, 0, 0};

    static U256 of(u128 v) noexcept {
        U256 r;
        r.w[0] = static_cast<uint64_t>(v);
        r.w[1] = static_cast<uint64_t>(v >> 64);
        return r;
    }
    bool fits96() const noexcept { return w[3] == 0 && w[2] == 0 && (w[1] >> 32) == 0; }
    u128 low() const noexcept { return (u128(w[1]) << 64) | w[0]; }
    void mulSmall(uint64_t m) noexcept {
        u128 carry = 0;
        for (uint64_t& x : w) {
            u128 p = u128(x) * m + carry;
            x = static_cast<uint64_t>(p);
            carry = p >> 64;
        }
    }
    uint64_t divSmall(uint64_t d) noexcept {
        u128 rem = 0;
        for (int i = 3; i >= 0; --i) {
            u128 cur = (rem << 64) | w[i];
            w[i] = static_cast<uint64_t>(cur / d);
            rem = cur % d;
        }
        return static_cast<uint64_t>(rem);
    }
    void add(const U256& o) noexcept {
        u128 carry = 0;
        for (int i = 0; i < 4; ++i) {
            u128 s = u128(w[i]) + o.w[i] + carry;
            w[i] = static_cast<uint64_t>(s);
            carry = s >> 64;
        }
    }
    void sub(const U256& o) noexcept {  // requires *this >= o
        uint64_t borrow = 0;
        for (int i = 0; i < 4; ++i) {
            u128 d = u128(w[i]) - o.w[i] - borrow;
            w[i] = static_cast<uint64_t>(d);
            borrow = (d >> 64) ? 1 : 0;
        }
    }
    int cmp(const U256& o) const noexcept {
        for (int i = 3; i >= 0; --i)
            if (w[i] != o.w[i]) return w[i] < o.w[i] ? -1 : 1;
        return 0;
    }
};

void mulPow10(U256& x, int k) noexcept {
    for (; k >= 19; k -= 19) x.mulSmall(kTen19);
    if (k > 0) x.mulSmall(static_cast<uint64_t>(kPow10.v[k]));
}

void setDecimal(Decimal& out, u128 m, int scale, bool negative) noexcept {
    out.lo = static_cast<uint64_t>(m);
    out.hi = static_cast<uint32_t>(m >> 64);
    out.scale = static_cast<uint8_t>(scale);
    out.negative = negative && m != 0;
}

bool halfEvenUp(u128 rem, u128 divisor, u128 quotient) noexcept {
    u128 twice = rem * 2;  // rem < divisor < 2^127 wherever this is used
    return twice > divisor || (twice == divisor && (quotient & 1));
}

// Brings an exact result into 96 bits at scale <= 28, dropping digits
// half-even.
int normalize(U256 r, int scale, bool negative, Decimal& out) noexcept {
    int last = 0;
    bool sticky = false, dropped = false;
    while (scale > kDecimalMaxScale || !r.fits96()) {
        if (scale == 0) return kOverflow;
        sticky |= last != 0;
        last = static_cast<int>(r.divSmall(10));
        --scale;
        dropped = true;
    }
    u128 m = r.low();
    if (dropped && (last > 5 || (last == 5 && (sticky || (m & 1))))) {
        if (++m == kTwo96) {  // 2^96 = ...950336: one more digit must go
            if (scale == 0) return kOverflow;
            m = m / 10 + 1;   // remainder 6 rounds up
            --scale;
        }
    }
    setDecimal(out, m, scale, negative);
    return kOk;
}

bool validScale(const Decimal& d) noexcept { return d.scale <= kDecimalMaxScale; }

// Decimal digits of m into buf (no terminator), returns the count.
int writeU128(char* buf, u128 m) noexcept {
    char tmp[40];
    int n = 0;
    do {
        uint64_t chunk = static_cast<uint64_t>(m % kTen19);
        m /= kTen19;
        for (int i = 0; i < 19 && (chunk != 0 || m != 0); ++i) {
            tmp[n++] = static_cast<char>('0' + chunk % 10);
            chunk /= 10;
        }
    } while (m != 0);
    if (n == 0) tmp[n++] = '0';
    for (int i = 0; i < n; ++i) buf[i] = tmp[n - 1 - i];
    return n;
}

double digitsToDouble(char* buf, int len, int scale, bool negative) noexcept {
    buf[len++] = 'e';
    buf[len++] = '-';
    len += writeU128(buf + len, static_cast<u128>(scale));
    double v = 0;
    std::from_chars(buf, buf + len, v);  // in range by construction
    return negative ? -v : v;
}

}  // namespace

bool roundDigitsToInteger(const char* digits, int nDigits, int shift, bool sticky,
                          unsigned __int128& out) noexcept {
    const long long intCount = static_cast<long long>(nDigits) + shift;
    if (intCount > 38) return false;
    const int take = static_cast<int>(std::clamp<long long>(intCount, 0, nDigits));
    u128 v = 0;
    for (int i = 0; i < take; ++i) v = v * 10 + static_cast<unsigned>(digits[i] - '0');
    if (intCount > nDigits) {
        v *= kPow10.v[intCount - nDigits];
    } else if (intCount >= 0 && intCount < nDigits) {
        const int first = static_cast<int>(intCount);
        const int d = digits[first] - '0';
        bool up = d > 5;
        if (d == 5) {
            bool rest = sticky;
            for (int j = first + 1; j < nDigits && !rest; ++j) rest = digits[j] != '0';
            up = rest || (v & 1);
        }
        if (up) ++v;
    }
    out = v;
    return true;
}

int decimalFromDigits(const char* digits, int nDigits, int exponent, bool sticky, bool negative,
                      Decimal& out) noexcept {
    while (nDigits > 0 && digits[nDigits - 1] == '0') {
        --nDigits;
        ++exponent;
    }
    if (nDigits == 0) {
        setDecimal(out, 0, 0, false);
        return kOk;
    }
    const long long intDigits = static_cast<long long>(nDigits) + exponent;
    if (intDigits > 29) return kOverflow;
    long long scale = exponent < 0 ? std::min<long long>(kDecimalMaxScale, -static_cast<long long>(exponent)) : 0;
    if (intDigits + scale > 29) scale = std::max<long long>(0, 29 - intDigits);
    for (;;) {
        u128 m;
        if (roundDigitsToInteger(digits, nDigits, exponent + static_cast<int>(scale), sticky, m) && m < kTwo96) {
            setDecimal(out, m, static_cast<int>(scale), negative);
            return kOk;
        }
        if (scale == 0) return kOverflow;
        --scale;
    }
}

namespace {

// v * 10^-scale as a Decimal.
Decimal decimalFromScaled(int64_t v, int scale) noexcept {
    Decimal d;
    const uint64_t mag = v < 0 ? 0 - static_cast<uint64_t>(v) : static_cast<uint64_t>(v);
    setDecimal(d, mag, scale, v < 0);
    return d;
}

// d * 10^scale rounded half-even into an int64 (scale 0..4); 6 beyond its range.
int scaledFromDecimal(const Decimal& d, int scale, int64_t& out) noexcept {
    Decimal r;
    if (int e = decimalRound(d, scale, r)) return e;
    const u128 m = decimalMantissa(r) * kPow10.v[scale - r.scale];  // < 2^110
    const u128 limit = r.negative ? (u128(1) << 63) : (u128(1) << 63) - 1;
    if (m > limit) return kOverflow;
    out = r.negative ? static_cast<int64_t>(0 - static_cast<uint64_t>(m)) : static_cast<int64_t>(m);
    return kOk;
}

}  // namespace

Decimal decimalFromInt64(int64_t v) noexcept { return decimalFromScaled(v, 0); }

int decimalToInt64(const Decimal& d, int64_t& out) noexcept { return scaledFromDecimal(d, 0, out); }

int decimalFromDouble(double v, Decimal& out) noexcept {
    if (!std::isfinite(v)) return kOverflow;
    if (v == 0) {
        setDecimal(out, 0, 0, false);
        return kOk;
    }
    // "d.dddddddddddddde±x": 15 significant digits, as the runtime keeps.
    char sci[40];
    auto res = std::to_chars(sci, sci + sizeof sci, std::fabs(v), std::chars_format::scientific, 14);
    char digits[16];
    digits[0] = sci[0];
    for (int i = 1; i < 15; ++i) digits[i] = sci[i + 1];
    int x = 0;
    std::from_chars(sci + 17 + (sci[17] == '+'), res.ptr, x);
    return decimalFromDigits(digits, 15, x - 14, false, v < 0, out);
}

double decimalToDouble(const Decimal& d) noexcept {
    char buf[64];
    const int len = writeU128(buf, decimalMantissa(d));
    return digitsToDouble(buf, len, d.scale, d.negative);
}

int decimalCompare(const Decimal& a, const Decimal& b) noexcept {
    const int sa = decimalIsZero(a) ? 0 : (a.negative ? -1 : 1);
    const int sb = decimalIsZero(b) ? 0 : (b.negative ? -1 : 1);
    if (sa != sb || sa == 0) return sa < sb ? -1 : (sa > sb ? 1 : 0);
    const int scale = std::max(a.scale, b.scale);
    U256 x = U256::of(decimalMantissa(a)), y = U256::of(decimalMantissa(b));
    mulPow10(x, scale - a.scale);
    mulPow10(y, scale - b.scale);
    return sa * x.cmp(y);
}

int decimalAdd(const Decimal& a, const Decimal& b, Decimal& out) noexcept {
    if (!validScale(a) || !validScale(b)) return kInvalidArgument;
    const int scale = std::max(a.scale, b.scale);
    U256 x = U256::of(decimalMantissa(a)), y = U256::of(decimalMantissa(b));
    mulPow10(x, scale - a.scale);
    mulPow10(y, scale - b.scale);
    bool negative = a.negative;
    if (a.negative == b.negative) {
        x.add(y);
    } else if (x.cmp(y) >= 0) {
        x.sub(y);
    } else {
        y.sub(x);
        x = y;
        negative = b.negative;
    }
    return normalize(x, scale, negative, out);
}

int decimalSub(const Decimal& a, const Decimal& b, Decimal& out) noexcept {
    return decimalAdd(a, decimalNegate(b), out);
}

int decimalMul(const Decimal& a, const Decimal& b, Decimal& out) noexcept {
    if (!validScale(a) || !validScale(b)) return kInvalidArgument;
    const u128 p00 = u128(a.lo) * b.lo;
    const u128 mid = u128(a.lo) * b.hi + u128(a.hi) * b.lo;  // < 2^97
    const u128 p11 = u128(a.hi) * b.hi;
    U256 r;
    r.w[0] = static_cast<uint64_t>(p00);
    const u128 t1 = (p00 >> 64) + static_cast<uint64_t>(mid);
    r.w[1] = static_cast<uint64_t>(t1);
    const u128 t2 = (t1 >> 64) + (mid >> 64) + p11;
    r.w[2] = static_cast<uint64_t>(t2);
    r.w[3] = static_cast<uint64_t>(t2 >> 64);
    return normalize(r, a.scale + b.scale, a.negative != b.negative, out);
}

int decimalDiv(const Decimal& a, const Decimal& b, Decimal& out) noexcept {
    if (!validScale(a) || !validScale(b)) return kInvalidArgument;
    const u128 divisor = decimalMantissa(b);
    if (divisor == 0) return kDivisionByZero;
    const u128 dividend = decimalMantissa(a);
    const bool negative = a.negative != b.negative;
    // Mantissa at scale s is (dividend / divisor) * 10^(s - t): generate
    // quotient digits one at a time while they fit.
    const int t = a.scale - b.scale;
    const int fMin = std::max(0, -t);
    const int fMax = kDecimalMaxScale - t;
    u128 q = dividend / divisor, r = dividend % divisor;
    int f = 0;
    while (!(f >= fMin && (r == 0 || f == fMax))) {
        const u128 r10 = r * 10;  // < 2^100
        const u128 next = q * 10 + r10 / divisor;
        if (next >= kTwo96) {
            if (f < fMin) return kOverflow;
            break;
        }
        q = next;
        r = r10 % divisor;
        ++f;
    }
    int scale = t + f;
    if (r != 0) {
        const u128 r10 = r * 10;
        const u128 d = r10 / divisor, rem = r10 % divisor;
        if (d > 5 || (d == 5 && (rem != 0 || (q & 1)))) {
            if (++q == kTwo96) {
                if (scale == 0) return kOverflow;
                q = q / 10 + 1;
                --scale;
            }
        }
    }
    setDecimal(out, q, scale, negative);
    return kOk;
}

Decimal decimalNegate(const Decimal& d) noexcept {
    Decimal r = d;
    r.negative = !d.negative && !decimalIsZero(d);
    return r;
}

int decimalRound(const Decimal& d, int decimals, Decimal& out) noexcept {
    if (decimals < 0 || !validScale(d)) return kInvalidArgument;
    if (decimals >= d.scale) {
        out = d;
        return kOk;
    }
    const u128 p = kPow10.v[d.scale - decimals];
    const u128 m = decimalMantissa(d);
    u128 q = m / p;
    if (halfEvenUp(m % p, p, q)) ++q;
    setDecimal(out, q, decimals, d.negative);
    return kOk;
}

Decimal decimalFix(const Decimal& d) noexcept {
    Decimal r;
    const u128 m = decimalMantissa(d);
    setDecimal(r, m / kPow10.v[std::min<int>(d.scale, 38)], 0, d.negative);
    return r;
}

Decimal decimalInt(const Decimal& d) noexcept {
    Decimal r;
    const u128 p = kPow10.v[std::min<int>(d.scale, 38)];
    const u128 m = decimalMantissa(d);
    u128 q = m / p;
    if (d.negative && m % p != 0) ++q;
    setDecimal(r, q, 0, d.negative);
    return r;
}

int currencyFromInt64(int64_t v, int64_t& out) noexcept {
    int64_t r;  // out stays untouched on failure
    if (__builtin_mul_overflow(v, kCurrencyUnit, &r)) return kOverflow;
    out = r;
    return kOk;
}

int currencyFromDouble(double v, int64_t& out) noexcept {
    if (!std::isfinite(v)) return kOverflow;
    if (v == 0) {
        out = 0;
        return kOk;
    }
    // Scaled exactly: v is m * 2^e with a 53-bit m, so v * 10000 is
    // m * 10000 * 2^e, rounded once (half even) where e is negative. Scaling
    // in floating point would lose digits above 2^53 ten-thousandths.
    int e;
    const double frac = std::frexp(std::fabs(v), &e);
    const u128 m = static_cast<u128>(std::ldexp(frac, 53));
    e -= 53;
    u128 r = m * 10000u;  // below 2^67
    if (e >= 0) {
        if (e > 63) return kOverflow;
        if (r > (u128(1) << 64) >> e) return kOverflow;
        r <<= e;
    } else if (e <= -70) {
        r = 0;  // below half a ten-thousandth
    } else {
        const int sh = -e;
        const u128 q = r >> sh;
        const u128 rem = r - (q << sh);
        const u128 half = u128(1) << (sh - 1);
        r = q + ((rem > half || (rem == half && (q & 1))) ? 1 : 0);
    }
    const bool negative = v < 0;
    if (r > (negative ? u128(1) << 63 : (u128(1) << 63) - 1)) return kOverflow;
    out = negative ? static_cast<int64_t>(0 - static_cast<uint64_t>(r)) : static_cast<int64_t>(r);
    return kOk;
}

double currencyToDouble(int64_t cy) noexcept {
    constexpr int64_t kExact = int64_t(1) << 53;
    if (cy > -kExact && cy < kExact) return static_cast<double>(cy) / 10000.0;  // one rounding
    char buf[64];
    const uint64_t mag = cy < 0 ? 0 - static_cast<uint64_t>(cy) : static_cast<uint64_t>(cy);
    return digitsToDouble(buf, writeU128(buf, mag), 4, cy < 0);
}

int64_t currencyRoundToInt64(int64_t cy) noexcept {
    int64_t q = cy / kCurrencyUnit;
    const int64_t r = cy % kCurrencyUnit;
    const int64_t ar = r < 0 ? -r : r;
    if (ar > 5000 || (ar == 5000 && (q & 1))) q += r < 0 ? -1 : 1;
    return q;
}

int currencyAdd(int64_t a, int64_t b, int64_t& out) noexcept {
    int64_t r;  // out stays untouched on failure
    if (__builtin_add_overflow(a, b, &r)) return kOverflow;
    out = r;
    return kOk;
}

int currencySub(int64_t a, int64_t b, int64_t& out) noexcept {
    int64_t r;  // out stays untouched on failure
    if (__builtin_sub_overflow(a, b, &r)) return kOverflow;
    out = r;
    return kOk;
}

namespace {

// Half-even n / d (d > 0 or < 0) into an int64.
int divideHalfEven(__int128 n, __int128 d, int64_t& out) noexcept {
    __int128 q = n / d;
    const __int128 r = n % d;
    if (r != 0) {
        const u128 ar = r < 0 ? u128(-r) : u128(r);
        const u128 ad = d < 0 ? u128(-d) : u128(d);
        if (halfEvenUp(ar, ad, static_cast<u128>(q))) q += ((n < 0) != (d < 0)) ? -1 : 1;
    }
    if (q > INT64_MAX || q < INT64_MIN) return kOverflow;
    out = static_cast<int64_t>(q);
    return kOk;
}

}  // namespace

int currencyMul(int64_t a, int64_t b, int64_t& out) noexcept {
    return divideHalfEven(static_cast<__int128>(a) * b, kCurrencyUnit, out);
}

int currencyDiv(int64_t a, int64_t b, int64_t& out) noexcept {
    if (b == 0) return kDivisionByZero;
    return divideHalfEven(static_cast<__int128>(a) * kCurrencyUnit, b, out);
}

Decimal decimalFromCurrency(int64_t cy) noexcept { return decimalFromScaled(cy, 4); }

int currencyFromDecimal(const Decimal& d, int64_t& out) noexcept { return scaledFromDecimal(d, 4, out); }

}  // namespace qvt
