"""All six operations on every kind of Access file, each result held against the one in a plain file."""
import shutil
import unittest

import gemeinsam
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


def schreibbare_kopie(datei, ordner):
    return shutil.copyfile(datei, ordner / datei.name)


if __name__ == "__main__":
    unittest.main()
