#!/usr/bin/env bash
# Builds Kelvane and runs every test twice: once in an optimised build, once
# under AddressSanitizer and UndefinedBehaviorSanitizer. Warnings are errors in
# both builds; any failure or sanitizer report fails the run.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-deps.sh
jobs=$(nproc)
# Most of the run is compiling. A unity build compiles each target's sources in
# a few large units, so that Qt's and GoogleTest's headers are read a few times
# instead of once a file; lld links in a fraction of the time of ld.
build_options=(-G Ninja -DCMAKE_UNITY_BUILD=ON -DCMAKE_EXE_LINKER_FLAGS=-fuse-ld=lld)
# The CalDAV tests spend most of their time waiting for servers and time-outs,
# so CTest runs more shards at once than there are cores.
test_jobs=$((jobs * 3))

# Tests that skip themselves (a tool or a server missing here) pass; name them.
list_skipped() {
    local skipped
    [[ -f "$1/Testing/Temporary/LastTest.log" ]] || return 0
    skipped=$(sed -n 's/^\[  SKIPPED \] \([^ ]*\.[^ ]*\).*/\1/p' \
        "$1/Testing/Temporary/LastTest.log" | sort -u)
    if [[ -n "$skipped" ]]; then
        echo "Tests that skipped themselves in $1:"
        echo "$skipped" | sed 's/^/    /'
    fi
}

# Line tables (-g1) are all that test failures and sanitizer reports need, and
# fuller debug information makes the two builds a quarter slower.
echo "== Optimised build and tests"
cmake -S . -B build/plain "${build_options[@]}" -DCMAKE_BUILD_TYPE=RelWithDebInfo \
    -DCMAKE_CXX_FLAGS_RELWITHDEBINFO="-O2 -g1 -DNDEBUG"
cmake --build build/plain -j "$jobs"
ctest --test-dir build/plain --output-on-failure -j "$test_jobs"
list_skipped build/plain

echo "== Sanitized build and tests"
export ASAN_OPTIONS="detect_leaks=1:abort_on_error=1:strict_string_checks=1"
export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1"
export LSAN_OPTIONS="suppressions=$PWD/tests/lsan.supp:print_suppressions=0"
# clang compiles this build in half the time g++ takes, and its warnings come on
# top of g++'s in the optimised build.
cmake -S . -B build/sanitize "${build_options[@]}" -DCMAKE_CXX_COMPILER=clang++ \
    -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_FLAGS_DEBUG="-g1" -DKELVANE_SANITIZE=ON
cmake --build build/sanitize -j "$jobs"
ctest --test-dir build/sanitize --output-on-failure -j "$test_jobs"
list_skipped build/sanitize

echo "== Fuzzing the calendar file reader and the iCalendar import, 30 seconds each"
# libFuzzer comes with clang; the targets are built alone, optimised, with ASan
# and UBSan. This small build is not a unity build, so that every file of the
# calendar file library and the iCalendar layer is seen to compile on its own.
cmake -S . -B build/fuzz -G Ninja -DCMAKE_UNITY_BUILD=OFF -DCMAKE_EXE_LINKER_FLAGS=-fuse-ld=lld \
    -DCMAKE_CXX_COMPILER=clang++ -DCMAKE_BUILD_TYPE=RelWithDebInfo \
    -DKELVANE_FUZZ=ON -DKELVANE_BUILD_TESTS=OFF
cmake --build build/fuzz --target calendar_file_fuzzer ical_import_fuzzer -j "$jobs"
mkdir -p build/fuzz/corpus build/fuzz/ical_corpus
# New inputs go into the first folder; the seeds and the damaged files stay as they are.
build/fuzz/tests/fuzz/calendar_file_fuzzer -max_total_time=30 -timeout=10 \
    -rss_limit_mb=2048 -print_final_stats=1 \
    build/fuzz/corpus tests/fuzz/seeds tests/store/data/damaged
build/fuzz/tests/fuzz/ical_import_fuzzer -max_total_time=30 -timeout=10 \
    -rss_limit_mb=2048 -print_final_stats=1 \
    build/fuzz/ical_corpus tests/tools/kelvane_cal/fixtures/data
