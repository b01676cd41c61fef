// SPDX-License-Identifier: BSL-1.0
#pragma once

/// \file
/// What every benchmark reports, and the end of a run that would time wrong results.

#include <support/allocations.hpp>

#include <benchmark/benchmark.h>

#include <cstddef>
#include <functional>
#include <string>

namespace benchmarks {

/// Ends the program with \p what on standard error, unless it holds.
void require(bool holds, std::string const& what);

/// Adds a benchmark to the suite.
benchmark::internal::Benchmark* add(std::string const& name,
                                    std::function<void(benchmark::State&)> const& run);

/// Counts the allocations of a benchmark's loop beside its time. To be made right before the loop.
class Measurement {
  public:
    explicit Measurement(benchmark::State& itsState)
        : state(itsState), start(support::countAllocations()) {}

    /// Leaves time and allocations out of account until resume().
    void pause() {
        state.PauseTiming();
        counted += support::countAllocations() - start;
    }

    void resume() {
        start = support::countAllocations();
        state.ResumeTiming();
    }

    /// Reports time and allocations per item. To be called right after the loop.
    void report(std::size_t itemsPerIteration);

  private:
    benchmark::State& state;
    std::size_t start;
    std::size_t counted = 0;
};

} // namespace benchmarks
