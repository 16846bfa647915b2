"""The rules of the duplicate search, told a second time: slow, literal, and independent of the program.

The end-to-end tests run the program on a real file and hold its result against this. Values are Python values:
str, int, float, Decimal, datetime; None is Null; LEER is Empty. What has been worked out for a value once is kept.
"""
import functools
import math
import struct

LEER = type("Leer", (), {"__repr__": lambda self: "LEER"})()

GEWICHT = {
    21: 20, 22: 5, 23: 20, 31: 40, 32: 20, 33: 100, 34: 80, 41: 10, 42: 20, 43: 30, 44: 10,
    51: 80, 52: 80, 53: 80, 61: 70, 62: 70, 1: 0, 11: 0,
}  # fmt: skip
CODE = {
    1: 1, 11: 1, 21: 1, 22: 2, 23: 4, 31: 1, 32: 2, 33: 4, 34: 8, 41: 1, 42: 2, 43: 4, 44: 8,
    51: 1, 52: 2, 53: 4, 61: 1, 62: 2,
}  # fmt: skip
NAME = {
    "Ignorieren": 1, "Index": 11, "Firmenname": 21, "Rechtsform": 22, "Branche": 23, "Straße": 31, "Hausnummer": 32,
    "Postleitzahl": 33, "Ort": 34, "Anrede": 41, "Vorname": 42, "Nachname": 43, "Abteilung/Position": 44,
    "Vorwahl": 51, "Telefon": 52, "Telefax": 53, "Emailadresse": 61, "Internetadresse": 62,
}  # fmt: skip


def gruppe_von(art):
    return 0 if art < 10 else art // 10


def zuordnung_aus_zeile(zeile):
    """(group, mask) from a line of the field list: ' Firma.......(Firmenname,Rechtsform)'."""
    arten = [NAME[n] for n in zeile[zeile.rindex("(") + 1 : -1].split(",")]
    return gruppe_von(arten[0]), sum(CODE[a] for a in arten)


def single(x):
    return struct.unpack("f", struct.pack("f", x))[0]


def nichts(v):
    return v is None or v is LEER


# --- helpers -------------------------------------------------------------------------------------------------


@functools.cache
def gross(t):
    return "".join(c if c == "ß" else (c.upper() if len(c.upper()) == 1 else c) for c in t).replace("ß", "SS")


def klein(t):
    return "".join(c.lower() if len(c.lower()) == 1 else c for c in t).replace("ß", "ss")


WORTZEICHEN = set("0123456789abcdefghijklmnopqrstuvwxyzäöüABCDEFGHIJKLMNOPQRSTUVWXYZÄÖÜß")


def wort(v, nummer):
    if nichts(v) or nummer == 0:
        return LEER
    worte, lauf = [], ""
    for c in v.strip(" "):
        if c in WORTZEICHEN:
            lauf += c
        elif lauf:
            worte.append(lauf)
            lauf = ""
    if lauf:
        worte.append(lauf)
    i = nummer - 1 if nummer > 0 else len(worte) + nummer
    return worte[i] if 0 <= i < len(worte) else LEER


def ist_zahl(v):
    if nichts(v):
        return False
    t = v.strip(" ")
    if t[:1] in ("+", "-"):
        t = t[1:]
    return (
        all(c in "0123456789,." for c in t) and t.count(",") + t.count(".") <= 1 and any(c in "0123456789" for c in t)
    )


# --- parsers -------------------------------------------------------------------------------------------------


@functools.cache
def firmenname(v):
    if nichts(v):
        return LEER
    for form in ("G. M. B. H.", "g. m. b. h.", "G. m. b. H."):
        v = v.replace(form, "")
    ergebnis = ""
    for w in v.split(" "):
        if gross(w) not in ("GMBH & CO", "GMBH", "CO", "GBRMBH", "GBR", "MBH", "KGAA", "KG", "AG"):
            ergebnis += " " + w.strip(" ")
    return ergebnis.strip(" ") if ergebnis else LEER


