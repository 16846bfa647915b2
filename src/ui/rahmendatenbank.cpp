// Frame 2: the database file and its password.
#include "ui/rahmendatenbank.h"

#include <QDragEnterEvent>
#include <QFileInfo>
#include <QGridLayout>
#include <QMimeData>
#include <QUrl>

#include "base/pfad.h"
#include "data/datenzugriff.h"
#include "data/registry.h"
#include "run/meldungen.h"
#include "run/zustand.h"
#include "ui/bausteine.h"
#include "ui/dialoge.h"

namespace {

constexpr char16_t kRegVerzeichnis[] = u"SV";  // the folder of the last chosen file

const QStringList& dateifilter() {
    static const QStringList filter{QStringLiteral("Alle Datendateien (*.mdb;*.xls;*.dbf)"),
                                    QStringLiteral("Microsoft Access Datenbank (*.mdb)"),
                                    QStringLiteral("Microsoft Excel Tabelle (*.xls)"),
                                    QStringLiteral("dBase 5 Datenbank (*.dbf)"),
                                    QStringLiteral("dBase IV Datenbank (*.dbf)"),
                                    QStringLiteral("dBase III Datenbank (*.dbf)")};
    return filter;
}

// The format that goes with a filter is one row off the list; opening the database puts it right.
void formatMerken(int filterIndex) {
    switch (filterIndex) {
        case 1:
            gDatenbankFormat = QString::fromUtf16(kFormatAccess);
            break;
        case 2:
            gDatenbankFormat = QString::fromUtf16(kFormatDbase5);
            break;
        case 3:
            gDatenbankFormat = QString::fromUtf16(kFormatDbase4);
            break;
        case 4:
            gDatenbankFormat = QString::fromUtf16(kFormatDbase3);
            break;
        case 5:
            gDatenbankFormat = QString::fromUtf16(kFormatExcel5);
            break;
        default:
            break;
    }
}

QString letzterOrdner() {
    const Wert ordner = RegWertLesen(Schluesselwurzel::BenutzerAktuell, gRegistrySchluessel,
                                     QString::fromUtf16(kRegVerzeichnis));
    return ordner.istText() ? SystemPfad(ordner.text()) : QString();
}

void ordnerMerken(const QString& datei) {
    RegWertSchreiben(Schluesselwurzel::BenutzerAktuell, gRegistrySchluessel,
                     QString::fromUtf16(kRegVerzeichnis), kRegText, Wert(VerzeichnisAusPfad(datei)));
}

// The one file of the user's own that is being dragged; empty for anything else.
QString gezogeneDatei(const QMimeData& daten) {
    const QList<QUrl> orte = daten.urls();
    const QString pfad = orte.size() == 1 ? orte.constFirst().toLocalFile() : QString();
    return QFileInfo(pfad).isFile() ? pfad : QString();
}

}  // namespace

RahmenDatenbank::RahmenDatenbank()
    : Rahmen(2, QStringLiteral(" Auswahl der Datenbank ")),
      tbxDatenbankName(Neu<QLineEdit>(QStringLiteral("tbxDatenbankName"))),
      btnDatenbankAuswählen(Neu<QPushButton>(QStringLiteral("btnDatenbankAuswählen"))),
      tbxDatenbankPasswort(Neu<QLineEdit>(QStringLiteral("tbxDatenbankPasswort"))) {
    btnDatenbankAuswählen->setIcon(QIcon(QStringLiteral(":/symbole/oeffnen.svg")));
    btnDatenbankAuswählen->setToolTip(QStringLiteral("Datenbank auswählen"));
    btnDatenbankAuswählen->setAccessibleName(QStringLiteral("Datenbank auswählen"));
    tbxDatenbankPasswort->setEchoMode(QLineEdit::Password);
    setAcceptDrops(true);
    // They would take a dropped file as a text.
    for (QLineEdit* feld : {tbxDatenbankName, tbxDatenbankPasswort}) feld->setAcceptDrops(false);

    auto* gitter = new QGridLayout(this);
    gitter->addWidget(Textfeld(QStringLiteral(
                          "Wählen sie hier die zu bearbeitende Datenbank aus, oder geben sie deren Ort an.")),
                      0, 0, 1, 3);
    gitter->setRowMinimumHeight(1, fontMetrics().height());
    gitter->addWidget(Beschriftung(QStringLiteral("&Datenbankname:"), tbxDatenbankName), 2, 0);
    gitter->addWidget(tbxDatenbankName, 2, 1);
    gitter->addWidget(btnDatenbankAuswählen, 2, 2);
    gitter->addWidget(Beschriftung(QStringLiteral("Pass&wort (falls benötigt):"), tbxDatenbankPasswort), 3,
                      0);
    gitter->addWidget(tbxDatenbankPasswort, 3, 1);
    gitter->setRowStretch(4, 1);

    connect(btnDatenbankAuswählen, &QPushButton::clicked, this,
            [this] { Gesichert([this] { btnDatenbankAuswählen_Click(); }); });
}

void RahmenDatenbank::btnDatenbankAuswählen_Click() {
    const std::optional<Dateiwahl> wahl = DateiErfragen({dateifilter(), 1, letzterOrdner()});
    if (!wahl) return;
    tbxDatenbankName->setText(wahl->datei);
    ordnerMerken(wahl->datei);
    formatMerken(wahl->filterIndex);
}

void RahmenDatenbank::dateiEintragen(const QString& pfad) {
    tbxDatenbankName->setText(QFileInfo(pfad).absoluteFilePath());
    tbxDatenbankName->setFocus();
}

void RahmenDatenbank::dragEnterEvent(QDragEnterEvent* ereignis) {
    if (!gezogeneDatei(*ereignis->mimeData()).isEmpty()) ereignis->acceptProposedAction();
}

void RahmenDatenbank::dropEvent(QDropEvent* ereignis) {
    dateiEintragen(gezogeneDatei(*ereignis->mimeData()));
    ereignis->acceptProposedAction();
}

bool RahmenDatenbank::pruefen() {
    const QString pfad = tbxDatenbankName->text();
    if (!DateiVorhanden(pfad)) {
        AchtungZeigen(QStringLiteral("Datei kann nicht geöffnet werden."));
        return false;
    }
    DatenbankSchliessen(gDatenbank);
    DatenbankOeffnen(pfad, tbxDatenbankPasswort->text(), gDatenbank);
    if (gFehler) return false;
    if (gDatenbankFormat == kFormatExcel5)
        HinweisZeigen(
            QStringLiteral("Sie verwenden eine Excel-Tabelle.\r"
                           "Es wird empfohlen, diese mit dem entsprechenden Programm in \r"
                           "eine Access-Datenbank zu konvertieren, da jene ein erheblich\r"
                           "besseres Leistungsverhalten aufweisen."));
    return true;
}
