#!/usr/bin/env bash
# What others take for the pairs of the same blocks: messen.sh BENCH_VERGLEICH RESULTS. A tool that is missing is
# left out and named on standard error. Its scores are its own; only the speed is compared.
set -euo pipefail
hier=$(cd "$(dirname "$0")" && pwd)
zeilen=$(mktemp --suffix=.csv)
trap 'rm -f "$zeilen"' EXIT
"$1" gewoehnlich 10000 csv >"$zeilen"
: >"$2"

# python3-levenshtein of Debian: Jaro-Winkler in C, called pair by pair.
if /usr/bin/python3 -c 'import Levenshtein' 2>/dev/null; then
    /usr/bin/python3 "$hier/levenshtein.py" "$zeilen" | tee -a "$2"
else
    echo "python3-levenshtein fehlt" >&2
fi

# DuckDB from npm: the blocks as a join, weighted Jaro-Winkler in SQL, on one thread.
if [ ! -d "$hier/node_modules/@duckdb" ]; then
    npm --prefix "$hier" install --silent --no-audit --no-fund >/dev/null 2>&1 || true
fi
if [ -d "$hier/node_modules/@duckdb" ]; then
    node "$hier/duckdb.mjs" "$zeilen" | tee -a "$2"
else
    echo "@duckdb/node-api fehlt" >&2
fi
