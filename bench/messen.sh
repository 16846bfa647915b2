#!/usr/bin/env bash
# Measures the comparing of records and the tools beside it; raw results into bench/ergebnisse/.
#   bench/messen.sh [sizes] [thresholds]     defaults "10000 100000 1000000" and "0.73 0.62 0.5"
# LINDGARN_BAUORT names the build folder (default build-bench, made as a release build).
set -euo pipefail
hier=$(cd "$(dirname "$0")" && pwd)
bauort=${LINDGARN_BAUORT:-$hier/../build-bench}
groessen=${1:-10000 100000 1000000}
schwellen=${2:-0.73 0.62 0.5}
ziel=$hier/ergebnisse

"$hier/../skripte/installieren.sh" messen
[ -f "$bauort/build.ninja" ] || cmake -G Ninja -S "$hier/.." -B "$bauort" -DCMAKE_BUILD_TYPE=Release >/dev/null
ninja -C "$bauort" bench_vergleich >/dev/null
programm=$bauort/bin/bench_vergleich

vergleich=$ziel/vergleich.jsonl
: >"$vergleich"
for saetze in $groessen; do
    for schwelle in $schwellen; do
        for durchgang in gewoehnlich vorgabe; do
            "$programm" $durchgang "$saetze" "$schwelle" | tee -a "$vergleich"
        done
    done
done
# Several contacts of a firm kept apart, and firm and address alone.
for verglichen in kontakte anschrift; do
    for schwelle in 0.73 0.62; do
        for durchgang in gewoehnlich vorgabe; do
            "$programm" $durchgang 100000 "$schwelle" $verglichen | tee -a "$vergleich"
        done
    done
done
# All records alike: every pair is found and told.
"$programm" gleich 20000 0.73 | tee -a "$vergleich"

"$hier/andere/messen.sh" "$programm" "$ziel/andere.jsonl"
