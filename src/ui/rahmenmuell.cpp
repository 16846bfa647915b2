// Frame 21: what the junk search looks at.
#include "ui/rahmenmuell.h"

#include <QGridLayout>

#include "ui/bausteine.h"

namespace {

QCheckBox* kaestchen(const QString& name, const QString& text, int wert) {
    auto* haken = Neu<QCheckBox>(name, text);
    haken->setChecked(wert == 1);
    return haken;
}

// The dependent boxes can be used only while the one above them is set; their marks stay.
void abhaengig(QCheckBox* oben, const QList<QCheckBox*>& darunter) {
    for (QCheckBox* haken : darunter) {
        haken->setEnabled(oben->isChecked());
        QObject::connect(oben, &QCheckBox::toggled, haken, &QCheckBox::setEnabled);
    }
}

int wertVon(const QCheckBox* haken) {
    return haken->isChecked() ? 1 : 0;
}

const Muelloptionen kAnfang;

}  // namespace

RahmenMuell::RahmenMuell()
    : Rahmen(21, QStringLiteral(" Mülldatensätze erkennen ")),
      chkFirmenname(
          kaestchen(QStringLiteral("chkFirmenname"), QStringLiteral("&Firmenname"), kAnfang.firmenname)),
      chkRechtsform(
          kaestchen(QStringLiteral("chkRechtsform"), QStringLiteral("+ &Rechtsform"), kAnfang.rechtsform)),
      chkBranche(kaestchen(QStringLiteral("chkBranche"), QStringLiteral("&Branche"), kAnfang.branche)),
      chkPostalisch(kaestchen(QStringLiteral("chkPostalisch"), QStringLiteral("P&ostalische Kontrolle"),
                              kAnfang.postalisch)),
      chkHausnummer(
          kaestchen(QStringLiteral("chkHausnummer"), QStringLiteral("+ Hausn&ummer"), kAnfang.hausnummer)),
      chkKontakt(kaestchen(QStringLiteral("chkKontakt"), QStringLiteral("&Kontakt"), kAnfang.kontakt)),
      chkAnrede(kaestchen(QStringLiteral("chkAnrede"), QStringLiteral("&Anrede"), kAnfang.anrede)),
      chkVorname(kaestchen(QStringLiteral("chkVorname"), QStringLiteral("&Vorname"), kAnfang.vorname)),
      chkNachname(kaestchen(QStringLiteral("chkNachname"), QStringLiteral("&Nachname"), kAnfang.nachname)),
      chkAbteilung(kaestchen(QStringLiteral("chkAbteilung"), QStringLiteral("Abteilun&g / Position"),
                             kAnfang.abteilung)),
      chkTelefon(kaestchen(QStringLiteral("chkTelefon"), QStringLiteral("&Telefonnummer"), kAnfang.telefon)),
      chkFax(kaestchen(QStringLiteral("chkFax"), QStringLiteral("+ Fa&xnummer"), kAnfang.fax)),
      chkEmail(kaestchen(QStringLiteral("chkEmail"), QStringLiteral("&Emailadresse"), kAnfang.email)),
      chkInternet(
          kaestchen(QStringLiteral("chkInternet"), QStringLiteral("&Internetseite"), kAnfang.internet)) {
    abhaengig(chkFirmenname, {chkRechtsform});
    abhaengig(chkPostalisch, {chkHausnummer});
    abhaengig(chkKontakt, {chkAnrede, chkVorname, chkNachname, chkAbteilung});
    abhaengig(chkTelefon, {chkFax});
    anordnen();
}

void RahmenMuell::anordnen() {
    auto* gitter = new QGridLayout(this);
    gitter->addWidget(Textfeld(QStringLiteral(
                          "Markieren sie die Felder, welche bei der Suche berücksichtigt werden sollen.")),
                      0, 0, 1, 3);
    gitter->setRowMinimumHeight(1, fontMetrics().height() / 2);
    const QList<QList<QCheckBox*>> spalten{
        {chkFirmenname, chkRechtsform, chkBranche},
        {chkKontakt, chkAnrede, chkVorname, chkNachname, chkAbteilung},
        {chkPostalisch, chkHausnummer, chkTelefon, chkFax, chkEmail, chkInternet}};
    const QList<QCheckBox*> eingerueckt{chkRechtsform, chkAnrede,     chkVorname, chkNachname,
                                        chkAbteilung,  chkHausnummer, chkFax};
    int zeilen = 0;
    for (int spalte = 0; spalte < spalten.size(); ++spalte) {
        int zeile = 2;
        for (QCheckBox* haken : spalten[spalte]) {
            auto* platz = new QHBoxLayout;
            if (eingerueckt.contains(haken)) platz->addSpacing(fontMetrics().height());
            platz->addWidget(haken);
            gitter->addLayout(platz, zeile++, spalte);
        }
        gitter->setColumnStretch(spalte, 1);
        zeilen = std::max(zeilen, zeile);
    }
    gitter->setRowStretch(zeilen, 1);
    gitter->addWidget(
        Textfeld(QStringLiteral("\"Postalische Kontrolle\" beinhaltet Postleitzahl, Ort und Straße.")),
        zeilen + 1, 0, 1, 3);
}

Muelloptionen RahmenMuell::optionen() const {
    Muelloptionen optionen;
    optionen.firmenname = wertVon(chkFirmenname);
    optionen.rechtsform = wertVon(chkRechtsform);
    optionen.branche = wertVon(chkBranche);
    optionen.postalisch = wertVon(chkPostalisch);
    optionen.hausnummer = wertVon(chkHausnummer);
    optionen.kontakt = wertVon(chkKontakt);
    optionen.anrede = wertVon(chkAnrede);
    optionen.vorname = wertVon(chkVorname);
    optionen.nachname = wertVon(chkNachname);
    optionen.abteilung = wertVon(chkAbteilung);
    optionen.telefon = wertVon(chkTelefon);
    optionen.fax = wertVon(chkFax);
    optionen.email = wertVon(chkEmail);
    optionen.internet = wertVon(chkInternet);
    return optionen;
}
