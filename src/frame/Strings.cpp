#include "frame/Strings.h"

#include <algorithm>
#include <limits>

#include "frame/Conversions.h"
#include "frame/Locale.h"
#include "frame/NumberFormat.h"

namespace qvt {

namespace {

constexpr ErrNo errInvalidPattern = 93;
constexpr size_t npos = StringView::npos;

[[noreturn]] void invalidCall() { raiseError(errInvalidCall); }

// True for text compare. Database compare has no database to ask here, so
// it compares as text; any other mode is an invalid argument.
bool isTextMode(int32_t compare) {
    if (compare == vbBinaryCompare) return false;
    if (compare == vbTextCompare || compare == vbDatabaseCompare) return true;
    invalidCall();
}

inline char16_t key(char16_t c) noexcept { return textCompareKey(c); }

// A length argument is a Long in Basic: beyond that it overflows before the
// call, which also keeps us from asking for absurd allocations.
size_t checkedCount(int64_t n) {
    if (n < 0) invalidCall();
    if (n > std::numeric_limits<int32_t>::max()) raiseError(errOverflow);
    return static_cast<size_t>(n);
}

bool equalText(const char16_t* a, const char16_t* b, size_t n) noexcept {
    for (size_t i = 0; i < n; ++i)
        if (key(a[i]) != key(b[i])) return false;
    return true;
}

// First occurrence of a non-empty f at or after from.
size_t findForward(StringView s, StringView f, size_t from, bool text) noexcept {
    if (!text) return s.find(f, from);
    if (f.size() > s.size()) return npos;
    const char16_t k0 = key(f[0]);
    const size_t last = s.size() - f.size();
    for (size_t i = from; i <= last; ++i)
        if (key(s[i]) == k0 && equalText(s.data() + i + 1, f.data() + 1, f.size() - 1)) return i;
    return npos;
}

// Last occurrence of a non-empty f that lies wholly within s[0, end).
size_t findBackward(StringView s, StringView f, size_t end, bool text) noexcept {
    if (f.size() > end) return npos;
    if (!text) return s.substr(0, end).rfind(f);
    const char16_t k0 = key(f[0]);
    for (size_t i = end - f.size() + 1; i-- > 0;)
        if (key(s[i]) == k0 && equalText(s.data() + i + 1, f.data() + 1, f.size() - 1)) return i;
    return npos;
}

int sign(int64_t d) noexcept { return (d > 0) - (d < 0); }

// --- Like -------------------------------------------------------------

struct LikeElement {
    enum Kind : uint8_t { Literal, AnyChar, Digit, List, Star, Nothing } kind = Literal;
    bool negated = false;
    char16_t ch = 0;
    StringView list;  // body of [...] without the brackets and the '!'
    size_t next = 0;  // pattern index after the element
};

// True when lo..hi is an ascending (or single-point) range in the mode's order.
inline bool ascending(char16_t lo, char16_t hi, bool text) noexcept {
    return text ? key(lo) <= key(hi) : lo <= hi;
}

// Reads the element at p. An unclosed list or a descending range is an
// invalid pattern (93). '-' is literal first or last in a list; "[]"
// matches the empty string; "[!]" matches any one character.
LikeElement parseElement(StringView pat, size_t p, bool text) {
    LikeElement e;
    const char16_t c = pat[p];
    e.next = p + 1;
    switch (c) {
        case u'?': e.kind = LikeElement::AnyChar; return e;
        case u'*': e.kind = LikeElement::Star; return e;
        case u'#': e.kind = LikeElement::Digit; return e;
        case u'[': break;
        default: e.kind = LikeElement::Literal; e.ch = c; return e;
    }
    size_t q = p + 1;
    if (q < pat.size() && pat[q] == u']') {
        e.kind = LikeElement::Nothing;
        e.next = q + 1;
        return e;
    }
    if (q < pat.size() && pat[q] == u'!') {
        e.negated = true;
        ++q;
    }
    const size_t close = pat.find(u']', q);
    if (close == npos) raiseError(errInvalidPattern);
    e.kind = LikeElement::List;
    e.list = pat.substr(q, close - q);
    e.next = close + 1;
    for (size_t i = 0; i + 2 < e.list.size(); ++i)
        if (e.list[i + 1] == u'-') {
            if (!ascending(e.list[i], e.list[i + 2], text)) raiseError(errInvalidPattern);
            i += 2;
        }
    return e;
}

bool inList(StringView list, char16_t c, bool text) noexcept {
    const char16_t kc = text ? key(c) : c;
    for (size_t i = 0; i < list.size(); ++i) {
        if (i + 2 < list.size() && list[i + 1] == u'-') {
            const char16_t lo = text ? key(list[i]) : list[i];
            const char16_t hi = text ? key(list[i + 2]) : list[i + 2];
            if (lo <= kc && kc <= hi) return true;
            i += 2;
        } else if ((text ? key(list[i]) : list[i]) == kc) {
            return true;
        }
    }
    return false;
}

bool matchesOne(const LikeElement& e, char16_t c, bool text) noexcept {
    switch (e.kind) {
        case LikeElement::Literal: return text ? key(e.ch) == key(c) : e.ch == c;
        case LikeElement::AnyChar: return true;
        case LikeElement::Digit: return c >= u'0' && c <= u'9';
        case LikeElement::List: return inList(e.list, c, text) != e.negated;
        default: return false;
    }
}

// --- number text --------------------------------------------------------

// Digits of v in base 2^shift (hex or octal), most significant first, upper case.
String radixDigits(uint32_t v, unsigned shift) {
    char16_t buf[12];
    char16_t* end = buf + 12;
    char16_t* p = end;
    const uint32_t mask = (1u << shift) - 1;
    do {
        const uint32_t d = v & mask;
        *--p = static_cast<char16_t>(d < 10 ? u'0' + d : u'A' + d - 10);
        v >>= shift;
    } while (v != 0);
    return String(p, end);
}

// The bit pattern Hex$ and Oct$ print: Integer-sized operands at 16 bits,
// everything else as a Long (rounded half-even, 6 beyond its range).
uint32_t radixOperand(const Variant& v) {
    switch (v.vt()) {
        case vbNull: raiseError(errInvalidUseOfNull);
        case vbEmpty: return 0;
        case vbByte: return v.asByte();
        case vbInteger: return static_cast<uint16_t>(v.asInteger());
        case vbBoolean: return v.asBoolean() ? 0xFFFFu : 0u;
        case vbLong: return static_cast<uint32_t>(v.asLong());
        default: {
            int32_t l = 0;
            check(toLong(v, l));
            return static_cast<uint32_t>(l);
        }
    }
}

String radixText(const Variant& v, unsigned shift) { return radixDigits(radixOperand(v), shift); }

// An integer as Str$ prints it: the sign position holds a blank or '-'.
void appendSignedInteger(String& out, int64_t v) {
    if (v >= 0) out.push_back(u' ');
    appendInteger(out, v);
}

}  // namespace

// --- length and pieces ------------------------------------------------------

int32_t Len(StringView s) noexcept { return static_cast<int32_t>(s.size()); }

Variant Len(const Variant& v) {
    if (v.isNull()) return Variant::null();
    if (v.isString()) return Variant(Len(v.asString()));
    String text;
    check(toText(v, text));
    return Variant(Len(text));
}

String Mid(StringView s, int64_t start) {
    if (start < 1) invalidCall();
    if (static_cast<uint64_t>(start) > s.size()) return String();
    return String(s.substr(static_cast<size_t>(start - 1)));
}

String Mid(StringView s, int64_t start, int64_t length) {
    if (start < 1 || length < 0) invalidCall();
    if (static_cast<uint64_t>(start) > s.size()) return String();
    const size_t from = static_cast<size_t>(start - 1);
    const size_t n = std::min<uint64_t>(static_cast<uint64_t>(length), s.size() - from);
    return String(s.substr(from, n));
}

String Left(StringView s, int64_t n) {
    if (n < 0) invalidCall();
    return String(s.substr(0, std::min<uint64_t>(static_cast<uint64_t>(n), s.size())));
}

String Right(StringView s, int64_t n) {
    if (n < 0) invalidCall();
    const size_t k = std::min<uint64_t>(static_cast<uint64_t>(n), s.size());
    return String(s.substr(s.size() - k));
}

// Basic rejects a start beyond the text: the statement may only overwrite.
void MidAssign(String& target, int64_t start, int64_t length, StringView replacement) {
    if (start < 1 || static_cast<uint64_t>(start) > target.size()) invalidCall();
    const size_t from = static_cast<size_t>(start - 1);
    size_t n = std::min(replacement.size(), target.size() - from);
    if (length >= 0) n = std::min<uint64_t>(n, static_cast<uint64_t>(length));
    std::copy_n(replacement.data(), n, target.begin() + static_cast<ptrdiff_t>(from));
}

String LTrim(StringView s) {
    const size_t b = s.find_first_not_of(u' ');
    return b == npos ? String() : String(s.substr(b));
}

String RTrim(StringView s) {
    const size_t e = s.find_last_not_of(u' ');
    return e == npos ? String() : String(s.substr(0, e + 1));
}

String Trim(StringView s) {
    const size_t b = s.find_first_not_of(u' ');
    if (b == npos) return String();
    return String(s.substr(b, s.find_last_not_of(u' ') - b + 1));
}

String UCase(StringView s) {
    String r(s.size(), u'\0');
    std::transform(s.begin(), s.end(), r.begin(), toUpperChar);
    return r;
}

String LCase(StringView s) {
    String r(s.size(), u'\0');
    std::transform(s.begin(), s.end(), r.begin(), toLowerChar);
    return r;
}

String Space(int64_t n) { return String(checkedCount(n), u' '); }

String StringOf(int64_t n, char16_t c) { return String(checkedCount(n), c); }

String StringOf(int64_t n, StringView c) {
    const size_t count = checkedCount(n);
    if (c.empty()) invalidCall();
    return String(count, c[0]);
}

String StringOfCode(int64_t n, int64_t code) {
    const size_t count = checkedCount(n);
    if (code < 0) invalidCall();
    return String(count, ansiToUnicode(static_cast<uint8_t>(code % 256)));
}

String LSet(StringView s, int32_t fieldLength) {
    if (fieldLength < 0) invalidCall();
    const size_t n = static_cast<size_t>(fieldLength);
    String r(s.substr(0, n));
    r.resize(n, u' ');
    return r;
}

// --- searching and comparing -------------------------------------------

int32_t InStr(int64_t start, StringView s, StringView find, int32_t compare) {
    if (start < 1) invalidCall();
    const bool text = isTextMode(compare);
    if (s.empty() || static_cast<uint64_t>(start) > s.size()) return 0;
    if (find.empty()) return static_cast<int32_t>(start);
    const size_t at = findForward(s, find, static_cast<size_t>(start - 1), text);
    return at == npos ? 0 : static_cast<int32_t>(at + 1);
}

int32_t InStrRev(StringView s, StringView find, int64_t start, int32_t compare) {
    if (start == 0 || start < -1) invalidCall();
    const bool text = isTextMode(compare);
    if (s.empty()) return 0;
    const uint64_t end = start == -1 ? s.size() : static_cast<uint64_t>(start);
    if (end > s.size()) return 0;
    if (find.empty()) return static_cast<int32_t>(end);
    const size_t at = findBackward(s, find, static_cast<size_t>(end), text);
    return at == npos ? 0 : static_cast<int32_t>(at + 1);
}

// As Basic does, the result begins at start: text before it is dropped.
String Replace(StringView s, StringView find, StringView with, int64_t start, int64_t count,
               int32_t compare) {
    if (start < 1 || count < -1) invalidCall();
    const bool text = isTextMode(compare);
    if (static_cast<uint64_t>(start) > s.size()) return String();
    const StringView rest = s.substr(static_cast<size_t>(start - 1));
    if (find.empty() || count == 0) return String(rest);
    size_t at = findForward(rest, find, 0, text);
    if (at == npos) return String(rest);

    String r;
    // Exact when the text shrinks; otherwise room for the first match, then doubling.
    r.reserve(rest.size() + (with.size() > find.size() ? with.size() - find.size() : 0));
    size_t from = 0;
    uint64_t left = count == -1 ? std::numeric_limits<uint64_t>::max() : static_cast<uint64_t>(count);
    while (at != npos && left-- > 0) {
        r.append(rest.substr(from, at - from));
        r.append(with);
        from = at + find.size();
        at = findForward(rest, find, from, text);
    }
    r.append(rest.substr(from));
    return r;
}

String StrReverse(StringView s) { return String(s.rbegin(), s.rend()); }

int32_t StrComp(StringView a, StringView b, int32_t compare) {
    if (!isTextMode(compare)) return sign(a.compare(b));
    const size_t n = std::min(a.size(), b.size());
    for (size_t i = 0; i < n; ++i) {
        const char16_t ka = key(a[i]), kb = key(b[i]);
        if (ka != kb) return ka < kb ? -1 : 1;
    }
    return sign(static_cast<int64_t>(a.size()) - static_cast<int64_t>(b.size()));
}

// Every element but '*' and "[]" consumes exactly one unit, so the
// classic greedy match with one resume point (the last '*') is exact and
// needs at most |s| * |pattern| steps: no exponential backtracking.
bool Like(StringView s, StringView pattern, int32_t compare) {
    const bool text = isTextMode(compare);
    // A malformed pattern fails whatever the text, not only when reached.
    for (size_t p = 0; p < pattern.size();) p = parseElement(pattern, p, text).next;

    size_t si = 0, pi = 0;
    size_t resumeP = npos, resumeS = 0;
    while (si < s.size()) {
        if (pi < pattern.size()) {
            const LikeElement e = parseElement(pattern, pi, text);
            if (e.kind == LikeElement::Star) {
                resumeP = pi = e.next;
                resumeS = si;
                continue;
            }
            if (e.kind == LikeElement::Nothing) {
                pi = e.next;
                continue;
            }
            if (matchesOne(e, s[si], text)) {
                ++si;
                pi = e.next;
                continue;
            }
        }
        if (resumeP == npos) return false;
        pi = resumeP;
        si = ++resumeS;
    }
    while (pi < pattern.size()) {
        const LikeElement e = parseElement(pattern, pi, text);
        if (e.kind != LikeElement::Star && e.kind != LikeElement::Nothing) return false;
        pi = e.next;
    }
    return true;
}

// --- characters ----------------------------------------------------------

int32_t Asc(StringView s) {
    if (s.empty()) invalidCall();
    return unicodeToAnsi(s[0]);
}

String Chr(int64_t code) {
    if (code < 0 || code > 255) invalidCall();
    return String(1, ansiToUnicode(static_cast<uint8_t>(code)));
}

int32_t AscW(StringView s) {
    if (s.empty()) invalidCall();
    return static_cast<int16_t>(s[0]);
}

String ChrW(int64_t code) {
    if (code < -32768 || code > 65535) invalidCall();
    return String(1, static_cast<char16_t>(code < 0 ? code + 65536 : code));
}

namespace {

constexpr int32_t kUpper = 1, kLower = 2, kProper = 3, kUnicode = 64, kFromUnicode = 128;

// Word separators of proper casing: NUL, TAB, LF, VT, FF, CR and blank.
inline bool isWordSeparator(char16_t c) noexcept { return c == u' ' || c == 0 || (c >= 9 && c <= 13); }

void applyCase(String& r, int32_t caseMode) {
    switch (caseMode) {
        case kUpper: std::transform(r.begin(), r.end(), r.begin(), toUpperChar); break;
        case kLower: std::transform(r.begin(), r.end(), r.begin(), toLowerChar); break;
        case kProper: {
            bool wordStart = true;
            for (char16_t& c : r) {
                c = wordStart ? toUpperChar(c) : toLowerChar(c);
                wordStart = isWordSeparator(c);
            }
            break;
        }
        default: break;
    }
}

}  // namespace

// Modes combine a case (1, 2, 3) with one direction of the ANSI packing
// (64 or 128). The East Asian conversions (4 to 32) do not apply to this
// locale and raise 5, as they do outside those locales.
String StrConv(StringView s, int32_t mode) {
    const bool widen = mode & kUnicode, narrow = mode & kFromUnicode;
    if ((mode & ~(kProper | kUnicode | kFromUnicode)) != 0 || (widen && narrow)) invalidCall();
    const int32_t caseMode = mode & kProper;
    String r;
    if (widen) {
        r.reserve(s.size() * 2);
        for (char16_t u : s) {
            r.push_back(ansiToUnicode(static_cast<uint8_t>(u & 0xFF)));
            r.push_back(ansiToUnicode(static_cast<uint8_t>(u >> 8)));
        }
        applyCase(r, caseMode);
    } else if (narrow) {
        String cased;
        if (caseMode != 0) {
            cased.assign(s);
            applyCase(cased, caseMode);
            s = cased;
        }
        r.resize((s.size() + 1) / 2);
        for (size_t i = 0; i < s.size(); ++i) {
            const char16_t b = unicodeToAnsi(s[i]);
            r[i / 2] |= static_cast<char16_t>(i % 2 ? b << 8 : b);
        }
    } else {
        r.assign(s);
        applyCase(r, caseMode);
    }
    return r;
}

// --- numbers as text -------------------------------------------------------

// Str$ prints "." whatever the locale and, like Basic, reserves the sign
// position and leaves out the zero before a fraction (" .5", "-.5").
// Dates print as CStr; Booleans, Empty and Strings go through CDbl.
String Str(const Variant& number) {
    String r;
    switch (number.vt()) {
        case vbNull: raiseError(errInvalidUseOfNull);
        case vbByte: appendSignedInteger(r, number.asByte()); return r;
        case vbInteger: appendSignedInteger(r, number.asInteger()); return r;
        case vbLong: appendSignedInteger(r, number.asLong()); return r;
        case vbDate:
        case vbError: check(toText(number, r)); return r;
        case vbSingle:
        case vbDouble:
        case vbCurrency:
        case vbDecimal: break;
        case vbEmpty:
        case vbBoolean:
        case vbString: {
            double d = 0;
            check(toDouble(number, d));
            return Str(Variant(d));
        }
        default: raiseError(errTypeMismatch);
    }
    String digits;
    check(toText(number, digits));
    const char16_t point = locale().decimalPoint;
    const bool negative = !digits.empty() && digits[0] == u'-';
    StringView body = StringView(digits).substr(negative ? 1 : 0);
    if (body.size() > 1 && body[0] == u'0' && body[1] == point) body.remove_prefix(1);
    r.reserve(body.size() + 1);
    r.push_back(negative ? u'-' : u' ');
    for (char16_t c : body) r.push_back(c == point ? u'.' : c);
    return r;
}

String Hex(const Variant& number) { return radixText(number, 4); }

String Oct(const Variant& number) { return radixText(number, 3); }

}  // namespace qvt
