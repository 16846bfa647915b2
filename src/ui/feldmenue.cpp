// The popup menu of the field kinds.
#include "ui/feldmenue.h"

#include "fields/feldarten.h"
#include "run/meldungen.h"
#include "ui/bausteine.h"

namespace {

struct Eintrag {
    QString aufschrift;
    Feldarten arten;
};

struct Untermenue {
    QString name;
    QString aufschrift;
    std::vector<Eintrag> eintraege;
};

const std::vector<Eintrag>& hauptEintraege() {
    static const std::vector<Eintrag> eintraege{{QStringLiteral("Ignorieren"), {kIgnorieren}},
                                                {QStringLiteral("Index"), {kIndex}}};
    return eintraege;
}

const std::vector<Untermenue>& untermenues() {
    static const std::vector<Untermenue> menues{
        {QStringLiteral("smnUnternehmen"),
         QStringLiteral("Unternehmen"),
         {{QStringLiteral("Firmenname"), {kFirmenname}},
          {QStringLiteral("Rechtsform"), {kRechtsform}},
          {QStringLiteral("Firmenname+Rechtsform"), {kFirmenname, kRechtsform}},
          {QStringLiteral("Branche"), {kBranche}}}},
        {QStringLiteral("smnAdresse"),
         QStringLiteral("Adresse"),
         {{QStringLiteral("Straße"), {kStrasse}},
          {QStringLiteral("Hausnummer"), {kHausnummer}},
          {QStringLiteral("Straße+Hausnummer"), {kStrasse, kHausnummer}},
          {QStringLiteral("Postleitzahl"), {kPostleitzahl}},
          {QStringLiteral("Ort"), {kOrt}},
          {QStringLiteral("Postleitzahl+Ort"), {kPostleitzahl, kOrt}}}},
        {QStringLiteral("smnKontakt"),
         QStringLiteral("Kontakt"),
         {{QStringLiteral("Anrede"), {kAnrede}},
          {QStringLiteral("Vorname"), {kVorname}},
          {QStringLiteral("Nachname"), {kNachname}},
          {QStringLiteral("Vorname+Nachname"), {kVorname, kNachname}},
          {QStringLiteral("Anrede+Nachname"), {kAnrede, kNachname}},
          {QStringLiteral("Anrede+Vorname+Nachname"), {kAnrede, kVorname, kNachname}},
          {QStringLiteral("Abteilung/Position"), {kAbteilung}}}},
        {QStringLiteral("smnKommunikation"),
         QStringLiteral("Kommunikation"),
         {{QStringLiteral("Vorwahl"), {kVorwahl}},
          {QStringLiteral("Telefon"), {kTelefon}},
          {QStringLiteral("Telefax"), {kTelefax}},
          {QStringLiteral("Vorwahl+Telefon"), {kVorwahl, kTelefon}},
          {QStringLiteral("Vorwahl+Telefax"), {kVorwahl, kTelefax}}}},
        {QStringLiteral("smnInternet"),
         QStringLiteral("Internet"),
         {{QStringLiteral("Emailadresse"), {kEmailadresse}},
          {QStringLiteral("Internetadresse"), {kInternetadresse}}}},
    };
    return menues;
}

void eintraegeAnlegen(QMenu* menue, const QString& name, const std::vector<Eintrag>& eintraege,
                      const std::function<void(const Feldarten&)>& gewaehlt) {
    for (size_t i = 0; i < eintraege.size(); ++i) {
        QAction* eintrag = menue->addAction(eintraege[i].aufschrift);
        eintrag->setObjectName(ElementName(name, int(i)));
        QObject::connect(eintrag, &QAction::triggered, menue,
                         [arten = eintraege[i].arten, gewaehlt] { Gesichert([&] { gewaehlt(arten); }); });
    }
}

}  // namespace

QMenu* FeldmenueErstellen(QWidget* eltern, const std::function<void(const Feldarten&)>& gewaehlt) {
    auto* menue = new QMenu(QStringLiteral("Feldarten"), eltern);
    menue->setObjectName(QStringLiteral("mnuFeldArten"));
    eintraegeAnlegen(menue, QStringLiteral("smnFeldArten"), hauptEintraege(), gewaehlt);
    for (const Untermenue& unter : untermenues()) {
        QMenu* untermenue = menue->addMenu(unter.aufschrift);
        untermenue->setObjectName(unter.name);
        eintraegeAnlegen(untermenue, unter.name, unter.eintraege, gewaehlt);
    }
    return menue;
}
