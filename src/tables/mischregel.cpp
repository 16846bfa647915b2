// What a field of the first table takes from a record of the second one.
#include "tables/mischregel.h"

#include <vector>

#include "base/text.h"
#include "engine/typen.h"
#include "fields/parser.h"

namespace {

// The source as it stands.
Wert unveraendert(const Wert& wert) {
    return wert;
}

Wert vornameOderRohwert(const Wert& wert) {
    const Wert vorname = VornameErmitteln(wert);
    return vorname.istLeerOderNull() ? wert : vorname;
}

struct Teil {
    int art;
    Wert (*parser)(const Wert&);
};

struct Mischregel {
    std::vector<Teil> teile;
    const char16_t* verbindung = u" ";
};

const std::vector<Mischregel>& mischregeln() {
    static const std::vector<Mischregel> regeln{
        {{{kFirmenname, FirmennameErmitteln}}},
        {{{kRechtsform, RechtsformErmitteln}}},
        {{{kFirmenname, FirmennameErmitteln}, {kRechtsform, RechtsformErmitteln}}},
        {{{kBranche, unveraendert}}},
        {{{kStrasse, StrasseErmitteln}}},
        {{{kHausnummer, HausnummerErmitteln}}},
        {{{kStrasse, StrasseErmitteln}, {kHausnummer, HausnummerErmitteln}}},
        {{{kPostleitzahl, PostleitzahlErmitteln}}},
        {{{kOrt, OrtErmitteln}}},
        {{{kPostleitzahl, PostleitzahlErmitteln}, {kOrt, OrtErmitteln}}},
        {{{kAnrede, AnredeErmitteln}}},
        {{{kVorname, vornameOderRohwert}}},
        {{{kNachname, NachnameErmitteln}}},
        {{{kVorname, VornameErmitteln}, {kNachname, NachnameErmitteln}}},
        {{{kAnrede, AnredeErmitteln}, {kNachname, NachnameErmitteln}}},
        {{{kAnrede, AnredeErmitteln}, {kVorname, VornameErmitteln}, {kNachname, NachnameErmitteln}}},
        {{{kAbteilung, unveraendert}}},
        {{{kVorwahl, VorwahlErmitteln}}},
        {{{kTelefon, TelefonnummerErmitteln}}},
        {{{kTelefax, TelefonnummerErmitteln}}},
        {{{kVorwahl, VorwahlErmitteln}, {kTelefon, TelefonnummerErmitteln}}, u" / "},
        {{{kVorwahl, VorwahlErmitteln}, {kTelefax, TelefonnummerErmitteln}}, u" / "},
        {{{kEmailadresse, unveraendert}}},
        {{{kInternetadresse, unveraendert}}}};
    return regeln;
}

bool giltFuer(const Mischregel& regel, const FeldZuordnung& zuordnung) {
    if (FeldGruppeVon(regel.teile.front().art) != zuordnung.Gruppe) return false;
    std::vector<int> arten;
    for (const Teil& teil : regel.teile) arten.push_back(teil.art);
    return Maske(arten) == zuordnung.Maske;
}

// A Null makes the whole Null; Empty counts as "".
Wert verbunden(const Wert& bisher, const QString& verbindung, const Wert& naechster) {
    if (bisher.istNull() || naechster.istNull()) return Wert::null();
    return Wert(Trim(bisher.alsText() + verbindung + naechster.alsText()));
}

Wert anwenden(const Mischregel& regel, const Artquelle& quelle) {
    const QString verbindung = QString::fromUtf16(regel.verbindung);
    Wert wert;
    bool erster = true;
    for (const Teil& teil : regel.teile) {
        if (const Wert* roh = quelle(teil.art)) {
            const Wert ermittelt = teil.parser(*roh);
            wert = erster ? ermittelt : verbunden(wert, verbindung, ermittelt);
        }
        erster = false;
    }
    return wert;
}

}  // namespace

Wert MischWert(const FeldZuordnung& zuordnung, const Artquelle& quelle) {
    for (const Mischregel& regel : mischregeln())
        if (giltFuer(regel, zuordnung)) return anwenden(regel, quelle);
    return Wert();
}

bool MischfeldAusgelassen(int typ, int attribute) {
    const bool trotzdem =
        typ == dao::dbBoolean || typ == dao::dbCurrency || typ == dao::dbDate || typ == dao::dbTime;
    return (attribute & dao::dbAutoIncrField) && !trotzdem;
}
