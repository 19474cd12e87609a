#!/usr/bin/env bash
# Builds Kelvane optimised in build/package and makes its Debian package there
# with CPack, then prints the package's path. Install it with
#
#   sudo apt install ./build/package/kelvane_<version>_<architecture>.deb
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-deps.sh
cmake -S . -B build/package -G Ninja -DCMAKE_BUILD_TYPE=Release -DKELVANE_BUILD_TESTS=OFF
# The package holds these two programs only.
cmake --build build/package -j "$(nproc)" --target kelvane kelvane-cal
(cd build/package && cpack -G DEB)

version="$(sed -n 's/^CMAKE_PROJECT_VERSION:STATIC=//p' build/package/CMakeCache.txt)"
package="build/package/kelvane_${version}_$(dpkg --print-architecture).deb"
if [[ ! -f "$package" ]]; then
    echo "CPack made no $package" >&2
    exit 1
fi
echo "The package is $package"
