// Timings of the string operations the library leans on hardest.
#include <benchmark/benchmark.h>

#include "frame/Strings.h"

namespace {

using namespace qvt;

// A long line of mixed-case words, with the needle only at the very end.
String longLine(size_t n, bool needle = true) {
    String s;
    s.reserve(n + 8);
    const char16_t words[] = u"Lorem ipsum DOLOR sit Amet ";
    while (s.size() < n) s.append(words, sizeof(words) / sizeof(words[0]) - 1);
    s.resize(n);
    if (needle) s += u"Needle";
    return s;
}

// range(1) is the compare mode; the text needle differs in case from the line.
void BM_InStr(benchmark::State& state) {
    const String s = longLine(static_cast<size_t>(state.range(0)));
    const int32_t compare = static_cast<int32_t>(state.range(1));
    const StringView needle = compare == vbBinaryCompare ? u"Needle" : u"nEEDLE";
    for (auto _ : state) benchmark::DoNotOptimize(InStr(1, s, needle, compare));
    state.SetBytesProcessed(int64_t(state.iterations()) * state.range(0) * 2);
}
BENCHMARK(BM_InStr)->Args({1 << 16, vbBinaryCompare})->Args({1 << 16, vbTextCompare});

// The needle at the very start: the backward scan crosses the whole line.
void BM_InStrRevText(benchmark::State& state) {
    String s = longLine(static_cast<size_t>(state.range(0)), false);
    s.insert(0, u"needle");
    for (auto _ : state) benchmark::DoNotOptimize(InStrRev(s, u"NEEDLE", -1, vbTextCompare));
    state.SetBytesProcessed(int64_t(state.iterations()) * state.range(0) * 2);
}
BENCHMARK(BM_InStrRevText)->Arg(1 << 16);

void BM_Replace(benchmark::State& state) {
    const String s = longLine(static_cast<size_t>(state.range(0)));
    for (auto _ : state) benchmark::DoNotOptimize(Replace(s, u"sit", u"stand", 1, -1, static_cast<int32_t>(state.range(1))));
    state.SetBytesProcessed(int64_t(state.iterations()) * state.range(0) * 2);
}
BENCHMARK(BM_Replace)->Args({1 << 16, vbBinaryCompare})->Args({1 << 16, vbTextCompare});

void BM_StrCompText(benchmark::State& state) {
    const String a = longLine(256), b = UCase(a);
    for (auto _ : state) benchmark::DoNotOptimize(StrComp(a, b, vbTextCompare));
}
BENCHMARK(BM_StrCompText);

// Typical library patterns against a short field, and a star-heavy one
// against a long line (the case that explodes in a backtracking matcher).
void BM_LikeShort(benchmark::State& state) {
    const String s = u"Invoice-2024-00017.txt";
    for (auto _ : state) benchmark::DoNotOptimize(Like(s, u"[A-Z]*-####-#####.txt", vbTextCompare));
}
BENCHMARK(BM_LikeShort);

void BM_LikeStars(benchmark::State& state) {
    const String s(static_cast<size_t>(state.range(0)), u'a');
    for (auto _ : state) benchmark::DoNotOptimize(Like(s, u"*a*a*a*a*a*b"));
}
BENCHMARK(BM_LikeStars)->Arg(1 << 12);

void BM_UCase(benchmark::State& state) {
    const String s = longLine(static_cast<size_t>(state.range(0)));
    for (auto _ : state) benchmark::DoNotOptimize(UCase(s));
    state.SetBytesProcessed(int64_t(state.iterations()) * state.range(0) * 2);
}
BENCHMARK(BM_UCase)->Arg(1 << 16);

void BM_StrConvPack(benchmark::State& state) {
    const String s = longLine(static_cast<size_t>(state.range(0)));
    for (auto _ : state) benchmark::DoNotOptimize(StrConv(StrConv(s, 128), 64));
    state.SetBytesProcessed(int64_t(state.iterations()) * state.range(0) * 2);
}
BENCHMARK(BM_StrConvPack)->Arg(1 << 16);

}  // namespace
