// The rule table of the junk search.
#include "junk/muellregel.h"

#include "base/text.h"
#include "fields/parser.h"

namespace {

constexpr int kLaengsteNurVorwahl = 6;  // characters of a phone value that is an area code and no number

bool gesetzt(int kaestchen) {
    return kaestchen == 1;
}

// One value under examination.
class Pruefling {
  public:
    Pruefling(const FeldZuordnung& zuordnung, const Wert& wert) : zuordnung_(zuordnung), wert_(wert) {}

    QStringList anmerkungen() const { return anmerkungen_; }

    void teilFehlt(int art, Wert (*parser)(const Wert&), const char16_t* kein) {
        wenn(ist(art) && parser(wert_).istLeerOderNull(), kein);
    }
    // A raw value that is missing, or reads as a number, or lacks a character that it must have.
    void rohwert(int art, const char16_t* kein, const char16_t* unvernuenftig, QChar noetig = QChar()) {
        if (!ist(art)) return;
        if (wert_.istLeerOderNull()) return melden(kein);
        const bool fehlt = !noetig.isNull() && !wert_.alsText().contains(noetig);
        wenn(LiestSichAlsZahl(wert_) || fehlt, unvernuenftig);
    }
    // A part that is missing, or a whole value that reads as a number.
    void teil(int art, Wert (*parser)(const Wert&), const char16_t* kein, const char16_t* unvernuenftig) {
        if (!ist(art)) return;
        if (parser(wert_).istLeerOderNull()) return melden(kein);
        wenn(LiestSichAlsZahl(wert_), unvernuenftig);
    }
    void index() { wenn(wert_.istLeerOderNull(), u" k. Index;"); }
    // Tested only where the field holds nothing else.
    void abteilung() {
        wenn(zuordnung_.Maske == Maske({kAbteilung}) && wert_.istLeerOderNull(), u" k. Abteilung;");
    }
    // A long value behind an area code counts as a number.
    void telefon() {
        if (!ist(kTelefon) || !TelefonnummerErmitteln(wert_).istLeerOderNull()) return;
        const bool lang = wert_.alsText().size() > kLaengsteNurVorwahl;
        wenn(VorwahlErmitteln(wert_).istLeerOderNull() || !lang, u" k. Telefonnr.;");
    }

  private:
    bool ist(int art) const { return FeldartEnthalten(zuordnung_.Maske, art); }
    void wenn(bool befund, const char16_t* text) {
        if (befund) melden(text);
    }
    void melden(const char16_t* text) { anmerkungen_ << QString::fromUtf16(text); }

    const FeldZuordnung& zuordnung_;
    const Wert& wert_;
    QStringList anmerkungen_;
};

void unternehmen(Pruefling& p, const Muelloptionen& o) {
    if (gesetzt(o.firmenname)) {
        p.rohwert(kFirmenname, u" k. Firmenn.;", u" Firmenn. unvernünftig;");
        if (gesetzt(o.rechtsform)) p.teilFehlt(kRechtsform, RechtsformErmitteln, u" k. Rechtsform;");
    }
    if (gesetzt(o.branche)) p.rohwert(kBranche, u" k. Branche;", u" Branche unvernünftig;");
}

void adresse(Pruefling& p, const Muelloptionen& o) {
    if (!gesetzt(o.postalisch)) return;
    p.teil(kStrasse, StrasseErmitteln, u" k. Straße;", u" Straße unvernünftig;");
    if (gesetzt(o.hausnummer)) p.teilFehlt(kHausnummer, HausnummerErmitteln, u" k. Hausnr.;");
    p.teilFehlt(kPostleitzahl, PostleitzahlErmitteln, u" k. PLZ;");
    p.teil(kOrt, OrtErmitteln, u" k. Ort;", u" Ort unvernünftig;");
}

void kontakt(Pruefling& p, const Muelloptionen& o) {
    if (!gesetzt(o.kontakt)) return;
    if (gesetzt(o.anrede)) p.teilFehlt(kAnrede, AnredeErmitteln, u" k. Anrede;");
    if (gesetzt(o.vorname)) p.teilFehlt(kVorname, VornameErmitteln, u" k. Vorname;");
    if (gesetzt(o.nachname)) p.teilFehlt(kNachname, NachnameErmitteln, u" k. Nachname;");
    if (gesetzt(o.abteilung)) p.abteilung();
}

void kommunikation(Pruefling& p, const Muelloptionen& o) {
    if (!gesetzt(o.telefon)) return;
    p.teilFehlt(kVorwahl, VorwahlErmitteln, u" k. Vorwahl;");
    p.telefon();
    if (gesetzt(o.fax)) p.teilFehlt(kTelefax, TelefonnummerErmitteln, u" k. Faxnr.;");
}

void internet(Pruefling& p, const Muelloptionen& o) {
    if (gesetzt(o.email)) p.rohwert(kEmailadresse, u" k. Emailadr.;", u" Emailadr. unvernünftig;", u'@');
    if (gesetzt(o.internet))
        p.rohwert(kInternetadresse, u" k. Internetadr.;", u" Internetadr. unvernünftig;", u'.');
}

}  // namespace

QStringList MuellAnmerkungen(const FeldZuordnung& zuordnung, const Wert& wert,
                             const Muelloptionen& optionen) {
    Pruefling pruefling(zuordnung, wert);
    switch (zuordnung.Gruppe) {
        case 1:
            pruefling.index();
            break;
        case 2:
            unternehmen(pruefling, optionen);
            break;
        case 3:
            adresse(pruefling, optionen);
            break;
        case 4:
            kontakt(pruefling, optionen);
            break;
        case 5:
            kommunikation(pruefling, optionen);
            break;
        case 6:
            internet(pruefling, optionen);
            break;
        default:
            break;
    }
    return pruefling.anmerkungen();
}
