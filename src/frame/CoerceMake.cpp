#include "frame/CoerceMake.h"

#include "automation/TypeLibrary.h"
#include <bit>
#include <cstring>

#include "frame/Conversions.h"
#include "frame/FixUps.h"
#include "frame/Frame.h"
#include "frame/Locale.h"
#include "frame/Strings.h"

namespace qvt {

namespace {

// The first n bytes of an image (StrConv to ANSI); missing bytes are 0.
template <class T>
T fromImage(StringView s) noexcept {
    unsigned char bytes[sizeof(T)] = {};
    for (size_t i = 0; i < sizeof(T) && i < s.size(); ++i) bytes[i] = unicodeToAnsi(s[i]);
    T value;
    std::memcpy(&value, bytes, sizeof(T));  // the target is little-endian, as the image is
    return value;
}

template <class T>
String toImage(T value) {
    unsigned char bytes[sizeof(T)];
    std::memcpy(bytes, &value, sizeof(T));
    String s(sizeof(T), u'\0');
    for (size_t i = 0; i < sizeof(T); ++i) s[i] = ansiToUnicode(bytes[i]);
    return s;
}

// The argument of the CoerceTo family: the text, or nothing for Null; a
// text shorter than the width raises 5.
bool imageArgument(Variant& vString, size_t width) {
    if (!fixUps().FixUpVariantToStringFn(vString)) return false;
    if (vString.asString().size() < width) raiseError(errInvalidCall);
    return true;
}

// The argument of the Make family: the value converted to t as a Mand fix-up
// converts it (6 of a value out of range is not caught); Null for Null and
// Empty-handed otherwise.
enum class MakeInput { Value, Null, Neither };
MakeInput makeArgument(const Variant& v, enum VarType t, Variant& out) {
    if (IsNumeric(v) || IsDate(v)) {
        check(fixup::mandConvert(v, t, out));
        return MakeInput::Value;
    }
    return v.isNull() ? MakeInput::Null : MakeInput::Neither;
}

template <class Image>
Variant make(const Variant& v, enum VarType t, Image image) {
    Variant x;
    switch (makeArgument(v, t, x)) {
        case MakeInput::Value: return Variant(image(x));
        case MakeInput::Null: return Variant::null();
        default: return Variant(String());
    }
}

}  // namespace

Variant CoerceMake::CoerceToBoolean(Variant vString) const {
    if (!imageArgument(vString, 2)) return Variant::null();
    return Variant(CoerceToBooleanFast(vString.asString()));
}
Variant CoerceMake::CoerceToByte(Variant vString) const {
    if (!imageArgument(vString, 1)) return Variant::null();
    return Variant(CoerceToByteFast(vString.asString()));
}
Variant CoerceMake::CoerceToCurrency(Variant vString) const {
    if (!imageArgument(vString, 8)) return Variant::null();
    return Variant::currency(CoerceToCurrencyFast(vString.asString()));
}
Variant CoerceMake::CoerceToDate(Variant vString) const {
    if (!imageArgument(vString, 8)) return Variant::null();
    return Variant::date(CoerceToDateFast(vString.asString()));
}
Variant CoerceMake::CoerceToDouble(Variant vString) const {
    if (!imageArgument(vString, 8)) return Variant::null();
    return Variant(CoerceToDoubleFast(vString.asString()));
}
Variant CoerceMake::CoerceToInteger(Variant vString) const {
    if (!imageArgument(vString, 2)) return Variant::null();
    return Variant(CoerceToIntegerFast(vString.asString()));
}
Variant CoerceMake::CoerceToLong(Variant vString) const {
    if (!imageArgument(vString, 4)) return Variant::null();
    return Variant(CoerceToLongFast(vString.asString()));
}
Variant CoerceMake::CoerceToSingle(Variant vString) const {
    if (!imageArgument(vString, 4)) return Variant::null();
    return Variant(CoerceToSingleFast(vString.asString()));
}

bool CoerceMake::CoerceToBooleanFast(StringView vString) const noexcept { return fromImage<int16_t>(vString) != 0; }
uint8_t CoerceMake::CoerceToByteFast(StringView vString) const { return uint8_t(Asc(vString)); }
int64_t CoerceMake::CoerceToCurrencyFast(StringView vString) const noexcept { return fromImage<int64_t>(vString); }
double CoerceMake::CoerceToDateFast(StringView vString) const noexcept { return fromImage<double>(vString); }
double CoerceMake::CoerceToDoubleFast(StringView vString) const noexcept { return fromImage<double>(vString); }
int16_t CoerceMake::CoerceToIntegerFast(StringView vString) const noexcept { return fromImage<int16_t>(vString); }
int32_t CoerceMake::CoerceToLongFast(StringView vString) const noexcept { return fromImage<int32_t>(vString); }
float CoerceMake::CoerceToSingleFast(StringView vString) const noexcept { return fromImage<float>(vString); }

Variant CoerceMake::CoerceToVarType(const Variant& vString, Variant vVarType) const {
    if (!fixUps().FixUpVariantToIntegerMandFn(vVarType)) return Variant::null();
    switch (vVarType.asInteger()) {
        case vbBoolean: return CoerceToBoolean(vString);
        case vbByte: return CoerceToByte(vString);
        case vbCurrency: return CoerceToCurrency(vString);
        case vbDate: return CoerceToDate(vString);
        case vbDouble: return CoerceToDouble(vString);
        case vbInteger: return CoerceToInteger(vString);
        case vbLong: return CoerceToLong(vString);
        case vbSingle: return CoerceToSingle(vString);
        case vbEmpty: return Variant();
        case vbString: return vString;
        default: return Variant::null();
    }
}

Variant CoerceMake::MakeBoolean(const Variant& vValue) const {
    return make(vValue, vbBoolean, [this](const Variant& x) { return MakeBooleanFast(x.asBoolean()); });
}
Variant CoerceMake::MakeByte(const Variant& vValue) const {
    return make(vValue, vbByte, [this](const Variant& x) { return MakeByteFast(x.asByte()); });
}
Variant CoerceMake::MakeCurrency(const Variant& vValue) const {
    return make(vValue, vbCurrency, [this](const Variant& x) { return MakeCurrencyFast(x.asCurrency()); });
}
Variant CoerceMake::MakeDate(const Variant& vValue) const {
    return make(vValue, vbDate, [this](const Variant& x) { return MakeDateFast(x.asDate()); });
}
Variant CoerceMake::MakeDouble(const Variant& vValue) const {
    return make(vValue, vbDouble, [this](const Variant& x) { return MakeDoubleFast(x.asDouble()); });
}
Variant CoerceMake::MakeInteger(const Variant& vValue) const {
    return make(vValue, vbInteger, [this](const Variant& x) { return MakeIntegerFast(x.asInteger()); });
}
Variant CoerceMake::MakeLong(const Variant& vValue) const {
    return make(vValue, vbLong, [](const Variant& x) { return toImage(x.asLong()); });
}
Variant CoerceMake::MakeSingle(const Variant& vValue) const {
    return make(vValue, vbSingle, [this](const Variant& x) { return MakeSingleFast(x.asSingle()); });
}

// True is -1: two bytes 255.
String CoerceMake::MakeBooleanFast(bool vValue) const { return toImage<int16_t>(vValue ? -1 : 0); }
String CoerceMake::MakeByteFast(uint8_t vValue) const { return toImage(vValue); }
String CoerceMake::MakeCurrencyFast(int64_t vcurValue) const { return toImage(vcurValue); }
String CoerceMake::MakeDateFast(double vValue) const { return toImage(vValue); }
String CoerceMake::MakeDoubleFast(double vValue) const { return toImage(vValue); }
String CoerceMake::MakeIntegerFast(int16_t vValue) const { return toImage(vValue); }
Variant CoerceMake::MakeLongFast(int32_t vValue) const { return Variant(toImage(vValue)); }
String CoerceMake::MakeSingleFast(float vValue) const { return toImage(vValue); }

String CoerceMake::MakeVarType(const Variant& vValue) const {
    switch (vValue.vt()) {
        case vbEmpty:
        case vbNull: return String();
        case vbInteger: return MakeIntegerFast(vValue.asInteger());
        case vbLong: return toImage(vValue.asLong());
        case vbSingle: return MakeSingleFast(vValue.asSingle());
        case vbDouble: return MakeDoubleFast(vValue.asDouble());
        case vbCurrency: return MakeCurrencyFast(vValue.asCurrency());
        case vbDate: return MakeDateFast(vValue.asDate());
        case vbBoolean: return MakeBooleanFast(vValue.asBoolean());
        case vbByte: return MakeByteFast(vValue.asByte());
        case vbString: return vValue.asString();
        default: return CStr(vValue);
    }
}

CoerceMake& coerceMake() noexcept { return globalInstance<CoerceMake>(); }

// ---------------------------------------------------------------- type library

namespace {

using V = Variant;
CoerceMake& cm(Call& c) { return c.self<CoerceMake>(); }

const ClassRegistration kCoerceMake(u"CoerceMake", ClassKind::Global, globalFactory<CoerceMake>,
    u"The memory image of a value as a short string, and back.", {
    {"CoerceToBoolean(vString: Variant) -> Variant", [](Call& c) { return cm(c).CoerceToBoolean(c[0]); }},
    {"CoerceToByte(vString: Variant) -> Variant", [](Call& c) { return cm(c).CoerceToByte(c[0]); }},
    {"CoerceToCurrency(vString: Variant) -> Variant", [](Call& c) { return cm(c).CoerceToCurrency(c[0]); }},
    {"CoerceToDate(vString: Variant) -> Variant", [](Call& c) { return cm(c).CoerceToDate(c[0]); }},
    {"CoerceToDouble(vString: Variant) -> Variant", [](Call& c) { return cm(c).CoerceToDouble(c[0]); }},
    {"CoerceToInteger(vString: Variant) -> Variant", [](Call& c) { return cm(c).CoerceToInteger(c[0]); }},
    {"CoerceToLong(vString: Variant) -> Variant", [](Call& c) { return cm(c).CoerceToLong(c[0]); }},
    {"CoerceToSingle(vString: Variant) -> Variant", [](Call& c) { return cm(c).CoerceToSingle(c[0]); }},
    {"CoerceToBooleanFast(vString: String) -> Boolean", [](Call& c) { return V(cm(c).CoerceToBooleanFast(c[0].asString())); }},
    {"CoerceToByteFast(vString: String) -> Byte", [](Call& c) { return V(cm(c).CoerceToByteFast(c[0].asString())); }},
    {"CoerceToCurrencyFast(vString: String) -> Currency", [](Call& c) { return V::currency(cm(c).CoerceToCurrencyFast(c[0].asString())); }},
    {"CoerceToDateFast(vString: String) -> Date", [](Call& c) { return V::date(cm(c).CoerceToDateFast(c[0].asString())); }},
    {"CoerceToDoubleFast(vString: String) -> Double", [](Call& c) { return V(cm(c).CoerceToDoubleFast(c[0].asString())); }},
    {"CoerceToIntegerFast(vString: String) -> Integer", [](Call& c) { return V(cm(c).CoerceToIntegerFast(c[0].asString())); }},
    {"CoerceToLongFast(vString: String) -> Long", [](Call& c) { return V(cm(c).CoerceToLongFast(c[0].asString())); }},
    {"CoerceToSingleFast(vString: String) -> Single", [](Call& c) { return V(cm(c).CoerceToSingleFast(c[0].asString())); }},
    {"CoerceToVarType(vString: Variant, vVarType: Variant) -> Variant", [](Call& c) { return cm(c).CoerceToVarType(c[0], c[1]); }},
    {"MakeBoolean(vValue: Variant) -> Variant", [](Call& c) { return cm(c).MakeBoolean(c[0]); }},
    {"MakeByte(vValue: Variant) -> Variant", [](Call& c) { return cm(c).MakeByte(c[0]); }},
    {"MakeCurrency(vValue: Variant) -> Variant", [](Call& c) { return cm(c).MakeCurrency(c[0]); }},
    {"MakeDate(vValue: Variant) -> Variant", [](Call& c) { return cm(c).MakeDate(c[0]); }},
    {"MakeDouble(vValue: Variant) -> Variant", [](Call& c) { return cm(c).MakeDouble(c[0]); }},
    {"MakeInteger(vValue: Variant) -> Variant", [](Call& c) { return cm(c).MakeInteger(c[0]); }},
    {"MakeLong(vValue: Variant) -> Variant", [](Call& c) { return cm(c).MakeLong(c[0]); }},
    {"MakeSingle(vValue: Variant) -> Variant", [](Call& c) { return cm(c).MakeSingle(c[0]); }},
    {"MakeBooleanFast(vValue: Boolean) -> String", [](Call& c) { return V(cm(c).MakeBooleanFast(c[0].asBoolean())); }},
    {"MakeByteFast(vValue: Byte) -> String", [](Call& c) { return V(cm(c).MakeByteFast(c[0].asByte())); }},
    {"MakeCurrencyFast(vcurValue: Currency) -> String", [](Call& c) { return V(cm(c).MakeCurrencyFast(c[0].asCurrency())); }},
    {"MakeDateFast(vValue: Date) -> String", [](Call& c) { return V(cm(c).MakeDateFast(c[0].asDate())); }},
    {"MakeDoubleFast(vValue: Double) -> String", [](Call& c) { return V(cm(c).MakeDoubleFast(c[0].asDouble())); }},
    {"MakeIntegerFast(vValue: Integer) -> String", [](Call& c) { return V(cm(c).MakeIntegerFast(c[0].asInteger())); }},
    {"MakeLongFast(vValue: Long) -> Variant", [](Call& c) { return cm(c).MakeLongFast(c[0].asLong()); }},
    {"MakeSingleFast(vValue: Single) -> String", [](Call& c) { return V(cm(c).MakeSingleFast(c[0].asSingle())); }},
    {"MakeVarType(vValue: Variant) -> String", [](Call& c) { return V(cm(c).MakeVarType(c[0])); }},
});

}  // namespace

}  // namespace qvt
