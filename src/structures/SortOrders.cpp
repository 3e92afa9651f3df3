#include "structures/SortOrders.h"

#include <algorithm>

#include "automation/TypeLibrary.h"
#include "frame/Error.h"
#include "frame/FixUps.h"
#include "frame/Frame.h"
#include "frame/Strings.h"
#include "strings/CharacterArrays.h"
#include "strings/CharacterTypes.h"

namespace qvt {

namespace {

int32_t compareOne(char16_t a, char16_t b, int32_t compare) {
    return StrComp(StringView(&a, 1), StringView(&b, 1), compare);
}

int32_t ascOf(char16_t c) { return Asc(StringView(&c, 1)); }

}  // namespace

const SortOrders::Collation& SortOrders::collation(int32_t compare) const {
    for (const Collation& c : collations_)
        if (c.compare == compare) return c;
    const Variant sorted = characterArrays().SortCharacters(Variant(characterTypes().EveryCharacter()), Variant(compare));
    Collation k{compare, sorted.asString(), {}, String(256, u'\0'), String(256, u'\0'), String(256, u'\0')};
    int32_t rank = 0;
    for (size_t p = 0; p < k.sorted.size(); ++p) {
        if (p > 0 && compareOne(k.sorted[p - 1], k.sorted[p], compare) != 0) ++rank;
        k.ranks.push_back(rank);
        k.sequence[size_t(ascOf(k.sorted[p]))] = Chr(rank)[0];
    }
    // Each run of equal ranks: its lowest and highest codes.
    for (size_t first = 0; first < k.sorted.size();) {
        size_t last = first;
        while (last + 1 < k.sorted.size() && k.ranks[last + 1] == k.ranks[first]) ++last;
        int32_t lo = 256, hi = -1;
        for (size_t p = first; p <= last; ++p) {
            lo = std::min(lo, ascOf(k.sorted[p]));
            hi = std::max(hi, ascOf(k.sorted[p]));
        }
        for (size_t p = first; p <= last; ++p) {
            k.lowest[size_t(ascOf(k.sorted[p]))] = Chr(lo)[0];
            k.highest[size_t(ascOf(k.sorted[p]))] = Chr(hi)[0];
        }
        first = last + 1;
    }
    collations_.push_back(std::move(k));
    return collations_.back();
}

bool SortOrders::CharacterPositionsArray(Variant& raintPositions, Variant vString) const {
    Variant positions = Variant::array(vbInteger, {ArrayBound{0, 255}});
    auto e = positions.arrayForWrite().elements();
    fixUps().FixUpVariantToStringSub(vString, Variant(String()));
    const String& s = vString.asString();
    for (size_t p = s.size(); p-- > 0;) e[size_t(ascOf(s[p]))] = Variant(int16_t(p + 1));
    int32_t next = int32_t(s.size());
    for (Variant& v : e)
        if (v.asInteger() == 0) v = Variant(int16_t(++next));
    raintPositions = std::move(positions);
    return true;
}

Variant SortOrders::IsStringSorted(Variant vString, Variant vCompare) const {
    return fixUpFrame(fixUps().FixUpVariantToStringFn(vString), [&] {
        const String& s = vString.asString();
        if (s.empty()) return Variant(true);
        fixUps().FixUpVariantCompare(vCompare);
        for (size_t p = 1; p < s.size(); ++p)
            if (compareOne(s[p - 1], s[p], vCompare.asLong()) == 1) return Variant(false);
        return Variant(true);
    });
}

Variant SortOrders::IsStringSortedBinary(Variant vString) const {
    return fixUpFrame(fixUps().FixUpVariantToStringFn(vString), [&] {
        const String& s = vString.asString();
        for (size_t p = 1; p < s.size(); ++p)
            if (ascOf(s[p - 1]) > ascOf(s[p])) return Variant(false);
        return Variant(true);
    });
}

Variant SortOrders::SortCharactersIndirect(Variant vSortKeys, Variant vSortData, Variant vSortOrder) const {
    return fixUpFrame(fixUps().FixUpVariantToStringFn(vSortKeys) && fixUps().FixUpVariantToStringFn(vSortData), [&] {
        fixUps().FixUpVariantToStringSub(vSortOrder, Variant(characterTypes().EveryCharacter()));
        Variant positions;
        CharacterPositionsArray(positions, vSortOrder);
        const auto rankOf = positions.asArray().elements();
        String keys = vSortKeys.asString();
        const String& text = vSortData.asString();
        const int32_t n = int32_t(keys.size());
        // The data by place, -1 where it is shorter than the keys.
        std::vector<int32_t> data(std::max(keys.size(), text.size()), -1);
        for (size_t p = 0; p < text.size(); ++p) data[p] = text[p];
        int32_t h = 1;
        while (h <= n / 9) h = 3 * h + 1;
        for (; h > 0; h /= 3) {
            for (int32_t i = h + 1; i <= n; ++i) {
                const char16_t key = keys[size_t(i - 1)];
                const int32_t datum = data[size_t(i - 1)];
                const int16_t rank = rankOf[size_t(ascOf(key))].asInteger();
                int32_t j = i;
                while (j > h && rankOf[size_t(ascOf(keys[size_t(j - h - 1)]))].asInteger() > rank) {
                    keys[size_t(j - 1)] = keys[size_t(j - h - 1)];
                    data[size_t(j - 1)] = data[size_t(j - h - 1)];
                    j -= h;
                }
                keys[size_t(j - 1)] = key;
                data[size_t(j - 1)] = datum;
            }
        }
        String sorted;
        for (int32_t d : data)
            if (d >= 0) sorted += char16_t(d);
        return Variant(std::move(sorted));
    });
}

String SortOrders::SortOrderMatchingCharacters(Variant vCompare, Variant vIsMax) const {
    fixUps().FixUpVariantCompare(vCompare);
    fixUps().FixUpVariantToBooleanMandSub(vIsMax, Variant(false));
    const Collation& k = collation(vCompare.asLong());
    return vIsMax.asBoolean() ? k.highest : k.lowest;
}

String SortOrders::SortOrderMatchingCharacterPairs(Variant vCompare) const {
    fixUps().FixUpVariantCompare(vCompare);
    const Collation& k = collation(vCompare.asLong());
    // Each character that is not the lowest of its class, after that lowest.
    String pairs;
    for (int c = 0; c < 256; ++c) {
        const char16_t lowest = k.lowest[size_t(c)];
        if (ascOf(lowest) != c) {
            pairs += lowest;
            pairs += Chr(c);
        }
    }
    return pairs;
}

String SortOrders::SortOrderNumbers(Variant vSeparator) const {
    fixUps().FixUpVariantToStringSub(vSeparator, Variant(u", "));
    if (numbers_.empty()) {
        String list;
        for (int32_t n = -32767; n <= 32767; ++n) {
            if (onErrorResumeNext([n] { StrComp(u"", u"", n); }) != 0) continue;
            if (!list.empty()) list += u' ';
            list += Str(Variant(n)).substr(n < 0 ? 0 : 1);
        }
        numbers_ = std::move(list);
    }
    return Replace(numbers_, u" ", vSeparator.asString());
}

String SortOrders::SortOrderString(Variant vCompare) const {
    fixUps().FixUpVariantCompare(vCompare);
    return collation(vCompare.asLong()).sequence;
}

SortOrders& sortOrders() noexcept { return globalInstance<SortOrders>(); }

// ---------------------------------------------------------------- type library

namespace {

using V = Variant;
SortOrders& so(Call& c) { return c.self<SortOrders>(); }

const ClassRegistration kSortOrders(u"SortOrders", ClassKind::Global, globalFactory<SortOrders>,
    u"Collating sequences as data.", {
    {"CharacterPositionsArray(ref raintPositions: array of Integer, vString: Variant) -> Boolean",
     [](Call& c) { return V(so(c).CharacterPositionsArray(c[0], c[1])); }},
    {"IsStringSorted(vString: Variant, [vCompare: Variant]) -> Variant", [](Call& c) { return so(c).IsStringSorted(c[0], c[1]); }},
    {"IsStringSortedBinary(vString: Variant) -> Variant", [](Call& c) { return so(c).IsStringSortedBinary(c[0]); }},
    {"SortCharactersIndirect(vSortKeys: Variant, vSortData: Variant, [vSortOrder: Variant]) -> Variant",
     [](Call& c) { return so(c).SortCharactersIndirect(c[0], c[1], c[2]); }},
    {"SortOrderMatchingCharacters([vCompare: Variant], [vIsMax: Variant]) -> String",
     [](Call& c) { return V(so(c).SortOrderMatchingCharacters(c[0], c[1])); }},
    {"SortOrderMatchingCharacterPairs([vCompare: Variant]) -> String",
     [](Call& c) { return V(so(c).SortOrderMatchingCharacterPairs(c[0])); }},
    {"SortOrderNumbers([vSeparator: Variant]) -> String", [](Call& c) { return V(so(c).SortOrderNumbers(c[0])); }},
    {"SortOrderString([vCompare: Variant]) -> String", [](Call& c) { return V(so(c).SortOrderString(c[0])); }},
});

}  // namespace

}  // namespace qvt
