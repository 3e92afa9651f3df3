// How the script host shows values: the JSON form other programs read, and
// the text Basic's Print shows.
#pragma once
#include <string>

#include "frame/Error.h"
#include "frame/Utf8.h"
#include "frame/Variant.h"

namespace qvt {

// One JSON object for a value (see docs/script-host.md).
std::string toJson(const Variant& v);
// One JSON object for an error that escaped.
std::string errorToJson(const RuntimeError& e);
// Print's text of a value, UTF-8.
std::string toPrintText(const Variant& v);
// A text as a JSON string, quotes included.
std::string toJsonString(StringView s);

}  // namespace qvt
