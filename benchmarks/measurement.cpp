// SPDX-License-Identifier: BSL-1.0
#include "measurement.hpp"

#include <cstdlib>
#include <iostream>

namespace benchmarks {

void require(bool holds, std::string const& what) {
    if (!holds) {
        std::cerr << "wrong result: " << what << '\n';
        std::exit(EXIT_FAILURE);
    }
}

benchmark::internal::Benchmark* add(std::string const& name,
                                    std::function<void(benchmark::State&)> const& run) {
    return benchmark::RegisterBenchmark(name.c_str(), run);
}

void Measurement::report(std::size_t itemsPerIteration) {
    using benchmark::Counter;
    auto const allocations = static_cast<double>(counted + support::countAllocations() - start);
    auto const items =
        static_cast<double>(state.iterations()) * static_cast<double>(itemsPerIteration);
    state.counters["time_per_item"] = Counter(items, Counter::kIsRate | Counter::kInvert);
    state.counters["allocations_per_item"] = Counter(allocations / items, Counter::kAvgThreads);
    state.counters["allocations_per_iteration"] =
        Counter(allocations / static_cast<double>(state.iterations()), Counter::kAvgThreads);
}

} // namespace benchmarks
