// Leads the real program through its wizard.
#include "assistent.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QSlider>
#include <cstdlib>

#include "adressdatei.h"
#include "run/zustand.h"

namespace {

constexpr int kBlickMs = 5;

[[noreturn]] void unerwartet(const QString& was) {
    std::fprintf(stderr, "%s\n", qPrintable(was));
    std::exit(1);
}

void rahmenVerlangen(int nummer) {
    if (gRahmen != nummer) unerwartet(QStringLiteral("Rahmen %1 statt %2").arg(gRahmen).arg(nummer));
}

// The program's own window; what it says about the run names the phase.
class Messfenster : public FensterQt {
  public:
    Messfenster(FrmHaupt& haupt, Laufuhr& uhr) : FensterQt(haupt), uhr_(uhr) {}
    void information(const QString& text) override {
        FensterQt::information(text);
        uhr_.phase(text.section(QStringLiteral(" ..."), 0, 0));
    }
    void taktgeber(bool an) override {
        FensterQt::taktgeber(an);
        uhr_.balken(an);
    }

  private:
    Laufuhr& uhr_;
};

}  // namespace

Assistent::Assistent(Laufuhr& uhr)
    : uhr_(uhr), fenster_(std::make_unique<Messfenster>(programm_.hauptfenster(), uhr)) {
    FensterSetzen(fenster_.get());
    bediener_.setInterval(kBlickMs);
    QObject::connect(&bediener_, &QTimer::timeout, &bediener_, [this] { fensterBedienen(); });
}

Assistent::~Assistent() {
    FensterSetzen(nullptr);
}

template <typename Art>
Art& Assistent::element(const char* name) {
    QWidget* fenster = QApplication::activeModalWidget();
    auto* gefunden =
        (fenster ? fenster : &programm_.hauptfenster())->findChild<Art*>(QString::fromUtf8(name));
    if (!gefunden) unerwartet(QStringLiteral("'%1' fehlt").arg(QString::fromUtf8(name)));
    return *gefunden;
}

void Assistent::klicken(const char* name) {
    element<QAbstractButton>(name).click();
}

void Assistent::waehlen(const char* name, const QString& eintrag) {
    auto& liste = element<QComboBox>(name);
    liste.setCurrentText(eintrag);
    Q_EMIT liste.activated(liste.currentIndex());
}

void Assistent::schreiben(const char* name, const QString& text) {
    element<QLineEdit>(name).setText(text);
}

void Assistent::oeffnen(const QString& datei) {
    uhr_.phase(QStringLiteral("Datei öffnen"));
    klicken("btnWeiter");
    klicken("btnWeiter");
    schreiben("tbxDatenbankName", datei);
    klicken("btnWeiter");
    rahmenVerlangen(3);
    uhr_.phase(QStringLiteral("Tabelle lesen"));
    auto& tabellen = element<QListWidget>("lstTabellen");
    tabellen.setCurrentItem(tabellen.findItems(QStringLiteral("Adressen"), Qt::MatchExactly).value(0));
    uhr_.phase(QStringLiteral("Assistent"));
    klicken("btnWeiter");
    rahmenVerlangen(5);
}

// The program's own proposal looks at some records by chance.
void Assistent::zuordnen() {
    rahmenVerlangen(7);
    gFeldZuordnungen = Adresstabellenzuordnung();
    klicken("btnWeiter");
}

void Assistent::zielBestaetigen() {
    rahmenVerlangen(4);
    klicken("btnWeiter");
}

// To the options, from where the next step starts the run.
void Assistent::vorbereiten(Vorgang vorgang) {
    switch (vorgang) {
        case Vorgang::Dubletten:
            klicken("btnAuswahl_3");
            zuordnen();
            return zielBestaetigen();
        case Vorgang::Muell:
            klicken("btnAuswahl_2");
            zuordnen();
            return zielBestaetigen();
        case Vorgang::Splitten:
            klicken("btnAuswahl_1");
            zielBestaetigen();
            element<QComboBox>("cbxSplittenTypus").setCurrentIndex(1);
            waehlen("cbxSplitten1", QStringLiteral("Straße"));
            schreiben("tbxSplitten1", QStringLiteral("Weg"));
            return schreiben("tbxSplitten2", QStringLiteral("Nummer"));
        case Vorgang::Verschmelzen:
            klicken("btnAuswahl_0");
            zielBestaetigen();
            waehlen("cbxVerschmelzen1", QStringLiteral("PLZ"));
            waehlen("cbxVerschmelzen2", QStringLiteral("Ort"));
            return schreiben("tbxVerschmolzen", QStringLiteral("Wohnort"));
        case Vorgang::Abgleich:
            klicken("btnAuswahl_4");
            waehlen("cbxDatenabgleich", QStringLiteral("Messe"));
            klicken("btnWeiter");
            zuordnen();
            zuordnen();
            return zielBestaetigen();
    }
}

void Assistent::ausfuehren(Vorgang vorgang, int toleranz) {
    vorbereiten(vorgang);
    if (gRahmen == 11) element<QSlider>("sdrToleranz").setValue(toleranz);
    alleVerschoben_ = geklickt_ = false;
    uhr_.phase(QStringLiteral("Starten"));
    bediener_.start();
    klicken("btnWeiter");
    bediener_.stop();
    uhr_.phase(QStringLiteral("Ergebnis"));
    if (gFehler || gAbbruch || gRahmen == 3) unerwartet(QStringLiteral("Der Lauf ging nicht durch."));
}

// A question is answered as the program proposes; the review takes over all enriched records.
void Assistent::fensterBedienen() {
    QWidget* offen = QApplication::activeModalWidget();
    if (!offen || !offen->isVisible()) return;
    if (auto* kasten = qobject_cast<QMessageBox*>(offen)) {
        QAbstractButton* knopf = kasten->defaultButton();
        QMetaObject::invokeMethod(
            knopf, [knopf] { knopf->click(); }, Qt::QueuedConnection);
    } else {
        reviewBedienen(*offen);
    }
}

void Assistent::reviewBedienen(QWidget& review) {
    auto* fertig = review.findChild<QAbstractButton*>(QStringLiteral("btnFertig"));
    if (!fertig || !fertig->isEnabled() || geklickt_) return;
    auto* alle = review.findChild<QAbstractButton*>(QStringLiteral("btnAngereichert"));
    const bool verschieben = alle && !alleVerschoben_;
    if (verschieben)
        if (auto* gruppe = review.findChild<QLabel*>(QStringLiteral("lblGruppe")))
            gruppen_ = gruppe->text().section(u' ', -1).toLongLong();
    uhr_.phase(verschieben ? QStringLiteral("Nachbearbeitung") : QStringLiteral("Fertigstellen"));
    QAbstractButton* knopf = verschieben ? alle : fertig;
    geklickt_ = true;
    // Behind this look, so that the next ones find the question that the button asks.
    QMetaObject::invokeMethod(
        knopf,
        [this, knopf, verschieben] {
            knopf->click();
            alleVerschoben_ = verschieben;
            geklickt_ = false;
        },
        Qt::QueuedConnection);
}