@functools.cache
def rechtsform(v):
    if nichts(v):
        return LEER
    t, ergebnis = gross(v), ""
    for teil, marke in (
        (" GMBH & CO", " GmbH & Co."), (" G. M. B. H.", " GmbH"), (" GMBH", " GmbH"), (" CO", " Co."),
        (" GBRMBH", " GbRmbH"), (" GBR", " GbR"), (" MBH", " GmbH"), (" KGAA", " KGaA"), (" KG", " KG"), (" AG", " AG"),
    ):  # fmt: skip
        if teil in t:
            t = t.replace(teil, "")
            ergebnis += marke
    return ergebnis.strip(" ") if ergebnis else LEER


def erste_ziffer(t):
    return next((i for i, c in enumerate(t) if c in "0123456789"), -1)


@functools.cache
def strasse(v):
    if nichts(v):
        return LEER
    i = erste_ziffer(v)
    if i < 0:
        return v.strip(" ")
    return v[:i].strip(" ") or LEER


@functools.cache
def hausnummer(v):
    if nichts(v):
        return LEER
    i = erste_ziffer(v)
    return v[i:] if i >= 0 else LEER


@functools.cache
def postleitzahl(v):
    if nichts(v):
        return LEER
    t = "".join(c.lower() for c in v)
    i = erste_ziffer(t)
    if i < 0:
        return LEER
    j = i + 1
    while j < len(t) and t[j] not in "abcdefghijklmnopqrstuvwxyzäöüß":
        j += 1
    t = t[i:j].strip(" ")
    return t if len(t) >= 4 else LEER


@functools.cache
def ort(v):
    if nichts(v):
        return LEER
    i = next((i for i, c in enumerate(v) if c not in "0123456789- "), -1)
    return v[i:] if i >= 0 else LEER


def anrede_form(v):
    if nichts(v):
        return LEER
    t = gross(v) + " "
    if "HERR " in t or "HR." in t:
        return "Herr"
    return "Frau" if "FRAU " in t or "FR." in t else LEER


def titel(v):
    if nichts(v):
        return LEER
    t = "".join(
        " " + w.strip(" ")
        for w in v.split(" ")
        if gross(w) in ("PROF.", "DR.", "MED.", "RER.", "NAT.", "PHIL.", "POL.", "H.", "C.")
    )
    return t.strip(" ") if t else LEER


def als_text(v):
    return "" if nichts(v) else str(v)


@functools.cache
def anrede(v):
    f, t = anrede_form(v), titel(v)
    if f is LEER and t is LEER:
        return LEER
    return (als_text(f) + " " + als_text(t)).strip(" ")


@functools.cache
def nachname(v):
    return LEER if nichts(v) else v[v.rfind(" ") + 1 :]


@functools.cache
def vorname(v):
    if nichts(v):
        return LEER
    start = 0
    for w in v.split(" "):
        if anrede_form(w) is LEER and titel(w) is LEER and nachname(v[start:]) != w:
            return w.strip(" ")
        start += len(w) + 1
    return LEER


def landesvorwahl(v):
    if nichts(v):
        return LEER
    t = v.strip(" ")
    if t[:1] == "+" and ist_zahl(t[1:3]):
        return "+" + t[1:3]
    if t[:2] == "00" and ist_zahl(t[2:4]):
        return "+" + t[2:4]
    if not ist_zahl(t[2:3]) and ist_zahl(t[:2]):
        return "+" + t[:2]
    return LEER


@functools.cache
def vorwahl(v):
    if nichts(v):
        return LEER
    if landesvorwahl(v) is not LEER:
        rest = v[3:] if v[:1] == "+" else v[4:] if v[:2] == "00" else v[2:]
        w = wort(rest, 1)
        return w if w is LEER or w.startswith("0") else "0" + w
    w = wort(v, 1)
    return w if w is not LEER and w.startswith("0") else LEER


