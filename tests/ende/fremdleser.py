"""A database of each format in a folder of its own, as foreign programs see it."""
import shutil

import dbftools
import gemeinsam
import mdbtools
import xlsleser


class Leser:
    hinweis = None  # part of a message that comes when the database is opened
    mehrere_dateien = False

    def kopieren(self, von, nach):
        shutil.rmtree(nach, ignore_errors=True)
        shutil.copytree(von, nach)


class Mdb(Leser):
    """An .mdb file, read by mdbtools."""

    name = "mdb"

    def datei(self, ordner):
        """What the user types to open the database."""
        return ordner / "adressen.mdb"

    def anlegen(self, ordner):
        ordner.mkdir()
        shutil.copyfile(gemeinsam.fremde_datei("mdb/beispiele/jet4-leer-adox.mdb"), self.datei(ordner))

    def abzug(self, ordner):
        """Every table's fields and rows."""
        return mdbtools.abzug(self.datei(ordner))


class Dbf(Leser):
    """A folder of .dbf files, read by dbfread."""

    name = "dbf"
    mehrere_dateien = True

    def datei(self, ordner):
        return ordner / "ANDERE.DBF"

    def anlegen(self, ordner):
        ordner.mkdir()
        dbftools.schreiben(self.datei(ordner), (("NAME", "C", 20, 0),), [["Müller"], [None]])

    def abzug(self, ordner):
        return {t: (dbftools.felder(ordner, t), dbftools.zeilen(ordner, t)) for t in dbftools.tabellen(ordner)}


class Xls(Leser):
    """A workbook, read by xlrd."""

    name = "xls"
    hinweis = "Excel-Tabelle"

    def datei(self, ordner):
        return ordner / "adressen.xls"

    def anlegen(self, ordner):
        ordner.mkdir()
        shutil.copyfile(gemeinsam.fremde_datei("xls/beispiele/FormulaEvalTestData.xls"), self.datei(ordner))

    def abzug(self, ordner):
        return xlsleser.abzug(self.datei(ordner))
