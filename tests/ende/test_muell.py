"""The junk search on files that others wrote, held against the rules told a second time and mdbtools."""
import unittest

import gemeinsam
import mdbtools
import regelwerk
from regelwerk import nichts

TORE = {
    "chkFirmenname": True, "chkRechtsform": False, "chkBranche": False, "chkPostalisch": True, "chkHausnummer": True,
    "chkKontakt": False, "chkAnrede": False, "chkVorname": False, "chkNachname": True, "chkAbteilung": False,
    "chkTelefon": True, "chkFax": False, "chkEmail": False, "chkInternet": False,
}  # fmt: skip


def fehlt(wert):
    return wert is None


def befunde(feld, wert, an):
    """True when the rules find something wrong with a value."""
    gruppe, maske = feld["gruppe"], feld["maske"]
    if feld["art"] in ("datum", "bool") or feld.get("waehrung"):
        return False

    def ist(code):
        return maske & code == code

    def zahl():
        return regelwerk.ist_zahl(wert)

    text = regelwerk.als_text(wert)
    if gruppe == 1:
        return fehlt(wert)
    if gruppe == 2:
        return (
            (an["chkFirmenname"] and ist(1) and (fehlt(wert) or zahl()))
            or (an["chkFirmenname"] and an["chkRechtsform"] and ist(2) and nichts(regelwerk.rechtsform(wert)))
            or (an["chkBranche"] and ist(4) and (fehlt(wert) or zahl()))
        )
    if gruppe == 3 and an["chkPostalisch"]:
        return (
            (ist(1) and (nichts(regelwerk.strasse(wert)) or zahl()))
            or (an["chkHausnummer"] and ist(2) and nichts(regelwerk.hausnummer(wert)))
            or (ist(4) and nichts(regelwerk.postleitzahl(wert)))
            or (ist(8) and (nichts(regelwerk.ort(wert)) or zahl()))
        )
    if gruppe == 4 and an["chkKontakt"]:
        return (
            (an["chkAnrede"] and ist(1) and nichts(regelwerk.anrede(wert)))
            or (an["chkVorname"] and ist(2) and nichts(regelwerk.vorname(wert)))
            or (an["chkNachname"] and ist(4) and nichts(regelwerk.nachname(wert)))
            or (an["chkAbteilung"] and maske == 8 and fehlt(wert))
        )
    if gruppe == 5 and an["chkTelefon"]:
        ohne_nummer = nichts(regelwerk.telefonnummer(wert)) and (nichts(regelwerk.vorwahl(wert)) or len(text) <= 6)
        return (
            (ist(1) and nichts(regelwerk.vorwahl(wert)))
            or (ist(2) and ohne_nummer)
            or (an["chkFax"] and ist(4) and nichts(regelwerk.telefonnummer(wert)))
        )
    if gruppe == 6:
        return (an["chkEmail"] and ist(1) and (fehlt(wert) or zahl() or "@" not in text)) or (
            an["chkInternet"] and ist(2) and (fehlt(wert) or zahl() or "." not in text)
        )
    return False