@functools.cache
def telefonnummer(v):
    w = wort(v, -1)
    if w is LEER:
        return LEER
    if len(w) < 4:
        w = als_text(wort(v, -2)) + w
    return LEER if w.startswith("0") else w


PARSER = {
    21: firmenname, 22: rechtsform, 31: strasse, 32: hausnummer, 33: postleitzahl, 34: ort, 41: anrede, 42: vorname,
    43: nachname, 51: vorwahl, 52: telefonnummer, 53: telefonnummer,
}  # fmt: skip


def feldinhalt(v, art):
    return PARSER[art](v) if art in PARSER else v


# --- preparation ---------------------------------------------------------------------------------------------

STRASSENWORTE = "weg gasse strasse str chaussee allee platz ring der dem den auf am an zum zu im in".split()


def normalisiert(v):
    if nichts(v):
        return ""
    ergebnis, luecke = "", False
    for c in klein(v):
        if "a" <= c <= "z" or "0" <= c <= "9" or c in "äöü":
            ergebnis += (" " if luecke else "") + c
            luecke = False
        else:
            luecke = True
    return ergebnis.strip(" ")


def ziffern(v):
    return "" if nichts(v) else "".join(c for c in v if "0" <= c <= "9")


def ohne_strassenworte(t):
    for w in STRASSENWORTE:
        t = t.replace(w, "")
    return t


def aufbereitet(v, feld):
    """The prepared value of one field; `feld` has gruppe, maske, art ('text' or another) and groesse."""
    g, m, n = feld["gruppe"], feld["maske"], feld["groesse"]
    if feld["art"] not in ("text", "memo"):
        return v
    if g == 2:
        if m & 2:
            return (normalisiert(firmenname(v.lower() if v is not None else None)) + " " + als_text(rechtsform(v)))[:n]
        return normalisiert(v)[:n]
    if g == 3:
        if m == 1:
            return ohne_strassenworte(normalisiert(v))[:n]
        if m in (2, 4):
            return ziffern(v)
        if m == 3:
            return (ohne_strassenworte(normalisiert(strasse(v))).strip(" ") + " " + ziffern(hausnummer(v)))[:n]
        if m in (8, 12):
            return normalisiert(v)[:n]
    if g == 4:
        return normalisiert(v)[:n]
    if g == 5:
        if m == 1:
            return null_statt_leer(vorwahl(v))
        if m in (2, 4):
            return null_statt_leer(telefonnummer(v))
        if m in (3, 5):
            return als_text(vorwahl(v)) + " " + als_text(telefonnummer(v))
    if g == 6:
        if m & 1:
            v = normalisiert(v)[:n]
        if m & 2:
            v = normalisiert(LEER if v is None else v.replace("http://", ""))[:n]
        return v
    return v


def null_statt_leer(v):
    return None if v is LEER else v


# --- measures and comparison ---------------------------------------------------------------------------------


@functools.cache
def worte_vergleichen(a, b):
    if nichts(a) or nichts(b):
        return 0.0
    # "" is a text with one empty word.
    a, b = a + " ", b + " "
    worte = treffer = 0
    for links, rechts in ((a, b), (b, a)):
        for w in links[:-1].split(" "):
            worte += 1
            treffer += w in rechts
    return single(treffer / worte)


@functools.cache
def nummern_vergleichen(a, b):
    if nichts(a) or nichts(b) or not ist_zahl(a) or not ist_zahl(b):
        return 0.0
    lang, kurz = max(len(a), len(b)), min(len(a), len(b))
    punkte = 0.0
    for i in range(kurz):
        if a[i] == b[i]:
            punkte += 1 / lang
        if punkte <= 0:
            break
    if lang != kurz:
        punkte = max(punkte - ((lang - kurz) * 1 / lang) * 0.5, 0)
    return single(punkte)


