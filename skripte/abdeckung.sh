#!/usr/bin/env bash
# Measures what the tests reach: builds with Clang's counters, runs all tests (or those of `ctest` options that are passed
# on, such as -R search), and prints a table of the folders of src/. The page of each file, line by line, is in
# build/abdeckung/seiten/ afterwards. LINDGARN_ABDECKUNGSBAU names another folder for the build.
set -euo pipefail
cd "$(dirname "$0")/.."

skripte/installieren.sh abdeckung
bau=${LINDGARN_ABDECKUNGSBAU:-$PWD/build/abdeckung}
kerne=$(nproc)
export QT_QPA_PLATFORM=offscreen
# A few files that all processes add to; one for each process would fill the disk.
export LLVM_PROFILE_FILE="$bau/zaehler/%4m.profraw"

cmake --preset abdeckung -B "$bau" >/dev/null
cmake --build "$bau"
rm -rf "$bau/zaehler"
ctest --test-dir "$bau" -j "$kerne" --output-on-failure "$@"

llvm-profdata-14 merge --sparse "$bau"/zaehler/*.profraw -o "$bau/zaehler.profdata"
programme=()
for datei in "$bau"/bin/*; do
    # Python's standard libraries have no counters, nor have the help and the handbook.
    [ -x "$datei" ] && [ ! -d "$datei" ] && programme+=(-object "$datei")
done
llvm-cov-14 show "${programme[@]:1}" --instr-profile="$bau/zaehler.profdata" --format=html \
    --output-dir="$bau/seiten" "$PWD/src" >/dev/null
llvm-cov-14 export "${programme[@]:1}" --instr-profile="$bau/zaehler.profdata" --summary-only "$PWD/src" \
    >"$bau/abdeckung.json"
python3 skripte/abdeckungstafel.py "$bau/abdeckung.json" "$PWD/src"
