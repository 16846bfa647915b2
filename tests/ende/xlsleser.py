"""What xlrd, a foreign reader, sees of an .xls file; the same questions that mdbtools answers for an .mdb file."""
import datetime
import decimal
import json
import pathlib
import re
import subprocess
import sys

import gemeinsam
import mdbtools

# Debian's package, also for an interpreter that is not Debian's.
sys.path.append("/usr/lib/python3/dist-packages")
import xlrd  # noqa: E402

PRUEFSTAND = pathlib.Path(gemeinsam.PROGRAMM).with_name("lindgarn-pruefstand")
PROBEZEILEN = 8
ARTEN = {xlrd.XL_CELL_NUMBER: "zahl", xlrd.XL_CELL_DATE: "datum", xlrd.XL_CELL_BOOLEAN: "bool"}
TYPEN = {"text": 10, "memo": 12, "zahl": 7, "datum": 8, "bool": 1}
WAEHRUNG = 5


def mappe(datei):
    return xlrd.open_workbook(str(datei), formatting_info=True)


def bereichsname(blatt):
    return re.sub(r"[^\w.]", "_", blatt)


def tabellen(datei):
    """The sheets; one that has its range's name goes without the "$"."""
    buch = mappe(datei)
    namen = {n.name.lower() for n in buch.name_obj_list if n.scope == -1}
    return [b.name if bereichsname(b.name).lower() in namen else b.name + "$" for b in buch.sheets()]


def blatt_von(datei, tabelle):
    return mappe(datei).sheet_by_name(tabelle.rstrip("$"))


def felder(datei, tabelle):
    """[{name, art, groesse}] of a table; `art` is text, zahl, datum or bool, by its first rows."""
    blatt = blatt_von(datei, tabelle)
    ergebnis = []
    for s in range(blatt.ncols):
        zellen = [blatt.cell(z, s) for z in range(1, min(blatt.nrows, PROBEZEILEN + 1))]
        arten = [ARTEN.get(z.ctype, "text") for z in zellen if z.value != ""]
        art = max(sorted(set(arten)), key=arten.count) if arten else "text"
        ergebnis.append({"name": str(blatt.cell(0, s).value), "art": art, "groesse": 255 if art == "text" else 0})
    return ergebnis


def wert(zelle, buch):
    if zelle.value == "" or zelle.ctype == xlrd.XL_CELL_ERROR:
        return None
    if zelle.ctype == xlrd.XL_CELL_DATE:
        return datetime.datetime(*xlrd.xldate_as_tuple(zelle.value, buch.datemode))
    if zelle.ctype == xlrd.XL_CELL_NUMBER:
        return decimal.Decimal(repr(zelle.value).removesuffix(".0"))
    return zelle.value


def zeilen(datei, tabelle):
    """The rows as Python values."""
    blatt = blatt_von(datei, tabelle)
    return [[wert(blatt.cell(z, s), blatt.book) for s in range(blatt.ncols)] for z in range(1, blatt.nrows)]


def abzug(datei):
    """Every sheet's cells with their formats, to compare two states of a file."""
    buch = mappe(datei)

    def zelle(z):
        return (z.ctype, z.value, buch.format_map[buch.xf_list[z.xf_index].format_key].format_str)

    return {
        name: [[zelle(z) for z in blatt.row(i)] for i in range(blatt.nrows)]
        for name, blatt in zip(tabellen(datei), buch.sheets())
    }


def formate(datei, tabelle, zeile=1):
    """The number formats of a row's cells; the header is row 0."""
    buch = mappe(datei)
    blatt = buch.sheet_by_name(tabelle.rstrip("$"))
    return [buch.format_map[buch.xf_list[z.xf_index].format_key].format_str for z in blatt.row(zeile)]


def json_wert(v):
    if isinstance(v, datetime.datetime):
        return {"datum": v.isoformat()}
    return float(v) if isinstance(v, decimal.Decimal) else v


def auftrag(op, *args):
    """One operation of the test bench."""
    zeile = json.dumps({"id": 1, "op": op, "args": [str(a) if isinstance(a, pathlib.Path) else a for a in args]})
    lauf = subprocess.run([PRUEFSTAND], input=zeile + "\n", capture_output=True, text=True, check=True)
    antwort = json.loads(lauf.stdout)
    assert "error" not in antwort, antwort["error"]
    return antwort["result"]


def aus_mdb(mdb, xls):
    """Puts every table of an .mdb file into the workbook, as sheets."""
    for tabelle in mdbtools.tabellen(mdb):
        felder_ = [
            {"name": f["name"], "typ": WAEHRUNG if f["name"] == "Umsatz" else TYPEN[f["art"]], "groesse": f["groesse"]}
            for f in mdbtools.felder(mdb, tabelle)
        ]
        reihen = [[json_wert(v) for v in zeile] for zeile in mdbtools.zeilen(mdb, tabelle)]
        auftrag("TabelleSchreiben", xls, "", {"name": tabelle, "felder": felder_, "indexe": [], "zeilen": reihen})
