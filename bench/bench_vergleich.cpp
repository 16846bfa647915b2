// One pass of the search over generated addresses: all pairs of its blocks at speed, and a sample of them by
// the letter of the rules in the same run.
#include <QJsonObject>
#include <algorithm>
#include <cstdio>
#include <random>

#include "adressliste.h"
#include "fields/einstellungen.h"
#include "messwerte.h"
#include "search/blocksuche.h"
#include "search/schnell.h"

namespace {

constexpr int kSchluessellaenge = 2;  // of both passes, as the wizard proposes for the first one
constexpr double kStichprobe = 2;     // seconds for the pairs by the letter
constexpr int kMeisteStichproben = 300000;

struct Durchgang {
    std::vector<Zeile> zeilen;
    std::vector<Suchblock> bloecke;
    qint64 paare = 0;
};

void sortieren(std::vector<Zeile>& zeilen, const std::vector<int>& felder) {
    std::stable_sort(zeilen.begin(), zeilen.end(), [&](const Zeile& a, const Zeile& b) {
        for (const int f : felder) {
            const auto feld = size_t(f);
            if (a[feld].text() != b[feld].text()) return a[feld].text() < b[feld].text();
        }
        return false;
    });
}

// The kinds of pass: "gewoehnlich" by surname, "vorgabe" as the wizard's first one, with its great block of
// records without a firm, "gleich" over records that are all alike.
Durchgang durchgang(const QString& art, int anzahl) {
    Durchgang d;
    d.zeilen = AufbereiteteAdressen(anzahl);
    if (art == QStringLiteral("gleich")) d.zeilen.assign(size_t(anzahl), d.zeilen[0]);
    const bool nachNamen = art == QStringLiteral("gewoehnlich");
    sortieren(d.zeilen, nachNamen ? std::vector<int>{kFeldNachname, kFeldPlz, kFeldStrasse}
                                  : std::vector<int>{kFeldFirma, kFeldPlz, kFeldStrasse});
    Blocksuche suche(kSchluessellaenge);
    for (const Zeile& zeile : d.zeilen)
        suche.naechster(zeile[size_t(nachNamen ? kFeldNachname : kFeldFirma)]);
    d.bloecke = suche.fertig();
    for (const Suchblock& block : d.bloecke) d.paare += block.paare();
    return d;
}

// What is compared: all columns; with several contacts of a firm kept apart; firm and address alone.
struct Vergleichsart {
    FeldZuordnungen zuordnungen = Adresszuordnung();
    bool differenzieren = false;
};

Vergleichsart vergleichsart(const QString& name) {
    Vergleichsart art;
    art.differenzieren = name == QStringLiteral("kontakte");
    if (name == QStringLiteral("anschrift"))
        for (FeldZuordnung& zuordnung : art.zuordnungen)
            // Not ignored, which would move the columns behind it.
            if (zuordnung.Gruppe > 3) zuordnung = {0, 0};
    return art;
}

QJsonObject schnell(const Durchgang& d, const Vergleichsart& art, float schwelle) {
    qint64 treffer = 0;
    qint64 paare = 0;
    quint64 pruefsumme = 0;  // of the hits in their order
    Paarempfang empfang;
    qint64 erster = 0;
    empfang.treffer = [&](qint32 i, qint32 j) {
        ++treffer;
        pruefsumme = (pruefsumme ^ quint64(erster + i) ^ quint64(erster + j) << 32) * 0x100000001B3u;
        return true;
    };
    empfang.atempause = [&](qint64 n) {
        paare += n;
        return true;
    };
    HoechststandLoeschen();
    const qint64 vorher = SpeicherMB("VmRSS");
    double laden = 0;
    const double anfang = Prozessorsekunden();
    Schnellvergleich vergleich(art.zuordnungen, art.differenzieren, schwelle);
    for (const Suchblock& block : d.bloecke) {
        if (block.paare() == 0) continue;
        const double beginn = Prozessorsekunden();
        vergleich.leeren();
        erster = block.erster;
        for (qint64 k = block.erster - 1; k < block.letzter; ++k)
            vergleich.anfuegen(d.zeilen[size_t(k)].data());
        laden += Prozessorsekunden() - beginn;
        vergleich.vergleichen(empfang);
    }
    const double sekunden = Prozessorsekunden() - anfang;
    return {{QStringLiteral("sekunden"), sekunden},
            {QStringLiteral("davonLaden"), laden},
            {QStringLiteral("paare"), paare},
            {QStringLiteral("treffer"), treffer},
            {QStringLiteral("pruefsumme"), QString::number(pruefsumme, 16)},
            {QStringLiteral("millionenJeSekunde"), double(paare) / sekunden / 1e6},
            {QStringLiteral("speicherMB"), SpeicherMB("VmHWM") - vorher}};
}

// Random pairs of the blocks, weighed as the pass weighs them.
QJsonObject woertlich(const Durchgang& d, const Vergleichsart& art, float schwelle) {
    const Vergleicher vergleicher(art.zuordnungen, art.differenzieren);
    std::mt19937_64 zufall(1);
    std::vector<std::pair<size_t, size_t>> paare;
    for (const Suchblock& block : d.bloecke) {
        const size_t zeilen = size_t(block.letzter - block.erster + 1);
        const qint64 anteil = qint64(double(block.paare()) / double(d.paare) * kMeisteStichproben);
        for (qint64 k = 0; k < anteil; ++k) {
            const size_t a = zufall() % zeilen;
            const size_t b = (a + 1 + zufall() % (zeilen - 1)) % zeilen;
            paare.emplace_back(size_t(block.erster - 1) + a, size_t(block.erster - 1) + b);
        }
    }
    std::shuffle(paare.begin(), paare.end(), zufall);
    qint64 verglichen = 0;
    qint64 treffer = 0;
    const double anfang = Prozessorsekunden();
    for (const auto& [a, b] : paare) {
        if (verglichen % 1000 == 999 && Prozessorsekunden() - anfang > kStichprobe) break;
        treffer += *vergleicher.vergleichen(d.zeilen[a].data(), d.zeilen[b].data()) >= schwelle;
        ++verglichen;
    }
    const double sekunden = Prozessorsekunden() - anfang;
    return {{QStringLiteral("sekunden"), sekunden},
            {QStringLiteral("paare"), verglichen},
            {QStringLiteral("treffer"), treffer},
            {QStringLiteral("millionenJeSekunde"), double(verglichen) / sekunden / 1e6}};
}

void messen(const QString& art, int anzahl, float schwelle, const QString& verglichen) {
    const Vergleichsart vergleich = vergleichsart(verglichen);
    const Durchgang d = durchgang(art, anzahl);
    const QJsonObject ergebnis{{QStringLiteral("durchgang"), art},
                               {QStringLiteral("verglichen"), verglichen},
                               {QStringLiteral("saetze"), anzahl},
                               {QStringLiteral("schwelle"), double(qRound(double(schwelle) * 100)) / 100},
                               {QStringLiteral("bloecke"), qint64(d.bloecke.size())},
                               {QStringLiteral("paare"), d.paare},
                               {QStringLiteral("schnell"), schnell(d, vergleich, schwelle)},
                               {QStringLiteral("woertlich"), woertlich(d, vergleich, schwelle)}};
    Ausgeben(ergebnis);
}

// The rows with the number of their block in front, for others to compare.
void ausgeben(const QString& art, int anzahl) {
    const Durchgang d = durchgang(art, anzahl);
    std::puts("block;firma;anrede;vorname;nachname;strasse;plz;ort;telefon;telefax;email;homepage");
    for (size_t b = 0; b < d.bloecke.size(); ++b)
        for (qint64 k = d.bloecke[b].erster - 1; k < d.bloecke[b].letzter; ++k) {
            QStringList felder{QString::number(b)};
            for (const Wert& wert : d.zeilen[size_t(k)]) felder << wert.text();
            std::puts(felder.join(u';').toUtf8().constData());
        }
}

constexpr char kAufruf[] =
    "bench_vergleich gewoehnlich|vorgabe|gleich RECORDS THRESHOLD [alles|kontakte|anschrift]: one JSON "
    "object\n"
    "bench_vergleich gewoehnlich|vorgabe|gleich RECORDS csv: the prepared rows\n";

}  // namespace

int main(int argc, char** argv) {
    if (argc != 4 && argc != 5) {
        std::fputs(kAufruf, stderr);
        return 2;
    }
    EinstellungenAnwenden({});
    const QString art = QString::fromLocal8Bit(argv[1]);
    const int anzahl = QByteArray(argv[2]).toInt();
    if (QByteArray(argv[3]) == "csv")
        ausgeben(art, anzahl);
    else
        messen(art, anzahl, QByteArray(argv[3]).toFloat(),
               QString::fromLocal8Bit(argc > 4 ? argv[4] : "alles"));
}
