// Quoting of text, the cores of StringManipulations.QuoteString and
// DoubleQuoteString (kept here so that the value renderers of ConvertValues
// can use them before that class exists).
#pragma once
#include "frame/Variant.h"

namespace qvt {

// The quote, the text with every unit equal to the whole quote written
// twice, the quote. A quote of more than one unit is never doubled; an empty
// one leaves the text as it is.
String quoteString(StringView value, StringView quote);
// The text in double quotes, inner double quotes doubled.
String doubleQuoteString(StringView value);

}  // namespace qvt
