#include "strings/StringSearches.h"

#include <algorithm>
#include <array>
#include <limits>
#include <vector>

#include "automation/TypeLibrary.h"
#include "frame/Conversions.h"
#include "frame/FixUps.h"
#include "frame/Frame.h"
#include "frame/Locale.h"
#include "frame/Strings.h"
#include "strings/CharacterSet.h"
#include "strings/CharacterTypes.h"
#include "structures/ArrayConversions.h"

namespace qvt {

namespace {

// The buffered scanner refills below this many characters, a block at a time.
constexpr size_t kLowWater = 4096;
constexpr size_t kBlock = 16384;

// --- fix-ups -------------------------------------------------------------------

bool fixText(Variant& v) { return fixUps().FixUpVariantToStringFn(v); }

int32_t fixCompare(Variant& v) {
    fixUps().FixUpVariantCompare(v);
    return v.asLong();
}

// A forward start: anything unusable silently becomes 1.
int32_t forwardStart(Variant& v) {
    fixUps().FixUpVariantToLongMandSub(v, Variant(int32_t(1)));
    return v.asLong();
}

// A reverse start: left out (or unusable) it is the end of the line.
int32_t reverseStart(Variant& v, StringView line) {
    return fixUps().FixUpVariantToLongMandFn(v) ? v.asLong() : Len(line);
}

// A found position is a Long; "not found" an Integer 0.
Variant position(int64_t p) { return p == 0 ? Variant(int16_t(0)) : Variant(int32_t(p)); }

Variant text(String s) { return Variant(std::move(s)); }

// Mid(s, i, n) for i >= 1 as a view: shorter or empty past the end.
StringView mid(StringView s, int64_t i, size_t n) noexcept {
    const size_t from = static_cast<size_t>(i - 1);
    return from >= s.size() ? StringView() : s.substr(from, n);
}

// The walk of the character-set members: the first position from start
// (upward to the end, or downward to 1) whose membership in the set is
// `wanted`; 0 when the walk ends.
template <class In>
int32_t walkPositions(int64_t start, StringView line, bool wanted, bool reverse, const In& in) {
    if (!reverse) {
        for (size_t i = size_t(start - 1); i < line.size(); ++i)
            if (in(line[i]) == wanted) return int32_t(i + 1);
        return 0;
    }
    for (int64_t i = start; i >= 1; --i)
        if (in(line[size_t(i - 1)]) == wanted) return int32_t(i);
    return 0;
}

int32_t walkSet(int64_t start, StringView line, StringView set, int32_t compare, bool wanted, bool reverse) {
    const CharacterSet in(set, compare);
    const int64_t n = Len(line);
    if (!reverse) {
        if (start < 1) raiseError(errInvalidCall);  // Mid with a start below 1
    } else if (start > n) {
        // Past the end every position holds "": the first one decides for all.
        if (in.containsNothing() == wanted) return int32_t(start);
        start = n;
    }
    // The membership test is chosen once, outside the loop over the line.
    switch (in.mode()) {
        case CharacterSet::Narrow:
            return walkPositions(start, line, wanted, reverse, [&](char16_t c) { return in.inBitmap(c); });
        case CharacterSet::NarrowText:
            return walkPositions(start, line, wanted, reverse,
                                 [&](char16_t c) { return in.inBitmap(textCompareKey(c)); });
        default:
            return walkPositions(start, line, wanted, reverse, [&](char16_t c) { return in.contains(c); });
    }
}

// The plain form of a set walk: texts, then the start, then vCompare.
template <class Result>
Variant setWalk(Variant& vStartPos, Variant& vLine, Variant& vFindChars, Variant& vCompare, bool wanted,
                bool reverse, Result result) {
    return fixUpFrame(fixText(vLine) && fixText(vFindChars), [&] {
        const StringView line = vLine.asString(), set = vFindChars.asString();
        const int32_t start = reverse ? reverseStart(vStartPos, line) : forwardStart(vStartPos);
        return result(line, walkSet(start, line, set, fixCompare(vCompare), wanted, reverse));
    });
}

Variant positionResult(StringView, int32_t p) { return position(p); }
Variant characterResult(StringView line, int32_t p) { return text(p == 0 ? String() : String(mid(line, p, 1))); }

// Calls f with each position of a non-empty find, left to right, each search
// going on after the previous match.
template <class F>
void forEachMatch(StringView line, StringView find, int32_t compare, F f) {
    for (int32_t p = InStr(1, line, find, compare); p > 0; p = InStr(int64_t(p) + Len(find), line, find, compare))
        f(p);
}

int32_t countStrings(StringView line, StringView find, int32_t compare) {
    int32_t count = 0;
    forEachMatch(line, find, compare, [&](int32_t) { ++count; });
    return count;
}

// Two texts fixed up, then the body with both and the compare mode; an empty
// pattern gives `ifEmpty` before vCompare is touched.
template <class Body>
Variant onLineAndFind(Variant& vLine, Variant& vFind, Variant& vCompare, const Variant& ifEmpty, Body body) {
    return fixUpFrame(fixText(vLine) && fixText(vFind), [&] {
        const StringView line = vLine.asString(), find = vFind.asString();
        if (find.empty()) return ifEmpty;
        return body(line, find, fixCompare(vCompare));
    });
}

// The last occurrence, overlapping ones included: the greatest position at
// which the pattern begins ("" is found at every position up to the end).
int32_t lastMatch(StringView line, StringView find, int32_t compare) { return InStrRev(line, find, -1, compare); }

// Left of or right of a match at p (1-based), or vIfNotFound.
String leftOf(StringView line, int32_t p, StringView ifNotFound) {
    return String(p == 0 ? ifNotFound : line.substr(0, size_t(p - 1)));
}
String rightOf(StringView line, StringView find, int32_t p, StringView ifNotFound) {
    if (p == 0) return String(ifNotFound);
    const size_t from = size_t(p - 1) + find.size();
    return String(from >= line.size() ? StringView() : line.substr(from));
}

// The plain left/right forms: the match is found by `at`, the piece cut by
// `cut`; vIfNotFound is fixed up only when nothing matched.
template <class At, class Cut>
Variant sideOfMatch(Variant& vLine, Variant& vFind, Variant& vCompare, Variant& vIfNotFound, At at, Cut cut) {
    return fixUpFrame(fixText(vLine) && fixText(vFind), [&] {
        const StringView line = vLine.asString(), find = vFind.asString();
        const int32_t p = at(line, find, fixCompare(vCompare));
        if (p != 0) return text(cut(line, find, p, StringView()));
        return fixText(vIfNotFound) ? vIfNotFound : vLine;
    });
}

int32_t firstMatch(StringView line, StringView find, int32_t compare) { return InStr(1, line, find, compare); }
String cutLeft(StringView line, StringView, int32_t p, StringView none) { return leftOf(line, p, none); }
String cutRight(StringView line, StringView find, int32_t p, StringView none) { return rightOf(line, find, p, none); }

// The rest of a by-reference token source from 0-based `from`.
void keepFrom(String& s, size_t from) { s.erase(0, std::min(from, s.size())); }

// Drops what comes before the first character of a run, then cuts the run.
template <class InRun>
Variant cutRun(Variant& rValue, InRun inRun) {
    return fixUpFrame(fixText(rValue), [&] {
        String& s = rValue.stringForWrite();
        size_t i = 0;
        while (i < s.size() && !inRun(s[i])) ++i;
        size_t j = i;
        while (j < s.size() && inRun(s[j])) ++j;
        String token = s.substr(i, j - i);
        keepFrom(s, j);
        return text(std::move(token));
    });
}

// The case scans: vLine from the first character for which `starts` holds.
template <class Starts>
Variant caseScan(Variant& vLine, Starts starts) {
    return fixUpFrame(fixText(vLine), [&] {
        const StringView line = vLine.asString();
        for (size_t i = 0; i < line.size(); ++i)
            if (starts(line[i])) return text(String(line.substr(i)));
        return text(String());
    });
}

// The per-position walk of the two position comparisons: the first i (1 to
// the shorter length) where single characters are equal (`equal`) or not.
int32_t firstPosition(StringView a, StringView b, int32_t compare, bool equal) {
    const size_t n = std::min(a.size(), b.size());
    for (size_t i = 0; i < n; ++i)
        if ((StrComp(a.substr(i, 1), b.substr(i, 1), compare) == 0) == equal) return int32_t(i + 1);
    return 0;
}

// One position of the extremes walk: the fixed-length buffer reads "" as a blank.
String corresponding(std::span<const StringView> strings, int32_t compare, int32_t wins) {
    size_t n = 0;
    for (StringView s : strings) n = std::max(n, s.size());
    String r(n, u' ');
    if (strings.empty()) return r;
    for (size_t i = 0; i < n; ++i) {
        char16_t buffer = i < strings[0].size() ? strings[0][i] : u' ';
        for (StringView s : strings) {
            const StringView x = i < s.size() ? s.substr(i, 1) : StringView();
            if (StrComp(x, StringView(&buffer, 1), compare) == wins) buffer = x.empty() ? u' ' : x[0];
        }
        r[i] = buffer;
    }
    return r;
}

Variant correspondingMember(Variant& vCompare, Variant& vStrings, int32_t wins) {
    const int32_t compare = fixCompare(vCompare);
    if (!vStrings.isArray() || vStrings.asArray().size() == 0) return Variant::null();
    std::span<Variant> items = vStrings.arrayForWrite().elements();
    for (Variant& v : items)
        if (!fixText(v)) return Variant::null();
    std::vector<StringView> views;
    views.reserve(items.size());
    for (const Variant& v : items) views.push_back(v.asString());
    return text(corresponding(views, compare, wins));
}

// A compare argument taken without its fix-up: converted as the runtime
// converts an argument (13 for Missing, 94 for Null).
int32_t rawCompare(const Variant& v) { return CLng(v); }

}  // namespace

// --- the token buffer ------------------------------------------------------------

String TokenBuffer::release() {
    keepFrom(text_, start_);
    start_ = 0;
    lastTaken_ = false;
    return std::move(text_);
}

// --- tokens -------------------------------------------------------------------

Variant StringSearches::GetToken(Variant& rValue, Variant vTokenSep, Variant vCompare) const {
    return fixUpFrame(fixText(rValue) && fixText(vTokenSep), [&] {
        const StringView sep = vTokenSep.asString();
        return text(GetTokenFast(rValue.stringForWrite(), sep, sep.empty() ? 0 : fixCompare(vCompare)));
    });
}

String StringSearches::GetTokenFast(String& rValue, StringView vTokenSep, int32_t vCompare) const {
    if (!vTokenSep.empty()) {
        const int32_t p = InStr(1, rValue, vTokenSep, vCompare);
        if (p != 0) {
            String token = rValue.substr(0, size_t(p - 1));
            keepFrom(rValue, size_t(p - 1) + vTokenSep.size());
            return token;
        }
    }
    String token = std::move(rValue);
    rValue.clear();
    return token;
}

String StringSearches::GetTokenBufferedFast(StringView& rValue, TokenBuffer& rBuffer, StringView vTokenSep,
                                            int32_t vCompare) const {
    if (vTokenSep.empty()) {
        String token(rValue);
        rValue = StringView();
        return token;
    }
    if (rBuffer.view().size() < kLowWater) {
        // The consumed front goes once per refill, not once per token.
        keepFrom(rBuffer.text_, rBuffer.start_);
        rBuffer.start_ = 0;
        const size_t take = std::min(rValue.size(), kBlock);
        rBuffer.text_.append(rValue.substr(0, take));
        rValue.remove_prefix(take);
    }
    const StringView buffered = rBuffer.view();
    const int32_t p = InStr(1, buffered, vTokenSep, vCompare);
    if (p != 0) {
        String token(buffered.substr(0, size_t(p - 1)));
        rBuffer.start_ += size_t(p - 1) + vTokenSep.size();
        return token;
    }
    // No separator in the buffer: the rest of everything, and the buffer
    // keeps its text.
    String token;
    token.reserve(buffered.size() + rValue.size());
    token.append(buffered).append(rValue);
    rValue = StringView();
    rBuffer.lastTaken_ = true;
    return token;
}

String StringSearches::GetTokenBufferedFast(String& rValue, String& rBuffer, StringView vTokenSep,
                                            int32_t vCompare) const {
    TokenBuffer buffer(std::move(rBuffer));
    StringView rest = rValue;
    String token = GetTokenBufferedFast(rest, buffer, vTokenSep, vCompare);
    keepFrom(rValue, rValue.size() - rest.size());
    rBuffer = buffer.release();
    return token;
}

Variant StringSearches::GetTokenCharSeps(Variant& rValue, Variant vCharSeps, Variant vCompare) const {
    return fixUpFrame(fixText(rValue) && fixText(vCharSeps), [&] {
        String& s = rValue.stringForWrite();
        const StringView seps = vCharSeps.asString();
        const int32_t p = seps.empty() ? 0 : InStrCharactersFast(1, s, seps, fixCompare(vCompare));
        String token;
        if (p == 0) {
            token = std::move(s);
            s.clear();
        } else {
            token = s.substr(0, size_t(p - 1));
            keepFrom(s, size_t(p));
        }
        return text(std::move(token));
    });
}

Variant StringSearches::GetTokenAlphanumeric(Variant& rValue) const {
    const CharacterTypes& types = characterTypes();
    return cutRun(rValue, [&](char16_t c) { return types.has(c, CharTypeAlNum); });
}

Variant StringSearches::GetTokenNonSpace(Variant& rValue) const {
    const CharacterTypes& types = characterTypes();
    return cutRun(rValue, [&](char16_t c) { return !types.has(c, CharTypeSpace); });
}

Variant StringSearches::GetPossiblyQuotedField(Variant& rLine, Variant vQuoteString, Variant vFieldSeparator,
                                               Variant vCompare) const {
    if (!fixText(rLine)) return Variant::null();
    fixUps().FixUpVariantToStringSub(vQuoteString, Variant(u"\""));
    fixUps().FixUpVariantToStringSub(vFieldSeparator, Variant(u","));
    if (rLine.asString().empty()) return text(String());
    String& line = rLine.stringForWrite();
    const int32_t compare = fixCompare(vCompare);
    const StringView quote = vQuoteString.asString(), sep = vFieldSeparator.asString();
    const int64_t lq = Len(quote), ls = Len(sep);

    if (lq == 0 || StrComp(StringView(line).substr(0, size_t(lq)), quote, compare) != 0) {
        Variant v = text(GetTokenFast(line, sep, compare));
        if (IsNumeric(v)) return Variant(CDbl(v));
        if (IsDate(v)) return CDate(v);
        return v;
    }

    const int32_t close = InStr(lq + 1, line, quote, compare);
    if (close == 0) {
        // The opening quote counts as one character here, whatever its length.
        String field = Mid(line, 2);
        line.clear();
        return text(std::move(field));
    }
    String field = line.substr(size_t(lq), size_t(close - lq - 1));
    // Whatever follows the closing quote up to the separator is dropped.
    const int32_t next = ls > 0 ? InStr(int64_t(close) + 1, line, sep, compare) : 0;
    if (next > 0) keepFrom(line, size_t(next - 1 + ls));
    else line.clear();
    return text(std::move(field));
}

// --- positions -------------------------------------------------------------------

Variant StringSearches::InStrReverse(Variant vStartPos, Variant vLine, Variant vFind, Variant vCompare) const {
    return fixUpFrame(fixText(vLine) && fixText(vFind), [&] {
        const StringView line = vLine.asString(), find = vFind.asString();
        const int32_t start = reverseStart(vStartPos, line);
        if (find.empty()) return Variant(start);
        return position(InStrReverseFast(start, line, find, fixCompare(vCompare)));
    });
}

int32_t StringSearches::InStrReverseFast(int32_t vStartPos, StringView vLine, StringView vFind,
                                         int32_t vCompare) const {
    const int64_t first = int64_t(vStartPos) - Len(vFind) + 1;  // the first position tried
    if (first < 1) return 0;
    if (vFind.empty()) {
        // "" matches at once, one past the start.
        if (first > std::numeric_limits<int32_t>::max()) raiseError(errOverflow);
        StrComp(StringView(), vFind, vCompare);  // the compare mode is still checked
        return int32_t(first);
    }
    // A match must end at or before the start; past the end nothing matches.
    const int64_t end = std::min<int64_t>(vStartPos, Len(vLine));
    if (end < Len(vFind)) return 0;
    return InStrRev(vLine, vFind, end, vCompare);
}

Variant StringSearches::InStrCharacters(Variant vStartPos, Variant vLine, Variant vFindChars,
                                        Variant vCompare) const {
    return fixUpFrame(fixText(vLine) && fixText(vFindChars), [&] {
        const StringView line = vLine.asString(), set = vFindChars.asString();
        const int32_t start = forwardStart(vStartPos);
        if (set.empty()) return position(0);
        return position(InStrCharactersFast(start, line, set, fixCompare(vCompare)));
    });
}

int32_t StringSearches::InStrCharactersFast(int32_t vStartPos, StringView vLine, StringView vFindChars,
                                            int32_t vCompare) const {
    if (vFindChars.empty()) return 0;
    return walkSet(vStartPos, vLine, vFindChars, vCompare, true, false);
}

Variant StringSearches::InStrCharactersBinary(Variant vStartPos, Variant vLine, Variant vFindChars) const {
    return fixUpFrame(fixText(vLine) && fixText(vFindChars), [&] {
        const StringView line = vLine.asString();
        const int64_t start = forwardStart(vStartPos);
        std::array<bool, 256> marked{};
        for (char16_t c : vFindChars.asString()) marked[unicodeToAnsi(c)] = true;
        const int64_t n = Len(line);
        if (start < 1) raiseError(errInvalidCall);
        for (int64_t i = start; i <= n; ++i)
            if (marked[unicodeToAnsi(line[size_t(i - 1)])]) return position(i);
        return position(0);
    });
}

Variant StringSearches::InStrCharactersReverse(Variant vStartPos, Variant vLine, Variant vFindChars,
                                               Variant vCompare) const {
    return fixUpFrame(fixText(vLine) && fixText(vFindChars), [&] {
        const StringView line = vLine.asString(), set = vFindChars.asString();
        const int32_t start = reverseStart(vStartPos, line);
        if (set.empty()) return position(0);
        return position(InStrCharactersReverseFast(start, line, set, fixCompare(vCompare)));
    });
}

int32_t StringSearches::InStrCharactersReverseFast(int32_t vStartPos, StringView vLine, StringView vFindChars,
                                                   int32_t vCompare) const {
    if (vFindChars.empty()) return 0;
    return walkSet(vStartPos, vLine, vFindChars, vCompare, true, true);
}

Variant StringSearches::InStrNotCharacters(Variant vStartPos, Variant vLine, Variant vFindChars,
                                           Variant vCompare) const {
    return setWalk(vStartPos, vLine, vFindChars, vCompare, false, false, positionResult);
}

Variant StringSearches::InStrNotCharactersReverse(Variant vStartPos, Variant vLine, Variant vFindChars,
                                                  Variant vCompare) const {
    return setWalk(vStartPos, vLine, vFindChars, vCompare, false, true, positionResult);
}

Variant StringSearches::FirstMatchingCharacter(Variant vStartPos, Variant vLine, Variant vFindChars,
                                               Variant vCompare) const {
    return setWalk(vStartPos, vLine, vFindChars, vCompare, true, false, characterResult);
}

Variant StringSearches::FirstNonMatchingCharacter(Variant vStartPos, Variant vLine, Variant vFindChars,
                                                  Variant vCompare) const {
    return setWalk(vStartPos, vLine, vFindChars, vCompare, false, false, characterResult);
}

Variant StringSearches::LastMatchingCharacter(Variant vStartPos, Variant vLine, Variant vFindChars,
                                              Variant vCompare) const {
    return setWalk(vStartPos, vLine, vFindChars, vCompare, true, true, characterResult);
}

Variant StringSearches::LastNonMatchingCharacter(Variant vStartPos, Variant vLine, Variant vFindChars,
                                                 Variant vCompare) const {
    return setWalk(vStartPos, vLine, vFindChars, vCompare, false, true, characterResult);
}

bool StringSearches::InStrToVariantVector(Variant& rPositions, Variant vLine, Variant vFind,
                                          Variant vCompare) const {
    const ArrayBound first{0, 0};
    if (rPositions.isArray()) rPositions.arrayForWrite().redim(std::span<const ArrayBound>(&first, 1));
    else rPositions = Variant::array(vbVariant, {first});
    if (!(fixText(vLine) && fixText(vFind)) || vFind.asString().empty()) return false;
    const StringView line = vLine.asString(), find = vFind.asString();
    const int32_t compare = fixCompare(vCompare);
    std::vector<int32_t> found;
    forEachMatch(line, find, compare, [&](int32_t p) { found.push_back(p); });
    SafeArray& a = rPositions.arrayForWrite();
    const ArrayBound cut{a.lbound(), int32_t(found.size())};
    a.redim(std::span<const ArrayBound>(&cut, 1));
    for (size_t k = 0; k < found.size(); ++k) a.set(int32_t(k + 1), Variant(found[k]));
    return true;
}

// --- counting -----------------------------------------------------------------------

Variant StringSearches::CountStrings(Variant vLine, Variant vFind, Variant vCompare) const {
    return onLineAndFind(vLine, vFind, vCompare, Variant(int32_t(0)), [](StringView line, StringView find, int32_t c) {
        return Variant(countStrings(line, find, c));
    });
}

Variant StringSearches::CountOverlappingMatches(Variant vLine, Variant vFind, Variant vCompare) const {
    return onLineAndFind(vLine, vFind, vCompare, Variant(int32_t(0)), [](StringView line, StringView find, int32_t c) {
        int32_t count = 0;
        if (find.size() <= line.size())
            for (int32_t p = InStr(1, line, find, c); p > 0; p = InStr(int64_t(p) + 1, line, find, c)) ++count;
        return Variant(count);
    });
}

Variant StringSearches::CountCharacters(Variant vLine, Variant vFindChars, Variant vCompare) const {
    if (!fixText(vLine)) return Variant::null();
    const StringView line = vLine.asString();
    if (line.empty()) return Variant(int32_t(0));
    return fixUpFrame(fixText(vFindChars), [&] {
        const StringView set = vFindChars.asString();
        if (set.empty()) return Variant(int32_t(0));
        const int32_t compare = fixCompare(vCompare);
        int32_t count = 0;
        const CharacterSet in(set, compare);
        for (char16_t c : line) count += in.contains(c);
        return Variant(count);
    });
}

Variant StringSearches::CountLeadingStrings(Variant vLine, Variant vFind, Variant vCompare) const {
    return onLineAndFind(vLine, vFind, vCompare, Variant(int32_t(0)), [](StringView line, StringView find, int32_t c) {
        int32_t count = 0;
        for (size_t i = 0; i + find.size() <= line.size(); i += find.size()) {
            if (StrComp(line.substr(i, find.size()), find, c) != 0) break;
            ++count;
        }
        return Variant(count);
    });
}

Variant StringSearches::CountTrailingStrings(Variant vLine, Variant vFind, Variant vCompare) const {
    return onLineAndFind(vLine, vFind, vCompare, Variant(int32_t(0)), [](StringView line, StringView find, int32_t c) {
        int32_t count = 0;
        for (size_t end = line.size(); end >= find.size(); end -= find.size()) {
            if (StrComp(line.substr(end - find.size(), find.size()), find, c) != 0) break;
            ++count;
        }
        return Variant(count);
    });
}

Variant StringSearches::CountLines(Variant vValue) const {
    return fixUpFrame(fixText(vValue), [&] {
        const StringView s = vValue.asString();
        const int32_t feeds = countStrings(s, u"\n", vbBinaryCompare);
        return Variant(feeds + (s.empty() || s.back() != u'\n' ? 1 : 0));
    });
}

// --- lengths of parts ------------------------------------------------------------------

Variant StringSearches::AverageLengthAnyPart(Variant vValue, Variant vPartSeparator, Variant vCompare) const {
    return fixUpFrame(fixText(vValue), [&] {
        const StringView value = vValue.asString();
        if (!fixText(vPartSeparator)) return Variant(Len(value));
        const StringView sep = vPartSeparator.asString();
        const int32_t n = sep.empty() ? 0 : countStrings(value, sep, fixCompare(vCompare));
        return Variant((double(Len(value)) - double(Len(sep)) * n) / (double(n) + 1));
    });
}

namespace {

// The parts of a text for the longest/shortest part members. A separator
// that is not a text leaves no parts.
std::vector<String> partsOf(StringView value, Variant& vPartSep, int32_t compare) {
    if (!fixText(vPartSep)) return {};
    return splitParts(value, vPartSep.asString(), compare);
}

}  // namespace

Variant StringSearches::MaxLengthAnyPart(Variant vValue, Variant vPartSep, Variant vCompare) const {
    return fixUpFrame(fixText(vValue), [&] {
        size_t longest = 0;
        for (const String& part : partsOf(vValue.asString(), vPartSep, fixCompare(vCompare)))
            longest = std::max(longest, part.size());
        return Variant(int32_t(longest));
    });
}

Variant StringSearches::MinLengthAnyPart(Variant vValue, Variant vPartSep) const {
    return fixUpFrame(fixText(vValue), [&] {
        const std::vector<String> parts = partsOf(vValue.asString(), vPartSep, vbBinaryCompare);
        if (parts.empty()) return Variant(int32_t(0));
        size_t shortest = parts[0].size();
        for (const String& part : parts) shortest = std::min(shortest, part.size());
        return Variant(int32_t(shortest));
    });
}

// --- position by position ------------------------------------------------------------------

Variant StringSearches::FirstMatchingPosition(Variant vOne, Variant vTwo, Variant vCompare) const {
    return fixUpFrame(fixText(vOne) && fixText(vTwo), [&] {
        return position(firstPosition(vOne.asString(), vTwo.asString(), fixCompare(vCompare), true));
    });
}

Variant StringSearches::FirstNonMatchingPosition(Variant vOne, Variant vTwo, Variant vCompare) const {
    return fixUpFrame(fixText(vOne) && fixText(vTwo), [&] {
        const StringView a = vOne.asString(), b = vTwo.asString();
        const int32_t p = firstPosition(a, b, fixCompare(vCompare), false);
        if (p != 0 || a.size() == b.size()) return position(p);
        return position(int64_t(std::min(a.size(), b.size())) + 1);
    });
}

// --- case scans ---------------------------------------------------------------------------

Variant StringSearches::FirstLowerCaseForward(Variant vLine) const {
    return caseScan(vLine, [](char16_t c) { return toUpperChar(c) != c; });
}

Variant StringSearches::FirstNonLowerCaseForward(Variant vLine) const {
    return caseScan(vLine, [](char16_t c) { return toUpperChar(c) == c; });
}

Variant StringSearches::FirstUpperCaseForward(Variant vLine) const {
    return caseScan(vLine, [](char16_t c) { return toLowerChar(c) != c; });
}

Variant StringSearches::FirstNonUpperCaseForward(Variant vLine) const {
    return caseScan(vLine, [](char16_t c) { return toLowerChar(c) == c; });
}

// --- left and right of a match ----------------------------------------------------------------

Variant StringSearches::LeftOfFirstMatch(Variant vLine, Variant vFind, Variant vCompare, Variant vIfNotFound) const {
    return sideOfMatch(vLine, vFind, vCompare, vIfNotFound, firstMatch, cutLeft);
}

Variant StringSearches::LeftOfLastMatch(Variant vLine, Variant vFind, Variant vCompare, Variant vIfNotFound) const {
    return sideOfMatch(vLine, vFind, vCompare, vIfNotFound, lastMatch, cutLeft);
}

Variant StringSearches::RightOfFirstMatch(Variant vLine, Variant vFind, Variant vCompare, Variant vIfNotFound) const {
    return sideOfMatch(vLine, vFind, vCompare, vIfNotFound, firstMatch, cutRight);
}

Variant StringSearches::RightOfLastMatch(Variant vLine, Variant vFind, Variant vCompare, Variant vIfNotFound) const {
    return sideOfMatch(vLine, vFind, vCompare, vIfNotFound, lastMatch, cutRight);
}

String StringSearches::LeftOfFirstMatchFast(StringView vLine, StringView vFind, int32_t vCompare,
                                            StringView vIfNotFound) const {
    return leftOf(vLine, firstMatch(vLine, vFind, vCompare), vIfNotFound);
}

String StringSearches::RightOfFirstMatchFast(StringView vLine, StringView vFind, int32_t vCompare,
                                             StringView vIfNotFound) const {
    return rightOf(vLine, vFind, firstMatch(vLine, vFind, vCompare), vIfNotFound);
}

String StringSearches::LeftOfLastMatchFast(StringView vIn, StringView vPat, int32_t vCompare,
                                           StringView vIfNotFound) const {
    return leftOf(vIn, lastMatch(vIn, vPat, vCompare), vIfNotFound);
}

String StringSearches::RightOfLastMatchFast(StringView vIn, StringView vPat, int32_t vCompare,
                                            StringView vIfNotFound) const {
    return rightOf(vIn, vPat, lastMatch(vIn, vPat, vCompare), vIfNotFound);
}

// --- prefix and suffix --------------------------------------------------------------------------

Variant StringSearches::LineBeginsWith(Variant vLine, Variant vFind, Variant vCompare) const {
    return fixUpFrame(fixText(vLine) && fixText(vFind), [&] {
        return Variant(LineBeginsWithFast(vLine.asString(), vFind.asString(), fixCompare(vCompare)));
    });
}

Variant StringSearches::LineEndsWith(Variant vLine, Variant vFind, Variant vCompare) const {
    return fixUpFrame(fixText(vLine) && fixText(vFind), [&] {
        return Variant(LineEndsWithFast(vLine.asString(), vFind.asString(), fixCompare(vCompare)));
    });
}

bool StringSearches::LineBeginsWithFast(StringView vLine, StringView vFind, int32_t vCompare) const {
    return StrComp(vFind, vLine.substr(0, std::min(vFind.size(), vLine.size())), vCompare) == 0;
}

bool StringSearches::LineEndsWithFast(StringView vLine, StringView vFind, int32_t vCompare) const {
    const size_t n = std::min(vFind.size(), vLine.size());
    return StrComp(vFind, vLine.substr(vLine.size() - n), vCompare) == 0;
}

// --- between delimiters ----------------------------------------------------------------------------

Variant StringSearches::StringBetweenStrings(Variant vSearch, Variant vLeft, Variant vRight, Variant vCompare) const {
    return fixUpFrame(fixText(vSearch) && fixText(vLeft) && fixText(vRight), [&] {
        return text(StringBetweenStringsFast(vSearch.asString(), vLeft.asString(), vRight.asString(),
                                             fixCompare(vCompare)));
    });
}

String StringSearches::StringBetweenStringsFast(StringView vSearch, StringView vLeft, StringView vRight,
                                                int32_t vCompare) const {
    const int32_t p = InStr(1, vSearch, vLeft, vCompare);
    if (p == 0) return String();
    const int64_t s = int64_t(p) + Len(vLeft);
    const int32_t q = InStr(s, vSearch, vRight, vCompare);
    if (q == 0) return String();
    return String(mid(vSearch, s, size_t(q - s)));
}

Variant StringSearches::StringsBetweenStrings(Variant vSearch, Variant vLeft, Variant vRight, Variant vSeparator,
                                              Variant vCompare) const {
    return fixUpFrame(fixText(vSearch) && fixText(vLeft) && fixText(vRight), [&] {
        const StringView search = vSearch.asString(), left = vLeft.asString(), right = vRight.asString();
        if (left.empty() || right.empty())
            return text(StringsBetweenStringsFast(search, left, right, StringView(), rawCompare(vCompare)));
        fixUps().FixUpVariantToStringSub(vSeparator, Variant(u""));
        return text(StringsBetweenStringsFast(search, left, right, vSeparator.asString(), fixCompare(vCompare)));
    });
}

String StringSearches::StringsBetweenStringsFast(StringView vSearch, StringView vLeft, StringView vRight,
                                                 StringView vSeparator, int32_t vCompare) const {
    if (vLeft.empty() && vRight.empty()) return String();
    if (vRight.empty()) {
        const int32_t p = InStr(1, vSearch, vLeft, vCompare);
        return p == 0 ? String() : String(mid(vSearch, int64_t(p) + Len(vLeft), vSearch.size()));
    }
    if (vLeft.empty()) {
        const int32_t q = InStr(1, vSearch, vRight, vCompare);
        return q == 0 ? String() : String(vSearch.substr(0, size_t(q - 1)));
    }
    String r;
    for (int64_t start = 1;;) {
        const int32_t p = InStr(start, vSearch, vLeft, vCompare);
        if (p == 0) break;
        const int64_t s = int64_t(p) + Len(vLeft);
        const int32_t q = InStr(s, vSearch, vRight, vCompare);
        if (q == 0) break;
        // Leading empty pieces leave no separator behind.
        if (!r.empty()) r.append(vSeparator);
        r.append(mid(vSearch, s, size_t(q - s)));
        start = int64_t(q) + Len(vRight);
    }
    return r;
}

// --- showing matches -----------------------------------------------------------------------------------

Variant StringSearches::MatchesInContext(Variant vSearch, Variant vFind, Variant vCompare, Variant vContextChars,
                                         Variant vSeparator) const {
    return fixUpFrame(fixText(vSearch) && fixText(vFind), [&] {
        fixUps().FixUpVariantToLongMandSub(vContextChars, Variant(int32_t(16)));
        fixUps().FixUpVariantToStringSub(vSeparator, Variant(u"\r\n"));
        const StringView find = vFind.asString();
        if (find.empty()) return text(String());
        const int32_t compare = fixCompare(vCompare);
        const int64_t c = vContextChars.asLong();
        const StringView separator = vSeparator.asString();
        const String pad = Space(c);
        String padded;
        padded.reserve(vSearch.asString().size() + 2 * pad.size());
        padded.append(pad).append(vSearch.asString()).append(pad);
        // The searched text is padded[from...]: its first and last c
        // characters are context only.
        String r;
        for (size_t from = 0;;) {
            const StringView rest = StringView(padded).substr(from);
            const int32_t p = InStr(1, rest.substr(size_t(c), rest.size() - 2 * size_t(c)), find, compare);
            if (p == 0) break;
            if (!r.empty()) r.append(separator);
            r.append(rest.substr(size_t(p - 1), find.size() + 2 * size_t(c)));
            from += size_t(p - 1) + find.size();
        }
        return text(std::move(r));
    });
}

Variant StringSearches::IndicateMatches(Variant vValue, Variant vFind, Variant vCompare) const {
    return fixUpFrame(fixText(vValue) && fixText(vFind), [&] {
        const StringView value = vValue.asString(), find = vFind.asString();
        String indicator;
        if (!find.empty()) {
            forEachMatch(value, find, fixCompare(vCompare), [&](int32_t p) {
                if (indicator.size() < size_t(p - 1)) indicator.resize(size_t(p - 1), u' ');
                indicator.append(find.size(), u'^');
            });
        }
        if (indicator.size() < value.size()) indicator.resize(value.size(), u' ');
        String r;
        r.reserve(value.size() + 2 + indicator.size());
        r.append(value).append(u"\r\n").append(indicator);
        return text(std::move(r));
    });
}

// --- per-position extremes ---------------------------------------------------------------------------------

String maxCorrespondingCharacters(std::span<const StringView> vStrings, int32_t vCompare) {
    return corresponding(vStrings, vCompare, 1);
}

String minCorrespondingCharacters(std::span<const StringView> vStrings, int32_t vCompare) {
    return corresponding(vStrings, vCompare, -1);
}

Variant StringSearches::MaxCorrespondingCharacters(Variant vCompare, Variant& vStrings) const {
    return correspondingMember(vCompare, vStrings, 1);
}

Variant StringSearches::MinCorrespondingCharacters(Variant vCompare, Variant& vStrings) const {
    return correspondingMember(vCompare, vStrings, -1);
}

StringSearches& stringSearches() noexcept { return globalInstance<StringSearches>(); }

}  // namespace qvt

