#include "frame/Locale.h"

namespace qvt {

namespace {

// Windows-1252 0x80..0x9F; the five undefined codes map to the C1 control
// of the same value, as the system conversion does.
constexpr char16_t kHigh1252[32] = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
    0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

LocaleConfig makeDefault() {
    LocaleConfig c;
    for (int i = 0; i < 256; ++i)
        c.ansiToUnicode[i] = (i >= 0x80 && i < 0xA0) ? kHigh1252[i - 0x80] : static_cast<char16_t>(i);
    return c;
}

const LocaleConfig gLocale = makeDefault();

}  // namespace

const LocaleConfig& locale() noexcept { return gLocale; }

uint8_t unicodeToAnsiOutsideLatin1(char16_t c) noexcept {
    for (int i = 0; i < 32; ++i)
        if (kHigh1252[i] == c) return static_cast<uint8_t>(0x80 + i);
    return 63;
}

char16_t toUpperCharBeyondAscii(char16_t c) noexcept {
    if (c >= 0xE0 && c <= 0xFE && c != 0xF7) return static_cast<char16_t>(c - 32);
    switch (c) {
        case 0x0161: return 0x0160;  // š
        case 0x0153: return 0x0152;  // œ
        case 0x017E: return 0x017D;  // ž
        case 0x00FF: return 0x0178;  // ÿ
        default: return c;
    }
}

char16_t toLowerCharBeyondAscii(char16_t c) noexcept {
    if (c >= 0xC0 && c <= 0xDE && c != 0xD7) return static_cast<char16_t>(c + 32);
    switch (c) {
        case 0x0160: return 0x0161;
        case 0x0152: return 0x0153;
        case 0x017D: return 0x017E;
        case 0x0178: return 0x00FF;
        default: return c;
    }
}

}  // namespace qvt
