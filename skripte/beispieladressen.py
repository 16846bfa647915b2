#!/usr/bin/env python3
"""Makes the sample tables: invented German addresses in which some customers stand more than once.

Writes adressen.csv, interessenten.csv and wahrheit.csv into a folder; the same seed and number give the same files.
A heading names a field, its type, and what else it is: "Nachname:Text:50:Index". The truth says for each record which
record of Adressen it repeats, and what was changed in it.
"""
import argparse
import csv
import datetime
import pathlib
import random

MAENNER = """Achim Albert Alexander Alfred Andreas Anton Arne August Axel Benedikt Bernd Björn Carsten Claus Clemens
Detlef Dieter Dirk Eckhard Egon Enno Erich Ernst Falk Felix Florian Franz Friedrich Georg Gerhard Götz Gregor Günther
Hannes Harald Hartmut Heiko Helmut Henning Hinrich Holger Hubert Ingo Jakob Jan Jens Joachim Johannes Jörn Jürgen
Kaspar Klaus Konrad Kurt Lars Leonhard Lorenz Ludwig Magnus Malte Markus Matthias Michael Moritz Niklas Norbert Olaf
Oskar Otto Paul Peter Philipp Rainer Ralf Reinhold Robert Rolf Rudolf Rüdiger Sebastian Siegfried Simon Sören Stefan
Theodor Thomas Thorsten Tobias Torben Ulf Ulrich Uwe Valentin Viktor Volker Walter Werner Wilhelm Wolfgang""".split()
FRAUEN = """Adele Agnes Almut Andrea Anja Anke Anneliese Antje Barbara Beate Bettina Birgit Birte Brigitte Carola
Charlotte Christa Christine Claudia Cordula Dagmar Doris Dorothea Edith Elfriede Elisabeth Elke Erika Esther Eva
Franziska Frauke Gabriele Gerda Gesine Gisela Gudrun Hannelore Hedwig Heike Helga Henriette Hildegard Ilse Ines Inge
Iris Irmgard Jana Johanna Judith Juliane Jutta Karin Katharina Kerstin Kirsten Klara Lena Lieselotte Lotte Luise Maike
Manuela Margarete Marianne Marlies Martina Mechthild Meike Melanie Monika Nadine Nicole Nora Petra Regina Renate
Roswitha Ruth Sabine Silke Simone Sigrid Sonja Susanne Tanja Theresa Ulla Ulrike Ursula Ute Vera Verena Waltraud
Wiebke Wilhelmine""".split()
NACHNAMEN = """Abendroth Achtermann Adler Ahlers Albers Althaus Ambrosius Arnold Aßmann Bachmann Bäcker Balzer Bartels
Baumgarten Bäumer Becker Behrens Benning Berger Beyer Biermann Bischoff Blumenthal Böhm Böttcher Brackmann Brandes
Brinkmann Brüggemann Buchholz Büchner Burmeister Carstensen Claßen Conradi Dahlmann Daume Dieckmann Dörfler Drechsler
Ebeling Eckert Ehlers Eichhorn Engelhardt Ernsting Faßbender Feldkamp Fiedler Finke Fischer Fleischhauer Förster
Freese Friedrichs Fröhlich Fuhrmann Gabler Gärtner Geißler Gerdes Giese Göbel Gräfe Großmann Grünewald Günther Haase
Hagedorn Hahnemann Harms Hartwig Häußler Heidkamp Heinemann Hellwig Hennings Hermanns Heß Hildebrandt Hölscher
Holtkamp Hoppe Hübner Imhoff Jaeger Jansen Janßen Jordan Jürgens Kaiser Kaltenbach Karsten Keßler Kirchhoff Klaßen
Kleinschmidt Köhler König Köster Kranz Kröger Krüger Kühne Küster Lachmann Lehmkuhl Lindemann Löffler Lohmann Lüders
Lütjens Maaß Mahnke Markwardt Mattheis Meinders Meißner Mertens Meyer Möller Mühlbauer Müller Nagel Neuhaus Niehoff
Nolte Oberländer Ohlsen Oldenburg Osthoff Overbeck Pape Petersen Pfeiffer Plöger Pohlmann Prüfer Quandt Rademacher
Rauschenbach Reimers Reuß Richter Riemann Röhrig Rosenthal Rößler Rüter Sander Schäfer Schlüter Schmidt Schönfeld
Schröder Schubert Schütte Schwarzkopf Seefeldt Siebert Sörensen Spengler Stöcker Strauß Struckmeier Süßmann Tewes
Thießen Tiedemann Töpfer Trautmann Uhlig Ullrich Vogelsang Vollmer Voß Wagenknecht Walther Weidemann Weiß Wendlandt
Westermann Wiegand Wörner Wülfing Zander Ziegler Zöllner Zumbusch""".split()
DOPPELNAMEN = ["von Alten", "zur Linde", "von der Heide", "Müller-Voß", "Meyer-Harms", "Schäfer-Nolte", "Jansen-Böhm"]
STRASSEN = """Ahorn- Am_Anger Am_Bahndamm Amsel- Bach- Bahnhof- Beethoven- Birken- Brunnen- Buchen- Deich- Dorf-
Drossel- Eichen- Erlen- Feld- Fichten- Finken- Forst- Friedhof- Garten- Goethe- Hafen- Haupt- Heide- Hinter_dem_Wall
Holunder- Im_Winkel In_der_Masch Kant- Kastanien- Kirch- Kiefern- Kurze_ Lange_ Lerchen- Lessing- Linden- Markt-
Mittel- Moor- Mozart- Mühlen- Neue_ Park- Pappel- Post- Quer- Rosen- Schiller- Schul- Sonnen- Teich- Tulpen- Ulmen-
Wald- Wasser- Weiden- Wiesen- Ziegelei- Zum_Sportplatz""".split()
ENDUNGEN = ["straße"] * 12 + ["weg"] * 4 + ["allee", "platz", "ring"]
# Place, first three digits of its postal codes, area code.
ORTE = [
    ("Aachen", "520", "0241"), ("Augsburg", "861", "0821"), ("Bad Salzuflen", "321", "05222"), ("Berlin", "104", "030"),
    ("Bielefeld", "336", "0521"), ("Bochum", "447", "0234"), ("Braunschweig", "381", "0531"), ("Bremen", "282", "0421"),
    ("Celle", "292", "05141"), ("Chemnitz", "091", "0371"), ("Cuxhaven", "274", "04721"), ("Dortmund", "441", "0231"),
    ("Dresden", "010", "0351"), ("Düsseldorf", "402", "0211"), ("Emden", "267", "04921"), ("Erfurt", "990", "0361"),
    ("Essen", "451", "0201"), ("Flensburg", "249", "0461"), ("Frankfurt am Main", "603", "069"),
    ("Freiburg im Breisgau", "791", "0761"), ("Fürth", "907", "0911"), ("Gera", "075", "0365"),
    ("Göttingen", "370", "0551"), ("Gütersloh", "333", "05241"), ("Halle (Saale)", "061", "0345"),
    ("Hamburg", "203", "040"), ("Hannover", "304", "0511"), ("Heidelberg", "691", "06221"), ("Jena", "077", "03641"),
    ("Kassel", "341", "0561"), ("Kiel", "241", "0431"), ("Köln", "506", "0221"), ("Leipzig", "041", "0341"),
    ("Lüneburg", "213", "04131"), ("Lübeck", "235", "0451"), ("Magdeburg", "391", "0391"), ("Mainz", "551", "06131"),
    ("München", "803", "089"), ("Münster", "481", "0251"), ("Nürnberg", "904", "0911"), ("Oldenburg", "261", "0441"),
    ("Osnabrück", "490", "0541"), ("Paderborn", "330", "05251"), ("Rostock", "180", "0381"), ("Soest", "594", "02921"),
    ("Stuttgart", "701", "0711"), ("Trier", "542", "0651"), ("Ulm", "890", "0731"), ("Weimar", "994", "03643"),
    ("Wolfsburg", "384", "05361"), ("Würzburg", "970", "0931"), ("Zwickau", "080", "0375"),
]  # fmt: skip
GEWERBE = """Dachdeckerei Druckerei Elektro Fahrschule Feinkost Fliesen Gartenbau Gerüstbau Heizungsbau Holzbau
Immobilien Kältetechnik Logistik Malerbetrieb Maschinenbau Metallbau Möbelhaus Optik Parkett Polsterei Raumausstattung
Sanitär Schreinerei Softwarehaus Spedition Stahlbau Tiefbau Uhren Verlag Weinhandel Werbetechnik Zimmerei""".split()
RECHTSFORMEN = ["GmbH"] * 6 + ["GmbH & Co. KG"] * 3 + ["KG", "KG", "OHG", "AG", "e. K.", "GbR"]
TITEL = ["Dr.", "Dr.", "Dr.", "Prof. Dr.", "Dipl.-Ing.", "Dipl.-Kfm."]
ABTEILUNGEN = ["Einkauf", "Vertrieb", "Buchhaltung", "Geschäftsleitung", "Personal", "Werkstatt", "Lager"]
BEMERKUNGEN = [
    "Möchte nur vormittags angerufen werden.",
    "Zahlt immer sofort.\r\nSkonto wird gern genommen.",
    "Hat im Herbst nach dem neuen Katalog gefragt.",
    "Lieferung bitte an die Rückseite des Hauses; vorn ist eine Baustelle.",
    "Kennt uns von der Messe. Interessiert sich für Ersatzteile und für Wartung.",
]

