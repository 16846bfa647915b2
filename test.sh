#!/usr/bin/env bash
# Installs what is missing, builds, and runs all tests: first the fuzz corpora and the tests under AddressSanitizer
# and UBSan, then the whole suite. `./test.sh schnell` leaves out the first two.
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
    bauen fuzz
    skripte/fuzzen.sh build/fuzz/bin "${LINDGARN_FUZZ_SEKUNDEN:-10}"
    bauen asan
    ctest --preset asan -j "$kerne"
fi
bauen dev
ctest --preset dev -j "$kerne"
