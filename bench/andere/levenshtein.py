"""The C library behind python3-levenshtein over pairs of all blocks, for two seconds a scorer."""
import itertools
import json
import sys
import time

import Levenshtein

GEWICHTE = [25, 160, 170, 180, 60, 100, 80, 160, 160, 70, 70]
SCHWELLE = 0.9
SEKUNDEN = 2


def bloecke(datei):
    with open(datei, encoding="utf-8") as zeilen:
        next(zeilen)
        sätze = [zeile.rstrip("\n").split(";") for zeile in zeilen]
    for _, block in itertools.groupby(sätze, key=lambda satz: satz[0]):
        yield [satz[1:] for satz in block]


def messen(name, mass, datei):
    paare = treffer = 0
    anfang = time.process_time()
    for block in bloecke(datei):
        for a, b in itertools.combinations(block, 2):
            gewicht = punkte = 0
            for x, y, g in zip(a, b, GEWICHTE):
                if x and y:
                    gewicht += g
                    punkte += g * mass(x, y)
            treffer += punkte >= SCHWELLE * gewicht
            paare += 1
        if time.process_time() - anfang > SEKUNDEN:
            break
    sekunden = time.process_time() - anfang
    print(
        json.dumps(
            {
                "name": f"python3-levenshtein, {name}",
                "paare": paare,
                "treffer": treffer,
                "sekunden": sekunden,
                "millionenJeSekunde": paare / sekunden / 1e6,
            }
        )
    )


messen("jaro_winkler", Levenshtein.jaro_winkler, sys.argv[1])
messen("ratio", Levenshtein.ratio, sys.argv[1])
