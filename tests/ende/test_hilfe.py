"""Help and info through the real window: on every frame of the main job, while a run works, in the review."""
import os
import pathlib
import shutil
import unittest

import gemeinsam

HILFE = gemeinsam.WURZEL / "resources" / "Hilfe.HLP"
BILDER = os.environ.get("LINDGARN_BILDER")


def themen():
    """The topics of the file, read in the plain way: key and text."""
    for thema in HILFE.read_text(encoding="utf-8").split("\n###")[1:]:
        zeilen = thema.split("\n")[1:]
        yield zeilen[0], "\n".join(zeilen[2:]).strip()


class Hilfe(gemeinsam.AmProgramm):
    def setUp(self):
        super().setUp()
        self.themen = dict(themen())
        self.datei = self.kopie(gemeinsam.BEISPIELE / "adressen.mdb")
        self.fern = self.programm()

    def mit_hilfedatei(self):
        shutil.copy(HILFE, self.ordner / "programmordner")

    def hilfe_zeigt(self, schluessel, fenster="frmHaupt"):
        self.fern.klicken(f"{fenster}.btnHilfe")
        self.fern.warten("fenster", "frmHilfe")
        self.assertEqual(self.themen[schluessel], self.fern.text("tbxHilfe").strip())
        if BILDER:
            self.fern.bild(pathlib.Path(BILDER) / f"hilfe-{schluessel}.png")
        self.fern.klicken("Command1")

    def test_jeder_rahmen_der_dublettensuche(self):
        self.mit_hilfedatei()
        self.fern.rahmen(0)
        self.fern.befehl("menue", pfad=["?", "Hilfe"])
        self.fern.warten("fenster", "frmHilfe")
        self.assertEqual(self.themen["Nichts"], self.fern.text("tbxHilfe").strip())
        self.fern.klicken("Command1")
        self.fern.klicken("btnWeiter")
        self.fern.rahmen(1)
        self.hilfe_zeigt("Sicherheitshinweis")
        self.fern.klicken("btnWeiter")
        self.fern.rahmen(2)
        self.hilfe_zeigt("Auswahl der Datenbank")
        self.fern.setzen("tbxDatenbankName", str(self.datei))
        self.fern.klicken("btnWeiter")
        self.fern.rahmen(3)
        self.hilfe_zeigt("Auswahl der Tabelle")
        self.fern.setzen("lstTabellen", "Adressen")
        self.fern.klicken("btnWeiter")
        self.fern.rahmen(5)
        self.hilfe_zeigt("Auswahl des Vorgangs")
        self.fern.klicken("btnAuswahl_3")
        self.fern.rahmen(7)
        self.hilfe_zeigt("Zuordnung der Felder")
        self.fern.klicken("btnWeiter")
        self.fern.rahmen(4)
        self.hilfe_zeigt("Auswahl der Zieltabelle")
        self.fern.klicken("btnWeiter")
        self.fern.rahmen(11)
        self.hilfe_zeigt("Suchoptionen")
        self.review_oeffnen(self.fern)
        self.hilfe_zeigt("Dubletten bearbeiten", "frmDublettenBearbeiten")
        self.fern.warten("fenster", "frmDublettenBearbeiten")
        self.fern.klicken("btnAngereichert")
        self.review_fertig(self.fern)
        self.hilfe_zeigt("Protokoll")

    def test_ohne_hilfedatei(self):
        self.fern.rahmen(0)
        self.fern.klicken("btnWeiter")
        self.fern.rahmen(1)
        self.fern.klicken("btnHilfe")
        self.fern.warten("meldung")
        meldung = self.fern.meldung()
        self.assertEqual(("", "Hilfedatei nicht gefunden!"), (meldung["titel"], meldung["text"]))
        self.fern.druecken("OK")
        self.fern.warten("fenster", "frmHilfe")
        self.assertEqual("", self.fern.text("tbxHilfe"))
        self.fern.klicken("Command1")
        self.fern.klicken("btnWeiter")
        self.fern.rahmen(2)

    def test_info(self):
        self.fern.rahmen(0)
        self.fern.befehl("menue", pfad=["?", "Info"])
        self.fern.warten("fenster", "frmInfo")
        self.assertEqual("Version 1.0", self.fern.text("lblVersion"))
        if BILDER:
            self.fern.bild(pathlib.Path(BILDER) / "info.png")
        self.fern.klicken("cmdSysInfo")
        self.fern.warten("meldung")
        self.assertEqual("Systeminformationen sind momentan nicht verfügbar", self.fern.meldung()["text"])
        self.fern.druecken("OK")
        self.fern.klicken("cmdOK")
        self.fern.klicken("btnWeiter")
        self.fern.rahmen(1)


if __name__ == "__main__":
    unittest.main()
