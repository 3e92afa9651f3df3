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
    // Calendar words and named date and time patterns (Format$ grammar).
    std::u16string monthNames[12] = {u"January", u"February", u"March",     u"April",   u"May",      u"June",
                                     u"July",    u"August",   u"September", u"October", u"November", u"December"};
    std::u16string monthAbbreviations[12] = {u"Jan", u"Feb", u"Mar", u"Apr", u"May", u"Jun",
                                             u"Jul", u"Aug", u"Sep", u"Oct", u"Nov", u"Dec"};
    std::u16string dayNames[7] = {u"Sunday",   u"Monday", u"Tuesday", u"Wednesday",
                                  u"Thursday", u"Friday", u"Saturday"};
    std::u16string dayAbbreviations[7] = {u"Sun", u"Mon", u"Tue", u"Wed", u"Thu", u"Fri", u"Sat"};
    std::u16string amWord = u"AM";
    std::u16string pmWord = u"PM";
    char16_t dateSeparator = u'/';
    char16_t timeSeparator = u':';
    std::u16string shortDatePattern = u"m/d/yyyy";
    std::u16string mediumDatePattern = u"dd-mmm-yy";
    std::u16string longDatePattern = u"dddd, mmmm d, yyyy";
    std::u16string longTimePattern = u"h:nn:ss AM/PM";
    std::u16string mediumTimePattern = u"hh:nn AM/PM";
    std::u16string shortTimePattern = u"hh:nn";
    // Words of Format$'s Yes/No and On/Off.
    std::u16string yesWord = u"Yes";
    std::u16string noWord = u"No";
    std::u16string onWord = u"On";
    std::u16string offWord = u"Off";
};

// The active configuration (Windows-1252, US English).
const LocaleConfig& locale() noexcept;

// The common cases of the character mappings are inline: they sit in the
// inner loops of every search and comparison.
uint8_t unicodeToAnsiOutsideLatin1(char16_t c) noexcept;
char16_t toUpperCharBeyondAscii(char16_t c) noexcept;
char16_t toLowerCharBeyondAscii(char16_t c) noexcept;

// ANSI code of a unit (63, '?', for a unit outside the page).
inline uint8_t unicodeToAnsi(char16_t c) noexcept {
    if (c < 0x80 || (c >= 0xA0 && c <= 0xFF)) return static_cast<uint8_t>(c);
    return unicodeToAnsiOutsideLatin1(c);
}
inline char16_t ansiToUnicode(uint8_t b) noexcept { return locale().ansiToUnicode[b]; }

// Case mapping of the page's repertoire; other units map to themselves.
inline char16_t toUpperChar(char16_t c) noexcept {
    if (c < 0x80) return (c >= u'a' && c <= u'z') ? static_cast<char16_t>(c - 32) : c;
    return toUpperCharBeyondAscii(c);
}
inline char16_t toLowerChar(char16_t c) noexcept {
    if (c < 0x80) return (c >= u'A' && c <= u'Z') ? static_cast<char16_t>(c + 32) : c;
    return toLowerCharBeyondAscii(c);
}
// Key for text compare: two units equal under text compare iff their keys
// are equal; keys order as the text collation orders.
inline char16_t textCompareKey(char16_t c) noexcept { return toLowerChar(c); }

}  // namespace qvt
