#!/usr/bin/env bash
# Builds the Debian package, lets Debian's checkers look at it, and walks it through a clean Debian 12: install, start,
# open the help, remove, nothing left behind. `pruefen.sh statisch` leaves the clean Debian out (that part needs root).
# The folder LINDGARN_PAKETBAU takes the build and the clean system; build/ where it is not set.
set -euo pipefail
cd "$(dirname "$0")/.."

skripte/installieren.sh paket
bau=${LINDGARN_PAKETBAU:-$PWD/build}/debian
rein=${LINDGARN_PAKETBAU:-$PWD/build}/debian-rein

ueberschrift() { printf '\n== %s\n' "$*"; }
scheitern() { printf 'FEHLER: %s\n' "$*" >&2; exit 1; }

bauen() {
    ueberschrift "Bauen"
    cmake --preset debian -B "$bau" >/dev/null
    cmake --build "$bau"
    rm -f "$bau"/*.deb
    (cd "$bau" && cpack --config CPackConfig.cmake)
    paket=$(echo "$bau"/lindgarn_*.deb)
    dpkg-deb --info "$paket"
    dpkg-deb --contents "$paket"
}

pruefer_fragen() {
    ueberschrift "Prüfprogramme"
    appstreamcli validate --no-net packaging/*.metainfo.xml
    desktop-file-validate packaging/lindgarn.desktop
    local seite klagen
    for seite in packaging/man/*.1; do
        klagen=$(LC_ALL=C.UTF-8 man --warnings -E UTF-8 -l -Tutf8 -Z "$seite" 2>&1 >/dev/null)
        [ -z "$klagen" ] || scheitern "$seite: $klagen"
    done
    # Stack protector, read-only relocations, immediate binding, position independence. The program calls next to no
    # function of the C library whose bounds the compiler could know, so that the compiler's switches tell of those;
    # Debian 12 does not build with control flow checks.
    python3 tests/struktur/haertung_pruefen.py "$bau/bin/lindgarn" "$bau"
    hardening-check --nofortify --nocfprotection "$bau/bin/lindgarn"
    # The tag left out asks for a bug in Debian's own archive, for which this package is not meant.
    lintian --allow-root --fail-on error,warning --suppress-tags initial-upload-closes-no-bugs "$paket"
}

reines_system() {
    ueberschrift "Ein reines Debian 12"
    [ "$(id -u)" -eq 0 ] || scheitern "das reine System braucht Rechte eines Verwalters"
    umount -q "$rein/proc" || true
    rm -rf --one-file-system "$rein"
    debootstrap --variant=minbase bookworm "$rein" >"$rein.log" || scheitern "debootstrap, siehe $rein.log"
    cp /etc/resolv.conf "$rein/etc/"
    trap 'umount -q "$rein/proc" || true' EXIT
    mount -t proc proc "$rein/proc"
    # What the package needs comes first, so that the list of files taken then shows what the package itself adds. The
    # desktop's caches are there as well, and the library of the remote control.
    drinnen apt-get -qq update
    drinnen apt-get -qq install -y --no-install-recommends \
        hicolor-icon-theme desktop-file-utils gtk-update-icon-cache libqt6test6 >/dev/null
    drinnen apt-get -qq satisfy -y --no-install-recommends "$(dpkg-deb --field "$paket" Depends)" >/dev/null
    drinnen useradd --create-home nutzer
}

drinnen() { chroot "$rein" env DEBIAN_FRONTEND=noninteractive LC_ALL=C.UTF-8 "$@"; }

# Every file and folder, with the kind, size and target; without logs and what the package manager keeps.
bestand() {
    (cd "$rein" && find . -xdev \( -path ./proc -o -path ./var/log -o -path ./var/cache -o -path ./var/lib/apt \
        -o -path ./var/lib/dpkg -o -path ./tmp -o -path ./home \) -prune -o -printf '%p %y %l\n' | sort)
}

installieren_und_entfernen() {
    ueberschrift "Installieren"
    bestand >"$rein.vorher"
    cp "$paket" "$rein/tmp/lindgarn.deb"
    drinnen dpkg -i /tmp/lindgarn.deb
    drinnen dpkg --verify lindgarn
    bestand | cmp -s - "$rein.vorher" && scheitern "der Bestand zeigt das installierte Paket nicht"

    ueberschrift "Starten"
    # The remote control drives the same program; it stands where the program stands, so that it finds the same files.
    cp "$bau/bin/lindgarn-fernsteuerung" "$rein/usr/bin/"
    cp "$bau/beispiele/adressen.mdb" "$rein/home/nutzer/"
    chown -R --reference="$rein/home/nutzer" "$rein/home/nutzer"
    python3 packaging/rundgang.py --wurzel "$rein" --bilder "$bau/rundgang"
    rm "$rein/usr/bin/lindgarn-fernsteuerung"

    ueberschrift "Entfernen"
    drinnen dpkg --purge lindgarn
    bestand >"$rein.nachher"
    diff "$rein.vorher" "$rein.nachher" || scheitern "das Paket lässt etwas zurück"
    echo "Nichts ist zurückgeblieben."
}

bauen
pruefer_fragen
[ "${1:-}" = statisch ] && exit 0
reines_system
installieren_und_entfernen
echo "Fertig: $paket"
