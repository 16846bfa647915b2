"""Random tables written into files of every format, held against foreign readers at each step of their life.

Written, read back, read by others, renamed, dropped: every value is the one that went in, and what was in the file
before is as it was. The short form takes a handful of tables; LINDGARN_LANG=1 takes thousands, LINDGARN_SAAT chooses
others.
"""
import datetime
import decimal
import gzip
import json
import os
import pathlib
import random
import shutil
import subprocess
import unittest
import xml.etree.ElementTree as ET

import dbftools
import gemeinsam
import mdbtools
import xlsleser

LANG = bool(os.environ.get("LINDGARN_LANG"))
SAAT = int(os.environ.get("LINDGARN_SAAT", "1"))
BOOL, BYTE, INTEGER, LONG, WAEHRUNG, SINGLE, DOUBLE, DATUM, TEXT, MEMO = 1, 2, 3, 4, 5, 6, 7, 8, 10, 12
TYPEN = (BOOL, BYTE, INTEGER, LONG, WAEHRUNG, SINGLE, DOUBLE, DATUM, TEXT, TEXT, TEXT, MEMO)
NULLTAG = datetime.datetime(1899, 12, 30)
IN_850 = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789 .,;:-_/&'\"()%äöüÄÖÜßéèáñç"
IN_1252 = IN_850 + "€–„“œšž"
ALLE = IN_1252 + "łŁčşğα中ﬁ"  # and nothing of two units, which mdbtools and xlrd cut in half


class Pruefstand:
    """One test bench for many operations."""

    def __init__(self):
        self.lauf = subprocess.Popen([xlsleser.PRUEFSTAND], stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True)

    def __call__(self, op, *args):
        args = [str(a) if isinstance(a, pathlib.Path) else a for a in args]
        self.lauf.stdin.write(json.dumps({"id": 1, "op": op, "args": args}) + "\n")
        self.lauf.stdin.flush()
        antwort = json.loads(self.lauf.stdout.readline())
        assert "error" not in antwort, (op, antwort["error"])
        return antwort["result"]

    def ende(self):
        self.lauf.stdin.close()
        self.lauf.wait()
        self.lauf.stdout.close()


class Art:
    """What a format takes: characters, names, the earliest day, the longest memo, and what comes back."""

    zeichen, feldzeichen, feldname, memo, tage = ALLE, "abc ÄÖÜß09_-", 30, 9000, (-657434, 2958465)
    uhrzeit, riesen = True, True

    @staticmethod
    def zurueck(wert, typ):
        """The value as it is read again."""
        return bool(wert) if typ == BOOL else wert


class Jet4(Art):
    pass


class Jet3(Art):
    zeichen = IN_1252


class Xls(Art):
    memo, tage = 2000, (61, 2958465)

    @staticmethod
    def zurueck(wert, typ):
        return None if wert == "" else wert


class Xls5(Xls):
    zeichen, memo = IN_850, 255


class Dbf(Art):
    zeichen, feldzeichen, feldname, memo, tage = IN_850, "ABCDEFG09_", 10, 3000, (-500000, 2958465)
    uhrzeit, riesen = False, False

    @staticmethod
    def zurueck(wert, typ):
        if typ == BOOL:
            return bool(wert)
        if typ in (TEXT, MEMO) and wert is not None:
            # Blanks at the end of a text are the field's own; a memo keeps its own unless it is nothing else.
            return wert.rstrip(" ") or None if typ == TEXT or not wert.strip(" ") else wert
        return wert