// --- type library ------------------------------------------------------------

namespace qvt {

namespace {

#define QVT_MEMBER(signature, name, ...) \
    {signature, [](Call& c) { return Variant(c.self<StringSearches>().name(__VA_ARGS__)); }}
#define QVT_WALK(name)                                                                               \
    QVT_MEMBER(#name "(vStartPos: Variant, vLine: Variant, vFindChars: Variant, [vCompare: Variant]) -> Variant", \
               name, c[0], c[1], c[2], c[3])
#define QVT_TWO_TEXTS(name, one, two)                                                               \
    QVT_MEMBER(#name "(" one ": Variant, " two ": Variant, [vCompare: Variant]) -> Variant", name, c[0], c[1], c[2])
#define QVT_SIDE(name)                                                                                      \
    QVT_MEMBER(#name "(vLine: Variant, vFind: Variant, [vCompare: Variant], [vIfNotFound: Variant]) -> Variant", \
               name, c[0], c[1], c[2], c[3])
#define QVT_SIDE_FAST(name, line, find)                                                                           \
    QVT_MEMBER(#name "(ref " line ": String, ref " find ": String, ref vCompare: Long, ref vIfNotFound: String) -> String", \
               name, c[0].asString(), c[1].asString(), c[2].asLong(), c[3].asString())
#define QVT_CASE_SCAN(name) QVT_MEMBER(#name "(vLine: Variant) -> Variant", name, c[0])

const ClassRegistration kStringSearches(u"StringSearches", ClassKind::Global, globalFactory<StringSearches>,
    u"Searches strings by position and cuts them into tokens.", {
    // tokens
    QVT_MEMBER("GetToken(ref rValue: Variant, vTokenSep: Variant, [vCompare: Variant]) -> Variant",
               GetToken, c[0], c[1], c[2]),
    QVT_MEMBER("GetTokenFast(ref rValue: String, vTokenSep: String, vCompare: Long) -> String",
               GetTokenFast, c[0].stringForWrite(), c[1].asString(), c[2].asLong()),
    QVT_MEMBER("GetTokenBufferedFast(ref rValue: String, ref rBuffer: String, vTokenSep: String, vCompare: Long) -> String",
               GetTokenBufferedFast, c[0].stringForWrite(), c[1].stringForWrite(), c[2].asString(), c[3].asLong()),
    QVT_MEMBER("GetTokenCharSeps(ref rValue: Variant, vCharSeps: Variant, [vCompare: Variant]) -> Variant",
               GetTokenCharSeps, c[0], c[1], c[2]),
    QVT_MEMBER("GetTokenAlphanumeric(ref rValue: Variant) -> Variant", GetTokenAlphanumeric, c[0]),
    QVT_MEMBER("GetTokenNonSpace(ref rValue: Variant) -> Variant", GetTokenNonSpace, c[0]),
    QVT_MEMBER("GetPossiblyQuotedField(ref rLine: Variant, [vQuoteString: Variant], [vFieldSeparator: Variant], [vCompare: Variant]) -> Variant",
               GetPossiblyQuotedField, c[0], c[1], c[2], c[3]),
    // positions
    QVT_MEMBER("InStrReverse(vStartPos: Variant, vLine: Variant, vFind: Variant, [vCompare: Variant]) -> Variant",
               InStrReverse, c[0], c[1], c[2], c[3]),
    QVT_MEMBER("InStrReverseFast(ref vStartPos: Long, ref vLine: String, ref vFind: String, ref vCompare: Long) -> Long",
               InStrReverseFast, c[0].asLong(), c[1].asString(), c[2].asString(), c[3].asLong()),
    QVT_WALK(InStrCharacters),
    QVT_MEMBER("InStrCharactersFast(ref vStartPos: Long, ref vLine: String, ref vFindChars: String, ref vCompare: Long) -> Long",
               InStrCharactersFast, c[0].asLong(), c[1].asString(), c[2].asString(), c[3].asLong()),
    QVT_MEMBER("InStrCharactersBinary(vStartPos: Variant, vLine: Variant, vFindChars: Variant) -> Variant",
               InStrCharactersBinary, c[0], c[1], c[2]),
    QVT_WALK(InStrCharactersReverse),
    QVT_MEMBER("InStrCharactersReverseFast(ref vStartPos: Long, ref vLine: String, ref vFindChars: String, ref vCompare: Long) -> Long",
               InStrCharactersReverseFast, c[0].asLong(), c[1].asString(), c[2].asString(), c[3].asLong()),
    QVT_WALK(InStrNotCharacters),
    QVT_WALK(InStrNotCharactersReverse),
    QVT_WALK(FirstMatchingCharacter),
    QVT_WALK(FirstNonMatchingCharacter),
    QVT_WALK(LastMatchingCharacter),
    QVT_WALK(LastNonMatchingCharacter),
    QVT_MEMBER("InStrToVariantVector(ref rPositions: array of Variant, vLine: Variant, vFind: Variant, [vCompare: Variant]) -> Boolean",
               InStrToVariantVector, c[0], c[1], c[2], c[3]),
    // counting
    QVT_TWO_TEXTS(CountStrings, "vLine", "vFind"),
    QVT_TWO_TEXTS(CountOverlappingMatches, "vLine", "vFind"),
    QVT_TWO_TEXTS(CountCharacters, "vLine", "vFindChars"),
    QVT_TWO_TEXTS(CountLeadingStrings, "vLine", "vFind"),
    QVT_TWO_TEXTS(CountTrailingStrings, "vLine", "vFind"),
    QVT_MEMBER("CountLines(vValue: Variant) -> Variant", CountLines, c[0]),
    // lengths of parts
    QVT_MEMBER("AverageLengthAnyPart(vValue: Variant, [vPartSeparator: Variant], [vCompare: Variant]) -> Variant",
               AverageLengthAnyPart, c[0], c[1], c[2]),
    QVT_TWO_TEXTS(MaxLengthAnyPart, "vValue", "vPartSep"),
    QVT_MEMBER("MinLengthAnyPart(vValue: Variant, vPartSep: Variant) -> Variant", MinLengthAnyPart, c[0], c[1]),
    // position by position
    QVT_TWO_TEXTS(FirstMatchingPosition, "vOne", "vTwo"),
    QVT_TWO_TEXTS(FirstNonMatchingPosition, "vOne", "vTwo"),
    QVT_CASE_SCAN(FirstLowerCaseForward),
    QVT_CASE_SCAN(FirstNonLowerCaseForward),
    QVT_CASE_SCAN(FirstUpperCaseForward),
    QVT_CASE_SCAN(FirstNonUpperCaseForward),
    // left and right of a match
    QVT_SIDE(LeftOfFirstMatch),
    QVT_SIDE(LeftOfLastMatch),
    QVT_SIDE(RightOfFirstMatch),
    QVT_SIDE(RightOfLastMatch),
    QVT_SIDE_FAST(LeftOfFirstMatchFast, "vLine", "vFind"),
    QVT_SIDE_FAST(RightOfFirstMatchFast, "vLine", "vFind"),
    QVT_SIDE_FAST(LeftOfLastMatchFast, "vIn", "vPat"),
    QVT_SIDE_FAST(RightOfLastMatchFast, "vIn", "vPat"),
    QVT_TWO_TEXTS(LineBeginsWith, "vLine", "vFind"),
    QVT_TWO_TEXTS(LineEndsWith, "vLine", "vFind"),
    QVT_MEMBER("LineBeginsWithFast(ref vLine: String, ref vFind: String, ref vCompare: Long) -> Boolean",
               LineBeginsWithFast, c[0].asString(), c[1].asString(), c[2].asLong()),
    QVT_MEMBER("LineEndsWithFast(ref vLine: String, ref vFind: String, ref vCompare: Long) -> Boolean",
               LineEndsWithFast, c[0].asString(), c[1].asString(), c[2].asLong()),
    // between delimiters
    QVT_MEMBER("StringBetweenStrings(vSearch: Variant, vLeft: Variant, vRight: Variant, [vCompare: Variant]) -> Variant",
               StringBetweenStrings, c[0], c[1], c[2], c[3]),
    QVT_MEMBER("StringBetweenStringsFast(ref vSearch: String, ref vLeft: String, ref vRight: String, ref vCompare: Long) -> String",
               StringBetweenStringsFast, c[0].asString(), c[1].asString(), c[2].asString(), c[3].asLong()),
    QVT_MEMBER("StringsBetweenStrings(vSearch: Variant, vLeft: Variant, vRight: Variant, [vSeparator: Variant], [vCompare: Variant]) -> Variant",
               StringsBetweenStrings, c[0], c[1], c[2], c[3], c[4]),
    QVT_MEMBER("StringsBetweenStringsFast(ref vSearch: String, ref vLeft: String, ref vRight: String, ref vSeparator: String, vCompare: Long) -> String",
               StringsBetweenStringsFast, c[0].asString(), c[1].asString(), c[2].asString(), c[3].asString(), c[4].asLong()),
    // showing matches
    QVT_MEMBER("MatchesInContext(vSearch: Variant, vFind: Variant, [vCompare: Variant], [vContextChars: Variant], [vSeparator: Variant]) -> Variant",
               MatchesInContext, c[0], c[1], c[2], c[3], c[4]),
    QVT_TWO_TEXTS(IndicateMatches, "vValue", "vFind"),
    // per-position extremes
    QVT_MEMBER("MaxCorrespondingCharacters(vCompare: Variant, ref vStrings: array of Variant) -> Variant",
               MaxCorrespondingCharacters, c[0], c[1]),
    QVT_MEMBER("MinCorrespondingCharacters(vCompare: Variant, ref vStrings: array of Variant) -> Variant",
               MinCorrespondingCharacters, c[0], c[1]),
});

#undef QVT_CASE_SCAN
#undef QVT_SIDE_FAST
#undef QVT_SIDE
#undef QVT_TWO_TEXTS
#undef QVT_WALK
#undef QVT_MEMBER

}  // namespace

}  // namespace qvt