FELDER = [
    "Kundennummer:Long:Schlüssel", "Firma:Text:80", "Abteilung:Text:40", "Anrede:Text:40", "Vorname:Text:40",
    "Nachname:Text:50:Index", "Straße:Text:60", "PLZ:Text:10", "Ort:Text:50", "Telefon:Text:30", "Telefax:Text:30",
    "EMail:Text:80", "Homepage:Text:80", "Erfasst:Datum", "Umsatz:Währung", "Werbung:JaNein", "Bemerkung:Memo",
]  # fmt: skip
ZWEITE_FELDER = [
    "Nr:Long:Schlüssel", "Name:Text:80", "Firmenbezeichnung:Text:80", "Anschrift:Text:60", "PLZ und Ort:Text:60",
    "Rufnummer:Text:30", "Angefragt:Datum",
]  # fmt: skip

UMSCHRIFT = {"ä": "ae", "ö": "oe", "ü": "ue", "Ä": "Ae", "Ö": "Oe", "Ü": "Ue", "ß": "ss"}
NACHBARN = {
    "a": "sq", "b": "vn", "c": "xv", "d": "sf", "e": "wr", "f": "dg", "g": "fh", "h": "gj", "i": "uo", "j": "hk",
    "k": "jl", "l": "kö", "m": "n", "n": "bm", "o": "ip", "p": "oü", "r": "et", "s": "ad", "t": "rz", "u": "zi",
    "v": "cb", "w": "qe", "x": "yc", "y": "x", "z": "tu",
}  # fmt: skip


