#!/usr/bin/env bash
# Runs the libFuzzer targets for some seconds each on their seeds, as many at once as there are cores:
# fuzzen.sh ORDNER SEKUNDEN [NAME...]. NAME without "fuzz_" chooses targets. What a target says lies in
# build/fuzz/NAME.txt and is shown when it failed; its input lies in build/funde/. Ends with the code of the last that
# failed.
set -euo pipefail
ordner=$1
sekunden=$2
shift 2
wurzel=$(cd "$(dirname "$0")/.." && pwd)
mkdir -p "$wurzel/build/funde" "$wurzel/build/fuzz"

eines() {
    local name=$1 keim
    local orte=("$wurzel/build/korpus/$name")
    mkdir -p "${orte[0]}"
    for keim in "$wurzel/tests/fuzz/keime/$name" "$ordner/keime_$name"; do
        [ -d "$keim" ] && orte+=("$keim")
    done
    exec "$ordner/$name" -max_total_time="$sekunden" -timeout=10 -rss_limit_mb=2048 -print_final_stats=1 -verbosity=0 \
        -artifact_prefix="$wurzel/build/funde/$name-" "${orte[@]}" >"$wurzel/build/fuzz/$name.txt" 2>&1
}

# Waits for one of those that run, tells how it ended, and remembers its code.
einsammeln() {
    local pid code=0
    wait -n -p pid "${!laufende[@]}" || code=$?
    local name=${laufende[$pid]}
    unset "laufende[$pid]"
    local bericht="$wurzel/build/fuzz/$name.txt"
    if [ "$code" = 0 ]; then
        echo "$name: $(sed -n 's/^stat::number_of_executed_units: *//p' "$bericht") Eingaben, nichts gefunden"
    else
        echo "$name: gescheitert ($code)"
        cat "$bericht"
        fehler=$code
    fi
}

declare -A laufende=()
trap 'kill "${!laufende[@]}" 2>/dev/null || true' EXIT
fehler=0
[ $# -gt 0 ] && ziele=("${@/#/fuzz_}") || ziele=()
if [ ${#ziele[@]} = 0 ]; then
    for ziel in "$ordner"/fuzz_*; do ziele+=("$(basename "$ziel")"); done
fi
echo "${#ziele[@]} Ziele, je $sekunden s, $(nproc) zugleich"
for name in "${ziele[@]}"; do
    [ "${#laufende[@]}" -lt "$(nproc)" ] || einsammeln
    eines "$name" &
    laufende[$!]=$name
done
while [ "${#laufende[@]}" -gt 0 ]; do einsammeln; done
exit "$fehler"
