// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// The measurements of every benchmark, and a check that ends the program if results are wrong.

#include <support/allocations.hpp>

#include <benchmark/benchmark.h>

#include <cstddef>
#include <functional>
#include <string>

namespace benchmarks {

/// Ends the program with \p what on standard error unless \p holds is true.
void require(bool holds, std::string const& what);

/// Adds a benchmark to the suite.
benchmark::internal::Benchmark* add(std::string const& name,
                                    std::function<void(benchmark::State&)> const& run);

/// Counts the allocations of a benchmark's loop as well as its time. Create it right before the
/// loop.
class Measurement {
  public:
    explicit Measurement(benchmark::State& itsState)
        : state(itsState), start(support::countAllocations()) {}

    /// Excludes time and allocations until resume().
    void pause() {
        state.PauseTiming();
        counted += support::countAllocations() - start;
    }

    void resume() {
        start = support::countAllocations();
        state.ResumeTiming();
    }

    /// Reports time and allocations per item. Call it right after the loop.
    void report(std::size_t itemsPerIteration);

  private:
    benchmark::State& state;
    std::size_t start;
    std::size_t counted = 0;
};

} // namespace benchmarks
