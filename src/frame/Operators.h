// Variant arithmetic, concatenation, logic and comparison, with the
// promotion rules, Null propagation and floating traps of the value model:
// no infinity or NaN is ever produced (overflow and 0/0 raise 6, x/0 raises
// 11, a negative base with a fractional exponent raises 5).
#pragma once
#include "frame/Error.h"
#include "frame/Variant.h"

namespace qvt {

Variant opAdd(const Variant& a, const Variant& b);
Variant opSub(const Variant& a, const Variant& b);
Variant opMul(const Variant& a, const Variant& b);
Variant opDiv(const Variant& a, const Variant& b);
Variant opIntDiv(const Variant& a, const Variant& b);  // \ .
Variant opMod(const Variant& a, const Variant& b);
Variant opPow(const Variant& a, const Variant& b);
Variant opNeg(const Variant& a);
Variant opConcat(const Variant& a, const Variant& b);  // &
Variant opNot(const Variant& a);
Variant opAnd(const Variant& a, const Variant& b);
Variant opOr(const Variant& a, const Variant& b);
Variant opXor(const Variant& a, const Variant& b);
Variant opEqv(const Variant& a, const Variant& b);
Variant opImp(const Variant& a, const Variant& b);

// How a String meets a number in a comparison: as two Variants (a number is
// below any String), or with one side a literal / typed number (the String
// converts to a number, error 13 if it cannot).
enum class CompareSite { Variants, NumericLiteral };

// -1, 0 or 1; *isNull set (and 0 returned) when either side is Null.
// Arrays, Objects and Error values raise 13.
int compareVariants(const Variant& a, const Variant& b, CompareMode mode, bool* isNull,
                    CompareSite site = CompareSite::Variants);
enum class CompareOp { Eq, Ne, Lt, Le, Gt, Ge };
// A comparison operator's value: Boolean, or Null when either side is Null.
Variant opCompare(CompareOp op, const Variant& a, const Variant& b, CompareMode mode = vbBinaryCompare,
                  CompareSite site = CompareSite::Variants);

// Mathematics (Double precision, with the traps).
Variant Abs(const Variant& v);
Variant Sgn(const Variant& v);
Variant Int(const Variant& v);
Variant Fix(const Variant& v);
double Sqr(double x);
double Exp(double x);
double Log(double x);
double Sin(double x);
double Cos(double x);
double Tan(double x);
double Atn(double x);
Variant Round(const Variant& v, int32_t digits = 0);  // half-even at the digits asked

// Raises 6 or 11 if a floating result left the finite numbers.
double checkedDouble(double r);

}  // namespace qvt
