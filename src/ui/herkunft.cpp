// Where a value of an enriched record came from.
#include "ui/herkunft.h"

#include "run/schritte.h"
#include "run/zustand.h"
#include "ui/nachbearbeitungsabfragen.h"

namespace {

constexpr int kHoechstensNamen = 4;

QString alsListe(const QStringList& namen) {
    if (namen.size() <= kHoechstensNamen) return namen.join(QStringLiteral(", "));
    return namen.mid(0, kHoechstensNamen).join(QStringLiteral(", ")) +
           QStringLiteral(" und %1 weiteren").arg(namen.size() - kHoechstensNamen);
}

const Mitgliedswert* mitgliedMit(const QString& teil, const QList<Mitgliedswert>& mitglieder) {
    for (const Mitgliedswert& mitglied : mitglieder)
        if (mitglied.wert.contains(teil)) return &mitglied;
    return nullptr;
}

// Runs of words as long as one member has them together.
QString ausTeilen(const QString& wert, const QList<Mitgliedswert>& mitglieder) {
    const QStringList woerter = wert.split(u' ', Qt::SkipEmptyParts);
    QStringList teile;
    for (qsizetype i = 0; i < woerter.size();) {
        QString teil = woerter[i++];
        const Mitgliedswert* von = mitgliedMit(teil, mitglieder);
        if (!von) continue;
        for (; i < woerter.size(); ++i) {
            const Mitgliedswert* laenger = mitgliedMit(teil + u' ' + woerter[i], mitglieder);
            if (!laenger) break;
            teil += u' ' + woerter[i];
            von = laenger;
        }
        teile << QStringLiteral("„%1“ aus: %2").arg(teil, von->name);
    }
    if (teile.isEmpty()) return QStringLiteral("Aus den Angaben der Gruppe gebildet.");
    return QStringLiteral("Zusammengesetzt.\n") + teile.join(u'\n');
}

}  // namespace

QString HerkunftText(const QString& wert, const QList<Mitgliedswert>& mitglieder) {
    if (wert.isEmpty() || mitglieder.isEmpty()) return QString();
    QStringList gleiche;
    for (const Mitgliedswert& mitglied : mitglieder)
        if (mitglied.wert == wert) gleiche << mitglied.name;
    if (gleiche.isEmpty()) return ausTeilen(wert, mitglieder);
    if (gleiche.size() == mitglieder.size()) return QStringLiteral("So in allen Datensätzen der Gruppe.");
    return QStringLiteral("Aus: ") + alsListe(gleiche);
}

QString Gruppenmitglieder::herkunft(const QString& gruppe, int spalte, const QString& wert) {
    if (gruppe != gruppe_) lesen(gruppe);
    QList<Mitgliedswert> werte;
    for (const Mitglied& mitglied : mitglieder_)
        werte << Mitgliedswert{mitglied.name, mitglied.werte[spalte]};
    return HerkunftText(wert, werte);
}

void Gruppenmitglieder::lesen(const QString& gruppe) {
    gruppe_.clear();
    mitglieder_.clear();
    anfuegen(AnzeigeDublette(gZielTabelle, gruppe), false);
    anfuegen(AnzeigeUebernommeneDublette(gZielTabelle, gruppe), true);
    gruppe_ = gruppe;
}

// A member is called by its place in the list and by its first field.
void Gruppenmitglieder::anfuegen(const QString& abfrage, bool uebernommen) {
    constexpr int kErstesFeld = 1;
    const auto saetze = Gesetzt(gDatenbank).OpenRecordset(abfrage);
    for (int nummer = 1; !saetze->Eof(); saetze->MoveNext(), ++nummer) {
        Mitglied mitglied;
        for (int i = 0; i < saetze->FieldsCount(); ++i) mitglied.werte << saetze->Fields(i).Value().alsText();
        mitglied.name =
            (uebernommen ? QStringLiteral("übernommene Dublette")
                         : QStringLiteral("%1. Dublette").arg(nummer)) +
            QStringLiteral(" (%1 %2)").arg(saetze->Fields(kErstesFeld).Name(), mitglied.werte[kErstesFeld]);
        mitglieder_ << mitglied;
    }
}
