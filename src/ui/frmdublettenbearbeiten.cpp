// The duplicate review: the user decides record by record what stays.
#include "ui/frmdublettenbearbeiten.h"

#include <QStringList>

#include "data/steuerfelder.h"
#include "run/meldungen.h"
#include "run/schritte.h"
#include "run/zustand.h"
#include "ui/bausteine.h"
#include "ui/nachbearbeitungsabfragen.h"

namespace {

constexpr int kAnmerkungTwips = 1600;
constexpr int kAnsichtMs = 10;

QString feldname(const char16_t* name) {
    return QString::fromUtf16(name);
}

int steuerfelderZaehlen(dao::Recordset& saetze) {
    int anzahl = 0;
    for (int i = 0; i < saetze.FieldsCount(); ++i)
        if (saetze.Fields(i).Name().contains(QStringLiteral("TEMP_"))) ++anzahl;
    return anzahl;
}

bool alleLoeschenBestaetigt() {
    return FrageStellen(QStringLiteral("Sie haben keine Datensätze zum Übernehmen ausgewählt!\r"
                                       "Alle angezeigten Datensätze werden gelöscht. Sind sie sicher?\r\r"
                                       "(beim Datenabgleich ist dies der Normalfall)"),
                        Symbol::Information, Knopf::Nein);
}

bool loeschenBestaetigt() {
    return FrageStellen(QStringLiteral("Sollen wirklich sämtliche in den Ordnern 'Angereicherte Datensätze'\r"
                                       " und 'Dubletten' befindliche Datensätze gelöscht werden?"),
                        Symbol::Information, Knopf::Ja);
}

}  // namespace

bool FrmDublettenBearbeiten::laden() {
    bool geladen = true;
    Schritte s([] { return QStringLiteral("Fehler beim Anzeigen der Ergebnisse der Dublettensuche."); });
    s.ablauf(
        [&] {
            s.tu([&] {
                rsAngereichert_ = Gesetzt(gDatenbank).OpenRecordset(AbfrageAngereichert(gZielTabelle));
            });
            s.tu([&] { adoAngereichert->setConnectionString(gVerbindungstext); });
            s.tu([&] { adoAngereichert->setRecordSource(AnzeigeAngereichert(gZielTabelle)); });
            s.tu(
                [&] { rsÜbernehmen_ = Gesetzt(gDatenbank).OpenRecordset(AbfrageUebernehmen(gZielTabelle)); });
            s.tu([&] { adoÜbernehmen->setConnectionString(gVerbindungstext); });
            s.tu([&] { adoÜbernehmen->setRecordSource(AnzeigeUebernehmen(gZielTabelle)); });
            s.tu([&] { nTempSpalten_ = qint16(steuerfelderZaehlen(Gesetzt(rsÜbernehmen_))); });
            s.tu([&] { AngereichertAnzeigen(); });
            s.tu([&] { DubletteAnzeigen(); });
            s.tu([&] { UebernehmenAnzeigen(); });
        },
        [&] {
            gFehler = true;
            geladen = false;
            fensterEntladen();
        });
    if (geladen) SpaltenbreitenSchaetzen({dgdAngereichert, dgdDublette, dgdÜbernehmen}, 1);
    return geladen;
}

// Column 0 is the remark; the control columns at the end are not for the user.
void FrmDublettenBearbeiten::auslegen(Datengitter* gitter) {
    const int spalten = gitter->model()->columnCount();
    gitter->setColumnCaption(0, QStringLiteral("--< Anmerkungen >--"));
    gitter->setColumnTwips(0, kAnmerkungTwips);
    for (int spalte = std::max(0, spalten - nTempSpalten_); spalte < spalten; ++spalte)
        gitter->setColumnHidden(spalte, true);
    gitter->aktuellenSatzZeigen();
    standZeigen();
}

// After a move the user goes on where he was.
void FrmDublettenBearbeiten::erneuern(Datengitter* gitter) {
    mitglieder_.vergessen();
    gitter->auffrischen(feldname(kTempDsn));
    auslegen(gitter);
}

void FrmDublettenBearbeiten::AngereichertAnzeigen() {
    erneuern(dgdAngereichert);
}

void FrmDublettenBearbeiten::UebernehmenAnzeigen() {
    erneuern(dgdÜbernehmen);
}

