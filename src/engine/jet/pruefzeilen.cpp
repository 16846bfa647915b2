// A table's data pages, rows and long values checked.
#include <algorithm>
#include <cstring>

#include "base/atempause.h"
#include "engine/jet/indexbau.h"
#include "engine/jet/prueftabelle.h"

namespace jet::pruefung {
namespace {

constexpr int kFreieBytes = 2;  // u16 in a data page
constexpr int kHoechsteSpruenge = 8;
constexpr int kLangfeld = 12;
constexpr quint32 kLanglaenge = 0x3FFFFFFF;
constexpr quint32 kLangInline = 0x80000000;
constexpr quint32 kLangEinzeln = 0x40000000;

// Walks over the pages of one table.
class Zeilenpruefung {
  public:
    Zeilenpruefung(Lauf& lauf, const Tabelle& tabelle, std::vector<Indexerwartung>& erwartungen)
        : lauf_(lauf), tabelle_(tabelle), erwartungen_(erwartungen), lange_(lauf, tabelle) {}
    void seitePruefen(quint32 nummer);
    quint64 zeilen() const { return zeilen_; }
    bool vollstaendig() const { return vollstaendig_; }

  private:
    void zeilePruefen(Zeilenort ort, const QByteArray& seite, const Slot& slot);
    Zeilenbytes zielHolen(Zeilenort ort);
    void wertePruefen(Zeilenort ort, QByteArrayView bytes, quint32 seite);
    void kurzenPruefen(Zeilenort ort, const Spalte& spalte, QByteArrayView roh);
    void indexeErwarten(Zeilenort ort, const Zeilenteile& teile);

