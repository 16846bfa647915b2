"""All six operations on every kind of Access file, each result held against the one in a plain file."""
import shutil
import unittest

import gemeinsam
import mdbschreiber
import mdbtools
import vorgaenge

# sample file, its password
ARTEN = {
    "Access 97": ("jet3-typen.mdb", ""),
    "Access 97, kodiert": ("jet3-kodiert.mdb", ""),
    "Access 2000, kodiert": ("jet4-kodiert.mdb", ""),
    "Access 2000 mit Passwort": ("jet4-passwort.mdb", "password"),
    "Access 2000 mit Relationen": ("jet4-relationen.mdb", ""),
    "Access 2007": ("ace-2007.accdb", ""),
}


LISTE = {
    "name": "Liste",
    "felder": [{"name": "Vorname", "typ": 10, "groesse": 20}, {"name": "Name", "typ": 10, "groesse": 20}],
    "indexe": [],
    "zeilen": [["Anna", "Müller"], ["Otto", None]],
}


class AccessDateien(gemeinsam.AmProgramm):
    @classmethod
    def setUpClass(cls):
        cls.quelle = gemeinsam.fremde_datei("daten/adressen-500.mdb")
        cls.zeilen = vorgaenge.in_1252(mdbtools.zeilen(cls.quelle, "Adressen"))
        cls.messe = vorgaenge.messe(cls.zeilen)

    def ergebnisse(self, datei, passwort=""):
        """Runs the six operations; the fields and rows of their results, and what the other tables were and are."""
        vorgaenge.tabelle_uebertragen(self.quelle, "Adressen", datei, passwort)
        vorgaenge.pruefstand("TabelleSchreiben", str(datei), passwort, self.messe)
        vorher = mdbtools.abzug(datei)
        self.assertEqual(self.zeilen, mdbtools.zeilen(datei, "Adressen"))
        ziele = vorgaenge.SechsVorgaenge(self, self.programm(), datei, passwort=passwort).alle()
        nachher = mdbtools.abzug(datei)
        for ziel in ziele:
            del nachher[ziel]
        self.assertEqual(vorher, nachher, "another table was touched")
        return [(mdbtools.felder(datei, z), mdbtools.zeilen(datei, z)) for z in ziele]

    def test_jede_art(self):
        schlicht = schreibbare_kopie(gemeinsam.fremde_datei("mdb/beispiele/jet4-leer-adox.mdb"), self.ordner)
        erwartet = self.ergebnisse(schlicht)
        self.assertEqual(len(self.zeilen), len(erwartet[2][1]))
        for art, (name, passwort) in ARTEN.items():
            with self.subTest(art):
                datei = schreibbare_kopie(gemeinsam.fremde_datei(f"mdb/beispiele/{name}"), self.ordner)
                for i, (soll, ist) in enumerate(zip(erwartet, self.ergebnisse(datei, passwort))):
                    self.assertEqual(soll, ist, vorgaenge.VORGAENGE[i].name)


class AccessAb2010(gemeinsam.AmProgramm):
    """A file that can be read only: told when it is opened, and once more before anything is begun in it."""

    def setUp(self):
        super().setUp()
        self.datei = schreibbare_kopie(gemeinsam.fremde_datei("mdb/beispiele/ace-2007.accdb"), self.ordner)
        vorgaenge.pruefstand("TabelleSchreiben", str(self.datei), "", LISTE)
        inhalt = bytearray(self.datei.read_bytes())
        # The columns of the catalogue (page 2) say version 0 of the General order; from 2010 on it is 1.
        inhalt[8192:12288] = inhalt[8192:12288].replace(b"\x09\x04\x00\x00", b"\x09\x04\x00\x01")
        self.datei.write_bytes(inhalt)
        self.fern = self.programm()

    def gesagt(self):
        self.fern.warten("meldung")
        text = self.fern.meldung()["text"]
        self.assertIn("Access 2002-2003-Datenbank (*.mdb)", text)
        self.assertIn(self.datei.name, text)
        self.fern.druecken("OK")

    def nach_dem_oeffnen(self, fern, datei):
        self.gesagt()

    def bis_liste(self):
        self.bis_tabelle(self.fern, self.datei, LISTE["name"])
        self.assertEqual("2 Datensätz(e)", self.fern.text("lblGröße"))

    def test_kein_lauf_beginnt(self):
        vorher = self.datei.read_bytes()
        self.bis_liste()
        self.fern.klicken("btnWeiter")
        self.fern.rahmen(5)
        self.fern.klicken("btnAuswahl_0")
        self.fern.rahmen(4)
        self.fern.klicken("btnWeiter")
        self.gesagt()
        self.assertEqual(4, self.fern.zustand()["gRahmen"])
        self.assertEqual(vorher, self.datei.read_bytes())

    def test_nichts_wird_geloescht_oder_umbenannt(self):
        vorher = self.datei.read_bytes()
        self.bis_liste()
        eintraege = self.fern.lesen("lstTabellen")["eintraege"]
        for knopf, antwort, eingabe in (
            ("cmdTabelleLöschen", "Ja", {}),
            ("cmdTabelleUmbenennen", "OK", {"eingabe": "Neu"}),
        ):
            self.fern.klicken(knopf)
            self.fern.warten("meldung")
            self.fern.druecken(antwort, **eingabe)
            self.fern.warten("meldung")
            self.assertIn("Access 2002-2003-Datenbank (*.mdb)", self.fern.meldung()["text"])
            self.fern.druecken("Abbrechen")
            self.assertEqual(eintraege, self.fern.lesen("lstTabellen")["eintraege"])
        self.assertEqual(vorher, self.datei.read_bytes())