class Zufallstabelle:
    """Fields and rows for a format; the first row has a value everywhere, so that a workbook's columns have a type."""

    def __init__(self, zufall, art, name, hoechstens=40):
        self.zufall, self.art, self.name = zufall, art, name
        self.platz = 1400  # characters that the texts of a record may have; Access 97 takes 2,012 bytes in all
        typen = [zufall.choice(TYPEN) for _ in range(zufall.randint(1, 20))]
        self.felder = [{"name": n, "typ": t, "groesse": self.groesse(t)} for n, t in zip(self.namen(len(typen)), typen)]
        self.zeilen = [
            [None if i and zufall.random() < 0.15 else self.wert(f, i == 0) for f in self.felder]
            for i in range(zufall.randint(1, hoechstens))
        ]
        self.erwartet = [[art.zurueck(v, f["typ"]) for v, f in zip(z, self.felder)] for z in self.zeilen]

    def namen(self, anzahl):
        namen = {}
        while len(namen) < anzahl:
            rest = "".join(self.zufall.choices(self.art.feldzeichen, k=self.zufall.randint(0, self.art.feldname - 3)))
            name = (f"F{len(namen)}" + rest).rstrip()
            namen.setdefault(name.lower(), name)
        return list(namen.values())

    def groesse(self, typ):
        if typ != TEXT:
            return 0
        groesse = min(self.zufall.choice((1, 5, 30, 80, 254)), max(self.platz, 1))
        self.platz -= groesse
        return groesse

    def text(self, laenge):
        text = "".join(self.zufall.choices(self.art.zeichen, k=laenge))
        while len(text.encode("utf-16-le")) > 2 * laenge:  # lengths count UTF-16 units
            text = text[:-1]
        return text

    def wert(self, feld, gefuellt):
        z, typ = self.zufall, feld["typ"]
        if typ == TEXT:
            laenge = z.choice((0, 1, feld["groesse"], z.randint(0, feld["groesse"])))
            return "x" + self.text(max(laenge, 1) - 1) if gefuellt else self.text(laenge)
        if typ == MEMO:
            laenge = z.choice((0, 1, 64, 255, 256, z.randint(0, self.art.memo)))
            laenge = min(laenge, self.art.memo)
            return "x" + self.text(max(laenge, 1) - 1) if gefuellt else self.text(laenge)
        if typ == BOOL:
            return z.random() < 0.5
        if typ == BYTE:
            return z.choice((0, 255, z.randint(0, 255)))
        if typ == INTEGER:
            return z.choice((-32768, 32767, z.randint(-32768, 32767)))
        if typ == LONG:
            return z.choice((-(2**31), 2**31 - 1, 0, z.randint(-(2**31), 2**31 - 1)))
        if typ == WAEHRUNG:
            return z.randint(-(10**13), 10**13) / 10000
        if typ == SINGLE:
            return z.randint(-40000, 40000) / 4
        if typ == DOUBLE:
            gross = z.uniform(-1, 1) * 10.0 ** z.randint(-200, 200)
            return z.choice((0.0, z.randint(-(10**9), 10**9) / 1000, gross if self.art.riesen else 0.25))
        tag = NULLTAG + datetime.timedelta(
            z.choice((*self.art.tage, z.randint(*self.art.tage), z.randint(10000, 50000)))
        )
        if self.art.uhrzeit and z.random() < 0.5 and tag >= NULLTAG:
            tag = min(
                tag + datetime.timedelta(seconds=z.randint(0, 86399)), datetime.datetime(9999, 12, 31, 23, 59, 59)
            )
        return tag

    def auftrag(self):
        zeilen = [[{"datum": v.isoformat()} if isinstance(v, datetime.datetime) else v for v in z] for z in self.zeilen]
        return {"name": self.name, "felder": self.felder, "indexe": self.indexe(), "zeilen": zeilen}

    def indexe(self):
        """For Access: some plain and some that are unique by name only."""
        if self.art not in (Jet4, Jet3):
            return []
        taugliche = [f["name"] for f in self.felder if f["typ"] != MEMO and f["groesse"] <= 80]
        wahl = self.zufall.sample(taugliche, min(len(taugliche), self.zufall.randint(0, 3)))
        return [
            {"name": f"I{i}", "felder": [[n, self.zufall.random() < 0.3]], "eindeutig": False, "primaer": False}
            for i, n in enumerate(wahl)
        ]


def gleich(a, b, absolut=0.0):
    """True for the same value: numbers that agree in 14 digits, or differ by `absolut` at most."""
    if isinstance(a, bool) or isinstance(b, bool):
        return a is not None and b is not None and bool(a) == bool(b)
    zahlen = (int, float, decimal.Decimal)
    if isinstance(a, zahlen) and isinstance(b, zahlen):
        return abs(float(a) - float(b)) <= max(1e-14 * max(abs(float(a)), abs(float(b))), absolut)
    if isinstance(a, datetime.datetime) and isinstance(b, datetime.datetime):
        return abs(a - b) < datetime.timedelta(milliseconds=500)
    return a == b


