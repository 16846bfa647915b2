"""Split and merge on a file that another library wrote, held against the rules told a second time and mdbtools."""
import unittest

import gemeinsam
import mdbtools
import regelwerk

TYPEN = {
    0: (("PLZOrt",), (regelwerk.postleitzahl, regelwerk.ort)),
    1: (("Straße",), (regelwerk.strasse, regelwerk.hausnummer)),
    3: (("Telefon",), (regelwerk.vorwahl, regelwerk.telefonnummer)),
}
NAMEN = ("Teil 1", "Teil 2", "Teil 3")


def stored(wert):
    return None if regelwerk.nichts(wert) or wert == "" else wert


def geteilt(typ, erster, zweiter, trennzeichen):
    """The values of the new fields."""
    if erster is None or erster == "":
        teile = [None] * 3
    elif typ == 2:
        teile = [regelwerk.anrede(erster), regelwerk.vorname(erster), regelwerk.nachname(erster)]
    elif typ == 4:
        vorwahl = stored(regelwerk.vorwahl(erster)) or regelwerk.vorwahl(zweiter)
        teile = [vorwahl, regelwerk.telefonnummer(erster), regelwerk.telefonnummer(zweiter)]
    elif typ == 5:
        vorn, _, hinten = erster.partition(trennzeichen)
        rest = trennzeichen[1:] + hinten if trennzeichen in erster else None
        teile = [vorn, rest, None]
    else:
        teile = [regel(erster) for regel in TYPEN[typ][1]] + [None]
    ergebnis = [stored(t) for t in teile]
    if ergebnis[1] is None:
        ergebnis[2] = None
    return ergebnis[: 3 if typ in (2, 4) else 2]