class FremdGeaendert(gemeinsam.AmProgramm):
    """Another program changes a result between two sessions; the next one goes on with what stands there."""

    DATEIEN = (("jet4-leer-adox.mdb", "utf-16-le"), ("jet3-typen.mdb", "cp1252"))

    def ein_lauf(self, datei, tabelle, feld1, feld2, neues):
        """Merges two fields in a session of its own; the target's name."""
        fern = self.programm()
        self.bis_tabelle(fern, datei, tabelle)
        fern.klicken("btnWeiter")
        fern.rahmen(5)
        fern.klicken("btnAuswahl_0")
        fern.rahmen(4)
        ziel = fern.text("tbxZielTabelle")
        fern.klicken("btnWeiter")
        fern.rahmen(41)
        fern.setzen("cbxVerschmelzen1", feld1)
        fern.setzen("cbxVerschmelzen2", feld2)
        fern.setzen("tbxVerschmolzen", neues)
        fern.setzen("otnTrennzeichen_0", True)
        fern.setzen("tbxTrennzeichen", " ")
        fern.klicken("btnWeiter")
        fern.rahmen(42)
        fern.__exit__()
        return ziel

    def test_zwischen_zwei_sitzungen(self):
        for name, kodierung in self.DATEIEN:
            with self.subTest(name):
                datei = schreibbare_kopie(gemeinsam.fremde_datei(f"mdb/beispiele/{name}"), self.ordner)
                vorgaenge.pruefstand("TabelleSchreiben", str(datei), "", LISTE)
                self.geaendert_und_fortgesetzt(datei, kodierung)

    def geaendert_und_fortgesetzt(self, datei, kodierung):
        vorher = mdbtools.abzug(datei)
        erstes = self.ein_lauf(datei, "Liste", "Vorname", "Name", "Wer")
        self.assertEqual([["Anna", "Anna Müller", "Müller"], ["Otto", "Otto ", None]], mdbtools.roh(datei, erstes))
        fremd = mdbschreiber.Schreiber(datei, erstes, kodierung)
        fremd.anfuegen(["Jürgen", None, "Groß"])
        fremd.ersetzen(1, 1, "Anna-Luise Katharina")
        fremd.anfuegen([None, "Wer", "Äöü"])
        fremd.ersetzen(2, 1, "Weiß")
        erwartet = [
            ["Anna-Luise Katharina", "Anna Müller", "Müller"],
            ["Weiß", "Otto ", None],
            ["Jürgen", None, "Groß"],
            [None, "Wer", "Äöü"],
        ]
        self.assertEqual(erwartet, mdbtools.roh(datei, erstes))

        zweites = self.ein_lauf(datei, erstes, "Vorname", "Name", "Ganz")
        ganz = [[v, f"{v or ''} {n or ''}", w, n] for v, w, n in erwartet]
        self.assertEqual(ganz, mdbtools.roh(datei, zweites))
        self.umbenennen_und_loeschen(datei, erstes, zweites)
        nachher = mdbtools.abzug(datei)
        self.assertEqual(erwartet, nachher.pop("Fremd Geändertes")[1])
        self.assertEqual(vorher, nachher, "another table was touched")

    def test_suche_findet_was_ein_anderer_eintrug(self):
        """A record that another program enters a second time is a duplicate more, and the result is the same."""
        laeufe = []
        for fremd in (False, True):
            datei = self.kopie(gemeinsam.fremde_datei("daten/adressen-500.mdb"))
            datei.chmod(0o644)
            if fremd:
                voller = next(z for z in mdbtools.roh(datei, "Adressen") if all(z[:8]))
                mdbschreiber.Schreiber(datei, "Adressen").anfuegen([9001, *voller[1:12], None, None])
            fern = self.programm()
            lauf = vorgaenge.SechsVorgaenge(self, fern, datei)
            lauf.oeffnen()
            lauf.vorbereiten(vorgaenge.VORGAENGE[0])
            lauf.ausfuehren(vorgaenge.VORGAENGE[0])
            laeufe.append((fern.zustand()["gDublettenAnzahl"], len(mdbtools.roh(datei, lauf.ziele[0]))))
            fern.__exit__()
        self.assertGreater(laeufe[1][0], laeufe[0][0])
        self.assertEqual(laeufe[0][1], laeufe[1][1])

    def umbenennen_und_loeschen(self, datei, erstes, zweites):
        fern = self.programm()
        self.bis_tabelle(fern, datei, erstes)
        self.assertEqual("4 Datensätz(e)", fern.text("lblGröße"))
        fern.klicken("cmdTabelleUmbenennen")
        fern.warten("meldung")
        fern.druecken("OK", eingabe="Fremd Geändertes")
        fern.setzen("lstTabellen", zweites)
        fern.klicken("cmdTabelleLöschen")
        fern.warten("meldung")
        fern.druecken("Ja")
        fern.__exit__()


def schreibbare_kopie(datei, ordner):
    return shutil.copyfile(datei, ordner / datei.name)


if __name__ == "__main__":
    unittest.main()
