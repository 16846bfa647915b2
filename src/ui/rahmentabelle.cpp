// Frame 3: the tables of the database, with details, deleting and renaming.
#include "ui/rahmentabelle.h"

#include <QGridLayout>
#include <QKeyEvent>
#include <array>

#include "base/text.h"
#include "data/datenzugriff.h"
#include "run/schritte.h"
#include "run/zustand.h"
#include "ui/bausteine.h"
#include "ui/dialoge.h"

namespace {

void keineTabelle() {
    AchtungZeigen(QStringLiteral("Keine Tabelle ausgewählt."));
}

QString geaendertText(const QDateTime& wann) {
    static const std::array<QString, 12> monate{
        QStringLiteral("Januar"),  QStringLiteral("Februar"),  QStringLiteral("März"),
        QStringLiteral("April"),   QStringLiteral("Mai"),      QStringLiteral("Juni"),
        QStringLiteral("Juli"),    QStringLiteral("August"),   QStringLiteral("September"),
        QStringLiteral("Oktober"), QStringLiteral("November"), QStringLiteral("Dezember")};
    const QDate tag = wann.date();
    const QString monat = tag.isValid() ? monate[size_t(tag.month() - 1)] : QString();
    return QStringLiteral("Zuletzt geändert am :\r\r%1. %2 %3\rum %4.%5 Uhr")
        .arg(tag.day())
        .arg(monat)
        .arg(tag.year())
        .arg(wann.time().hour())
        .arg(wann.time().minute(), 2, 10, QLatin1Char('0'));
}

QString groesseText(dao::Recordset& satz) {
    if (satz.Eof()) return QStringLiteral("Keine Datensätze vorhanden");
    satz.MoveLast();
    return QString::number(satz.RecordCount()) + QStringLiteral(" Datensätz(e)");
}

}  // namespace

RahmenTabelle::RahmenTabelle()
    : Rahmen(3, QStringLiteral(" Auswahl der Tabelle ")),
      lstTabellen(Neu<QListWidget>(QStringLiteral("lstTabellen"))),
      lblGröße(Textfeld(QString(), QStringLiteral("lblGröße"))),
      lblGeändert(Textfeld(QString(), QStringLiteral("lblGeändert"))),
      cmdTabelleLöschen(
          Neu<QPushButton>(QStringLiteral("cmdTabelleLöschen"), QStringLiteral("Tabelle &löschen"))),
      cmdTabelleUmbenennen(
          Neu<QPushButton>(QStringLiteral("cmdTabelleUmbenennen"), QStringLiteral("Tabelle &umbenennen"))) {
    auto* seite = new QVBoxLayout;
    seite->addWidget(lblGröße);
    seite->addSpacing(fontMetrics().height());
    seite->addWidget(lblGeändert);
    seite->addStretch();
    seite->addWidget(cmdTabelleLöschen);
    // Inside a grid whose spacings differ, a box has none of its own.
    seite->addSpacing(fontMetrics().height() / 2);
    seite->addWidget(cmdTabelleUmbenennen);

    auto* gitter = new QGridLayout(this);
    gitter->addWidget(Beschriftung(QStringLiteral("Wählen sie die zu bearbeitende &Tabelle."), lstTabellen),
                      0, 0, 1, 2);
    gitter->addWidget(lstTabellen, 1, 0);
    gitter->addLayout(seite, 1, 1);
    gitter->setColumnStretch(0, 3);
    gitter->setColumnStretch(1, 2);

    lstTabellen->installEventFilter(this);
    connect(lstTabellen, &QListWidget::itemSelectionChanged, this, [this] {
        if (gewaehlt()) Gesichert([this] { lstTabellen_Click(); });
    });
    connect(cmdTabelleLöschen, &QPushButton::clicked, this,
            [this] { Gesichert([this] { cmdTabelleLöschen_Click(); }); });
    connect(cmdTabelleUmbenennen, &QPushButton::clicked, this,
            [this] { Gesichert([this] { cmdTabelleUmbenennen_Click(); }); });
}

