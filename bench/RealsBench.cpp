// The remainder every numeric class uses, and the prime test built on it.
#include <benchmark/benchmark.h>

#include "numerics/MathArithmetic.h"
#include "numerics/MathReals.h"

using namespace qvt;

// Integer, Long and Double operands take the Double path.
static void BM_ModStdDoubles(benchmark::State& state) {
    const Variant x(-7.5), y(int16_t(3));
    for (auto _ : state) benchmark::DoNotOptimize(mathReals().ModStd(x, y));
}
BENCHMARK(BM_ModStdDoubles);

// Numeric text is fixed up to Double first.
static void BM_ModStdText(benchmark::State& state) {
    const Variant x(u"1234.5"), y(u"7");
    for (auto _ : state) benchmark::DoNotOptimize(mathReals().ModStd(x, y));
}
BENCHMARK(BM_ModStdText);

// Currency keeps Variant arithmetic and its promotions.
static void BM_ModStdCurrency(benchmark::State& state) {
    const Variant x = Variant::currency(123456789), y(int16_t(7));
    for (auto _ : state) benchmark::DoNotOptimize(mathReals().ModStd(x, y));
}
BENCHMARK(BM_ModStdCurrency);

// A prime costs a full scan of odd divisors up to its square root.
static void BM_IsPrime(benchmark::State& state) {
    const Variant n(int32_t(state.range(0)));
    for (auto _ : state) benchmark::DoNotOptimize(mathArithmetic().IsPrime(n));
}
BENCHMARK(BM_IsPrime)->Arg(97)->Arg(104729)->Arg(2147483647);

// Every odd number below 10,000.
static void BM_IsPrimeRange(benchmark::State& state) {
    for (auto _ : state)
        for (int32_t n = 1; n < 10000; n += 2) benchmark::DoNotOptimize(mathArithmetic().IsPrime(Variant(n)));
    state.SetItemsProcessed(state.iterations() * 5000);
}
BENCHMARK(BM_IsPrimeRange);
