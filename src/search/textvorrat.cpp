// Texts and their measures.
#include "search/textvorrat.h"

#include <algorithm>
#include <bit>

#include "search/masse.h"

namespace {

quint64 paarmaske(QStringView text) {
    quint64 maske = 0;
    for (qsizetype i = 1; i < text.size(); ++i) {
        const quint32 paar = quint32(text[i - 1].unicode()) << 16 | text[i].unicode();
        maske |= quint64(1) << ((paar * 0x9E3779B1u) >> 26);
    }
    return maske;
}

// The number of equal bytes among the lowest `anzahl` ones.
int gleicheBytes(quint64 a, quint64 b, int anzahl) {
    constexpr quint64 kSieben = 0x7F7F7F7F7F7F7F7Fu;
    const quint64 x = a ^ b;
    quint64 gleich = ~(((x & kSieben) + kSieben) | x | kSieben);
    if (anzahl < 8) gleich &= (quint64(1) << (8 * anzahl)) - 1;
    return std::popcount(gleich);
}

}  // namespace

int Textvorrat::nummer(const QString& text) {
    const std::u16string_view inhalt(QStringView(text).utf16(), size_t(text.size()));
    const quint32 streuwert = Streuwert(inhalt);
    const int fund = nummern_.suchen(streuwert, [&](int nummer) {
        const Text& t = texte_[size_t(nummer)];
        return inhalt == zeichen(t.anfang, t.laenge);
    });
    if (fund >= 0) return fund;
    Text neu{quint32(zeichen_.size()), quint32(text.size()), quint32(woerter_.size()), 0, paarmaske(text), 0,
             text.size() <= 8};
    for (qsizetype i = 0; i < std::min<qsizetype>(8, text.size()); ++i) {
        neu.kurz = neu.kurz && text[i].unicode() < 256;
        neu.anfangsbytes |= quint64(text[i].unicode() & 0xFF) << (8 * i);
    }
    quint32 stelle = neu.anfang;
    WoerterBesuchen(text, [&](QStringView wort) {
        woerter_.push_back({stelle, quint32(wort.size()), paarmaske(wort)});
        stelle += quint32(wort.size()) + 1;
        ++neu.woerter;
    });
    zuViele_ = zuViele_ || neu.woerter > kMeisteWoerterJeText;
    zeichen_.insert(zeichen_.end(), inhalt.begin(), inhalt.end());
    texte_.push_back(neu);
    const int nummer = int(texte_.size()) - 1;
    nummern_.eintragen(streuwert, nummer);
    return nummer;
}

float Textvorrat::woerterVergleichen(int a, int b) const {
    if (a == b) return 1;
    const Text& textA = texte_[size_t(a)];
    const Text& textB = texte_[size_t(b)];
    const int treffer = trefferVon(textA, textB) + trefferVon(textB, textA);
    return float(double(treffer) / int(textA.woerter + textB.woerter));
}

// How many words of the text stand somewhere in the other one.
int Textvorrat::trefferVon(const Text& text, const Text& anderer) const {
    int treffer = 0;
    for (quint32 i = 0; i < text.woerter; ++i) {
        const Wort& wort = woerter_[text.ersteswort + i];
        if (wort.paare & ~anderer.paare) continue;
        if (wort.laenge > anderer.laenge) continue;
        const std::u16string_view darin = zeichen(anderer.anfang, anderer.laenge);
        treffer += darin.find(zeichen(wort.anfang, wort.laenge)) != std::u16string_view::npos;
    }
    return treffer;
}

float Textvorrat::nummernVergleichen(int a, int b) const {
    const Text& textA = texte_[size_t(a)];
    const Text& textB = texte_[size_t(b)];
    const int kurz = int(std::min(textA.laenge, textB.laenge));
    const int lang = int(std::max(textA.laenge, textB.laenge));
    const char16_t* zeichenA = zeichen_.data() + textA.anfang;
    const char16_t* zeichenB = zeichen_.data() + textB.anfang;
    if (kurz == 0 || zeichenA[0] != zeichenB[0]) return 0;
    if (textA.kurz && textB.kurz)
        return Nummernmass(lang, kurz, gleicheBytes(textA.anfangsbytes, textB.anfangsbytes, kurz));
    int gleiche = 0;
    for (int i = 0; i < kurz; ++i) gleiche += zeichenA[i] == zeichenB[i];
    return Nummernmass(lang, kurz, gleiche);
}
