"""All six operations on a folder of .dbf files, held against the rules told a second time and dbfread."""
import pathlib
import shutil
import subprocess
import unicodedata
import unittest

import dbftools
import gemeinsam
import mdbtools
import regelwerk as r
from test_muell import TORE, befunde
from test_umformen import geteilt
from test_zweite_tabelle import ergaenzt

SPALTEN = (
    ("KUNDENNR", "N", 6, 0), ("Firma", "C", 60, 0), ("ANREDE", "C", 20, 0), ("VORNAME", "C", 30, 0),
    ("NACHNAME", "C", 30, 0), ("STRASSE", "C", 50, 0), ("PLZ", "C", 8, 0), ("ORT", "C", 40, 0),
    ("TELEFON", "C", 30, 0), ("TELEFAX", "C", 30, 0), ("EMAIL", "C", 60, 0), ("HOMEPAGE", "C", 60, 0),
    ("ERFASST", "D", 8, 0), ("UMSATZ", "N", 12, 2),
)  # fmt: skip
ZIEL = "ERGEBNIS"


def in_cp850(v):
    """A text with the letters that the page lacks in their plain form."""
    if not isinstance(v, str):
        return v
    einfach = "".join(z if z.encode("cp850", "ignore") else unicodedata.normalize("NFD", z) for z in v)
    return einfach.encode("cp850", "ignore").decode("cp850")


def verschmolzen(erster, zweiter):
    """With a blank between; blanks at the end of a text are the field's own."""
    return f"{erster or ''} {zweiter or ''}".rstrip(" ") or None


