// FixUps: the common argument conversions of every public member.
//
// A fix-up takes a Variant by reference and turns it, in place, into a value
// of the wanted type; when it cannot, it reports failure (the Fn forms return
// False and leave the argument as it was) or assigns a default (the Sub
// forms). The typed forms come in four: Mand (the argument ends up exactly
// of the type) or Maybe (a number already held in a type that can take the
// value keeps it; only Empty and numeric text become the type; a date stays
// or becomes a Date), each as Fn or Sub.
//
// These run on every argument of nearly every call, so a failed conversion
// never throws (the non-throwing conversion cores report it) and an argument
// that already has the target type is accepted inline, without a call.
#pragma once
#include <span>

#include "frame/Conversions.h"
#include "frame/Error.h"
#include "frame/Variant.h"

namespace qvt {

namespace fixup {

// The conversion of a Mand fix-up to scalar type t (one of the nine): the
// numeric path for a numeric value, the date path for a date; 13 otherwise,
// or the number of the error the conversion hit. `out` is set on success.
// CoerceMake's Make family raises exactly these.
ErrNo mandConvert(const Variant& v, enum VarType t, Variant& out) noexcept;

// Out-of-line bodies of the typed forms, for arguments not yet of type t.
bool mandFn(Variant& r, enum VarType t) noexcept;
bool maybeFn(Variant& r, enum VarType t) noexcept;
bool stringFn(Variant& r);
// CStr in place; false (r unchanged) when there is none.
bool textInPlace(Variant& r);

// Maybe keeps a held number when the target can take it without a range
// test: every number type fits a Double.
inline bool maybeKeeps(const Variant& r, enum VarType t) noexcept {
    return r.vt() == t || (t == vbDouble && r.isNumberType());
}

}  // namespace fixup

class FixUps final : public Object {
public:
    std::u16string_view className() const noexcept override { return u"FixUps"; }

#define QVT_TYPED_FIXUPS(T)                                                                     \
    bool FixUpVariantTo##T##MandFn(Variant& rArgument) const noexcept {                         \
        return rArgument.vt() == vb##T || fixup::mandFn(rArgument, vb##T);                      \
    }                                                                                           \
    void FixUpVariantTo##T##MandSub(Variant& rArgument, const Variant& vDefault) const noexcept { \
        if (!FixUpVariantTo##T##MandFn(rArgument)) rArgument = vDefault;                        \
    }                                                                                           \
    bool FixUpVariantTo##T##MaybeFn(Variant& rArgument) const noexcept {                        \
        return fixup::maybeKeeps(rArgument, vb##T) || fixup::maybeFn(rArgument, vb##T);         \
    }                                                                                           \
    void FixUpVariantTo##T##MaybeSub(Variant& rArgument, const Variant& vDefault) const noexcept { \
        if (!FixUpVariantTo##T##MaybeFn(rArgument)) rArgument = vDefault;                       \
    }
    QVT_TYPED_FIXUPS(Boolean)
    QVT_TYPED_FIXUPS(Byte)
    QVT_TYPED_FIXUPS(Currency)
    QVT_TYPED_FIXUPS(Date)
    QVT_TYPED_FIXUPS(Decimal)
    QVT_TYPED_FIXUPS(Double)
    QVT_TYPED_FIXUPS(Integer)
    QVT_TYPED_FIXUPS(Long)
    QVT_TYPED_FIXUPS(Single)
#undef QVT_TYPED_FIXUPS

    // Null and Error values (Missing among them) fail; a String stays;
    // anything else becomes its CStr (an array fails).
    bool FixUpVariantToStringFn(Variant& rArgument) const {
        return rArgument.isString() || fixup::stringFn(rArgument);
    }
    // Missing and Null take vDefault; other Error values become their text.
    void FixUpVariantToStringSub(Variant& rArgument, const Variant& vDefault) const;
    // The String fix-up applied in place to each element of a Variant vector,
    // stopping at the first failure; Error values become their text.
    bool FixUpVariantToStringFnRecursive(Variant& rArgument) const;

    // The compare argument as a Long: CLng of a number, 0 for anything else.
    // Raises 6 beyond the Long range.
    void FixUpVariantCompare(Variant& rCompare) const;
    // Default walk of an array: lower bound 1 (not LBound), upper bound
    // UBound of the dimension. Raises 9 or 13 as UBound does.
    bool FixUpVariantBounds(const Variant& vArray, Variant& rLowerBound, Variant& rUpperBound,
                            Variant vDimension) const;
    // Clamps by Variant comparison; Null stays Null.
    void FixUpVariantToRange(Variant& rValue, const Variant& vMin, const Variant& VMAX) const;
    Variant ArgumentsToVariant(std::span<const Variant> vArgs) const;
    Variant FixUpToType(const Variant& vValue, Variant vVarType) const;
    bool ComplexStringToReals(Variant& rReal, Variant& rImag, const Variant& vValue,
                              Variant vSupportStringDates) const;
    bool FractionalToReal(Variant& rReal, Variant vSupportStringDates) const;
};

// The shared instance (the one the type library hands to clients).
FixUps& fixUps() noexcept;

}  // namespace qvt
