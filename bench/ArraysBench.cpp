// The array toolkit on inputs of library size: StringToVariantVector of a
// 10,000-part line, FormatVariantMatrix of a 4 x 1,000 table, and
// SetVariantVector growing a vector one element at a time to 1,000.
#include <benchmark/benchmark.h>

#include "structures/ArrayConversions.h"
#include "structures/ArrayManipulations.h"
#include "structures/ArrayOthers.h"

using namespace qvt;

namespace {

void BM_StringToVariantVector(benchmark::State& state) {
    String line;
    for (int i = 0; i < 10000; ++i) line += u"field" + String(1, char16_t(u'a' + i % 26)) + u",";
    const Variant text(line), separator(u",");
    for (auto _ : state) {
        Variant parts;
        arrayConversions().StringToVariantVector(parts, text, separator, Variant::missing());
        benchmark::DoNotOptimize(parts);
    }
}
BENCHMARK(BM_StringToVariantVector)->Unit(benchmark::kMicrosecond);

void BM_FormatVariantMatrix(benchmark::State& state) {
    Variant m = Variant::array(vbVariant, {ArrayBound{1, 4}, ArrayBound{1, 1000}});
    auto e = m.arrayForWrite().elements();
    for (size_t k = 0; k < e.size(); ++k) e[k] = k % 2 ? Variant(double(k) * 1.25) : Variant(u"name");
    const Variant codes(u"<>^>");
    for (auto _ : state) benchmark::DoNotOptimize(arrayOthers().FormatVariantMatrix(m, Variant::missing(), Variant::missing(), codes));
}
BENCHMARK(BM_FormatVariantMatrix)->Unit(benchmark::kMicrosecond);

void BM_SetVariantVectorGrowing(benchmark::State& state) {
    for (auto _ : state) {
        Variant v;
        for (int32_t i = 1; i <= 1000; ++i) arrayManipulations().SetVariantVector(v, Variant(i), Variant(i));
        benchmark::DoNotOptimize(v);
    }
}
BENCHMARK(BM_SetVariantVectorGrowing)->Unit(benchmark::kMicrosecond);

}  // namespace
