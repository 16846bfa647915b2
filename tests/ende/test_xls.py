"""All operations on workbooks: the jobs of the .mdb scripts on the same addresses, looked at with xlrd."""
import datetime
import functools
import pathlib
import shutil
import subprocess
import tempfile
import unittest

import gemeinsam
import mdbtools
import xlsleser
import test_hauptaufgabe
import test_muell
import test_umformen
import test_zweite_tabelle

HINWEIS = (
    "Sie verwenden eine Excel-Tabelle.\r"
    "Es wird empfohlen, diese mit dem entsprechenden Programm in \r"
    "eine Access-Datenbank zu konvertieren, da jene ein erheblich\r"
    "besseres Leistungsverhalten aufweisen."
)
ORIGINALE = gemeinsam.fremde_datei
GRUNDLAGE = "xls/beispiele/FormulaEvalTestData.xls"  # formulas, shared texts over several records, hidden names
ABLAGE = tempfile.TemporaryDirectory()


@functools.cache
def als_xls(name):
    """The file of that name; for an .mdb file a foreign workbook into which its tables were put."""
    quelle = ORIGINALE(name)
    if quelle.suffix != ".mdb":
        return quelle
    ziel = pathlib.Path(ABLAGE.name) / (quelle.stem + ".xls")
    shutil.copy(ORIGINALE(GRUNDLAGE), ziel)
    ziel.chmod(0o644)
    xlsleser.aus_mdb(quelle, ziel)
    return ziel


# The scripts that are run again ask these two for their files and for what is in them.
gemeinsam.fremde_datei = als_xls
for skript in (test_hauptaufgabe, test_muell, test_umformen, test_zweite_tabelle):
    skript.mdbtools = xlsleser


def schlicht(formattext):
    """A number format without its quoting, which every program does in its own way."""
    return "".join(c for c in formattext if c not in '\\"').lower()


class MitHinweis:
    """Frame 2 advises against workbooks, and goes on."""

    def nach_dem_oeffnen(self, fern, datei):
        if datei.suffix != ".xls":
            return
        fern.warten("meldung")
        self.assertEqual(HINWEIS.replace("\r", "\n"), fern.meldung()["text"].replace("\r", "\n"))
        fern.druecken("OK")


class Hauptaufgabe(MitHinweis, test_hauptaufgabe.Hauptaufgabe):
    test_sehr_niedrige_uebereinstimmung = None
    test_quicksuche = None


class Umformen(MitHinweis, test_umformen.Umformen):
    test_ein_indexfeld_bleibt = None  # a workbook has no index
    test_am_trennzeichen = None
    test_am_langen_trennzeichen = None
    test_vorwahl_und_durchwahl = None
    test_abbrechen_im_lauf = None


class Muell(MitHinweis, test_muell.Muell):
    test_ohne_firmenname = None
    test_post_und_hausnummer_allein = None
    test_abbrechen_in_jeder_phase = None
    test_nichts_gefunden = None


class ZweiteTabelle(MitHinweis, test_zweite_tabelle.ZweiteTabelle):
    test_abbrechen_in_jeder_phase = None
    test_abbrechen_in_der_nachbearbeitung = None
    test_mehrere_vorgaenge_und_dann_eine_andere_datenbank = None

    def schluessel_genannt(self):
        """A workbook has no key that could get lost."""