class Muell(gemeinsam.AmProgramm):
    def setUp(self):
        super().setUp()
        self.datei = self.kopie(gemeinsam.fremde_datei("daten/adressen-500.mdb"))
        self.fern = self.programm()

    def bis_optionen(self, tabelle="Adressen"):
        """From the welcome page to frame 21. Returns the lines of the field list and the target's name."""
        self.bis_tabelle(self.fern, self.datei, tabelle)
        return self.von_tabelle_bis_optionen(tabelle)

    def von_tabelle_bis_optionen(self, tabelle):
        """From frame 3 to frame 21."""
        self.fern.setzen("lstTabellen", tabelle)
        self.fern.klicken("btnWeiter")
        self.fern.rahmen(5)
        self.fern.klicken("btnAuswahl_2")
        self.fern.rahmen(7)
        felder = self.fern.lesen("lstFelder")["eintraege"]
        self.fern.klicken("btnWeiter")
        self.fern.rahmen(4)
        ziel = self.fern.text("tbxZielTabelle")
        self.fern.klicken("btnWeiter")
        self.fern.rahmen(21)
        return felder, ziel

    def review_oeffnen(self):
        self.fern.klicken("btnWeiter")
        self.fern.warten("fenster", "frmMüllBearbeiten")

    def fertig(self):
        self.fertig_klicken(self.fern)
        self.fern.warten("meldung")
        self.fern.druecken("Ja")
        self.fern.rahmen(23)

    def nichts_bleibt(self, vorher):
        self.fern.rahmen(3)
        self.assertEqual(vorher, self.datei.read_bytes())
        self.assertEqual(mdbtools.tabellen(self.datei), self.fern.lesen("lstTabellen")["eintraege"])

    def ablauf(self, **aenderungen):
        vorher = mdbtools.abzug(self.datei)
        zeilen_der_liste, ziel = self.bis_optionen()
        an = {**TORE, **aenderungen}
        # A dependent box can be set only while its parent is.
        for name in sorted(aenderungen, key=lambda n: n not in ("chkKontakt", "chkFirmenname", "chkTelefon")):
            self.fern.setzen(name, an[name])
        felder = mdbtools.felder(self.datei, "Adressen")
        for feld, zeile in zip(felder, zeilen_der_liste):
            feld["gruppe"], feld["maske"] = regelwerk.zuordnung_aus_zeile(zeile)
            feld["waehrung"] = feld["name"] == "Umsatz"
        quelle = mdbtools.zeilen(self.datei, "Adressen")
        muell = [any(befunde(f, w, an) for f, w in zip(felder, zeile)) for zeile in quelle]
        self.assertIn(True, muell)
        self.assertIn(False, muell)

        self.review_oeffnen()
        self.assertEqual(sum(muell), len(self.fern.gitter("dgdMüll")["zeilen"]))
        self.fern.befehl("maus", objekt="dgdMüll", knopf="rechts", zeile=0)
        gerettet = muell.index(True)
        self.fertig()
        erwartet = [z for i, z in enumerate(quelle) if not muell[i] or i == gerettet]
        self.assertEqual(erwartet, mdbtools.zeilen(self.datei, ziel))
        self.assertEqual(f"{sum(muell)} Mülldatensätze", self.fern.text("lblMüll2"))
        self.assertEqual(f"{len(erwartet)} Datensätze nach Bereinigung", self.fern.text("lblMüll3"))
        self.assertEqual(f"{sum(muell) * 100 // len(quelle)}% Verunreinigung", self.fern.text("lblMüllVerunreinigung"))
        nachher = mdbtools.abzug(self.datei)
        del nachher[ziel]
        self.assertEqual(vorher, nachher, "another table was touched")

    def test_vorgaben(self):
        self.ablauf()

    def test_ohne_firmenname(self):
        self.ablauf(chkFirmenname=False)

    def test_post_und_hausnummer_allein(self):
        self.ablauf(chkFirmenname=False, chkTelefon=False)

    def test_kontakt_und_netz(self):
        self.ablauf(chkFirmenname=False, chkPostalisch=False, chkTelefon=False, chkKontakt=True, chkAnrede=True,
                    chkNachname=False, chkEmail=True)  # fmt: skip

    def test_alles_beibehalten(self):
        _, ziel = self.bis_optionen()
        self.review_oeffnen()
        self.fern.klicken("btnMüll")
        self.fertig()
        self.assertEqual(mdbtools.zeilen(self.datei, "Adressen"), mdbtools.zeilen(self.datei, ziel))

    def test_abbrechen_in_der_nachbearbeitung(self):
        vorher = self.datei.read_bytes()
        self.bis_optionen()
        self.review_oeffnen()
        self.fern.klicken("btnMüll")
        self.fern.klicken("btnAbbrechen")
        self.nichts_bleibt(vorher)

    def test_abbrechen_in_jeder_phase(self):
        self.datei = self.kopie(gemeinsam.fremde_datei("daten/adressen-10000.mdb"))
        vorher = self.datei.read_bytes()
        tabelle = mdbtools.tabellen(self.datei)[0]
        self.bis_tabelle(self.fern, self.datei, tabelle)
        for phase in ("Bereite Tabelle", "Durchsuche"):
            with self.subTest(phase):
                self.in_phase_klicken(
                    self.fern, phase, lambda: self.von_tabelle_bis_optionen(tabelle), review="frmMüllBearbeiten"
                )
                self.laufabbruch_bejahen(self.fern)
                self.nichts_bleibt(vorher)

    def test_nichts_gefunden(self):
        vorher = self.datei.read_bytes()
        self.bis_optionen()
        for name in ("chkFirmenname", "chkPostalisch", "chkTelefon"):
            self.fern.setzen(name, False)
        self.fern.klicken("btnWeiter")
        self.fern.warten("meldung")
        self.assertEqual("Es wurden keine Mülldatensätze gefunden.", self.fern.meldung()["text"])
        self.fern.druecken("OK")
        self.nichts_bleibt(vorher)


if __name__ == "__main__":
    unittest.main()
