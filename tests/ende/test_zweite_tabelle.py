"""Reconciliation and new data on a file that others wrote, held against the rules told a second time and mdbtools."""
import unittest

import gemeinsam
import mdbtools
import regelwerk as r
import vorgaenge

# (group, mask): the kinds whose parts are joined, each with its parser; None takes the value as it stands.
MISCHUNG = {
    (2, 1): [(21, r.firmenname)], (2, 2): [(22, r.rechtsform)], (2, 3): [(21, r.firmenname), (22, r.rechtsform)],
    (2, 4): [(23, None)], (3, 1): [(31, r.strasse)], (3, 2): [(32, r.hausnummer)],
    (3, 3): [(31, r.strasse), (32, r.hausnummer)], (3, 4): [(33, r.postleitzahl)], (3, 8): [(34, r.ort)],
    (3, 12): [(33, r.postleitzahl), (34, r.ort)], (4, 1): [(41, r.anrede)], (4, 2): [(42, r.vorname)],
    (4, 4): [(43, r.nachname)], (4, 6): [(42, r.vorname), (43, r.nachname)],
    (4, 5): [(41, r.anrede), (43, r.nachname)], (4, 7): [(41, r.anrede), (42, r.vorname), (43, r.nachname)],
    (4, 8): [(44, None)], (5, 1): [(51, r.vorwahl)], (5, 2): [(52, r.telefonnummer)], (5, 4): [(53, r.telefonnummer)],
    (5, 3): [(51, r.vorwahl), (52, r.telefonnummer)], (5, 5): [(51, r.vorwahl), (53, r.telefonnummer)],
    (6, 1): [(61, None)], (6, 2): [(62, None)],
}  # fmt: skip


def ergaenzt(ziel, felder2, zeile):
    """The value of a field of the first table for a record of the second one."""
    wert = r.LEER
    for n, (art, parser) in enumerate(MISCHUNG.get((ziel["gruppe"], ziel["maske"]), [])):
        stellen = [i for i, f in enumerate(felder2) if f["gruppe"] == r.gruppe_von(art) and f["maske"] & r.CODE[art]]
        if not stellen:
            continue
        roh = zeile[stellen[0]]
        teil = parser(roh) if parser else roh
        if parser is r.vorname and len(MISCHUNG[(ziel["gruppe"], ziel["maske"])]) == 1 and r.nichts(teil):
            teil = roh
        if n == 0:
            wert = teil
        else:
            verbindung = " / " if ziel["gruppe"] == 5 else " "
            wert = (r.als_text(wert) + verbindung + r.als_text(teil)).strip(" ")
    return None if r.nichts(wert) else wert


def zweite_tabelle(datei, zeilen):
    tabelle = vorgaenge.messe(zeilen, ("Name der Firma", "Anschrift", "PLZ und Ort", "Telefon", "Kontakt"))
    vorgaenge.pruefstand("TabelleSchreiben", str(datei), "", tabelle)