def aus_json(wert):
    return datetime.datetime.fromisoformat(wert["datum"]) if isinstance(wert, dict) else wert


class Rundreise(gemeinsam.AmProgramm):
    """What the three formats' tests share."""

    art = Art

    def setUp(self):
        super().setUp()
        self.pruefstand = Pruefstand()
        self.addCleanup(self.pruefstand.ende)

    def zeilen_pruefen(self, tabelle, zeilen, woher, absolut=0.0):
        self.assertEqual(len(tabelle.erwartet), len(zeilen), (woher, tabelle.name))
        for nr, (erwartet, ist) in enumerate(zip(tabelle.erwartet, zeilen)):
            for feld, a, b in zip(tabelle.felder, erwartet, ist, strict=True):
                self.assertTrue(gleich(a, b, absolut), (woher, tabelle.name, nr, feld, a, b))

    def lesen(self, datei, tabelle, woher):
        zeilen = self.pruefstand("Zeilen", datei, "", tabelle.name, 0, -1)
        zeilen = self.aufgefuellt(tabelle, [[aus_json(v) for v in z] for z in zeilen])
        self.zeilen_pruefen(tabelle, zeilen, woher)

    def aufgefuellt(self, tabelle, zeilen):
        return zeilen

    def schreiben(self, datei, saat, anzahl, art, namen):
        zufall = random.Random(SAAT * 1000003 + saat)
        tabellen = [Zufallstabelle(zufall, art, namen(nr)) for nr in range(anzahl)]
        for tabelle in tabellen:
            self.pruefstand("TabelleSchreiben", datei, "", tabelle.auftrag())
        return tabellen

    def umbenennen(self, datei, tabellen, namen):
        for nr, tabelle in enumerate(tabellen):
            self.pruefstand("TabelleUmbenennen", datei, "", tabelle.name, namen(nr))
            tabelle.name = namen(nr)

    def loeschen(self, datei, tabellen):
        for tabelle in tabellen:
            self.pruefstand("TabelleLoeschen", datei, "", tabelle.name)


class InAccess(Rundreise):
    DATEIEN = (
        ("jet4-leer-adox.mdb", Jet4), ("jet3-typen.mdb", Jet3), ("jet4-kodiert.mdb", Jet4), ("ace-2007.accdb", Jet4),
    )  # fmt: skip

    def fremd(self, datei, tabelle):
        """The rows as mdb-export shows them; of days it knows those near our time."""
        ergebnis = []
        for zeile, erwartet in zip(mdbtools.roh(datei, tabelle.name), tabelle.erwartet, strict=True):
            ergebnis.append(
                [self.wert(v, f["typ"], e) for v, f, e in zip(zeile, tabelle.felder, erwartet, strict=True)]
            )
        return ergebnis

    @staticmethod
    def wert(v, typ, erwartet):
        if typ in (TEXT, MEMO):
            return "" if v is None and erwartet == "" else v  # an empty text of Access 97
        if v is None:
            return v
        if typ == BOOL:
            return v == "1"
        if typ == DATUM:
            return datetime.datetime.fromisoformat(v) if 1900 <= erwartet.year < 3000 else erwartet
        return float(v)

    def test_rundreise(self):
        for saat in range(60 if LANG else 1):
            for name, art in self.DATEIEN:
                with self.subTest(name, saat=saat):
                    quelle = gemeinsam.fremde_datei(f"mdb/beispiele/{name}")
                    datei = pathlib.Path(shutil.copyfile(quelle, self.ordner / name))
                    self.eine_datei(datei, saat, art)

    def eine_datei(self, datei, saat, art):
        vorher = mdbtools.abzug(datei)
        tabellen = self.schreiben(datei, saat, 8 if LANG else 3, art, "Tabelle {}".format)
        for namen in (None, "Ümbenannt {}".format):
            if namen:
                self.umbenennen(datei, tabellen, namen)
            for tabelle in tabellen:
                self.lesen(datei, tabelle, "own")
                self.zeilen_pruefen(tabelle, self.fremd(datei, tabelle), "mdb-export")
        self.loeschen(datei, tabellen)
        self.assertEqual(vorher, mdbtools.abzug(datei))


