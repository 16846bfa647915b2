"""The six operations, one after the other on one database file, through the wizard."""
import collections
import json
import pathlib
import subprocess
import unicodedata

import gemeinsam

PRUEFSTAND = pathlib.Path(gemeinsam.PROGRAMM).with_name("lindgarn-pruefstand")

# An operation: its method below, its review and the button there that takes all, its result frame.
Vorgang = collections.namedtuple("Vorgang", "name review alles ergebnis")
VORGAENGE = (
    Vorgang("dubletten", "frmDublettenBearbeiten", "btnAngereichert", 13),
    Vorgang("muell", "frmMüllBearbeiten", None, 23),
    Vorgang("splitten", None, None, 32),
    Vorgang("verschmelzen", None, None, 42),
    Vorgang("abgleich", "frmDublettenBearbeiten", "btnAngereichert", 53),
    Vorgang("neue_daten", "frmDublettenBearbeiten", "btnAngereichert", 63),
)

# What each field holds, as the popup of the field list says it: the program's own proposal looks at some records by chance.
ARTEN = {
    "KUNDENNUMM": ["Index"], "FIRMA": ["Unternehmen", "Firmenname+Rechtsform"], "ANREDE": ["Kontakt", "Anrede"],
    "VORNAME": ["Kontakt", "Vorname"], "NACHNAME": ["Kontakt", "Nachname"], "STRASSE": ["Adresse", "Straße+Hausnummer"],
    "PLZ": ["Adresse", "Postleitzahl"], "ORT": ["Adresse", "Ort"], "TELEFON": ["Kommunikation", "Vorwahl+Telefon"],
    "TELEFAX": ["Kommunikation", "Vorwahl+Telefax"], "EMAIL": ["Internet", "Emailadresse"], "HOMEPAGE": ["Ignorieren"],
    "ERFASST": ["Ignorieren"], "UMSATZ": ["Ignorieren"], "FIRMA2": ["Unternehmen", "Firmenname+Rechtsform"],
    "ANSCHRIFT": ["Adresse", "Straße+Hausnummer"], "PLZORT": ["Adresse", "Postleitzahl+Ort"],
    "KONTAKT": ["Kontakt", "Anrede+Vorname+Nachname"],
}  # fmt: skip


def feldart(zeile):
    """The popup's path for a line of the field list, and whether the line says so already."""
    name = zeile.strip().split(".")[0].upper().replace("ß", "SS")[:10]
    pfad = ARTEN[name]
    return pfad, zeile.endswith("(" + pfad[-1].replace("+", ",") + ")")


def pruefstand(op, *args):
    """One operation of the test bench; its result."""
    auftrag = json.dumps({"id": 1, "op": op, "args": list(args)})
    antwort = subprocess.run([PRUEFSTAND], input=auftrag + "\n", capture_output=True, text=True, check=True)
    antwort = json.loads(antwort.stdout)
    assert "result" in antwort, antwort
    return antwort["result"]


def in_1252(zeilen):
    """The rows with the base letter where Windows-1252 lacks one, which Access 97 and most others cannot store."""

    def zeichen(c):
        try:
            c.encode("cp1252")
            return c
        except UnicodeEncodeError:
            return {"ı": "i"}.get(c, unicodedata.normalize("NFD", c)[0])

    return [["".join(map(zeichen, w)) if isinstance(w, str) else w for w in zeile] for zeile in zeilen]


def tabelle_uebertragen(quelle, tabelle, ziel, passwort="", anzahl=-1, name=None):
    """Copies a table of a database into another one, without its indexes; letters stay within Windows-1252.

    The copy has the same name, or that of `name`.
    """
    katalog = pruefstand("Katalog", str(quelle), "")["tabellen"]
    felder = next(t for t in katalog if t["name"] == tabelle)["felder"]
    zeilen = in_1252(pruefstand("Zeilen", str(quelle), "", tabelle, 0, anzahl))
    pruefstand(
        "TabelleSchreiben",
        str(ziel),
        passwort,
        {"name": name or tabelle, "felder": felder, "indexe": [], "zeilen": zeilen},
    )


def messe(zeilen, namen=("Firma2", "Anschrift", "PLZOrt", "Telefon", "Kontakt")):
    """A second table, of another build: some of the addresses with other spellings, and some new ones."""
    felder = [{"name": n, "typ": 10, "groesse": 100} for n in namen]
    reihen = []
    for _, firma, anrede, vorname, nachname, strasse, plz, ort, telefon, *_ in zeilen[::7]:
        kontakt = " ".join(t for t in (anrede, vorname, nachname) if t) or None
        strasse = strasse.replace("straße", "str.") if strasse else None
        reihen.append([firma, strasse, " ".join(t for t in (plz, ort) if t) or None, telefon, kontakt])
    reihen += [[f"Neuland {n} GmbH", f"Uferweg {n}", f"1811{n} Rostock", f"0381/99887{n}", None] for n in range(1, 6)]
    return {"name": "Messe", "felder": felder, "indexe": [], "zeilen": reihen}


