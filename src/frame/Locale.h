// The one locale configuration of the library: the ANSI code page, the
// number and date conventions, the two-digit-year window and the text
// collation. Everything else asks through the runtime operations, never
// through the tables directly, so that a different configuration can be
// swapped in at one place.
#pragma once
#include <cstdint>
#include <string>
#include <string_view>

namespace qvt {

struct LocaleConfig {
    // ANSI page: code -> 16-bit unit (Windows-1252 by default).
    char16_t ansiToUnicode[256];
    // Number text.
    char16_t decimalPoint = u'.';
    char16_t thousandsSeparator = u',';
    std::u16string currencySymbol = u"$";
    // Dates: month/day/year order; years 0..99 map into
    // [twoDigitYearStart, twoDigitYearStart + 99].
    int twoDigitYearStart = 1930;
    // Words of CBool / CStr of a Boolean.
    std::u16string trueWord = u"True";
    std::u16string falseWord = u"False";
};

// The active configuration (Windows-1252, US English).
const LocaleConfig& locale() noexcept;

// ANSI code of a unit (63, '?', for a unit outside the page).
uint8_t unicodeToAnsi(char16_t c) noexcept;
inline char16_t ansiToUnicode(uint8_t b) noexcept { return locale().ansiToUnicode[b]; }

// Case mapping of the page's repertoire; other units map to themselves.
char16_t toUpperChar(char16_t c) noexcept;
char16_t toLowerChar(char16_t c) noexcept;
// Key for text compare: two units equal under text compare iff their keys
// are equal; keys order as the text collation orders.
inline char16_t textCompareKey(char16_t c) noexcept { return toLowerChar(c); }

}  // namespace qvt
