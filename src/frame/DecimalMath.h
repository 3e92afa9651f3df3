// Arithmetic of the 96-bit Decimal and of Currency (a signed 64-bit count of
// ten-thousandths). Where digits must be dropped the result is rounded
// half-even; failures come back as the run-time error numbers, never as
// exceptions, because these sit in the innermost loops of the library.
#pragma once
#include <cstdint>

#include "frame/Decimal.h"

namespace qvt {

// Error numbers of the numeric layer (the numbers of the run-time error model).
namespace numerr {
inline constexpr int kOk = 0;
inline constexpr int kInvalidArgument = 5;
inline constexpr int kOverflow = 6;
inline constexpr int kDivisionByZero = 11;
inline constexpr int kTypeMismatch = 13;
}  // namespace numerr

inline constexpr int kDecimalMaxScale = 28;

// The unsigned 96-bit mantissa hi:lo.
inline unsigned __int128 decimalMantissa(const Decimal& d) noexcept {
    return (static_cast<unsigned __int128>(d.hi) << 64) | d.lo;
}
inline bool decimalIsZero(const Decimal& d) noexcept { return d.lo == 0 && d.hi == 0; }

// All Decimal operations expect scale <= 28; arithmetic returns 5 otherwise.
// A zero result is never negative.
Decimal decimalFromInt64(int64_t v) noexcept;
// Half-even to an integer; 6 when that leaves the int64 range.
int decimalToInt64(const Decimal& d, int64_t& out) noexcept;
// Like the runtime: the double is first cut to 15 significant digits, so
// CDec(0.1) is exactly 0.1. 6 for |v| >= 2^96 or a non-finite v.
int decimalFromDouble(double v, Decimal& out) noexcept;
// Correctly rounded.
double decimalToDouble(const Decimal& d) noexcept;
// -1, 0 or 1; zeros of either sign and any scale compare equal.
int decimalCompare(const Decimal& a, const Decimal& b) noexcept;
// Exact when the result fits 96 bits at scale <= 28, else the scale is
// lowered with half-even rounding; 6 when even scale 0 does not fit.
int decimalAdd(const Decimal& a, const Decimal& b, Decimal& out) noexcept;
int decimalSub(const Decimal& a, const Decimal& b, Decimal& out) noexcept;
int decimalMul(const Decimal& a, const Decimal& b, Decimal& out) noexcept;
// As many digits as fit (scale <= 28, 96 bits), stopping early when exact;
// 11 on a zero divisor, 6 on overflow.
int decimalDiv(const Decimal& a, const Decimal& b, Decimal& out) noexcept;
Decimal decimalNegate(const Decimal& d) noexcept;
// Half-even to `decimals` places (never raises the scale); 5 if decimals < 0.
int decimalRound(const Decimal& d, int decimals, Decimal& out) noexcept;
Decimal decimalFix(const Decimal& d) noexcept;  // towards zero
Decimal decimalInt(const Decimal& d) noexcept;  // towards minus infinity

// Digit strings, shared with the number parser. The value is
// (-1)^negative * D * 10^exponent, D being the integer spelled by the ASCII
// digits; `sticky` records nonzero digits that were dropped after them.
//
// Half-even round(D * 10^shift) into out; false when it has over 38 digits.
bool roundDigitsToInteger(const char* digits, int nDigits, int shift, bool sticky,
                          unsigned __int128& out) noexcept;
// Exact when it fits, else half-even at the finest scale that fits.
int decimalFromDigits(const char* digits, int nDigits, int exponent, bool sticky, bool negative,
                      Decimal& out) noexcept;

// Currency.
inline constexpr int64_t kCurrencyUnit = 10000;
int currencyFromInt64(int64_t v, int64_t& out) noexcept;
// As the runtime does it: scaled by 10^4 in double precision, then rounded
// half-even, so CCur(0.00005) is 0. 6 when out of range or not finite.
int currencyFromDouble(double v, int64_t& out) noexcept;
double currencyToDouble(int64_t cy) noexcept;  // correctly rounded
int64_t currencyRoundToInt64(int64_t cy) noexcept;  // half-even, cannot fail
int currencyAdd(int64_t a, int64_t b, int64_t& out) noexcept;
int currencySub(int64_t a, int64_t b, int64_t& out) noexcept;
// Exact product rounded half-even at the fourth decimal.
int currencyMul(int64_t a, int64_t b, int64_t& out) noexcept;
// Quotient as a Currency, rounded half-even at the fourth decimal.
int currencyDiv(int64_t a, int64_t b, int64_t& out) noexcept;
Decimal decimalFromCurrency(int64_t cy) noexcept;
int currencyFromDecimal(const Decimal& d, int64_t& out) noexcept;

}  // namespace qvt
