// Numbers to text as CStr writes them, plus the shortest round-trip form
// for JSON.
//
// Double (15 significant digits) and Single (7) follow the Automation
// conversion: round to that many digits, drop trailing zeros, then
//   - plain notation while the decimal exponent X is in [-4, digits);
//   - for X < -4, plain notation still when |X| plus the mantissa digits
//     after its first decimal stays below `digits` (5.6789E-11 is
//     "0.000000000056789", 5.6789E-12 stays so, 0.00001 is "0.00001",
//     1E-14 is plain and 1E-15 is not);
//   - otherwise "d.dddE+XX": at least two exponent digits, explicit sign.
// Negative zero is "0". Currency and Decimal are exact, without trailing
// zeros after the point and never in E form.
//
// The decimal point is the locale's unless one is passed (Str$ passes '.').
// The append forms write into an existing string without a temporary.
#pragma once
#include <cstddef>
#include <cstdint>
#include <string>

#include "frame/Decimal.h"

namespace qvt {

// ASCII form with '.' into buf, which must hold kRealTextMax chars; returns
// the length. significantDigits is 15 for a Double, 7 for a Single.
inline constexpr size_t kRealTextMax = 32;
size_t formatRealAscii(char* buf, double v, int significantDigits) noexcept;

// Decimal digits of an integer, '-' first when negative.
void appendInteger(std::u16string& out, int64_t v);
std::u16string formatInteger(int64_t v);
// The last two decimal digits of a non-negative n, zero-padded ("07").
std::u16string twoDigits(int n);

std::u16string formatDouble(double v);
std::u16string formatSingle(float v);
std::u16string formatCurrency(int64_t tenThousandths);
std::u16string formatDecimal(const Decimal& d);

// point == 0 means the locale's decimal point.
void appendDouble(std::u16string& out, double v, char16_t point = 0);
void appendSingle(std::u16string& out, float v, char16_t point = 0);
void appendCurrency(std::u16string& out, int64_t tenThousandths, char16_t point = 0);
void appendDecimal(std::u16string& out, const Decimal& d, char16_t point = 0);

// Shortest text that reads back to the same value in that type ("0.1",
// "1e+300"); always finite input in practice, as the value model is.
std::string shortestDouble(double v);
std::string shortestSingle(float v);

}  // namespace qvt
