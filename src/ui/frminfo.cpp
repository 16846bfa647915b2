// The info box: name, version, addresses, legal notice.
#include "ui/frminfo.h"

#include <QFrame>
#include <QHBoxLayout>
#include <QIcon>
#include <QVBoxLayout>

#include "run/meldungen.h"
#include "ui/anschriften.h"
#include "ui/bausteine.h"

namespace {

constexpr int kBildgroesse = 64;
constexpr int kTextbreite = 420;  // pixels at 96 dots an inch

// A link leaves the box as the entries of the menu do.
QString verweis(const QString& ziel, const QString& text) {
    return QStringLiteral("<a href=\"%1\">%2</a>").arg(ziel, text);
}

QFont gross(QFont schrift) {
    schrift.setPointSizeF(schrift.pointSizeF() * 1.8);
    schrift.setBold(true);
    return schrift;
}

// There is no program of that kind that every system has.
void StartSysInfo() {
    KastenZeigen(QStringLiteral("Systeminformationen sind momentan nicht verfügbar"));
}

}  // namespace

FrmInfo::FrmInfo(QWidget* eltern)
    : QDialog(eltern),
      Image1(Neu<QLabel>(QStringLiteral("Image1"))),
      lblTitle(Textfeld(QStringLiteral("Lindgarn"), QStringLiteral("lblTitle"))),
      lblVersion(Textfeld(QStringLiteral("Version 1.0"), QStringLiteral("lblVersion"))),
      lblDescription(Neu<QLabel>(QStringLiteral("lblDescription"))),
      lblDisclaimer(
          Textfeld(QStringLiteral("Lindgarn bereinigt Adressbestände. Ihre Tabellen bleiben dabei, wie sie "
                                  "sind: jedes Ergebnis ist eine neue Tabelle. Prüfen Sie es, bevor Sie "
                                  "die alte löschen; für verlorene Daten wird nicht gehaftet."),
                   QStringLiteral("lblDisclaimer"))),
      cmdOK(Neu<QPushButton>(QStringLiteral("cmdOK"), QStringLiteral("OK"))),
      cmdSysInfo(Neu<QPushButton>(QStringLiteral("cmdSysInfo"), QStringLiteral("&Systeminfo..."))) {
    setObjectName(QStringLiteral("frmInfo"));
    setWindowTitle(QStringLiteral(" Info"));
    Image1->setPixmap(QIcon(QStringLiteral(":/symbole/lindgarn.svg")).pixmap(kBildgroesse));
    lblTitle->setFont(gross(lblTitle->font()));
    lblDescription->setText(verweis(QStringLiteral("netz"), Internetadresse()) +
                            QStringLiteral("&nbsp; &nbsp; ") +
                            verweis(QStringLiteral("mail"), Mailadresse()));
    lblDescription->setTextInteractionFlags(Qt::LinksAccessibleByMouse | Qt::LinksAccessibleByKeyboard);
    anordnen();
    cmdOK->setDefault(true);
    cmdOK->setFocus();
    connect(cmdOK, &QPushButton::clicked, this, [this] { accept(); });
    connect(cmdSysInfo, &QPushButton::clicked, this, [] { StartSysInfo(); });
    connect(lblDescription, &QLabel::linkActivated, this,
            [](const QString& ziel) { ziel == u"netz" ? InternetseiteOeffnen() : SupportSchreiben(); });
}

void FrmInfo::anordnen() {
    auto* Line1 = Neu<QFrame>(QStringLiteral("Line1"));
    Line1->setFrameShape(QFrame::HLine);
    Line1->setFrameShadow(QFrame::Sunken);
    lblDisclaimer->setMinimumWidth(kTextbreite * logicalDpiX() / 96);
    auto* namen = new QVBoxLayout;
    for (QLabel* label : {lblTitle, lblVersion, lblDescription}) namen->addWidget(label);
    auto* oben = new QHBoxLayout;
    oben->addWidget(Image1, 0, Qt::AlignTop);
    oben->addLayout(namen, 1);
    auto* knoepfe = new QVBoxLayout;
    knoepfe->addWidget(cmdOK);
    knoepfe->addWidget(cmdSysInfo);
    knoepfe->addStretch();
    auto* unten = new QHBoxLayout;
    unten->addWidget(lblDisclaimer, 1);
    unten->addLayout(knoepfe);
    for (QHBoxLayout* zeile : {oben, unten}) zeile->setSpacing(fontMetrics().height());
    auto* spalte = new QVBoxLayout(this);
    spalte->addLayout(oben);
    spalte->addWidget(Line1);
    spalte->addLayout(unten);
}
