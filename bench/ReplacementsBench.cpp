// Timings of the replacement members and the string hash.
#include <benchmark/benchmark.h>

#include "frame/Variant.h"
#include "strings/StringManipulations.h"
#include "strings/StringReplacements.h"

namespace {

using namespace qvt;

// About 10 MB of text: a 27-character sentence over and over, so the find
// string "sit" occurs once in every 27 characters (388,000 matches).
const String& tenMegabytes() {
    static const String text = [] {
        const StringView sentence = u"Lorem ipsum DOLOR sit Amet ";
        String s;
        s.reserve(10u << 20);
        while (s.size() + sentence.size() <= (10u << 20)) s.append(sentence);
        return s;
    }();
    return text;
}

// range(0) is the compare mode; the member takes Variants and fixes them up.
void BM_ReplaceString10MB(benchmark::State& state) {
    const Variant line(tenMegabytes()), find(u"sit"), with(u"stand"), compare(int32_t(state.range(0)));
    for (auto _ : state) benchmark::DoNotOptimize(stringReplacements().ReplaceString(line, find, with, compare));
    state.SetBytesProcessed(int64_t(state.iterations()) * int64_t(tenMegabytes().size()) * 2);
}
BENCHMARK(BM_ReplaceString10MB)->Arg(vbBinaryCompare)->Arg(vbTextCompare)->Unit(benchmark::kMillisecond);

void BM_ReplaceStringMultiple10MB(benchmark::State& state) {
    const Variant line(tenMegabytes()), pairs(u"sit,stand,Amet,friend,ipsum,sit"), separator(u",");
    for (auto _ : state)
        benchmark::DoNotOptimize(stringReplacements().ReplaceStringMultiple(line, pairs, separator));
    state.SetBytesProcessed(int64_t(state.iterations()) * int64_t(tenMegabytes().size()) * 2);
}
BENCHMARK(BM_ReplaceStringMultiple10MB)->Unit(benchmark::kMillisecond);

// range(0) is the symbol length; the prime keeps h * 91 inside a Long.
void BM_HashStringFast(benchmark::State& state) {
    const String symbol = tenMegabytes().substr(0, size_t(state.range(0)));
    for (auto _ : state) benchmark::DoNotOptimize(stringManipulations().HashStringFast(symbol, 1000003));
    state.SetBytesProcessed(int64_t(state.iterations()) * state.range(0) * 2);
}
BENCHMARK(BM_HashStringFast)->Arg(16)->Arg(1024);

}  // namespace