def regelzeilen(g, m):
    """The rows that fire for a field: (person row?, [(measure, parser, kind), ...])."""
    w, n, ich = worte_vergleichen, nummern_vergleichen, lambda v: v
    if g == 2:
        if m == 1:
            yield False, [(w, ich, 21)]
        if m == 2:
            yield False, [(w, ich, 22)]
        yield False, [(w, firmenname, 21), (w, rechtsform, 22)]
        if m == 4:
            yield False, [(w, ich, 23)]
    elif g == 3:
        einzeln = {
            1: [(w, ich, 31)], 32: [(n, ich, 32)], 3: [(w, strasse, 31), (n, hausnummer, 32)], 4: [(n, ich, 33)],
            8: [(w, ich, 34)], 12: [(n, postleitzahl, 33), (w, ort, 34)],
        }  # fmt: skip
        if m in einzeln:
            yield False, einzeln[m]
    elif g == 4:
        for maske, art in ((1, 41), (2, 42), (4, 43)):
            if m == maske:
                yield True, [(w, ich, art)]
        yield True, [(w, vorname, 42), (w, nachname, 43)]
        yield True, [(w, anrede, 41), (w, nachname, 43)]
        yield True, [(w, anrede, 41), (w, vorname, 42), (w, nachname, 43)]
        if m == 8:
            yield False, [(w, ich, 44)]
    elif g == 5:
        einzeln = {
            1: [(n, vorwahl, 51)], 2: [(n, ich, 52)], 4: [(n, ich, 53)], 3: [(n, vorwahl, 51), (w, telefonnummer, 52)],
            5: [(n, vorwahl, 51), (w, telefonnummer, 53)],
        }  # fmt: skip
        if m in einzeln:
            yield False, einzeln[m]
    elif g == 6 and m in (1, 2):
        yield False, [(w, ich, 60 + m)]


@functools.cache
def feldwertung(g, m, va, vb):
    """(person row?, weight, points) of each row that fires for two values of a field."""
    wertung = []
    for person, teile in regelzeilen(g, m):
        punkte = 0.0
        for mass, parser, k in teile:
            punkte = single(punkte + single(mass(parser(va), parser(vb)) * GEWICHT[k]))
        wertung.append((person, float(sum(GEWICHT[k] for _, _, k in teile)), punkte))
    return wertung


def relevanz(felder, a, b, differenzieren=False):
    gewicht = punkte = person_gewicht = person_punkte = 0.0
    for f, va, vb in zip(felder, a, b):
        if nichts(va) or nichts(vb) or va == "" or vb == "" or f["art"] not in ("text", "memo"):
            continue
        for person, dg, dp in feldwertung(f["gruppe"], f["maske"], va, vb):
            if person and differenzieren:
                person_gewicht, person_punkte = single(person_gewicht + dg), single(person_punkte + dp)
            else:
                gewicht, punkte = single(gewicht + dg), single(punkte + dp)
    if differenzieren and person_gewicht != 0 and person_punkte / person_gewicht < 0.7:
        punkte = 0.0
    return single(punkte / gewicht) if gewicht else 0.0


# --- search --------------------------------------------------------------------------------------------------

UMLAUT = {"ä": "a", "ö": "o", "ü": "u"}
INLINE = {" ": (7,), "&": (0x12,), ".": (0x1C,)}
INLINE |= {c: (0x36 + 2 * i,) for i, c in enumerate("0123456789")}
INLINE |= dict(
    zip(
        "abcdefghijklmnopqrstuvwxyz",
        [(x,) for x in bytes.fromhex("4A4C4D4F51535557595B5C5E60626466686 96B6D6F717375 7678".replace(" ", ""))],
    )
)


def sortierwert(v):
    """The place of a prepared value in the General order: Null first, case and accents after the letters."""
    if v is None:
        return (0,)
    if not isinstance(v, str):
        return (1, v)
    inline, extra = [], []
    for i, c in enumerate(v[:255].rstrip(" ").lower()):
        if c == "ß":
            inline += INLINE["s"] * 2
        elif c in UMLAUT:
            inline += INLINE[UMLAUT[c]]
            extra += [2] * (i - len(extra)) + [0x13]
        else:
            inline += INLINE[c]
    return (1, inline, extra)


