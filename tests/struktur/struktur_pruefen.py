#!/usr/bin/env python3
"""Checks the house's own rules on the sources: includes run downwards only, nothing starts another program, no name is
set into a text before another value is, and no test file is left out.

struktur_pruefen.py WURZEL BAUORDNER; prints each violation and ends with exit code 1 if there is one.
"""
import json
import pathlib
import re
import subprocess
import sys

# Lower number, lower floor. A file includes from its own folder or a lower floor.
STOCKWERK = {
    "base": 0,
    "engine": 1,
    "engine/datei": 2,
    "engine/sort": 2,
    "engine/excel": 3,
    "engine/jet": 3,
    "engine/dbase": 3,
    "engine/store": 3,
    "engine/dao": 4,
    "fields": 5,
    "run": 6,
    "data": 7,
    "search": 8,
    "junk": 8,
    "transform": 8,
    "tables": 9,
    "ui": 9,
    "programm": 10,
}
# A name may hold "%2" itself: all values go in at once.
EINSETZEN = re.compile(r"\.arg\((?:[^;]*[.>, ])?(?!k[A-Z])\w*(?i:name|text|tabelle|feld)\w*(?:\(\))?\)\s*\.arg\(")
INCLUDE = re.compile(r'^#include "([^"]+)"', re.M)
WIDGETS = re.compile(r"^#include <Q(Widget|Application|MainWindow|Dialog|Label|PushButton)\b", re.M)
# What would run a program, a library or a command; the desktop's own call for addresses has one place.
STARTEN = re.compile(
    r"\b(QProcess|QLibrary|QPluginLoader|QDesktopServices)\b"
    r"|\b((?:dlopen|system|popen|v?fork|posix_spawnp?|exec[lv][pe]*)\()"
)
ANSCHRIFTEN = "ui/anschriften.cpp"


def ordner_von(datei):
    return str(pathlib.PurePosixPath(datei).parent)


def quellen(wurzel):
    src = wurzel / "src"
    return {p.relative_to(src).as_posix(): p.read_text("utf-8") for p in src.rglob("*") if p.suffix in (".h", ".cpp")}


def includes_pruefen(dateien):
    for name, text in dateien.items():
        eigen = ordner_von(name)
        if eigen not in STOCKWERK:
            yield f"src/{name}: der Ordner hat kein Stockwerk"
            continue
        for ziel in INCLUDE.findall(text):
            if ziel not in dateien:
                if not ziel.endswith(".inc"):
                    yield f"src/{name}: '{ziel}' ist kein Pfad ab src/"
                continue
            fremd = ordner_von(ziel)
            if fremd != eigen and STOCKWERK.get(fremd, 99) >= STOCKWERK[eigen]:
                yield f"src/{name}: '{ziel}' liegt nicht tiefer"
        if not eigen.startswith(("ui", "programm")) and WIDGETS.search(text):
            yield f"src/{name}: Widgets gehören nach ui/"


def starten_pruefen(dateien):
    for name, text in dateien.items():
        erlaubt = {"QDesktopServices"} if name == ANSCHRIFTEN else set()
        for wort in sorted({m[0] for m in STARTEN.finditer(text)} - erlaubt):
            yield f"src/{name}: '{wort}' startet etwas anderes"


def einsetzen_pruefen(dateien):
    for name, text in dateien.items():
        for fund in EINSETZEN.finditer(text):
            zeile = text.count("\n", 0, fund.start()) + 1
            yield f"src/{name}:{zeile}: ein Text, in den danach noch eingesetzt wird"


def ringe_suchen(dateien):
    fertig, offen = set(), []

    def besuchen(name):
        if name in fertig:
            return
        if name in offen:
            yield "Ring: " + " > ".join(offen[offen.index(name) :] + [name])
            return
        offen.append(name)
        for ziel in INCLUDE.findall(dateien[name]):
            if ziel in dateien:
                yield from besuchen(ziel)
        offen.pop()
        fertig.add(name)

    for name in dateien:
        yield from besuchen(name)


def tests_pruefen(wurzel, bau):
    """Every GoogleTest file must be compiled; a file that nobody builds tests nothing."""
    befehle = json.loads((bau / "compile_commands.json").read_text("utf-8"))
    gebaut = {pathlib.Path(b["file"]).resolve() for b in befehle}
    for datei in sorted((wurzel / "tests").rglob("*.cpp")):
        if datei.parent.name != "fuzz" and datei.resolve() not in gebaut:
            yield f"{datei.relative_to(wurzel)}: wird von keinem Ziel gebaut"
    liste = subprocess.run(["ctest", "--show-only=json-v1"], cwd=bau, capture_output=True, text=True, check=True)
    namen = {t["name"] for t in json.loads(liste.stdout)["tests"]}
    for datei in sorted((wurzel / "tests").rglob("test_*.py")):
        if not any(datei.stem in name for name in namen):
            yield f"{datei.relative_to(wurzel)}: ctest kennt es nicht"


def main():
    wurzel, bau = map(pathlib.Path, sys.argv[1:3])
    dateien = quellen(wurzel)
    funde = [
        *includes_pruefen(dateien),
        *ringe_suchen(dateien),
        *starten_pruefen(dateien),
        *einsetzen_pruefen(dateien),
        *tests_pruefen(wurzel, bau),
    ]
    print("\n".join(funde) if funde else f"{len(dateien)} Quelldateien in Ordnung")
    return 1 if funde else 0


if __name__ == "__main__":
    sys.exit(main())