class ZweiteTabelle(gemeinsam.AmProgramm):
    def setUp(self):
        super().setUp()
        self.datei = self.kopie(gemeinsam.fremde_datei("daten/adressen-500.mdb"))
        zweite_tabelle(self.datei, mdbtools.zeilen(self.datei, "Adressen"))
        self.vorher = mdbtools.abzug(self.datei)
        self.fern = self.programm()

    def bis_suchoptionen_mit(self, auswahl, rahmen, liste, zweite="Messe"):
        """From frame 3 with a chosen table to frame 11. Returns the lines of both field lists and the target."""
        self.fern.klicken("btnWeiter")
        self.fern.rahmen(5)
        self.fern.klicken(f"btnAuswahl_{auswahl}")
        self.fern.rahmen(rahmen)
        self.fern.setzen(liste, zweite)
        self.fern.klicken("btnWeiter")
        self.fern.rahmen(7)
        erste = self.fern.lesen("lstFelder")["eintraege"]
        self.fern.klicken("btnWeiter")
        self.fern.rahmen(7)
        zweite = self.fern.lesen("lstFelder")["eintraege"]
        self.fern.klicken("btnWeiter")
        self.fern.rahmen(4)
        ziel = self.fern.text("tbxZielTabelle")
        self.fern.klicken("btnWeiter")
        self.fern.rahmen(11)
        return erste, zweite, ziel

    def abgleich(self):
        self.bis_tabelle(self.fern, self.datei, "Adressen")
        return self.bis_suchoptionen_mit(4, 51, "cbxDatenabgleich")

    def neue_daten(self):
        self.bis_tabelle(self.fern, self.datei, "Adressen")
        return self.bis_suchoptionen_mit(5, 61, "cbxNeueDaten")

    def gemischt(self, zeilen1, zeilen2):
        """The fields of the first table, the mixed records, and the pairs that the search finds."""
        felder1, felder2 = mdbtools.felder(self.datei, "Adressen"), mdbtools.felder(self.datei, "Messe")
        for felder, zeilen in ((felder1, zeilen1), (felder2, zeilen2)):
            for feld, zeile in zip(felder, zeilen):
                feld["gruppe"], feld["maske"] = r.zuordnung_aus_zeile(zeile)
        self.erste = mdbtools.zeilen(self.datei, "Adressen")
        mix = self.erste + [
            [ergaenzt(f, felder2, zeile) for f in felder1] for zeile in mdbtools.zeilen(self.datei, "Messe")
        ]
        laeufe = []
        for lauf in range(3):
            gewaehlt = [self.fern.lesen(f"cbxSuchFeld_{lauf * 3 + k}")["index"] - 1 for k in range(3)]
            gewaehlt = [g for g in gewaehlt if g >= 0]
            if gewaehlt:
                laeufe.append((gewaehlt[0], int(self.fern.lesen(f"sdrZeichenRichtig_{lauf}")["wert"]), gewaehlt))
        paare = r.paare_suchen(felder1, mix, laeufe, 0.73)
        self.assertGreater(len(paare), 30)
        return felder1, mix, paare

    def nur_das_ziel_kam_dazu(self, ziel, erwartet):
        # mdb-export shows a zero-length text as it shows Null.
        erwartet = [[None if w == "" else w for w in zeile] for zeile in erwartet]
        self.assertEqual(erwartet, mdbtools.zeilen(self.datei, ziel))
        nachher = mdbtools.abzug(self.datei)
        del nachher[ziel]
        self.assertEqual(self.vorher, nachher, "another table was touched or a work table stayed")

    def fertig(self, rahmen, fragen=1):
        self.fertig_klicken(self.fern)
        for _ in range(fragen):
            self.fern.warten("meldung")
            self.fern.druecken("Ja")
        if rahmen == 63:
            self.schluessel_genannt()
        self.fern.rahmen(rahmen)

    def schluessel_genannt(self):
        """The first table has a key, for which the records of the second one hold nothing."""
        self.fern.warten("meldung")
        meldung = self.fern.meldung()
        self.assertEqual(" Hinweis", meldung["titel"])
        self.assertIn("PrimaryKey", meldung["text"])
        self.fern.druecken("OK")

    def test_abgleich_ohne_etwas_zu_uebernehmen(self):
        zeilen1, zeilen2, ziel = self.abgleich()
        _, _, paare = self.gemischt(zeilen1, zeilen2)
        self.review_oeffnen(self.fern)
        self.fertig(53, fragen=2)
        betroffen = {nr for nr, _ in r.dublettenliste(paare)}
        erwartet = [z for nr, z in enumerate(self.erste, 1) if nr not in betroffen]
        self.nur_das_ziel_kam_dazu(ziel, erwartet)
        halb = len(r.dublettenliste(paare)) // 2
        self.assertEqual(f"davon {halb} in Referenz vorhanden", self.fern.text("lblDatenabgleich2"))
        self.assertEqual(f"{len(erwartet)} Datensätze nach Abgleich", self.fern.text("lblDatenabgleich3"))

    def test_abgleich_mit_allen_angereicherten(self):
        zeilen1, zeilen2, ziel = self.abgleich()
        felder, mix, paare = self.gemischt(zeilen1, zeilen2)
        self.review_oeffnen(self.fern)
        self.fern.klicken("btnAngereichert")
        self.fertig(53)
        betroffen = {nr for nr, _ in r.dublettenliste(paare)}
        allein2 = sum(nr not in betroffen for nr in range(len(self.erste) + 1, len(mix) + 1))
        self.assertGreater(allein2, 0)
        alle = r.ergebnistabelle(felder, mix, paare)
        allein1 = sum(nr not in betroffen for nr in range(1, len(self.erste) + 1))
        self.nur_das_ziel_kam_dazu(ziel, alle[:allein1] + alle[allein1 + allein2 :])

    def test_neue_daten(self):
        zeilen1, zeilen2, ziel = self.neue_daten()
        felder, mix, paare = self.gemischt(zeilen1, zeilen2)
        self.review_oeffnen(self.fern)
        self.fertig(63)
        erwartet = r.ergebnistabelle(felder, mix, paare)
        self.nur_das_ziel_kam_dazu(ziel, erwartet)
        self.assertEqual(f"{len(self.erste)} Quelldatensätze", self.fern.text("lblNeueDaten1"))
        self.assertEqual(f"{len(erwartet)} Datensätze nach Korrektur", self.fern.text("lblNeueDaten3"))

    def test_abbrechen_in_der_nachbearbeitung(self):
        bytes_vorher = self.datei.read_bytes()
        for vorgang in (self.abgleich, None):
            if vorgang:
                vorgang()
            else:
                self.fern.setzen("lstTabellen", "Adressen")
                self.bis_suchoptionen_mit(5, 61, "cbxNeueDaten")
            self.review_oeffnen(self.fern)
            self.fern.klicken("btnAbbrechen")
            self.fern.rahmen(3)
            self.assertEqual(bytes_vorher, self.datei.read_bytes())
            self.assertEqual(["Adressen", "Messe"], self.fern.lesen("lstTabellen")["eintraege"])

    def bis_zum_abgleich(self, tabelle):
        self.fern.setzen("lstTabellen", tabelle)
        self.bis_suchoptionen_mit(4, 51, "cbxDatenabgleich")

    def test_abbrechen_in_jeder_phase(self):
        self.datei = self.kopie(gemeinsam.fremde_datei("daten/adressen-10000.mdb"))
        tabelle = mdbtools.tabellen(self.datei)[0]
        zweite_tabelle(self.datei, mdbtools.zeilen(self.datei, tabelle))
        bytes_vorher = self.datei.read_bytes()
        self.bis_tabelle(self.fern, self.datei, tabelle)
        for phase in (
            f"Bereite Tabelle '{tabelle}' vor",
            f"Mische '{tabelle}'",
            "Bereite Tabelle auf Vergleich vor",
            "Durchsuche",
            "Reichere",
        ):
            with self.subTest(phase):
                self.in_phase_klicken(self.fern, phase, lambda: self.bis_zum_abgleich(tabelle))
                self.laufabbruch_bejahen(self.fern)
                self.fern.rahmen(3)
                self.assertEqual(bytes_vorher, self.datei.read_bytes())
                self.assertEqual(mdbtools.tabellen(self.datei), self.fern.lesen("lstTabellen")["eintraege"])

    def test_mehrere_vorgaenge_und_dann_eine_andere_datenbank(self):
        """New data, then a merge in the result, then a second database: each target has its own number."""
        _, _, erstes = self.neue_daten()
        self.review_oeffnen(self.fern)
        self.fertig(63)
        zweites = self.naechster_vorgang(erstes, "btnAuswahl_0", 41)
        self.assertIn("_#2__", zweites)
        self.fern.setzen("cbxVerschmelzen1", "PLZ")
        self.fern.setzen("cbxVerschmelzen2", "Ort")
        self.fern.setzen("tbxVerschmolzen", "Ort mit PLZ")
        self.fern.klicken("btnWeiter")
        self.fern.rahmen(42)
        self.assertEqual({"Adressen", "Messe", erstes, zweites}, set(mdbtools.tabellen(self.datei)))
        self.fern.klicken("btnWeiter")
        self.fern.rahmen(3)
        self.fern.klicken("btnZurück")
        self.fern.rahmen(2)
        andere = self.kopie(gemeinsam.BEISPIELE / "adressen.mdb")
        self.fern.setzen("tbxDatenbankName", str(andere))
        self.fern.klicken("btnWeiter")
        self.fern.rahmen(3)
        self.assertEqual(["Adressen", "Interessenten"], self.fern.lesen("lstTabellen")["eintraege"])


if __name__ == "__main__":
    unittest.main()
