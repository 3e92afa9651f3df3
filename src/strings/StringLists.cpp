#include "strings/StringLists.h"

#include <algorithm>

#include "automation/TypeLibrary.h"
#include "frame/FixUps.h"
#include "frame/Frame.h"
#include "frame/Strings.h"
#include "strings/Segments.h"
#include "structures/ArrayConversions.h"

namespace qvt {

namespace {

// The list and a width of at least one, fixed up; the body gets both.
template <class Body>
Variant onList(Variant& vString, Variant& vLength, Body body) {
    const FixUps& f = fixUps();
    const bool ok = f.FixUpVariantToStringFn(vString) && f.FixUpVariantToLongMandFn(vLength) && vLength.asLong() >= 1;
    return fixUpFrame(ok, [&] { return body(vString.asString(), static_cast<size_t>(vLength.asLong())); });
}

template <class Search>
Variant searchList(Variant& vString, Variant& vFind, Variant& vLength, Variant& vCompare, Search search) {
    if (!fixUps().FixUpVariantToStringFn(vFind)) return Variant::null();
    return onList(vString, vLength, [&](const String& s, size_t width) {
        fixUps().FixUpVariantCompare(vCompare);
        return Variant(search(s, width, vFind.asString(), vCompare.asLong()));
    });
}

}  // namespace

Variant StringLists::SearchStringSegments(Variant vString, Variant vFind, Variant vLength, Variant vCompare) const {
    return searchList(vString, vFind, vLength, vCompare, segments::search);
}

Variant StringLists::SearchSortedStringSegments(Variant vString, Variant vFind, Variant vLength,
                                                Variant vCompare) const {
    return searchList(vString, vFind, vLength, vCompare, segments::searchSorted);
}

Variant StringLists::ShuffleStringSegments(Variant vString, Variant vLength) const {
    return onList(vString, vLength, [](String s, size_t width) {
        segments::shuffle(s, width);
        return Variant(std::move(s));
    });
}

Variant StringLists::SortStringSegments(Variant vString, Variant vLength, Variant vCompare, Variant vKeyColumn) const {
    return onList(vString, vLength, [&](String s, size_t width) {
        const FixUps& f = fixUps();
        f.FixUpVariantCompare(vCompare);
        f.FixUpVariantToIntegerMandSub(vKeyColumn, Variant(int16_t(1)));
        const int16_t key = vKeyColumn.vt() == vbInteger ? std::max<int16_t>(vKeyColumn.asInteger(), 1) : 1;
        segments::sort(s, width, static_cast<size_t>(key - 1), vCompare.asLong());
        return Variant(std::move(s));
    });
}

bool StringLists::StringSegmentsToVariantVector(Variant& rVector, Variant vString, Variant vLength) const {
    const Variant done = onList(vString, vLength, [&](const String& s, size_t width) {
        const size_t n = segments::count(s, width);
        if (n == 0) return Variant(false);
        Variant v = Variant::array(vbVariant, {{0, static_cast<int32_t>(n - 1)}});
        SafeArray& a = v.arrayForWrite();
        for (size_t i = 0; i < n; ++i) a.at(static_cast<int32_t>(i)) = Variant(RTrim(segments::at(s, width, i)));
        rVector = std::move(v);
        return Variant(true);
    });
    return done.vt() == vbBoolean && done.asBoolean();
}

Variant StringLists::StringSegmentXOfLengthY(Variant vString, Variant vX, Variant vY) const {
    fixUps().FixUpVariantToLongMandSub(vY, Variant(int32_t(1)));
    if (!fixUps().FixUpVariantToLongMandFn(vX) || vY.vt() != vbLong) return Variant::null();
    return onList(vString, vY, [&](const String& s, size_t width) {
        const int64_t x = vX.asLong();
        if (x < 1 || size_t(x) > segments::count(s, width)) return Variant::null();
        return Variant(String(segments::at(s, width, size_t(x - 1))));
    });
}

Variant StringLists::StringToStringSegments(Variant vString, Variant vSeparator, Variant vCompare,
                                            Variant& rLength) const {
    const FixUps& f = fixUps();
    f.FixUpVariantToStringSub(vSeparator, Variant(u","));
    const bool ok = f.FixUpVariantToStringFn(vString) && vSeparator.isString() && !vSeparator.asString().empty();
    return fixUpFrame(ok, [&] {
        f.FixUpVariantCompare(vCompare);
        const std::vector<String> parts = splitParts(vString.asString(), vSeparator.asString(), vCompare.asLong());
        size_t width = 0;
        for (const String& p : parts) width = std::max(width, p.size());
        String r;
        r.reserve(width * parts.size());
        for (const String& p : parts) r += LSet(p, static_cast<int32_t>(width));
        rLength = Variant(static_cast<int32_t>(width));
        return Variant(std::move(r));
    });
}

StringLists& stringLists() noexcept { return globalInstance<StringLists>(); }

}  // namespace qvt

// --- type library ------------------------------------------------------------


namespace qvt {

namespace {

#define QVT_MEMBER(signature, name, ...) \
    {signature, [](Call& c) { return Variant(c.self<StringLists>().name(__VA_ARGS__)); }}

const ClassRegistration kStringLists(u"StringLists", ClassKind::Global, globalFactory<StringLists>,
    u"Keeps a list of fixed-width items inside one string.", {
    QVT_MEMBER("SearchSortedStringSegments(vString: Variant, vFind: Variant, vLength: Variant, [vCompare: Variant]) -> Variant",
               SearchSortedStringSegments, c[0], c[1], c[2], c[3]),
    QVT_MEMBER("SearchStringSegments(vString: Variant, vFind: Variant, vLength: Variant, [vCompare: Variant]) -> Variant",
               SearchStringSegments, c[0], c[1], c[2], c[3]),
    QVT_MEMBER("ShuffleStringSegments(vString: Variant, vLength: Variant) -> Variant", ShuffleStringSegments, c[0], c[1]),
    QVT_MEMBER("SortStringSegments(vString: Variant, vLength: Variant, [vCompare: Variant], [vKeyColumn: Variant]) -> Variant",
               SortStringSegments, c[0], c[1], c[2], c[3]),
    QVT_MEMBER("StringSegmentsToVariantVector(ref rVector: Variant, vString: Variant, vLength: Variant) -> Boolean",
               StringSegmentsToVariantVector, c[0], c[1], c[2]),
    QVT_MEMBER("StringSegmentXOfLengthY(vString: Variant, vX: Variant, [vY: Variant]) -> Variant",
               StringSegmentXOfLengthY, c[0], c[1], c[2]),
    QVT_MEMBER("StringToStringSegments(vString: Variant, [vSeparator: Variant], [vCompare: Variant], [ref rLength: Variant]) -> Variant",
               StringToStringSegments, c[0], c[1], c[2], c[3]),
});

#undef QVT_MEMBER

}  // namespace

}  // namespace qvt
