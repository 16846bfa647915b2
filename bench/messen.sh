#!/usr/bin/env bash
# Measures the whole road, the file formats, the comparing of records, and the tools beside them; raw results into
# bench/ergebnisse/.
#   bench/messen.sh [sizes] [thresholds]     defaults "10000 100000 1000000" and "0.73 0.62 0.5"
# NUR=strasse, dateien or vergleich measures that part alone.
# LINDGARN_BAUORT names the build folder (default build-bench, made as a release build).
set -euo pipefail
hier=$(cd "$(dirname "$0")" && pwd)
bauort=${LINDGARN_BAUORT:-$hier/../build-bench}
groessen=${1:-10000 100000 1000000}
schwellen=${2:-0.73 0.62 0.5}
ziel=$hier/ergebnisse

"$hier/../skripte/installieren.sh" messen
[ -f "$bauort/build.ninja" ] || cmake -G Ninja -S "$hier/.." -B "$bauort" -DCMAKE_BUILD_TYPE=Release \
    -DLINDGARN_TESTS=OFF >/dev/null
ninja -C "$bauort" bench_strasse bench_dateien bench_vergleich >/dev/null
nur() { [ -z "${NUR:-}" ] || [ "$NUR" = "$1" ]; }

# The real program on an .mdb, at the default tolerance and the next lower one; on the middle size also addresses that
# all occur twice, and the other operations.
strasse_messen() {
    local programm=$bauort/bin/bench_strasse ordner saetze toleranz vorgang
    ordner=$(mktemp -d)
    : >"$ziel/strasse.jsonl"
    for saetze in $groessen; do
        "$programm" anlegen "$ordner/vorlage.mdb" "$saetze" 2>/dev/null
        for toleranz in 1 2; do
            cp "$ordner/vorlage.mdb" "$ordner/lauf.mdb"
            "$programm" dubletten "$ordner/lauf.mdb" $toleranz 2>/dev/null | tee -a "$ziel/strasse.jsonl"
        done
        [ "$saetze" = 100000 ] || continue
        "$programm" verdoppeln "$ordner/lauf.mdb" 200000 2>/dev/null
        "$programm" dubletten "$ordner/lauf.mdb" 2 2>/dev/null | tee -a "$ziel/strasse.jsonl"
        for vorgang in muell splitten verschmelzen abgleich; do
            cp "$ordner/vorlage.mdb" "$ordner/lauf.mdb"
            "$programm" $vorgang "$ordner/lauf.mdb" 2>/dev/null | tee -a "$ziel/strasse.jsonl"
        done
    done
    rm -rf "$ordner"
}
nur strasse && strasse_messen
nur dateien && "$bauort/bin/bench_dateien" | tee "$ziel/dateien.jsonl"
nur vergleich || exit 0
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
