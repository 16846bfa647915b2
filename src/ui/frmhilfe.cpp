// The help window: a text about the frame on which the user stands.
#include "ui/frmhilfe.h"

#include <QFrame>
#include <QVBoxLayout>

#include "base/fehler.h"
#include "base/pfad.h"
#include "data/start.h"
#include "fields/einstellungen.h"
#include "run/fenster.h"
#include "run/zustand.h"
#include "ui/anschriften.h"
#include "ui/bausteine.h"
#include "ui/hilfethema.h"

namespace {

constexpr int kSpalten = 74;
constexpr int kZeilen = 26;

QSize textgroesse(const QFontMetrics& schrift) {
    return {schrift.averageCharWidth() * kSpalten, schrift.lineSpacing() * kZeilen};
}

}  // namespace

FrmHilfe::FrmHilfe(QWidget* eltern, const QString& rahmentitel)
    : QDialog(eltern),
      tbxHilfe(Neu<QPlainTextEdit>(QStringLiteral("tbxHilfe"))),
      btnHandbuch(Neu<QPushButton>(QStringLiteral("btnHandbuch"), QStringLiteral("&Handbuch öffnen"))),
      Command1(Neu<QPushButton>(QStringLiteral("Command1"), QStringLiteral("OK"))) {
    setObjectName(QStringLiteral("frmHilfe"));
    setWindowTitle(QStringLiteral(" Hilfe"));
    tbxHilfe->setReadOnly(true);
    tbxHilfe->setAccessibleName(QStringLiteral("Hilfetext"));
    tbxHilfe->setMinimumSize(textgroesse(fontMetrics()));
    auto* Shape1 = Neu<QFrame>(QStringLiteral("Shape1"));
    Shape1->setFrameShape(QFrame::StyledPanel);
    auto* innen = new QVBoxLayout(Shape1);
    innen->setContentsMargins(0, 0, 0, 0);
    innen->addWidget(tbxHilfe);
    auto* spalte = new QVBoxLayout(this);
    spalte->addWidget(Shape1);
    auto* knoepfe = new QHBoxLayout;
    knoepfe->addWidget(btnHandbuch);
    knoepfe->addStretch();
    knoepfe->addWidget(Command1);
    spalte->addLayout(knoepfe);
    btnHandbuch->setVisible(!Handbuchdatei().isEmpty());
    btnHandbuch->setAutoDefault(false);
    connect(btnHandbuch, &QPushButton::clicked, this, [] { HandbuchOeffnen(); });
    Command1->setDefault(true);
    Command1->setFocus();
    connect(Command1, &QPushButton::clicked, this, [this] { accept(); });

    tbxHilfe->setPlainText(HilfeThemaLesen(HilfeSchluessel(gRahmen, rahmentitel)));
}

QString FrmHilfe::HilfeThemaLesen(const QString& schluessel) {
    const QString pfad = ProgrammDatei(QStringLiteral("Hilfe.HLP"));
    try {
        if (DateiVorhanden(pfad)) return HilfeThemaSuchen(TextAusBytes(ProgrammdateiLesen(pfad)), schluessel);
    } catch (const EngineFehler&) {
        // What cannot be read is as good as not there.
    }
    fenster().meldungZeigen(
        {QString(), QStringLiteral("Hilfedatei nicht gefunden!"), Symbol::Kritisch, Knoepfe::Ok, Knopf::Ok});
    return QString();
}

void HilfeZeigen(QWidget* eltern, const QString& rahmentitel) {
    FrmHilfe(eltern, rahmentitel).exec();
}
