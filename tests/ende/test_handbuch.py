"""The handbook: it can be built from the program's own pictures, and its figures are those of the program."""
import json
import pathlib
import re
import shutil
import subprocess
import sys
import unittest

from gemeinsam import BEISPIELE, PROGRAMM, WURZEL, AmProgramm

HANDBUCH = WURZEL / "docs/handbuch"
PRUEFSTAND = pathlib.Path(PROGRAMM).with_name("lindgarn-pruefstand")
# What a field holds: group, mask and a value.
FELDER = {
    "Firmenname": (2, 1, "Meyer"), "Anrede": (4, 1, "Herr"), "Vorname": (4, 2, "Hans"), "Nachname": (4, 4, "Meyer"),
    "Straße+Hausnummer": (3, 3, "Hauptstr. 12"), "Postleitzahl": (3, 4, "50667"), "Ort": (3, 8, "Köln"),
}  # fmt: skip
SCHWELLEN = (("Sehr hoch", 0.82), ("hoch", 0.73), ("niedrig", 0.62), ("Sehr niedrig", 0.5))


def pruefstand(op, *args):
    zeile = json.dumps({"id": 1, "op": op, "args": args}) + "\n"
    antwort = subprocess.run([PRUEFSTAND], input=zeile, capture_output=True, text=True, check=True).stdout
    return json.loads(antwort)["result"]


def relevanz(felder, eins, zwei):
    """How alike two records are; `felder` are pairs of group and mask."""
    saetze = []
    for werte in (eins, zwei):
        satz = [
            {"name": f"F{i}", "typ": 10, "groesse": 80, "attribute": 0, "Gruppe": g, "Maske": m, "wert": w}
            for i, ((g, m), w) in enumerate(zip(felder, werte))
        ]
        saetze.append(pruefstand("DatensatzAufbereiten", satz))
    return pruefstand("DatensatzVergleichen", felder, *saetze, False)


def tabelle(kapitel, kopf):
    """The cells of the table in a chapter whose first column is headed `kopf`."""
    zeilen = (HANDBUCH / kapitel).read_text("utf-8").splitlines()
    anfang = next(i for i, z in enumerate(zeilen) if z.startswith(f"| {kopf} |"))
    for zeile in zeilen[anfang + 2 :]:
        if not zeile.startswith("|"):
            return
        yield [z.strip() for z in zeile.strip("|").split("|")]


def deutsch(zahl):
    return f"{zahl:.2f}".replace(".", ",")


class Zahlen(unittest.TestCase):
    def test_gleiche_datensaetze(self):
        zeilen = list(tabelle("90-ueberraschungen.md", "Zugeordnete Felder"))
        self.assertEqual(4, len(zeilen))
        for namen, erreicht, gefunden in zeilen:
            with self.subTest(namen):
                gewaehlt = [FELDER[n] for n in namen.split(", ")]
                werte = [w for _, _, w in gewaehlt]
                wert = relevanz([f[:2] for f in gewaehlt], werte, werte)
                self.assertEqual(erreicht, deutsch(wert))
                self.assertEqual(gefunden, next(name for name, schwelle in SCHWELLEN if wert >= schwelle))

    def test_das_beispiel_der_gewichte(self):
        zeilen = list(tabelle("80-suche.md", "Angabe"))[:-1]
        felder = [FELDER[n][:2] for n in ("Firmenname", "Straße+Hausnummer", "Postleitzahl", "Ort")]
        wert = relevanz(felder, [z[1] for z in zeilen], [z[2] for z in zeilen])
        gewicht, punkte = (sum(int(z[k]) for z in zeilen) for k in (3, 4))
        self.assertAlmostEqual(punkte / gewicht, wert, places=6)

    def test_die_schwellen(self):
        erwartet = [[name, deutsch(schwelle)] for name, schwelle in SCHWELLEN]
        self.assertEqual(erwartet, list(tabelle("80-suche.md", "Regler")))


@unittest.skipUnless(shutil.which("cmark-gfm"), "cmark-gfm ist nicht vorhanden")
class Buch(AmProgramm):
    def bauen(self, bilder, ziel):
        befehl = [sys.executable, str(HANDBUCH / "bauen.py"), "--bilder", str(bilder), "--ziel", str(ziel)]
        return subprocess.run(befehl, capture_output=True, text=True)

    def test_bilder_und_text_passen_zusammen(self):
        bilder, ziel = self.ordner / "bilder", self.ordner / "Handbuch.html"
        subprocess.run(
            [sys.executable, str(HANDBUCH / "bilder.py"), "--programm", PROGRAMM,
             "--beispiel", str(BEISPIELE / "adressen.mdb"), "--ziel", str(bilder)], check=True,
        )  # fmt: skip
        lauf = self.bauen(bilder, ziel)
        self.assertEqual(0, lauf.returncode, lauf.stderr)
        seite = ziel.read_text("utf-8")
        self.assertNotIn("@datei", seite)
        self.assertIn("RelevanzFaktor = 100", seite)
        self.assertIsNone(re.search(r'src="(?!data:image/png)', seite), "a picture outside of the file")
        text = "".join(p.read_text("utf-8") for p in HANDBUCH.glob("[0-9]*.md"))
        gezeigt = set(re.findall(r"\(bilder/([^)]+)\.png\)", text))
        self.assertEqual(gezeigt, {p.stem for p in bilder.glob("*.png")}, "pictures made and pictures shown")
        self.assertLess(sum(p.stat().st_size for p in bilder.glob("*.png")), 1_500_000)

    def test_ein_fehlendes_bild_faellt_auf(self):
        lauf = self.bauen(self.ordner, self.ordner / "Handbuch.html")
        self.assertNotEqual(0, lauf.returncode)
        self.assertIn("fehlt", lauf.stderr)


if __name__ == "__main__":
    unittest.main()
