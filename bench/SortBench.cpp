// SortVariantVector on 1,000,000 random Doubles and on 1,000,000 short
// random Strings, against std::sort on the same Variants with the same
// comparison (CompareLikeDataTypeFast, binary compare). Each iteration sorts
// a fresh copy of the input; copying it (outside the timing) is a pass of
// 16-byte copies and reference-count increments.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <random>

#include "frame/Comparisons.h"
#include "structures/ArraySorts.h"

using namespace qvt;

namespace {

constexpr int32_t kCount = 1000000;

// Elements 1 to kCount; element 0 Empty.
Variant makeInput(bool strings) {
    std::mt19937 rng(12345);
    Variant v = Variant::array(vbVariant, {ArrayBound{0, kCount}});
    auto e = v.arrayForWrite().elements();
    for (size_t i = 1; i < e.size(); ++i) {
        if (strings) {
            String s(size_t(3 + rng() % 6), u'a');
            for (char16_t& c : s) c = char16_t(u'a' + rng() % 26);
            e[i] = Variant(std::move(s));
        } else {
            e[i] = Variant(double(rng()) / 4294967296.0 * 1e6);
        }
    }
    return v;
}

const Variant& input(bool strings) {
    static const Variant doubles = makeInput(false), texts = makeInput(true);
    return strings ? texts : doubles;
}

void BM_SortVariantVector(benchmark::State& state) {
    const bool strings = state.range(0) != 0;
    const Variant vStable(state.range(1) != 0);
    for (auto _ : state) {
        state.PauseTiming();
        Variant a = input(strings);
        a.arrayForWrite();  // the copy-on-write copy, outside the timing
        state.ResumeTiming();
        benchmark::DoNotOptimize(arraySorts().SortVariantVector(a, Variant(int32_t(0)), vStable));
    }
}

void BM_StdSort(benchmark::State& state) {
    const bool strings = state.range(0) != 0;
    for (auto _ : state) {
        state.PauseTiming();
        Variant a = input(strings);
        auto e = a.arrayForWrite().elements().subspan(1);
        state.ResumeTiming();
        std::sort(e.begin(), e.end(), [](const Variant& x, const Variant& y) {
            return comparisons().CompareLikeDataTypeFast(x, y, vbBinaryCompare) < 0;
        });
        benchmark::DoNotOptimize(e.data());
    }
}

}  // namespace

// Arguments: {Strings?, vStable?}. vStable False includes the shuffle.
BENCHMARK(BM_SortVariantVector)->ArgNames({"strings", "stable"})
    ->Args({0, 0})->Args({0, 1})->Args({1, 0})->Args({1, 1})->Unit(benchmark::kMillisecond);
BENCHMARK(BM_StdSort)->ArgNames({"strings"})->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
