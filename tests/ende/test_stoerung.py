"""Every file operation of a run fails once, and each answer to the box is given: the file is as it was, or whole.

The short form tries a few operations of each run; LINDGARN_LANG=1 tries all of them with each of the three answers.
"""
import os
import random
import time
import unittest

import gemeinsam
import mdbtools
import stoerung
import vorgaenge

LANG = bool(os.environ.get("LINDGARN_LANG"))
PROBEN = 6  # operations of each run in the short form
ANTWORTEN = ("Wiederholen", "Ignorieren", "Abbrechen")
MAX_KAESTEN = 40


class Stoerungen(gemeinsam.AmProgramm):
    def setUp(self):
        super().setUp()
        self.bereich = self.ordner / "bereich"
        self.bereich.mkdir()
        self.versuch = 0
        self.quelle = self.ordner / "quelle.mdb"
        self.quelle.write_bytes(gemeinsam.fremde_datei("mdb/beispiele/jet4-leer-adox.mdb").read_bytes())
        adressen = gemeinsam.fremde_datei("daten/adressen-500.mdb")
        vorgaenge.tabelle_uebertragen(adressen, "Adressen", self.quelle, anzahl=40)
        vorgaenge.pruefstand("TabelleSchreiben", str(self.quelle), "", vorgaenge.messe(mdbtools.zeilen(adressen, "Adressen")[:40]))
        self.abzug = mdbtools.abzug(self.quelle)
        self.stoerung = stoerung.Stoerung(self.bereich, self.ordner / "seite")
        self.addCleanup(self.stoerung.schliessen)
        self.programm_starten()

    def programm_starten(self):
        self.fern = self.programm(**self.stoerung.umgebung)
        for rahmen in (0, 1):
            self.fern.rahmen(rahmen)
            self.fern.klicken("btnWeiter")
        self.fern.rahmen(2)

    def oeffnen(self):
        """From frame 2 to the list of tables of a fresh copy in a folder of its own; closes the one before it."""
        self.versuch += 1
        self.datei = self.bereich / str(self.versuch) / "adressen.mdb"
        self.datei.parent.mkdir()
        self.datei.write_bytes(self.quelle.read_bytes())
        self.fern.setzen("tbxDatenbankName", str(self.datei))
        self.fern.klicken("btnWeiter")
        self.fern.rahmen(3)
        return vorgaenge.SechsVorgaenge(self, self.fern, self.datei)

    def schliessen(self):
        """From a result or the list of tables back to frame 2."""
        while self.fern.zustand()["gRahmen"] != 3:
            self.fern.klicken("btnWeiter")
            self.fern.rahmen(3)
        self.fern.klicken("btnZurück")
        self.fern.rahmen(2)

    def kasten_beantworten(self, kasten, antwort, gesehen):
        knoepfe = kasten["knoepfe"]
        if "Wiederholen" in knoepfe:
            gesehen.append(kasten["text"])
            # An ignored failure brings others with it; at some point everybody gives up.
            self.fern.druecken(antwort if len(gesehen) < MAX_KAESTEN else "Abbrechen")
        else:
            self.fern.druecken("Ja" if "Ja" in knoepfe else "OK")

    def durchlaufen(self, vorgang, antwort):
        """Starts the prepared operation and answers all that comes. The frame that it ends on, and the boxes' texts."""
        gesehen = []
        moved = False
        self.fern.klicken("btnWeiter")
        frist = time.monotonic() + 120
        while True:
            self.assertLess(time.monotonic(), frist, "the run does not end")
            kasten = self.fern.meldung()
            if kasten:
                self.kasten_beantworten(kasten, antwort, gesehen)
                continue
            rahmen = self.fern.zustand()["gRahmen"]
            if rahmen in (3, vorgang.ergebnis) and not self.review_offen():
                return rahmen, gesehen
            if vorgang.review and self.review_offen() and self.fern.lesen("btnFertig")["aktiv"]:
                self.fern.klicken(vorgang.alles if vorgang.alles and not moved else "btnFertig")
                moved = True

    def review_offen(self):
        try:
            return self.fern.lesen("btnFertig")["sichtbar"]
        except self.fern.Abgelehnt:
            return False

    def pruefen(self, datei, ziel, antwort, erwartet):
        """The promises: other tables as they were, the new one whole or not there, no file of ours left."""
        self.assertEqual([datei.name], [p.name for p in datei.parent.iterdir()])
        jetzt = mdbtools.abzug(datei)
        neu = jetzt.pop(ziel, None)
        self.assertEqual(self.abzug, jetzt, "another table was touched or a work table stayed")
        if antwort == "Wiederholen":
            self.assertEqual(erwartet, neu)
        elif antwort == "Abbrechen":
            self.assertIn(neu, (None, erwartet))

    def ungestoert(self, vorgang):
        """What the operation makes when nothing fails, and how many file operations it takes."""
        lauf = self.oeffnen()
        lauf.vorbereiten(vorgang)
        self.stoerung.beginnen()
        rahmen, gesehen = self.durchlaufen(vorgang, "Abbrechen")
        anzahl, _ = self.stoerung.beenden()
        self.assertEqual((vorgang.ergebnis, []), (rahmen, gesehen))
        erwartet = mdbtools.abzug(self.datei)[lauf.ziele[0]]
        self.pruefen(self.datei, lauf.ziele[0], "Wiederholen", erwartet)
        self.schliessen()
        return erwartet, anzahl

    def einmal_stoeren(self, vorgang, nummer, antwort, erwartet):
        """Whether the failure was told. After a finding the next try gets a new program."""
        try:
            ausgeloest, gesehen = self.mit_fehler(vorgang, nummer, antwort, erwartet)
            return bool(ausgeloest and gesehen)
        except Exception as fehler:
            kasten = self.fern.meldung()
            self.fern.prozess.kill()
            self.programm_starten()
            raise AssertionError(f"{self.stoerung.letzte}: {fehler}; {kasten}") from fehler

    def mit_fehler(self, vorgang, nummer, antwort, erwartet):
        lauf = self.oeffnen()
        lauf.vorbereiten(vorgang)
        self.stoerung.beginnen(nummer)
        _, gesehen = self.durchlaufen(vorgang, antwort)
        _, ausgeloest = self.stoerung.beenden()
        datei = self.datei
        self.pruefen(datei, lauf.ziele[0], antwort, erwartet)
        self.schliessen()
        # A result that could not be saved is saved when its database is closed.
        self.oeffnen()
        self.pruefen(datei, lauf.ziele[0], antwort, erwartet)
        self.schliessen()
        return ausgeloest, gesehen

    def vorgang_stoeren(self, vorgang):
        erwartet, anzahl = self.ungestoert(vorgang)
        self.assertGreater(anzahl, 10)
        nummern = range(1, anzahl + 1) if LANG else sorted(random.Random(vorgang.name).sample(range(1, anzahl + 1), PROBEN))
        gemeldet = 0
        for nummer in nummern:
            for antwort in ANTWORTEN if LANG else [ANTWORTEN[nummer % 3]]:
                with self.subTest(vorgang=vorgang.name, nummer=nummer, antwort=antwort):
                    gemeldet += self.einmal_stoeren(vorgang, nummer, antwort, erwartet)
        # Failures of reading ahead or flushing a folder are nobody's business, most others are told.
        self.assertGreater(gemeldet, 0)


def probe(vorgang):
    return lambda self: self.vorgang_stoeren(vorgang)


for _vorgang in vorgaenge.VORGAENGE:
    setattr(Stoerungen, f"test_{_vorgang.name}", probe(_vorgang))


if __name__ == "__main__":
    unittest.main()