def umschreiben(text):
    return "".join(UMSCHRIFT.get(c, c) for c in text)


def adresse_im_netz(text):
    sauber = umschreiben(text).lower()
    return "".join(c if c.isascii() and c.isalnum() else "-" for c in sauber).strip("-").replace("--", "-")


# --- one customer ---------------------------------------------------------------------------------------------


def person(z):
    frau = z.random() < 0.48
    titel = " " + z.choice(TITEL) if z.random() < 0.12 else ""
    nachname = z.choice(DOPPELNAMEN) if z.random() < 0.04 else z.choice(NACHNAMEN)
    return {
        "Anrede": ("Frau" if frau else "Herr") + titel,
        "Vorname": z.choice(FRAUEN if frau else MAENNER),
        "Nachname": nachname,
    }


def strasse(z):
    name = z.choice(STRASSEN).replace("_", " ")
    if name.endswith("-"):
        name = name[:-1] + z.choice(ENDUNGEN)
    elif name.endswith(" "):
        name += "Straße"
    nummer = str(z.randint(1, 140)) + (z.choice(["a", "b", " c"]) if z.random() < 0.12 else "")
    return f"{name} {nummer}"


def firma(z, nachname):
    gewerbe, form = z.choice(GEWERBE), z.choice(RECHTSFORMEN)
    inhaber = nachname if z.random() < 0.6 else z.choice(NACHNAMEN)
    muster = z.choice(["{i} {g} {f}", "{g} {i} {f}", "{i} {f}", "{i} & Söhne {g} {f}", "{i} & {p} {f}"])
    return muster.format(i=inhaber, g=gewerbe, f=form, p=z.choice(NACHNAMEN))


