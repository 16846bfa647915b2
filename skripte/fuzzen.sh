#!/usr/bin/env bash
# Runs every libFuzzer target for some seconds on its seed corpus: fuzzen.sh ORDNER SEKUNDEN.
# A finding ends the run and leaves its input in build/funde/.
set -euo pipefail
ordner=$1
sekunden=$2
wurzel=$(cd "$(dirname "$0")/.." && pwd)
mkdir -p "$wurzel/build/funde"
for ziel in "$ordner"/fuzz_*; do
    name=$(basename "$ziel")
    korpus="$wurzel/build/korpus/$name"
    mkdir -p "$korpus"
    keime=()
    for keim in "$wurzel/tests/fuzz/keime/$name" "$ordner/keime_$name"; do
        [ -d "$keim" ] && keime+=("$keim")
    done
    echo "== $name: $sekunden s"
    "$ziel" -max_total_time="$sekunden" -timeout=10 -rss_limit_mb=2048 -print_final_stats=0 -verbosity=0 \
        -artifact_prefix="$wurzel/build/funde/" "$korpus" ${keime[@]+"${keime[@]}"}
done
