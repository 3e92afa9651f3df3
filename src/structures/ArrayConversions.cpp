#include "structures/ArrayConversions.h"

#include "frame/Strings.h"

namespace qvt {

std::vector<String> splitParts(StringView line, StringView separator, int32_t compare) {
    std::vector<String> parts;
    if (separator.empty()) {
        parts.emplace_back(line);
        return parts;
    }
    size_t from = 0;  // 0-based start of the current part
    for (;;) {
        const int32_t at = from < line.size() ? InStr(int64_t(from) + 1, line, separator, compare) : 0;
        if (at == 0) break;
        parts.emplace_back(line.substr(from, size_t(at - 1) - from));
        from = size_t(at - 1) + separator.size();
    }
    parts.emplace_back(line.substr(std::min(from, line.size())));
    return parts;
}

Variant splitToOneBased(StringView line, StringView separator, int32_t compare) {
    std::vector<String> parts = splitParts(line, separator, compare);
    Variant v = Variant::array(vbVariant, {ArrayBound{0, int32_t(parts.size())}});
    SafeArray& a = v.arrayForWrite();
    for (size_t i = 0; i < parts.size(); ++i) a.at(int32_t(i) + 1) = Variant(std::move(parts[i]));
    return v;
}

}  // namespace qvt
