// The proposal of field kinds for all fields of a table.
#include "data/feldvorschlag.h"

#include <cmath>
#include <random>

#include "base/text.h"
#include "data/datenzugriff.h"
#include "fields/vorschlag.h"
#include "run/schritte.h"
#include "run/zustand.h"

namespace {

constexpr qint64 kStichprobenbereich = 300;

// Only alive during FeldArtenVorschlagen, except the generator, which ZufallStarten seeds.
std::unique_ptr<dao::Recordset> datensaetze;
qint64 anzahl = 0;
std::mt19937 zufall;

double zufallszahl() {
    return std::uniform_real_distribution<double>(0.0, 1.0)(zufall);
}

// One value of a field (number from 1) as a text. The move goes from the first record by up to the number
// of records minus 2: two records always give the first one, a single one nearly always none.
QString ZufallsWertLesen(int feldnummer) {
    if (anzahl == 0) return QString();
    QString wert;
    FehlerUebergehen([&] {
        datensaetze->MoveFirst();
        const double bereich = double(Minimum(anzahl - 2, kStichprobenbereich));
        datensaetze->Move(qint64(std::floor(zufallszahl() * bereich)));
        wert = datensaetze->Fields(feldnummer - 1).Value().alsText();
    });
    return wert;
}

}  // namespace

void FeldArtenVorschlagen(const QString& tabelle, FeldZuordnungen& zuordnungen, qint16& feldAnzahl,
                          QStringList& zeilen) {
    QString feldnummer;  // empty before the first field
    Schritte s([&] { return QStringLiteral("Fehler beim Öffnen des Feldes ") + feldnummer + u'.'; });
    const auto loslassen = [] {
        FehlerUebergehen([] {
            if (datensaetze) datensaetze->Close();
        });
        datensaetze.reset();
    };
    anzahl = 0;
    s.ablauf(
        [&] {
            dao::TableDef* definition = nullptr;
            s.tu([&] { definition = &gDatenbank->TableDefs().Item(tabelle); });
            s.tu([&] { datensaetze = gDatenbank->OpenRecordset(tabelle, dao::dbOpenTable); });
            s.tu([&] { anzahl = DatensaetzeZaehlen(Gesetzt(datensaetze)); });
            s.tu([&] {
                zuordnungen.assign(size_t(Gesetzt(definition).Fields().Count()), FeldZuordnung());
                feldAnzahl = qint16(zuordnungen.size());
            });
            zeilen.clear();
            for (int i = 0; definition && i < definition->Fields().Count(); ++i) {
                feldnummer = QString::number(i);
                const QString& name = definition->Fields().Item(i).Name();
                Feldvorschlag vorschlag;
                s.tu([&] { vorschlag = FeldArtVorschlagen(name, [i] { return ZufallsWertLesen(i + 1); }); });
                zuordnungen[size_t(i)] = vorschlag.zuordnung;
                s.tu([&] { zeilen.append(FeldZeile(name, vorschlag.beschriftung)); });
            }
            s.tu([&] { Gesetzt(datensaetze).Close(); });
            datensaetze.reset();
        },
        [&] {
            gFehler = true;
            loslassen();
        });
}

void ZufallStarten(quint32 anfang) {
    zufall.seed(anfang);
}
