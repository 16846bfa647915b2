#!/usr/bin/env bash
# Installs what is missing, builds, and runs all tests: the plain program with those that run it as a whole, then
# every part under AddressSanitizer and UBSan, with some seconds of every fuzz target. `./test.sh schnell` runs
# all of them on the plain program instead.
set -euo pipefail
cd "$(dirname "$0")"

skripte/installieren.sh pruefen
export QT_QPA_PLATFORM=offscreen
fehler=0

bauen() {
    cmake --preset "$1" >/dev/null
    cmake --build --preset "$1"
}

# A failure is remembered, so that one run tells of all.
pruefen() {
    ctest --preset "$1" -j "$(nproc)" || fehler=$?
}

if [ "${1:-}" = schnell ]; then
    bauen dev
    pruefen dev
else
    bauen programm
    pruefen programm
    bauen asan
    skripte/fuzzen.sh build/asan/bin "${LINDGARN_FUZZ_SEKUNDEN:-10}" || fehler=$?
    pruefen asan
fi
exit "$fehler"
