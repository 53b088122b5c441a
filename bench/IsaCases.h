#pragma once
// Every library case runs twice in one program: on the ISA the library
// chooses for this processor, and forced to SSE2, the x86-64 baseline, so
// the gain of the wider registers shows beside the same baseline. Each
// case's label names the ISA that ran.

#include <string>
#include <utility>

#include <benchmark/benchmark.h>

#include "RatioReporter.h"
#include "arrayops/simd/IsaChoice.h"

namespace bench {

template <class Body>
void RegisterOnIsas(const std::string& name, const std::string& baseline, benchmark::TimeUnit unit, Body body) {
    using qm::simd::Isa;
    const Isa best = qm::simd::ActiveIsa();
    auto on = [body](Isa isa) {
        return [body, isa](benchmark::State& state) {
            const Isa chosen = qm::simd::ActiveIsa();
            qm::simd::ForceIsa(isa);
            state.SetLabel(qm::simd::IsaName(isa));
            body(state);
            qm::simd::ForceIsa(chosen);
        };
    };
    benchmark::RegisterBenchmark(name.c_str(), on(best))->Unit(unit);
    SetBaseline(name, baseline);
    if (best == Isa::Sse2 || !qm::simd::IsaSupported(Isa::Sse2)) return;
    const std::string forced = name + "@SSE2";
    benchmark::RegisterBenchmark(forced.c_str(), on(Isa::Sse2))->Unit(unit);
    SetBaseline(forced, baseline);
}

}  // namespace bench
