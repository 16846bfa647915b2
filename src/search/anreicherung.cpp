// The best of a group.
#include "search/anreicherung.h"

#include "base/text.h"
#include "engine/typen.h"
#include "fields/parser.h"

namespace {

void laengerenBehalten(Wert& bestes, const Wert& wert) {
    if (bestes.istLeer() || wert.alsText().size() > bestes.alsText().size()) bestes = wert;
}

Wert teil(const Gruppenbestes& b, int feldart) {
    return b.teil[size_t(feldart)];
}

// Joined as plain text and trimmed: two missing parts give "" or the bare slash, and these are texts.
Wert verbunden(const Wert& links, const QString& trenner, const Wert& rechts) {
    return Wert(Trim(links.alsText() + trenner + rechts.alsText()));
}

QString blank() {
    return QStringLiteral(" ");
}

Wert ausUnternehmen(const Gruppenbestes& b, int maske, const Wert& ganz) {
    // Firm name and legal form take the whole value, alone as together.
    return maske == Maske({kBranche}) ? teil(b, kBranche) : ganz;
}

Wert ausAdresse(const Gruppenbestes& b, int maske) {
    if (maske == Maske({kStrasse})) return teil(b, kStrasse);
    // The kind's number, where its code would be meant: no column has it, so a house number alone stays
    // whole.
    if (maske == kHausnummer) return teil(b, kHausnummer);
    if (maske == Maske({kStrasse, kHausnummer}))
        return verbunden(teil(b, kStrasse), blank(), teil(b, kHausnummer));
    if (maske == Maske({kPostleitzahl})) return teil(b, kPostleitzahl);
    if (maske == Maske({kOrt})) return teil(b, kOrt);
    if (maske == Maske({kPostleitzahl, kOrt}))
        return verbunden(teil(b, kPostleitzahl), blank(), teil(b, kOrt));
    return Wert();
}

Wert ausKontakt(const Gruppenbestes& b, int maske) {
    const Wert anrede = teil(b, kAnrede);
    const Wert vorname = teil(b, kVorname);
    const Wert nachname = teil(b, kNachname);
    if (maske == Maske({kAnrede})) return anrede;
    if (maske == Maske({kVorname})) return vorname;
    if (maske == Maske({kNachname})) return nachname;
    if (maske == Maske({kVorname, kNachname})) return verbunden(vorname, blank(), nachname);
    if (maske == Maske({kAnrede, kNachname})) return verbunden(anrede, blank(), nachname);
    if (maske == Maske({kAnrede, kVorname, kNachname}))
        return verbunden(verbunden(anrede, blank(), vorname), blank(), nachname);
    if (maske == Maske({kAbteilung})) return teil(b, kAbteilung);
    return Wert();
}

Wert ausKommunikation(const Gruppenbestes& b, int maske) {
    const QString trenner = QStringLiteral(" / ");
    if (maske == Maske({kVorwahl})) return teil(b, kVorwahl);
    if (maske == Maske({kTelefon})) return teil(b, kTelefon);
    if (maske == Maske({kTelefax})) return teil(b, kTelefax);
    if (maske == Maske({kVorwahl, kTelefon})) return verbunden(teil(b, kVorwahl), trenner, teil(b, kTelefon));
    if (maske == Maske({kVorwahl, kTelefax})) return verbunden(teil(b, kVorwahl), trenner, teil(b, kTelefax));
    return Wert();
}

Wert ausInternet(const Gruppenbestes& b, int maske) {
    if (maske == Maske({kEmailadresse})) return teil(b, kEmailadresse);
    if (maske == Maske({kInternetadresse})) return teil(b, kInternetadresse);
    return Wert();
}

Wert zusammengesetzt(const Gruppenbestes& b, const Wert& ganz, const FeldZuordnung& zuordnung) {
    switch (zuordnung.Gruppe) {
        case 0:
            return ganz;
        case 2:
            return ausUnternehmen(b, zuordnung.Maske, ganz);
        case 3:
            return ausAdresse(b, zuordnung.Maske);
        case 4:
            return ausKontakt(b, zuordnung.Maske);
        case 5:
            return ausKommunikation(b, zuordnung.Maske);
        case 6:
            return ausInternet(b, zuordnung.Maske);
        default:
            return Wert();
    }
}

}  // namespace

FeldZuArt FelderZuArtenSuchen(const FeldZuordnungen& zuordnungen) {
    FeldZuArt felder;
    felder.fill(-1);
    for (int art = kErsteFeldart; art <= kLetzteFeldart; ++art)
        felder[size_t(art)] = FeldMitArtFinden(zuordnungen, art);
    return felder;
}

void WertSammeln(Wert& bestes, const Wert& wert, int typ) {
    if (wert.istNull()) return;
    if (typ == dao::dbText)
        laengerenBehalten(bestes, wert);
    else if (bestes.istLeer() || wertVergleichen(wert, bestes) > 0)
        bestes = wert;
}

void TeilSammeln(Gruppenbestes& bestes, int feldart, const Wert& wert) {
    if (feldart == kAnrede) {
        laengerenBehalten(bestes.anredeForm, AnredeFormErmitteln(wert));
        laengerenBehalten(bestes.titel, TitelErmitteln(wert));
    } else {
        laengerenBehalten(bestes.teil[size_t(feldart)], FeldInhaltErmitteln(wert, feldart));
    }
}

void AnredeZusammensetzen(Gruppenbestes& bestes) {
    bestes.teil[kAnrede] = verbunden(bestes.anredeForm, blank(), bestes.titel);
}

Wert AngereicherterWert(const Gruppenbestes& bestes, size_t spalte, const FeldZuordnung& zuordnung) {
    const Wert& ganz = bestes.ganz[spalte];
    const Wert wert = zusammengesetzt(bestes, ganz, zuordnung);
    return wert.istLeerOderNull() ? ganz : wert;
}