bool RahmenTabelle::eventFilter(QObject*, QEvent* ereignis) {
    if (ereignis->type() != QEvent::KeyPress || gewaehlt() || !lstTabellen->currentItem()) return false;
    const int taste = static_cast<QKeyEvent*>(ereignis)->key();
    if (taste != Qt::Key_Down && taste != Qt::Key_Up) return false;
    lstTabellen->currentItem()->setSelected(true);
    return true;
}

QListWidgetItem* RahmenTabelle::gewaehlt() const {
    return lstTabellen->selectedItems().value(0);
}

void RahmenTabelle::tabellenAuflisten() {
    const QSignalBlocker still(lstTabellen);
    lstTabellen->clear();
    lblGeändert->clear();
    lblGröße->clear();
    lstTabellen->addItems(TabellenNamen());
}

void RahmenTabelle::fuellen(Schritte& s) {
    gVorgang = 0;
    s.tu([this] { tabellenAuflisten(); });
}

bool RahmenTabelle::pruefen() {
    if (!gewaehlt()) {
        keineTabelle();
        return false;
    }
    gAusgangsTabelle = Trim(gewaehlt()->text());
    if (DatensaetzeDerTabelle(gAusgangsTabelle) > 0) return true;
    AchtungZeigen(QStringLiteral("Tabelle enthält keine Datensätze."));
    return false;
}

void RahmenTabelle::lstTabellen_Click() {
    const QString name = gewaehlt()->text();
    Schritte s([&] { return QStringLiteral("Fehler beim Anzeigen der Tabelle '%1'.").arg(name); });
    s.ablauf(
        [&] {
            s.tu([&] {
                const QDateTime wann = gDatenbank->TableDefs().Item(name).LastUpdated();
                lblGeändert->setText(AlsZeilen(geaendertText(wann)));
            });
            if (name == u" ") return;
            fenster().sanduhr(true);
            std::unique_ptr<dao::Recordset> satz;
            s.tu([&] { satz = gDatenbank->TableDefs().Item(name).OpenRecordset(); });
            s.tu([&] { lblGröße->setText(groesseText(Gesetzt(satz))); });
            s.tu([&] { Gesetzt(satz).Close(); });
        },
        [] {});
    fenster().sanduhr(false);
}

void RahmenTabelle::cmdTabelleLöschen_Click() {
    if (!gewaehlt()) return keineTabelle();
    const QString name = gewaehlt()->text();
    Schritte s([&] { return QStringLiteral("Fehler beim Löschen der Tabelle '%1'.").arg(name); });
    if (!FrageStellen(QStringLiteral("Sind sie sich sicher, dass sie die Tabelle \"%1\"\r"
                                     "inklusive sämtlicher enthaltener Datensätze löschen möchten?")
                          .arg(name),
                      Symbol::Information, Knopf::Nein))
        return;
    s.ablauf(
        [&] {
            s.tu([] { gArbeitsbereich->BeginTrans(); });
            s.tu([&] { gDatenbank->TableDefs().Delete(name); });
            s.tu([] { gArbeitsbereich->CommitTrans(); });
            DatenbankSichern();
            s.tu([this] { tabellenAuflisten(); });
        },
        [] { FehlerUebergehen([] { gArbeitsbereich->Rollback(); }); });
}

void RahmenTabelle::cmdTabelleUmbenennen_Click() {
    if (!gewaehlt()) return keineTabelle();
    const QString name = gewaehlt()->text();
    const std::optional<QString> neuer =
        EingabeErfragen({QString(), u'"' + name + QStringLiteral("\" umbennen in: "), QString()});
    if (!neuer || neuer->isEmpty()) return;
    Schritte s([&] { return QStringLiteral("Fehler beim Umbenennen der Tabelle '%1'.").arg(name); });
    s.ablauf(
        [&] {
            s.tu([&] { gDatenbank->TableDefs().Item(name).setName(*neuer); });
            DatenbankSichern();
            s.tu([this] { tabellenAuflisten(); });
        },
        [] {});
}
