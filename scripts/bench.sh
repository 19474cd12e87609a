#!/usr/bin/env bash
# Builds the benchmarks optimised and runs each of them.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-deps.sh
cmake -S . -B build/bench -G Ninja -DCMAKE_BUILD_TYPE=Release \
    -DKELVANE_BUILD_TESTS=OFF -DKELVANE_BUILD_BENCHMARKS=ON
cmake --build build/bench -j "$(nproc)"
for benchmark in build/bench/bench/*_bench; do
    echo "== $benchmark"
    QT_QPA_PLATFORM=offscreen "$benchmark"
done
