#!/usr/bin/env bash
# benchmark.sh [--docs]: builds preset release, runs the benchmark suite, and says of every target by how much
# it is met or missed. With --docs it also draws the plots and fills in docs/performance.md and README.md. On
# Debian 12, as root, it installs what is missing; elsewhere it says what is.
#
# Times are processor times and medians, so that other work on the machine does little harm; some it does.
# Exit status 0 when targets are missed, but not when a measurement is.

source "$(dirname "${BASH_SOURCE[0]}")/lib/common.sh"

build=build/release
results=$build/benchmarks.json
costs=$build/build_costs.json
growth=$build/growth.json

require_packages "${benchmark_packages[@]}"
[[ ${1-} != --docs ]] || require_packages "${plot_packages[@]}"

step "configuring preset release"
cmake --preset release -DGLEIGEM_BUILD_TESTS=ON -DGLEIGEM_BUILD_BENCHMARKS=ON >/dev/null

step "building the benchmarks"
cmake --build --preset release --target gleigem_benchmarks gleigem_instruction_count

step "running the benchmarks: some ten minutes (load of the machine: $(cut -d ' ' -f 1-3 /proc/loadavg))"
$build/benchmarks/gleigem_benchmarks --benchmark_repetitions=9 --benchmark_min_time=0.02 \
    --benchmark_enable_random_interleaving=true --benchmark_report_aggregates_only=true \
    --benchmark_out="$results" >/dev/null

step "counting how instructions grow with a list"
scripts/count_instructions.py $build growth >"$growth"

step "measuring the library's size and what including it costs"
scripts/measure_build_costs.py $build >"$costs"

step "comparing with the targets"
scripts/benchmark_targets.py "$results" "$growth" "$costs"

if [[ ${1-} == --docs ]]; then
    step "drawing the plots and filling in the documents"
    /usr/bin/python3 scripts/plot_benchmarks.py "$results" docs/performance
    scripts/update_performance_pages.py "$results" "$growth" "$costs" docs/performance.md README.md
fi
