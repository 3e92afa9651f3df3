// ArrayOthers: uniqueness and other whole-array questions.
#pragma once
#include "frame/Variant.h"

namespace qvt {

class ArrayOthers final : public Object {
public:
    std::u16string_view className() const noexcept override { return u"ArrayOthers"; }

    // Elements 1 to UBound of vFm without the ones equal to the element
    // before them (a repeat further on stays), at 1 to n of rTo; elements
    // below 1 are copied as they are. rTo and vFm may be one variable.
    bool UniqueVariantVector(Variant& rTo, const Variant& vFm, Variant vCompare = Variant::missing()) const;
};

ArrayOthers& arrayOthers() noexcept;

}  // namespace qvt
