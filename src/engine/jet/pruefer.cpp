// The check as a whole, and the pages' owners.
#include "engine/jet/pruefer.h"

#include <algorithm>

#include "base/atempause.h"
#include "engine/jet/datenseite.h"
#include "engine/jet/karte.h"
#include "engine/jet/prueflauf.h"

namespace jet {
namespace pruefung {
namespace {

constexpr int kHoechsteMaengel = 40;  // of one table
constexpr size_t kHoechsteInsgesamt = 5000;
constexpr quint32 kSeiteGesamtkarte = 1;
constexpr int kInlineKopf = 5;  // bytes in front of the bits of an inline map

QString teilname(Teil teil) {
    switch (teil) {
        case Teil::Keiner:
            break;
        case Teil::Kopf:
            return u"Kopf der Datei"_qs;
        case Teil::Karten:
            return u"Seite mit Karten"_qs;
        case Teil::Bits:
            return u"Bitkarte"_qs;
        case Teil::Definition:
            return u"Definition"_qs;
        case Teil::Daten:
            return u"Datenseite"_qs;
        case Teil::Lang:
            return u"Langwertseite"_qs;
        case Teil::Index:
            return u"Indexseite"_qs;
    }
    return {};
}

// Every page of the file has its bit, and what lies beyond the end is free.
void abdeckungPruefen(Lauf& lauf, const Karte& karte) {
    const Format& f = lauf.format();
    const Zeilenbytes zeile = zeileHolen(lauf.datei(), {kSeiteGesamtkarte, 0}, false, lauf.name());
    const qint64 ende = karte.verwiesen ? qint64(karte.bitmapseiten.size()) * f.seitenJeTyp5()
                                        : karte.erste + 8 * (zeile.bytes.size() - kInlineKopf);
    if (ende < lauf.datei().seitenzahl())
        lauf.melden(kSeiteGesamtkarte, u"die Karte reicht nur bis Seite %1"_qs.arg(ende - 1));
    else if (karte.jenseits != ende - lauf.datei().seitenzahl())
        lauf.melden(kSeiteGesamtkarte, u"Seiten hinter dem Dateiende sind nicht als frei vermerkt"_qs);
}

}  // namespace

Lauf::Lauf(const Seitendatei& datei)
    : datei_(datei), frei_(datei.seitenzahl()), besitzer_(datei.seitenzahl()), teil_(datei.seitenzahl()) {}

void Lauf::beginnen(quint32 tabelle, const QString& name) {
    anzahl_ = 0;
    tabelle_ = tabelle;
    name_ = name;
}

void Lauf::melden(quint32 seite, const QString& was) {
    if (++anzahl_ > kHoechsteMaengel || maengel_.size() >= kHoechsteInsgesamt) return;
    maengel_.push_back({tabelle_, seite, was, name_});
}

// "... beschädigt (Kunden, Seite 60, Stelle 4). Verwenden Sie ...": what stands in the brackets.
QString Lauf::ohneRat(const QString& beschreibung) {
    const qsizetype auf = beschreibung.indexOf(u'(');
    const qsizetype zu = beschreibung.lastIndexOf(u')');
    if (auf < 0 || zu < auf) return beschreibung;
    return u"nicht lesbar: "_qs + beschreibung.mid(auf + 1, zu - auf - 1);
}

bool Lauf::belegen(quint32 seite, Teil teil) {
    if (seite == 0 || seite >= datei_.seitenzahl()) {
        melden(seite, u"%1 liegt außerhalb der Datei"_qs.arg(teilname(teil)));
        return false;
    }
    Teil& bisher = teil_[seite];
    if (bisher == Teil::Karten && teil == Teil::Karten) return true;
    if (bisher != Teil::Keiner) {
        melden(seite, u"%1 ist schon vergeben (%2, Tabelle auf Seite %3)"_qs.arg(
                          teilname(teil), teilname(bisher), QString::number(besitzer_[seite])));
        return false;
    }
    bisher = teil;
    besitzer_[seite] = tabelle_;
    if (!frei_[seite]) return true;
    melden(seite, u"%1 ist als frei vermerkt"_qs.arg(teilname(teil)));
    return true;
}

bool Lauf::karteBelegen(Zeilenort ort) {
    if (!kartenzeilen_.insert(ort).second) {
        melden(ort.seite, u"Karte %1 ist schon vergeben"_qs.arg(ort.zeile));
        return false;
    }
    belegen(ort.seite, Teil::Karten);
    return true;
}

bool Lauf::belegtVonTabelle(quint32 seite, Teil teil) const {
    return seite < datei_.seitenzahl() && teil_[seite] == teil && besitzer_[seite] == tabelle_;
}

void gesamtkartePruefen(Lauf& lauf) {
    lauf.beginnen(0, u"Gesamtkarte"_qs);
    if (lauf.datei().endetAngebrochen())
        lauf.melden(lauf.datei().seitenzahl(), u"die letzte Seite der Datei ist nicht vollständig"_qs);
    lauf.versuchen(kSeiteGesamtkarte, [&] {
        const Karte karte = karteLesen(lauf.datei(), {kSeiteGesamtkarte, 0}, lauf.name());
        for (const quint32 seite : karte.seiten) lauf.freiSetzen(seite);
        lauf.belegen(kSeiteGesamtkarte, Teil::Kopf);
        for (const quint32 seite : karte.bitmapseiten) lauf.belegen(seite, Teil::Bits);
        if (!karte.seiten.empty() && karte.seiten.front() == 0)
            lauf.melden(0, u"der Kopf der Datei ist als frei vermerkt"_qs);
        abdeckungPruefen(lauf, karte);
    });
}

}  // namespace pruefung

QString Mangel::zeile() const {
    return u"%1, Seite %2: %3"_qs.arg(name, QString::number(seite), was);
}

bool Mangel::gleich(const Mangel& anderer) const {
    return tabelle == anderer.tabelle && seite == anderer.seite && was == anderer.was;
}

std::vector<Mangel> maengelFinden(const Seitendatei& datei) {
    pruefung::Lauf lauf(datei);
    pruefung::gesamtkartePruefen(lauf);
    for (const Objekt& objekt : pruefung::katalogPruefen(lauf)) {
        Atempause();
        pruefung::tabellePruefen(lauf, objekt);
    }
    return lauf.ergebnis();
}

QStringList maengelSuchen(const Seitendatei& datei) {
    QStringList zeilen;
    for (const Mangel& mangel : maengelFinden(datei)) zeilen.append(mangel.zeile());
    return zeilen;
}

void dateiPruefen(const Seitendatei& datei, const std::function<std::vector<Mangel>()>& bekannte) {
    const std::vector<Mangel> gefundene = maengelFinden(datei);
    if (gefundene.empty()) return;
    const std::vector<Mangel> alte = bekannte ? bekannte() : std::vector<Mangel>();
    for (const Mangel& mangel : gefundene) {
        const bool bekannt =
            std::any_of(alte.begin(), alte.end(), [&](const Mangel& b) { return b.gleich(mangel); });
        if (bekannt) continue;
        throw EngineFehler(kBeschaedigt,
                           u"Die Datenbankdatei hält der Prüfung nicht stand (%1). Verwenden Sie eine "
                           u"Sicherungskopie oder lassen Sie die Datei in Access komprimieren und "
                           u"reparieren."_qs.arg(mangel.zeile()));
    }
}

}  // namespace jet
