// UTF-8 at the edges of the library (script text, JSON, native file names).
// Strings inside are 16-bit units; a surrogate pair travels as one code
// point and a lone surrogate as U+FFFD.
#pragma once
#include <cstdint>
#include <string>
#include <string_view>

#include "frame/Variant.h"

namespace qvt {

inline bool isHighSurrogate(char16_t c) noexcept { return c >= 0xD800 && c <= 0xDBFF; }
inline bool isLowSurrogate(char16_t c) noexcept { return c >= 0xDC00 && c <= 0xDFFF; }

void appendUtf8(std::string& out, uint32_t codePoint);
std::string toUtf8(StringView s);

// What a byte that is not part of valid UTF-8 becomes.
enum class InvalidUtf8 {
    Replace,  // U+FFFD, for text read from users
    Latin1,   // the unit of the same value, so native names survive a round trip
};
String fromUtf8(std::string_view s, InvalidUtf8 invalid = InvalidUtf8::Replace);

}  // namespace qvt
