"""The main job on a file that another library wrote, held against a second telling of the rules and mdbtools."""
import unittest

import gemeinsam
import mdbtools
import regelwerk

SCHWELLEN = (0.82, 0.73, 0.62, 0.5)


class Hauptaufgabe(gemeinsam.AmProgramm):
    def setUp(self):
        super().setUp()
        self.datei = self.kopie(gemeinsam.fremde_datei("daten/adressen-500.mdb"))

    def zugeordnete_felder(self, zeilen):
        felder = mdbtools.felder(self.datei, "Adressen")
        for feld, zeile in zip(felder, zeilen):
            feld["gruppe"], feld["maske"] = regelwerk.zuordnung_aus_zeile(zeile)
        return felder

    def laeufe(self, fern):
        """The passes as frame 11 shows them: (block column, block length, sort columns)."""
        for lauf in range(3):
            gewaehlt = [fern.lesen(f"cbxSuchFeld_{lauf * 3 + k}")["index"] - 1 for k in range(3)]
            gewaehlt = [g for g in gewaehlt if g >= 0]
            if gewaehlt:
                yield gewaehlt[0], int(fern.lesen(f"sdrZeichenRichtig_{lauf}")["wert"]), gewaehlt

    def ablauf(self, toleranz=1, differenzieren=False, quick=False):
        """Runs the whole job, takes over all enriched records, and compares with the rules."""
        vorher = mdbtools.abzug(self.datei)
        fern = self.programm()
        zeilen_der_liste, ziel = self.bis_suchoptionen(fern, self.datei)
        fern.setzen("sdrToleranz", toleranz)
        fern.setzen("chkAnsprechpartnerDifferenzieren", differenzieren)
        fern.setzen("chkQuickSuche", quick)
        laeufe = list(self.laeufe(fern))
        self.review_oeffnen(fern)
        fern.klicken("btnAngereichert")
        self.review_fertig(fern)

        felder = self.zugeordnete_felder(zeilen_der_liste)
        quelle = mdbtools.zeilen(self.datei, "Adressen")
        paare = regelwerk.paare_suchen(felder, quelle, laeufe, SCHWELLEN[toleranz], differenzieren, quick)
        erwartet = regelwerk.ergebnistabelle(felder, quelle, paare)
        self.assertGreater(len(paare), 0, "the file holds no duplicates at this tolerance")
        self.assertEqual(erwartet, mdbtools.zeilen(self.datei, ziel))
        self.assertEqual(len(regelwerk.dublettenliste(paare)), fern.zustand()["gDublettenAnzahl"])
        self.assertEqual(f"{len(erwartet)} Datensätze nach Korrektur", fern.text("lblDubletten3"))

        nachher = mdbtools.abzug(self.datei)
        neu = nachher.pop(ziel)
        self.assertEqual(vorher, nachher, "another table was touched")
        self.assertNotIn("TEMP_", neu[0])

    def test_vorgaben_des_assistenten(self):
        self.ablauf()

    def test_sehr_niedrige_uebereinstimmung(self):
        self.ablauf(toleranz=3)

    def test_mehrere_ansprechpartner(self):
        self.ablauf(toleranz=2, differenzieren=True)

    def test_quicksuche(self):
        self.ablauf(toleranz=2, quick=True)


if __name__ == "__main__":
    unittest.main()
