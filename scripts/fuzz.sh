#!/usr/bin/env bash
# fuzz.sh SECONDS [TARGET...]: runs each fuzz target for so many seconds, starting from the inputs in fuzz/corpus and
# those found by earlier runs, and prints the number of inputs tried and of edges covered. A finding is a failure; its
# input is kept.

source "$(dirname "${BASH_SOURCE[0]}")/lib/common.sh"

if [[ ! ${1-} =~ ^[1-9][0-9]*$ ]]; then
    echo 'usage: fuzz.sh SECONDS [TARGET...]' >&2
    exit 2
fi
seconds=$1
targets=("${@:2}")
((${#targets[@]})) || targets=(parser_fuzzer list_fuzzer text_fuzzer cost_fuzzer)

build=build/fuzz
findings=$build/findings

require_packages "${demo_packages[@]}" "${fuzz_packages[@]}"

step "configuring preset fuzz"
cmake --preset fuzz >/dev/null

step "building the fuzz targets"
cmake --build --preset fuzz --target fuzzers

# fuzz TARGET: prints one line, or the finding.
fuzz() {
    local target=$1 program=$build/fuzz/$1 found=$build/corpus/$1 log=$build/$1.log input
    mkdir -p "$found" "$findings"
    local options=(-max_total_time="$seconds" -max_len=512 -timeout=20 -rss_limit_mb=2048
        -artifact_prefix="$findings/$target-" -print_final_stats=1)
    if ! "$program" "${options[@]}" "$found" "fuzz/corpus/$target" &>"$log"; then
        grep -v '^#' "$log" | tail -n 60
        input=$(sed -n 's/.*Test unit written to //p' "$log")
        printf '\n%s has a finding. To reproduce it:\n\n    %s %s\n' "$target" "$program" "$input"
        return 1
    fi
    printf '%-14s %9d executions %6d of %6d edges\n' "$target" \
        "$(sed -n 's/^stat::number_of_executed_units: *//p' "$log")" \
        "$(sed -nE 's/.* cov: ([0-9]+) .*/\1/p' "$log" | tail -n 1)" \
        "$(sed -nE 's/^INFO: Loaded .*\(([0-9]+) inline.*/\1/p' "$log" | head -n 1)"
}

step "fuzzing all targets for $seconds s"
runs=()
for target in "${targets[@]}"; do
    fuzz "$target" &
    runs+=($!)
done
wait_for "${runs[@]}"
