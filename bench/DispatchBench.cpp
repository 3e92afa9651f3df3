// The cost of a call by name through the type library against the same
// call made directly.
#include <benchmark/benchmark.h>

#include "automation/TypeLibrary.h"
#include "frame/Strings.h"

namespace {

using namespace qvt;

const ClassInfo& runtime() { return *TypeLibrary::global().runtime(); }

void DirectLen(benchmark::State& state) {
    Variant s(u"measurement");
    for (auto _ : state) benchmark::DoNotOptimize(Len(s));
}
BENCHMARK(DirectLen);

void ByNameLen(benchmark::State& state) {
    const TypeLibrary& lib = TypeLibrary::global();
    Variant s(u"measurement");
    Argument args[1];
    for (auto _ : state) {
        args[0] = Argument::byVariable(s);
        benchmark::DoNotOptimize(lib.invoke(runtime(), u"len", args));
    }
}
BENCHMARK(ByNameLen);

void ResolvedLen(benchmark::State& state) {
    const TypeLibrary& lib = TypeLibrary::global();
    const MemberInfo& m = *runtime().find(u"Len")->get;
    Variant s(u"measurement");
    Argument args[1];
    for (auto _ : state) {
        args[0] = Argument::byVariable(s);
        benchmark::DoNotOptimize(lib.invoke(m, nullptr, args));
    }
}
BENCHMARK(ResolvedLen);

// Three arguments, two of them typed (converted at the boundary).
void DirectMid(benchmark::State& state) {
    Variant s(u"measurement"), start(int16_t(3)), length(int16_t(4));
    for (auto _ : state) benchmark::DoNotOptimize(Variant(Mid(s.asString(), start.asInteger(), length.asInteger())));
}
BENCHMARK(DirectMid);

void ByNameMid(benchmark::State& state) {
    const TypeLibrary& lib = TypeLibrary::global();
    Variant s(u"measurement"), start(int16_t(3)), length(int16_t(4));
    Argument args[3];
    for (auto _ : state) {
        args[0] = Argument::byVariable(s);
        args[1] = Argument::byVariable(start);
        args[2] = Argument::byVariable(length);
        benchmark::DoNotOptimize(lib.invoke(runtime(), u"Mid$", args));
    }
}
BENCHMARK(ByNameMid);

}  // namespace
