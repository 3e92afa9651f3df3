#include "frame/NumberFormat.h"

#include <charconv>
#include <cmath>

#include "frame/DecimalMath.h"
#include "frame/Locale.h"

namespace qvt {

size_t formatRealAscii(char* buf, double v, int significantDigits) noexcept {
    char* o = buf;
    if (std::isnan(v) || std::isinf(v)) {  // never produced by the value model; the runtime's spelling
        if (std::signbit(v) && !std::isnan(v)) *o++ = '-';
        const char* text = std::isnan(v) ? "1.#QNAN" : "1.#INF";
        while (*text) *o++ = *text++;
        return static_cast<size_t>(o - buf);
    }
    if (v == 0) {
        *o++ = '0';
        return 1;
    }
    // "d.ddde±xx" correctly rounded to the requested digits.
    char sci[40];
    const auto res = std::to_chars(sci, sci + sizeof sci, std::fabs(v), std::chars_format::scientific,
                                   significantDigits - 1);
    char mant[20];
    int n = 0;
    const char* p = sci;
    mant[n++] = *p++;
    if (*p == '.')
        for (++p; *p != 'e'; ++p) mant[n++] = *p;
    ++p;
    const bool negativeExponent = *p++ == '-';
    int x = 0;
    for (; p < res.ptr; ++p) x = x * 10 + (*p - '0');
    if (negativeExponent) x = -x;
    while (n > 1 && mant[n - 1] == '0') --n;

    if (v < 0) *o++ = '-';
    // %G's choice, then the conversion's second chance for small numbers:
    // plain when |X| plus the mantissa digits after its first decimal is
    // below the digit count (one-digit mantissas count as two).
    const int extra = n > 2 ? n - 2 : 0;
    const bool plain = (x >= -4 && x < significantDigits) || (x < -4 && -x + extra < significantDigits);
    if (plain && x >= 0) {
        const int intLen = x + 1;
        for (int i = 0; i < intLen; ++i) *o++ = i < n ? mant[i] : '0';
        if (n > intLen) {
            *o++ = '.';
            for (int i = intLen; i < n; ++i) *o++ = mant[i];
        }
    } else if (plain) {
        *o++ = '0';
        *o++ = '.';
        for (int i = 0; i < -x - 1; ++i) *o++ = '0';
        for (int i = 0; i < n; ++i) *o++ = mant[i];
    } else {
        *o++ = mant[0];
        if (n > 1) {
            *o++ = '.';
            for (int i = 1; i < n; ++i) *o++ = mant[i];
        }
        *o++ = 'E';
        *o++ = x < 0 ? '-' : '+';
        const int ax = x < 0 ? -x : x;
        if (ax >= 100) *o++ = static_cast<char>('0' + ax / 100);
        *o++ = static_cast<char>('0' + ax / 10 % 10);
        *o++ = static_cast<char>('0' + ax % 10);
    }
    return static_cast<size_t>(o - buf);
}

namespace {

char16_t pointOr(char16_t point) noexcept { return point != 0 ? point : locale().decimalPoint; }

void appendAscii(std::u16string& out, const char* text, size_t len, char16_t point) {
    const size_t old = out.size();
    out.resize(old + len);
    char16_t* o = out.data() + old;
    for (size_t i = 0; i < len; ++i) o[i] = text[i] == '.' ? point : static_cast<char16_t>(text[i]);
}

// Unsigned magnitude and scale to plain text, trailing fraction zeros cut.
size_t writeScaled(char* buf, unsigned __int128 m, int scale, bool negative) {
    if (m == 0) {  // whatever the sign and scale
        buf[0] = '0';
        return 1;
    }
    char digits[48];
    int n = 0;
    do {
        digits[n++] = static_cast<char>('0' + static_cast<int>(m % 10));
        m /= 10;
    } while (m != 0);
    // digits[] runs backwards; skip the zeros that end the fraction
    int skip = 0;
    while (skip < scale && skip < n && digits[skip] == '0') ++skip;
    char* o = buf;
    if (negative) *o++ = '-';
    if (n > scale) {
        for (int i = n - 1; i >= scale; --i) *o++ = digits[i];
    } else {
        *o++ = '0';
    }
    if (skip < scale) {
        *o++ = '.';
        for (int i = scale - 1; i >= n; --i) *o++ = '0';
        for (int i = (scale < n ? scale : n) - 1; i >= skip; --i) *o++ = digits[i];
    }
    return static_cast<size_t>(o - buf);
}

}  // namespace

void appendDouble(std::u16string& out, double v, char16_t point) {
    char buf[kRealTextMax];
    appendAscii(out, buf, formatRealAscii(buf, v, 15), pointOr(point));
}

void appendSingle(std::u16string& out, float v, char16_t point) {
    char buf[kRealTextMax];
    appendAscii(out, buf, formatRealAscii(buf, v, 7), pointOr(point));
}

void appendCurrency(std::u16string& out, int64_t tenThousandths, char16_t point) {
    char buf[48];
    const uint64_t mag = tenThousandths < 0 ? 0 - static_cast<uint64_t>(tenThousandths)
                                            : static_cast<uint64_t>(tenThousandths);
    appendAscii(out, buf, writeScaled(buf, mag, 4, tenThousandths < 0), pointOr(point));
}

void appendDecimal(std::u16string& out, const Decimal& d, char16_t point) {
    char buf[320];  // any uint8_t scale fits
    appendAscii(out, buf, writeScaled(buf, decimalMantissa(d), d.scale, d.negative), pointOr(point));
}

std::u16string formatDouble(double v) {
    std::u16string s;
    appendDouble(s, v);
    return s;
}

std::u16string formatSingle(float v) {
    std::u16string s;
    appendSingle(s, v);
    return s;
}

void appendInteger(std::u16string& out, int64_t v) {
    char16_t buf[24];
    char16_t* const end = buf + 24;
    char16_t* p = end;
    uint64_t u = v < 0 ? 0 - static_cast<uint64_t>(v) : static_cast<uint64_t>(v);
    do {
        *--p = static_cast<char16_t>(u'0' + u % 10);
        u /= 10;
    } while (u != 0);
    if (v < 0) *--p = u'-';
    out.append(p, end);
}

std::u16string formatInteger(int64_t v) {
    std::u16string s;
    appendInteger(s, v);
    return s;
}

std::u16string twoDigits(int n) {
    return {static_cast<char16_t>(u'0' + n / 10 % 10), static_cast<char16_t>(u'0' + n % 10)};
}

std::u16string formatCurrency(int64_t tenThousandths) {
    std::u16string s;
    appendCurrency(s, tenThousandths);
    return s;
}

std::u16string formatDecimal(const Decimal& d) {
    std::u16string s;
    appendDecimal(s, d);
    return s;
}

std::string shortestDouble(double v) {
    char buf[32];
    const auto r = std::to_chars(buf, buf + sizeof buf, v);
    return std::string(buf, r.ptr);
}

std::string shortestSingle(float v) {
    char buf[32];
    const auto r = std::to_chars(buf, buf + sizeof buf, v);
    return std::string(buf, r.ptr);
}

}  // namespace qvt
