// Conversions of the value model: CBool ... CStr, IsNumeric, IsDate.
//
// Each conversion has a non-throwing core (to...) that reports the error
// number it would raise; the fix-ups test conversions through these, so a
// failed fix-up costs no exception. The Basic-named forms raise.
//   Null -> 94; Error values, Objects and arrays -> 13; text that does not
//   parse -> 13; out of the target's range -> 6. Non-integers round half to
//   even into Integer, Long, Byte and (at the fourth decimal) Currency.
#pragma once
#include "frame/Error.h"
#include "frame/Variant.h"

namespace qvt {

ErrNo toBoolean(const Variant& v, bool& out) noexcept;
ErrNo toByte(const Variant& v, uint8_t& out) noexcept;
ErrNo toInteger(const Variant& v, int16_t& out) noexcept;
ErrNo toLong(const Variant& v, int32_t& out) noexcept;
ErrNo toSingle(const Variant& v, float& out) noexcept;
ErrNo toDouble(const Variant& v, double& out) noexcept;
ErrNo toCurrency(const Variant& v, int64_t& out) noexcept;
ErrNo toDecimal(const Variant& v, Decimal& out) noexcept;
ErrNo toDate(const Variant& v, double& out) noexcept;
// CStr; appends nothing on failure.
ErrNo toText(const Variant& v, String& out);
// Converts to a scalar VarType (2..8, 11, 14, 17; 12 copies); other targets 13.
ErrNo convertTo(const Variant& v, VarType target, Variant& out);

bool CBool(const Variant& v);
uint8_t CByte(const Variant& v);
int16_t CInt(const Variant& v);
int32_t CLng(const Variant& v);
float CSng(const Variant& v);
double CDbl(const Variant& v);
Variant CCur(const Variant& v);   // a Currency Variant
Variant CDec(const Variant& v);   // a Decimal Variant
Variant CDate(const Variant& v);  // a Date Variant
String CStr(const Variant& v);
Variant CVErr(int32_t code) noexcept;

// Typed rounding used by the conversions and Variant arithmetic.
ErrNo doubleToLong(double d, int32_t& out) noexcept;     // half-even, 6 out of range
ErrNo doubleToInteger(double d, int16_t& out) noexcept;
ErrNo doubleToByte(double d, uint8_t& out) noexcept;
ErrNo doubleToCurrency(double d, int64_t& out) noexcept;
ErrNo doubleToSingle(double d, float& out) noexcept;     // 6 beyond the Single range
ErrNo checkDateRange(double d) noexcept;                 // 6 outside 1/1/100 .. 12/31/9999

bool IsNumeric(const Variant& v) noexcept;
bool IsDate(const Variant& v) noexcept;
inline bool IsNull(const Variant& v) noexcept { return v.isNull(); }
inline bool IsEmpty(const Variant& v) noexcept { return v.isEmpty(); }
inline bool IsMissing(const Variant& v) noexcept { return v.isMissing(); }
inline bool IsArray(const Variant& v) noexcept { return v.isArray(); }
inline bool IsObject(const Variant& v) noexcept { return v.isObject(); }
// VarType(v) is v.vt().
// The library's type names: "Integer", "String Array", ...
String typeNameOf(uint16_t varType);
// TypeName: the type name, or the class name of an object ("Nothing").
String TypeName(const Variant& v);

}  // namespace qvt
