// The token scanner over long texts, and the character-set and counting
// searches against the straightforward C++ loops they replace.
#include <benchmark/benchmark.h>

#include "strings/StringSearches.h"

namespace {

using namespace qvt;

constexpr size_t kMegabyte = size_t(1) << 20;  // characters, as a file of ANSI text

// Lines of 40 characters (39 and a line feed), as source files come.
const String& linesOfText(size_t megabytes) {
    static String text;
    const size_t n = megabytes * kMegabyte;
    if (text.size() != n) {
        text.clear();
        text.shrink_to_fit();
        text.reserve(n);
        const String line = u"    x = GetToken(rest, \",\") & suffix   \n";
        while (text.size() + line.size() <= n) text += line;
        text.resize(n, u' ');
    }
    return text;
}

// range(0): megabytes. One pass cutting every line off the text.
void BM_GetTokenBufferedFast(benchmark::State& state) {
    const String& text = linesOfText(size_t(state.range(0)));
    const StringSearches& searches = stringSearches();
    for (auto _ : state) {
        StringView rest = text;
        TokenBuffer buffer;
        size_t count = 0;
        while (buffer.more(rest)) {
            benchmark::DoNotOptimize(searches.GetTokenBufferedFast(rest, buffer, u"\n", vbBinaryCompare));
            ++count;
        }
        benchmark::DoNotOptimize(count);
    }
    state.SetBytesProcessed(int64_t(state.iterations()) * int64_t(text.size()));
}
BENCHMARK(BM_GetTokenBufferedFast)->Arg(1)->Arg(10)->Arg(100)->Unit(benchmark::kMillisecond);

// A 64K line with no character of the set until its last one.
String setLine() {
    String s(size_t(1) << 16, u'a');
    for (size_t i = 0; i < s.size(); i += 7) s[i] = u'b';
    s.back() = u';';
    return s;
}
const StringView kSet = u",;:|";

void BM_InStrCharacters(benchmark::State& state) {
    const Variant line(setLine()), set(kSet);
    const StringSearches& searches = stringSearches();
    for (auto _ : state) benchmark::DoNotOptimize(searches.InStrCharacters(Variant(int32_t(1)), line, set, Variant()));
    state.SetBytesProcessed(int64_t(state.iterations()) * int64_t(line.asString().size()) * 2);
}
BENCHMARK(BM_InStrCharacters);

void BM_InStrCharactersBinary(benchmark::State& state) {
    const Variant line(setLine()), set(kSet);
    const StringSearches& searches = stringSearches();
    for (auto _ : state) benchmark::DoNotOptimize(searches.InStrCharactersBinary(Variant(int32_t(1)), line, set));
    state.SetBytesProcessed(int64_t(state.iterations()) * int64_t(line.asString().size()) * 2);
}
BENCHMARK(BM_InStrCharactersBinary);

// The loop a C++ programmer would write: each character looked up in the set.
void BM_InStrCharactersPlainLoop(benchmark::State& state) {
    const String line = setLine(), chars(kSet);
    for (auto _ : state) {
        const StringView set = chars;
        benchmark::DoNotOptimize(set.data());
        size_t p = 0;
        for (size_t i = 0; i < line.size() && p == 0; ++i)
            if (set.find(line[i]) != StringView::npos) p = i + 1;
        benchmark::DoNotOptimize(p);
    }
    state.SetBytesProcessed(int64_t(state.iterations()) * int64_t(line.size()) * 2);
}
BENCHMARK(BM_InStrCharactersPlainLoop);

void BM_InStrCharactersFindFirstOf(benchmark::State& state) {
    const String line = setLine();
    for (auto _ : state) benchmark::DoNotOptimize(StringView(line).find_first_of(kSet));
    state.SetBytesProcessed(int64_t(state.iterations()) * int64_t(line.size()) * 2);
}
BENCHMARK(BM_InStrCharactersFindFirstOf);

// range(0): compare mode. 1 MB of text, counting a word that recurs.
void BM_CountStrings(benchmark::State& state) {
    const Variant line(linesOfText(1)), find(u"GETTOKEN"), compare(int32_t(state.range(0)));
    const Variant pattern = state.range(0) == vbBinaryCompare ? Variant(u"GetToken") : find;
    const StringSearches& searches = stringSearches();
    for (auto _ : state) benchmark::DoNotOptimize(searches.CountStrings(line, pattern, compare));
    state.SetBytesProcessed(int64_t(state.iterations()) * int64_t(line.asString().size()) * 2);
}
BENCHMARK(BM_CountStrings)->Arg(vbBinaryCompare)->Arg(vbTextCompare);

void BM_CountStringsPlainLoop(benchmark::State& state) {
    const StringView line = linesOfText(1), find = u"GetToken";
    for (auto _ : state) {
        size_t count = 0;
        for (size_t at = line.find(find); at != StringView::npos; at = line.find(find, at + find.size())) ++count;
        benchmark::DoNotOptimize(count);
    }
    state.SetBytesProcessed(int64_t(state.iterations()) * int64_t(line.size()) * 2);
}
BENCHMARK(BM_CountStringsPlainLoop);

}  // namespace
