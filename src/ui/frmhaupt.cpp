// The one window of the wizard.
#include "ui/frmhaupt.h"

#include <QApplication>
#include <QCloseEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QMenuBar>
#include <QShortcut>
#include <QVBoxLayout>

#include "data/start.h"
#include "run/fortschritt.h"
#include "run/rahmen.h"
#include "run/zustand.h"
#include "ui/anschriften.h"
#include "ui/bausteine.h"
#include "ui/frmhilfe.h"
#include "ui/frminfo.h"
#include "ui/rahmenfertig.h"
#include "ui/rahmenzweitetabelle.h"

namespace {

constexpr int kKnopfstreifenTwips = 600;
constexpr int kNachbearbeitungDubletten = 12;
constexpr int kNachbearbeitungMuell = 22;

QPushButton* knopf(const QString& name, const QString& text) {
    auto* taste = Neu<QPushButton>(name, text);
    taste->setAutoDefault(true);
    return taste;
}

QAction* eintrag(QMenu* menue, const QString& name, const QString& text, const QKeySequence& taste = {}) {
    QAction* aktion = menue->addAction(text);
    aktion->setShortcut(taste);
    aktion->setObjectName(name);
    return aktion;
}

void trennen(QMenu* menue, const QString& name) {
    menue->addSeparator()->setObjectName(name);
}

// The first control of a page that the tab key reaches; nothing if there is none.
QWidget* erstesElement(QWidget* rahmen) {
    for (QWidget* w = rahmen->nextInFocusChain(); w && w != rahmen; w = w->nextInFocusChain())
        if (rahmen->isAncestorOf(w) && w->isVisibleTo(rahmen) && w->isEnabled() &&
            (w->focusPolicy() & Qt::TabFocus) == Qt::TabFocus)
            return w;
    return nullptr;
}

}  // namespace

FrmHaupt::FrmHaupt()
    : btnHilfe(knopf(QStringLiteral("btnHilfe"), QStringLiteral("&Hilfe"))),
      btnZurück(knopf(QStringLiteral("btnZurück"), QStringLiteral("<<  Zurück"))),
      btnWeiter(knopf(QStringLiteral("btnWeiter"), QStringLiteral("Weiter  >>"))),
      btnBeenden(knopf(QStringLiteral("btnBeenden"), QStringLiteral("Beenden"))),
      pgbWarten(Neu<QProgressBar>(QStringLiteral("pgbWarten"))),
      tmrDauer(Neu<QTimer>(QStringLiteral("tmrDauer"), this)),
      tmrFortschritt(Neu<QTimer>(QStringLiteral("tmrFortschritt"), this)),
      stapel_(new QStackedWidget),
      leereSeite_(new QWidget),
      tmrWarten_(new QTimer(this)) {
    setObjectName(QStringLiteral("frmHaupt"));
    setWindowTitle(QStringLiteral(" Lindgarn"));
    setWindowIcon(QIcon(QStringLiteral(":/symbole/lindgarn.svg")));
    rahmenAnlegen();
    menueAnlegen();
    tastenAnlegen();

    auto* inhalt = new QWidget;
    auto* spalte = new QVBoxLayout(inhalt);
    spalte->addWidget(stapel_, 1);
    spalte->addLayout(knopfleiste());
    setCentralWidget(inhalt);
    groesseFestlegen(inhalt);

    tmrDauer->setInterval(1000);
    tmrFortschritt->setInterval(10);
    connect(tmrDauer, &QTimer::timeout, this, [this] { tmrDauer_Timer(tmrDauer->interval()); });
    connect(tmrFortschritt, &QTimer::timeout, this, [] { tmrFortschritt_Timer(); });
    connect(btnWeiter, &QPushButton::clicked, this, [] { WeiterGehen(); });
    connect(btnZurück, &QPushButton::clicked, this, [] { ZurueckGehen(); });
    connect(btnBeenden, &QPushButton::clicked, this, [this] { close(); });
    connect(btnHilfe, &QPushButton::clicked, this, [this] { hilfeZeigen(); });
    connect(tmrWarten_, &QTimer::timeout, pgbWarten, &QWidget::show);
}

template <typename Art>
Art* FrmHaupt::rahmenAufnehmen(Art* rahmen) {
    stapel_->addWidget(rahmen);
    rahmen_[rahmen->objectName().section(u'_', 1).toInt()] = rahmen;
    return rahmen;
}