def bloecke(reihen, spalte, laenge):
    """(first, last) of each counted block, positions from 0; a Null never ends a block."""

    def schluessel(i):
        v = reihen[i][spalte]
        return None if v is None else str(v)[:laenge]

    i = 0
    while i < len(reihen):
        key, j = schluessel(i), i + 1
        while j < len(reihen) and (key is None or schluessel(j) is None or schluessel(j) == key):
            j += 1
        if key:
            yield i, j - 1
        i = j


def bereichspaare(erster, letzter):
    """The pairs of a block in the order in which slices and sweeps meet them."""
    breite = int(math.log(letzter - erster + 1) / math.log(1.5) + 1)
    a = erster
    while a <= letzter:
        ende_a = min(a + breite, letzter + 1)
        b = a
        while b <= letzter:
            ende_b = min(b + breite, letzter + 1)
            for i in range(a, ende_a):
                for j in range(i + 1 if b == a else b, ende_b):
                    yield i, j
            b = ende_b
        a = ende_a


def paare_suchen(felder, zeilen, laeufe, schwelle, differenzieren=False, quick=False):
    """`laeufe` holds (block column, block length, sort columns) a pass. Returns the pairs of record numbers from 1."""
    benutzt = [i for i, f in enumerate(felder) if (f["gruppe"], f["maske"]) != (0, 1)]
    arbeits_felder = [felder[i] for i in benutzt]
    arbeit = [(*[aufbereitet(z[i], felder[i]) for i in benutzt], nr) for nr, z in enumerate(zeilen, 1)]
    schwelle = single(schwelle)
    gefunden, bekannt = [], set()
    for blockspalte, laenge, sortierung in laeufe:
        ort_in_arbeit = [benutzt.index(s) for s in sortierung]
        reihen = sorted(arbeit, key=lambda r: [sortierwert(r[s]) for s in ort_in_arbeit])
        if quick:
            kandidaten = [(i, i + 1) for i in range(len(reihen) - 1)]
        else:
            kandidaten = [p for e, l in bloecke(reihen, blockspalte, laenge) if l > e for p in bereichspaare(e, l)]
        for i, j in kandidaten:
            a, b = reihen[i], reihen[j]
            if relevanz(arbeits_felder, a, b, differenzieren) >= schwelle:
                if (a[-1], b[-1]) not in bekannt and (b[-1], a[-1]) not in bekannt:
                    bekannt.add((a[-1], b[-1]))
                    gefunden.append((a[-1], b[-1]))
    return gefunden


# --- evaluation ----------------------------------------------------------------------------------------------


def gruppen(paare):
    """The group number of each pair: connected components, numbered by their first pair."""
    vater = {}

    def wurzel(x):
        while vater.setdefault(x, x) != x:
            vater[x] = vater[vater[x]]
            x = vater[x]
        return x

    for a, b in paare:
        vater[wurzel(a)] = wurzel(b)
    nummern = {}
    return [nummern.setdefault(wurzel(a), len(nummern) + 1) for a, _ in paare]


def dubletten_sortieren(liste):
    """The program's own sort on [record, group]: the pivot is a position. Changes the list in place."""

    def vor(i, m):
        return (liste[i][1], liste[i][0]) < (liste[m][1], liste[m][0])

    def sortieren(lo, hi):
        i, j, m = lo, hi, (lo + hi) // 2
        while True:
            while vor(i, m):
                i += 1
            while vor(m, j):
                j -= 1
            if i <= j:
                liste[i], liste[j] = liste[j], liste[i]
                i, j = i + 1, j - 1
            if i > j:
                break
        if lo < j:
            sortieren(lo, j)
        if i < hi:
            sortieren(i, hi)

    # Positions count from 1, which the middle depends on.
    liste.insert(0, None)
    if len(liste) > 2:
        sortieren(1, len(liste) - 1)
    liste.pop(0)
    return liste


