// What the two review windows have in common.
#include "ui/nachbearbeitungsfenster.h"

#include <QCloseEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QIcon>
#include <QKeyEvent>
#include <QPointer>
#include <QScopeGuard>
#include <QScreen>
#include <QShortcut>
#include <QVBoxLayout>

#include "data/steuerfelder.h"
#include "run/rahmen.h"
#include "run/schritte.h"
#include "run/zustand.h"
#include "ui/bausteine.h"
#include "ui/frmhilfe.h"
#include "ui/nachbearbeitungsabfragen.h"

namespace {

constexpr int kZeile = 3;  // layout rows of one grid: label, grid, and the gap below it

// Its shortcut acts at once. The toolkit would click some moments later, when another row may be the current
// one.
class Bildknopf : public QPushButton {
  protected:
    bool event(QEvent* ereignis) override {
        if (ereignis->type() != QEvent::Shortcut) return QPushButton::event(ereignis);
        click();
        return true;
    }
};

QPushButton* textknopf(const QString& name, const QString& text) {
    auto* knopf = Neu<QPushButton>(name, text);
    knopf->setAutoDefault(false);
    return knopf;
}

// Writes the state of the current record.
void statusSchreiben(dao::Recordset& saetze, const std::function<int(int)>& regel) {
    const QString feld = QString::fromUtf16(kTempDss);
    const int neu = regel(int(saetze.Fields(feld).Value().alsZahl()));
    saetze.Edit();
    saetze.Fields(feld).setValue(neu);
    saetze.Update();
}

}  // namespace

Nachbearbeitungsfenster::Nachbearbeitungsfenster(const QString& name, const QString& titel, QWidget* eltern)
    : QDialog(eltern, Qt::Dialog | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                          Qt::WindowMaximizeButtonHint | Qt::WindowCloseButtonHint),
      btnFertig(textknopf(QStringLiteral("btnFertig"), QStringLiteral("&Fertig"))),
      btnAbbrechen(textknopf(QStringLiteral("btnAbbrechen"), QStringLiteral("&Abbrechen"))),
      btnHilfe(textknopf(QStringLiteral("btnHilfe"), QStringLiteral("&Hilfe"))),
      lblStand(Neu<QLabel>(QStringLiteral("lblStand"))) {
    setObjectName(name);
    setWindowTitle(titel);
    connect(btnFertig, &QPushButton::clicked, this, [this] { handeln([this] { btnFertig_Click(); }); });
    connect(btnAbbrechen, &QPushButton::clicked, this, [this] { btnAbbrechen_Click(); });
    connect(btnHilfe, &QPushButton::clicked, this, [this] { HilfeZeigen(this); });
    connect(new QShortcut(QKeySequence(Qt::Key_F1), this), &QShortcut::activated, btnHilfe,
            &QPushButton::click);
    btnHilfe->setToolTip(QStringLiteral("F1"));
}

Datengitter* Nachbearbeitungsfenster::gitterMit(const QString& name, const QString& zweck,
                                                Datensteuerung* daten) {
    auto* gitter = Neu<Datengitter>(name);
    gitter->setDataSource(daten);
    gitter->setAccessibleName(zweck);
    gitter->setMinimumHeight(gitter->fontMetrics().height() * 4);
    return gitter;
}

// A button that is a picture only; its shortcut stands in the tool tip.
QPushButton* Nachbearbeitungsfenster::bildknopf(const QString& name, const QString& bild,
                                                const QString& zweck, const QString& kuerzel) {
    auto* knopf = Neu<Bildknopf>(name);
    const int kante = knopf->fontMetrics().height() * 2;
    knopf->setIcon(QIcon(QStringLiteral(":/symbole/") + bild));
    knopf->setIconSize({kante, kante});
    knopf->setToolTip(QStringLiteral("%1 (%2)").arg(zweck, kuerzel));
    knopf->setAccessibleName(zweck);
    knopf->setShortcut(QKeySequence::fromString(kuerzel));
    knopf->setAutoDefault(false);
    return knopf;
}

QLabel* Nachbearbeitungsfenster::ueberschrift(const QString& name, const QString& text, QWidget* gitter) {
    QLabel* label = Beschriftung(text, gitter);
    label->setObjectName(name);
    return label;
}

void Nachbearbeitungsfenster::anordnen(const QList<Liste>& listen, const QList<QLabel*>& darunter) {
    auto* gitter = new QGridLayout;
    int zeile = 0;
    for (const Liste& liste : listen) {
        gitter->addWidget(liste.titel, zeile, 0);
        if (liste.notiz) gitter->addWidget(liste.notiz, zeile, 1, Qt::AlignRight);
        gitter->addWidget(liste.gitter, zeile + 1, 0, 1, 2);
        gitter->addWidget(liste.knopf, zeile + 1, 2, Qt::AlignVCenter);
        gitter->setRowStretch(zeile + 1, 1);
        zeile += kZeile;
    }
    gitter->setColumnStretch(0, 1);

    auto* knoepfe = new QHBoxLayout;
    knoepfe->addWidget(btnHilfe);
    knoepfe->addStretch();
    knoepfe->addWidget(btnFertig);
    knoepfe->addWidget(btnAbbrechen);

    auto* spalte = new QVBoxLayout(this);
    spalte->addLayout(gitter, 1);
    for (QLabel* label : darunter) spalte->addWidget(label);
    spalte->addLayout(knoepfe);
}

