// SPDX-License-Identifier: BSL-1.0

#include "subjects.hpp"

#include <benchmark/benchmark.h>

int main(int argc, char** argv) {
    benchmarks::registerParsing();
    benchmarks::registerAdding();
    benchmarks::registerLookup();
    benchmarks::registerEnumeration();
    benchmarks::registerLifetime();

    benchmark::AddCustomContext("compiler", GLEIGEM_COMPILER);
    benchmark::AddCustomContext("flags", GLEIGEM_COMPILER_FLAGS);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 1;
    }
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
}
