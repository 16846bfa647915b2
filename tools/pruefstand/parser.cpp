// Value parsers.
#include "fields/parser.h"

#include <utility>

#include "operationen.h"

void ParserAnmelden(Operationen& operationen) {
    using Parser = Wert (*)(const Wert&);
    const std::pair<const char*, Parser> parser[] = {
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
    for (const auto& [name, ermitteln] : parser)
        operationen[name] = [ermitteln](const Argumente& a) { return JsonAusWert(ermitteln(a.wert(0))); };
    operationen["FeldInhaltErmitteln"] = [](const Argumente& a) {
        return JsonAusWert(FeldInhaltErmitteln(a.wert(0), int(a.ganzzahl(1))));
    };
}
