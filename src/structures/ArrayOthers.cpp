#include "structures/ArrayOthers.h"

#include <algorithm>

#include "automation/TypeLibrary.h"
#include "frame/Comparisons.h"
#include "frame/ConvertValues.h"
#include "frame/FixUps.h"
#include "frame/Frame.h"
#include "frame/Operators.h"
#include "frame/Strings.h"
#include "strings/FormatsJustifies.h"
#include "structures/ArrayConversions.h"
#include "structures/ArrayShapes.h"
#include "structures/ArraySorts.h"

namespace qvt {

using shapes::isMatrix;
using shapes::isVector;

namespace {

const FixUps& fx() { return fixUps(); }

// The first element of v, depth first, that is not an array (nor, when
// asked, an object); nullptr when there is none.
const Variant* firstAtomic(const Variant& v, bool skipObjects) {
    if (!v.isArray()) return skipObjects && v.isObject() ? nullptr : &v;
    for (const Variant& e : v.asArray().elements())
        if (const Variant* found = firstAtomic(e, skipObjects)) return found;
    return nullptr;
}

const StringView kCrLf = u"\r\n";

String textOf(const Variant& v) { return convertValues().VariantToString(convertValues().NullToBlank(v)); }

}  // namespace

Variant ArrayOthers::FirstAtomicArrayElement(const Variant& vArray) const {
    const Variant* found = firstAtomic(vArray, false);
    return found ? *found : Variant::null();
}

Variant ArrayOthers::FirstAtomicNonObjectArrayElement(const Variant& vArray) const {
    const Variant* found = firstAtomic(vArray, true);
    return found ? *found : Variant::null();
}

Variant ArrayOthers::FormatVariantMatrix(const Variant& vFm, Variant vColumnSeparator, Variant vRowSeparator,
                                         Variant vJustifyCodes) const {
    if (!isVector(vFm) && !isMatrix(vFm)) return Variant::null();
    fx().FixUpVariantToStringSub(vColumnSeparator, Variant(u" "));
    fx().FixUpVariantToStringSub(vRowSeparator, Variant(kCrLf));
    if (!vColumnSeparator.isString() || !vRowSeparator.isString()) return Variant::null();
    const SafeArray& m = vFm.asArray();
    const bool vector = m.dimensions() == 1;
    const ArrayBound columns = vector ? ArrayBound{1, 1} : m.bounds()[0];
    const ArrayBound rows = m.bounds()[vector ? 0 : 1];
    const size_t nc = size_t(columns.count()), nr = size_t(rows.count());

    // Each cell as its lines, and each column's width.
    std::vector<std::vector<String>> cells(nc * nr);
    std::vector<int32_t> width(nc, 0);
    for (size_t r = 0; r < nr; ++r)
        for (size_t c = 0; c < nc; ++c) {
            const Variant& v = vector ? m.elements()[r] : shapes::cell(m, columns.lower + int32_t(c), rows.lower + int32_t(r));
            std::vector<String>& lines = cells[r * nc + c];
            lines = splitParts(textOf(v), kCrLf, vbBinaryCompare);
            for (const String& line : lines) width[c] = std::max(width[c], int32_t(line.size()));
        }

    std::vector<String> codes(nc, String(u"<"));
    if (vJustifyCodes.isString()) {
        const String& s = vJustifyCodes.asString();
        for (size_t c = 0; c < nc && c < s.size(); ++c) codes[c] = String(1, s[c]);
    } else if (isVector(vJustifyCodes)) {
        auto e = vJustifyCodes.asArray().elements();
        for (size_t c = 0; c < nc && c < e.size(); ++c) codes[c] = textOf(e[c]);
    }

    const String& columnSeparator = vColumnSeparator.asString();
    const String& rowSeparator = vRowSeparator.asString();
    String out;
    bool firstLine = true;
    for (size_t r = 0; r < nr; ++r) {
        size_t height = 1;
        for (size_t c = 0; c < nc; ++c) height = std::max(height, cells[r * nc + c].size());
        for (size_t k = 0; k < height; ++k) {
            String line;
            for (size_t c = 0; c < nc; ++c) {
                if (c > 0) line += columnSeparator;
                const std::vector<String>& lines = cells[r * nc + c];
                line += justifyLine(k < lines.size() ? StringView(lines[k]) : StringView(), width[c], codes[c], u" ");
            }
            if (!firstLine) out += rowSeparator;
            out += RTrim(line);
            firstLine = false;
        }
    }
    return Variant(std::move(out));
}

bool ArrayOthers::GroupVariantVector(Variant& rTo, const Variant& vFm, Variant vCompare) const {
    if (!isVector(vFm) || vFm.asArray().ubound() < 1) return false;
    fx().FixUpVariantCompare(vCompare);
    const SafeArray& from = vFm.asArray();
    const int32_t first = std::max(1, from.lbound()), upper = from.ubound();
    Variant sorted = Variant::array(vbVariant, {ArrayBound{1, upper - first + 1}});
    {
        auto s = sorted.arrayForWrite().elements();
        for (int32_t i = first; i <= upper; ++i) s[size_t(i - first)] = from.at(i);
    }
    arraySorts().SortVariantVector(sorted, vCompare);
    auto s = sorted.asArray().elements();
    std::vector<std::pair<size_t, int32_t>> runs;  // first element of a run, its length
    for (size_t k = 0; k < s.size(); ++k) {
        if (runs.empty() || !comparisons().EqualLikeDataType(s[runs.back().first], s[k], vCompare)) runs.push_back({k, 0});
        ++runs.back().second;
    }
    Variant out = shapes::newMatrix(2, int32_t(runs.size()));
    SafeArray& m = out.arrayForWrite();
    for (size_t g = 0; g < runs.size(); ++g) {
        shapes::cell(m, 1, int32_t(g) + 1) = s[runs[g].first];
        shapes::cell(m, 2, int32_t(g) + 1) = Variant(runs[g].second);
    }
    rTo = std::move(out);
    return true;
}

bool ArrayOthers::UniqueVariantVector(Variant& rTo, const Variant& vFm, Variant vCompare) const {
    if (!isVector(vFm)) return false;
    fixUps().FixUpVariantCompare(vCompare);
    const int32_t compare = vCompare.asLong();
    const SafeArray& from = vFm.asArray();
    const int32_t lower = from.lbound(), upper = from.ubound();
    if (upper < 1) {
        rTo = vFm;
        return true;
    }
    if (lower > 1) raiseError(errSubscript);
    auto in = from.elements();
    const auto at = [&](int32_t i) -> const Variant& { return in[size_t(i - lower)]; };
    std::vector<const Variant*> kept;
    kept.push_back(&at(1));
    for (int32_t i = 2; i <= upper; ++i)
        if (comparisons().CompareLikeDataTypeFast(at(i), *kept.back(), compare) != 0) kept.push_back(&at(i));
    Variant out = Variant::array(vbVariant, {ArrayBound{lower, int32_t(kept.size())}});
    auto o = out.arrayForWrite().elements();
    for (int32_t i = lower; i < 1; ++i) o[size_t(i - lower)] = at(i);
    for (size_t k = 0; k < kept.size(); ++k) o[size_t(1 - lower) + k] = *kept[k];
    rTo = std::move(out);
    return true;
}

// --- lookups ---------------------------------------------------------------------

Variant ArrayOthers::LookupValue(const Variant& vLookupTable, const Variant& vLookupValue, const Variant& vLookupColumn,
                                 const Variant& vReturnColumn) const {
    if (!vLookupTable.isArray()) raiseError(errTypeMismatch);
    const SafeArray& t = vLookupTable.asArray();
    int32_t at[2] = {CLng(vLookupColumn), 0};
    const int32_t returnColumn = CLng(vReturnColumn), upper = t.ubound(2);
    for (at[1] = 1; at[1] <= upper; ++at[1]) {
        bool isNull = false;
        if (compareVariants(t.at(at), vLookupValue, vbBinaryCompare, &isNull) == 0 && !isNull) {
            at[0] = returnColumn;
            return t.at(at);
        }
    }
    return Variant::null();
}

bool ArrayOthers::LookupAdd(Variant& rTable, Variant vString, Variant vNumber) const {
    if (!fx().FixUpVariantToStringFn(vString) || !fx().FixUpVariantToDoubleMaybeFn(vNumber)) return false;
    int32_t j = 1;
    if (isMatrix(rTable)) {
        const SafeArray& t = rTable.asArray();
        if (t.lbound(1) > 1 || t.ubound(1) < 2) return false;
        j = t.ubound(2) + 1;
        std::vector<ArrayBound> bounds = t.bounds();
        bounds[1].upper = j;
        shapes::reshape(rTable, bounds);
    } else if (rTable.isEmpty() || (rTable.isArray() && !rTable.asArray().allocated())) {
        rTable = shapes::newMatrix(2, 1);
    } else {
        return false;
    }
    SafeArray& t = rTable.arrayForWrite();
    const int32_t key[2] = {1, j}, value[2] = {2, j};
    t.set(key, vString);
    t.set(value, vNumber);
    return true;
}

namespace {

// The binary search of LookupSorted; nullptr when the key is absent.
const Variant* findSorted(const SafeArray& t, StringView key) {
    int32_t lo = 1, hi = t.ubound(2);
    while (lo <= hi) {
        const int32_t mid = (lo + hi) / 2;
        const int32_t k[2] = {1, mid};
        const int32_t order = StrComp(convertValues().VariantToString(t.at(k)), key, vbBinaryCompare);
        if (order == 0) {
            const int32_t v[2] = {2, mid};
            return &t.at(v);
        }
        if (order < 0) lo = mid + 1;
        else hi = mid - 1;
    }
    return nullptr;
}

}  // namespace

Variant ArrayOthers::LookupSorted(const Variant& vLookupTable, Variant vLookupValue) const {
    if (!isMatrix(vLookupTable) || !fx().FixUpVariantToStringFn(vLookupValue)) return Variant::null();
    const Variant* found = findSorted(vLookupTable.asArray(), vLookupValue.asString());
    return found ? *found : Variant::null();
}

Variant ArrayOthers::LookupMultiple(const Variant& vLookupTable, Variant vValue) const {
    if (!isMatrix(vLookupTable) || !fx().FixUpVariantToStringFn(vValue)) return Variant::null();
    String out;
    for (char16_t ch : vValue.asString()) {
        const Variant found = LookupValue(vLookupTable, Variant(StringView(&ch, 1)), Variant(int32_t(1)), Variant(int32_t(2)));
        out += found.isNull() ? String(1, ch) : textOf(found);
    }
    return Variant(std::move(out));
}

Variant ArrayOthers::LookupSortedMultiple(const Variant& vLookupTable, Variant vValue) const {
    if (!isMatrix(vLookupTable) || !fx().FixUpVariantToStringFn(vValue)) return Variant::null();
    String out;
    for (char16_t ch : vValue.asString()) {
        const Variant* found = findSorted(vLookupTable.asArray(), StringView(&ch, 1));
        out += found ? textOf(*found) : String(1, ch);
    }
    return Variant(std::move(out));
}

bool ArrayOthers::LookupStringToVariantMatrix(Variant& rLookupTable, Variant vLookupString, Variant vSeparator) const {
    if (!fx().FixUpVariantToStringFn(vLookupString) || !fx().FixUpVariantToStringFn(vSeparator) ||
        vLookupString.asString().empty() || vSeparator.asString().empty())
        return false;
    std::vector<String> parts = splitParts(vLookupString.asString(), vSeparator.asString(), vbBinaryCompare);
    Variant out = shapes::newMatrix(2, int32_t((parts.size() + 1) / 2));
    SafeArray& m = out.arrayForWrite();
    for (size_t k = 0; k < parts.size(); ++k)
        shapes::cell(m, int32_t(k % 2) + 1, int32_t(k / 2) + 1) = Variant(std::move(parts[k]));
    rLookupTable = std::move(out);
    return true;
}

// --- element lengths ---------------------------------------------------------------

namespace {

template <class Pick>
int32_t lengthOver(const Variant& vVector, Variant& vMinElem, Variant& vMaxElem, Pick pick) {
    int32_t low = 0, high = 0;
    if (!isVector(vVector) || !shapes::rangeWithin(vMinElem, vMaxElem, vVector.asArray().bounds()[0], low, high))
        return 0;
    const SafeArray& a = vVector.asArray();
    int32_t best = Len(textOf(a.at(low)));
    for (int32_t i = low + 1; i <= high; ++i) best = pick(best, Len(textOf(a.at(i))));
    return best;
}

}  // namespace

int32_t ArrayOthers::MaxLengthVariantVectorElement(const Variant& vVector, Variant vMinElem, Variant vMaxElem) const {
    return lengthOver(vVector, vMinElem, vMaxElem, [](int32_t a, int32_t b) { return std::max(a, b); });
}

int32_t ArrayOthers::MinLengthVariantVectorElement(const Variant& vVector, Variant vMinElem, Variant vMaxElem) const {
    return lengthOver(vVector, vMinElem, vMaxElem, [](int32_t a, int32_t b) { return std::min(a, b); });
}

ArrayOthers& arrayOthers() noexcept { return globalInstance<ArrayOthers>(); }

// ---------------------------------------------------------------- type library

namespace {

using V = Variant;
ArrayOthers& ao(Call& c) { return c.self<ArrayOthers>(); }

#define QVT_AO(sig, call) {sig, [](Call& c) { return V(ao(c).call); }}

const ClassRegistration kArrayOthers(u"ArrayOthers", ClassKind::Global, globalFactory<ArrayOthers>,
    u"Questions about whole arrays, lookup tables, and a matrix printed as text.", {
    QVT_AO("FirstAtomicArrayElement(ref vArray: Variant) -> Variant", FirstAtomicArrayElement(c[0])),
    QVT_AO("FirstAtomicNonObjectArrayElement(ref vArray: Variant) -> Variant", FirstAtomicNonObjectArrayElement(c[0])),
    QVT_AO("FormatVariantMatrix(ref vFm: array of Variant, [vColumnSeparator: Variant], [vRowSeparator: Variant], [vJustifyCodes: Variant]) -> Variant",
           FormatVariantMatrix(c[0], c[1], c[2], c[3])),
    QVT_AO("GroupVariantVector(ref rTo: array of Variant, ref vFm: array of Variant, [vCompare: Variant]) -> Boolean",
           GroupVariantVector(c[0], c[1], c[2])),
    QVT_AO("UniqueVariantVector(ref rTo: array of Variant, ref vFm: array of Variant, [vCompare: Variant]) -> Boolean",
           UniqueVariantVector(c[0], c[1], c[2])),
    QVT_AO("LookupValue(ref vLookupTable: array of Variant, vLookupValue: Variant, vLookupColumn: Variant, vReturnColumn: Variant) -> Variant",
           LookupValue(c[0], c[1], c[2], c[3])),
    QVT_AO("LookupAdd(ref rTable: array of Variant, vString: Variant, vNumber: Variant) -> Boolean", LookupAdd(c[0], c[1], c[2])),
    QVT_AO("LookupSorted(ref vLookupTable: array of Variant, vLookupValue: Variant) -> Variant", LookupSorted(c[0], c[1])),
    QVT_AO("LookupMultiple(ref vLookupTable: array of Variant, vValue: Variant) -> Variant", LookupMultiple(c[0], c[1])),
    QVT_AO("LookupSortedMultiple(ref vLookupTable: array of Variant, vValue: Variant) -> Variant",
           LookupSortedMultiple(c[0], c[1])),
    QVT_AO("LookupStringToVariantMatrix(ref rLookupTable: array of Variant, vLookupString: Variant, vSeparator: Variant) -> Boolean",
           LookupStringToVariantMatrix(c[0], c[1], c[2])),
    QVT_AO("MaxLengthVariantVectorElement(ref vVector: array of Variant, [vMinElem: Variant], [vMaxElem: Variant]) -> Long",
           MaxLengthVariantVectorElement(c[0], c[1], c[2])),
    QVT_AO("MinLengthVariantVectorElement(ref vVector: array of Variant, [vMinElem: Variant], [vMaxElem: Variant]) -> Long",
           MinLengthVariantVectorElement(c[0], c[1], c[2])),
});

#undef QVT_AO

}  // namespace

}  // namespace qvt
