// The value model's inner loops: copies, arithmetic, CStr and the parser.
#include <benchmark/benchmark.h>

#include <vector>

#include "frame/Conversions.h"
#include "frame/NumberParse.h"
#include "frame/Operators.h"

using namespace qvt;

static void BM_VariantCopyDouble(benchmark::State& state) {
    Variant v(3.25);
    for (auto _ : state) {
        Variant copy(v);
        benchmark::DoNotOptimize(copy);
    }
}
BENCHMARK(BM_VariantCopyDouble);

static void BM_VariantCopyString(benchmark::State& state) {
    Variant v(u"a string longer than the small-string buffer");
    for (auto _ : state) {
        Variant copy(v);
        benchmark::DoNotOptimize(copy);
    }
}
BENCHMARK(BM_VariantCopyString);

static void BM_VariantCopyVector1000(benchmark::State& state) {
    std::vector<Variant> items(1000, Variant(1.5));
    for (auto _ : state) {
        std::vector<Variant> copy(items);
        benchmark::DoNotOptimize(copy.data());
    }
    state.SetItemsProcessed(state.iterations() * 1000);
}
BENCHMARK(BM_VariantCopyVector1000);

static void addLoop(benchmark::State& state, const Variant& a, const Variant& b) {
    for (auto _ : state) {
        Variant r = opAdd(a, b);
        benchmark::DoNotOptimize(r);
    }
}

static void BM_AddDoubles(benchmark::State& state) { addLoop(state, Variant(1.5), Variant(2.25)); }
BENCHMARK(BM_AddDoubles);

static void BM_AddIntegers(benchmark::State& state) { addLoop(state, Variant(int16_t(12)), Variant(int16_t(30))); }
BENCHMARK(BM_AddIntegers);

static void BM_AddIntegerOverflowToLong(benchmark::State& state) {
    addLoop(state, Variant(int16_t(32767)), Variant(int16_t(1)));
}
BENCHMARK(BM_AddIntegerOverflowToLong);

static void BM_CStrDouble(benchmark::State& state) {
    Variant v(1234.56789012345);
    for (auto _ : state) {
        String s = CStr(v);
        benchmark::DoNotOptimize(s.data());
    }
}
BENCHMARK(BM_CStrDouble);

static void BM_ParseNumber(benchmark::State& state) {
    const std::u16string text = u" -1,234.5678E+2 ";
    for (auto _ : state) {
        double d;
        benchmark::DoNotOptimize(parseDouble(text, d));
        benchmark::DoNotOptimize(d);
    }
}
BENCHMARK(BM_ParseNumber);

static void BM_IsNumericRejects(benchmark::State& state) {
    Variant v(u"12 apples");
    for (auto _ : state) benchmark::DoNotOptimize(IsNumeric(v));
}
BENCHMARK(BM_IsNumericRejects);