// The size that suits the grids, but no more than the screen has.
void Nachbearbeitungsfenster::groesseWaehlen(int zeilen) {
    const QSize gewuenscht(fontMetrics().averageCharWidth() * 150, fontMetrics().height() * zeilen);
    resize(gewuenscht.boundedTo(screen()->availableSize() * 9 / 10));
}

// A failure of an action is told; what it wrote is taken back.
void Nachbearbeitungsfenster::handeln(const std::function<void()>& aktion) {
    if (handelt_ || entladen_) return;
    handelt_ = true;
    // A button that is disabled for a moment loses it.
    const QPointer<QWidget> fokus = focusWidget();
    const auto fertig = qScopeGuard([this, fokus] {
        handelt_ = false;
        knoepfeSchalten(true);
        handlungBeendet();
        if (fokus && !entladen_) fokus->setFocus(Qt::OtherFocusReason);
    });
    Gesichert(aktion);
}

void Nachbearbeitungsfenster::inTransaktion(const std::function<void()>& schreiben) {
    gArbeitsbereich->BeginTrans();
    try {
        schreiben();
        // An unloaded window has rolled back already.
        if (!entladen_) gArbeitsbereich->CommitTrans();
    } catch (...) {
        FehlerUebergehen([] { gArbeitsbereich->Rollback(); });
        throw;
    }
}

void Nachbearbeitungsfenster::neuAbfragen(Saetze& saetze) {
    const Malpause pause(this);
    Gesetzt(saetze).Requery();
}

void Nachbearbeitungsfenster::einenVerschieben(dao::Recordset& saetze, const Datensteuerung& daten,
                                               const Statusregel& regel) {
    const Malpause pause(this);
    saetze.FindFirst(BedingungSatz(daten.Fields(QString::fromUtf16(kTempDsn)).alsText()));
    if (!saetze.NoMatch()) inTransaktion([&] { statusSchreiben(saetze, regel); });
}

bool Nachbearbeitungsfenster::alleVerschieben(dao::Recordset& saetze, const Statusregel& regel) {
    constexpr int kSaetzeJeAnzeige = 256;
    knoepfeSchalten(false);
    inTransaktion([&] {
        saetze.MoveFirst();
        for (qint64 verschoben = 0; !entladen_ && !saetze.Eof(); ++verschoben) {
            if (verschoben % kSaetzeJeAnzeige == 0)
                lblStand->setText(
                    QStringLiteral("Verschiebe ... %1 von %2").arg(verschoben).arg(saetze.RecordCount()));
            statusSchreiben(saetze, regel);
            saetze.MoveNext();
            DoEvents();
        }
    });
    return !entladen_;
}

void Nachbearbeitungsfenster::knoepfeSchalten(bool aktiv) {
    btnFertig->setEnabled(aktiv);
    for (QPushButton* knopf : verschiebeknoepfe()) knopf->setEnabled(aktiv);
}

// May come in the middle of a move, which then finds the window unloaded and leaves everything alone.
void Nachbearbeitungsfenster::btnAbbrechen_Click() {
    if (entladen_) return;
    FehlerUebergehen([] { gArbeitsbereich->Rollback(); });
    fensterEntladen();
    gAbbruch = true;
}

void Nachbearbeitungsfenster::fensterEntladen() {
    entladen_ = true;
    saetzeSchliessen();
    done(0);
}

void Nachbearbeitungsfenster::schliessen(Saetze& saetze) {
    FehlerUebergehen([&] { Gesetzt(saetze).Close(); });
    saetze.reset();
}

// The run behind the window waits for the user, not he for the run.
void Nachbearbeitungsfenster::entscheidenLassen() {
    fenster().sanduhr(false);
    exec();
    fenster().sanduhr(true);
}

void Nachbearbeitungsfenster::reject() {}

void Nachbearbeitungsfenster::closeEvent(QCloseEvent* ereignis) {
    if (!entladen_) {
        AbbruchErfragen();
        if (gAbbruch) btnAbbrechen_Click();
    }
    ereignis->setAccepted(entladen_);
}

// Enter presses the button that has the focus and nothing else.
void Nachbearbeitungsfenster::keyPressEvent(QKeyEvent* ereignis) {
    if (ereignis->key() != Qt::Key_Return && ereignis->key() != Qt::Key_Enter)
        return QDialog::keyPressEvent(ereignis);
    ereignis->accept();
    if (auto* knopf = dynamic_cast<QPushButton*>(focusWidget())) knopf->click();
}
