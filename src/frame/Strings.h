// String operations of the runtime. Strings are counted sequences of 16-bit
// units; positions are 1-based. The typed forms raise numbered errors
// (5 for a bad position or length); the Variant forms (the non-$ names of
// Basic) pass Null through, and their $ twins raise 94 on Null.
#pragma once
#include "frame/Error.h"
#include "frame/Variant.h"

namespace qvt {

int32_t Len(StringView s) noexcept;
Variant Len(const Variant& v);  // Null -> Null; a number: length of its String form

String Mid(StringView s, int64_t start);                  // error 5 if start < 1
String Mid(StringView s, int64_t start, int64_t length);  // error 5 if length < 0
String Left(StringView s, int64_t n);
String Right(StringView s, int64_t n);
// The Mid$ statement: overwrites in place from start with at most length
// units of replacement (all of it when length < 0); never changes the length.
void MidAssign(String& target, int64_t start, int64_t length, StringView replacement);
String LTrim(StringView s);
String RTrim(StringView s);
String Trim(StringView s);
String UCase(StringView s);
String LCase(StringView s);
String Space(int64_t n);
String StringOf(int64_t n, char16_t c);  // String$(n, c)
// String$ with the first unit of a String ("" raises 5), and with an ANSI
// character code (taken Mod 256 above 255; negative raises 5).
String StringOf(int64_t n, StringView c);
String StringOfCode(int64_t n, int64_t code);
// LSet of a fixed-length field: left-justify, pad with blanks, cut.
String LSet(StringView s, int32_t fieldLength);

// InStr / InStrRev: 1-based position or 0. start < 1 raises 5 (InStrRev
// takes start = -1 as "from the end").
int32_t InStr(int64_t start, StringView s, StringView find, int32_t compare = vbBinaryCompare);
int32_t InStrRev(StringView s, StringView find, int64_t start = -1, int32_t compare = vbBinaryCompare);
String Replace(StringView s, StringView find, StringView with, int64_t start = 1, int64_t count = -1,
               int32_t compare = vbBinaryCompare);
String StrReverse(StringView s);
// -1, 0 or 1; a compare mode other than 0, 1, 2 raises 5.
int32_t StrComp(StringView a, StringView b, int32_t compare = vbBinaryCompare);
// The Like operator; text compare upper-cases both sides' letters.
bool Like(StringView s, StringView pattern, int32_t compare = vbBinaryCompare);

int32_t Asc(StringView s);  // ANSI code of the first unit; "" raises 5
String Chr(int64_t code);   // ANSI code 0..255, else 5
// AscW gives Basic's Integer: units above 32767 come back negative.
int32_t AscW(StringView s);
String ChrW(int64_t code);  // -32768..65535, negative values add 65536; else 5
// StrConv modes: 1 upper, 2 lower, 3 proper case, 64 vbUnicode, 128 vbFromUnicode.
String StrConv(StringView s, int32_t mode);

// Str$, Hex$, Oct$ of a number Variant (Null -> 94 for these $ forms).
String Str(const Variant& number);
String Hex(const Variant& number);
String Oct(const Variant& number);

}  // namespace qvt