def kunde(z):
    k = {f.split(":")[0]: "" for f in FELDER} | person(z)
    k["Straße"] = strasse(z)
    k["Ort"], plz, vorwahl = z.choice(ORTE)
    k["PLZ"] = f"{plz}{z.randint(1, 99):02}"
    nummer = z.randint(20000, 8999990)
    if z.random() < 0.93:
        k["Telefon"] = f"{vorwahl}/{nummer}"
    if z.random() < 0.45:
        k["Firma"] = firma(z, k["Nachname"])
        if z.random() < 0.5:
            k["Abteilung"] = z.choice(ABTEILUNGEN)
        if z.random() < 0.6:
            k["Telefax"] = f"{vorwahl}/{nummer + z.randint(1, 9)}"
        netz = adresse_im_netz(k["Firma"].split(" ")[0]) + ".example"
        if z.random() < 0.5:
            k["Homepage"] = "http://www." + netz
    else:
        netz = "post.example"
    if z.random() < 0.5:
        k["EMail"] = f"{adresse_im_netz(k['Vorname'])}.{adresse_im_netz(k['Nachname'])}@{netz}"
    k["Erfasst"] = (datetime.date(1992, 1, 1) + datetime.timedelta(z.randrange(4500))).isoformat()
    k["Umsatz"] = f"{z.randint(0, 900000) / 100:.2f}" if z.random() < 0.7 else ""
    k["Werbung"] = str(int(z.random() < 0.6))
    k["Bemerkung"] = z.choice(BEMERKUNGEN) if z.random() < 0.1 else ""
    return k


# --- what happens to a customer who is entered once more --------------------------------------------------------
# Each changes the copy in place, where it finds something to change.


def vertippt(z, text):
    stellen = [i for i in range(1, len(text)) if text[i].lower() in NACHBARN]
    if not stellen:
        return text
    i = z.choice(stellen)
    art = z.randrange(4)
    if art == 0:
        return text[:i] + z.choice(NACHBARN[text[i].lower()]) + text[i + 1 :]
    if art == 1:
        return text[:i] + text[i + 1 :]
    if art == 2:
        return text[:i] + text[i] + text[i:]
    return text[: i - 1] + text[i].lower() + text[i - 1].lower() + text[i + 1 :] if i > 1 else text[:i] + text[i + 1 :]


def tippfehler_name(z, k):
    k["Nachname"] = vertippt(z, k["Nachname"])


def tippfehler_strasse(z, k):
    name, _, nummer = k["Straße"].partition(" ")
    k["Straße"] = f"{vertippt(z, name)} {nummer}"


def umlaute(z, k):
    for feld in ("Vorname", "Nachname", "Straße", "Ort", "Firma"):
        k[feld] = umschreiben(k[feld])


