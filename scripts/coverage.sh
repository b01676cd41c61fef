#!/usr/bin/env bash
# Runs the tests of the library under preset coverage and prints which lines and branches of import/ they reach.
# Branches that the compiler generates only for exceptions do not count. Exits with 1 if one is missed for no known
# reason. Random programs of lists are skipped: they take minutes and reach nothing else.

source "$(dirname "${BASH_SOURCE[0]}")/lib/common.sh"

build=build/coverage
tests=(gleigem_tests gleigem_internal_tests gleigem_list_property_tests gleigem_platform_question_tests
    gleigem_allocation_failure_tests)

require_packages "${test_packages[@]}"

step "configuring preset coverage"
cmake --preset coverage >/dev/null

step "building preset coverage"
find "$build" -name '*.gcda' -delete
cmake --build --preset coverage --target "${tests[@]}"

step "running the tests"
runs=()
for test in "${tests[@]}"; do
    "$(find "$build/tests" -name "$test" -type f)" --gtest_brief=1 --gtest_filter=-RandomLists.* &
    runs+=($!)
done
wait_for "${runs[@]}"

step "reading the coverage"
python3 scripts/coverage.py "$build"
