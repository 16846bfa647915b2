"""What the end-to-end tests share: where things are, a driven program on a private copy, and the main job's steps."""
import os
import pathlib
import shutil
import sys
import tempfile
import time
import unittest

WURZEL = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(WURZEL / "skripte"))

from fernsteuerung import Fernsteuerung  # noqa: E402

PROGRAMM = os.environ["LINDGARN_PROGRAMM"]
FREMDDATEN = pathlib.Path(os.environ["LINDGARN_FREMDDATEN"])
BEISPIELE = pathlib.Path(os.environ["LINDGARN_BEISPIELE"])


def fremde_datei(name):
    """A file that others wrote; the test is skipped by name where it is missing."""
    datei = FREMDDATEN / name
    if not datei.exists():
        raise unittest.SkipTest(f"{name} ist nicht vorhanden")
    return datei


class AmProgramm(unittest.TestCase):
    """A test with a private folder, in which the program keeps its store and files are copied."""

    def setUp(self):
        ordner = tempfile.TemporaryDirectory()
        self.addCleanup(ordner.cleanup)
        self.ordner = pathlib.Path(ordner.name)

    def kopie(self, datei):
        return pathlib.Path(shutil.copy(datei, self.ordner / datei.name))

    def programm(self, fehlerausgabe=None, **zusatz):
        """A program with a store and a folder of its own; `zusatz` goes into its environment.

        `fehlerausgabe` is a file that takes what the program says aside.
        """
        ablage = self.ordner / "ablage"
        leer = self.ordner / "programmordner"
        leer.mkdir(exist_ok=True)
        umgebung = {
            **os.environ,
            "QT_QPA_PLATFORM": "offscreen",
            "LINDGARN_ABLAGE": str(ablage),
            "LINDGARN_ORDNER": str(leer),
            **zusatz,
        }
        fern = Fernsteuerung(PROGRAMM, umgebung, fehlerausgabe)
        self.addCleanup(fern.__exit__)
        return fern

    def bis_tabelle(self, fern, datei, tabelle):
        """From the welcome page to frame 3, with the table selected."""
        self.datei_nennen(fern, datei)
        self.nach_dem_oeffnen(fern, datei)
        fern.rahmen(3)
        fern.setzen("lstTabellen", tabelle)

    def datei_nennen(self, fern, datei, passwort=""):
        """From the welcome page through frame 2; what follows is the list of tables or a message."""
        for rahmen in (0, 1):
            fern.rahmen(rahmen)
            fern.klicken("btnWeiter")
        fern.rahmen(2)
        fern.setzen("tbxDatenbankName", str(datei))
        if passwort:
            fern.setzen("tbxDatenbankPasswort", passwort)
        fern.klicken("btnWeiter")

    def nach_dem_oeffnen(self, fern, datei):
        """What is told when a file was opened: nothing."""

    def tabellen_werden(self, fern, erwartet):
        """Waits until frame 3 shows exactly these tables: the file is written between the answer and the new list."""
        ende = time.monotonic() + 60
        while (gezeigt := fern.lesen("lstTabellen")["eintraege"]) != erwartet:
            self.assertLess(time.monotonic(), ende, f"{gezeigt} instead of {erwartet}")

    def naechster_vorgang(self, tabelle, auswahl, rahmen):
        """From a result frame to the options of another operation on a table. Returns the target's name."""
        self.fern.klicken("btnWeiter")
        self.fern.rahmen(3)
        self.fern.setzen("lstTabellen", tabelle)
        self.fern.klicken("btnWeiter")
        self.fern.rahmen(5)
        self.fern.klicken(auswahl)
        self.fern.rahmen(4)
        ziel = self.fern.text("tbxZielTabelle")
        self.fern.klicken("btnWeiter")
        self.fern.rahmen(rahmen)
        return ziel

    def bis_suchoptionen(self, fern, datei, tabelle="Adressen"):
        """From the welcome page to frame 11. Returns the lines of the field list and the target's name."""
        self.bis_tabelle(fern, datei, tabelle)
        return self.von_tabelle_bis_suchoptionen(fern, tabelle)

    def von_tabelle_bis_suchoptionen(self, fern, tabelle):
        """From frame 3 to frame 11. Returns the lines of the field list and the target's name."""
        fern.setzen("lstTabellen", tabelle)
        fern.klicken("btnWeiter")
        fern.rahmen(5)
        fern.klicken("btnAuswahl_3")
        fern.rahmen(7)
        felder = fern.lesen("lstFelder")["eintraege"]
        fern.klicken("btnWeiter")
        fern.rahmen(4)
        ziel = fern.text("tbxZielTabelle")
        fern.klicken("btnWeiter")
        fern.rahmen(11)
        return felder, ziel

    def in_phase_klicken(self, fern, phase, vorbereiten, knopf="btnZurück", review="frmDublettenBearbeiten"):
        """Starts the run that `vorbereiten` makes ready and clicks while frame 6 tells of the phase.

        A phase may be over before it is seen: the run then goes on to its review, is left there, and started anew.
        """
        for _ in range(8):
            vorbereiten()
            if fern.im_lauf(phase, "klicken", objekt=knopf):
                return
            fern.warten("fenster", review)
            fern.klicken("btnAbbrechen")
            fern.rahmen(3)
        self.fail(f"'{phase}' was never seen")

    def laufabbruch_bejahen(self, fern):
        """Answers the question that every way out of a run asks."""
        fern.warten("meldung")
        self.assertEqual("Wollen sie den aktuellen Vorgang wirklich abbrechen?", fern.meldung()["text"])
        fern.druecken("Ja")

    def review_oeffnen(self, fern, ms=120000):
        fern.klicken("btnWeiter")
        fern.warten("fenster", "frmDublettenBearbeiten", ms)

    def fertig_klicken(self, fern):
        """Presses the button of a review; a move of all records holds it until it is done."""
        fern.aktiv_abwarten("btnFertig")
        fern.klicken("btnFertig")

    def review_fertig(self, fern):
        """Finishes the review with what was moved; answers its last question."""
        self.fertig_klicken(fern)
        fern.warten("meldung")
        fern.druecken("Ja")
        fern.rahmen(13)
