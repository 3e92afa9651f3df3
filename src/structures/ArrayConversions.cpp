#include "structures/ArrayConversions.h"

#include <algorithm>

#include "automation/TypeLibrary.h"
#include "frame/ConvertValues.h"
#include "frame/FixUps.h"
#include "frame/Frame.h"
#include "frame/Strings.h"
#include "structures/ArrayShapes.h"

namespace qvt {

using shapes::isMatrix;
using shapes::isVector;
using shapes::within;

std::vector<String> splitParts(StringView line, StringView separator, int32_t compare) {
    std::vector<String> parts;
    if (separator.empty()) {
        parts.emplace_back(line);
        return parts;
    }
    size_t from = 0;  // 0-based start of the current part
    for (;;) {
        const int32_t at = from < line.size() ? InStr(int64_t(from) + 1, line, separator, compare) : 0;
        if (at == 0) break;
        parts.emplace_back(line.substr(from, size_t(at - 1) - from));
        from = size_t(at - 1) + separator.size();
    }
    parts.emplace_back(line.substr(std::min(from, line.size())));
    return parts;
}

Variant splitToOneBased(StringView line, StringView separator, int32_t compare) {
    std::vector<String> parts = splitParts(line, separator, compare);
    Variant v = Variant::array(vbVariant, {ArrayBound{0, int32_t(parts.size())}});
    SafeArray& a = v.arrayForWrite();
    for (size_t i = 0; i < parts.size(); ++i) a.at(int32_t(i) + 1) = Variant(std::move(parts[i]));
    return v;
}

namespace {

const FixUps& fx() { return fixUps(); }

const StringView kCrLf = u"\r\n";

// A copy of an array with every element passed through `convert`, into an
// array of element type `to` with the same bounds.
template <class Convert>
bool convertElements(Variant& rTo, const Variant& vFm, int dimensions, VarType to, Convert convert) {
    if (!shapes::isArrayOf(vFm, dimensions)) return false;
    const SafeArray& from = vFm.asArray();
    Variant out = Variant::array(to, from.bounds());
    auto o = out.arrayForWrite().elements();
    auto in = from.elements();
    for (size_t k = 0; k < in.size(); ++k) o[k] = convert(in[k]);
    rTo = std::move(out);
    return true;
}

Variant asVariant(const Variant& v) { return v; }
Variant asString(const Variant& v) { return Variant(convertValues().VariantToString(v)); }

}  // namespace

bool ArrayConversions::StringToVariantVector(Variant& rLines, Variant vFromLine, Variant vSeparator,
                                             Variant vCompare) const {
    if (!fx().FixUpVariantToStringFn(vFromLine)) return false;
    fx().FixUpVariantToStringSub(vSeparator, Variant(kCrLf));
    if (!vSeparator.isString() || vSeparator.asString().empty()) return false;
    fx().FixUpVariantCompare(vCompare);
    std::vector<String> parts = splitParts(vFromLine.asString(), vSeparator.asString(), vCompare.asLong());
    Variant out = Variant::array(vbVariant, {ArrayBound{0, int32_t(parts.size()) - 1}});
    auto o = out.arrayForWrite().elements();
    for (size_t i = 0; i < parts.size(); ++i) o[i] = Variant(std::move(parts[i]));
    rLines = std::move(out);
    return true;
}

bool ArrayConversions::StringToVariantMatrix(Variant& rTo, Variant vFm, Variant vColumnSeparator,
                                             Variant vRowSeparator, Variant vCompare) const {
    if (!fx().FixUpVariantToStringFn(vFm)) return false;
    fx().FixUpVariantToStringSub(vColumnSeparator, Variant(u","));
    fx().FixUpVariantToStringSub(vRowSeparator, Variant(kCrLf));
    if (!vColumnSeparator.isString() || !vRowSeparator.isString() || vColumnSeparator.asString().empty() ||
        vRowSeparator.asString().empty())
        return false;
    fx().FixUpVariantCompare(vCompare);
    const int32_t compare = vCompare.asLong();
    std::vector<std::vector<String>> rows;
    size_t columns = 1;
    for (const String& line : splitParts(vFm.asString(), vRowSeparator.asString(), compare)) {
        rows.push_back(splitParts(line, vColumnSeparator.asString(), compare));
        columns = std::max(columns, rows.back().size());
    }
    Variant out = shapes::newMatrix(int32_t(columns), int32_t(rows.size()));
    SafeArray& m = out.arrayForWrite();
    for (size_t r = 0; r < rows.size(); ++r)
        for (size_t c = 0; c < rows[r].size(); ++c)
            shapes::cell(m, int32_t(c) + 1, int32_t(r) + 1) = Variant(std::move(rows[r][c]));
    rTo = std::move(out);
    return true;
}

String ArrayConversions::VariantVectorToString(const Variant& vLines, Variant vColumnSeparator) const {
    if (!isVector(vLines) || !fx().FixUpVariantToStringFn(vColumnSeparator)) return String();
    const SafeArray& a = vLines.asArray();
    const int32_t first = std::max(1, a.lbound());
    String out;
    for (int32_t i = first; i <= a.ubound(); ++i) {
        if (i > first) out += vColumnSeparator.asString();
        out += convertValues().VariantToString(a.at(i));
    }
    return out;
}

String ArrayConversions::VariantMatrixToString(const Variant& vLines, Variant vColumnSeparator,
                                               Variant vRowSeparator) const {
    if (!isMatrix(vLines) || !fx().FixUpVariantToStringFn(vColumnSeparator) ||
        !fx().FixUpVariantToStringFn(vRowSeparator))
        return String();
    const SafeArray& m = vLines.asArray();
    const int32_t c0 = std::max(1, m.lbound(1)), r0 = std::max(1, m.lbound(2));
    String out;
    for (int32_t r = r0; r <= m.ubound(2); ++r) {
        if (r > r0) out += vRowSeparator.asString();
        for (int32_t c = c0; c <= m.ubound(1); ++c) {
            if (c > c0) out += vColumnSeparator.asString();
            out += convertValues().VariantToString(shapes::cell(m, c, r));
        }
    }
    return out;
}

bool ArrayConversions::StringVectorToVariantVector(Variant& rTo, const Variant& vFm) const {
    return convertElements(rTo, vFm, 1, vbVariant, asVariant);
}
bool ArrayConversions::VariantVectorToStringVector(Variant& rTo, const Variant& vFm) const {
    return convertElements(rTo, vFm, 1, vbString, asString);
}
bool ArrayConversions::StringMatrixToVariantMatrix(Variant& rTo, const Variant& vFm) const {
    return convertElements(rTo, vFm, 2, vbVariant, asVariant);
}
bool ArrayConversions::VariantMatrixToStringMatrix(Variant& rTo, const Variant& vFm) const {
    return convertElements(rTo, vFm, 2, vbString, asString);
}

namespace {

// The line of a matrix through `fixed` of dimension `fixedDim` (0 for a
// column, 1 for a row), walked along the other dimension.
struct MatrixLine {
    int fixedDim;
    int32_t fixed;
    int32_t column(int32_t i) const { return fixedDim == 0 ? fixed : i; }
    int32_t row(int32_t i) const { return fixedDim == 0 ? i : fixed; }
};

bool lineToVector(Variant& rTo, const Variant& vFm, Variant& vNumber, int fixedDim) {
    if (!isMatrix(vFm) || !fx().FixUpVariantToLongMandFn(vNumber)) return false;
    const SafeArray& m = vFm.asArray();
    const MatrixLine line{fixedDim, vNumber.asLong()};
    if (!within(m.bounds()[size_t(fixedDim)], line.fixed)) return false;
    const ArrayBound along = m.bounds()[size_t(1 - fixedDim)];
    Variant out = Variant::array(vFm.elementType(), {along});
    auto o = out.arrayForWrite().elements();
    for (int32_t i = along.lower; i <= along.upper; ++i)
        o[size_t(i - along.lower)] = shapes::cell(m, line.column(i), line.row(i));
    rTo = std::move(out);
    return true;
}

bool vectorToLine(Variant& rTo, const Variant& vFm, Variant& vNumber, int fixedDim) {
    if (!isMatrix(rTo) || !isVector(vFm) || !fx().FixUpVariantToLongMandFn(vNumber)) return false;
    const MatrixLine line{fixedDim, vNumber.asLong()};
    if (!within(rTo.asArray().bounds()[size_t(fixedDim)], line.fixed)) return false;
    const ArrayBound along = rTo.asArray().bounds()[size_t(1 - fixedDim)];
    const SafeArray& v = vFm.asArray();
    const int32_t low = std::max(along.lower, v.lbound()), high = std::min(along.upper, v.ubound());
    SafeArray& m = rTo.arrayForWrite();
    for (int32_t i = low; i <= high; ++i) {
        const int32_t at[2] = {line.column(i), line.row(i)};
        m.set(at, v.at(i));
    }
    return true;
}

}  // namespace

bool ArrayConversions::VariantMatrixColumnToVector(Variant& rTo, const Variant& vFm, Variant vColumnNumber) const {
    return lineToVector(rTo, vFm, vColumnNumber, 0);
}
bool ArrayConversions::VariantMatrixRowToVector(Variant& rTo, const Variant& vFm, Variant vRowNumber) const {
    return lineToVector(rTo, vFm, vRowNumber, 1);
}
bool ArrayConversions::VariantVectorToMatrixColumn(Variant& rTo, const Variant& vFm, Variant vColumnNumber) const {
    return vectorToLine(rTo, vFm, vColumnNumber, 0);
}
bool ArrayConversions::VariantVectorToMatrixRow(Variant& rTo, const Variant& vFm, Variant vRowNumber) const {
    return vectorToLine(rTo, vFm, vRowNumber, 1);
}

ArrayConversions& arrayConversions() noexcept { return globalInstance<ArrayConversions>(); }

// ---------------------------------------------------------------- type library

namespace {

using V = Variant;
ArrayConversions& ac(Call& c) { return c.self<ArrayConversions>(); }

#define QVT_AC(sig, call) {sig, [](Call& c) { return V(ac(c).call); }}

const ClassRegistration kArrayConversions(u"ArrayConversions", ClassKind::Global, globalFactory<ArrayConversions>,
    u"Text to arrays and back; copies between String and Variant arrays, rows and columns.", {
    QVT_AC("StringToVariantVector(ref rLines: array of Variant, vFromLine: Variant, [vSeparator: Variant], [vCompare: Variant]) -> Boolean",
           StringToVariantVector(c[0], c[1], c[2], c[3])),
    QVT_AC("StringToVariantMatrix(ref rTo: array of Variant, vFm: String, [vColumnSeparator: Variant], [vRowSeparator: Variant], [vCompare: Variant]) -> Boolean",
           StringToVariantMatrix(c[0], c[1], c[2], c[3], c[4])),
    QVT_AC("VariantVectorToString(ref vLines: array of Variant, vColumnSeparator: Variant) -> String",
           VariantVectorToString(c[0], c[1])),
    QVT_AC("VariantMatrixToString(ref vLines: array of Variant, vColumnSeparator: Variant, vRowSeparator: Variant) -> String",
           VariantMatrixToString(c[0], c[1], c[2])),
    QVT_AC("StringVectorToVariantVector(ref rTo: array of Variant, ref vFm: String()) -> Boolean",
           StringVectorToVariantVector(c[0], c[1])),
    QVT_AC("VariantVectorToStringVector(ref rTo: array of String, ref vFm: Variant()) -> Boolean",
           VariantVectorToStringVector(c[0], c[1])),
    QVT_AC("StringMatrixToVariantMatrix(ref rTo: array of Variant, ref vFm: String()) -> Boolean",
           StringMatrixToVariantMatrix(c[0], c[1])),
    QVT_AC("VariantMatrixToStringMatrix(ref rTo: array of String, ref vFm: Variant()) -> Boolean",
           VariantMatrixToStringMatrix(c[0], c[1])),
    QVT_AC("VariantMatrixColumnToVector(ref rTo: array of Variant, ref vFm: array of Variant, vColumnNumber: Variant) -> Boolean",
           VariantMatrixColumnToVector(c[0], c[1], c[2])),
    QVT_AC("VariantMatrixRowToVector(ref rTo: array of Variant, ref vFm: array of Variant, vRowNumber: Variant) -> Boolean",
           VariantMatrixRowToVector(c[0], c[1], c[2])),
    QVT_AC("VariantVectorToMatrixColumn(ref rTo: array of Variant, ref vFm: array of Variant, vColumnNumber: Variant) -> Boolean",
           VariantVectorToMatrixColumn(c[0], c[1], c[2])),
    QVT_AC("VariantVectorToMatrixRow(ref rTo: array of Variant, ref vFm: array of Variant, vRowNumber: Variant) -> Boolean",
           VariantVectorToMatrixRow(c[0], c[1], c[2])),
});

#undef QVT_AC

}  // namespace

}  // namespace qvt
