// The distinct values of one field.
#include "search/wertvorrat.h"

#include <algorithm>
#include <cmath>

#include "base/text.h"
#include "fields/parser.h"

namespace {

constexpr int kNichts = -1;
// What rounding in single precision may add to the score of a field, and more.
constexpr int kSpielraum = 1;

}  // namespace

Wertvorrat::Wertvorrat(Vergleichsfeld feld, bool differenzieren, float schwelle, double gesamtgewicht)
    : feld_(std::move(feld)), schwelle_(double(schwelle)), einheit_(kGewinneinheit / gesamtgewicht) {
    for (const Vergleichsfeld::Zeile& zeile : feld_.zeilen) {
        Zeile neu{zeile.regel.person, zeile.gewicht, {}};
        const bool zaehlt = !(zeile.regel.person && differenzieren);
        for (const Teilregel& regel : zeile.regel.teile) {
            const size_t teil = teilSuchen(regel);
            const float gewicht = float(gFeldArten[size_t(regel.feldart)].RelevanzFaktor);
            neu.produkte.push_back({teil, gewicht});
            if (zaehlt) masse_[teil].hoechstens += double(gewicht);
        }
        if (zaehlt) gewicht_ += double(zeile.gewicht);
        zeilen_.push_back(std::move(neu));
    }
    ohne_ = gerundet(0);
    for (size_t teil = 0; teil < masse_.size(); ++teil) masse_[teil].ohne = teilgewinn(teil, 0);
    leeren();
}

size_t Wertvorrat::teilSuchen(const Teilregel& regel) {
    for (size_t i = 0; i < masse_.size(); ++i)
        if (masse_[i].mass == regel.mass && masse_[i].parser == regel.parser) return i;
    masse_.push_back({regel.mass, regel.parser, 0});
    return masse_.size() - 1;
}

void Wertvorrat::leeren() {
    nummern_.leeren();
    zeichen_.clear();
    ende_.assign(1, 0);
    arten_.assign(1, Wert::Art::Leer);
    teile_.assign(masse_.size(), kNichts);  // the missing value
    bestens_.assign(1, 0);
}

int Wertvorrat::nummer(const Wert& wert, Textvorrat& texte) {
    if (ZaehltNicht(wert)) return 0;
    const QString zahl = wert.istText() ? QString() : wert.alsText();
    const QStringView text = wert.istText() ? wert.text() : zahl;
    const std::u16string_view zeichen(text.utf16(), size_t(text.size()));
    const quint32 streuwert = Streuwert(zeichen);
    const int fund = nummern_.suchen(streuwert, [&](int nummer) {
        const size_t anfang = ende_[size_t(nummer) - 1];
        return arten_[size_t(nummer)] == wert.art() &&
               zeichen == std::u16string_view(zeichen_.data() + anfang, ende_[size_t(nummer)] - anfang);
    });
    if (fund >= 0) return fund;
    zeichen_.insert(zeichen_.end(), zeichen.begin(), zeichen.end());
    ende_.push_back(zeichen_.size());
    arten_.push_back(wert.art());
    const int nummer = neu(wert, texte);
    nummern_.eintragen(streuwert, nummer);
    return nummer;
}

// Takes the value apart.
int Wertvorrat::neu(const Wert& wert, Textvorrat& texte) {
    double punkte = 0;
    for (const Teil& teil : masse_) {
        const int text = teilVon(teil, wert, texte);
        teile_.push_back(text);
        if (text != kNichts) punkte += teil.hoechstens;
    }
    bestens_.push_back(gerundet(punkte));
    return int(bestens_.size()) - 1;
}

int Wertvorrat::teilVon(const Teil& teil, const Wert& wert, Textvorrat& texte) const {
    const Wert inhalt = teil.parser == 0 ? wert : FeldInhaltErmitteln(wert, teil.parser);
    const bool misst = teil.mass == Mass::Woerter ? !inhalt.istLeerOderNull() : LiestSichAlsZahl(inhalt);
    if (!misst) return kNichts;
    return texte.nummer(inhalt.istText() ? inhalt.text() : inhalt.alsText());
}

float Wertvorrat::mass(size_t teil, int a, int b, const Textvorrat& texte) const {
    return textmass(teil, teiltext(a, teil), teiltext(b, teil), texte);
}

float Wertvorrat::textmass(size_t teil, int textA, int textB, const Textvorrat& texte) const {
    if (textA == kNichts || textB == kNichts) return 0;
    return masse_[teil].mass == Mass::Woerter ? texte.woerterVergleichen(textA, textB)
                                              : texte.nummernVergleichen(textA, textB);
}

int Wertvorrat::gerundet(double punkte, double gewicht) const {
    return int(std::floor((punkte - schwelle_ * gewicht) * einheit_)) + 1 + kSpielraum;
}

// Most pairs have nothing in common.
int Wertvorrat::teilgewinn(size_t teil, int textA, int textB, const Textvorrat& texte) const {
    const float mass = textmass(teil, textA, textB, texte);
    return mass == 0 ? masse_[teil].ohne : teilgewinn(teil, double(mass));
}

int Wertvorrat::gewinn(int a, int b, const Textvorrat& texte) const {
    double punkte = 0;
    for (size_t teil = 0; teil < masse_.size(); ++teil)
        if (masse_[teil].hoechstens > 0) punkte += double(mass(teil, a, b, texte)) * masse_[teil].hoechstens;
    return punkte == 0 ? ohne_ : gerundet(punkte);
}

void Wertvorrat::summieren(Vergleichssummen& summen, int a, int b, const Textvorrat& texte) const {
    for (const Zeile& zeile : zeilen_) {
        summen.gewicht(zeile.person, zeile.gewicht);
        float punkte = 0;
        for (const Produkt& produkt : zeile.produkte)
            punkte += mass(produkt.teil, a, b, texte) * produkt.gewicht;
        summen.punkte(zeile.person, punkte);
    }
}
