#!/usr/bin/env python3
"""Walks the main job through the real window on a sample database: finds its duplicates, step by step.

Says what it does, leaves a picture of every frame, prints the figures of the result frame and the corrected
table's row count as mdbtools sees it.
"""
import argparse
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile

from fernsteuerung import Fernsteuerung


class Vorfuehrung:
    """The walk: a driven program, a folder for the pictures, and a number for the next one."""

    def __init__(self, fern, bilder):
        self.fern = fern
        self.bilder = bilder
        self.nummer = 0

    def sage(self, text):
        print(f"  {text}", flush=True)

    def bild(self, name):
        self.nummer += 1
        datei = self.bilder / f"{self.nummer:02}-{name}.png"
        self.fern.bild(datei)
        self.sage(f"Bild: {datei}")

    def weiter(self, rahmen):
        self.fern.klicken("btnWeiter")
        self.fern.rahmen(rahmen)


def zum_start(v, datenbank):
    fern = v.fern
    fern.rahmen(0)
    v.bild("willkommen")
    v.weiter(1)
    v.bild("sicherheitshinweis")
    v.weiter(2)
    fern.setzen("tbxDatenbankName", str(datenbank))
    v.sage(f"Datenbank: {datenbank}")
    v.bild("datenbank")
    v.weiter(3)
    tabellen = fern.lesen("lstTabellen")["eintraege"]
    v.sage("Tabellen: " + ", ".join(tabellen))
    fern.setzen("lstTabellen", "Adressen")
    v.sage("Gewählt: Adressen, " + fern.text("lblGröße"))
    v.bild("tabelle")
    v.weiter(5)
    v.bild("vorgang")
    fern.klicken("btnAuswahl_3")
    fern.rahmen(7)
    v.sage("Vorschlag für die Felder:")
    for zeile in fern.lesen("lstFelder")["eintraege"]:
        v.sage("   " + zeile)
    v.bild("zuordnung")
    v.weiter(4)
    ziel = fern.text("tbxZielTabelle")
    v.sage(f"Zieltabelle: {ziel}")
    v.bild("zieltabelle")
    v.weiter(11)
    v.bild("suchoptionen")
    return ziel


def suche_und_nachbearbeitung(v):
    fern = v.fern
    v.sage("Die Suche läuft ...")
    fern.klicken("btnWeiter")
    if v.fern.zustand()["gRahmen"] == 6:
        v.bild("durchfuehrung")
    fern.warten("fenster", "frmDublettenBearbeiten", 300000)
    v.sage(f"Angereicherte Datensätze: {len(fern.gitter('dgdAngereichert')['zeilen'])}")
    fern.klicken("btnAngereichert")
    v.sage("Alle angereicherten Datensätze werden übernommen.")
    fern.aktiv_abwarten("btnFertig")
    v.bild("nachbearbeitung")
    fern.klicken("btnFertig")
    fern.warten("meldung")
    v.sage("Frage: " + fern.meldung()["text"].replace("\r", " ").replace("\n", " "))
    v.bild("frage")
    fern.druecken("Ja")


def ergebnis_zeigen(v):
    v.fern.rahmen(13, 120000)
    v.bild("protokoll")
    for name in ("lblDubletten1", "lblDubletten2", "lblDubletten3", "lblDublettenVerunreinigung"):
        v.sage(v.fern.text(name))


def fremder_blick(datenbank, ziel):
    """The row count of the corrected table as mdbtools counts it."""
    tabellen = subprocess.run(["mdb-tables", "-1", str(datenbank)], check=True, capture_output=True, text=True).stdout
    print("mdb-tables: " + ", ".join(tabellen.split("\n")[:-1]))
    zeilen = subprocess.run(
        ["mdb-count", str(datenbank), ziel], check=True, capture_output=True, text=True
    ).stdout.strip()
    print(f"mdb-count:  {zeilen} Datensätze in '{ziel}'")


def main():
    leser = argparse.ArgumentParser(description=__doc__)
    leser.add_argument("--programm", required=True, type=pathlib.Path)
    leser.add_argument("--beispiel", required=True, type=pathlib.Path)
    leser.add_argument("--bilder", required=True, type=pathlib.Path)
    wahl = leser.parse_args()

    wahl.bilder.mkdir(parents=True, exist_ok=True)
    for altes in wahl.bilder.glob("[0-9][0-9]-*.png"):
        altes.unlink()
    with tempfile.TemporaryDirectory() as ordner:
        datenbank = pathlib.Path(ordner) / wahl.beispiel.name
        shutil.copy(wahl.beispiel, datenbank)
        # What the walk enters is not for the user's own store.
        umgebung = {**os.environ, "LINDGARN_ABLAGE": str(pathlib.Path(ordner) / "ablage")}
        with Fernsteuerung(wahl.programm, umgebung) as fern:
            v = Vorfuehrung(fern, wahl.bilder.resolve())
            ziel = zum_start(v, datenbank)
            suche_und_nachbearbeitung(v)
            ergebnis_zeigen(v)
            v.weiter(3)
            v.bild("neue-tabelle")
            fern.befehl("beenden")
        fremder_blick(datenbank, ziel)
    print("Fertig.")


if __name__ == "__main__":
    sys.exit(main())
