"""An installed program: what is installed where, and that the program finds it there."""
import gzip
import os
import pathlib
import shutil
import subprocess
import unittest

from gemeinsam import PROGRAMM, WURZEL, AmProgramm
from fernsteuerung import Fernsteuerung

BAU = pathlib.Path(PROGRAMM).parents[1]
DATEIEN = {
    "bin/lindgarn",
    "share/lindgarn/Hilfe.HLP",
    "share/lindgarn/Einstellungen.CFG",
    "share/applications/lindgarn.desktop",
    "share/icons/hicolor/scalable/apps/lindgarn.svg",
    "share/metainfo/example.lindgarn.lindgarn.metainfo.xml",
    "share/man/de/man1/lindgarn.1.gz",
    "share/man/man1/lindgarn.1.gz",
}


class Installation(AmProgramm):
    def setUp(self):
        super().setUp()
        self.ziel = self.ordner / "ziel"
        subprocess.run(
            ["cmake", "--install", str(BAU), "--prefix", str(self.ziel)], check=True, stdout=subprocess.DEVNULL
        )

    def test_alles_liegt_wo_es_hingehoert(self):
        da = {p.relative_to(self.ziel).as_posix() for p in self.ziel.rglob("*") if p.is_file()}
        self.assertEqual(DATEIEN, DATEIEN & da)
        handbuchseite = gzip.decompress((self.ziel / "share/man/de/man1/lindgarn.1.gz").read_bytes())
        self.assertIn(b".TH LINDGARN 1", handbuchseite)

    def test_das_programm_findet_die_hilfe_im_datenordner(self):
        hilfe = self.ziel / "share/lindgarn/Hilfe.HLP"
        hilfe.write_text("### -\nNichts\n-\nAus dem Datenordner.\n### -\n", "utf-8")
        # Where the program's folder is not moved, it is the one in which the program stands.
        shutil.copy(PROGRAMM, self.ziel / "bin")
        umgebung = {**os.environ, "QT_QPA_PLATFORM": "offscreen", "LINDGARN_ABLAGE": str(self.ordner / "ablage")}
        with Fernsteuerung(self.ziel / "bin" / pathlib.Path(PROGRAMM).name, umgebung) as fern:
            fern.rahmen(0)
            fern.befehl("menue", pfad=["?", "Hilfe"])
            fern.warten("fenster", "frmHilfe")
            self.assertIn("Aus dem Datenordner.", fern.text("tbxHilfe"))

    def test_der_starter_nennt_das_programm_und_sein_bild(self):
        starter = (self.ziel / "share/applications/lindgarn.desktop").read_text("utf-8").splitlines()
        self.assertIn("Exec=lindgarn %f", starter)
        self.assertIn("Icon=lindgarn", starter)
        metainfo = (self.ziel / "share/metainfo/example.lindgarn.lindgarn.metainfo.xml").read_text("utf-8")
        self.assertIn('<launchable type="desktop-id">lindgarn.desktop</launchable>', metainfo)
        lizenz = (WURZEL / "LICENSE").read_text("utf-8")
        self.assertIn("GNU GENERAL PUBLIC LICENSE", lizenz)
        self.assertIn("<project_license>GPL-3.0-or-later</project_license>", metainfo)

    def test_die_pruefer_des_desktops_sind_zufrieden(self):
        starter = self.ziel / "share/applications/lindgarn.desktop"
        metainfo = self.ziel / "share/metainfo/example.lindgarn.lindgarn.metainfo.xml"
        for befehl in (["desktop-file-validate", starter], ["appstreamcli", "validate", "--no-net", metainfo]):
            with self.subTest(befehl[0]):
                if not shutil.which(befehl[0]):
                    self.skipTest(f"{befehl[0]} ist nicht vorhanden")
                lauf = subprocess.run(befehl, capture_output=True, text=True)
                self.assertEqual(0, lauf.returncode, lauf.stdout + lauf.stderr)


if __name__ == "__main__":
    unittest.main()
