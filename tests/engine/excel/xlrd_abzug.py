#!/usr/bin/env python3
"""Prints what xlrd reads in a workbook as JSON: sheets with their cells, names and the date system.

xlrd_abzug.py DATEI
"""
import json
import sys

# Debian's package, also for an interpreter that is not Debian's.
sys.path.append("/usr/lib/python3/dist-packages")
import xlrd  # noqa: E402


def blatt_abzug(mappe, blatt):
    zellen = []
    for z in range(blatt.nrows):
        for s in range(blatt.row_len(z)):
            zelle = blatt.cell(z, s)
            if zelle.ctype in (xlrd.XL_CELL_EMPTY, xlrd.XL_CELL_BLANK) or zelle.value == "":
                continue
            xf = mappe.xf_list[zelle.xf_index] if mappe.formatting_info else None
            format_text = mappe.format_map[xf.format_key].format_str if xf else ""
            zellen.append([z, s, zelle.ctype, zelle.value, format_text])
    return {"name": blatt.name, "sichtbarkeit": blatt.visibility, "zellen": zellen}


def ergebnis_text(name):
    """What the name means, as "Blatt!$A$1:$B$9"; empty where xlrd does not evaluate it."""
    ergebnis = getattr(name, "result", None)
    return ergebnis.text if ergebnis is not None else ""


def main():
    try:
        mappe = xlrd.open_workbook(sys.argv[1], formatting_info=True, logfile=sys.stderr)
    except NotImplementedError:
        mappe = xlrd.open_workbook(sys.argv[1], logfile=sys.stderr)
    abzug = {
        "biff": mappe.biff_version,
        "datum1904": bool(mappe.datemode),
        "blaetter": [blatt_abzug(mappe, blatt) for blatt in mappe.sheets()],
        "namen": [
            {"name": n.name, "blatt": n.scope, "verborgen": bool(n.hidden), "formel": ergebnis_text(n)}
            for n in mappe.name_obj_list
        ],
    }
    json.dump(abzug, sys.stdout)


if __name__ == "__main__":
    main()
