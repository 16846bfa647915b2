// The proposal of field kinds: plain substring tests on the field's name, in stages.
#include "fields/vorschlag.h"

#include <algorithm>
#include <vector>

#include "base/text.h"
#include "fields/parser.h"

namespace {

constexpr int kStichproben = 10;

using Zufallswert = std::function<QString()>;

// What the tests of one field work on: its folded name, the draw of a value, and the kinds found so far.
class Pruefling {
  public:
    Pruefling(const QString& feldname, const Zufallswert& zufallswert)
        : name_(KleinZeichenweise(feldname)), zufallswert_(zufallswert) {}

    bool heisst(QStringView name) const { return name_ == name; }
    bool enthaelt(std::initializer_list<QStringView> texte) const {
        return std::any_of(texte.begin(), texte.end(),
                           [&](QStringView text) { return name_.contains(text); });
    }
    void dazu(std::initializer_list<int> feldarten) { maske_ = qint16(maske_ | Maske(feldarten)); }
    qint16 maske() const { return maske_; }

    // True as soon as one of ten values fits.
    template <typename Test>
    bool stichprobe(Test test) const {
        for (int i = 0; i < kStichproben; ++i)
            if (test(zufallswert_())) return true;
        return false;
    }
    // How many of ten values fit; all ten are drawn.
    template <typename Test>
    int stichprobenZahl(Test test) const {
        int anzahl = 0;
        for (int i = 0; i < kStichproben; ++i) anzahl += test(zufallswert_()) ? 1 : 0;
        return anzahl;
    }

  private:
    QString name_;
    const Zufallswert& zufallswert_;
    qint16 maske_ = 0;
};

void indexPruefen(Pruefling& feld) {
    if (feld.enthaelt({u"index", u"kundennummer", u"id", u"kunden-", u"code", u"kundennr"}) ||
        (feld.enthaelt({u"nummer"}) && !feld.enthaelt({u"haus", u"telefon", u"fax"})))
        feld.dazu({kIndex});
}

void unternehmenPruefen(Pruefling& feld) {
    if (feld.enthaelt({u"firm", u"unternehmen", u"betrieb", u"name"}) &&
        !feld.enthaelt({u"vorname", u"nachname", u"noname", u"kunde"}))
        feld.dazu({kFirmenname, kRechtsform});
    if (feld.enthaelt({u"branche"})) feld.dazu({kBranche});
    if (feld.enthaelt({u"recht", u"sform"})) feld.dazu({kRechtsform});
}

void adressePruefen(Pruefling& feld) {
    if (feld.enthaelt({u"straße", u"str.", u"anschrift", u"strasse"})) {
        feld.dazu({kStrasse});
        if (feld.stichprobe([](const QString& wert) { return !HausnummerErmitteln(Wert(wert)).istLeer(); }))
            feld.dazu({kHausnummer});
    }
    if (feld.enthaelt({u"haus"})) feld.dazu({kHausnummer});
    if (feld.enthaelt({u"plz", u"postleit"})) feld.dazu({kPostleitzahl});
    if (feld.enthaelt({u"ort"})) feld.dazu({kOrt});
}

void kontaktPruefen(Pruefling& feld) {
    if (feld.enthaelt({u"anrede", u"titel"})) feld.dazu({kAnrede});
    if (feld.enthaelt({u"vorname"})) feld.dazu({kVorname});
    if (feld.enthaelt({u"nachname"})) feld.dazu({kNachname});
    if (feld.enthaelt({u"ansprech", u"name"}) && !feld.enthaelt({u"vorname", u"noname"})) {
        feld.dazu({kNachname});
        if (feld.stichprobe([](const QString& wert) { return wert.contains(u' '); }))
            feld.dazu({kAnrede, kVorname});
    }
    if (feld.enthaelt({u"kontakt"})) feld.dazu({kAnrede, kVorname, kNachname});
    if (feld.enthaelt({u"abteilung", u"position"})) feld.dazu({kAbteilung});
}

// A majority of long values means that the area code is in the field.
void vorwahlSuchen(Pruefling& feld) {
    constexpr qsizetype kLang = 9;
    if (feld.stichprobenZahl([](const QString& wert) { return wert.size() > kLang; }) > kStichproben / 2)
        feld.dazu({kVorwahl});
}

void kommunikationPruefen(Pruefling& feld) {
    if (feld.enthaelt({u"vorwahl"})) feld.dazu({kVorwahl});
    if (feld.enthaelt({u"durchwahl"})) feld.dazu({kTelefon});
    if (feld.enthaelt({u"telefon", u"phon"}) || feld.heisst(u"tel")) {
        feld.dazu({kTelefon});
        vorwahlSuchen(feld);
    }
    if (feld.enthaelt({u"fax"})) {
        feld.dazu({kTelefax});
        vorwahlSuchen(feld);
    }
}

void internetPruefen(Pruefling& feld) {
    if (feld.enthaelt({u"mail"})) feld.dazu({kEmailadresse});
    if (feld.enthaelt({u"internet", u"web"})) feld.dazu({kInternetadresse});
}

// The stages in their order; the first one that finds a kind ends the field. The kinds stand as the label has
// them.
struct Stufe {
    qint16 gruppe;
    void (*pruefen)(Pruefling&);
    std::vector<int> reihenfolge;
};

const std::vector<Stufe>& stufen() {
    static const std::vector<Stufe> alle = {
        {1, indexPruefen, {kIndex}},
        {2, unternehmenPruefen, {kFirmenname, kBranche, kRechtsform}},
        {3, adressePruefen, {kStrasse, kHausnummer, kPostleitzahl, kOrt}},
        {4, kontaktPruefen, {kAnrede, kVorname, kNachname, kAbteilung}},
        {5, kommunikationPruefen, {kVorwahl, kTelefon, kTelefax}},
        {6, internetPruefen, {kEmailadresse, kInternetadresse}},
    };
    return alle;
}

QString beschriftung(qint16 maske, std::vector<int> feldarten) {
    std::erase_if(feldarten, [&](int feldart) { return !FeldartEnthalten(maske, feldart); });
    return FeldartBeschriftung(feldarten);
}

}  // namespace

Feldvorschlag FeldArtVorschlagen(const QString& feldname, const std::function<QString()>& zufallswert) {
    Pruefling feld(feldname, zufallswert);
    for (const Stufe& stufe : stufen()) {
        stufe.pruefen(feld);
        if (feld.maske() != 0)
            return {{stufe.gruppe, feld.maske()}, beschriftung(feld.maske(), stufe.reihenfolge)};
    }
    return {{0, Maske({kIgnorieren})}, FeldartBeschriftung({kIgnorieren})};
}
