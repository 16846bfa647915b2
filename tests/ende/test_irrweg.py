"""A user without a plan: any control, key and answer, in any order. Nothing ends the program, and no table suffers.

The short form takes some hundred steps over each format; LINDGARN_LANG=1 some ten thousand, LINDGARN_SAAT others.
"""
import os
import random
import unittest

import fremdleser
import gemeinsam
import vorgaenge
from fernsteuerung import Fernsteuerung

LANG = bool(os.environ.get("LINDGARN_LANG"))
SCHRITTE = 20000 if LANG else 900  # over each format
SAAT = int(os.environ.get("LINDGARN_SAAT", "1"))

TABELLEN = ("ADRESSEN", "MESSE")
KNOEPFE = (
    ["btnWeiter"] * 14
    + ["btnZurück", "btnFertig"] * 2
    + [f"btnAuswahl_{i}" for i in range(6)] * 2
    + [f"chkSucheDurchführen_{i}" for i in range(3)]
    + ["chk" + x for x in "Anrede Branche Email Fax Firmenname Hausnummer Kontakt Postalisch Telefon".split()]
    + "btnAngereichert btnDublette btnÜbernehmen btnMüll btnAbbrechen btnHilfe btnBeenden cmdOK".split()
    + "cmdTabelleLöschen cmdTabelleUmbenennen chkQuickSuche chkSplittenLöschen chkVerschmelzenLöschen".split()
)
LISTEN = "lstTabellen lstFelder dgdAngereichert dgdDublette dgdÜbernehmen dgdMüll".split()
AUSWAHLEN = (
    "cbxDatenabgleich cbxNeueDaten cbxSplitten1 cbxSplitten2 cbxSplittenTypus cbxVerschmelzen1 cbxVerschmelzen2".split()
    + [f"cbxSuchFeld_{i}" for i in range(9)]
)
EINGABEN = (
    "tbxZielTabelle tbxDatenbankPasswort tbxTrennzeichen tbxSplitten1 tbxSplitten2 tbxSplitten3 tbxVerschmolzen".split()
)
TEXTE = [
    "",
    "Test",
    "NEU",
    "a" * 70,
    "x.y!",
    "[Name]",
    'Ärger\'s "T"',
    " ",
    "\n",
    "\0",
    "😀",
    "0",
    "TEMP_DSS",
    "a]b",
    "..",
]
TASTEN = (
    "Return Escape Tab Shift+Tab Up Down PageDown PageUp Home End Space Menu F1 Delete F2 Left Right a ß 5 %".split()
    + [f"Alt+{t}" for t in "WZAFHE123"]
    + ["Ctrl+A", "Ctrl+F"]
)
PFADE = [["?", "Info"], ["?", "Hilfe"], ["Programm"]]


