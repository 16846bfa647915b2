#!/usr/bin/env python3
"""Builds the handbook: one HTML file, pictures and all, from the chapters beside this script.

bauen.py --bilder ORDNER --ziel Handbuch.html

A chapter is a file `NN-name.md`; their order is that of their names. The line `@datei PFAD` stands for the text of that
file, seen from the root of the sources. Pictures are named as `bilder/NAME.png`. What cannot be found is an error.
"""
import argparse
import base64
import html
import pathlib
import re
import subprocess
import sys
import urllib.parse

HIER = pathlib.Path(__file__).resolve().parent
WURZEL = HIER.parents[1]
BEILAGE = re.compile(r"^@datei (\S+)$", re.M)
UEBERSCHRIFT = re.compile(r"<h([12])>(.*?)</h\1>", re.S)
BILD = re.compile(r'src="bilder/([^"]+)"')
VERWEIS = re.compile(r'href="#([^"]*)"')


class Fehler(Exception):
    pass


def beilegen(text):
    return BEILAGE.sub(lambda m: "```\n" + (WURZEL / m[1]).read_text("utf-8").rstrip() + "\n```", text)


def kapitel():
    return "\n\n".join(beilegen(p.read_text("utf-8")) for p in sorted(HIER.glob("[0-9][0-9]-*.md")))


def in_html(text):
    return subprocess.run(
        ["cmark-gfm", "--extension", "table", "--to", "html"], input=text, capture_output=True, text=True, check=True
    ).stdout


def kennung(titel):
    """The name of a heading in a link: its letters and digits, with hyphens between the words."""
    return "-".join(re.findall(r"\w+", re.sub(r"<[^>]+>", "", html.unescape(titel)).lower()))


def ueberschriften_kennen(rumpf):
    """Gives every heading its name; returns the text and the table of contents."""
    inhalt = []

    def ersetzen(m):
        name = kennung(m[2])
        if any(name == n for _, n, _ in inhalt):
            raise Fehler(f"zwei Überschriften heißen {name}")
        inhalt.append((int(m[1]), name, m[2]))
        return f'<h{m[1]} id="{name}">{m[2]}</h{m[1]}>'

    rumpf = UEBERSCHRIFT.sub(ersetzen, rumpf)
    for ziel in map(urllib.parse.unquote, VERWEIS.findall(rumpf)):
        if ziel not in {n for _, n, _ in inhalt}:
            raise Fehler(f"kein Abschnitt heißt {ziel}")
    zeilen = [f'<li class="ebene{ebene}"><a href="#{name}">{titel}</a></li>' for ebene, name, titel in inhalt]
    return rumpf, "\n".join(zeilen)


def bilder_einsetzen(rumpf, ordner):
    def ersetzen(m):
        datei = ordner / m[1]
        if not datei.exists():
            raise Fehler(f"das Bild {datei} fehlt")
        return 'src="data:image/png;base64,' + base64.b64encode(datei.read_bytes()).decode("ascii") + '"'

    return BILD.sub(ersetzen, rumpf)


def main():
    leser = argparse.ArgumentParser(description=__doc__.split("\n\n")[0])
    leser.add_argument("--bilder", required=True, type=pathlib.Path)
    leser.add_argument("--ziel", required=True, type=pathlib.Path)
    wahl = leser.parse_args()
    try:
        rumpf, inhalt = ueberschriften_kennen(in_html(kapitel()))
        rumpf = bilder_einsetzen(rumpf, wahl.bilder)
    except Fehler as fehler:
        return f"bauen.py: {fehler}"
    seite = (HIER / "seite.html").read_text("utf-8")
    wahl.ziel.write_text(seite.replace("@INHALT@", inhalt).replace("@RUMPF@", rumpf), "utf-8")
    return 0


if __name__ == "__main__":
    sys.exit(main())
