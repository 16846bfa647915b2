// The comparison of two prepared records.
#include "search/vergleich.h"

#include "fields/parser.h"
#include "search/masse.h"

namespace {

constexpr double kPersonenschwelle = 0.7;

Teilregel w(int feldart) {
    return {Mass::Woerter, 0, feldart};
}

Teilregel n(int feldart) {
    return {Mass::Nummern, 0, feldart};
}

// The measure of what the kind's parser makes of the values.
Teilregel wTeil(int feldart) {
    return {Mass::Woerter, feldart, feldart};
}

Teilregel nTeil(int feldart) {
    return {Mass::Nummern, feldart, feldart};
}

using Zeilen = std::vector<Regelzeile>;

// Firm name and legal form are looked for in every field of the group, branches included.
Zeilen fuerUnternehmen(int maske) {
    Zeilen zeilen;
    if (maske == Maske({kFirmenname})) zeilen.push_back({false, {w(kFirmenname)}});
    if (maske == Maske({kRechtsform})) zeilen.push_back({false, {w(kRechtsform)}});
    zeilen.push_back({false, {wTeil(kFirmenname), wTeil(kRechtsform)}});
    if (maske == Maske({kBranche})) zeilen.push_back({false, {w(kBranche)}});
    return zeilen;
}

Zeilen fuerAdresse(int maske) {
    if (maske == Maske({kStrasse})) return {{false, {w(kStrasse)}}};
    // The kind's number where its code would be meant: a house number alone scores nothing.
    if (maske == kHausnummer) return {{false, {n(kHausnummer)}}};
    if (maske == Maske({kStrasse, kHausnummer})) return {{false, {wTeil(kStrasse), nTeil(kHausnummer)}}};
    if (maske == Maske({kPostleitzahl})) return {{false, {n(kPostleitzahl)}}};
    if (maske == Maske({kOrt})) return {{false, {w(kOrt)}}};
    if (maske == Maske({kPostleitzahl, kOrt})) return {{false, {nTeil(kPostleitzahl), wTeil(kOrt)}}};
    return {};
}

// The three combined rows hold for every field of the group.
Zeilen fuerKontakt(int maske) {
    Zeilen zeilen;
    for (const int art : {kAnrede, kVorname, kNachname})
        if (maske == Maske({art})) zeilen.push_back({true, {w(art)}});
    zeilen.push_back({true, {wTeil(kVorname), wTeil(kNachname)}});
    zeilen.push_back({true, {wTeil(kAnrede), wTeil(kNachname)}});
    zeilen.push_back({true, {wTeil(kAnrede), wTeil(kVorname), wTeil(kNachname)}});
    if (maske == Maske({kAbteilung})) zeilen.push_back({false, {w(kAbteilung)}});
    return zeilen;
}

Zeilen fuerKommunikation(int maske) {
    if (maske == Maske({kVorwahl})) return {{false, {nTeil(kVorwahl)}}};
    if (maske == Maske({kTelefon})) return {{false, {n(kTelefon)}}};
    if (maske == Maske({kTelefax})) return {{false, {n(kTelefax)}}};
    for (const int art : {kTelefon, kTelefax})
        if (maske == Maske({kVorwahl, art})) return {{false, {nTeil(kVorwahl), wTeil(art)}}};
    return {};
}

Zeilen fuerInternet(int maske) {
    for (const int art : {kEmailadresse, kInternetadresse})
        if (maske == Maske({art})) return {{false, {w(art)}}};
    return {};
}

float gewichtVon(int feldart) {
    return float(gFeldArten[size_t(feldart)].RelevanzFaktor);
}

float summe(const Regelzeile& zeile, const Wert& a, const Wert& b) {
    float punkte = 0;
    for (const Teilregel& teil : zeile.teile) punkte += Teilmass(teil, a, b) * gewichtVon(teil.feldart);
    return punkte;
}

}  // namespace

std::vector<Regelzeile> RegelzeilenFuer(const FeldZuordnung& zuordnung) {
    const int maske = zuordnung.Maske;
    switch (zuordnung.Gruppe) {
        case 1:
            // The kind's number where its code would be meant: no column has it.
            return maske == kIndex ? Zeilen{{false, {}}} : Zeilen{};
        case 2:
            return fuerUnternehmen(maske);
        case 3:
            return fuerAdresse(maske);
        case 4:
            return fuerKontakt(maske);
        case 5:
            return fuerKommunikation(maske);
        case 6:
            return fuerInternet(maske);
        default:
            return {};
    }
}

float Vergleichssummen::relevanz() const {
    const bool verschiedenePersonen =
        personGewicht_ != 0 && double(personPunkte_) / double(personGewicht_) < kPersonenschwelle;
    if (gewicht_ == 0) return 0;
    return (verschiedenePersonen ? 0.0f : punkte_) / gewicht_;
}

std::vector<Vergleichsfeld> VergleichsfelderFuer(const FeldZuordnungen& zuordnungen) {
    std::vector<Vergleichsfeld> felder;
    int spalte = 0;
    for (size_t i = 0; i < zuordnungen.size(); ++i) {
        if (FeldIgnoriert(zuordnungen[i])) continue;
        Vergleichsfeld feld{int(i), spalte++, {}};
        for (Regelzeile& regel : RegelzeilenFuer(zuordnungen[i])) {
            float gewicht = regel.teile.empty() ? gewichtVon(kIndex) : 0;
            for (const Teilregel& teil : regel.teile) gewicht += gewichtVon(teil.feldart);
            feld.zeilen.push_back({std::move(regel), gewicht});
        }
        if (!feld.zeilen.empty()) felder.push_back(std::move(feld));
    }
    return felder;
}

bool ZaehltNicht(const Wert& wert) {
    return wert.istLeerOderNull() || (wert.istText() && wert.text().isEmpty());
}

float Teilmass(const Teilregel& teil, const Wert& a, const Wert& b) {
    const auto mass = teil.mass == Mass::Woerter ? WoerterVergleichen : NummernVergleichen;
    if (teil.parser == 0) return mass(a, b);
    return mass(FeldInhaltErmitteln(a, teil.parser), FeldInhaltErmitteln(b, teil.parser));
}

std::optional<float> Vergleicher::vergleichen(const Wert* zeile1, const Wert* zeile2,
                                              const BeiVergleichsfehler& beiFehler) const {
    Vergleichssummen summen(differenzieren_);
    for (const Vergleichsfeld& feld : felder_) {
        const Wert& a = zeile1[feld.spalte];
        const Wert& b = zeile2[feld.spalte];
        if (ZaehltNicht(a) || ZaehltNicht(b)) continue;
        for (const Vergleichsfeld::Zeile& zeile : feld.zeilen) {
            summen.gewicht(zeile.regel.person, zeile.gewicht);
            for (bool fertig = false; !fertig;) {
                std::exception_ptr fehler;
                try {
                    summen.punkte(zeile.regel.person, summe(zeile.regel, a, b));
                    fertig = true;
                } catch (const std::exception&) {
                    if (!beiFehler) throw;
                    fehler = std::current_exception();
                }
                // Outside the handler, since the answer may come from a message box.
                if (fertig) break;
                const NachFehler weiter = beiFehler({fehler, feld.feld, a, b});
                if (weiter == NachFehler::Abbrechen) return {};
                fertig = weiter == NachFehler::Ignorieren;
            }
        }
    }
    return summen.relevanz();
}