class SechsVorgaenge:
    """Drives one program over one file; `ziele` holds the names of the new tables, in the order of the runs.

    `namen` replaces the proposed names; `hinweis` is part of a message that comes when the file is opened.
    """

    def __init__(self, test, fern, datei, tabelle="Adressen", zweite="Messe", passwort="", namen=None, hinweis=None):
        self.test, self.fern, self.datei = test, fern, datei
        self.tabelle, self.zweite, self.passwort, self.hinweis = tabelle, zweite, passwort, hinweis
        self.vorgabe = namen or [None] * len(VORGAENGE)
        self.ziele = []

    def alle(self):
        """Runs all six; leaves the program at the list of tables."""
        self.oeffnen()
        for vorgang in VORGAENGE:
            self.vorbereiten(vorgang)
            self.ausfuehren(vorgang)
            self.fern.klicken("btnWeiter")
            self.fern.rahmen(3)
        return self.ziele

    def vorbereiten(self, vorgang):
        """From the list of tables to the options of an operation: the next 'Weiter' starts it."""
        getattr(self, vorgang.name)()

    def ausfuehren(self, vorgang):
        """Starts the operation, takes everything over in its review, and waits for its result."""
        self.fern.klicken("btnWeiter")
        if vorgang.review:
            self.fern.warten("fenster", vorgang.review, 120000)
            if vorgang.alles:
                self.fern.klicken(vorgang.alles)
            self.test.fertig_klicken(self.fern)
            self.fern.warten("meldung")
            self.fern.druecken("Ja")
        self.fern.rahmen(vorgang.ergebnis)

    def oeffnen(self):
        for rahmen in (0, 1):
            self.fern.rahmen(rahmen)
            self.fern.klicken("btnWeiter")
        self.datei_oeffnen()

    def datei_oeffnen(self):
        """From frame 2 to the list of tables."""
        self.fern.rahmen(2)
        self.fern.setzen("tbxDatenbankName", str(self.datei))
        if self.passwort:
            self.fern.setzen("tbxDatenbankPasswort", self.passwort)
        self.fern.klicken("btnWeiter")
        self.hinweis_bestaetigen()
        self.fern.rahmen(3)

    def hinweis_bestaetigen(self):
        if self.hinweis:
            self.fern.warten("meldung")
            self.test.assertIn(self.hinweis, self.fern.meldung()["text"])
            self.fern.druecken("OK")

    def waehlen(self, auswahl):
        self.fern.setzen("lstTabellen", self.tabelle)
        self.fern.klicken("btnWeiter")
        self.fern.rahmen(5)
        self.fern.klicken(f"btnAuswahl_{auswahl}")

    def felder_bestaetigen(self, mal=1):
        for _ in range(mal):
            self.fern.rahmen(7)
            for i, zeile in enumerate(self.fern.lesen("lstFelder")["eintraege"]):
                pfad, steht_da = feldart(zeile)
                if not steht_da:
                    self.fern.befehl("menue", objekt="lstFelder", zeile=i, pfad=pfad)
            self.test.assertTrue(all(feldart(z)[1] for z in self.fern.lesen("lstFelder")["eintraege"]))
            self.fern.klicken("btnWeiter")

    def ziel_bestaetigen(self, naechster):
        self.fern.rahmen(4)
        vorgabe = self.vorgabe[len(self.ziele) % len(VORGAENGE)]
        if vorgabe:
            self.fern.setzen("tbxZielTabelle", vorgabe)
        self.ziele.append(self.fern.text("tbxZielTabelle"))
        self.fern.klicken("btnWeiter")
        self.fern.rahmen(naechster)

    def dubletten(self):
        self.waehlen(3)
        self.felder_bestaetigen()
        self.ziel_bestaetigen(11)

    def muell(self):
        self.waehlen(2)
        self.felder_bestaetigen()
        self.ziel_bestaetigen(21)

    def splitten(self):
        self.waehlen(1)
        self.ziel_bestaetigen(31)
        self.fern.setzen("cbxSplittenTypus", {"index": 1})
        self.fern.setzen("cbxSplitten1", self.feld("cbxSplitten1", "Straße"))
        self.fern.setzen("tbxSplitten1", "Weg")
        self.fern.setzen("tbxSplitten2", "Nummer")

    def verschmelzen(self):
        self.waehlen(0)
        self.ziel_bestaetigen(41)
        self.fern.setzen("cbxVerschmelzen1", self.feld("cbxVerschmelzen1", "PLZ"))
        self.fern.setzen("cbxVerschmelzen2", self.feld("cbxVerschmelzen2", "Ort"))
        self.fern.setzen("tbxVerschmolzen", "Wohnort")

    def abgleich(self):
        self.mit_zweiter_tabelle(4, 51, "cbxDatenabgleich")

    def neue_daten(self):
        self.mit_zweiter_tabelle(5, 61, "cbxNeueDaten")

    def mit_zweiter_tabelle(self, auswahl, rahmen, liste):
        self.waehlen(auswahl)
        self.fern.rahmen(rahmen)
        self.fern.setzen(liste, self.zweite)
        self.fern.klicken("btnWeiter")
        self.felder_bestaetigen(2)
        self.ziel_bestaetigen(11)

    def feld(self, liste, name):
        """The field's name as the file spells it: dBase takes ten letters, all capital."""
        gesucht = name.upper()[:10]
        return next(e for e in self.fern.lesen(liste)["eintraege"] if e.upper()[:10] == gesucht)
