// Value parsers.
#include "fields/parser.h"

#include "operationen.h"

void ParserAnmelden(Operationen& operationen) {
    struct Eintrag {
        const char* name;
        Wert (*ermitteln)(const Wert&);
    };
    const Eintrag parser[] = {
        {"FirmennameErmitteln", FirmennameErmitteln},
        {"RechtsformErmitteln", RechtsformErmitteln},
        {"StrasseErmitteln", StrasseErmitteln},
        {"HausnummerErmitteln", HausnummerErmitteln},
        {"PostleitzahlErmitteln", PostleitzahlErmitteln},
        {"OrtErmitteln", OrtErmitteln},
        {"AnredeErmitteln", AnredeErmitteln},
        {"VornameErmitteln", VornameErmitteln},
        {"NachnameErmitteln", NachnameErmitteln},
        {"VorwahlErmitteln", VorwahlErmitteln},
        {"TelefonnummerErmitteln", TelefonnummerErmitteln},
        {"LandesvorwahlErmitteln", LandesvorwahlErmitteln},
        {"AnredeFormErmitteln", AnredeFormErmitteln},
        {"TitelErmitteln", TitelErmitteln},
    };
    for (const Eintrag& p : parser)
        operationen[p.name] = [ermitteln = p.ermitteln](const Argumente& a) {
            return JsonAusWert(ermitteln(a.wert(0)));
        };
    operationen["FeldInhaltErmitteln"] = [](const Argumente& a) {
        return JsonAusWert(FeldInhaltErmitteln(a.wert(0), a.ganzzahl(1)));
    };
}
