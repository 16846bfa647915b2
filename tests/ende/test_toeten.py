"""The program is killed at random moments: its file is as it was, or holds the whole result, and nothing else stays.

The short form kills some dozen times over each format; LINDGARN_LANG=1 a thousand times.
Half of the deaths fall into the moments when the file is written.
"""
import os
import random
import signal
import threading
import time
import unittest

import fremdleser
import gemeinsam
import vorgaenge

LANG = bool(os.environ.get("LINDGARN_LANG"))
TODE = 340 if LANG else 8  # of each format
SAAT = int(os.environ.get("LINDGARN_SAAT", "1"))


class Toeten(gemeinsam.AmProgramm):
    def quelle_anlegen(self, leser):
        """A database with both tables, and the two results that a whole run over it has."""
        adressen = gemeinsam.fremde_datei("daten/adressen-500.mdb")
        leser.anlegen(self.ordner / "quelle")
        datei = leser.datei(self.ordner / "quelle")
        vorgaenge.tabelle_uebertragen(adressen, "Adressen", datei, anzahl=120)
        vorher = leser.abzug(self.ordner / "quelle")
        ergebnisse = {}
        for vorgang in self.vorgaenge():
            leser.kopieren(self.ordner / "quelle", self.ordner / "ganz")
            lauf = self.lauf(leser, self.ordner / "ganz")
            lauf.vorbereiten(vorgang)
            lauf.ausfuehren(vorgang)
            lauf.fern.__exit__()
            nachher = leser.abzug(self.ordner / "ganz")
            ergebnisse[vorgang] = nachher.pop(lauf.ziele[0])
            self.assertEqual(vorher, nachher)
        return vorher, ergebnisse

    def vorgaenge(self):
        return [v for v in vorgaenge.VORGAENGE if v.name in ("dubletten", "muell", "splitten")]

    def lauf(self, leser, ordner):
        lauf = vorgaenge.SechsVorgaenge(
            self, self.programm(), leser.datei(ordner), namen=["ERGEBNIS"] * 6, hinweis=leser.hinweis
        )
        lauf.oeffnen()
        return lauf

    def beim_schreiben(self, ordner, fern, zufall):
        """Kills as soon as a file of ours appears in the folder, a random moment later."""
        bekannt = set(os.listdir(ordner))
        frist = time.monotonic() + 60
        while set(os.listdir(ordner)) == bekannt and time.monotonic() < frist:
            if fern.prozess.poll() is not None:
                return
        time.sleep(zufall.random() * 0.03)  # the moment is the point: any is right
        fern.prozess.send_signal(signal.SIGKILL)

    def irgendwann(self, fern, zufall):
        time.sleep(zufall.random() * 1.2)
        fern.prozess.send_signal(signal.SIGKILL)

    def einmal(self, leser, vorgang, nummer, vorher, ganz):
        zufall = random.Random(f"{SAAT} {leser.name} {nummer}")
        ordner = self.ordner / "opfer"
        leser.kopieren(self.ordner / "quelle", ordner)
        lauf = self.lauf(leser, ordner)
        lauf.vorbereiten(vorgang)
        ziel = (
            (self.irgendwann, (lauf.fern, zufall)) if nummer % 2 else (self.beim_schreiben, (ordner, lauf.fern, zufall))
        )
        moerder = threading.Thread(target=ziel[0], args=ziel[1])
        moerder.start()
        try:
            lauf.ausfuehren(vorgang)
        except (RuntimeError, BrokenPipeError):
            pass  # the program is gone, as it should be
        moerder.join()
        lauf.fern.__exit__()
        # As the file lies there, before anybody clears anything: other programs read it.
        self.pruefen(leser, ordner, vorher, ganz, aufgeraeumt=False)
        # Opening it clears what was left.
        vorgaenge.pruefstand("Katalog", str(leser.datei(ordner)), "")
        return self.pruefen(leser, ordner, vorher, ganz, aufgeraeumt=True)

    def pruefen(self, leser, ordner, vorher, ganz, aufgeraeumt):
        if aufgeraeumt:
            self.assertEqual([], [n for n in os.listdir(ordner) if "lindgarn-" in n])
        elif leser.mehrere_dateien:
            return False
        jetzt = leser.abzug(ordner)
        neu = jetzt.pop("ERGEBNIS", None)
        self.assertEqual(vorher, jetzt)
        self.assertIn(neu, (None, ganz))
        return neu is not None

    def format_pruefen(self, leser):
        vorher, ganz = self.quelle_anlegen(leser)
        vorgaenge_ = self.vorgaenge()
        geschrieben = 0
        for nummer in range(TODE):
            vorgang = vorgaenge_[nummer % len(vorgaenge_)]
            with self.subTest(format=leser.name, nummer=nummer, vorgang=vorgang.name):
                geschrieben += self.einmal(leser, vorgang, nummer, vorher, ganz[vorgang])
        print(f"{leser.name}: {TODE} Tode, {geschrieben} mit Ergebnis", flush=True)

    def test_mdb(self):
        self.format_pruefen(fremdleser.Mdb())

    def test_dbf(self):
        self.format_pruefen(fremdleser.Dbf())

    def test_xls(self):
        self.format_pruefen(fremdleser.Xls())


if __name__ == "__main__":
    unittest.main()
