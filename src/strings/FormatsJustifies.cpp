#include "strings/FormatsJustifies.h"

#include <algorithm>
#include <vector>

#include "automation/TypeLibrary.h"
#include "frame/FixUps.h"
#include "frame/Frame.h"
#include "strings/StringManipulations.h"

namespace qvt {

namespace {

// The first code of a group that the code string holds, else the default.
char16_t codeOf(StringView codes, StringView group, char16_t fallback) {
    const size_t at = codes.find_first_of(group);
    return at == StringView::npos ? fallback : codes[at];
}

// The fill string repeated and cut to n characters (blanks for an empty one).
String filler(int64_t n, StringView fill) { return repeatToLength(fill.empty() ? u" " : fill, n); }

// The words of a line spread to exactly `width` by widening the gaps; the
// places that do not divide evenly go to the leftmost gaps, or with the
// right bias to the rightmost. Fewer than two words are left-aligned.
String spread(StringView line, int32_t width, StringView fill, bool biasRight) {
    std::vector<StringView> words;
    size_t letters = 0;
    for (size_t i = 0; i < line.size();) {
        if (line[i] == u' ') {
            ++i;
            continue;
        }
        const size_t end = std::min(line.find(u' ', i), line.size());
        words.push_back(line.substr(i, end - i));
        letters += end - i;
        i = end;
    }
    if (words.size() < 2) {
        String one = words.empty() ? String() : String(words[0]);
        return one + filler(width - int64_t(one.size()), fill);
    }
    const int64_t gaps = int64_t(words.size()) - 1, blanks = std::max<int64_t>(width - int64_t(letters), gaps);
    const int64_t each = blanks / gaps, extra = blanks % gaps;
    String out(words[0]);
    for (int64_t g = 0; g < gaps; ++g) {
        const bool wider = biasRight ? g >= gaps - extra : g < extra;
        out.append(size_t(each + (wider ? 1 : 0)), u' ');
        out += words[size_t(g) + 1];
    }
    return out;
}

}  // namespace

String justifyLine(StringView line, int32_t width, StringView codes, StringView fill) {
    const char16_t align = codeOf(codes, u"<>^_.", u'<');
    if (align == u'.') return String(line);
    const int64_t length = int64_t(line.size()), room = std::max<int32_t>(width, 0);
    if (length > room) {
        switch (codeOf(codes, u"*!=", u'*')) {
            case u'!': return String(align == u'>' ? line.substr(line.size() - size_t(room)) : line.substr(0, size_t(room)));
            case u'=': return filler(room, fill);
            default: return String(line);
        }
    }
    if (codeOf(codes, u"~%", u'~') == u'%') return String(line);
    const bool biasRight = codeOf(codes, u"[]", u'[') == u']';
    const int64_t free = room - length;
    switch (align) {
        case u'>': return filler(free, fill) + String(line);
        case u'^': {
            const int64_t left = free / 2 + (biasRight ? free % 2 : 0);
            return filler(left, fill) + String(line) + filler(free - left, fill);
        }
        case u'_': return spread(line, width, fill, biasRight);
        default: return String(line) + filler(free, fill);
    }
}

Variant FormatsJustifies::JustifyText(Variant vValue, Variant vWidth, Variant vCodes, Variant vFillString) const {
    if (vValue.isNull()) return vValue;
    const FixUps& f = fixUps();
    return fixUpFrame(f.FixUpVariantToStringFn(vValue) && f.FixUpVariantToLongMandFn(vWidth), [&] {
        f.FixUpVariantToStringSub(vCodes, Variant(u"<"));
        f.FixUpVariantToStringSub(vFillString, Variant(u" "));
        const StringView codes = vCodes.isString() ? StringView(vCodes.asString()) : StringView(u"<");
        const StringView fill = vFillString.isString() ? StringView(vFillString.asString()) : StringView(u" ");
        return Variant(justifyLine(vValue.asString(), vWidth.asLong(), codes, fill));
    });
}

FormatsJustifies& formatsJustifies() noexcept { return globalInstance<FormatsJustifies>(); }

// ---------------------------------------------------------------- type library

namespace {

using V = Variant;

#define QVT_CODE(name) {"Property Get " #name " -> String", [](Call& c) { return V(c.self<FormatsJustifies>().name()); }}

const ClassRegistration kFormatsJustifies(u"FormatsJustifies", ClassKind::Global, globalFactory<FormatsJustifies>,
    u"Aligns, wraps and fills text in fixed widths.", {
    QVT_CODE(JustifyLeft),
    QVT_CODE(JustifyRight),
    QVT_CODE(JustifyCenter),
    QVT_CODE(JustifySpread),
    QVT_CODE(JustifyNone),
    QVT_CODE(JustifyFill),
    QVT_CODE(JustifyNoFill),
    QVT_CODE(JustifyTruncate),
    QVT_CODE(JustifyNoTruncate),
    QVT_CODE(JustifyBlank),
    QVT_CODE(JustifyBiasLeft),
    QVT_CODE(JustifyBiasRight),
    {"JustifyText(vValue: Variant, vWidth: Variant, [vCodes: Variant], [vFillString: Variant]) -> Variant",
     [](Call& c) { return c.self<FormatsJustifies>().JustifyText(c[0], c[1], c[2], c[3]); }},
});

#undef QVT_CODE

}  // namespace

}  // namespace qvt
