// FormatsJustifies: aligning a line in a fixed width by one-letter codes.
//
// A code string may hold one code of each group; where a group's codes stand
// more than once, the first one counts:
//   alignment  "<" left (default), ">" right, "^" centre, "_" spread the
//              words, "." leave the line alone
//   filling    "~" pad with the fill string (default), "%" no padding
//   oversize   "*" keep a line longer than the width (default), "!" cut it
//              (a right-aligned line keeps its right end), "=" replace it
//              by the fill string repeated to the width
//   bias       "[" an odd free place of a centred line goes right, so the
//              text leans left (default); "]" the other way
#pragma once
#include "frame/Variant.h"

namespace qvt {

class FormatsJustifies final : public Object {
public:
    std::u16string_view className() const noexcept override { return u"FormatsJustifies"; }

    String JustifyLeft() const { return u"<"; }
    String JustifyRight() const { return u">"; }
    String JustifyCenter() const { return u"^"; }
    String JustifySpread() const { return u"_"; }
    String JustifyNone() const { return u"."; }
    String JustifyFill() const { return u"~"; }
    String JustifyNoFill() const { return u"%"; }
    String JustifyTruncate() const { return u"!"; }
    String JustifyNoTruncate() const { return u"*"; }
    String JustifyBlank() const { return u"="; }
    String JustifyBiasLeft() const { return u"["; }
    String JustifyBiasRight() const { return u"]"; }

    // vValue aligned in vWidth characters by vCodes (default left), padded
    // with vFillString (default a blank). Null stays Null; a value or width
    // that cannot be fixed up gives Null.
    Variant JustifyText(Variant vValue, Variant vWidth, Variant vCodes = Variant::missing(),
                        Variant vFillString = Variant::missing()) const;
};

FormatsJustifies& formatsJustifies() noexcept;

// The typed core of JustifyText, for callers that already hold the text.
String justifyLine(StringView line, int32_t width, StringView codes, StringView fill);

}  // namespace qvt
