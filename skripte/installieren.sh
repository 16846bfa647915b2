#!/usr/bin/env bash
# Installs the Debian packages that are missing: `installieren.sh bauen` for building and running the program,
# `installieren.sh pruefen` for the tests on top of it, `installieren.sh paket` for the Debian package,
# `installieren.sh stil` for the checks of style, `installieren.sh abdeckung` for measuring what the tests reach,
# `installieren.sh messen` for the benchmarks' peers.
set -euo pipefail

BAUEN=(g++ cmake ninja-build qt6-base-dev qt6-svg-dev libgl1-mesa-dev libsqlite3-dev libgsf-1-dev pkg-config
       qt6-translations-l10n libqt6svg6 fonts-liberation python3 mdbtools)
PRUEFEN=(libgtest-dev libgmock-dev clang-14 libclang-rt-14-dev cmark-gfm appstream
         desktop-file-utils python3-dbfread dbview shapelib python3-xlrd python3-xlwt
         gnumeric libreoffice-calc-nogui libreoffice-base-drivers)
MESSEN=(python3-levenshtein python3-xlwt python3-xlrd python3-dbfread dbview catdoc gnumeric mdbtools)
PAKET=(dpkg-dev cmark-gfm appstream desktop-file-utils man-db lintian devscripts debootstrap)
ABDECKUNG=(llvm-14)
STIL=(clang-format-14 clang-tidy-14 black shellcheck)

pakete=("${BAUEN[@]}")
[[ "${1:-bauen}" =~ ^(pruefen|abdeckung)$ ]] && pakete+=("${PRUEFEN[@]}")
[ "${1:-bauen}" = abdeckung ] && pakete+=("${ABDECKUNG[@]}")
[ "${1:-bauen}" = paket ] && pakete+=("${PAKET[@]}")
[ "${1:-bauen}" = messen ] && pakete+=("${MESSEN[@]}")
[ "${1:-bauen}" = stil ] && pakete=("${STIL[@]}")

fehlend=()
for paket in "${pakete[@]}"; do
    dpkg-query -W -f='${Status}' "$paket" 2>/dev/null | grep -q 'ok installed' || fehlend+=("$paket")
done
[ ${#fehlend[@]} -eq 0 ] && exit 0

echo "Installiere: ${fehlend[*]}"
als_root=()
[ "$(id -u)" -eq 0 ] || als_root=(sudo)
"${als_root[@]}" apt-get update -qq
"${als_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${fehlend[@]}"
