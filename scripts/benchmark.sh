#!/usr/bin/env bash
# benchmark.sh [--baseline COMMIT] [--docs]: builds preset release, runs the benchmark suite, and prints by how much
# each target is met or missed. --baseline also compares the library with that of COMMIT. --docs also draws the plots
# and updates docs/performance.md and README.md. On Debian 12 or 13, as root, it installs missing packages; elsewhere it
# lists them.
#
# Times are the thread's processor times, and the minimum of many short rounds in random order, so that other work on
# the machine has little effect. Exits with 0 if targets are missed, but not if a measurement fails.

source "$(dirname "${BASH_SOURCE[0]}")/lib/common.sh"

baseline="" docs=false
while (($#)); do
    case $1 in
        --baseline) baseline=$2 && shift ;;
        --docs) docs=true ;;
        *) sed -n '2,5s/^# //p' "$0" >&2 && exit 2 ;;
    esac
    shift
done

build=build/release
measurements=$build/measurements
suite=($build/benchmarks/gleigem_benchmarks --benchmark_min_time=0.01 --benchmark_enable_random_interleaving=true)

compared='^(find_.*/(gleigem|absl_maps)/depth:(1|4|16)/imports:(8|32|128|1024)/'
compared+='|parse.*/(gleigem|copied_texts)/arguments:100$|add_.*/(gleigem|by_hand)/entries:(15|1000)/)'

# build_baseline: builds the library of commit $baseline in a separate source tree; prints its file name.
build_baseline() {
    local source
    source=build/baseline/$(git rev-parse --short "$baseline^{commit}")
    mkdir -p "$source"
    git archive "$baseline" | tar -x -C "$source"
    cmake -S "$source" --preset release -DGLEIGEM_BUILD_BENCHMARKS=OFF -DGLEIGEM_BUILD_TESTS=OFF >/dev/null
    cmake --build "$source/build/release" --target gleigem >/dev/null
    realpath "$source/build/release/import/libgleigem.so"
}

# compare_with LIBRARY: runs the benchmarks of the targets that have a baseline, alternating between the current library
# and LIBRARY.
compare_with() {
    local round filter='^(clone/gleigem/entries:1000|enumerate_.*/gleigem/depth:16/.*)$'
    mkdir -p $measurements/baseline
    for round in {1..5}; do
        "${suite[@]}" --benchmark_filter="$filter" --benchmark_repetitions=5 \
            --benchmark_out=$measurements/baseline/now-"$round".json >/dev/null
        LD_PRELOAD=$1 "${suite[@]}" --benchmark_filter="$filter" --benchmark_repetitions=5 \
            --benchmark_out=$measurements/baseline/before-"$round".json >/dev/null
    done
}

require_packages "${benchmark_packages[@]}"

step "configuring preset release"
cmake --preset release -DGLEIGEM_BUILD_TESTS=ON -DGLEIGEM_BUILD_BENCHMARKS=ON >/dev/null

step "building the benchmarks"
cmake --build --preset release --target gleigem_benchmarks gleigem_instruction_count

rm -rf $measurements
mkdir -p $measurements

step "running the benchmarks: about ten minutes (load of the machine: $(cut -d ' ' -f 1-3 /proc/loadavg))"
"${suite[@]}" --benchmark_repetitions=7 --benchmark_out=$measurements/benchmarks.json >/dev/null

step "running the benchmarks again that are compared at every size and shape"
"${suite[@]}" --benchmark_repetitions=13 --benchmark_out=$measurements/again.json --benchmark_filter="$compared" >/dev/null

if [[ $baseline ]]; then
    step "building the library of $baseline"
    library=$(build_baseline)

    step "comparing with the library of $baseline"
    compare_with "$library"
fi

step "counting instructions for growing lists and colliding names"
scripts/count_instructions.py $build growth >$measurements/growth.json
scripts/count_instructions.py $build flood >$measurements/flood.json

step "measuring the size of the library and the cost of including it"
scripts/measure_build_costs.py $build >$measurements/build_costs.json

step "comparing with the targets"
scripts/benchmark_targets.py $measurements

if $docs; then
    step "drawing the plots and filling in the documents"
    scripts/plot_benchmarks.py $measurements docs/performance
    scripts/update_performance_pages.py $measurements docs/performance.md README.md
fi
