#!/usr/bin/env python3
"""Walks an installed Lindgarn in another root folder: the program itself starts, and its window finds its files.

Runs as the user `nutzer` of that system, without a display.
"""
import argparse
import os
import pathlib
import signal
import subprocess
import sys
import time

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "skripte"))

from fernsteuerung import Fernsteuerung  # noqa: E402

ABLAGE = "home/nutzer/.config/Tessmark/Lindgarn.ini"
FRIST = 60


def befehl(wurzel, programm):
    umgebung = ["env", "-i", "HOME=/home/nutzer", "QT_QPA_PLATFORM=offscreen", "LC_ALL=C.UTF-8", "PATH=/usr/bin:/bin"]
    return ["chroot", "--userspec=nutzer:nutzer", str(wurzel), *umgebung, programm]


def programm_starten(wurzel):
    """The program as it was installed: it runs until it is told to end, and has made its user's store by then."""
    ablage = wurzel / ABLAGE
    ablage.unlink(missing_ok=True)
    prozess = subprocess.Popen(befehl(wurzel, "/usr/bin/lindgarn"))
    ende = time.monotonic() + FRIST
    while not ablage.exists():
        if prozess.poll() is not None or time.monotonic() > ende:
            sys.exit(f"lindgarn läuft nicht an (Rückgabe {prozess.poll()})")
        time.sleep(0.05)
    prozess.send_signal(signal.SIGTERM)
    if prozess.wait(FRIST) != -signal.SIGTERM:
        sys.exit(f"lindgarn endete von selbst mit {prozess.returncode}")
    print("lindgarn startet.")


def pruefen(stimmt, was):
    if not stimmt:
        sys.exit(f"nicht in Ordnung: {was}")
    print(f"in Ordnung: {was}")


def fenster_ansehen(wurzel, bilder):
    starter = bilder / "fernsteuerung.sh"
    starter.write_text("#!/bin/sh\nexec " + " ".join(befehl(wurzel, "/usr/bin/lindgarn-fernsteuerung")) + "\n", "utf-8")
    starter.chmod(0o755)
    with Fernsteuerung(starter) as fern:
        fern.rahmen(0)
        fern.befehl("menue", pfad=["?", "Hilfe"])
        fern.warten("fenster", "frmHilfe")
        pruefen("WILLKOMMEN" in fern.text("tbxHilfe"), "die Hilfe ist da")
        fern.klicken("Command1")
        fern.klicken("btnWeiter")
        fern.rahmen(1)
        fern.klicken("btnWeiter")
        fern.rahmen(2)
        fern.setzen("tbxDatenbankName", "/home/nutzer/adressen.mdb")
        fern.klicken("btnWeiter")
        fern.rahmen(3)
        pruefen("Adressen" in fern.lesen("lstTabellen")["eintraege"], "eine Datei lässt sich öffnen")
        fern.setzen("lstTabellen", "Adressen")
        fern.klicken("cmdTabelleLöschen")
        fern.warten("meldung")
        pruefen(fern.meldung()["knoepfe"] == ["Ja", "Nein"], "die Knöpfe sind deutsch")
        fern.druecken("Nein")
        fern.klicken("btnWeiter")
        fern.rahmen(5)
        fern.bild("/home/nutzer/vorgang.png")
        fern.befehl("beenden")
    os.replace(wurzel / "home/nutzer/vorgang.png", bilder / "vorgang.png")
    print(f"Bild: {bilder / 'vorgang.png'}")


def main():
    leser = argparse.ArgumentParser(description=__doc__)
    leser.add_argument("--wurzel", required=True, type=pathlib.Path)
    leser.add_argument("--bilder", required=True, type=pathlib.Path)
    wahl = leser.parse_args()
    wahl.bilder.mkdir(parents=True, exist_ok=True)
    programm_starten(wahl.wurzel)
    fenster_ansehen(wahl.wurzel, wahl.bilder.resolve())


if __name__ == "__main__":
    main()
