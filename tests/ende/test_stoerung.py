"""Every file operation of a run fails, once or until the disk is healed, and each answer to the box is given.

The file is as it was, or whole, in every format. The short form tries a few operations of each run; LINDGARN_LANG=1
tries all of them with each of the answers.
"""
import collections
import os
import random
import re
import time
import unittest

import fremdleser
import gemeinsam
import mdbtools
import stoerung
import vorgaenge

LANG = bool(os.environ.get("LINDGARN_LANG"))
ZIEL = "ERGEBNIS"
MAX_KAESTEN = 40
NAH_DAHINTER = 3  # operations
ABGELEHNT = re.compile("Fehler beim Öffnen|kann nicht geöffnet werden")

# How a test treats the boxes; `dauer`: how many operations in a row fail, unless Wiederholen comes first.
Weise = collections.namedtuple("Weise", "antwort dauer")
WEISEN = (
    Weise("Wiederholen", 1),
    Weise("Ignorieren", 1),
    Weise("Abbrechen", 1),
    Weise("Wiederholen", stoerung.OHNE_ENDE),
    Weise("Abbrechen", stoerung.OHNE_ENDE),
)


class Stoerungen:
    """What the three formats share; a subclass says its reader, and how many operations of a run the short form tries."""

    leser = None
    proben = 0

    def setUp(self):
        super().setUp()
        self.bereich = self.ordner / "bereich"
        self.bereich.mkdir()
        self.versuch = 0
        self.dahinter = 0  # number of the first operation behind the file's renaming; 0 when there is none
        self.quelle_anlegen()
        self.stoerung = stoerung.Stoerung(self.bereich, self.ordner / "seite")
        self.addCleanup(self.stoerung.schliessen)
        self.programm_starten()

    def quelle_anlegen(self):
        self.quelle = self.ordner / "quelle"
        self.leser.anlegen(self.quelle)
        adressen = gemeinsam.fremde_datei("daten/adressen-500.mdb")
        datei = self.leser.datei(self.quelle)
        vorgaenge.tabelle_uebertragen(adressen, "Adressen", datei, anzahl=40)
        vorgaenge.pruefstand(
            "TabelleSchreiben", str(datei), "", vorgaenge.messe(mdbtools.zeilen(adressen, "Adressen")[:40])
        )
        self.abzug = self.leser.abzug(self.quelle)
        self.namen = set(os.listdir(self.quelle))

    def programm_starten(self):
        self.fern = self.programm(**self.stoerung.umgebung)
        for rahmen in (0, 1):
            self.fern.rahmen(rahmen)
            self.fern.klicken("btnWeiter")
        self.fern.rahmen(2)

    def frische_kopie(self):
        """A copy in a folder of its own, and who drives the program over it."""
        self.versuch += 1
        self.opfer = self.bereich / str(self.versuch)
        self.leser.kopieren(self.quelle, self.opfer)
        return vorgaenge.SechsVorgaenge(
            self, self.fern, self.leser.datei(self.opfer), namen=[ZIEL] * 6, hinweis=self.leser.hinweis
        )

    def oeffnen(self):
        lauf = self.frische_kopie()
        lauf.datei_oeffnen()
        return lauf

    def schliessen(self):
        """From a result or the list of tables back to frame 2."""
        while self.fern.zustand()["gRahmen"] != 3:
            self.fern.klicken("btnWeiter")
            self.fern.rahmen(3)
        self.fern.klicken("btnZurück")
        self.fern.rahmen(2)

    def kasten_beantworten(self, kasten, weise, gesehen):
        knoepfe = kasten["knoepfe"]
        if "Wiederholen" in knoepfe:
            gesehen.append(kasten["text"])
            if weise.antwort == "Wiederholen":
                self.stoerung.heilen()
            # An ignored failure brings others with it; at some point everybody gives up.
            self.fern.druecken(weise.antwort if len(gesehen) < MAX_KAESTEN else "Abbrechen")
        else:
            self.fern.druecken("Ja" if "Ja" in knoepfe else "OK")

    def durchlaufen(self, vorgang, weise):
        """Starts the prepared operation and answers all that comes. The frame that it ends on, and the boxes' texts."""
        gesehen = []
        moved = False
        self.fern.klicken("btnWeiter")
        frist = time.monotonic() + 120
        while True:
            self.assertLess(time.monotonic(), frist, "the run does not end")
            kasten = self.fern.meldung()
            if kasten:
                self.kasten_beantworten(kasten, weise, gesehen)
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

    def pruefen(self, ordner, antwort, erwartet):
        """The promises: other tables as they were, the new one whole or not there, no file of ours left."""
        jetzt = self.leser.abzug(ordner)
        neu = jetzt.pop(ZIEL, None)
        self.assertEqual(self.abzug, jetzt, "another table was touched or a work table stayed")
        self.assertEqual(self.namen | (self.neue_namen if neu else set()), set(os.listdir(ordner)))
        if antwort == "Wiederholen":
            self.assertEqual(erwartet, neu)
        elif antwort == "Abbrechen":
            self.assertIn(neu, (None, erwartet))

    def ungestoert(self, vorgang):
        """What the operation makes when nothing fails, and how many file operations it takes."""
        self.oeffnen().vorbereiten(vorgang)
        self.stoerung.beginnen()
        rahmen, gesehen = self.durchlaufen(vorgang, WEISEN[0])
        anzahl, _ = self.stoerung.beenden()
        self.dahinter = self.stoerung.umbenannt + 1
        self.assertEqual((vorgang.ergebnis, []), (rahmen, gesehen))
        erwartet = self.leser.abzug(self.opfer)[ZIEL]
        self.neue_namen = set(os.listdir(self.opfer)) - self.namen
        self.pruefen(self.opfer, "Wiederholen", erwartet)
        self.schliessen()
        return erwartet, anzahl

    def mit_neuem_programm_nach_fund(self, probe, *args):
        """After a finding the next try gets a new program."""
        try:
            return probe(*args)
        except Exception as fehler:
            kasten = self.fern.meldung()
            self.fern.prozess.kill()
            self.programm_starten()
            raise AssertionError(f"{self.stoerung.letzte}: {fehler}; {kasten}") from fehler

    def lauf_stoeren(self, vorgang, nummer, weise, erwartet):
        """Whether the failure was told."""
        self.oeffnen().vorbereiten(vorgang)
        self.stoerung.beginnen(nummer, weise.dauer)
        _, gesehen = self.durchlaufen(vorgang, weise)
        _, ausgeloest = self.stoerung.beenden()
        ordner = self.opfer
        if weise.antwort == "Wiederholen":
            self.assertLessEqual(len(gesehen), 1, f"the disk is healed and this came all the same: {gesehen[1:]}")
        # What nobody was told of has done no harm.
        antwort = weise.antwort if gesehen else "Wiederholen"
        self.pruefen(ordner, antwort, erwartet)
        self.schliessen()
        # A result that could not be saved is saved when its database is closed.
        self.oeffnen()
        self.pruefen(ordner, antwort, erwartet)
        self.schliessen()
        return bool(ausgeloest and gesehen)

    def oeffnen_stoeren(self, nummer, weise, tabellen):
        """All tables are shown, or the user is told and they are at the second try; no file changes. Whether it was told."""
        lauf = self.frische_kopie()
        vorher = self.inhalt()
        self.stoerung.beginnen(nummer, weise.dauer)
        self.fern.setzen("tbxDatenbankName", str(lauf.datei))
        self.fern.klicken("btnWeiter")
        klagen = self.klagen_beim_oeffnen()
        self.stoerung.beenden()
        if klagen:
            if self.fern.zustand()["gRahmen"] == 3:
                self.schliessen()
            lauf.datei_oeffnen()
        self.assertEqual(tabellen, self.fern.lesen("lstTabellen")["eintraege"])
        self.schliessen()
        self.assertEqual(vorher, self.inhalt())
        return bool(klagen)

    def klagen_beim_oeffnen(self):
        """Answers what comes until the tables are shown or the file was refused. The boxes' texts but for the usual one."""
        klagen = []
        frist = time.monotonic() + 60
        while True:
            self.assertLess(time.monotonic(), frist, "the file is neither opened nor refused")
            if kasten := self.fern.meldung():
                if not self.leser.hinweis or self.leser.hinweis not in kasten["text"]:
                    klagen.append(kasten["text"])
                self.fern.druecken("OK")
            elif self.fern.zustand()["gRahmen"] == 3 or any(ABGELEHNT.search(k) for k in klagen):
                return klagen

    def inhalt(self):
        return {p.name: p.read_bytes() for p in self.opfer.iterdir()}

    def test_oeffnen(self):
        self.oeffnen()
        tabellen = self.fern.lesen("lstTabellen")["eintraege"]
        self.schliessen()
        self.stoerung.beginnen()
        self.oeffnen()
        anzahl, _ = self.stoerung.beenden()
        self.schliessen()
        gemeldet = versucht = 0
        for nummer, weise in self.auswahl(anzahl, "oeffnen"):
            versucht += 1
            with self.subTest(nummer=nummer, dauer=weise.dauer):
                gemeldet += self.mit_neuem_programm_nach_fund(self.oeffnen_stoeren, nummer, weise, tabellen)
        self.auszaehlen("oeffnen", versucht, gemeldet)

    def auswahl(self, anzahl, saat):
        """Pairs of an operation's number and a way to treat what comes of its failure."""
        if LANG:
            return [(nummer, weise) for nummer in range(1, anzahl + 1) for weise in WEISEN]
        zufall = random.Random(saat)
        nummern = sorted(zufall.sample(range(1, anzahl + 1), min(self.proben, anzahl)))
        ab = zufall.randrange(len(WEISEN))
        proben = [(nummer, WEISEN[(ab + i) % len(WEISEN)]) for i, nummer in enumerate(nummern)]
        # Behind the renaming the change is made, and nothing may look as if it were not.
        hinten = range(self.dahinter, min(self.dahinter + NAH_DAHINTER, anzahl) + 1) if self.dahinter else []
        return proben + [(zufall.choice(hinten), zufall.choice(WEISEN[:2]))] if hinten else proben

    def auszaehlen(self, was, versucht, gemeldet):
        print(f"{self.leser.name} {was}: {versucht} Störungen, {gemeldet} gemeldet", flush=True)
        # Failures of reading ahead or flushing a folder are nobody's business, most others are told.
        if LANG:
            self.assertGreater(gemeldet, versucht // 3)

    def vorgang_stoeren(self, vorgang):
        erwartet, anzahl = self.ungestoert(vorgang)
        self.assertGreater(anzahl, 5)
        gemeldet = versucht = 0
        for nummer, weise in self.auswahl(anzahl, vorgang.name):
            versucht += 1
            with self.subTest(vorgang=vorgang.name, nummer=nummer, **weise._asdict()):
                gemeldet += self.mit_neuem_programm_nach_fund(self.lauf_stoeren, vorgang, nummer, weise, erwartet)
        self.auszaehlen(vorgang.name, versucht, gemeldet)


def probe(vorgang):
    return lambda self: self.vorgang_stoeren(vorgang)


for _vorgang in vorgaenge.VORGAENGE:
    setattr(Stoerungen, f"test_{_vorgang.name}", probe(_vorgang))


class Mdb(Stoerungen, gemeinsam.AmProgramm):
    leser = fremdleser.Mdb()
    proben = 3


class Xls(Stoerungen, gemeinsam.AmProgramm):
    leser = fremdleser.Xls()
    proben = 1


class Dbf(Stoerungen, gemeinsam.AmProgramm):
    leser = fremdleser.Dbf()
    proben = 1


if __name__ == "__main__":
    unittest.main()
