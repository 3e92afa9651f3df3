#include "structures/ArrayOthers.h"

#include <algorithm>

#include "automation/TypeLibrary.h"
#include "frame/Comparisons.h"
#include "frame/FixUps.h"
#include "frame/Frame.h"

namespace qvt {

bool ArrayOthers::UniqueVariantVector(Variant& rTo, const Variant& vFm, Variant vCompare) const {
    if (!vFm.isArray() || !vFm.asArray().allocated() || vFm.asArray().dimensions() != 1) return false;
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

ArrayOthers& arrayOthers() noexcept { return globalInstance<ArrayOthers>(); }

// ---------------------------------------------------------------- type library

namespace {

using V = Variant;

const ClassRegistration kArrayOthers(u"ArrayOthers", ClassKind::Global, globalFactory<ArrayOthers>, {
    {"UniqueVariantVector(ref rTo: array of Variant, ref vFm: array of Variant, [vCompare: Variant]) -> Boolean",
     [](Call& c) { return V(c.self<ArrayOthers>().UniqueVariantVector(c[0], c[1], c[2])); }},
});

}  // namespace

}  // namespace qvt
