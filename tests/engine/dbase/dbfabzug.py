"""Prints what dbfread reads of a table, as one JSON object: fields [name, letter, width, decimals], rows."""
import datetime
import json
import sys

import dbfread


def wert(v):
    if isinstance(v, bytes):
        return v.hex()
    if v is None or isinstance(v, (bool, str, int, float)):
        return v
    return v.isoformat() if isinstance(v, datetime.date) else float(v)


tabelle = dbfread.DBF(sys.argv[1], load=True, char_decode_errors="strict", encoding=sys.argv[2] or None,
                      ignore_missing_memofile=True)  # fmt: skip
print(json.dumps({
    "felder": [[f.name, f.type, f.length, f.decimal_count] for f in tabelle.fields],
    "zeilen": [[wert(v) for v in satz.values()] for satz in tabelle],
}))  # fmt: skip
