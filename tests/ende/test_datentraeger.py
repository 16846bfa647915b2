"""A small real file system that is full, read-only, or gone: the file stays, the user is told, and Wiederholen helps."""
import os
import subprocess
import unittest

import gemeinsam
import mdbtools
import vorgaenge


class Datentraeger(gemeinsam.AmProgramm):
    def setUp(self):
        super().setUp()
        self.platte = self.ordner / "platte"
        self.platte.mkdir()
        if os.geteuid() != 0 or self.mount("-t", "tmpfs", "-o", "size=2m", "lindgarn", self.platte).returncode != 0:
            raise unittest.SkipTest("hier kann kein Dateisystem eingehängt werden")
        self.addCleanup(subprocess.run, ["umount", "-l", str(self.platte)], check=False, capture_output=True)
        self.datei = self.kopie_auf_platte()
        self.vorher = self.datei.read_bytes()
        self.lauf = vorgaenge.SechsVorgaenge(self, self.programm(), self.datei)
        self.fern = self.lauf.fern
        self.splitten = next(v for v in vorgaenge.VORGAENGE if v.name == "splitten")

    def mount(self, *worte):
        return subprocess.run(["mount", *map(str, worte)], check=False, capture_output=True)

    def kopie_auf_platte(self):
        datei = self.platte / "adressen.mdb"
        datei.write_bytes(gemeinsam.fremde_datei("daten/adressen-500.mdb").read_bytes())
        return datei

    def bis_zum_start(self):
        self.lauf.oeffnen()
        self.lauf.vorbereiten(self.splitten)

    def fuellen(self):
        """Leaves less room than a copy of the file takes."""
        stand = os.statvfs(self.platte)
        fuellung = self.platte / "fuellung"
        fuellung.write_bytes(bytes(stand.f_bavail * stand.f_frsize - len(self.vorher) // 2))
        return fuellung

    def kasten(self, *teile):
        self.fern.warten("meldung")
        text = self.fern.meldung()["text"]
        for teil in teile:
            self.assertIn(teil, text)
        return text

    def ergebnis_ist_ganz(self):
        self.fern.rahmen(32)
        self.assertEqual(500, len(mdbtools.zeilen(self.datei, self.lauf.ziele[0])))
        self.assertEqual([self.datei.name], [p.name for p in self.platte.iterdir()])

    def nichts_geschehen(self):
        self.assertEqual(self.vorher, self.datei.read_bytes())
        self.assertEqual([self.datei.name], [p.name for p in self.platte.iterdir()])

    def test_voll_und_wiederholen(self):
        self.bis_zum_start()
        fuellung = self.fuellen()
        self.fern.klicken("btnWeiter")
        self.kasten("Fehler beim Speichern der Datenbank", "nicht genug Platz", "Wiederholen")
        self.assertEqual(self.vorher, self.datei.read_bytes())
        self.assertEqual({self.datei.name, "fuellung"}, {p.name for p in self.platte.iterdir()})
        fuellung.unlink()
        self.fern.druecken("Wiederholen")
        self.ergebnis_ist_ganz()

    def test_voll_und_abbrechen(self):
        self.bis_zum_start()
        fuellung = self.fuellen()
        self.fern.klicken("btnWeiter")
        self.kasten("nicht genug Platz")
        self.fern.druecken("Abbrechen")
        self.fern.rahmen(3)
        fuellung.unlink()
        self.nichts_geschehen()

    def test_schreibgeschuetzt_wird_beim_oeffnen_gesagt(self):
        self.mount("-o", "remount,ro", self.platte)
        self.datei_nennen(self.fern, self.datei)
        self.kasten("Fehler beim Öffnen der Datenbank", "schreibgeschützt")
        self.fern.druecken("OK")
        self.fern.rahmen(2)
        self.nichts_geschehen()

    def test_unterwegs_schreibgeschuetzt_und_wiederholen(self):
        self.bis_zum_start()
        self.mount("-o", "remount,ro", self.platte)
        self.fern.klicken("btnWeiter")
        self.kasten("schreibgeschützt")
        self.nichts_geschehen()
        self.mount("-o", "remount,rw", self.platte)
        self.fern.druecken("Wiederholen")
        self.ergebnis_ist_ganz()

    def test_verschwunden(self):
        """The drive goes away under the run and comes back: no harm, and the result can still be saved."""
        self.bis_zum_start()
        weg = self.ordner / "weg"
        weg.mkdir()
        self.assertEqual(0, self.mount("--move", self.platte, weg).returncode)
        self.fern.klicken("btnWeiter")
        self.kasten("Fehler beim Speichern der Datenbank")
        self.assertEqual(self.vorher, (weg / self.datei.name).read_bytes())
        self.assertEqual(0, self.mount("--move", weg, self.platte).returncode)
        self.fern.druecken("Wiederholen")
        self.ergebnis_ist_ganz()


if __name__ == "__main__":
    unittest.main()
