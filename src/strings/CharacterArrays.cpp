#include "strings/CharacterArrays.h"

#include <algorithm>
#include <array>
#include <bitset>
#include <unordered_map>
#include <vector>

#include "automation/TypeLibrary.h"
#include "frame/Conversions.h"
#include "frame/FixUps.h"
#include "frame/Frame.h"
#include "frame/Locale.h"
#include "strings/CharacterSet.h"
#include "strings/CharacterTypes.h"
#include "strings/Segments.h"
#include "structures/ArraySorts.h"

namespace qvt {

namespace {

using Counts = std::array<int32_t, 256>;

Counts countCodes(StringView s) noexcept {
    Counts n{};
    for (char16_t c : s) ++n[unicodeToAnsi(c)];
    return n;
}

// The codes whose count passes the test, as characters in code order.
template <class Test>
String codesWhere(const Counts& n, Test test) {
    String r;
    for (int i = 0; i < 256; ++i)
        if (test(n[i])) r.push_back(ansiToUnicode(static_cast<uint8_t>(i)));
    return r;
}

// A member that takes one text and gives a text.
template <class Body>
Variant onText(Variant& vString, Body body) {
    return fixUpFrame(fixUps().FixUpVariantToStringFn(vString), [&] { return Variant(body(vString.asString())); });
}

}  // namespace

bool CharacterArrays::CharacterCountsToVariantVector(Variant& rCounts, Variant vString) const {
    return fixUpFrame(fixUps().FixUpVariantToStringFn(vString), [&] {
        const Counts n = countCodes(vString.asString());
        Variant v = Variant::array(vbVariant, {{0, 255}});
        SafeArray& a = v.arrayForWrite();
        for (int i = 0; i < 256; ++i) a.at(i) = Variant(n[i]);
        rCounts = std::move(v);
        return true;
    });
}

Variant CharacterArrays::CharactersNotInString(Variant vString) const {
    return onText(vString, [](const String& s) { return codesWhere(countCodes(s), [](int32_t k) { return k == 0; }); });
}

Variant CharacterArrays::UsedCharacters(Variant vString) const {
    return onText(vString, [](const String& s) { return codesWhere(countCodes(s), [](int32_t k) { return k > 0; }); });
}

Variant CharacterArrays::multiset(Variant& vString1, Variant& vString2, bool intersect) const {
    const FixUps& f = fixUps();
    return fixUpFrame(f.FixUpVariantToStringFn(vString1) && f.FixUpVariantToStringFn(vString2), [&] {
        std::unordered_map<char16_t, int32_t> other;
        for (char16_t c : vString2.asString()) ++other[c];
        String r;
        for (char16_t c : vString1.asString()) {
            auto it = other.find(c);
            const bool matched = it != other.end() && it->second > 0;
            if (matched) --it->second;
            if (matched == intersect) r.push_back(c);
        }
        return Variant(std::move(r));
    });
}

Variant CharacterArrays::DifferenceCharacters(Variant vString1, Variant vString2) const {
    return multiset(vString1, vString2, false);
}

Variant CharacterArrays::IntersectCharacters(Variant vString1, Variant vString2) const {
    return multiset(vString1, vString2, true);
}

Variant CharacterArrays::IntegerVectorToStringAsc(Variant vVector) const {
    if (!vVector.isArray() || !vVector.asArray().allocated() || vVector.asArray().dimensions() != 1)
        return Variant::null();
    String r;
    for (Variant e : vVector.asArray().elements()) {
        if (!fixUps().FixUpVariantToByteMandFn(e)) return Variant::null();
        r.push_back(ansiToUnicode(e.asByte()));
    }
    return Variant(std::move(r));
}

bool CharacterArrays::StringAscToIntegerVector(Variant& rVector, Variant vString) const {
    return fixUpFrame(fixUps().FixUpVariantToStringFn(vString), [&] {
        const String& s = vString.asString();
        if (s.empty()) {
            rVector = Variant::unallocatedArray(vbInteger);
            return true;
        }
        Variant v = Variant::array(vbInteger, {{1, static_cast<int32_t>(s.size())}});
        SafeArray& a = v.arrayForWrite();
        for (size_t i = 0; i < s.size(); ++i) a.at(static_cast<int32_t>(i + 1)) = Variant(int16_t(unicodeToAnsi(s[i])));
        rVector = std::move(v);
        return true;
    });
}

// Character k of the text (counted from the lowest code) names where k goes:
// the inverse puts at each place p the character that names p.
Variant CharacterArrays::InversePermutation(Variant vString) const {
    if (!fixUps().FixUpVariantToStringFn(vString)) return Variant::null();
    const String& s = vString.asString();
    if (s.empty()) return vString;
    uint8_t low = 255;
    for (char16_t c : s) low = std::min(low, unicodeToAnsi(c));
    const size_t n = s.size();
    String r(n, u'\0');
    std::vector<bool> seen(n, false);
    for (size_t i = 0; i < n; ++i) {
        const size_t p = unicodeToAnsi(s[i]) - low;
        if (p >= n || seen[p]) return Variant::null();
        seen[p] = true;
        r[p] = ansiToUnicode(static_cast<uint8_t>(low + i));
    }
    return Variant(std::move(r));
}

Variant CharacterArrays::JoinStringCharacters(Variant vString, Variant vSeparator) const {
    fixUps().FixUpVariantToStringSub(vSeparator, Variant(u","));
    return fixUpFrame(fixUps().FixUpVariantToStringFn(vString) && vSeparator.isString(), [&] {
        String r;
        for (char16_t c : vString.asString()) {
            if (!r.empty()) r += vSeparator.asString();
            r.push_back(c);
        }
        return Variant(std::move(r));
    });
}

Variant CharacterArrays::keepOrStrip(Variant& vString, Variant& vCharacters, Variant& vCompare, bool keep) const {
    const FixUps& f = fixUps();
    return fixUpFrame(f.FixUpVariantToStringFn(vString) && f.FixUpVariantToStringFn(vCharacters), [&] {
        f.FixUpVariantCompare(vCompare);
        const CharacterSet set(vCharacters.asString(), vCompare.asLong());
        String r;
        for (char16_t c : vString.asString())
            if (set.contains(c) == keep) r.push_back(c);
        return Variant(std::move(r));
    });
}

Variant CharacterArrays::KeepCharacters(Variant vString, Variant vCharacters, Variant vCompare) const {
    return keepOrStrip(vString, vCharacters, vCompare, true);
}

Variant CharacterArrays::StripCharacters(Variant vString, Variant vCharacters, Variant vCompare) const {
    return keepOrStrip(vString, vCharacters, vCompare, false);
}

Variant CharacterArrays::keepOrStripRange(Variant& vString, const Variant& vLower, const Variant& vUpper,
                                          bool keep) const {
    uint8_t lower = 0, upper = 0;
    const bool ok = fixUps().FixUpVariantToStringFn(vString) && characterCode(vLower, lower) &&
                    characterCode(vUpper, upper);
    return fixUpFrame(ok, [&] {
        String r;
        for (char16_t c : vString.asString()) {
            const uint8_t code = unicodeToAnsi(c);
            if ((code >= lower && code <= upper) == keep) r.push_back(c);
        }
        return Variant(std::move(r));
    });
}

Variant CharacterArrays::KeepRangeOfCharacters(Variant vString, Variant vLower, Variant vUpper) const {
    return keepOrStripRange(vString, vLower, vUpper, true);
}

Variant CharacterArrays::StripRangeOfCharacters(Variant vString, Variant vLower, Variant vUpper) const {
    return keepOrStripRange(vString, vLower, vUpper, false);
}

Variant CharacterArrays::extremeAsc(Variant& vString, bool max) const {
    return fixUpFrame(fixUps().FixUpVariantToStringFn(vString) && !vString.asString().empty(), [&] {
        uint8_t best = max ? 0 : 255;
        for (char16_t c : vString.asString()) best = max ? std::max(best, unicodeToAnsi(c)) : std::min(best, unicodeToAnsi(c));
        return Variant(int16_t(best));
    });
}

Variant CharacterArrays::MaxAsc(Variant vString) const { return extremeAsc(vString, true); }
Variant CharacterArrays::MinAsc(Variant vString) const { return extremeAsc(vString, false); }

Variant CharacterArrays::ShuffleString(Variant vString) const {
    return onText(vString, [](String s) {
        segments::shuffle(s, 1);
        return s;
    });
}

Variant CharacterArrays::SortCharacters(Variant vString, Variant vCompare) const {
    return onText(vString, [&](String s) {
        fixUps().FixUpVariantCompare(vCompare);
        segments::sort(s, 1, 0, vCompare.asLong());
        return s;
    });
}

// A counting sort by code; characters of one code keep their order.
Variant CharacterArrays::SortCharactersBinary(Variant vString) const {
    return onText(vString, [](const String& s) {
        const Counts n = countCodes(s);
        std::array<size_t, 256> next{};
        for (int i = 1; i < 256; ++i) next[i] = next[i - 1] + static_cast<size_t>(n[i - 1]);
        String r(s.size(), u'\0');
        for (char16_t c : s) r[next[unicodeToAnsi(c)]++] = c;
        return r;
    });
}

// Rows of (minus the count, code) for each used code, sorted on both
// columns: the most frequent first, ties in code order.
Variant CharacterArrays::SortCharactersByFrequency(Variant vString) const {
    return onText(vString, [](const String& s) {
        const Counts n = countCodes(s);
        int32_t used = 0;
        for (int32_t count : n) used += count > 0;
        String r;
        if (used == 0) return r;
        Variant rows = Variant::array(vbVariant, {ArrayBound{1, 2}, ArrayBound{1, used}});
        auto e = rows.arrayForWrite().elements();
        size_t k = 0;
        for (int i = 0; i < 256; ++i)
            if (n[i] > 0) {
                e[k++] = Variant(-n[i]);
                e[k++] = Variant(int32_t(i));
            }
        arraySorts().SortVariantMatrixRows(rows, Variant(int32_t(vbBinaryCompare)), Variant::missing(), Variant(true));
        const auto sorted = rows.asArray().elements();
        for (size_t j = 0; j < sorted.size(); j += 2)
            r.append(size_t(-sorted[j].asLong()), ansiToUnicode(static_cast<uint8_t>(sorted[j + 1].asLong())));
        return r;
    });
}

Variant CharacterArrays::SortUsedCharacters(Variant vString, Variant vCompare) const {
    Variant used = UsedCharacters(std::move(vString));
    return used.isNull() ? used : SortCharacters(std::move(used), std::move(vCompare));
}

Variant CharacterArrays::UniqueCharacters(Variant vString) const {
    return onText(vString, [](const String& s) {
        std::bitset<0x10000> seen;
        String r;
        for (char16_t c : s)
            if (!seen[c]) {
                seen[c] = true;
                r.push_back(c);
            }
        return r;
    });
}

CharacterArrays& characterArrays() noexcept { return globalInstance<CharacterArrays>(); }

}  // namespace qvt

