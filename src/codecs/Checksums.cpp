#include "codecs/Checksums.h"

#include "automation/TypeLibrary.h"
#include "frame/FixUps.h"
#include "frame/Frame.h"
#include "frame/Strings.h"

namespace qvt {

Variant Checksums::Checksum8(Variant vValue) const {
    return fixUpFrame(fixUps().FixUpVariantToStringFn(vValue), [&] {
        int32_t sum = 0;
        for (char16_t c : vValue.asString()) sum = (sum + (Asc(StringView(&c, 1)) & 255)) & 255;
        return Variant(Chr(sum));
    });
}

Checksums& checksums() noexcept { return globalInstance<Checksums>(); }

// ---------------------------------------------------------------- type library

namespace {

const ClassRegistration kChecksums(u"Checksums", ClassKind::Global, globalFactory<Checksums>,
    u"Check values of text.", {
    {"Checksum8(vValue: Variant) -> Variant", [](Call& c) { return c.self<Checksums>().Checksum8(c[0]); }},
});

}  // namespace

}  // namespace qvt