class InDbase(Rundreise):
    def test_rundreise(self):
        for saat in range(100 if LANG else 1):
            ordner = self.ordner / f"daten{saat}"
            ordner.mkdir()
            dbftools.schreiben(ordner / "ALT.DBF", (("NAME", "C", 20, 0),), [["Müller"], [None]])
            vorher = dbftools.bytes_von(ordner)
            datei = ordner / "ALT.DBF"
            tabellen = self.schreiben(datei, saat, 10, Dbf, "TAB{}".format)
            for namen in (None, "NEU{}".format):
                if namen:
                    self.umbenennen(datei, tabellen, namen)
                for tabelle in tabellen:
                    self.lesen(datei, tabelle, "own")
                    self.zeilen_pruefen(tabelle, self.fremd(ordner, tabelle), "dbfread")
            self.loeschen(datei, tabellen)
            self.assertEqual(vorher, dbftools.bytes_von(ordner))

    def fremd(self, ordner, tabelle):
        zeilen = dbftools.zeilen(ordner, tabelle.name)
        for zeile, erwartet in zip(zeilen, tabelle.erwartet, strict=True):
            for i, feld in enumerate(tabelle.felder):
                # It misreads a memo of dBase IV that fills its blocks, and does not know what a space is.
                if feld["typ"] == MEMO and (len(erwartet[i] or "") + 8) % 512 == 0:
                    zeile[i] = erwartet[i]
                if feld["typ"] == BOOL:
                    zeile[i] = bool(zeile[i])
        return zeilen


TISCH = "{urn:oasis:names:tc:opendocument:xmlns:table:1.0}"
OFFICE = "{urn:oasis:names:tc:opendocument:xmlns:office:1.0}"
ODTEXT = "{urn:oasis:names:tc:opendocument:xmlns:text:1.0}"
GNM = "{http://www.gnumeric.org/v10.dtd}"


def od_text(absatz):
    """A paragraph's text, with the blanks that stand in elements of their own."""
    teile = [absatz.text or ""]
    for kind in absatz:
        if kind.tag == ODTEXT + "s":
            teile.append(" " * int(kind.get(ODTEXT + "c", "1")))
        teile.append(od_text(kind) if kind.tag != ODTEXT + "s" else "")
        teile.append(kind.tail or "")
    return "".join(teile)


def od_wert(zelle):
    art = zelle.get(OFFICE + "value-type")
    if art in ("float", "currency", "percentage"):
        return float(zelle.get(OFFICE + "value"))
    if art == "boolean":
        return zelle.get(OFFICE + "boolean-value") == "true"
    if art == "date":
        return datetime.datetime.fromisoformat(zelle.get(OFFICE + "date-value")[:26])
    if art == "string":
        return "\n".join(od_text(p) for p in zelle.iter(ODTEXT + "p"))
    return None


def libreoffice(dateien, ordner):
    """{file: {sheet: rows}} as LibreOffice reads them; one start for all."""
    subprocess.run(
        ["soffice", f"-env:UserInstallation=file://{ordner}/profil", "--headless", "--convert-to", "fods", "--outdir",
         ordner / "fods", *dateien], check=True, capture_output=True, timeout=3000)  # fmt: skip
    ergebnis = {}
    for datei in dateien:
        wurzel = ET.parse(ordner / "fods" / (datei.stem + ".fods")).getroot()
        ergebnis[datei] = {t.get(TISCH + "name"): list(od_zeilen(t)) for t in wurzel.iter(TISCH + "table")}
    return ergebnis


def od_zeilen(tisch):
    for zeile in tisch.iter(TISCH + "table-row"):
        werte = []
        for zelle in zeile:
            mal = int(zelle.get(TISCH + "number-columns-repeated", "1"))
            werte += [od_wert(zelle)] * min(mal, 300)
        mal = int(zeile.get(TISCH + "number-rows-repeated", "1"))
        yield from [werte] * (mal if any(v is not None for v in werte) else min(mal, 300))


GNUMERIC = {"20": lambda t: t == "TRUE", "30": float, "40": float, "60": str}