class Irrweg(gemeinsam.AmProgramm):
    def befehl(self, cmd, **felder):
        """What does not go just now does not matter."""
        self.letzte = (self.letzte + [(cmd, felder)])[-30:]
        try:
            return self.fern.befehl(cmd, **felder)
        except Fernsteuerung.Abgelehnt:
            return None

    def antworten(self, meldung):
        """Any answer; but the user does not want to lose or rename a table of his."""
        knoepfe = meldung["knoepfe"]
        seine = any(name in meldung["text"].upper().replace("_", " ").split('"') for name in TABELLEN)
        if seine:
            knoepfe = [k for k in knoepfe if k in ("Nein", "Abbrechen")] or knoepfe
        knopf = self.zufall.choice(knoepfe)
        # Only a box that asks for a text takes one.
        if self.befehl("druecken", knopf=knopf, eingabe=self.zufall.choice(TEXTE)) is None:
            self.befehl("druecken", knopf=knopf)

    def weiter(self):
        self.befehl("klicken", objekt="btnWeiter")

    def tabelle_waehlen(self):
        self.befehl("setzen", objekt="lstTabellen", wert={"index": self.zufall.randrange(4)})
        self.weiter()

    def datei_nennen(self):
        text = str(self.datei) if self.zufall.random() < 0.9 else self.zufall.choice(TEXTE)
        self.befehl("setzen", objekt="tbxDatenbankName", wert=text)
        self.weiter()

    def irgendetwas(self):
        zufall = self.zufall
        art = zufall.choices(
            ("klicken", "maus", "liste", "auswahl", "eingabe", "regler", "taste", "menue", "dialog"),
            (48, 12, 10, 8, 6, 2, 10, 2, 2),
        )[0]
        if art == "klicken":
            self.befehl("klicken", objekt=zufall.choice(KNOEPFE))
        elif art == "maus":
            self.befehl(
                "maus",
                objekt=zufall.choice(LISTEN),
                knopf=zufall.choice(["links", "rechts"]),
                zeile=zufall.randrange(12),
            )
        elif art == "liste":
            self.befehl("setzen", objekt=zufall.choice(LISTEN[:2]), wert={"index": zufall.randrange(12)})
        elif art == "auswahl":
            self.befehl("setzen", objekt=zufall.choice(AUSWAHLEN), wert={"index": zufall.randrange(8)})
        elif art == "eingabe":
            self.befehl("setzen", objekt=zufall.choice(EINGABEN), wert=zufall.choice(TEXTE))
        elif art == "regler":
            self.befehl(
                "setzen", objekt=zufall.choice(["sdrToleranz", "sdrZeichenRichtig_0"]), wert=zufall.randrange(6)
            )
        elif art == "taste":
            self.befehl("taste", taste=zufall.choice(TASTEN))
        elif art == "menue":
            self.befehl("menue", pfad=zufall.choice(PFADE))
        else:
            self.befehl("dateidialog", datei=str(self.datei), filter=1)
            self.befehl("dateidialog", abbrechen=True)

    def schritt(self):
        meldung = self.befehl("meldung")
        if meldung:
            return self.antworten(meldung)
        rahmen = self.befehl("zustand")["gRahmen"]
        self.gesehen.add(rahmen)
        zufall = self.zufall.random()
        if zufall < 0.5 and rahmen in self.wege:
            return self.wege[rahmen]()
        return self.weiter() if zufall > 0.85 else self.irgendetwas()

    def programm_beenden(self):
        """The tool ends with its input, wherever the program stands; 0 is a good end."""
        self.fern.__exit__()
        self.assertEqual(0, self.fern.prozess.returncode, self.letzte)

    def gehen(self):
        """Closing the window is a step like others: the user then starts again."""
        for _ in range(SCHRITTE):
            try:
                self.schritt()
            except (RuntimeError, BrokenPipeError):
                self.programm_beenden()
                self.fern = self.programm()
        self.programm_beenden()

    def format_pruefen(self, leser):
        self.zufall = random.Random(f"{SAAT} {leser.name}")
        self.gesehen, self.letzte = set(), []
        # Where chance alone would take too long to find the way.
        self.wege = {0: self.weiter, 1: self.weiter, 2: self.datei_nennen, 3: self.tabelle_waehlen}
        quelle = gemeinsam.fremde_datei("daten/adressen-500.mdb")
        ordner = self.ordner / "daten"
        leser.anlegen(ordner)
        self.datei = leser.datei(ordner)
        for tabelle, anzahl in zip(TABELLEN, (120, 60)):
            vorgaenge.tabelle_uebertragen(quelle, "Adressen", self.datei, anzahl=anzahl, name=tabelle)
        vorher = leser.abzug(ordner)
        dateien = set(os.listdir(ordner))
        self.fern = self.programm()
        self.gehen()
        print(f"{leser.name}: Rahmen {sorted(self.gesehen)}", flush=True)
        self.assertLessEqual({3, 5}, self.gesehen, "the walk led nowhere")
        nachher = leser.abzug(ordner)
        self.assertEqual(vorher, {name: nachher.get(name) for name in vorher})
        for name in nachher:
            self.assertFalse(name.startswith("TEMP"), "a work table stayed")
        if not leser.mehrere_dateien:
            self.assertEqual(dateien, set(os.listdir(ordner)), "a file stayed")

    def test_mdb(self):
        self.format_pruefen(fremdleser.Mdb())

    def test_dbf(self):
        self.format_pruefen(fremdleser.Dbf())

    def test_xls(self):
        self.format_pruefen(fremdleser.Xls())


if __name__ == "__main__":
    unittest.main()
