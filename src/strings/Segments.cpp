#include "strings/Segments.h"

#include <numeric>
#include <vector>

#include "frame/Strings.h"
#include "structures/ArrayManipulations.h"

namespace qvt::segments {

void shuffle(String& s, size_t width) {
    const size_t n = wholeCount(s, width);
    if (n < 2) return;
    for (size_t i = 0; i < n; ++i) {
        const auto j = static_cast<size_t>(arrayManipulations().RandomLongWithinRangeFast(0, static_cast<int32_t>(n - 1)));
        if (j != i) std::swap_ranges(s.begin() + i * width, s.begin() + (i + 1) * width, s.begin() + j * width);
    }
}

void sort(String& s, size_t width, size_t keyColumn, int32_t compare) {
    const size_t n = wholeCount(s, width);
    std::vector<size_t> order(n);
    std::iota(order.begin(), order.end(), size_t(0));
    const StringView all(s);
    auto key = [&](size_t i) { return at(all, width, i).substr(std::min(keyColumn, width)); };
    size_t h = 1;
    while (h <= n / 9) h = 3 * h + 1;
    for (; h > 0; h /= 3)
        for (size_t i = h; i < n; ++i) {
            const size_t v = order[i];
            size_t j = i;
            for (; j >= h && StrComp(key(order[j - h]), key(v), compare) > 0; j -= h) order[j] = order[j - h];
            order[j] = v;
        }
    String sorted;
    sorted.reserve(s.size());
    for (size_t i : order) sorted += at(all, width, i);
    sorted += all.substr(n * width);
    s = std::move(sorted);
}

namespace {

String padded(StringView find, size_t width) {
    String f(find);
    if (f.size() < width) f.append(width - f.size(), u' ');
    return f;
}

}  // namespace

int32_t search(StringView s, size_t width, StringView find, int32_t compare) {
    const String f = padded(find, width);
    for (size_t i = 0, n = count(s, width); i < n; ++i)
        if (StrComp(at(s, width, i), f, compare) == 0) return static_cast<int32_t>(i + 1);
    return 0;
}

int32_t searchSorted(StringView s, size_t width, StringView find, int32_t compare) {
    const String f = padded(find, width);
    size_t lo = 0, hi = count(s, width);
    while (lo < hi) {
        const size_t mid = lo + (hi - lo) / 2;
        const int c = StrComp(at(s, width, mid), f, compare);
        if (c == 0) return static_cast<int32_t>(mid + 1);
        if (c < 0) lo = mid + 1;
        else hi = mid;
    }
    return 0;
}

}  // namespace qvt::segments
