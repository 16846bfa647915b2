#!/usr/bin/env python3
"""Prints a table of what the tests reach in each folder, from the export of llvm-cov.

abdeckungstafel.py EXPORT.json WURZEL; folders are named as seen from WURZEL.
"""
import collections
import json
import pathlib
import sys

ARTEN = ("lines", "functions", "branches")
KOPF = ("Zeilen", "Funktionen", "Zweige")


def summen(export, wurzel):
    """For each folder and in all: the number of files, and of each kind of thing how many there are and were reached."""
    ordner = collections.defaultdict(lambda: [0] + [0, 0] * len(ARTEN))
    for datei in json.loads(export.read_text("utf-8"))["data"][0]["files"]:
        pfad = pathlib.Path(datei["filename"]).resolve()
        if not pfad.is_relative_to(wurzel):
            continue
        name = pfad.relative_to(wurzel).parent.as_posix()
        for zeile in (ordner[name], ordner["gesamt"]):
            zeile[0] += 1
            for i, art in enumerate(ARTEN):
                zeile[1 + 2 * i] += datei["summary"][art]["count"]
                zeile[2 + 2 * i] += datei["summary"][art]["covered"]
    return ordner


def prozent(anzahl, erreicht):
    return f"{100 * erreicht / anzahl:5.1f} %" if anzahl else "      -"


def main():
    export, wurzel = (pathlib.Path(p).resolve() for p in sys.argv[1:3])
    ordner = summen(export, wurzel)
    gesamt = ordner.pop("gesamt")
    print(f"{'Ordner':<16}{'Dateien':>8}" + "".join(f"{k:>12}{'erreicht':>10}" for k in KOPF))
    for name, zeile in [*sorted(ordner.items()), ("gesamt", gesamt)]:
        werte = "".join(
            f"{zeile[1 + 2 * i]:>12}{prozent(*zeile[1 + 2 * i : 3 + 2 * i]):>10}" for i in range(len(ARTEN))
        )
        print(f"{name:<16}{zeile[0]:>8}{werte}")


if __name__ == "__main__":
    main()
