"""A database of each format in a folder of its own, as foreign programs see it."""
import shutil

import gemeinsam
import mdbtools


class Mdb:
    """An .mdb file, read by mdbtools."""

    name = "mdb"
    hinweis = None
    mehrere_dateien = False

    def datei(self, ordner):
        """What the user types to open the database."""
        return ordner / "adressen.mdb"

    def anlegen(self, ordner):
        ordner.mkdir()
        shutil.copyfile(gemeinsam.fremde_datei("mdb/beispiele/jet4-leer-adox.mdb"), self.datei(ordner))

    def kopieren(self, von, nach):
        shutil.rmtree(nach, ignore_errors=True)
        shutil.copytree(von, nach)

    def abzug(self, ordner):
        """Every table's fields and rows."""
        return mdbtools.abzug(self.datei(ordner))
