#!/usr/bin/env python3
"""Makes the handbook's pictures: walks the six operations through the real window, without a display, on a copy of the
sample database, and leaves a picture of each page that the handbook shows.

bilder.py --programm lindgarn-fernsteuerung --beispiel adressen.mdb --ziel ORDNER
"""
import argparse
import os
import pathlib
import shutil
import sys
import tempfile
import time

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "skripte"))

from fernsteuerung import Fernsteuerung  # noqa: E402

TABELLE = "Adressen"
ZWEITE = "Interessenten"
LAUFZEIT_MS = 300000
# Where the proposals for the two tables are put right. The proposal for the surname hangs on sampled values.
ZUORDNUNG_ERSTE = {
    "Nachname": ["Kontakt", "Nachname"],
    "Telefax": ["Kommunikation", "Vorwahl+Telefax"],
    "Homepage": ["Internet", "Internetadresse"],
}
ZUORDNUNG_ZWEITE = {"Name": ["Kontakt", "Vorname+Nachname"], "Rufnummer": ["Kommunikation", "Vorwahl+Telefon"]}


class Rundgang:
    """The driven program and the folder of the pictures. Each walk begins and ends on frame 3."""

    def __init__(self, fern, ziel):
        self.fern = fern
        self.ziel = ziel

    def bild(self, name):
        self.fern.bild(self.ziel / f"{name}.png")

    def weiter(self, rahmen):
        self.fern.klicken("btnWeiter")
        self.fern.rahmen(rahmen, LAUFZEIT_MS)

    def oeffnen(self, datei):
        self.fern.rahmen(0)
        self.bild("willkommen")
        self.weiter(1)
        self.bild("sicherheitshinweis")
        self.weiter(2)
        self.fern.setzen("tbxDatenbankName", "/home/anna/Adressen/Kunden.mdb")
        self.bild("datenbank")
        self.fern.setzen("tbxDatenbankName", str(datei))
        self.weiter(3)

    def zuordnen(self, felder):
        zeilen = self.fern.lesen("lstFelder")["eintraege"]
        for feld, eintraege in felder.items():
            zeile = next(i for i, z in enumerate(zeilen) if z.strip().startswith(feld + "."))
            self.fern.befehl("menue", objekt="lstFelder", zeile=zeile, pfad=eintraege)

    def vorgang(self, auswahl, rahmen):
        self.fern.setzen("lstTabellen", TABELLE)
        self.weiter(5)
        self.fern.klicken(f"btnAuswahl_{auswahl}")
        self.fern.rahmen(rahmen)

    def verschieben(self, gitter):
        """Moves the current record, and waits until all lists show it."""
        stand = self.fern.text("lblStand")
        self.fern.befehl("maus", objekt=gitter, knopf="rechts", zeile=0)
        ende = time.monotonic() + 60
        while self.fern.text("lblStand") == stand:
            if time.monotonic() > ende:
                raise TimeoutError("the move of a record does not end")

    def nachbearbeitung(self, fenster, name, einzeln=None, alle=None):
        """Starts the run and finishes its review: some records of a grid are moved for the picture, then all by a key."""
        self.fern.klicken("btnWeiter")
        self.fern.warten("fenster", fenster, LAUFZEIT_MS)
        self.fern.aktiv_abwarten("btnFertig")
        for _ in range(3 if einzeln else 0):
            self.verschieben(einzeln)
        self.bild(name)
        if alle:
            self.fern.klicken(alle)
        self.fern.aktiv_abwarten("btnFertig")
        self.fern.klicken("btnFertig")

    def fragen_bejahen(self, rahmen, bild=None):
        """Answers the boxes between a review and its result page."""
        ende = time.monotonic() + LAUFZEIT_MS / 1000
        while self.fern.zustand()["gRahmen"] != rahmen:
            if time.monotonic() > ende:
                raise TimeoutError(f"frame {rahmen} does not come")
            if meldung := self.fern.meldung():
                if bild and "Ja" in meldung["knoepfe"]:
                    self.bild(bild)
                    bild = None
                self.fern.druecken("Ja" if "Ja" in meldung["knoepfe"] else "OK")

    def zurueck_zur_tabelle(self):
        self.weiter(3)

    def dubletten(self):
        self.fern.setzen("lstTabellen", TABELLE)
        self.bild("tabelle")
        self.weiter(5)
        self.bild("vorgang")
        self.fern.klicken("btnAuswahl_3")
        self.fern.rahmen(7)
        self.zuordnen(ZUORDNUNG_ERSTE)
        self.bild("zuordnung")
        self.weiter(4)
        self.bild("zieltabelle")
        self.weiter(11)
        self.bild("suchoptionen")
        self.nachbearbeitung(
            "frmDublettenBearbeiten", "dubletten-nachbearbeitung", einzeln="dgdAngereichert", alle="btnAngereichert"
        )
        self.fragen_bejahen(13, "dubletten-frage")
        self.bild("dubletten-protokoll")
        self.zurueck_zur_tabelle()
        self.bild("ergebnis")

    def muell(self):
        self.vorgang(2, 7)
        self.zuordnen(ZUORDNUNG_ERSTE)
        self.weiter(4)
        self.weiter(21)
        # Most of the sample's customers are persons, who have no firm.
        self.fern.setzen("chkFirmenname", False)
        self.bild("muell-optionen")
        self.nachbearbeitung("frmMüllBearbeiten", "muell-nachbearbeitung", einzeln="dgdMüll")
        self.fragen_bejahen(23)
        self.bild("muell-protokoll")
        self.zurueck_zur_tabelle()

    def splitten(self):
        self.vorgang(1, 4)
        self.weiter(31)
        self.fern.setzen("cbxSplittenTypus", {"index": 1})
        self.fern.setzen("cbxSplitten1", "Straße")
        self.fern.setzen("tbxSplitten1", "Straßenname")
        self.fern.setzen("tbxSplitten2", "Nummer")
        self.bild("splitten")
        self.weiter(32)
        self.bild("splitten-fertig")
        self.zurueck_zur_tabelle()

    def verschmelzen(self):
        self.vorgang(0, 4)
        self.weiter(41)
        self.fern.setzen("cbxVerschmelzen1", "PLZ")
        self.fern.setzen("cbxVerschmelzen2", "Ort")
        self.fern.setzen("tbxVerschmolzen", "PLZ und Ort")
        self.fern.setzen("otnTrennzeichen_0", True)
        self.fern.setzen("tbxTrennzeichen", " ")
        self.bild("verschmelzen")
        self.weiter(42)
        self.zurueck_zur_tabelle()

    def zweite_tabelle(self, auswahl, rahmen, liste, name, vorschlag=None):
        """Up to the search options of an operation with a second table."""
        self.vorgang(auswahl, rahmen)
        self.fern.setzen(liste, ZWEITE)
        self.bild(name)
        self.weiter(7)
        self.zuordnen(ZUORDNUNG_ERSTE)
        self.weiter(7)
        if vorschlag:
            self.bild(vorschlag)
        self.zuordnen(ZUORDNUNG_ZWEITE)
        self.bild(f"{name}-zuordnung")
        self.weiter(4)
        self.weiter(11)

    def abgleich(self):
        self.zweite_tabelle(4, 51, "cbxDatenabgleich", "abgleich", vorschlag="abgleich-vorschlag")
        self.nachbearbeitung("frmDublettenBearbeiten", "abgleich-nachbearbeitung", alle="btnAngereichert")
        self.fragen_bejahen(53)
        self.bild("abgleich-protokoll")
        self.zurueck_zur_tabelle()

    def neue_daten(self):
        self.zweite_tabelle(5, 61, "cbxNeueDaten", "neuedaten")
        # What was enriched is taken over already.
        self.nachbearbeitung("frmDublettenBearbeiten", "neuedaten-nachbearbeitung")
        self.fragen_bejahen(63)
        self.bild("neuedaten-protokoll")
        self.zurueck_zur_tabelle()


def main():
    leser = argparse.ArgumentParser(description=__doc__.split("\n\n")[0])
    leser.add_argument("--programm", required=True, type=pathlib.Path)
    leser.add_argument("--beispiel", required=True, type=pathlib.Path)
    leser.add_argument("--ziel", required=True, type=pathlib.Path)
    wahl = leser.parse_args()

    shutil.rmtree(wahl.ziel, ignore_errors=True)
    wahl.ziel.mkdir(parents=True)
    with tempfile.TemporaryDirectory() as ordner:
        arbeit = pathlib.Path(ordner)
        datei = arbeit / "Kunden.mdb"
        shutil.copy(wahl.beispiel, datei)
        umgebung = {**os.environ, "QT_QPA_PLATFORM": "offscreen", "LINDGARN_ABLAGE": str(arbeit / "ablage")}
        with Fernsteuerung(wahl.programm.resolve(), umgebung) as fern:
            r = Rundgang(fern, wahl.ziel.resolve())
            r.oeffnen(datei)
            r.dubletten()
            r.muell()
            r.splitten()
            r.verschmelzen()
            r.abgleich()
            r.neue_daten()
            fern.befehl("beenden")


if __name__ == "__main__":
    main()
