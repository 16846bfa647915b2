"""What a file holds goes nowhere else: no password in sight, no path of a file followed, nothing readable left behind."""
import os
import pathlib
import shutil
import signal
import tempfile
import unittest

import gemeinsam
import mdbtools
import stoerung
import vorgaenge

PASSWORT = "password"  # of the sample file
FALSCH = "Falsch-4711-Passwort"
VERWEIS = b"C:\\db\\linkee1.mdb"  # where the sample file's linked table lies


def splitten():
    return next(v for v in vorgaenge.VORGAENGE if v.name == "splitten")


class Passwort(gemeinsam.AmProgramm):
    def setUp(self):
        super().setUp()
        self.temporaer = self.ordner / "temporaer"
        self.temporaer.mkdir()
        self.daten = self.ordner / "daten"
        self.daten.mkdir()
        datei = self.daten / "adressen.mdb"
        shutil.copyfile(gemeinsam.fremde_datei("mdb/beispiele/jet4-passwort.mdb"), datei)
        adressen = gemeinsam.fremde_datei("daten/adressen-500.mdb")
        vorgaenge.tabelle_uebertragen(adressen, "Adressen", datei, PASSWORT, anzahl=40)
        self.gesagt = self.ordner / "gesagt.txt"
        with open(self.gesagt, "wb") as gesagt:
            self.fern = self.programm(gesagt, TMPDIR=str(self.temporaer), XDG_RUNTIME_DIR=str(self.ordner))
        self.lauf = vorgaenge.SechsVorgaenge(self, self.fern, datei, passwort=PASSWORT)
        self.gezeigt = []

    def mit_falschem_passwort(self):
        self.datei_nennen(self.fern, self.lauf.datei, FALSCH)
        self.fern.warten("meldung")
        self.gezeigt.append(str(self.fern.meldung()))
        self.fern.druecken("OK")

    def nirgends(self, wort):
        self.gezeigt.append(str(self.fern.lesen("frmHaupt")))
        for gezeigt in self.gezeigt:
            self.assertNotIn(wort, gezeigt)
        befehlszeile = pathlib.Path("/proc", str(self.fern.prozess.pid), "cmdline").read_text("utf-8")
        self.assertNotIn(wort, befehlszeile)
        for datei in (p for p in self.ordner.rglob("*") if p.is_file()):
            for schrift in ("utf-8", "utf-16-le"):
                self.assertNotIn(wort.encode(schrift), datei.read_bytes(), datei)

    def test_steht_nirgends(self):
        self.mit_falschem_passwort()
        self.nirgends(FALSCH)
        self.lauf.datei_oeffnen()
        self.lauf.vorbereiten(splitten())
        self.lauf.ausfuehren(splitten())
        self.nirgends(PASSWORT)
        self.assertGreater(self.gesagt.stat().st_size, 0, "nothing was caught of what the program says")


class Verweise(gemeinsam.AmProgramm):
    def test_verknuepfte_tabelle_wird_nicht_verfolgt(self):
        """The file that a linked table names lies there, and is not read: neither at opening nor in a run."""
        probe = gemeinsam.fremde_datei("mdb/beispiele/jet4-verknuepft.mdb").read_bytes()
        koeder = pathlib.Path(tempfile.mkdtemp(prefix="", dir="/tmp"))
        self.addCleanup(shutil.rmtree, koeder)
        ziel = koeder / ("l" * (len(VERWEIS) - len(str(koeder)) - 3) + ".d")
        self.assertEqual(len(VERWEIS), len(str(ziel)))
        self.assertIn(VERWEIS, probe)
        datei = self.ordner / "adressen.mdb"
        datei.write_bytes(probe.replace(VERWEIS, str(ziel).encode("ascii")))
        adressen = gemeinsam.fremde_datei("daten/adressen-500.mdb")
        shutil.copyfile(adressen, ziel)
        vorgaenge.tabelle_uebertragen(adressen, "Adressen", datei, anzahl=40)

        spitzel = stoerung.Stoerung(koeder, self.ordner / "seite")
        self.addCleanup(spitzel.schliessen)
        lauf = vorgaenge.SechsVorgaenge(self, self.programm(**spitzel.umgebung), datei)
        spitzel.beginnen()
        lauf.oeffnen()
        for tabelle in lauf.fern.lesen("lstTabellen")["eintraege"]:
            lauf.fern.setzen("lstTabellen", tabelle)
            while lauf.fern.meldung():
                lauf.fern.druecken("Abbrechen")
        lauf.vorbereiten(splitten())
        lauf.ausfuehren(splitten())
        self.assertEqual((0, 0), spitzel.beenden())
        self.assertEqual(40, len(mdbtools.zeilen(datei, lauf.ziele[0])))
        self.assertIn(str(ziel).encode("ascii"), datei.read_bytes())

        # Who opens it as a database is seen.
        zweiter = ziel.with_suffix(".mdb")
        ziel.rename(zweiter)
        lauf = vorgaenge.SechsVorgaenge(self, self.programm(**spitzel.umgebung), zweiter)
        spitzel.beginnen()
        lauf.oeffnen()
        self.assertGreater(spitzel.beenden()[0], 0)


class Ueberreste(gemeinsam.AmProgramm):
    def test_ein_getoetetes_programm_laesst_nichts_lesbares_zurueck(self):
        temporaer = self.ordner / "temporaer"
        temporaer.mkdir()
        datei = self.kopie(gemeinsam.fremde_datei("daten/adressen-500.mdb"))
        fern = self.programm(TMPDIR=str(temporaer), XDG_RUNTIME_DIR=str(self.ordner))
        self.bis_suchoptionen(fern, datei)
        self.review_oeffnen(fern)
        fern.prozess.send_signal(signal.SIGKILL)
        fern.prozess.wait()
        self.assertEqual([], os.listdir(temporaer))


if __name__ == "__main__":
    unittest.main()