void FrmHaupt::rahmenAnlegen() {
    stapel_->addWidget(leereSeite_);
    rahmenAufnehmen(new RahmenWillkommen);
    rahmenAufnehmen(new RahmenSicherheit);
    rahmenDatenbank = rahmenAufnehmen(new RahmenDatenbank);
    rahmenTabelle = rahmenAufnehmen(new RahmenTabelle);
    rahmenZiel = rahmenAufnehmen(new RahmenZiel);
    rahmenVorgang = rahmenAufnehmen(new RahmenVorgang);
    rahmenDurchfuehrung = rahmenAufnehmen(new RahmenDurchfuehrung);
    rahmenFelder = rahmenAufnehmen(new RahmenFelder);
    rahmenSuche = rahmenAufnehmen(new RahmenSuche);
    rahmenMuell = rahmenAufnehmen(new RahmenMuell);
    rahmenSplitten = rahmenAufnehmen(new RahmenSplitten);
    rahmenAufnehmen(new RahmenFertig(32, QStringLiteral("Splitten erfolgreich abgeschlossen.")));
    rahmenAufnehmen(RahmenDatenabgleich());
    rahmenAufnehmen(RahmenNeueDaten());
    for (const int nummer : {kNachbearbeitungDubletten, kNachbearbeitungMuell})
        rahmenAufnehmen(new Rahmen(nummer, QStringLiteral(" Nachbearbeitung ")));
    for (const Protokollart& art : Protokollarten()) rahmenAufnehmen(new RahmenProtokoll(art));
    rahmenVerschmelzen = rahmenAufnehmen(new RahmenVerschmelzen);
    rahmenAufnehmen(new RahmenFertig(42, QStringLiteral("Verschmelzen erfolgreich abgeschlossen.")));
}

QLayout* FrmHaupt::knopfleiste() {
    constexpr int kWartenMs = 300;
    tmrWarten_->setObjectName(QStringLiteral("tmrWarten"));
    tmrWarten_->setSingleShot(true);
    tmrWarten_->setInterval(kWartenMs);
    pgbWarten->setRange(0, 0);
    pgbWarten->setTextVisible(false);
    pgbWarten->setMaximumHeight(fontMetrics().height() / 2);
    pgbWarten->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    pgbWarten->setAccessibleName(QStringLiteral("Bitte warten"));
    pgbWarten->setToolTip(QStringLiteral("Bitte warten ..."));
    pgbWarten->hide();
    btnWeiter->setDefault(true);

    auto* leiste = new QHBoxLayout;
    leiste->addWidget(btnHilfe);
    leiste->addWidget(pgbWarten, 1);
    leiste->addWidget(btnZurück);
    leiste->addWidget(btnWeiter);
    leiste->addStretch(1);
    leiste->addWidget(btnBeenden);
    // The strip and the buttons keep their place while buttons come and go.
    for (QWidget* teil : std::initializer_list<QWidget*>{btnHilfe, pgbWarten, btnZurück, btnWeiter})
        PlatzBehalten(teil);
    const int breite = btnZurück->sizeHint().width();
    for (QPushButton* taste : {btnHilfe, btnZurück, btnWeiter, btnBeenden}) taste->setMinimumWidth(breite);
    return leiste;
}

void FrmHaupt::menueAnlegen() {
    QMenu* programm = menuBar()->addMenu(QStringLiteral("&Programm"));
    programm->setObjectName(QStringLiteral("mnuProgramm"));
    connect(eintrag(programm, QStringLiteral("mnuBeenden"), QStringLiteral("&Beenden"),
                    QKeySequence(Qt::CTRL | Qt::Key_Q)),
            &QAction::triggered, this, [this] { close(); });
    QMenu* information = menuBar()->addMenu(QStringLiteral("&?"));
    information->setObjectName(QStringLiteral("mnuInformation"));
    connect(
        eintrag(information, QStringLiteral("mnuHilfe"), QStringLiteral("&Hilfe"), QKeySequence(Qt::Key_F1)),
        &QAction::triggered, this, [this] { hilfeZeigen(); });
    trennen(information, QStringLiteral("mnuLeer1"));
    connect(eintrag(information, QStringLiteral("mnuInternetseite"), QStringLiteral("&Internetseite")),
            &QAction::triggered, this, [] { InternetseiteOeffnen(); });
    connect(eintrag(information, QStringLiteral("mnuSupport"), QStringLiteral("&Support")),
            &QAction::triggered, this, [] { SupportSchreiben(); });
    trennen(information, QStringLiteral("mnuLeer2"));
    connect(eintrag(information, QStringLiteral("mnuInfo"), QStringLiteral("I&nfo")), &QAction::triggered,
            this, [this] { FrmInfo(this).exec(); });
}

