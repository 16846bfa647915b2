#!/usr/bin/env python3
"""Checks that a built program is hardened: haertung_pruefen.py PROGRAMM [BAUORDNER].

With the build's folder also that each source of the program was compiled with checked library calls: the program may
call no function whose bounds the compiler knows, so they leave no trace in it. Prints what is missing and ends with 1.
"""
import json
import pathlib
import subprocess
import sys

SCHALTER = ("-fstack-protector-strong", "-D_FORTIFY_SOURCE=2", "-Werror=format-security")


def readelf(*worte):
    return subprocess.run(
        ["readelf", "-W", *worte], check=True, capture_output=True, text=True, env={"LC_ALL": "C"}
    ).stdout


def programm_pruefen(programm):
    kopf, segmente, dynamisch = readelf("-h", programm), readelf("-l", programm), readelf("-d", programm)
    namen = readelf("--dyn-syms", programm)
    if "DYN (" not in kopf or "Flags:" not in dynamisch or " PIE" not in dynamisch:
        yield "kein Programm, das an jeder Adresse laufen kann (PIE)"
    if "GNU_RELRO" not in segmente:
        yield "die Tabellen des Binders bleiben beschreibbar (relro)"
    if " NOW" not in dynamisch and "BIND_NOW" not in dynamisch:
        yield "die Funktionen werden erst unterwegs gebunden (now)"
    if any("GNU_STACK" in z and "RWE" in z for z in segmente.splitlines()):
        yield "der Stapel ist ausführbar"
    if "__stack_chk_fail" not in namen:
        yield "der Stapel ist nicht bewacht (stack protector)"


def schalter_pruefen(bau):
    for befehl in json.loads((bau / "compile_commands.json").read_text("utf-8")):
        fehlende = [s for s in SCHALTER if s not in befehl["command"]]
        if "/src/" in befehl["file"] and fehlende:
            yield f"{befehl['file']}: ohne {', '.join(fehlende)}"


def main():
    funde = list(programm_pruefen(sys.argv[1]))
    if len(sys.argv) > 2:
        funde += schalter_pruefen(pathlib.Path(sys.argv[2]))
    print("\n".join(funde) if funde else f"{sys.argv[1]} ist gehärtet")
    return 1 if funde else 0


if __name__ == "__main__":
    sys.exit(main())
