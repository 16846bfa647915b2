// Preparing, measures, comparisons, groups.
#include "search/vergleich.h"

#include <algorithm>

#include "operationen.h"
#include "search/aufbereitung.h"
#include "search/gruppen.h"
#include "search/masse.h"
#include "search/schnell.h"

namespace {

using Zeile = std::vector<Wert>;

// A row has one value for each column that is not ignored.
Zeile zeileAus(const QJsonValue& json, const FeldZuordnungen& zuordnungen) {
    Zeile zeile;
    for (const QJsonValue wert : json.toArray()) zeile.push_back(WertAusJson(wert));
    const auto spalten = std::count_if(zuordnungen.begin(), zuordnungen.end(),
                                       [](const FeldZuordnung& z) { return !FeldIgnoriert(z); });
    if (!json.isArray() || qsizetype(zeile.size()) != spalten)
        throw Abgelehnt(QStringLiteral("Eine Zeile ist eine Liste von %1 Werten.").arg(spalten));
    return zeile;
}

QJsonValue datensatzVergleichen(const Argumente& a) {
    const FeldZuordnungen zuordnungen = a.zuordnungen(0);
    const Zeile eine = zeileAus(a.json(1), zuordnungen);
    const Zeile andere = zeileAus(a.json(2), zuordnungen);
    const Vergleicher vergleicher(zuordnungen, a.wahrheit(3));
    return double(*vergleicher.vergleichen(eine.data(), andere.data()));
}

struct Vergleichsauftrag {
    FeldZuordnungen zuordnungen;
    std::vector<Zeile> zeilen;
    bool differenzieren;
    float schwelle;
};

// None when the block cannot be compared at speed.
std::optional<QJsonArray> schnell(const Vergleichsauftrag& auftrag) {
    Schnellvergleich vergleich(auftrag.zuordnungen, auftrag.differenzieren, auftrag.schwelle);
    if (!vergleich.moeglich()) return std::nullopt;
    vergleich.leeren();
    for (const Zeile& zeile : auftrag.zeilen)
        if (!vergleich.anfuegen(zeile.data())) return std::nullopt;
    QJsonArray paare;
    Paarempfang empfang;
    empfang.treffer = [&](qint32 i, qint32 j) {
        paare += QJsonArray{i, j};
        return true;
    };
    empfang.atempause = [](qint64) { return true; };
    vergleich.vergleichen(empfang);
    return paare;
}

QJsonArray woertlich(const Vergleichsauftrag& auftrag) {
    const Vergleicher vergleicher(auftrag.zuordnungen, auftrag.differenzieren);
    QJsonArray paare;
    for (size_t i = 0; i < auftrag.zeilen.size(); ++i)
        for (size_t j = i + 1; j < auftrag.zeilen.size(); ++j)
            if (*vergleicher.vergleichen(auftrag.zeilen[i].data(), auftrag.zeilen[j].data()) >=
                auftrag.schwelle)
                paare += QJsonArray{int(i), int(j)};
    return paare;
}

// Sorted: the search lists the pairs by slices and sweeps.
QJsonArray geordnet(const QJsonArray& paare) {
    std::vector<std::pair<int, int>> zahlen;
    for (const QJsonValue paar : paare) zahlen.emplace_back(paar[0].toInt(), paar[1].toInt());
    std::sort(zahlen.begin(), zahlen.end());
    QJsonArray ergebnis;
    for (const auto& paar : zahlen) ergebnis += QJsonArray{paar.first, paar.second};
    return ergebnis;
}

QJsonValue datensaetzeVergleichen(const Argumente& a) {
    Vergleichsauftrag auftrag{a.zuordnungen(0), {}, a.wahrheit(2), float(a.zahl(3))};
    for (const QJsonValue zeile : a.liste(1)) auftrag.zeilen.push_back(zeileAus(zeile, auftrag.zuordnungen));
    const std::optional<QJsonArray> paare = schnell(auftrag);
    return geordnet(paare ? *paare : woertlich(auftrag));
}

// Two whole numbers of 32 bits.
std::pair<qint32, qint32> zahlenpaar(const QJsonValue& json) {
    const Argumente paar(json.toArray());
    if (paar.anzahl() != 2) throw Abgelehnt(QStringLiteral("Erwartet sind zwei Zahlen."));
    return {paar.ganzzahl(0), paar.ganzzahl(1)};
}

QJsonValue gruppenBilden(const Argumente& a) {
    std::vector<Paar> paare;
    for (const QJsonValue json : a.liste(0)) {
        const auto saetze = zahlenpaar(json);
        paare.push_back({saetze.first, saetze.second, 0});
    }
    GruppenBilden(paare);
    QJsonArray gruppen;
    for (const Paar& paar : paare) gruppen += paar.gruppe;
    return gruppen;
}

QJsonValue dublettenSortieren(const Argumente& a) {
    std::vector<Dublette> dubletten;
    for (const QJsonValue json : a.liste(0)) {
        const auto dublette = zahlenpaar(json);
        dubletten.push_back({dublette.first, dublette.second});
    }
    DublettenSortieren(dubletten);
    QJsonArray liste;
    for (const Dublette& dublette : dubletten) liste += QJsonArray{dublette.satz, dublette.gruppe};
    return liste;
}

}  // namespace

void VergleichAnmelden(Operationen& operationen) {
    operationen["TextNormalisieren"] = [](const Argumente& a) {
        return QJsonValue(TextNormalisieren(a.wert(0)));
    };
    operationen["ZiffernFiltern"] = [](const Argumente& a) { return QJsonValue(ZiffernFiltern(a.wert(0))); };
    operationen["WortEntfernen"] = [](const Argumente& a) {
        if (a.text(1).isEmpty()) throw Abgelehnt(QStringLiteral("Das Wort darf nicht leer sein."));
        return JsonAusWert(WortEntfernen(a.wert(0), a.text(1)));
    };
    operationen["WoerterVergleichen"] = [](const Argumente& a) {
        return QJsonValue(double(WoerterVergleichen(a.wert(0), a.wert(1))));
    };
    operationen["NummernVergleichen"] = [](const Argumente& a) {
        return QJsonValue(double(NummernVergleichen(a.wert(0), a.wert(1))));
    };
    operationen["DatensatzVergleichen"] = datensatzVergleichen;
    operationen["DatensaetzeVergleichen"] = datensaetzeVergleichen;
    operationen["GruppenBilden"] = gruppenBilden;
    operationen["DublettenSortieren"] = dublettenSortieren;
}