class FremdeMappe(MitHinweis, gemeinsam.AmProgramm):
    """A plain sheet as a user has it: no range, postal codes as numbers shown with zeros, dates in two forms."""

    KOPF = ["Name", "PLZ", "Ort", "Straße", "Geboren", "Umsatz"]
    FORMATE = [None, "00000", None, None, "DD.MM.YYYY", '#,##0.00\\ "€"']

    def setUp(self):
        super().setUp()
        self.datei = self.ordner / "kunden.xls"
        self.zeilen = [
            [
                f"Müller {i % 7}",
                1067 + i * 991,
                f"Ort {i % 5}",
                f"Lange Straße {i}",
                datetime.date(1950 + i, 3, 1 + i),
                1.5 * i,
            ]  # fmt: skip
            for i in range(20)
        ]
        self.mappe_bauen()
        self.vorher = xlsleser.abzug(self.datei)

    def mappe_bauen(self):
        try:
            import xlwt
        except ImportError:
            raise unittest.SkipTest("xlwt fehlt")
        mappe = xlwt.Workbook()
        blatt = mappe.add_sheet("Kunden")
        stile = [xlwt.easyxf(num_format_str=f) if f else xlwt.Style.default_style for f in self.FORMATE]
        for s, kopf in enumerate(self.KOPF):
            blatt.write(0, s, kopf)
        for z, zeile in enumerate(self.zeilen, 1):
            for s, wert in enumerate(zeile):
                blatt.write(z, s, wert, stile[s])
        rechnung = mappe.add_sheet("Rechnung")
        rechnung.write(0, 0, xlwt.Formula("SUM(Kunden!F2:F21)"))
        mappe.save(str(self.datei))

    def splitten(self, fern):
        """From frame 3 with a chosen table: street and number. Returns the target's name."""
        fern.klicken("btnWeiter")
        fern.rahmen(5)
        fern.klicken("btnAuswahl_1")
        fern.rahmen(4)
        ziel = fern.text("tbxZielTabelle")
        fern.klicken("btnWeiter")
        fern.rahmen(31)
        fern.setzen("cbxSplittenTypus", {"index": 1})
        fern.setzen("cbxSplitten1", "Straße")
        fern.setzen("tbxSplitten1", "Weg")
        fern.setzen("tbxSplitten2", "Nr")
        fern.klicken("btnWeiter")
        fern.rahmen(32)
        return ziel

    def ziel_pruefen(self, ziel):
        namen = [f["name"] for f in xlsleser.felder(self.datei, ziel)]
        self.assertEqual(self.KOPF[:4] + ["Weg", "Nr"] + self.KOPF[4:], namen)
        for alt, neu in zip(self.zeilen, xlsleser.zeilen(self.datei, ziel), strict=True):
            erwartet = alt[:4] + ["Lange Straße", alt[3].split()[-1]] + alt[4:]
            self.assertEqual(erwartet[:6], neu[:4] + [neu[4], str(neu[5])])
            self.assertEqual(erwartet[6], neu[6].date())
            self.assertEqual(erwartet[7], float(neu[7]))
        formate = xlsleser.formate(self.datei, ziel)
        erwartet = [schlicht(f) for f in (self.FORMATE[1], self.FORMATE[4], self.FORMATE[5])]
        self.assertEqual(erwartet, [schlicht(formate[s]) for s in (1, 6, 7)])

    def test_formate_bleiben(self):
        fern = self.programm()
        self.bis_tabelle(fern, self.datei, "Kunden$")
        ziel = self.splitten(fern)
        self.assertEqual("Kunden _#1__", ziel[:12])
        self.ziel_pruefen(ziel)
        nachher = xlsleser.abzug(self.datei)
        del nachher[ziel]
        self.assertEqual(self.vorher, nachher)

    def test_zwischendurch_in_libreoffice_gespeichert(self):
        if not shutil.which("soffice"):
            self.skipTest("soffice fehlt")
        fern = self.programm()
        self.bis_tabelle(fern, self.datei, "Kunden$")
        erstes = self.splitten(fern)
        fern.__exit__()
        neu = self.ordner / "neu"
        subprocess.run(
            ["soffice", f"-env:UserInstallation=file://{self.ordner}/lo", "--headless", "--convert-to",
             "xls:MS Excel 97", "--outdir", neu, self.datei], check=True, capture_output=True, timeout=300)  # fmt: skip
        shutil.copy(neu / self.datei.name, self.datei)
        self.ziel_pruefen(erstes)
        fern = self.programm()
        self.bis_tabelle(fern, self.datei, erstes)
        self.tabellen_werden(fern, ["Kunden$", "Rechnung$", erstes])
        fern.setzen("lstTabellen", "Kunden$")
        zweites = self.splitten(fern)
        self.assertIn("_#2__", zweites)
        self.ziel_pruefen(zweites)
        self.ziel_pruefen(erstes)

    def test_tabelle_umbenennen_und_loeschen(self):
        fern = self.programm()
        self.bis_tabelle(fern, self.datei, "Kunden$")
        ziel = self.splitten(fern)
        fern.klicken("btnWeiter")
        fern.rahmen(3)
        fern.setzen("lstTabellen", ziel)
        fern.klicken("cmdTabelleUmbenennen")
        fern.warten("meldung")
        fern.druecken("OK", eingabe="Fertig")
        self.tabellen_werden(fern, ["Kunden$", "Rechnung$", "Fertig"])
        self.ziel_pruefen("Fertig")
        fern.setzen("lstTabellen", "Rechnung$")
        fern.klicken("cmdTabelleUmbenennen")
        fern.warten("meldung")
        fern.druecken("OK", eingabe="Summe")
        self.tabellen_werden(fern, ["Kunden$", "Summe$", "Fertig"])
        fern.setzen("lstTabellen", "Fertig")
        fern.klicken("cmdTabelleLöschen")
        fern.warten("meldung")
        fern.druecken("Ja")
        self.tabellen_werden(fern, ["Kunden$", "Summe$"])
        self.assertEqual(["Kunden$", "Summe$"], xlsleser.tabellen(self.datei))
        self.assertEqual(self.vorher["Kunden$"], xlsleser.abzug(self.datei)["Kunden$"])


if __name__ == "__main__":
    unittest.main()
