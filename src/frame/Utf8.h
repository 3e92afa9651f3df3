// UTF-8 at the edges of the library (script text, JSON, native file names).
// Strings inside are 16-bit units; a surrogate pair travels as one code
// point.
#pragma once
#include <cstdint>
#include <string>
#include <string_view>

#include "frame/Variant.h"

namespace qvt {

inline bool isHighSurrogate(char16_t c) noexcept { return c >= 0xD800 && c <= 0xDBFF; }
inline bool isLowSurrogate(char16_t c) noexcept { return c >= 0xDC00 && c <= 0xDFFF; }

// Text: what cannot be encoded or decoded becomes U+FFFD. NativeName: a lone
// surrogate travels as its three-byte form and a byte that is not UTF-8
// comes back as the unit of the same value, so that any name round-trips.
enum class Utf8Mode { Text, NativeName };

void appendUtf8(std::string& out, uint32_t codePoint);
std::string toUtf8(StringView s, Utf8Mode mode = Utf8Mode::Text);
String fromUtf8(std::string_view s, Utf8Mode mode = Utf8Mode::Text);

}  // namespace qvt
