#!/usr/bin/env bash
# Installs what is missing, builds, and opens the wizard. Without a display it walks the main job through the
# real window offscreen on the sample database and leaves a picture of every frame in bilder/.
set -euo pipefail
cd "$(dirname "$0")"

skripte/installieren.sh bauen
cmake --preset release -DLINDGARN_VORAB=ON -B build/lauf >/dev/null
cmake --build build/lauf

if [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
    exec build/lauf/bin/lindgarn
fi
echo "Keine Anzeige gefunden: der Assistent wird unsichtbar vorgeführt."
QT_QPA_PLATFORM=offscreen exec python3 skripte/vorfuehren.py --programm build/lauf/bin/lindgarn-fernsteuerung \
    --beispiel build/lauf/beispiele/adressen.mdb --bilder bilder
