#include "strings/StringManipulations.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "automation/TypeLibrary.h"
#include "frame/Conversions.h"
#include "frame/FixUps.h"
#include "frame/Frame.h"
#include "frame/Locale.h"
#include "frame/Operators.h"
#include "frame/Strings.h"
#include "numerics/MathReals.h"
#include "strings/CharacterTypes.h"
#include "strings/Quoting.h"
#include "strings/StringReplacements.h"

namespace qvt {

namespace {

constexpr StringView kCrLf = u"\r\n";

bool text(Variant& v) { return fixUps().FixUpVariantToStringFn(v); }
bool whole(Variant& v) { return fixUps().FixUpVariantToLongMandFn(v); }

// An optional Long: its value, or the default when it cannot be fixed up.
int32_t longOr(Variant& v, int32_t byDefault) {
    fixUps().FixUpVariantToLongMandSub(v, Variant(byDefault));
    return v.asLong();
}

bool booleanOr(Variant& v, bool byDefault) {
    fixUps().FixUpVariantToBooleanMandSub(v, Variant(byDefault));
    return v.asBoolean();
}

// A member of one text and the text as result.
template <class Body>
Variant onText(Variant& v, Body body) {
    return fixUpFrame(text(v), [&] { return Variant(body(v.asString())); });
}

// A member of one text and one mandatory Long.
template <class Body>
Variant onTextAndLong(Variant& v, Variant& n, Body body) {
    return fixUpFrame(text(v) && whole(n), [&] { return Variant(body(v.asString(), int64_t(n.asLong()))); });
}

// A marker character of DifferenceString: a blank when not usable.
char16_t markerOf(const Variant& v) {
    char16_t c = u' ';
    return characterArgument(v, c) == CharacterArgument::Character ? c : u' ';
}

String differenceMarker(StringView one, StringView two, int32_t compare, char16_t same, char16_t diff) {
    const size_t n = std::min(one.size(), two.size());
    String marker;
    marker.reserve(std::max(one.size(), two.size()));
    for (size_t i = 0; i < n; ++i) marker.push_back(StrComp(one.substr(i, 1), two.substr(i, 1), compare) == 0 ? same : diff);
    marker.append(std::max(one.size(), two.size()) - n, diff);
    return marker;
}

Variant markedPair(Variant& vOne, Variant& vTwo, Variant& vCompare, char16_t same, char16_t diff) {
    return fixUpFrame(text(vOne) && text(vTwo), [&] {
        fixUps().FixUpVariantCompare(vCompare);
        const String& one = vOne.asString();
        const String& two = vTwo.asString();
        String r;
        r.reserve(one.size() + two.size() + std::max(one.size(), two.size()) + 4);
        r.append(one).append(kCrLf).append(differenceMarker(one, two, vCompare.asLong(), same, diff));
        r.append(kCrLf).append(two);
        return Variant(std::move(r));
    });
}

// Dropping n characters from either end; a negative count is an invalid
// argument, as it is to Mid and Left.
String dropLeft(StringView s, int64_t n) { return Mid(s, n + 1); }
String dropRight(StringView s, int64_t n) {
    if (n < 0) raiseError(errInvalidCall);
    return Left(s, std::max<int64_t>(0, int64_t(s.size()) - n));
}

String rotateLeft(StringView s, int64_t n) {
    if (s.empty()) return String();
    const int64_t len = int64_t(s.size());
    n %= len;
    if (n >= 0) return Mid(s, n + 1) + Left(s, n);
    return Right(s, -n) + Left(s, len + n);
}

String deleteFrom(StringView s, int64_t start, int64_t length) {
    start = std::max<int64_t>(start, 1);
    if (start > int64_t(s.size()) || length < 0) return String(s);
    return Left(s, start - 1) + Mid(s, start + length);
}

String insertAt(StringView dest, StringView source, int64_t position) {
    position = std::clamp<int64_t>(position, 1, int64_t(dest.size()) + 1);
    String r(dest.substr(0, size_t(position - 1)));
    r.append(source).append(dest.substr(size_t(position - 1)));
    return r;
}

// The unit RepeatString repeats: a String whole, a number as a character code.
bool repeatUnit(const Variant& v, String& unit) {
    if (v.isString()) {
        unit = v.asString();
        return true;
    }
    if (!IsNumeric(v)) return false;
    unit = Chr(CLng(v));
    return true;
}

}  // namespace

String repeatToLength(StringView unit, int64_t length) {
    if (length <= 0 || unit.empty()) return String();
    if (length > std::numeric_limits<int32_t>::max()) raiseError(errOutOfMemory);
    String r;
    r.reserve(size_t(length));
    while (r.size() + unit.size() <= size_t(length)) r.append(unit);
    r.append(unit.substr(0, size_t(length) - r.size()));
    return r;
}

namespace {

// The characters at start, start + step, ... up to `limit`, for each start
// from 1 to step, each group handed to `group`.
template <class Group>
void everyNthGroups(StringView s, int64_t step, size_t limit, Group group) {
    for (int64_t start = 1; start <= step; ++start) {
        String g;
        for (int64_t i = start; i <= int64_t(limit); i += step) g.push_back(s[size_t(i - 1)]);
        group(std::move(g));
    }
}

// The Asc of a String's first or last character, as StringRotate and
// StringShift return it ("" raises 5, as Asc does).
int16_t ascAt(StringView s, bool last) { return int16_t(Asc(last ? s.substr(s.empty() ? 0 : s.size() - 1) : s)); }

template <class Edit>
int16_t editInPlace(Variant& rValue, bool last, Edit edit) {
    if (!text(rValue)) return 0;
    const int16_t code = ascAt(rValue.asString(), last);
    rValue = Variant(edit(StringView(rValue.asString())));
    return code;
}

}  // namespace

// ---------------------------------------------------------------- hashing

Variant StringManipulations::HashString(Variant vValue, Variant vRangePrimeNumber) const {
    return fixUpFrame(text(vValue), [&] {
        fixUps().FixUpVariantToDoubleMandSub(vRangePrimeNumber, Variant(16777213.0));
        const double prime = CDbl(vRangePrimeNumber);
        double h = 0.0;
        for (char16_t c : vValue.asString()) h = modStd(checkedDouble(h * 91 + unicodeToAnsi(c)), prime);
        return Variant(h);
    });
}

// Each step depends on the last, so the division's latency is the cost of
// the loop: the remainder is taken by multiplying with a precomputed
// reciprocal instead (exact for every 32-bit dividend and divisor). h stays
// non-negative, and a non-negative dividend has the same remainder for a
// prime and its negation.
int32_t StringManipulations::HashStringFast(StringView vSymbol, int32_t vPrimeNumber) const {
    if (vSymbol.empty()) return 0;
    const uint32_t d = vPrimeNumber < 0 ? 0u - uint32_t(vPrimeNumber) : uint32_t(vPrimeNumber);
    if (d == 0) raiseError(errDivisionByZero);  // the first character's step would divide by it
    const uint64_t reciprocal = ~uint64_t(0) / d + 1;
    uint32_t h = 0;
    for (char16_t c : vSymbol) {
        // ASCII units are their own codes in any ANSI page: no call for them.
        const uint64_t t = uint64_t(h) * 91 + (c < 0x80 ? c : unicodeToAnsi(c));
        if (t > uint64_t(std::numeric_limits<int32_t>::max())) raiseError(errOverflow);
        h = uint32_t((static_cast<unsigned __int128>(reciprocal * t) * d) >> 64);
    }
    return int32_t(h);
}

// ---------------------------------------------------------------- patterns and markers

Variant StringManipulations::GrepToLike(Variant vPattern) const {
    return onText(vPattern, [](String p) {
        if (!p.empty() && p[0] == u'\\') p[0] = u'*';
        else if (!p.empty() && p[0] == u'^') p.erase(0, 1);
        else p.insert(0, 1, u'*');
        const size_t n = p.size();
        if (n >= 2 && p[n - 2] == u'\\' && p[n - 1] == u'$') p.erase(n - 2, 1);
        else if (n >= 1 && p[n - 1] == u'$') p.pop_back();
        else p.push_back(u'*');
        return p;
    });
}

Variant StringManipulations::DifferenceString(Variant vStringOne, Variant vStringTwo, Variant vCompare,
                                              Variant vIfSame, Variant vIfDiff) const {
    return fixUpFrame(text(vStringOne) && text(vStringTwo), [&] {
        fixUps().FixUpVariantCompare(vCompare);
        return Variant(differenceMarker(vStringOne.asString(), vStringTwo.asString(), vCompare.asLong(),
                                        markerOf(vIfSame), markerOf(vIfDiff)));
    });
}

Variant StringManipulations::CompareStrings(Variant vStringOne, Variant vStringTwo, Variant vCompare) const {
    return markedPair(vStringOne, vStringTwo, vCompare, u'^', u' ');
}

Variant StringManipulations::ContrastStrings(Variant vStringOne, Variant vStringTwo, Variant vCompare) const {
    return markedPair(vStringOne, vStringTwo, vCompare, u' ', u'^');
}

Variant StringManipulations::CompressSpaces(Variant vValue) const {
    return onText(vValue, [](const String& s) {
        const CharacterTypes& types = characterTypes();
        String r;
        r.reserve(s.size());
        bool inRun = false;
        for (char16_t c : s) {
            const bool space = types.has(c, CharTypeSpace);
            if (!space) r.push_back(c);
            else if (!inRun) r.push_back(u' ');
            inRun = space;
        }
        return r;
    });
}

Variant StringManipulations::TruncateLeftWithEllipse(Variant vLine, Variant vMaxLen) const {
    return onTextAndLong(vLine, vMaxLen, [](const String& s, int64_t maxLen) {
        const int64_t n = int64_t(s.size());
        if (maxLen >= n) return s;
        if (maxLen <= 0) return String();
        if (maxLen <= 3) return Left(u"...", maxLen);
        int64_t i = n - maxLen + 3 + 1;
        while (i <= n && s[size_t(i - 1)] != u' ') ++i;
        return u"..." + Mid(s, i);
    });
}

Variant StringManipulations::TruncateRightWithEllipse(Variant vLine, Variant vMaxLen) const {
    return onTextAndLong(vLine, vMaxLen, [](const String& s, int64_t maxLen) {
        if (maxLen >= int64_t(s.size())) return s;
        if (maxLen <= 0) return String();
        if (maxLen <= 4) return Left(u"....", maxLen);
        int64_t i = maxLen - 4;
        while (i > 0 && s[size_t(i - 1)] != u' ') --i;
        return Left(s, i) + u"....";
    });
}

// ---------------------------------------------------------------- quoting

Variant StringManipulations::QuoteString(Variant vValue, Variant vQuoteChar) const {
    return fixUpFrame(text(vValue), [&] {
        fixUps().FixUpVariantToStringSub(vQuoteChar, Variant(u""));
        return Variant(quoteString(vValue.asString(), vQuoteChar.asString()));
    });
}

String StringManipulations::DoubleQuoteString(Variant vValue) const {
    return doubleQuoteString(text(vValue) ? StringView(vValue.asString()) : StringView());
}

// Anything that is not text in quotes comes back as it was, numbers and
// Null included.
Variant StringManipulations::StripDoubleQuotes(Variant vValue) const {
    Variant copy = vValue;
    if (!text(copy)) return vValue;
    const String& s = copy.asString();
    if (s.size() >= 2 && s.front() == u'"' && s.back() == u'"') return Variant(StringView(s).substr(1, s.size() - 2));
    return vValue;
}

// ---------------------------------------------------------------- pieces

Variant StringManipulations::MidString(Variant vString, Variant vStart, Variant vLength) const {
    return fixUpFrame(text(vString), [&] {
        const String& s = vString.asString();
        int64_t start = longOr(vStart, 1), length;
        if (!whole(vLength)) {
            start = std::max<int64_t>(start, 1);
            length = int64_t(s.size()) - start + 1;
        } else {
            length = vLength.asLong();
            if (start < 1) {
                length += start - 1;
                start = 1;
            }
        }
        return Variant(length <= 0 ? String() : Mid(s, start, length));
    });
}

Variant StringManipulations::MidReverse(Variant vString, Variant vPos, Variant vLength) const {
    return fixUpFrame(text(vString), [&] {
        const String& s = vString.asString();
        const int64_t pos = whole(vPos) ? vPos.asLong() : int64_t(s.size());
        if (pos < 1 || pos > int64_t(s.size())) return Variant(u"");
        const int64_t length = std::min<int64_t>(longOr(vLength, int32_t(pos)), pos);
        if (length < 1) return Variant(u"");
        const auto end = s.rbegin() + ptrdiff_t(int64_t(s.size()) - pos);
        return Variant(String(end, end + ptrdiff_t(length)));
    });
}

Variant StringManipulations::OverlayString(Variant vTo, Variant vFm, Variant vOffset) const {
    return fixUpFrame(text(vTo) && text(vFm), [&] {
        String to = vTo.asString();
        const String& fm = vFm.asString();
        const int64_t offset = longOr(vOffset, 0);
        const int64_t first = std::max<int64_t>(1 - offset, 1);
        const int64_t last = std::min<int64_t>(int64_t(to.size()) - offset, int64_t(fm.size()));
        for (int64_t k = first; k <= last; ++k) to[size_t(offset + k - 1)] = fm[size_t(k - 1)];
        return Variant(std::move(to));
    });
}

Variant StringManipulations::RotateString(Variant vValue, Variant vAfterColumn) const {
    return onTextAndLong(vValue, vAfterColumn, [](const String& s, int64_t c) {
        const int64_t n = int64_t(s.size());
        if (n <= c) return Space(c) + s;
        if (n < 2 * c) return Mid(s, c + 1) + Space(2 * c - n) + Left(s, c);
        return Mid(s, c + 1, c) + Left(s, c);
    });
}

Variant StringManipulations::RotateStringLeft(Variant vValue, Variant vPositions) const {
    return fixUpFrame(text(vValue), [&] { return Variant(rotateLeft(vValue.asString(), longOr(vPositions, 1))); });
}

Variant StringManipulations::RotateStringRight(Variant vValue, Variant vPositions) const {
    return fixUpFrame(text(vValue),
                      [&] { return Variant(rotateLeft(vValue.asString(), -int64_t(longOr(vPositions, 1)))); });
}

Variant StringManipulations::ShiftStringLeft(Variant vValue, Variant vPositions) const {
    return fixUpFrame(text(vValue), [&] { return Variant(dropLeft(vValue.asString(), longOr(vPositions, 1))); });
}

Variant StringManipulations::ShiftStringRight(Variant vValue, Variant vPositions) const {
    return fixUpFrame(text(vValue), [&] { return Variant(dropRight(vValue.asString(), longOr(vPositions, 1))); });
}

int16_t StringManipulations::StringRotateLeft(Variant& rValue) const {
    return editInPlace(rValue, false, [](StringView s) { return rotateLeft(s, 1); });
}

int16_t StringManipulations::StringRotateRight(Variant& rValue) const {
    return editInPlace(rValue, true, [](StringView s) { return rotateLeft(s, -1); });
}

int16_t StringManipulations::StringShiftLeft(Variant& rValue) const {
    return editInPlace(rValue, false, [](StringView s) { return dropLeft(s, 1); });
}

int16_t StringManipulations::StringShiftRight(Variant& rValue) const {
    return editInPlace(rValue, true, [](StringView s) { return dropRight(s, 1); });
}

Variant StringManipulations::StripLeftNCharacters(Variant vString, Variant vNumChars) const {
    return onTextAndLong(vString, vNumChars, dropLeft);
}

Variant StringManipulations::StripRightNCharacters(Variant vString, Variant vNumChars) const {
    return onTextAndLong(vString, vNumChars, dropRight);
}

Variant StringManipulations::DeleteString(Variant vString, Variant vStartPos, Variant vLength) const {
    return fixUpFrame(text(vString), [&] {
        const int32_t start = longOr(vStartPos, 1);
        return Variant(deleteFrom(vString.asString(), start, longOr(vLength, 1)));
    });
}

void StringManipulations::StrDel(Variant& rString, Variant vStartPos, Variant vLength) const {
    if (!text(rString)) return;
    const int32_t start = longOr(vStartPos, 1);
    rString = Variant(deleteFrom(rString.asString(), start, longOr(vLength, 1)));
}

Variant StringManipulations::InsertString(Variant vDest, Variant vSource, Variant vInsertPosition) const {
    if (vDest.isNull() && vSource.isNull()) return Variant::null();
    const FixUps& f = fixUps();
    f.FixUpVariantToStringSub(vDest, Variant(u""));
    f.FixUpVariantToStringSub(vSource, Variant(u""));
    if (!vDest.isString() || !vSource.isString()) return Variant::null();
    return Variant(insertAt(vDest.asString(), vSource.asString(), longOr(vInsertPosition, 1)));
}

void StringManipulations::StrIns(Variant& rDest, Variant vSource, Variant vInsertPosition) const {
    if (rDest.isNull() && vSource.isNull()) return;
    const FixUps& f = fixUps();
    f.FixUpVariantToStringSub(rDest, Variant(u""));
    f.FixUpVariantToStringSub(vSource, Variant(u""));
    f.FixUpVariantToIntegerMandSub(vInsertPosition, Variant(int16_t(1)));
    if (!rDest.isString() || !vSource.isString()) return;
    rDest = Variant(insertAt(rDest.asString(), vSource.asString(), vInsertPosition.asInteger()));
}

// ---------------------------------------------------------------- every n-th

Variant StringManipulations::CharacterEveryNthCharacter(Variant vString, Variant vStart, Variant vStep) const {
    return fixUpFrame(text(vString), [&] {
        const String& s = vString.asString();
        const int64_t step = longOr(vStep, 1);
        if (step == 0) return Variant(u"");
        const int64_t n = int64_t(s.size());
        const int64_t start = whole(vStart) ? vStart.asLong() : (step > 0 ? 1 : n);
        String r;
        for (int64_t i = start; step > 0 ? i <= n : i >= 1; i += step) r += Mid(s, i, 1);
        return Variant(std::move(r));
    });
}

Variant StringManipulations::StringEveryNthCharacter(Variant vString, Variant vStart, Variant vLength, Variant vStep,
                                                     Variant vTruncate) const {
    return fixUpFrame(text(vString), [&] {
        const String& s = vString.asString();
        const int64_t start = longOr(vStart, 1);
        const int32_t length = longOr(vLength, 1);
        const int64_t step = longOr(vStep, length);
        const bool truncate = booleanOr(vTruncate, false);
        if (step == 0 || length <= 0) return Variant(u"");
        const int64_t n = int64_t(s.size());
        String r;
        for (int64_t i = start; step > 0 ? i <= n : i >= 1; i += step) {
            if (truncate && i + length - 1 > n) break;
            r += Mid(s, i, length);
        }
        return Variant(std::move(r));
    });
}

Variant StringManipulations::StringEveryNthCharRepeated(Variant vString, Variant vStep, Variant vTruncate) const {
    return fixUpFrame(text(vString), [&] {
        const String& s = vString.asString();
        const int64_t step = longOr(vStep, 1);
        const bool truncate = booleanOr(vTruncate, false);
        if (step < 1) return Variant(u"");
        // The incomplete last round is the tail past the last whole step.
        const size_t limit = truncate ? s.size() - s.size() % size_t(step) : s.size();
        String r;
        r.reserve(limit);
        everyNthGroups(s, std::min<int64_t>(step, int64_t(s.size())), limit, [&](String g) { r += g; });
        return Variant(std::move(r));
    });
}

Variant StringManipulations::SeparateCharactersIntoNGroups(Variant vString, Variant vStep, Variant vSeparator) const {
    return fixUpFrame(text(vString), [&] {
        const String& s = vString.asString();
        const int64_t step = std::min<int64_t>(std::max<int32_t>(longOr(vStep, 1), 1), int64_t(s.size()));
        fixUps().FixUpVariantToStringSub(vSeparator, Variant(kCrLf));
        const String& separator = vSeparator.asString();
        String r;
        bool first = true;
        everyNthGroups(s, step, s.size(), [&](String g) {
            if (!first) r += separator;
            r += g;
            first = false;
        });
        return Variant(std::move(r));
    });
}

// ---------------------------------------------------------------- repeating, reversing, merging

Variant StringManipulations::RepeatString(Variant vRepetitions, Variant vRepeat) const {
    String unit;
    if (!whole(vRepetitions) || !repeatUnit(vRepeat, unit)) return Variant::null();
    return Variant(repeatToLength(unit, std::max<int64_t>(vRepetitions.asLong(), 0) * int64_t(unit.size())));
}

Variant StringManipulations::RepeatStringToLength(Variant vLength, Variant vRepeat) const {
    String unit;
    if (!whole(vLength) || !repeatUnit(vRepeat, unit)) return Variant::null();
    return Variant(repeatToLength(unit, vLength.asLong()));
}

Variant StringManipulations::RepeatStringCharacters(Variant vStringChars, Variant vNTimes) const {
    return fixUpFrame(text(vStringChars), [&] {
        const String& s = vStringChars.asString();
        const int64_t times = longOr(vNTimes, 1);
        if (times <= 0) return Variant(u"");
        if (int64_t(s.size()) * times > std::numeric_limits<int32_t>::max()) raiseError(errOutOfMemory);
        String r;
        r.reserve(s.size() * size_t(times));
        for (char16_t c : s) r.append(size_t(times), c);
        return Variant(std::move(r));
    });
}

Variant StringManipulations::ReverseString(Variant vValue) const {
    return onText(vValue, [](const String& s) { return StrReverse(s); });
}

Variant StringManipulations::ReverseEveryNCharacters(Variant vValue, Variant vSize) const {
    return onTextAndLong(vValue, vSize, [](String s, int64_t size) {
        if (size < 1) return s;
        for (size_t i = 0; i < s.size(); i += size_t(size))
            std::reverse(s.begin() + ptrdiff_t(i), s.begin() + ptrdiff_t(std::min(s.size(), i + size_t(size))));
        return s;
    });
}

Variant StringManipulations::SwapCharacters(Variant vValue) const {
    return onText(vValue, [](String s) {
        for (size_t i = 0; i + 1 < s.size(); i += 2) std::swap(s[i], s[i + 1]);
        return s;
    });
}

bool StringManipulations::SplitStrings(Variant& rOddPosChars, Variant& rEvenPosChars, Variant vValue) const {
    if (!text(vValue)) return false;
    const String& s = vValue.asString();
    String odd, even;
    for (size_t i = 0; i < s.size(); ++i) (i % 2 == 0 ? odd : even).push_back(s[i]);
    rOddPosChars = Variant(std::move(odd));
    rEvenPosChars = Variant(std::move(even));
    return true;
}

Variant StringManipulations::MergeStrings(Variant vOddPosChars, Variant vEvenPosChars) const {
    return fixUpFrame(text(vOddPosChars) && text(vEvenPosChars),
                      [&] { return Variant(mergeAlternately(vOddPosChars.asString(), vEvenPosChars.asString())); });
}

String mergeAlternately(StringView odd, StringView even) {
    String r;
    r.reserve(odd.size() + even.size());
    for (size_t i = 0; i < odd.size() || i < even.size(); ++i) {
        if (i < odd.size()) r.push_back(odd[i]);
        if (i < even.size()) r.push_back(even[i]);
    }
    return r;
}

Variant StringManipulations::StringPastMinLength(Variant vStringOne, Variant vStringTwo) const {
    return fixUpFrame(text(vStringOne) && text(vStringTwo), [&] {
        const String& one = vStringOne.asString();
        const String& two = vStringTwo.asString();
        const String& longer = one.size() >= two.size() ? one : two;
        return Variant(StringView(longer).substr(std::min(one.size(), two.size())));
    });
}

void StringManipulations::Cat(Variant& rTo, const Variant& vFrom) const { rTo = opConcat(rTo, vFrom); }

void StringManipulations::CatLine(Variant& rTo, const Variant& vFrom) const {
    if (rTo.isNull() && vFrom.isNull()) return;
    const Variant length = Len(rTo);
    if (!length.isNull() && length.asLong() > 0) rTo = opConcat(rTo, Variant(kCrLf));
    rTo = opConcat(rTo, vFrom);
}

StringManipulations& stringManipulations() noexcept { return globalInstance<StringManipulations>(); }

// ---------------------------------------------------------------- type library

namespace {

using V = Variant;
StringManipulations& sm(Call& c) { return c.self<StringManipulations>(); }

const ClassRegistration kStringManipulations(u"StringManipulations", ClassKind::Global, globalFactory<StringManipulations>,
    u"Cuts, pastes, rotates, repeats, hashes and quotes strings.", {
    {"Cat(ref rTo: Variant, vFrom: Variant)", [](Call& c) { sm(c).Cat(c[0], c[1]); return V(); }},
    {"CatLine(ref rTo: Variant, vFrom: Variant)", [](Call& c) { sm(c).CatLine(c[0], c[1]); return V(); }},
    {"CharacterEveryNthCharacter(vString, [vStart], [vStep]) -> Variant",
     [](Call& c) { return sm(c).CharacterEveryNthCharacter(c[0], c[1], c[2]); }},
    {"CompareStrings(vStringOne, vStringTwo, [vCompare]) -> Variant",
     [](Call& c) { return sm(c).CompareStrings(c[0], c[1], c[2]); }},
    {"CompressSpaces(vValue) -> Variant", [](Call& c) { return sm(c).CompressSpaces(c[0]); }},
    {"ContrastStrings(vStringOne, vStringTwo, [vCompare]) -> Variant",
     [](Call& c) { return sm(c).ContrastStrings(c[0], c[1], c[2]); }},
    {"DeleteString(vString, [vStartPos], [vLength]) -> Variant",
     [](Call& c) { return sm(c).DeleteString(c[0], c[1], c[2]); }},
    {"DifferenceString(vStringOne, vStringTwo, [vCompare], [vIfSame], [vIfDiff]) -> Variant",
     [](Call& c) { return sm(c).DifferenceString(c[0], c[1], c[2], c[3], c[4]); }},
    {"DoubleQuoteString(vValue) -> String", [](Call& c) { return V(sm(c).DoubleQuoteString(c[0])); }},
    {"GrepToLike(vPattern) -> Variant", [](Call& c) { return sm(c).GrepToLike(c[0]); }},
    {"HashString(vValue, [vRangePrimeNumber]) -> Variant", [](Call& c) { return sm(c).HashString(c[0], c[1]); }},
    {"HashStringFast(ref vSymbol: String, ref vPrimeNumber: Long) -> Long",
     [](Call& c) { return V(sm(c).HashStringFast(c[0].asString(), c[1].asLong())); }},
    {"InsertString(vDest, vSource, [vInsertPosition]) -> Variant",
     [](Call& c) { return sm(c).InsertString(c[0], c[1], c[2]); }},
    {"MergeStrings(vOddPosChars, vEvenPosChars) -> Variant", [](Call& c) { return sm(c).MergeStrings(c[0], c[1]); }},
    {"MidReverse(vString, vPos, [vLength]) -> Variant", [](Call& c) { return sm(c).MidReverse(c[0], c[1], c[2]); }},
    {"MidString(vString, [vStart], [vLength]) -> Variant", [](Call& c) { return sm(c).MidString(c[0], c[1], c[2]); }},
    {"OverlayString(vTo, vFm, [vOffset]) -> Variant", [](Call& c) { return sm(c).OverlayString(c[0], c[1], c[2]); }},
    {"QuoteString(vValue, [vQuoteChar]) -> Variant", [](Call& c) { return sm(c).QuoteString(c[0], c[1]); }},
    {"RepeatString(vRepetitions, vRepeat) -> Variant", [](Call& c) { return sm(c).RepeatString(c[0], c[1]); }},
    {"RepeatStringCharacters(vStringChars, [vNTimes]) -> Variant",
     [](Call& c) { return sm(c).RepeatStringCharacters(c[0], c[1]); }},
    {"RepeatStringToLength(vLength, vRepeat) -> Variant",
     [](Call& c) { return sm(c).RepeatStringToLength(c[0], c[1]); }},
    {"ReverseEveryNCharacters(vValue, vSize) -> Variant",
     [](Call& c) { return sm(c).ReverseEveryNCharacters(c[0], c[1]); }},
    {"ReverseString(vValue) -> Variant", [](Call& c) { return sm(c).ReverseString(c[0]); }},
    {"RotateString(vValue, vAfterColumn) -> Variant", [](Call& c) { return sm(c).RotateString(c[0], c[1]); }},
    {"RotateStringLeft(vValue, [vPositions]) -> Variant", [](Call& c) { return sm(c).RotateStringLeft(c[0], c[1]); }},
    {"RotateStringRight(vValue, [vPositions]) -> Variant",
     [](Call& c) { return sm(c).RotateStringRight(c[0], c[1]); }},
    {"SeparateCharactersIntoNGroups(vString, vStep, [vSeparator]) -> Variant",
     [](Call& c) { return sm(c).SeparateCharactersIntoNGroups(c[0], c[1], c[2]); }},
    {"ShiftStringLeft(vValue, [vPositions]) -> Variant", [](Call& c) { return sm(c).ShiftStringLeft(c[0], c[1]); }},
    {"ShiftStringRight(vValue, [vPositions]) -> Variant", [](Call& c) { return sm(c).ShiftStringRight(c[0], c[1]); }},
    {"SplitStrings(ref rOddPosChars: Variant, ref rEvenPosChars: Variant, vValue) -> Boolean",
     [](Call& c) { return V(sm(c).SplitStrings(c[0], c[1], c[2])); }},
    {"StrDel(ref rString: Variant, [vStartPos], [vLength])",
     [](Call& c) { sm(c).StrDel(c[0], c[1], c[2]); return V(); }},
    {"StringEveryNthCharacter(vString, [vStart], [vLength], [vStep], [vTruncate]) -> Variant",
     [](Call& c) { return sm(c).StringEveryNthCharacter(c[0], c[1], c[2], c[3], c[4]); }},
    {"StringEveryNthCharRepeated(vString, [vStep], [vTruncate]) -> Variant",
     [](Call& c) { return sm(c).StringEveryNthCharRepeated(c[0], c[1], c[2]); }},
    {"StringPastMinLength(vStringOne, vStringTwo) -> Variant",
     [](Call& c) { return sm(c).StringPastMinLength(c[0], c[1]); }},
    {"StringRotateLeft(ref rValue: Variant) -> Integer", [](Call& c) { return V(sm(c).StringRotateLeft(c[0])); }},
    {"StringRotateRight(ref rValue: Variant) -> Integer", [](Call& c) { return V(sm(c).StringRotateRight(c[0])); }},
    {"StringShiftLeft(ref rValue: Variant) -> Integer", [](Call& c) { return V(sm(c).StringShiftLeft(c[0])); }},
    {"StringShiftRight(ref rValue: Variant) -> Integer", [](Call& c) { return V(sm(c).StringShiftRight(c[0])); }},
    {"StrIns(ref rDest: Variant, vSource, [vInsertPosition])",
     [](Call& c) { sm(c).StrIns(c[0], c[1], c[2]); return V(); }},
    {"StripDoubleQuotes(vValue) -> Variant", [](Call& c) { return sm(c).StripDoubleQuotes(c[0]); }},
    {"StripLeftNCharacters(vString, vNumChars) -> Variant",
     [](Call& c) { return sm(c).StripLeftNCharacters(c[0], c[1]); }},
    {"StripRightNCharacters(vString, vNumChars) -> Variant",
     [](Call& c) { return sm(c).StripRightNCharacters(c[0], c[1]); }},
    {"SwapCharacters(vValue) -> Variant", [](Call& c) { return sm(c).SwapCharacters(c[0]); }},
    {"TruncateLeftWithEllipse(vLine, vMaxLen) -> Variant",
     [](Call& c) { return sm(c).TruncateLeftWithEllipse(c[0], c[1]); }},
    {"TruncateRightWithEllipse(vLine, vMaxLen) -> Variant",
     [](Call& c) { return sm(c).TruncateRightWithEllipse(c[0], c[1]); }},
});

}  // namespace

}  // namespace qvt
