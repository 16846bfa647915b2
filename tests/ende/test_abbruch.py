"""Leaving the main job early, by every way: the file stays byte for byte, no work table is left, frame 3 stands."""
import pathlib
import subprocess
import tempfile
import unittest

import gemeinsam
import mdbtools


class VorDemLauf(gemeinsam.AmProgramm):
    """Frame 11 stands, on a private copy of `quelle`."""

    quelle = gemeinsam.BEISPIELE / "adressen.mdb"

    def setUp(self):
        super().setUp()
        self.datei = self.kopie(self.quelle)
        self.vorher = self.datei.read_bytes()
        self.fern = self.programm()
        self.bis_suchoptionen(self.fern, self.datei)

    def nichts_bleibt(self):
        self.fern.rahmen(3)
        self.assertEqual(self.vorher, self.datei.read_bytes(), "the file was changed")
        self.assertEqual(
            [self.datei.name], [p.name for p in self.ordner.glob("*") if p.is_file() and p.name != "ablage"]
        )
        self.assertEqual(mdbtools.tabellen(self.datei), self.fern.lesen("lstTabellen")["eintraege"])


class ImLauf(VorDemLauf):
    """The run over 20,000 records takes seconds, so that every one of its phases can be met."""

    @classmethod
    def setUpClass(cls):
        ordner = tempfile.TemporaryDirectory()
        cls.addClassCleanup(ordner.cleanup)
        cls.quelle = pathlib.Path(ordner.name) / "gross.mdb"
        erzeuger = pathlib.Path(gemeinsam.PROGRAMM).with_name("lindgarn-beispiele")
        subprocess.run([erzeuger, "--anzahl", "20000", cls.quelle], check=True)

    def im_lauf(self, phase, knopf):
        """Presses the button while frame 6 tells of the phase."""
        self.in_phase_klicken(self.fern, phase, lambda: self.von_tabelle_bis_suchoptionen(self.fern, "Adressen"), knopf)

    def bis_suchoptionen(self, fern, datei, tabelle="Adressen"):
        """Frame 3 will do: each run walks on from there."""
        self.bis_tabelle(fern, datei, tabelle)

    def test_knopf_abbrechen_in_jeder_phase(self):
        for phase in ("Bereite Tabelle auf Vergleich vor", "Durchsuche", '"[PLZ],[Ort],[Firma]"', "Reichere"):
            with self.subTest(phase):
                self.im_lauf(phase, "btnZurück")
                self.laufabbruch_bejahen(self.fern)
                self.nichts_bleibt()

    def test_fenster_schliessen_im_lauf(self):
        self.von_tabelle_bis_suchoptionen(self.fern, "Adressen")
        self.assertTrue(self.fern.im_lauf("Durchsuche", "beenden"))
        self.laufabbruch_bejahen(self.fern)
        self.nichts_bleibt()

    def test_knopf_beenden_im_lauf_und_nein(self):
        self.im_lauf("Durchsuche", "btnBeenden")
        self.fern.warten("meldung")
        self.fern.druecken("Nein")
        self.fern.warten("fenster", "frmDublettenBearbeiten")


class Abbruch(VorDemLauf):
    def test_abbrechen_in_der_nachbearbeitung(self):
        self.review_oeffnen(self.fern)
        self.fern.klicken("btnAngereichert")
        self.fern.klicken("btnAbbrechen")
        self.nichts_bleibt()

    def test_nein_auf_die_letzte_frage_bleibt_in_der_nachbearbeitung(self):
        self.review_oeffnen(self.fern)
        self.fern.klicken("btnAngereichert")
        self.fertig_klicken(self.fern)
        self.fern.warten("meldung")
        self.fern.druecken("Nein")
        self.fern.warten("fenster", "frmDublettenBearbeiten")
        self.assertEqual(self.vorher, self.datei.read_bytes())

    def test_fehlerkasten_abbrechen(self):
        for feld in range(9):
            self.fern.setzen(f"cbxSuchFeld_{feld}", "*** Unbenutzt ***")
        # An ignored field is not in the work table, so it cannot be sorted by.
        self.fern.setzen("cbxSuchFeld_0", "Homepage")
        self.fern.klicken("btnWeiter")
        self.fern.warten("meldung")
        self.assertEqual(" Fehler!", self.fern.meldung()["titel"])
        self.fern.druecken("Abbrechen")
        self.nichts_bleibt()

    def test_nichts_gefunden(self):
        for feld in range(9):
            self.fern.setzen(f"cbxSuchFeld_{feld}", "*** Unbenutzt ***")
        # Customer numbers are unique, so that no block has two records.
        self.fern.setzen("cbxSuchFeld_0", "Kundennummer")
        self.fern.setzen("sdrZeichenRichtig_0", 5)
        self.fern.klicken("btnWeiter")
        self.fern.warten("meldung")
        self.assertEqual(" Hinweis", self.fern.meldung()["titel"])
        self.fern.druecken("OK")
        self.nichts_bleibt()

    def test_das_ueberschriebene_ziel_kommt_zurueck(self):
        """The user lets an existing table be overwritten and then aborts: the table stands as it was."""
        self.fern.klicken("btnZurück")
        self.fern.rahmen(4)
        self.fern.setzen("tbxZielTabelle", "Interessenten")
        self.fern.klicken("btnWeiter")
        self.fern.warten("meldung")
        self.fern.druecken("Ja")
        self.fern.rahmen(11)
        self.fern.klicken("btnWeiter")
        self.fern.warten("meldung")
        self.fern.druecken("Ja")
        self.fern.warten("fenster", "frmDublettenBearbeiten")
        self.fern.klicken("btnAbbrechen")
        self.nichts_bleibt()
        self.fern.setzen("lstTabellen", "Interessenten")
        self.assertEqual(f"{len(mdbtools.roh(self.datei, 'Interessenten'))} Datensätz(e)", self.fern.text("lblGröße"))

    def test_zweiter_lauf_nach_einem_abbruch(self):
        self.review_oeffnen(self.fern)
        self.fern.klicken("btnAbbrechen")
        self.nichts_bleibt()
        self.von_tabelle_bis_suchoptionen(self.fern, "Adressen")
        self.review_oeffnen(self.fern)
        self.fern.klicken("btnAngereichert")
        self.review_fertig(self.fern)
        self.assertEqual(1, len([t for t in mdbtools.tabellen(self.datei) if t.startswith("Adressen _#1__")]))


class Nachbar(gemeinsam.AmProgramm):
    def test_datei_von_anderen_geaendert(self):
        """Somebody else saves into the file while the review is open: nothing of theirs is written over."""
        datei = self.kopie(gemeinsam.BEISPIELE / "adressen.mdb")
        fern = self.programm()
        self.bis_suchoptionen(fern, datei)
        self.review_oeffnen(fern)
        fremder_stand = datei.read_bytes() + b"\0" * 4096
        datei.write_bytes(fremder_stand)
        fern.klicken("btnAngereichert")
        self.fertig_klicken(fern)
        fern.warten("meldung")
        fern.druecken("Ja")
        fern.warten("meldung")
        self.assertEqual(" Fehler!", fern.meldung()["titel"])
        fern.druecken("Abbrechen")
        fern.rahmen(3)
        self.assertEqual(fremder_stand, datei.read_bytes())


if __name__ == "__main__":
    unittest.main()