    Lauf& lauf_;
    const Tabelle& tabelle_;
    std::vector<Indexerwartung>& erwartungen_;
    Langwertpruefung lange_;
    std::map<quint32, Slotmenge> ziele_;  // rows that pointers lead to
    quint64 zeilen_ = 0;
    bool vollstaendig_ = true;
};

void Zeilenpruefung::seitePruefen(quint32 nummer) {
    const QByteArray seite = lauf_.datei().seite(nummer);
    // A page that was given back may still stand in the map: it is no page of the table's.
    if (seite[0] != char(kDatenseite) || besitzerLesen(seite) != tabelle_.seite()) {
        lauf_.melden(nummer, u"Seite der Karte ist keine Datenseite der Tabelle"_qs);
        return;
    }
    std::vector<Slot> slots;
    if (!lauf_.versuchen(nummer, [&] { slots = datenseitePruefen(lauf_, nummer, seite); })) {
        vollstaendig_ = false;
        return;
    }
    for (size_t i = 0; i < slots.size(); ++i) {
        if (slots[i].flags & kSlotGeloescht) continue;
        ++zeilen_;
        const Zeilenort ort{nummer, quint8(i)};
        if (!lauf_.versuchen(nummer, [&] { zeilePruefen(ort, seite, slots[i]); })) vollstaendig_ = false;
    }
}

void Zeilenpruefung::zeilePruefen(Zeilenort ort, const QByteArray& seite, const Slot& slot) {
    if (!(slot.flags & kSlotZeiger)) {
        wertePruefen(ort, QByteArrayView(seite).sliced(slot.ab, slot.laenge), ort.seite);
        return;
    }
    const Zeilenbytes ziel = zielHolen(ort);
    wertePruefen(ort, ziel.bytes, ziel.ort.seite);
}

// Follows a moved row. Each stop must be a page of the table's and belong to this row only.
Zeilenbytes Zeilenpruefung::zielHolen(Zeilenort ort) {
    for (int sprung = 0; sprung < kHoechsteSpruenge; ++sprung) {
        const Zeilenbytes roh = zeileHolen(lauf_.datei(), ort, false, lauf_.name());
        ort = zeilenortVon(Sicht(roh.bytes, lauf_.name(), ort.seite).u32(0));
        const Zeilenbytes ziel = zeileHolen(lauf_.datei(), ort, false, lauf_.name());
        const Slot slot = slotsLesen(lauf_.format(), ziel.seite, ort.seite)[ort.zeile];
        if (!lauf_.belegtVonTabelle(ort.seite, Teil::Daten))
            lauf_.melden(ort.seite, u"verschobene Zeile %1 liegt auf einer fremden Seite"_qs.arg(ort.zeile));
        if (!(slot.flags & kSlotGeloescht) || slot.laenge == 0)
            lauf_.melden(ort.seite, u"Zeile %1 ist kein Ziel einer verschobenen Zeile"_qs.arg(ort.zeile));
        if (ziele_[ort.seite].test(ort.zeile))
            lauf_.melden(ort.seite, u"zwei verschobene Zeilen führen zu Zeile %1"_qs.arg(ort.zeile));
        ziele_[ort.seite].set(ort.zeile);
        if (!(slot.flags & kSlotZeiger)) return ziel;
    }
    beschaedigt(lauf_.name(), ort.seite);
}

void Zeilenpruefung::wertePruefen(Zeilenort ort, QByteArrayView bytes, quint32 seite) {
    const Zeilenteile teile(lauf_.format(), tabelle_, bytes, seite);
    if (teile.spaltenzahl() > tabelle_.maxSpalten)
        lauf_.melden(ort.seite, u"Zeile %1 hat %2 Spalten"_qs.arg(ort.zeile).arg(teile.spaltenzahl()));
    bool langeGut = true;
    for (const Spalte& spalte : tabelle_.spalten) {
        const std::optional<QByteArrayView> roh = teile.roh(spalte);
        if (!roh) continue;
        if (spalte.istLang())
            langeGut = lange_.wertPruefen(spalte, *roh, seite) && langeGut;
        else
            kurzenPruefen(ort, spalte, *roh);
    }
    // Keys may need the long values, and a damaged chain may lead round the whole file.
    if (langeGut)
        indexeErwarten(ort, teile);
    else
        vollstaendig_ = false;
}

// A value that lies in the row: it can be read and is not longer than its column.
void Zeilenpruefung::kurzenPruefen(Zeilenort ort, const Spalte& spalte, QByteArrayView roh) {
    const bool berechnet = spalte.flags2 & kSpalteBerechnet;
    if (berechnet) return;  // any bytes will do
    // Any bytes read as some text.
    if (spalte.typ != kTypText) wertAusBytes(lauf_.format(), spalte, roh, lauf_.name(), ort.seite);
    if (spalte.typ != kTypText && spalte.typ != kTypBinaer) return;
    const qsizetype einheit = spalte.typ == kTypText && lauf_.format().jet4 ? 2 : 1;
    const qsizetype laenge = spalte.typ == kTypText ? textLaenge(lauf_.format(), roh) : qsizetype(roh.size());
    if (laenge * einheit > spalte.laenge)
        lauf_.melden(ort.seite, u"Zeile %1: der Wert in »%2« ist länger als das Feld"_qs.arg(ort.zeile).arg(
                                    spalte.name));
}

// Without keys only rows are told from each other whose columns are all Null.
bool ganzNull(const Tabelle& tabelle, const EchterIndex& index, const Zeilenteile& teile) {
    return std::none_of(index.spalten.begin(), index.spalten.end(), [&](const IndexSpalte& s) {
        const Spalte* spalte = tabelle.spalteMitNummer(s.nummer);
        return spalte && (spalte->typ == kTypBoolean || teile.gesetzt(s.nummer));
    });
}

bool hatNull(const Tabelle& tabelle, const EchterIndex& index, const Zeilenteile& teile) {
    return std::any_of(index.spalten.begin(), index.spalten.end(), [&](const IndexSpalte& s) {
        const Spalte* spalte = tabelle.spalteMitNummer(s.nummer);
        return spalte && spalte->typ != kTypBoolean && !teile.gesetzt(s.nummer);
    });
}

void Zeilenpruefung::indexeErwarten(Zeilenort ort, const Zeilenteile& teile) {
    for (size_t i = 0; i < erwartungen_.size(); ++i) {
        const EchterIndex& index = tabelle_.echte[i];
        if ((index.flags & kIndexErforderlich) && hatNull(tabelle_, index, teile))
            lauf_.melden(ort.seite, u"Zeile %1 ist leer, wo ein Index Werte verlangt"_qs.arg(ort.zeile));
        if ((index.flags & kIndexOhneNull) && ganzNull(tabelle_, index, teile)) continue;
        QByteArray schluessel;
        if (erwartungen_[i].mitSchluesseln)
            schluessel = zeilenSchluessel(lauf_.datei(), tabelle_, index, teile);
        erwartungen_[i].summe.hinzufuegen(ort, schluessel);
    }
}

// Eight bytes at a time; the sum of many such hashes hardly agrees by chance.
quint64 streuwert(QByteArrayView bytes, quint64 anfang) {
    constexpr quint64 kFaktor = 0x9E3779B97F4A7C15u;
    const auto mischen = [](quint64 zahl) {
        zahl *= kFaktor;
        return zahl ^ zahl >> 32;
    };
    quint64 summe = mischen(anfang + quint64(bytes.size()));
    qsizetype ab = 0;
    quint64 acht = 0;
    for (; ab + 8 <= bytes.size(); ab += 8) {
        std::memcpy(&acht, bytes.data() + ab, 8);
        summe = mischen(summe ^ acht);
    }
    acht = 0;
    if (ab < bytes.size()) std::memcpy(&acht, bytes.data() + ab, size_t(bytes.size() - ab));
    return mischen(mischen(summe ^ acht));
}

}  // namespace

void Eintragssumme::hinzufuegen(Zeilenort ort, QByteArrayView schluesselbytes) {
    const quint64 ortshash = streuwert({}, zeilenortWert(ort));
    ++anzahl;
    orte += ortshash;
    schluessel += streuwert(schluesselbytes, ortshash);
}

std::vector<Slot> datenseitePruefen(Lauf& lauf, quint32 nummer, const QByteArray& seite) {
    const Format& f = lauf.format();
    std::vector<Slot> slots = slotsLesen(f, seite, nummer);
    const int unterste = slots.empty() ? f.seite : slots.back().ab;
    const int frei = unterste - f.datenKopf - 2 * int(slots.size());
    const int vermerkt = Sicht(seite, lauf.name(), nummer).u16(kFreieBytes);
    if (vermerkt != frei)
        lauf.melden(nummer, u"%1 freie Bytes sind vermerkt, %2 sind frei"_qs.arg(vermerkt).arg(frei));
    return slots;
}

void zeilenPruefen(Lauf& lauf, const Tabelle& tabelle, const std::vector<quint32>& datenseiten,
                   std::vector<Indexerwartung>& erwartungen, bool zeilenzahlGilt) {
    Zeilenpruefung pruefung(lauf, tabelle, erwartungen);
    for (const quint32 seite : datenseiten) {
        Atempause();
        pruefung.seitePruefen(seite);
    }
    for (Indexerwartung& e : erwartungen) e.vollstaendig = pruefung.vollstaendig();
    if (zeilenzahlGilt && pruefung.zeilen() != tabelle.zeilen)
        lauf.melden(
            tabelle.seite(),
            u"die Zeilenzahl ist %1, gezählt wurden %2"_qs.arg(tabelle.zeilen).arg(pruefung.zeilen()));
}

Langwertpruefung::Langwertpruefung(Lauf& lauf, const Tabelle& tabelle) : lauf_(lauf) {
    for (const Langwertkarten& karten : tabelle.lange) mapLesen(karten);
}

void Langwertpruefung::mapLesen(const Langwertkarten& karten) {
    const QString wessen = u"Langwertkarte von Spalte %1"_qs.arg(karten.nummer);
    const std::vector<quint32> seiten = karteNehmen(lauf_, karten.besitz, Teil::Lang, wessen);
    freikartePruefen(lauf_, karten.frei, seiten, wessen);
    for (const quint32 nummer : seiten) {
        spalteDerSeite_[nummer] = karten.nummer;
        const QByteArray seite = lauf_.datei().seite(nummer);
        if (seite[0] != char(kDatenseite) || besitzerLesen(seite) != kBesitzerLang)
            lauf_.melden(nummer, u"%1: Seite ist keine Langwertseite"_qs.arg(wessen));
        else
            lauf_.versuchen(nummer, [&] { datenseitePruefen(lauf_, nummer, seite); });
    }
}

// The bytes of a piece, or nothing, with a deviation, when it cannot be this value's.
std::optional<QByteArrayView> Langwertpruefung::stueckHolen(const Spalte& spalte, Zeilenort ort,
                                                            quint32 seite) {
    const auto karte = spalteDerSeite_.find(ort.seite);
    if (karte == spalteDerSeite_.end() || karte->second != spalte.nummer) {
        lauf_.melden(seite, u"langer Wert in »%1« liegt auf der fremden Seite %2"_qs.arg(
                                spalte.name, QString::number(ort.seite)));
        return {};
    }
    const Zeilenbytes roh = zeileHolen(lauf_.datei(), ort, false, lauf_.name());
    if (slotsLesen(lauf_.format(), roh.seite, ort.seite)[ort.zeile].flags != 0) {
        lauf_.melden(seite, u"langer Wert in »%1« ist auf Seite %2 gelöscht"_qs.arg(
                                spalte.name, QString::number(ort.seite)));
        return {};
    }
    Slotmenge& vergeben = vergeben_[ort.seite];
    if (vergeben.test(ort.zeile)) {
        lauf_.melden(seite, u"langer Wert in »%1« benutzt ein vergebenes Stück auf Seite %2"_qs.arg(
                                spalte.name, QString::number(ort.seite)));
        return {};
    }
    vergeben.set(ort.zeile);
    seite_ = roh.seite;
    return roh.bytes;
}

bool Langwertpruefung::wertPruefen(const Spalte& spalte, QByteArrayView feld, quint32 seite) {
    if (feld.isEmpty()) return true;
    const Sicht sicht(feld, lauf_.name(), seite);
    const quint32 kopf = sicht.u32(0);
    const qint64 laenge = kopf & kLanglaenge;
    qint64 da = 0;
    if (kopf & kLangInline) {
        da = sicht.groesse() - kLangfeld;
    } else {
        Zeilenort ort = zeilenortVon(sicht.u32(4));
        const bool kette = !(kopf & kLangEinzeln);
        do {
            const std::optional<QByteArrayView> stueck = stueckHolen(spalte, ort, seite);
            if (!stueck) return false;
            da += stueck->size() - (kette ? 4 : 0);
            ort = kette ? zeilenortVon(Sicht(*stueck, lauf_.name(), ort.seite).u32(0)) : Zeilenort{};
        } while (ort.seite != 0);
    }
    if (da < laenge)
        lauf_.melden(seite, u"langer Wert in »%1« hat %2 Bytes statt %3"_qs.arg(
                                spalte.name, QString::number(da), QString::number(laenge)));
    return da >= laenge;
}

}  // namespace jet::pruefung
