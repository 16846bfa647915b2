#!/usr/bin/env bash
# Installs the Debian packages that are missing: `installieren.sh bauen` for building and running the program,
# `installieren.sh pruefen` for the tests on top of it, `installieren.sh paket` for the Debian package.
set -euo pipefail

BAUEN=(g++ cmake ninja-build qt6-base-dev libqt6svg6-dev libgl1-mesa-dev libsqlite3-dev qt6-translations-l10n
       libqt6svg6 fonts-liberation python3 mdbtools)
PRUEFEN=(libgtest-dev libgmock-dev libbenchmark-dev clang-14 libclang-rt-14-dev cmark-gfm)
PAKET=(dpkg-dev cmark-gfm appstream desktop-file-utils man-db lintian devscripts debootstrap)

pakete=("${BAUEN[@]}")
[ "${1:-bauen}" = pruefen ] && pakete+=("${PRUEFEN[@]}")
[ "${1:-bauen}" = paket ] && pakete+=("${PAKET[@]}")

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