def namen_vertauscht(z, k):
    k["Vorname"], k["Nachname"] = k["Nachname"], k["Vorname"]


def abgekuerzte_strasse(z, k):
    k["Straße"] = k["Straße"].replace("straße", z.choice(["str.", "str", "-Str."])).replace("Straße", "Str.")


def abgekuerzter_vorname(z, k):
    if k["Vorname"]:
        k["Vorname"] = k["Vorname"][0] + "."


def felder_fehlen(z, k):
    gefuellt = [f for f in ("Vorname", "Telefon", "Telefax", "EMail", "Anrede", "Abteilung", "PLZ") if k[f]]
    for feld in z.sample(gefuellt, min(len(gefuellt), z.randint(1, 3))):
        k[feld] = ""


def telefonform(z, k):
    vorwahl, _, nummer = k["Telefon"].partition("/")
    paare = " ".join(nummer[i : i + 2] for i in range(0, len(nummer), 2))
    formen = ["+49 {k} {n}", "({v}) {n}", "{v}-{n}", "{v} / {p}", "0049/{k}/{n}", "{v}{n}"]
    if nummer:
        k["Telefon"] = z.choice(formen).format(k=vorwahl[1:], v=vorwahl, n=nummer, p=paare)


def titel(z, k):
    anrede, _, rest = k["Anrede"].partition(" ")
    if anrede:
        k["Anrede"] = anrede if rest else f"{anrede} {z.choice(TITEL)}"


def nur_firma(z, k):
    for feld in ("Abteilung", "Anrede", "Vorname", "Nachname"):
        if k["Firma"]:
            k[feld] = ""


def rechtsform(z, k):
    for form in ("GmbH & Co. KG", "GmbH", "KG", "OHG", "AG", "GbR"):
        if k["Firma"].endswith(" " + form):
            k["Firma"] = k["Firma"][: -len(form)].strip() + z.choice(["", " Gesellschaft", " mbH"])
            return


def grossbuchstaben(z, k):
    for feld in ("Firma", "Vorname", "Nachname", "Straße", "Ort"):
        k[feld] = k[feld].upper()


def umgezogen(z, k):
    k["Straße"] = strasse(z)


AENDERUNGEN = [
    (tippfehler_name, "Tippfehler im Namen", 5),
    (tippfehler_strasse, "Tippfehler in der Straße", 4),
    (umlaute, "Umlaute umschrieben", 4),
    (namen_vertauscht, "Vorname und Nachname vertauscht", 2),
    (abgekuerzte_strasse, "Straße abgekürzt", 4),
    (abgekuerzter_vorname, "Vorname abgekürzt", 2),
    (felder_fehlen, "Felder fehlen", 4),
    (telefonform, "Telefonnummer anders geschrieben", 4),
    (titel, "Titel kommt oder geht", 2),
    (nur_firma, "Firma ohne Ansprechpartner", 2),
    (rechtsform, "Rechtsform anders", 2),
    (grossbuchstaben, "Großbuchstaben", 1),
    (umgezogen, "Umgezogen", 1),
]


def noch_einmal(z, original):
    """A copy with one change, sometimes two or none, and what they are."""
    kopie, arten = dict(original), []
    gesucht = z.choices([0, 1, 2], [5, 72, 23])[0]
    gewichte = [g for _, _, g in AENDERUNGEN]
    while len(arten) < gesucht:
        aendern, name, _ = z.choices(AENDERUNGEN, gewichte)[0]
        vorher = dict(kopie)
        aendern(z, kopie)
        if kopie != vorher and name not in arten:
            arten.append(name)
    tag = datetime.date.fromisoformat(original["Erfasst"]) + datetime.timedelta(z.randrange(900))
    kopie["Erfasst"] = tag.isoformat()
    kopie["Umsatz"] = f"{z.randint(0, 90000) / 100:.2f}" if z.random() < 0.4 else ""
    kopie["Bemerkung"] = ""
    return kopie, ", ".join(arten) or "Unverändert"


