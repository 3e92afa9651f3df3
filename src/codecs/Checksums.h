// Checksums: check values of text.
#pragma once
#include "frame/Variant.h"

namespace qvt {

class Checksums final : public Object {
public:
    std::u16string_view className() const noexcept override { return u"Checksums"; }

    // The sum of the ANSI codes of the text, modulo 256, as one character.
    Variant Checksum8(Variant vValue) const;
};

Checksums& checksums() noexcept;

}  // namespace qvt
