// The tolerant number parser behind IsNumeric and the conversions of a
// String to a number (CDbl, CSng, CLng, CInt, CByte, CCur, CDec).
//
// Accepted, with the locale's decimal point, thousands separator and
// currency symbol:
//   blanks (space, tab, CR, LF, VT, FF) anywhere before and after the number;
//   one sign, in front or behind, or enclosing parentheses meaning negative;
//   one currency symbol, in front or behind, either side of the sign;
//   digits with thousands separators anywhere after the first digit (no
//   grouping check: "1,,2" is 12), one decimal point, ".5" and "5." too;
//   an exponent E or D (either case) with an optional sign and digits;
//   "&H" hexadecimal or "&O" octal digits (not after a currency symbol).
// A radix literal is typed by its value as the language types it: up to
// &HFFFF it is an Integer and sign-extends (&HFFFF is -1, &H8000 -32768),
// up to &HFFFFFFFF a Long; anything wider overflows (error 6).
//
// The text is scanned once into a ParsedNumber; the conversions then work
// on exact decimal digits, so CLng("2.5") is 2 and CCur rounds at the
// fourth decimal without passing through a double.
#pragma once
#include <cstdint>
#include <string_view>

#include "frame/Decimal.h"
#include "frame/DecimalMath.h"

namespace qvt {

struct ParsedNumber {
    // Enough to decide the rounding of any double; further nonzero digits
    // only set `sticky`.
    static constexpr int kMaxDigits = 800;

    bool negative = false;
    bool radix = false;       // &H / &O literal: radixValue holds the value
    bool sticky = false;      // nonzero digits beyond kMaxDigits were dropped
    uint8_t radixBits = 0;    // 16 (Integer) or 32 (Long) for a radix literal
    int nDigits = 0;          // significant digits, no leading or trailing zeros
    int exponent = 0;         // value = digits * 10^exponent
    int64_t radixValue = 0;   // signed, sign already applied
    char digits[kMaxDigits];  // ASCII '0'..'9'; zero has nDigits == 0
};

// 0, 13 when the text is not a number, 6 for a radix literal over 32 bits.
int scanNumber(std::u16string_view s, ParsedNumber& out) noexcept;

// Conversions of a scanned number; all round half-even.
int toDouble(const ParsedNumber& p, double& out) noexcept;   // 6 on overflow
int toSingle(const ParsedNumber& p, float& out) noexcept;    // 6 on overflow
int toCurrency(const ParsedNumber& p, int64_t& tenThousandths) noexcept;
int toDecimal(const ParsedNumber& p, Decimal& out) noexcept;
// To an integer in [lo, hi]; 6 outside.
int toInteger(const ParsedNumber& p, int64_t lo, int64_t hi, int64_t& out) noexcept;

// True when CDbl of the text would succeed ("1E+400" is not numeric).
bool isNumericText(std::u16string_view s) noexcept;

// Scan and convert in one call. Underflow gives 0, never an error.
int parseDouble(std::u16string_view s, double& out) noexcept;
int parseSingle(std::u16string_view s, float& out) noexcept;
int parseCurrency(std::u16string_view s, int64_t& tenThousandths) noexcept;
int parseDecimal(std::u16string_view s, Decimal& out) noexcept;
int parseLong(std::u16string_view s, int32_t& out) noexcept;
int parseInteger(std::u16string_view s, int16_t& out) noexcept;
int parseByte(std::u16string_view s, uint8_t& out) noexcept;

}  // namespace qvt