# --- tables -----------------------------------------------------------------------------------------------------


def adressen(z, anzahl):
    """[(record, number of the customer, what was changed)] in the order of the customer numbers."""
    zeilen, einheit = [], 0
    while len(zeilen) < anzahl:
        k = kunde(z)
        einheit += 1
        zeilen.append((k, einheit, ""))
        weitere = z.choices([0, 1, 2, 3], [75, 18, 5, 2])[0]
        for _ in range(min(weitere, anzahl - len(zeilen))):
            kopie, art = noch_einmal(z, k)
            zeilen.append((kopie, einheit, art))
    z.shuffle(zeilen)
    return zeilen


def interessent(z, k):
    vorname = k["Vorname"] if z.random() < 0.7 else k["Vorname"][:1] + "."
    return {
        "Name": f"{vorname} {k['Nachname']}".strip(),
        "Firmenbezeichnung": k["Firma"],
        "Anschrift": k["Straße"].replace("straße", "str.") if z.random() < 0.4 else k["Straße"],
        "PLZ und Ort": f"{k['PLZ']} {k['Ort']}".strip(),
        "Rufnummer": k["Telefon"].replace("/", " "),
        "Angefragt": (datetime.date(2004, 5, 1) + datetime.timedelta(z.randrange(120))).isoformat(),
    }


def interessenten(z, kunden):
    """A differently built table: some are customers already. [(record, index of the customer or None)]."""
    bekannte = [(interessent(z, kunden[i][0]), i) for i in z.sample(range(len(kunden)), min(12, len(kunden)))]
    neue = [(interessent(z, kunde(z)), None) for _ in range(28)]
    zeilen = bekannte + neue
    z.shuffle(zeilen)
    return zeilen


def schreiben(datei, kopf, zeilen):
    with open(datei, "w", encoding="utf-8", newline="") as f:
        csv.writer(f, delimiter=";", lineterminator="\n").writerows([kopf, *zeilen])


def erste_nummern(zeilen):
    """The lowest customer number of each customer."""
    erste = {}
    for nummer, (_, einheit, _) in enumerate(zeilen, 1):
        erste.setdefault(einheit, nummer)
    return erste


def alles_schreiben(ordner, anzahl, anfang):
    z = random.Random(anfang)
    zeilen = adressen(z, anzahl)
    zweite = interessenten(z, zeilen)
    erste = erste_nummern(zeilen)
    namen = [f.split(":")[0] for f in FELDER[1:]]
    zweite_namen = [f.split(":")[0] for f in ZWEITE_FELDER[1:]]
    ordner.mkdir(parents=True, exist_ok=True)
    schreiben(ordner / "adressen.csv", FELDER, ([n, *(k[f] for f in namen)] for n, (k, _, _) in enumerate(zeilen, 1)))
    schreiben(
        ordner / "interessenten.csv",
        ZWEITE_FELDER,
        ([n, *(k[f] for f in zweite_namen)] for n, (k, _) in enumerate(zweite, 1)),
    )
    wahrheit = [["Adressen", n, erste[e], art] for n, (_, e, art) in enumerate(zeilen, 1)]
    wahrheit += [
        ["Interessenten", n, "" if i is None else erste[zeilen[i][1]], ""] for n, (_, i) in enumerate(zweite, 1)
    ]
    schreiben(ordner / "wahrheit.csv", ["Tabelle", "Nummer", "Kunde", "Änderung"], wahrheit)


def main():
    leser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    leser.add_argument("ordner", type=pathlib.Path)
    leser.add_argument("--anzahl", type=int, default=500, help="records of the first table")
    leser.add_argument("--anfang", type=int, default=4711, help="seed")
    wahl = leser.parse_args()
    alles_schreiben(wahl.ordner, wahl.anzahl, wahl.anfang)


if __name__ == "__main__":
    main()