// Keys that the texts of the buttons have no room for.
void FrmHaupt::tastenAnlegen() {
    const auto taste = [this](const QKeySequence& folge, auto aktion) {
        connect(new QShortcut(folge, this), &QShortcut::activated, this, aktion);
    };
    const auto druecken = [](QPushButton* knopf) {
        return [knopf] {
            if (knopf->isVisible()) knopf->click();
        };
    };
    taste(QKeySequence(Qt::CTRL | Qt::Key_F), [] { gSystemmeldungZeigen = !gSystemmeldungZeigen; });
    taste(QKeySequence(Qt::ALT | Qt::Key_Left), druecken(btnZurück));
    taste(QKeySequence(Qt::ALT | Qt::Key_Right), druecken(btnWeiter));
    btnZurück->setToolTip(QStringLiteral("Alt+Pfeil nach links"));
    btnWeiter->setToolTip(QStringLiteral("Eingabetaste oder Alt+Pfeil nach rechts"));
    btnHilfe->setToolTip(QStringLiteral("F1"));
    btnBeenden->setToolTip(QStringLiteral("Strg+Q"));
}

// The same margin to the left, to the right and at the bottom, and a strip for the buttons between frame and
// margin. Where the text is large the buttons fill that strip; they keep apart all the same.
void FrmHaupt::groesseFestlegen(QWidget* inhalt) {
    auto* spalte = static_cast<QVBoxLayout*>(inhalt->layout());
    const int rand = fontMetrics().height();
    spalte->setContentsMargins(rand, rand / 2, rand, rand);
    const int streifen = PixelAusTwips(kKnopfstreifenTwips, this);
    spalte->setSpacing(std::max(rand / 2, streifen - btnWeiter->sizeHint().height()));
    constexpr int kZeichen = 100, kZeilen = 30;
    resize(sizeHint().expandedTo({kZeichen * fontMetrics().averageCharWidth(), kZeilen * rand}));
}

void FrmHaupt::hilfeZeigen() {
    const Rahmen* rahmen = freRahmen(gRahmen);
    HilfeZeigen(this, rahmen ? rahmen->title() : QString());
}

Rahmen* FrmHaupt::freRahmen(int nummer) const {
    const auto stelle = rahmen_.find(nummer);
    return stelle == rahmen_.end() ? nullptr : stelle->second;
}

void FrmHaupt::rahmenSichtbar(int nummer, bool sichtbar) {
    Rahmen* rahmen = freRahmen(nummer);
    if (!rahmen) return;
    if (rahmen == rahmenDurchfuehrung) wartenZeigen(sichtbar);
    if (sichtbar) {
        stapel_->setCurrentWidget(rahmen);
        if (QWidget* erster = erstesElement(rahmen)) erster->setFocus(Qt::OtherFocusReason);
    } else if (stapel_->currentWidget() == rahmen) {
        stapel_->setCurrentWidget(leereSeite_);
    }
}

void FrmHaupt::wartenZeigen(bool an) {
    if (an) {
        tmrWarten_->start();
    } else {
        tmrWarten_->stop();
        pgbWarten->hide();
    }
}

// A run that works behind the window must not lose its database: only its own question can end it.
void FrmHaupt::closeEvent(QCloseEvent* ereignis) {
    if (gRahmen == kRahmenDurchfuehrung) {
        ereignis->ignore();
        return AbbruchErfragen();
    }
    if (LaufAktiv()) return ereignis->ignore();
    ProgrammBeenden();
    ereignis->accept();
}

// Enter presses the button that has the focus, and goes on from wherever else it is not used. The pictures of
// the operations want the space bar, so that a hasty Enter chooses none.
void FrmHaupt::keyPressEvent(QKeyEvent* ereignis) {
    const bool enter = ereignis->key() == Qt::Key_Return || ereignis->key() == Qt::Key_Enter;
    if (enter && !(ereignis->modifiers() & ~Qt::KeypadModifier)) {
        if (auto* knopf = qobject_cast<QPushButton*>(focusWidget())) return knopf->click();
        if (btnWeiter->isVisible()) return btnWeiter->click();
    }
    QMainWindow::keyPressEvent(ereignis);
}
