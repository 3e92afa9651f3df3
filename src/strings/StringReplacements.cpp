#include "strings/StringReplacements.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "automation/TypeLibrary.h"
#include "frame/Conversions.h"
#include "frame/FixUps.h"
#include "frame/Frame.h"
#include "frame/Locale.h"
#include "frame/Strings.h"
#include "strings/StringSearches.h"
#include "structures/ArrayOthers.h"

namespace qvt {

CharacterArgument characterArgument(const Variant& v, char16_t& out) {
    if (v.isString()) {
        if (v.asString().empty()) return CharacterArgument::EmptyText;
        out = v.asString()[0];
        return CharacterArgument::Character;
    }
    if (!IsNumeric(v)) return CharacterArgument::Unusable;
    out = Chr(CLng(v))[0];
    return CharacterArgument::Character;
}

namespace {

bool text(Variant& v) { return fixUps().FixUpVariantToStringFn(v); }

int32_t compareMode(Variant& vCompare) {
    fixUps().FixUpVariantCompare(vCompare);
    return vCompare.asLong();
}

const String& replacementOf(Variant& vReplace) {
    fixUps().FixUpVariantToStringSub(vReplace, Variant(u""));
    return vReplace.asString();
}

// The Replace members: vLine and vFind fixed up, then vReplace and vCompare.
Variant replaceCount(Variant& vLine, Variant& vFind, Variant& vReplace, Variant& vCompare, int64_t count) {
    return fixUpFrame(text(vLine) && text(vFind), [&] {
        const String& with = replacementOf(vReplace);
        return Variant(Replace(vLine.asString(), vFind.asString(), with, 1, count, compareMode(vCompare)));
    });
}

// vLine and vFind fixed up, then vCompare; the body gets the three.
template <class Body>
Variant onLineAndFind(Variant& vLine, Variant& vFind, Variant& vCompare, Body body) {
    return fixUpFrame(text(vLine) && text(vFind),
                      [&] { return Variant(body(vLine.asString(), vFind.asString(), compareMode(vCompare))); });
}

// The find and replacement pairs of "find sep replacement sep ...", read
// from the lookup table the array toolkit builds of it: row 1 the finds,
// row 2 the replacements (Empty after an unpaired last find: it replaces
// with ""). A list the toolkit refuses gives no pairs.
std::vector<std::pair<String, String>> findReplacePairs(const Variant& list, const Variant& separator) {
    std::vector<std::pair<String, String>> pairs;
    Variant table;
    if (!arrayOthers().LookupStringToVariantMatrix(table, list, separator)) return pairs;
    const SafeArray& m = table.asArray();
    const auto textAt = [&](int32_t row, int32_t column) {
        const int32_t at[2] = {row, column};
        const Variant& v = m.at(at);
        return v.isString() ? v.asString() : String();
    };
    for (int32_t k = m.lbound(2); k <= m.ubound(2); ++k)
        pairs.emplace_back(textAt(m.lbound(1), k), textAt(m.lbound(1) + 1, k));
    return pairs;
}

// The strip members cut a prefix or suffix only where LineBeginsWith or
// LineEndsWith finds it.
String stripBegin(StringView line, StringView find, int32_t compare) {
    if (!stringSearches().LineBeginsWithFast(line, find, compare)) return String(line);
    return String(line.substr(find.size()));
}

String stripEnd(StringView line, StringView find, int32_t compare) {
    if (!stringSearches().LineEndsWithFast(line, find, compare)) return String(line);
    return String(line.substr(0, line.size() - find.size()));
}

String translate(String line, StringView from, StringView to, int32_t compare) {
    const size_t n = std::min(from.size(), to.size());
    from = from.substr(0, n);
    for (char16_t& c : line) {
        const int32_t p = InStr(1, from, StringView(&c, 1), compare);
        if (p != 0) c = to[size_t(p - 1)];
    }
    return line;
}

}  // namespace

// ---------------------------------------------------------------- replacing

Variant StringReplacements::ReplaceString(Variant vLine, Variant vFind, Variant vReplace, Variant vCompare) const {
    return replaceCount(vLine, vFind, vReplace, vCompare, -1);
}

String StringReplacements::ReplaceStringFast(StringView vLine, StringView vFind, StringView vReplace,
                                             int32_t vCompare) const {
    return Replace(vLine, vFind, vReplace, 1, -1, vCompare);
}

void StringReplacements::StrRep(Variant& rLine, Variant vFind, Variant vReplace, Variant vCompare) const {
    Variant r = replaceCount(rLine, vFind, vReplace, vCompare, -1);
    rLine = std::move(r);
}

Variant StringReplacements::ReplaceStringOnce(Variant vLine, Variant vFind, Variant vReplace,
                                              Variant vCompare) const {
    return replaceCount(vLine, vFind, vReplace, vCompare, 1);
}

Variant StringReplacements::ReplaceStringNTimes(Variant vLine, Variant vFind, Variant vReplace, Variant vCompare,
                                                Variant vNTimes) const {
    fixUps().FixUpVariantToLongMandSub(vNTimes, Variant(int32_t(1)));
    return replaceCount(vLine, vFind, vReplace, vCompare, vNTimes.asLong());
}

Variant StringReplacements::ReplaceStringRecursively(Variant vLine, Variant vFind, Variant vReplace,
                                                     Variant vCompare) const {
    return fixUpFrame(text(vLine) && text(vFind), [&] {
        const String& find = vFind.asString();
        if (find.empty()) return vLine;
        const String& with = replacementOf(vReplace);
        const int32_t compare = compareMode(vCompare);
        if (InStr(1, with, find, compare) != 0) return Variant(u"");
        String line = vLine.asString();
        // Text before the first match is unchanged by a replacement, so a new
        // match can begin at most Len(find) - 1 units before the last one:
        // searching from there finds what a search from 1 would find.
        int64_t from = 1;
        for (;;) {
            const int32_t p = InStr(from, line, find, compare);
            if (p == 0) return Variant(std::move(line));
            line.replace(size_t(p - 1), find.size(), with);
            from = std::max<int64_t>(1, int64_t(p) - int64_t(find.size()) + 1);
        }
    });
}

Variant StringReplacements::ReplaceStringMultiple(Variant vValue, Variant vFindReplacePairs, Variant vSeparator,
                                                  Variant vCompare) const {
    return fixUpFrame(text(vValue) && text(vFindReplacePairs) && text(vSeparator), [&] {
        const auto pairs = findReplacePairs(vFindReplacePairs, vSeparator);
        const int32_t compare = compareMode(vCompare);
        const StringView value = vValue.asString();
        String out;
        out.reserve(value.size());
        for (size_t i = 0; i < value.size();) {
            const std::pair<String, String>* hit = nullptr;
            for (auto p = pairs.rbegin(); p != pairs.rend(); ++p) {
                const String& find = p->first;
                // An empty find would match without advancing, for ever.
                if (find.empty() || find.size() > value.size() - i) continue;
                if (StrComp(value.substr(i, find.size()), find, compare) == 0) {
                    hit = &*p;
                    break;
                }
            }
            if (hit) {
                out += hit->second;
                i += hit->first.size();
            } else {
                out.push_back(value[i++]);
            }
        }
        return Variant(std::move(out));
    });
}

Variant StringReplacements::ReplaceLikeString(Variant vLine, Variant vLike, Variant vReplace,
                                              Variant vCompare) const {
    return fixUpFrame(text(vLine) && text(vLike), [&] {
        const String& with = replacementOf(vReplace);
        // Like matches in binary; text compare is had by upper-casing both
        // sides. `key` is the tested text, kept in step with `line`.
        const bool upper = compareMode(vCompare) != vbBinaryCompare;
        String line = vLine.asString();
        String key = upper ? UCase(line) : line;
        const String pattern = upper ? UCase(vLike.asString()) : vLike.asString();
        if (!Like(key, u"*" + pattern + u"*", vbBinaryCompare)) return Variant(std::move(line));
        const String startsHere = pattern + u"*";
        const String withKey = upper ? UCase(with) : with;
        for (size_t i = 0; i < key.size(); ++i) {
            const StringView rest = StringView(key).substr(i);
            if (!Like(rest, startsHere, vbBinaryCompare)) continue;
            size_t n = 1;
            while (n <= rest.size() && !Like(rest.substr(0, n), pattern, vbBinaryCompare)) ++n;
            if (n > rest.size()) continue;  // only an empty match: nothing to cut
            line.replace(i, n, with);
            key.replace(i, n, withKey);
            i += with.size();  // and the loop's step skips one more unit
        }
        return Variant(std::move(line));
    });
}

Variant StringReplacements::ReplaceCharacter(Variant vSearch, Variant vFromChar, Variant vToChar,
                                             Variant vCompare) const {
    if (!text(vSearch)) return Variant::null();
    char16_t from = 0, to = 0;
    for (auto [arg, c] : {std::pair{&vFromChar, &from}, std::pair{&vToChar, &to}}) {
        switch (characterArgument(*arg, *c)) {
            case CharacterArgument::Character: break;
            case CharacterArgument::EmptyText: return vSearch;
            case CharacterArgument::Unusable: return Variant::null();
        }
    }
    const int32_t compare = compareMode(vCompare);
    String line = vSearch.asString();
    for (int32_t p = InStr(1, line, StringView(&from, 1), compare); p != 0;
         p = InStr(int64_t(p) + 1, line, StringView(&from, 1), compare))
        line[size_t(p - 1)] = to;
    return Variant(std::move(line));
}

// ---------------------------------------------------------------- stripping

Variant StringReplacements::StripString(Variant vLine, Variant vFind, Variant vCompare) const {
    Variant none;
    return replaceCount(vLine, vFind, none, vCompare, -1);
}

Variant StringReplacements::StripFirstMatch(Variant vLine, Variant vFind, Variant vCompare) const {
    Variant none;
    return replaceCount(vLine, vFind, none, vCompare, 1);
}

Variant StringReplacements::StripLastMatch(Variant vLine, Variant vFind, Variant vCompare) const {
    return onLineAndFind(vLine, vFind, vCompare, [](const String& line, const String& find, int32_t compare) {
        const int32_t p = InStrRev(line, find, -1, compare);
        if (p == 0) return line;
        return line.substr(0, size_t(p - 1)) + line.substr(std::min(line.size(), size_t(p - 1) + find.size()));
    });
}

Variant StringReplacements::StripMatchingBeginLine(Variant vLine, Variant vFind, Variant vCompare) const {
    return onLineAndFind(vLine, vFind, vCompare, stripBegin);
}

Variant StringReplacements::StripMatchingEndLine(Variant vLine, Variant vFind, Variant vCompare) const {
    return onLineAndFind(vLine, vFind, vCompare, stripEnd);
}

String StringReplacements::StripMatchingBeginLineFast(StringView vLine, StringView vFind, int32_t vCompare) const {
    return stripBegin(vLine, vFind, vCompare);
}

String StringReplacements::StripMatchingEndLineFast(StringView vLine, StringView vFind, int32_t vCompare) const {
    return stripEnd(vLine, vFind, vCompare);
}

Variant StringReplacements::StripNilCharacterForward(Variant vLine) const {
    return fixUpFrame(text(vLine), [&] {
        const String& line = vLine.asString();
        return Variant(StringView(line).substr(0, line.find(u'\0')));
    });
}

// ---------------------------------------------------------------- translating

Variant StringReplacements::TranslateString(Variant vLine, Variant vFrom, Variant vTo, Variant vCompare) const {
    return fixUpFrame(text(vLine) && text(vFrom) && text(vTo), [&] {
        return Variant(translate(vLine.asString(), vFrom.asString(), vTo.asString(), compareMode(vCompare)));
    });
}

Variant StringReplacements::TranslateStringUsingCharacterPairs(Variant vLine, Variant vFromToChars,
                                                               Variant vCompare) const {
    return fixUpFrame(text(vLine) && text(vFromToChars), [&] {
        const String& pairs = vFromToChars.asString();
        String from, to;
        for (size_t i = 0; i + 1 < pairs.size(); i += 2) {
            from.push_back(pairs[i]);
            to.push_back(pairs[i + 1]);
        }
        return Variant(translate(vLine.asString(), from, to, compareMode(vCompare)));
    });
}

Variant StringReplacements::TranslateStringUsingTable(Variant vLine, Variant vTable) const {
    return fixUpFrame(text(vLine) && text(vTable), [&] {
        const String& table = vTable.asString();
        String line = vLine.asString();
        for (char16_t& c : line) {
            const size_t code = unicodeToAnsi(c);
            if (code < table.size()) c = table[code];
        }
        return Variant(std::move(line));
    });
}

StringReplacements& stringReplacements() noexcept { return globalInstance<StringReplacements>(); }

// ---------------------------------------------------------------- type library

namespace {

using V = Variant;
StringReplacements& sr(Call& c) { return c.self<StringReplacements>(); }

const ClassRegistration kStringReplacements(u"StringReplacements", ClassKind::Global, globalFactory<StringReplacements>,
    u"Finds and replaces, strips and translates text.", {
    {"ReplaceString(vLine, vFind, [vReplace], [vCompare]) -> Variant",
     [](Call& c) { return sr(c).ReplaceString(c[0], c[1], c[2], c[3]); }},
    {"ReplaceStringFast(ref vLine: String, ref vFind: String, ref vReplace: String, ref vCompare: Long) -> String",
     [](Call& c) { return V(sr(c).ReplaceStringFast(c[0].asString(), c[1].asString(), c[2].asString(), c[3].asLong())); }},
    {"StrRep(ref rLine: Variant, vFind, [vReplace], [vCompare])",
     [](Call& c) { sr(c).StrRep(c[0], c[1], c[2], c[3]); return V(); }},
    {"ReplaceStringOnce(vLine, vFind, [vReplace], [vCompare]) -> Variant",
     [](Call& c) { return sr(c).ReplaceStringOnce(c[0], c[1], c[2], c[3]); }},
    {"ReplaceStringNTimes(vLine, vFind, [vReplace], [vCompare], [vNTimes]) -> Variant",
     [](Call& c) { return sr(c).ReplaceStringNTimes(c[0], c[1], c[2], c[3], c[4]); }},
    {"ReplaceStringRecursively(vLine, vFind, [vReplace], [vCompare]) -> Variant",
     [](Call& c) { return sr(c).ReplaceStringRecursively(c[0], c[1], c[2], c[3]); }},
    {"ReplaceStringMultiple(vValue, vFindReplacePairs, vSeparator, [vCompare]) -> Variant",
     [](Call& c) { return sr(c).ReplaceStringMultiple(c[0], c[1], c[2], c[3]); }},
    {"ReplaceLikeString(vLine, vLike, [vReplace], [vCompare]) -> Variant",
     [](Call& c) { return sr(c).ReplaceLikeString(c[0], c[1], c[2], c[3]); }},
    {"ReplaceCharacter(vSearch, vFromChar, vToChar, [vCompare]) -> Variant",
     [](Call& c) { return sr(c).ReplaceCharacter(c[0], c[1], c[2], c[3]); }},
    {"StripString(vLine, vFind, [vCompare]) -> Variant", [](Call& c) { return sr(c).StripString(c[0], c[1], c[2]); }},
    {"StripFirstMatch(vLine, vFind, [vCompare]) -> Variant",
     [](Call& c) { return sr(c).StripFirstMatch(c[0], c[1], c[2]); }},
    {"StripLastMatch(vLine, vFind, [vCompare]) -> Variant",
     [](Call& c) { return sr(c).StripLastMatch(c[0], c[1], c[2]); }},
    {"StripMatchingBeginLine(vLine, vFind, [vCompare]) -> Variant",
     [](Call& c) { return sr(c).StripMatchingBeginLine(c[0], c[1], c[2]); }},
    {"StripMatchingEndLine(vLine, vFind, [vCompare]) -> Variant",
     [](Call& c) { return sr(c).StripMatchingEndLine(c[0], c[1], c[2]); }},
    {"StripMatchingBeginLineFast(ref vLine: String, ref vFind: String, ref vCompare: Long) -> String",
     [](Call& c) { return V(sr(c).StripMatchingBeginLineFast(c[0].asString(), c[1].asString(), c[2].asLong())); }},
    {"StripMatchingEndLineFast(ref vLine: String, ref vFind: String, ref vCompare: Long) -> String",
     [](Call& c) { return V(sr(c).StripMatchingEndLineFast(c[0].asString(), c[1].asString(), c[2].asLong())); }},
    {"StripNilCharacterForward(vLine) -> Variant", [](Call& c) { return sr(c).StripNilCharacterForward(c[0]); }},
    {"TranslateString(vLine, vFrom, vTo, [vCompare]) -> Variant",
     [](Call& c) { return sr(c).TranslateString(c[0], c[1], c[2], c[3]); }},
    {"TranslateStringUsingCharacterPairs(vLine, vFromToChars, [vCompare]) -> Variant",
     [](Call& c) { return sr(c).TranslateStringUsingCharacterPairs(c[0], c[1], c[2]); }},
    {"TranslateStringUsingTable(vLine, vTable) -> Variant",
     [](Call& c) { return sr(c).TranslateStringUsingTable(c[0], c[1]); }},
});

}  // namespace

}  // namespace qvt
