#include "frame/GlobalConstants.h"

#include "automation/TypeLibrary.h"
#include "frame/Frame.h"

namespace qvt {

GlobalConstants& globalConstants() noexcept { return globalInstance<GlobalConstants>(); }

// ---------------------------------------------------------------- type library

namespace {

using G = GlobalConstants;
using V = Variant;

const ClassRegistration kGlobalConstants(u"GlobalConstants", ClassKind::Global, globalFactory<GlobalConstants>,
    u"Widths and limits of the value types.", {
    {"Property Get LengthBoolean -> Byte", [](Call&) { return V(G::LengthBoolean); }},
    {"Property Get LengthInteger -> Byte", [](Call&) { return V(G::LengthInteger); }},
    {"Property Get LengthByte -> Byte", [](Call&) { return V(G::LengthByte); }},
    {"Property Get LengthCurrency -> Byte", [](Call&) { return V(G::LengthCurrency); }},
    {"Property Get LengthDate -> Byte", [](Call&) { return V(G::LengthDate); }},
    {"Property Get LengthDouble -> Byte", [](Call&) { return V(G::LengthDouble); }},
    {"Property Get LengthDataObject -> Byte", [](Call&) { return V(G::LengthDataObject); }},
    {"Property Get LengthObject -> Byte", [](Call&) { return V(G::LengthObject); }},
    {"Property Get LengthLong -> Byte", [](Call&) { return V(G::LengthLong); }},
    {"Property Get LengthSingle -> Byte", [](Call&) { return V(G::LengthSingle); }},
    {"Property Get LengthDecimal -> Byte", [](Call&) { return V(G::LengthDecimal); }},
    {"Property Get MaxBoolean -> Boolean", [](Call&) { return V(G::MaxBoolean); }},
    {"Property Get MinBoolean -> Boolean", [](Call&) { return V(G::MinBoolean); }},
    {"Property Get MaxByte -> Byte", [](Call&) { return V(G::MaxByte); }},
    {"Property Get MinByte -> Byte", [](Call&) { return V(G::MinByte); }},
    {"Property Get MaxInteger -> Integer", [](Call&) { return V(G::MaxInteger); }},
    {"Property Get MinInteger -> Integer", [](Call&) { return V(G::MinInteger); }},
    {"Property Get MaxLong -> Long", [](Call&) { return V(G::MaxLong); }},
    {"Property Get MinLong -> Long", [](Call&) { return V(G::MinLong); }},
    {"Property Get MaxCurrency -> Currency", [](Call&) { return V::currency(G::MaxCurrency); }},
    {"Property Get MinCurrency -> Currency", [](Call&) { return V::currency(G::MinCurrency); }},
    {"Property Get MaxDate -> Date", [](Call&) { return V::date(G::MaxDate); }},
    {"Property Get MinDate -> Date", [](Call&) { return V::date(G::MinDate); }},
    {"Property Get MaxDouble -> Double", [](Call&) { return V(G::MaxDouble); }},
    {"Property Get MaxPositiveDouble -> Double", [](Call&) { return V(G::MaxPositiveDouble); }},
    {"Property Get MinDouble -> Double", [](Call&) { return V(G::MinDouble); }},
    {"Property Get MinNegativeDouble -> Double", [](Call&) { return V(G::MinNegativeDouble); }},
    {"Property Get MinPositiveDouble -> Double", [](Call&) { return V(G::MinPositiveDouble); }},
    {"Property Get MaxNegativeDouble -> Double", [](Call&) { return V(G::MaxNegativeDouble); }},
    {"Property Get MaxSingle -> Single", [](Call&) { return V(G::MaxSingle); }},
    {"Property Get MaxPositiveSingle -> Single", [](Call&) { return V(G::MaxPositiveSingle); }},
    {"Property Get MinSingle -> Single", [](Call&) { return V(G::MinSingle); }},
    {"Property Get MinNegativeSingle -> Single", [](Call&) { return V(G::MinNegativeSingle); }},
    {"Property Get MinPositiveSingle -> Single", [](Call&) { return V(G::MinPositiveSingle); }},
    {"Property Get MaxNegativeSingle -> Single", [](Call&) { return V(G::MaxNegativeSingle); }},
    {"Property Get MaxDecimal -> Variant", [](Call& c) { return c.self<G>().MaxDecimal(); }},
    {"Property Get MinDecimal -> Variant", [](Call& c) { return c.self<G>().MinDecimal(); }},
});

}  // namespace

}  // namespace qvt
