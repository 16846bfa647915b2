"""Many operations in a row on one open database: memory, handles and files at the end are those of the start.

The short form makes thirty runs with renames and deletions between them; LINDGARN_LANG=1 a thousand.
"""
import os
import pathlib
import time
import unittest

import fremdleser
import gemeinsam
import mdbtools
import vorgaenge

LANG = bool(os.environ.get("LINDGARN_LANG"))
ZEILEN = 500
AUFWAERMEN = 2  # rounds of six runs until every page and every buffer has been used once
RUNDEN = 165 if LANG else 3
# What the allocator may keep for itself. One table of each run that is not let go of is three times that.
SPIELRAUM_KB = 2048 if LANG else 1024


class Ausdauer(gemeinsam.AmProgramm):
    leser = fremdleser.Mdb()

    def setUp(self):
        super().setUp()
        self.daten = self.ordner / "daten"
        self.leser.anlegen(self.daten)
        datei = self.leser.datei(self.daten)
        adressen = gemeinsam.fremde_datei("daten/adressen-500.mdb")
        vorgaenge.tabelle_uebertragen(adressen, "Adressen", datei, anzahl=ZEILEN)
        zeilen = mdbtools.zeilen(adressen, "Adressen")[:ZEILEN]
        vorgaenge.pruefstand("TabelleSchreiben", str(datei), "", vorgaenge.messe(zeilen))
        self.vorher = self.leser.abzug(self.daten)
        self.temporaer = self.ordner / "temporaer"
        self.temporaer.mkdir()
        # Without a folder of its own for a session, Qt makes one among the temporary files.
        self.fern = self.programm(TMPDIR=str(self.temporaer), XDG_RUNTIME_DIR=str(self.ordner))
        self.lauf = vorgaenge.SechsVorgaenge(self, self.fern, datei)
        self.lauf.oeffnen()
        self.proc = pathlib.Path("/proc", str(self.fern.prozess.pid))

    def tabellen(self):
        return self.fern.lesen("lstTabellen")["eintraege"]

    def kasten(self, tabelle, knopf, antwort, **felder):
        """Answers the box of a button for a table, which is gone from the list when it is done."""
        self.fern.setzen("lstTabellen", tabelle)
        self.fern.klicken(knopf)
        self.fern.warten("meldung")
        self.fern.druecken(antwort, **felder)
        ende = time.monotonic() + 60
        while tabelle in self.tabellen():
            self.assertLess(time.monotonic(), ende, f"{tabelle} stays")

    def runde(self):
        """All six runs; one result is renamed, then all are deleted."""
        vorhanden = self.tabellen()
        for vorgang in vorgaenge.VORGAENGE:
            self.lauf.vorbereiten(vorgang)
            self.lauf.ausfuehren(vorgang)
            self.fern.klicken("btnWeiter")
            self.fern.rahmen(3)
        self.kasten(self.lauf.ziele[-1], "cmdTabelleUmbenennen", "OK", eingabe="Umbenannt")
        neue = [t for t in self.tabellen() if t not in vorhanden]
        self.assertEqual(len(vorgaenge.VORGAENGE), len(neue))
        for tabelle in neue:
            self.kasten(tabelle, "cmdTabelleLöschen", "Ja")
        self.assertEqual(vorhanden, self.tabellen())

    def speicher_kb(self):
        stand = (self.proc / "status").read_text(encoding="ascii")
        return int(next(z.split()[1] for z in stand.splitlines() if z.startswith("VmRSS:")))

    def griffe(self):
        """What the program has open, and how many bytes its nameless files hold."""
        ziele, bytes_ = [], 0
        for griff in (self.proc / "fd").iterdir():
            ziel = os.readlink(griff)
            ziele.append("nameless" if ziel.endswith("(deleted)") else ziel)
            bytes_ += griff.stat().st_size if ziel.endswith("(deleted)") else 0
        return sorted(ziele), bytes_

    def test_zwanzig_vorgaenge(self):
        for _ in range(AUFWAERMEN):
            self.runde()
        speicher, (griffe, ablage) = self.speicher_kb(), self.griffe()
        for _ in range(RUNDEN):
            self.runde()
        speicher_nachher, (griffe_nachher, ablage_nachher) = self.speicher_kb(), self.griffe()
        print(
            f"{6 * RUNDEN} Läufe: {speicher} -> {speicher_nachher} KB, {ablage} -> {ablage_nachher} Bytes", flush=True
        )
        self.assertEqual(griffe, griffe_nachher)
        self.assertLessEqual(speicher_nachher - speicher, SPIELRAUM_KB)
        self.assertLessEqual(ablage_nachher, ablage, "the working store keeps what was deleted")
        self.assertEqual([], list(self.temporaer.iterdir()))
        self.assertEqual([self.lauf.datei], list(self.daten.iterdir()))
        self.assertEqual(self.vorher, self.leser.abzug(self.daten))


if __name__ == "__main__":
    unittest.main()