class Dbf(gemeinsam.AmProgramm):
    def setUp(self):
        super().setUp()
        quelle = gemeinsam.fremde_datei("daten/adressen-500.mdb")
        self.daten = self.ordner / "daten"
        self.daten.mkdir()
        reihen = [
            [
                v.replace(hour=0, minute=0, second=0) if s[1] == "D" and v else in_cp850(v)
                for v, s in zip(zeile, SPALTEN)
            ]
            for zeile in mdbtools.zeilen(quelle, "Adressen")
        ]
        dbftools.schreiben(self.daten / "ADRESSEN.DBF", SPALTEN, reihen)
        self.messe_schreiben(reihen)
        self.datei = self.daten / "ADRESSEN.DBF"
        self.vorher = dbftools.bytes_von(self.daten)
        self.erste = dbftools.zeilen(self.daten, "ADRESSEN")
        self.fern = self.programm()

    def messe_schreiben(self, reihen):
        """A table of another build and another code page: some of the addresses spelled otherwise, some new."""
        spalten = (("NAME", "C", 60, 0), ("ANSCHRIFT", "C", 60, 0), ("PLZ_ORT", "C", 60, 0), ("TELEFON", "C", 30, 0),
                   ("KONTAKT", "C", 80, 0))  # fmt: skip
        messe = []
        for _, firma, anrede, vorname, nachname, strasse, plz, ort, telefon in (z[:9] for z in reihen[::7]):
            kontakt = " ".join(t for t in (anrede, vorname, nachname) if t) or None
            strasse = strasse.replace("straße", "str.") if strasse else None
            messe.append([firma, strasse, " ".join(t for t in (plz, ort) if t) or None, telefon, kontakt])
        for n in range(1, 6):
            messe.append([f"Neuland {n} GmbH", f"Uferweg {n}", f"1811{n} Rostock", f"0381/99887{n}", None])
        dbftools.schreiben(self.daten / "messe.dbf", spalten, messe, sprachbyte=3, seite="cp1252")

    def nur_das_ziel_kam_dazu(self, erwartet, neue_formen=None):
        self.assertEqual(erwartet, dbftools.zeilen(self.daten, ZIEL))
        nachher = dbftools.bytes_von(self.daten)
        ziel = nachher.pop(ZIEL + ".dbf")
        self.assertEqual(self.vorher, nachher, "another table was touched or a work file stayed")
        self.assertEqual(2, ziel[29], "not in the source's code page")
        formen = [(f["name"], *f["form"]) for f in dbftools.felder(self.daten, ZIEL)]
        self.assertEqual(neue_formen or list(SPALTEN), formen)

    def ziel_nennen(self, ziel=ZIEL):
        """The default name is too long for dBase; the program says so and waits for another one."""
        self.fern.rahmen(4)
        kurz = self.fern.text("lblKurzerName").rpartition(" ")[2].rstrip(".")
        self.assertTrue(kurz.endswith("_1") and len(kurz) <= 8, kurz)
        self.fern.klicken("btnWeiter")
        self.fern.warten("meldung")
        self.assertIn("dBase-Datenbank, oder ist länger als 8 Zeichen", self.fern.meldung()["text"])
        self.fern.druecken("OK")
        self.fern.setzen("tbxZielTabelle", ziel)
        self.fern.klicken("btnWeiter")

    def bis_vorgang(self, auswahl, tabelle="ADRESSEN"):
        self.bis_tabelle(self.fern, self.datei, tabelle)
        self.fern.klicken("btnWeiter")
        self.fern.rahmen(5)
        self.fern.klicken(f"btnAuswahl_{auswahl}")

    def felder_lesen(self):
        self.fern.rahmen(7)
        zeilen = self.fern.lesen("lstFelder")["eintraege"]
        self.fern.klicken("btnWeiter")
        return zeilen

    def zugeordnet(self, tabelle, zeilen):
        felder = dbftools.felder(self.daten, tabelle)
        for feld, zeile in zip(felder, zeilen):
            feld["gruppe"], feld["maske"] = r.zuordnung_aus_zeile(zeile)
        return felder

    def laeufe(self):
        for lauf in range(3):
            gewaehlt = [self.fern.lesen(f"cbxSuchFeld_{lauf * 3 + k}")["index"] - 1 for k in range(3)]
            gewaehlt = [g for g in gewaehlt if g >= 0]
            if gewaehlt:
                yield gewaehlt[0], int(self.fern.lesen(f"sdrZeichenRichtig_{lauf}")["wert"]), gewaehlt

    def fertig(self, rahmen, fragen=1):
        self.fertig_klicken(self.fern)
        for _ in range(fragen):
            self.fern.warten("meldung")
            self.fern.druecken("Ja")
        self.fern.rahmen(rahmen)

    def test_ordner_ist_die_datenbank(self):
        self.bis_tabelle(self.fern, self.datei, "ADRESSEN")
        self.assertEqual(["ADRESSEN", "messe"], self.fern.lesen("lstTabellen")["eintraege"])

    def test_dubletten(self):
        self.bis_vorgang(3)
        zeilen = self.felder_lesen()
        self.ziel_nennen()
        self.fern.rahmen(11)
        laeufe = list(self.laeufe())
        self.review_oeffnen(self.fern)
        self.fern.klicken("btnAngereichert")
        self.fertig(13)
        felder = self.zugeordnet("ADRESSEN", zeilen)
        paare = r.paare_suchen(felder, self.erste, laeufe, 0.73)
        self.assertGreater(len(paare), 0)
        self.nur_das_ziel_kam_dazu(r.ergebnistabelle(felder, self.erste, paare))

    def test_muell(self):
        self.bis_vorgang(2)
        felder = self.zugeordnet("ADRESSEN", self.felder_lesen())
        self.ziel_nennen()
        self.fern.rahmen(21)
        muell = [any(befunde(f, w, TORE) for f, w in zip(felder, zeile)) for zeile in self.erste]
        self.assertIn(True, muell)
        self.fern.klicken("btnWeiter")
        self.fern.warten("fenster", "frmMüllBearbeiten")
        self.assertEqual(sum(muell), len(self.fern.gitter("dgdMüll")["zeilen"]))
        self.fertig(23)
        self.nur_das_ziel_kam_dazu([z for z, weg in zip(self.erste, muell) if not weg])

    def test_splitten_mit_langen_feldnamen(self):
        """A name that no field of dBase can have is told before the run."""
        self.bis_vorgang(1)
        self.ziel_nennen()
        self.fern.rahmen(31)
        self.fern.setzen("cbxSplittenTypus", {"index": 1})
        self.fern.setzen("cbxSplitten1", "STRASSE")
        self.fern.setzen("tbxSplitten1", "Straße_ohn")
        self.fern.setzen("chkSplittenLöschen", True)
        for name in ("Hausnummern", "Haus Nr", "Straße_o_1"):
            self.fern.setzen("tbxSplitten2", name)
            self.fern.klicken("btnWeiter")
            if name != "Straße_o_1":
                self.fern.warten("meldung")
                self.assertIn(f"'{name}' ist in einer dBase-Tabelle kein gültiger", self.fern.meldung()["text"])
                self.fern.druecken("OK")
        stelle = [s[0] for s in SPALTEN].index("STRASSE")
        zeilen = [z[:stelle] + geteilt(1, z[stelle], None, None) + z[stelle + 1 :] for z in self.erste]
        self.fern.rahmen(32)
        formen = [(f["name"], *f["form"]) for f in dbftools.felder(self.daten, ZIEL)]
        neue = formen[stelle : stelle + 2]
        self.assertEqual([("STRAßE_OHN", "C"), ("STRAßE_O_1", "C")], [f[:2] for f in neue])
        self.nur_das_ziel_kam_dazu(zeilen, [*SPALTEN[:stelle], *neue, *SPALTEN[stelle + 1 :]])

    def test_verschmelzen(self):
        self.verschmelzen("ADRESSEN", "PLZ", "ORT", "PLZORT", loeschen=True)
        i = [s[0] for s in SPALTEN].index("PLZ")
        zeilen = [z[:i] + [verschmolzen(z[i], z[i + 1])] + z[i + 2 :] for z in self.erste]
        neu = dbftools.felder(self.daten, ZIEL)[i]
        self.assertEqual(("PLZORT", "C"), (neu["name"], neu["form"][0]))
        self.nur_das_ziel_kam_dazu(zeilen, [*SPALTEN[:i], ("PLZORT", *neu["form"]), *SPALTEN[i + 2 :]])

    def test_trennzeichen_das_dem_zeichensatz_fehlt(self):
        self.bis_vorgang(0)
        self.ziel_nennen()
        self.fern.rahmen(41)
        self.fern.setzen("cbxVerschmelzen2", "ORT")
        self.fern.setzen("tbxVerschmolzen", "NEU")
        self.fern.setzen("otnTrennzeichen_0", True)
        for zeichen in (" \u2013 ", " | "):
            self.assertIsNone(self.fern.meldung())
            self.fern.setzen("tbxTrennzeichen", zeichen)
            self.fern.klicken("btnWeiter")
            if zeichen == " \u2013 ":
                self.fern.warten("meldung")
                self.assertIn("Das Trennzeichen gibt es im Zeichensatz der Tabelle nicht.", self.fern.meldung()["text"])
                self.fern.druecken("OK")
        self.fern.rahmen(42)

    def bis_suche_mit_zweiter(self, auswahl, rahmen, liste):
        """To frame 11 with the second table. Returns the fields of both."""
        self.bis_vorgang(auswahl)
        self.fern.rahmen(rahmen)
        self.fern.setzen(liste, "messe")
        self.fern.klicken("btnWeiter")
        felder1 = self.zugeordnet("ADRESSEN", self.felder_lesen())
        felder2 = self.zugeordnet("messe", self.felder_lesen())
        self.ziel_nennen()
        self.fern.rahmen(11)
        return felder1, felder2

    def zwei_tabellen(self, *weg):
        """The same; returns fields, mixed records, pairs."""
        felder1, felder2 = self.bis_suche_mit_zweiter(*weg)
        mix = self.erste + [
            [ergaenzt(f, felder2, zeile) for f in felder1] for zeile in dbftools.zeilen(self.daten, "messe")
        ]
        paare = r.paare_suchen(felder1, mix, list(self.laeufe()), 0.73)
        self.assertGreater(len(paare), 30)
        return felder1, mix, paare

    def test_abgleich(self):
        felder, mix, paare = self.zwei_tabellen(4, 51, "cbxDatenabgleich")
        self.review_oeffnen(self.fern)
        self.fern.klicken("btnAngereichert")
        self.fertig(53)
        betroffen = {nr for nr, _ in r.dublettenliste(paare)}
        allein2 = sum(nr not in betroffen for nr in range(len(self.erste) + 1, len(mix) + 1))
        allein1 = sum(nr not in betroffen for nr in range(1, len(self.erste) + 1))
        alle = [[None if w == "" else w for w in z] for z in r.ergebnistabelle(felder, mix, paare)]
        self.nur_das_ziel_kam_dazu(alle[:allein1] + alle[allein1 + allein2 :])

    def test_neue_daten(self):
        felder, mix, paare = self.zwei_tabellen(5, 61, "cbxNeueDaten")
        self.review_oeffnen(self.fern)
        self.fertig(63)
        erwartet = [[None if w == "" else w for w in z] for z in r.ergebnistabelle(felder, mix, paare)]
        self.nur_das_ziel_kam_dazu(erwartet)

    def test_zeichen_die_der_ersten_fehlen_werden_vorher_gesagt(self):
        """The second table is in another code page and brings a dash: nothing is begun, nothing is lost."""
        reihen = dbftools.zeilen(self.daten, "messe")
        reihen[3][1] = "Café \u2013 Bar 7"
        formen = [(f["name"], *f["form"]) for f in dbftools.felder(self.daten, "messe")]
        dbftools.schreiben(self.daten / "messe.dbf", formen, reihen, sprachbyte=3, seite="cp1252")
        vorher = dbftools.bytes_von(self.daten)
        self.bis_suche_mit_zweiter(5, 61, "cbxNeueDaten")
        self.fern.klicken("btnWeiter")
        self.fern.warten("meldung")
        text = self.fern.meldung()["text"]
        self.assertIn("Datensatz 4, für das Feld 'STRASSE': '\u2013' (U+2013) in 'Café \u2013 Bar", text)
        self.assertIn("Ersetzen Sie diese Zeichen in der Tabelle 'messe'", text)
        self.fern.druecken("OK")
        self.fern.rahmen(3)
        self.assertEqual(["ADRESSEN", "messe"], self.fern.lesen("lstTabellen")["eintraege"])
        self.assertEqual(vorher, dbftools.bytes_von(self.daten))

    def in_libreoffice_speichern(self, name):
        """Another program opens a table and saves it in its own way: without a code page, an empty number as 0."""
        if not shutil.which("soffice"):
            self.skipTest("soffice fehlt")
        aus = self.ordner / "gespeichert"
        dos850 = "dBase:4"
        subprocess.run(
            ["soffice", f"-env:UserInstallation=file://{self.ordner}/lo", "--headless", f"--infilter={dos850}",
             "--convert-to", f"dbf:{dos850}", "--outdir", aus, self.daten / name],
            check=True, capture_output=True,
        )  # fmt: skip
        (self.daten / name).write_bytes((aus / name).with_suffix(".dbf").read_bytes())

    def test_andere_programme_speichern_dazwischen(self):
        """A saved source gives a result; that is saved and added to by others, and gives the next result."""
        self.in_libreoffice_speichern("ADRESSEN.DBF")
        quelle = dbftools.zeilen(self.daten, "ADRESSEN")
        self.assertEqual([z[:13] for z in self.erste], [z[:13] for z in quelle])
        self.verschmelzen("ADRESSEN", "PLZ", "ORT", "PLZORT")
        plz = [s[0] for s in SPALTEN].index("PLZ")
        beide = [z[: plz + 1] + [verschmolzen(z[plz], z[plz + 1])] + z[plz + 1 :] for z in quelle]
        self.assertEqual(beide, dbftools.zeilen(self.daten, ZIEL))
        self.in_libreoffice_speichern(f"{ZIEL}.dbf")
        self.assertEqual(beide, dbftools.zeilen(self.daten, ZIEL))
        werte = [f["name"][0] if f["art"] in ("text", "memo") else "" for f in dbftools.felder(self.daten, ZIEL)]
        subprocess.run(["dbfadd", self.daten / f"{ZIEL}.dbf", *werte], check=True, capture_output=True)
        quelle = dbftools.zeilen(self.daten, ZIEL)
        self.assertEqual(len(beide) + 1, len(quelle))
        vorher = dbftools.bytes_von(self.daten)
        self.fern = self.programm()
        self.verschmelzen(ZIEL, "VORNAME", "NACHNAME", "WER", "ZWEITES")
        vor = [s[0] for s in SPALTEN].index("VORNAME")
        dreifach = [z[: vor + 1] + [verschmolzen(z[vor], z[vor + 1])] + z[vor + 1 :] for z in quelle]
        self.assertEqual(dreifach, dbftools.zeilen(self.daten, "ZWEITES"))
        self.assertEqual(vorher, {n: b for n, b in dbftools.bytes_von(self.daten).items() if n != "ZWEITES.dbf"})

    def verschmelzen(self, tabelle, feld1, feld2, neues, ziel=ZIEL, loeschen=False):
        """From the welcome page to the result."""
        self.bis_vorgang(0, tabelle)
        self.ziel_nennen(ziel)
        self.fern.rahmen(41)
        self.fern.setzen("cbxVerschmelzen1", feld1)
        self.fern.setzen("cbxVerschmelzen2", feld2)
        self.fern.setzen("tbxVerschmolzen", neues)
        self.fern.setzen("otnTrennzeichen_0", True)
        self.fern.setzen("tbxTrennzeichen", " ")
        self.fern.setzen("chkVerschmelzenLöschen", loeschen)
        self.fern.klicken("btnWeiter")
        self.fern.rahmen(42)

    def test_memos_gehen_mit(self):
        """A table of dBase III with memos: the merged table has all of them, in the same form and code page."""
        for name in ("uml850.dbf", "uml850.dbt"):
            shutil.copy(gemeinsam.fremde_datei(f"dbf/beispiele/eigene/{name}"), self.daten / name).chmod(0o644)
        self.vorher = dbftools.bytes_von(self.daten)
        vorher = dbftools.zeilen(self.daten, "uml850")
        self.datei = self.daten / "uml850.dbf"
        self.bis_vorgang(0, "uml850")
        self.ziel_nennen()
        self.fern.rahmen(41)
        self.fern.setzen("cbxVerschmelzen1", "PLZ")
        self.fern.setzen("cbxVerschmelzen2", "ORT")
        self.fern.setzen("tbxVerschmolzen", "BEIDES")
        self.fern.klicken("btnWeiter")
        self.fern.rahmen(42)
        nachher = dbftools.bytes_von(self.daten)
        self.assertEqual(0x83, nachher.pop(ZIEL + ".dbf")[0])
        nachher.pop(ZIEL + ".dbt")
        self.assertEqual(self.vorher, nachher)
        felder = [f["name"] for f in dbftools.felder(self.daten, ZIEL)]
        stelle = felder.index("BEIDES")
        # A Boolean of the engine is never without a value: what was not set is False.
        ja = felder.index("AKTIV") - 1
        vorher = [z[:ja] + [bool(z[ja])] + z[ja + 1 :] for z in vorher]
        self.assertEqual(vorher, [z[:stelle] + z[stelle + 1 :] for z in dbftools.zeilen(self.daten, ZIEL)])

    def test_abbrechen_laesst_den_ordner_wie_er_war(self):
        self.bis_vorgang(3)
        self.felder_lesen()
        self.ziel_nennen()
        self.fern.rahmen(11)
        self.review_oeffnen(self.fern)
        self.fern.klicken("btnAbbrechen")
        self.fern.rahmen(3)
        self.assertEqual(self.vorher, dbftools.bytes_von(self.daten))

    def test_umbenennen_und_ueberschreiben(self):
        """The result takes the name of a table that is there, whose index goes with it."""
        pathlib.Path(self.daten / "messe.mdx").write_bytes(b"index")
        self.bis_vorgang(0)
        self.fern.rahmen(4)
        self.fern.setzen("tbxZielTabelle", "messe")
        self.fern.klicken("btnWeiter")
        fragen = []
        while self.fern.zustand()["gRahmen"] != 41 or self.fern.meldung():
            if self.fern.meldung():
                fragen.append(self.fern.meldung()["text"])
                self.fern.druecken("Ja")
        self.fern.setzen("cbxVerschmelzen1", "PLZ")
        self.fern.setzen("cbxVerschmelzen2", "ORT")
        self.fern.setzen("tbxVerschmolzen", "PLZORT")
        self.fern.klicken("btnWeiter")
        while self.fern.zustand()["gRahmen"] != 42 or self.fern.meldung():
            if self.fern.meldung():
                fragen.append(self.fern.meldung()["text"])
                self.fern.druecken("Ja" if "Ja" in self.fern.meldung()["knoepfe"] else "OK")
        self.assertTrue(any("messe.mdx" in f for f in fragen), fragen)
        self.assertEqual({"ADRESSEN.DBF", "messe.dbf"}, set(dbftools.bytes_von(self.daten)))
        self.assertEqual(len(self.erste), len(dbftools.zeilen(self.daten, "messe")))


if __name__ == "__main__":
    unittest.main()
