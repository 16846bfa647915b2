// The controls of the duplicate review: how they are made, arranged and connected.
#include <QGridLayout>
#include <QHBoxLayout>
#include <QIcon>
#include <QScreen>
#include <QVBoxLayout>

#include "ui/bausteine.h"
#include "ui/frmdublettenbearbeiten.h"
#include "ui/frmhilfe.h"

namespace {

constexpr int kZeile = 3;  // layout rows of one grid: label, grid, and the gap below it

Datengitter* gitterMit(const QString& name, const QString& zweck, Datensteuerung* daten) {
    auto* gitter = Neu<Datengitter>(name);
    gitter->setDataSource(daten);
    gitter->setAccessibleName(zweck);
    gitter->setMinimumHeight(gitter->fontMetrics().height() * 6);
    return gitter;
}

// A button that is a picture only; its shortcut stands in the tool tip.
QPushButton* bildknopf(const QString& name, const QString& bild, const QString& zweck,
                       const QString& kuerzel) {
    auto* knopf = Neu<QPushButton>(name);
    const int kante = knopf->fontMetrics().height() * 2;
    knopf->setIcon(QIcon(QStringLiteral(":/symbole/") + bild));
    knopf->setIconSize({kante, kante});
    knopf->setToolTip(QStringLiteral("%1 (%2)").arg(zweck, kuerzel));
    knopf->setAccessibleName(zweck);
    knopf->setShortcut(QKeySequence::fromString(kuerzel));
    knopf->setAutoDefault(false);
    return knopf;
}

QPushButton* textknopf(const QString& name, const QString& text) {
    auto* knopf = Neu<QPushButton>(name, text);
    knopf->setAutoDefault(false);
    return knopf;
}

QLabel* ueberschrift(const QString& name, const QString& text, QWidget* gitter) {
    QLabel* label = Beschriftung(text, gitter);
    label->setObjectName(name);
    return label;
}

// The size that suits the three grids, but no more than the screen has.
QSize fenstergroesse(const QWidget& fenster) {
    const QFontMetrics metrik = fenster.fontMetrics();
    const QSize gewuenscht(metrik.averageCharWidth() * 150, metrik.height() * 42);
    const QSize platz = fenster.screen()->availableSize() * 9 / 10;
    return gewuenscht.boundedTo(platz);
}

}  // namespace

FrmDublettenBearbeiten::FrmDublettenBearbeiten(QWidget* eltern)
    : QDialog(eltern, Qt::Dialog | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                          Qt::WindowMaximizeButtonHint | Qt::WindowCloseButtonHint),
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
      btnFertig(textknopf(QStringLiteral("btnFertig"), QStringLiteral("&Fertig"))),
      btnAbbrechen(textknopf(QStringLiteral("btnAbbrechen"), QStringLiteral("&Abbrechen"))),
      btnHilfe(textknopf(QStringLiteral("btnHilfe"), QStringLiteral("&Hilfe"))),
      tmrAnsicht(Neu<QTimer>(QStringLiteral("tmrAnsicht"), this)),
      lblGruppe(Neu<QLabel>(QStringLiteral("lblGruppe"))),
      lblStand(Neu<QLabel>(QStringLiteral("lblStand"))) {
    setObjectName(QStringLiteral("frmDublettenBearbeiten"));
    setWindowTitle(QStringLiteral(" Nachbearbeitung der Dubletten"));
    tmrAnsicht->setSingleShot(true);
    anordnen();
    verbinden();
    GitterKoppeln({dgdAngereichert, dgdDublette, dgdÜbernehmen});
    resize(fenstergroesse(*this));
}

void FrmDublettenBearbeiten::anordnen() {
    auto* gitter = new QGridLayout;
    const auto aufnehmen = [gitter](int stelle, QLabel* label, QWidget* rechts, Datengitter* daten,
                                    QPushButton* knopf) {
        gitter->addWidget(label, stelle * kZeile, 0);
        if (rechts) gitter->addWidget(rechts, stelle * kZeile, 1, Qt::AlignRight);
        gitter->addWidget(daten, stelle * kZeile + 1, 0, 1, 2);
        gitter->addWidget(knopf, stelle * kZeile + 1, 2, Qt::AlignVCenter);
        gitter->setRowStretch(stelle * kZeile + 1, 1);
    };
    aufnehmen(
        0,
        ueberschrift(QStringLiteral("Label1"), QStringLiteral("An&gereicherte Datensätze:"), dgdAngereichert),
        lblGruppe, dgdAngereichert, btnAngereichert);
    aufnehmen(1,
              ueberschrift(QStringLiteral("Label2"), QStringLiteral("&Zugeordnete Dubletten:"), dgdDublette),
              nullptr, dgdDublette, btnDublette);
    aufnehmen(2,
              ueberschrift(QStringLiteral("Label3"),
                           QStringLiteral("&Tatsächlich zu übernehmende Datensätze:"), dgdÜbernehmen),
              nullptr, dgdÜbernehmen, btnÜbernehmen);
    gitter->setColumnStretch(0, 1);

    auto* knoepfe = new QHBoxLayout;
    knoepfe->addWidget(btnHilfe);
    knoepfe->addStretch();
    knoepfe->addWidget(btnFertig);
    knoepfe->addWidget(btnAbbrechen);

    auto* spalte = new QVBoxLayout(this);
    spalte->addLayout(gitter, 1);
    spalte->addWidget(lblStand);
    spalte->addWidget(Textfeld(
        QStringLiteral("Ein Klick mit der rechten Maustaste (oder Menütaste, Umschalt+F10) verschiebt den "
                       "aktuellen Datensatz der Liste. Hervorgehoben ist, was vom angereicherten "
                       "Datensatz abweicht."),
        QStringLiteral("lblHinweis")));
    spalte->addLayout(knoepfe);
}

void FrmDublettenBearbeiten::verbinden() {
    const auto nachfuehren = [this] { Gesichert([this] { dubletteNachfuehren(); }); };
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
    connect(tmrAnsicht, &QTimer::timeout, this, [this] { tmrAnsicht_Timer(); });
    connect(btnAngereichert, &QPushButton::clicked, this,
            [this] { handeln([this] { btnAngereichert_Click(); }); });
    connect(btnDublette, &QPushButton::clicked, this, [this] { handeln([this] { btnDublette_Click(); }); });
    connect(btnÜbernehmen, &QPushButton::clicked, this,
            [this] { handeln([this] { btnÜbernehmen_Click(); }); });
    connect(btnFertig, &QPushButton::clicked, this, [this] { handeln([this] { btnFertig_Click(); }); });
    connect(btnAbbrechen, &QPushButton::clicked, this, [this] { btnAbbrechen_Click(); });
    connect(btnHilfe, &QPushButton::clicked, this, [this] { HilfeZeigen(this); });
}