def gnumeric(datei, ordner):
    """{sheet: {(row, column): value}} as Gnumeric reads a workbook; days are numbers there."""
    ziel = ordner / "g.gnumeric"
    subprocess.run(["ssconvert", datei, ziel], check=True, capture_output=True, timeout=600)
    ergebnis = {}
    for blatt in ET.fromstring(gzip.decompress(ziel.read_bytes())).iter(GNM + "Sheet"):
        ergebnis[blatt.find(GNM + "Name").text] = {
            (int(z.get("Row")), int(z.get("Col"))): GNUMERIC[z.get("ValueType")](z.text or "")
            for z in blatt.iter(GNM + "Cell")
            if z.get("ValueType") in GNUMERIC
        }
    return ergebnis


def als_tage(wert):
    return (wert - NULLTAG) / datetime.timedelta(days=1)


class InMappen(Rundreise):
    """Many sheets a workbook and one start of LibreOffice for all."""

    def test_rundreise(self):
        mappen = [self.mappe(n, *g) for n in range(50 if LANG else 1) for g in (("b8", Xls), ("b5", Xls5))]
        for schritt in ("Blatt {}", "Úmbenannt {}"):
            for datei, vorher, tabellen in mappen:
                if schritt != "Blatt {}":
                    self.umbenennen(datei, tabellen, schritt.format)
                self.mit_allen_lesen(datei, vorher, tabellen)
            self.mit_libreoffice(mappen)
        for datei, vorher, tabellen in mappen:
            self.loeschen(datei, tabellen)
            self.assertEqual(vorher, xlsleser.abzug(datei))

    def mappe(self, nummer, name, art):
        quelle = {"b8": "FormulaEvalTestData.xls", "b5": "testEXCEL_95.xls"}[name]
        datei = self.ordner / f"{name}-{nummer}.xls"
        shutil.copyfile(gemeinsam.fremde_datei(f"xls/beispiele/{quelle}"), datei)
        vorher = xlsleser.abzug(datei)
        return datei, vorher, self.schreiben(datei, nummer, 20 if LANG else 6, art, "Blatt {}".format)

    def mit_allen_lesen(self, datei, vorher, tabellen):
        jetzt = xlsleser.abzug(datei)
        self.assertEqual(vorher, {n: jetzt[n] for n in vorher})
        blaetter = gnumeric(datei, self.ordner) if shutil.which("ssconvert") else None
        for tabelle in tabellen:
            self.lesen(datei, tabelle, "own")
            self.zeilen_pruefen(tabelle, self.aufgefuellt(tabelle, xlsleser.zeilen(datei, tabelle.name)), "xlrd")
            if blaetter:
                self.zellen_pruefen(tabelle, blaetter[tabelle.name])

    def aufgefuellt(self, tabelle, zeilen):
        """Rows with nothing at the end are no rows of a sheet."""
        breite = len(tabelle.felder)
        zeilen = [[*z, *[None] * (breite - len(z))] for z in zeilen]
        return zeilen + [[None] * breite] * (len(tabelle.erwartet) - len(zeilen))

    def zellen_pruefen(self, tabelle, zellen):
        for nr, zeile in enumerate(tabelle.erwartet):
            for s, wert in enumerate(zeile):
                ist = zellen.get((nr + 1, s))
                if isinstance(wert, datetime.datetime):
                    gut = isinstance(ist, float) and abs(als_tage(wert) - ist) < 5e-6
                else:
                    gut = gleich(wert, ist)
                self.assertTrue(gut, ("Gnumeric", tabelle.name, nr, tabelle.felder[s], wert, ist))

    def mit_libreoffice(self, mappen):
        if not shutil.which("soffice"):
            return
        gelesen = libreoffice([m[0] for m in mappen], self.ordner)
        for datei, _, tabellen in mappen:
            for tabelle in tabellen:
                breite = len(tabelle.felder)
                zeilen = [z[:breite] for z in gelesen[datei][tabelle.name][1 : len(tabelle.erwartet) + 1]]
                # Its own format keeps twenty digits behind the point.
                self.zeilen_pruefen(tabelle, self.aufgefuellt(tabelle, zeilen), "LibreOffice", 1e-20)


if __name__ == "__main__":
    unittest.main()
