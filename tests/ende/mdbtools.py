"""What mdbtools, a foreign reader, sees of an .mdb file."""
import csv
import datetime
import decimal
import io
import re
import subprocess

NULL = "\x01NULL"


def aufruf(*worte):
    return subprocess.run([str(w) for w in worte], check=True, capture_output=True, text=True, encoding="utf-8").stdout


def tabellen(datei):
    return aufruf("mdb-tables", "-1", datei).split("\n")[:-1]


def felder(datei, tabelle):
    """[{name, art, groesse}] of a table; `art` is text, memo, zahl, datum or bool."""
    text = aufruf("mdb-schema", "-T", tabelle, datei)
    arten = {"Text": "text", "Memo/Hyperlink": "memo", "DateTime": "datum", "Boolean": "bool"}
    ergebnis = []
    for name, typ, groesse in re.findall(
        r"^\t\[(.*?)\]\t+([A-Za-z/ ]+?) ?(?:\((\d+)\))?(?: NOT NULL)?,? *$", text, re.M
    ):
        ergebnis.append({"name": name, "art": arten.get(typ, "zahl"), "groesse": int(groesse or 0)})
    return ergebnis


def roh(datei, tabelle):
    """The rows as texts, Null as None, in the table's order."""
    text = aufruf("mdb-export", "-H", "-0", NULL, "-D", "%Y-%m-%dT%H:%M:%S", "-T", "%Y-%m-%dT%H:%M:%S", datei, tabelle)
    return [[None if v == NULL else v for v in zeile] for zeile in csv.reader(io.StringIO(text, newline=""))]


def zeilen(datei, tabelle):
    """The rows as Python values by the fields' kinds."""

    def wert(v, feld):
        if v is None or feld["art"] in ("text", "memo"):
            return v
        if feld["art"] == "datum":
            return datetime.datetime.fromisoformat(v)
        return decimal.Decimal(v)

    alle = felder(datei, tabelle)
    return [[wert(v, f) for v, f in zip(zeile, alle)] for zeile in roh(datei, tabelle)]


def abzug(datei):
    """Every table's schema and rows, to compare two states of a file."""
    return {t: (aufruf("mdb-schema", "-T", t, datei), roh(datei, t)) for t in tabellen(datei)}
