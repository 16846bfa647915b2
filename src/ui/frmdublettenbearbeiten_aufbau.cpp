// The controls of the duplicate review: how they are made, arranged and connected.
#include "run/meldungen.h"
#include "ui/bausteine.h"
#include "ui/frmdublettenbearbeiten.h"

FrmDublettenBearbeiten::FrmDublettenBearbeiten(QWidget* eltern)
    : Nachbearbeitungsfenster(QStringLiteral("frmDublettenBearbeiten"),
                              QStringLiteral(" Nachbearbeitung der Dubletten"), eltern),
      adoAngereichert(Neu<Datensteuerung>(QStringLiteral("adoAngereichert"), this)),
      adoDublette(Neu<Datensteuerung>(QStringLiteral("adoDublette"), this)),
      adoÜbernehmen(Neu<Datensteuerung>(QStringLiteral("adoÜbernehmen"), this)),
      dgdAngereichert(gitterMit(QStringLiteral("dgdAngereichert"), QStringLiteral("Angereicherte Datensätze"),
                                adoAngereichert)),
      dgdDublette(
          gitterMit(QStringLiteral("dgdDublette"), QStringLiteral("Zugeordnete Dubletten"), adoDublette)),
      dgdÜbernehmen(gitterMit(QStringLiteral("dgdÜbernehmen"),
                              QStringLiteral("Tatsächlich zu übernehmende Datensätze"), adoÜbernehmen)),
      btnAngereichert(bildknopf(QStringLiteral("btnAngereichert"), QStringLiteral("alle-uebernehmen.svg"),
                                QStringLiteral("Alle angereicherten Datensätze übernehmen"),
                                QStringLiteral("Alt+1"))),
      btnDublette(bildknopf(QStringLiteral("btnDublette"), QStringLiteral("dubletten-uebernehmen.svg"),
                            QStringLiteral("Alle Dubletten der Gruppe übernehmen"), QStringLiteral("Alt+2"))),
      btnÜbernehmen(bildknopf(QStringLiteral("btnÜbernehmen"), QStringLiteral("zuruecklegen.svg"),
                              QStringLiteral("Alle Datensätze zurücklegen"), QStringLiteral("Alt+3"))),
      tmrAnsicht(Neu<QTimer>(QStringLiteral("tmrAnsicht"), this)),
      lblGruppe(Neu<QLabel>(QStringLiteral("lblGruppe"))) {
    tmrAnsicht->setSingleShot(true);
    anordnen(
        {{ueberschrift(QStringLiteral("Label1"), QStringLiteral("An&gereicherte Datensätze:"),
                       dgdAngereichert),
          lblGruppe, dgdAngereichert, btnAngereichert},
         {ueberschrift(QStringLiteral("Label2"), QStringLiteral("&Zugeordnete Dubletten:"), dgdDublette),
          nullptr, dgdDublette, btnDublette},
         {ueberschrift(QStringLiteral("Label3"), QStringLiteral("&Tatsächlich zu übernehmende Datensätze:"),
                       dgdÜbernehmen),
          nullptr, dgdÜbernehmen, btnÜbernehmen}},
        {lblStand,
         Textfeld(QStringLiteral(
                      "Ein Klick mit der rechten Maustaste (oder Menütaste, Umschalt+F10) verschiebt den "
                      "aktuellen Datensatz der Liste. Hervorgehoben ist, was vom angereicherten "
                      "Datensatz abweicht."),
                  QStringLiteral("lblHinweis"))});
    verbinden();
    GitterKoppeln({dgdAngereichert, dgdDublette, dgdÜbernehmen});
    groesseWaehlen(42);
}

void FrmDublettenBearbeiten::verbinden() {
    const auto nachfuehren = [this] { Gesichert([this] { DubletteNachfuehren(); }); };
    dgdAngereichert->klick = nachfuehren;
    dgdAngereichert->zeileGewechselt = nachfuehren;
    dgdAngereichert->taste = [nachfuehren](int code) {
        const QList<int> zeilentasten{Qt::Key_Up, Qt::Key_Down, Qt::Key_PageUp, Qt::Key_PageDown};
        if (zeilentasten.contains(code)) nachfuehren();
    };
    using Frm = FrmDublettenBearbeiten;
    dgdAngereichert->maus = [this](Qt::MouseButton knopf) {
        rechteMaustaste(knopf, &Frm::angereichertVerschieben);
    };
    dgdDublette->maus = [this](Qt::MouseButton knopf) { rechteMaustaste(knopf, &Frm::dubletteVerschieben); };
    dgdÜbernehmen->maus = [this](Qt::MouseButton knopf) {
        rechteMaustaste(knopf, &Frm::uebernehmenVerschieben);
    };
    for (Datensteuerung* daten : {adoAngereichert, adoÜbernehmen})
        daten->erklaerung = [this, daten](int zeile, int spalte) { return herkunft(*daten, zeile, spalte); };
    connect(tmrAnsicht, &QTimer::timeout, this, [this] { tmrAnsicht_Timer(); });
    connect(btnAngereichert, &QPushButton::clicked, this,
            [this] { handeln([this] { btnAngereichert_Click(); }); });
    connect(btnDublette, &QPushButton::clicked, this, [this] { handeln([this] { btnDublette_Click(); }); });
    connect(btnÜbernehmen, &QPushButton::clicked, this,
            [this] { handeln([this] { btnÜbernehmen_Click(); }); });
}