def dublettenliste(paare):
    nummern = gruppen(paare)
    liste, bekannt = [], set()
    for (a, b), g in zip(paare, nummern):
        for x in (a, b):
            if x not in bekannt:
                bekannt.add(x)
                liste.append([x, g])
    return dubletten_sortieren(liste)


def laenger(neu, alt):
    if nichts(neu):
        return alt
    return neu if alt is LEER or len(neu) > len(alt) else alt


def angereichert(felder, mitglieder):
    """The enriched record of one batch, from the members' original values."""
    bester = [LEER] * len(felder)
    teil = {}
    form = titel_ = LEER
    erstes = {}
    for art in GEWICHT:
        for i, f in enumerate(felder):
            if f["gruppe"] == gruppe_von(art) and f["maske"] & CODE[art] and art not in erstes:
                erstes[art] = i
    for zeile in mitglieder:
        for i, f in enumerate(felder):
            v = zeile[i]
            if v is None:
                continue
            if f["art"] == "text":
                bester[i] = laenger(v, bester[i])
            elif bester[i] is LEER or v > bester[i]:
                bester[i] = v
        for art, i in erstes.items():
            v = zeile[i]
            if art == 41:
                form, titel_ = laenger(anrede_form(v), form), laenger(titel(v), titel_)
            elif isinstance(v, str) or nichts(v):
                teil[art] = laenger(feldinhalt(v, art), teil.get(art, LEER))
    teil[41] = (als_text(form) + " " + als_text(titel_)).strip(" ")
    p = lambda k: teil.get(k, LEER)  # noqa: E731
    t = lambda k: als_text(p(k))  # noqa: E731
    ergebnis = []
    for i, f in enumerate(felder):
        g, m = f["gruppe"], f["maske"]
        v = {
            (2, 4): lambda: p(23), (3, 1): lambda: p(31), (3, 32): lambda: p(32),
            (3, 3): lambda: (t(31) + " " + t(32)).strip(" "), (3, 4): lambda: p(33), (3, 8): lambda: p(34),
            (3, 12): lambda: (t(33) + " " + t(34)).strip(" "), (4, 1): lambda: p(41), (4, 2): lambda: p(42),
            (4, 4): lambda: p(43), (4, 6): lambda: (t(42) + " " + t(43)).strip(" "),
            (4, 5): lambda: (t(41) + " " + t(43)).strip(" "),
            (4, 7): lambda: ((t(41) + " " + t(42)).strip(" ") + " " + t(43)).strip(" "), (4, 8): lambda: p(44),
            (5, 1): lambda: p(51), (5, 2): lambda: p(52), (5, 4): lambda: p(53),
            (5, 3): lambda: (t(51) + " / " + t(52)).strip(" "), (5, 5): lambda: (t(51) + " / " + t(53)).strip(" "),
            (6, 1): lambda: p(61), (6, 2): lambda: p(62),
        }.get((g, m), lambda: LEER)()  # fmt: skip
        if nichts(v):
            v = bester[i]
        ergebnis.append(None if v is LEER else v)
    return ergebnis


def stapel(liste):
    """Runs of equal group numbers, not whole groups: (group, [record numbers])."""
    i = 0
    while i < len(liste):
        j = i
        while j < len(liste) and liste[j][1] == liste[i][1]:
            j += 1
        yield liste[i][1], [nr for nr, _ in liste[i:j]]
        i = j


def ergebnistabelle(felder, zeilen, paare, angereicherte_uebernehmen=True):
    """The corrected table after a review in which all enriched records (or none) were taken over."""
    liste = dublettenliste(paare)
    betroffen = {nr for nr, _ in liste}
    ergebnis = [list(z) for nr, z in enumerate(zeilen, 1) if nr not in betroffen]
    if angereicherte_uebernehmen:
        ergebnis += [angereichert(felder, [zeilen[nr - 1] for nr in nummern]) for _, nummern in stapel(liste)]
    return ergebnis
