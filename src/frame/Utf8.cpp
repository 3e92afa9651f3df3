#include "frame/Utf8.h"

namespace qvt {

void appendUtf8(std::string& out, uint32_t cp) {
    if (cp < 0x80) {
        out += char(cp);
    } else if (cp < 0x800) {
        out += char(0xC0 | (cp >> 6));
        out += char(0x80 | (cp & 0x3F));
    } else if (cp < 0x10000) {
        out += char(0xE0 | (cp >> 12));
        out += char(0x80 | ((cp >> 6) & 0x3F));
        out += char(0x80 | (cp & 0x3F));
    } else {
        out += char(0xF0 | (cp >> 18));
        out += char(0x80 | ((cp >> 12) & 0x3F));
        out += char(0x80 | ((cp >> 6) & 0x3F));
        out += char(0x80 | (cp & 0x3F));
    }
}

std::string toUtf8(StringView s, Utf8Mode mode) {
    std::string out;
    out.reserve(s.size());
    for (size_t i = 0; i < s.size(); ++i) {
        char16_t c = s[i];
        if (isHighSurrogate(c) && i + 1 < s.size() && isLowSurrogate(s[i + 1])) {
            appendUtf8(out, 0x10000 + ((uint32_t(c) - 0xD800) << 10) + (uint32_t(s[i + 1]) - 0xDC00));
            ++i;
        } else if (isHighSurrogate(c) || isLowSurrogate(c)) {
            appendUtf8(out, mode == Utf8Mode::Text ? 0xFFFD : uint32_t(c));
        } else {
            appendUtf8(out, c);
        }
    }
    return out;
}

String fromUtf8(std::string_view s, Utf8Mode mode) {
    String out;
    out.reserve(s.size());
    size_t i = 0;
    while (i < s.size()) {
        unsigned char c = static_cast<unsigned char>(s[i]);
        uint32_t cp;
        size_t len;
        if (c < 0x80) { cp = c; len = 1; }
        else if ((c & 0xE0) == 0xC0) { cp = c & 0x1F; len = 2; }
        else if ((c & 0xF0) == 0xE0) { cp = c & 0x0F; len = 3; }
        else if ((c & 0xF8) == 0xF0) { cp = c & 0x07; len = 4; }
        else { cp = 0; len = 0; }
        bool ok = len > 0 && i + len <= s.size();
        for (size_t k = 1; ok && k < len; ++k) {
            unsigned char cc = static_cast<unsigned char>(s[i + k]);
            if ((cc & 0xC0) != 0x80) ok = false;
            else cp = (cp << 6) | (cc & 0x3F);
        }
        static const uint32_t minimum[5] = {0, 0, 0x80, 0x800, 0x10000};
        bool surrogate = cp >= 0xD800 && cp <= 0xDFFF;
        if (!ok || cp < minimum[len] || cp > 0x10FFFF || (surrogate && mode == Utf8Mode::Text)) {
            out.push_back(mode == Utf8Mode::Text ? char16_t(0xFFFD) : char16_t(c));
            ++i;
            continue;
        }
        if (cp >= 0x10000) {
            cp -= 0x10000;
            out.push_back(char16_t(0xD800 + (cp >> 10)));
            out.push_back(char16_t(0xDC00 + (cp & 0x3FF)));
        } else {
            out.push_back(char16_t(cp));
        }
        i += len;
    }
    return out;
}

}  // namespace qvt
