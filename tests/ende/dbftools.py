"""What dbfread, a foreign reader, sees of a folder of .dbf files; and a small writer of its own for the sources."""
import datetime
import decimal
import pathlib
import struct
import sys

# Debian's packages serve another interpreter than the one that may run the tests; this one is plain Python.
sys.path.append("/usr/lib/python3/dist-packages")

import dbfread  # noqa: E402

ARTEN = {"C": "text", "M": "memo", "N": "zahl", "F": "zahl", "D": "datum", "L": "bool"}


def lesen(ordner, tabelle):
    for pfad in pathlib.Path(ordner).iterdir():
        if pfad.suffix.lower() == ".dbf" and pfad.stem.upper() == tabelle.upper():
            # A file that does not name its code page is taken for one of DOS, as German ones are.
            seite = None if pfad.read_bytes()[29] else "cp850"
            return dbfread.DBF(pfad, encoding=seite, lowernames=False, load=True, char_decode_errors="strict")
    raise FileNotFoundError(tabelle)


def tabellen(ordner):
    return sorted(p.stem for p in pathlib.Path(ordner).iterdir() if p.suffix.lower() == ".dbf")


def felder(ordner, tabelle):
    """[{name, art, groesse, form}] of a table; `form` is what the file says of the field."""
    return [
        {"name": f.name, "art": ARTEN[f.type], "groesse": f.length if f.type == "C" else 0,
         "form": (f.type, f.length, f.decimal_count)}
        for f in lesen(ordner, tabelle).fields
    ]  # fmt: skip


def wert(v):
    if v is None or v == "":
        return None
    if isinstance(v, bool) or isinstance(v, str):
        return v
    if isinstance(v, datetime.date):
        return datetime.datetime(v.year, v.month, v.day)
    return decimal.Decimal(str(v))


def zeilen(ordner, tabelle):
    return [[wert(v) for v in satz.values()] for satz in lesen(ordner, tabelle)]


def bytes_von(ordner):
    return {p.name: p.read_bytes() for p in pathlib.Path(ordner).iterdir() if p.is_file()}


def schreiben(pfad, spalten, reihen, sprachbyte=2, seite="cp850"):
    """A table of dBase III without memo: columns (name, letter, width, decimals), values as `zeilen` gives them."""

    def feld(v, art, breite, stellen):
        if v is None:
            return b" " * breite
        if art == "N":
            return f"{v:.{stellen}f}".rjust(breite).encode("ascii")
        if art == "D":
            return v.strftime("%Y%m%d").encode("ascii")
        roh = str(v).encode(seite)
        assert len(roh) <= breite, v
        return roh.ljust(breite)

    breite = 1 + sum(s[2] for s in spalten)
    datei = bytearray(struct.pack("<B3BIHH", 3, 104, 2, 29, len(reihen), 33 + 32 * len(spalten), breite))
    datei += bytes(17) + bytes([sprachbyte]) + bytes(2)
    for name, art, laenge, stellen in spalten:
        datei += name.encode(seite).ljust(11, b"\0") + art.encode() + bytes(4)
        datei += bytes([laenge, stellen]) + bytes(14)
    datei += b"\r"
    for reihe in reihen:
        datei += b" " + b"".join(feld(v, *s[1:]) for v, s in zip(reihe, spalten))
    pathlib.Path(pfad).write_bytes(datei + b"\x1a")
