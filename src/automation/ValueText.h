// How the script host shows values: the JSON form other programs read, and
// the text Basic's Print shows.
#pragma once
#include <string>

#include "frame/Error.h"
#include "frame/Variant.h"

namespace qvt {

// One JSON object for a value (see docs/script-host.md).
std::string toJson(const Variant& v);
// One JSON object for an error that escaped.
std::string errorToJson(const RuntimeError& e);
// Print's text of a value, UTF-8.
std::string toPrintText(const Variant& v);

// UTF-8 <-> 16-bit units. Bytes that are not UTF-8 become U+FFFD; a lone
// surrogate becomes U+FFFD on the way out.
String fromUtf8(std::string_view s);
std::string toUtf8(StringView s);

// Exact decimal text of a Currency count of ten-thousandths and of a Decimal.
std::string currencyText(int64_t tenThousandths);
std::string decimalText(const Decimal& d);

}  // namespace qvt
