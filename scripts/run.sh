#!/usr/bin/env bash
# Builds Kelvane and starts it; arguments are passed on to the program.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-deps.sh
cmake -S . -B build/plain -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo
cmake --build build/plain --target kelvane
exec build/plain/src/kelvane "$@"