// A view that shows a tool tip has nobody to tell of a failure.
QString FrmDublettenBearbeiten::herkunft(const Datensteuerung& daten, int zeile, int spalte) {
    const int status = daten.text(zeile, feldname(kTempDss)).toInt();
    if (spalte == 0 || (status != kStatusAngereichert && status != kStatusAngereichertBleibt))
        return QString();
    const Malpause pause(this);
    QString text;
    FehlerUebergehen([&] {
        text = mitglieder_.herkunft(daten.text(zeile, feldname(kTempBn)), spalte,
                                    daten.index(zeile, spalte).data().toString());
    });
    return text;
}

QString FrmDublettenBearbeiten::aktuelleGruppe() const {
    return adoAngereichert->Fields(feldname(kTempBn)).alsText();
}

void FrmDublettenBearbeiten::dublettenquelleSetzen() {
    adoDublette->setRecordSource(AnzeigeDublette(gZielTabelle, aktuelleGruppe()));
}

void FrmDublettenBearbeiten::DubletteAnzeigen() {
    tmrAnsicht->stop();
    adoDublette->setConnectionString(gVerbindungstext);
    const QString vorher = adoDublette->RecordSource();
    if (adoAngereichert->RecordCount() > 0)
        dublettenquelleSetzen();
    else
        adoDublette->setRecordSource(AnzeigeDubletteLeer(gZielTabelle));
    if (adoDublette->RecordSource() == vorher) return erneuern(dgdDublette);
    adoDublette->Refresh();
    auslegen(dgdDublette);
}

void FrmDublettenBearbeiten::alleAnzeigen() {
    const Malpause pause(this);
    AngereichertAnzeigen();
    DubletteAnzeigen();
    UebernehmenAnzeigen();
}

void FrmDublettenBearbeiten::dublettenUndUebernehmenAnzeigen() {
    const Malpause pause(this);
    DubletteAnzeigen();
    UebernehmenAnzeigen();
}

// The duplicates follow with a short delay, so that a key held down runs through the rows.
void FrmDublettenBearbeiten::DubletteNachfuehren() {
    adoDublette->setConnectionString(gVerbindungstext);
    if (adoAngereichert->RecordCount() > 0) {
        tmrAnsicht->setInterval(kAnsichtMs);
        tmrAnsicht->start();
    } else {
        const Malpause pause(this);
        adoDublette->setRecordSource(AnzeigeDubletteLeerNachZeilenwechsel(gZielTabelle));
        adoDublette->Refresh();
        auslegen(dgdDublette);
    }
    standZeigen();
}

void FrmDublettenBearbeiten::tmrAnsicht_Timer() {
    if (entladen() || adoAngereichert->Eof()) return;
    // The end of an action that is at work shows the duplicates anyway, unless it has nothing to do.
    if (handelt()) return tmrAnsicht->start();
    Gesichert([this] {
        const Malpause pause(this);
        dublettenquelleSetzen();
        adoDublette->Refresh();
        auslegen(dgdDublette);
    });
}

void FrmDublettenBearbeiten::standZeigen() {
    const QStringList steuerfelder{feldname(kTempDss), feldname(kTempDsn), feldname(kTempBn),
                                   feldname(kTempAmk), QStringLiteral("TEMP_DSQ")};
    for (Datensteuerung* daten : {adoDublette, adoÜbernehmen})
        daten->vergleichen(*adoAngereichert, feldname(kTempBn), steuerfelder);
    lblGruppe->setText(adoAngereichert->Eof() ? QString()
                                              : QStringLiteral("Gruppe %1 von %2")
                                                    .arg(adoAngereichert->position() + 1)
                                                    .arg(adoAngereichert->RecordCount()));
    lblStand->setText(QStringLiteral("Angereichert: %1   Dubletten der Gruppe: %2   Zu übernehmen: %3")
                          .arg(adoAngereichert->RecordCount())
                          .arg(adoDublette->RecordCount())
                          .arg(adoÜbernehmen->RecordCount()));
}

void FrmDublettenBearbeiten::btnFertig_Click() {
    if (adoÜbernehmen->RecordCount() == 0 && !alleLoeschenBestaetigt()) return;
    if (!loeschenBestaetigt()) return;
    gAnzahlAngereichert = qint32(Gesetzt(rsAngereichert_).RecordCount());
    fensterEntladen();
}

QList<QPushButton*> FrmDublettenBearbeiten::verschiebeknoepfe() const {
    return {btnAngereichert, btnDublette, btnÜbernehmen};
}

void FrmDublettenBearbeiten::saetzeSchliessen() {
    tmrAnsicht->stop();
    schliessen(rsAngereichert_);
    schliessen(rsÜbernehmen_);
}

void frmDublettenBearbeitenZeigen(QWidget* eltern) {
    FrmDublettenBearbeiten frm(eltern);
    if (frm.laden()) frm.entscheidenLassen();
}
