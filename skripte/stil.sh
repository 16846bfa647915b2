#!/usr/bin/env bash
# Checks how the sources are written and changes nothing: clang-format and black for the layout, shellcheck for the shell
# scripts, clang-tidy for what compiles and is suspicious all the same.
#
#   skripte/stil.sh                the files that differ from main, and new ones
#   skripte/stil.sh alle           every file
#   skripte/stil.sh alle format    layout and shell scripts alone (seconds; clang-tidy takes some for each file)
#   skripte/stil.sh alle tidy      clang-tidy alone
#
# clang-tidy needs a configured build: LINDGARN_BAU, or the first of build/asan, build/dev, build/lauf.
set -euo pipefail
cd "$(dirname "$0")/.."

skripte/installieren.sh stil
umfang=${1:-geaendert}
teil=${2:-beides}
funde=0

dateien() {
    if [ "$umfang" = alle ]; then
        git ls-files -- "$@"
    else
        { git diff --name-only --diff-filter=d "$(git merge-base main HEAD)" -- "$@"
          git ls-files --others --exclude-standard -- "$@"; } | sort -u
    fi
}

# pruefen NAME BEFEHL... : runs the command on each file of standard input and names the files that it rejects.
pruefen() {
    local name=$1 anzahl=0 schlecht=0 datei
    shift
    while IFS= read -r datei; do
        anzahl=$((anzahl + 1))
        if ! "$@" "$datei" >"$ausgabe" 2>&1; then
            schlecht=$((schlecht + 1))
            echo "$name: $datei"
            grep -E '(warning|error): ' "$ausgabe" | grep -v 'clang-format-violations' || true
        fi
    done
    printf '%s: %d Dateien, %d mit Funden\n' "$name" "$anzahl" "$schlecht"
    [ "$schlecht" -eq 0 ] || funde=1
}

bauordner() {
    local ordner
    for ordner in ${LINDGARN_BAU:-build/asan build/dev build/lauf}; do
        [ -f "$ordner/compile_commands.json" ] && echo "$ordner" && return
    done
    echo "stil.sh: kein Bau gefunden; zuerst cmake --preset dev" >&2
    return 1
}

ausgabe=$(mktemp)
trap 'rm -f "$ausgabe"' EXIT

if [ "$teil" != tidy ]; then
    pruefen clang-format clang-format-14 --dry-run -Werror < <(dateien '*.cpp' '*.h')
    pruefen black black --quiet --check < <(dateien '*.py')
    pruefen shellcheck shellcheck < <(dateien '*.sh' '.ci/run')
fi
if [ "$teil" != format ]; then
    bau=$(bauordner)
    # The build's own warnings are its compiler's; some of its options are not Clang's.
    pruefen clang-tidy clang-tidy-14 --quiet -p "$bau" --extra-arg=-Wno-unknown-warning-option --extra-arg=-Wno-error \
        < <(dateien '*.cpp' | while IFS= read -r datei; do
            grep -qF "\"$PWD/$datei\"" "$bau/compile_commands.json" && echo "$datei"; done)
fi
exit $funde
