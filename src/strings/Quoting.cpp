#include "strings/Quoting.h"

namespace qvt {

String quoteString(StringView value, StringView quote) {
    String out;
    out.reserve(value.size() + 2 * quote.size() + 2);
    out.append(quote);
    for (char16_t c : value) {
        out.push_back(c);
        if (quote.size() == 1 && c == quote[0]) out.push_back(c);
    }
    out.append(quote);
    return out;
}

String doubleQuoteString(StringView value) { return quoteString(value, u"\""); }

}  // namespace qvt
