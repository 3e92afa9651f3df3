// Classification over a long text: IsAlNum on every character of 1 MB,
// through the member (a Variant code per call, no allocation) and through
// the typed test the library's own loops use.
#include <benchmark/benchmark.h>

#include "strings/CharacterTypes.h"

namespace {

using namespace qvt;

String mixedText(size_t n) {
    String s;
    s.reserve(n);
    const char16_t sample[] = u"Caf\u00e9 au lait, 12 \u00e9clairs; NA\u00cfVE_42! ";
    while (s.size() < n) s.append(sample, std::size(sample) - 1);
    s.resize(n);
    return s;
}

constexpr size_t kMegabyte = size_t(1) << 20;

void BM_IsAlNumMember(benchmark::State& state) {
    const String s = mixedText(kMegabyte);
    const CharacterTypes& t = characterTypes();
    for (auto _ : state) {
        int32_t n = 0;
        for (char16_t c : s) n += t.IsAlNum(Variant(int32_t(unicodeToAnsi(c))));
        benchmark::DoNotOptimize(n);
    }
    state.SetItemsProcessed(int64_t(state.iterations()) * int64_t(s.size()));
}
BENCHMARK(BM_IsAlNumMember);

void BM_IsAlNumTyped(benchmark::State& state) {
    const String s = mixedText(kMegabyte);
    const CharacterTypes& t = characterTypes();
    for (auto _ : state) {
        int32_t n = 0;
        for (char16_t c : s) n += t.has(c, CharTypeAlNum);
        benchmark::DoNotOptimize(n);
    }
    state.SetItemsProcessed(int64_t(state.iterations()) * int64_t(s.size()));
}
BENCHMARK(BM_IsAlNumTyped);

}  // namespace
