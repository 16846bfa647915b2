// Field kinds: the table, the assignment of a field, and the lines of the field list.
#include "fields/feldarten.h"

#include "base/fehler.h"
#include "base/text.h"

// Filled by EinstellungenAnwenden; gRelevanz is also written by the duplicate search. Read by all floors
// above.
std::array<Feldart, kLetzteFeldart + 1> gFeldArten;
std::array<FeldGruppe, 7> gFeldGruppen;
float gRelevanz = 0.8f;
float gSignifikanz = 0.6f;

namespace {

constexpr qsizetype kZeilenbreite = 58;

const Feldart& zeileVon(int feldart) {
    if (feldart < kErsteFeldart || feldart > kLetzteFeldart)
        throw EngineFehler(kIndexAusserhalb, QStringLiteral("Index außerhalb des gültigen Bereichs."));
    return gFeldArten[size_t(feldart)];
}

}  // namespace

int FeldGruppeVon(int feldart) {
    if (feldart < 10) return 0;
    while (feldart >= 10) feldart /= 10;
    return feldart;
}

bool FeldartEnthalten(int maske, int feldart) {
    return BitGesetzt(maske, zeileVon(feldart).Code);
}

int FeldMitArtSuchen(const FeldZuordnungen& zuordnungen, int gruppe, int feldart) {
    if (zeileVon(feldart).Code == -1) return -1;
    for (size_t i = 0; i < zuordnungen.size(); ++i)
        if (zuordnungen[i].Gruppe == gruppe && FeldartEnthalten(zuordnungen[i].Maske, feldart)) return int(i);
    return -1;
}

int FeldMitArtFinden(const FeldZuordnungen& zuordnungen, int feldart) {
    return FeldMitArtSuchen(zuordnungen, FeldGruppeVon(feldart), feldart);
}

bool FeldIgnoriert(const FeldZuordnung& zuordnung) {
    return zuordnung.Gruppe == 0 && zuordnung.Maske == zeileVon(kIgnorieren).Code;
}

qint16 Maske(const std::vector<int>& feldarten) {
    qint16 maske = 0;
    for (int feldart : feldarten) maske = qint16(maske | zeileVon(feldart).Code);
    return maske;
}

QString FeldartBeschriftung(const std::vector<int>& feldarten) {
    QString namen;
    for (int feldart : feldarten) {
        if (!namen.isEmpty()) namen += u',';
        namen += zeileVon(feldart).Bezeichnung;
    }
    return u'(' + namen + u')';
}

QString FeldZeile(const QString& name, const QString& beschriftung) {
    const qsizetype punkte = kZeilenbreite - name.size() - beschriftung.size();
    if (punkte < 0)
        throw EngineFehler(kUngueltigesArgument,
                           QStringLiteral("Ungültiger Prozeduraufruf oder ungültiges Argument."));
    return u' ' + name + QString(punkte, u'.') + beschriftung;
}
