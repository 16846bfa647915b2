#!/usr/bin/env bash
# Installs what is missing, builds, and runs all tests: first under AddressSanitizer and UBSan, with some seconds
# of every fuzz target, then the plain build. `./test.sh schnell` runs the plain build alone.
set -euo pipefail
cd "$(dirname "$0")"

skripte/installieren.sh pruefen
kerne=$(nproc)
export QT_QPA_PLATFORM=offscreen

bauen() {
    cmake --preset "$1" >/dev/null
    cmake --build --preset "$1"
}

if [ "${1:-}" != schnell ]; then
    bauen asan
    skripte/fuzzen.sh build/asan/bin "${LINDGARN_FUZZ_SEKUNDEN:-10}"
    ctest --preset asan -j "$kerne"
fi
bauen dev
ctest --preset dev -j "$kerne"
