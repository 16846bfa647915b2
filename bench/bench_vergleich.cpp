// Pairs a second of the comparison: by the letter of the rules, and at speed, on the same rows in one run.
#include <QJsonDocument>
#include <QJsonObject>
#include <cstdio>
#include <ctime>
#include <random>

#include "fields/einstellungen.h"
#include "search/schnell.h"

namespace {

using Zeile = std::vector<Wert>;

const FeldZuordnungen kZuordnungen{{2, 3}, {4, 1}, {4, 2}, {4, 4}, {3, 3}, {3, 4}, {3, 8}, {5, 3}};
constexpr float kSchwelle = 0.73f;

// Of the processor, so that a busy machine does not count.
double sekundenSeit(std::clock_t anfang) {
    return double(std::clock() - anfang) / CLOCKS_PER_SEC;
}

// Prepared addresses; without a firm, as a block of blank firms has them, or with one.
std::vector<Zeile> adressen(int anzahl, bool mitFirma) {
    std::mt19937 zufall(1);
    const auto zahl = [&](int n) { return int(zufall() % quint32(n)); };
    const auto wort = [&](int vielfalt) {
        static const char16_t* const silben[] = {u"mei", u"er",  u"hof", u"schu", u"lz", u"ber", u"ger",
                                                 u"sta", u"ein", u"wal", u"ter",  u"ro", u"sen"};
        QString text;
        for (int rest = zahl(vielfalt) + 13; rest > 0; rest /= 13)
            text += QString::fromUtf16(silben[rest % 13]);
        return text;
    };
    std::vector<Zeile> zeilen;
    for (int i = 0; i < anzahl; ++i) {
        if (i > 10 && zahl(20) == 0) {
            zeilen.push_back(zeilen[size_t(zahl(i))]);
            continue;
        }
        const int ort = zahl(6000);
        const QString firma = mitFirma ? wort(3000) + u' ' + wort(30) : QString();
        Zeile zeile{Wert(QString(firma + u' ')),
                    Wert(zahl(2) ? u"herr" : u"frau"),
                    Wert(wort(600)),
                    Wert(wort(30000)),
                    Wert(QString(wort(20000) + u' ' + QString::number(1 + zahl(120)))),
                    Wert(QString::number(10000 + ort * 14)),
                    Wert(QString(wort(13) + QString::number(ort))),
                    Wert(QStringLiteral("0%1 %2").arg(200 + ort % 700).arg(10000 + zahl(900000)))};
        if (zahl(3) == 0) zeile.back() = Wert(u" ");
        zeilen.push_back(std::move(zeile));
    }
    return zeilen;
}

struct Messung {
    double sekunden = 0;
    qint64 paare = 0;
    qint64 treffer = 0;

    QJsonObject alsJson() const {
        return {{QStringLiteral("sekunden"), sekunden},
                {QStringLiteral("paare"), paare},
                {QStringLiteral("treffer"), treffer},
                {QStringLiteral("paareJeSekunde"), double(paare) / sekunden}};
    }
};

Messung woertlich(const std::vector<Zeile>& zeilen) {
    const Vergleicher vergleicher(kZuordnungen, false);
    Messung messung;
    const std::clock_t anfang = std::clock();
    for (size_t i = 0; i < zeilen.size(); ++i)
        for (size_t j = i + 1; j < zeilen.size(); ++j, ++messung.paare)
            messung.treffer += *vergleicher.vergleichen(zeilen[i].data(), zeilen[j].data()) >= kSchwelle;
    messung.sekunden = sekundenSeit(anfang);
    return messung;
}

// In blocks of `blockgroesse` rows.
Messung schnell(const std::vector<Zeile>& zeilen, size_t blockgroesse) {
    Schnellvergleich vergleich(kZuordnungen, false, kSchwelle);
    Messung messung;
    Paarempfang empfang;
    empfang.treffer = [&](qint32, qint32) {
        ++messung.treffer;
        return true;
    };
    empfang.atempause = [&](qint64 paare) {
        messung.paare += paare;
        return true;
    };
    const std::clock_t anfang = std::clock();
    for (size_t i = 0; i < zeilen.size(); i += blockgroesse) {
        vergleich.leeren();
        for (size_t k = i; k < std::min(i + blockgroesse, zeilen.size()); ++k)
            vergleich.anfuegen(zeilen[k].data());
        vergleich.vergleichen(empfang);
    }
    messung.sekunden = sekundenSeit(anfang);
    return messung;
}

void ausgeben(const QString& name, const Messung& messung) {
    QJsonObject zeile = messung.alsJson();
    zeile.insert(QStringLiteral("name"), name);
    std::puts(QJsonDocument(zeile).toJson(QJsonDocument::Compact).constData());
    std::fflush(stdout);
}

void kleineBloecke() {
    const std::vector<Zeile> kleine = adressen(1500, true);
    ausgeben(QStringLiteral("woertlich, ein Block von 1500"), woertlich(kleine));
    ausgeben(QStringLiteral("schnell, ein Block von 1500"), schnell(kleine, kleine.size()));
    const std::vector<Zeile> viele = adressen(100000, true);
    for (const size_t groesse : {2, 4, 10, 100, 1000})
        ausgeben(QStringLiteral("schnell, Bloecke von %1").arg(groesse), schnell(viele, groesse));
}

void grosserBlock(int zeilen) {
    ausgeben(QStringLiteral("schnell, ein Block ohne Firma von %1").arg(zeilen),
             schnell(adressen(zeilen, false), size_t(zeilen)));
}

}  // namespace

// bench_vergleich [rows]: with a number, the great block of so many rows alone.
int main(int argc, char** argv) {
    EinstellungenAnwenden({});
    if (argc > 1) {
        grosserBlock(QString::fromLocal8Bit(argv[1]).toInt());
        return 0;
    }
    kleineBloecke();
    grosserBlock(600000);
}