class Umformen(gemeinsam.AmProgramm):
    def setUp(self):
        super().setUp()
        self.datei = self.kopie(gemeinsam.fremde_datei("daten/adressen-500.mdb"))
        self.vorher = mdbtools.abzug(self.datei)
        self.namen = [f["name"] for f in mdbtools.felder(self.datei, "Adressen")]
        self.zeilen = mdbtools.zeilen(self.datei, "Adressen")
        self.fern = self.programm()

    def bis_optionen(self, auswahl, rahmen, tabelle="Adressen"):
        """From the welcome page to the options of the operation. Returns the target's name."""
        self.bis_tabelle(self.fern, self.datei, tabelle)
        self.fern.klicken("btnWeiter")
        self.fern.rahmen(5)
        self.fern.klicken(f"btnAuswahl_{auswahl}")
        self.fern.rahmen(4)
        ziel = self.fern.text("tbxZielTabelle")
        self.fern.klicken("btnWeiter")
        self.fern.rahmen(rahmen)
        return ziel

    def pruefen(self, ziel, namen, zeilen):
        self.assertEqual(namen, [f["name"] for f in mdbtools.felder(self.datei, ziel)])
        self.assertEqual(zeilen, mdbtools.zeilen(self.datei, ziel))
        nachher = mdbtools.abzug(self.datei)
        del nachher[ziel]
        self.assertEqual(self.vorher, nachher, "another table was touched")

    def splitten(self, typ, feld1, feld2=None, trennzeichen=None, loeschen=False):
        ziel = self.bis_optionen(1, 31)
        self.fern.setzen("cbxSplittenTypus", {"index": typ})
        self.fern.setzen("cbxSplitten1", feld1)
        if feld2:
            self.fern.setzen("cbxSplitten2", feld2)
        if trennzeichen:
            self.fern.setzen("tbxSplitten_Trennzeichen", trennzeichen)
        anzahl = 3 if typ in (2, 4) else 2
        for i in range(anzahl):
            self.fern.setzen(f"tbxSplitten{i + 1}", NAMEN[i])
        self.fern.setzen("chkSplittenLöschen", loeschen)
        self.fern.klicken("btnWeiter")
        self.fern.rahmen(32)

        stelle1 = self.namen.index(feld1)
        stelle2 = self.namen.index(feld2 or feld1)
        weg = {stelle1, stelle2} if loeschen else set()
        namen, zeilen = [], [[] for _ in self.zeilen]
        for i, name in enumerate(self.namen):
            if i not in weg:
                namen.append(name)
            if i == stelle1:
                namen += NAMEN[:anzahl]
        for neu, alt in zip(zeilen, self.zeilen):
            for i, wert in enumerate(alt):
                if i not in weg:
                    neu.append(wert)
                if i == stelle1:
                    neu += geteilt(typ, alt[stelle1], alt[stelle2], trennzeichen)
        self.pruefen(ziel, namen, zeilen)

    def test_strasse_und_hausnummer(self):
        self.splitten(1, "Straße")

    def test_anrede_vorname_name(self):
        self.splitten(2, "Anrede")

    def test_vorwahl_und_durchwahl(self):
        self.splitten(3, "Telefon", loeschen=True)

    def test_telefon_und_telefax(self):
        self.splitten(4, "Telefon", "Telefax", loeschen=True)

    def test_am_trennzeichen(self):
        self.splitten(5, "EMail", trennzeichen="@")

    def test_am_langen_trennzeichen(self):
        self.splitten(5, "Homepage", trennzeichen="www.")

    def verschmelzen(self, feld1, feld2, trennzeichen, loeschen):
        ziel = self.bis_optionen(0, 41)
        self.fern.setzen("cbxVerschmelzen1", feld1)
        self.fern.setzen("cbxVerschmelzen2", feld2)
        self.fern.setzen("tbxVerschmolzen", "Beides")
        if trennzeichen is None:
            self.fern.setzen("otnTrennzeichen_1", True)
        else:
            self.fern.setzen("otnTrennzeichen_0", True)
            self.fern.setzen("tbxTrennzeichen", trennzeichen)
        self.fern.setzen("chkVerschmelzenLöschen", loeschen)
        self.fern.klicken("btnWeiter")
        self.fern.rahmen(42)

        stellen = [self.namen.index(feld1), self.namen.index(feld2)]
        weg = set(stellen) if loeschen else set()
        namen, zeilen = [], []
        for i, name in enumerate(self.namen):
            namen += ([] if i in weg else [name]) + (["Beides"] if i == stellen[0] else [])
        for alt in self.zeilen:
            a, b = (alt[s] for s in stellen)
            beides = (
                None
                if a is None and b is None and trennzeichen is None
                else (a or "") + (trennzeichen or "") + (b or "")
            )
            if beides == "":
                continue
            neu = []
            for i, wert in enumerate(alt):
                neu += ([] if i in weg else [wert]) + ([beides] if i == stellen[0] else [])
            zeilen.append(neu)
        self.pruefen(ziel, namen, zeilen)

    def test_plz_und_ort_mit_trennzeichen(self):
        self.verschmelzen("PLZ", "Ort", " ", True)

    def test_vorname_und_nachname_ohne_trennzeichen(self):
        self.verschmelzen("Vorname", "Nachname", None, False)

    def test_nacheinander_auf_derselben_datenbank(self):
        """Merge, then split the result, with the wizard going on from the result frame."""
        self.verschmelzen("PLZ", "Ort", " ", True)
        erstes = [t for t in mdbtools.tabellen(self.datei) if t not in self.vorher][0]
        zweites = self.naechster_vorgang(erstes, "btnAuswahl_1", 31)
        self.assertIn("_#2__", zweites)
        self.fern.setzen("cbxSplitten1", "Beides")
        self.fern.setzen("tbxSplitten1", "PLZ")
        self.fern.setzen("tbxSplitten2", "Ort")
        self.fern.setzen("chkSplittenLöschen", True)
        self.fern.klicken("btnWeiter")
        self.fern.rahmen(32)
        stelle = self.namen.index("PLZ")
        erwartet = []
        for alt in self.zeilen:
            beides = (alt[stelle] or "") + " " + (alt[stelle + 1] or "")
            erwartet.append(alt[:stelle] + geteilt(0, beides, None, None) + alt[stelle + 2 :])
        self.assertEqual(erwartet, mdbtools.zeilen(self.datei, zweites))

    def test_ein_indexfeld_bleibt(self):
        """The sample's customer number is its key."""
        self.datei = self.kopie(gemeinsam.BEISPIELE / "adressen.mdb")
        vorher = mdbtools.abzug(self.datei)
        ziel = self.bis_optionen(1, 31)
        self.fern.setzen("cbxSplittenTypus", {"index": 5})
        self.fern.setzen("cbxSplitten1", "Nachname")
        self.fern.setzen("tbxSplitten_Trennzeichen", "-")
        self.fern.setzen("tbxSplitten1", "Name 1")
        self.fern.setzen("tbxSplitten2", "Name 2")
        self.fern.setzen("chkSplittenLöschen", True)
        self.fern.klicken("btnWeiter")
        self.fern.warten("meldung")
        self.assertIn('Das Feld "Nachname" konnte nicht gelöscht werden.', self.fern.meldung()["text"])
        self.fern.druecken("OK")
        self.fern.rahmen(32)
        namen = [f["name"] for f in mdbtools.felder(self.datei, ziel)]
        stelle = namen.index("Nachname")
        self.assertEqual(["Nachname", "Name 1", "Name 2"], namen[stelle : stelle + 3])
        nachher = mdbtools.abzug(self.datei)
        del nachher[ziel]
        self.assertEqual(vorher, nachher)

    def test_abbrechen_im_fehlerkasten(self):
        bytes_vorher = self.datei.read_bytes()
        self.bis_optionen(1, 31)
        self.fern.setzen("cbxSplitten1", "Erfasst")
        self.fern.setzen("cbxSplittenTypus", {"index": 5})
        self.fern.setzen("tbxSplitten_Trennzeichen", "/")
        self.fern.setzen("tbxSplitten1", "Un.gültig")
        self.fern.setzen("tbxSplitten2", "x")
        self.fern.klicken("btnWeiter")
        self.fern.warten("meldung")
        self.assertIn("'Un.gültig'", self.fern.meldung()["text"])
        self.fern.druecken("OK")
        self.fern.setzen("tbxSplitten1", "Tag")
        self.fern.klicken("btnWeiter")
        self.fern.warten("meldung")
        self.assertIn("nimmt höchstens 8 Zeichen auf", self.fern.meldung()["text"])
        self.fern.druecken("Abbrechen")
        self.fern.rahmen(3)
        self.assertEqual(bytes_vorher, self.datei.read_bytes())

    def test_abbrechen_im_lauf(self):
        self.datei = self.kopie(gemeinsam.fremde_datei("daten/adressen-10000.mdb"))
        bytes_vorher = self.datei.read_bytes()
        self.bis_optionen(1, 31, mdbtools.tabellen(self.datei)[0])
        self.fern.setzen("cbxSplittenTypus", {"index": 1})
        self.fern.setzen("cbxSplitten1", "Straße")
        self.fern.setzen("tbxSplitten1", "Weg")
        self.fern.setzen("tbxSplitten2", "Nr")
        self.assertTrue(self.fern.im_lauf("", "klicken", objekt="btnZurück"))
        self.fern.warten("meldung")
        self.fern.druecken("Ja")
        self.fern.rahmen(3)
        self.assertEqual(bytes_vorher, self.datei.read_bytes())
        self.assertEqual(mdbtools.tabellen(self.datei), self.fern.lesen("lstTabellen")["eintraege"])


if __name__ == "__main__":
    unittest.main()
