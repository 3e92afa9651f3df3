// The fix-ups every call pays: FixUpVariantToStringFn and the Double forms,
// on each kind of input. Where the fix-up changes its argument, each
// iteration starts from a fresh copy of the input (a 16-byte copy, or a
// reference-count increment for a String), which the figures include.
#include <benchmark/benchmark.h>

#include "frame/FixUps.h"

using namespace qvt;

namespace {

enum Input { kRightType, kNumber, kNumericText, kEmpty, kNull, kMissing };

Variant input(Input kind, VarType target) {
    switch (kind) {
        case kRightType: return target == vbString ? Variant(u"already a string") : Variant(3.25);
        case kNumber: return Variant(int32_t(12345));
        case kNumericText: return Variant(u"3.25");
        case kEmpty: return Variant();
        case kNull: return Variant::null();
        default: return Variant::missing();
    }
}

template <class Fix>
void run(benchmark::State& state, VarType target, Fix fix) {
    const Variant source = input(Input(state.range(0)), target);
    const bool inPlace = state.range(0) == kRightType;  // nothing changes: no fresh copy needed
    Variant arg = source;
    for (auto _ : state) {
        if (!inPlace) arg = source;
        bool ok = fix(arg);
        benchmark::DoNotOptimize(ok);
        benchmark::DoNotOptimize(arg);
    }
}

void BM_StringFn(benchmark::State& state) {
    run(state, vbString, [](Variant& v) { return fixUps().FixUpVariantToStringFn(v); });
}
void BM_DoubleMandFn(benchmark::State& state) {
    run(state, vbDouble, [](Variant& v) { return fixUps().FixUpVariantToDoubleMandFn(v); });
}
void BM_DoubleMaybeFn(benchmark::State& state) {
    run(state, vbDouble, [](Variant& v) { return fixUps().FixUpVariantToDoubleMaybeFn(v); });
}
void BM_DoubleMandSub(benchmark::State& state) {
    static const Variant kDefault(0.0);
    run(state, vbDouble, [](Variant& v) {
        fixUps().FixUpVariantToDoubleMandSub(v, kDefault);
        return true;
    });
}

void inputs(benchmark::internal::Benchmark* b) {
    b->ArgName("input");
    for (int k = kRightType; k <= kMissing; ++k) b->Arg(k);
}

}  // namespace

// input: 0 already the target type, 1 a Long, 2 numeric text, 3 Empty,
// 4 Null (fails), 5 Missing (fails).
BENCHMARK(BM_StringFn)->Apply(inputs);
BENCHMARK(BM_DoubleMandFn)->Apply(inputs);
BENCHMARK(BM_DoubleMaybeFn)->Apply(inputs);
BENCHMARK(BM_DoubleMandSub)->Apply(inputs);
