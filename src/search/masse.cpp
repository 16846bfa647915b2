// The two similarity measures of prepared values.
#include "search/masse.h"

#include <algorithm>

#include "base/fehler.h"
#include "base/text.h"

namespace {

struct Zaehler {
    int woerter = 0;
    int treffer = 0;
};

void zaehlen(Zaehler& zaehler, QStringView text, QStringView anderer) {
    WoerterBesuchen(text, [&](QStringView wort) {
        if (++zaehler.woerter > kMeisteWoerter) throw EngineFehler(kUeberlauf, QStringLiteral("Überlauf."));
        if (anderer.contains(wort)) ++zaehler.treffer;
    });
}

}  // namespace

float WoerterVergleichen(const Wert& a, const Wert& b) {
    if (a.istLeerOderNull() || b.istLeerOderNull()) return 0;
    const QString textA = a.alsText();
    const QString textB = b.alsText();
    Zaehler zaehler;
    zaehlen(zaehler, textA, textB);
    zaehlen(zaehler, textB, textA);
    return float(double(zaehler.treffer) / zaehler.woerter);
}

float NummernVergleichen(const Wert& a, const Wert& b) {
    if (!LiestSichAlsZahl(a) || !LiestSichAlsZahl(b)) return 0;
    const QString textA = a.alsText();
    const QString textB = b.alsText();
    const int kurz = int(std::min(textA.size(), textB.size()));
    const int lang = int(std::max(textA.size(), textB.size()));
    if (kurz == 0 || textA[0] != textB[0]) return 0;
    int gleiche = 0;
    for (int i = 0; i < kurz; ++i) gleiche += textA[i] == textB[i];
    return Nummernmass(lang, kurz, gleiche);
}

// The sum is built share by share, since that is how its last bits come about.
float Nummernmass(int lang, int kurz, int gleiche) {
    double punkte = 0;
    for (int i = 0; i < gleiche; ++i) punkte += 1.0 / lang;
    if (lang != kurz) punkte = std::max(punkte - double(lang - kurz) / lang * 0.5, 0.0);
    return float(punkte);
}