// --- type library ------------------------------------------------------------


namespace qvt {

namespace {

#define QVT_ONE(name, p0) \
    {#name "(" #p0 ": Variant) -> Variant", [](Call& c) { return c.self<CharacterArrays>().name(c[0]); }}
#define QVT_TWO(name, p0, p1) \
    {#name "(" #p0 ": Variant, " p1 ") -> Variant", [](Call& c) { return c.self<CharacterArrays>().name(c[0], c[1]); }}
#define QVT_THREE(name, p0, p1, p2) \
    {#name "(" #p0 ": Variant, " p1 ", " p2 ") -> Variant", \
     [](Call& c) { return c.self<CharacterArrays>().name(c[0], c[1], c[2]); }}

const ClassRegistration kCharacterArrays(u"CharacterArrays", ClassKind::Global, globalFactory<CharacterArrays>,
    u"Treats a text as a set or a histogram of its characters.", {
    {"CharacterCountsToVariantVector(ref rCounts: Variant, vString: Variant) -> Boolean",
     [](Call& c) { return Variant(c.self<CharacterArrays>().CharacterCountsToVariantVector(c[0], c[1])); }},
    QVT_ONE(CharactersNotInString, vString),
    QVT_TWO(DifferenceCharacters, vString1, "vString2: Variant"),
    QVT_ONE(IntegerVectorToStringAsc, vVector),
    QVT_TWO(IntersectCharacters, vString1, "vString2: Variant"),
    QVT_ONE(InversePermutation, vString),
    QVT_TWO(JoinStringCharacters, vString, "[vSeparator: Variant]"),
    QVT_THREE(KeepCharacters, vString, "vCharacters: Variant", "[vCompare: Variant]"),
    QVT_THREE(KeepRangeOfCharacters, vString, "vLower: Variant", "vUpper: Variant"),
    QVT_ONE(MaxAsc, vString),
    QVT_ONE(MinAsc, vString),
    QVT_ONE(ShuffleString, vString),
    QVT_TWO(SortCharacters, vString, "[vCompare: Variant]"),
    QVT_ONE(SortCharactersBinary, vString),
    QVT_ONE(SortCharactersByFrequency, vString),
    QVT_TWO(SortUsedCharacters, vString, "[vCompare: Variant]"),
    {"StringAscToIntegerVector(ref rVector: Variant, vString: Variant) -> Boolean",
     [](Call& c) { return Variant(c.self<CharacterArrays>().StringAscToIntegerVector(c[0], c[1])); }},
    QVT_THREE(StripCharacters, vString, "vCharacters: Variant", "[vCompare: Variant]"),
    QVT_THREE(StripRangeOfCharacters, vString, "vLower: Variant", "vUpper: Variant"),
    QVT_ONE(UniqueCharacters, vString),
    QVT_ONE(UsedCharacters, vString),
});

#undef QVT_ONE
#undef QVT_TWO
#undef QVT_THREE

}  // namespace

}  // namespace qvt
