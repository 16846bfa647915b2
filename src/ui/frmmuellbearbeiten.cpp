// The junk review: the user takes single records back.
#include "ui/frmmuellbearbeiten.h"

#include "data/steuerfelder.h"
#include "run/meldungen.h"
#include "run/schritte.h"
#include "run/zustand.h"
#include "ui/bausteine.h"
#include "ui/nachbearbeitungsabfragen.h"

namespace {

constexpr int kAnmerkungTwips = 3000;
constexpr int kVerborgen = 2;  // columns at the end; the state in front of them stays on show

int beibehalten(int) {
    return kStatusMuellBleibt;
}

int zuruecklegen(int status) {
    return status == kStatusMuellBleibt ? int(kStatusMuell) : status;
}

}  // namespace

FrmMüllBearbeiten::FrmMüllBearbeiten(QWidget* eltern)
    : Nachbearbeitungsfenster(QStringLiteral("frmMüllBearbeiten"), QStringLiteral(" Nachbearbeitung"),
                              eltern),
      adoMüll(Neu<Datensteuerung>(QStringLiteral("adoMüll"), this)),
      adoÜbernehmen(Neu<Datensteuerung>(QStringLiteral("adoÜbernehmen"), this)),
      dgdMüll(gitterMit(QStringLiteral("dgdMüll"), QStringLiteral("Mülldatensätze"), adoMüll)),
      dgdÜbernehmen(
          gitterMit(QStringLiteral("dgdÜbernehmen"), QStringLiteral("Doch beibehalten"), adoÜbernehmen)),
      btnMüll(bildknopf(QStringLiteral("btnMüll"), QStringLiteral("alle-uebernehmen.svg"),
                        QStringLiteral("Alle Mülldatensätze beibehalten"), QStringLiteral("Alt+1"))),
      btnÜbernehmen(bildknopf(QStringLiteral("btnÜbernehmen"), QStringLiteral("zuruecklegen.svg"),
                              QStringLiteral("Alle Datensätze zurücklegen"), QStringLiteral("Alt+2"))) {
    anordnen(
        {{ueberschrift(QStringLiteral("Label2"), QStringLiteral("&Mülldatensätze:"), dgdMüll), nullptr,
          dgdMüll, btnMüll},
         {ueberschrift(QStringLiteral("Label3"), QStringLiteral("&Doch beibehalten:"), dgdÜbernehmen),
          nullptr, dgdÜbernehmen, btnÜbernehmen}},
        {lblStand, Textfeld(QStringLiteral("Ein Klick mit der rechten Maustaste (oder Menütaste, "
                                           "Umschalt+F10) verschiebt den aktuellen Datensatz der Liste."),
                            QStringLiteral("lblHinweis"))});
    verbinden();
    GitterKoppeln({dgdMüll, dgdÜbernehmen});
    groesseWaehlen(36);
}

void FrmMüllBearbeiten::verbinden() {
    const auto rechts = [this](auto aktion) {
        return [this, aktion](Qt::MouseButton knopf) {
            if (knopf == Qt::RightButton) handeln(aktion);
        };
    };
    dgdMüll->maus = rechts([this] { einen(*adoMüll, rsMüll_, beibehalten); });
    dgdÜbernehmen->maus = rechts([this] { einen(*adoÜbernehmen, rsÜbernehmen_, zuruecklegen); });
    connect(btnMüll, &QPushButton::clicked, this,
            [this] { handeln([this] { alle(rsMüll_, beibehalten); }); });
    connect(btnÜbernehmen, &QPushButton::clicked, this,
            [this] { handeln([this] { alle(rsÜbernehmen_, zuruecklegen); }); });
}

bool FrmMüllBearbeiten::laden() {
    bool geladen = true;
    Schritte s([] { return QStringLiteral("Fehler beim Anzeigen der Ergebnisse der Müllsuche."); });
    s.ablauf(
        [&] {
            s.tu([&] { rsMüll_ = Gesetzt(gDatenbank).OpenRecordset(AbfrageMuell(gZielTabelle)); });
            s.tu([&] { adoMüll->setConnectionString(gVerbindungstext); });
            s.tu([&] { adoMüll->setRecordSource(AnzeigeMuell(gZielTabelle)); });
            s.tu(
                [&] { rsÜbernehmen_ = Gesetzt(gDatenbank).OpenRecordset(AbfrageMuellBleibt(gZielTabelle)); });
            s.tu([&] { adoÜbernehmen->setConnectionString(gVerbindungstext); });
            s.tu([&] { adoÜbernehmen->setRecordSource(AnzeigeMuellBleibt(gZielTabelle)); });
            s.tu([&] { MuellAnzeigen(); });
            s.tu([&] { UebernehmenAnzeigen(); });
        },
        [&] {
            gFehler = true;
            geladen = false;
            fensterEntladen();
        });
    if (geladen) SpaltenbreitenSchaetzen({dgdMüll, dgdÜbernehmen}, 1);
    return geladen;
}

void FrmMüllBearbeiten::auslegen(Datengitter* gitter) {
    const int spalten = gitter->model()->columnCount();
    gitter->setColumnCaption(0, QStringLiteral("--< Anmerkungen >--"));
    gitter->setColumnTwips(0, kAnmerkungTwips);
    for (int spalte = std::max(0, spalten - kVerborgen); spalte < spalten; ++spalte)
        gitter->setColumnHidden(spalte, true);
    gitter->aktuellenSatzZeigen();
    lblStand->setText(QStringLiteral("Mülldatensätze: %1   Doch beibehalten: %2")
                          .arg(adoMüll->RecordCount())
                          .arg(adoÜbernehmen->RecordCount()));
}

void FrmMüllBearbeiten::MuellAnzeigen() {
    dgdMüll->auffrischen(QString::fromUtf16(kTempDsn));
    auslegen(dgdMüll);
}

void FrmMüllBearbeiten::UebernehmenAnzeigen() {
    dgdÜbernehmen->auffrischen(QString::fromUtf16(kTempDsn));
    auslegen(dgdÜbernehmen);
}

void FrmMüllBearbeiten::alleAnzeigen() {
    const Malpause pause(this);
    MuellAnzeigen();
    UebernehmenAnzeigen();
}

void FrmMüllBearbeiten::einen(Datensteuerung& daten, Saetze& saetze, const Statusregel& regel) {
    if (daten.Eof()) return;
    neuAbfragen(saetze);
    if (saetze->Eof()) return;
    einenVerschieben(*saetze, daten, regel);
    alleAnzeigen();
}

void FrmMüllBearbeiten::alle(Saetze& saetze, const Statusregel& regel) {
    neuAbfragen(saetze);
    if (saetze->Eof()) return;
    if (alleVerschieben(*saetze, regel)) alleAnzeigen();
}

void FrmMüllBearbeiten::btnFertig_Click() {
    if (FrageStellen(QStringLiteral("Sollen wirklich sämtliche im Ordner 'Mülldatensätze'\r"
                                    "befindliche Datensätze gelöscht werden?"),
                     Symbol::Information, Knopf::Ja))
        fensterEntladen();
}

void FrmMüllBearbeiten::saetzeSchliessen() {
    schliessen(rsMüll_);
    schliessen(rsÜbernehmen_);
}

void frmMüllBearbeitenZeigen(QWidget* eltern) {
    FrmMüllBearbeiten frm(eltern);
    if (frm.laden()) frm.entscheidenLassen();
}
