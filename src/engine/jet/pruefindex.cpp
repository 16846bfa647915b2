// The trees of a table's indexes checked: pages, order, links, and the entries against the rows.
#include <set>

#include "base/atempause.h"
#include "engine/jet/prueftabelle.h"
#include "engine/jet/schluessel.h"

namespace jet::pruefung {
namespace {

constexpr int kFreieBytes = 2;
constexpr int kBesitzer = 4;
constexpr int kOrtslaenge = 4;  // u24 page and u8 row behind every key
constexpr int kKindlaenge = 4;
constexpr int kTiefste = 16;

struct Baumseite {
    bool blatt = false;
    int ebene = 0;
    quint32 vorige = 0;
    quint32 naechste = 0;
    quint32 letztesKind = 0;
    std::vector<QByteArray> eintraege;  // whole: key, place, child
};

// Where entries end, from the mask; ascending.
std::vector<int> endenLesen(const Format& f, const Sicht& seite) {
    std::vector<int> enden;
    for (int i = 0; i < f.indexMaskeLaenge; ++i) {
        const quint8 bits = seite.u8(f.indexMaske + i);
        for (int b = 0; b < 8; ++b)
            if (bits >> b & 1) enden.push_back(8 * i + b);
    }
    return enden;
}

Zeilenort ortVon(const QByteArray& eintrag) {
    const Sicht s(eintrag, u"Index", 0);
    const qsizetype ab = eintrag.size() - kOrtslaenge;
    return {s.u24be(ab), s.u8(ab + 3)};
}

// One tree, walked from the root; leaves come in their order.
class Baumpruefung {
  public:
    Baumpruefung(Lauf& lauf, const Tabelle& tabelle, const EchterIndex& index, const QString& name)
        : lauf_(lauf),
          tabelle_(tabelle),
          name_(name),
          eindeutig_(index.flags & kIndexEindeutig),
          nullSchluessel_(nullSchluessel(index)) {
        const QString wessen = u"Karte des Index »%1«"_qs.arg(name);
        for (const quint32 seite : karteNehmen(lauf, index.karte, Teil::Index, wessen)) offen_.insert(seite);
    }

    void baumPruefen(quint32 wurzel);
    // Of all entries; without keys when `mitSchluesseln` is false.
    Eintragssumme summe(bool mitSchluesseln) const;
    bool vollstaendig() const { return vollstaendig_; }

  private:
    int abwaerts(quint32 nummer, int tiefe);
    void kindPruefen(quint32 nummer, quint32 kind, int tiefe, int& hoehe);
    Baumseite seiteLesen(quint32 nummer);
    void eintraegeLesen(const Sicht& sicht, Baumseite& seite);
    void kopfPruefen(const Sicht& sicht, quint32 nummer);
    void blattPruefen(quint32 nummer, const Baumseite& blatt);
    int innerePruefen(quint32 nummer, const Baumseite& seite, int tiefe);
    void melden(quint32 seite, const QString& was) {
        lauf_.melden(seite, u"Index »%1«: %2"_qs.arg(name_, was));
    }

    Lauf& lauf_;
    const Tabelle& tabelle_;
    QString name_;
    bool eindeutig_;
    QByteArray nullSchluessel_;  // all Null: the only key that a unique index may have twice
    std::set<quint32> offen_;    // pages of the map that the walk has not met
    QByteArray letzter_;         // entry of a leaf
    quint32 letztesBlatt_ = 0;
    quint32 naechstesBlatt_ = 0;  // as the last leaf says
    Eintragssumme mit_;
    Eintragssumme ohne_;
    bool vollstaendig_ = true;
};

void Baumpruefung::kopfPruefen(const Sicht& sicht, quint32 nummer) {
    if (sicht.u32(kBesitzer) != tabelle_.seite())
        melden(nummer, u"die Seite nennt eine andere Tabelle (Seite %1)"_qs.arg(sicht.u32(kBesitzer)));
}

// The first entry stands in full, the others lack the prefix they share with it.
void Baumpruefung::eintraegeLesen(const Sicht& sicht, Baumseite& seite) {
    const Format& f = lauf_.format();
    const std::vector<int> enden = endenLesen(f, sicht);
    const int platz = f.seite - f.indexEintraege;
    const int praefixlaenge =
        f.indexPraefixBreite == 1 ? sicht.u8(f.indexPraefix) : sicht.u16(f.indexPraefix);
    const int mindestens = kOrtslaenge + (seite.blatt ? 0 : kKindlaenge);
    int ab = 0;
    for (const int ende : enden) {
        QByteArray eintrag = sicht.teil(f.indexEintraege + ab, ende - ab).toByteArray();
        if (!seite.eintraege.empty()) eintrag.prepend(seite.eintraege.front().left(praefixlaenge));
        if (eintrag.size() < mindestens) sicht.kaputt(f.indexEintraege + ab);
        seite.eintraege.push_back(std::move(eintrag));
        ab = ende;
    }
    if (!seite.eintraege.empty() && praefixlaenge > seite.eintraege.front().size())
        melden(sicht.seite(), u"der gemeinsame Anfang ist länger als der erste Eintrag"_qs);
    if (sicht.u16(kFreieBytes) != platz - ab)
        melden(sicht.seite(),
               u"%1 freie Bytes sind vermerkt, %2 sind frei"_qs.arg(sicht.u16(kFreieBytes)).arg(platz - ab));
}

Baumseite Baumpruefung::seiteLesen(quint32 nummer) {
    const Format& f = lauf_.format();
    const QByteArray bytes = lauf_.datei().seite(nummer);
    const Sicht sicht(bytes, lauf_.name(), nummer);
    const int art = sicht.u8(0);
    if (art != kIndexblatt && art != kInnereIndexseite) sicht.kaputt(0);
    Baumseite seite;
    seite.blatt = art == kIndexblatt;
    seite.ebene = sicht.u8(f.indexEbene);
    seite.vorige = sicht.u32(f.indexVorige);
    seite.naechste = sicht.u32(f.indexNaechste);
    seite.letztesKind = sicht.u32(f.indexLetztesKind);
    kopfPruefen(sicht, nummer);
    eintraegeLesen(sicht, seite);
    return seite;
}

void Baumpruefung::blattPruefen(quint32 nummer, const Baumseite& blatt) {
    if (blatt.vorige != letztesBlatt_)
        melden(nummer,
               u"die vorige Seite ist als %1 vermerkt, sie ist %2"_qs.arg(blatt.vorige).arg(letztesBlatt_));
    if (letztesBlatt_ != 0 && naechstesBlatt_ != nummer)
        melden(letztesBlatt_,
               u"die nächste Seite ist als %1 vermerkt, sie ist %2"_qs.arg(naechstesBlatt_).arg(nummer));
    letztesBlatt_ = nummer;
    naechstesBlatt_ = blatt.naechste;
    if (blatt.letztesKind != 0) melden(nummer, u"ein Blatt hat ein Kind"_qs);
    for (const QByteArray& eintrag : blatt.eintraege) {
        const QByteArrayView schluessel = QByteArrayView(eintrag).chopped(kOrtslaenge);
        if (mit_.anzahl > 0 && eintrag <= letzter_) melden(nummer, u"die Einträge sind nicht in Ordnung"_qs);
        if (eindeutig_ && mit_.anzahl > 0 && schluessel == QByteArrayView(letzter_).chopped(kOrtslaenge) &&
            schluessel != nullSchluessel_)
            melden(nummer, u"ein Schlüssel kommt zweimal vor"_qs);
        mit_.hinzufuegen(ortVon(eintrag), schluessel);
        ohne_.hinzufuegen(ortVon(eintrag), {});
        letzter_ = eintrag;
    }
}

// All children of a page stand equally high above the leaves.
void Baumpruefung::kindPruefen(quint32 nummer, quint32 kind, int tiefe, int& hoehe) {
    if (!vollstaendig_) return;
    const int darunter = abwaerts(kind, tiefe + 1);
    if (hoehe >= 0 && vollstaendig_ && darunter != hoehe)
        melden(nummer, u"die Seiten darunter sind verschieden hoch"_qs);
    hoehe = darunter;
}

int Baumpruefung::innerePruefen(quint32 nummer, const Baumseite& seite, int tiefe) {
    int hoehe = -1;
    for (const QByteArray& eintrag : seite.eintraege) {
        const qsizetype kindAb = eintrag.size() - kKindlaenge;
        kindPruefen(nummer, Sicht(eintrag, name_, nummer).u32be(kindAb), tiefe, hoehe);
        if (vollstaendig_ && eintrag.left(kindAb) != letzter_)
            melden(nummer, u"ein Eintrag nennt nicht den letzten der Seite darunter"_qs);
    }
    kindPruefen(nummer, seite.letztesKind, tiefe, hoehe);
    return hoehe + 1;
}

// The page's height above the leaves. Some writers leave the level of inner pages at 0, and no reader minds.
int Baumpruefung::abwaerts(quint32 nummer, int tiefe) {
    Atempause();
    if (offen_.erase(nummer) == 0 || tiefe > kTiefste) {
        melden(nummer, u"die Seite steht nicht in der Karte oder kommt zweimal vor"_qs);
        vollstaendig_ = false;
        return 0;
    }
    int hoehe = 0;
    const bool ging = lauf_.versuchen(nummer, [&] {
        const Baumseite seite = seiteLesen(nummer);
        if (seite.blatt)
            blattPruefen(nummer, seite);
        else
            hoehe = innerePruefen(nummer, seite, tiefe);
        if (vollstaendig_ && seite.ebene != hoehe && seite.ebene != 0)
            melden(nummer, u"die Ebene ist %1 statt %2"_qs.arg(seite.ebene).arg(hoehe));
    });
    if (!ging) vollstaendig_ = false;
    return hoehe;
}

void Baumpruefung::baumPruefen(quint32 wurzel) {
    abwaerts(wurzel, 0);
    if (!vollstaendig_) return;
    if (naechstesBlatt_ != 0)
        melden(letztesBlatt_, u"hinter dem letzten Blatt steht Seite %1"_qs.arg(naechstesBlatt_));
    for (const quint32 seite : offen_) melden(seite, u"die Seite hängt nicht am Baum"_qs);
}

Eintragssumme Baumpruefung::summe(bool mitSchluesseln) const {
    return mitSchluesseln ? mit_ : ohne_;
}

// The user's name for it rather than that of a relation.
QString indexname(const Tabelle& tabelle, size_t nummer) {
    QString name = u"Nr. %1"_qs.arg(nummer);
    for (const LogischerIndex& i : tabelle.logische) {
        if (i.echter != nummer) continue;
        name = i.name;
        if (i.art != kIndexFremd) break;
    }
    return name;
}

}  // namespace

void indexPruefen(Lauf& lauf, const Tabelle& tabelle, const EchterIndex& index, size_t nummer,
                  const Indexerwartung& erwartung) {
    const QString name = indexname(tabelle, nummer);
    const auto melden = [&](quint32 seite, const QString& was) {
        lauf.melden(seite, u"Index »%1«: %2"_qs.arg(name, was));
    };
    Baumpruefung baum(lauf, tabelle, index, name);
    baum.baumPruefen(index.wurzel);
    if (!baum.vollstaendig()) return;
    if (!erwartung.vollstaendig) return;
    const Eintragssumme ist = baum.summe(erwartung.mitSchluesseln);
    if (ist.anzahl != erwartung.summe.anzahl)
        melden(index.wurzel, u"%1 Einträge für %2 Zeilen"_qs.arg(ist.anzahl).arg(erwartung.summe.anzahl));
    else if (ist.orte != erwartung.summe.orte)
        melden(index.wurzel, u"Einträge führen zu Zeilen, die es nicht gibt"_qs);
    else if (ist != erwartung.summe)
        lauf.versuchen(index.wurzel, [&] {
            const auto ort = falschenSchluesselFinden(lauf.datei(), tabelle, index);
            if (ort)
                melden(ort->seite,
                       u"der Schlüssel von Zeile %1 passt nicht zu ihren Werten"_qs.arg(ort->zeile));
        });
}

}  // namespace jet::pruefung
